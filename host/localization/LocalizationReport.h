#pragma once

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/AllLanguages.h"
#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** What became of one text. */
enum class TermOutcome {
    Added,
    Changed,
    Unchanged,
    /** A term that is not translated yet: changes nothing. */
    Empty,
    /** Not taken over; the line has the reason. */
    Skipped
};

/** What an exchange of terms did, text by text. */
class QUORVANE_API LocalizationReport {
public:
    struct Counts {
        UnsignedInt added = 0;
        UnsignedInt changed = 0;
        UnsignedInt unchanged = 0;
        UnsignedInt empty = 0;
        UnsignedInt skipped = 0;
    };

    struct Line {
        /** Index into @ref AllLanguages , or @ref NoLanguage . */
        UnsignedInt language;
        TermOutcome outcome;
        /** Empty for a line that is about a file or a language. */
        Containers::String term;
        /** The end of a sentence; empty where nothing needs a reason. */
        Containers::String reason;
    };

    static constexpr UnsignedInt NoLanguage = ~UnsignedInt{};

    /** Counts a text; unchanged and empty ones get no line. */
    void add(
        UnsignedInt language, TermOutcome outcome, Containers::StringView term, Containers::StringView reason = {});

    /** Counts for a language, from which on it is one of @ref languages() . */
    void addLanguage(UnsignedInt language);

    Containers::ArrayView<const Line> lines() const { return _lines; }

    /** In the order in which they came. */
    Containers::ArrayView<const UnsignedInt> languages() const { return _languages; }

    Counts counts(UnsignedInt language) const;

    /** Prints a warning for every text that was skipped, no more than @p maxLines of them, and one line per language.
        @param function     what the messages begin with, as "Class::function()" */
    void print(Containers::StringView function, std::size_t maxLines = 100) const;

private:
    Containers::Array<Line> _lines;
    Containers::Array<UnsignedInt> _languages;
    /** One more than there are languages: the last one counts what belongs to none. */
    Counts _counts[LanguageCount + 1];
};

}
