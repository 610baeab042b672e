#include "app/ReportTable.h"

#include <algorithm>
#include <string>

#include <imgui.h>
#include <imgui_internal.h>

#include <icons_font_awesome_6.h>

#include "ImGuiGuards.h"
#include "ImGuiText.h"
#include "app/OutcomeLook.h"
#include "app/ReportText.h"
#include "app/Widgets.h"
#include "localization/LastRun.h"

namespace QuorvaneEngine {

namespace {

/** What a cell shows of a text: all of a megabyte would cost every frame. */
Containers::StringView beginning(Containers::StringView text) {
    constexpr std::size_t Limit = 400;
    std::size_t size = 0;
    while(size != std::min(text.size(), Limit) && text[size] != '\n') ++size;
    // No character is cut in its middle.
    while(size && size != text.size() && (text[size] & '\xc0') == '\x80') --size;
    return text.prefix(size);
}

/** A text in a cell. Where it does not fit, it shows under the mouse. */
void drawCell(Containers::StringView text, bool isHovered) {
    const Containers::StringView shown = beginning(text);
    const float width = ImGui::GetContentRegionAvail().x;
    textUnformatted(shown);
    if(!isHovered || (shown.size() == text.size() && ImGui::GetItemRectSize().x <= width)) return;
    const TooltipGuard tooltip{ImGui::BeginTooltip()};
    if(!tooltip) return;
    const TextWrapGuard wrap{Widgets::scaled(600.0f)};
    constexpr std::size_t Limit = 4000;
    textUnformatted(text.prefix(std::min(text.size(), Limit)));
}

void copy(const std::string& text) { ImGui::SetClipboardText(text.c_str()); }

}

void ReportTable::assign(const std::shared_ptr<const LocalizationRun>& run) {
    _run = run;
    _rows = {};
    const Containers::ArrayView<const LocalizationReport::Line> lines = run->report.lines();
    _rows.assign(lines);
    _hasLanguages = _hasFiles = false;
    for(const LocalizationReport::Line& line: lines) {
        _hasLanguages = _hasLanguages || line.language < LanguageCount;
        _hasFiles = _hasFiles || !line.file.isEmpty();
    }
    _needsSort = true;
    _selected = Nothing;
}

void ReportTable::draw(const ImVec2& size) {
    constexpr ImGuiTableFlags Flags = ImGuiTableFlags_ScrollY | ImGuiTableFlags_RowBg | ImGuiTableFlags_BordersOuter |
        ImGuiTableFlags_BordersInnerV | ImGuiTableFlags_Resizable | ImGuiTableFlags_Sortable |
        ImGuiTableFlags_SortTristate;
    const TableGuard table{ImGui::BeginTable("lines", 5, Flags, size)};
    if(!table) return;
    ImGui::TableSetupScrollFreeze(0, 1);
    const auto column = [](const char* name, ImGuiTableColumnFlags flags, float width, bool isEnabled = true) {
        ImGui::TableSetupColumn(name, flags | (isEnabled ? 0 : ImGuiTableColumnFlags_Disabled), width);
    };
    column("Language", ImGuiTableColumnFlags_WidthFixed, Widgets::scaled(110.0f), _hasLanguages);
    // What needs attention is on top until the user wants it otherwise.
    constexpr auto First = ImGuiTableColumnFlags_DefaultSort | ImGuiTableColumnFlags_PreferSortDescending;
    column("Outcome", ImGuiTableColumnFlags_WidthFixed | First, Widgets::scaled(100.0f));
    column("Term", ImGuiTableColumnFlags_WidthStretch, 3.0f);
    column("Reason", ImGuiTableColumnFlags_WidthStretch, 4.0f);
    column("File", ImGuiTableColumnFlags_WidthStretch, 2.0f, _hasFiles);
    ImGui::TableHeadersRow();

    ImGuiTableSortSpecs* const specs = ImGui::TableGetSortSpecs();
    if(specs && (specs->SpecsDirty || _needsSort)) {
        if(specs->SpecsCount)
            _rows.sort(ReportRows::Column(specs->Specs->ColumnIndex),
                specs->Specs->SortDirection == ImGuiSortDirection_Descending);
        else if(!_needsSort) _rows.unsort();
        specs->SpecsDirty = _needsSort = false;
    }

    ImGuiListClipper clipper;
    clipper.Begin(int(_rows.size()));
    while(clipper.Step())
        for(int row = clipper.DisplayStart; row != clipper.DisplayEnd; ++row) drawRow(std::size_t(row));
}

void ReportTable::drawRow(const std::size_t row) {
    const LocalizationReport::Line& line = _rows[row];
    const UnsignedInt index = _rows.index(row);
    const IdGuard id{int(index)};
    ImGui::TableNextRow();
    // The column that is always there holds what spans all of them.
    ImGui::TableSetColumnIndex(int(ReportRows::Column::Outcome));
    constexpr auto Flags = ImGuiSelectableFlags_SpanAllColumns | ImGuiSelectableFlags_AllowOverlap;
    constexpr ImGuiSelectableFlags SelectsOnNav = ImGuiSelectableFlags_SelectOnNav;
    if(ImGui::Selectable("##line", index == _selected, Flags | SelectsOnNav)) _selected = index;
    const int hovered = ImGui::IsItemHovered(ImGuiHoveredFlags_ForTooltip) ? ImGui::TableGetHoveredColumn() : -1;
    if(ImGui::IsItemClicked(ImGuiMouseButton_Right)) _selected = index;
    if(const PopupGuard menu{ImGui::BeginPopupContextItem("menu")}; menu) drawContextMenu();
    ImGui::SameLine(0.0f, 0.0f);
    const OutcomeLook& look = outcomeLook(line.outcome);
    {
        StyleGuard style;
        style.color(ImGuiCol_Text, look.color());
        ImGui::TextUnformatted(look.icon);
    }
    ImGui::SameLine(Widgets::scaled(24.0f));
    Widgets::text(ReportText::outcomeName(line.outcome));

    const auto cell = [&](ReportRows::Column column, Containers::StringView text) {
        if(ImGui::TableSetColumnIndex(int(column))) drawCell(text, hovered == int(column));
    };
    cell(ReportRows::Column::Language, ReportText::languageName(line.language));
    cell(ReportRows::Column::Term, line.term);
    cell(ReportRows::Column::Reason, line.reason);
    cell(ReportRows::Column::File, line.file);
}

void ReportTable::drawContextMenu() {
    if(ImGui::MenuItemEx("Copy this line", ICON_FA_COPY, "Ctrl+C")) copySelected();
    if(ImGui::MenuItemEx("Copy all lines shown", ICON_FA_COPY)) copyShown();
}

void ReportTable::copySelected() const {
    if(_selected != Nothing) copy(ReportText::copied(_run->report.lines()[_selected]));
}

void ReportTable::copyShown() const { copy(ReportText::copied(*_run, _rows)); }

}
