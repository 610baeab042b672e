#pragma once

#include <cstddef>
#include <vector>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** A set of Unicode code points. */
class QUORVANE_API LetterSet {
public:
    /** What is no code point, 0x110000 and above, is left out. */
    void add(char32_t letter);

    bool has(char32_t letter) const;

    void clear() { _bits.clear(); }

private:
    /** One for each code point up to the largest that is in the set. */
    std::vector<bool> _bits;
};

}
