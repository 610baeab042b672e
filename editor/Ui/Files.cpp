#include <algorithm>

#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringIterable.h>
#include <Corrade/Utility/Debug.h>
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
#include "Ui/StorableText.h"
#include "Ui/TextBuffer.h"
#include "Ui/Ui.h"
#include "Utils/Dialogs.h"

namespace QuorvaneEngine {

using Corrade::Utility::Warning;

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

Containers::StringView storedText(const Ui& ui) {
    return JsonObject{ui.project->getValue(ui.scopePath(), false)}.asString();
}

/** Sets the value at the scope path to a path, unless it is that already. */
void pushPath(Ui& ui, const Containers::StringView path) {
    const Containers::StringView kept =
        keptPath(ui.editorData ? Containers::StringView{ui.editorData->projectFolder} : "", path);
    if(kept != storedText(ui)) ui.changes->pushChange(ui.scopePath(), kept, true);
}

/** Lets the user choose a file, and sets the value at the scope path to it. */
void choosePath(Ui& ui, const Containers::StringView title, const Containers::String& start,
    const Containers::ArrayView<const Containers::StringView> filters) {
    const Containers::Array<Containers::String> chosen = openFileDialog(title, start, filters, false);
    if(chosen.isEmpty()) return;
    const char* problem = nullptr;
    if(chosen.size() > 1) problem = "has a line break";
    else if(!isStorable(chosen.front())) problem = "is not UTF-8";
    if(!problem) pushPath(ui, chosen.front());
    else Warning{} << "Ui::fileSelect(): the name of the file that was chosen for" << ui.scopePath() << problem;
}

}

bool Ui::fileSelect(const Containers::StringView name, const Containers::StringView title,
    const Containers::ArrayView<const Containers::StringView> filters) {
    const Scope scope{this, name};
    if(ImGui::GetCurrentWindow()->SkipItems) return false;
    const Int before = project->revision();
    const Containers::StringView stored = editableText(storedText(*this));
    assignBuffer(editBuffer, stored);
    valueLabel(name);

    const ImGuiStyle& style = ImGui::GetStyle();
    const float buttonWidth = calcTextSize(ChooseLabel).x + 2.0f * style.FramePadding.x;
    ImGui::SetNextItemWidth(std::max(ImGui::CalcItemWidth() - buttonWidth - style.ItemSpacing.x - scaled(1.0f), 1.0f));
    // One item, over all of which the path of the value is shown.
    const GroupGuard group;
    const ImGuiID item = getId("##value");
    const bool differs = ImGui::InputText("##value", editBuffer.data(), editBuffer.size(),
        ImGuiInputTextFlags_CallbackResize, textResizeCallback, &editBuffer);
    if(followText(item, stored, differs).isCommitted) {
        pushPath(*this, bufferText(pendingText));
        dropPendingText();
    }
    valueContextMenu();

    ImGui::SameLine();
    if(ImGui::Button(ChooseLabel)) {
        const Containers::StringView folder = editorData ? Containers::StringView{editorData->projectFolder} : "";
        choosePath(*this, title, Corrade::Utility::Path::join(folder, editableText(storedText(*this))), filters);
    }
    return project->revision() != before;
}

}
