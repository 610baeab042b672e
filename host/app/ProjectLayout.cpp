#include "app/ProjectLayout.h"

#include <cerrno>
#include <utility>

#include <Corrade/Containers/String.h>
#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/Path.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "QuorvaneEditor/JobSystem.h"
#include "QuorvaneEditor/QuorvaneEditor.h"
#include "UiState.h"
#include "app/LayoutFile.h"
#include "document/FileSystem.h"

namespace QuorvaneEngine {

namespace {

namespace Path = Corrade::Utility::Path;

/** Bytes; the largest layouts have a few thousand. */
constexpr std::size_t LargestFile = 1024 * 1024;

Containers::String fileOf(const QuorvaneEditor& editor) {
    return Path::join(editor.projectPath(), ".editor/imgui.ini");
}

Containers::String problemOf(int error) {
    switch(error) {
    case EISDIR:
    case EINVAL: return "is no file";
    case EFBIG: return "is too large";
    default: return "cannot be read";
    }
}

/** Whether the file was looked at and found well. */
bool canBeLoaded(const Containers::String& file) {
    Containers::String text;
    const int error = FileSystem::disk().readFile(file, text, LargestFile);
    if(error == ENOENT) return false;
    const Containers::String problem = error ? problemOf(error) : layoutProblem(text, DockLayout::space());
    if(problem.isEmpty()) return true;
    // A number is that of a line, and stands at the path as compilers write it.
    const char* const separator = problem[0] >= '0' && problem[0] <= '9' ? ":" : ": ";
    Corrade::Utility::Warning{} << "ProjectLayout::load():" << file << Corrade::Utility::Warning::nospace << separator
                                << Corrade::Utility::Warning::nospace << problem << Corrade::Utility::Warning::nospace
                                << ", so all windows are where they are at first";
    return false;
}

}

bool ProjectLayout::load() {
    ImGui::ClearIniSettings();
    _docking.noteLoad();
    _isRefusalTold = false;
    if(!canBeLoaded(fileOf(*_editor))) return false;
    scheduleUIStateLoad(*_editor);
    _editor->jobSystem()->runMainThreadJobs();
    return true;
}

void ProjectLayout::save() {
    ImGui::GetIO().WantSaveIniSettings = false;
    // Before the first frame there is nothing to keep, and the file would be one that nobody can load.
    if(DockLayout::isArranged()) schedule();
    _editor->jobSystem()->runMainThreadJobs();
}

void ProjectLayout::saveChanges() {
    bool& isWanted = ImGui::GetIO().WantSaveIniSettings;
    if(isWanted) schedule();
    isWanted = false;
}

void ProjectLayout::schedule() {
    const Containers::String file = fileOf(*_editor);
    if(!FileSystem::disk().isLink(file)) return scheduleUIStateSave(*_editor);
    if(!std::exchange(_isRefusalTold, true))
        Corrade::Utility::Warning{} << "ProjectLayout::save():" << file << Corrade::Utility::Warning::nospace
                                    << ": is a link, and nothing is written to where it leads";
}

void ProjectLayout::draw() { _docking.draw(_editor->state()); }

}
