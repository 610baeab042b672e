#include "LocalizationReport.h"

#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "LanguageLookup.h"
#include "TestProject.h"
#include "support/CapturedOutput.h"

namespace QuorvaneEngine {

using Test::CapturedOutput;

TEST(LocalizationReport, CountsPerLanguageAndKeepsLinesOfWhatIsWorthOne) {
    LocalizationReport report;
    const UnsignedInt german = UnsignedInt(findLanguage("de"));
    report.addLanguage(german);
    report.addLanguage(german);
    report.add(german, TermOutcome::Added, "a");
    report.add(german, TermOutcome::Changed, "b");
    report.add(german, TermOutcome::Unchanged, "c");
    report.add(german, TermOutcome::Empty, "d");
    report.add(german, TermOutcome::Skipped, "e", "why");
    report.add(german, TermOutcome::Notice, {}, "by the way", "de/common.json");
    EXPECT_EQ(report.languages().size(), 1u);
    EXPECT_EQ(report.lines().size(), 4u);
    const LocalizationReport::Counts counts = report.counts(german);
    EXPECT_EQ(counts.added, 1u);
    EXPECT_EQ(counts.changed, 1u);
    EXPECT_EQ(counts.unchanged, 1u);
    EXPECT_EQ(counts.empty, 1u);
    EXPECT_EQ(counts.skipped, 1u);
    EXPECT_EQ(counts.notices, 1u);
    EXPECT_EQ(report.counts(0).added, 0u);
    EXPECT_EQ(report.counts(LocalizationReport::NoLanguage).skipped, 0u);
}

TEST(LocalizationReport, CountsStaleTranslationsBesideTheirOutcomes) {
    const UnsignedInt german = UnsignedInt(findLanguage("de"));
    LocalizationReport report;
    report.addLanguage(german);
    report.add(german, TermOutcome::Unchanged, "a");
    EXPECT_FALSE(report.hasAny(&LocalizationReport::Counts::stale));
    EXPECT_TRUE(report.hasAny(&LocalizationReport::Counts::unchanged));
    LocalizationReport other;
    other.addStale(german);
    other.addStale(german, 2);
    report.addStale(german);
    report.append(std::move(other));
    EXPECT_TRUE(report.hasAny(&LocalizationReport::Counts::stale));
    EXPECT_EQ(report.counts(german).stale, 4u);
    EXPECT_EQ(report.counts(german).unchanged, 1u);
    EXPECT_EQ(report.lines().size(), 0u);
    EXPECT_NE(copied(report.json()).find(R"("notices":0,"stale":4})"), std::string::npos);
    const CapturedOutput output;
    report.print("Tools::run()");
    EXPECT_EQ(
        output.debug(), "Tools::run(): de: 0 added, 0 changed, 1 unchanged, 0 without text, 0 skipped, 4 stale\n");
}

TEST(LocalizationReport, CountsManyTextsWithOneLine) {
    LocalizationReport report;
    report.addLanguage(0);
    report.addAll(0, TermOutcome::Skipped, 3, "a", "no term has this key, nor two others", "de.json");
    report.addAll(0, TermOutcome::Notice, 2, {}, "by the way", "de.json");
    report.addAll(0, TermOutcome::Skipped, 0, "b", "nothing", "de.json");
    EXPECT_EQ(report.counts(0).skipped, 3u);
    EXPECT_EQ(report.counts(0).notices, 2u);
    ASSERT_EQ(report.lines().size(), 2u);
    EXPECT_EQ(report.lines()[0].term, "a");
    EXPECT_EQ(report.lines()[0].reason, "no term has this key, nor two others");
    EXPECT_TRUE(report.hasSkippedAll());
    const CapturedOutput output;
    report.print("Tools::run()");
    EXPECT_NE(output.debug().find("3 skipped, 2 notices\n"), std::string::npos) << output.debug();
}

TEST(LocalizationReport, RemembersWhetherThereWereConflicts) {
    LocalizationReport report;
    report.add(0, TermOutcome::Skipped, "a", "why", "de.json");
    EXPECT_FALSE(report.hasConflicts());
    LocalizationReport other;
    other.addConflict(0, "b", "cannot stand beside c", "de.json");
    EXPECT_TRUE(other.hasConflicts());
    EXPECT_EQ(other.counts(0).skipped, 1u);
    ASSERT_EQ(other.lines().size(), 1u);
    EXPECT_EQ(other.lines()[0].outcome, TermOutcome::Skipped);
    EXPECT_EQ(other.lines()[0].reason, "cannot stand beside c");
    report.append(std::move(other));
    EXPECT_TRUE(report.hasConflicts());
    report.append(LocalizationReport{});
    EXPECT_TRUE(report.hasConflicts());
}

TEST(LocalizationReport, PrintsWhatWasSkippedAndTheCounts) {
    LocalizationReport report;
    const UnsignedInt german = UnsignedInt(findLanguage("de"));
    report.addLanguage(german);
    report.add(german, TermOutcome::Added, "a");
    report.add(german, TermOutcome::Skipped, "e", "is not translatable");
    report.add(LocalizationReport::NoLanguage, TermOutcome::Skipped, {}, "x.json: no language has the code x");
    report.add(LocalizationReport::NoLanguage, TermOutcome::Skipped, "f", "third");
    report.add(german, TermOutcome::Notice, "g", "is of version 3", "de/common.json");
    const CapturedOutput output;
    report.print("Tools::run()", 2);
    EXPECT_EQ(output.warning(),
        "Tools::run(): de: e: is not translatable\n"
        "Tools::run(): x.json: no language has the code x\n"
        "Tools::run(): 2 more lines are left out\n");
    EXPECT_EQ(
        output.debug(), "Tools::run(): de: 1 added, 0 changed, 0 unchanged, 0 without text, 1 skipped, 1 notice\n");
}

TEST(LocalizationReport, LineNamesItsFileInPlaceOfItsLanguage) {
    LocalizationReport report;
    const UnsignedInt german = UnsignedInt(findLanguage("de"));
    report.add(german, TermOutcome::Notice, "common:a", "is of version 3", "de/common.json");
    const CapturedOutput output;
    report.print("Tools::run()");
    EXPECT_EQ(output.warning(), "Tools::run(): de/common.json: common:a: is of version 3\n");
}

TEST(LocalizationReport, AppendedReportIsAsIfAllHadComeIntoOne) {
    const UnsignedInt german = UnsignedInt(findLanguage("de"));
    const UnsignedInt french = UnsignedInt(findLanguage("fr"));
    const auto fill = [&](LocalizationReport& report, const UnsignedInt language, const std::string& prefix) {
        report.addLanguage(language);
        for(int i = 0; i != 1000; ++i) {
            const std::string key = prefix + std::to_string(i);
            report.add(language, TermOutcome(i % 6), {key.data(), key.size()}, i % 2 ? "why" : "", "a.json");
        }
    };
    LocalizationReport one, other, all;
    fill(one, german, "g");
    fill(other, french, "f");
    fill(all, german, "g");
    fill(all, french, "f");
    one.append(std::move(other));
    LocalizationReport moved{std::move(one)};
    LocalizationReport into;
    into.append(std::move(moved));
    EXPECT_EQ(into.json(), all.json());
    EXPECT_EQ(into.lines().size(), all.lines().size());
    // A report that was taken over begins anew.
    EXPECT_EQ(other.lines().size(), 0u);
    EXPECT_EQ(other.counts(french).added, 0u);
    fill(other, french, "f");
    EXPECT_EQ(other.counts(french).added, all.counts(french).added);
}

TEST(LocalizationReport, JsonHasCountsAndLines) {
    LocalizationReport report;
    EXPECT_EQ(report.json(), R"({"languages":[],"lines":[]})");
    const UnsignedInt german = UnsignedInt(findLanguage("de"));
    report.addLanguage(german);
    report.add(german, TermOutcome::Added, "a \"b\"");
    report.add(german, TermOutcome::Unchanged, "c");
    report.add(german, TermOutcome::Skipped, "d", "no term has this key", "de.json");
    report.add(LocalizationReport::NoLanguage, TermOutcome::Notice, {}, "is passed over", "xx.json");
    EXPECT_EQ(report.json(),
        R"({"languages":[{"language":"de","name":"German","added":1,"changed":0,"unchanged":1,"empty":0,"skipped":1,)"
        R"("notices":0,"stale":0}],"lines":[{"outcome":"added","language":"de","term":"a \"b\""},)"
        R"({"outcome":"skipped","language":"de","term":"d","reason":"no term has this key","file":"de.json"},)"
        R"({"outcome":"notice","reason":"is passed over","file":"xx.json"}]})");
}

TEST(LocalizationReport, TellsWhetherAllTextsWereSkipped) {
    const UnsignedInt german = UnsignedInt(findLanguage("de"));
    for(const TermOutcome outcome: {TermOutcome::Added, TermOutcome::Changed, TermOutcome::Unchanged}) {
        LocalizationReport report;
        EXPECT_FALSE(report.hasSkippedAll());
        report.add(german, TermOutcome::Empty, "a");
        report.add(german, TermOutcome::Notice, "a", "is odd");
        EXPECT_FALSE(report.hasSkippedAll());
        report.add(german, TermOutcome::Skipped, "a", "is not translatable");
        EXPECT_TRUE(report.hasSkippedAll());
        report.add(german + 1, outcome, "a");
        EXPECT_FALSE(report.hasSkippedAll());
    }
}

TEST(LocalizationReport, KeepsTextsBeforeAndAfterWhereItIsToldTo) {
    const UnsignedInt german = UnsignedInt(findLanguage("de"));
    const auto lines = [german](const bool keepsTexts) {
        LocalizationReport report, other;
        for(LocalizationReport* const one: {&report, &other}) {
            one->keepTexts(keepsTexts);
            one->add(german, TermOutcome::Added, "new");
            one->addTexts({}, "text");
            for(const char* const term: {"a", "b"}) {
                one->add(german, TermOutcome::Changed, term);
                const std::string before = std::string{term} + "0", after = std::string{term} + "1";
                one->addTexts(viewed(before), viewed(after));
            }
            one->add(german, TermOutcome::Unchanged, "same");
        }
        report.append(std::move(other));
        const std::string json = copied(report.json());
        return json.substr(json.find("\"lines\""));
    };
    const std::string start = R"({"outcome":"added","language":"de","term":"new"},)";
    const std::string kept = start + R"({"outcome":"changed","language":"de","term":"a","before":"a0","after":"a1"},)" +
        R"({"outcome":"changed","language":"de","term":"b","before":"b0","after":"b1"})";
    const std::string dropped = start + R"({"outcome":"changed","language":"de","term":"a"},)" +
        R"({"outcome":"changed","language":"de","term":"b"})";
    EXPECT_EQ(lines(true), R"("lines":[)" + kept + ',' + kept + "]}");
    EXPECT_EQ(lines(false), R"("lines":[)" + dropped + ',' + dropped + "]}");
}

}
