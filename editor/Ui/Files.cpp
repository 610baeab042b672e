#include <algorithm>

#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringIterable.h>
#include <Corrade/Utility/Path.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "ChangeManager.h"
#include "ImGuiGuards.h"
#include "ImGuiText.h"
#include "QuorvaneEditor/EditorData.h"
#include "QuorvaneEditor/JsonObject.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "Ui/Scope.h"
#include "Ui/TextBuffer.h"
#include "Ui/Ui.h"
#include "Utils/Dialogs.h"

namespace QuorvaneEngine {

namespace {

constexpr char ChooseLabel[] = "...";

/** A path as the project keeps it: without the folder that the project lies in.
    @param folder   empty for none */
Containers::StringView keptPath(const Containers::StringView folder, const Containers::StringView path) {
    if(folder.isEmpty() || !path.hasPrefix(folder)) return path;
    const Containers::StringView rest = path.exceptPrefix(folder.size());
    if(!folder.hasSuffix('/') && !rest.hasPrefix('/')) return path;
    const Containers::StringView inside = rest.exceptPrefix(
        std::size_t(std::find_if(rest.begin(), rest.end(), [](const char c) { return c != '/'; }) - rest.begin()));
    return inside.isEmpty() ? path : inside;
}

}

bool Ui::fileSelect(const Containers::StringView name, const Containers::StringView title,
    const Containers::ArrayView<const Containers::StringView> filters) {
    const Scope scope{this, name};
    if(ImGui::GetCurrentWindow()->SkipItems) return false;
    const Int before = project->revision();
    const Containers::StringView folder = editorData ? Containers::StringView{editorData->projectFolder} : "";
    const auto stored = [this] { return editableText(JsonObject{project->getValue(scopePath(), false)}.asString()); };
    assignBuffer(editBuffer, stored());
    valueLabel(name);

    const ImGuiStyle& style = ImGui::GetStyle();
    const float buttonWidth = calcTextSize(ChooseLabel).x + 2.0f * style.FramePadding.x;
    ImGui::SetNextItemWidth(std::max(ImGui::CalcItemWidth() - buttonWidth - style.ItemSpacing.x - scaled(1.0f), 1.0f));
    // One item, over all of which the path of the value is shown.
    const GroupGuard group;
    const ImGuiID item = getId("##value");
    const bool differs = ImGui::InputText("##value", editBuffer.data(), editBuffer.size(),
        ImGuiInputTextFlags_CallbackResize, textResizeCallback, &editBuffer);
    if(followText(item, stored(), differs).isCommitted) {
        changes->pushChange(scopePath(), keptPath(folder, bufferText(pendingText)), true);
        dropPendingText();
    }
    valueContextMenu();

    ImGui::SameLine();
    if(ImGui::Button(ChooseLabel)) {
        const Containers::StringView present = stored();
        const Containers::String start = Corrade::Utility::Path::join(folder, present);
        const Containers::Array<Containers::String> chosen = openFileDialog(title, start, filters, false);
        if(!chosen.isEmpty()) changes->pushChange(scopePath(), keptPath(folder, chosen.front()), true);
    }
    return project->revision() != before;
}

}
