#include <string>

#include <gtest/gtest.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "TextUi.h"
#include "Ui/Scope.h"

namespace QuorvaneEngine {
namespace {

using Test::GuiTest;
using Test::toText;
using Test::UiTextInput;

class UiTextMultiline: public UiTextInput {
protected:
    bool use(bool returnOnCommit, const GuiTest::Script& script) {
        return run([=, this] { changed += ui.inputTextMultiline("a/name", false, returnOnCommit); }, script);
    }
};

TEST_F(UiTextMultiline, LinesAreTypedAndRecordedWhenTheFieldIsLeft) {
    EXPECT_TRUE(use(false, [this](ImGuiTestContext& user) {
        user.ItemClick(Name);
        user.KeyCharsReplace("a");
        user.KeyPress(ImGuiKey_Enter);
        user.KeyChars("b");
        user.Yield(2);
        IM_CHECK_EQ(recorded(), 0);
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Enter);
        user.Yield(2);
    }));
    EXPECT_EQ(value("/a/name"), R"("a\nb")");
    EXPECT_EQ(recorded(), 1);
    EXPECT_GE(changed, 3);
    expectUndoAndRedo();
}

TEST_F(UiTextMultiline, ItReturnsTheCommitWhereThatIsAskedFor) {
    EXPECT_TRUE(use(true, [this](ImGuiTestContext& user) {
        user.ItemClick(Name);
        user.KeyCharsAppend("abc");
        user.Yield(3);
        IM_CHECK_EQ(changed, 0);
        user.MouseMoveToVoid();
        user.MouseClick();
        user.Yield(3);
        IM_CHECK_EQ(changed, 1);
        // Without an edit there is no commit.
        user.ItemClick(Name);
        user.MouseMoveToVoid();
        user.MouseClick();
        user.Yield(3);
        IM_CHECK_EQ(changed, 1);
        user.ItemClick(Name);
        user.KeyCharsAppend("x");
        user.KeyPress(ImGuiKey_Escape);
        user.Yield(3);
    }));
    EXPECT_EQ(changed, 1);
    EXPECT_EQ(value("/a/name"), "\"oldabc\"");
    EXPECT_EQ(recorded(), 1);
}

TEST_F(UiTextMultiline, ItFillsTheRegion) {
    frames([this] {
        const ImVec2 region = ImGui::GetContentRegionAvail();
        ui.pushFlags(Ui::Flag::NoLabel);
        ui.inputTextMultiline("a/name", false, false);
        ui.popFlags();
        EXPECT_EQ(ImGui::GetItemRectSize().x, region.x);
        EXPECT_EQ(ImGui::GetItemRectSize().y, region.y);
    });
    frames([this] {
        const ImVec2 region = ImGui::GetContentRegionAvail();
        const float start = ImGui::GetCursorScreenPos().x;
        ui.inputTextMultiline("a/name", false, false);
        EXPECT_FLOAT_EQ(ImGui::GetItemRectMin().x, ImGui::GetWindowPos().x + 0.33f * region.x);
        EXPECT_FLOAT_EQ(ImGui::GetItemRectMax().x, start + region.x);
        EXPECT_EQ(ImGui::GetItemRectSize().y, region.y);
    });
}

TEST_F(UiTextMultiline, AnAbsoluteNameIsThePathOfTheValue) {
    EXPECT_TRUE(run(
        [this] {
            const Scope scope{&ui, "some/where"};
            ui.inputTextMultiline("/a/other", true, false);
        },
        [this](ImGuiTestContext& user) {
            constexpr char item[] = "//Window/some/where/a/other/##val";
            user.ItemClick(item);
            user.KeyCharsReplace("new");
            user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Enter);
            user.Yield(2);
            IM_CHECK_STR_EQ(value("/a/other").c_str(), "\"new\"");
            // So it is for the menu.
            user.ItemClick(item, ImGuiMouseButton_Right);
            user.ItemClick("//$FOCUSED/\xef\x83\x85 Copy");
            user.Yield();
            IM_CHECK_STR_EQ(ImGui::GetClipboardText(), "\"new\"");
        }));
    EXPECT_EQ(recorded(), 1);
    expectUndoAndRedo();
}

TEST_F(UiTextMultiline, ScrollingByTheBarKeepsWhatIsTyped) {
    std::string lines;
    for(int i = 0; i != 200; ++i) lines += "line\\n";
    loadProject("{\"a\":{\"name\":\"" + lines + "\"},\"first\":false}");
    EXPECT_TRUE(use(false, [](ImGuiTestContext& user) {
        user.ItemClick(Name);
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Home);
        user.KeyChars("top ");
        user.Yield(2);
        ImGuiWindow* lines = nullptr;
        const ImGuiWindow* const parent = user.GetWindowByRef("//Window");
        for(ImGuiWindow* const window: ImGui::GetCurrentContext()->Windows)
            if(window->ParentWindow == parent && window->ScrollbarY) lines = window;
        IM_CHECK(lines != nullptr);
        const ImVec2 bar = ImGui::GetWindowScrollbarRect(lines, ImGuiAxis_Y).GetCenter();
        user.MouseMoveToPos(bar);
        user.MouseClick();
        user.Yield(3);
        IM_CHECK_GT(lines->Scroll.y, 0.0f);
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_End);
        user.KeyChars("bottom");
        user.Yield(2);
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Enter);
        user.Yield(2);
    }));
    EXPECT_EQ(value("/a/name"), "\"top " + lines + "bottom\"");
    EXPECT_EQ(recorded(), 1);
    expectUndoAndRedo();
}

TEST_F(UiTextMultiline, WhatIsNoTextIsEmpty) {
    loadProject(Wrong);
    for(const char* name: WrongNames) {
        frames([&] { EXPECT_FALSE(ui.inputTextMultiline(name, false, false)); });
        EXPECT_STREQ(ui.editBuffer.data(), "");
    }
    EXPECT_EQ(toText(project), loaded);
}

TEST_F(UiTextMultiline, AnIdleFrameAllocatesNothing) {
    const auto widgets = [this] { ui.inputTextMultiline("a/name", false, false); };
    EXPECT_EQ(idleAllocations(widgets), 0u);
}

}
}
