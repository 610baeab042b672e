#include "app/Theme.h"

#include <algorithm>
#include <cmath>
#include <string>

#include <gtest/gtest.h>
#include <imgui.h>

namespace QuorvaneEngine {
namespace {

using Theme::Color;
using Theme::Scheme;

/** In both schemes. */
class ThemeTest: public testing::TestWithParam<Scheme> {
protected:
    ThemeTest() { ImGui::CreateContext(); }
    ~ThemeTest() override {
        Theme::apply(1.0f);
        ImGui::DestroyContext();
    }

    static void expectColor(ImGuiCol slot, float red, float green, float blue) {
        const ImVec4& color = ImGui::GetStyle().Colors[slot];
        EXPECT_EQ(color.x, red) << ImGui::GetStyleColorName(slot);
        EXPECT_EQ(color.y, green) << ImGui::GetStyleColorName(slot);
        EXPECT_EQ(color.z, blue) << ImGui::GetStyleColorName(slot);
    }

    /** Relative luminance by WCAG 2.1. */
    static float luminance(const ImVec4& color) {
        const auto linear = [](float value) {
            return value <= 0.03928f ? value / 12.92f : std::pow((value + 0.055f) / 1.055f, 2.4f);
        };
        return 0.2126f * linear(color.x) + 0.7152f * linear(color.y) + 0.0722f * linear(color.z);
    }

    static float contrast(const ImVec4& text, const ImVec4& background) {
        const float a = luminance(text);
        const float b = luminance(background);
        return (std::max(a, b) + 0.05f) / (std::min(a, b) + 0.05f);
    }

    static float contrast(ImGuiCol text, ImGuiCol background) {
        return contrast(ImGui::GetStyle().Colors[text], ImGui::GetStyle().Colors[background]);
    }

    static ImVec4 over(const ImVec4& front, const ImVec4& back) {
        const auto mixed = [&](float a, float b) { return a * front.w + b * (1.0f - front.w); };
        return {mixed(front.x, back.x), mixed(front.y, back.y), mixed(front.z, back.z), 1.0f};
    }
};

INSTANTIATE_TEST_SUITE_P(
    Schemes, ThemeTest, testing::Values(Scheme::Dark, Scheme::Light), [](const testing::TestParamInfo<Scheme>& scheme) {
        return std::string{scheme.param == Scheme::Dark ? "Dark" : "Light"};
    });

using DarkThemeTest = ThemeTest;
INSTANTIATE_TEST_SUITE_P(
    Schemes, DarkThemeTest, testing::Values(Scheme::Dark), [](const auto&) { return std::string{"Dark"}; });

TEST_P(DarkThemeTest, WhatIsChosenHasTheBlueOfTheCheckBoxes) {
    Theme::apply(1.0f);
    expectColor(ImGuiCol_Header, 0.125f, 0.23f, 0.35f);
    expectColor(ImGuiCol_TabSelected, 0.125f, 0.23f, 0.35f);
    expectColor(ImGuiCol_CheckboxSelectedBg, 0.125f, 0.23f, 0.35f);
    expectColor(ImGuiCol_CheckMark, 1.0f, 1.0f, 1.0f);
}

TEST_P(ThemeTest, WhatMarksTheChosenHasTheBlueOfACheckBoxUnderTheMouse) {
    Theme::apply(1.0f, GetParam());
    expectColor(ImGuiCol_TabSelectedOverline, 0.25f, 0.46f, 0.70f);
}

TEST_P(ThemeTest, ItIsTheSchemeThatWasAppliedLast) {
    Theme::apply(1.0f, GetParam());
    EXPECT_EQ(Theme::scheme(), GetParam());
    const ImVec4& surface = Theme::color(Color::Surface);
    EXPECT_EQ(&surface, &Theme::color(Color::Surface, GetParam()));
    expectColor(ImGuiCol_WindowBg, surface.x, surface.y, surface.z);
}

TEST_P(ThemeTest, TheLibraryKeepsNoColourOfItsOwn) {
    constexpr ImVec4 Strange{0.123f, 0.456f, 0.789f, 0.321f};
    for(ImVec4& color: ImGui::GetStyle().Colors) color = Strange;
    Theme::apply(1.0f, GetParam());
    for(int slot = 0; slot != ImGuiCol_COUNT; ++slot)
        EXPECT_NE(ImGui::GetStyle().Colors[slot].w, Strange.w) << ImGui::GetStyleColorName(slot);
}

/* 4.5 is what WCAG 2.1 asks of text */
TEST_P(ThemeTest, AllThatIsWrittenStandsOutFromWhatItLiesOn) {
    for(Color letters: {Color::Letters, Color::PaleLetters, Color::Link, Color::Good, Color::Caution, Color::Bad,
            Color::ViewWhite, Color::ViewYellow})
        for(Color background: {Color::Ground, Color::Surface, Color::Raised, Color::Field, Color::FieldHovered,
                Color::Button, Color::Chosen, Color::RowHovered, Color::RowPressed})
            EXPECT_GE(contrast(Theme::color(letters, GetParam()), Theme::color(background, GetParam())), 4.5f)
                << int(letters) << " on " << int(background);
}

TEST_P(ThemeTest, EveryColourCanBeReadOnRowsAsTheLibraryDrawsThem) {
    Theme::apply(1.0f, GetParam());
    for(ImGuiCol row: {ImGuiCol_Header, ImGuiCol_HeaderHovered, ImGuiCol_HeaderActive})
        for(Color letters: {Color::Letters, Color::PaleLetters, Color::Link, Color::Good, Color::Caution, Color::Bad})
            EXPECT_GE(contrast(Theme::color(letters, GetParam()), ImGui::GetStyle().Colors[row]), 4.5f)
                << int(letters) << " on " << ImGui::GetStyleColorName(row);
    for(Color letters: {Color::Letters, Color::PaleLetters, Color::Link, Color::Good, Color::Caution, Color::Bad}) {
        const ImVec4 odd = over(ImGui::GetStyle().Colors[ImGuiCol_TableRowBgAlt], Theme::color(Color::Surface));
        EXPECT_GE(contrast(Theme::color(letters, GetParam()), odd), 4.5f) << int(letters);
    }
}

/* The red of views is theirs where the ground is dark, and marks a large icon there. */
TEST_P(ThemeTest, TheRedOfViewsIsReadableOnLightGroundsAndALargeMarkOnDarkOnes) {
    const float least = GetParam() == Scheme::Light ? 4.5f : 3.0f;
    for(Color background: {Color::Ground, Color::Surface, Color::Raised, Color::Field})
        EXPECT_GE(contrast(Theme::color(Color::ViewRed, GetParam()), Theme::color(background, GetParam())), least)
            << int(background);
}

TEST_P(ThemeTest, ARowUnderTheMouseDiffersFromOthersAndFromTheChosenOne) {
    const ImVec4& hovered = Theme::color(Color::RowHovered, GetParam());
    for(Color other: {Color::Surface, Color::Raised, Color::Chosen, Color::RowPressed}) {
        const ImVec4& color = Theme::color(other, GetParam());
        const float distance =
            std::abs(hovered.x - color.x) + std::abs(hovered.y - color.y) + std::abs(hovered.z - color.z);
        EXPECT_GE(distance, 0.05f) << int(other);
    }
}

TEST_P(ThemeTest, TextStandsOutFromWhatIsChosenUnderTheMouseOrPressed) {
    Theme::apply(1.0f, GetParam());
    for(ImGuiCol background: {ImGuiCol_WindowBg, ImGuiCol_PopupBg, ImGuiCol_FrameBg, ImGuiCol_FrameBgHovered,
            ImGuiCol_FrameBgActive, ImGuiCol_Button, ImGuiCol_ButtonHovered, ImGuiCol_ButtonActive, ImGuiCol_Header,
            ImGuiCol_HeaderHovered, ImGuiCol_HeaderActive, ImGuiCol_TabSelected, ImGuiCol_TabHovered,
            ImGuiCol_TabDimmedSelected, ImGuiCol_MenuBarBg, ImGuiCol_TableHeaderBg, ImGuiCol_TitleBg,
            ImGuiCol_TitleBgActive, ImGuiCol_DockingEmptyBg})
        EXPECT_GE(contrast(ImGuiCol_Text, background), 4.5f) << ImGui::GetStyleColorName(background);
    const ImVec4 selected = over(Theme::color(Color::Selection), Theme::color(Color::Field));
    EXPECT_GE(contrast(Theme::color(Color::Letters), selected), 4.5f);
    EXPECT_GE(contrast(ImGuiCol_CheckMark, ImGuiCol_CheckboxSelectedBg), 4.5f);
}

TEST_P(ThemeTest, TheButtonThatStandsOutCanBeRead) {
    for(Color background: {Color::Primary, Color::PrimaryHovered, Color::PrimaryPressed})
        EXPECT_GE(contrast(Theme::color(Color::PrimaryLetters, GetParam()), Theme::color(background, GetParam())), 4.5f)
            << int(background);
}

/* What a view draws in a dark frame of its own is left alone by this. */
TEST_P(DarkThemeTest, TheColoursOfViewsAreTheirOwnWhereTheGroundIsDark) {
    const ImVec4& white = Theme::color(Color::ViewWhite, Scheme::Dark);
    EXPECT_EQ(white.x + white.y + white.z + white.w, 4.0f);
}

TEST_P(ThemeTest, DistancesAndFontsFollowTheScale) {
    Theme::apply(1.0f, GetParam());
    const ImVec2 padding = ImGui::GetStyle().WindowPadding;
    EXPECT_EQ(ImGui::GetStyle().FontScaleDpi, 1.0f);
    Theme::apply(2.0f, GetParam());
    EXPECT_EQ(ImGui::GetStyle().WindowPadding.x, padding.x * 2.0f);
    EXPECT_EQ(ImGui::GetStyle().FontScaleDpi, 2.0f);
}

TEST_P(ThemeTest, ApplyingItAgainChangesNothing) {
    ImGui::GetStyle().FontSizeBase = 20.0f;
    Theme::apply(1.5f, GetParam());
    const float rounding = ImGui::GetStyle().FrameRounding;
    Theme::apply(1.5f, GetParam());
    EXPECT_EQ(ImGui::GetStyle().FrameRounding, rounding);
    EXPECT_EQ(ImGui::GetStyle().FontSizeBase, 20.0f);
}

}
}
