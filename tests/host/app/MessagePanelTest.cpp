#include "app/MessagePanel.h"

#include <cstdlib>
#include <string>

#include <Corrade/Utility/Debug.h>
#include <gtest/gtest.h>

#include "support/FrameAllocations.h"
#include "support/GuiTest.h"
#include "support/ShownText.h"

namespace QuorvaneEngine::Test {
namespace {

using Corrade::Utility::Debug;
using Corrade::Utility::Error;
using Corrade::Utility::Warning;

/** The panel with a message of each severity, the first one at 10:00:01. */
class MessagePanelTest: public testing::Test {
protected:
    MessagePanelTest() {
        setenv("TZ", "UTC", 1);
        tzset();
        seconds = 36000;
        Debug{} << "loading the door";
        log.note("Opened");
        Warning{} << "the Door is odd";
        Error{} << "the lamp is missing";
    }

    static std::chrono::system_clock::time_point now() {
        return std::chrono::system_clock::time_point{std::chrono::seconds{++seconds}};
    }

    void draw() {
        const ShownText text;
        ImGui::SetNextWindowSize({800.0f, 400.0f});
        panel.draw(log, &open);
        seen = text.text();
    }

    bool play(const char* name, const GuiTest::Script& script) {
        return gui.run(
            name, [this] { draw(); }, script);
    }

    bool isSeen(const char* text) const { return seen.find(text) != std::string::npos; }

    static std::string line(int number) { return "//Messages/**/$$" + std::to_string(number) + "/##line"; }

    inline static int seconds = 0;
    MessageLog log{5, now};
    GuiTest gui;
    MessagePanel panel;
    bool open = true;
    std::string seen;
};

TEST_F(MessagePanelTest, ShowsWhatWasPrintedAndWhen) {
    gui.frames([this] { draw(); }, 3);
    for(const char* const text: {"10:00:01", "loading the door", "10:00:02", "Opened", "10:00:03", "the Door is odd",
            "10:00:04", "the lamp is missing"})
        EXPECT_TRUE(isSeen(text)) << text;
}

TEST_F(MessagePanelTest, SeveritiesAreHiddenAndShown) {
    EXPECT_TRUE(play("filter", [this](ImGuiTestContext& user) {
        user.ItemClick("//Messages/###Details");
        user.ItemClick("//Messages/###Errors");
        user.Yield();
        IM_CHECK(!isSeen("loading"));
        IM_CHECK(isSeen("odd"));
        IM_CHECK(!isSeen("missing"));
        user.ItemClick("//Messages/###Details");
        user.Yield();
        IM_CHECK(isSeen("loading"));
    }));
}

TEST_F(MessagePanelTest, ASearchLooksForTextWithoutRegardToCase) {
    EXPECT_TRUE(play("search", [this](ImGuiTestContext& user) {
        user.ItemInput("//Messages/**/##messages");
        user.KeyCharsReplace("DOOR");
        user.Yield();
        IM_CHECK(isSeen("loading the door"));
        IM_CHECK(isSeen("the Door is odd"));
        IM_CHECK(!isSeen("Opened"));
        log.note("another door");
        log.note("another lamp");
        user.Yield(2);
        IM_CHECK(isSeen("another door"));
        IM_CHECK(!isSeen("another lamp"));
        // The log keeps five messages, of which this was the first.
        IM_CHECK(!isSeen("loading the door"));
    }));
}

TEST_F(MessagePanelTest, AllLinesThatAreShownAreCopied) {
    EXPECT_TRUE(play("copy", [](ImGuiTestContext& user) {
        user.ItemClick("//Messages/###Details");
        user.ItemClick("//Messages/###Copy");
        IM_CHECK_STR_EQ(ImGui::GetClipboardText(),
            "10:00:02\tNote\tOpened\n10:00:03\tWarning\tthe Door is odd\n10:00:04\tError\tthe lamp is missing\n");
    }));
}

TEST_F(MessagePanelTest, SelectedLinesAreCopied) {
    EXPECT_TRUE(play("copy", [](ImGuiTestContext& user) {
        user.ItemClick(line(1).c_str());
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_C);
        IM_CHECK_STR_EQ(ImGui::GetClipboardText(), "10:00:02\tNote\tOpened\n");
        user.KeyDown(ImGuiMod_Shift);
        user.ItemClick(line(2).c_str());
        user.KeyUp(ImGuiMod_Shift);
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_C);
        IM_CHECK_STR_EQ(ImGui::GetClipboardText(), "10:00:02\tNote\tOpened\n10:00:03\tWarning\tthe Door is odd\n");
        user.ItemClick(line(3).c_str(), ImGuiMouseButton_Right);
        user.ItemClick("//$FOCUSED/Copy all lines shown");
        IM_CHECK(std::string{ImGui::GetClipboardText()}.find("10:00:01\tDetail\tloading the door\n") == 0);
    }));
}

TEST_F(MessagePanelTest, AnIdleFrameAsksForNoMemory) {
    gui.frames([this] { draw(); }, 5);
    EXPECT_EQ(frameAllocations(gui, 10, [this] { panel.draw(log, &open); }), 0u);
}

}
}
