#include <algorithm>

#include <Corrade/Containers/GrowableArray.h>
#include <icons_font_awesome_6.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "ImGuiGuards.h"
#include "ImGuiText.h"
#include "LocalizationView.h"
#include "QuorvaneEditor/AllLanguages.h"
#include "QuorvaneEditor/EditorData.h"
#include "QuorvaneEditor/Utils.h"
#include "Ui/Ui.h"
#include "ViewState.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;
using namespace ViewState;

void LocalizationView::drawLanguagesTab(const bool refilter) {
    const bool searched = Ui::searchBar("languagesearch"_s, _searchBuffer, ImGui::GetContentRegionAvail().x,
        {0.0f, -Ui::scaled(4.0f)}, Ui::scaled(30.0f), false);
    if(searched || refilter) filterLanguages();

    const float buttonHeight = ImGui::CalcTextSize("Add Language").y + Ui::scaled(10.0f);
    const float space = ImGui::GetContentRegionAvail().y - buttonHeight - ImGui::GetCurrentWindow()->WindowPadding.y;
    {
        const ChildGuard body{ImGui::BeginChild("languagestablebody", {0.0f, std::min(lastTableHeight, space)})};
        drawLanguageTable();
        lastTableHeight = ImGui::GetItemRectSize().y;
    }

    if(ImGui::Button("Add Language", {ImGui::GetContentRegionAvail().x, buttonHeight})) {
        ImGui::OpenPopup("languageselect");
        _needsLanguageRefilter = true;
    }
    drawLanguagePopup();
}

void LocalizationView::filterLanguages() {
    const Containers::StringView search{_searchBuffer.data()};
    Containers::arrayResize<Containers::ArrayMallocAllocator>(_filteredLanguages, Corrade::NoInit, 0);
    for(UnsignedInt i = 0; i != _languages.size(); ++i) {
        const UnsignedInt language = _languages[i];
        if(language < LanguageCount && !search.isEmpty() &&
            Utils::caseInsensitiveSearch(AllLanguages[language].name, search) == -1 &&
            Utils::caseInsensitiveSearch(AllLanguages[language].code, search) == -1)
            continue;
        Containers::arrayAppend<Containers::ArrayMallocAllocator>(_filteredLanguages, i);
    }
    lastSearch = _editorData->storedRevision();
}

void LocalizationView::drawLanguageTable() {
    /* The identifier of the term table, on purpose. They are two tables all the same: each lies in a child window of its own */
    const TableGuard table{ImGui::BeginTable("termstable", 2, ImGuiTableFlags_Borders)};
    if(!table) return;
    ImGui::TableSetupColumn("Display Name", ImGuiTableColumnFlags_WidthStretch);
    ImGui::TableSetupColumn("Code", ImGuiTableColumnFlags_WidthFixed, Ui::scaled(100.0f));
    ImGui::TableHeadersRow();
    for(std::size_t row = 0; row != _filteredLanguages.size(); ++row) drawLanguageRow(row);
    drawLanguageContextMenu();
}

void LocalizationView::drawLanguageRow(const std::size_t row) {
    if(_filteredLanguages[row] >= _languages.size()) return;
    const UnsignedInt language = _languages[_filteredLanguages[row]];
    const bool known = language < LanguageCount;
    const bool isDefault = language == _defaultLanguage;
    const Containers::StringView name = known ? AllLanguages[language].name : "?"_s;

    ImGui::TableNextRow();
    ImGui::TableNextColumn();
    ImGui::Selectable(ImGuiText{"##"_s, name}, false,
        ImGuiSelectableFlags_SpanAllColumns | ImGuiSelectableFlags_AllowOverlap | ImGuiSelectableFlags_SpanAvailWidth);
    if(ImGui::IsItemClicked(ImGuiMouseButton_Right)) {
        ImGui::OpenPopup("languagecontextmenu");
        toRemovoveIndex = int(row);
    }
    if(isDefault) {
        ImGui::SameLine();
        ImGui::TextUnformatted(ICON_FA_STAR);
    }
    ImGui::SameLine();
    {
        StyleGuard style;
        style.color(ImGuiCol_Text, known ? ImVec4{1.0f, 1.0f, 1.0f, 1.0f} : ImVec4{1.0f, 0.0f, 0.0f, 1.0f});
        textUnformatted(name);
    }
    ImGui::TableNextColumn();
    textUnformatted(known ? AllLanguages[language].code : "?"_s);
}

void LocalizationView::drawLanguageContextMenu() {
    const PopupGuard menu{ImGui::BeginPopup("languagecontextmenu")};
    if(!menu) return;
    if(!ImGui::MenuItem("Remove", "", false, _languages.size() > 1)) return;

    /* The row of the filtered list, although the list that it is removed from is not filtered: required so */
    if(toRemovoveIndex >= 0 && std::size_t(toRemovoveIndex) < _languages.size())
        Containers::arrayRemove<Containers::ArrayMallocAllocator>(_languages, std::size_t(toRemovoveIndex));
    toRemovoveIndex = -1;
    _needsRefilter = true;
}

}
