#include <algorithm>

#include <Corrade/Utility/Format.h>
#include <imgui.h>
#include <imgui_internal.h>
#include <rapidjson/document.h>

#include "ChangeManager.h"
#include "ImGuiGuards.h"
#include "ImGuiText.h"
#include "LocalizationView.h"
#include "QuorvaneEditor/EditorData.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "QuorvaneEditor/QuorvaneEditor.h"
#include "ShownRows.h"
#include "Ui/Ui.h"
#include "ViewState.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;
using namespace ViewState;

namespace {

constexpr ImGuiSelectableFlags RowFlags =
    ImGuiSelectableFlags_SpanAllColumns | ImGuiSelectableFlags_AllowOverlap | ImGuiSelectableFlags_SpanAvailWidth;

/* Where in the region a row begins that was scrolled to: 0 is its top, 1 its bottom */
constexpr float TopOfShown = 0.3f;

/* Shows a line of a key. NULs are spelled, because the library takes one at the beginning of a text for its end. */
void drawKeyLine(ImVec2 position, const float right, Containers::StringView line) {
    while(!line.isEmpty() && position.x < right) {
        const Containers::StringView text = line.prefix(line.findOr('\0', line.end()).begin());
        const Containers::StringView shown = text.isEmpty() ? "\\0"_s : text;
        renderText(position, shown);
        position.x += calcTextSize(shown).x;
        line = line.exceptPrefix(std::max(text.size(), std::size_t{1}));
    }
}

/* Shows a key that cannot be a label, where and as far as a label would show it */
void drawKey(const ImVec2& position, Containers::StringView key, const float height) {
    const float lineHeight = ImGui::GetTextLineHeight();
    const ImVec2 end{ImGui::GetCurrentWindow()->WorkRect.Max.x, position.y + height};
    for(ImVec2 line = position; !key.isEmpty() && line.y < end.y; line.y += lineHeight) {
        const Containers::StringView text = key.prefix(key.findOr('\n', key.end()).begin());
        const ClipRectGuard clip{line, end};
        drawKeyLine(line, end.x, text.prefix(std::min(text.size(), TermRows::LongText)));
        key = key.exceptPrefix(std::min(text.size() + 1, key.size()));
    }
}

}

void LocalizationView::drawTermsTab(const bool refilter) {
    const bool searched = Ui::searchBar("termsearch"_s, _searchBuffer, ImGui::GetContentRegionAvail().x,
        {0.0f, -Ui::scaled(4.0f)}, Ui::scaled(30.0f), false);
    if(searched || refilter) filterTerms();

    /* A child without a size fills its window, which is what the library makes of one that always resizes itself, too */
    const ChildGuard body{ImGui::BeginChild("termtablebody")};
    drawTermTable();
}

void LocalizationView::filterTerms() {
    _filteredTerms.rebuild(editor().project(), Containers::StringView{_searchBuffer.data()});
    lastSearch = _editorData->storedRevision();
}

std::size_t LocalizationView::findWantedTerm() {
    std::size_t row = _filteredTerms.find(_mark.token());
    if(row == _filteredTerms.size() && _searchBuffer[0]) {
        _searchBuffer[0] = '\0';
        filterTerms();
        row = _filteredTerms.find(_mark.token());
    }
    _mark.settle(row != _filteredTerms.size(), ImGui::GetTime());
    return row;
}

void LocalizationView::scrollTo(const std::size_t row) {
    const float origin = ImGui::GetCurrentTable()->RowPosY2;
    const ImGuiWindow& window = *ImGui::GetCurrentWindow();
    const float top = origin + _filteredTerms.top(row);
    if(top >= window.InnerRect.Min.y && origin + _filteredTerms.top(row + 1) <= window.InnerRect.Max.y) return;
    ImGui::SetScrollFromPosY(top - window.Pos.y, TopOfShown);
}

void LocalizationView::drawTermTable() {
    const TableGuard table{ImGui::BeginTable("termstable", 3, ImGuiTableFlags_Borders)};
    if(!table) return;
    ImGui::TableSetupColumn("Term", ImGuiTableColumnFlags_WidthStretch, 0.7f);
    ImGui::TableSetupColumn("Source Text", ImGuiTableColumnFlags_WidthStretch);
    ImGui::TableSetupColumn("Translatable?", ImGuiTableColumnFlags_WidthFixed, ImGui::CalcTextSize("Translatable?").x);
    ImGui::TableHeadersRow();

    const bool isWanted = _mark.isWanted();
    const std::size_t wanted = isWanted ? findWantedTerm() : 0;

    /* The header row has fixed the columns, so the width at which texts wrap is known before the first of them is drawn */
    ImGui::TableSetColumnIndex(1);
    const ImGuiStyle& style = ImGui::GetStyle();
    _filteredTerms.layOut({std::max(ImGui::GetContentRegionAvail().x, 1.0f), style.CellPadding.y, style.ItemSpacing.y,
        Ui::checkboxHeight()});
    ImGui::TableEndRow(ImGui::GetCurrentTable());

    if(isWanted && wanted != _filteredTerms.size()) scrollTo(wanted);

    std::size_t next = 0;
    for(const TermRows::Range rows: ShownRows{_filteredTerms}) {
        skipTermRows(next, rows.begin);
        for(std::size_t row = rows.begin; row != rows.end; ++row) drawTermRow(row);
        next = rows.end;
    }
    skipTermRows(next, _filteredTerms.size());
}

void LocalizationView::skipTermRows(const std::size_t begin, const std::size_t end) {
    /* One row without content takes the place of all of them. The line above the row behind it belongs to that row. */
    if(begin < end) ImGui::TableNextRow(ImGuiTableRowFlags_None, _filteredTerms.top(end) - _filteredTerms.top(begin));
}

void LocalizationView::drawTermRow(const std::size_t row) {
    const Containers::StringView text = _filteredTerms.text(row);
    ImGui::TableNextRow();
    if(const float mark = _mark.strength(_filteredTerms.token(row), ImGui::GetTime()); mark > 0.0f)
        ImGui::TableSetBgColor(ImGuiTableBgTarget_RowBg0, ImGui::GetColorU32(ImGuiCol_TextSelectedBg, mark));

    ImGui::TableNextColumn();
    if(drawTermKey(row)) _selectedTerm = text;

    ImGui::TableNextColumn();
    if(_filteredTerms.lineStarts(row).isEmpty()) {
        const TextWrapGuard wrap{0.0f};
        textUnformatted(text);
    } else drawLongText(row);

    ImGui::TableNextColumn();
    if(!_filteredTerms.key(row).isEmpty()) drawTranslatableBox(row);
}

bool LocalizationView::drawTermKey(const std::size_t row) {
    /* Compared with the key, while a click stores the text: required so */
    const Containers::StringView key = _filteredTerms.key(row);
    const bool selected = _selectedTerm == key;
    const ImVec2 size{0.0f, _filteredTerms.naturalHeight(row)};
    if(_filteredTerms.isLabel(row)) return ImGui::Selectable(ImGuiText{key}, selected, RowFlags, size);

    const IdGuard id{_filteredTerms.id(row)};
    const ImVec2 position = ImGui::GetCursorScreenPos();
    const bool clicked = ImGui::Selectable("##key", selected, RowFlags, size);
    drawKey(position, key, size.y);
    return clicked;
}

void LocalizationView::drawLongText(const std::size_t row) {
    const Containers::StringView text = _filteredTerms.text(row);
    const Containers::ArrayView<const UnsignedInt> starts = _filteredTerms.lineStarts(row);
    const float lineHeight = ImGui::GetTextLineHeight();
    const ImVec2 position = ImGui::GetCursorScreenPos();
    const ImRect& clip = ImGui::GetCurrentWindow()->ClipRect;
    const auto lineAt = [&](const float y) {
        return std::size_t(std::clamp((y - position.y) / lineHeight, 0.0f, float(starts.size())));
    };
    const std::size_t first = lineAt(clip.Min.y);
    const std::size_t last = std::min(lineAt(clip.Max.y) + 1, starts.size());
    for(std::size_t line = first; line < last; ++line) {
        const std::size_t end = line + 1 == starts.size() ? text.size() : starts[line + 1];
        renderText({position.x, position.y + float(line) * lineHeight},
            text.slice(starts[line], end).trimmedSuffix(" \t\r\n"_s));
    }
    ImGui::Dummy({ImGui::GetContentRegionAvail().x, _filteredTerms.wrappedHeight(row)});
}

void LocalizationView::drawTranslatableBox(const std::size_t row) {
    const Containers::StringView token = _filteredTerms.token(row);
    ui().pushScope(token, nullptr);
    bool translatable = _filteredTerms.isTranslatable(row);
    if(Ui::checkbox("##translatable"_s, &translatable))
        editor().changeManager().pushChange(
            Containers::StringView{Corrade::Utility::format("/localization/terms/{}/translatable", token)},
            rapidjson::Value{translatable}, false);
    ui().popScope();
}

}
