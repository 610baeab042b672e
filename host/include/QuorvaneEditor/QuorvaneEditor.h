#pragma once

#include <memory>

#include <Corrade/Containers/String.h>
#include <Corrade/Utility/Path.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** What belongs to the open project, gathered in one place for views and tools. Of the parts it
    owns none: the host does, and what stands here outlives every view. */
class QuorvaneEditor {
public:
    /** @param projectPath  the project's folder, absolute, with forward slashes; not copied
        @param jobs         may be null where nothing runs beside the calling thread
        @param watch        may be null where nobody listens */
    explicit QuorvaneEditor(ProjectFile& project, ChangeManager& changes, EditorState& state,
        const Containers::String& projectPath, JobSystem* jobs, ProjectWatch* watch = nullptr)
        : _project{&project},
          _changes{&changes},
          _state{&state},
          _directory{&projectPath},
          _jobs{jobs},
          _watch{watch} {}

    ProjectFile& project() const { return *_project; }
    ChangeManager& changeManager() const { return *_changes; }
    EditorState& state() const { return *_state; }
    JobSystem* jobSystem() const { return _jobs; }

    /** Tells of changes of the project. */
    ProjectWatch* projectWatch() const { return _watch; }

    /** The project's folder. */
    Containers::StringView projectPath() const { return *_directory; }

    /** The folder that is proposed for the exchange of terms: `i18n` in the project's folder, made by the first export. */
    Containers::String exchangePath() const { return Corrade::Utility::Path::join(*_directory, "i18n"); }

    /** Set when a load of the window layout has been scheduled; never cleared by a view. */
    bool layoutLoadScheduled = false;

    /** What the localization tools did last in the open project; null before the first run. */
    std::shared_ptr<const LocalizationRun> lastRun;

private:
    ProjectFile* _project;
    ChangeManager* _changes;
    EditorState* _state;
    const Containers::String* _directory;
    JobSystem* _jobs;
    ProjectWatch* _watch;
};

}
