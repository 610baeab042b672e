#include "ProjectLock.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <string>

#include <unistd.h>

#include "LockNote.h"
#include "MemoryFileSystem.h"
#include "host/localization/TestFolder.h"

namespace QuorvaneEngine {
namespace {

namespace fs = std::filesystem;

class ProjectLockTest: public testing::Test {
protected:
    ProjectLockTest() {
        folder.write("p/project.json", "{}");
        fs::create_directory(folder / "p/.editor");
    }

    bool take(ProjectLock& lock, const char* name = "p") {
        error = {};
        return lock.take((folder / name).c_str(), ProjectLock::Making::No, error);
    }
    bool takeAndTell(ProjectLock& lock, const char* name = "p") {
        error = {};
        const bool isTaken = lock.take((folder / name).c_str(), ProjectLock::Making::No, error);
        lock.announce();
        return isTaken;
    }
    bool isTaken(const ProjectLock& lock, const char* name = "p") { return lock.isTaken((folder / name).c_str()); }

    std::string reason() const { return {error.reason.data(), error.reason.size()}; }

    const TestFolder folder;
    FileError error;
    ProjectLock first{FileSystem::disk()}, second{FileSystem::disk()};
};

constexpr const char* Refusal = "another program has the project open for writing";

TEST_F(ProjectLockTest, OneAtATimeHasItAndTellsTheOthers) {
    ASSERT_TRUE(takeAndTell(first));
    EXPECT_TRUE(isTaken(first));
    EXPECT_FALSE(takeAndTell(second));
    EXPECT_FALSE(isTaken(second));
    const Containers::String holder = LockNote::read(FileSystem::disk(), (folder / "p").c_str());
    EXPECT_EQ(reason(), std::string{Refusal} + ": " + holder.data());
    EXPECT_NE(reason().find("process " + std::to_string(getpid())), std::string::npos);
    EXPECT_EQ(error.path, (folder / "p").c_str());
    EXPECT_FALSE(take(second));
    first.release();
    EXPECT_FALSE(fs::exists(folder / "p/.editor/lock"));
    EXPECT_TRUE(take(second));
}

TEST_F(ProjectLockTest, OneThatIsTakenForAMomentLeavesNoTrace) {
    ASSERT_TRUE(take(first));
    EXPECT_EQ(folder.files().size(), 3u);
    EXPECT_FALSE(take(second));
    EXPECT_EQ(reason(), Refusal);
}

TEST_F(ProjectLockTest, WhatTellsOfAProgramThatIsGoneIsNoLock) {
    folder.write("p/.editor/lock", "quorvane-lock 1\nquorvane-editor\n4711\nelsewhere\n1772387100\n");
    EXPECT_TRUE(takeAndTell(first));
    EXPECT_EQ(folder.read("p/.editor/lock").find("4711\nelsewhere"), std::string::npos);
}

TEST_F(ProjectLockTest, TheProjectsOwnFolderIsLeftToOthers) {
    ASSERT_TRUE(takeAndTell(first));
    FolderLock other;
    EXPECT_TRUE(other.take(FileSystem::disk(), (folder / "p").c_str(), "is in use", error));
    EXPECT_TRUE(other.isTaken((folder / "p").c_str()));
}

TEST_F(ProjectLockTest, ItIsKnownByEveryNameOfTheFolder) {
    fs::create_directory_symlink("p", folder / "q");
    ASSERT_TRUE(takeAndTell(first));
    EXPECT_TRUE(isTaken(first, "q"));
    EXPECT_FALSE(take(second, "q"));
}

TEST_F(ProjectLockTest, AFolderThatTookThePlaceOfTheLockedOneIsNotLocked) {
    ASSERT_TRUE(takeAndTell(first));
    fs::remove_all(folder / "p/.editor");
    EXPECT_FALSE(isTaken(first));
    fs::create_directory(folder / "p/.editor");
    EXPECT_TRUE(takeAndTell(first));
    fs::rename(folder / "p", folder / "old");
    fs::create_directories(folder / "p/.editor");
    EXPECT_FALSE(isTaken(first));
    EXPECT_TRUE(isTaken(first, "old"));
    EXPECT_TRUE(takeAndTell(second));
}

TEST_F(ProjectLockTest, WhatTellsOfAnotherProgramStays) {
    ASSERT_TRUE(takeAndTell(first));
    fs::remove_all(folder / "p/.editor");
    fs::create_directory(folder / "p/.editor");
    ASSERT_TRUE(takeAndTell(second));
    const std::string note = folder.read("p/.editor/lock");
    EXPECT_FALSE(first.takeForSaving((folder / "p").c_str(), error));
    EXPECT_EQ(folder.read("p/.editor/lock"), note);
    first.release();
    EXPECT_EQ(folder.read("p/.editor/lock"), note);
}

TEST_F(ProjectLockTest, WhoWasRefusedTellsWhenHeHasItAgain) {
    ASSERT_TRUE(takeAndTell(first));
    fs::remove_all(folder / "p/.editor");
    fs::create_directory(folder / "p/.editor");
    ASSERT_TRUE(take(second));
    EXPECT_FALSE(first.takeForSaving((folder / "p").c_str(), error));
    second.release();
    EXPECT_FALSE(fs::exists(folder / "p/.editor/lock"));
    EXPECT_TRUE(first.takeForSaving((folder / "p").c_str(), error));
    EXPECT_TRUE(fs::exists(folder / "p/.editor/lock"));
}

TEST_F(ProjectLockTest, WithoutAFolderForItNothingIsMadeAndTheProjectsOwnIsLocked) {
    fs::create_directory(folder / "empty");
    ASSERT_TRUE(takeAndTell(first, "empty"));
    EXPECT_TRUE(isTaken(first, "empty"));
    EXPECT_FALSE(takeAndTell(second, "empty"));
    EXPECT_EQ(reason(), Refusal);
    EXPECT_TRUE(fs::is_empty(folder / "empty"));
}

TEST_F(ProjectLockTest, WhoMakesTheFolderForItHasToHaveTheProjectsOwn) {
    fs::create_directory(folder / "empty");
    const std::string path = folder / "empty";
    ASSERT_TRUE(takeAndTell(first, "empty"));
    EXPECT_FALSE(second.take(path.c_str(), ProjectLock::Making::Yes, error));
    EXPECT_FALSE(second.takeForSaving(path.c_str(), error));
    EXPECT_TRUE(fs::is_empty(path));
    EXPECT_TRUE(first.takeForSaving(path.c_str(), error));
    EXPECT_EQ(folder.read("empty/.editor/.gitignore"), "*\n");
    EXPECT_TRUE(isTaken(first, "empty"));
    EXPECT_TRUE(fs::exists(folder / "empty/.editor/lock")) << "who has it is told from now on";
    EXPECT_FALSE(takeAndTell(second, "empty"));
    FolderLock other;
    EXPECT_TRUE(other.take(FileSystem::disk(), path.c_str(), "is in use", error));
    EXPECT_TRUE(first.takeForSaving(path.c_str(), error));
}

TEST_F(ProjectLockTest, ThroughALinkOfAStrangerNothingIsWritten) {
    folder.write("elsewhere/lock", "theirs");
    fs::remove(folder / "p/.editor");
    fs::create_directory_symlink("../elsewhere", folder / "p/.editor");
    const auto before = folder.files();
    const std::string path = folder / "p";
    EXPECT_TRUE(first.take(path.c_str(), ProjectLock::Making::Yes, error));
    first.announce();
    EXPECT_EQ(folder.files(), before);
    EXPECT_FALSE(take(second)) << "the project's own folder is locked";
    first.release();
    EXPECT_EQ(folder.files(), before);
}

/** One on which locking has a fixed result. */
class LocklessFileSystem: public MemoryFileSystem {
public:
    explicit LocklessFileSystem(int result): _result{result} {
        put("/p/project.json", "{}");
        put("/p/.editor/.gitignore", "*\n");
    }
    int lockFolder(Containers::StringView, int&) override { return _result; }

    /** As a process of this host would. */
    void putNote(pid_t process) {
        char host[256]{};
        gethostname(host, sizeof(host) - 1);
        put("/p/.editor/lock", "quorvane-lock 1\neditor\n" + std::to_string(process) + "\n" + host + "\n1772387100\n");
    }

private:
    int _result;
};

TEST_F(ProjectLockTest, WhereTheDiskKnowsNoLocksTheNoteIsBelieved) {
    LocklessFileSystem files{ENOLCK};
    files.putNote(getppid());
    ProjectLock lock{files};
    EXPECT_FALSE(lock.take("/p", ProjectLock::Making::Yes, error));
    EXPECT_FALSE(lock.isTaken("/p"));
    const std::string holder = LockNote::read(files, "/p").data();
    EXPECT_EQ(reason(),
        "another program may have the project open for writing, which this disk cannot tell: " + holder +
            "; if that has ended, .editor/lock can be deleted");
    EXPECT_EQ(error.path, "/p");
    files.removeFile("/p/.editor/lock");
    EXPECT_TRUE(lock.take("/p", ProjectLock::Making::Yes, error));
    lock.announce();
    EXPECT_TRUE(lock.isTaken("/p"));
    EXPECT_NE(LockNote::read(files, "/p"), "");
    files.putNote(getppid());
    EXPECT_FALSE(lock.isTaken("/p"));
    EXPECT_FALSE(lock.takeForSaving("/p", error));
    lock.release();
    EXPECT_TRUE(files.exists("/p/.editor/lock")) << "it is another program's";
}

TEST_F(ProjectLockTest, AFolderThatIsClosedToThisProgramIsNoFailureAndNotHeld) {
    LocklessFileSystem files{EACCES};
    ProjectLock lock{files};
    EXPECT_TRUE(lock.take("/p", ProjectLock::Making::Yes, error));
    EXPECT_FALSE(lock.isTaken("/p"));
}

TEST_F(ProjectLockTest, AFolderThatIsGoneIsNoFailure) {
    EXPECT_TRUE(takeAndTell(first, "gone"));
    EXPECT_FALSE(fs::exists(folder / "gone"));
}

}
}
