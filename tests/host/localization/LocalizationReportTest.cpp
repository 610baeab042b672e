#include "LocalizationReport.h"

#include <memory>

#include <gtest/gtest.h>

#include "LanguageLookup.h"
#include "support/CapturedOutput.h"

namespace QuorvaneEngine {

using Test::CapturedOutput;

TEST(LocalizationReport, CountsPerLanguageAndKeepsLinesOfWhatIsWorthOne) {
    const auto report = std::make_unique<LocalizationReport>();
    const UnsignedInt german = UnsignedInt(findLanguage("de"));
    report->addLanguage(german);
    report->addLanguage(german);
    report->add(german, TermOutcome::Added, "a");
    report->add(german, TermOutcome::Changed, "b");
    report->add(german, TermOutcome::Unchanged, "c");
    report->add(german, TermOutcome::Empty, "d");
    report->add(german, TermOutcome::Skipped, "e", "why");
    EXPECT_EQ(report->languages().size(), 1u);
    EXPECT_EQ(report->lines().size(), 3u);
    const LocalizationReport::Counts counts = report->counts(german);
    EXPECT_EQ(counts.added, 1u);
    EXPECT_EQ(counts.changed, 1u);
    EXPECT_EQ(counts.unchanged, 1u);
    EXPECT_EQ(counts.empty, 1u);
    EXPECT_EQ(counts.skipped, 1u);
    EXPECT_EQ(report->counts(0).added, 0u);
    EXPECT_EQ(report->counts(LocalizationReport::NoLanguage).skipped, 0u);
}

TEST(LocalizationReport, PrintsWhatWasSkippedAndTheCounts) {
    const auto report = std::make_unique<LocalizationReport>();
    const UnsignedInt german = UnsignedInt(findLanguage("de"));
    report->addLanguage(german);
    report->add(german, TermOutcome::Added, "a");
    report->add(german, TermOutcome::Skipped, "e", "is not translatable");
    report->add(LocalizationReport::NoLanguage, TermOutcome::Skipped, {}, "x.json: no language has the code x");
    report->add(LocalizationReport::NoLanguage, TermOutcome::Skipped, "f", "third");
    const CapturedOutput output;
    report->print("Tools::run()", 2);
    EXPECT_EQ(output.warning(),
        "Tools::run(): de: e: is not translatable\n"
        "Tools::run(): x.json: no language has the code x\n"
        "Tools::run(): 1 more texts were skipped\n");
    EXPECT_EQ(output.debug(), "Tools::run(): de: 1 added, 0 changed, 0 unchanged, 0 without text, 1 skipped\n");
}

}
