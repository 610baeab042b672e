#pragma once

#include <cstdint>

#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

class FileSystem;

namespace NewProject {

enum class Outcome : std::uint8_t {
    Written,
    HasProject, /**< there is a project, which stays as it is */
    Refused /**< nothing was written */
};

/** Begins an empty project in a folder: its project.json, with English as the one language. The folder is made where it is missing; the one
    above has to be there. In a folder that has something else in it nothing is begun; names that begin with "." do not count, so
    that it may be under version control already.
    @param folder   absolute
    @param problem  set where no project was begun, in words */
QUORVANE_API Outcome write(FileSystem& files, Containers::StringView folder, Containers::String& problem);

}

}
