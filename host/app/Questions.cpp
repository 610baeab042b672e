#include "app/Questions.h"

#include <imgui.h>

#include <icons_font_awesome_6.h>

#include "ImGuiGuards.h"
#include "app/Widgets.h"

namespace QuorvaneEngine {

namespace {

constexpr float TextWidth = 520.0f;

/** Opens the dialog in the middle of the main window when it is not open yet. It would take the place of any popup that is open,
    and so waits until there is none. */
void prepare(const char* name) {
    if(!ImGui::IsPopupOpen(nullptr, ImGuiPopupFlags_AnyPopup)) ImGui::OpenPopup(name);
    ImGui::SetNextWindowPos(ImGui::GetMainViewport()->GetWorkCenter(), ImGuiCond_Appearing, {0.5f, 0.5f});
}

/** Room around what a dialog says. */
ImVec2 padding() { return {Widgets::scaled(20.0f), Widgets::scaled(16.0f)}; }

constexpr ImGuiWindowFlags Flags = ImGuiWindowFlags_AlwaysAutoResize | ImGuiWindowFlags_NoSavedSettings;

}

Answer Questions::draw() {
    Answer answer = Answer::None;
    if(_asksForUnsaved) answer = drawUnsaved();
    if(!_failure.isEmpty()) drawFailure();
    if(_showsAbout) drawAbout();
    return answer;
}

Answer Questions::drawUnsaved() {
    prepare("Unsaved changes");
    StyleGuard style;
    style.variable(ImGuiStyleVar_WindowPadding, padding());
    const PopupGuard modal{ImGui::BeginPopupModal("Unsaved changes", nullptr, Flags)};
    if(!modal) return Answer::None;
    {
        const Widgets::BlockScope block{Widgets::scaled(TextWidth)};
        Widgets::heading(ICON_FA_FLOPPY_DISK, "Save the changes of this project?");
        Widgets::text("What is not saved is lost.");
        ImGui::Spacing();
    }
    Answer answer = Answer::None;
    if(Widgets::primaryButton("Save")) answer = Answer::Save;
    ImGui::SameLine();
    if(ImGui::Button("Don't save")) answer = Answer::Discard;
    ImGui::SameLine();
    if(ImGui::Button("Cancel") || ImGui::Shortcut(ImGuiKey_Escape)) answer = Answer::Cancel;
    if(answer == Answer::None) return answer;
    _asksForUnsaved = false;
    ImGui::CloseCurrentPopup();
    return answer;
}

void Questions::drawFailure() {
    prepare("Project not opened");
    StyleGuard style;
    style.variable(ImGuiStyleVar_WindowPadding, padding());
    const PopupGuard modal{ImGui::BeginPopupModal("Project not opened", nullptr, Flags)};
    if(!modal) return;
    {
        const Widgets::BlockScope block{Widgets::scaled(TextWidth * 1.3f)};
        Widgets::heading(ICON_FA_TRIANGLE_EXCLAMATION, "This project cannot be opened");
        Widgets::text(_failure);
        ImGui::Spacing();
    }
    if(!Widgets::primaryButton("OK") && !ImGui::Shortcut(ImGuiKey_Escape)) return;
    _failure = {};
    ImGui::CloseCurrentPopup();
}

void Questions::drawAbout() {
    prepare("About");
    StyleGuard style;
    style.variable(ImGuiStyleVar_WindowPadding, padding());
    const PopupGuard modal{ImGui::BeginPopupModal("About", nullptr, Flags)};
    if(!modal) return;
    {
        const Widgets::BlockScope block{Widgets::scaled(TextWidth)};
        Widgets::heading(ICON_FA_LANGUAGE, "Quorvane editor");
        Widgets::text("Version " QUORVANE_VERSION);
        Widgets::paleText("The words of a game, in every language that it speaks.");
        ImGui::Spacing();
    }
    if(!Widgets::primaryButton("Close") && !ImGui::Shortcut(ImGuiKey_Escape)) return;
    _showsAbout = false;
    ImGui::CloseCurrentPopup();
}

}
