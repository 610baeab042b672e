#include "app/EditorFrame.h"

#include <string>

#include <Corrade/Containers/StringStl.h>

#include "EditorFrameTest.h"

namespace QuorvaneEngine::Test {
namespace {

TEST_F(EditorFrameTest, WithoutAProjectNoViewIsDrawnAndTheStartPageOpensOne) {
    draw(3);
    EXPECT_EQ(moduleCounter(0), 0);
    chosenFolder = path("first");
    EXPECT_TRUE(play("start page", [](ImGuiTestContext& user) { user.ItemClick("//Start/Open a project..."); }));
    EXPECT_EQ(session.folder(), path("first").c_str());
    draw(2);
    EXPECT_GT(moduleCounter(0), 0);
}

TEST_F(EditorFrameTest, OpenProjectAsksForAFolder) {
    ASSERT_TRUE(open("first"));
    chosenFolder = path("second");
    EXPECT_TRUE(play("open", [](ImGuiTestContext& user) { choose(user, "File/Open project..."); }));
    draw();
    EXPECT_EQ(dialogs, 1);
    EXPECT_EQ(session.folder(), path("second").c_str());
}

TEST_F(EditorFrameTest, ACancelledFolderDialogChangesNothing) {
    ASSERT_TRUE(open("first"));
    draw(3);
    const int draws = moduleCounter(0);
    EXPECT_TRUE(play("open", [](ImGuiTestContext& user) { user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_O); }));
    draw();
    EXPECT_EQ(dialogs, 1);
    EXPECT_EQ(session.folder(), path("first").c_str());
    EXPECT_GT(moduleCounter(0), draws);
}

TEST_F(EditorFrameTest, AProjectThatCannotBeReadIsExplainedAndTheOpenOneStays) {
    ASSERT_TRUE(open("first"));
    write("second", "{\"name\": \n");
    chosenFolder = path("second");
    EXPECT_TRUE(play("open", [this](ImGuiTestContext& user) {
        user.ItemClick("//Counter/Count");
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_S);
        choose(user, "File/Open project...");
        user.Yield(2);
        IM_CHECK(frame.failure().contains("project.json:2:1: "));
        user.ItemClick("//Project not opened/OK");
        IM_CHECK(frame.failure().isEmpty());
    }));
    EXPECT_EQ(session.folder(), path("first").c_str());
    EXPECT_EQ(counted(), 1);
    EXPECT_TRUE(session.changes().canUndo());
}

TEST_F(EditorFrameTest, SaveWritesTheProjectAndTakesTheMarkAway) {
    ASSERT_TRUE(open("first"));
    EXPECT_TRUE(play("save", [this](ImGuiTestContext& user) {
        user.ItemClick("//Counter/Count");
        IM_CHECK(session.hasUnsavedChanges());
        choose(user, "File/Save");
        user.Yield(2);
        IM_CHECK(!session.hasUnsavedChanges());
        IM_CHECK(read("first").find("\"counted\": 1") != std::string::npos);
        user.ItemClick("//Counter/Count");
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_S);
        user.Yield(2);
        IM_CHECK(!session.hasUnsavedChanges());
        IM_CHECK(read("first").find("\"counted\": 2") != std::string::npos);
    }));
    ASSERT_TRUE(log.last());
    EXPECT_EQ(std::string{log.last()->text}, "Saved " + path("first"));
}

TEST_F(EditorFrameTest, TheDefaultLayoutGivesTheViewTheDockSpace) {
    ASSERT_TRUE(open("first"));
    draw(5);
    const ImGuiWindow* const window = ImGui::FindWindowByName("Counter");
    ASSERT_TRUE(window);
    EXPECT_TRUE(window->DockIsActive);
    const ImGuiViewport& viewport = *ImGui::GetMainViewport();
    EXPECT_EQ(window->Pos.x, viewport.WorkPos.x);
    EXPECT_EQ(window->Size.x, viewport.WorkSize.x);
    EXPECT_GT(window->Size.y, viewport.WorkSize.y * 0.9f);
}

TEST_F(EditorFrameTest, AJobForTheGuiThreadChangesNoProjectThatIsOpenedAfterIt) {
    ASSERT_TRUE(open("first"));
    const auto change = [this] { session.changes().pushChange("/counted", rapidjson::Value{1}, false); };
    jobs.dispatch([this, change] { jobs.dispatch(change, {}, JobFlag::MainThread); }, {}, JobFlag::MainThread);
    ASSERT_TRUE(open("second"));
    EXPECT_EQ(counted(), 0);
    EXPECT_FALSE(session.hasUnsavedChanges());
    EXPECT_FALSE(session.changes().canUndo());
}

TEST_F(EditorFrameTest, MainThreadJobsRunBetweenFrames) {
    bool inside = true;
    jobs.dispatch([&] { inside = ImGui::GetCurrentContext()->WithinFrameScope; }, {}, JobFlag::MainThread);
    draw();
    EXPECT_FALSE(inside);
}

TEST_F(EditorFrameTest, AFrameInWhichNothingHappensLooksNothingUp) {
    ASSERT_TRUE(open("first"));
    draw(10);
    const std::uint64_t lookups = session.project().lookupCount();
    draw(10);
    EXPECT_EQ(session.project().lookupCount(), lookups);
}

TEST_F(EditorFrameTest, QuitEndsAtOnceWhenEverythingIsSaved) {
    ASSERT_TRUE(open("first"));
    EXPECT_TRUE(play("quit", [](ImGuiTestContext& user) { choose(user, "File/Quit"); }));
    draw();
    EXPECT_TRUE(frame.isFinished());
}

TEST_F(EditorFrameTest, QuitAsksForUnsavedChanges) {
    ASSERT_TRUE(open("first"));
    EXPECT_TRUE(play("quit", [this](ImGuiTestContext& user) {
        user.ItemClick("//Counter/Count");
        frame.requestQuit();
        user.Yield(3);
        user.ItemClick("//Unsaved changes/Cancel");
        user.Yield(2);
        IM_CHECK(!frame.isFinished());
        IM_CHECK(session.hasUnsavedChanges());
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Q);
        user.Yield(3);
        user.ItemClick("//Unsaved changes/Save");
        user.Yield(2);
    }));
    EXPECT_TRUE(frame.isFinished());
    EXPECT_NE(read("first").find("\"counted\": 1"), std::string::npos);
}

TEST_F(EditorFrameTest, QuitWithoutSavingLeavesTheFilesAlone) {
    ASSERT_TRUE(open("first"));
    const std::string before = read("first");
    EXPECT_TRUE(play("quit", [this](ImGuiTestContext& user) {
        user.ItemClick("//Counter/Count");
        frame.requestQuit();
        user.Yield(3);
        user.ItemClick("//Unsaved changes/Don't save");
        user.Yield(2);
    }));
    EXPECT_TRUE(frame.isFinished());
    EXPECT_EQ(read("first"), before);
}

TEST_F(EditorFrameTest, OpeningAnotherProjectAsksForUnsavedChanges) {
    ASSERT_TRUE(open("first"));
    chosenFolder = path("second");
    EXPECT_TRUE(play("open", [this](ImGuiTestContext& user) {
        user.ItemClick("//Counter/Count");
        choose(user, "File/Open project...");
        user.Yield(3);
        IM_CHECK(session.folder() == path("first").c_str());
        user.ItemClick("//Unsaved changes/Save");
        user.Yield(2);
        IM_CHECK(session.folder() == path("second").c_str());
    }));
    EXPECT_FALSE(frame.isFinished());
    EXPECT_NE(read("first").find("\"counted\": 1"), std::string::npos);
}

TEST_F(EditorFrameTest, TheLastMessageOpensThePanelOfAllMessages) {
    ASSERT_TRUE(open("first"));
    draw(3);
    EXPECT_FALSE(isOpen("Messages"));
    EXPECT_TRUE(play("messages", [this](ImGuiTestContext& user) {
        user.ItemClick("//##status/##message");
        user.Yield(2);
        IM_CHECK(isOpen("Messages"));
        user.ItemClick("//##status/##message");
        user.Yield(2);
        IM_CHECK(!isOpen("Messages"));
    }));
}

TEST_F(EditorFrameTest, AboutTellsTheVersion) {
    EXPECT_TRUE(play("about", [](ImGuiTestContext& user) {
        choose(user, "Help/About");
        user.Yield(2);
        user.ItemClick("//About/Close");
        user.Yield(2);
        IM_CHECK(!user.ItemExists("//About/Close"));
    }));
}

}
}
