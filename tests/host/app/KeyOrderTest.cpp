#include "app/KeyOrder.h"

#include <string>

#include <gtest/gtest.h>

namespace QuorvaneEngine {
namespace {

/** A GUI that nobody sees, whose frames take all that has come since the last one. */
class KeyOrderTest: public testing::Test {
protected:
    KeyOrderTest() {
        ImGuiIO& io = ImGui::GetIO();
        io.IniFilename = nullptr;
        io.DisplaySize = {640.0f, 480.0f};
        io.BackendFlags |= ImGuiBackendFlags_RendererHasTextures;
        frame();
        frame();
    }

    ~KeyOrderTest() override { ImGui::DestroyContext(context); }

    static void key(ImGuiKey key, bool down) { ImGui::GetIO().AddKeyEvent(key, down); }

    /** What was pressed in one frame, each followed by a blank. */
    static std::string frame() {
        {
            const KeyOrder order;
            ImGui::NewFrame();
        }
        std::string pressed;
        if(ImGui::Shortcut(ImGuiMod_Ctrl | ImGuiKey_S, ImGuiInputFlags_RouteGlobal)) pressed += "Ctrl+S ";
        if(ImGui::Shortcut(ImGuiKey_S, ImGuiInputFlags_RouteGlobal)) pressed += "S ";
        ImGui::EndFrame();
        return pressed;
    }

    ImGuiContext* context = ImGui::CreateContext();
};

TEST_F(KeyOrderTest, AKeyWhoseModifierEndsInTheSameFrameHasIt) {
    key(ImGuiMod_Ctrl, true);
    key(ImGuiKey_LeftCtrl, true);
    EXPECT_EQ(frame(), "");
    key(ImGuiKey_S, true);
    key(ImGuiMod_Ctrl, false);
    key(ImGuiKey_LeftCtrl, false);
    key(ImGuiKey_S, false);
    EXPECT_EQ(frame(), "Ctrl+S ");
    EXPECT_TRUE(ImGui::IsKeyDown(ImGuiMod_Ctrl));
    EXPECT_EQ(frame(), "");
    EXPECT_FALSE(ImGui::IsKeyDown(ImGuiMod_Ctrl));
    EXPECT_FALSE(ImGui::IsKeyDown(ImGuiKey_LeftCtrl));
    frame();
    EXPECT_FALSE(ImGui::IsKeyDown(ImGuiKey_S));
}

TEST_F(KeyOrderTest, AModifierThatComesAfterAKeyDoesNotBelongToIt) {
    key(ImGuiKey_S, true);
    key(ImGuiMod_Ctrl, true);
    EXPECT_EQ(frame(), "S ");
    EXPECT_EQ(frame(), "");
    EXPECT_TRUE(ImGui::IsKeyDown(ImGuiMod_Ctrl));
}

TEST_F(KeyOrderTest, WhatComesLaterKeepsItsOrder) {
    key(ImGuiMod_Ctrl, true);
    EXPECT_EQ(frame(), "");
    key(ImGuiKey_S, true);
    key(ImGuiMod_Ctrl, false);
    key(ImGuiKey_S, false);
    EXPECT_EQ(frame(), "Ctrl+S ");
    key(ImGuiKey_S, true);
    EXPECT_EQ(frame() + frame() + frame(), "S ");
    EXPECT_TRUE(ImGui::IsKeyDown(ImGuiKey_S));
    EXPECT_FALSE(ImGui::IsKeyDown(ImGuiMod_Ctrl));
}

}
}
