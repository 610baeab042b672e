#pragma once

#include <cstddef>

#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Why a text is not taken for JSON, and where. */
struct JsonError {
    /** Counted from 1; lines end with LF. */
    std::size_t line = 0;

    /** Counted from 1, in characters (Unicode code points); a byte order mark is none. */
    std::size_t column = 0;

    /** The end of a sentence: no capital letter, no full stop. */
    Containers::String reason;
};

/** Reads JSON (RFC 8259) that may come from anywhere. */
namespace JsonReader {

/** Containers may lie in each other this many levels deep. */
constexpr UnsignedInt MaxDepth = 256;

/** A number may have this many characters, its exponent this many digits. */
constexpr std::size_t MaxNumberSize = 100;
constexpr std::size_t MaxExponentDigits = 3;

/** Reads one value of any type into @p document, with its allocator.

    Beyond the grammar these are refused: text that is not UTF-8, also where escapes make it so; containers nested deeper and
    numbers longer than the limits above; numbers too large for a double; an object that holds a key twice. A UTF-8 byte order mark
    in front is skipped. Takes time in proportion to the text, and never aborts.

    @param text         all bytes of a file; must outlive the call alone
    @param document     left as it is on failure
    @param error        set on failure
    @return whether the text was read */
QUORVANE_API bool read(Containers::StringView text, rapidjson::Document& document, JsonError& error);

/** Reads an object; any other value is an error, too. */
QUORVANE_API bool readObject(Containers::StringView text, rapidjson::Document& document, JsonError& error);

/** Whether a text is well-formed UTF-8 throughout. */
QUORVANE_API bool isUtf8(Containers::StringView text);

}

}
