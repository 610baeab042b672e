#include <algorithm>
#include <cstddef>
#include <utility>

#include <Corrade/Utility/Format.h>
#include <imgui.h>
#include <imgui_internal.h>
#include <rapidjson/document.h>

#include "ChangeManager.h"
#include "ImGuiGuards.h"
#include "ImGuiText.h"
#include "QuorvaneEditor/EditorData.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "QuorvaneEditor/ValueAccess.h"
#include "ThumbnailManager.h"
#include "Ui/Ui.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

constexpr char PopupName[] = "resource-dropdown-popup";

/** In pixels at scale 1. */
constexpr float PictureSize = 64.0f;
constexpr float RowGap = 2.0f;

/** Lines of a list that has to fit under its field; where it does not, it opens above. */
constexpr float LeastLines = 4.0f;

/** Lines between a list and the edge of the main window. */
constexpr float FreeLines = 2.0f;

/** Bytes of an ID that a row is labelled by, unseen: more would ask for memory. Rows are told apart by their places, too. */
constexpr std::size_t MaxLabelSize = 200;

/** What is chosen in a list, where it is no row. */
constexpr int Nothing = -2;
constexpr int NoResource = -1;

/** A collection whose resources have pictures. */
struct Pictured {
    Containers::StringView collection;
    ResourceIndexMap EditorData::*indices;

    /** What is before the index in the name of a picture. */
    const char* prefix;
};

constexpr Pictured PicturedCollections[]{
    {"textures"_s, &EditorData::imageIndices, ""},
    {"materials"_s, &EditorData::materialIndices, "ma"},
    {"meshes"_s, &EditorData::meshIndices, "m"},
};

const Pictured* picturedCollection(const Containers::StringView type) {
    const auto* const found = std::find_if(std::begin(PicturedCollections), std::end(PicturedCollections),
        [&](const Pictured& pictured) { return pictured.collection == type; });
    return found == std::end(PicturedCollections) ? nullptr : found;
}

/** A list of resources that is being drawn. */
struct List {
    ValueAccess collection;
    const Pictured* pictured;

    /** Null where there are no pictures. */
    EditorData* data;

    /** Of a row, in pixels. */
    float height;
};

/** Draws the picture of a resource at a place in the line that just ended, which then ends again. */
void drawPicture(const List& list, const Containers::StringView id, const ValueAccess& entry, const ImVec2& position) {
    ImGui::SameLine();
    ImGui::GetCurrentWindow()->DC.CursorPos = position;
    // The picture of a texture is that of its image.
    const Containers::StringView picture =
        list.pictured->collection == "textures"_s ? entry.member("image").asString() : id;
    char key[16];
    const std::size_t size =
        Corrade::Utility::formatInto(key, "{}{}", list.pictured->prefix, (list.data->*list.pictured->indices)[picture]);
    if(!list.data->thumbnails->thumbnail({key, size}, {list.height, list.height}))
        ImGui::Dummy({list.height, list.height});
}

/** Returns whether the row was clicked. */
bool drawRow(const List& list, const Containers::StringView id) {
    const ValueAccess entry = list.collection.member(id);
    const ImVec2 position = ImGui::GetCursorScreenPos();
    const bool isClicked = ImGui::Selectable(ImGuiText{"##", id.prefix(std::min(id.size(), MaxLabelSize))}, false,
        ImGuiSelectableFlags_None, {0.0f, list.height});
    float left = position.x;
    if(list.data) {
        drawPicture(list, id, entry, position);
        left += list.height + ImGui::GetStyle().ItemInnerSpacing.x;
    }
    const Containers::StringView name = entry.member("name").asString();
    renderLine({left, position.y}, {ImGui::GetCurrentWindow()->WorkRect.Max.x, position.y + list.height},
        name.isEmpty() ? id : name);
    return isClicked;
}

/** Draws the row for no resource and those for the resources.
    @return what was clicked */
int drawRows(const List& list, const Containers::ArrayView<const Containers::StringView> ids) {
    // Rows stand at whole pixels, from which the scroll range is computed.
    const float gap = ImTrunc(Ui::scaled(RowGap));
    StyleGuard style;
    style.variable(ImGuiStyleVar_ItemSpacing, {ImGui::GetStyle().ItemSpacing.x, gap});
    int clicked = Nothing;
    if(ImGui::Selectable("- none -")) clicked = NoResource;
    ImGuiListClipper clipper;
    clipper.Begin(int(ids.size()), list.height + gap);
    while(clipper.Step()) {
        for(int i = clipper.DisplayStart; i != clipper.DisplayEnd; ++i) {
            const IdGuard row{i};
            if(drawRow(list, ids[std::size_t(i)])) clicked = i;
        }
    }
    return clicked;
}

/** Places the next window under a field, down to the end of the main window; above it, where there is more room. */
void placePopup(const ImVec2& min, const ImVec2& max) {
    const ImGuiViewport& viewport = *ImGui::GetMainViewport();
    const ImGuiStyle& style = ImGui::GetStyle();
    const float margin = FreeLines * ImGui::GetTextLineHeight();
    const float least = 2.0f * style.WindowPadding.y + ImGui::GetFrameHeightWithSpacing() +
        LeastLines * ImGui::GetTextLineHeightWithSpacing();
    const float below = viewport.Pos.y + viewport.Size.y - margin - max.y;
    const float above = min.y - viewport.Pos.y - margin;
    const bool isAbove = below < least && above > below;
    const float height = std::max(isAbove ? above : below, least);
    ImGui::SetNextWindowPos({min.x, isAbove ? min.y - height : max.y});
    ImGui::SetNextWindowSize({max.x - min.x, height});
}

bool drawSearch(Containers::Array<char>& text) {
    // The bar is by that gap wider than its width, and the window cuts off half of its padding.
    const ImGuiStyle& current = ImGui::GetStyle();
    StyleGuard style;
    style.variable(ImGuiStyleVar_ItemSpacing,
        {std::min(current.ItemSpacing.x, ImTrunc(0.5f * current.WindowPadding.x)), current.ItemSpacing.y});
    const bool wasEmpty = text[0] == '\0';
    const bool isTyped = Ui::searchBar("resourcepickersearch", text, ImGui::GetContentRegionAvail().x, {}, 0.0f, true);
    // The bar empties itself when it loses the keyboard.
    return isTyped || wasEmpty != (text[0] == '\0');
}

}

void Ui::resourcePopup(const Containers::StringView type, const bool byName, ResourceFilter& filter,
    const bool isOpened, const ImVec2& min, const ImVec2& max) {
    // The search is emptied as it takes the keyboard.
    if(isOpened) ImGui::OpenPopup(PopupName);
    placePopup(min, max);
    int chosen = Nothing;
    {
        const PopupGuard popup{ImGui::BeginPopup(PopupName)};
        if(!popup) return;
        const bool isSearched = drawSearch(resourceSearch) || ImGui::IsWindowAppearing();
        if(isSearched) ImGui::SetNextWindowScroll({0.0f, 0.0f});
        // The results view the document.
        if(isSearched || _resultsRevision != project->revision()) findResources(type, byName, filter);
        {
            const ChildGuard region{ImGui::BeginChild("##scrollingregion")};
            const Pictured* const pictured = picturedCollection(type);
            const bool hasPictures = pictured && editorData && editorData->thumbnails;
            const float height = pictured ? ImTrunc(scaled(PictureSize)) : ImGui::GetTextLineHeight();
            if(region)
                chosen = drawRows(
                    {project->root()[type], pictured, hasPictures ? editorData : nullptr, height}, resourceResults);
        }
        if(chosen != Nothing || ImGui::IsKeyPressed(ImGuiKey_Escape)) ImGui::CloseCurrentPopup();
    }
    if(chosen == NoResource) changes->pushChange(scopePath(), rapidjson::Value{}, false);
    else if(chosen != Nothing) pushResource(type, byName, resourceResults[std::size_t(chosen)]);
}

void Ui::findResources(const Containers::StringView type, const bool byName, ResourceFilter& filter) {
    _resultsRevision = project->revision();
    performResourceSearch(type, "name", resourceSearch, resourceResults);
    if(!filter && !byName) return;

    // What is not offered has no row: the list has to know how long it is.
    const ValueAccess collection = project->root()[type];
    std::size_t offered = 0;
    for(const Containers::StringView id: resourceResults) {
        ValueAccess entry = collection.member(id);
        if(byName && entry.member("name").asString().isEmpty()) continue;
        if(!filter || filter(entry)) resourceResults[offered++] = id;
    }
    Containers::Array<Containers::StringView> kept{Corrade::ValueInit, offered};
    std::copy(resourceResults.begin(), resourceResults.begin() + offered, kept.begin());
    resourceResults = std::move(kept);
}

}
