#include "QuorvaneEditor/Utils.h"

#include <cstdint>

#include <Corrade/Containers/Array.h>

#include "CaseFolding.h"

namespace QuorvaneEngine::Utils {

namespace {

/** Needles of up to this many bytes are folded on the stack. */
constexpr std::size_t LocalSize = 256;

struct Needle {
    /** Folded characters. */
    char32_t* characters;

    /** For each length of a match that has begun: how much of its end is a beginning of the needle. */
    std::uint32_t* borders;

    std::size_t size;
};

void fold(Containers::StringView text, Needle& needle) {
    needle.size = 0;
    for(const char* at = text.begin(); at != text.end();) needle.characters[needle.size++] = nextFolded(at, text.end());

    needle.borders[0] = 0;
    for(std::uint32_t i = 1, border = 0; i < needle.size; ++i) {
        while(border && needle.characters[i] != needle.characters[border]) border = needle.borders[border - 1];
        if(needle.characters[i] == needle.characters[border]) ++border;
        needle.borders[i] = border;
    }
}

/** The first byte from @p at on that is not ASCII, or folds to a character. */
const char* skip(const char* at, const char* end, char32_t character) {
    while(at != end && !(*at & 0x80)) {
        const char* next = at;
        if(nextFolded(next, end) == character) break;
        at = next;
    }
    return at;
}

/** Knuth, Morris and Pratt's search, linear whatever the texts are. */
std::ptrdiff_t search(Containers::StringView haystack, const Needle& needle) {
    const char* const end = haystack.end();
    const char* anchor = haystack.begin();
    std::size_t sinceAnchor = 0;
    std::size_t matched = 0;
    for(const char* at = anchor; at != end;) {
        if(!matched) {
            // NOLINTNEXTLINE(clang-analyzer-core.CallAndMessage): the empty needle has been answered
            at = skip(at, end, needle.characters[0]);
            if(at == end) break;
            anchor = at;
            sinceAnchor = 0;
        }
        const char32_t character = nextFolded(at, end);
        ++sinceAnchor;
        while(matched && character != needle.characters[matched]) matched = needle.borders[matched - 1];
        if(character == needle.characters[matched]) ++matched;
        if(matched != needle.size) continue;

        // Characters that match may differ in size, so where the match begins is found by counting.
        for(; sinceAnchor != matched; --sinceAnchor) nextFolded(anchor, end);
        return anchor - haystack.begin();
    }
    return -1;
}

}

std::ptrdiff_t caseInsensitiveSearch(Containers::StringView haystack, Containers::StringView needle) {
    if(needle.isEmpty()) return 0;
    if(haystack.isEmpty()) return -1;
    if(needle.size() <= LocalSize) {
        char32_t characters[LocalSize];
        std::uint32_t borders[LocalSize];
        Needle folded{characters, borders, 0};
        fold(needle, folded);
        return search(haystack, folded);
    }
    Containers::Array<char32_t> characters{Corrade::ValueInit, needle.size()};
    Containers::Array<std::uint32_t> borders{Corrade::ValueInit, needle.size()};
    Needle folded{characters.data(), borders.data(), 0};
    fold(needle, folded);
    return search(haystack, folded);
}

}
