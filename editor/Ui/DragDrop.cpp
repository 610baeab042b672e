#include <algorithm>
#include <cstdlib>

#include <Corrade/Utility/Debug.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "ImGuiText.h"
#include "Ui/Ui.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

struct PayloadType {
    Containers::StringView collection;
    Containers::StringView name;
};

constexpr PayloadType PayloadTypes[]{
    {"meshes"_s, "DND_MESH"_s},
    {"textures"_s, "DND_TEXTURE"_s},
    {"shaders"_s, "DND_SHADER"_s},
    {"materials"_s, "DND_MATERIAL"_s},
    {"images"_s, "DND_IMAGE"_s},
    {"animations"_s, "DND_ANIMATION"_s},
    {"skins"_s, "DND_SKIN"_s},
    {"pipelines"_s, "DND_PIPELINE"_s},
    {"objects"_s, "DND_OBJECT"_s},
    {"fonts"_s, "DND_FONT"_s},
};

/** How far from the edges of a window it takes drops, in pixels at scale 1. */
constexpr float TargetMargin = 8.0f;

}

Containers::StringView Ui::resourceToDragDropType(const Containers::StringView type) {
    const auto* const found = std::find_if(std::begin(PayloadTypes), std::end(PayloadTypes),
        [&](const PayloadType& payload) { return payload.collection == type; });
    if(found == std::end(PayloadTypes)) {
        Corrade::Utility::Error{} << "Ui::acceptDragDropResources(): resource type" << type << "unsupported.";
        std::abort();
    }
    return found->name;
}

bool Ui::resourceDragDropSource(
    const Containers::StringView type, const Containers::StringView id, const Containers::StringView label) {
    if(!ImGui::BeginDragDropSource()) return false;
    // The library takes no address of a payload without bytes.
    ImGui::SetDragDropPayload(
        ImGuiText{resourceToDragDropType(type)}, id.isEmpty() ? nullptr : id.data(), id.size(), ImGuiCond_Always);
    textUnformatted(label);
    ImGui::EndDragDropSource();
    return true;
}

bool Ui::acceptDragDropResources(const Containers::StringView type, Containers::StringView& id) {
    if(!ImGui::BeginDragDropTarget()) return false;
    const ImGuiPayload* const payload = ImGui::AcceptDragDropPayload(resourceToDragDropType(type).data());
    if(payload) {
        // The library forgets a payload as soon as its target ends.
        _droppedId = Containers::StringView{static_cast<const char*>(payload->Data), std::size_t(payload->DataSize)};
        id = _droppedId;
    }
    ImGui::EndDragDropTarget();
    return payload;
}

bool Ui::beginDragDropTargetWindow() {
    const ImGuiPayload* const payload = ImGui::GetDragDropPayload();
    if(payload && payload->IsDelivery()) return false;
    const ImGuiWindow& window = *ImGui::GetCurrentWindow();
    ImRect target = window.InnerRect;
    target.Expand(-scaled(TargetMargin));
    target.ClipWithFull(window.InnerRect);
    return ImGui::BeginDragDropTargetCustom(target, window.ID);
}

}
