#include <cstddef>

#include <imgui.h>
#include <imgui_internal.h>

#include "ImGuiGuards.h"
#include "ImGuiText.h"
#include "QuorvaneEditor/JsonObject.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "Ui/Scope.h"
#include "Ui/TextBuffer.h"
#include "Ui/Ui.h"

namespace QuorvaneEngine {

namespace {

constexpr float LabelShare = 0.33f;

/** U+F002 of the icon font, a magnifying glass. */
constexpr char SearchIcon[] = "\xef\x80\x82";

ImVec2 scaledVector(const float pixels) {
    const float value = Ui::scaled(pixels);
    return {value, value};
}

struct StyleColor {
    ImGuiCol slot;
    ImVec4 value;
};

/* The library fills the box in a colour of its own when it is checked; here it is the frame's. */

constexpr StyleColor CheckedColors[]{
    {ImGuiCol_FrameBg, {0.125f, 0.23f, 0.35f, 1.0f}},
    {ImGuiCol_CheckboxSelectedBg, {0.125f, 0.23f, 0.35f, 1.0f}},
    {ImGuiCol_FrameBgActive, {0.25f, 0.46f, 0.70f, 1.0f}},
    {ImGuiCol_FrameBgHovered, {0.25f, 0.46f, 0.70f, 1.0f}},
};

constexpr StyleColor UncheckedColors[]{
    {ImGuiCol_FrameBg, {0.29f, 0.29f, 0.29f, 0.44f}},
    {ImGuiCol_CheckboxSelectedBg, {0.29f, 0.29f, 0.29f, 0.44f}},
};

/** By the two bits of the button's flags. */
constexpr ImDrawFlags GroupCorners[]{
    ImDrawFlags_RoundCornersNone,
    ImDrawFlags_RoundCornersLeft,
    ImDrawFlags_RoundCornersRight,
    ImDrawFlags_RoundCornersAll,
};

ImU32 buttonColor(const bool hovered, const bool held) {
    if(hovered && held) return ImGui::GetColorU32(ImGuiCol_ButtonActive);
    return ImGui::GetColorU32(hovered ? ImGuiCol_ButtonHovered : ImGuiCol_Button);
}

void drawBorder(const ImRect& frame, const ImDrawFlags corners) {
    const ImGuiStyle& style = ImGui::GetStyle();
    if(style.FrameBorderSize <= 0.0f) return;
    ImDrawList& list = *ImGui::GetWindowDrawList();
    const ImVec2 shadow = scaledVector(1.0f);
    list.AddRect(frame.Min + shadow, frame.Max + shadow, ImGui::GetColorU32(ImGuiCol_BorderShadow), style.FrameRounding,
        style.FrameBorderSize, corners);
    list.AddRect(
        frame.Min, frame.Max, ImGui::GetColorU32(ImGuiCol_Border), style.FrameRounding, style.FrameBorderSize, corners);
}

}

float Ui::scaled(const float pixels) {
    const ImGuiStyle& style = ImGui::GetStyle();
    return pixels * style.FontScaleMain * style.FontScaleDpi;
}

void Ui::alignedText(const Containers::StringView text) {
    ImGuiWindow& window = *ImGui::GetCurrentWindow();
    if(window.SkipItems) return;
    const float padding = ImGui::GetStyle().FramePadding.y;
    const ImVec2 size = calcTextSize(text, true);
    const ImVec2 position = window.DC.CursorPos;
    const ImRect frame{position, position + ImVec2{size.x, size.y + 2.0f * padding}};
    ImGui::ItemSize(frame, padding);
    if(!ImGui::ItemAdd(frame, 0) || size.x <= 0.0f) return;
    renderTextClipped(frame.Min, frame.Max, text, size, {0.0f, 0.5f});
}

void Ui::label(const Containers::StringView text) {
    alignedText(text);
    sameLineAt(LabelShare * ImGui::GetContentRegionAvail().x);
}

void Ui::valueLabel(const Containers::StringView name) const {
    if(!(flags & Flag::NoLabel)) label(name);
    // Zero and less are other widths to the library.
    ImGui::SetNextItemWidth(ImMax(ImGui::GetContentRegionAvail().x, 1.0f));
}

void Ui::sameLineAt(const float x) {
    const float end = ImGui::GetCurrentWindow()->DC.CursorPosPrevLine.x;
    ImGui::SameLine(x);
    if(ImGui::GetCursorScreenPos().x < end) ImGui::SameLine();
}

void Ui::text(const Containers::StringView name) {
    const Scope scope{this, name};
    textUnformatted(JsonObject{project->getValue(scopePath(), false)}.asString());
}

bool Ui::iconButton(const Containers::StringView icon, const Containers::StringView id) {
    const IdGuard idGuard{id};
    StyleGuard style;
    style.variable(ImGuiStyleVar_FramePadding, scaledVector(5.0f));
    return ImGui::Button(ImGuiText{icon});
}

bool Ui::buttonGrouped(const Containers::StringView label, const Containers::StringView id, const ButtonFlags flags) {
    const IdGuard idGuard{id};
    ImGuiWindow& window = *ImGui::GetCurrentWindow();
    if(window.SkipItems) return false;
    const ImGuiContext& context = *ImGui::GetCurrentContext();
    const ImGuiStyle& style = context.Style;
    const ImGuiID buttonId = getId(label);
    const ImVec2 labelSize = calcTextSize(label, true);
    const ImVec2 size =
        ImGui::CalcItemSize({}, labelSize.x + 2.0f * style.FramePadding.x, labelSize.y + 2.0f * style.FramePadding.y);
    const ImRect frame{window.DC.CursorPos, window.DC.CursorPos + size};
    ImGui::ItemSize(size, style.FramePadding.y);
    if(!ImGui::ItemAdd(frame, buttonId)) return false;

    bool hovered, held;
    const bool pressed = ImGui::ButtonBehavior(frame, buttonId, &hovered, &held);
    ImGui::RenderNavCursor(frame, buttonId);
    const ImDrawFlags corners = GroupCorners[UnsignedInt(flags) & 3];
    window.DrawList->AddRectFilled(frame.Min, frame.Max, buttonColor(hovered, held), style.FrameRounding, corners);
    drawBorder(frame, corners);

    if(context.LogEnabled) ImGui::LogSetNextTextDecoration("[", "]");
    renderTextClipped(
        frame.Min + style.FramePadding, frame.Max - style.FramePadding, label, labelSize, style.ButtonTextAlign);
    return pressed;
}

bool Ui::searchBar(const Containers::StringView id, Containers::Array<char>& buffer, const float width,
    const ImVec2& offset, const float inputStart, const bool focus) {
    ImGui::GetCurrentWindow()->DC.CursorPos += offset;
    const float iconWidth = calcTextSize(SearchIcon, true).x;
    alignedText(SearchIcon);
    sameLineAt(inputStart);
    ImGui::SetNextItemWidth(width - iconWidth);
    if(focus && !ImGui::IsAnyItemActive()) {
        buffer[0] = '\0';
        ImGui::SetKeyboardFocusHere();
    }
    return ImGui::InputTextWithHint(ImGuiText{"##", id}, "Search", buffer.data(), buffer.size());
}

int Ui::textResizeCallback(ImGuiInputTextCallbackData* const data) {
    if(data->EventFlag != ImGuiInputTextFlags_CallbackResize) return 0;
    auto& array = *static_cast<Containers::Array<char>*>(data->UserData);
    if(data->BufSize < 0 || std::size_t(data->BufSize) <= array.size()) return 0;
    growBuffer(array, std::size_t(data->BufSize));
    data->Buf = array.data();
    return 0;
}

float Ui::checkboxHeight() { return ImGui::GetFontSize() + 2.0f * scaled(1.0f); }

bool Ui::checkbox(const Containers::StringView label, bool* const value) {
    StyleGuard style;
    const auto push = [&style](const auto& colors) {
        for(const StyleColor& color: colors) style.color(color.slot, color.value);
    };
    if(*value) push(CheckedColors);
    else push(UncheckedColors);
    style.color(ImGuiCol_CheckMark, {1.0f, 1.0f, 1.0f, 1.0f});
    style.variable(ImGuiStyleVar_FramePadding, scaledVector(1.0f));
    style.variable(ImGuiStyleVar_FrameRounding, scaled(4.0f));
    return ImGui::Checkbox(ImGuiText{label}, value);
}

bool Ui::radioButton(const Containers::StringView label, const bool active) {
    StyleGuard style;
    style.variable(ImGuiStyleVar_FramePadding, scaledVector(1.0f));
    return ImGui::RadioButton(ImGuiText{label}, active);
}

}
