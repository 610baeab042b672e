#include "app/MappedFile.h"

#include <string>
#include <utility>

#include <sys/stat.h>

#include <gtest/gtest.h>

#include "host/localization/TestFolder.h"

namespace QuorvaneEngine {
namespace {

std::string text(const MappedFile& file) { return {file.bytes().data(), file.bytes().size()}; }

TEST(MappedFile, HasTheBytesOfTheFile) {
    const TestFolder folder;
    const std::string bytes = std::string(100000, 'a') + '\0' + "end";
    folder.write("file", bytes);
    EXPECT_EQ(text(MappedFile{(folder / "file").c_str()}), bytes);
}

TEST(MappedFile, KeepsThemWhenItIsMovedAndWhenTheFileIsDeleted) {
    const TestFolder folder;
    folder.write("file", "some bytes");
    MappedFile file{(folder / "file").c_str()};
    const MappedFile moved{std::move(file)};
    std::filesystem::remove(folder / "file");
    EXPECT_EQ(text(moved), "some bytes");
}

TEST(MappedFile, WhatIsEmptyOrNoFileHasNone) {
    const TestFolder folder;
    folder.write("empty", "");
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_TRUE(MappedFile{(folder / "empty").c_str()}.bytes().isEmpty());
    EXPECT_TRUE(MappedFile{(folder / "nowhere").c_str()}.bytes().isEmpty());
    EXPECT_TRUE(MappedFile{(folder / "").c_str()}.bytes().isEmpty());
}

}
}
