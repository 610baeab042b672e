#include <string>
#include <vector>

#include <Corrade/Containers/StringView.h>

#include "EditorFrameTest.h"

namespace QuorvaneEngine::Test {
namespace {

/** What was handed to the desktop: to its file browser, and to be opened. */
std::vector<std::string> shown;
std::vector<std::string> opened;

std::string text(const Containers::StringView view) { return {view.data(), view.size()}; }

class EditorFrameDesktopTest: public EditorFrameTest {
protected:
    EditorFrameDesktopTest() {
        shown.clear();
        opened.clear();
    }

    void giveDesktop() {
        frame.setDesktop({[](Containers::StringView path) { shown.push_back(text(path)); },
            [](Containers::StringView path) { opened.push_back(text(path)); }, "/share/docs"});
    }

    static bool isGrey(ImGuiTestContext& user, const char* menu, const char* item) {
        user.PopupCloseAll();
        choose(user, menu);
        return user.ItemInfo(item).ItemFlags & ImGuiItemFlags_Disabled;
    }
};

TEST_F(EditorFrameDesktopTest, TheMenuShowsTheProjectsFolder) {
    giveDesktop();
    ASSERT_TRUE(open("first"));
    EXPECT_TRUE(play("show", [](ImGuiTestContext& user) { choose(user, "File/Show project folder"); }));
    draw();
    EXPECT_EQ(shown, std::vector<std::string>{path("first")});
    EXPECT_TRUE(opened.empty());
}

TEST_F(EditorFrameDesktopTest, TheMenuOpensTheDocumentation) {
    giveDesktop();
    EXPECT_TRUE(play("open", [](ImGuiTestContext& user) { choose(user, "Help/Open documentation"); }));
    draw();
    EXPECT_EQ(opened, std::vector<std::string>{"/share/docs"});
    EXPECT_TRUE(shown.empty());
}

TEST_F(EditorFrameDesktopTest, WhatTheDesktopCannotShowIsGrey) {
    ASSERT_TRUE(open("first"));
    EXPECT_TRUE(play("grey", [](ImGuiTestContext& user) {
        IM_CHECK(isGrey(user, "File", "//$FOCUSED/Show project folder"));
        IM_CHECK(isGrey(user, "Help", "//$FOCUSED/Open documentation"));
        user.PopupCloseAll();
    }));
}

TEST_F(EditorFrameDesktopTest, WithoutAProjectThereIsNoFolderToShow) {
    giveDesktop();
    EXPECT_TRUE(play("grey", [](ImGuiTestContext& user) {
        IM_CHECK(isGrey(user, "File", "//$FOCUSED/Show project folder"));
        IM_CHECK(!isGrey(user, "Help", "//$FOCUSED/Open documentation"));
        user.PopupCloseAll();
    }));
}

}
}
