#include "app/DockLayout.h"

#include <algorithm>
#include <iterator>

#include <Corrade/Containers/StringView.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "QuorvaneEditor/EditorState.h"

namespace QuorvaneEngine {

namespace {

constexpr float BottomShare = 0.34f;

constexpr const char* BottomTitles[]{
    DockLayout::Messages, DockLayout::History, DockLayout::Modules, DockLayout::Report};

bool isBottom(Containers::StringView title) {
    return std::find(std::begin(BottomTitles), std::end(BottomTitles), title) != std::end(BottomTitles);
}

/** Where the layout has a panel that belongs below the views, 0 where it has none. */
ImGuiID bottomOf() {
    for(const char* const title: BottomTitles)
        if(const ImGuiWindowSettings* const settings = ImGui::FindWindowSettingsByID(ImHashStr(title)))
            if(ImGui::DockBuilderGetNode(settings->DockId)) return settings->DockId;
    return 0;
}

void build(ImGuiID space, const EditorState& state) {
    ImGui::DockBuilderAddNode(space, ImGuiDockNodeFlags_DockSpace);
    ImGui::DockBuilderSetNodeSize(space, ImGui::GetMainViewport()->WorkSize);
    ImGuiID centre = space;
    const ImGuiID bottom = ImGui::DockBuilderSplitNode(centre, ImGuiDir_Down, BottomShare, nullptr, &centre);
    for(UnsignedInt view = 0; view != state.viewCount(); ++view) {
        const Containers::StringView title = state.viewTitle(view);
        ImGui::DockBuilderDockWindow(title.data(), isBottom(title) ? bottom : centre);
    }
    // The tabs have close buttons of their own.
    for(const ImGuiID node: {centre, bottom})
        ImGui::DockBuilderGetNode(node)->SetLocalFlags(
            ImGui::DockBuilderGetNode(node)->LocalFlags | ImGuiDockNodeFlags_NoCloseButton);
    ImGui::DockBuilderFinish(space);
}

/** Null where the space has none, which is never split then. */
const ImGuiDockNode* centreOf(const ImGuiDockNode* node) {
    if(!node || node->IsCentralNode()) return node;
    const ImGuiDockNode* const first = centreOf(node->ChildNodes[0]);
    return first ? first : centreOf(node->ChildNodes[1]);
}

}

UnsignedInt DockLayout::space() { return ImHashStr("Quorvane dock space"); }

bool DockLayout::isArranged() { return ImGui::DockBuilderGetNode(space()); }

void DockLayout::reset() {
    ImGui::DockBuilderRemoveNode(space());
    ImGui::MarkIniSettingsDirty();
    _arranged = 0;
}

void DockLayout::draw(const EditorState& state) {
    if(!isArranged()) {
        build(space(), state);
        _arranged = state.viewCount();
    }
    for(; _arranged < state.viewCount(); ++_arranged) {
        const char* const title = state.viewTitle(_arranged).data();
        if(ImGui::FindWindowSettingsByID(ImHashStr(title))) continue;
        const ImGuiDockNode* const centre = centreOf(ImGui::DockBuilderGetNode(space()));
        const ImGuiID bottom = isBottom(title) ? bottomOf() : 0;
        if(bottom || centre) ImGui::DockBuilderDockWindow(title, bottom ? bottom : centre->ID);
    }
    ImGui::DockSpaceOverViewport(space(), ImGui::GetMainViewport());
}

}
