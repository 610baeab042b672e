#pragma once

#include <cstdint>

#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

class FileSystem;

/** Tells one state of a project's files on the disk from another by their stamps, without reading them.
    @param folder   of the project
    @return not 0 */
QUORVANE_API std::uint64_t projectState(FileSystem& files, Containers::StringView folder);

}
