#include "modules/LoadNote.h"

#include <chrono>
#include <csignal>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "host/localization/TestFolder.h"
#include "support/CapturedOutput.h"

namespace QuorvaneEngine {
namespace {

using Test::CapturedOutput;

class LoadNoteTest: public testing::Test {
protected:
    LoadNoteTest() { folder.write("A.so", "library"); }

    std::string noteOf(const pid_t process) const { return "data/loading-" + std::to_string(process); }

    std::vector<LoadNote::Library> takeLeft() const { return LoadNote::takeLeft((folder / "data").c_str()); }

    /** A program that dies while the note lies.
        @return its process, which is gone */
    pid_t die(const int signal = SIGKILL) const {
        const pid_t process = fork();
        if(!process) {
            LoadNote note{(folder / "data").c_str()};
            const LoadNote::Scope scope{&note, library.c_str()};
            raise(signal);
            _exit(0);
        }
        waitpid(process, nullptr, 0);
        return process;
    }

    const TestFolder folder;
    const std::string library = folder / "A.so";
};

TEST_F(LoadNoteTest, LiesAsLongAsTheScopeAndNamesTheLibrary) {
    LoadNote note{(folder / "data").c_str()};
    EXPECT_FALSE(std::filesystem::exists(folder / "data"));
    {
        const LoadNote::Scope scope{&note, library.c_str()};
        const std::string text = folder.read(noteOf(getpid()));
        EXPECT_EQ(text.find("quorvane-loading 1\n7\n"), 0u) << text;
        EXPECT_EQ(text.substr(text.size() - library.size() - 2), "\n" + library + "\n");
        {
            const LoadNote::Scope inner{&note, "/another.so"};
            EXPECT_EQ(folder.read(noteOf(getpid())), text) << "the outer one counts";
        }
        EXPECT_EQ(folder.read(noteOf(getpid())), text);
    }
    EXPECT_EQ(folder.files().count(noteOf(getpid())), 0u);
    EXPECT_TRUE(takeLeft().empty());
}

TEST_F(LoadNoteTest, WhatADeadProgramLeftIsTakenOnce) {
    const pid_t process = die();
    ASSERT_EQ(folder.files().count(noteOf(process)), 1u);
    const std::vector<LoadNote::Library> left = takeLeft();
    ASSERT_EQ(left.size(), 1u);
    EXPECT_EQ(left[0], LoadNote::Library::of(library.c_str()));
    EXPECT_EQ(left[0].size, 7u);
    EXPECT_EQ(folder.files().count(noteOf(process)), 0u);
    EXPECT_TRUE(takeLeft().empty());
}

TEST_F(LoadNoteTest, OneOfAProgramAtWorkIsLeftAlone) {
    const CapturedOutput output;
    LoadNote note{(folder / "data").c_str()};
    const LoadNote::Scope scope{&note, library.c_str()};
    EXPECT_TRUE(takeLeft().empty());
    EXPECT_EQ(folder.files().count(noteOf(getpid())), 1u);
    EXPECT_EQ(output.warning(), "");
}

TEST_F(LoadNoteTest, ADeadProgramsNumberMayBelongToAnotherByNow) {
    const std::string text = [&] {
        const pid_t process = die();
        return folder.read(noteOf(process));
    }();
    takeLeft();
    folder.write(noteOf(getppid()), text);
    EXPECT_EQ(takeLeft().size(), 1u);
}

TEST_F(LoadNoteTest, AnEmptyOneIsLeftToAProgramThatLivesAndElseGoes) {
    const CapturedOutput output;
    const pid_t dead = die();
    folder.write(noteOf(dead), "");
    folder.write(noteOf(getppid()), "");
    EXPECT_TRUE(takeLeft().empty());
    EXPECT_EQ(folder.files().count(noteOf(dead)), 0u);
    EXPECT_EQ(folder.files().count(noteOf(getppid())), 1u);
    EXPECT_EQ(output.warning(), "");
}

TEST_F(LoadNoteTest, GarbageIsAWarningAndGoes) {
    for(const char* const text: {"garbage", "quorvane-loading 2\n1\n1\n/a.so\n", "quorvane-loading 1\n1\n1\n/a.so",
            "quorvane-loading 1\n-1\n1\n/a.so\n", "quorvane-loading 1\n1\nx\n/a.so\n",
            "quorvane-loading 1\n1\n1\n\n"}) {
        folder.write("data/loading-garbage", text);
        const CapturedOutput output;
        EXPECT_TRUE(takeLeft().empty()) << text;
        EXPECT_EQ(output.warning(),
            "LoadNote::takeLeft(): " + (folder / "data/loading-garbage") + ": is no note of a module\n");
        EXPECT_FALSE(std::filesystem::exists(folder / "data/loading-garbage"));
    }
}

TEST_F(LoadNoteTest, AFolderThatCannotBeMadeIsAWarningOnce) {
    folder.write("data", "a file");
    const CapturedOutput output;
    LoadNote note{(folder / "data").c_str()};
    for(int i = 0; i != 2; ++i) const LoadNote::Scope scope{&note, library.c_str()};
    EXPECT_EQ(output.warning(),
        "LoadNote::begin(): " + (folder / noteOf(getpid())) +
            ": cannot be written: Not a directory; a module that the editor dies with is not named at the next "
            "start\n");
}

TEST_F(LoadNoteTest, WithoutAFolderOrANoteNothingIsKept) {
    const CapturedOutput output;
    LoadNote none{""};
    const LoadNote::Scope scope{&none, library.c_str()};
    const LoadNote::Scope nowhere{nullptr, library.c_str()};
    EXPECT_EQ(folder.files().size(), 1u);
    EXPECT_TRUE(LoadNote::takeLeft("").empty());
    EXPECT_TRUE(takeLeft().empty());
    EXPECT_EQ(output.warning(), "");
}

TEST_F(LoadNoteTest, ALibraryIsKnownByItsPathSizeAndTime) {
    const LoadNote::Library before = LoadNote::Library::of((folder / "x/../A.so").c_str());
    EXPECT_EQ(before, LoadNote::Library::of(library.c_str()));
    folder.write("A.so", "another");
    std::filesystem::last_write_time(library, std::filesystem::file_time_type{} + std::chrono::hours{1});
    const LoadNote::Library after = LoadNote::Library::of(library.c_str());
    EXPECT_EQ(after.size, before.size);
    EXPECT_FALSE(after == before);
}

}
}
