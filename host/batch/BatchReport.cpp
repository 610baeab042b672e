#include "batch/BatchReport.h"

#include <string>
#include <utility>
#include <vector>

#include "batch/BatchOutput.h"
#include "batch/TextTable.h"
#include "localization/LocalizationReport.h"

namespace QuorvaneEngine {

namespace {

/** Of the table of counts. */
struct Column {
    const char* heading;
    UnsignedInt LocalizationReport::Counts::*count;
    /** Whether it is there where all languages have none, too. */
    bool isAlways;
};

constexpr Column Columns[]{
    {"Added", &LocalizationReport::Counts::added, true},
    {"Changed", &LocalizationReport::Counts::changed, true},
    {"Unchanged", &LocalizationReport::Counts::unchanged, true},
    {"Without text", &LocalizationReport::Counts::empty, true},
    {"Skipped", &LocalizationReport::Counts::skipped, true},
    {"Notices", &LocalizationReport::Counts::notices, false},
    {"Stale", &LocalizationReport::Counts::stale, false},
};

std::string string(const Containers::StringView text) { return {text.data(), text.size()}; }

/** The file or else the language, and the term. */
std::string placeOf(const LocalizationReport::Line& line) {
    std::string place;
    if(!line.file.isEmpty()) place = string(line.file) + ": ";
    else if(line.language < LanguageCount) place = string(AllLanguages[line.language].code) + ": ";
    return line.term.isEmpty() ? place : place + string(line.term) + ": ";
}

std::string counted(const UnsignedInt count, const std::string& what) {
    return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

void addMembers(const Containers::String& json, rapidjson::Document& object) {
    rapidjson::Document parsed{&object.GetAllocator()};
    parsed.Parse(json.data(), json.size());
    for(auto& member: parsed.GetObject()) object.AddMember(member.name, member.value, object.GetAllocator());
}

bool isWarning(const TermOutcome outcome) { return outcome == TermOutcome::Skipped || outcome == TermOutcome::Notice; }

}

void printReport(const LocalizationReport& report, const bool isDetailed, BatchOutput& output) {
    for(const LocalizationReport::Line& line: report.lines()) {
        if(isWarning(line.outcome)) output.warn(placeOf(line) + string(line.reason));
        else if(isDetailed) output.print(placeOf(line) + (line.outcome == TermOutcome::Added ? "added" : "changed"));
    }

    using Side = TextTable::Side;
    std::vector<Side> sides{Side::Left};
    std::vector<std::string> headings{"Language"};
    std::vector<UnsignedInt LocalizationReport::Counts::*> counts;
    for(const Column& column: Columns) {
        if(!column.isAlways && !report.hasAny(column.count)) continue;
        sides.push_back(Side::Right);
        headings.emplace_back(column.heading);
        counts.push_back(column.count);
    }
    TextTable table{std::move(sides)};
    table.add(std::move(headings));
    for(const UnsignedInt language: report.languages()) {
        std::vector<std::string> cells{string(AllLanguages[language].code)};
        for(const auto count: counts) cells.push_back(std::to_string(report.counts(language).*count));
        table.add(std::move(cells));
    }
    output.printText(table.text());
}

void addReport(const LocalizationReport& report, rapidjson::Document& object) { addMembers(report.json(), object); }

void printFindings(const LocalizationFindings& findings, BatchOutput& output, const FindingSeverity least) {
    for(const LocalizationFinding& finding: findings.findings()) {
        if(!finding.silenced.isEmpty()) continue;
        std::string line = string(finding.file) + ": ";
        if(!finding.term.isEmpty()) line += string(finding.term) + ": ";
        line += string(findingSeverityName(finding.severity)) + ": " + string(finding.message);
        output.print(line + " [" + string(finding.check) + ']');
    }
    std::string sum;
    for(const FindingSeverity severity: {FindingSeverity::Error, FindingSeverity::Warning, FindingSeverity::Hint})
        if(severity <= least)
            sum += (sum.empty() ? "" : ", ") + counted(findings.count(severity), string(findingSeverityName(severity)));
    if(findings.silencedCount()) sum += "; " + std::to_string(findings.silencedCount()) + " silenced";
    output.print(sum);
}

void addFindings(const LocalizationFindings& findings, rapidjson::Document& object) {
    addMembers(findings.toJson(), object);
}

}
