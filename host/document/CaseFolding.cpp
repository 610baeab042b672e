#include "CaseFolding.h"

#include <cstdint>

#include <unicode/uchar.h>
#include <unicode/utf8.h>

namespace QuorvaneEngine {

char32_t nextFoldedBeyondAscii(const char*& at, const char* const end) {
    // No character has more than four bytes.
    const std::int32_t size = std::int32_t(end - at < 4 ? end - at : 4);
    std::int32_t read = 0;
    UChar32 character = 0;
    U8_NEXT(at, read, size, character);
    if(character < 0) return char32_t(UCHAR_MAX_VALUE + 1 + static_cast<unsigned char>(*at++));
    at += read;
    return char32_t(u_foldCase(character, U_FOLD_CASE_DEFAULT));
}

}
