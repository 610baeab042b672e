#include "app/HistoryPanel.h"

#include <string>
#include <vector>

#include "EditorFrameTest.h"
#include "support/FrameAllocations.h"
#include "support/Json.h"

namespace QuorvaneEngine::Test {
namespace {

/** The history with four steps, the third one a group. */
class HistoryPanelTest: public EditorFrameTest {
protected:
    HistoryPanelTest() {
        // Where a container is left empty it goes with its last member, but for those of the root.
        write("first", R"({"objects": {"lamp": {"text": "Lit"}}})");
        EXPECT_TRUE(open("first"));
        states.push_back(document());
        push("/counted", 1);
        push("/counted", 2);
        session.changes().openGroup();
        session.changes().pushChange("/objects/door/text", Containers::StringView{"Open"}, false);
        session.changes().pushChange("/objects/door/title", Containers::StringView{"Door"}, false);
        session.changes().commit();
        states.push_back(document());
        push("/other", 1);
        isOpen("History") = true;
        draw(3);
    }

    void push(const char* path, int value) {
        session.changes().pushChange(path, rapidjson::Value{value}, false);
        states.push_back(document());
    }

    std::string document() { return toText(session.project()); }

    static std::string row(int row) { return "//History/$$" + std::to_string(row) + "/##step"; }

    static void click(ImGuiTestContext& user, int step) {
        user.ItemClick(row(step).c_str());
        user.Yield(2);
    }

    /** The document behind each step. */
    std::vector<std::string> states;
};

TEST_F(HistoryPanelTest, ListsEachStepByName) {
    EXPECT_TRUE(playSeen("names", [this](ImGuiTestContext& user) {
        user.Yield(2);
        for(const char* const name: {"The project as it was opened", "creation of counted", "change of counted",
                "2 changes of door", "creation of other"})
            IM_CHECK(isSeen(name));
        IM_CHECK(user.ItemExists(row(4).c_str()));
        IM_CHECK(!user.ItemExists(row(5).c_str()));
    }));
}

TEST_F(HistoryPanelTest, AClickGoesToTheStateBehindAStepBackAndForth) {
    EXPECT_TRUE(play("click", [this](ImGuiTestContext& user) {
        for(const int step: {1, 3, 0, 4, 2, 2, 4}) {
            click(user, step);
            IM_CHECK_STR_EQ(document().c_str(), states[std::size_t(step)].c_str());
        }
    }));
    EXPECT_FALSE(session.changes().canRedo());
}

TEST_F(HistoryPanelTest, WhatIsDoneAfterGoingBackReplacesTheStepsThatWereUndone) {
    EXPECT_TRUE(play("click", [](ImGuiTestContext& user) {
        click(user, 1);
        user.ItemClick("//Counter/Count");
        user.Yield(2);
        IM_CHECK(user.ItemExists(row(2).c_str()));
        IM_CHECK(!user.ItemExists(row(3).c_str()));
    }));
}

TEST_F(HistoryPanelTest, NothingIsClickedWhileAGroupIsOpen) {
    const std::string before = document();
    session.changes().openGroup();
    EXPECT_TRUE(play("click", [](ImGuiTestContext& user) {
        user.MouseMove(row(1).c_str());
        user.MouseClick();
        user.Yield(3);
    }));
    session.changes().commit();
    EXPECT_EQ(document(), before);
}

TEST_F(HistoryPanelTest, TenThousandStepsShowTheRowsAroundThePresentOne) {
    for(int i = 0; i != 10000; ++i) session.changes().pushChange("/counted", rapidjson::Value{i % 2 + 1}, false);
    draw(5);
    EXPECT_TRUE(play("scroll", [this](ImGuiTestContext& user) {
        IM_CHECK(user.ItemExists(row(10004).c_str()));
        IM_CHECK(!user.ItemExists(row(5000).c_str()));
        user.ScrollToTop("//History");
        click(user, 3);
        IM_CHECK_STR_EQ(document().c_str(), states[3].c_str());
    }));
}

TEST_F(HistoryPanelTest, AnIdleFrameAsksForNoMemoryAndLooksNothingUp) {
    draw(5);
    const std::uint64_t lookups = session.project().lookupCount();
    EXPECT_EQ(frameAllocations(gui, 10, [this] { frame.draw(); }), 0u);
    EXPECT_EQ(session.project().lookupCount(), lookups);
}

}
}
