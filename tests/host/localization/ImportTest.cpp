#include "Import.h"

#include <memory>

#include "Exchange.h"
#include "FileSystem.h"
#include "Fingerprint.h"
#include "LastRun.h"
#include "LocalizationReport.h"
#include "TestArchive.h"
#include "support/CapturedOutput.h"

namespace QuorvaneEngine {

using namespace std::string_literals;
using Test::CapturedOutput;

namespace {

constexpr const char* Doors =
    R"({"languages":{"en":{"isDefault":true},"de":{}},"objects":{"door":{"text":"Open","hint":"Knock"}},"name":"Game",)"
    R"("localization":{"terms":{"door.text":{"sourceText":"/objects/door/text","translatable":true},)"
    R"("door.hint":{"sourceText":"/objects/door/hint","translatable":true},"name":{"sourceText":"name","translatable":false}},)"
    R"("translations":{"de":{"door.hint":{"text":"Klopf","source":"0","note":"n"},"other":{"text":"bleibt"}}}}})";

}

TEST(Import, TextsAreTakenOverInOneUndoStep) {
    TestProject project{Doors};
    TestFolder folder;
    folder.write("de/translation.json", R"({"door": {"text": "Öffnen", "hint": "Klopfen"}})");
    expectOneUndoStep(project, [&] { EXPECT_EQ(importFrom(project, {"en", "de"}, folder.path), "en de"); });
    EXPECT_EQ(project.at("/localization/translations/de"),
        R"({"door.hint":{"text":"Klopfen","source":")" + copied(fingerprint("Knock")) +
            R"(","note":"n"},"other":{"text":"bleibt"},"door.text":{"text":"Öffnen","source":")" +
            copied(fingerprint("Open")) + R"("}})");
}

TEST(Import, NothingIsDeletedAndEmptyTextsChangeNothing) {
    TestProject project{Doors};
    TestFolder folder;
    for(const char* const bytes: {"{}", R"({"door": {"hint": ""}})", R"({"door": {"hint": null, "text": ""}})",
            R"({"door": {"hint": "Klopf"}})", R"({"unknown": ""})"}) {
        folder.write("de.json", bytes);
        const std::string before = project.text();
        importFrom(project, {"en", "de"}, folder.path);
        EXPECT_EQ(project.text(), before) << bytes;
        EXPECT_EQ(project.changeCount(), 0u);
    }
}

TEST(Import, ValuesThatAreKeptAreCountedLikeTexts) {
    TestProject project{Doors};
    TestFolder folder;
    folder.write("en.json", R"({"n": 1, "on": true, "more": "More"})");
    folder.write("de.json", R"({"n": 2, "on": "ja"})");
    const auto counts = [&](const char* const code) {
        importFrom(project, {"en", "de"}, folder.path);
        const LocalizationReport::Counts counts =
            lastRun(project.editor())->report.counts(UnsignedInt(findLanguage(code)));
        return std::to_string(counts.added) + " added, " + std::to_string(counts.changed) + " changed, " +
            std::to_string(counts.unchanged) + " unchanged, " + std::to_string(counts.notices) + " notices";
    };
    EXPECT_EQ(counts("en"), "3 added, 0 changed, 0 unchanged, 1 notices");
    EXPECT_EQ(counts("de"), "0 added, 0 changed, 2 unchanged, 0 notices");
    folder.write("en.json", R"({"n": 3, "on": true, "more": "More"})");
    EXPECT_EQ(counts("en"), "0 added, 1 changed, 2 unchanged, 1 notices");
}

TEST(Import, WhatIsNotTranslatableOrUnknownIsReportedAndLeft) {
    TestProject project{Doors};
    TestFolder folder;
    folder.write("de.json", R"({"name": "Spiel", "unknown": {"key": "x"}, "n": 1})");
    folder.write("en.json", R"({"name": "Other game"})");
    const std::string before = project.text();
    const CapturedOutput output;
    importFrom(project, {"en", "de"}, folder.path);
    EXPECT_EQ(project.text(), before);
    EXPECT_EQ(output.warning(),
        ImportPrefix + "en.json: name: is not translatable\n" + ImportPrefix + "de.json: name: is not translatable\n" +
            ImportPrefix + "de.json: unknown.key: no term has this key\n" + ImportPrefix +
            "de.json: n: is a number and no text, and no term has this key\n");
    EXPECT_EQ(output.debug(),
        ImportPrefix + "en: 0 added, 0 changed, 0 unchanged, 0 without text, 1 skipped\n" + ImportPrefix +
            "de: 0 added, 0 changed, 0 unchanged, 0 without text, 3 skipped\n");
}

TEST(Import, DefaultLanguageChangesSourcesAndMakesTerms) {
    TestProject project{Doors};
    TestFolder folder;
    folder.write("en.json", R"({"door": {"text": "Open it", "hint": "Knock"}, "menu": {"quit": "Quit"}})");
    folder.write("de.json", R"({"door": {"text": "Mach auf"}, "menu": {"quit": "Ende"}})");
    expectOneUndoStep(project, [&] { importFrom(project, {"en", "de"}, folder.path); });
    EXPECT_EQ(project.at("/objects/door/text"), R"("Open it")");
    EXPECT_EQ(project.at("/localization/terms/menu.quit"),
        R"({"sourceText":"/localization/strings/menu.quit","translatable":true})");
    EXPECT_EQ(project.at("/localization/strings"), R"({"menu.quit":"Quit"})");
    // Today's source is the one that came with the same import.
    EXPECT_EQ(project.at("/localization/translations/de/door.text/source"), '"' + copied(fingerprint("Open it")) + '"');
    EXPECT_EQ(project.at("/localization/translations/de/menu.quit"),
        R"({"text":"Ende","source":")" + copied(fingerprint("Quit")) + "\"}");
}

TEST(Import, IntoAnEmptyProjectWritesTheDefaultLanguageFirst) {
    TestFolder folder;
    folder.write("de.json", R"({"a": "A"})");
    folder.write("en.json", R"({"a": "A", "123": "N"})");
    for(const char* const json: {"{}", R"({"languages":{}})", R"({"localization":{}})",
            R"({"languages":{},"localization":{"terms":{},"strings":{},"translations":{"de":{}}}})"}) {
        TestProject project{json};
        expectOneUndoStep(project, [&] { EXPECT_EQ(importFrom(project, {"en"}, folder.path), "en de"); });
        EXPECT_EQ(project.at("/languages"), R"({"en":{"isDefault":true},"de":{}})");
        EXPECT_EQ(project.at("/localization/strings"), R"({"a":"A","123":"N"})");
        EXPECT_EQ(project.at("/localization/translations/de/a/text"), R"("A")");
    }
    // Also where only another language came.
    std::filesystem::remove(folder / "en.json");
    TestProject project{"{}"};
    EXPECT_EQ(importFrom(project, {}, folder.path), "de");
    EXPECT_EQ(project.at("/languages"), R"({"en":{"isDefault":true},"de":{}})");
}

TEST(Import, LanguagesThatAreFoundAreAddedOnce) {
    TestProject project{Doors};
    TestFolder folder;
    folder.write("fr.json", "{}");
    folder.write("ja.json", R"({"door": {"text": "開く"}})");
    expectOneUndoStep(project, [&] { EXPECT_EQ(importFrom(project, {"en", "ja"}, folder.path), "en ja fr"); });
    EXPECT_EQ(project.at("/languages"), R"({"en":{"isDefault":true},"de":{},"fr":{},"ja":{}})");
    const std::size_t changes = project.changeCount();
    EXPECT_EQ(importFrom(project, {"en"}, folder.path), "en fr ja");
    EXPECT_EQ(project.changeCount(), changes);
}

TEST(Import, RefusedFileLeavesAllAsItWas) {
    TestProject project{Doors};
    TestFolder folder;
    folder.write("de.json", R"({"door": {"text": "Öffnen"}})");
    folder.write("fr.json", "{\n  \"door\" \"x\"\n}");
    folder.write("ja.json", "[]");
    const std::string before = project.text();
    const CapturedOutput output;
    EXPECT_EQ(importFrom(project, {"en"}, folder.path), "en");
    EXPECT_EQ(project.text(), before);
    EXPECT_EQ(project.changeCount(), 0u);
    const std::string warning = output.warning();
    EXPECT_EQ(warning.substr(0, warning.find("2:10: ") + 6), ImportPrefix + folder.path + "/fr.json:2:10: ");
    EXPECT_NE(warning.find(ImportPrefix + folder.path + "/ja.json:1:1: the file holds no object\n"), std::string::npos);
}

TEST(Import, PathsThatCannotBeReadAreWarnedOf) {
    TestProject project{Doors};
    TestFolder folder;
    const auto warning = [&](const std::string& path, const UnsignedInt defaultLanguage = FallbackLanguage,
                             const int format = 0) {
        const CapturedOutput output;
        Containers::Array<UnsignedInt> languages;
        LocalizationTools::importTerms(
            project.editor(), languages, defaultLanguage, viewed(path), LocalizationFormat(format));
        EXPECT_EQ(languages.size(), 0u);
        EXPECT_EQ(project.changeCount(), 0u);
        return output.warning();
    };
    EXPECT_EQ(warning(""), ImportPrefix + "the path is empty\n");
    EXPECT_EQ(
        warning(folder / "gone"), ImportPrefix + (folder / "gone") + ": cannot be read: No such file or directory\n");
    EXPECT_EQ(warning(folder.path, FallbackLanguage, 1), ImportPrefix + folder.path + ": the format 1 is not known\n");
    EXPECT_EQ(
        warning(folder.path, LanguageCount), ImportPrefix + folder.path + ": the default language 411 is not known\n");
    EXPECT_EQ(warning("a\0b"s), ImportPrefix + "the path has a zero byte\n");
}

TEST(Import, WrongTypesInTheProjectAreSaidAndLeft) {
    TestFolder folder;
    folder.write("de.json", R"({"a": "A"})");
    folder.write("en.json", R"({"a": "A"})");
    const std::pair<const char*, const char*> cases[]{{R"({"languages": []})", "/languages"},
        {R"({"localization": "x"})", "/localization"}, {R"({"localization": {"terms": []}})", "/localization/terms"},
        {R"({"localization": {"strings": 1}})", "/localization/strings"},
        {R"({"localization": {"translations": null}})", "/localization/translations"},
        {R"({"localization": {"translations": {"de": []}}})", "/localization/translations/de"}};
    for(const auto& [json, path]: cases) {
        TestProject project{json};
        const std::string before = project.text();
        const CapturedOutput output;
        EXPECT_EQ(importFrom(project, {"en"}, folder.path), "en");
        EXPECT_EQ(output.warning(), ImportPrefix + "project.json: " + path + ": is no object\n");
        EXPECT_EQ(project.text(), before);
    }
    TestProject inside{R"({"languages":{"en":1},"localization":{"terms":{"a":7},"translations":{"de":{"a":"x"}}}})"};
    const CapturedOutput output;
    importFrom(inside, {"en"}, folder.path);
    EXPECT_EQ(output.warning(),
        ImportPrefix + "en.json: a: is not translatable\n" + ImportPrefix + "de.json: a: is not translatable\n");
}

TEST(Import, TranslationOfAWrongTypeIsReplaced) {
    TestProject project{
        R"({"x":"X","languages":{"de":{"isDefault":true}},"localization":{"terms":{"a":{"sourceText":"x","translatable":true}},)"
        R"("translations":{"de":{"a":["x"],"b":1}}}})"};
    TestFolder folder;
    folder.write("de.json", R"({"a": "A"})");
    expectOneUndoStep(project, [&] { importFrom(project, {"de"}, folder.path); });
    EXPECT_EQ(project.at("/localization/translations/de/a/text"), R"("A")");
}

TEST(Import, SourceThatIsGoneTakesNoTextAndGivesNoFingerprint) {
    TestProject project{R"({"languages":{"en":{"isDefault":true},"de":{}},"localization":{"terms":{
        "a":{"sourceText":"/gone","translatable":true},"b":{"translatable":true}}}})"};
    TestFolder folder;
    folder.write("en.json", R"({"a": "A", "b": "B"})");
    folder.write("de.json", R"({"a": "Ä"})");
    const CapturedOutput output;
    importFrom(project, {"en", "de"}, folder.path);
    EXPECT_EQ(output.warning(),
        ImportPrefix + "en.json: a: its source /gone is gone\n" + ImportPrefix + "en.json: b: has no source\n");
    EXPECT_EQ(project.at("/localization/translations"), R"({"de":{"a":{"text":"Ä"}}})");
}

TEST(Import, TermsThatShareASourceAgreeOrTheFirstWins) {
    TestProject project{R"({"x":"X","localization":{"terms":{"a":{"sourceText":"x","translatable":true},
        "b":{"sourceText":"/x","translatable":true}}}})"};
    TestFolder folder;
    folder.write("en.json", R"({"a": "new", "b": "X"})");
    const CapturedOutput output;
    expectOneUndoStep(project, [&] { importFrom(project, {"en"}, folder.path); });
    EXPECT_EQ(output.warning(),
        ImportPrefix + "en.json: b: shares its source /x with another term, which has another text\n");
    EXPECT_EQ(project.at("/x"), R"("new")");
}

TEST(Import, NewKeysThatHaveNoPlaceAreReported) {
    TestProject project{Doors};
    TestFolder folder;
    folder.write("en.json", R"({"door": "Door", "name": {"first": "x"}, "fine": "y"})");
    const CapturedOutput output;
    importFrom(project, {"en"}, folder.path);
    EXPECT_EQ(output.warning(),
        ImportPrefix + "en.json: door: cannot stand beside door.text: one is a text, and the other lies below it\n" +
            ImportPrefix +
            "en.json: name.first: cannot stand beside name: one is a text, and the other lies below it\n");
    EXPECT_EQ(project.at("/localization/strings"), R"({"fine":"y"})");
}

TEST(Import, AnyKeySurvivesImportExportAndUndo) {
    const std::string keys[]{"", "123", std::string(10240, 'k'), "a/b", "~", "##", "%", "%41", "[0]", "a:b", "x.y", "-",
        "日本", "__proto__", "\n", "0", std::string(3, '.')};
    std::string file;
    for(const std::string& key: keys) {
        rapidjson::Value text{rapidjson::StringRef(key.data(), rapidjson::SizeType(key.size()))};
        const std::string printed = TestProject::printed(text);
        file += (file.empty() ? "{\n  " : ",\n  ") + printed + ": \"text\"";
    }
    file += "\n}\n";
    TestFolder folder;
    folder.write("in/en.json", file);
    folder.write("in/de.json", file);
    TestProject project{"{}"};
    expectOneUndoStep(project, [&] { importFrom(project, {"en"}, folder / "in"); });
    EXPECT_EQ(project.project().getValue("/localization/terms", false)->MemberCount(), std::size(keys));
    exportTo(project, {"en", "de"}, folder / "out");
    EXPECT_EQ(folder.read("out/en/translation.json"), file);
    EXPECT_EQ(folder.read("out/de/translation.json"), file);
    const std::string before = project.text();
    importFrom(project, {"en", "de"}, folder / "out");
    EXPECT_EQ(project.text(), before);
}

TEST(Import, KeysOfTheProjectThatFilesWriteOtherwiseAreFound) {
    std::string json = R"({"x":"X","languages":{"en":{"isDefault":true},"de":{}},"localization":{"terms":{)";
    for(const char* const key: {"", "50%", "a##b", "a: b", "%2e", "x/y~", "7", "[1]x", "l.[0]", "m..n"})
        json += '"' + std::string{key} + R"(":{"sourceText":"x","translatable":true},)";
    json.back() = '}';
    TestProject project{json + "}}"};
    TestFolder folder;
    exportTo(project, {"en"}, folder.path);
    std::filesystem::create_directory(folder / "de");
    std::filesystem::copy_file(folder / "en/translation.json", folder / "de/translation.json");
    const CapturedOutput output;
    expectOneUndoStep(project, [&] { importFrom(project, {"en", "de"}, folder.path); });
    EXPECT_EQ(output.warning(),
        ImportPrefix +
            "en/translation.json: a%3A b: reads like a sentence: only an application that switches both separators "
            "off is sure to find it, and 1 more like it\n");
    EXPECT_EQ(project.project().getValue("/localization/terms", false)->MemberCount(), 10u);
    EXPECT_EQ(project.project().getValue("/localization/translations/de", false)->MemberCount(), 10u);
    EXPECT_EQ(project.at("/localization/translations/de/50%/text"), R"("X")");
}

TEST(Import, PreviewChangesNothing) {
    TestProject project{Doors};
    TestFolder folder;
    folder.write("de.json", R"({"door": {"text": "Öffnen", "hint": "Klopfen"}})");
    const std::string before = project.text();
    Import import{project.editor(), FallbackLanguage};
    LocalizationReport report;
    ASSERT_TRUE(import.read(FileSystem::disk(), viewed(folder.path)));
    ASSERT_TRUE(import.compare(report));
    EXPECT_EQ(project.text(), before);
    EXPECT_EQ(report.counts(UnsignedInt(findLanguage("de"))).added, 1u);
    EXPECT_EQ(report.counts(UnsignedInt(findLanguage("de"))).changed, 1u);
}

TEST(Import, ProjectThatHasChangedIsComparedAgain) {
    TestProject project{Doors};
    TestFolder folder;
    folder.write("de.json", R"({"door": {"text": "Öffnen", "hint": "Klopfen"}})");
    const UnsignedInt german = UnsignedInt(findLanguage("de"));
    Import import{project.editor(), FallbackLanguage};
    LocalizationReport report;
    ASSERT_TRUE(import.read(FileSystem::disk(), viewed(folder.path)));
    ASSERT_TRUE(import.compare(report));
    project.session.changes().pushChange(
        "/localization/translations/de/door.hint/text", Containers::StringView{"Klopfen"}, false);
    const std::string before = project.text();
    LocalizationReport again;
    ASSERT_TRUE(import.compare(again));
    EXPECT_EQ(report.counts(german).changed, 1u);
    EXPECT_EQ(again.counts(german).changed, 0u);
    EXPECT_EQ(again.counts(german).unchanged, 1u);
    Containers::Array<UnsignedInt> languages;
    EXPECT_NE(import.apply(languages), -1);
    EXPECT_EQ(project.at("/localization/translations/de/door.text/text"), "\"Öffnen\"");
    project.session.undo();
    EXPECT_EQ(project.text(), before);
}

TEST(Import, FileCutAtAnyByteChangesNothing) {
    TestProject project{Doors};
    TestFolder folder;
    const std::string before = project.text();
    const std::string json = R"({"door": {"text": "Öffnen"}})";
    const std::string archive = TestArchive{{{"de.json", json}}}.make();
    const CapturedOutput output;
    for(std::size_t size = 0; size != json.size(); ++size) {
        folder.write("in/de.json", json.substr(0, size));
        EXPECT_EQ(importFrom(project, {}, folder / "in"), "") << size;
    }
    for(std::size_t size = 0; size != archive.size(); ++size) {
        folder.write("a.zip", archive.substr(0, size));
        EXPECT_EQ(importFrom(project, {}, folder / "a.zip"), "") << size;
    }
    EXPECT_EQ(project.text(), before);
    EXPECT_EQ(project.changeCount(), 0u);
    folder.write("a.zip", archive);
    EXPECT_EQ(importFrom(project, {}, folder / "a.zip"), "de");
}

}
