#include "app/PathField.h"

#include <cstdlib>
#include <string>

#include <gtest/gtest.h>

#include "support/GuiTest.h"

namespace QuorvaneEngine {
namespace {

Containers::String pathOf(const char* const typed) {
    PathField field{"Folder"};
    EXPECT_EQ(field.set(typed), "");
    EXPECT_EQ(field.text(), typed);
    return field.path();
}

TEST(PathField, ATildeInFrontIsTheHomeFolder) {
    setenv("HOME", "/home/somebody", 1);
    EXPECT_EQ(pathOf("~"), "/home/somebody");
    EXPECT_EQ(pathOf("~/"), "/home/somebody");
    EXPECT_EQ(pathOf("~/games/one/"), "/home/somebody/games/one");
    EXPECT_EQ(pathOf("/games/~"), "/games/~");
    EXPECT_EQ(pathOf("~other/games"), "~other/games");
    unsetenv("HOME");
    EXPECT_EQ(pathOf("~/games"), "~/games");
}

TEST(PathField, SlashesAtTheEndDoNotCountButThatOfTheRoot) {
    EXPECT_EQ(pathOf("/a///"), "/a");
    EXPECT_EQ(pathOf("///"), "/");
    EXPECT_EQ(pathOf(""), "");
}

TEST(PathField, ATextThatIsTooLongIsRefusedAndChangesNothing) {
    PathField field{"Folder"};
    EXPECT_EQ(field.set(std::string(4095, 'a').c_str()), "");
    const std::string tooLong(4096, 'b');
    EXPECT_EQ(field.set(tooLong.c_str()), (std::string(100, 'b') + ": is too long a path").c_str());
    EXPECT_EQ(field.text(), std::string(4095, 'a').c_str());
}

TEST(PathField, WhatIsTypedTakesThePlaceOfTheProposal) {
    QuorvaneEngine::Test::GuiTest gui;
    PathField field{"Folder"};
    PathField::Key key = PathField::Key::None;
    field.set("/proposed");
    field.takeFocus();
    const auto draw = [&] {
        ImGui::Begin("Window");
        if(const PathField::Key pressed = field.draw(200.0f); pressed != PathField::Key::None) key = pressed;
        ImGui::End();
    };
    EXPECT_TRUE(gui.run("type", draw, [&](ImGuiTestContext& user) {
        user.Yield(2);
        user.KeyChars("/typed");
        user.KeyPress(ImGuiKey_Enter);
        IM_CHECK(key == PathField::Key::Enter);
        IM_CHECK(field.text() == "/typed");
        field.takeFocus();
        user.Yield(4);
        user.KeyPress(ImGuiKey_Escape);
        IM_CHECK(key == PathField::Key::Escape);
    }));
}

}
}
