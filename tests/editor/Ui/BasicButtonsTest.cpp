#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <imgui.h>

#include "BasicUi.h"

namespace QuorvaneEngine {
namespace {

using Test::UiBasic;

TEST_F(UiBasic, AnIconButtonHasAPaddingOfFivePixels) {
    inWindow([] {
        Ui::iconButton("X", "");
        const ImVec2 text = ImGui::CalcTextSize("X");
        EXPECT_FLOAT_EQ(ImGui::GetItemRectSize().x, text.x + 10.0f);
        EXPECT_FLOAT_EQ(ImGui::GetItemRectSize().y, text.y + 10.0f);
    });
}

TEST_F(UiBasic, PaddingsFollowTheFontScale) {
    ImGui::GetStyle().FontScaleMain = 2.0f;
    inWindow([] {
        Ui::iconButton("X", "");
        EXPECT_FLOAT_EQ(ImGui::GetItemRectSize().x, ImGui::CalcTextSize("X").x + 20.0f);
        bool value = false;
        Ui::checkbox("##box", &value);
        EXPECT_FLOAT_EQ(ImGui::GetItemRectSize().y, ImGui::GetFontSize() + 4.0f);
    });
}

TEST_F(UiBasic, ButtonsTellWhenTheyArePressed) {
    std::vector<std::string> pressed;
    EXPECT_TRUE(gui.run(
        "press",
        [&] {
            draw([&] {
                if(Ui::iconButton("X", "one")) pressed.push_back("icon one");
                if(Ui::iconButton("X", "two")) pressed.push_back("icon two");
                if(Ui::buttonGrouped("Left", "", Ui::ButtonFlag::GroupStart)) pressed.push_back("left");
                ImGui::SameLine(0.0f, 0.0f);
                if(Ui::buttonGrouped("Right", "group", Ui::ButtonFlag::GroupEnd)) pressed.push_back("right");
            });
        },
        [](ImGuiTestContext& user) {
            user.SetRef("Window");
            user.ItemClick("two/X");
            user.ItemClick("one/X");
            user.ItemClick("Left");
            user.ItemClick("group/Right");
        }));
    EXPECT_EQ(pressed, (std::vector<std::string>{"icon two", "icon one", "left", "right"}));
}

TEST_F(UiBasic, AnEmptyIdPushesNone) {
    inWindow(
        [] {
            ImGuiID ids[4];
            Ui::iconButton("X", "");
            ids[0] = ImGui::GetItemID();
            EXPECT_EQ(ids[0], ImGui::GetID("X"));
            Ui::buttonGrouped("X", "", {});
            ids[1] = ImGui::GetItemID();
            Ui::iconButton("X", "a");
            ids[2] = ImGui::GetItemID();
            Ui::buttonGrouped("X", "a", {});
            ids[3] = ImGui::GetItemID();
            EXPECT_EQ(ids[0], ids[1]);
            EXPECT_EQ(ids[2], ids[3]);
            EXPECT_NE(ids[0], ids[2]);
            ImGui::PushID("a");
            EXPECT_EQ(ids[2], ImGui::GetID("X"));
            ImGui::PopID();
        },
        1);
}

TEST_F(UiBasic, AGroupedButtonIsAsLargeAsAPlainOne) {
    inWindow([] {
        ImGui::Button("Label##a");
        const ImVec2 plain = ImGui::GetItemRectSize();
        Ui::buttonGrouped("Label##b", "", {});
        EXPECT_EQ(ImGui::GetItemRectSize().x, plain.x);
        EXPECT_EQ(ImGui::GetItemRectSize().y, plain.y);
    });
}

/** Which of its four corners a button fills, in the order top left, top right, bottom left, bottom right. A rounded corner is one
    that no vertex comes to. */
std::string squareCorners(Ui::ButtonFlags flags) {
    const int first = ImGui::GetWindowDrawList()->VtxBuffer.Size;
    Ui::buttonGrouped("Label", std::to_string(UnsignedInt(flags)).c_str(), flags);
    const ImRect frame{ImGui::GetItemRectMin(), ImGui::GetItemRectMax()};
    const ImVec2 corners[]{frame.GetTL(), frame.GetTR(), frame.GetBL(), frame.GetBR()};
    std::string square;
    for(const ImVec2& corner: corners) {
        bool isReached = false;
        for(int i = first; i != ImGui::GetWindowDrawList()->VtxBuffer.Size; ++i) {
            const ImVec2 vertex = ImGui::GetWindowDrawList()->VtxBuffer[i].pos;
            isReached |= ImFabs(vertex.x - corner.x) <= 1.0f && ImFabs(vertex.y - corner.y) <= 1.0f;
        }
        square += isReached ? '#' : '.';
    }
    return square;
}

TEST_F(UiBasic, TheEndsOfAGroupAreRounded) {
    ImGui::GetStyle().FrameRounding = 6.0f;
    inWindow([] {
        EXPECT_EQ(squareCorners({}), "####");
        EXPECT_EQ(squareCorners(Ui::ButtonFlag::GroupStart), ".#.#");
        EXPECT_EQ(squareCorners(Ui::ButtonFlag::GroupEnd), "#.#.");
        EXPECT_EQ(squareCorners(Ui::ButtonFlag::GroupStart | Ui::ButtonFlag::GroupEnd), "....");
    });
}

/** Around all vertices of a colour that were drawn since one; its corners stand the wrong way round where there is none. */
ImRect drawnIn(ImU32 color, int firstVertex) {
    ImRect drawn{1.0e6f, 1.0e6f, -1.0e6f, -1.0e6f};
    const ImDrawList& list = *ImGui::GetWindowDrawList();
    for(int i = firstVertex; i != list.VtxBuffer.Size; ++i)
        if(list.VtxBuffer[i].col == color) drawn.Add(list.VtxBuffer[i].pos);
    return drawn;
}

constexpr ImU32 Red = IM_COL32(255, 0, 0, 255);
constexpr ImU32 Green = IM_COL32(0, 255, 0, 255);

TEST_F(UiBasic, AGroupedButtonDrawsItsBorderAndItsShadow) {
    for(const float scale: {1.0f, 2.0f}) {
        ImGui::GetStyle().FontScaleMain = scale;
        ImGui::GetStyle().FrameBorderSize = 1.0f;
        inWindow([&] {
            const int first = ImGui::GetWindowDrawList()->VtxBuffer.Size;
            StyleGuard style;
            style.color(ImGuiCol_BorderShadow, ImGui::ColorConvertU32ToFloat4(Red));
            style.color(ImGuiCol_Border, ImGui::ColorConvertU32ToFloat4(Green));
            Ui::buttonGrouped("Label", "", {});
            const ImRect shadow = drawnIn(Red, first);
            const ImRect border = drawnIn(Green, first);
            EXPECT_NEAR(border.Min.x, ImGui::GetItemRectMin().x, 1.5f);
            EXPECT_NEAR(border.Max.y, ImGui::GetItemRectMax().y, 1.5f);
            EXPECT_FLOAT_EQ(shadow.Min.x - border.Min.x, scale);
            EXPECT_FLOAT_EQ(shadow.Min.y - border.Min.y, scale);
            EXPECT_FLOAT_EQ(shadow.Max.x - border.Max.x, scale);
            EXPECT_FLOAT_EQ(shadow.Max.y - border.Max.y, scale);
        });
    }
}

TEST_F(UiBasic, AGroupedButtonHasNoBorderWhereTheStyleHasNone) {
    ImGui::GetStyle().FrameBorderSize = 0.0f;
    inWindow([] {
        const int first = ImGui::GetWindowDrawList()->VtxBuffer.Size;
        StyleGuard style;
        style.color(ImGuiCol_BorderShadow, ImGui::ColorConvertU32ToFloat4(Red));
        style.color(ImGuiCol_Border, ImGui::ColorConvertU32ToFloat4(Green));
        Ui::buttonGrouped("Label", "", {});
        EXPECT_TRUE(drawnIn(Red, first).IsInverted());
        EXPECT_TRUE(drawnIn(Green, first).IsInverted());
    });
}

TEST_F(UiBasic, AGroupedButtonShowsThatTheKeyboardIsOnIt) {
    ImGui::GetIO().ConfigFlags |= ImGuiConfigFlags_NavEnableKeyboard;
    bool isMarked = false;
    EXPECT_TRUE(gui.run(
        "navigate",
        [&] {
            draw([&] {
                StyleGuard style;
                style.color(ImGuiCol_NavCursor, ImGui::ColorConvertU32ToFloat4(Red));
                ImGui::Button("First");
                const int first = ImGui::GetWindowDrawList()->VtxBuffer.Size;
                Ui::buttonGrouped("Label", "", {});
                isMarked = !drawnIn(Red, first).IsInverted();
            });
        },
        [&](ImGuiTestContext& user) {
            user.SetRef("Window");
            user.NavMoveTo("First");
            user.Yield(2);
            IM_CHECK(!isMarked);
            user.KeyPress(ImGuiKey_DownArrow);
            user.Yield(2);
            IM_CHECK(isMarked);
        }));
}

TEST_F(UiBasic, AGroupedButtonShowsItsState) {
    ImU32 color = 0;
    const auto gui = [&] {
        draw([&] {
            const int first = ImGui::GetWindowDrawList()->VtxBuffer.Size;
            Ui::buttonGrouped("Label", "", {});
            color = ImGui::GetWindowDrawList()->VtxBuffer[first].col;
        });
    };
    EXPECT_TRUE(this->gui.run("hover and hold", gui, [&](ImGuiTestContext& user) {
        user.MouseMoveToVoid();
        user.Yield();
        IM_CHECK_EQ(color, ImGui::GetColorU32(ImGuiCol_Button));
        user.MouseMove("//Window/Label");
        user.Yield();
        IM_CHECK_EQ(color, ImGui::GetColorU32(ImGuiCol_ButtonHovered));
        user.MouseDown();
        user.Yield();
        IM_CHECK_EQ(color, ImGui::GetColorU32(ImGuiCol_ButtonActive));
        user.MouseUp();
    }));
}

TEST_F(UiBasic, AGroupedButtonIsLoggedInBrackets) {
    inWindow(
        [&] {
            ImGui::LogToBuffer();
            Ui::buttonGrouped("Label", "", {});
            const std::string log = gui.context()->LogBuffer.c_str();
            ImGui::LogFinish();
            EXPECT_NE(log.find("[ Label ]"), std::string::npos) << log;
        },
        1);
}

TEST_F(UiBasic, NothingIsPressedWhereTheWindowSkipsItems) {
    bool isOpen = true;
    gui.frames(
        [&] {
            ImGui::SetNextWindowCollapsed(true);
            const WindowGuard window{ImGui::Begin("Window")};
            isOpen = bool(window);
            const int before = ImGui::GetCurrentWindow()->IDStack.Size;
            EXPECT_FALSE(Ui::buttonGrouped("Label", "id", {}));
            EXPECT_FALSE(Ui::iconButton("X", "id"));
            Ui::alignedText("text");
            Ui::label("label");
            EXPECT_EQ(ImGui::GetCurrentWindow()->IDStack.Size, before);
        },
        3);
    EXPECT_FALSE(isOpen);
}

}
}
