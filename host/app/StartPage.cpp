#include "app/StartPage.h"

#include <imgui.h>

#include <icons_font_awesome_6.h>

#include "ImGuiGuards.h"
#include "app/Widgets.h"

namespace QuorvaneEngine::StartPage {

namespace {

/** One line for each project, whose path may be any text. */
void drawRecent(const std::vector<Containers::String>& recent, Choice& choice) {
    if(recent.empty()) return;
    ImGui::Spacing();
    Widgets::paleText("Opened before");
    for(std::size_t i = 0; i != recent.size(); ++i) {
        const IdGuard id{int(i)};
        const ImVec2 place = ImGui::GetCursorPos();
        if(ImGui::Selectable("##recent", false, ImGuiSelectableFlags_AllowOverlap)) choice.project = recent[i];
        ImGui::SetCursorPos(place);
        Widgets::text(recent[i]);
    }
}

}

Choice draw(const std::vector<Containers::String>& recent) {
    const ImGuiViewport& viewport = *ImGui::GetMainViewport();
    ImGui::SetNextWindowPos(viewport.WorkPos);
    ImGui::SetNextWindowSize(viewport.WorkSize);
    StyleGuard style;
    style.variable(ImGuiStyleVar_WindowRounding, 0.0f).variable(ImGuiStyleVar_WindowBorderSize, 0.0f);
    constexpr ImGuiWindowFlags Flags = ImGuiWindowFlags_NoDecoration | ImGuiWindowFlags_NoDocking |
        ImGuiWindowFlags_NoMove | ImGuiWindowFlags_NoSavedSettings | ImGuiWindowFlags_NoBringToFrontOnFocus;
    const WindowGuard window{ImGui::Begin("Start", nullptr, Flags)};
    Choice choice;
    if(!window) return choice;
    Widgets::centre(Widgets::scaled(460.0f), Widgets::scaled(150.0f));
    const Widgets::BlockScope block{Widgets::scaled(460.0f)};
    Widgets::heading(ICON_FA_FOLDER_OPEN, "No project is open");
    Widgets::paleText("A project is a folder with a file project.json in it.");
    ImGui::Spacing();
    choice.asks = Widgets::primaryButton("Open a project...");
    ImGui::SameLine();
    choice.begins = ImGui::Button("New project...");
    drawRecent(recent, choice);
    return choice;
}

}
