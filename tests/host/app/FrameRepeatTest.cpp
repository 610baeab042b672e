#include "app/FrameRepeat.h"

#include <gtest/gtest.h>
#include <imgui.h>

namespace QuorvaneEngine {
namespace {

/** A GUI whose textures are as a renderer leaves them. */
class FrameRepeatTest: public testing::Test {
protected:
    FrameRepeatTest() {
        ImGui::CreateContext();
        ImGuiIO& io = ImGui::GetIO();
        io.IniFilename = nullptr;
        io.BackendFlags |= ImGuiBackendFlags_RendererHasTextures;
        io.DisplaySize = {640.0f, 480.0f};
        frame([] {});
    }
    ~FrameRepeatTest() override {
        completeTextures();
        ImGui::DestroyContext();
    }

    static void completeTextures() {
        for(ImTextureData* const texture: ImGui::GetPlatformIO().Textures) {
            texture->SetTexID(1);
            texture->SetStatus(ImTextureStatus_OK);
        }
    }

    template <class Gui> static ImDrawData& frame(Gui&& gui, const bool isComplete = true) {
        ImGui::NewFrame();
        ImGui::GetForegroundDrawList()->AddText({10.0f, 10.0f}, IM_COL32_WHITE, "a");
        gui();
        ImGui::Render();
        if(isComplete) completeTextures();
        return *ImGui::GetDrawData();
    }

    template <class Gui> bool isRepeated(Gui&& gui) { return repeat.isRepeated(frame(gui)); }

    FrameRepeat repeat;
};

TEST_F(FrameRepeatTest, TheFirstFrameRepeatsNoneAndItsLikeAllRepeatIt) {
    EXPECT_FALSE(isRepeated([] {}));
    EXPECT_TRUE(isRepeated([] {}));
    EXPECT_TRUE(isRepeated([] {}));
}

TEST_F(FrameRepeatTest, AnotherTextPlaceColorOrSizeIsNoRepetition) {
    float x = 50.0f;
    ImU32 color = IM_COL32_WHITE;
    const char* text = "text";
    const auto draw = [&] { ImGui::GetForegroundDrawList()->AddText({x, 50.0f}, color, text); };
    EXPECT_FALSE(isRepeated(draw));
    EXPECT_TRUE(isRepeated(draw));
    text = "test";
    EXPECT_FALSE(isRepeated(draw));
    EXPECT_TRUE(isRepeated(draw));
    x += 1.0f;
    EXPECT_FALSE(isRepeated(draw));
    EXPECT_TRUE(isRepeated(draw));
    color ^= IM_COL32(1, 0, 0, 0);
    EXPECT_FALSE(isRepeated(draw));
    EXPECT_TRUE(isRepeated(draw));
    ImGui::GetIO().DisplaySize.x += 1.0f;
    EXPECT_FALSE(isRepeated(draw));
    EXPECT_TRUE(isRepeated(draw));
}

TEST_F(FrameRepeatTest, WhatIsClippedOtherwiseIsNoRepetition) {
    float right = 100.0f;
    const auto draw = [&] {
        ImDrawList& list = *ImGui::GetForegroundDrawList();
        list.PushClipRect({0.0f, 0.0f}, {right, 100.0f});
        list.AddRectFilled({0.0f, 0.0f}, {300.0f, 300.0f}, IM_COL32_WHITE);
        list.PopClipRect();
    };
    EXPECT_FALSE(isRepeated(draw));
    EXPECT_TRUE(isRepeated(draw));
    right = 101.0f;
    EXPECT_FALSE(isRepeated(draw));
}

TEST_F(FrameRepeatTest, ATextureOfAViewIsDrawnAnewEachTime) {
    const auto draw = [] { ImGui::GetForegroundDrawList()->AddImage(ImTextureID{7}, {0.0f, 0.0f}, {9.0f, 9.0f}); };
    EXPECT_FALSE(isRepeated(draw));
    EXPECT_FALSE(isRepeated(draw));
    EXPECT_FALSE(isRepeated([] {}));
    EXPECT_TRUE(isRepeated([] {}));
}

TEST_F(FrameRepeatTest, ACallOfAViewIsMadeEachTime) {
    const auto draw = [] {
        ImGui::GetForegroundDrawList()->AddCallback([](const ImDrawList*, const ImDrawCmd*) {}, nullptr);
    };
    EXPECT_FALSE(isRepeated(draw));
    EXPECT_FALSE(isRepeated(draw));
}

TEST_F(FrameRepeatTest, LettersThatAreNotOnTheGraphicsCardYetAreDrawnWhenTheyAre) {
    const auto draw = [] { ImGui::GetForegroundDrawList()->AddText({50.0f, 50.0f}, IM_COL32_WHITE, "Z?"); };
    const auto incomplete = [&] { return repeat.isRepeated(frame(draw, false)); };
    EXPECT_FALSE(incomplete());
    EXPECT_FALSE(incomplete());
    EXPECT_FALSE(isRepeated(draw));
    EXPECT_TRUE(isRepeated(draw));
}

}
}
