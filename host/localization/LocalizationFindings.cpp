#include "LocalizationFindings.h"

#include <map>
#include <string>
#include <utility>

#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Utility/Format.h>

#include "../document/JsonText.h"
#include "LanguageLookup.h"
#include "LocalizationReport.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

constexpr const char* SeverityNames[FindingSeverityCount]{"error", "warning", "hint"};

void appendMember(std::string& out, const char* const name, const Containers::StringView text) {
    out += out.back() == '{' ? "\"" : ", \"";
    out += name;
    out += "\": ";
    appendJsonString(out, {text.data(), text.size()});
}

void appendFinding(std::string& out, const LocalizationFinding& finding) {
    out += '{';
    appendMember(out, "check", finding.check);
    appendMember(out, "severity", findingSeverityName(finding.severity));
    appendMember(out, "file", finding.file);
    appendMember(out, "path", finding.path);
    appendMember(out, "term", finding.term);
    appendMember(out, "language", finding.language);
    appendMember(out, "message", finding.message);
    if(!finding.silenced.isEmpty()) appendMember(out, "silenced", finding.silenced);
    out += '}';
}

}

Containers::StringView findingSeverityName(const FindingSeverity severity) {
    return SeverityNames[std::size_t(severity)];
}

LocalizationFindings::LocalizationFindings() = default;
LocalizationFindings::~LocalizationFindings() = default;
LocalizationFindings::LocalizationFindings(LocalizationFindings&&) noexcept = default;
LocalizationFindings& LocalizationFindings::operator=(LocalizationFindings&&) noexcept = default;

void LocalizationFindings::add(const LocalizationFinding& finding) {
    Containers::arrayAppend(_findings, finding);
    if(finding.silenced.isEmpty()) ++_counts[std::size_t(finding.severity)];
    else ++_silenced;
}

void LocalizationFindings::append(LocalizationFindings&& other) {
    for(const LocalizationFinding& finding: other._findings) add(finding);
    _texts.append(std::move(other._texts));
    other = LocalizationFindings{};
}

bool LocalizationFindings::hasProblems(const FindingSeverity least) const {
    for(std::size_t severity = 0; severity <= std::size_t(least); ++severity)
        if(_counts[severity]) return true;
    return false;
}

void LocalizationFindings::leaveOutBelow(const FindingSeverity least) {
    Containers::Array<LocalizationFinding> all = std::move(_findings);
    _findings = {};
    _silenced = 0;
    for(UnsignedInt& count: _counts) count = 0;
    for(const LocalizationFinding& finding: all)
        if(finding.severity <= least) add(finding);
}

void LocalizationFindings::addTo(LocalizationReport& report) const {
    // Findings of one language come together.
    Containers::StringView code;
    UnsignedInt language = LocalizationReport::NoLanguage;
    for(const LocalizationFinding& finding: _findings) {
        if(!finding.silenced.isEmpty()) continue;
        if(finding.language != code) {
            code = finding.language;
            const Int found = findLanguage(code);
            language = found == -1 ? LocalizationReport::NoLanguage : UnsignedInt(found);
        }
        report.add(language, TermOutcome::Notice, finding.term,
            Corrade::Utility::format(
                "{}: {} [{}]", findingSeverityName(finding.severity), finding.message, finding.check),
            finding.file);
    }
    countStale(report);
}

void LocalizationFindings::countStale(LocalizationReport& report) const {
    std::map<Containers::StringView, UnsignedInt> counts;
    for(const LocalizationFinding& finding: _findings)
        if(finding.check == "stale"_s && finding.silenced.isEmpty()) ++counts[finding.language];
    // A report of an import has counted those in its files already.
    for(const auto& [code, count]: counts)
        if(const Int language = findLanguage(code); language != -1)
            if(const UnsignedInt counted = report.counts(UnsignedInt(language)).stale; counted < count)
                report.addStale(UnsignedInt(language), count - counted);
}

Containers::String LocalizationFindings::toJson() const {
    std::string out{"{"};
    const std::pair<const char*, UnsignedInt> counts[]{{"errors", count(FindingSeverity::Error)},
        {"warnings", count(FindingSeverity::Warning)}, {"hints", count(FindingSeverity::Hint)},
        {"silenced", _silenced}};
    for(const auto& [name, number]: counts)
        out.append(1, '"').append(name).append("\": ") += std::to_string(number) + ", ";
    out += "\"findings\": [";
    for(const LocalizationFinding& finding: _findings) {
        out += &finding == _findings.begin() ? "\n" : ",\n";
        appendFinding(out, finding);
    }
    out += _findings.isEmpty() ? "]}" : "\n]}";
    return Containers::String{out.data(), out.size()};
}

}
