#include "ValuePane.h"

#include <algorithm>
#include <utility>

#include <Corrade/Containers/StringIterable.h>
#include <Corrade/Containers/StringStl.h>
#include <ImGuiGuards.h>
#include <ImGuiText.h>
#include <QuorvaneEditor/ProjectFile.h>
#include <Ui/Scope.h>
#include <Ui/Ui.h>
#include <imgui.h>
#include <imgui_internal.h>

namespace InspectorPlugin {

using namespace Containers::Literals;

namespace {

/** Of the width, left of the widgets: what the toolkit leaves for its own labels. */
constexpr float LabelShare = 0.33f;

/** In pixels at scale 1. */
constexpr float Indent = 18.0f;
constexpr float ListHeight = 100.0f;

constexpr float TextLines = 3.0f;
constexpr int BitCount = 8;

/** Of the toolkit's grid of bits, below the first one. */
constexpr float MoreBitRows = 1.0f;

constexpr Containers::StringView FileFilters[]{"All files"_s, "*"_s};

/** What a drag over a pixel adds to a number whose hint does not say. */
constexpr float NumberSpeed = 0.01f;
constexpr float IntegerSpeed = 0.1f;

/** With the command modifier a drag is so much faster. */
constexpr float Faster = 10.0f;

float spacing() { return ImTrunc(ImGui::GetStyle().ItemSpacing.y); }

}

void ValuePane::draw(Ui& ui, const std::string& selected) {
    const bool isRead = _rows.update(*ui.project, selected);
    if(isRead || _frameHeight != ImGui::GetFrameHeight() || _tops.empty()) layOut();
    if(_rows.rows().empty()) {
        ImGui::TextDisabled("Nothing else is in here");
        return;
    }

    const ImVec2 origin = ImGui::GetCursorPos();
    const ImRect& clip = ImGui::GetCurrentWindow()->ClipRect;
    const float shift = ImGui::GetCursorScreenPos().y;
    const auto rowAt = [&](const float y) {
        return int(std::upper_bound(_tops.begin(), _tops.end(), y - shift) - _tops.begin()) - 1;
    };
    const int count = int(_rows.rows().size());
    const int first = std::clamp(rowAt(clip.Min.y), 0, count - 1);
    const int last = std::clamp(rowAt(clip.Max.y), 0, count - 1);
    int active = -1;
    const auto drawAt = [&](const int i) {
        ImGui::SetCursorPos({origin.x, origin.y + _tops[std::size_t(i)]});
        {
            const GroupGuard group;
            drawRow(ui, _rows.rows()[std::size_t(i)]);
        }
        if(ImGui::IsItemActive()) active = i;
    };
    if(_active >= 0 && _active < first) drawAt(_active);
    for(int i = first; i <= last; ++i) drawAt(i);
    if(_active > last && _active < count) drawAt(_active);
    _active = active;
    ImGui::SetCursorPos({origin.x, origin.y + _tops.back() - spacing()});
    ImGui::Dummy({1.0f, 0.0f});
}

float ValuePane::heightOf(const ValueRows::Row& row) const {
    const float frame = ImGui::GetFrameHeight();
    const ImGuiStyle& style = ImGui::GetStyle();
    switch(row.widget) {
    case Widget::Lines: return TextLines * ImGui::GetTextLineHeight() + 2.0f * style.FramePadding.y;
    case Widget::List: return Ui::scaled(ListHeight) + style.ItemSpacing.y + frame;
    case Widget::Bits: return frame + MoreBitRows * (style.ItemSpacing.y + Ui::checkboxHeight());
    default: return frame;
    }
}

void ValuePane::layOut() {
    _frameHeight = ImGui::GetFrameHeight();
    _tops.clear();
    float top = 0.0f;
    for(const ValueRows::Row& row: _rows.rows()) {
        _tops.push_back(top);
        top += ImTrunc(heightOf(row)) + spacing();
    }
    _tops.push_back(top);
}

void ValuePane::drawRow(Ui& ui, const ValueRows::Row& row) {
    if(row.widget == Widget::Section) {
        drawSection(row);
        return;
    }
    const Scope scope{&ui, row.parent};
    const IdGuard id{row.token};
    if(row.widget == Widget::Bits) {
        // Draws its own label, because its rows begin where that one ends.
        ui.checkboxBits(row.token, BitCount, {});
        return;
    }
    drawLabel(row);
    ui.pushFlags(Ui::Flag::NoLabel);
    drawWidget(ui, row);
    ui.popFlags();
}

void ValuePane::drawSection(const ValueRows::Row& row) {
    const ImVec2 position = ImGui::GetCursorScreenPos();
    ImGui::SetCursorPosX(ImGui::GetCursorPosX() + float(row.depth) * Ui::scaled(Indent));
    ImGui::SetNextItemOpen(row.isOpen);
    ImGui::TreeNodeEx(ImGuiText{"##", row.path},
        ImGuiTreeNodeFlags_FramePadding | ImGuiTreeNodeFlags_SpanAvailWidth | ImGuiTreeNodeFlags_NoTreePushOnOpen);
    if(ImGui::IsItemToggledOpen()) _rows.toggle(row);
    const ImVec2 min = ImGui::GetItemRectMin();
    const ImVec2 max = ImGui::GetItemRectMax();
    renderLine({min.x + ImGui::GetTreeNodeToLabelSpacing(), min.y}, max, row.label);
    const float column = position.x + LabelShare * ImGui::GetCurrentWindow()->ContentRegionRect.GetWidth();
    const float end =
        min.x + ImGui::GetTreeNodeToLabelSpacing() + calcTextSize(row.label).x + ImGui::GetStyle().ItemSpacing.x;
    StyleGuard style;
    style.color(ImGuiCol_Text, ImGui::GetStyleColorVec4(ImGuiCol_TextDisabled));
    renderLine({std::max(column, end), min.y}, max, row.text);
}

void ValuePane::drawLabel(const ValueRows::Row& row) const {
    const float column = LabelShare * ImGui::GetCurrentWindow()->ContentRegionRect.GetWidth();
    const float left = float(row.depth) * Ui::scaled(Indent);
    const ImVec2 position = ImGui::GetCursorScreenPos();
    ImGui::SetCursorPosX(ImGui::GetCursorPosX() + left);
    Ui::alignedText(row.label);
    const Containers::StringView unit = row.hint ? row.hint->unit : Containers::StringView{};
    const float unitWidth = calcTextSize(unit).x;
    const float end = ImGui::GetItemRectMax().x;
    const float unitLeft = position.x + column - unitWidth - ImGui::GetStyle().ItemSpacing.x;
    if(unitWidth > 0.0f && unitLeft > end) {
        StyleGuard style;
        style.color(ImGuiCol_Text, ImGui::GetStyleColorVec4(ImGuiCol_TextDisabled));
        renderLine({unitLeft, position.y}, {unitLeft + unitWidth + 1.0f, position.y + ImGui::GetFrameHeight()}, unit);
    }
    Ui::sameLineAt(column);
}

void ValuePane::drawWidget(Ui& ui, const ValueRows::Row& row) {
    switch(row.widget) {
    case Widget::Checkbox:
        ImGui::SetCursorPosY(ImGui::GetCursorPosY() + ImTrunc((ImGui::GetFrameHeight() - Ui::checkboxHeight()) * 0.5f));
        ui.checkboxUnlabled(row.token);
        break;
    case Widget::Integer:
    case Widget::Number:
    case Widget::Integers:
    case Widget::Numbers: drawNumbers(ui, row); break;
    case Widget::Color: row.size == 3 ? ui.colorEdit3(row.token) : ui.colorEdit4(row.token); break;
    case Widget::Line: ui.inputText(row.token); break;
    case Widget::Lines: drawLines(ui, row); break;
    case Widget::List: drawList(ui, row); break;
    case Widget::Choice: ui.inputEnum(row.token, row.hint->names); break;
    case Widget::Resource: ui.selectResource(row.token, row.hint->collection, false); break;
    case Widget::File: ui.fileSelect(row.token, "Choose a file"_s, FileFilters); break;
    case Widget::Flags: drawFlags(ui, row); break;
    case Widget::Bits:
    case Widget::Section: break;
    case Widget::None: {
        StyleGuard style;
        style.color(ImGuiCol_Text, ImGui::GetStyleColorVec4(ImGuiCol_TextDisabled));
        Ui::alignedText(row.text);
    }
    }
}

void ValuePane::drawNumbers(Ui& ui, const ValueRows::Row& row) const {
    using Numbers = bool (Ui::*)(Containers::StringView, float, float, float, float);
    using Integers = bool (Ui::*)(Containers::StringView, Int, Int, float, float);
    constexpr Numbers numbers[]{&Ui::inputFloat, &Ui::inputFloat2, &Ui::inputFloat3, &Ui::inputFloat4};
    constexpr Integers integers[]{&Ui::inputInt, &Ui::inputInt2, &Ui::inputInt3, &Ui::inputInt4};

    const bool isInteger = row.widget == Widget::Integer || row.widget == Widget::Integers;
    const bool isHinted = row.hint && row.hint->widget == Widget::Number;
    const float min = isHinted ? row.hint->min : 0.0f;
    const float max = isHinted ? row.hint->max : 0.0f;
    float speed = isInteger ? IntegerSpeed : NumberSpeed;
    if(isHinted && row.hint->speed > 0.0f) speed = row.hint->speed;
    const std::size_t index = std::max(row.size, std::size_t{1}) - 1;
    if(isInteger) (ui.*integers[index])(row.token, Int(min), Int(max), speed, speed * Faster);
    else (ui.*numbers[index])(row.token, min, max, speed, speed * Faster);
}

void ValuePane::drawLines(Ui& ui, const ValueRows::Row& row) const {
    // The input fills its window.
    StyleGuard style;
    style.variable(ImGuiStyleVar_WindowPadding, ImVec2{});
    const ChildGuard child{ImGui::BeginChild("##lines", {0.0f, heightOf(row)})};
    if(child) ui.inputTextMultiline(row.token, false, true);
}

void ValuePane::drawList(Ui& ui, const ValueRows::Row& row) {
    const GroupGuard group;
    int& line = _lines.try_emplace(row.path, 0).first->second;
    {
        StyleGuard style;
        style.color(ImGuiCol_ChildBg, ImGui::GetStyleColorVec4(ImGuiCol_FrameBg))
            .variable(ImGuiStyleVar_WindowPadding, {ImGui::GetStyle().FramePadding.x, 0.0f});
        const ChildGuard child{ImGui::BeginChild("##list", {0.0f, Ui::scaled(ListHeight)},
            ImGuiChildFlags_AlwaysUseWindowPadding, ImGuiWindowFlags_NoScrollbar)};
        if(child) ui.stringList(row.token, line);
    }
    line = std::clamp(line, 0, int(row.size) - 1);
    const Scope scope{&ui, row.token};
    const std::string element = std::to_string(line);
    if(row.hint && row.hint->widget == Widget::Resource) ui.selectResource(element, row.hint->collection, false);
    else ui.inputText(element);
}

void ValuePane::drawFlags(Ui& ui, const ValueRows::Row& row) const {
    ImGui::SetCursorPosY(ImGui::GetCursorPosY() + ImTrunc((ImGui::GetFrameHeight() - Ui::checkboxHeight()) * 0.5f));
    const GroupGuard group;
    for(std::size_t bit = 0; bit != row.hint->names.size(); ++bit) {
        if(bit) ImGui::SameLine();
        ui.checkboxBit(row.token, int(bit), row.hint->names[bit]);
    }
}

}
