#pragma once

#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"
#include "fonts/LetterSet.h"

namespace QuorvaneEngine {

/** What stands between the texts of a language and their reader. */
struct QUORVANE_API LanguageLetters {
    /** Takes the letters of a text into account.
        @param text     UTF-8; what is none counts as U+FFFD
        @param drawn    letters that can be drawn; ASCII always can */
    void add(Containers::StringView text, const LetterSet& drawn);

    /** Whether there are letters that look right only when they are joined, reordered, put above each other, or set from right to left.
        The GUI library sets one letter after the other. */
    bool needsShaping() const { return isJoined || isRightToLeft || hasMarks; }

    /** Whether all texts look as they should. */
    bool isWell() const { return !undrawn && !needsShaping(); }

    /** Index into @ref AllLanguages . */
    UnsignedInt language = 0;

    /** Different letters that no font has. */
    UnsignedInt undrawn = 0;

    /** The first of these. */
    char32_t firstUndrawn = 0;

    /** Whether there are letters whose shape depends on their neighbours. */
    bool isJoined = false;

    bool isRightToLeft = false;

    /** Whether there are accents, vowel signs and the like that belong above, below or before a letter. */
    bool hasMarks = false;

    /** All letters beyond ASCII. */
    LetterSet seen;
};

}
