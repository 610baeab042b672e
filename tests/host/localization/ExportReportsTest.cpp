#include "Export.h"

#include "Exchange.h"
#include "ExportedDoors.h"
#include "FileSystem.h"
#include "LocalizationReport.h"
#include "support/CapturedOutput.h"

namespace QuorvaneEngine {

using Test::CapturedOutput;

TEST(ExportReports, ConflictsAreReportedAndTheFirstTermStays) {
    TestProject project{R"({"a": "A", "localization": {"terms": {
        "menu": {"sourceText": "a", "translatable": true}, "menu.file": {"sourceText": "a", "translatable": true},
        "x: ": {"sourceText": "a", "translatable": true}, "x%3A ": {"sourceText": "a", "translatable": true},
        "[0]": {"sourceText": "a", "translatable": true}, "gone": {"sourceText": "/b", "translatable": true}}}})"};
    TestFolder folder;
    const CapturedOutput output;
    exportTo(project, {"en"}, folder.path);
    EXPECT_EQ(folder.read("en/translation.json"), "{\n  \"menu\": \"A\",\n  \"x: \": \"A\"\n}\n");
    EXPECT_EQ(output.warning(),
        "LocalizationTools::exportTerms(): menu.file: cannot stand beside menu: one is a text, and the other lies "
        "below it\n"
        "LocalizationTools::exportTerms(): x%3A : has the same place in a file as x: \n"
        "LocalizationTools::exportTerms(): [0]: is an element, and a file holds no array\n"
        "LocalizationTools::exportTerms(): en: gone: its source is gone\n");
}

TEST(ExportReports, WhatLeavesAFileIsReported) {
    TestProject project{Doors};
    TestFolder folder;
    folder.write("en/translation.json", R"({"old": "x", "n": 1})");
    const CapturedOutput output;
    exportTo(project, {"en", "de"}, folder.path);
    EXPECT_EQ(folder.read("en/translation.json"), English);
    EXPECT_EQ(folder.read("de/translation.json"), German);
    const std::string prefix = "LocalizationTools::exportTerms(): ";
    EXPECT_EQ(output.warning(),
        prefix + "en/translation.json: old: no term has this key, and it is no longer in the file\n" + prefix +
            "en/translation.json: n: no term has this key, and it is no longer in the file\n");
}

TEST(ExportReports, ReportComparesWithTheFilesThatWereThere) {
    TestProject project{Doors};
    TestFolder folder;
    folder.write("en/translation.json", R"({"door": {"text": "Open", "hint": "other"}})");
    const Containers::Array<UnsignedInt> languages = languagesOf({"en", "de"});
    LocalizationReport report;
    FileError error;
    EXPECT_TRUE((Export{project.project(), FileSystem::disk(), languages, FallbackLanguage}.toFolder(
        viewed(folder.path), report, error)));
    EXPECT_EQ(report.counts(languages[0]).unchanged, 1u);
    EXPECT_EQ(report.counts(languages[0]).changed, 1u);
    EXPECT_EQ(report.counts(languages[1]).added, 1u);
}

TEST(ExportReports, TextThatTheProjectDoesNotHaveIsReportedWhereItLeavesAFile) {
    TestProject project{Doors};
    TestFolder folder;
    folder.write("de/translation.json", R"({"door": {"text": "Öffnen", "hint": "Klopfen"}, "name": "Spiel"})");
    const CapturedOutput output;
    exportTo(project, {"de"}, folder.path);
    const std::string prefix = "LocalizationTools::exportTerms(): de/translation.json: ";
    EXPECT_EQ(output.warning(),
        prefix + "door.text: the project has no text here, and it is no longer in the file\n" + prefix +
            "name: is not translatable, and it is no longer in the file\n");
}

TEST(ExportReports, FileWhoseTermsAreNoLongerTranslatableLosesThem) {
    TestProject project{R"({"x": "X", "localization": {"terms": {"a": {"sourceText": "x", "translatable": true},
        "menu:b": {"sourceText": "x", "translatable": false}}}})"};
    TestFolder folder;
    folder.write("en/menu.json", R"({"b": "X"})");
    folder.write("en/other.json", R"({"c": "C"})");
    const CapturedOutput output;
    exportTo(project, {"en", "de"}, folder.path);
    EXPECT_EQ(folder.files(),
        (Files{{"en/", ""}, {"en/menu.json", "{}\n"}, {"en/other.json", R"({"c": "C"})"},
            {"en/translation.json", "{\n  \"a\": \"X\"\n}\n"}, {"de/", ""}, {"de/translation.json", "{}\n"}}));
    EXPECT_EQ(output.warning(),
        "LocalizationTools::exportTerms(): en/menu.json: menu:b: is not translatable, and it is no longer in the "
        "file\n"
        "LocalizationTools::exportTerms(): en/other.json: the project has no texts for the namespace other; this file "
        "stays as it is\n");
}

namespace {

/** "outcome term before>after" of every line, with what an export counts in front. */
std::string reported(TestProject& project, const TestFolder& folder, const bool isDryRun) {
    const Containers::Array<UnsignedInt> languages = languagesOf({"en"});
    LocalizationReport report;
    report.keepTexts(true);
    FileError error;
    EXPECT_TRUE((Export{project.project(), FileSystem::disk(), languages, FallbackLanguage, {isDryRun}}.toFolder(
        viewed(folder.path), report, error)));
    const LocalizationReport::Counts counts = report.counts(languages[0]);
    std::string all = std::to_string(counts.added) + ' ' + std::to_string(counts.changed) + ' ' +
        std::to_string(counts.unchanged) + '\n';
    for(const LocalizationReport::Line& line: report.lines())
        all += std::to_string(int(line.outcome)) + ' ' + copied(line.term) + ' ' + copied(line.reason) + '\n';
    return all;
}

}

TEST(ExportReports, KeptValuesAreCounted) {
    TestProject project{R"({"x": "X", "localization": {"terms": {"a": {"sourceText": "x", "translatable": true}},
        "values": {"en": {"n": {"number": "1.50"}, "yes": true, "list": [], "text": "kept"}}}})"};
    TestFolder folder;
    EXPECT_EQ(reported(project, folder, true), "5 0 0\n0 a \n0 n \n0 yes \n0 list \n0 text \n");
    exportTo(project, {"en"}, folder.path);
    EXPECT_EQ(reported(project, folder, true), "0 0 5\n");
    folder.write("en/translation.json", R"({"a": "X", "n": 1.5, "yes": false, "list": {}, "text": "kept"})");
    EXPECT_EQ(reported(project, folder, true), "0 3 2\n1 n \n1 yes \n1 list \n");
    folder.write("en/translation.json", R"({"a": "X", "n": "1.50", "yes": true, "text": ""})");
    EXPECT_EQ(reported(project, folder, true), "2 1 2\n1 n \n0 list \n0 text \n");
}

TEST(ExportReports, AFileThatIsLaidOutAnewIsTold) {
    TestProject project{Doors};
    TestFolder folder;
    folder.write("en/translation.json", R"({"door": {"hint": "Knock", "text": "Open"}})");
    const std::string same = "0 0 2\n5  holds the same as before, and is laid out anew\n";
    EXPECT_EQ(reported(project, folder, true), same);
    EXPECT_EQ(reported(project, folder, false), same);
    EXPECT_EQ(reported(project, folder, false), "0 0 2\n");
    folder.write("en/translation.json", R"({"door": {"hint": "Knock", "text": "Close"}})");
    EXPECT_EQ(reported(project, folder, true), "0 1 1\n1 door.text \n");
}

}
