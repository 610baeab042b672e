#include "FileTreeFixture.h"

#include <sys/stat.h>

#include "support/CapturedOutput.h"
#include "support/OrdinaryUser.h"

namespace QuorvaneEngine {
namespace {

using QuorvaneEngine::Test::CapturedOutput;
using QuorvaneEngine::Test::OrdinaryUser;

using Corrade::Containers::StringView;

namespace fs = std::filesystem;

using DeleteRecursive = FileTree;

TEST_F(DeleteRecursive, OfAFileGivesTheResultOfRemovingIt) {
    folder.write("a", "one");
    const CapturedOutput output;
    EXPECT_TRUE(remove("a"));
    EXPECT_FALSE(fs::exists(folder / "a"));
    EXPECT_EQ(output.error(), "");
    EXPECT_FALSE(remove("a"));
    EXPECT_EQ(output.error(),
        "Utility::Path::remove(): can't remove " + (folder / "a") + ": error 2 (No such file or directory)\n");
}

TEST_F(DeleteRecursive, OfAnEmptyFolderRemovesIt) {
    fs::create_directories(folder / "d");
    EXPECT_TRUE(remove("d"));
    EXPECT_FALSE(fs::exists(folder / "d"));
}

TEST_F(DeleteRecursive, OfATreeRemovesAllOfItAndNothingElse) {
    for(const char* const name: {"d/a", "d/.hidden", "d/e/b", "d/e/f/c", "beside"}) folder.write(name, name);
    fs::create_directories(folder / "d/empty");
    const CapturedOutput output;
    EXPECT_TRUE(remove("d"));
    EXPECT_EQ(folder.files(), (Files{{"beside", "beside"}}));
    EXPECT_EQ(output.debug() + output.warning() + output.error(), "");
}

TEST_F(DeleteRecursive, ThePathNeedNotBeTerminatedAndMayEndWithASlash) {
    folder.write("d/a", "one");
    folder.write("e/a", "one");
    const std::string path = folder / "d and more";
    EXPECT_TRUE(deleteRecursive(StringView{path.c_str()}.exceptSuffix(9)));
    EXPECT_TRUE(remove("e/"));
    EXPECT_EQ(folder.files(), Files{});
}

TEST_F(DeleteRecursive, OfAPathThatEndsWithADotRemovesTheFolder) {
    folder.write("d/a", "one");
    const CapturedOutput output;
    EXPECT_TRUE(remove("d/./"));
    EXPECT_EQ(folder.files(), Files{});
    folder.write("d./a", "one");
    EXPECT_TRUE(remove("d./."));
    EXPECT_EQ(folder.files(), Files{});
    EXPECT_EQ(output.error(), "");
}

TEST_F(DeleteRecursive, RemovesAllButWhatCannotBeRemovedAndTellsOfItAtEveryLevel) {
    for(const char* const name: {"d/a", "d/e/b", "d/e/f/stuck", "d/e/g/c", "d/h/i"}) folder.write(name, name);
    fs::permissions(folder / "d/e/f", fs::perms::owner_read | fs::perms::owner_exec);
    const OrdinaryUser user{folder.path};
    if(!user.isOrdinary) GTEST_SKIP() << "permissions do not bind the superuser, who cannot become another user here";
    const CapturedOutput output;
    EXPECT_FALSE(remove("d"));
    EXPECT_EQ(folder.files(), (Files{{"d/", ""}, {"d/e/", ""}, {"d/e/f/", ""}, {"d/e/f/stuck", "d/e/f/stuck"}}));
    const auto cannot = [this](const char* const name, const char* const error) {
        return "Utility::Path::remove(): can't remove " + (folder / name) + ": error " + error + "\n";
    };
    const auto unable = [this](const char* const name) { return "Unable to delete: " + (folder / name) + "\n"; };
    constexpr const char* NotEmpty = "39 (Directory not empty)";
    EXPECT_EQ(output.error(),
        cannot("d/e/f/stuck", "13 (Permission denied)") + unable("d/e/f/stuck") + cannot("d/e/f", NotEmpty) +
            unable("d/e/f") + cannot("d/e", NotEmpty) + unable("d/e") + cannot("d", NotEmpty));
}

TEST_F(DeleteRecursive, AFolderThatCannotBeListedStays) {
    folder.write("d/e/a", "secret");
    folder.write("d/b", "one");
    fs::permissions(folder / "d/e", fs::perms::none);
    {
        const OrdinaryUser user{folder.path};
        if(!user.isOrdinary)
            GTEST_SKIP() << "permissions do not bind the superuser, who cannot become another user here";
        const CapturedOutput output;
        EXPECT_FALSE(remove("d"));
        const std::string path = folder / "d/e";
        EXPECT_EQ(output.error(),
            "Utility::Path::list(): can't list " + path + ": error 13 (Permission denied)\nUnable to delete: " + path +
                "\nUnable to delete: " + path + "\nUtility::Path::remove(): can't remove " + (folder / "d") +
                ": error 39 (Directory not empty)\n");
        EXPECT_FALSE(remove("d/e"));
    }
    fs::permissions(folder / "d/e", fs::perms::owner_all);
    EXPECT_EQ(folder.files(), (Files{{"d/", ""}, {"d/e/", ""}, {"d/e/a", "secret"}}));
}

TEST_F(DeleteRecursive, AFileWithoutRightsGoesWhereItsFolderAllowsIt) {
    folder.write("d/a", "secret");
    fs::permissions(folder / "d/a", fs::perms::none);
    const OrdinaryUser user{folder.path};
    if(!user.isOrdinary) GTEST_SKIP() << "permissions do not bind the superuser, who cannot become another user here";
    EXPECT_TRUE(remove("d"));
    EXPECT_EQ(folder.files(), Files{});
}

TEST_F(DeleteRecursive, RemovesPipesToo) {
    fs::create_directories(folder / "d");
    ASSERT_EQ(mkfifo((folder / "d/pipe").c_str(), 0600), 0);
    EXPECT_TRUE(remove("d"));
    EXPECT_EQ(folder.files(), Files{});
}

TEST_F(DeleteRecursive, OfNoPathRemovesNothing) {
    const CapturedOutput output;
    EXPECT_FALSE(deleteRecursive(""));
    EXPECT_FALSE(deleteRecursive({}));
}

}
}
