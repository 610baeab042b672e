#include "FileTreeFixture.h"

#include <cstdlib>

#include <fcntl.h>

#include "support/CapturedOutput.h"
#include "support/OrdinaryUser.h"

namespace QuorvaneEngine {
namespace {

using QuorvaneEngine::Test::CapturedOutput;
using QuorvaneEngine::Test::OrdinaryUser;

using Corrade::Containers::StringView;

namespace fs = std::filesystem;

using CopyRecursive = FileTree;

/** The number of levels of a deep tree, whose paths are still short enough for the system. */
constexpr int Levels = 1000;

/** Goes down a row of folders of one name, step by step, so that their path may have any length.
    @param makes    whether to make them on the way
    @return the innermost, or -1 */
int openInnermost(const std::string& path, const std::string& name, const int levels, const bool makes) {
    int outer = open(path.c_str(), O_DIRECTORY | O_CLOEXEC);
    for(int i = 0; i != levels; ++i) {
        if(makes) mkdirat(outer, name.c_str(), 0700);
        const int inner = openat(outer, name.c_str(), O_DIRECTORY | O_CLOEXEC);
        close(outer);
        outer = inner;
    }
    return outer;
}

/** Makes such a row with a file "f" in the innermost. */
bool makeDeepFolder(const std::string& path, const std::string& name, const int levels) {
    const int innermost = openInnermost(path, name, levels, true);
    const int file = openat(innermost, "f", O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
    const bool wasMade = file != -1 && write(file, "deep", 4) == 4;
    close(file);
    close(innermost);
    return wasMade;
}

std::string deepPath(const int levels) {
    std::string path;
    for(int i = 0; i != levels; ++i) path += "d/";
    return path;
}

TEST_F(CopyRecursive, CopiesATreeAndAnnouncesEachFile) {
    folder.write("from/a", "one");
    folder.write("from/d/b", "two");
    folder.write("from/d/e/c", "three");
    const CapturedOutput output;
    EXPECT_TRUE(copy());
    EXPECT_EQ(filesIn("to"), (Files{{"a", "one"}, {"d/", ""}, {"d/b", "two"}, {"d/e/", ""}, {"d/e/c", "three"}}));
    EXPECT_EQ(filesIn("from"), filesIn("to"));
    EXPECT_EQ(linesOf(output.debug()), (Lines{copying("a"), copying("d/b"), copying("d/e/c")}));
    EXPECT_EQ(output.warning() + output.error(), "");
}

TEST_F(CopyRecursive, CopiesTheFilesOfAFolderBeforeThoseOfTheFoldersInIt) {
    for(const char* const name: {"d/e/c", "d/b", "a", "z/b", "d/y", "z/e/c", "y"})
        folder.write(std::string{"from/"} + name, name);
    const CapturedOutput output;
    EXPECT_TRUE(copy());
    const Lines lines = linesOf(output.debug());
    ASSERT_EQ(lines.size(), 7u);
    EXPECT_EQ(sorted({lines[0], lines[1]}), (Lines{copying("a"), copying("y")}));
    EXPECT_EQ(sorted({lines[2], lines[3], lines[4]}), (Lines{copying("d/b"), copying("d/y"), copying("z/b")}));
    EXPECT_EQ(sorted({lines[5], lines[6]}), (Lines{copying("d/e/c"), copying("z/e/c")}));
}

TEST_F(CopyRecursive, IntoAFolderThatIsThereOverwritesFilesOfTheSameNamesAndKeepsOthers) {
    folder.write("from/a", "new");
    folder.write("from/d/b", "new");
    folder.write("to/a", "old and longer");
    folder.write("to/c", "kept");
    folder.write("to/d/e", "kept");
    const CapturedOutput output;
    EXPECT_TRUE(copy());
    EXPECT_EQ(filesIn("to"), (Files{{"a", "new"}, {"c", "kept"}, {"d/", ""}, {"d/b", "new"}, {"d/e", "kept"}}));
}

TEST_F(CopyRecursive, OfAnEmptyFolderMakesAnEmptyFolder) {
    fs::create_directories(folder / "from");
    const CapturedOutput output;
    EXPECT_TRUE(copy());
    EXPECT_TRUE(fs::is_directory(folder / "to"));
    EXPECT_EQ(filesIn("to"), Files{});
    EXPECT_EQ(output.debug() + output.warning() + output.error(), "");
}

TEST_F(CopyRecursive, MakesTheFoldersAboveTheDestination) {
    folder.write("from/a", "one");
    const Silence silence;
    EXPECT_TRUE(copyRecursive((folder / "from").c_str(), (folder / "x/y/to").c_str()));
    EXPECT_EQ(folder.read("x/y/to/a"), "one");
}

TEST_F(CopyRecursive, ThePathsNeedNotBeTerminatedAndMayEndWithASlash) {
    folder.write("from/a", "one");
    const std::string from = folder / "from/";
    const std::string to = folder / "to and more";
    const CapturedOutput output;
    EXPECT_TRUE(copyRecursive(from.c_str(), StringView{to.c_str()}.exceptSuffix(9)));
    EXPECT_EQ(folder.read("to/a"), "one");
    EXPECT_EQ(output.debug(), copying("a") + "\n");
}

TEST_F(CopyRecursive, OfAFileOrOfNothingFails) {
    folder.write("from", "a file");
    const CapturedOutput output;
    EXPECT_FALSE(copy());
    EXPECT_FALSE(fs::exists(folder / "to"));
    EXPECT_FALSE(copyRecursive((folder / "none").c_str(), (folder / "to").c_str()));
    EXPECT_FALSE(fs::exists(folder / "to"));
    EXPECT_EQ(output.debug(), copying("") + "\nCopying " + (folder / "none/") + " to " + (folder / "to/") + "\n");
    EXPECT_EQ(output.warning(), "");
}

TEST_F(CopyRecursive, TakesNamesWithBlanksQuotesAndLineBreaks) {
    for(const char* const name: {"a b", "'", "\"", "line\nbreak", "-rf", "*", "\\", "$HOME", "\xff\xfe", "ü", " "})
        folder.write("from/" + std::string{name} + "/" + name, name);
    const Silence silence;
    EXPECT_TRUE(copy());
    EXPECT_EQ(filesIn("to").size(), 22u);
    EXPECT_EQ(filesIn("to"), filesIn("from"));
    EXPECT_TRUE(remove("from"));
    EXPECT_FALSE(fs::exists(folder / "from"));
}

TEST_F(CopyRecursive, CopiesLargeFilesToTheByte) {
    std::string bytes;
    for(int i = 0; bytes.size() < 3'000'000; ++i) bytes += std::to_string(i) + std::string(1, char(i));
    folder.write("from/a", bytes);
    const Silence silence;
    EXPECT_TRUE(copy());
    EXPECT_TRUE(folder.read("to/a") == bytes);
}

TEST_F(CopyRecursive, AFolderInPlaceOfAFileEndsIt) {
    folder.write("from/a", "one");
    folder.write("from/d/b", "two");
    folder.write("to/a/in the way", "kept");
    const CapturedOutput output;
    EXPECT_FALSE(copy());
    EXPECT_EQ(output.debug(), copying("a") + "\n");
    EXPECT_EQ(folder.read("to/a/in the way"), "kept");
}

TEST_F(CopyRecursive, AFileInPlaceOfAFolderLetsCopiesIntoItFail) {
    folder.write("from/d/b", "two");
    folder.write("to/d", "kept");
    const CapturedOutput output;
    EXPECT_FALSE(copy());
    EXPECT_EQ(output.debug(), copying("d/b") + "\n");
    EXPECT_EQ(folder.read("to/d"), "kept");
}

TEST_F(CopyRecursive, TheFirstFileThatCannotBeReadEndsItAndWhatIsCopiedStays) {
    folder.write("from/a", "one");
    folder.write("from/d/b", "secret");
    folder.write("from/d/e/c", "three");
    fs::permissions(folder / "from/d/b", fs::perms::none);
    const OrdinaryUser user{folder.path};
    if(!user.isOrdinary) GTEST_SKIP() << "permissions do not bind the superuser, who cannot become another user here";
    const CapturedOutput output;
    EXPECT_FALSE(copy());
    EXPECT_EQ(linesOf(output.debug()), (Lines{copying("a"), copying("d/b")}));
    EXPECT_EQ(output.error(),
        "Utility::Path::copy(): can't open " + (folder / "from/d/b") + " for reading: error 13 (Permission denied)\n");
    EXPECT_EQ(filesIn("to"), (Files{{"a", "one"}, {"d/", ""}}));
}

TEST_F(CopyRecursive, AFolderThatCannotBeListedIsLeftOut) {
    folder.write("from/a", "one");
    folder.write("from/d/b", "secret");
    fs::permissions(folder / "from/d", fs::perms::none);
    {
        const OrdinaryUser user{folder.path};
        if(!user.isOrdinary)
            GTEST_SKIP() << "permissions do not bind the superuser, who cannot become another user here";
        const CapturedOutput output;
        EXPECT_TRUE(copy());
        EXPECT_EQ(output.debug(), copying("a") + "\n");
        EXPECT_EQ(output.warning(), "");
        EXPECT_EQ(output.error(),
            "Utility::Path::list(): can't list " + (folder / "from/d") + ": error 13 (Permission denied)\n");
    }
    EXPECT_EQ(filesIn("to"), (Files{{"a", "one"}, {"d/", ""}}));
    fs::permissions(folder / "from/d", fs::perms::owner_all);
}

TEST_F(CopyRecursive, ADestinationThatCannotBeMadeLetsTheFirstFileFail) {
    folder.write("from/a", "one");
    fs::create_directories(folder / "closed");
    fs::permissions(folder / "closed", fs::perms::owner_read | fs::perms::owner_exec);
    const OrdinaryUser user{folder.path};
    if(!user.isOrdinary) GTEST_SKIP() << "permissions do not bind the superuser, who cannot become another user here";
    const CapturedOutput output;
    EXPECT_FALSE(copyRecursive((folder / "from").c_str(), (folder / "closed/to").c_str()));
    EXPECT_EQ(output.debug(), "Copying " + (folder / "from/a") + " to " + (folder / "closed/to/a") + "\n");
    EXPECT_FALSE(fs::exists(folder / "closed/to"));
}

TEST_F(FileTree, ATreeOfAThousandLevelsIsCopiedAndDeleted) {
    fs::create_directories(folder / "from");
    ASSERT_TRUE(makeDeepFolder(folder / "from", "d", Levels));
    const CapturedOutput output;
    EXPECT_TRUE(copy());
    EXPECT_EQ(folder.read("to/" + deepPath(Levels) + "f"), "deep");
    EXPECT_EQ(output.debug(), copying(deepPath(Levels) + "f") + "\n");
    EXPECT_TRUE(remove("from"));
    EXPECT_TRUE(remove("to"));
    EXPECT_EQ(folder.files(), Files{});
}

TEST_F(FileTree, ATreeWithLongerPathsThanTheSystemAllowsStaysWhereItIs) {
    fs::create_directories(folder / "from");
    const std::string name(200, 'd');
    ASSERT_TRUE(makeDeepFolder(folder / "from", name, 30));
    const Silence silence;
    EXPECT_FALSE(copy());
    EXPECT_FALSE(remove("from"));
    const int innermost = openInnermost(folder / "from", name, 30, false);
    EXPECT_EQ(faccessat(innermost, "f", F_OK, 0), 0);
    close(innermost);
}

TEST_F(FileTree, AHundredThousandFilesAreCopiedAndDeleted) {
    // Where there is one with room for the copy, in a file system in memory, which takes a fraction of the time.
    constexpr std::uintmax_t Room = 500'000'000;
    std::error_code error;
    const fs::space_info memory = fs::space("/dev/shm", error);
    if(!error && memory.available >= Room) setenv("TMPDIR", "/dev/shm", 1);
    const TestFolder folder;
    constexpr int Folders = 100;
    constexpr int FilesEach = 1000;
    for(int i = 0; i != Folders; ++i) {
        // Most are made as hard links, which takes less time.
        const std::string inside = "from/" + std::to_string(i) + '/';
        folder.write(inside + '0', "text");
        for(int j = 1; j != FilesEach; ++j)
            fs::create_hard_link(folder / inside + '0', folder / inside + std::to_string(j));
    }
    const Silence silence;
    EXPECT_TRUE(copyRecursive((folder / "from").c_str(), (folder / "to").c_str()));
    std::uintmax_t count = 0;
    for(const auto& entry: fs::recursive_directory_iterator{folder / "to"})
        count += entry.is_regular_file() && entry.file_size() == 4;
    EXPECT_EQ(count, std::uintmax_t(Folders * FilesEach));
    EXPECT_EQ(folder.read("to/99/999"), "text");
    for(const char* const name: {"from", "to"}) EXPECT_TRUE(deleteRecursive((folder / name).c_str()));
    EXPECT_EQ(folder.files(), Files{});
}

}
}
