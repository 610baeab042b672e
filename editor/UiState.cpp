#include "UiState.h"

#include <Corrade/Containers/String.h>
#include <Corrade/Utility/Path.h>
#include <imgui.h>

#include "ImGuiText.h"
#include "QuorvaneEditor/JobSystem.h"
#include "QuorvaneEditor/QuorvaneEditor.h"

namespace QuorvaneEngine {

namespace {

// The numbers are part of what modules and the editor's job system agree on.
static_assert(int(JobFlag::MainThread) == 1);
static_assert(int(JobResult::Done) == 1);

Containers::String layoutFile(const QuorvaneEditor& editor) {
    return Corrade::Utility::Path::join(editor.projectPath(), ".editor/imgui.ini");
}

}

void scheduleUIStateLoad(QuorvaneEditor& editor) {
    editor.layoutLoadScheduled = true;
    editor.jobSystem()->dispatch(
        [&editor] {
            const Containers::String file = layoutFile(editor);
            // Of a folder the library asks for as much memory as its end is far.
            if(Corrade::Utility::Path::exists(file) && !Corrade::Utility::Path::isDirectory(file))
                ImGui::LoadIniSettingsFromDisk(ImGuiText{file});
        },
        {}, JobFlag::MainThread);
}

void scheduleUIStateSave(QuorvaneEditor& editor) {
    editor.jobSystem()->dispatch(
        [&editor] { ImGui::SaveIniSettingsToDisk(ImGuiText{layoutFile(editor)}); }, {}, JobFlag::MainThread);
}

}
