#include <cstdlib>
#include <ctime>
#include <sys/stat.h>
#include <unistd.h>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/Optional.h>
#include <Corrade/Containers/Pair.h>
#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringIterable.h>
#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/Path.h>
#include <gtest/gtest.h>

#include "Print.h"
#include "TemporaryFolder.h"

using namespace Corrade;
using namespace Corrade::Containers::Literals;
namespace Path = Utility::Path;
using Containers::String;
using Utility::Error;

namespace {

void write(const String& filename, Containers::StringView text) { ASSERT_TRUE(Path::write(filename, text)); }

} // namespace

TEST(Path, SplitsIntoFolderAndName) {
    EXPECT_EQ(printed(Path::split("/a/b.txt"_s)), "{/a, b.txt}");
    EXPECT_EQ(printed(Path::split("b.txt"_s)), "{, b.txt}");
    EXPECT_EQ(printed(Path::split("/b.txt"_s)), "{/, b.txt}");
    EXPECT_EQ(printed(Path::split("//b"_s)), "{//, b}");
    EXPECT_EQ(printed(Path::split("a/"_s)), "{a, }");
    EXPECT_EQ(printed(Path::split(""_s)), "{, }");
    EXPECT_EQ(Path::path("a/b/c"_s), "a/b");
    EXPECT_EQ(Path::filename("a/b/c"_s), "c");
}

TEST(Path, SplitsOffTheExtension) {
    EXPECT_EQ(printed(Path::splitExtension("a.b/file.tar.gz"_s)), "{a.b/file.tar, .gz}");
    EXPECT_EQ(printed(Path::splitExtension("a.b/file"_s)), "{a.b/file, }");
    EXPECT_EQ(printed(Path::splitExtension(".hidden"_s)), "{.hidden, }");
    EXPECT_EQ(printed(Path::splitExtension("..."_s)), "{..., }");
    EXPECT_EQ(printed(Path::splitExtension("..a.b"_s)), "{..a, .b}");
    EXPECT_EQ(printed(Path::splitExtension("file."_s)), "{file, .}");
}

TEST(Path, JoinsWithOneSlashBetween) {
    EXPECT_EQ(Path::join("a", "b"), "a/b");
    EXPECT_EQ(Path::join("a/", "b"), "a/b");
    EXPECT_EQ(Path::join("", "b"), "b");
    EXPECT_EQ(Path::join("a", "/b"), "/b");
    EXPECT_EQ(Path::join("a", ""), "a/");
    EXPECT_EQ(Path::join("/", "b"), "/b");
    EXPECT_EQ(Path::join({"a", "b", "c.txt"}), "a/b/c.txt");
    EXPECT_EQ(Path::join({"a", "/b", "c"}), "/b/c");
    EXPECT_EQ(Path::join({}), "");
    EXPECT_EQ(Path::fromNativeSeparators("a\\b/c"_s), "a\\b/c");
    EXPECT_EQ(Path::toNativeSeparators("a/b"_s), "a/b");
}

TEST(Path, MakesFoldersWithThoseAbove) {
    const TemporaryFolder folder;
    EXPECT_TRUE(Path::make(folder("a/b/c/")));
    EXPECT_TRUE(Path::isDirectory(folder("a/b/c")));
    EXPECT_TRUE(Path::make(folder("a/b/c")));
    EXPECT_TRUE(Path::make(""));
    write(folder("file"), "x"_s);
    EXPECT_FALSE(Path::isDirectory(folder("file")));
    String out;
    {
        const Error redirect{&out};
        EXPECT_FALSE(Path::make(folder("file")));
        EXPECT_FALSE(Path::make(folder("file/sub")));
    }
    EXPECT_EQ(out,
        "Utility::Path::make(): " + folder("file") + " exists but is not a directory\n" +
            "Utility::Path::make(): can't create " + folder("file/sub") + ": error 20 (Not a directory)\n");
}

TEST(Path, WritesReadsAndAppends) {
    const TemporaryFolder folder;
    write(folder("file"), "hello\0world"_s);
    EXPECT_TRUE(Path::append(folder("file"), "!"_s));
    EXPECT_EQ(*Path::readString(folder("file")), "hello\0world!"_s);
    EXPECT_EQ(Path::read(folder("file"))->size(), 12);
    EXPECT_EQ(*Path::size(folder("file")), 12);
    write(folder("file"), ""_s);
    EXPECT_EQ(*Path::readString(folder("file")), "");
    EXPECT_EQ(Path::read(folder("file"))->size(), 0);
    const int numbers[]{1, 2};
    EXPECT_TRUE(Path::write(folder("file"), numbers));
    EXPECT_EQ(*Path::size(folder("file")), 8);
}

TEST(Path, ReadsFilesOfAnySizeAndFilesThatClaimToBeEmpty) {
    const TemporaryFolder folder;
    const String text{DirectInit, 100000, 'x'};
    write(folder("file"), text);
    EXPECT_EQ(*Path::readString(folder("file")), text);
    EXPECT_TRUE(Path::read("/proc/self/status"));
}

TEST(Path, ReadingWhatIsNotThereFailsWithAMessage) {
    const TemporaryFolder folder;
    String out;
    {
        const Error redirect{&out};
        EXPECT_FALSE(Path::read(folder("none")));
        EXPECT_FALSE(Path::readString(folder()));
        EXPECT_FALSE(Path::size(folder("none")));
        EXPECT_FALSE(Path::size(folder()));
        EXPECT_FALSE(Path::write(folder("none/file"), "x"_s));
        EXPECT_FALSE(Path::append(folder("none/file"), "x"_s));
        EXPECT_FALSE(Path::lastModification(folder("none")));
        EXPECT_FALSE(Path::list(folder("none")));
        EXPECT_FALSE(Path::remove(folder("none")));
        EXPECT_FALSE(Path::move(folder("none"), folder("other")));
    }
    const auto path = [&](const char* name) { return std::string(folder(name).data()); };
    const std::string none = ": error 2 (No such file or directory)\n", directory = folder().data();
    EXPECT_EQ(std::string(out.data()),
        "Utility::Path::read(): can't open " + path("none") + none + //
            "Utility::Path::read(): " + directory + " is a directory\n" + //
            "Utility::Path::size(): can't open " + path("none") + none + //
            "Utility::Path::size(): " + directory + " is a directory\n" + //
            "Utility::Path::write(): can't open " + path("none/file") + none + //
            "Utility::Path::append(): can't open " + path("none/file") + none + //
            "Utility::Path::lastModification(): can't stat " + path("none") + none + //
            "Utility::Path::list(): can't list " + path("none") + none + //
            "Utility::Path::remove(): can't remove " + path("none") + none + //
            "Utility::Path::move(): can't move " + path("none") + " to " + path("other") + none);
}

TEST(Path, CopiesMovesAndRemoves) {
    const TemporaryFolder folder;
    const String text{DirectInit, 300000, 'x'};
    write(folder("a"), text);
    write(folder("b"), "longer than nothing"_s);
    EXPECT_TRUE(Path::copy(folder("a"), folder("b")));
    EXPECT_EQ(*Path::readString(folder("b")), text);
    EXPECT_TRUE(Path::move(folder("b"), folder("c")));
    EXPECT_FALSE(Path::exists(folder("b")));
    EXPECT_TRUE(Path::remove(folder("c")));
    EXPECT_FALSE(Path::exists(folder("c")));
    Path::make(folder("empty"));
    EXPECT_TRUE(Path::remove(folder("empty")));

    String out;
    {
        const Error redirect{&out};
        EXPECT_FALSE(Path::copy(folder("none"), folder("d")));
        EXPECT_FALSE(Path::copy(folder("a"), folder("none/d")));
        EXPECT_FALSE(Path::copy(folder(), folder("d")));
        EXPECT_FALSE(Path::remove(folder()));
    }
    EXPECT_EQ(out,
        "Utility::Path::copy(): can't open " + folder("none") + " for reading: error 2 (No such file or directory)\n" +
            "Utility::Path::copy(): can't open " + folder("none/d") +
            " for writing: error 2 (No such file or directory)\n" + "Utility::Path::copy(): can't read from " +
            folder() + " which is a directory\n" + "Utility::Path::remove(): can't remove " + folder() +
            ": error 39 (Directory not empty)\n");
}

TEST(Path, ListsFilesFoldersAndLinksByKind) {
    const TemporaryFolder folder;
    Path::make(folder("folder"));
    write(folder("file"), "x"_s);
    ASSERT_EQ(symlink("folder", folder("link-to-folder").data()), 0);
    ASSERT_EQ(symlink("file", folder("link-to-file").data()), 0);
    ASSERT_EQ(symlink("nowhere", folder("broken").data()), 0);
    ASSERT_EQ(mkfifo(folder("pipe").data(), 0600), 0);
    const auto list = [&](Path::ListFlags flags) {
        return printed(*Path::list(folder(), flags | Path::ListFlag::SortAscending));
    };
    EXPECT_EQ(list({}), "{., .., broken, file, folder, link-to-file, link-to-folder, pipe}");
    EXPECT_EQ(list(Path::ListFlag::SkipDotAndDotDot), "{broken, file, folder, link-to-file, link-to-folder, pipe}");
    EXPECT_EQ(list(Path::ListFlag::SkipDirectories), "{broken, file, link-to-file, pipe}");
    EXPECT_EQ(
        list(Path::ListFlag::SkipFiles | Path::ListFlag::SkipDotAndDotDot), "{broken, folder, link-to-folder, pipe}");
    EXPECT_EQ(list(Path::ListFlag::SkipSpecial | Path::ListFlag::SkipDotAndDotDot),
        "{broken, file, folder, link-to-file, link-to-folder}");
    EXPECT_EQ(printed(*Path::list(folder(), Path::ListFlag::SkipDirectories | Path::ListFlag::SortDescending)),
        "{pipe, link-to-file, file, broken}");
    EXPECT_FALSE(Path::exists(folder("broken")));
    EXPECT_TRUE(Path::isDirectory(folder("link-to-folder")));
}

TEST(Path, KnowsWhereThingsAre) {
    EXPECT_EQ(Path::filename(*Path::executableLocation()), "compat-tests");
    EXPECT_TRUE(Path::currentDirectory()->hasPrefix('/'));
    EXPECT_EQ(*Path::temporaryDirectory(), "/tmp");
    setenv("HOME", "/home/somebody", 1);
    EXPECT_EQ(*Path::homeDirectory(), "/home/somebody");
    unsetenv("XDG_CONFIG_HOME");
    EXPECT_EQ(*Path::configurationDirectory("MyTool"), "/home/somebody/.config/mytool");
    setenv("XDG_CONFIG_HOME", "/config", 1);
    EXPECT_EQ(*Path::configurationDirectory("MyTool"), "/config/mytool");

    String out;
    {
        const Error redirect{&out};
        unsetenv("HOME");
        unsetenv("XDG_CONFIG_HOME");
        EXPECT_FALSE(Path::homeDirectory());
        EXPECT_FALSE(Path::configurationDirectory("MyTool"));
    }
    EXPECT_EQ(out,
        "Utility::Path::homeDirectory(): $HOME not available\n"
        "Utility::Path::configurationDirectory(): neither $XDG_CONFIG_HOME nor $HOME available\n");
}

TEST(Path, LastModificationIsInNanoseconds) {
    const TemporaryFolder folder;
    write(folder("file"), "x"_s);
    EXPECT_NEAR(double(*Path::lastModification(folder("file"))) / 1e9, double(std::time(nullptr)), 60.0);
}
