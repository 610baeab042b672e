#include "LocalizationFindings.h"

#include <utility>

#include <rapidjson/document.h>

#include "LanguageLookup.h"
#include "LocalizationReport.h"
#include "TestProject.h"

namespace QuorvaneEngine {

namespace {

LocalizationFinding finding(
    const FindingSeverity severity, const char* const message, const char* const silenced = "") {
    LocalizationFinding out;
    out.check = "check";
    out.severity = severity;
    out.file = "project.json";
    out.path = "/a";
    out.term = "a";
    out.language = "";
    out.message = message;
    out.silenced = silenced;
    return out;
}

}

TEST(LocalizationFindings, CountThoseThatAreNotSilenced) {
    LocalizationFindings findings;
    EXPECT_FALSE(findings.hasProblems());
    findings.add(finding(FindingSeverity::Hint, "one"));
    findings.add(finding(FindingSeverity::Error, "two", "why"));
    EXPECT_FALSE(findings.hasProblems());
    findings.add(finding(FindingSeverity::Warning, "three"));
    EXPECT_TRUE(findings.hasProblems());
    findings.add(finding(FindingSeverity::Error, "four"));
    EXPECT_TRUE(findings.hasProblems());
    EXPECT_EQ(findings.count(FindingSeverity::Error), 1u);
    EXPECT_EQ(findings.count(FindingSeverity::Warning), 1u);
    EXPECT_EQ(findings.count(FindingSeverity::Hint), 1u);
    EXPECT_EQ(findings.silencedCount(), 1u);
    ASSERT_EQ(findings.findings().size(), 4u);
    EXPECT_EQ(findings.findings()[1].message, "two");
}

TEST(LocalizationFindings, AnErrorAloneIsAProblem) {
    LocalizationFindings findings;
    findings.add(finding(FindingSeverity::Error, "one"));
    EXPECT_TRUE(findings.hasProblems());
}

TEST(LocalizationFindings, AppendedOnesComeBehindWithTheirTexts) {
    LocalizationFindings findings, more;
    findings.add(finding(FindingSeverity::Error, "one"));
    for(int i = 0; i != 3000; ++i) {
        LocalizationFinding one = finding(FindingSeverity::Warning, "", i % 3 ? "" : "why");
        one.message = more.texts().add(viewed("message " + std::to_string(i)));
        more.add(one);
    }
    findings.append(std::move(more));
    EXPECT_EQ(findings.findings().size(), 3001u);
    EXPECT_EQ(findings.count(FindingSeverity::Warning), 2000u);
    EXPECT_EQ(findings.silencedCount(), 1000u);
    const LocalizationFindings moved{std::move(findings)};
    EXPECT_EQ(moved.findings()[3000].message, "message 2999");
    EXPECT_EQ(moved.count(FindingSeverity::Error), 1u);
}

TEST(LocalizationFindings, ComeIntoTheReportWhereTheyMatter) {
    LocalizationFindings findings;
    findings.add(finding(FindingSeverity::Hint, "one"));
    findings.add(finding(FindingSeverity::Error, "two", "why"));
    findings.add(finding(FindingSeverity::Error, "three"));
    LocalizationFinding german = finding(FindingSeverity::Warning, "four");
    german.language = "de";
    german.file = "localization/de.json";
    findings.add(german);
    LocalizationFinding unknown = finding(FindingSeverity::Error, "five");
    unknown.language = "no code";
    findings.add(unknown);

    LocalizationReport report;
    findings.addTo(report);
    ASSERT_EQ(report.lines().size(), 4u);
    EXPECT_EQ(report.lines()[0].reason, "hint: one [check]");
    EXPECT_EQ(report.lines()[1].language, LocalizationReport::NoLanguage);
    EXPECT_EQ(report.lines()[1].outcome, TermOutcome::Notice);
    EXPECT_EQ(report.lines()[1].term, "a");
    EXPECT_EQ(report.lines()[1].reason, "error: three [check]");
    EXPECT_EQ(report.lines()[1].file, "project.json");
    EXPECT_EQ(report.lines()[2].language, UnsignedInt(findLanguage("de")));
    EXPECT_EQ(report.lines()[2].reason, "warning: four [check]");
    EXPECT_EQ(report.lines()[2].file, "localization/de.json");
    EXPECT_EQ(report.lines()[3].language, LocalizationReport::NoLanguage);
}

TEST(LocalizationFindings, AreLeftOutBelowASeverity) {
    LocalizationFindings findings;
    findings.add(finding(FindingSeverity::Hint, "one"));
    findings.add(finding(FindingSeverity::Hint, "two", "why"));
    EXPECT_FALSE(findings.hasProblems());
    EXPECT_TRUE(findings.hasProblems(FindingSeverity::Hint));
    findings.add(finding(FindingSeverity::Warning, "three"));
    findings.add(finding(FindingSeverity::Error, "four", "why"));
    EXPECT_TRUE(findings.hasProblems());
    EXPECT_FALSE(findings.hasProblems(FindingSeverity::Error));

    findings.leaveOutBelow(FindingSeverity::Hint);
    EXPECT_EQ(findings.findings().size(), 4u);
    EXPECT_EQ(findings.silencedCount(), 2u);
    findings.leaveOutBelow(FindingSeverity::Warning);
    ASSERT_EQ(findings.findings().size(), 2u);
    EXPECT_EQ(findings.findings()[0].message, "three");
    EXPECT_EQ(findings.findings()[1].message, "four");
    EXPECT_EQ(findings.count(FindingSeverity::Hint), 0u);
    EXPECT_EQ(findings.count(FindingSeverity::Warning), 1u);
    EXPECT_EQ(findings.silencedCount(), 1u);
    findings.leaveOutBelow(FindingSeverity::Error);
    ASSERT_EQ(findings.findings().size(), 1u);
    EXPECT_FALSE(findings.hasProblems(FindingSeverity::Hint));
}

TEST(LocalizationFindings, AReportCountsStaleOnesOnceEach) {
    LocalizationFindings findings;
    for(const char* const code: {"de", "de", "fr"})
        findings.add({"stale", FindingSeverity::Hint, "localization/x.json", "/a", "a", code, "is stale", {}});
    findings.add({"stale", FindingSeverity::Hint, "localization/x.json", "/b", "b", "de", "is stale", "why"});
    const UnsignedInt german = UnsignedInt(findLanguage("de")), french = UnsignedInt(findLanguage("fr"));
    LocalizationReport report;
    report.addStale(german);
    report.addStale(french, 3);
    findings.addTo(report);
    EXPECT_EQ(report.counts(german).stale, 2u);
    EXPECT_EQ(report.counts(french).stale, 3u);
}

TEST(LocalizationFindings, NamesOfSeverities) {
    EXPECT_EQ(findingSeverityName(FindingSeverity::Error), "error");
    EXPECT_EQ(findingSeverityName(FindingSeverity::Warning), "warning");
    EXPECT_EQ(findingSeverityName(FindingSeverity::Hint), "hint");
}

TEST(LocalizationFindings, AreJsonForMachines) {
    LocalizationFindings findings;
    EXPECT_EQ(findings.toJson(), R"({"errors": 0, "warnings": 0, "hints": 0, "silenced": 0, "findings": []})");
    findings.add(finding(FindingSeverity::Error, "say \"no\"\n"));
    findings.add(finding(FindingSeverity::Hint, "é", "why"));
    EXPECT_EQ(copied(findings.toJson()),
        R"({"errors": 1, "warnings": 0, "hints": 0, "silenced": 1, "findings": [
{"check": "check", "severity": "error", "file": "project.json", "path": "/a", "term": "a", "language": "", "message": "say \"no\"\n"},
{"check": "check", "severity": "hint", "file": "project.json", "path": "/a", "term": "a", "language": "", "message": "é", "silenced": "why"}
]})");
    rapidjson::Document document;
    document.Parse(findings.toJson().data());
    EXPECT_FALSE(document.HasParseError());
}

}
