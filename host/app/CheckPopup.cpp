#include "app/CheckPopup.h"

#include <utility>

#include <imgui.h>

#include <icons_font_awesome_6.h>

#include "ImGuiGuards.h"
#include "app/ProgressBox.h"
#include "app/TermCheck.h"
#include "app/Widgets.h"

namespace QuorvaneEngine {

namespace {

constexpr const char* Name = "Check Terms";

}

CheckPopup::Request CheckPopup::draw(const TermCheck& check) {
    const bool isShown = _isAsked || check.isRunning();
    if(!isShown && !ImGui::IsPopupOpen(Name)) return Request::None;
    if(!ImGui::IsPopupOpen(nullptr, ImGuiPopupFlags_AnyPopup)) ImGui::OpenPopup(Name);
    ImGui::SetNextWindowPos(ImGui::GetMainViewport()->GetWorkCenter(), ImGuiCond_Always, {0.5f, 0.5f});
    StyleGuard style;
    style.variable(ImGuiStyleVar_WindowPadding, ImVec2{Widgets::scaled(20.0f), Widgets::scaled(16.0f)});
    const PopupGuard modal{ImGui::BeginPopupModal(
        Name, nullptr, ImGuiWindowFlags_AlwaysAutoResize | ImGuiWindowFlags_NoSavedSettings | ImGuiWindowFlags_NoMove)};
    if(!modal) return Request::None;
    if(check.isRunning()) {
        constexpr ProgressBox::Texts Texts{ICON_FA_LIST_CHECK, "Checking the terms", {}, {}};
        return ProgressBox::draw(Texts, check.progress()) ? Request::Cancel : Request::None;
    }
    if(std::exchange(_isAsked, false)) return Request::Start;
    ImGui::CloseCurrentPopup();
    return Request::None;
}

}
