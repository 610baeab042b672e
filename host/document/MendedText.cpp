#include "MendedText.h"

#include <algorithm>
#include <cstdint>

#include <unicode/utf8.h>

namespace QuorvaneEngine {

std::string mendedText(const std::string_view text) {
    std::string mended;
    mended.reserve(text.size() + 16);
    for(std::size_t at = 0; at != text.size();) {
        const char* const from = text.data() + at;
        // No character has more than four bytes.
        const std::int32_t size = std::int32_t(std::min<std::size_t>(text.size() - at, 4));
        std::int32_t read = 0;
        UChar32 character = 0;
        U8_NEXT(from, read, size, character);
        if(character < 0) mended += "\xef\xbf\xbd";
        else mended.append(from, std::size_t(read));
        at += std::size_t(read);
    }
    return mended;
}

}
