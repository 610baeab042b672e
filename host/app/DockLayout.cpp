#include "app/DockLayout.h"

#include <Corrade/Containers/StringView.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "QuorvaneEditor/EditorState.h"

namespace QuorvaneEngine::DockLayout {

namespace {

constexpr float BottomShare = 0.34f;

bool isBottom(Containers::StringView title) { return title == Messages || title == Report; }

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

}

void draw(const EditorState& state) {
    const ImGuiID space = ImGui::GetID("Quorvane dock space");
    if(!ImGui::DockBuilderGetNode(space)) build(space, state);
    ImGui::DockSpaceOverViewport(space, ImGui::GetMainViewport());
}

}
