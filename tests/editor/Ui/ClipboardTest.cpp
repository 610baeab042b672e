#include <ostream>
#include <string>

#include <gtest/gtest.h>
#include <imgui.h>

#include "BoundUi.h"
#include "Ui/Scope.h"
#include "support/Allocations.h"
#include "support/CapturedOutput.h"

namespace QuorvaneEngine {
namespace {

using Test::Allocations;
using Test::CapturedOutput;
using Test::GuiTest;
using Test::toText;

constexpr char CannotParse[] = "Cannot parse pasted value.\n";
constexpr char OtherType[] = "Pasted value did not match type of the target property.\n";

class UiClipboard: public Test::BoundUi {
protected:
    UiClipboard() {
        loadProject(R"({"three":[1,2,3],"two":[1.5,2.5],"number":2.5,"yes":true,"no":false,"text":"some text",)"
                    R"("object":{"a":{"b":1}},"nothing":null,"list":[[],[]],"first":false})");
    }

    /** Copies a value as a widget of it would. */
    std::string copied(const char* name) {
        std::string text;
        frames(
            [&] {
                const Scope scope{&ui, name};
                ui.copyValue();
                text = ImGui::GetClipboardText();
            },
            1);
        return text;
    }

    /** Pastes a text onto a value; what was warned of. */
    std::string pasted(const std::string& text, const char* name) {
        const CapturedOutput output;
        frames(
            [&] {
                const Scope scope{&ui, name};
                ImGui::SetClipboardText(text.c_str());
                ui.pasteValue();
            },
            1);
        EXPECT_EQ(output.error(), "");
        return output.warning();
    }
};

// Copying

TEST_F(UiClipboard, ValuesAreCopiedAsJson) {
    EXPECT_EQ(copied("three"), "[1,2,3]");
    EXPECT_EQ(copied("two"), "[1.5,2.5]");
    EXPECT_EQ(copied("number"), "2.5");
    EXPECT_EQ(copied("yes"), "true");
    EXPECT_EQ(copied("text"), "\"some text\"");
    EXPECT_EQ(copied("object"), R"({"a":{"b":1}})");
    EXPECT_EQ(copied("object/a/b"), "1");
    EXPECT_EQ(copied("nothing"), "null");
    EXPECT_EQ(recorded(), 0);
}

TEST_F(UiClipboard, AMissingValueIsCopiedAsNull) { EXPECT_EQ(copied("missing"), "null"); }

TEST_F(UiClipboard, TextsAreEscapedOnTheClipboard) {
    loadProject(R"({"text":"a\"b\\\n\u0000é"})");
    EXPECT_EQ(copied("text"), "\"a\\\"b\\\\\\n\\u0000\xc3\xa9\"");
}

TEST_F(UiClipboard, WhatIsCopiedCanBePastedBack) {
    for(const char* name: {"three", "two", "number", "yes", "no", "text", "object", "nothing", "list"}) {
        const std::string before = value((std::string{"/"} + name).c_str());
        EXPECT_EQ(pasted(copied(name), name), "");
        EXPECT_EQ(value((std::string{"/"} + name).c_str()), before);
    }
    EXPECT_EQ(recorded(), 9);
}

// Pasting

TEST_F(UiClipboard, AVectorIsPastedOntoOneOfItsSize) {
    EXPECT_EQ(pasted("[7,8,9.5]", "three"), "");
    EXPECT_EQ(value("/three"), "[7,8,9.5]");
    EXPECT_EQ(recorded(), 1);
    expectUndoAndRedo();
}

TEST_F(UiClipboard, AVectorIsNotPastedOntoOneOfAnotherSize) {
    EXPECT_EQ(pasted(copied("three"), "two"), "Pasted value array size did not match, expected 2 but got 3\n");
    EXPECT_EQ(pasted("[]", "three"), "Pasted value array size did not match, expected 3 but got 0\n");
    EXPECT_EQ(toText(project), loaded);
    EXPECT_EQ(recorded(), 0);
}

TEST_F(UiClipboard, ElementsAndMembersAreNotCompared) {
    EXPECT_EQ(pasted(R"(["a",null,{}])", "three"), "");
    EXPECT_EQ(value("/three"), R"(["a",null,{}])");
    EXPECT_EQ(pasted(R"({"other":[1]})", "object"), "");
    EXPECT_EQ(value("/object"), R"({"other":[1]})");
    expectUndoAndRedo();
}

TEST_F(UiClipboard, AllNumbersAreOneType) {
    EXPECT_EQ(pasted("5", "number"), "");
    EXPECT_EQ(value("/number"), "5");
    EXPECT_EQ(pasted("-1e3", "number"), "");
    EXPECT_EQ(value("/number"), "-1000.0");
    expectUndoAndRedo();
}

TEST_F(UiClipboard, TrueAndFalseAreTwoTypes) {
    EXPECT_EQ(pasted("true", "no"), OtherType);
    EXPECT_EQ(pasted("false", "yes"), OtherType);
    EXPECT_EQ(recorded(), 0);
    EXPECT_EQ(pasted("false", "no"), "");
    EXPECT_EQ(pasted("true", "yes"), "");
    EXPECT_EQ(recorded(), 2);
    EXPECT_EQ(toText(project), loaded);
}

TEST_F(UiClipboard, EachTypeIsRefusedByAllOthers) {
    struct Case {
        const char* name;
        const char* json;
    };
    constexpr Case cases[]{
        {"three", "[1,2,3]"},
        {"number", "1"},
        {"yes", "true"},
        {"no", "false"},
        {"text", "\"5\""},
        {"object", "{}"},
        {"nothing", "null"},
    };
    for(const Case& from: cases)
        for(const Case& to: cases) {
            if(from.name == to.name) continue;
            EXPECT_EQ(pasted(from.json, to.name), OtherType) << from.name << ' ' << to.name;
        }
    EXPECT_EQ(toText(project), loaded);
    EXPECT_EQ(recorded(), 0);
}

TEST_F(UiClipboard, NothingIsPastedOntoAMissingValue) {
    for(const char* json: {"1", "null", "true", "\"text\"", "[]", "{}"})
        EXPECT_EQ(pasted(json, "missing"), OtherType) << json;
    EXPECT_EQ(toText(project), loaded);
    EXPECT_EQ(recorded(), 0);
}

TEST_F(UiClipboard, AByteOrderMarkIsSkipped) {
    EXPECT_EQ(pasted("\xef\xbb\xbf[4,5,6]", "three"), "");
    EXPECT_EQ(value("/three"), "[4,5,6]");
}

TEST_F(UiClipboard, PastesDoNotMerge) {
    pasted("3", "number");
    pasted("4", "number");
    EXPECT_EQ(recorded(), 2);
    expectUndoAndRedo();
}

TEST_F(UiClipboard, WhatIsNoJsonIsRefused) {
    for(const std::string& text: {std::string{}, std::string{"some text"}, std::string{"[1,2"}, std::string{"\"\xff\""},
            std::string(1000000, '['), std::string{"1e99999999999999"}, std::string{R"({"a":1,"a":2})"},
            std::string(10000000, 'x'), std::string(10000000, '\xff'), std::string{"[1,2,3] x"}})
        for(const char* name: {"three", "number", "text", "object", "missing"})
            EXPECT_EQ(pasted(text, name), CannotParse) << text.substr(0, 20) << ' ' << name;
    EXPECT_EQ(toText(project), loaded);
    EXPECT_EQ(recorded(), 0);
}

TEST_F(UiClipboard, AClipboardThatHoldsNoTextIsRefused) {
    ImGui::GetPlatformIO().Platform_GetClipboardTextFn = [](ImGuiContext*) -> const char* { return nullptr; };
    EXPECT_EQ(pasted("", "number"), CannotParse);
}

TEST_F(UiClipboard, TenMegabytesOfTextArePasted) {
    const std::string text = '"' + std::string(10000000, 'x') + '"';
    EXPECT_EQ(pasted(text, "text"), "");
    EXPECT_EQ(value("/text"), text);
    expectUndoAndRedo();
}

TEST_F(UiClipboard, TheProjectGetsNoDeeperThanItsFilesCanBe) {
    const auto nested = [](std::size_t depth) {
        return "[" + std::string(depth - 1, '[') + std::string(depth - 1, ']') + ",0]";
    };
    // The document itself is a container, too.
    EXPECT_EQ(pasted(nested(256), "list"), CannotParse);
    EXPECT_EQ(pasted(nested(255), "list"), "");
    EXPECT_EQ(value("/list"), nested(255));
    expectUndoAndRedo();
    loadProject(R"({"a":{"b":[[],[]]}})");
    EXPECT_EQ(pasted(nested(255), "a/b"), CannotParse);
    EXPECT_EQ(pasted(nested(254), "a/b"), "");
}

// The menu and the keys

class UiClipboardItem: public UiClipboard {
protected:
    /** Draws two values, the second of which has a text input. */
    bool use(const GuiTest::Script& script) {
        return run(
            [this] {
                {
                    const Scope scope{&ui, "three"};
                    ImGui::Button("value");
                    ui.valueContextMenu();
                }
                {
                    const Scope scope{&ui, "text"};
                    ImGui::InputText("value", typed, sizeof(typed));
                    ui.valueContextMenu();
                }
                isTooltipShown = false;
                for(const ImGuiWindow* window: ImGui::GetCurrentContext()->Windows)
                    isTooltipShown |= (window->Flags & ImGuiWindowFlags_Tooltip) && window->Active;
            },
            script);
    }

    char typed[32] = "typed";
    bool isTooltipShown = false;
};

TEST_F(UiClipboardItem, TheRightButtonOpensAMenuThatCopies) {
    EXPECT_TRUE(use([&](ImGuiTestContext& user) {
        ImGui::SetClipboardText("old");
        user.ItemClick("//Window/three/value", ImGuiMouseButton_Right);
        user.ItemClick("//$FOCUSED/\xef\x83\x85 Copy");
        user.Yield();
        IM_CHECK_STR_EQ(ImGui::GetClipboardText(), "[1,2,3]");
        IM_CHECK(!isTooltipShown);
    }));
    EXPECT_EQ(recorded(), 0);
}

TEST_F(UiClipboardItem, TheMenuPastes) {
    EXPECT_TRUE(use([&](ImGuiTestContext& user) {
        ImGui::SetClipboardText("[4,5,6]");
        user.ItemClick("//Window/three/value", ImGuiMouseButton_Right);
        user.ItemClick("//$FOCUSED/\xef\x83\xaa Paste");
    }));
    EXPECT_EQ(value("/three"), "[4,5,6]");
    EXPECT_EQ(recorded(), 1);
    expectUndoAndRedo();
}

TEST_F(UiClipboardItem, EachValueHasAMenuOfItsOwn) {
    EXPECT_TRUE(use([&](ImGuiTestContext& user) {
        user.ItemClick("//Window/text/value", ImGuiMouseButton_Right);
        user.ItemClick("//$FOCUSED/\xef\x83\x85 Copy");
        user.Yield();
        IM_CHECK_STR_EQ(ImGui::GetClipboardText(), "\"some text\"");
    }));
}

TEST_F(UiClipboardItem, CommandAndCCopiesWhatIsUnderTheMouse) {
    EXPECT_TRUE(use([&](ImGuiTestContext& user) {
        user.WindowFocus("//Window");
        user.MouseMove("//Window/three/value");
        user.KeyPress(ImGuiMod_Super | ImGuiKey_C);
        IM_CHECK_STR_EQ(ImGui::GetClipboardText(), "[1,2,3]");
        user.MouseMove("//Window/text/value");
        user.KeyPress(ImGuiMod_Super | ImGuiKey_C);
        IM_CHECK_STR_EQ(ImGui::GetClipboardText(), "\"some text\"");
    }));
    EXPECT_EQ(recorded(), 0);
}

TEST_F(UiClipboardItem, CommandAndVPastes) {
    EXPECT_TRUE(use([&](ImGuiTestContext& user) {
        ImGui::SetClipboardText("[4,5,6]");
        user.WindowFocus("//Window");
        user.MouseMove("//Window/three/value");
        user.KeyPress(ImGuiMod_Super | ImGuiKey_V);
    }));
    EXPECT_EQ(value("/three"), "[4,5,6]");
    EXPECT_EQ(recorded(), 1);
}

TEST_F(UiClipboardItem, CopyingComesBeforePastingInOneFrame) {
    EXPECT_TRUE(use([&](ImGuiTestContext& user) {
        ImGui::SetClipboardText("[4,5,6]");
        user.WindowFocus("//Window");
        user.MouseMove("//Window/three/value");
        // No keyboard sends two keys at once.
        ImGui::GetIO().ConfigInputTrickleEventQueue = false;
        user.KeyDown(ImGuiMod_Super);
        user.KeyDown(ImGuiKey_C);
        user.KeyDown(ImGuiKey_V);
        user.KeyUp(ImGuiKey_C);
        user.KeyUp(ImGuiKey_V);
        user.KeyUp(ImGuiMod_Super);
    }));
    EXPECT_EQ(recorded(), 1);
    EXPECT_EQ(toText(project), loaded);
}

TEST_F(UiClipboardItem, TheTooltipIsShownWhileTheKeyRepeats) {
    EXPECT_TRUE(use([&](ImGuiTestContext& user) {
        user.WindowFocus("//Window");
        user.MouseMove("//Window/three/value");
        user.Yield(2);
        IM_CHECK(!isTooltipShown);
        user.KeyDown(ImGuiMod_Super);
        user.KeyDown(ImGuiKey_C);
        int shown = 0;
        ImGui::SetClipboardText("old");
        for(int i = 0; i != 120; ++i) {
            user.Yield();
            shown += isTooltipShown;
        }
        // The first press was before; these are repetitions.
        IM_CHECK_GT(shown, 10);
        IM_CHECK_STR_EQ(ImGui::GetClipboardText(), "[1,2,3]");
        user.KeyUp(ImGuiKey_C);
        user.KeyUp(ImGuiMod_Super);
        user.Yield(2);
        IM_CHECK(!isTooltipShown);
    }));
}

TEST_F(UiClipboardItem, KeysElsewhereDoNothing) {
    EXPECT_TRUE(use([&](ImGuiTestContext& user) {
        ImGui::SetClipboardText("old");
        user.WindowFocus("//Window");
        user.MouseMoveToVoid();
        user.KeyPress(ImGuiMod_Super | ImGuiKey_C);
        user.MouseMove("//Window/three/value");
        // Without the modifier, and with another one.
        user.KeyPress(ImGuiKey_C);
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_C);
        IM_CHECK_STR_EQ(ImGui::GetClipboardText(), "old");
    }));
}

TEST_F(UiClipboardItem, AWindowWithoutFocusHasNoKeys) {
    EXPECT_TRUE(gui.run(
        "unfocused",
        [&] {
            draw([this] {
                const Scope scope{&ui, "three"};
                ImGui::Button("value");
                ui.valueContextMenu();
            });
            ImGui::SetNextWindowPos({700.0f, 20.0f});
            const WindowGuard other{ImGui::Begin("Other")};
            ImGui::Button("button");
        },
        [](ImGuiTestContext& user) {
            ImGui::SetClipboardText("old");
            user.WindowFocus("//Other");
            user.MouseMove("//Window/three/value", ImGuiTestOpFlags_NoFocusWindow);
            user.KeyPress(ImGuiMod_Super | ImGuiKey_C);
            IM_CHECK_STR_EQ(ImGui::GetClipboardText(), "old");
            user.WindowFocus("//Window");
            user.MouseMove("//Window/three/value");
            user.KeyPress(ImGuiMod_Super | ImGuiKey_C);
            IM_CHECK_STR_EQ(ImGui::GetClipboardText(), "[1,2,3]");
        }));
}

TEST_F(UiClipboardItem, AFieldThatIsTypedInKeepsTheKeysForItsText) {
    // On macOS the command modifier is that of the library's own shortcuts, which calls it Ctrl.
    ImGui::GetIO().ConfigMacOSXBehaviors = true;
    EXPECT_TRUE(use([&](ImGuiTestContext& user) {
        user.ItemClick("//Window/text/value");
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_A);
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_C);
        IM_CHECK_STR_EQ(ImGui::GetClipboardText(), "typed");
        ImGui::SetClipboardText("pasted");
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_V);
        IM_CHECK_STR_EQ(typed, "pasted");
        user.KeyPress(ImGuiKey_Escape);
        // What is not typed in copies its value.
        user.MouseMove("//Window/three/value");
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_C);
        IM_CHECK_STR_EQ(ImGui::GetClipboardText(), "[1,2,3]");
    }));
    EXPECT_EQ(recorded(), 0);
}

TEST_F(UiClipboardItem, AnIdleFrameAllocatesNothing) {
    const auto item = [this] {
        const Scope scope{&ui, "three"};
        ImGui::Button("value");
        ui.valueContextMenu();
    };
    frames(item, 5);
    std::uint64_t count = 1;
    frames(
        [&] {
            const Allocations allocations;
            item();
            count = allocations.count();
        },
        1);
    EXPECT_EQ(count, 0u);
}

}
}
