#pragma once

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

class FileSystem;

/** Finds the project that a user means.
    @param path     of a project's folder, or of its project.json
    @param problem  set where there is no project, in words
    @return the folder, absolute; empty where there is no project */
QUORVANE_API Containers::String findProject(
    FileSystem& files, Containers::StringView path, Containers::String& problem);

/** Finds the project that a user has dropped onto the window.
    @param paths    of what was dropped; one that stands for a project is wanted
    @param problem  as for @ref findProject() */
QUORVANE_API Containers::String findDroppedProject(
    FileSystem& files, Containers::ArrayView<const Containers::String> paths, Containers::String& problem);

/** Why a path cannot be the one of a file or folder: it is empty, or relative to who knows where. Empty where it can. */
Containers::String pathProblem(Containers::StringView path);

}
