#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

#include <Corrade/Utility/Debug.h>
#include <imgui.h>
#include <imgui_internal.h>
#include <rapidjson/document.h>

#include "ChangeManager.h"
#include "ImGuiGuards.h"
#include "ImGuiText.h"
#include "QuorvaneEditor/AbstractResourceManager.h"
#include "QuorvaneEditor/EditorData.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "QuorvaneEditor/ValueAccess.h"
#include "Ui/Scope.h"
#include "Ui/StorableText.h"
#include "Ui/Ui.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

/** Characters of the icon font: a triangle with an exclamation mark, a pipette. */
constexpr char WarningIcon[] = "\xef\x81\xb1";
constexpr char PickIcon[] = "\xef\x87\xbb";

constexpr ImVec4 WarningColor{1.0f, 0.8f, 0.0f, 1.0f};

constexpr Containers::StringView NoneLabel = "- none -"_s;

/** Bytes that are shown of an ID: the library lays a text out in every frame, as long as it may be. */
constexpr std::size_t MaxIdSize = 256;

/** What a value refers to. */
struct Reference {
    bool isSet;

    /** The resource, if there is one. */
    ValueAccess entry;

    /** The value's text: the ID or the name of a resource. */
    Containers::StringView text;
};

Reference referenceOf(
    ProjectFile& project, const Containers::StringView path, const Containers::StringView type, const bool byName) {
    rapidjson::Value* const value = project.getValue(path, false);
    const ValueAccess none{project, nullptr};
    if(!value || value->IsNull()) return {false, none, {}};
    const Containers::StringView text = JsonObject{value}.asString();
    if(text.isEmpty()) return {true, none, text};
    const ValueAccess collection = project.root()[type];
    if(!byName) return {true, collection.member(text), text};
    const ValueAccess entry = project.resourceByName(type, text);
    const bool hasId = entry.value() != collection.member("").value();
    return {true, hasId ? entry : none, text};
}

/** The key of an entry, empty where it is none of the collection. Members lie one behind the other, so it is known from its place: a
    walk through all of them would be one in every frame. */
Containers::StringView keyOf(const ValueAccess& collection, const ValueAccess& entry) {
    if(!collection.isObject() || !collection.size()) return {};
    const rapidjson::Value::MemberIterator first = collection.value()->MemberBegin();
    const std::uintptr_t distance =
        reinterpret_cast<std::uintptr_t>(entry.value()) - reinterpret_cast<std::uintptr_t>(&first->value);
    const std::size_t index = distance / sizeof(rapidjson::Value::Member);
    if(index >= collection.size()) return {};
    const rapidjson::Value::Member& member = first[std::ptrdiff_t(index)];
    if(&member.value != entry.value()) return {};
    return {member.name.GetString(), member.name.GetStringLength()};
}

/** What stands for a resource that has no name. */
Containers::StringView nameOf(const Reference& reference) {
    const Containers::StringView name = reference.entry.member("name").asString();
    return name.isEmpty() ? reference.text : name;
}

void showId(const Containers::StringView id) {
    if(id.isEmpty()) return;
    std::size_t size = std::min(id.size(), MaxIdSize);
    // The bytes 10xxxxxx go on with a character.
    while(size != id.size() && size && (std::uint8_t(id[size]) & 0xc0) == 0x80) --size;
    ImGui::SetTooltip("id: %.*s%s", int(size), id.data(), size == id.size() ? "" : "...");
}

void drawUnknownSign() {
    {
        StyleGuard style;
        style.color(ImGuiCol_Text, WarningColor);
        Ui::alignedText(WarningIcon);
    }
    if(ImGui::IsItemHovered()) setTooltip("Unknown resource!");
    ImGui::SameLine();
}

/** Draws the field that looks like a drop-down, in what is left of the line.
    @param reserved     pixels that stay free at its end
    @return whether it was clicked */
bool drawField(const Containers::StringView shown, const float reserved) {
    ImGui::SetNextItemWidth(std::max(ImGui::GetContentRegionAvail().x - reserved, 1.0f));
    // Only the keyboard opens the library's own list, whose place ours takes. A click opens ours first.
    const bool isOpened{ComboGuard{ImGui::BeginCombo("##val", "")}};
    // As a preview, the name would lose what follows "##".
    const ImVec2 min = ImGui::GetItemRectMin();
    const ImVec2 max = ImGui::GetItemRectMax();
    renderLine({min.x + ImGui::GetStyle().FramePadding.x, min.y}, {max.x - ImGui::GetFrameHeight(), max.y}, shown);
    return isOpened || ImGui::IsItemClicked();
}

float pickButtonWidth() { return calcTextSize(PickIcon, true).x + 2.0f * ImGui::GetStyle().FramePadding.x; }

/** What the button means is the host's business. */
void drawPickButton(EditorData* const data, const Containers::StringView path, const bool byName) {
    const DisabledGuard disabled{!data || !data->pickObject};
    if(ImGui::SmallButton(PickIcon)) data->pickObject(path, byName);
}

}

bool Ui::selectResource(
    const Containers::StringView label, const Containers::StringView type, const bool byName, ResourceFilter filter) {
    const Scope scope{this, label};
    if(ImGui::GetCurrentWindow()->SkipItems) return false;
    const Int before = project->revision();
    const Reference current = referenceOf(*project, scopePath(), type, byName);
    const bool exists = current.entry.existsInProject();
    if(current.isSet && !exists) drawUnknownSign();
    if(!(flags & Flag::NoLabel)) Ui::label(label);

    // One item, over all of which the path of the value is shown.
    const GroupGuard group;
    const bool hasButton = type == "objects"_s;
    const bool isOpened = drawField(exists ? nameOf(current) : NoneLabel,
        hasButton ? pickButtonWidth() + ImGui::GetStyle().ItemSpacing.x + scaled(1.0f) : 0.0f);
    const ImVec2 min = ImGui::GetItemRectMin();
    const ImVec2 max = ImGui::GetItemRectMax();
    if(current.isSet && ImGui::IsItemHovered())
        showId(byName ? keyOf(project->root()[type], current.entry) : current.text);
    Containers::StringView dropped;
    if(acceptDragDropResources(type, dropped)) pushResource(type, byName, dropped);
    valueContextMenu();

    resourcePopup(type, byName, filter, isOpened, min, max);
    if(hasButton) {
        ImGui::SameLine();
        drawPickButton(editorData, scopePath(), byName);
    }
    return project->revision() != before;
}

void Ui::pushResource(const Containers::StringView type, const bool byName, const Containers::StringView id) {
    if(!byName) {
        if(isStorable(id)) changes->pushChange(scopePath(), id, false);
        else
            Corrade::Utility::Warning{} << "Ui::selectResource(): the ID of the resource for" << scopePath()
                                        << "is not UTF-8";
        return;
    }
    const Containers::StringView name = project->root()[type].member(id).member("name").asString();
    if(!name.isEmpty()) changes->pushChange(scopePath(), name, false);
}

bool Ui::selectResource(const Containers::StringView label, const AbstractResourceManager& manager, const bool byName,
    ResourceFilter filter) {
    return selectResource(label, manager.collection(), byName, std::move(filter));
}

bool Ui::selectResourceName(
    const Containers::StringView label, const AbstractResourceManager& manager, ResourceFilter filter) {
    return selectResource(label, manager.collection(), true, std::move(filter));
}

bool Ui::selectResourceName(
    const Containers::StringView label, const Containers::StringView type, ResourceFilter filter) {
    return selectResource(label, type, true, std::move(filter));
}

bool Ui::selectObjectResource(
    const Containers::StringView label, const ObjectResourceManager& manager, const bool byName) {
    return selectResource(label, manager.collection(), byName);
}

}
