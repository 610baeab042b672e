#include "FolderLock.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "FileSystem.h"
#include "MemoryFileSystem.h"

namespace QuorvaneEngine {
namespace {

class FolderLockTest: public testing::Test {
protected:
    FolderLockTest() {
        std::string name = (std::filesystem::temp_directory_path() / "quorvane-XXXXXX").string();
        folder = mkdtemp(name.data());
    }
    ~FolderLockTest() override { std::filesystem::remove_all(folder); }

    bool take(FolderLock& lock, const std::string& path) {
        error = {};
        return lock.take(FileSystem::disk(), {path.data(), path.size()}, "is in use", error);
    }

    std::string folder;
    FileError error;
};

TEST_F(FolderLockTest, OneAtATimeHasIt) {
    FolderLock first, second;
    EXPECT_FALSE(first.isTaken(folder.data()));
    EXPECT_TRUE(take(first, folder));
    EXPECT_TRUE(first.isTaken(folder.data()));
    EXPECT_FALSE(take(second, folder));
    EXPECT_FALSE(second.isTaken(folder.data()));
    EXPECT_EQ(error.path, folder.data());
    EXPECT_EQ(error.reason, "is in use");
    first.release();
    EXPECT_FALSE(first.isTaken(folder.data()));
    EXPECT_TRUE(take(second, folder));
}

TEST_F(FolderLockTest, AnotherNameOfTheFolderIsNoWayAround) {
    std::filesystem::create_directory(folder + "/a");
    std::filesystem::create_directory_symlink("a", folder + "/b");
    FolderLock first, second;
    EXPECT_TRUE(take(first, folder + "/a"));
    EXPECT_FALSE(take(second, folder + "/b"));
    EXPECT_FALSE(take(second, folder + "/a/../a/"));
    EXPECT_TRUE(take(second, folder));
}

TEST_F(FolderLockTest, TakingAnotherFolderGivesTheFirstBack) {
    std::filesystem::create_directory(folder + "/a");
    FolderLock first, second;
    EXPECT_TRUE(take(first, folder));
    EXPECT_TRUE(take(first, folder + "/a"));
    EXPECT_TRUE(take(second, folder));
}

TEST_F(FolderLockTest, WhatIsNoFolderIsNotTakenAndNoFailure) {
    FolderLock lock;
    EXPECT_TRUE(take(lock, folder + "/gone"));
    EXPECT_FALSE(lock.isTaken((folder + "/gone").data()));
}

TEST_F(FolderLockTest, NothingIsLeftInTheFolder) {
    FolderLock lock;
    EXPECT_TRUE(take(lock, folder));
    EXPECT_TRUE(std::filesystem::is_empty(folder));
}

TEST_F(FolderLockTest, ItGoesWithTheProgramThatHasIt) {
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    const pid_t child = fork();
    if(child == 0) {
        FolderLock own;
        const char isTaken = take(own, folder) ? 'y' : 'n';
        if(write(ready[1], &isTaken, 1) != 1) _exit(1);
        for(;;) pause();
    }
    char isTaken = 0;
    ASSERT_EQ(read(ready[0], &isTaken, 1), 1);
    EXPECT_EQ(isTaken, 'y');
    FolderLock lock;
    EXPECT_FALSE(take(lock, folder));
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    EXPECT_TRUE(take(lock, folder));
    close(ready[0]);
    close(ready[1]);
}

TEST(FolderLock, AFileSystemWithoutLocksGivesItToEverybody) {
    MemoryFileSystem files;
    FileError error;
    FolderLock first, second;
    EXPECT_TRUE(first.take(files, "/p", "is in use", error));
    EXPECT_TRUE(second.take(files, "/p", "is in use", error));
}

}
}
