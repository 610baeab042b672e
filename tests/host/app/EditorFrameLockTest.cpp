#include <csignal>
#include <string>

#include <sys/wait.h>
#include <unistd.h>

#include "EditorFrameTest.h"
#include "document/FileSystem.h"

/* A project that another program is writing. */

namespace QuorvaneEngine::Test {
namespace {

/** Another program that has a project open for writing, as long as the object lives. */
class OtherProgram {
public:
    explicit OtherProgram(const std::string& folder) {
        int ready[2];
        EXPECT_EQ(pipe(ready), 0);
        _process = fork();
        if(_process == 0) {
            EditorSession session;
            FileError refusal;
            const char isLocked = session.tryLock(folder.c_str(), refusal) ? 'y' : 'n';
            if(::write(ready[1], &isLocked, 1) != 1) _exit(1);
            for(;;) pause();
        }
        char isLocked = 0;
        EXPECT_EQ(::read(ready[0], &isLocked, 1), 1);
        EXPECT_EQ(isLocked, 'y');
        close(ready[0]);
        close(ready[1]);
    }
    ~OtherProgram() { end(); }
    OtherProgram(const OtherProgram&) = delete;
    OtherProgram& operator=(const OtherProgram&) = delete;

    /** Without a chance to tidy up. */
    void end() {
        if(!_process) return;
        kill(_process, SIGKILL);
        waitpid(_process, nullptr, 0);
        _process = 0;
    }

    std::string name() const { return std::to_string(_process); }

private:
    pid_t _process = 0;
};

/** More than there are until the next look at the disk. */
constexpr int LookFrames = 80;

constexpr const char* Mark = "Read-only: another editor has this project";

TEST_F(EditorFrameTest, AProjectThatAnotherProgramWritesIsOpenedReadOnly) {
    OtherProgram other{path("first")};
    EXPECT_FALSE(open("first"));
    const std::string holder = "another program has the project open for writing: app-tests on ";
    EXPECT_TRUE(playSeen("look", [this, &holder](ImGuiTestContext& user) {
        user.Yield(3);
        IM_CHECK(user.ItemExists("//Project in use/Cancel"));
        IM_CHECK(!isSeen(Mark));
        user.ItemClick("//Project in use/Open read-only");
        user.Yield(3);
        IM_CHECK(session.folder() == path("first").c_str());
        IM_CHECK(!session.isLocked());
        IM_CHECK(frame.isReadOnly());
        IM_CHECK(isSeen(Mark));
        user.ItemClick("//Counter/Count");
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_S);
        user.Yield(3);
        IM_CHECK(session.hasUnsavedChanges());
        IM_CHECK(isSeen((path("first") + ": " + holder).c_str()));
        user.ItemClick("//Project not saved/OK");
        user.Yield(3);
    }));
    EXPECT_EQ(messages(("Opened read-only: " + path("first")).c_str()), 1);
    EXPECT_EQ(read("first").find("counted"), std::string::npos);

    // What it leaves behind when it dies is in nobody's way.
    other.end();
    EXPECT_TRUE(std::filesystem::exists(root / "first/.editor/lock"));
    EXPECT_TRUE(play("save", [this](ImGuiTestContext& user) {
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_S);
        user.Yield(2);
        IM_CHECK(!user.ItemExists("//Project not saved/OK"));
        IM_CHECK(!frame.isReadOnly());
    }));
    EXPECT_FALSE(session.hasUnsavedChanges());
    EXPECT_NE(read("first").find("\"counted\": 1"), std::string::npos);
}

TEST_F(EditorFrameTest, AProjectThatBecomesFreeIsTakenAndThatIsTold) {
    OtherProgram other{path("first")};
    ASSERT_TRUE(frame.open(path("first").c_str(), EditorFrame::Access::Read));
    EXPECT_TRUE(playSeen("wait", [this, &other](ImGuiTestContext& user) {
        user.Yield(LookFrames);
        IM_CHECK(isSeen(Mark));
        other.end();
        user.Yield(LookFrames);
        IM_CHECK(!isSeen(Mark));
        IM_CHECK(session.isLocked());
        IM_CHECK(isSeen(("No other program has " + path("first") + " any more: it can be saved").c_str()));
    }));
}

TEST_F(EditorFrameTest, WhatTheOtherProgramSavedIsAskedForBeforeTheProjectIsTaken) {
    OtherProgram other{path("first")};
    ASSERT_TRUE(frame.open(path("first").c_str(), EditorFrame::Access::Read));
    EXPECT_TRUE(play("wait", [this, &other](ImGuiTestContext& user) {
        write("first", R"({"name": "first", "other": true, "counted": 2})");
        other.end();
        user.Yield(LookFrames);
        IM_CHECK(!session.isLocked());
        user.ItemClick("//Changed on disk/Reload");
        user.Yield(LookFrames);
        IM_CHECK(session.isLocked());
    }));
    EXPECT_EQ(counted(), 2);
}

TEST_F(EditorFrameTest, WhoWantsToHearOfChangesLaterTakesTheProjectAllTheSame) {
    OtherProgram other{path("first")};
    ASSERT_TRUE(frame.open(path("first").c_str(), EditorFrame::Access::Read));
    EXPECT_TRUE(play("wait", [this, &other](ImGuiTestContext& user) {
        write("first", R"({"name": "first", "other": true, "counted": 2})");
        user.Yield(LookFrames);
        user.ItemClick("//Changed on disk/Later");
        other.end();
        user.Yield(LookFrames);
        IM_CHECK(session.isLocked());
        IM_CHECK(!frame.isReadOnly());
        IM_CHECK(!user.ItemExists("//Changed on disk/Later"));
    }));
    EXPECT_EQ(counted(), 0);
}

TEST_F(EditorFrameTest, WhileATextIsTypedALockThatIsLostIsTakenAgainAndNoOtherIs) {
    ASSERT_TRUE(open("first"));
    EXPECT_TRUE(play("type", [this](ImGuiTestContext& user) {
        user.ItemInput("//Counter/Field");
        std::filesystem::remove_all(root / "first/.editor");
        user.Yield(LookFrames);
        IM_CHECK(ImGui::GetIO().WantTextInput);
        IM_CHECK(session.isLocked());
    }));
    OtherProgram other{path("second")};
    ASSERT_TRUE(frame.open(path("second").c_str(), EditorFrame::Access::Read));
    EXPECT_TRUE(play("type on", [this, &other](ImGuiTestContext& user) {
        user.ItemInput("//Counter/Field");
        other.end();
        user.Yield(2 * LookFrames);
        IM_CHECK(ImGui::GetIO().WantTextInput);
        IM_CHECK(frame.isReadOnly());
        user.KeyPress(ImGuiKey_Escape);
        user.Yield(LookFrames);
        IM_CHECK(!frame.isReadOnly());
    }));
}

TEST_F(EditorFrameTest, WhoReadsLeavesTheProjectsLayoutAlone) {
    EditorSession other;
    FileError refusal;
    ASSERT_TRUE(other.tryLock(path("first").c_str(), refusal));
    ASSERT_TRUE(frame.open(path("first").c_str(), EditorFrame::Access::Read));
    draw(3);
    ImGui::GetIO().WantSaveIniSettings = true;
    draw(3);
    ASSERT_TRUE(open("second"));
    EXPECT_FALSE(std::filesystem::exists(root / "first/.editor/imgui.ini"));
}

TEST_F(EditorFrameTest, WhoTakesAPictureMakesNothingAndTakesNothing) {
    ASSERT_TRUE(frame.open(path("first").c_str(), EditorFrame::Access::Picture));
    ImGui::GetIO().WantSaveIniSettings = true;
    EXPECT_TRUE(playSeen("look", [this](ImGuiTestContext& user) {
        user.Yield(LookFrames);
        IM_CHECK(!isSeen("Read-only"));
        IM_CHECK(!session.isLocked());
    }));
    EXPECT_FALSE(std::filesystem::exists(root / "first/.editor"));
}

TEST_F(EditorFrameTest, AFolderOfTheEditorThatIsDeletedIsMadeAgainWithItsLock) {
    ASSERT_TRUE(open("first"));
    EXPECT_TRUE(play("delete", [this](ImGuiTestContext& user) {
        user.ItemClick("//Counter/Count");
        std::filesystem::remove_all(root / "first/.editor");
        user.Yield(5 * LookFrames);
        IM_CHECK(session.isLocked());
    }));
    EXPECT_TRUE(std::filesystem::exists(root / "first/.editor/lock"));
    EXPECT_TRUE(std::filesystem::exists(root / "first/.editor/autosave")) << "it is where a copy is kept";
    EXPECT_EQ(messages(("Locked " + path("first") + " again, as its folder .editor had been removed").c_str()), 1);
}

TEST_F(EditorFrameTest, WhoLosesTheProjectToAnotherProgramIsToldAtOnce) {
    ASSERT_TRUE(open("first"));
    EXPECT_TRUE(playSeen("lose", [this](ImGuiTestContext& user) {
        std::filesystem::remove_all(root / "first/.editor");
        const OtherProgram other{path("first")};
        user.Yield(LookFrames);
        IM_CHECK(frame.isReadOnly());
        IM_CHECK(isSeen(Mark));
    }));
    draw(LookFrames);
    EXPECT_FALSE(frame.isReadOnly());
}

TEST_F(EditorFrameTest, WhoDoesNotWantToLookStaysWhereHeWas) {
    ASSERT_TRUE(open("second"));
    const OtherProgram other{path("first")};
    chosenFolder = path("first");
    EXPECT_TRUE(play("cancel", [](ImGuiTestContext& user) {
        user.ItemClick("//Counter/Count");
        choose(user, "File/Open project...");
        user.Yield(3);
        user.ItemClick("//Unsaved changes/Don't save");
        user.Yield(3);
        user.ItemClick("//Project in use/Cancel");
        user.Yield(2);
        IM_CHECK(!user.ItemExists("//Project in use/Cancel"));
    }));
    EXPECT_EQ(session.folder(), path("second").c_str());
    EXPECT_TRUE(session.hasUnsavedChanges());
    EXPECT_TRUE(session.isLocked());
}

TEST_F(EditorFrameTest, TheOpenProjectIsKeptFromOtherPrograms) {
    EditorSession other;
    FileError refusal;
    ASSERT_TRUE(open("first"));
    EXPECT_FALSE(other.tryLock(path("first").c_str(), refusal));
    // Itself it may open anew.
    ASSERT_TRUE(open("first"));
    EXPECT_FALSE(other.tryLock(path("first").c_str(), refusal));
    ASSERT_TRUE(open("second"));
    EXPECT_TRUE(other.tryLock(path("first").c_str(), refusal));
    EXPECT_FALSE(other.tryLock(path("second").c_str(), refusal));
}

}
}
