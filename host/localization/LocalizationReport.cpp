#include "LocalizationReport.h"

#include <algorithm>
#include <utility>

#include <Corrade/Utility/Debug.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace QuorvaneEngine {

namespace {

struct Outcome {
    const char* name;
    UnsignedInt LocalizationReport::Counts::*count;
    const char* countName;
};

/* By TermOutcome */
constexpr Outcome Outcomes[]{
    {"added", &LocalizationReport::Counts::added, "added"},
    {"changed", &LocalizationReport::Counts::changed, "changed"},
    {"unchanged", &LocalizationReport::Counts::unchanged, "unchanged"},
    {"empty", &LocalizationReport::Counts::empty, "empty"},
    {"skipped", &LocalizationReport::Counts::skipped, "skipped"},
    {"notice", &LocalizationReport::Counts::notices, "notices"},
};

std::size_t slotOf(const UnsignedInt language) { return std::min(language, LanguageCount); }

bool hasLine(const TermOutcome outcome) { return outcome != TermOutcome::Unchanged && outcome != TermOutcome::Empty; }

bool isPrinted(const TermOutcome outcome) { return outcome == TermOutcome::Skipped || outcome == TermOutcome::Notice; }

using Writer = rapidjson::Writer<rapidjson::StringBuffer>;

void writeMember(Writer& writer, const char* const name, const Containers::StringView text) {
    if(text.isEmpty()) return;
    writer.Key(name);
    writer.String(text.data(), rapidjson::SizeType(text.size()));
}

}

LocalizationReport::LocalizationReport() = default;
LocalizationReport::~LocalizationReport() = default;
LocalizationReport::LocalizationReport(LocalizationReport&&) noexcept = default;
LocalizationReport& LocalizationReport::operator=(LocalizationReport&&) noexcept = default;

void LocalizationReport::add(const UnsignedInt language, const TermOutcome outcome, const Containers::StringView term,
    const Containers::StringView reason, const Containers::StringView file) {
    add(language, outcome, hasLine(outcome) ? keep(term) : KeptTerm{{}}, reason, file);
}

void LocalizationReport::add(const UnsignedInt language, const TermOutcome outcome, const KeptTerm term,
    const Containers::StringView reason, const Containers::StringView file) {
    ++(slot(language).*Outcomes[std::size_t(outcome)].count);
    if(hasLine(outcome))
        _lines.push_back({language, outcome, term._key, asBefore(reason, &Line::reason), asBefore(file, &Line::file)});
}

void LocalizationReport::addAll(const UnsignedInt language, const TermOutcome outcome, const UnsignedInt count,
    const Containers::StringView term, const Containers::StringView reason, const Containers::StringView file) {
    if(count == 0) return;
    add(language, outcome, term, reason, file);
    slot(language).*Outcomes[std::size_t(outcome)].count += count - 1;
}

void LocalizationReport::addTexts(const Containers::StringView before, const Containers::StringView after) {
    if(_keepsTexts && !_lines.empty() && _lines.back().outcome == TermOutcome::Changed)
        _changes.push_back({_lines.size() - 1, _texts.add(before), _texts.add(after)});
}

void LocalizationReport::addConflict(const UnsignedInt language, const Containers::StringView term,
    const Containers::StringView reason, const Containers::StringView file) {
    add(language, TermOutcome::Skipped, term, reason, file);
    _hasConflicts = true;
}

void LocalizationReport::addLanguage(const UnsignedInt language) {
    if(std::find(_languages.begin(), _languages.end(), language) == _languages.end()) _languages.push_back(language);
}

void LocalizationReport::append(LocalizationReport&& other) {
    _texts.append(std::move(other._texts));
    for(const Change& change: other._changes)
        _changes.push_back({_lines.size() + change.line, change.before, change.after});
    if(_lines.empty()) _lines = std::move(other._lines);
    else _lines.insert(_lines.end(), other._lines.begin(), other._lines.end());
    for(const UnsignedInt language: other._languages) addLanguage(language);
    for(std::size_t i = 0; i != other._counts.size(); ++i) {
        Counts& counts = slot(UnsignedInt(i));
        for(const Outcome& outcome: Outcomes) counts.*outcome.count += other._counts[i].*outcome.count;
        counts.stale += other._counts[i].stale;
    }
    _hasConflicts = _hasConflicts || other._hasConflicts;
    const bool keepsTexts = other._keepsTexts;
    other = LocalizationReport{};
    other._keepsTexts = keepsTexts;
}

LocalizationReport::Counts LocalizationReport::counts(const UnsignedInt language) const {
    return _counts.empty() ? Counts{} : _counts[slotOf(language)];
}

bool LocalizationReport::hasAny(UnsignedInt Counts::*const count) const {
    return std::any_of(_languages.begin(), _languages.end(),
        [this, count](const UnsignedInt language) { return counts(language).*count != 0; });
}

bool LocalizationReport::hasSkippedAll() const {
    bool hasSkipped = false;
    for(const Counts& counts: _counts) {
        if(counts.added || counts.changed || counts.unchanged) return false;
        hasSkipped = hasSkipped || counts.skipped;
    }
    return hasSkipped;
}

void LocalizationReport::print(const Containers::StringView function, const std::size_t maxLines) const {
    using Corrade::Utility::Debug;
    using Corrade::Utility::Warning;

    std::size_t count = 0;
    for(const Line& line: _lines) {
        if(!isPrinted(line.outcome) || ++count > maxLines) continue;
        Warning warning;
        warning << function << Debug::nospace << ":";
        if(!line.file.isEmpty()) warning << line.file << Debug::nospace << ":";
        else if(line.language < LanguageCount) warning << AllLanguages[line.language].code << Debug::nospace << ":";
        if(!line.term.isEmpty()) warning << line.term << Debug::nospace << ":";
        warning << line.reason;
    }
    if(count > maxLines)
        Warning{} << function << Debug::nospace << ":" << count - maxLines << "more lines are left out";

    for(const UnsignedInt language: _languages) {
        const Counts counts = this->counts(language);
        Debug line;
        line << function << Debug::nospace << ":" << AllLanguages[language].code << Debug::nospace << ":"
             << counts.added << "added," << counts.changed << "changed," << counts.unchanged << "unchanged,"
             << counts.empty << "without text," << counts.skipped << "skipped";
        if(counts.notices)
            line << Debug::nospace << "," << counts.notices << (counts.notices == 1 ? "notice" : "notices");
        if(counts.stale) line << Debug::nospace << "," << counts.stale << "stale";
    }
}

Containers::String LocalizationReport::json() const {
    rapidjson::StringBuffer buffer;
    Writer writer{buffer};
    writer.StartObject();
    writer.Key("languages");
    writer.StartArray();
    for(const UnsignedInt language: _languages) {
        const Counts counts = this->counts(language);
        writer.StartObject();
        writeMember(writer, "language", AllLanguages[language].code);
        writeMember(writer, "name", AllLanguages[language].name);
        for(const Outcome& outcome: Outcomes) {
            writer.Key(outcome.countName);
            writer.Uint(counts.*outcome.count);
        }
        writer.Key("stale");
        writer.Uint(counts.stale);
        writer.EndObject();
    }
    writer.EndArray();
    writer.Key("lines");
    writer.StartArray();
    auto change = _changes.begin();
    for(const Line& line: _lines) {
        writer.StartObject();
        writeMember(writer, "outcome", Outcomes[std::size_t(line.outcome)].name);
        if(line.language < LanguageCount) writeMember(writer, "language", AllLanguages[line.language].code);
        writeMember(writer, "term", line.term);
        writeMember(writer, "reason", line.reason);
        writeMember(writer, "file", line.file);
        if(change != _changes.end() && change->line == std::size_t(&line - _lines.data())) {
            writeMember(writer, "before", change->before);
            writeMember(writer, "after", change->after);
            ++change;
        }
        writer.EndObject();
    }
    writer.EndArray();
    writer.EndObject();
    return Containers::String{buffer.GetString(), buffer.GetSize()};
}

Containers::StringView LocalizationReport::asBefore(
    const Containers::StringView text, Containers::StringView Line::*const part) {
    // Reasons and files come in runs.
    if(text.isEmpty()) return {};
    return !_lines.empty() && _lines.back().*part == text ? _lines.back().*part : _texts.add(text);
}

LocalizationReport::Counts& LocalizationReport::slot(const UnsignedInt language) {
    if(_counts.empty()) _counts.resize(LanguageCount + 1);
    return _counts[slotOf(language)];
}

}
