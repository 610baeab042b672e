#include "fonts/LanguageLetters.h"

#include <cstdint>

#include <unicode/uchar.h>
#include <unicode/utf8.h>

namespace QuorvaneEngine {

namespace {

constexpr char32_t FirstNonAscii = 0x80;

/** Whether a letter is a place for ink. */
bool isVisible(const UChar32 letter) {
    return u_isgraph(letter) && !u_hasBinaryProperty(letter, UCHAR_DEFAULT_IGNORABLE_CODE_POINT);
}

bool runsLeft(const UChar32 letter) {
    const UCharDirection direction = u_charDirection(letter);
    return direction == U_RIGHT_TO_LEFT || direction == U_RIGHT_TO_LEFT_ARABIC;
}

bool joins(const UChar32 letter) {
    const int joining = u_getIntPropertyValue(letter, UCHAR_JOINING_TYPE);
    if(joining == U_JT_DUAL_JOINING || joining == U_JT_RIGHT_JOINING || joining == U_JT_LEFT_JOINING) return true;
    const int hangul = u_getIntPropertyValue(letter, UCHAR_HANGUL_SYLLABLE_TYPE);
    return hangul == U_HST_LEADING_JAMO || hangul == U_HST_VOWEL_JAMO || hangul == U_HST_TRAILING_JAMO;
}

bool isMark(const UChar32 letter) { return U_GET_GC_MASK(letter) & U_GC_M_MASK; }

}

void LanguageLetters::add(const Containers::StringView text, const LetterSet& drawn) {
    const char* const data = text.data();
    const auto size = std::int32_t(text.size());
    for(std::int32_t at = 0; at < size;) {
        UChar32 code = 0;
        U8_NEXT_OR_FFFD(data, at, size, code);
        const auto letter = char32_t(code);
        if(letter < FirstNonAscii || seen.has(letter)) continue;
        seen.add(letter);
        if(!isVisible(code)) continue;
        isJoined = isJoined || joins(code);
        isRightToLeft = isRightToLeft || runsLeft(code);
        hasMarks = hasMarks || isMark(code);
        if(drawn.has(letter)) continue;
        if(!undrawn++) firstUndrawn = letter;
    }
}

}
