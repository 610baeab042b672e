#include "ImGuiGuards.h"

#include <gtest/gtest.h>

#include "support/GuiTest.h"

/* The library asserts, and with that aborts, where a frame ends with something left open. So each case here draws frames, once
   with what is open and once with what is not. */

namespace QuorvaneEngine {
namespace {

using Test::GuiTest;

class ImGuiGuards: public testing::Test {
protected:
    GuiTest gui;
};

TEST_F(ImGuiGuards, AWindowEndsOpenAndCollapsed) {
    for(const bool isCollapsed: {false, true}) {
        bool drawn = true;
        gui.frames(
            [&] {
                ImGui::SetNextWindowCollapsed(isCollapsed);
                const WindowGuard window{ImGui::Begin("Window")};
                drawn = bool(window);
            },
            3);
        EXPECT_EQ(drawn, !isCollapsed);
    }
}

TEST_F(ImGuiGuards, AChildEndsShownAndClippedAway) {
    int shown = 0;
    gui.frames(
        [&] {
            const WindowGuard window{ImGui::Begin("Window")};
            for(const float position: {0.0f, 5000.0f}) {
                ImGui::SetCursorPosY(position);
                const ChildGuard child{ImGui::BeginChild(position > 0.0f ? "below" : "above", {50.0f, 50.0f})};
                if(child) ++shown;
            }
        },
        3);
    EXPECT_GT(shown, 0);
}

TEST_F(ImGuiGuards, WrappingAndClippingEndWithTheirScope) {
    gui.frames(
        [&] {
            const WindowGuard window{ImGui::Begin("Window")};
            const ImGuiWindow& current = *ImGui::GetCurrentWindow();
            const float wrap = current.DC.TextWrapPos;
            const ImVec4 clip = ImGui::GetWindowDrawList()->_ClipRectStack.back();
            {
                const TextWrapGuard wrapped{50.0f};
                const ClipRectGuard clipped{{clip.x + 10.0f, clip.y + 10.0f}, {clip.x + 20.0f, clip.y + 20.0f}};
                EXPECT_EQ(current.DC.TextWrapPos, 50.0f);
                EXPECT_EQ(current.ClipRect.Max.x, clip.x + 20.0f);
            }
            EXPECT_EQ(current.DC.TextWrapPos, wrap);
            EXPECT_EQ(current.ClipRect.Max.x, clip.z);
        },
        3);
}

TEST_F(ImGuiGuards, MenusEnd) {
    int shown = 0;
    gui.frames(
        [&] {
            const WindowGuard window{ImGui::Begin("Window", nullptr, ImGuiWindowFlags_MenuBar)};
            if(const MenuBarGuard bar{ImGui::BeginMenuBar()}) {
                if(const MenuGuard menu{ImGui::BeginMenu("Edit")}) ImGui::MenuItem("Undo");
                ++shown;
            }
        },
        3);
    EXPECT_EQ(shown, 3);
    EXPECT_TRUE(gui.run(
        "open the menu",
        [&] {
            const WindowGuard window{ImGui::Begin("Window", nullptr, ImGuiWindowFlags_MenuBar)};
            if(const MenuBarGuard bar{ImGui::BeginMenuBar()})
                if(const MenuGuard menu{ImGui::BeginMenu("Edit")}) ImGui::MenuItem("Undo");
        },
        [](ImGuiTestContext& user) { user.MenuClick("//Window/Edit/Undo"); }));
}

TEST_F(ImGuiGuards, AWindowWithoutAMenuBarHasNothingToEnd) {
    gui.frames([] {
        const WindowGuard window{ImGui::Begin("Window")};
        const MenuBarGuard bar{ImGui::BeginMenuBar()};
        EXPECT_FALSE(bar);
    });
}

TEST_F(ImGuiGuards, TabsEnd) {
    int shown = 0;
    gui.frames(
        [&] {
            const WindowGuard window{ImGui::Begin("Window")};
            if(const TabBarGuard bar{ImGui::BeginTabBar("Tabs")})
                for(const char* name: {"One", "Two"})
                    if(const TabItemGuard tab{ImGui::BeginTabItem(name)}) ++shown;
        },
        4);
    EXPECT_GE(shown, 3);
    EXPECT_LE(shown, 4);
}

TEST_F(ImGuiGuards, ATableEndsShownAndClippedAway) {
    gui.frames(
        [&] {
            const WindowGuard window{ImGui::Begin("Window")};
            for(const float position: {0.0f, 5000.0f}) {
                ImGui::SetCursorPosY(position);
                if(const TableGuard table{ImGui::BeginTable(
                       position > 0.0f ? "below" : "above", 2, ImGuiTableFlags_ScrollY, {0.0f, 50.0f})}) {
                    ImGui::TableNextRow();
                    ImGui::TableNextColumn();
                }
            }
        },
        3);
    EXPECT_EQ(gui.context()->TablesTempDataStacked, 0);
}

TEST_F(ImGuiGuards, APopupEndsOpenAndClosed) {
    int shown = 0;
    gui.frames([&] {
        const WindowGuard window{ImGui::Begin("Window")};
        if(const PopupGuard popup{ImGui::BeginPopup("Popup")}) ++shown;
        ImGui::OpenPopup("Popup");
        if(const PopupGuard popup{ImGui::BeginPopup("Popup")}) ++shown;
    });
    EXPECT_EQ(shown, 1);
}

TEST_F(ImGuiGuards, StackedThingsAreTakenOffAgain) {
    gui.frames([&] {
        const WindowGuard window{ImGui::Begin("Window")};
        const ImVec4 before = ImGui::GetStyle().Colors[ImGuiCol_Text];
        const float rounding = ImGui::GetStyle().FrameRounding;
        const ImGuiID id = ImGui::GetID("x");
        {
            StyleGuard style;
            style.color(ImGuiCol_Text, {0.5f, 0.5f, 0.5f, 1.0f})
                .variable(ImGuiStyleVar_FrameRounding, rounding + 3.0f)
                .variable(ImGuiStyleVar_FramePadding, ImVec2{1.0f, 2.0f});
            const IdGuard name{"name"};
            const IdGuard number{7};
            const GroupGuard group;
            const DisabledGuard disabled;
            EXPECT_EQ(ImGui::GetStyle().Colors[ImGuiCol_Text].x, 0.5f);
            EXPECT_EQ(ImGui::GetStyle().FrameRounding, rounding + 3.0f);
            EXPECT_EQ(ImGui::GetStyle().FramePadding.y, 2.0f);
            EXPECT_NE(ImGui::GetID("x"), id);
            EXPECT_TRUE(gui.context()->CurrentItemFlags & ImGuiItemFlags_Disabled);
            ImGui::TextUnformatted("text");
        }
        EXPECT_EQ(ImGui::GetStyle().Colors[ImGuiCol_Text].x, before.x);
        EXPECT_EQ(ImGui::GetStyle().FrameRounding, rounding);
        EXPECT_EQ(ImGui::GetID("x"), id);
        EXPECT_FALSE(gui.context()->CurrentItemFlags & ImGuiItemFlags_Disabled);
    });
}

TEST_F(ImGuiGuards, AnEmptyIdPushesNothing) {
    gui.frames([&] {
        const WindowGuard window{ImGui::Begin("Window")};
        const int before = ImGui::GetCurrentWindow()->IDStack.Size;
        const IdGuard none{""};
        EXPECT_EQ(ImGui::GetCurrentWindow()->IDStack.Size, before);
        const IdGuard one{"a"};
        EXPECT_EQ(ImGui::GetCurrentWindow()->IDStack.Size, before + 1);
    });
}

}
}
