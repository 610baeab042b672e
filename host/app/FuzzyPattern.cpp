#include "app/FuzzyPattern.h"

#include <algorithm>

#include "document/CaseFolding.h"

namespace QuorvaneEngine {

namespace {

constexpr Int Found = 1;
constexpr Int InARow = 4;

bool isUpper(char byte) { return byte >= 'A' && byte <= 'Z'; }

/** Whether a byte belongs to a word, as those of any character beyond ASCII do. */
bool isInWord(char byte) {
    return (byte & '\x80') || isUpper(byte) || (byte >= 'a' && byte <= 'z') || (byte >= '0' && byte <= '9');
}

}

FuzzyPattern::FuzzyPattern(const Containers::StringView search, const Int textStart): _textStart{textStart} {
    for(const char* at = search.begin(); at != search.end();) {
        const char32_t character = nextFolded(at, search.end());
        if(character == U' ') continue;
        _wanted.push_back(character);
        _letters |= std::uint64_t{1} << (character % 64);
    }
    _best.resize(_wanted.size() + 1);
    _ending.resize(_wanted.size() + 1);
}

bool FuzzyPattern::isIn(const Containers::StringView text) const {
    auto wanted = _wanted.begin();
    for(const char* at = text.begin(); wanted != _wanted.end() && at != text.end();)
        if(nextFolded(at, text.end()) == *wanted) ++wanted;
    return wanted == _wanted.end();
}

Int FuzzyPattern::worthOf(const char* const at, const char* const begin) const {
    if(at == begin) return _textStart;
    const bool startsWord = isInWord(*at) && (!isInWord(at[-1]) || (isUpper(*at) && !isUpper(at[-1])));
    return startsWord ? WordStart : Found;
}

void FuzzyPattern::take(const char32_t character, const Int worth) {
    // From the end, so that what is read is what was there before this character.
    for(std::size_t size = _wanted.size(); size != 0; --size) {
        Int ending = NoMatch;
        if(_wanted[size - 1] == character) {
            const Int inARow = _ending[size - 1] == NoMatch ? NoMatch : _ending[size - 1] + InARow;
            const Int before = std::max(_best[size - 1], inARow);
            if(before != NoMatch) ending = before + worth;
        }
        _ending[size] = ending;
        _best[size] = std::max(_best[size], ending);
    }
}

Int FuzzyPattern::score(const Containers::StringView text) {
    if(!isIn(text)) return NoMatch;
    std::fill(_best.begin() + 1, _best.end(), NoMatch);
    std::fill(_ending.begin(), _ending.end(), NoMatch);
    bool isEnding = false;
    for(const char* at = text.begin(); at != text.end();) {
        const char* const begin = at;
        const char32_t character = nextFolded(at, text.end());
        if(isWanted(character)) take(character, worthOf(begin, text.begin()));
        else if(isEnding) std::fill(_ending.begin(), _ending.end(), NoMatch);
        isEnding = isWanted(character);
    }
    return _best.back();
}

}
