#include <algorithm>

#include <Corrade/Containers/String.h>
#include <Corrade/Utility/Debug.h>
#include <imgui.h>
#include <imgui_internal.h>
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

/** The menu takes the keyboard from the item that it belongs to when that is drawn already. The library, for which it is still the
    last item, takes that for the item's own doing and forgets it with the frame, and what was typed with it. */
void postponeDeactivation(const ImGuiID item) {
    ImGuiDeactivatedItemData& deactivated = ImGui::GetCurrentContext()->DeactivatedItemData;
    if(deactivated.ID == item) deactivated.ElapseFrame = ImGui::GetFrameCount() + 1;
}

/** Whether a value fits in the place of another one; prints a warning where it does not.
    @param place    null for none, in which nothing fits */
bool fits(const rapidjson::Value& pasted, const rapidjson::Value* const place) {
    if(!place || pasted.GetType() != place->GetType()) {
        Warning{} << "Pasted value did not match type of the target property.";
        return false;
    }
    if(pasted.IsArray() && pasted.Size() != place->Size()) {
        Warning{} << "Pasted value array size did not match, expected" << place->Size() << "but got" << pasted.Size();
        return false;
    }
    return true;
}

}

void Ui::valueContextMenu() { valueContextMenu(scopePath()); }

void Ui::valueContextMenu(const Containers::StringView valuePath) {
    const ImGuiID typedIn = ImGui::GetActiveID();
    if(const PopupGuard popup{ImGui::BeginPopupContextItem(ImGuiText{scopePath()}, ImGuiPopupFlags_MouseButtonRight)}) {
        if(typedIn && !ImGui::GetActiveID()) postponeDeactivation(typedIn);
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
    if(fits(pasted, project->getValue(valuePath, false))) changes->pushChange(valuePath, pasted, false);
}

}
