#include "app/FuzzyScore.h"

#include <algorithm>
#include <vector>

#include "QuorvaneEditor/Utils.h"

namespace QuorvaneEngine {

namespace {

constexpr Int Found = 1;
constexpr Int InARow = 4;
constexpr Int WordStart = 6;
constexpr Int TextStart = 8;

bool isUpper(char byte) { return byte >= 'A' && byte <= 'Z'; }

/** Whether a byte belongs to a word, as those of any character beyond ASCII do. */
bool isInWord(char byte) {
    return (byte & '\x80') || isUpper(byte) || (byte >= 'a' && byte <= 'z') || (byte >= '0' && byte <= '9');
}

/** Takes the first character off a text that is not empty. */
Containers::StringView takeCharacter(Containers::StringView& text) {
    std::size_t size = 1;
    while(size != text.size() && (text[size] & '\xc0') == '\x80') ++size;
    const Containers::StringView character = text.prefix(size);
    text = text.exceptPrefix(size);
    return character;
}

std::vector<Containers::StringView> charactersOf(Containers::StringView search) {
    std::vector<Containers::StringView> characters;
    while(!search.isEmpty()) {
        const Containers::StringView character = takeCharacter(search);
        if(character[0] != ' ') characters.push_back(character);
    }
    return characters;
}

Int worthOf(const char* const at, const char* const begin) {
    if(at == begin) return TextStart;
    const bool startsWord = isInWord(*at) && (!isInWord(at[-1]) || (isUpper(*at) && !isUpper(at[-1])));
    return startsWord ? WordStart : Found;
}

}

Int fuzzyScore(const Containers::StringView text, const Containers::StringView search) {
    const std::vector<Containers::StringView> wanted = charactersOf(search);
    const std::size_t size = wanted.size();
    // For each beginning of the search, by its number of characters: the best score so far, and that of the match that ends with
    // the last character of the text.
    std::vector<Int> best(size + 1, NoFuzzyMatch);
    std::vector<Int> ending(size + 1, NoFuzzyMatch);
    best[0] = 0;
    for(Containers::StringView rest = text; !rest.isEmpty();) {
        const Containers::StringView character = takeCharacter(rest);
        const Int worth = worthOf(character.begin(), text.begin());
        for(std::size_t i = size; i != 0; --i) {
            const Int inARow = ending[i - 1] == NoFuzzyMatch ? NoFuzzyMatch : ending[i - 1] + InARow;
            const Int before = std::max(best[i - 1], inARow);
            const bool isFound = before != NoFuzzyMatch && Utils::caseInsensitiveSearch(character, wanted[i - 1]) == 0;
            ending[i] = isFound ? before + worth : NoFuzzyMatch;
        }
        for(std::size_t i = 1; i <= size; ++i) best[i] = std::max(best[i], ending[i]);
    }
    return best[size];
}

}
