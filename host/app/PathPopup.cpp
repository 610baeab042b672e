#include "app/PathPopup.h"

#include <utility>

#include <imgui.h>

#include <icons_font_awesome_6.h>

#include "ImGuiGuards.h"
#include "app/Widgets.h"

namespace QuorvaneEngine {

namespace {

constexpr float Width = 560.0f;

}

void PathPopup::open(const Form& form, const Containers::StringView path, const bool hasDialog) {
    _form = _shown = &form;
    _hasDialog = hasDialog;
    _field.set({});
    setPath(path);
    _field.takeFocus();
}

void PathPopup::refuse(Containers::String reason, const char* const offer) {
    _reason = std::move(reason);
    _offer = offer;
    _field.takeFocus();
}

void PathPopup::setPath(const Containers::StringView path) {
    _reason = _field.set(path);
    _offer = nullptr;
}

PathPopup::Request PathPopup::draw() {
    if(!_shown) return Request::None;
    // It would take the place of any popup that is open, and so waits until there is none.
    if(_form && !ImGui::IsPopupOpen(nullptr, ImGuiPopupFlags_AnyPopup)) ImGui::OpenPopup(_form->name);
    ImGui::SetNextWindowPos(ImGui::GetMainViewport()->GetWorkCenter(), ImGuiCond_Always, {0.5f, 0.5f});
    StyleGuard style;
    style.variable(ImGuiStyleVar_WindowPadding, ImVec2{Widgets::scaled(20.0f), Widgets::scaled(16.0f)});
    const PopupGuard modal{ImGui::BeginPopupModal(_shown->name, nullptr,
        ImGuiWindowFlags_AlwaysAutoResize | ImGuiWindowFlags_NoSavedSettings | ImGuiWindowFlags_NoMove)};
    if(!_form) {
        if(modal) ImGui::CloseCurrentPopup();
        _shown = nullptr;
        return Request::None;
    }
    return modal ? drawForm() : Request::None;
}

PathPopup::Request PathPopup::drawForm() {
    {
        const Widgets::BlockScope block{Widgets::scaled(Width)};
        Widgets::heading(_form->icon, _form->heading);
        Widgets::text(_form->text);
        ImGui::Spacing();
    }
    Request request = Request::None;
    switch(_field.draw(Widgets::scaled(Width))) {
    case PathField::Key::None: break;
    case PathField::Key::Enter: request = Request::Accept; break;
    case PathField::Key::Escape: request = Request::Cancel; break;
    }
    if(_hasDialog && ImGui::Button(ICON_FA_FOLDER_OPEN "  Choose a folder...###Choose")) request = Request::Choose;
    if(!_reason.isEmpty()) {
        ImGui::Spacing();
        const Widgets::BlockScope block{Widgets::scaled(Width)};
        PathField::drawReason(_reason);
    }
    ImGui::Spacing();
    ImGui::Separator();
    ImGui::Spacing();
    if(Widgets::primaryButton(_form->accept)) request = Request::Accept;
    ImGui::SameLine();
    if(_offer) {
        if(ImGui::Button(_offer)) request = Request::Other;
        ImGui::SameLine();
    }
    if(ImGui::Button("Cancel") || ImGui::Shortcut(ImGuiKey_Escape)) request = Request::Cancel;
    return request;
}

}
