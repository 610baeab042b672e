#include <algorithm>
#include <cstdint>
#include <string>

#include <gtest/gtest.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "BoundUi.h"
#include "Ui/Scope.h"
#include "support/Allocations.h"

namespace QuorvaneEngine {
namespace {

using Test::Allocations;
using Test::GuiTest;
using Test::toText;

constexpr char Wrong[] = R"({"null":null,"number":2.5,"true":true,"object":{},"list":["a"],"first":false})";
constexpr const char* WrongNames[]{"null", "number", "true", "object", "list", "missing"};

class UiRenameable: public Test::BoundUi {
protected:
    UiRenameable() { loadProject(R"({"a":{"name":"old name","other":"another name"},"first":false})"); }

    /** Draws a text that can be renamed, another one, and some space. */
    bool use(const GuiTest::Script& script) {
        return run(
            [this] {
                place = ImGui::GetCursorScreenPos();
                const bool isRenaming = ui.renamingItem;
                renamed += ui.renameable("a/name", false);
                if(isRenaming && !ui.renamingItem) activeAtEnd = ImGui::GetActiveID();
                ImGui::Dummy({0.0f, 50.0f});
                otherPlace = ImGui::GetCursorScreenPos();
                ui.renameable("a/other", false);
                ImGui::Dummy({0.0f, 50.0f});
                ImGui::Button("button");
            },
            script);
    }

    void doubleClick(ImGuiTestContext& user, const ImVec2& where) {
        user.MouseMoveToPos({where.x + 5.0f, where.y + 5.0f});
        user.MouseDoubleClick();
        user.Yield(3);
    }

    static constexpr char Input[] = "//Window/a/name/##renameable";

    ImVec2 place, otherPlace;
    int renamed = 0;

    /** What is active behind the text in the frame in which its renaming ends. */
    ImGuiID activeAtEnd = 1;
};

TEST_F(UiRenameable, ADoubleClickEditsWithAllTextSelected) {
    EXPECT_TRUE(use([this](ImGuiTestContext& user) {
        user.Yield(2);
        IM_CHECK_EQ(ui.renamingItem, 0u);
        doubleClick(user, place);
        IM_CHECK_NE(ui.renamingItem, 0u);
        const ImGuiInputTextState* const state = ImGui::GetInputTextState(user.ItemInfo(Input).ID);
        IM_CHECK(state != nullptr);
        IM_CHECK_EQ(state->GetSelectionStart(), 0);
        IM_CHECK_EQ(state->GetSelectionEnd(), 8);
        // So typing replaces it.
        user.KeyChars("new");
        user.KeyPress(ImGuiKey_Enter);
        user.Yield();
        IM_CHECK_EQ(ui.renamingItem, 0u);
    }));
    EXPECT_EQ(value("/a/name"), "\"new\"");
    EXPECT_EQ(renamed, 1);
    EXPECT_EQ(recorded(), 1);
    expectUndoAndRedo();
}

TEST_F(UiRenameable, ASingleClickAndOneBesideTheTextDoNothing) {
    EXPECT_TRUE(use([this](ImGuiTestContext& user) {
        user.MouseMoveToPos({place.x + 5.0f, place.y + 5.0f});
        user.MouseClick();
        user.Yield(3);
        IM_CHECK_EQ(ui.renamingItem, 0u);
        doubleClick(user, {place.x + ImGui::CalcTextSize("old name").x, place.y});
        IM_CHECK_EQ(ui.renamingItem, 0u);
    }));
}

TEST_F(UiRenameable, EscapeLeavesTheTextAsItIs) {
    EXPECT_TRUE(use([this](ImGuiTestContext& user) {
        doubleClick(user, place);
        user.KeyChars("new");
        user.Yield(2);
        IM_CHECK_EQ(recorded(), 0);
        user.KeyPress(ImGuiKey_Escape);
        user.Yield(2);
        IM_CHECK_EQ(ui.renamingItem, 0u);
    }));
    EXPECT_EQ(activeAtEnd, 0u);
    EXPECT_EQ(toText(project), loaded);
    EXPECT_EQ(recorded(), 0);
    EXPECT_EQ(renamed, 0);
}

TEST_F(UiRenameable, AClickElsewhereAccepts) {
    EXPECT_TRUE(use([this](ImGuiTestContext& user) {
        doubleClick(user, place);
        user.KeyChars("new");
        user.ItemClick("//Window/button");
        user.Yield(2);
        IM_CHECK_EQ(ui.renamingItem, 0u);
    }));
    EXPECT_EQ(value("/a/name"), "\"new\"");
    EXPECT_EQ(renamed, 1);
    EXPECT_EQ(recorded(), 1);
    expectUndoAndRedo();
}

TEST_F(UiRenameable, AClickOnWhatIsDrawnBeforeAcceptsToo) {
    int presses = 0;
    EXPECT_TRUE(run(
        [&] {
            presses += ImGui::Button("button");
            place = ImGui::GetCursorScreenPos();
            renamed += ui.renameable("a/name", false);
        },
        [this](ImGuiTestContext& user) {
            user.Yield();
            doubleClick(user, place);
            user.KeyChars("new");
            user.ItemClick("//Window/button");
            user.Yield(2);
            IM_CHECK_EQ(ui.renamingItem, 0u);
        }));
    EXPECT_EQ(value("/a/name"), "\"new\"");
    EXPECT_EQ(renamed, 1);
    EXPECT_EQ(recorded(), 1);
    EXPECT_EQ(presses, 1) << "the button keeps its click";
    expectUndoAndRedo();
}

TEST_F(UiRenameable, ThereIsNoMenu) {
    EXPECT_TRUE(use([this](ImGuiTestContext& user) {
        ImGui::SetClipboardText("old");
        user.Yield();
        user.MouseMoveToPos({place.x + 5.0f, place.y + 5.0f});
        user.MouseClick(ImGuiMouseButton_Right);
        user.Yield(2);
        IM_CHECK_EQ(ImGui::GetCurrentContext()->OpenPopupStack.Size, 0);
        user.KeyPress(ImGuiMod_Super | ImGuiKey_C);
        IM_CHECK_STR_EQ(ImGui::GetClipboardText(), "old");
    }));
}

TEST_F(UiRenameable, TabKeepsTheKeyboardAndWhatWasTyped) {
    EXPECT_TRUE(run(
        [this] {
            place = ImGui::GetCursorScreenPos();
            renamed += ui.renameable("a/name", false);
            ui.inputText("a/other");
        },
        [this](ImGuiTestContext& user) {
            user.Yield();
            doubleClick(user, place);
            user.KeyChars("new");
            for(const ImGuiKeyChord key: {ImGuiKey_Tab + 0, ImGuiMod_Shift | ImGuiKey_Tab}) {
                user.KeyPress(key);
                user.Yield(3);
                IM_CHECK_NE(ui.renamingItem, 0u);
                IM_CHECK_EQ(ImGui::GetActiveID(), user.ItemInfo(Input).ID);
            }
            user.KeyChars("er");
            user.KeyPress(ImGuiKey_Enter);
        }));
    EXPECT_EQ(value("/a/name"), "\"newer\"");
    EXPECT_EQ(recorded(), 1);
    expectUndoAndRedo();
}

TEST_F(UiRenameable, AClickIntoTheInputDoesNotEndIt) {
    EXPECT_TRUE(use([this](ImGuiTestContext& user) {
        doubleClick(user, place);
        for(const ImGuiMouseButton button: {ImGuiMouseButton_Left, ImGuiMouseButton_Right}) {
            user.ItemClick(Input, button);
            user.Yield(2);
            IM_CHECK_NE(ui.renamingItem, 0u);
        }
        IM_CHECK_EQ(ImGui::GetActiveID(), user.ItemInfo(Input).ID);
    }));
    EXPECT_EQ(recorded(), 0);
}

TEST_F(UiRenameable, ARightClickElsewhereCancels) {
    EXPECT_TRUE(use([this](ImGuiTestContext& user) {
        doubleClick(user, place);
        user.KeyChars("new");
        user.MouseMoveToPos(otherPlace);
        user.MouseClick(ImGuiMouseButton_Right);
        user.Yield(2);
        IM_CHECK_EQ(ui.renamingItem, 0u);
    }));
    EXPECT_EQ(activeAtEnd, 0u);
    EXPECT_EQ(toText(project), loaded);
    EXPECT_EQ(recorded(), 0);
}

TEST_F(UiRenameable, AcceptingTheSameTextRecordsNothingAndReturnsTrue) {
    EXPECT_TRUE(use([this](ImGuiTestContext& user) {
        doubleClick(user, place);
        user.KeyPress(ImGuiKey_Enter);
        user.Yield(2);
        IM_CHECK_EQ(ui.renamingItem, 0u);
        doubleClick(user, place);
        user.ItemClick("//Window/button");
        user.Yield(2);
        IM_CHECK_EQ(ui.renamingItem, 0u);
    }));
    EXPECT_EQ(recorded(), 0);
    EXPECT_EQ(renamed, 2);
}

TEST_F(UiRenameable, TheNextDoubleClickAcceptsAndEditsTheOther) {
    EXPECT_TRUE(use([this](ImGuiTestContext& user) {
        doubleClick(user, place);
        user.KeyChars("new");
        doubleClick(user, otherPlace);
        IM_CHECK_STR_EQ(value("/a/name").c_str(), "\"new\"");
        IM_CHECK_EQ(ImGui::GetActiveID(), user.ItemInfo("//Window/a/other/##renameable").ID);
        user.KeyChars("newer");
        user.KeyPress(ImGuiKey_Enter);
    }));
    EXPECT_EQ(value("/a/other"), "\"newer\"");
    EXPECT_EQ(recorded(), 2);
    expectUndoAndRedo();
}

TEST_F(UiRenameable, OneIsRenamedUntilItIsDrawnAgain) {
    bool isDrawn = true;
    EXPECT_TRUE(run(
        [&] {
            place = ImGui::GetCursorScreenPos();
            if(isDrawn) ui.renameable("a/name", false);
        },
        [&](ImGuiTestContext& user) {
            user.Yield();
            doubleClick(user, place);
            isDrawn = false;
            user.Yield(5);
            IM_CHECK_NE(ui.renamingItem, 0u);
            isDrawn = true;
            user.Yield(3);
            user.KeyChars("new");
            user.KeyPress(ImGuiKey_Enter);
        }));
    EXPECT_EQ(value("/a/name"), "\"new\"");
}

TEST_F(UiRenameable, TheInputStandsWhereTheTextWas) {
    EXPECT_TRUE(use([this](ImGuiTestContext& user) {
        user.Yield(2);
        const ImVec2 before = otherPlace;
        doubleClick(user, place);
        const ImRect input = user.ItemInfo(Input).RectFull;
        IM_CHECK_EQ(input.Min.x, place.x);
        IM_CHECK_EQ(input.Min.y, place.y);
        IM_CHECK_EQ(input.GetHeight(), ImGui::GetFontSize());
        IM_CHECK_EQ(otherPlace.y, before.y);
    }));
}

TEST_F(UiRenameable, TheBufferHasTwoBytesMoreThanTheText) {
    const std::string name(1000, 'x');
    loadProject(R"({"a":{"name":")" + name + R"(","other":""},"first":false})");
    EXPECT_TRUE(use([&](ImGuiTestContext& user) {
        user.Yield();
        doubleClick(user, place);
        IM_CHECK_GE(ui.editBuffer.size(), name.size() + 2);
        user.KeyPress(ImGuiKey_Escape);
    }));
    EXPECT_EQ(recorded(), 0);
}

TEST_F(UiRenameable, TheInputHasNoBorder) {
    ImGuiStyle& style = ImGui::GetStyle();
    style.FrameBorderSize = 1.0f;
    style.Colors[ImGuiCol_Border] = {1.0f, 0.0f, 1.0f, 1.0f};
    style.WindowBorderSize = 0.0f;
    int borders = -1;
    EXPECT_TRUE(run(
        [&] {
            place = ImGui::GetCursorScreenPos();
            ImVector<ImDrawVert>& vertices = ImGui::GetWindowDrawList()->VtxBuffer;
            const int before = vertices.Size;
            ui.renameable("a/name", false);
            borders = int(std::count_if(vertices.begin() + before, vertices.end(),
                [](const ImDrawVert& vertex) { return vertex.col == IM_COL32(255, 0, 255, 255); }));
        },
        [&](ImGuiTestContext& user) {
            user.Yield();
            doubleClick(user, place);
            IM_CHECK_NE(ui.renamingItem, 0u);
            IM_CHECK_EQ(borders, 0);
        }));
    EXPECT_EQ(style.FrameBorderSize, 1.0f);
}

TEST_F(UiRenameable, AnAbsoluteNameIsThePathOfTheValue) {
    EXPECT_TRUE(run(
        [this] {
            const Scope scope{&ui, "some/where"};
            place = ImGui::GetCursorScreenPos();
            ui.renameable("/a/name", true);
        },
        [this](ImGuiTestContext& user) {
            user.Yield();
            doubleClick(user, place);
            user.KeyChars("new");
            user.KeyPress(ImGuiKey_Enter);
        }));
    EXPECT_EQ(value("/a/name"), "\"new\"");
    EXPECT_EQ(recorded(), 1);
    expectUndoAndRedo();
}

TEST_F(UiRenameable, WhatIsNoTextIsEmptyAndCannotBeHit) {
    loadProject(Wrong);
    frames([this] {
        for(const char* name: WrongNames) {
            EXPECT_FALSE(ui.renameable(name, false));
            EXPECT_EQ(ImGui::GetItemRectSize().x, 0.0f);
        }
    });
    EXPECT_EQ(toText(project), loaded);
}

TEST_F(UiRenameable, RunsOfRenamesMerge) {
    EXPECT_TRUE(use([this](ImGuiTestContext& user) {
        user.Yield();
        for(const char* text: {"abc", "abcdef"}) {
            doubleClick(user, place);
            user.KeyChars(text);
            user.KeyPress(ImGuiKey_Enter);
            user.Yield(2);
        }
    }));
    EXPECT_EQ(value("/a/name"), "\"abcdef\"");
    EXPECT_EQ(recorded(), 1);
    EXPECT_EQ(renamed, 2);
    expectUndoAndRedo();
}

TEST_F(UiRenameable, AFrameWithoutAnEditAllocatesNothing) {
    std::uint64_t count = 1;
    bool isCounted = false;
    EXPECT_TRUE(run(
        [&] {
            place = ImGui::GetCursorScreenPos();
            const Allocations allocations;
            ui.renameable("a/name", false);
            if(isCounted) count = allocations.count();
        },
        [&](ImGuiTestContext& user) {
            for(int i = 0; i != 2; ++i) {
                user.Yield(5);
                isCounted = true;
                count = 1;
                user.Yield();
                IM_CHECK_EQ(count, 0u);
                isCounted = false;
                // And while it is being edited.
                doubleClick(user, place);
            }
        }));
}

}
}
