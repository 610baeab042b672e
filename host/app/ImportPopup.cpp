#include "app/ImportPopup.h"

#include <algorithm>
#include <utility>

#include <Corrade/Containers/GrowableArray.h>
#include <imgui.h>

#include <icons_font_awesome_6.h>

#include "ImGuiGuards.h"
#include "ImGuiText.h"
#include "QuorvaneEditor/AllLanguages.h"
#include "QuorvaneEditor/Utils.h"
#include "Ui/Ui.h"
#include "app/ImportPreview.h"
#include "app/ProgressBox.h"
#include "app/Widgets.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

constexpr const char* Name = "Preview Import";

constexpr float Width = ProgressBox::Width;
constexpr std::size_t SearchCapacity = 64;

/** More reasons than these are left to the report. */
constexpr std::size_t MaxReasons = 8;

bool matches(const Language& language, Containers::StringView search) {
    return Utils::caseInsensitiveSearch(language.name, search) != -1 ||
        Utils::caseInsensitiveSearch(language.code, search) != -1;
}

}

ImportPopup::ImportPopup(): _language{FallbackLanguage}, _search{Corrade::ValueInit, SearchCapacity} {}

void ImportPopup::open(const Containers::StringView path, const bool asksForLanguage) {
    _isOpen = true;
    _path.takeFocus();
    _asksForLanguage = asksForLanguage;
    _language = FallbackLanguage;
    _reasons = {};
    _path.set({});
    setPath(path);
}

void ImportPopup::refuse(Containers::Array<Containers::String>&& reasons) {
    _reasons = std::move(reasons);
    _path.takeFocus();
}

void ImportPopup::setPath(const Containers::StringView path) {
    _reasons = {};
    Containers::String reason = _path.set(path);
    if(!reason.isEmpty()) Containers::arrayAppend(_reasons, std::move(reason));
}

ImportPopup::Request ImportPopup::draw(const ImportPreview& preview) {
    const bool isShown = _isOpen || preview.isRunning();
    if(!isShown && !ImGui::IsPopupOpen(Name)) return Request::None;
    // It would take the place of any popup that is open, and so waits until there is none.
    if(!ImGui::IsPopupOpen(nullptr, ImGuiPopupFlags_AnyPopup)) ImGui::OpenPopup(Name);
    ImGui::SetNextWindowPos(ImGui::GetMainViewport()->GetWorkCenter(), ImGuiCond_Always, {0.5f, 0.5f});
    StyleGuard style;
    style.variable(ImGuiStyleVar_WindowPadding, ImVec2{Widgets::scaled(20.0f), Widgets::scaled(16.0f)});
    const PopupGuard modal{ImGui::BeginPopupModal(
        Name, nullptr, ImGuiWindowFlags_AlwaysAutoResize | ImGuiWindowFlags_NoSavedSettings | ImGuiWindowFlags_NoMove)};
    if(!modal) return Request::None;
    if(!isShown) {
        ImGui::CloseCurrentPopup();
        return Request::None;
    }
    return preview.isRunning() ? drawProgress(preview) : drawQuestion();
}

ImportPopup::Request ImportPopup::drawQuestion() {
    {
        const Widgets::BlockScope block{Widgets::scaled(Width)};
        Widgets::heading(ICON_FA_FILE_IMPORT, "See what an import would do");
        Widgets::text("A folder or a ZIP archive with i18next files, such as de/translation.json. "
                      "Nothing changes before you press \"Apply\" in the report."_s);
        ImGui::Spacing();
    }
    Request request = drawPath();
    if(_asksForLanguage) drawLanguage();
    drawReasons();
    ImGui::Spacing();
    ImGui::Separator();
    ImGui::Spacing();
    if(Widgets::primaryButton("Preview")) request = Request::Start;
    ImGui::SameLine();
    if(ImGui::Button("Cancel") || ImGui::Shortcut(ImGuiKey_Escape)) request = Request::Cancel;
    return request;
}

ImportPopup::Request ImportPopup::drawPath() {
    Request request = Request::None;
    switch(_path.draw(Widgets::scaled(Width))) {
    case PathField::Key::None: break;
    case PathField::Key::Enter: request = Request::Start; break;
    case PathField::Key::Escape: request = Request::Cancel; break;
    }
    if(ImGui::Button(ICON_FA_FOLDER_OPEN "  Choose a folder...###Folder")) request = Request::ChooseFolder;
    ImGui::SameLine();
    if(ImGui::Button(ICON_FA_FILE_ZIPPER "  Choose a ZIP archive...###Archive")) request = Request::ChooseArchive;
    return request;
}

void ImportPopup::drawLanguage() {
    ImGui::Spacing();
    ImGui::AlignTextToFramePadding();
    Widgets::text("The project has no languages yet. Its default language:"_s);
    ImGui::SameLine();
    const float right = ImGui::GetStyle().WindowPadding.x + Widgets::scaled(Width);
    ImGui::SetNextItemWidth(right - ImGui::GetCursorPosX());
    if(const ComboGuard combo{ImGui::BeginCombo("##language", ImGuiText{AllLanguages[_language].name})}; combo)
        drawLanguages();
    else _search[0] = '\0';
}

void ImportPopup::drawLanguages() {
    if(ImGui::IsWindowAppearing()) ImGui::SetKeyboardFocusHere();
    ImGui::SetNextItemWidth(-1.0f);
    ImGui::InputTextWithHint("##search", "Search", _search.data(), _search.size());
    for(UnsignedInt i = 0; i != LanguageCount; ++i) {
        const Language& language = AllLanguages[i];
        if(!matches(language, _search.data())) continue;
        if(ImGui::Selectable(ImGuiText{language.name}, i == _language)) _language = i;
        ImGui::SameLine();
        Widgets::paleText(language.code);
    }
}

void ImportPopup::drawReasons() const {
    if(_reasons.isEmpty()) return;
    ImGui::Spacing();
    const Widgets::BlockScope block{Widgets::scaled(Width)};
    for(const Containers::String& reason: Containers::arrayView(_reasons).prefix(std::min(_reasons.size(), MaxReasons)))
        PathField::drawReason(reason);
    if(_reasons.size() > MaxReasons) ImGui::Text("and %zu more, which the report has", _reasons.size() - MaxReasons);
}

ImportPopup::Request ImportPopup::drawProgress(const ImportPreview& preview) {
    const bool reads = preview.state() == ImportPreview::State::Reading;
    const ProgressBox::Texts texts{ICON_FA_FILE_IMPORT,
        reads ? "Reading and checking the files" : "Comparing with the project", preview.path(),
        preview.isApplying() ? "Once more, because the project has changed since the preview."_s : ""_s};
    return ProgressBox::draw(texts, preview.progress()) ? Request::Cancel : Request::None;
}

}
