#include "app/Theme.h"

#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>
#include <imgui.h>

namespace QuorvaneEngine {
namespace {

class ThemeTest: public testing::Test {
protected:
    ThemeTest() { ImGui::CreateContext(); }
    ~ThemeTest() override { ImGui::DestroyContext(); }

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

    static float contrast(ImGuiCol text, ImGuiCol background) {
        const float a = luminance(ImGui::GetStyle().Colors[text]);
        const float b = luminance(ImGui::GetStyle().Colors[background]);
        return (std::max(a, b) + 0.05f) / (std::min(a, b) + 0.05f);
    }
};

TEST_F(ThemeTest, WhatIsChosenHasTheBlueOfTheCheckBoxes) {
    Theme::apply(1.0f);
    expectColor(ImGuiCol_Header, 0.125f, 0.23f, 0.35f);
    expectColor(ImGuiCol_TabSelected, 0.125f, 0.23f, 0.35f);
    expectColor(ImGuiCol_TabSelectedOverline, 0.25f, 0.46f, 0.70f);
    expectColor(ImGuiCol_CheckMark, 1.0f, 1.0f, 1.0f);
}

/* 4.5 is what WCAG 2.1 asks of text, 3 of what is not available */
TEST_F(ThemeTest, TextStandsOutFromEverythingThatItIsDrawnOn) {
    Theme::apply(1.0f);
    for(ImGuiCol background: {ImGuiCol_WindowBg, ImGuiCol_PopupBg, ImGuiCol_FrameBg, ImGuiCol_FrameBgHovered,
            ImGuiCol_Button, ImGuiCol_ButtonHovered, ImGuiCol_ButtonActive, ImGuiCol_Header, ImGuiCol_HeaderHovered,
            ImGuiCol_HeaderActive, ImGuiCol_TabSelected, ImGuiCol_TabHovered, ImGuiCol_MenuBarBg,
            ImGuiCol_TableHeaderBg, ImGuiCol_TitleBgActive})
        EXPECT_GE(contrast(ImGuiCol_Text, background), 4.5f) << ImGui::GetStyleColorName(background);
    for(ImGuiCol background: {ImGuiCol_WindowBg, ImGuiCol_PopupBg, ImGuiCol_FrameBg, ImGuiCol_MenuBarBg})
        EXPECT_GE(contrast(ImGuiCol_TextDisabled, background), 3.0f) << ImGui::GetStyleColorName(background);
}

TEST_F(ThemeTest, DistancesAndFontsFollowTheScale) {
    Theme::apply(1.0f);
    const ImVec2 padding = ImGui::GetStyle().WindowPadding;
    EXPECT_EQ(ImGui::GetStyle().FontScaleDpi, 1.0f);
    Theme::apply(2.0f);
    EXPECT_EQ(ImGui::GetStyle().WindowPadding.x, padding.x * 2.0f);
    EXPECT_EQ(ImGui::GetStyle().FontScaleDpi, 2.0f);
}

TEST_F(ThemeTest, ApplyingItAgainChangesNothing) {
    Theme::apply(1.5f);
    const float rounding = ImGui::GetStyle().FrameRounding;
    Theme::apply(1.5f);
    EXPECT_EQ(ImGui::GetStyle().FrameRounding, rounding);
}

}
}
