#include "LinkTarget.h"

#include <filesystem>

#include <gtest/gtest.h>

#include "TestFolder.h"
#include "TestProject.h"

namespace QuorvaneEngine {

TEST(LinkTarget, IsWhereALinkLeads) {
    TestFolder folder;
    folder.write("a/b/file", "x");
    std::filesystem::create_symlink("b/file", folder / "a/link");
    std::filesystem::create_symlink("nothing", folder / "a/gone");
    const std::string base = std::filesystem::canonical(folder.path).string();
    EXPECT_EQ(copied(linkTarget(viewed(folder / "a/link"))), base + "/a/b/file");
    EXPECT_EQ(copied(linkTarget(viewed(folder / "a/b/file"))), base + "/a/b/file");
    EXPECT_EQ(copied(linkTarget(viewed(folder / "a/gone"))), "");
}

TEST(LinkTarget, IsToldFromAFolderWhereItLiesBelow) {
    TestFolder folder;
    folder.write("a/b/file", "x");
    folder.write("ab/file", "x");
    std::filesystem::create_symlink("b/file", folder / "a/link");
    std::filesystem::create_symlink("../ab/file", folder / "a/out");
    std::filesystem::create_directory_symlink("a", folder / "other");
    const auto below = [&folder](const std::string& base, const std::string& file) {
        return copied(linkTargetBelow(viewed(folder / base), viewed(folder / file)));
    };
    EXPECT_EQ(below("a", "a/link"), "b/file");
    EXPECT_EQ(below("other", "a/link"), "b/file");
    EXPECT_EQ(below("a", "other/b/file"), "b/file");
    EXPECT_EQ(below("a", "a/out"), "");
    EXPECT_EQ(below("a", "a"), "");
    EXPECT_EQ(below("a", "a/none"), "");
    EXPECT_EQ(below("none", "a/link"), "");
    const std::string file = std::filesystem::canonical(folder / "a/b/file").string();
    EXPECT_EQ(copied(linkTargetBelow("/", viewed(file))), file.substr(1));
}

}
