#pragma once

#include <string>
#include <vector>

#include <Corrade/Containers/ArrayView.h>

#include "QuorvaneEditor/Host.h"
#include "fonts/LetterSet.h"

namespace QuorvaneEngine {

/** What stands between the texts of a language and their reader. */
struct LanguageLetters {
    /** Index into @ref AllLanguages . */
    UnsignedInt language = 0;

    /** Different letters that no font has. */
    UnsignedInt undrawn = 0;

    /** The first of these. */
    char32_t firstUndrawn = 0;

    /** Whether there are letters that look right only when they are joined, reordered, put above each other, or set from right to left.
        The GUI library sets one letter after the other. */
    bool needsShaping = false;
};

/** Which languages of a project have texts that the fonts cannot draw. Goes through the project in steps, so that nobody waits for it. */
class QUORVANE_API FontCoverage {
public:
    /** @param drawn    letters that can be drawn; ASCII always can. Must outlive this object */
    explicit FontCoverage(const LetterSet& drawn): _drawn{&drawn} {}

    /** Begins anew. What was found before stays until the end is reached.
        @param languages    indices into @ref AllLanguages ; the texts of a default language are the source texts of the terms */
    void restart(Containers::ArrayView<const UnsignedInt> languages);

    bool isFinished() const { return _language == _running.size(); }

    /** Goes on. The project must be what it was at the last @ref restart() .
        @param texts    to look at in this step */
    void advance(ProjectFile& project, std::size_t texts);

    /** Of each language, in the order in which they were given. */
    Containers::ArrayView<const LanguageLetters> languages() const { return {_found.data(), _found.size()}; }

    /** Which languages cannot be drawn, and which need shaping, by their codes: "ja cannot be drawn; ar, he need shaping". Empty where
        everything is well. */
    std::string summary() const;

private:
    void look(Containers::StringView text);
    bool advanceLanguage(ProjectFile& project, std::size_t& texts);

    const LetterSet* _drawn;
    std::vector<LanguageLetters> _found;
    std::vector<LanguageLetters> _running;
    /** Of those in @ref _running , and the position of a text in it. */
    std::size_t _language = 0;
    std::size_t _text = 0;
    /** Letters of the language that were looked at. */
    LetterSet _seen;
};

}
