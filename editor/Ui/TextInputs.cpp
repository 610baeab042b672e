#include <imgui.h>
#include <imgui_internal.h>

#include "ChangeManager.h"
#include "ImGuiGuards.h"
#include "ImGuiText.h"
#include "QuorvaneEditor/JsonObject.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "Ui/Scope.h"
#include "Ui/TextBuffer.h"
#include "Ui/Ui.h"

namespace QuorvaneEngine {

namespace {

constexpr ImGuiInputTextFlags RenameFlags =
    ImGuiInputTextFlags_CallbackResize | ImGuiInputTextFlags_EnterReturnsTrue | ImGuiInputTextFlags_AutoSelectAll;

/** Whether a button was clicked somewhere else than on the last item. */
bool isClickedElsewhere(const ImGuiMouseButton button) {
    return ImGui::IsMouseClicked(button) && !ImGui::IsItemHovered();
}

/** Takes back that an input asked for the keyboard, where something that is drawn before has it since. That would lose its click, and
    the input its text. */
void takeBackRequest(const ImGuiID input) {
    ImGuiContext& context = *ImGui::GetCurrentContext();
    if(context.ActiveId && context.ActiveId != input && context.NavActivateId == input) context.NavActivateId = 0;
}

/** Whether the text of an input that has or just had the keyboard is the one that it began with. The value may be another one by
    now. */
bool isTextOfBeginning(const ImGuiID item, const Containers::StringView text) {
    const ImGuiInputTextState* const state = ImGui::GetInputTextState(item);
    return state && !state->TextToRevertTo.empty() && text == state->TextToRevertTo.Data;
}

bool drawInput(Containers::Array<char>& buffer, const bool isMultiline) {
    return isMultiline
        ? ImGui::InputTextMultiline("##val", buffer.data(), buffer.size(), ImGui::GetContentRegionAvail(),
              ImGuiInputTextFlags_CallbackResize, Ui::textResizeCallback, &buffer)
        : ImGui::InputText("##val", buffer.data(), buffer.size(), ImGuiInputTextFlags_CallbackResize,
              Ui::textResizeCallback, &buffer);
}

}

bool Ui::inputText(const Containers::StringView name) {
    const Scope scope{this, name};
    return editText(name, scopePath(), false).isChanged;
}

bool Ui::inputTextMultiline(const Containers::StringView name, const bool absolute, const bool returnOnCommit) {
    const Scope scope{this, name};
    const TextEdit edit = editText(name, absolute ? name : scopePath(), true);
    return returnOnCommit ? edit.isCommitted : edit.isChanged;
}

Ui::TextEdit Ui::editText(
    const Containers::StringView name, const Containers::StringView valuePath, const bool isMultiline) {
    const Containers::StringView stored = editableText(JsonObject{project->getValue(valuePath, false)}.asString());
    assignBuffer(editBuffer, stored);
    valueLabel(name);
    if(ImGui::GetCurrentWindow()->SkipItems) return {};

    const ImGuiID item = getId("##val");
    const bool differs = drawInput(editBuffer, isMultiline);
    const TextEdit edit = followText(item, stored, differs);
    if(edit.isCommitted) {
        changes->pushChange(valuePath, bufferText(pendingText), true);
        dropPendingText();
    }
    valueContextMenu(valuePath);
    return edit;
}

Ui::TextEdit Ui::followText(const unsigned item, const Containers::StringView stored, const bool differs) {
    TextEdit edit;
    // A new edit begins, the item was not there when the last one ended.
    if(ImGui::IsItemActivated() && pendingItem == item) dropPendingText();
    // The library tells in each frame that the text is not the stored one, and not that it is so again.
    if(differs || (pendingItem == item && ImGui::IsItemActive())) {
        edit.isChanged = keepPendingText(item, stored);
        if(edit.isChanged) _isPendingTyped = !isTextOfBeginning(item, bufferText(editBuffer));
    }
    if(!pendingText.isEmpty() && pendingItem == item && ImGui::IsItemDeactivated()) {
        edit.isCommitted = _isPendingTyped && bufferText(pendingText) != stored;
        if(!edit.isCommitted) dropPendingText();
    }
    return edit;
}

bool Ui::keepPendingText(const unsigned item, const Containers::StringView stored) {
    const Containers::StringView text = bufferText(editBuffer);
    if(text == (pendingItem == item ? bufferText(pendingText) : stored)) return false;
    if(pendingText.size() != editBuffer.size())
        pendingText = Containers::Array<char>{Corrade::ValueInit, editBuffer.size()};
    assignBuffer(pendingText, text);
    pendingItem = item;
    return true;
}

void Ui::dropPendingText() {
    pendingText = {};
    pendingItem = 0;
}

bool Ui::renameable(const Containers::StringView name, const bool absolute) {
    const Scope scope{this, name};
    const ImGuiID item = getId(name);
    const Containers::StringView valuePath = absolute ? name : scopePath();
    const Containers::StringView stored = editableText(JsonObject{project->getValue(valuePath, false)}.asString());
    if(renamingItem == item) return rename(valuePath, stored);

    const ImVec2 position = ImGui::GetCursorScreenPos();
    const ImVec2 size = calcTextSize(stored);
    if(ImGui::IsMouseDoubleClicked(ImGuiMouseButton_Left) &&
        ImGui::ItemHoverable({position, position + size}, item, ImGuiItemFlags_None))
        renamingItem = item;
    textUnformatted(stored);
    return false;
}

bool Ui::rename(const Containers::StringView valuePath, const Containers::StringView stored) {
    StyleGuard style;
    style.variable(ImGuiStyleVar_FramePadding, ImVec2{}).variable(ImGuiStyleVar_FrameBorderSize, 0.0f);
    assignBuffer(editBuffer, stored, 2);
    takeBackRequest(getId("##renameable"));
    const bool isEntered = ImGui::InputText(
        "##renameable", editBuffer.data(), editBuffer.size(), RenameFlags, textResizeCallback, &editBuffer);
    const bool isAccepted = isEntered || isClickedElsewhere(ImGuiMouseButton_Left);
    const bool isCancelled = ImGui::IsKeyPressed(ImGuiKey_Escape) || isClickedElsewhere(ImGuiMouseButton_Right);
    if(!isAccepted && !isCancelled) {
        // In every frame: it outbids the tab key, which would go on to the next input.
        ImGui::SetKeyboardFocusHere(-1);
        return false;
    }

    renamingItem = 0;
    // What was clicked instead may be active already.
    if(ImGui::IsItemActive()) ImGui::ClearActiveID();
    const Containers::StringView text = bufferText(editBuffer);
    if(isAccepted && text != stored) changes->pushChange(valuePath, text, true);
    return isAccepted;
}

}
