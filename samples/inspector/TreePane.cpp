#include "TreePane.h"

#include <algorithm>

#include <Corrade/Containers/StaticArray.h>
#include <Corrade/Containers/StringStl.h>
#include <ImGuiGuards.h>
#include <ImGuiText.h>
#include <Ui/Ui.h>
#include <icons_font_awesome_6.h>
#include <imgui.h>
#include <imgui_internal.h>

namespace InspectorPlugin {

using namespace Containers::Literals;

namespace {

constexpr std::size_t SearchSize = 128;

constexpr ImGuiTreeNodeFlags RowFlags = ImGuiTreeNodeFlags_OpenOnArrow | ImGuiTreeNodeFlags_OpenOnDoubleClick |
    ImGuiTreeNodeFlags_SpanFullWidth | ImGuiTreeNodeFlags_FramePadding | ImGuiTreeNodeFlags_NoTreePushOnOpen;

struct CollectionIcon {
    Containers::StringView collection;
    const char* icon;
};

constexpr CollectionIcon Icons[]{
    {"animations"_s, ICON_FA_PERSON_RUNNING},
    {"fonts"_s, ICON_FA_FONT},
    {"images"_s, ICON_FA_IMAGE},
    {"languages"_s, ICON_FA_LANGUAGE},
    {"localization"_s, ICON_FA_COMMENTS},
    {"materials"_s, ICON_FA_PALETTE},
    {"meshes"_s, ICON_FA_CUBE},
    {"objects"_s, ICON_FA_CUBES},
    {"pipelines"_s, ICON_FA_DIAGRAM_PROJECT},
    {"settings"_s, ICON_FA_GEAR},
    {"shaders"_s, ICON_FA_WAND_MAGIC_SPARKLES},
    {"skins"_s, ICON_FA_BONE},
    {"textures"_s, ICON_FA_CHESS_BOARD},
};

/** Of a member of the root and all below it. */
const char* iconOf(const Containers::StringView path) {
    const Containers::StringView member = path.exceptPrefix(1).partition('/')[0];
    for(const CollectionIcon& one: Icons)
        if(one.collection == member) return one.icon;
    return ICON_FA_FOLDER;
}

}

TreePane::TreePane(): _search{Corrade::ValueInit, SearchSize} {}

void TreePane::draw(ProjectFile& project, std::string& selected) {
    Ui::searchBar("inspectorsearch"_s, _search, ImGui::GetContentRegionAvail().x - Ui::scaled(10.0f), {}, 0.0f, false);
    const bool isFound = _search[0] == '\0' && !_revealed.empty();
    if(isFound) _tree.reveal(_revealed);
    if(_tree.update(project, _search.data())) _rows.clear();

    const ChildGuard body{ImGui::BeginChild("##tree")};
    if(!body) return;
    StyleGuard style;
    style.variable(ImGuiStyleVar_ItemSpacing, {ImGui::GetStyle().ItemSpacing.x, 0.0f})
        .variable(ImGuiStyleVar_FramePadding, {ImGui::GetStyle().FramePadding.x, ImTrunc(Ui::scaled(3.0f))});
    if(!_tree.size()) ImGui::TextDisabled(_search[0] ? "Nothing is called that" : "The project is empty");

    ImGuiListClipper clipper;
    clipper.Begin(int(_tree.size()), ImGui::GetFrameHeight());
    const std::size_t revealed = isFound ? _tree.rowOf(_revealed) : _tree.size();
    if(revealed != _tree.size()) clipper.IncludeItemByIndex(int(revealed));
    std::string clicked = selected;
    while(clipper.Step()) {
        for(int i = clipper.DisplayStart; i != clipper.DisplayEnd; ++i) {
            drawRow(row(std::size_t(i)), clicked);
            if(std::size_t(i) == revealed) ImGui::SetScrollHereY();
        }
    }
    if(isFound) _revealed.clear();
    selected = std::move(clicked);
}

void TreePane::reveal(const std::string& path) { _revealed = path; }

const DocumentTree::Row& TreePane::row(const std::size_t index) {
    const auto found = _rows.find(index);
    if(found != _rows.end()) return found->second;
    return _rows.emplace(index, _tree.row(index)).first->second;
}

void TreePane::drawRow(const DocumentTree::Row& row, std::string& selected) {
    const float indent = float(row.depth) * Ui::scaled(16.0f);
    ImGui::SetCursorPosX(ImGui::GetCursorPosX() + indent);
    const ImVec2 position = ImGui::GetCursorScreenPos();
    ImGuiTreeNodeFlags flags = RowFlags;
    if(!row.hasChildren) flags |= ImGuiTreeNodeFlags_Leaf;
    if(row.path == selected) flags |= ImGuiTreeNodeFlags_Selected;
    ImGui::SetNextItemOpen(row.isOpen);
    ImGui::TreeNodeEx(ImGuiText{"##", row.path}, flags);
    if(ImGui::IsItemToggledOpen()) _tree.setOpen(row.path, !row.isOpen);
    else if(ImGui::IsItemClicked() || (ImGui::IsItemFocused() && ImGui::IsKeyPressed(ImGuiKey_Enter)))
        selected = row.path;

    const float right = ImGui::GetCurrentWindow()->WorkRect.Max.x;
    const float bottom = position.y + ImGui::GetFrameHeight();
    float x = position.x + ImGui::GetTreeNodeToLabelSpacing();
    const auto draw = [&](const ImGuiCol color, const Containers::StringView text, const float width) {
        StyleGuard style;
        style.color(ImGuiCol_Text, ImGui::GetStyleColorVec4(color));
        renderLine({x, position.y}, {right, bottom}, text);
        x += width;
    };
    draw(ImGuiCol_TextLink, iconOf(row.path), Ui::scaled(26.0f));
    draw(ImGuiCol_Text, row.key, calcTextSize(row.key).x + Ui::scaled(8.0f));
    if(!row.name.empty()) draw(ImGuiCol_TextDisabled, row.name, 0.0f);
    else if(row.depth == 0 && _search[0] == '\0') draw(ImGuiCol_TextDisabled, std::to_string(row.size), 0.0f);
}

}
