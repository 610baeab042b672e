#include "app/ReportCounts.h"

#include <algorithm>
#include <cstdio>

#include <Corrade/Containers/GrowableArray.h>
#include <imgui.h>

#include "ImGuiGuards.h"
#include "ImGuiText.h"
#include "app/OutcomeLook.h"
#include "app/Widgets.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

using Counts = LocalizationReport::Counts;

constexpr float NameWidth = 140.0f;

/** Counted beside the outcomes. */
const OutcomeLook& staleLook() {
    static const OutcomeLook look{
        TermOutcome::Unchanged, outcomeLook(TermOutcome::Skipped).tone, "", "Stale", &Counts::stale};
    return look;
}

Counts sum(Counts a, const Counts& b) {
    for(const OutcomeLook& look: outcomeLooks()) a.*look.count += b.*look.count;
    a.stale += b.stale;
    return a;
}

bool isEmpty(const Counts& counts) {
    return std::none_of(
        outcomeLooks().begin(), outcomeLooks().end(), [&](const OutcomeLook& look) { return counts.*look.count != 0; });
}

/** Wide enough for the heading, and for numbers up to a million. */
float numberWidth(const OutcomeLook& look) {
    return std::max(ImGui::CalcTextSize(look.heading).x, ImGui::CalcTextSize("1000000").x);
}

void alignRight(float width) {
    ImGui::SetCursorPosX(ImGui::GetCursorPosX() + std::max(ImGui::GetContentRegionAvail().x - width, 0.0f));
}

void drawNumber(UnsignedInt value, const ImVec4& color) {
    char text[16];
    const auto size = std::size_t(std::snprintf(text, sizeof(text), "%u", value));
    alignRight(ImGui::CalcTextSize(text, text + size).x);
    StyleGuard style;
    style.color(ImGuiCol_Text, value ? color : ImGui::GetStyleColorVec4(ImGuiCol_TextDisabled));
    Widgets::text({text, size});
}

}

void ReportCounts::assign(const LocalizationReport& report) {
    _rows = {};
    const Counts others = report.counts(LocalizationReport::NoLanguage);
    Counts all = others;
    for(const UnsignedInt language: report.languages()) all = sum(all, report.counts(language));
    _columns = {};
    for(const OutcomeLook& look: outcomeLooks())
        if(all.*look.count) Containers::arrayAppend(_columns, &look);
    if(all.stale) Containers::arrayAppend(_columns, &staleLook());
    if(report.languages().size() > 1) Containers::arrayAppend(_rows, Row{"All"_s, all});
    for(const UnsignedInt language: report.languages())
        Containers::arrayAppend(_rows, Row{AllLanguages[language].name, report.counts(language)});
    const bool hasLanguages = !report.languages().isEmpty();
    if(!isEmpty(others)) Containers::arrayAppend(_rows, Row{hasLanguages ? "No language"_s : "All"_s, others});
}

float ReportCounts::width() const {
    const float padding = 2.0f * ImGui::GetStyle().CellPadding.x + 1.0f;
    float width = Widgets::scaled(NameWidth) + padding + 1.0f;
    for(const OutcomeLook* const look: _columns) width += numberWidth(*look) + padding;
    return width;
}

float ReportCounts::height() const {
    return float(_rows.size() + 1) * (ImGui::GetTextLineHeight() + 2.0f * ImGui::GetStyle().CellPadding.y) + 2.0f;
}

void ReportCounts::draw(const ImVec2& size) const {
    constexpr ImGuiTableFlags Flags = ImGuiTableFlags_ScrollX | ImGuiTableFlags_ScrollY | ImGuiTableFlags_RowBg |
        ImGuiTableFlags_BordersOuter | ImGuiTableFlags_SizingFixedFit | ImGuiTableFlags_NoSavedSettings;
    const TableGuard table{ImGui::BeginTable("counts", int(_columns.size()) + 1, Flags, size)};
    if(!table) return;
    ImGui::TableSetupScrollFreeze(1, 1);
    ImGui::TableSetupColumn("Language", ImGuiTableColumnFlags_WidthFixed, Widgets::scaled(NameWidth));
    for(const OutcomeLook* const look: _columns)
        ImGui::TableSetupColumn(look->heading, ImGuiTableColumnFlags_WidthFixed, numberWidth(*look));
    drawHeadings();
    ImGuiListClipper clipper;
    clipper.Begin(int(_rows.size()));
    while(clipper.Step())
        for(int i = clipper.DisplayStart; i != clipper.DisplayEnd; ++i) {
            const Row& row = _rows[std::size_t(i)];
            ImGui::TableNextRow();
            ImGui::TableNextColumn();
            Widgets::text(row.name);
            for(const OutcomeLook* const look: _columns) {
                ImGui::TableNextColumn();
                drawNumber(row.counts.*look->count, look->color());
            }
        }
}

void ReportCounts::drawHeadings() const {
    ImGui::TableNextRow(ImGuiTableRowFlags_Headers);
    ImGui::TableNextColumn();
    Widgets::text("Language"_s);
    for(const OutcomeLook* const look: _columns) {
        ImGui::TableNextColumn();
        alignRight(ImGui::CalcTextSize(look->heading).x);
        ImGui::TextUnformatted(look->heading);
    }
}

}
