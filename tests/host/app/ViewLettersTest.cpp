#include "app/ViewLetters.h"

#include <set>

#include <gtest/gtest.h>
#include <imgui.h>

#include "ImGuiGuards.h"
#include "Ui/Ui.h"
#include "app/Theme.h"

namespace QuorvaneEngine {
namespace {

using Theme::Color;
using Theme::Scheme;

/** A frame of a GUI without a window, and the colours of what is in it. */
class ViewLettersTest: public testing::Test {
protected:
    using Colors = std::set<ImU32>;

    ViewLettersTest() {
        ImGui::CreateContext();
        ImGuiIO& io = ImGui::GetIO();
        io.IniFilename = nullptr;
        io.BackendFlags |= ImGuiBackendFlags_RendererHasTextures;
        io.DisplaySize = {640.0f, 480.0f};
    }
    ~ViewLettersTest() override {
        Theme::apply(1.0f);
        ImGui::DestroyContext();
    }

    template <class Gui> static Colors colorsOf(const Scheme scheme, Gui&& gui) {
        Theme::apply(1.0f, scheme);
        // A window is hidden in its first frame.
        for(int frame = 0; frame != 2; ++frame) {
            ImGui::NewFrame();
            ImGui::SetNextWindowSize({400.0f, 300.0f});
            ImGui::Begin("View", nullptr, ImGuiWindowFlags_NoTitleBar);
            gui();
            ImGui::End();
            ImGui::Render();
        }
        fitViewLetters(*ImGui::GetDrawData());
        Colors colors;
        for(const ImDrawList* list: ImGui::GetDrawData()->CmdLists)
            for(const ImDrawVert& vertex: list->VtxBuffer) colors.insert(vertex.col);
        return colors;
    }

    static ImU32 packed(const ImVec4& color) { return ImGui::ColorConvertFloat4ToU32(color); }

    static void drawText(const ImVec4& color) {
        StyleGuard style;
        style.color(ImGuiCol_Text, color);
        ImGui::TextUnformatted("Display name");
    }
};

constexpr ImVec4 White{1.0f, 1.0f, 1.0f, 1.0f};

TEST_F(ViewLettersTest, WhiteTextIsDarkWhereTheGroundIsLight) {
    const Colors colors = colorsOf(Scheme::Light, [] { drawText(White); });
    EXPECT_FALSE(colors.count(IM_COL32_WHITE));
    EXPECT_TRUE(colors.count(packed(Theme::color(Color::Letters))));
}

TEST_F(ViewLettersTest, YellowAndRedAreDarkerThere) {
    const Colors colors = colorsOf(Scheme::Light, [] {
        drawText({1.0f, 0.8f, 0.0f, 1.0f});
        drawText({1.0f, 0.0f, 0.0f, 1.0f});
    });
    EXPECT_FALSE(colors.count(IM_COL32(255, 204, 0, 255)));
    EXPECT_FALSE(colors.count(IM_COL32(255, 0, 0, 255)));
    EXPECT_TRUE(colors.count(packed(Theme::color(Color::Caution))));
    EXPECT_TRUE(colors.count(packed(Theme::color(Color::Bad))));
}

/* For letters on a dark shape that a view draws itself */
TEST_F(ViewLettersTest, AColourOneStepBesideStays) {
    for(const ImU32 color: {IM_COL32(254, 254, 254, 255), IM_COL32(254, 204, 0, 255), IM_COL32(254, 0, 0, 255)}) {
        const Colors colors = colorsOf(Scheme::Light, [&] { drawText(ImGui::ColorConvertU32ToFloat4(color)); });
        EXPECT_TRUE(colors.count(color)) << std::hex << color;
        for(const Color other: {Color::ViewWhite, Color::ViewYellow, Color::ViewRed})
            EXPECT_FALSE(colors.count(packed(Theme::color(other)))) << std::hex << color;
    }
}

TEST_F(ViewLettersTest, WhereTheGroundIsDarkEverythingStays) {
    const Colors colors = colorsOf(Scheme::Dark, [] { drawText(White); });
    EXPECT_TRUE(colors.count(IM_COL32_WHITE));
}

TEST_F(ViewLettersTest, WhatIsHalfTransparentStaysSo) {
    const Colors colors = colorsOf(Scheme::Light, [] { drawText({1.0f, 1.0f, 1.0f, 0.5f}); });
    const ImVec4& letters = Theme::color(Color::Letters);
    EXPECT_TRUE(colors.count(packed({letters.x, letters.y, letters.z, 0.5f})));
}

/* It is white on the dark blue of the box */
TEST_F(ViewLettersTest, TheMarkOfACheckBoxStaysWhite) {
    bool isChecked = true;
    EXPECT_TRUE(colorsOf(Scheme::Light, [&] { Ui::checkbox("##box", &isChecked); }).count(IM_COL32_WHITE));
}

TEST_F(ViewLettersTest, LinesOfAnyWidthStayWhite) {
    for(float width: {1.0f, 1.5f, 2.0f, 7.0f, 31.0f, 63.0f, 100.0f}) {
        const Colors colors = colorsOf(Scheme::Light, [&] {
            const ImVec2 at = ImGui::GetCursorScreenPos();
            ImGui::GetWindowDrawList()->AddLine(at, {at.x + 90.0f, at.y + 50.0f}, IM_COL32_WHITE, width);
        });
        EXPECT_TRUE(colors.count(IM_COL32_WHITE)) << width;
        EXPECT_FALSE(colors.count(packed(Theme::color(Color::Letters)))) << width;
    }
}

TEST_F(ViewLettersTest, APictureKeepsItsTint) {
    int texture = 0;
    const Colors colors = colorsOf(Scheme::Light, [&] {
        ImGui::Image(ImTextureRef{reinterpret_cast<ImTextureID>(&texture)}, {32.0f, 32.0f});
    });
    EXPECT_TRUE(colors.count(IM_COL32_WHITE));
    EXPECT_FALSE(colors.count(packed(Theme::color(Color::Letters))));
}

}
}
