#include "app/StatusBar.h"

#include <algorithm>

#include <imgui.h>
#include <imgui_internal.h>

#include <icons_font_awesome_6.h>

#include "ImGuiGuards.h"
#include "app/MessageLog.h"
#include "app/MessagePanel.h"
#include "app/Theme.h"
#include "app/Widgets.h"

namespace QuorvaneEngine::StatusBar {

namespace {

void drawProject(Containers::StringView folder, bool unsaved) {
    Widgets::paleText(ICON_FA_FOLDER);
    ImGui::SameLine();
    if(folder.isEmpty()) {
        Widgets::paleText("No project");
        return;
    }
    Widgets::text(folder);
    ImGui::SameLine(0.0f, Widgets::scaled(16.0f));
    if(unsaved) {
        StyleGuard style;
        style.color(ImGuiCol_Text, Theme::color(Theme::Color::Caution));
        ImGui::TextUnformatted(ICON_FA_CIRCLE_DOT "  Unsaved changes");
    } else Widgets::paleText(ICON_FA_CHECK "  Saved");
}

void drawObstacle(Containers::StringView obstacle) {
    ImGui::SameLine(0.0f, Widgets::scaled(16.0f));
    {
        StyleGuard style;
        style.color(ImGuiCol_Text, Theme::color(Theme::Color::Caution));
        ImGui::TextUnformatted(ICON_FA_LOCK "  Read-only: another editor has this project");
    }
    if(ImGui::IsItemHovered()) ImGui::SetTooltip("%.*s", int(obstacle.size()), obstacle.data());
}

void drawFonts(Containers::StringView fonts) {
    ImGui::SameLine(0.0f, Widgets::scaled(16.0f));
    {
        const GroupGuard group;
        Widgets::paleText(ICON_FA_FONT);
        ImGui::SameLine();
        Widgets::paleText(fonts);
    }
    if(ImGui::IsItemHovered())
        ImGui::SetTooltip("Languages whose letters no font of this machine has cannot be drawn. Languages that need\n"
                          "shaping are shown letter by letter: not joined, from left to right.");
}

}

bool draw(Containers::StringView folder, bool unsaved, const MessageLog& log, Containers::StringView fonts,
    Containers::StringView obstacle) {
    StyleGuard style;
    style.color(ImGuiCol_WindowBg, ImGui::GetStyleColorVec4(ImGuiCol_MenuBarBg))
        .variable(ImGuiStyleVar_WindowPadding, ImVec2{Widgets::scaled(12.0f), Widgets::scaled(5.0f)})
        .variable(ImGuiStyleVar_WindowBorderSize, 0.0f);
    const float height = ImGui::GetFontSize() + Widgets::scaled(10.0f);
    constexpr ImGuiWindowFlags Flags = ImGuiWindowFlags_NoDecoration | ImGuiWindowFlags_NoSavedSettings;
    const WindowGuard bar{
        ImGui::BeginViewportSideBar("##status", ImGui::GetMainViewport(), ImGuiDir_Down, height, Flags)};
    if(!bar) return false;

    drawProject(folder, unsaved);
    if(!obstacle.isEmpty()) drawObstacle(obstacle);
    if(!fonts.isEmpty()) drawFonts(fonts);
    const MessageLog::Message* const message = log.last();
    if(!message) return false;
    ImGui::SameLine(0.0f, Widgets::scaled(32.0f));
    const char* const begin = message->text.begin();
    const char* const end = message->text.end();
    const char* const icon = MessagePanel::icon(message->severity);
    const float needed =
        ImGui::CalcTextSize(icon).x + ImGui::GetStyle().ItemSpacing.x + ImGui::CalcTextSize(begin, end).x;
    const float space = ImGui::GetContentRegionAvail().x;
    ImGui::SetCursorPosX(ImGui::GetCursorPosX() + std::max(space - needed, 0.0f));
    {
        StyleGuard style;
        style.color(ImGuiCol_Text, MessagePanel::color(message->severity));
        ImGui::TextUnformatted(icon);
    }
    ImGui::SameLine();
    const ImVec2 position = ImGui::GetCursorScreenPos();
    const ImVec2 size{std::max(ImGui::GetContentRegionAvail().x, 1.0f), ImGui::GetFontSize()};
    const bool clicked = ImGui::InvisibleButton("##message", size);
    if(ImGui::IsItemHovered()) ImGui::SetMouseCursor(ImGuiMouseCursor_Hand);
    ImGui::RenderTextEllipsis(ImGui::GetWindowDrawList(), position, {position.x + size.x, position.y + size.y},
        position.x + size.x, begin, end, nullptr);
    return clicked;
}

}
