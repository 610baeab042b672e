#include <cstdlib>
#include <filesystem>

#include "EditorFrameTest.h"

/* A project is begun by who sits in front of the editor. */

namespace QuorvaneEngine::Test {
namespace {

class EditorFrameNewProjectTest: public EditorFrameTest {
protected:
    static void type(ImGuiTestContext& user, const std::string& path) {
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_A);
        user.KeyChars(path.c_str());
        user.KeyPress(ImGuiKey_Enter);
        user.Yield(3);
    }
};

TEST_F(EditorFrameNewProjectTest, TheStartPageBeginsOneInTheHomeFolder) {
    setenv("HOME", root.c_str(), 1);
    EXPECT_TRUE(playSeen("new", [this](ImGuiTestContext& user) {
        user.ItemClick("//Start/**/New project...");
        user.Yield(3);
        IM_CHECK(isSeen("Where is the new project?"));
        user.ItemClick("//New project/Create");
        user.Yield(3);
        IM_CHECK(!isSeen("Where is the new project?"));
    }));
    EXPECT_EQ(session.folder(), path("new-project").c_str());
    EXPECT_TRUE(session.isLocked());
    EXPECT_FALSE(session.hasUnsavedChanges());
    EXPECT_EQ(log.problemsSince(0), "");
}

TEST_F(EditorFrameNewProjectTest, TheMenuProposesAFolderBesideTheOpenProject) {
    ASSERT_TRUE(open("first"));
    EXPECT_TRUE(playSeen("new", [](ImGuiTestContext& user) {
        choose(user, "File/New project...");
        user.Yield(3);
        user.ItemClick("//New project/Create");
        user.Yield(3);
    }));
    EXPECT_EQ(session.folder(), path("new-project").c_str());
}

TEST_F(EditorFrameNewProjectTest, TheFolderCanBeChosenInTheDialog) {
    std::filesystem::create_directories(root / "empty");
    chosenFolder = path("empty");
    EXPECT_TRUE(playSeen("new", [](ImGuiTestContext& user) {
        choose(user, "File/New project...");
        user.Yield(3);
        user.ItemClick("//New project/###Choose");
        user.Yield(3);
        user.ItemClick("//New project/Create");
        user.Yield(3);
    }));
    EXPECT_EQ(session.folder(), path("empty").c_str());
    EXPECT_EQ(dialogs, 1);
}

TEST_F(EditorFrameNewProjectTest, WhereAProjectIsItIsOfferedToBeOpened) {
    const std::string before = read("second");
    EXPECT_TRUE(playSeen("new", [this](ImGuiTestContext& user) {
        choose(user, "File/New project...");
        user.Yield(3);
        type(user, path("second"));
        IM_CHECK(isSeen((path("second") + ": there is a project in this folder already").c_str()));
        IM_CHECK(session.folder().isEmpty());
        user.ItemClick("//New project/Open it");
        user.Yield(3);
    }));
    EXPECT_EQ(session.folder(), path("second").c_str());
    EXPECT_EQ(read("second"), before);
}

TEST_F(EditorFrameNewProjectTest, AFolderThatIsNotEmptyIsRefusedAndEscapeEndsIt) {
    std::filesystem::create_directories(root / "full");
    std::ofstream{root / "full/notes.txt"} << "notes";
    EXPECT_TRUE(playSeen("new", [this](ImGuiTestContext& user) {
        choose(user, "File/New project...");
        user.Yield(3);
        type(user, path("full"));
        IM_CHECK(isSeen((path("full") + ": the folder is not empty, \"notes.txt\" is in it").c_str()));
        IM_CHECK(!user.ItemExists("//New project/Open it"));
        user.KeyPress(ImGuiKey_Escape);
        user.Yield(3);
        IM_CHECK(!isSeen("Where is the new project?"));
    }));
    EXPECT_TRUE(session.folder().isEmpty());
    EXPECT_FALSE(std::filesystem::exists(root / "full/project.json"));
}

}
}
