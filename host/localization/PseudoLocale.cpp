#include "PseudoLocale.h"

#include <string>

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include "TextMarkup.h"

namespace QuorvaneEngine::PseudoLocale {

namespace {

constexpr const char* LowerCase[]{"å", "ƀ", "ç", "ď", "é", "ƒ", "ĝ", "ĥ", "î", "ĵ", "ķ", "ļ", "ṁ", "ñ", "ö", "ṕ", "ɋ",
    "ŕ", "š", "ţ", "û", "ṽ", "ŵ", "ẋ", "ý", "ž"};
constexpr const char* UpperCase[]{"Å", "Ɓ", "Ç", "Ď", "É", "Ƒ", "Ĝ", "Ĥ", "Î", "Ĵ", "Ķ", "Ļ", "Ṁ", "Ñ", "Ö", "Ṕ", "Ɋ",
    "Ŕ", "Š", "Ţ", "Û", "Ṽ", "Ŵ", "Ẋ", "Ý", "Ž"};
static_assert(sizeof(LowerCase) == sizeof(UpperCase) && sizeof(LowerCase) / sizeof(*LowerCase) == 26);

constexpr std::size_t PaddingWord = 5;

bool isLetter(const char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

bool extendsCharacter(const UChar32 c) {
    constexpr UChar32 ZeroWidthJoiner = 0x200d;
    return c == ZeroWidthJoiner || (c >= 0 && (U_GET_GC_MASK(c) & U_GC_M_MASK));
}

/** Whether the character that ends at @p position goes on there. */
bool isExtended(const Containers::StringView text, std::size_t position) {
    if(position == text.size() || static_cast<unsigned char>(text[position]) < 0x80) return false;
    UChar32 c;
    U8_NEXT(text.data(), position, text.size(), c);
    return extendsCharacter(c);
}

void appendPadding(std::string& out, const std::size_t size) {
    for(std::size_t i = 0; i != size; ++i) out += i % (PaddingWord + 1) == 0 && i + 1 != size ? ' ' : '~';
}

}

Containers::String text(const Containers::StringView source) {
    if(source.isEmpty()) return {};
    std::string out{"["};
    out.reserve(source.size() * 3 + 2);
    TextMarkup markup{source};
    std::size_t characters = 0;
    for(std::size_t i = 0; i != source.size();) {
        const std::size_t begin = i;
        i = markup.end(begin);
        if(i != begin) {
            out.append(source.data() + begin, i - begin);
            continue;
        }
        UChar32 c;
        U8_NEXT(source.data(), i, source.size(), c);
        if(!extendsCharacter(c)) ++characters;
        if(begin + 1 == i && isLetter(source[begin]) && !isExtended(source, i))
            out += source[begin] >= 'a' ? LowerCase[source[begin] - 'a'] : UpperCase[source[begin] - 'A'];
        else out.append(source.data() + begin, i - begin);
    }
    appendPadding(out, (characters * 2 + 4) / 5);
    out += ']';
    return Containers::String{out.data(), out.size()};
}

}
