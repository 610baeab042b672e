#include "app/Theme.h"

#include <imgui.h>

namespace QuorvaneEngine::Theme {

namespace {

/* One blue for everything that is chosen or under the mouse, the one of the check boxes; greys with a trace of it for the rest. */
constexpr ImVec4 Deep{0.125f, 0.23f, 0.35f, 1.0f};
constexpr ImVec4 Middle{0.18f, 0.33f, 0.50f, 1.0f};
constexpr ImVec4 Pressed{0.22f, 0.40f, 0.61f, 1.0f};
constexpr ImVec4 Bright{0.25f, 0.46f, 0.70f, 1.0f};
constexpr ImVec4 Light{0.42f, 0.66f, 0.92f, 1.0f};

constexpr ImVec4 Ground{0.075f, 0.082f, 0.094f, 1.0f};
constexpr ImVec4 Surface{0.105f, 0.115f, 0.131f, 1.0f};
constexpr ImVec4 Raised{0.140f, 0.153f, 0.174f, 1.0f};
constexpr ImVec4 Field{0.165f, 0.180f, 0.205f, 1.0f};
constexpr ImVec4 FieldHovered{0.205f, 0.228f, 0.262f, 1.0f};
constexpr ImVec4 Line{0.205f, 0.224f, 0.252f, 1.0f};
constexpr ImVec4 StrongLine{0.280f, 0.305f, 0.340f, 1.0f};
constexpr ImVec4 Letters{0.890f, 0.902f, 0.918f, 1.0f};
constexpr ImVec4 PaleLetters{0.545f, 0.572f, 0.612f, 1.0f};
constexpr ImVec4 None{0.0f, 0.0f, 0.0f, 0.0f};

struct Entry {
    ImGuiCol slot;
    ImVec4 color;
};

constexpr Entry Colors[]{
    {ImGuiCol_Text, Letters},
    {ImGuiCol_TextDisabled, PaleLetters},
    {ImGuiCol_TextLink, Light},
    {ImGuiCol_TextSelectedBg, {0.25f, 0.46f, 0.70f, 0.55f}},
    {ImGuiCol_InputTextCursor, Letters},
    {ImGuiCol_WindowBg, Surface},
    {ImGuiCol_ChildBg, None},
    {ImGuiCol_PopupBg, Raised},
    {ImGuiCol_Border, Line},
    {ImGuiCol_BorderShadow, None},
    {ImGuiCol_FrameBg, Field},
    {ImGuiCol_FrameBgHovered, FieldHovered},
    {ImGuiCol_FrameBgActive, FieldHovered},
    {ImGuiCol_TitleBg, Ground},
    {ImGuiCol_TitleBgActive, Ground},
    {ImGuiCol_TitleBgCollapsed, Ground},
    {ImGuiCol_MenuBarBg, Raised},
    {ImGuiCol_ScrollbarBg, None},
    {ImGuiCol_ScrollbarGrab, StrongLine},
    {ImGuiCol_ScrollbarGrabHovered, Middle},
    {ImGuiCol_ScrollbarGrabActive, Bright},
    {ImGuiCol_CheckMark, {1.0f, 1.0f, 1.0f, 1.0f}},
    {ImGuiCol_SliderGrab, Bright},
    {ImGuiCol_SliderGrabActive, Light},
    {ImGuiCol_Button, {0.195f, 0.216f, 0.248f, 1.0f}},
    {ImGuiCol_ButtonHovered, Middle},
    {ImGuiCol_ButtonActive, Pressed},
    {ImGuiCol_Header, Deep},
    {ImGuiCol_HeaderHovered, Middle},
    {ImGuiCol_HeaderActive, Pressed},
    {ImGuiCol_Separator, Line},
    {ImGuiCol_SeparatorHovered, Bright},
    {ImGuiCol_SeparatorActive, Light},
    {ImGuiCol_ResizeGrip, None},
    {ImGuiCol_ResizeGripHovered, Middle},
    {ImGuiCol_ResizeGripActive, Bright},
    {ImGuiCol_Tab, None},
    {ImGuiCol_TabHovered, Middle},
    {ImGuiCol_TabSelected, Deep},
    {ImGuiCol_TabSelectedOverline, Bright},
    {ImGuiCol_TabDimmed, None},
    {ImGuiCol_TabDimmedSelected, Raised},
    {ImGuiCol_TabDimmedSelectedOverline, StrongLine},
    {ImGuiCol_DockingPreview, {0.25f, 0.46f, 0.70f, 0.60f}},
    {ImGuiCol_DockingEmptyBg, Ground},
    {ImGuiCol_TableHeaderBg, Raised},
    {ImGuiCol_TableBorderStrong, Line},
    {ImGuiCol_TableBorderLight, Line},
    {ImGuiCol_TableRowBg, None},
    {ImGuiCol_TableRowBgAlt, {1.0f, 1.0f, 1.0f, 0.018f}},
    {ImGuiCol_DragDropTarget, Light},
    {ImGuiCol_NavCursor, Light},
    {ImGuiCol_ModalWindowDimBg, {0.02f, 0.025f, 0.03f, 0.60f}},
};

}

void apply(float scale) {
    ImGuiStyle style;
    ImGui::StyleColorsDark(&style);
    for(const Entry& entry: Colors) style.Colors[entry.slot] = entry.color;

    style.WindowPadding = {10.0f, 10.0f};
    style.FramePadding = {9.0f, 5.0f};
    style.CellPadding = {8.0f, 4.0f};
    style.ItemSpacing = {9.0f, 7.0f};
    style.ItemInnerSpacing = {7.0f, 5.0f};
    style.IndentSpacing = 20.0f;
    style.ScrollbarSize = 13.0f;
    style.GrabMinSize = 12.0f;

    style.WindowRounding = 6.0f;
    style.ChildRounding = 4.0f;
    style.PopupRounding = 6.0f;
    style.FrameRounding = 4.0f;
    style.ScrollbarRounding = 7.0f;
    style.GrabRounding = 4.0f;
    style.TabRounding = 4.0f;

    style.WindowBorderSize = 1.0f;
    style.PopupBorderSize = 1.0f;
    style.FrameBorderSize = 0.0f;
    style.TabBorderSize = 0.0f;
    style.TabBarBorderSize = 1.0f;
    style.TabBarOverlineSize = 2.0f;
    style.DockingSeparatorSize = 3.0f;
    style.SeparatorTextBorderSize = 1.0f;

    style.WindowTitleAlign = {0.5f, 0.5f};
    style.WindowMenuButtonPosition = ImGuiDir_None;

    style.ScaleAllSizes(scale);
    style.FontScaleDpi = scale;
    ImGui::GetStyle() = style;
}

}
