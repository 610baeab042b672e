#include "FileTreeFixture.h"

#include <sys/stat.h>

#include "support/CapturedOutput.h"
#include "support/OrdinaryUser.h"

namespace QuorvaneEngine {
namespace {

using QuorvaneEngine::Test::CapturedOutput;
using QuorvaneEngine::Test::OrdinaryUser;

namespace fs = std::filesystem;

using CopyRecursive = FileTree;
using DeleteRecursive = FileTree;

TEST_F(CopyRecursive, LinksBecomeWhatTheyLeadTo) {
    folder.write("from/a", "one");
    folder.write("from/d/b", "two");
    folder.write("outside/c", "three");
    link("a", "from/link to a file");
    link("d", "from/link to a folder");
    link("../outside", "from/link out of the tree");
    link(folder / "outside/c", "from/absolute link");
    link("link to a file", "from/link to a link");
    const CapturedOutput output;
    EXPECT_TRUE(copy());
    EXPECT_EQ(filesIn("to"),
        (Files{{"a", "one"}, {"absolute link", "three"}, {"d/", ""}, {"d/b", "two"}, {"link out of the tree/", ""},
            {"link out of the tree/c", "three"}, {"link to a file", "one"}, {"link to a folder/", ""},
            {"link to a folder/b", "two"}, {"link to a link", "one"}}));
    for(const auto& entry: fs::recursive_directory_iterator{folder / "to"}) EXPECT_FALSE(entry.is_symlink()) << entry;
    EXPECT_EQ(output.warning() + output.error(), "");
}

TEST_F(CopyRecursive, TheFolderItselfMayBeALink) {
    folder.write("real/a", "one");
    link("real", "from");
    const Silence silence;
    EXPECT_TRUE(copy());
    EXPECT_EQ(filesIn("to"), (Files{{"a", "one"}}));
    EXPECT_FALSE(fs::is_symlink(folder / "to"));
}

TEST_F(CopyRecursive, ALinkThatLeadsNowhereIsSkipped) {
    folder.write("from/a", "one");
    link("nowhere", "from/dangling");
    const CapturedOutput output;
    EXPECT_TRUE(copy());
    EXPECT_EQ(output.warning(), skipped("dangling", "the link leads nowhere"));
    EXPECT_EQ(output.error(), "");
    EXPECT_EQ(output.debug(), copying("a") + "\n");
    EXPECT_EQ(filesIn("to"), (Files{{"a", "one"}}));
}

TEST_F(CopyRecursive, ALinkThatCannotBeFollowedEndsIt) {
    const std::string longName(300, 'n');
    folder.write("file", "one");
    for(const auto& [target, error]:
        Files{{"../file/below", "20 (Not a directory)"}, {longName, "36 (File name too long)"}}) {
        link(target, "from/a");
        const CapturedOutput output;
        EXPECT_FALSE(copy()) << target;
        EXPECT_EQ(output.debug(), copying("a") + "\n");
        EXPECT_EQ(output.warning(), "");
        EXPECT_EQ(output.error(),
            "Utility::Path::copy(): can't open " + (folder / "from/a") + " for reading: error " + error + "\n");
        EXPECT_TRUE(fs::is_empty(folder / "to"));
        fs::remove(folder / "from/a");
    }
}

TEST_F(CopyRecursive, ALinkIntoAFolderWithoutRightsEndsIt) {
    folder.write("closed/a", "secret");
    link("../closed/a", "from/a");
    fs::permissions(folder / "closed", fs::perms::none);
    {
        const OrdinaryUser user{folder.path};
        if(!user.isOrdinary)
            GTEST_SKIP() << "permissions do not bind the superuser, who cannot become another user here";
        const CapturedOutput output;
        EXPECT_FALSE(copy());
        EXPECT_EQ(output.debug(), copying("a") + "\n");
        EXPECT_EQ(output.warning(), "");
        EXPECT_EQ(output.error(),
            "Utility::Path::copy(): can't open " + (folder / "from/a") +
                " for reading: error 13 (Permission denied)\n");
    }
    fs::permissions(folder / "closed", fs::perms::owner_all);
}

TEST_F(CopyRecursive, LinksThatLeadToEachOtherAreSkipped) {
    link("b", "from/a");
    link("a", "from/b");
    link("itself", "from/itself");
    const CapturedOutput output;
    EXPECT_TRUE(copy());
    EXPECT_EQ(sorted(linesOf(output.warning())),
        linesOf(skipped("a", "the link leads nowhere") + skipped("b", "the link leads nowhere") +
            skipped("itself", "the link leads nowhere")));
    EXPECT_TRUE(fs::is_empty(folder / "to"));
}

TEST_F(CopyRecursive, ALinkToAFolderAboveIsSkipped) {
    folder.write("from/d/a", "one");
    link("..", "from/d/up");
    link(".", "from/d/here");
    const CapturedOutput output;
    EXPECT_TRUE(copy());
    EXPECT_EQ(sorted(linesOf(output.warning())),
        linesOf(skipped("d/here", "it leads back to a folder that it lies in") +
            skipped("d/up", "it leads back to a folder that it lies in")));
    EXPECT_EQ(filesIn("to"), (Files{{"d/", ""}, {"d/a", "one"}}));
}

TEST_F(CopyRecursive, ACircleThroughSeveralFoldersIsGoneThroughOnce) {
    folder.write("from/d/a", "one");
    folder.write("from/e/b", "two");
    link("../e", "from/d/to e");
    link("../d", "from/e/to d");
    const CapturedOutput output;
    EXPECT_TRUE(copy());
    EXPECT_EQ(sorted(linesOf(output.warning())),
        linesOf(skipped("d/to e/to d", "it leads back to a folder that it lies in") +
            skipped("e/to d/to e", "it leads back to a folder that it lies in")));
    EXPECT_EQ(filesIn("to"),
        (Files{{"d/", ""}, {"d/a", "one"}, {"d/to e/", ""}, {"d/to e/b", "two"}, {"e/", ""}, {"e/b", "two"},
            {"e/to d/", ""}, {"e/to d/a", "one"}}));
}

TEST_F(CopyRecursive, ALinkToTheFolderAroundTheTreeFindsTheTreeAgainAndSkipsIt) {
    folder.write("around/beside", "one");
    folder.write("around/from/a", "two");
    link("..", "around/from/out");
    const std::string from = folder / "around/from";
    const CapturedOutput output;
    EXPECT_TRUE(copyRecursive(from.c_str(), (folder / "to").c_str()));
    EXPECT_EQ(output.warning(),
        "copyRecursive(): skipped " + from + "/out/from: it leads back to a folder that it lies in\n");
    EXPECT_EQ(filesIn("to"), (Files{{"a", "two"}, {"out/", ""}, {"out/beside", "one"}}));
}

TEST_F(CopyRecursive, IntoItselfLeavesTheCopyOut) {
    folder.write("from/a", "one");
    folder.write("from/d/b", "two");
    const CapturedOutput output;
    EXPECT_TRUE(copyRecursive((folder / "from").c_str(), (folder / "from/d/copy").c_str()));
    EXPECT_EQ(output.warning(), skipped("d/copy", "it is where the copy goes"));
    EXPECT_EQ(filesIn("from"),
        (Files{{"a", "one"}, {"d/", ""}, {"d/b", "two"}, {"d/copy/", ""}, {"d/copy/a", "one"}, {"d/copy/d/", ""},
            {"d/copy/d/b", "two"}}));
}

TEST_F(CopyRecursive, ALinkToTheFolderThatItWouldBeCopiedIntoIsSkipped) {
    folder.write("from/sub/a", "one");
    link("../../to/sub", "from/sub/x");
    const CapturedOutput output;
    EXPECT_TRUE(copy());
    EXPECT_EQ(output.warning(), skipped("sub/x", "it is where the copy goes"));
    EXPECT_EQ(filesIn("to"), (Files{{"sub/", ""}, {"sub/a", "one"}}));
}

TEST_F(CopyRecursive, ALinkInTheDestinationThatLeadsIntoTheSourceMakesNoCircle) {
    folder.write("from/d/a", "one");
    folder.write("from/d/e/b", "two");
    link("../from/d/e", "to/d");
    const CapturedOutput output;
    EXPECT_TRUE(copy());
    EXPECT_EQ(output.warning(), skipped("d/e", "it is where the copy goes"));
    EXPECT_EQ(filesIn("from"), (Files{{"d/", ""}, {"d/a", "one"}, {"d/e/", ""}, {"d/e/a", "one"}, {"d/e/b", "two"}}));
}

TEST_F(CopyRecursive, ALinkToAnotherFolderOfTheDestinationIsFollowed) {
    folder.write("from/sub/a", "one");
    folder.write("to/other/b", "two");
    link("../../to/other", "from/sub/x");
    const CapturedOutput output;
    EXPECT_TRUE(copy());
    EXPECT_EQ(output.warning(), "");
    EXPECT_EQ(filesIn("to"),
        (Files{
            {"other/", ""}, {"other/b", "two"}, {"sub/", ""}, {"sub/a", "one"}, {"sub/x/", ""}, {"sub/x/b", "two"}}));
}

TEST_F(CopyRecursive, OntoItselfChangesNothing) {
    folder.write("from/a", "one");
    link("from", "same");
    for(const char* const to: {"from", "from/", "from/../from", "same"}) {
        const CapturedOutput output;
        EXPECT_TRUE(copyRecursive((folder / "from").c_str(), (folder / to).c_str())) << to;
        EXPECT_EQ(output.warning(), skipped("", "it is where the copy goes")) << to;
        EXPECT_EQ(filesIn("from"), (Files{{"a", "one"}})) << to;
    }
}

TEST_F(CopyRecursive, AFileIsNotEmptiedByItsCopyOntoItself) {
    folder.write("from/a", "one");
    folder.write("from/b", "two");
    link("../from/a", "to/a");
    fs::create_hard_link(folder / "from/b", folder / "to/b");
    const CapturedOutput output;
    EXPECT_TRUE(copy());
    EXPECT_EQ(sorted(linesOf(output.warning())),
        linesOf(skipped("a", "it is the file that would be written") +
            skipped("b", "it is the file that would be written")));
    EXPECT_EQ(filesIn("from"), (Files{{"a", "one"}, {"b", "two"}}));
}

TEST_F(CopyRecursive, WhatIsNeitherFileNorFolderIsSkipped) {
    folder.write("from/a", "one");
    ASSERT_EQ(mkfifo((folder / "from/pipe").c_str(), 0600), 0);
    link("/dev/zero", "from/without end");
    const CapturedOutput output;
    EXPECT_TRUE(copy());
    EXPECT_EQ(sorted(linesOf(output.warning())),
        linesOf(skipped("pipe", "it is neither file nor folder") +
            skipped("without end", "it is neither file nor folder")));
    EXPECT_EQ(folder.read("to/a"), "one");
    EXPECT_FALSE(fs::exists(folder / "to/pipe"));
    EXPECT_FALSE(fs::exists(folder / "to/without end"));
}

TEST_F(DeleteRecursive, RemovesLinksAndNothingThatTheyLeadTo) {
    folder.write("outside/a", "kept");
    folder.write("file", "kept");
    link("../outside", "d/to a folder");
    link(folder / "outside", "d/to a folder, absolute");
    link("../file", "d/to a file");
    link("nowhere", "d/dangling");
    link("..", "d/circle");
    link(".", "d/e/here");
    link("to a folder", "d/to a link");
    const CapturedOutput output;
    EXPECT_TRUE(remove("d"));
    EXPECT_EQ(folder.files(), (Files{{"file", "kept"}, {"outside/", ""}, {"outside/a", "kept"}}));
    EXPECT_EQ(output.error(), "");
}

TEST_F(DeleteRecursive, OfALinkRemovesItAndNothingThatItLeadsTo) {
    folder.write("outside/a", "kept");
    for(const char* const path: {"link", "link/", "link///", "link/.", "link/./", "link/.//./."}) {
        link("outside", "link");
        EXPECT_TRUE(remove(path)) << path;
        EXPECT_FALSE(fs::is_symlink(folder / "link")) << path;
        EXPECT_EQ(folder.read("outside/a"), "kept") << path;
    }
    link("nowhere", "dangling");
    EXPECT_TRUE(remove("dangling"));
    EXPECT_FALSE(fs::is_symlink(folder / "dangling"));
}

}
}
