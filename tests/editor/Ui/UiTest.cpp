#include "Ui/Ui.h"

#include <ostream>
#include <string>

#include <gtest/gtest.h>
#include <imgui.h>

#include "ChangeManager.h"
#include "QuorvaneEditor/EditorData.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "support/GuiTest.h"

namespace QuorvaneEngine {
namespace {

using Test::GuiTest;

TEST(Ui, AFreshOneHasNoScopeAndNoFlags) {
    const Ui ui;
    EXPECT_TRUE(ui.scopePath().isEmpty());
    EXPECT_TRUE(ui.flagStack.empty());
    EXPECT_EQ(ui.flags, Ui::Flags{});
    EXPECT_EQ(ui.project, nullptr);
    EXPECT_EQ(ui.changes, nullptr);
    EXPECT_EQ(ui.editorData, nullptr);
    for(const char byte: ui.path) EXPECT_EQ(byte, '\0');
    EXPECT_TRUE(ui.editBuffer.isEmpty());
    EXPECT_TRUE(ui.pendingText.isEmpty());
    EXPECT_EQ(ui.pendingItem, 0u);
    EXPECT_EQ(ui.renamingItem, 0u);
}

TEST(Ui, IsBoundToProjectChangesAndData) {
    ProjectFile project;
    ChangeManager changes{project};
    EditorData data{project};
    const Ui ui{&project, &changes, &data};
    EXPECT_EQ(ui.project, &project);
    EXPECT_EQ(ui.changes, &changes);
    EXPECT_EQ(ui.editorData, &data);
}

TEST(Ui, FlagsAreCumulative) {
    Ui ui;
    ui.pushFlags(Ui::Flag::NoLabel);
    EXPECT_EQ(ui.flags, Ui::Flags{Ui::Flag::NoLabel});
    ui.pushFlags({});
    EXPECT_EQ(ui.flags, Ui::Flags{Ui::Flag::NoLabel});
    ui.popFlags();
    EXPECT_EQ(ui.flags, Ui::Flags{Ui::Flag::NoLabel});
    ui.popFlags();
    EXPECT_EQ(ui.flags, Ui::Flags{});
    EXPECT_TRUE(ui.flagStack.empty());
}

TEST(Ui, FlagsOfBitsThatNobodyReadsAreKept) {
    Ui ui;
    ui.pushFlags(Ui::Flag(1u << 31));
    ui.pushFlags(Ui::Flag::NoLabel);
    EXPECT_EQ(UnsignedInt(ui.flags), (1u << 31) | 1u);
    ui.popFlags();
    EXPECT_EQ(UnsignedInt(ui.flags), 1u << 31);
}

struct KeyCase {
    const char* name;
    bool behavesLikeMacOs;
    ImGuiKey key;
    bool isShortcut;
    bool isPath;
};

void PrintTo(const KeyCase& given, std::ostream* stream) { *stream << given.name; }

class UiKeys: public testing::TestWithParam<KeyCase> {};

/** The events are those of the keyboard: on macOS the library swaps Cmd and Ctrl itself. */
TEST_P(UiKeys, FollowThePhysicalKey) {
    GuiTest gui;
    ImGuiIO& io = ImGui::GetIO();
    io.ConfigMacOSXBehaviors = GetParam().behavesLikeMacOs;
    io.AddKeyEvent(GetParam().key, true);
    bool shortcut = false;
    bool path = false;
    gui.frames([&] {
        shortcut = Ui::shortcutKeyPressed();
        path = Ui::pathKeyPressed();
    });
    EXPECT_EQ(shortcut, GetParam().isShortcut);
    EXPECT_EQ(path, GetParam().isPath);
    io.AddKeyEvent(GetParam().key, false);
    gui.frames([&] {
        shortcut = Ui::shortcutKeyPressed();
        path = Ui::pathKeyPressed();
    });
    EXPECT_FALSE(shortcut);
    EXPECT_FALSE(path);
}

constexpr KeyCase KeyCases[]{
    {"Super", false, ImGuiMod_Super, true, false},
    {"Ctrl", false, ImGuiMod_Ctrl, false, true},
    {"Shift", false, ImGuiMod_Shift, false, false},
    {"CmdOnMacOs", true, ImGuiMod_Super, true, false},
    {"CtrlOnMacOs", true, ImGuiMod_Ctrl, false, true},
    {"AltOnMacOs", true, ImGuiMod_Alt, false, false},
};

INSTANTIATE_TEST_SUITE_P(
    Keys, UiKeys, testing::ValuesIn(KeyCases), [](const auto& info) { return std::string{info.param.name}; });

}
}
