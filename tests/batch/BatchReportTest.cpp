#include "batch/BatchReport.h"

#include <string>

#include <gtest/gtest.h>
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "KeptOutput.h"
#include "localization/LanguageLookup.h"
#include "localization/LocalizationFindings.h"
#include "localization/LocalizationReport.h"

namespace QuorvaneEngine {
namespace {

/* Two languages with one text of every outcome, and something about a file. */
LocalizationReport report() {
    const UnsignedInt en = UnsignedInt(findLanguage("en"));
    const UnsignedInt pt = UnsignedInt(findLanguage("pt-BR"));
    LocalizationReport report;
    report.addLanguage(en);
    report.addLanguage(pt);
    report.add(en, TermOutcome::Unchanged, "menu.start");
    report.add(en, TermOutcome::Added, "menu.quit");
    report.add(pt, TermOutcome::Changed, "menu.start");
    report.add(pt, TermOutcome::Empty, "menu.quit");
    report.add(pt, TermOutcome::Skipped, "menu.file", "no term has this key");
    report.add(pt, TermOutcome::Skipped, "menu.\nfile", "no term has this key", "i18n/pt-BR/game.json");
    report.add(LocalizationReport::NoLanguage, TermOutcome::Notice, {}, "i18n/xx: no language has the code xx");
    return report;
}

TEST(BatchReport, CountsGoToTheOutputAndWarningsToTheErrors) {
    KeptOutput kept;
    printReport(report(), false, kept.output);
    EXPECT_EQ(kept.out(),
        "Language  Added  Changed  Unchanged  Without text  Skipped\n"
        "en            1        0          1             0        0\n"
        "pt-BR         0        1          0             1        2\n");
    EXPECT_EQ(kept.error(),
        "pt-BR: menu.file: no term has this key\n"
        "i18n/pt-BR/game.json: menu.\\nfile: no term has this key\n"
        "i18n/xx: no language has the code xx\n");
    EXPECT_TRUE(kept.output.failures().empty());
}

TEST(BatchReport, NoticesAndStaleTranslationsHaveColumnsWhereThereAreAny) {
    LocalizationReport some = report();
    some.addStale(UnsignedInt(findLanguage("pt-BR")), 3);
    KeptOutput kept;
    printReport(some, false, kept.output);
    EXPECT_EQ(kept.out(),
        "Language  Added  Changed  Unchanged  Without text  Skipped  Stale\n"
        "en            1        0          1             0        0      0\n"
        "pt-BR         0        1          0             1        2      3\n");
    some.add(UnsignedInt(findLanguage("en")), TermOutcome::Notice, {}, "is odd");
    KeptOutput both;
    printReport(some, false, both.output);
    EXPECT_EQ(both.out(),
        "Language  Added  Changed  Unchanged  Without text  Skipped  Notices  Stale\n"
        "en            1        0          1             0        0        1      0\n"
        "pt-BR         0        1          0             1        2        0      3\n");
}

TEST(BatchReport, WithDetailsEveryNewAndChangedTextHasALine) {
    KeptOutput kept;
    printReport(report(), true, kept.output);
    EXPECT_EQ(kept.out(),
        "en: menu.quit: added\n"
        "pt-BR: menu.start: changed\n"
        "Language  Added  Changed  Unchanged  Without text  Skipped\n"
        "en            1        0          1             0        0\n"
        "pt-BR         0        1          0             1        2\n");
}

TEST(BatchReport, MachinesGetAllOfIt) {
    rapidjson::Document object{rapidjson::kObjectType};
    object.AddMember("before", 1, object.GetAllocator());
    addReport(report(), object);
    ASSERT_EQ(object.MemberCount(), 3u);
    EXPECT_EQ(object["languages"].Size(), 2u);
    EXPECT_EQ(object["lines"].Size(), 5u);
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer{buffer};
    object["lines"][3].Accept(writer);
    EXPECT_STREQ(buffer.GetString(),
        R"({"outcome":"skipped","language":"pt-BR","term":"menu.\nfile","reason":"no term has this key","file":"i18n/pt-BR/game.json"})");
}

LocalizationFindings findings(const bool areMany) {
    LocalizationFindings findings;
    findings.add({"placeholder-differs", FindingSeverity::Error, "localization/de.json", "/menu.\nfile/text",
        "menu.\nfile", "de", "lacks {{name}} of the source", {}});
    findings.add(
        {"reserved-key", FindingSeverity::Warning, "project.json", "/localization/terms", {}, {}, "is dropped", {}});
    if(areMany) {
        findings.add(
            {"same-as-source", FindingSeverity::Hint, "localization/de.json", "/a", "a", "de", "is the same", {}});
        findings.add(
            {"same-as-source", FindingSeverity::Hint, "localization/de.json", "/b", "b", "de", "is the same", {}});
        findings.add({"outer-blanks", FindingSeverity::Warning, "localization/de.json", "/c", "c", "de",
            "begins with a blank", "is glued to another text"});
    }
    return findings;
}

TEST(BatchReport, EveryFindingIsALineWithItsPlaceAndCheck) {
    KeptOutput kept;
    printFindings(findings(false), kept.output);
    EXPECT_EQ(kept.out(),
        "localization/de.json: menu.\\nfile: error: lacks {{name}} of the source [placeholder-differs]\n"
        "project.json: warning: is dropped [reserved-key]\n"
        "1 error, 1 warning, 0 hints\n");
    EXPECT_EQ(kept.error(), "");
}

TEST(BatchReport, SilencedFindingsAreCountedAndNotPrinted) {
    KeptOutput kept;
    printFindings(findings(true), kept.output);
    EXPECT_EQ(kept.out(),
        "localization/de.json: menu.\\nfile: error: lacks {{name}} of the source [placeholder-differs]\n"
        "project.json: warning: is dropped [reserved-key]\n"
        "localization/de.json: a: hint: is the same [same-as-source]\n"
        "localization/de.json: b: hint: is the same [same-as-source]\n"
        "1 error, 1 warning, 2 hints; 1 silenced\n");
}

TEST(BatchReport, SeveritiesThatAreLeftOutAreNotCounted) {
    KeptOutput kept;
    printFindings(findings(false), kept.output, FindingSeverity::Warning);
    EXPECT_NE(kept.out().find("\n1 error, 1 warning\n"), std::string::npos) << kept.out();
    printFindings(LocalizationFindings{}, kept.output, FindingSeverity::Error);
    EXPECT_NE(kept.out().find("\n0 errors\n"), std::string::npos) << kept.out();
}

TEST(BatchReport, MachinesGetSilencedFindingsToo) {
    rapidjson::Document object{rapidjson::kObjectType};
    addFindings(findings(true), object);
    EXPECT_EQ(object["errors"].GetInt(), 1);
    EXPECT_EQ(object["silenced"].GetInt(), 1);
    ASSERT_EQ(object["findings"].Size(), 5u);
    EXPECT_STREQ(object["findings"][4]["silenced"].GetString(), "is glued to another text");
}

}
}
