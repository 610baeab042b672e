#include "FileSystem.h"

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include <Corrade/Containers/GrowableArray.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace QuorvaneEngine {
namespace {

/* The disk itself, in a folder that is made for each case. */
class FileSystemTest: public testing::Test {
protected:
    FileSystemTest() {
        std::string name = (std::filesystem::temp_directory_path() / "quorvane-XXXXXX").string();
        folder = mkdtemp(name.data());
    }
    ~FileSystemTest() override { std::filesystem::remove_all(folder); }

    Containers::String at(const std::string& name) const {
        const std::string path = folder + "/" + name;
        return {path.data(), path.size()};
    }

    std::string read(const std::string& name) {
        Containers::String bytes;
        EXPECT_EQ(disk.readFile(at(name), bytes), 0);
        return {bytes.data(), bytes.size()};
    }

    FileSystem& disk = FileSystem::disk();
    std::string folder;
};

TEST_F(FileSystemTest, FilesAreReadAsTheyWereWritten) {
    const std::string bytes{"a\0b\r\n\xff", 6};
    EXPECT_EQ(disk.writeFile(at("f"), {bytes.data(), bytes.size()}, {}), 0);
    EXPECT_EQ(disk.syncFile(at("f")), 0);
    EXPECT_EQ(disk.syncFolder(at("")), 0);
    EXPECT_EQ(read("f"), bytes);
    EXPECT_EQ(disk.writeFile(at("f"), "x", {}), 0);
    EXPECT_EQ(read("f"), "x");
    EXPECT_EQ(disk.writeFile(at("f"), {}, {}), 0);
    EXPECT_EQ(read("f"), "");
}

TEST_F(FileSystemTest, LargeFilesAreReadWhole) {
    const std::string bytes(5000000, 'x');
    EXPECT_EQ(disk.writeFile(at("f"), {bytes.data(), bytes.size()}, {}), 0);
    EXPECT_TRUE(read("f") == bytes);
}

TEST_F(FileSystemTest, WhatIsNoFileIsNotRead) {
    Containers::String bytes;
    EXPECT_EQ(disk.readFile(at("missing"), bytes), ENOENT);
    EXPECT_EQ(disk.readFile(at(""), bytes), EISDIR);
    ASSERT_EQ(mkfifo(at("pipe").data(), 0600), 0);
    EXPECT_EQ(disk.readFile(at("pipe"), bytes), EINVAL);
    EXPECT_EQ(disk.readFile("/dev/null", bytes), EINVAL);
    const int server = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    (folder + "/socket").copy(address.sun_path, sizeof(address.sun_path) - 1);
    ASSERT_EQ(bind(server, reinterpret_cast<const sockaddr*>(&address), sizeof(address)), 0);
    close(server);
    EXPECT_EQ(disk.readFile(at("socket"), bytes), EINVAL);
    EXPECT_EQ(disk.writeFile(at("f"), "x", {}), 0);
    EXPECT_EQ(disk.readFile(at("f/g"), bytes), ENOTDIR);
    std::ofstream{folder + "/huge"};
    std::filesystem::resize_file(folder + "/huge", FileSystem::MaxFileSize + 1);
    EXPECT_EQ(disk.readFile(at("huge"), bytes), EFBIG);
}

TEST_F(FileSystemTest, ReasonsAreSaidInTheSystemsWordsButForWhatIsNoFile) {
    EXPECT_EQ(systemReason("read", EINVAL), "is no file");
    EXPECT_EQ(systemReason("written", EINVAL), "cannot be written: Invalid argument");
    EXPECT_EQ(systemReason("read", EACCES), "cannot be read: Permission denied");
}

TEST_F(FileSystemTest, AFullDiskIsToldOf) {
    if(!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "there is no /dev/full on this system";
    EXPECT_EQ(disk.writeFile("/dev/full", "x", {}), ENOSPC);
}

TEST_F(FileSystemTest, AFileGetsThePermissionsOfAnother) {
    EXPECT_EQ(disk.writeFile(at("f"), "x", {}), 0);
    ASSERT_EQ(chmod(at("f").data(), 0640), 0);
    EXPECT_EQ(disk.writeFile(at("g"), "x", at("f")), 0);
    struct stat status {};
    ASSERT_EQ(stat(at("g").data(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0640u);
    EXPECT_EQ(disk.writeFile(at("h"), "x", at("missing")), 0);
}

TEST_F(FileSystemTest, ALinkIsNotFollowedToBeWritten) {
    EXPECT_EQ(disk.writeFile(at("f"), "kept", {}), 0);
    ASSERT_EQ(symlink(at("f").data(), at("link").data()), 0);
    EXPECT_EQ(disk.writeFile(at("link"), "x", {}), ELOOP);
    EXPECT_EQ(read("f"), "kept");
}

TEST_F(FileSystemTest, LinksAreToldFromWhatTheyStandFor) {
    EXPECT_EQ(disk.makeFolder(at("d")), 0);
    ASSERT_EQ(symlink(at("d").data(), at("link").data()), 0);
    ASSERT_EQ(symlink(at("gone").data(), at("dangling").data()), 0);
    EXPECT_TRUE(disk.isLink(at("link")));
    EXPECT_TRUE(disk.isLink(at("dangling")));
    EXPECT_FALSE(disk.isLink(at("d")));
    EXPECT_FALSE(disk.isLink(at("gone")));
}

TEST_F(FileSystemTest, ManyAreSynchronizedAtOnceEachWithItsResult) {
    Containers::Array<Containers::String> files, folders;
    for(int i = 0; i != 30; ++i) {
        arrayAppend(files, at("f" + std::to_string(i)));
        EXPECT_EQ(i % 3 ? disk.writeFile(files[std::size_t(i)], "x", {}) : 0, 0);
        arrayAppend(folders, at("d" + std::to_string(i)));
        EXPECT_EQ(i % 5 ? disk.makeFolder(folders[std::size_t(i)]) : 0, 0);
    }
    // The disk does it on several threads, others one after the other.
    for(const bool isAtOnce: {true, false}) {
        Containers::Array<int> results{Corrade::DirectInit, 60, -1};
        if(isAtOnce) disk.syncAll(files, folders, results);
        else disk.FileSystem::syncAll(files, folders, results);
        for(int i = 0; i != 60; ++i) EXPECT_EQ(results[std::size_t(i)], (i < 30 ? i % 3 : i % 5) ? 0 : ENOENT) << i;
    }
    disk.syncAll({}, {}, {});
}

TEST_F(FileSystemTest, ARenamedFileTakesThePlaceOfAnotherAndASecondNameKeepsTheOld) {
    EXPECT_EQ(disk.writeFile(at("f"), "old", {}), 0);
    EXPECT_EQ(disk.writeFile(at("g"), "new", {}), 0);
    EXPECT_EQ(disk.linkFile(at("f"), at("kept")), 0);
    EXPECT_EQ(disk.linkFile(at("f"), at("kept")), EEXIST);
    EXPECT_EQ(disk.renameFile(at("g"), at("f")), 0);
    EXPECT_EQ(disk.renameFile(at("g"), at("f")), ENOENT);
    EXPECT_EQ(read("f"), "new");
    EXPECT_EQ(read("kept"), "old");
}

TEST_F(FileSystemTest, FoldersAreMadeListedInByteOrderAndRemovedWhenEmpty) {
    EXPECT_EQ(disk.makeFolder(at("d")), 0);
    EXPECT_EQ(disk.makeFolder(at("d")), EEXIST);
    for(const char* const name: {"d/b", "d/B", "d/\xc3\xa4", "d/.a"}) EXPECT_EQ(disk.writeFile(at(name), "", {}), 0);
    Containers::Array<Containers::String> names;
    EXPECT_EQ(disk.listFolder(at("d"), names), 0);
    ASSERT_EQ(names.size(), 4);
    EXPECT_EQ(names[0], ".a");
    EXPECT_EQ(names[1], "B");
    EXPECT_EQ(names[2], "b");
    EXPECT_EQ(names[3], "\xc3\xa4");
    EXPECT_EQ(disk.removeFolder(at("d")), ENOTEMPTY);
    for(const Containers::String& name: names) EXPECT_EQ(disk.removeFile(at("d/" + std::string{name.data()})), 0);
    EXPECT_EQ(disk.removeFile(at("d/b")), ENOENT);
    EXPECT_EQ(disk.removeFolder(at("d")), 0);
    EXPECT_EQ(disk.listFolder(at("d"), names), ENOENT);
}

TEST(SystemReason, SaysWhatCannotBeDoneAndWhy) {
    EXPECT_EQ(systemReason("written", ENOSPC), "cannot be written: No space left on device");
}

TEST_F(FileSystemTest, AStampTellsThatAFileWasWrittenOrReplaced) {
    FileStamp first, second;
    EXPECT_EQ(disk.stampOf(at("f"), first), ENOENT);
    EXPECT_EQ(first, FileStamp{});
    ASSERT_EQ(disk.writeFile(at("f"), "abc", {}), 0);
    ASSERT_EQ(disk.stampOf(at("f"), first), 0);
    EXPECT_EQ(first.size, 3u);
    ASSERT_EQ(disk.stampOf(at("f"), second), 0);
    EXPECT_EQ(first, second);
    std::filesystem::last_write_time(
        folder + "/f", std::filesystem::last_write_time(folder + "/f") + std::chrono::nanoseconds{100});
    ASSERT_EQ(disk.stampOf(at("f"), second), 0);
    EXPECT_EQ(second.changed, first.changed + 100);
    EXPECT_TRUE(second.isSameFile(first));
    // As who writes a file and hides that.
    std::filesystem::last_write_time(
        folder + "/f", std::filesystem::last_write_time(folder + "/f") - std::chrono::nanoseconds{100});
    std::filesystem::permissions(folder + "/f", std::filesystem::perms::owner_read);
    ASSERT_EQ(disk.stampOf(at("f"), second), 0);
    EXPECT_EQ(second.changed, first.changed);
    EXPECT_GT(second.touched, first.touched);
    EXPECT_NE(second, first);
    ASSERT_EQ(disk.writeFile(at("g"), "abc", {}), 0);
    ASSERT_EQ(disk.renameFile(at("g"), at("f")), 0);
    // A view of a path may end before its text does.
    ASSERT_EQ(disk.stampOf(at("f.json").exceptSuffix(5), second), 0);
    EXPECT_FALSE(second.isSameFile(first));
    EXPECT_EQ(disk.stampOf(at(""), second), 0);
    EXPECT_EQ(disk.stampOf(at("f/g"), second), ENOTDIR);
}

}
}
