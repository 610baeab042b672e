#include "app/Theme.h"

#include <iterator>

namespace QuorvaneEngine::Theme {

namespace {

struct Row {
    Color color;
    /** By scheme. */
    ImVec4 values[2];
};

/* Greys with a trace of the blue of the check boxes. */
constexpr Row Colors[]{
    {Color::Ground, {{0.075f, 0.082f, 0.094f, 1.0f}, {0.835f, 0.850f, 0.872f, 1.0f}}},
    {Color::Surface, {{0.105f, 0.115f, 0.131f, 1.0f}, {0.966f, 0.971f, 0.978f, 1.0f}}},
    {Color::Raised, {{0.140f, 0.153f, 0.174f, 1.0f}, {0.922f, 0.931f, 0.944f, 1.0f}}},
    {Color::Field, {{0.165f, 0.180f, 0.205f, 1.0f}, {0.880f, 0.893f, 0.912f, 1.0f}}},
    {Color::FieldHovered, {{0.205f, 0.228f, 0.262f, 1.0f}, {0.842f, 0.862f, 0.890f, 1.0f}}},
    {Color::Button, {{0.195f, 0.216f, 0.248f, 1.0f}, {0.848f, 0.865f, 0.890f, 1.0f}}},
    {Color::Line, {{0.205f, 0.224f, 0.252f, 1.0f}, {0.800f, 0.815f, 0.838f, 1.0f}}},
    {Color::StrongLine, {{0.280f, 0.305f, 0.340f, 1.0f}, {0.690f, 0.710f, 0.740f, 1.0f}}},

    {Color::Chosen, {{0.125f, 0.230f, 0.350f, 1.0f}, {0.770f, 0.855f, 0.945f, 1.0f}}},
    {Color::Hovered, {{0.180f, 0.330f, 0.500f, 1.0f}, {0.700f, 0.812f, 0.930f, 1.0f}}},
    {Color::Pressed, {{0.220f, 0.400f, 0.610f, 1.0f}, {0.620f, 0.756f, 0.905f, 1.0f}}},
    {Color::RowHovered, {{0.150f, 0.222f, 0.305f, 1.0f}, {0.815f, 0.872f, 0.938f, 1.0f}}},
    {Color::RowPressed, {{0.105f, 0.190f, 0.290f, 1.0f}, {0.740f, 0.830f, 0.930f, 1.0f}}},
    {Color::Mark, {{0.250f, 0.460f, 0.700f, 1.0f}, {0.250f, 0.460f, 0.700f, 1.0f}}},

    {Color::Letters, {{0.890f, 0.902f, 0.918f, 1.0f}, {0.105f, 0.122f, 0.150f, 1.0f}}},
    {Color::PaleLetters, {{0.625f, 0.650f, 0.688f, 1.0f}, {0.325f, 0.348f, 0.385f, 1.0f}}},
    {Color::Link, {{0.420f, 0.660f, 0.920f, 1.0f}, {0.110f, 0.340f, 0.590f, 1.0f}}},
    {Color::Good, {{0.450f, 0.720f, 0.520f, 1.0f}, {0.080f, 0.390f, 0.190f, 1.0f}}},
    {Color::Caution, {{0.950f, 0.760f, 0.360f, 1.0f}, {0.490f, 0.310f, 0.000f, 1.0f}}},
    {Color::Bad, {{0.965f, 0.520f, 0.490f, 1.0f}, {0.680f, 0.110f, 0.100f, 1.0f}}},

    {Color::Primary, {{0.180f, 0.330f, 0.500f, 1.0f}, {0.235f, 0.440f, 0.675f, 1.0f}}},
    {Color::PrimaryHovered, {{0.220f, 0.400f, 0.610f, 1.0f}, {0.195f, 0.385f, 0.605f, 1.0f}}},
    {Color::PrimaryPressed, {{0.180f, 0.330f, 0.500f, 1.0f}, {0.160f, 0.330f, 0.530f, 1.0f}}},
    {Color::PrimaryLetters, {{0.890f, 0.902f, 0.918f, 1.0f}, {0.985f, 0.990f, 0.995f, 1.0f}}},

    {Color::ViewWhite, {{1.000f, 1.000f, 1.000f, 1.0f}, {0.105f, 0.122f, 0.150f, 1.0f}}},
    {Color::ViewYellow, {{1.000f, 0.800f, 0.000f, 1.0f}, {0.490f, 0.310f, 0.000f, 1.0f}}},
    {Color::ViewRed, {{1.000f, 0.000f, 0.000f, 1.0f}, {0.680f, 0.110f, 0.100f, 1.0f}}},

    {Color::Check, {{1.000f, 1.000f, 1.000f, 1.0f}, {0.125f, 0.230f, 0.350f, 1.0f}}},
    {Color::OddRow, {{1.000f, 1.000f, 1.000f, 0.018f}, {0.000f, 0.000f, 0.000f, 0.018f}}},
    {Color::Selection, {{0.250f, 0.460f, 0.700f, 0.55f}, {0.250f, 0.460f, 0.700f, 0.35f}}},
    {Color::Shade, {{0.020f, 0.025f, 0.030f, 0.60f}, {0.200f, 0.230f, 0.270f, 0.45f}}},
    {Color::None, {{}, {}}},
};

static_assert(std::size(Colors) == ColorCount);

struct Slot {
    ImGuiCol slot;
    Color color;
};

constexpr Slot Slots[]{
    {ImGuiCol_Text, Color::Letters},
    {ImGuiCol_TextDisabled, Color::PaleLetters},
    {ImGuiCol_TextLink, Color::Link},
    {ImGuiCol_TextSelectedBg, Color::Selection},
    {ImGuiCol_InputTextCursor, Color::Letters},
    {ImGuiCol_WindowBg, Color::Surface},
    {ImGuiCol_ChildBg, Color::None},
    {ImGuiCol_PopupBg, Color::Raised},
    {ImGuiCol_Border, Color::Line},
    {ImGuiCol_BorderShadow, Color::None},
    {ImGuiCol_FrameBg, Color::Field},
    {ImGuiCol_FrameBgHovered, Color::FieldHovered},
    {ImGuiCol_FrameBgActive, Color::FieldHovered},
    {ImGuiCol_TitleBg, Color::Ground},
    {ImGuiCol_TitleBgActive, Color::Ground},
    {ImGuiCol_TitleBgCollapsed, Color::Ground},
    {ImGuiCol_MenuBarBg, Color::Raised},
    {ImGuiCol_ScrollbarBg, Color::None},
    {ImGuiCol_ScrollbarGrab, Color::StrongLine},
    {ImGuiCol_ScrollbarGrabHovered, Color::Hovered},
    {ImGuiCol_ScrollbarGrabActive, Color::Mark},
    {ImGuiCol_CheckMark, Color::Check},
    {ImGuiCol_CheckboxSelectedBg, Color::Chosen},
    {ImGuiCol_SliderGrab, Color::Mark},
    {ImGuiCol_SliderGrabActive, Color::Link},
    {ImGuiCol_Button, Color::Button},
    {ImGuiCol_ButtonHovered, Color::Hovered},
    {ImGuiCol_ButtonActive, Color::Pressed},
    {ImGuiCol_Header, Color::Chosen},
    {ImGuiCol_HeaderHovered, Color::RowHovered},
    {ImGuiCol_HeaderActive, Color::RowPressed},
    {ImGuiCol_Separator, Color::Line},
    {ImGuiCol_SeparatorHovered, Color::Mark},
    {ImGuiCol_SeparatorActive, Color::Link},
    {ImGuiCol_ResizeGrip, Color::None},
    {ImGuiCol_ResizeGripHovered, Color::Hovered},
    {ImGuiCol_ResizeGripActive, Color::Mark},
    {ImGuiCol_Tab, Color::None},
    {ImGuiCol_TabHovered, Color::Hovered},
    {ImGuiCol_TabSelected, Color::Chosen},
    {ImGuiCol_TabSelectedOverline, Color::Mark},
    {ImGuiCol_TabDimmed, Color::None},
    {ImGuiCol_TabDimmedSelected, Color::Raised},
    {ImGuiCol_TabDimmedSelectedOverline, Color::StrongLine},
    {ImGuiCol_DockingPreview, Color::Selection},
    {ImGuiCol_DockingEmptyBg, Color::Ground},
    {ImGuiCol_PlotLines, Color::Mark},
    {ImGuiCol_PlotLinesHovered, Color::Link},
    {ImGuiCol_PlotHistogram, Color::Mark},
    {ImGuiCol_PlotHistogramHovered, Color::Link},
    {ImGuiCol_TableHeaderBg, Color::Raised},
    {ImGuiCol_TableBorderStrong, Color::Line},
    {ImGuiCol_TableBorderLight, Color::Line},
    {ImGuiCol_TableRowBg, Color::None},
    {ImGuiCol_TableRowBgAlt, Color::OddRow},
    {ImGuiCol_TreeLines, Color::StrongLine},
    {ImGuiCol_DragDropTarget, Color::Link},
    {ImGuiCol_DragDropTargetBg, Color::None},
    {ImGuiCol_UnsavedMarker, Color::Letters},
    {ImGuiCol_NavCursor, Color::Link},
    {ImGuiCol_NavWindowingHighlight, Color::Link},
    {ImGuiCol_NavWindowingDimBg, Color::Shade},
    {ImGuiCol_ModalWindowDimBg, Color::Shade},
};

static_assert(std::size(Slots) == ImGuiCol_COUNT);

void setSizes(ImGuiStyle& style) {
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
}

Scheme applied = Scheme::Dark;

}

const ImVec4& color(const Color color, const Scheme scheme) {
    return Colors[std::size_t(color)].values[std::size_t(scheme)];
}

const ImVec4& color(const Color color) { return Theme::color(color, applied); }

Scheme scheme() { return applied; }

void apply(const float scale, const Scheme scheme) {
    applied = scheme;
    ImGuiStyle& present = ImGui::GetStyle();
    ImGuiStyle style;
    for(const Slot& slot: Slots) style.Colors[slot.slot] = color(slot.color);
    setSizes(style);
    style.ScaleAllSizes(scale);
    style.FontScaleDpi = scale;
    style.FontSizeBase = present.FontSizeBase;
    present = style;
}

}
