#pragma once

#include <chrono>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/String.h>

#include "LocalizationReport.h"
#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** What a tool was asked for, and what came of it. */
struct LocalizationRun {
    enum class Kind { Gathering, Export, Import, Check };

    Kind kind;

    /** Folder or archive, absolute; empty for a gathering and a check. */
    Containers::String path;

    LocalizationReport report;

    /** Why nothing was done, each a sentence that begins with the name of a file; empty where the run went well. */
    Containers::Array<Containers::String> refusals;

    std::chrono::system_clock::time_point when = std::chrono::system_clock::now();

    /** Of the changes that the run made in the project, -1 where it made none. That of a check is the import's that it followed,
        -1 where anything else came before. */
    Int group = -1;
};

/** The last run of a tool in the open project, null where there was none. It stays until the next run, or until another project
    is opened. */
QUORVANE_API const LocalizationRun* lastRun(const QuorvaneEditor& editor);

QUORVANE_API void setLastRun(QuorvaneEditor& editor, LocalizationRun&& run);

/** Whether undoing one step now takes back what a run changed, and nothing else. */
QUORVANE_API bool canUndo(const QuorvaneEditor& editor, const LocalizationRun& run);

}
