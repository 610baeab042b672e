#include "fonts/FontWords.h"

#include <iomanip>
#include <sstream>

#include "QuorvaneEditor/AllLanguages.h"
#include "fonts/LanguageLetters.h"

namespace QuorvaneEngine::FontWords {

namespace {

std::string string(const Containers::StringView text) { return {text.data(), text.size()}; }

std::string nameOf(const LanguageLetters& letters) { return string(AllLanguages[letters.language].name); }

/** What strikes most. */
const char* problem(const LanguageLetters& letters) {
    if(letters.undrawn) return "letters are missing";
    if(letters.isJoined) return "letters are not joined";
    if(letters.isRightToLeft) return "runs from left to right";
    return "accents may be misplaced";
}

std::string problems(const LanguageLetters& letters) {
    std::string text;
    const auto add = [&text](const std::string& problem) {
        text += text.empty() ? "" : ", ";
        text += problem;
    };
    if(letters.undrawn == 1) add("no font has its letter " + codePoint(letters.firstUndrawn));
    else if(letters.undrawn)
        add("no font has " + std::to_string(letters.undrawn) + " of its letters, such as " +
            codePoint(letters.firstUndrawn));
    if(letters.isJoined) add("letters are not joined");
    if(letters.isRightToLeft) add("runs from left to right");
    if(letters.hasMarks) add("accents and vowel signs may be misplaced");
    return text;
}

}

std::string codePoint(const char32_t letter) {
    std::ostringstream text;
    text << "U+" << std::hex << std::uppercase << std::setw(4) << std::setfill('0') << std::uint32_t(letter);
    return text.str();
}

std::string summary(const Containers::ArrayView<const LanguageLetters> languages) {
    const LanguageLetters* first = nullptr;
    const LanguageLetters* second = nullptr;
    std::size_t count = 0;
    for(const LanguageLetters& letters: languages) {
        if(letters.isWell()) continue;
        if(!first) first = &letters;
        else if(!second) second = &letters;
        ++count;
    }
    if(!first) return {};
    std::string text = nameOf(*first);
    if(count == 1) return text + ": " + problem(*first);
    if(count == 2) text += ", " + nameOf(*second);
    else text += " and " + std::to_string(count - 1) + " more";
    return text + ": not drawn as written";
}

std::string details(const Containers::ArrayView<const LanguageLetters> languages) {
    std::string text;
    bool isMissing = false;
    for(const LanguageLetters& letters: languages) {
        if(letters.isWell()) continue;
        isMissing = isMissing || letters.undrawn;
        text += nameOf(letters) + " (" + string(AllLanguages[letters.language].code) + "): " + problems(letters) + '\n';
    }
    if(text.empty()) return text;
    text += "\nThis is how the editor shows these texts. What is saved and exported is as it was written.";
    if(isMissing)
        text += "\nLetters that are missing appear when a font that has them is installed and the editor starts anew.";
    return text;
}

}
