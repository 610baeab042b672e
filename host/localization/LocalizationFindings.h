#pragma once

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"
#include "TextArena.h"

namespace QuorvaneEngine {

class LocalizationReport;

/** How much a finding matters. */
enum class FindingSeverity {
    /** Users of the application will see something wrong. */
    Error,
    /** Somebody should look at it. */
    Warning,
    /** May well be meant. */
    Hint
};

constexpr std::size_t FindingSeverityCount = 3;

/** `error`, `warning`, `hint`. */
QUORVANE_API Containers::StringView findingSeverityName(FindingSeverity severity);

/** Something that a check has found in a project. */
struct LocalizationFinding {
    /** Name of the check, see @ref localizationChecks() . */
    Containers::StringView check;

    FindingSeverity severity = FindingSeverity::Error;

    /** The file of the project, as `localization/de.json`. */
    Containers::StringView file;

    /** JSON Pointer (RFC 6901) from that file's root to what is wrong, or is missing there. */
    Containers::StringView path;

    /** Key of the term, as the project has it; empty for what is about no term. */
    Containers::StringView term;

    /** Code of the language; empty for what is about the term itself. */
    Containers::StringView language;

    /** The end of a sentence: no capital letter, no full stop. On one line. */
    Containers::StringView message;

    /** Why the project does not want to hear of it; empty where it does. */
    Containers::StringView silenced;
};

/** What the checks of a project's terms have found. Its texts are its own. */
class QUORVANE_API LocalizationFindings {
public:
    LocalizationFindings();
    ~LocalizationFindings();
    LocalizationFindings(const LocalizationFindings&) = delete;
    LocalizationFindings& operator=(const LocalizationFindings&) = delete;
    LocalizationFindings(LocalizationFindings&&) noexcept;
    LocalizationFindings& operator=(LocalizationFindings&&) noexcept;

    /** What is about the project itself first, then about the terms, in the project's order, then about each language's texts. */
    Containers::ArrayView<const LocalizationFinding> findings() const { return _findings; }

    /** How many there are of a severity, without those that are silenced. */
    UnsignedInt count(FindingSeverity severity) const { return _counts[std::size_t(severity)]; }

    UnsignedInt silencedCount() const { return _silenced; }

    /** Whether there are findings of a severity, or of a higher one, that are not silenced. */
    bool hasProblems(FindingSeverity least = FindingSeverity::Warning) const;

    /** As one JSON object: `errors`, `warnings`, `hints` and `silenced` with the numbers of findings, and `findings`, an array of
        objects with `check`, `severity`, `file`, `path`, `term`, `language`, `message` and, where the finding is silenced,
        `silenced`, all of them texts. No newline at the end. */
    Containers::String toJson() const;

    /** Adds those that are not silenced to a report, as notices that begin with the severity and end with the name of the check in
        brackets. */
    void addTo(LocalizationReport& report) const;

    /** Lets a report count stale translations that are found and that it has not counted itself. */
    void countStale(LocalizationReport& report) const;

    /** Adds a finding. Its check is a literal; its other texts stay with the caller, who may have put them into
        @ref texts() . */
    void add(const LocalizationFinding& finding);

    /** Adds those of another collection behind its own. */
    void append(LocalizationFindings&& other);

    /** Forgets those of a lower severity, silenced ones, too. */
    void leaveOutBelow(FindingSeverity least);

    /** Memory for the texts of findings. */
    TextArena& texts() { return _texts; }

private:
    Containers::Array<LocalizationFinding> _findings;
    TextArena _texts;
    UnsignedInt _counts[FindingSeverityCount]{};
    UnsignedInt _silenced = 0;
};

}
