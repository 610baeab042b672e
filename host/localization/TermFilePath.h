#pragma once

#include <Corrade/Containers/String.h>

#include "LanguageMapping.h"
#include "QuorvaneEditor/Host.h"
#include "TermKey.h"

namespace QuorvaneEngine {

/** Which texts a file of an exchange holds, by its place: `<code>/<namespace>.json` or `<code>.json`. */
struct TermFilePath {
    /** A language code by BCP 47, or what stands in its place. */
    Containers::StringView code;

    Containers::StringView nameSpace;

    /** Index into @ref AllLanguages , -1 for a code that neither the map nor the table has. */
    Int language = -1;

    /** Reads a path. Of `x/y.json`, `x` is the code if it is known, else `y` if that is known, and `x` is a folder around; where
        neither is, the one that comes near to a code.
        @param path     relative, with forward slashes; is viewed
        @param isEnclosed   whether one more folder may lie around
        @param map      asked before the table
        @return whether the path is one of such a file */
    QUORVANE_API static bool parse(Containers::StringView path, bool isEnclosed,
        Containers::ArrayView<const LanguageMapping> map, TermFilePath& parsed);

    /** `<code>/<namespace>.json`
        @param nameSpace    its plain name */
    QUORVANE_API static Containers::String make(Containers::StringView code, Containers::StringView nameSpace);
};

}
