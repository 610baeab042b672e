#include <algorithm>

#include <Corrade/Containers/GrowableArray.h>
#include <imgui.h>

#include "ImGuiGuards.h"
#include "ImGuiText.h"
#include "LocalizationView.h"
#include "QuorvaneEditor/AllLanguages.h"
#include "QuorvaneEditor/Utils.h"
#include "Ui/Ui.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

/* The keyboard's cursor counts as hovering, too: it begins in the search field, whose tooltip would cover the first results */
bool isUnderMouse() { return ImGui::IsItemHovered(ImGuiHoveredFlags_NoNavOverride); }

}

void LocalizationView::drawLanguagePopup() {
    const ImVec2 buttonMin = ImGui::GetItemRectMin();
    const ImVec2 buttonMax = ImGui::GetItemRectMax();
    ImGui::SetNextWindowSize({buttonMax.x - buttonMin.x,
        ImGui::GetMainViewport()->Size.y - buttonMin.y - 2.0f * ImGui::GetTextLineHeight()});
    ImGui::SetNextWindowPos({buttonMin.x, buttonMax.y}, ImGuiCond_Always, {0.0f, 0.0f});
    const PopupGuard popup{ImGui::BeginPopup("languageselect")};
    if(!popup) return;

    _needsLanguageRefilter |= Ui::searchBar("languagesearch"_s, _languageSearchBuffer, ImGui::GetContentRegionAvail().x,
        {0.0f, -Ui::scaled(4.0f)}, Ui::scaled(30.0f), true);
    if(isUnderMouse()) ImGui::SetTooltip("You can search for language or code.");
    if(_needsLanguageRefilter) filterMissingLanguages();
    _needsLanguageRefilter = false;

    bool added = false;
    {
        const ChildGuard region{ImGui::BeginChild("##scrollingregion")};
        const float rowHeight = ImGui::CalcTextSize("").y + Ui::scaled(2.0f);
        /* The clipper's rows are as high as a row and its spacing: with any other spacing the last ones were cut */
        StyleGuard style;
        style.variable(ImGuiStyleVar_ItemSpacing, ImVec2{ImGui::GetStyle().ItemSpacing.x, Ui::scaled(2.0f)});
        ImGuiListClipper clipper;
        clipper.Begin(int(_languageSearchResults.size()), rowHeight + Ui::scaled(2.0f));
        while(clipper.Step())
            for(int i = clipper.DisplayStart; i != clipper.DisplayEnd; ++i) {
                const UnsignedInt language = _languageSearchResults[std::size_t(i)];
                if(ImGui::Selectable(
                       ImGuiText{AllLanguages[language].name}, false, ImGuiSelectableFlags_None, {0.0f, rowHeight})) {
                    Containers::arrayAppend<Containers::ArrayMallocAllocator>(_languages, language);
                    _needsRefilter = true;
                    added = true;
                }
                const Containers::StringView code = AllLanguages[language].code;
                if(isUnderMouse()) ImGui::SetTooltip("id: %.*s", int(code.size()), code.data());
            }
    }
    if(added || ImGui::IsKeyPressed(ImGuiKey_Escape, true)) ImGui::CloseCurrentPopup();
}

void LocalizationView::filterMissingLanguages() {
    const Containers::StringView search{_languageSearchBuffer.data()};
    Containers::arrayResize<Containers::ArrayMallocAllocator>(_languageSearchResults, Corrade::NoInit, 0);
    for(UnsignedInt i = 0; i != LanguageCount; ++i) {
        if(std::find(_languages.begin(), _languages.end(), i) != _languages.end()) continue;
        if(search.isEmpty() || Utils::caseInsensitiveSearch(AllLanguages[i].name, search) != -1 ||
            Utils::caseInsensitiveSearch(AllLanguages[i].code, search) != -1)
            Containers::arrayAppend<Containers::ArrayMallocAllocator>(_languageSearchResults, i);
    }
}

}
