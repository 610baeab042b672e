#pragma once

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** @ref nextFolded() where the byte at @p at is not ASCII. */
QUORVANE_API char32_t nextFoldedBeyondAscii(const char*& at, const char* end);

/** Reads one character from UTF-8 text that is not empty and folds it by Unicode's simple case folding (CaseFolding.txt, status C and
    S). A byte that is not valid UTF-8 becomes a number beyond Unicode, one for each byte.
    @param at   receives where the next character begins */
inline char32_t nextFolded(const char*& at, const char* const end) {
    const auto byte = static_cast<unsigned char>(*at);
    if(byte >= 0x80) return nextFoldedBeyondAscii(at, end);
    ++at;
    return byte >= 'A' && byte <= 'Z' ? byte + ('a' - 'A') : byte;
}

}
