#include <imgui.h>
#include <imgui_internal.h>
#include <rapidjson/document.h>

#include "ImGuiGuards.h"
#include "ImGuiText.h"
#include "QuorvaneEditor/JsonObject.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "Ui/Scope.h"
#include "Ui/Ui.h"

namespace QuorvaneEngine {

namespace {

/** Height of a list in pixels at scale 1. */
constexpr float ListHeight = 100.0f;

/** Draws a row with a text as it stands.
    @return whether it was clicked */
bool row(const Containers::StringView text, const bool selected) {
    const ImVec2 size{0.0f, ImGui::GetTextLineHeight()};
    if(isLineLabel(text)) return ImGui::Selectable(ImGuiText{text}, selected, ImGuiSelectableFlags_None, size);
    const ImVec2 position = ImGui::GetCursorScreenPos();
    const bool clicked = ImGui::Selectable("##row", selected, ImGuiSelectableFlags_None, size);
    renderLine(position, {ImGui::GetCurrentWindow()->WorkRect.Max.x, position.y + size.y}, text);
    return clicked;
}

}

bool Ui::stringList(const Containers::StringView name, int& selected) {
    const Scope scope{this, name};
    const float width = ImGui::GetCurrentWindow()->ContentRegionRect.GetWidth();
    const ChildGuard child{ImGui::BeginChild(ImGuiText{name}, {width, scaled(ListHeight)})};
    if(!child) return false;
    const IdGuard id{name};
    rapidjson::Value* const strings = project->getValue(scopePath(), false);
    if(!strings || !strings->IsArray()) return false;

    // The library puts rows at whole pixels, and so has to be what it computes the scroll range from.
    const ImVec2 spacing = ImGui::GetStyle().ItemSpacing;
    StyleGuard style;
    style.variable(ImGuiStyleVar_ItemSpacing, {spacing.x, ImTrunc(spacing.y)});

    bool clicked = false;
    ImGuiListClipper clipper;
    clipper.Begin(int(strings->Size()), ImGui::GetTextLineHeightWithSpacing());
    while(clipper.Step()) {
        for(int i = clipper.DisplayStart; i != clipper.DisplayEnd; ++i) {
            const IdGuard rowId{i};
            rapidjson::Value& element = (*strings)[rapidjson::SizeType(i)];
            if(!row(JsonObject{&element}.asString(), i == selected)) continue;
            selected = i;
            clicked = true;
        }
    }
    return clicked;
}

}
