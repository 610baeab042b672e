#pragma once

#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** What is worth knowing about a file that is passed over, for people. */
struct FileNotice {
    /** Relative to the folder or archive that is read, as @ref printable() has it. */
    Containers::String file;

    /** The end of a sentence. */
    Containers::String reason;
};

}
