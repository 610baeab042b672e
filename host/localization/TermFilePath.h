#pragma once

#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"
#include "TermKey.h"

namespace QuorvaneEngine {

/** Which texts a file of an exchange holds, by its place: `<code>/<namespace>.json` or `<code>.json`. */
struct TermFilePath {
    /** A language code by BCP 47, or what stands in its place. */
    Containers::StringView code;

    Containers::StringView nameSpace;

    /** Index into @ref AllLanguages , -1 for a code that the table does not have. */
    Int language = -1;

    /** Reads a path. Of `x/y.json`, `x` is the code if the table has it, else `y` if the table has that, and `x` is a folder around.
        @param path     relative, with forward slashes; is viewed
        @param isEnclosed   whether one more folder may lie around
        @return whether the path is one of such a file */
    QUORVANE_API static bool parse(Containers::StringView path, bool isEnclosed, TermFilePath& parsed);

    /** `<code>/<namespace>.json` */
    QUORVANE_API static Containers::String make(Containers::StringView code, Containers::StringView nameSpace);
};

}
