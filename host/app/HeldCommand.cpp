#include "app/HeldCommand.h"

#include <utility>

#include <imgui.h>
#include <imgui_internal.h>

#include "Ui/Ui.h"

namespace QuorvaneEngine {

namespace {

/** What ends in the next frame is there in the one after. */
constexpr int HeldFrames = 1;

bool needsEdits(const Command command) {
    switch(command) {
    case Command::Save:
    case Command::OpenProject:
    case Command::NewProject:
    case Command::OpenDropped:
    case Command::EndKeeping:
    case Command::Quit: return true;
    default: return false;
    }
}

/** Whether a number is being typed in place of a slider. */
bool isNumberTyped() {
    const ImGuiContext& context = *ImGui::GetCurrentContext();
    return context.TempInputId && context.TempInputId == context.ActiveId;
}

}

bool HeldCommand::isTyping() const {
    return ImGui::GetIO().WantTextInput && (_ui->pendingText.size() || _ui->renamingItem || isNumberTyped());
}

Command HeldCommand::next(const Command command) {
    if(command != Command::None) {
        _held = Command::None;
        if(!needsEdits(command) || !ImGui::GetIO().WantTextInput) return command;
        endEdit();
        _held = command;
        _frames = HeldFrames;
        return Command::None;
    }
    if(_held == Command::None || --_frames > 0) return Command::None;
    return std::exchange(_held, Command::None);
}

void HeldCommand::endEdit() {
    // A name and a number in place of a slider take the text by the key alone.
    if(_ui->renamingItem || isNumberTyped()) _entersNext = true;
    else ImGui::ClearActiveID();
}

void HeldCommand::beginFrame() {
    _enters = std::exchange(_entersNext, false);
    if(!_enters) return;
    ImGuiKeyData& key = *ImGui::GetKeyData(ImGuiKey_Enter);
    key.Down = true;
    key.DownDuration = 0.0f;
}

void HeldCommand::endFrame() {
    if(!_enters) return;
    ImGuiKeyData& key = *ImGui::GetKeyData(ImGuiKey_Enter);
    key.Down = false;
    key.DownDuration = -1.0f;
}

}
