#include <string>

#include <gtest/gtest.h>
#include <imgui.h>
#include <imgui_internal.h>
#include <imgui_te_context.h>
#include <imgui_te_engine.h>
#include <imgui_te_internal.h>

#include "ClipboardUi.h"
#include "ImGuiGuards.h"
#include "Ui/Scope.h"
#include "support/ShownText.h"

namespace QuorvaneEngine {
namespace {

using Test::GuiTest;
using Test::ShownText;
using Test::toText;
using Test::UiClipboard;

class UiClipboardItem: public UiClipboard {
protected:
    /** Draws two values, the second of which has a text input. */
    bool use(const GuiTest::Script& script) {
        return run(
            [this] {
                const ShownText text;
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
                tooltips += isTooltipShown;
                shown = text.text();
            },
            script);
    }

    char typed[32] = "typed";
    bool isTooltipShown = false;

    /** In how many frames there was a tooltip. */
    int tooltips = 0;

    /** What a frame showed. */
    std::string shown;
};

TEST_F(UiClipboardItem, TheRightButtonOpensAMenuThatCopies) {
    EXPECT_TRUE(use([&](ImGuiTestContext& user) {
        ImGui::SetClipboardText("old");
        user.ItemClick("//Window/three/value", ImGuiMouseButton_Right);
        user.Yield(2);
        for(const char* const keys: {"Cmd + C", "Cmd + V"}) IM_CHECK(shown.find(keys) != std::string::npos);
        user.ItemClick("//$FOCUSED/\xef\x83\x85 Copy");
        user.Yield(2);
        IM_CHECK_STR_EQ(ImGui::GetClipboardText(), "[1,2,3]");
        IM_CHECK_EQ(tooltips, 0);
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
        for(const bool isDown: {true, false}) {
            for(const ImGuiKey key: {ImGuiKey_C, ImGuiKey_V})
                user.Inputs->Queue.push_back(ImGuiTestInput::ForKeyChord(key, isDown));
            user.Yield();
        }
        user.KeyUp(ImGuiMod_Super);
        IM_CHECK_STR_EQ(ImGui::GetClipboardText(), "[1,2,3]");
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
        int seen = 0, copies = 0;
        for(int i = 0; i != 120; ++i) {
            ImGui::SetClipboardText("old");
            user.Yield();
            seen += isTooltipShown && shown.find("Copied!") != std::string::npos;
            copies += std::string{ImGui::GetClipboardText()} == "[1,2,3]";
        }
        // The first press was before; these are repetitions, of which two seconds have so many at the library's rate.
        const ImGuiIO& io = ImGui::GetIO();
        IM_CHECK_LE(ImAbs(float(copies) - (2.0f - io.KeyRepeatDelay) / io.KeyRepeatRate), 2.0f);
        IM_CHECK_EQ(seen, copies);
        user.KeyUp(ImGuiKey_C);
        user.KeyUp(ImGuiMod_Super);
        user.Yield(2);
        IM_CHECK(!isTooltipShown);
    }));
}

TEST_F(UiClipboardItem, PastingGoesOnWhileTheKeyRepeats) {
    EXPECT_TRUE(use([&](ImGuiTestContext& user) {
        ImGui::SetClipboardText("[4,5,6]");
        user.WindowFocus("//Window");
        user.MouseMove("//Window/three/value");
        user.KeyDown(ImGuiMod_Super);
        user.KeyDown(ImGuiKey_V);
        const int first = recorded();
        user.Yield(120);
        const ImGuiIO& io = ImGui::GetIO();
        IM_CHECK_LE(ImAbs(float(recorded() - first) - (2.0f - io.KeyRepeatDelay) / io.KeyRepeatRate), 2.0f);
        user.KeyUp(ImGuiKey_V);
        user.KeyUp(ImGuiMod_Super);
    }));
    expectUndoAndRedo();
}

TEST_F(UiClipboardItem, AVectorIsCopiedFromOneFieldToAnother) {
    loadProject(R"({"a":[1,2,3],"b":[4,5,6],"colour":[0.5,0.5,1],"first":false})");
    EXPECT_TRUE(run(
        [this] {
            ui.inputFloat3("a", -100.0f, 100.0f, 1.0f, 10.0f);
            ui.inputFloat3("b", -100.0f, 100.0f, 1.0f, 10.0f);
            ui.colorEdit3("colour");
        },
        [this](ImGuiTestContext& user) {
            user.WindowFocus("//Window");
            const struct {
                const char* from;
                const char* to;
                const char* path;
                const char* value;
            } ways[]{
                {"//Window/colour/##val/##Y", "//Window/a/##val/$$0", "/a", "[0.5,0.5,1]"},
                {"//Window/b/##val/$$2", "//Window/colour/##val/##X", "/colour", "[4,5,6]"},
                {"//Window/a/##val/$$1", "//Window/b/##val/$$0", "/b", "[0.5,0.5,1]"},
            };
            for(const auto& [from, to, path, copied]: ways) {
                user.MouseMove(from);
                user.KeyPress(ImGuiMod_Super | ImGuiKey_C);
                IM_CHECK_STR_EQ(ImGui::GetClipboardText(), copied);
                user.MouseMove(to);
                user.KeyPress(ImGuiMod_Super | ImGuiKey_V);
                IM_CHECK_STR_EQ(value(path).c_str(), copied);
            }
        }));
    EXPECT_EQ(recorded(), 3);
    expectUndoAndRedo();
}

TEST_F(UiClipboardItem, TheKeysAreMeantWhileAChildHasTheFocus) {
    EXPECT_TRUE(run(
        [this] {
            {
                const Scope scope{&ui, "three"};
                ImGui::Button("value");
                ui.valueContextMenu();
            }
            const ChildGuard child{ImGui::BeginChild("child", {100.0f, 50.0f})};
            ImGui::Button("inside");
        },
        [](ImGuiTestContext& user) {
            ImGui::SetClipboardText("old");
            user.ItemClick("//Window/**/inside");
            user.MouseMove("//Window/three/value", ImGuiTestOpFlags_NoFocusWindow);
            IM_CHECK(ImGui::GetCurrentContext()->NavWindow->Flags & ImGuiWindowFlags_ChildWindow);
            user.KeyPress(ImGuiMod_Super | ImGuiKey_C);
            IM_CHECK_STR_EQ(ImGui::GetClipboardText(), "[1,2,3]");
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

TEST_F(UiClipboardItem, AWindowInFrontOfTheValueDoesNotTakeTheKeys) {
    bool isCovered = false;
    EXPECT_TRUE(gui.run(
        "covered",
        [&] {
            draw([this] {
                const Scope scope{&ui, "three"};
                ImGui::Button("value");
                ui.valueContextMenu();
            });
            if(!isCovered) return;
            ImGui::SetNextWindowPos({0.0f, 0.0f});
            ImGui::SetNextWindowSize({300.0f, 300.0f});
            const WindowGuard front{ImGui::Begin("Front", nullptr, ImGuiWindowFlags_NoFocusOnAppearing)};
        },
        [&](ImGuiTestContext& user) {
            ImGui::SetClipboardText("old");
            user.WindowFocus("//Window");
            user.MouseMove("//Window/three/value");
            isCovered = true;
            user.Yield(2);
            ImGui::BringWindowToDisplayFront(ImGui::FindWindowByName("Front"));
            user.Yield(2);
            IM_CHECK_STR_EQ(ImGui::GetCurrentContext()->HoveredWindow->Name, "Front");
            IM_CHECK_STR_EQ(ImGui::GetCurrentContext()->NavWindow->Name, "Window");
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
    EXPECT_EQ(idleAllocations(item), 0u);
}

}
}
