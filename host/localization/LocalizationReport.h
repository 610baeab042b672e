#pragma once

#include <vector>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/AllLanguages.h"
#include "QuorvaneEditor/Host.h"
#include "TextArena.h"

namespace QuorvaneEngine {

/** What became of one text. */
enum class TermOutcome {
    Added,
    Changed,
    Unchanged,
    /** A term that is not translated yet: changes nothing. */
    Empty,
    /** Not taken over; the line has the reason. */
    Skipped,
    /** Nothing became of it; the line tells what is worth knowing. */
    Notice
};

/** What an exchange of terms did, text by text. Movable; made to be filled with a million lines. */
class QUORVANE_API LocalizationReport {
public:
    struct Counts {
        UnsignedInt added = 0;
        UnsignedInt changed = 0;
        UnsignedInt unchanged = 0;
        UnsignedInt empty = 0;
        UnsignedInt skipped = 0;
        UnsignedInt notices = 0;
        /** Of the translations that were looked at, those that are not of today's source text, whatever became of them. */
        UnsignedInt stale = 0;
    };

    /** Views live as long as the report, also where it is moved. */
    struct Line {
        /** Index into @ref AllLanguages , or @ref NoLanguage . */
        UnsignedInt language;
        TermOutcome outcome;
        /** As the project has its key; empty for a line that is about a file or a language. */
        Containers::StringView term;
        /** The end of a sentence; empty where nothing needs a reason. */
        Containers::StringView reason;
        /** Where it stands, for people; empty where that is no file, or follows from the language alone. */
        Containers::StringView file;
    };

    static constexpr UnsignedInt NoLanguage = ~UnsignedInt{};

    LocalizationReport();
    ~LocalizationReport();
    LocalizationReport(const LocalizationReport&) = delete;
    LocalizationReport& operator=(const LocalizationReport&) = delete;
    LocalizationReport(LocalizationReport&&) noexcept;
    LocalizationReport& operator=(LocalizationReport&&) noexcept;

    /** Counts a text; unchanged and empty ones get no line. All texts are copied. */
    void add(UnsignedInt language, TermOutcome outcome, Containers::StringView term, Containers::StringView reason = {},
        Containers::StringView file = {});

    /** A term that @ref keep() has kept. */
    class KeptTerm {
    private:
        friend class LocalizationReport;

        explicit KeptTerm(const Containers::StringView key): _key{key} {}

        Containers::StringView _key;
    };

    /** Keeps the key of a term that many lines have, of this report or of others that are appended to it. */
    KeptTerm keep(Containers::StringView term) { return KeptTerm{_texts.add(term)}; }

    /** Counts a text of such a term. */
    void add(UnsignedInt language, TermOutcome outcome, KeptTerm term, Containers::StringView reason = {},
        Containers::StringView file = {});

    /** Counts so many texts of one outcome, which is one that has lines, with one line for all. */
    void addAll(UnsignedInt language, TermOutcome outcome, UnsignedInt count, Containers::StringView term,
        Containers::StringView reason, Containers::StringView file);

    /** Whether texts before and after a change are kept, which takes memory for each. */
    void keepTexts(const bool isKept) { _keepsTexts = isKept; }
    bool keepsTexts() const { return _keepsTexts; }

    /** Says what the text was that was added last, and is, where it has changed; kept only if @ref keepsTexts() . */
    void addTexts(Containers::StringView before, Containers::StringView after);

    /** Counts a text as skipped because its key has no place in a file beside another one. */
    void addConflict(UnsignedInt language, Containers::StringView term, Containers::StringView reason,
        Containers::StringView file = {});

    /** Whether there was any such text. */
    bool hasConflicts() const { return _hasConflicts; }

    /** Counts for a language, from which on it is one of @ref languages() . */
    void addLanguage(UnsignedInt language);

    /** Makes room for so many lines in all. */
    void reserve(const std::size_t lines) { _lines.reserve(lines); }

    /** Adds what another report has, behind what this one has. The other one is empty then. */
    void append(LocalizationReport&& other);

    Containers::ArrayView<const Line> lines() const { return {_lines.data(), _lines.size()}; }

    /** In the order in which they came. */
    Containers::ArrayView<const UnsignedInt> languages() const { return {_languages.data(), _languages.size()}; }

    Counts counts(UnsignedInt language) const;

    /** Counts translations as stale, beside their outcomes. */
    void addStale(const UnsignedInt language, const UnsignedInt count = 1) { slot(language).stale += count; }

    /** Whether a count is other than zero for any of @ref languages() . */
    bool hasAny(UnsignedInt Counts::*count) const;

    /** Whether texts were skipped, and none was taken over or as it was. */
    bool hasSkippedAll() const;

    /** Prints a warning for every text that was skipped and every notice, no more than @p maxLines of them, and one line per
        language.
        @param function     what the messages begin with, as "Class::function()" */
    void print(Containers::StringView function, std::size_t maxLines = 100) const;

    /** As one line of JSON: an object with "languages", an array of objects with "language" (BCP 47), "name", "added",
        "changed", "unchanged", "empty", "skipped", "notices" and "stale"; and "lines", an array of objects with "outcome" (one of the
        names of the counts, "notice" for the last) and, where the line has it, "language", "term", "reason", "file", "before" and
        "after". */
    Containers::String json() const;

private:
    Containers::StringView asBefore(Containers::StringView text, Containers::StringView Line::*part);
    Counts& slot(UnsignedInt language);

    /** What the text of a line was and is. */
    struct Change {
        std::size_t line;
        Containers::StringView before;
        Containers::StringView after;
    };

    TextArena _texts;
    std::vector<Line> _lines;
    /** By lines. */
    std::vector<Change> _changes;
    std::vector<UnsignedInt> _languages;
    /** Empty until something is counted; one more than there are languages then: the last one is of what belongs to none. */
    std::vector<Counts> _counts;
    bool _hasConflicts = false;
    bool _keepsTexts = false;
};

}
