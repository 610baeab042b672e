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

TEST_F(EditorFrameTest, AProjectThatAnotherProgramWritesIsOpenedOnlyToBeLookedAt) {
    OtherProgram other{path("first")};
    EXPECT_FALSE(open("first"));
    EXPECT_TRUE(play("look", [this](ImGuiTestContext& user) {
        user.Yield(3);
        IM_CHECK(user.ItemExists("//Project in use/Cancel"));
        user.ItemClick("//Project in use/Open read-only");
        user.Yield(3);
        IM_CHECK(session.folder() == path("first").c_str());
        IM_CHECK(!session.isLocked());
        user.ItemClick("//Counter/Count");
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_S);
        user.Yield(2);
        IM_CHECK(session.hasUnsavedChanges());
    }));
    EXPECT_EQ(read("first").find("counted"), std::string::npos);
    ASSERT_TRUE(log.last());
    const std::string said = log.last()->text.data();
    const std::string expected = "ProjectStorage::save(): " + path("first") +
        ": another program has the project open for writing: app-tests on ";
    EXPECT_TRUE(said.starts_with(expected)) << said;
    EXPECT_NE(said.find(", process " + other.name() + ", since "), std::string::npos) << said;

    // What it leaves behind when it dies is in nobody's way.
    other.end();
    EXPECT_TRUE(std::filesystem::exists(root / "first/.editor/lock"));
    EXPECT_TRUE(play("save", [](ImGuiTestContext& user) {
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_S);
        user.Yield(2);
    }));
    EXPECT_FALSE(session.hasUnsavedChanges());
    EXPECT_NE(read("first").find("\"counted\": 1"), std::string::npos);
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
