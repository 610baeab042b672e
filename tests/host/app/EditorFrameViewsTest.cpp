#include <string>

#include <Corrade/Containers/StringView.h>

#include "EditorFrameTest.h"

/* The views in the frame: when they are made, drawn, closed, repaired and loaded anew. */

namespace QuorvaneEngine::Test {
namespace {

using namespace Containers::Literals;

TEST_F(EditorFrameTest, AnotherProjectGetsAFreshViewWithTheSameIdAndOpenFlag) {
    ASSERT_TRUE(open("first"));
    draw(10);
    const UnsignedInt id = viewId("Counter");
    const UnsignedInt count = session.state().viewCount();
    ASSERT_TRUE(open("second"));
    EXPECT_EQ(moduleCounter(0), 0);
    EXPECT_EQ(moduleCounter(1), 1);
    EXPECT_EQ(moduleCounter(3), 1);
    EXPECT_EQ(viewId("Counter"), id);
    EXPECT_EQ(session.state().viewCount(), count);

    session.state().isViewOpen(id) = false;
    ASSERT_TRUE(open("first"));
    draw(3);
    EXPECT_FALSE(session.state().isViewOpen(id));
    EXPECT_EQ(moduleCounter(0), 0);
}

TEST_F(EditorFrameTest, HandlersOfTheOldViewAreForgottenBeforeItsModuleGoes) {
    ASSERT_TRUE(open("first"));
    int calls = 0;
    session.changes().addChangeHandler(
        "counted", [&calls](const Change&, Containers::ArrayView<Containers::StringView>, void*) { ++calls; }, nullptr);
    ASSERT_TRUE(open("second"));
    session.changes().pushChange("/counted", rapidjson::Value{1}, false);
    EXPECT_EQ(calls, 0);
}

TEST_F(EditorFrameTest, AClosedViewIsNotDrawnUntilTheMenuOpensItAgain) {
    ASSERT_TRUE(open("first"));
    draw(3);
    const UnsignedInt id = viewId("Counter");
    EXPECT_TRUE(play("close", [this](ImGuiTestContext& user) {
        user.WindowClose("//Counter");
        IM_CHECK(!isOpen("Counter"));
        const int draws = moduleCounter(0);
        user.Yield(5);
        IM_CHECK_EQ(moduleCounter(0), draws);
        choose(user, "View/Counter");
        user.Yield(2);
        IM_CHECK(isOpen("Counter"));
        IM_CHECK(moduleCounter(0) > draws);
        choose(user, "View/Counter");
        user.Yield(2);
        IM_CHECK(!isOpen("Counter"));
    }));
    EXPECT_EQ(viewId("Counter"), id);
}

TEST_F(EditorFrameTest, AViewWhoseConditionFailsShowsItsReasonAndIsNotDrawn) {
    write("first", R"({"counted": 7})");
    ASSERT_TRUE(open("first"));
    draw(5);
    EXPECT_EQ(moduleCounter(0), 0);
    EXPECT_EQ(frame.views().reason(viewId("Counter")), "/counted is out of hand.");
    EXPECT_TRUE(play("reason", [](ImGuiTestContext& user) { IM_CHECK(user.ItemExists("//Counter/**/Repair")); }));
}

TEST_F(EditorFrameTest, AConditionThatBeginsToFailIsAWarningOnce) {
    constexpr Containers::StringView Text = "project.json: /counted is out of hand."_s;
    write("first", R"({"counted": 7})");
    ASSERT_TRUE(open("first"));
    draw(5);
    EXPECT_EQ(messages(Text), 1);
    ASSERT_TRUE(log.last());
    EXPECT_EQ(log.last()->severity, MessageLog::Severity::Warning);
    session.changes().pushChange("/counted", rapidjson::Value{8}, false);
    draw(5);
    EXPECT_EQ(messages(Text), 1);
    session.changes().pushChange("/counted", rapidjson::Value{1}, false);
    draw(5);
    session.undo();
    draw(5);
    EXPECT_EQ(messages(Text), 2);
    ASSERT_TRUE(open("first"));
    draw(5);
    EXPECT_EQ(messages(Text), 3);
}

TEST_F(EditorFrameTest, WhatIsWrongWithAProjectThatOpensIsAWarningEach) {
    write("first", R"({"languages": {"de": {}}, "objects": {"door": {"name": 7}}})");
    const std::string before = read("first");
    ASSERT_TRUE(open("first"));
    draw(5);
    EXPECT_EQ(messages("project.json: /objects/door/name: is a number, but must be a string"), 1);
    EXPECT_EQ(messages("localization/de.json: missing, no texts of de"), 1);
    ASSERT_TRUE(log.last());
    EXPECT_EQ(log.last()->severity, MessageLog::Severity::Warning);
    EXPECT_FALSE(session.hasUnsavedChanges());
    EXPECT_EQ(read("first"), before);
    EXPECT_GT(moduleCounter(0), 0);
}

TEST_F(EditorFrameTest, ViewsAreMadeOncePerProject) {
    draw(3);
    EXPECT_EQ(messages("Initializing View: Counter"), 0);
    ASSERT_TRUE(open("first"));
    EXPECT_EQ(messages("Initializing View: Counter"), 1);
    ASSERT_TRUE(open("second"));
    EXPECT_EQ(messages("Initializing View: Counter"), 2);
}

TEST_F(EditorFrameTest, ModulesReloadedBeforeTheFirstProjectGetTheirViewsWithIt) {
    EXPECT_TRUE(play("reload", [](ImGuiTestContext& user) { choose(user, "View/Reload modules"); }));
    draw(3);
    EXPECT_EQ(moduleCounter(1), 0);
    ASSERT_TRUE(open("first"));
    draw(3);
    EXPECT_EQ(moduleCounter(1), 1);
    EXPECT_GT(moduleCounter(0), 0);
}

TEST_F(EditorFrameTest, RepairIsOneStepThatCanBeUndoneAndRedone) {
    write("first", R"({"counted": 7})");
    ASSERT_TRUE(open("first"));
    EXPECT_TRUE(play("repair", [this](ImGuiTestContext& user) {
        user.ItemClick("//Counter/**/Repair");
        user.Yield(2);
        IM_CHECK_EQ(counted(), 1);
        const int draws = moduleCounter(0);
        IM_CHECK(draws > 0);

        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Z);
        user.Yield(2);
        IM_CHECK_EQ(counted(), 7);
        IM_CHECK(!session.changes().canUndo());
        IM_CHECK(user.ItemExists("//Counter/**/Repair"));
        const int drawsBefore = moduleCounter(0);
        user.Yield(5);
        IM_CHECK_EQ(moduleCounter(0), drawsBefore);

        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Y);
        user.Yield(2);
        IM_CHECK(moduleCounter(0) > drawsBefore);
    }));
}

TEST_F(EditorFrameTest, ConditionsAreCheckedWhenTheRevisionChangesAndOnlyThen) {
    ASSERT_TRUE(open("first"));
    draw();
    const int after = checks;
    draw(20);
    EXPECT_EQ(checks, after);
    session.changes().pushChange("/counted", rapidjson::Value{9}, false);
    const int draws = moduleCounter(0);
    draw();
    EXPECT_EQ(checks, after + 1);
    EXPECT_EQ(moduleCounter(0), draws);
}

TEST_F(EditorFrameTest, ReloadedModulesKeepTheirBinding) {
    ASSERT_TRUE(open("first"));
    draw(10);
    EXPECT_TRUE(play("reload", [](ImGuiTestContext& user) { choose(user, "View/Reload modules"); }));
    draw(3);
    EXPECT_EQ(moduleCounter(1), 1);
    EXPECT_GT(moduleCounter(0), 0);
    EXPECT_LT(moduleCounter(0), 10);
}

TEST_F(EditorFrameTest, AViewThatIsAskedToShowAValueIsOpenedAndBroughtToTheFront) {
    write("first", R"({"counted": 1})");
    ASSERT_TRUE(open("first"));
    EXPECT_TRUE(play("show", [this](ImGuiTestContext& user) {
        const auto isInFront = [] {
            const ImGuiWindow* const window = ImGui::FindWindowByName("Counter");
            return window->Active && !window->Hidden && !window->Collapsed &&
                ImGui::GetCurrentContext()->NavWindow == window;
        };
        user.WindowClose("//Counter");
        user.Yield(2);
        IM_CHECK(frame.views().show("/counted"));
        IM_CHECK(isOpen("Counter"));
        user.Yield(3);
        IM_CHECK(isInFront());

        choose(user, "View/History");
        user.Yield(2);
        // Under the mouse a docked view takes the focus.
        user.MouseMoveToPos({5.0f, 5.0f});
        user.WindowFocus("//History");
        user.Yield(2);
        IM_CHECK(!isInFront());
        IM_CHECK(frame.views().show("/counted"));
        user.Yield(3);
        IM_CHECK(isInFront());
    }));
}

TEST_F(EditorFrameTest, AValueThatNoViewShowsOpensNone) {
    write("first", R"({"counted": 1})");
    ASSERT_TRUE(open("first"));
    draw(2);
    isOpen("Counter") = false;
    const int shows = moduleCounter(4);
    EXPECT_FALSE(frame.views().show("/name"));
    EXPECT_EQ(moduleCounter(4), shows + 1);
    EXPECT_FALSE(isOpen("Counter"));
}

}
}
