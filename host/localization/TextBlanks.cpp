#include "TextBlanks.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

namespace QuorvaneEngine::TextBlanks {

namespace {

constexpr UChar32 ByteOrderMark = 0xfeff;

bool isBlank(const UChar32 c) { return c == ByteOrderMark || (c >= 0 && u_isUWhiteSpace(c)); }

}

Containers::StringView leading(const Containers::StringView text) {
    std::size_t end = 0;
    for(std::size_t next = 0; next != text.size(); end = next) {
        UChar32 c;
        U8_NEXT(text.data(), next, text.size(), c);
        if(!isBlank(c)) break;
    }
    return text.prefix(end);
}

Containers::StringView trailing(const Containers::StringView text) {
    std::size_t begin = text.size();
    while(begin != 0) {
        std::size_t next = begin - 1;
        while(next != 0 && begin - next < U8_MAX_LENGTH && U8_IS_TRAIL(text[next])) --next;
        const std::size_t previous = next;
        UChar32 c;
        U8_NEXT(text.data(), next, begin, c);
        if(next != begin || !isBlank(c)) return text.exceptPrefix(begin);
        begin = previous;
    }
    return text.exceptPrefix(text.size());
}

Containers::StringView trimmed(const Containers::StringView text) {
    const Containers::StringView rest = text.exceptPrefix(leading(text).size());
    return rest.exceptSuffix(trailing(rest).size());
}

}
