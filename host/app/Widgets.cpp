#include "app/Widgets.h"

#include <algorithm>

#include "ImGuiGuards.h"
#include "app/Theme.h"

namespace QuorvaneEngine::Widgets {

float scaled(float pixels) {
    const ImGuiStyle& style = ImGui::GetStyle();
    return pixels * style.FontScaleDpi * style.FontScaleMain;
}

void text(Containers::StringView text) { ImGui::TextUnformatted(text.begin(), text.end()); }

void paleText(Containers::StringView text) {
    StyleGuard style;
    style.color(ImGuiCol_Text, ImGui::GetStyleColorVec4(ImGuiCol_TextDisabled));
    Widgets::text(text);
}

void heading(const char* icon, const char* text) {
    ImGui::PushFont(nullptr, ImGui::GetStyle().FontSizeBase * 1.3f);
    {
        StyleGuard style;
        style.color(ImGuiCol_Text, ImGui::GetStyleColorVec4(ImGuiCol_TextLink));
        ImGui::TextUnformatted(icon);
    }
    ImGui::SameLine();
    ImGui::TextUnformatted(text);
    ImGui::PopFont();
    ImGui::Dummy({0.0f, scaled(2.0f)});
}

void centre(float width, float height) {
    const ImVec2 space = ImGui::GetContentRegionAvail();
    const ImVec2 cursor = ImGui::GetCursorPos();
    ImGui::SetCursorPos(
        {cursor.x + std::max((space.x - width) * 0.5f, 0.0f), cursor.y + std::max((space.y - height) * 0.4f, 0.0f)});
}

bool primaryButton(const char* label) {
    StyleGuard style;
    style.color(ImGuiCol_Button, Theme::color(Theme::Color::Primary))
        .color(ImGuiCol_ButtonHovered, Theme::color(Theme::Color::PrimaryHovered))
        .color(ImGuiCol_ButtonActive, Theme::color(Theme::Color::PrimaryPressed))
        .color(ImGuiCol_Text, Theme::color(Theme::Color::PrimaryLetters));
    return ImGui::Button(label);
}

}
