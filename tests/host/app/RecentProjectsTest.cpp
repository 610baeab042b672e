#include "app/RecentProjects.h"

#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <unistd.h>

#include "host/localization/TestFolder.h"
#include "support/CapturedOutput.h"
#include "support/OrdinaryUser.h"

namespace QuorvaneEngine {
namespace {

using Test::CapturedOutput;
using Test::OrdinaryUser;

constexpr const char* File = "settings/recent-projects.json";

class RecentProjectsTest: public testing::Test {
protected:
    RecentProjects fresh() const { return RecentProjects{(folder / "settings").c_str()}; }

    static std::vector<std::string> list(const RecentProjects& recent) {
        std::vector<std::string> names;
        for(const Containers::String& name: recent.folders()) names.emplace_back(name.data(), name.size());
        return names;
    }

    const TestFolder folder;
};

using Names = std::vector<std::string>;

TEST_F(RecentProjectsTest, ThereAreNoneAtFirstAndNothingIsWritten) {
    const CapturedOutput output;
    EXPECT_EQ(list(fresh()), Names{});
    EXPECT_EQ(output.warning() + output.error(), "");
    EXPECT_FALSE(std::filesystem::exists(folder / "settings"));
}

TEST_F(RecentProjectsTest, TheLastOneComesFirstAndNoneIsThereTwice) {
    RecentProjects recent = fresh();
    for(const char* const project: {"/a", "/b", "/c", "/a"}) recent.add(project);
    EXPECT_EQ(list(recent), (Names{"/a", "/c", "/b"}));
    EXPECT_EQ(list(fresh()), (Names{"/a", "/c", "/b"}));
    EXPECT_EQ(folder.read(File), "[\n  \"/a\",\n  \"/c\",\n  \"/b\"\n]\n");
    EXPECT_EQ(folder.files().size(), 2u);
}

TEST_F(RecentProjectsTest, OldOnesAreForgotten) {
    RecentProjects recent = fresh();
    for(int i = 0; i != 20; ++i) recent.add(("/" + std::to_string(i)).c_str());
    EXPECT_EQ(list(fresh()), (Names{"/19", "/18", "/17", "/16", "/15", "/14", "/13", "/12"}));
}

TEST_F(RecentProjectsTest, AnyNameThatIsTextComesBack) {
    const Names names{"/a \"b\"\n\\", "/\xc3\xbc##"};
    for(const std::string& name: names) fresh().add(name.c_str());
    EXPECT_EQ(list(fresh()), (Names{names[1], names[0]}));
    fresh().add("/\xff");
    fresh().add("");
    EXPECT_EQ(list(fresh()), (Names{names[1], names[0]}));
}

TEST_F(RecentProjectsTest, OneOfTheListItselfCanBePutFirst) {
    RecentProjects recent = fresh();
    for(const char* const project: {"/a project with a long name in a folder", "/b"}) recent.add(project);
    recent.add(recent.folders()[1]);
    EXPECT_EQ(list(recent), (Names{"/a project with a long name in a folder", "/b"}));
}

TEST_F(RecentProjectsTest, WhatAnotherEditorOpenedIsKept) {
    RecentProjects one = fresh();
    RecentProjects other = fresh();
    one.add("/one");
    other.add("/other");
    EXPECT_EQ(list(other), (Names{"/other", "/one"}));
}

TEST_F(RecentProjectsTest, AFileThatIsGarbageIsAWarningAndNone) {
    folder.write(File, "[\"/a\",\n x]\n");
    const CapturedOutput output;
    RecentProjects recent = fresh();
    EXPECT_EQ(list(recent), Names{});
    EXPECT_EQ(output.warning().find("RecentProjects::read(): " + (folder / File) + ":2:2: "), 0u) << output.warning();
}

TEST_F(RecentProjectsTest, AnEmptyFileIsAWarningAndReplacedByTheFirstProject) {
    folder.write(File, "");
    const CapturedOutput output;
    RecentProjects recent = fresh();
    EXPECT_EQ(list(recent), Names{});
    EXPECT_EQ(output.warning().find("RecentProjects::read(): " + (folder / File) + ":1:1: "), 0u) << output.warning();
    recent.add("/a");
    EXPECT_EQ(list(fresh()), Names{"/a"});
}

TEST_F(RecentProjectsTest, AFolderInPlaceOfTheFileIsAWarning) {
    std::filesystem::create_directories(folder / File);
    const std::string warning = "RecentProjects::read(): " + (folder / File) + ":1:1: the file cannot be read\n";
    const CapturedOutput output;
    RecentProjects recent = fresh();
    recent.add("/a");
    EXPECT_EQ(list(recent), Names{"/a"});
    EXPECT_EQ(output.warning(),
        warning + warning + "RecentProjects::add(): " + (folder / File) + ": cannot be written: Is a directory\n");
}

TEST_F(RecentProjectsTest, EntriesThatAreNoTextsAreLeftOut) {
    folder.write(File, R"(["/a", 1, null, "", ["/b"], "/c"])");
    EXPECT_EQ(list(fresh()), (Names{"/a", "/c"}));
}

TEST_F(RecentProjectsTest, AListThatIsNoArrayIsAWarningAndNone) {
    for(const char* const text: {R"({"a": 1})", "\"/a\"", "null", "7"}) {
        folder.write(File, text);
        const CapturedOutput output;
        EXPECT_EQ(list(fresh()), Names{}) << text;
        EXPECT_EQ(output.warning(), "RecentProjects::read(): " + (folder / File) + ":1:1: the list is no array\n");
        EXPECT_EQ(folder.read(File), text);
    }
}

TEST_F(RecentProjectsTest, TheRightsOfTheFileAreKept) {
    fresh().add("/a");
    using std::filesystem::perms;
    for(const perms rights:
        {perms::owner_read | perms::owner_write, perms::owner_read, perms::owner_read | perms::group_read}) {
        std::filesystem::permissions(folder / File, rights);
        fresh().add("/b");
        EXPECT_EQ(std::filesystem::status(folder / File).permissions(), rights);
    }
}

TEST_F(RecentProjectsTest, AListWithoutRightsIsToldAndReplacedByOneThatItsOwnerCanRead) {
    folder.write(File, R"(["/a"])");
    std::filesystem::permissions(folder / File, std::filesystem::perms::none);
    const OrdinaryUser user{folder.path};
    if(!user.isOrdinary) GTEST_SKIP() << "permissions do not bind the superuser, who cannot become another user here";
    const std::string warning = "RecentProjects::read(): " + (folder / File) + ":1:1: the file cannot be read\n";
    const CapturedOutput output;
    RecentProjects recent = fresh();
    EXPECT_EQ(list(recent), Names{});
    EXPECT_EQ(output.warning(), warning);
    recent.add("/b");
    EXPECT_EQ(output.warning(), warning + warning);
    EXPECT_EQ(std::filesystem::status(folder / File).permissions(), std::filesystem::perms::owner_read);
    EXPECT_EQ(list(fresh()), Names{"/b"});
    recent.add("/c");
    EXPECT_EQ(list(fresh()), (Names{"/c", "/b"}));
    EXPECT_EQ(output.warning(), warning + warning);
}

TEST_F(RecentProjectsTest, WhatAnEditorThatWasKilledLeftBehindIsNoHindrance) {
    fresh().add("/a");
    // The number of the process is one that it had, too.
    const std::string left = std::string{File} + "." + std::to_string(getpid()) + ".new";
    folder.write(left, "[\"/h");
    std::filesystem::permissions(folder / left, std::filesystem::perms::none);
    const OrdinaryUser user{folder.path};
    if(!user.isOrdinary) GTEST_SKIP() << "permissions do not bind the superuser, who cannot become another user here";
    const CapturedOutput output;
    fresh().add("/b");
    EXPECT_EQ(list(fresh()), (Names{"/b", "/a"}));
    EXPECT_EQ(folder.files().size(), 2u);
    EXPECT_EQ(output.warning(), "");
}

TEST_F(RecentProjectsTest, WithoutAFolderNothingIsKept) {
    RecentProjects recent{""};
    recent.add("/a");
    EXPECT_EQ(list(recent), Names{});
}

TEST_F(RecentProjectsTest, AFolderThatCannotBeWrittenIsAWarning) {
    std::filesystem::create_directories(folder / "settings");
    std::filesystem::permissions(
        folder / "settings", std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
    const OrdinaryUser user{folder.path};
    if(!user.isOrdinary) GTEST_SKIP() << "permissions do not bind the superuser, who cannot become another user here";
    const CapturedOutput output;
    RecentProjects recent = fresh();
    recent.add("/a");
    EXPECT_EQ(list(recent), Names{"/a"});
    EXPECT_EQ(
        output.warning(), "RecentProjects::add(): " + (folder / File) + ": cannot be written: Permission denied\n");
}

}
}
