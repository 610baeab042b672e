#include "EditorView.h"

#include <cstdlib>
#include <cstring>

#include <Corrade/Containers/Array.h>
#include <Corrade/Utility/Debug.h>
#include <imgui.h>

#include "ImGuiText.h"
#include "QuorvaneEditor/EditorState.h"
#include "QuorvaneEditor/QuorvaneEditor.h"
#include "QuorvaneEditor/QuorvaneEditorApplication.h"

namespace QuorvaneEngine {

namespace {

/** What a view needs to be started again, in its order in the saved bytes. */
struct SavedState {
    ImGuiContext* context;
    EditorData* editorData;
    QuorvaneEditorApplication* application;
};
static_assert(sizeof(SavedState) == 24);

void requireArgument(const void* const argument, const char* const name) {
    if(argument) return;
    Corrade::Utility::Error{} << "EditorView::init():" << name << "was nullptr";
    std::abort();
}

}

EditorView::EditorView(Corrade::PluginManager::AbstractManager& manager, const Containers::StringView& plugin)
    : AbstractModule{manager, plugin} {}

void EditorView::load(const Containers::ArrayView<char> state) {
    if(!state.data()) return;
    SavedState saved;
    std::memcpy(&saved, state.data(), sizeof(saved));
    init(saved.context, saved.editorData, saved.application);
}

Containers::Array<char> EditorView::unload(const bool final) {
    if(final) return {};
    const SavedState state{ImGui::GetCurrentContext(), _editorData, _application};
    Containers::Array<char> saved{Corrade::ValueInit, sizeof(state)};
    std::memcpy(saved.data(), &state, sizeof(state));
    deinit();
    return saved;
}

Int EditorView::moduleType() { return 1; }

void EditorView::init(
    ImGuiContext* const context, EditorData* const editorData, QuorvaneEditorApplication* const application) {
    Corrade::Utility::Debug{} << "Initializing View:" << plugin();
    requireArgument(context, "ImGuiContext");
    requireArgument(editorData, "EditorData");
    requireArgument(application, "QuorvaneEditor");
    ImGui::SetCurrentContext(context);
    _editorData = editorData;
    _application = application;
    _viewId = editor().state().registerView(title());
}

void EditorView::deinit() {}
void EditorView::update() {}
void EditorView::mouseMoveEvent() {}
void EditorView::mousePressEvent() {}
void EditorView::mouseReleaseEvent() {}
void EditorView::mouseScrollEvent() {}
void EditorView::keyPressEvent() {}
void EditorView::keyReleaseEvent() {}
void EditorView::exitEvent() {}
bool EditorView::show(Containers::StringView) { return false; }

QuorvaneEditor& EditorView::editor() const { return _application->editor(); }

Ui& EditorView::ui() const { return _application->ui(); }

bool& EditorView::open() const { return editor().state().isViewOpen(_viewId); }

void EditorView::beginWindow(const int flags) {
    _windowOpen = ImGui::Begin(ImGuiText{title()}, &open(), flags);
    _focused = ImGui::IsWindowFocused(ImGuiFocusedFlags_ChildWindows);
#ifdef IMGUI_HAS_DOCK
    constexpr ImGuiHoveredFlags hovered =
        ImGuiHoveredFlags_ChildWindows | ImGuiHoveredFlags_NoPopupHierarchy | ImGuiHoveredFlags_DockHierarchy;
    if(!_focused && ImGui::IsWindowHovered(hovered) && ImGui::IsWindowDocked()) ImGui::SetWindowFocus();
#endif
}

}
