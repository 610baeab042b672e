#include "PrintableText.h"

#include <cstdint>
#include <cstdio>
#include <string>

#include <unicode/uchar.h>
#include <unicode/utf8.h>

namespace QuorvaneEngine {

namespace {

bool isObeyed(const UChar32 character) {
    constexpr std::uint32_t Obeyed = U_GC_CC_MASK | U_GC_ZL_MASK | U_GC_ZP_MASK;
    return U_GET_GC_MASK(character) & Obeyed || u_hasBinaryProperty(character, UCHAR_BIDI_CONTROL);
}

void appendEscape(std::string& out, const UChar32 character) {
    switch(character) {
    case '\n': out += "\\n"; return;
    case '\r': out += "\\r"; return;
    case '\t': out += "\\t"; return;
    default: break;
    }
    char escape[16];
    std::snprintf(escape, sizeof(escape), character < 0x80 ? "\\x%02x" : "\\u%04x", unsigned(character));
    out += escape;
}

}

Containers::String printable(const Containers::StringView text) {
    std::string out;
    for(const char* at = text.begin(); at != text.end();) {
        // No character has more than four bytes.
        const std::int32_t size = std::int32_t(text.end() - at < 4 ? text.end() - at : 4);
        std::int32_t read = 0;
        UChar32 character = 0;
        U8_NEXT(at, read, size, character);
        if(character < 0) {
            char escape[8];
            std::snprintf(escape, sizeof(escape), "\\x%02x", unsigned(static_cast<unsigned char>(*at)));
            out += escape;
            ++at;
            continue;
        }
        if(isObeyed(character)) appendEscape(out, character);
        else out.append(at, std::size_t(read));
        at += read;
    }
    return {out.data(), out.size()};
}

}
