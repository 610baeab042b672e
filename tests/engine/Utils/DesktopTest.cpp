#include "Utils/Desktop.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "host/localization/TestFolder.h"
#include "support/CapturedOutput.h"
#include "support/ChildProcesses.h"

/* A program named like the desktop's opener stands before it on PATH, and writes its arguments into a pipe with a name: each with a
   zero byte behind it, and "end" when it has written all. */

namespace QuorvaneEngine {
namespace {

using QuorvaneEngine::Test::CapturedOutput;
using QuorvaneEngine::Test::isChildless;
using QuorvaneEngine::Test::openDescriptors;

using Corrade::Containers::String;
using Corrade::Containers::StringView;
namespace fs = std::filesystem;

#ifdef __APPLE__
constexpr const char* Opener = "open";
#else
constexpr const char* Opener = "xdg-open";
#endif

std::string text(const String& string) { return {string.data(), string.size()}; }

class Desktop: public testing::Test {
protected:
    Desktop() {
        const std::string pipe = _folder / "arguments";
        EXPECT_EQ(mkfifo(pipe.c_str(), 0600), 0);
        // With a reader that is its own writer, nobody waits for the other side.
        _arguments = open(pipe.c_str(), O_RDWR | O_CLOEXEC);
        EXPECT_NE(_arguments, -1);
        const fs::path program = _folder / Opener;
        std::ofstream{program} << "#!/bin/sh\n(if [ $# != 0 ]; then printf '%s\\0' \"$@\"; fi; printf 'end\\0') >'"
                               << pipe << "'\n";
        fs::permissions(program, fs::perms::owner_all);
        setenv("PATH", (_folder.path + ":" + std::getenv("PATH")).c_str(), 1);
    }
    ~Desktop() override { close(_arguments); }

    /** What the opener was given; waits for it, who may run in the background. */
    std::vector<std::string> arguments() const {
        std::vector<std::string> all;
        std::string one;
        pollfd end{_arguments, POLLIN, 0};
        constexpr int Patience = 20000;
        while(poll(&end, 1, Patience) == 1) {
            char character = 0;
            if(read(_arguments, &character, 1) != 1) break;
            if(character) one += character;
            else if(one == "end") return all;
            else {
                all.push_back(one);
                one.clear();
            }
        }
        ADD_FAILURE() << "nothing was opened";
        return all;
    }

    /** Whether the opener has not been called since arguments() was. */
    bool wasNotCalled() const {
        pollfd end{_arguments, POLLIN, 0};
        return poll(&end, 1, 0) == 0;
    }

    TestFolder _folder;

private:
    int _arguments = -1;
};

using Arguments = std::vector<std::string>;

TEST_F(Desktop, TheBrowserOpensAUrl) {
    openBrowser("https://example.org/a?b=c#d");
    EXPECT_EQ(arguments(), Arguments{"https://example.org/a?b=c#d"});
    EXPECT_TRUE(wasNotCalled());
}

TEST_F(Desktop, AUrlWithAnAmpersandIsTheShellsToRead) {
    openBrowser("https://example.org/?a=1&b=2");
    EXPECT_EQ(arguments(), Arguments{"https://example.org/?a=1"});
    EXPECT_TRUE(wasNotCalled());
}

TEST_F(Desktop, AUrlIsNotQuoted) {
    setenv("WORD", "of the shell", 1);
    openBrowser("a b $WORD 'c d'");
    EXPECT_EQ(arguments(), (Arguments{"a", "b", "of", "the", "shell", "c d"}));
}

TEST_F(Desktop, AUrlNeedNotBeTerminated) {
    openBrowser(StringView{"https://example.org/and more"}.prefix(20));
    EXPECT_EQ(arguments(), Arguments{"https://example.org/"});
}

TEST_F(Desktop, NoUrlIsNoArgument) {
    openBrowser("");
    EXPECT_EQ(arguments(), Arguments{});
}

TEST_F(Desktop, TheSystemDefaultQuotesThePath) {
    openWithSystemDefault("/a folder/b & c; (d) 'e' *.txt");
    EXPECT_EQ(arguments(), Arguments{"/a folder/b & c; (d) 'e' *.txt"});
    openWithSystemDefault("");
    EXPECT_EQ(arguments(), Arguments{""});
}

TEST_F(Desktop, TheFileBrowserIsCalledLikeTheSystemDefault) {
    openWithSystemFilebrowser("/a folder/b & c; (d) 'e' *.txt");
    EXPECT_EQ(arguments(), Arguments{"/a folder/b & c; (d) 'e' *.txt"});
}

TEST_F(Desktop, ALineBreakAndBytesThatAreNoTextArriveInAPath) {
    openWithSystemDefault("/a\nb\xff\xfe\tc");
    EXPECT_EQ(arguments(), Arguments{"/a\nb\xff\xfe\tc"});
}

TEST_F(Desktop, NothingInAPathIsEscaped) {
    setenv("WORD", "the shell's", 1);
    openWithSystemDefault("/$WORD");
    EXPECT_EQ(arguments(), Arguments{"/the shell's"});
    openWithSystemFilebrowser("/a\" \"b");
    EXPECT_EQ(arguments(), (Arguments{"/a", "b"}));
}

TEST_F(Desktop, AnEscapedPathArrivesToTheByte) {
    std::string path = "/";
    for(int byte = 1; byte != 256; ++byte) path += char(byte);
    path += "$(touch hacked)`touch hacked`\"; touch hacked; \"$HOME\\";
    const String escaped = escapedForDoubleQuotes({path.data(), path.size()});
    openWithSystemDefault(escaped);
    EXPECT_EQ(arguments(), Arguments{path});
    openWithSystemFilebrowser(escaped);
    EXPECT_EQ(arguments(), Arguments{path});
    EXPECT_FALSE(fs::exists("hacked"));
}

TEST(EscapedForDoubleQuotes, PutsABackslashBeforeWhatTheShellWouldRead) {
    EXPECT_EQ(escapedForDoubleQuotes("a\"b$c`d\\e"), "a\\\"b\\$c\\`d\\\\e");
    EXPECT_EQ(escapedForDoubleQuotes("a b 'c' & d"), "a b 'c' & d");
    EXPECT_EQ(escapedForDoubleQuotes(""), "");
}

TEST_F(Desktop, AThousandCallsLeaveNoDescriptorAndNoZombie) {
    fs::remove(_folder / Opener);
    fs::create_symlink("/bin/true", _folder / Opener);
    const std::size_t before = openDescriptors();
    constexpr void (*Calls[])(StringView){openBrowser, openWithSystemDefault, openWithSystemFilebrowser};
    for(int i = 0; i != 1000; ++i) Calls[i % 3]("/a");
    EXPECT_EQ(openDescriptors(), before);
    EXPECT_TRUE(isChildless());
}

TEST_F(Desktop, ADesktopWithoutAnOpenerIsNoError) {
    fs::remove(_folder / Opener);
    setenv("PATH", _folder.path.c_str(), 1);
    const CapturedOutput output;
    openBrowser("https://example.org/");
    openWithSystemDefault("/a");
    openWithSystemFilebrowser("/a");
    EXPECT_EQ(output.error() + output.warning() + output.debug(), "");
}

#ifndef __APPLE__

TEST(AppDirectory, LiesInTheHomeOfTheUser) {
    unsetenv("XDG_DATA_HOME");
    setenv("HOME", "/home/somebody", 1);
    EXPECT_EQ(text(appDirectory()), "/home/somebody/.local/share/QuorvaneEngine");
}

TEST(AppDirectory, LiesWhereTheUserKeepsDataOfPrograms) {
    setenv("HOME", "/home/somebody", 1);
    setenv("XDG_DATA_HOME", "/data of mine", 1);
    EXPECT_EQ(text(appDirectory()), "/data of mine/QuorvaneEngine");
    setenv("XDG_DATA_HOME", "/data/", 1);
    EXPECT_EQ(text(appDirectory()), "/data/QuorvaneEngine");
}

TEST(AppDirectory, AnEmptyOrRelativePlaceForDataDoesNotCount) {
    setenv("HOME", "/home/somebody", 1);
    for(const char* const folder: {"", "data", "./data", "~/data"}) {
        setenv("XDG_DATA_HOME", folder, 1);
        EXPECT_EQ(text(appDirectory()), "/home/somebody/.local/share/QuorvaneEngine") << folder;
    }
}

TEST(AppDirectory, IsEmptyWithoutAHome) {
    unsetenv("XDG_DATA_HOME");
    unsetenv("HOME");
    const CapturedOutput output;
    EXPECT_TRUE(appDirectory().isEmpty());
    EXPECT_EQ(output.error(), "Utility::Path::homeDirectory(): $HOME not available\n");
    setenv("HOME", "", 1);
    EXPECT_TRUE(appDirectory().isEmpty());
}

TEST(AppDirectory, NeedsNoHomeWhereThePlaceForDataIsKnown) {
    unsetenv("HOME");
    setenv("XDG_DATA_HOME", "/data", 1);
    EXPECT_EQ(text(appDirectory()), "/data/QuorvaneEngine");
}

#else

TEST(AppDirectory, LiesInTheLibraryOfTheUser) {
    setenv("HOME", "/home/somebody", 1);
    EXPECT_EQ(text(appDirectory()), "/home/somebody/Library/Application Support/QuorvaneEngine");
}

#endif

TEST(AppDirectory, IsNotMade) {
    const TestFolder folder;
    setenv("HOME", folder.path.c_str(), 1);
    setenv("XDG_DATA_HOME", folder.path.c_str(), 1);
    const String directory = appDirectory();
    EXPECT_TRUE(directory.hasPrefix(folder.path.c_str()));
    EXPECT_FALSE(fs::exists(text(directory)));
}

}
}
