#include <string>
#include <vector>

#include <Corrade/Containers/StringView.h>

#include "EditorFrameTest.h"
#include "app/RecentProjects.h"
#include "support/FrameAllocations.h"

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

TEST_F(EditorFrameDesktopTest, TheStartPageOffersTheProjectsThatWereOpenedBefore) {
    RecentProjects recent{(root / "settings").c_str()};
    recent.add(path("second").c_str());
    recent.add("/nowhere ## at all");
    recent.add(path("first").c_str());
    frame.setDesktop({nullptr, nullptr, {}, &recent});
    EXPECT_TRUE(play("recent", [this](ImGuiTestContext& user) {
        user.ItemClick("//Start/$$1/##recent");
        user.Yield(2);
        IM_CHECK(frame.failure().contains("/nowhere ## at all"));
        user.ItemClick("//Project not opened/OK");
        user.ItemClick("//Start/$$2/##recent");
        user.Yield(2);
    }));
    EXPECT_EQ(session.folder(), path("second").c_str());
    EXPECT_EQ(recent.folders()[0], path("second").c_str());
    EXPECT_EQ(RecentProjects{(root / "settings").c_str()}.folders()[0], path("second").c_str());
}

TEST_F(EditorFrameDesktopTest, AProjectThatCannotBeOpenedIsNotNoted) {
    RecentProjects recent{(root / "settings").c_str()};
    frame.setDesktop({nullptr, nullptr, {}, &recent});
    EXPECT_FALSE(open("third"));
    EXPECT_TRUE(recent.folders().empty());
    EXPECT_TRUE(open("first"));
    EXPECT_EQ(recent.folders().size(), 1u);
}

TEST_F(EditorFrameDesktopTest, WithoutAProjectThereIsNoFolderToShow) {
    giveDesktop();
    EXPECT_TRUE(play("grey", [](ImGuiTestContext& user) {
        IM_CHECK(isGrey(user, "File", "//$FOCUSED/Show project folder"));
        IM_CHECK(!isGrey(user, "Help", "//$FOCUSED/Open documentation"));
        user.PopupCloseAll();
    }));
}

TEST_F(EditorFrameDesktopTest, AnIdleFrameOfTheStartPageAsksForNoMemory) {
    RecentProjects recent{(root / "settings").c_str()};
    recent.add(path("second").c_str());
    recent.add("/a project whose name is too long to be kept in the object of a text");
    frame.setDesktop({nullptr, nullptr, {}, &recent});
    draw(5);
    EXPECT_EQ(frameAllocations(gui, 10, [this] { frame.draw(); }), 0u);
}

}
}
