#include "LocalizationReport.h"

#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Utility/Debug.h>

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

std::size_t slot(const UnsignedInt language) { return language < LanguageCount ? language : LanguageCount; }

}

void LocalizationReport::add(const UnsignedInt language, const TermOutcome outcome, const Containers::StringView term,
    const Containers::StringView reason) {
    Counts& counts = _counts[slot(language)];
    switch(outcome) {
    case TermOutcome::Added: ++counts.added; break;
    case TermOutcome::Changed: ++counts.changed; break;
    case TermOutcome::Unchanged: ++counts.unchanged; return;
    case TermOutcome::Empty: ++counts.empty; return;
    case TermOutcome::Skipped: ++counts.skipped; break;
    }
    Containers::arrayAppend(_lines, Line{language, outcome, Containers::String{term}, Containers::String{reason}});
}

void LocalizationReport::addLanguage(const UnsignedInt language) {
    for(const UnsignedInt known: _languages)
        if(known == language) return;
    Containers::arrayAppend(_languages, language);
}

LocalizationReport::Counts LocalizationReport::counts(const UnsignedInt language) const {
    return _counts[slot(language)];
}

void LocalizationReport::print(const Containers::StringView function, const std::size_t maxLines) const {
    using Corrade::Utility::Debug;
    using Corrade::Utility::Warning;

    std::size_t skipped = 0;
    for(const Line& line: _lines) {
        if(line.outcome != TermOutcome::Skipped || ++skipped > maxLines) continue;
        Warning warning;
        warning << function << Debug::nospace << ":";
        if(line.language < LanguageCount) warning << AllLanguages[line.language].code << Debug::nospace << ":";
        if(!line.term.isEmpty()) warning << line.term << Debug::nospace << ":";
        warning << line.reason;
    }
    if(skipped > maxLines)
        Warning{} << function << Debug::nospace << ":" << skipped - maxLines << "more texts were skipped";

    for(const UnsignedInt language: _languages) {
        const Counts& counts = _counts[slot(language)];
        Debug{} << function << Debug::nospace << ":" << AllLanguages[language].code << Debug::nospace << ":"
                << counts.added << "added," << counts.changed << "changed," << counts.unchanged << "unchanged,"
                << counts.empty << "without text," << counts.skipped << "skipped";
    }
}

}
