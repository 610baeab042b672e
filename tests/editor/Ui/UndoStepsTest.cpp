#include <string>

#include <Corrade/Containers/StringIterable.h>
#include <gtest/gtest.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "BoundUi.h"
#include "QuorvaneEditor/EditorData.h"
#include "Ui/Scope.h"

namespace QuorvaneEngine::Test {
namespace {

/** What somebody does in one go with the mouse or the keys, in a window with one widget. */
struct Gesture {
    const char* name;
    void (*draw)(Ui& ui);
    void (*act)(ImGuiTestContext& user);
};

void PrintTo(const Gesture& gesture, std::ostream* stream) { *stream << gesture.name; }

/** Where what is edited stands, and what it is beforehand. */
constexpr const char* Project =
    R"({"v":{"float":1.5,"floats":[1,2,3,4],"int":5,"ints":[1,2,3,4],"rgb":[0.1,0.2,0.3],"rgba":[0.1,0.2,0.3,0.4],)"
    R"("flag":false,"bits":5,"kind":"point","text":"a keeper","lines":"one\ntwo","texture":"t1"},)"
    R"("textures":{"t1":{"name":"Rock"},"t2":{"name":"Grass"}},"first":false})";

constexpr std::initializer_list<float> Steps{15.0f, 12.0f, 9.0f, -4.0f, 20.0f};

void dragOver(ImGuiTestContext& user, const char* item) {
    user.MouseMove(item);
    user.MouseDown();
    for(const float step: Steps) {
        const ImVec2 position = ImGui::GetMousePos();
        user.MouseMoveToPos({position.x + step, position.y});
        user.Yield();
    }
    user.MouseUp();
    user.Yield();
}

/** Letter by letter, with a change of mind, until the field is left. */
void typeInto(ImGuiTestContext& user, const char* item, const char* text) {
    user.ItemInput(item);
    user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_A);
    for(const char* letter = text; *letter; ++letter) {
        const char one[]{*letter, '\0'};
        user.KeyChars(one);
        user.Yield();
    }
    user.KeyPress(ImGuiKey_Backspace);
    user.KeyPress(ImGuiKey_LeftArrow);
    user.KeyPress(ImGuiKey_Delete);
    user.KeyChars("7");
    user.Yield();
    user.ItemClick("//Window/elsewhere");
    user.Yield(2);
}

constexpr Gesture Gestures[]{
    {"DragOfFloat", [](Ui& ui) { ui.inputFloat("float", 0.0f, 1000.0f, 0.5f, 2.0f); },
        [](ImGuiTestContext& user) { dragOver(user, "//Window/v/float/##val"); }},
    {"DragOfFloat2", [](Ui& ui) { ui.inputFloat2("floats", 0.0f, 1000.0f, 0.5f, 2.0f); },
        [](ImGuiTestContext& user) { dragOver(user, "//Window/v/floats/##val/$$1"); }},
    {"DragOfFloat3", [](Ui& ui) { ui.inputFloat3("floats", 0.0f, 1000.0f, 0.5f, 2.0f); },
        [](ImGuiTestContext& user) { dragOver(user, "//Window/v/floats/##val/$$2"); }},
    {"DragOfFloat4", [](Ui& ui) { ui.inputFloat4("floats", 0.0f, 1000.0f, 0.5f, 2.0f); },
        [](ImGuiTestContext& user) { dragOver(user, "//Window/v/floats/##val/$$3"); }},
    {"DragOfInt", [](Ui& ui) { ui.inputInt("int", 0, 1000, 0.5f, 2.0f); },
        [](ImGuiTestContext& user) { dragOver(user, "//Window/v/int/##val"); }},
    {"DragOfInt2", [](Ui& ui) { ui.inputInt2("ints", 0, 1000, 0.5f, 2.0f); },
        [](ImGuiTestContext& user) { dragOver(user, "//Window/v/ints/##val/$$1"); }},
    {"DragOfInt3", [](Ui& ui) { ui.inputInt3("ints", 0, 1000, 0.5f, 2.0f); },
        [](ImGuiTestContext& user) { dragOver(user, "//Window/v/ints/##val/$$2"); }},
    {"DragOfInt4", [](Ui& ui) { ui.inputInt4("ints", 0, 1000, 0.5f, 2.0f); },
        [](ImGuiTestContext& user) { dragOver(user, "//Window/v/ints/##val/$$3"); }},
    {"TypedFloat", [](Ui& ui) { ui.inputFloat("float", 0.0f, 1000.0f, 0.5f, 2.0f); },
        [](ImGuiTestContext& user) { user.ItemInputValue("//Window/v/float/##val", 12.25f); }},
    {"TypedInt", [](Ui& ui) { ui.inputInt("int", 0, 1000, 0.5f, 2.0f); },
        [](ImGuiTestContext& user) { user.ItemInputValue("//Window/v/int/##val", 123); }},
    {"DragOfColor3", [](Ui& ui) { ui.colorEdit3("rgb"); },
        [](ImGuiTestContext& user) { dragOver(user, "//Window/v/rgb/##val/##Y"); }},
    {"DragOfColor4", [](Ui& ui) { ui.colorEdit4("rgba"); },
        [](ImGuiTestContext& user) { dragOver(user, "//Window/v/rgba/##val/##W"); }},
    {"DragInTheColorPicker", [](Ui& ui) { ui.colorEdit4("rgba"); },
        [](ImGuiTestContext& user) {
            user.ItemClick("//Window/v/rgba/##val/##ColorButton");
            user.Yield();
            dragOver(user, "//$FOCUSED/##picker/sv");
            user.PopupCloseAll();
            user.Yield();
        }},
    {"Checkbox", [](Ui& ui) { ui.checkbox("flag"); },
        [](ImGuiTestContext& user) { user.ItemClick("//Window/v/flag/flag"); }},
    {"CheckboxUnlabled", [](Ui& ui) { ui.checkboxUnlabled("flag"); },
        [](ImGuiTestContext& user) { user.ItemClick("//Window/v/flag/##flag"); }},
    {"CheckboxBit", [](Ui& ui) { ui.checkboxBit("bits", 1, "bit"); },
        [](ImGuiTestContext& user) { user.ItemClick("**/bit"); }},
    {"CheckboxBits", [](Ui& ui) { ui.checkboxBits("bits", 4, {}); },
        [](ImGuiTestContext& user) { user.ItemClick("**/3"); }},
    {"Enum",
        [](Ui& ui) {
            ui.inputEnum("kind", {"point", "sun"});
        },
        [](ImGuiTestContext& user) {
            user.ItemClick("//Window/v/kind/##val");
            user.ItemClick("//$FOCUSED/$$1/sun");
        }},
    {"TypedText", [](Ui& ui) { ui.inputText("text"); },
        [](ImGuiTestContext& user) { typeInto(user, "//Window/v/text/##val", "lamp"); }},
    {"TypedLines",
        [](Ui& ui) {
            const ChildGuard child{ImGui::BeginChild("lines", {0.0f, 100.0f})};
            ui.inputTextMultiline("lines", false, false);
        },
        [](ImGuiTestContext& user) { typeInto(user, "**/##val", "three"); }},
    {"TypedPath", [](Ui& ui) { ui.fileSelect("text", "Choose", {}); },
        [](ImGuiTestContext& user) { typeInto(user, "//Window/v/text/##value", "lamp.png"); }},
    {"Rename", [](Ui& ui) { ui.renameable("text", false); },
        [](ImGuiTestContext& user) {
            const ImVec2 start = ImGui::FindWindowByName("Window")->WorkRect.Min;
            user.MouseMoveToPos({start.x + 4.0f, start.y + 4.0f});
            user.MouseDoubleClick();
            user.Yield(2);
            user.KeyChars("Ada");
            user.KeyPress(ImGuiKey_Backspace);
            user.KeyPress(ImGuiKey_Enter);
            user.Yield(2);
        }},
    {"ChosenResource", [](Ui& ui) { ui.selectResource("texture", "textures", false); },
        [](ImGuiTestContext& user) {
            user.ItemClick("//Window/v/texture/##val");
            user.Yield(3);
            user.ItemClick("**/##t2");
            user.Yield();
        }},
    {"DroppedResource",
        [](Ui& ui) {
            ui.selectResource("texture", "textures", false);
            ImGui::Button("source");
            Ui::resourceDragDropSource("textures", "t2", "Grass");
        },
        [](ImGuiTestContext& user) {
            user.ItemDragAndDrop("//Window/v/source", "//Window/v/texture/##val");
            user.Yield();
        }},
    {"Paste", [](Ui& ui) { ui.inputFloat3("floats", 0.0f, 0.0f, 0.5f, 2.0f); },
        [](ImGuiTestContext& user) {
            ImGui::SetClipboardText("[7,8,9,10]");
            user.MouseMove("//Window/v/floats/##val/$$1");
            user.KeyPress(ImGuiMod_Super | ImGuiKey_V);
            user.Yield();
        }},
};

class UiUndoSteps: public BoundUi, public testing::WithParamInterface<Gesture> {
protected:
    UiUndoSteps() {
        ui.editorData = &data;
        loadProject(Project);
    }

    bool play() {
        return run(
            [this] {
                {
                    const Scope scope{&ui, "v"};
                    GetParam().draw(ui);
                }
                ImGui::Button("elsewhere");
            },
            GetParam().act);
    }

    EditorData data{project};
};

INSTANTIATE_TEST_SUITE_P(
    Widgets, UiUndoSteps, testing::ValuesIn(Gestures), [](const auto& info) { return info.param.name; });

TEST_P(UiUndoSteps, WhatIsDoneInOneGoIsOneStep) {
    EXPECT_TRUE(play());
    EXPECT_EQ(recorded(), 1);
    const std::string edited = toText(project);
    EXPECT_NE(edited, loaded);
    changes.undoLast();
    EXPECT_EQ(toText(project), loaded);
    changes.redoLastUndo();
    EXPECT_EQ(toText(project), edited);
    expectUndoAndRedo();
}

/* Whatever is merged: what was undone does not come back by an edit that follows. */
TEST_P(UiUndoSteps, WhatIsUndoneAndDoneAgainIsOneStepAgain) {
    EXPECT_TRUE(play());
    const std::string edited = toText(project);
    changes.undoLast();
    EXPECT_TRUE(play());
    EXPECT_EQ(toText(project), edited);
    EXPECT_EQ(recorded(), 1);
    expectUndoAndRedo();
}

}
}
