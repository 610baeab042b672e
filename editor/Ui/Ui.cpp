#include "Ui/Ui.h"

#include <imgui.h>

namespace QuorvaneEngine {

namespace {

constexpr std::size_t InitialPathCapacity = 64;
constexpr std::size_t SearchCapacity = 256;

}

Ui::Ui(ProjectFile* const project, ChangeManager* const changes, EditorData* const editorData)
    : project{project},
      changes{changes},
      editorData{editorData},
      path{Corrade::ValueInit, InitialPathCapacity},
      resourceSearch{Corrade::ValueInit, SearchCapacity} {}

Ui::~Ui() = default;

void Ui::pushFlags(const Flags added) {
    flagStack.push_back(flags);
    flags |= added;
}

void Ui::popFlags() {
    flags = flagStack.back();
    flagStack.pop_back();
}

bool Ui::shortcutKeyPressed() {
    const ImGuiIO& io = ImGui::GetIO();
    return io.ConfigMacOSXBehaviors ? io.KeyCtrl : io.KeySuper;
}

bool Ui::pathKeyPressed() {
    const ImGuiIO& io = ImGui::GetIO();
    return io.ConfigMacOSXBehaviors ? io.KeySuper : io.KeyCtrl;
}

}
