#include <cstdint>
#include <string>

#include <gtest/gtest.h>
#include <imgui.h>

#include "TextUi.h"
#include "support/Allocations.h"

namespace QuorvaneEngine {
namespace {

using Test::Allocations;
using Test::toText;
using Test::UiTextInput;

TEST_F(UiTextInput, WhatIsTypedIsOneChangeWhenTabIsPressed) {
    EXPECT_TRUE(use([this](ImGuiTestContext& user) {
        user.ItemClick(Name);
        user.KeyCharsReplace("abc");
        user.Yield(3);
        IM_CHECK_EQ(recorded(), 0);
        user.KeyPress(ImGuiKey_Tab);
        user.Yield(2);
        IM_CHECK_EQ(recorded(), 1);
    }));
    EXPECT_EQ(value("/a/name"), "\"abc\"");
    EXPECT_EQ(recorded(), 1);
    expectUndoAndRedo();
}

TEST_F(UiTextInput, WhatIsTypedIsPendingUntilTheFieldIsLeft) {
    EXPECT_TRUE(use([this](ImGuiTestContext& user) {
        IM_CHECK(ui.pendingText.isEmpty());
        IM_CHECK_EQ(ui.pendingItem, 0u);
        user.ItemClick(Name);
        user.KeyCharsAppend("er");
        user.Yield(3);
        IM_CHECK_EQ(recorded(), 0);
        IM_CHECK_STR_EQ(value("/a/name").c_str(), "\"old\"");
        IM_CHECK_STR_EQ(ui.pendingText.data(), "older");
        IM_CHECK_EQ(ui.pendingText.size(), ui.editBuffer.size());
        IM_CHECK_EQ(ui.pendingItem, user.ItemInfo(Name).ID);
        user.KeyPress(ImGuiKey_Enter);
        user.Yield(2);
        IM_CHECK(ui.pendingText.isEmpty());
        IM_CHECK_EQ(ui.pendingItem, 0u);
    }));
    EXPECT_EQ(value("/a/name"), "\"older\"");
    EXPECT_EQ(recorded(), 1);
}

TEST_F(UiTextInput, LeavingTheFieldInAnyWayRecordsTheText) {
    struct Way {
        const char* name;
        void (*leave)(ImGuiTestContext& user);
    };
    constexpr Way ways[]{
        {"Enter", [](ImGuiTestContext& user) { user.KeyPress(ImGuiKey_Enter); }},
        {"Tab", [](ImGuiTestContext& user) { user.KeyPress(ImGuiKey_Tab); }},
        {"the field behind it", [](ImGuiTestContext& user) { user.ItemClick(Other); }},
        {"nothing",
            [](ImGuiTestContext& user) {
                user.MouseMoveToVoid();
                user.MouseClick();
            }},
    };
    for(const Way& way: ways) {
        loadProject(loaded);
        EXPECT_TRUE(use([&](ImGuiTestContext& user) {
            user.ItemClick(Name);
            user.KeyCharsReplace(way.name);
            way.leave(user);
            user.Yield(3);
        }));
        EXPECT_EQ(value("/a/name"), '"' + std::string{way.name} + '"');
        EXPECT_EQ(recorded(), 1);
        expectUndoAndRedo();
    }
}

TEST_F(UiTextInput, AFieldInFrontTakesTheKeyboardInTime) {
    EXPECT_TRUE(use([](ImGuiTestContext& user) {
        user.ItemClick(Other);
        user.KeyCharsReplace("abc");
        user.ItemClick(Name);
        user.Yield(3);
    }));
    EXPECT_EQ(value("/a/other"), "\"abc\"");
    EXPECT_EQ(value("/a/name"), "\"old\"");
    EXPECT_EQ(recorded(), 1);
}

TEST_F(UiTextInput, EscapeRecordsNothing) {
    EXPECT_TRUE(use([](ImGuiTestContext& user) {
        user.ItemClick(Name);
        user.KeyCharsReplace("abc");
        user.KeyPress(ImGuiKey_Escape);
        user.Yield(3);
    }));
    EXPECT_EQ(toText(project), loaded);
    EXPECT_EQ(recorded(), 0);
    EXPECT_TRUE(ui.pendingText.isEmpty());
}

TEST_F(UiTextInput, ATextThatIsTypedBackRecordsNothing) {
    EXPECT_TRUE(use([this](ImGuiTestContext& user) {
        user.ItemClick(Name);
        user.KeyCharsAppend("er");
        user.KeyPress(ImGuiKey_Backspace, 2);
        user.Yield(2);
        IM_CHECK_STR_EQ(ui.pendingText.data(), "old");
        user.KeyPress(ImGuiKey_Enter);
        user.Yield(2);
    }));
    EXPECT_EQ(recorded(), 0);
    EXPECT_TRUE(ui.pendingText.isEmpty());
    // Both letters come in one frame, and go in two.
    EXPECT_EQ(changed, 3);
}

TEST_F(UiTextInput, ItReturnsTrueInTheFramesInWhichTheTextChanges) {
    EXPECT_TRUE(use([this](ImGuiTestContext& user) {
        user.ItemClick(Name);
        user.Yield(3);
        IM_CHECK_EQ(changed, 0);
        user.KeyCharsAppend("x");
        user.Yield(5);
        IM_CHECK_EQ(changed, 1);
        user.KeyPress(ImGuiKey_Enter);
        user.Yield(5);
        // The commit changes no text.
        IM_CHECK_EQ(changed, 1);
        user.ItemClick(Name);
        user.KeyCharsAppend("y");
        user.KeyPress(ImGuiKey_Escape);
        user.Yield(5);
        IM_CHECK_EQ(changed, 3);
    }));
    EXPECT_EQ(value("/a/name"), "\"oldx\"");
    EXPECT_EQ(recorded(), 1);
}

TEST_F(UiTextInput, EachEditIsAStepButARunOfEditsOfOneValueMerges) {
    EXPECT_TRUE(use([](ImGuiTestContext& user) {
        for(const char* text: {"a", "b"}) {
            user.ItemClick(Name);
            user.KeyCharsReplaceEnter(text);
        }
        user.ItemClick(Other);
        user.KeyCharsReplaceEnter("c");
        user.ItemClick(Name);
        user.KeyCharsReplaceEnter("d");
        user.Yield(2);
    }));
    // The change manager merges edits of one path in a run, whatever lies between.
    EXPECT_EQ(recorded(), 2);
    EXPECT_EQ(value("/a/name"), "\"d\"");
    EXPECT_EQ(value("/a/other"), "\"c\"");
    expectUndoAndRedo();
}

TEST_F(UiTextInput, TheFirstEntryOfALogDoesNotMerge) {
    changes.reset(project);
    EXPECT_TRUE(use([](ImGuiTestContext& user) {
        for(const char* text: {"a", "b", "c"}) {
            user.ItemClick(Name);
            user.KeyCharsReplaceEnter(text);
        }
        user.Yield(2);
    }));
    ASSERT_EQ(changes.changes().size(), 2u);
    EXPECT_EQ(toText(*changes.changes()[0].newValue), "\"a\"");
    EXPECT_EQ(toText(*changes.changes()[1].newValue), "\"c\"");
}

TEST_F(UiTextInput, TextsOfAnyLengthAreEdited) {
    std::string longText(300, 'x');
    EXPECT_TRUE(use([&](ImGuiTestContext& user) {
        user.ItemClick(Name);
        user.KeyCharsReplaceEnter(longText.c_str());
        user.Yield(2);
        user.ItemClick(Name);
        user.KeyCharsReplaceEnter("x");
        user.Yield(2);
    }));
    EXPECT_EQ(value("/a/name"), "\"x\"");
    EXPECT_GT(ui.editBuffer.size(), 300u);
    EXPECT_EQ(ui.editBuffer.deleter(), nullptr);
    EXPECT_EQ(ui.pendingText.deleter(), nullptr);
}

TEST_F(UiTextInput, AnEmptyTextAndNullAreEdited) {
    EXPECT_TRUE(run(
        [this] {
            ui.inputText("a/empty");
            ui.inputText("a/null");
        },
        [this](ImGuiTestContext& user) {
            // Nothing is typed, so null stays.
            user.ItemClick("//Window/a/null/##val");
            user.KeyPress(ImGuiKey_Tab);
            user.Yield(2);
            IM_CHECK_EQ(recorded(), 0);
            user.ItemClick("//Window/a/empty/##val");
            user.KeyCharsReplaceEnter("x");
            user.ItemClick("//Window/a/null/##val");
            user.KeyCharsReplaceEnter("y");
            user.Yield(2);
        }));
    EXPECT_EQ(value("/a/empty"), "\"x\"");
    EXPECT_EQ(value("/a/null"), "\"y\"");
    expectUndoAndRedo();
}

TEST_F(UiTextInput, ATextCanBeEmptied) {
    EXPECT_TRUE(use([](ImGuiTestContext& user) {
        user.ItemClick(Name);
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_A);
        user.KeyPress(ImGuiKey_Delete);
        user.KeyPress(ImGuiKey_Enter);
        user.Yield(2);
    }));
    EXPECT_EQ(value("/a/name"), "\"\"");
    expectUndoAndRedo();
}

TEST_F(UiTextInput, ATextIsShownUpToAZeroByteAndStaysWholeUntilItIsEdited) {
    loadProject(R"({"a":{"name":"ab\u0000cd","other":""},"first":false})");
    EXPECT_TRUE(use([this](ImGuiTestContext& user) {
        user.ItemClick(Name);
        user.KeyPress(ImGuiKey_Enter);
        user.Yield(2);
        IM_CHECK_EQ(recorded(), 0);
        user.ItemClick(Name);
        user.KeyCharsAppendEnter("x");
        user.Yield(2);
    }));
    EXPECT_EQ(value("/a/name"), "\"abx\"");
    expectUndoAndRedo();
}

TEST_F(UiTextInput, TypedTextOfAFieldThatIsGoneIsForgotten) {
    bool isDrawn = true;
    EXPECT_TRUE(run(
        [&] {
            if(isDrawn) changed += ui.inputText("a/name");
            ImGui::Button("button");
        },
        [&](ImGuiTestContext& user) {
            user.ItemClick(Name);
            user.KeyCharsReplace("lost");
            isDrawn = false;
            user.Yield(5);
            isDrawn = true;
            user.Yield(2);
            IM_CHECK_EQ(recorded(), 0);
            // The next edit of the field does not bring it back.
            changed = 0;
            user.ItemClick(Name);
            user.Yield(2);
            user.KeyPress(ImGuiKey_Tab);
            user.Yield(2);
            IM_CHECK_EQ(changed, 0);
        }));
    EXPECT_EQ(recorded(), 0);
    EXPECT_EQ(toText(project), loaded);
}

TEST_F(UiTextInput, WhatIsNoTextIsEmptyUntilItIsEdited) {
    for(const char* name: WrongNames) {
        loadProject(Wrong);
        EXPECT_TRUE(run([&] { ui.inputText(name); },
            [&](ImGuiTestContext& user) {
                const std::string item = std::string{"//Window/"} + name + "/##val";
                user.ItemClick(item.c_str());
                IM_CHECK_STR_EQ(ui.editBuffer.data(), "");
                user.KeyPress(ImGuiKey_Tab);
                user.Yield(2);
                IM_CHECK_EQ(recorded(), 0);
                user.ItemClick(item.c_str());
                user.KeyCharsReplaceEnter("text");
                user.Yield(2);
            }));
        EXPECT_EQ(value((std::string{"/"} + name).c_str()), "\"text\"");
        EXPECT_EQ(recorded(), 1);
        expectUndoAndRedo();
    }
}

TEST_F(UiTextInput, ItFillsTheLineBehindItsLabel) {
    frames([this] {
        const float start = ImGui::GetCursorScreenPos().x;
        const float width = ImGui::GetContentRegionAvail().x;
        ui.inputText("a/name");
        EXPECT_FLOAT_EQ(ImGui::GetItemRectMin().x, ImGui::GetWindowPos().x + 0.33f * width);
        EXPECT_NEAR(ImGui::GetItemRectMax().x, start + width, 1.0f);
        ui.pushFlags(Ui::Flag::NoLabel);
        ui.inputText("a/other");
        ui.popFlags();
        EXPECT_FLOAT_EQ(ImGui::GetItemRectMin().x, start);
    });
}

TEST_F(UiTextInput, TheMenuCopiesAndPastes) {
    EXPECT_TRUE(use([](ImGuiTestContext& user) {
        user.ItemClick(Name, ImGuiMouseButton_Right);
        user.ItemClick("//$FOCUSED/\xef\x83\x85 Copy");
        user.Yield();
        IM_CHECK_STR_EQ(ImGui::GetClipboardText(), "\"old\"");
        ImGui::SetClipboardText("\"new\"");
        user.ItemClick(Name, ImGuiMouseButton_Right);
        user.ItemClick("//$FOCUSED/\xef\x83\xaa Paste");
        user.Yield();
    }));
    EXPECT_EQ(value("/a/name"), "\"new\"");
    EXPECT_EQ(recorded(), 1);
    expectUndoAndRedo();
}

TEST_F(UiTextInput, AFrameWithoutAnEditAllocatesNothing) {
    std::uint64_t count = 1;
    bool isCounted = false;
    EXPECT_TRUE(run(
        [&] {
            const Allocations allocations;
            ui.inputText("a/name");
            ui.inputText("a/other");
            if(isCounted) count = allocations.count();
        },
        [&](ImGuiTestContext& user) {
            user.Yield(3);
            isCounted = true;
            user.Yield();
            IM_CHECK_EQ(count, 0u);
            isCounted = false;
            user.ItemClick(Name);
            user.KeyCharsAppend("x");
            user.Yield(5);
            // Typed, and pending still.
            isCounted = true;
            count = 1;
            user.Yield();
            IM_CHECK_EQ(count, 0u);
        }));
}

}
}
