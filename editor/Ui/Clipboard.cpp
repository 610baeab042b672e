#include <algorithm>

#include <Corrade/Containers/String.h>
#include <Corrade/Utility/Debug.h>
#include <imgui.h>
#include <rapidjson/document.h>

#include "ChangeManager.h"
#include "ImGuiGuards.h"
#include "ImGuiText.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "QuorvaneEditor/RapidJsonUtils.h"
#include "Ui/PastedJson.h"
#include "Ui/Ui.h"

namespace QuorvaneEngine {

using Corrade::Utility::Debug;
using Corrade::Utility::Warning;

namespace {

/** Characters of the icon font. */
constexpr char CopyLabel[] = "\xef\x83\x85 Copy";
constexpr char PasteLabel[] = "\xef\x83\xaa Paste";

/** A project whose containers lie deeper in each other could not be opened again. */
constexpr UnsignedInt MaxDepth = 256;

bool areShortcutsMeant() {
    return !ImGui::IsItemActive() && ImGui::IsItemHovered(ImGuiHoveredFlags_AllowWhenOverlappedByWindow) &&
        Ui::shortcutKeyPressed() && ImGui::IsWindowFocused(ImGuiFocusedFlags_RootAndChildWindows);
}

/** Whether a value fits in the place of another one; prints a warning where it does not. */
bool fits(const rapidjson::Value& pasted, const rapidjson::Value& target) {
    if(pasted.GetType() != target.GetType()) {
        Warning{} << "Pasted value did not match type of the target property.";
        return false;
    }
    if(pasted.IsArray() && pasted.Size() != target.Size()) {
        Warning{} << "Pasted value array size did not match, expected" << target.Size() << "but got" << pasted.Size();
        return false;
    }
    return true;
}

}

void Ui::valueContextMenu() { valueContextMenu(scopePath()); }

void Ui::valueContextMenu(const Containers::StringView valuePath) {
    if(const PopupGuard popup{ImGui::BeginPopupContextItem(ImGuiText{scopePath()}, ImGuiPopupFlags_MouseButtonRight)}) {
        if(ImGui::MenuItem(CopyLabel, "Cmd + C")) copyValue(valuePath);
        if(ImGui::MenuItem(PasteLabel, "Cmd + V")) pasteValue(valuePath);
    }
    if(!areShortcutsMeant()) return;
    if(ImGui::IsKeyPressed(ImGuiKey_C)) {
        copyValue(valuePath);
        setTooltip("Copied!");
    }
    if(ImGui::IsKeyPressed(ImGuiKey_V)) pasteValue(valuePath);
}

void Ui::copyValue() { copyValue(scopePath()); }

void Ui::copyValue(const Containers::StringView valuePath) {
    const rapidjson::Value null;
    const rapidjson::Value* const value = project->getValue(valuePath, false);
    Containers::String json;
    // Complete when the output ends.
    Debug{&json, Debug::Flag::NoNewlineAtTheEnd} << (value ? *value : null);
    const char* const text = json.data();
    ImGui::SetClipboardText(text);
}

void Ui::pasteValue() { pasteValue(scopePath()); }

void Ui::pasteValue(const Containers::StringView valuePath) {
    const char* const text = ImGui::GetClipboardText();
    const auto containers = UnsignedInt(std::count(valuePath.begin(), valuePath.end(), '/'));
    rapidjson::Document pasted;
    if(!text || !readPastedJson(text, MaxDepth - std::min(containers, MaxDepth), pasted)) {
        Warning{} << "Cannot parse pasted value.";
        return;
    }
    const rapidjson::Value null;
    const rapidjson::Value* const target = project->getValue(valuePath, false);
    if(fits(pasted, target ? *target : null)) changes->pushChange(valuePath, pasted, false);
}

}
