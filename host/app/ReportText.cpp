#include "app/ReportText.h"

#include <algorithm>
#include <cstddef>
#include <ctime>

#include <Corrade/Utility/Format.h>

#include "ChangeManager.h"
#include "QuorvaneEditor/QuorvaneEditor.h"
#include "app/ReportRows.h"
#include "localization/LastRun.h"

namespace QuorvaneEngine::ReportText {

using namespace Containers::Literals;
using Corrade::Utility::format;

namespace {

struct Outcome {
    Containers::StringView name;
    UnsignedInt LocalizationReport::Counts::*count;
    /** Behind a number, one and more. */
    Containers::StringView one;
    Containers::StringView many;
};

/* By TermOutcome */
const Outcome Outcomes[]{
    {"Added"_s, &LocalizationReport::Counts::added, "added"_s, "added"_s},
    {"Changed"_s, &LocalizationReport::Counts::changed, "changed"_s, "changed"_s},
    {"Unchanged"_s, &LocalizationReport::Counts::unchanged, "unchanged"_s, "unchanged"_s},
    {"Empty"_s, &LocalizationReport::Counts::empty, "without text"_s, "without text"_s},
    {"Skipped"_s, &LocalizationReport::Counts::skipped, "skipped"_s, "skipped"_s},
    {"Notice"_s, &LocalizationReport::Counts::notices, "notice"_s, "notices"_s},
};

/* By LocalizationRun::Kind: what is said of a run that was refused, of one that changed nothing, and of any other */
struct Kind {
    const char* refused;
    const char* idle;
    const char* done;
};

constexpr Kind Kinds[]{
    {"No terms were gathered", "Gathering found no new texts", "Gathered new terms"},
    {"Nothing was exported to {}", "Exported to {}", "Exported to {}"},
    {"Nothing was imported from {}", "The import from {} changed nothing", "Imported from {}"},
    {"The terms were not checked", "Checked the terms", "Checked the terms"},
};

/** A text as one cell of a table: what would end it is a blank. */
void appendCell(std::string& table, Containers::StringView text, char end) {
    for(const char character: text) table += static_cast<unsigned char>(character) < 0x20 ? ' ' : character;
    table += end;
}

void append(std::string& table, const LocalizationReport::Line& line) {
    appendCell(table, line.language < LanguageCount ? AllLanguages[line.language].code : ""_s, '\t');
    appendCell(table, outcomeName(line.outcome), '\t');
    appendCell(table, line.term, '\t');
    appendCell(table, line.reason, '\t');
    appendCell(table, line.file, '\n');
}

}

Containers::StringView outcomeName(const TermOutcome outcome) { return Outcomes[std::size_t(outcome)].name; }

Containers::StringView languageName(const UnsignedInt language) {
    return language < LanguageCount ? AllLanguages[language].name : ""_s;
}

UnsignedInt count(const LocalizationReport& report, const TermOutcome outcome) {
    const auto member = Outcomes[std::size_t(outcome)].count;
    UnsignedInt sum = report.counts(LocalizationReport::NoLanguage).*member;
    for(UnsignedInt language = 0; language != LanguageCount; ++language) sum += report.counts(language).*member;
    return sum;
}

Containers::String headline(const LocalizationRun& run, const bool isPreview) {
    if(isPreview) return format("What an import from {} would do", run.path);
    const Kind& kind = Kinds[std::size_t(run.kind)];
    const bool isIdle = run.group == -1;
    return format(!run.refusals.isEmpty() ? kind.refused : isIdle ? kind.idle : kind.done, run.path);
}

Containers::String summary(const LocalizationRun& run) {
    if(!run.refusals.isEmpty()) return run.refusals[0];
    std::string text;
    for(std::size_t i = 0; i != std::size(Outcomes); ++i) {
        const UnsignedInt number = count(run.report, TermOutcome(i));
        if(!number) continue;
        if(!text.empty()) text += ", ";
        text += std::to_string(number);
        text += ' ';
        const Containers::StringView name = number == 1 ? Outcomes[i].one : Outcomes[i].many;
        text.append(name.data(), name.size());
    }
    if(text.empty()) return run.kind == LocalizationRun::Kind::Check ? "nothing was found"_s : "nothing to do"_s;
    return Containers::String{text.data(), text.size()};
}

Containers::String time(const LocalizationRun& run) {
    const std::time_t seconds = std::chrono::system_clock::to_time_t(run.when);
    std::tm local{};
    localtime_r(&seconds, &local);
    char text[64];
    return Containers::String{text, std::strftime(text, sizeof(text), "%Y-%m-%d %H:%M:%S", &local)};
}

bool isUndone(const QuorvaneEditor& editor, const LocalizationRun& run) {
    if(run.group == -1) return false;
    const ChangeManager& changes = editor.changeManager();
    const auto applied = changes.changes().prefix(std::size_t(changes.lastChangeIndex()) + 1);
    return std::none_of(
        applied.begin(), applied.end(), [&](const Change& change) { return change.group == run.group; });
}

Containers::StringView undoObstacle(const QuorvaneEditor& editor, const LocalizationRun& run) {
    if(canUndo(editor, run)) return {};
    if(run.group == -1) return "It changed nothing"_s;
    const ChangeManager& changes = editor.changeManager();
    if(changes.isGroupOpen()) return "Another change is not finished yet"_s;
    if(!isUndone(editor, run)) return "The project was changed since then: undo that first, by Edit > Undo"_s;
    for(const Change& change: changes.changes().exceptPrefix(std::size_t(changes.lastChangeIndex()) + 1))
        if(change.group == run.group) return "It is undone: Edit > Redo brings it back"_s;
    return "It is undone"_s;
}

std::string copied(const LocalizationReport::Line& line) {
    std::string table;
    append(table, line);
    return table;
}

std::string copied(const LocalizationRun& run, const ReportRows& rows) {
    std::string table;
    for(const Containers::String& refusal: run.refusals) appendCell(table, refusal, '\n');
    if(!rows.size()) return table;
    table += "Language\tOutcome\tTerm\tReason\tFile\n";
    for(std::size_t row = 0; row != rows.size(); ++row) append(table, rows[row]);
    return table;
}

}
