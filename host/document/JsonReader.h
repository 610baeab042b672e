#pragma once

#include <cstddef>

#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace rapidjson {
struct ParseResult;
}

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

/** A file's text without the UTF-8 byte order mark in front, where there is one. */
QUORVANE_API Containers::StringView withoutMark(Containers::StringView bytes);

/** Refuses what @ref read() refuses beyond the grammar, but for keys that an object holds twice. What is left is safe to be parsed
    by RapidJSON with any handler. Nothing is said of the grammar.
    @param text     without byte order mark
    @param error    set on failure */
QUORVANE_API bool check(Containers::StringView text, JsonError& error);

/** An error at a place of a text.
    @param text     without byte order mark
    @param offset   in bytes, up to the size of the text */
QUORVANE_API JsonError errorAt(Containers::StringView text, std::size_t offset, Containers::StringView reason);

/** Why the parser stopped, and where.
    @param text     without byte order mark
    @param result   must be an error */
QUORVANE_API JsonError errorOf(Containers::StringView text, const rapidjson::ParseResult& result);

/** Looks for what @ref read() refuses, without speed: to say what is wrong with a text that is known to be.
    @param error    set where there is something
    @return whether there is something wrong */
QUORVANE_API bool findError(Containers::StringView text, JsonError& error);

/** Whether a text is well-formed UTF-8 throughout. */
QUORVANE_API bool isUtf8(Containers::StringView text);

}

}
