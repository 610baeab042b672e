#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** What was typed of a text, to be looked for in many texts: all its characters, blanks aside, have to stand in a text in this order,
    without regard to case. */
class QUORVANE_API FuzzyPattern {
public:
    /** The score of a text in which characters are missing. */
    static constexpr Int NoMatch = -1;

    /** What a character at the beginning of a text is worth where texts of one kind are compared, and where one of them is no
        better for beginning with the match. */
    static constexpr Int TextStart = 8;
    static constexpr Int WordStart = 6;

    /** @param search       copied
        @param textStart    what the first character of a text is worth */
    explicit FuzzyPattern(Containers::StringView search = {}, Int textStart = TextStart);

    /** How many characters are looked for. */
    std::size_t size() const { return _wanted.size(); }

    /** How well a text fits. Characters that follow each other or begin a word count more. A text has the score of its best match.
        Allocates nothing.
        @return at least 0, the higher the better; @ref NoMatch where characters are missing */
    Int score(Containers::StringView text);

private:
    bool isWanted(char32_t character) const { return _letters >> (character % 64) & 1; }
    bool isIn(Containers::StringView text) const;
    Int worthOf(const char* at, const char* begin) const;
    void take(char32_t character, Int worth);

    Int _textStart;

    /** Folded. */
    std::vector<char32_t> _wanted;

    /** For each remainder by 64, whether a wanted character has it. */
    std::uint64_t _letters = 0;

    /** For each beginning of what is wanted, by its size: the best score so far, and that of the match that ends with the last
        character of the text. */
    std::vector<Int> _best;
    std::vector<Int> _ending;
};

}
