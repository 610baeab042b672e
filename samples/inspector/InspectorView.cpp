#include "InspectorView.h"

#include <utility>

#include <Corrade/Containers/StaticArray.h>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/PluginManager/AbstractManager.h>
#include <Corrade/Utility/Format.h>
#include <ImGuiGuards.h>
#include <ImGuiText.h>
#include <Magnum/Math/Vector2.h>
#include <QuorvaneEditor/EditorData.h>
#include <QuorvaneEditor/ProjectFile.h>
#include <QuorvaneEditor/QuorvaneEditor.h>
#include <QuorvaneEditor/ValueAccess.h>
#include <ThumbnailManager.h>
#include <Ui/Scope.h>
#include <Ui/Ui.h>
#include <imgui.h>
#include <rapidjson/document.h>

namespace InspectorPlugin {

using namespace Containers::Literals;

namespace {

/** From this width on, in pixels at scale 1, the tree stands beside the values, and above them below it. */
constexpr float WideWidth = 620.0f;

constexpr float TreeShare = 0.33f;
constexpr float PictureSize = 64.0f;
constexpr float TitleSize = 1.3f;

/** A resource that the editor has a picture of. */
struct Pictured {
    Containers::StringView collection;
    ResourceIndexMap EditorData::*indices;
    const char* prefix;
};

constexpr Pictured PicturedCollections[]{
    {"images"_s, &EditorData::imageIndices, ""},
    {"materials"_s, &EditorData::materialIndices, "ma"},
    {"meshes"_s, &EditorData::meshIndices, "m"},
};

}

InspectorView::InspectorView(Corrade::PluginManager::AbstractManager& manager, const Containers::StringView& plugin)
    : QuorvaneEngine::EditorView{manager, plugin} {}

void InspectorView::draw() {
    beginWindow(ImGuiWindowFlags_None);
    if(_windowOpen) drawPanes();
    ImGui::End();
}

void InspectorView::drawPanes() {
    keepSelection();
    const ImVec2 space = ImGui::GetContentRegionAvail();
    const bool isWide = space.x >= Ui::scaled(WideWidth);
    // A text that is being typed is accepted in the frame in which something else is clicked: it has to be drawn once more.
    std::string clicked = _selected;
    {
        const ImVec2 size = isWide ? ImVec2{space.x * TreeShare, 0.0f} : ImVec2{0.0f, space.y * TreeShare};
        const ChildGuard pane{ImGui::BeginChild(
            isWide ? "##left" : "##top", size, isWide ? ImGuiChildFlags_ResizeX : ImGuiChildFlags_ResizeY)};
        if(pane) _tree.draw(editor().project(), clicked);
    }
    if(isWide) ImGui::SameLine(0.0f, ImGui::GetStyle().ItemSpacing.x * 2.0f);
    {
        const ChildGuard pane{ImGui::BeginChild("##values")};
        if(pane) drawValues();
    }
    _selected = std::move(clicked);
}

/* What is selected may have gone, by an undo for instance: then it is what it was in. */
void InspectorView::keepSelection() {
    ProjectFile& project = editor().project();
    if(_selected.empty()) {
        for(const std::string id: project.root()["objects"]) {
            if(!isReachable(id)) continue;
            _selected = childPath("/objects", id);
            _tree.reveal(_selected);
            break;
        }
    }
    const auto isThere = [&] {
        const rapidjson::Value* const value = project.getValue(_selected, false);
        return value && (value->IsObject() || value->IsArray());
    };
    while(!_selected.empty() && !isThere()) _selected.resize(_selected.rfind('/'));
}

void InspectorView::drawValues() {
    if(_selected.empty()) {
        ImGui::TextDisabled("Select an object in the tree");
        return;
    }
    drawHeader();
    const ChildGuard body{ImGui::BeginChild("##rows")};
    if(body) _values.draw(ui(), _selected);
}

void InspectorView::drawHeader() {
    if(drawPicture()) ImGui::SameLine(0.0f, ImGui::GetStyle().ItemSpacing.x * 1.5f);
    {
        const GroupGuard group;
        const bool isNamed =
            !editor().project().root()[Containers::StringView{_selected}].member("name").asString().isEmpty();
        ImGui::PushFont(nullptr, ImGui::GetStyle().FontSizeBase * TitleSize);
        if(isNamed) {
            const Scope scope{&ui(), _selected};
            ui().renameable("name", false);
        } else textUnformatted(Containers::StringView{_selected}.exceptPrefix(_selected.rfind('/') + 1));
        ImGui::PopFont();
        if(isNamed && ImGui::IsItemHovered() && !ui().renamingItem) setTooltip("Double-click to rename");
        ImGui::TextDisabled("%s", _selected.c_str());
    }
    ImGui::Dummy({0.0f, Ui::scaled(2.0f)});
    ImGui::Separator();
    ImGui::Dummy({0.0f, Ui::scaled(2.0f)});
}

/* That of an image, material or mesh; of a texture that of its image, of anything else that of its mesh. */
bool InspectorView::drawPicture() {
    if(!_editorData->thumbnails) return false;
    const Containers::StringView path{_selected};
    const ValueAccess value = editor().project().root()[path];
    Containers::StringView collection = path.exceptPrefix(1).partition('/')[0];
    Containers::StringView id =
        path.exceptPrefix(collection.size() + 2 < path.size() ? collection.size() + 2 : path.size());
    if(collection == "textures"_s) {
        collection = "images"_s;
        id = value.member("image").asString();
    } else if(!value.member("mesh").asString().isEmpty()) {
        collection = "meshes"_s;
        id = value.member("mesh").asString();
    }
    for(const Pictured& one: PicturedCollections) {
        if(one.collection != collection || id.isEmpty() ||
            !editor().project().root()[collection].member(id).existsInProject())
            continue;
        char key[16];
        const std::size_t size = Corrade::Utility::formatInto(key, "{}{}", one.prefix, (_editorData->*one.indices)[id]);
        const float edge = ImTrunc(Ui::scaled(PictureSize));
        return _editorData->thumbnails->thumbnail({key, size}, {edge, edge});
    }
    return false;
}

}
