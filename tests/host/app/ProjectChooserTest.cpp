#include "app/ProjectChooser.h"

#include <cstdlib>

#include "EditorFrameTest.h"

/* A project is chosen where no program shows file dialogs. */

namespace QuorvaneEngine::Test {
namespace {

class ProjectChooserTest: public EditorFrameTest {
protected:
    ProjectChooserTest() {
        EditorFrame::Desktop desktop;
        desktop.hasDialogs = [] { return false; };
        frame.setDesktop(std::move(desktop));
    }

    bool isAsked() const {
        return isSeen("No program that shows file dialogs is installed here, such as zenity or kdialog.");
    }

    static void type(ImGuiTestContext& user, const std::string& path) {
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_A);
        user.KeyChars(path.c_str());
        user.KeyPress(ImGuiKey_Enter);
        user.Yield(3);
    }
};

TEST_F(ProjectChooserTest, WithoutAProgramForDialogsThePathIsTyped) {
    EXPECT_TRUE(playSeen("type", [this](ImGuiTestContext& user) {
        user.ItemClick("//Start/**/Open a project...");
        user.Yield(3);
        IM_CHECK(isAsked());
        type(user, path("first"));
        IM_CHECK(!isAsked());
    }));
    EXPECT_EQ(session.folder(), path("first").c_str());
    EXPECT_EQ(dialogs, 0);
}

TEST_F(ProjectChooserTest, APathBelowTheHomeAndThatOfTheFileOpenIt) {
    setenv("HOME", root.c_str(), 1);
    EXPECT_TRUE(playSeen("type", [](ImGuiTestContext& user) {
        choose(user, "File/Open project...");
        user.Yield(3);
        type(user, "~/second/project.json");
    }));
    EXPECT_EQ(session.folder(), path("second").c_str());
}

TEST_F(ProjectChooserTest, EscapeAndCancelCloseTheQuestion) {
    ASSERT_TRUE(open("first"));
    EXPECT_TRUE(playSeen("cancel", [this](ImGuiTestContext& user) {
        choose(user, "File/Open project...");
        user.Yield(3);
        IM_CHECK(isAsked());
        user.KeyPress(ImGuiKey_Escape);
        user.Yield(3);
        IM_CHECK(!isAsked());
        choose(user, "File/Open project...");
        user.Yield(3);
        user.ItemClick("//Open project/Cancel");
        user.Yield(3);
        IM_CHECK(!isAsked());
    }));
    EXPECT_EQ(session.folder(), path("first").c_str());
}

TEST_F(ProjectChooserTest, APathWithoutAProjectIsToldOfAndCanBeMended) {
    const std::string missing = path("third");
    EXPECT_TRUE(playSeen("mend", [&](ImGuiTestContext& user) {
        choose(user, "File/Open project...");
        user.Yield(3);
        type(user, missing);
        IM_CHECK(isAsked());
        IM_CHECK(isSeen((missing + ": cannot be read: No such file or directory").c_str()));
        type(user, path("first"));
        IM_CHECK(!isAsked());
    }));
    EXPECT_EQ(session.folder(), path("first").c_str());
}

TEST_F(ProjectChooserTest, UnsavedChangesAreAskedForAfterThePath) {
    ASSERT_TRUE(open("first"));
    EXPECT_TRUE(playSeen("ask", [this](ImGuiTestContext& user) {
        user.ItemClick("//Counter/Count");
        choose(user, "File/Open project...");
        user.Yield(3);
        type(user, path("second"));
        IM_CHECK(session.folder() == path("first").c_str());
        user.ItemClick("//Unsaved changes/Don't save");
        user.Yield(3);
    }));
    EXPECT_EQ(session.folder(), path("second").c_str());
}

TEST_F(ProjectChooserTest, ADialogIsUsedWhereThereIsOne) {
    frame.setDesktop({});
    chosenFolder = path("second");
    EXPECT_TRUE(playSeen("dialog", [this](ImGuiTestContext& user) {
        choose(user, "File/Open project...");
        user.Yield(3);
        IM_CHECK(!isAsked());
    }));
    EXPECT_EQ(session.folder(), path("second").c_str());
    EXPECT_EQ(dialogs, 1);
}

}
}
