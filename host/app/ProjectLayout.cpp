#include "app/ProjectLayout.h"

#include <filesystem>
#include <string>
#include <system_error>

#include <Corrade/Containers/Optional.h>
#include <Corrade/Containers/String.h>
#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/Path.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "QuorvaneEditor/JobSystem.h"
#include "QuorvaneEditor/QuorvaneEditor.h"
#include "UiState.h"
#include "app/LayoutFile.h"

namespace QuorvaneEngine {

namespace {

namespace Path = Corrade::Utility::Path;

/** Bytes; the largest layouts have a few thousand. */
constexpr std::uintmax_t LargestFile = 1024 * 1024;

/** Empty for a file that can be loaded. */
Containers::String problemOf(const Containers::String& file) {
    std::error_code error;
    const std::filesystem::path path{file.data()};
    // Anything else might never come to its end.
    if(!std::filesystem::is_regular_file(path, error)) return "is no file";
    if(std::filesystem::file_size(path, error) > LargestFile) return "is too large";
    const Containers::Optional<Containers::String> text = Path::readString(file);
    return text ? layoutProblem(*text, DockLayout::space()) : Containers::String{"cannot be read"};
}

/** Whether the file was looked at and found well. */
bool canBeLoaded(const Containers::String& file) {
    if(!Path::exists(file)) return false;
    const Containers::String problem = problemOf(file);
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
    if(!canBeLoaded(Path::join(_editor->projectPath(), ".editor/imgui.ini"))) return false;
    scheduleUIStateLoad(*_editor);
    _editor->jobSystem()->runMainThreadJobs();
    return true;
}

void ProjectLayout::save() {
    ImGui::GetIO().WantSaveIniSettings = false;
    scheduleUIStateSave(*_editor);
    _editor->jobSystem()->runMainThreadJobs();
}

void ProjectLayout::saveChanges() {
    bool& isWanted = ImGui::GetIO().WantSaveIniSettings;
    if(isWanted) scheduleUIStateSave(*_editor);
    isWanted = false;
}

void ProjectLayout::draw() { _docking.draw(_editor->state()); }

}
