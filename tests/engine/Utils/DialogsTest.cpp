#include "Utils/Dialogs.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <unistd.h>

#include <gtest/gtest.h>

#include "support/CapturedOutput.h"
#include "support/ChildProcesses.h"

/* The dialogs are shown by a program named zenity that stands in for the desktop's: it writes its arguments to a file, one per
   line, and answers what the test wants the user to answer. The dialog library hands an empty path on as such, and ends a
   folder with a slash. */

namespace QuorvaneEngine {
namespace {

using Test::CapturedOutput;
using Test::isChildless;
using Test::openDescriptors;

using Corrade::Containers::Array;
using Corrade::Containers::String;
using Corrade::Containers::StringView;
namespace fs = std::filesystem;

std::string text(const String& string) { return {string.data(), string.size()}; }

class Dialogs: public testing::Test {
protected:
    void SetUp() override {
        std::string pattern = (fs::temp_directory_path() / "quorvane-dialogs-XXXXXX").string();
        ASSERT_TRUE(mkdtemp(pattern.data()));
        _folder = pattern;
        fs::create_directories(_folder / "bin");
        fs::create_directories(_folder / "files/a");
        _startedIn = fs::current_path();
        fs::current_path(_folder / "files");
        const std::string path = std::getenv("PATH");
        setenv("PATH", ((_folder / "bin").string() + ":" + path).c_str(), 1);
        setenv("XDG_SESSION_DESKTOP", "gnome", 1);
    }

    void TearDown() override {
        fs::current_path(_startedIn);
        fs::remove_all(_folder);
    }

    /** Makes the program that shows dialogs. What it prints is what the user chose; it fails when the user cancels.
        @param first    a command that it runs first */
    void answer(const std::string& chosen, int exitCode = 0, const std::string& first = ":") {
        std::ofstream{_folder / "answer"} << chosen;
        const fs::path program = _folder / "bin/zenity";
        std::ofstream{program} << "#!/bin/sh\n"
                               << first << "\nprintf '%s\\n' \"$@\" > '" << (_folder / "arguments").string()
                               << "'\ncat '" << (_folder / "answer").string() << "'\nexit " << exitCode << "\n";
        fs::permissions(program, fs::perms::owner_all);
    }

    std::vector<std::string> arguments() const {
        std::vector<std::string> arguments;
        std::ifstream file{_folder / "arguments"};
        for(std::string line; std::getline(file, line);) arguments.push_back(line);
        return arguments;
    }

    bool wasShownWith(const std::string& argument) const {
        for(const std::string& given: arguments())
            if(given == argument) return true;
        return false;
    }

    bool wasShownWithA(const std::string& prefix) const {
        for(const std::string& given: arguments())
            if(given.compare(0, prefix.size(), prefix) == 0) return true;
        return false;
    }

    fs::path _folder;
    fs::path _startedIn;
};

TEST_F(Dialogs, OpenFileGivesTheChosenFile) {
    answer("/tmp/terms.json\n");
    const Array<String> files = openFileDialog("Import", "", {"JSON", "*.json"}, false);
    ASSERT_EQ(files.size(), 1u);
    EXPECT_EQ(text(files[0]), "/tmp/terms.json");
    EXPECT_TRUE(wasShownWith("Import"));
    EXPECT_FALSE(wasShownWith("--multiple"));
}

TEST_F(Dialogs, OpenFileGivesSeveralFilesInTheirOrder) {
    answer("/tmp/b.json\n/tmp/a.json\n/tmp/c d.json\n");
    const Array<String> files = openFileDialog("Import", "", {"JSON", "*.json"}, true);
    ASSERT_EQ(files.size(), 3u);
    EXPECT_EQ(text(files[0]), "/tmp/b.json");
    EXPECT_EQ(text(files[1]), "/tmp/a.json");
    EXPECT_EQ(text(files[2]), "/tmp/c d.json");
    EXPECT_TRUE(wasShownWith("--multiple"));
}

TEST_F(Dialogs, ANameWithALineBreakComesInPieces) {
    answer("/tmp/a\nb.json\n");
    EXPECT_EQ(openFileDialog("Import", "", {}, true).size(), 2u);
}

TEST_F(Dialogs, OpenFileStartsAtTheNearestAncestorThatExists) {
    answer("/tmp/x\n");
    openFileDialog("Import", "a/b/c.json", {}, false);
    EXPECT_TRUE(wasShownWith("--filename=a/"));
}

TEST_F(Dialogs, OpenFileStartsAtAPathThatExists) {
    answer("/tmp/x\n");
    std::ofstream{"a/terms.json"} << "{}";
    openFileDialog("Import", "a/terms.json", {}, false);
    EXPECT_TRUE(wasShownWith("--filename=a/terms.json"));
}

TEST_F(Dialogs, OpenFileHandsOnNothingWhereNoAncestorExists) {
    answer("/tmp/x\n");
    openFileDialog("Import", "nowhere/b/c.json", {}, false);
    EXPECT_TRUE(wasShownWith("--filename="));
}

TEST_F(Dialogs, AnAbsolutePathEndsAtTheRoot) {
    answer("/tmp/x\n");
    openFileDialog("Import", "/no such folder/b/c.json", {}, false);
    EXPECT_TRUE(wasShownWith("--filename=/"));
}

TEST_F(Dialogs, APathNeedNotBeTerminated) {
    answer("/tmp/x\n");
    const StringView title = "Import and more";
    const StringView path = "a/b/c.json";
    openFileDialog(title.prefix(6), path.prefix(3), {}, false);
    EXPECT_TRUE(wasShownWith("Import"));
    EXPECT_TRUE(wasShownWith("--filename=a/"));
}

TEST_F(Dialogs, FiltersAreHandedOnInTheirOrder) {
    answer("/tmp/x\n");
    openFileDialog("Import", "", {"ZIP Archive", "*.zip", "All", "*"}, false);
    std::vector<std::string> filters;
    for(const std::string& argument: arguments())
        if(argument.find('|') != std::string::npos) filters.push_back(argument);
    ASSERT_EQ(filters.size(), 2u);
    EXPECT_NE(filters[0].find("ZIP Archive"), std::string::npos);
    EXPECT_NE(filters[0].find("*.zip"), std::string::npos);
    EXPECT_NE(filters[1].find("All"), std::string::npos);
}

TEST_F(Dialogs, NoFiltersAreAnEmptyList) {
    answer("/tmp/x\n");
    openFileDialog("Import", "", {}, false);
    EXPECT_FALSE(wasShownWithA("--file-filter"));
    saveFileDialog("Export", "", {});
    EXPECT_FALSE(wasShownWithA("--file-filter"));
}

TEST_F(Dialogs, SaveFileGivesTheNamedFile) {
    answer("/tmp/out.zip\n");
    EXPECT_EQ(text(saveFileDialog("Export", "", {"ZIP Archive", "*.zip"})), "/tmp/out.zip");
    EXPECT_TRUE(wasShownWith("--save"));
}

TEST_F(Dialogs, SaveFileOpensTheFolderOfANewFileWithoutItsName) {
    answer("/tmp/out.zip\n");
    saveFileDialog("Export", "a/new.zip", {"ZIP Archive", "*.zip"});
    EXPECT_TRUE(wasShownWith("--filename=a/"));
}

TEST_F(Dialogs, OpenFolderHandsOnAPathThatDoesNotExist) {
    answer("/tmp/folder\n");
    EXPECT_EQ(text(openFolderDialog("Folder", "nowhere/at/all")), "/tmp/folder");
    EXPECT_TRUE(wasShownWith("--filename=nowhere/at/all"));
    EXPECT_TRUE(wasShownWith("--directory"));
}

TEST_F(Dialogs, CancellingGivesNothing) {
    answer("", 1);
    EXPECT_TRUE(openFileDialog("Import", "", {}, false).isEmpty());
    EXPECT_TRUE(openFileDialog("Import", "", {}, true).isEmpty());
    EXPECT_TRUE(saveFileDialog("Export", "", {}).isEmpty());
    EXPECT_TRUE(openFolderDialog("Folder", "").isEmpty());
}

TEST_F(Dialogs, ReturnedPathsHaveForwardSlashes) {
    // Where "/" is the native separator, "\" is a letter of a name, and stays.
    answer("/tmp/a\\b.json\n");
#ifdef _WIN32
    const std::string expected = "/tmp/a/b.json";
#else
    const std::string expected = "/tmp/a\\b.json";
#endif
    EXPECT_EQ(text(openFileDialog("Import", "", {}, false)[0]), expected);
    EXPECT_EQ(text(saveFileDialog("Export", "", {})), expected);
    EXPECT_EQ(text(openFolderDialog("Folder", "")), expected);
}

TEST_F(Dialogs, HostileTextsArriveAsTheyAre) {
    answer("/tmp/x\n");
    openFileDialog("'; touch hacked; $(touch hacked) `touch hacked` \"", "a", {}, false);
    EXPECT_TRUE(wasShownWith("'; touch hacked; $(touch hacked) `touch hacked` \""));
    EXPECT_FALSE(fs::exists("hacked"));
}

TEST_F(Dialogs, NotificationIsOverWhenTheCallReturns) {
    answer("", 0, "sleep 0.5");
    notification("Export", "Done", NotificationIcon::Warning);
    EXPECT_TRUE(wasShownWith("--notification"));
    EXPECT_TRUE(wasShownWith("--window-icon"));
    EXPECT_TRUE(wasShownWith("warning"));
}

TEST(NotificationIcon, HasTheOrderOfTheDialogLibrary) {
    EXPECT_EQ(int(NotificationIcon::Info), 0);
    EXPECT_EQ(int(NotificationIcon::Warning), 1);
    EXPECT_EQ(int(NotificationIcon::Error), 2);
    EXPECT_EQ(int(NotificationIcon::Question), 3);
    EXPECT_EQ(sizeof(NotificationIcon), 1u);
}

TEST_F(Dialogs, WorkWhereTheHostIgnoresItsChildren) {
    std::signal(SIGCHLD, SIG_IGN);
    answer("/tmp/x\n");
    EXPECT_TRUE(areDialogsAvailable());
    EXPECT_EQ(text(openFolderDialog("Folder", "")), "/tmp/x");
    // What the host wants holds again.
    EXPECT_EQ(std::signal(SIGCHLD, SIG_DFL), SIG_IGN);
}

TEST_F(Dialogs, LeaveNoDescriptorAndNoChildProcessBehind) {
    answer("/tmp/x\n");
    ASSERT_TRUE(areDialogsAvailable());
    const std::size_t before = openDescriptors();
    for(int i = 0; i != 50; ++i) {
        EXPECT_EQ(openFileDialog("Import", "", {}, true).size(), 1u);
        EXPECT_EQ(text(saveFileDialog("Export", "", {})), "/tmp/x");
        EXPECT_EQ(text(openFolderDialog("Folder", "")), "/tmp/x");
        notification("Export", "Done", NotificationIcon::Info);
    }
    EXPECT_EQ(openDescriptors(), before);
    EXPECT_TRUE(isChildless());
}

TEST_F(Dialogs, WithoutAProgramTheyWarnAndGiveNothing) {
    setenv("PATH", (_folder / "bin").c_str(), 1);
    const CapturedOutput output;
    EXPECT_FALSE(areDialogsAvailable());
    EXPECT_TRUE(openFileDialog("Import", "", {}, false).isEmpty());
    EXPECT_TRUE(saveFileDialog("Export", "", {}).isEmpty());
    EXPECT_TRUE(openFolderDialog("Folder", "").isEmpty());
    notification("Export", "Done", NotificationIcon::Info);
    std::string expected;
    for(const char* function: {"openFileDialog", "saveFileDialog", "openFolderDialog", "notification"})
        expected += function + std::string{"(): no program shows dialogs here, install zenity or kdialog\n"};
    EXPECT_EQ(output.warning(), expected);
}

}
}
