#pragma once

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Writes JSON (RFC 8259) as projects are stored: made for version control, so equal documents give equal bytes, and a change of
    one entry is a change of one line.

    UTF-8 with characters as they are; LF, and one at the end; containers near the root have one member a line, indented by two
    blanks a level, all others stand on one line with ", " and ": ", and empty ones are `{}` and `[]`. Integers have no point,
    doubles have one and are the shortest that read back as the same. */
namespace JsonWriter {

struct Layout {
    /** Containers at a depth below this one, the root's being 0, have one member a line. */
    UnsignedInt brokenLevels;

    /** Whether the root's members are written in byte order of their names instead of document order. */
    bool isRootSorted = false;

    /** Members with these values are left out. */
    Containers::ArrayView<const rapidjson::Value* const> omitted = {};
};

/** @param text     the written file
    @param error    set on failure: the JSON Pointer (RFC 6901) of a value that no file can hold, and why
    @return false for what @ref JsonReader::read() would refuse: text that is not UTF-8, numbers that are not finite, containers
        that are nested too deep */
QUORVANE_API bool write(
    const rapidjson::Value& value, const Layout& layout, Containers::String& text, Containers::String& error);

}

}
