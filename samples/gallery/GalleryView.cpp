#include "GalleryView.h"

#include <algorithm>
#include <cstring>

#include <ChangeManager.h>
#include <Corrade/PluginManager/AbstractManager.h>
#include <ImGuiGuards.h>
#include <ImGuiText.h>
#include <QuorvaneEditor/ProjectFile.h>
#include <QuorvaneEditor/QuorvaneEditor.h>
#include <QuorvaneEditor/ValueAccess.h>
#include <Ui/Scope.h>
#include <Ui/Ui.h>
#include <imgui.h>
#include <rapidjson/document.h>

#include "ExampleCode.h"
#include "Sources.h"

namespace Gallery {

namespace {

constexpr char Root[] = "gallery";

/** How much of the width belongs to the widgets, and how much to their code. */
constexpr float WidgetShare = 0.44f;
constexpr float CodeShare = 0.56f;

/** Pixels between two examples at scale 1. */
constexpr float RowGap = 5.0f;

/** Draws lines, of which the first is level with the widget. Those that are too long are wrapped. */
void drawCode(const std::string& code) {
    const ImVec2 padding = ImGui::GetStyle().FramePadding;
    const Containers::StringView text{code.data(), code.size()};
    const ImVec2 position = ImGui::GetCursorPos();
    const ImVec2 min = ImGui::GetCursorScreenPos();
    const float width = ImGui::GetContentRegionAvail().x;
    const float textWidth = std::max(width - 2.0f * padding.x, 1.0f);
    const ImVec2 size{width, calcTextSize(text, false, textWidth).y + 2.0f * padding.y};
    ImGui::GetWindowDrawList()->AddRectFilled(min, {min.x + size.x, min.y + size.y},
        ImGui::GetColorU32(ImGuiCol_FrameBg), ImGui::GetStyle().FrameRounding);
    ImGui::SetCursorPos({position.x + padding.x, position.y + padding.y});
    {
        const TextWrapGuard wrap{position.x + padding.x + textWidth};
        textUnformatted(text);
    }
    ImGui::SetCursorPos(position);
    ImGui::Dummy(size);
}

}

GalleryView::GalleryView(Corrade::PluginManager::AbstractManager& manager,
    const Containers::StringView& plugin)
    : EditorView{manager, plugin} {
    for(const Example& example: examples())
        _code.push_back(bodyOf(ExamplesSource, example.name));
}

void GalleryView::draw() {
    beginWindow(ImGuiWindowFlags_None);
    const WindowGuard window{_windowOpen};
    if(!window) return;

    Ui::alignedText("Every widget of the toolkit, beside the lines that draw it.");
    ImGui::SameLine();
    if(ImGui::Button("Set all values")) setValues(nullptr);

    const Scope scope{&ui(), Root};
    const Containers::ArrayView<const Example> all = examples();
    for(std::size_t first = 0, last = 0; first != all.size(); first = last) {
        while(last != all.size() && !std::strcmp(all[last].family, all[first].family))
            ++last;
        drawFamily(first, last);
    }
}

void GalleryView::drawFamily(const std::size_t first, const std::size_t last) {
    const Containers::ArrayView<const Example> all = examples();
    ImGui::SeparatorText(all[first].family);
    StyleGuard style;
    style.variable(ImGuiStyleVar_CellPadding,
        {ImGui::GetStyle().CellPadding.x, Ui::scaled(RowGap)});
    const TableGuard table{ImGui::BeginTable(all[first].family, 2,
        ImGuiTableFlags_SizingStretchProp | ImGuiTableFlags_BordersInnerH)};
    if(!table) return;
    ImGui::TableSetupColumn("widget", ImGuiTableColumnFlags_None, WidgetShare);
    ImGui::TableSetupColumn("code", ImGuiTableColumnFlags_None, CodeShare);
    for(std::size_t i = first; i != last; ++i) {
        ImGui::TableNextRow();
        ImGui::TableNextColumn();
        drawExample(all[i]);
        ImGui::TableNextColumn();
        drawCode(_code[i]);
    }
}

void GalleryView::drawExample(const Example& example) {
    // Some widgets take the width of their window, and not that of a column.
    const ChildGuard child{
        ImGui::BeginChild(example.name, {}, ImGuiChildFlags_AutoResizeY)};
    if(!child) return;
    if(hasValue(example)) example.draw(ui(), _state);
    else if(ImGui::Button("Set a value")) setValues(example.key);
}

bool GalleryView::hasValue(const Example& example) const {
    if(!example.key) return true;
    const rapidjson::Value* const value =
        editor().project().root()[Root].member(example.key).value();
    // Most of them take any value. A colour with an alpha that lacks components is a mistake of the program.
    return value &&
        (std::strcmp(example.name, "colorEdit4") != 0 ||
            (value->IsArray() && value->Size() >= 4));
}

void GalleryView::setValues(const char* const key) {
    rapidjson::Document project;
    project.Parse(ProjectSource);
    const rapidjson::Value& values = project[Root];
    const std::string path = std::string{"/"} + Root;
    const bool hasRoot = editor().project().root()[Root].isObject();
    if(key && hasRoot)
        editor().changeManager().pushChange(
            (path + '/' + key).c_str(), values[key], false);
    else editor().changeManager().pushChange(path.c_str(), values, false);
}

}

CORRADE_PLUGIN_REGISTER(Gallery, Gallery::GalleryView, QUORVANE_MODULE_INTERFACE)
