#pragma once

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** What is wrong with a project that can be worked with all the same: values of documented keys that have another type, which count
    as empty; terms whose source is gone or is no text; languages other than the default whose file is missing.

    Each finding is one line, `<file>: <JSON Pointer>: <reason>`, with the file that a save writes the value to, a pointer
    (RFC 6901) from that file's root, and control characters as "\u" and four digits; a missing file has no pointer. Of each of
    the three kinds the first 20 are told, and a further line then says how many more there are.

    Walks the whole document and changes nothing: to be asked once after a load. */
QUORVANE_API Containers::Array<Containers::String> reviewProject(ProjectFile& project);

}
