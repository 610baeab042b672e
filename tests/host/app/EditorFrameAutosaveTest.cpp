#include <filesystem>
#include <string>

#include "EditorFrameTest.h"

/* What is left of unsaved changes after a crash. */

namespace QuorvaneEngine::Test {
namespace {

/** More than there are until changes are kept. */
constexpr int KeepFrames = 60 * 4;

class EditorFrameAutosaveTest: public EditorFrameTest {
protected:
    bool isKept() const { return std::filesystem::exists(root / "first/.editor/autosave"); }

    /** An editor that did not end well: what it kept is left, and "counted" is 1 in it. */
    void crash() {
        ASSERT_TRUE(open("first"));
        draw(3);
        EXPECT_TRUE(play("change", [](ImGuiTestContext& user) {
            user.ItemClick("//Counter/Count");
            user.Yield(KeepFrames);
        }));
        ASSERT_TRUE(isKept());
        const std::filesystem::path copy = root / "copy";
        std::filesystem::copy_file(root / "first/.editor/autosave", copy);
        EXPECT_TRUE(play("leave", [this](ImGuiTestContext& user) {
            chosenFolder = path("second");
            choose(user, "File/Open project...");
            user.Yield(10);
            user.ItemClick("//Unsaved changes/Don't save");
            user.Yield(3);
        }));
        EXPECT_FALSE(isKept()) << "who does not save does not want it";
        std::filesystem::copy_file(copy, root / "first/.editor/autosave");
    }
};

TEST_F(EditorFrameAutosaveTest, WhoTakesAProjectOverIsAskedForWhatTheOtherProgramKept) {
    crash();
    Containers::Pointer<EditorSession> other{Corrade::InPlaceInit};
    FileError refusal;
    ASSERT_TRUE(other->tryLock(path("first").c_str(), refusal));
    ASSERT_TRUE(frame.open(path("first").c_str(), EditorFrame::Access::Read));
    EXPECT_TRUE(play("take over", [&other](ImGuiTestContext& user) {
        user.Yield(KeepFrames);
        IM_CHECK(!user.ItemExists("//Kept changes/Restore"));
        other = nullptr;
        user.Yield(KeepFrames);
        user.ItemClick("//Kept changes/Restore");
        user.Yield(5);
    }));
    EXPECT_EQ(counted(), 1);
    EXPECT_TRUE(session.hasUnsavedChanges());
}

TEST_F(EditorFrameAutosaveTest, WhoTakesAProjectOverWithChangesOfHisOwnIsAskedNothingAndLosesNothing) {
    crash();
    Containers::Pointer<EditorSession> other{Corrade::InPlaceInit};
    FileError refusal;
    ASSERT_TRUE(other->tryLock(path("first").c_str(), refusal));
    ASSERT_TRUE(frame.open(path("first").c_str(), EditorFrame::Access::Read));
    EXPECT_TRUE(play("take over", [this, &other](ImGuiTestContext& user) {
        user.ItemClick("//Counter/Count");
        user.ItemClick("//Counter/Count");
        other = nullptr;
        user.Yield(KeepFrames);
        IM_CHECK(!frame.isReadOnly());
        IM_CHECK(!user.ItemExists("//Kept changes/Restore"));
    }));
    EXPECT_EQ(counted(), 2);
    EXPECT_TRUE(session.changes().canUndo());
    const std::string file = path("first") + "/.editor/autosave";
    EXPECT_TRUE(std::filesystem::exists(file + ".of-another"));
    const std::string text = "Autosave::begin(): " + file + ": another program kept its unsaved changes here; kept as ";
    EXPECT_EQ(messages((text + file + ".of-another").c_str()), 1);
}

TEST_F(EditorFrameAutosaveTest, KeptChangesAreRestoredIfTheUserWishes) {
    crash();
    ASSERT_TRUE(open("first"));
    EXPECT_EQ(counted(), 0);
    EXPECT_TRUE(play("restore", [this](ImGuiTestContext& user) {
        user.Yield(10);
        user.KeyPress(ImGuiKey_Escape);
        user.Yield(5);
        user.ItemClick("//Kept changes/Restore");
        user.Yield(5);
        IM_CHECK_EQ(counted(), 1);
        IM_CHECK(session.hasUnsavedChanges());
        user.ItemClick("//Counter/Count");
        IM_CHECK(isKept());
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_S);
        user.Yield(5);
    }));
    EXPECT_FALSE(isKept());
    EXPECT_NE(read("first").find("\"counted\": 2"), std::string::npos);
}

TEST_F(EditorFrameAutosaveTest, AJobForTheGuiThreadDoesNotChangeWhatIsRestoredAfterIt) {
    crash();
    ASSERT_TRUE(open("first"));
    EXPECT_TRUE(play("restore", [this](ImGuiTestContext& user) {
        user.Yield(10);
        // Dispatched by a job of the frame in which the answer is heard.
        gui.prepareFrames([this, wasAsked = true]() mutable {
            const bool isAsked = ImGui::IsPopupOpen(nullptr, ImGuiPopupFlags_AnyPopup);
            if(wasAsked && !isAsked) {
                const auto change = [this] { session.changes().pushChange("/other", rapidjson::Value{1}, false); };
                jobs.dispatch(
                    [this, change] { jobs.dispatch(change, {}, JobFlag::MainThread); }, {}, JobFlag::MainThread);
            }
            wasAsked = isAsked;
            frame.prepare();
        });
        user.ItemClick("//Kept changes/Restore");
        user.Yield(5);
    }));
    EXPECT_EQ(counted(), 1);
    EXPECT_FALSE(session.project().root()["/other"].value());
}

TEST_F(EditorFrameAutosaveTest, KeptChangesAreDiscardedIfTheUserWishes) {
    crash();
    ASSERT_TRUE(open("first"));
    EXPECT_TRUE(play("discard", [](ImGuiTestContext& user) {
        user.Yield(10);
        user.ItemClick("//Kept changes/Discard");
        user.Yield(5);
    }));
    EXPECT_FALSE(isKept());
    EXPECT_EQ(counted(), 0);
    EXPECT_FALSE(session.hasUnsavedChanges());
}

TEST_F(EditorFrameAutosaveTest, WhoIsToldToEndKeepsWhatIsNotSavedAndAsksNothing) {
    ASSERT_TRUE(open("first"));
    draw(3);
    EXPECT_TRUE(play("change", [](ImGuiTestContext& user) { user.ItemClick("//Counter/Count"); }));
    ASSERT_FALSE(isKept());
    frame.requestEnd();
    draw();
    EXPECT_TRUE(frame.isFinished());
    EXPECT_TRUE(isKept());
    EXPECT_TRUE(std::filesystem::exists(root / "first/.editor/imgui.ini"));
    EXPECT_EQ(read("first").find("counted"), std::string::npos);
}

TEST_F(EditorFrameAutosaveTest, ReloadingAndQuittingLeaveNothingBehind) {
    ASSERT_TRUE(open("first"));
    draw(3);
    EXPECT_TRUE(play("reload", [this](ImGuiTestContext& user) {
        user.ItemClick("//Counter/Count");
        user.Yield(KeepFrames);
        IM_CHECK(isKept());
        write("first", R"({"name": "first", "other": true})");
        user.Yield(80);
        user.ItemClick("//Changed on disk/Reload");
        user.Yield(10);
        IM_CHECK(!isKept());
        IM_CHECK(!user.ItemExists("//Kept changes/Restore"));
        user.ItemClick("//Counter/Count");
        user.Yield(KeepFrames);
        IM_CHECK(isKept());
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Q);
        user.Yield(10);
        user.ItemClick("//Unsaved changes/Don't save");
        user.Yield(3);
    }));
    EXPECT_TRUE(frame.isFinished());
    EXPECT_FALSE(isKept());
}

}
}
