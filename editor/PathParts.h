#pragma once

#include <cstdint>

#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

/** @file
    What a JSON Pointer (RFC 6901) is made of. */

namespace QuorvaneEngine {

constexpr std::size_t NoSlash = ~std::size_t{};

/** Whether the text is a JSON Pointer that is not the whole document: through an invalid one the JSON library would replace
    just that. */
bool isPointer(Containers::StringView path);

/** Where the last "/" stands, or @ref NoSlash. */
std::size_t lastSlash(Containers::StringView path);

/** The key that a token of a valid pointer stands for. */
Containers::String unescaped(Containers::StringView token);

/** The token that stands for a key, whatever is in that: what goes behind a "/" of a path, and what a scope is opened with for a member.
    A key of no bytes is no name for a scope. */
Containers::String escaped(Containers::StringView key);

/** The number of a token. */
struct TokenIndex {
    /** Whether the token is a number to the change manager: decimal digits, after an optional "-", up to its end or a NUL byte. */
    bool valid = false;

    /** Whether it addresses an element of an array, too: no sign, no leading zero, nothing behind the digits, and small enough for
        the JSON library. */
    bool isElement = false;

    /** Less than zero. */
    bool negative = false;

    /** Without the sign; the largest number where it does not fit. */
    std::uint64_t value = 0;
};

TokenIndex tokenIndex(Containers::StringView token);

}
