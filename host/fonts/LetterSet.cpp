#include "fonts/LetterSet.h"

namespace QuorvaneEngine {

namespace {

constexpr char32_t End = 0x110000;

}

void LetterSet::add(const char32_t letter) {
    if(letter >= End) return;
    if(letter >= _bits.size()) _bits.resize(std::size_t(letter) + 1);
    _bits[letter] = true;
}

bool LetterSet::has(const char32_t letter) const { return letter < _bits.size() && _bits[letter]; }

}
