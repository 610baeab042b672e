#include "app/PathField.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include <Corrade/Utility/Format.h>
#include <imgui.h>

#include "ImGuiGuards.h"
#include "app/MessagePanel.h"
#include "app/Widgets.h"

namespace QuorvaneEngine {

namespace {

constexpr std::size_t Capacity = 4096;

}

PathField::PathField(const char* const hint): _hint{hint}, _text{Corrade::ValueInit, Capacity} {}

Containers::String PathField::path() const {
    Containers::StringView typed = text();
    while(typed.size() > 1 && typed.hasSuffix('/')) typed = typed.exceptSuffix(1);
    const char* const home = std::getenv("HOME");
    const bool isBelowHome = typed == "~" || typed.hasPrefix("~/");
    return home && isBelowHome ? Containers::StringView{home} + typed.exceptPrefix(1) : Containers::String{typed};
}

Containers::String PathField::set(const Containers::StringView text) {
    if(text.size() >= _text.size()) return Corrade::Utility::format("{}: is too long a path", text.prefix(100));
    std::copy(text.begin(), text.end(), _text.begin());
    _text[text.size()] = '\0';
    return {};
}

PathField::Key PathField::draw(const float width) {
    if(std::exchange(_takesFocus, false)) ImGui::SetKeyboardFocusHere();
    ImGui::SetNextItemWidth(width);
    constexpr ImGuiInputTextFlags Flags = ImGuiInputTextFlags_EnterReturnsTrue | ImGuiInputTextFlags_AutoSelectAll;
    if(ImGui::InputTextWithHint("##path", _hint, _text.data(), _text.size(), Flags)) return Key::Enter;
    // The field has the keyboard from the start, and a dialog goes with the first Escape.
    return ImGui::IsItemDeactivated() && ImGui::IsKeyPressed(ImGuiKey_Escape, false) ? Key::Escape : Key::None;
}

void PathField::drawReason(const Containers::StringView reason) {
    {
        StyleGuard style;
        style.color(ImGuiCol_Text, MessagePanel::color(MessageLog::Severity::Error));
        ImGui::TextUnformatted(MessagePanel::icon(MessageLog::Severity::Error));
    }
    ImGui::SameLine();
    Widgets::text(reason);
}

}
