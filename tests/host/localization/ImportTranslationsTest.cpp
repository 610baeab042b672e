#include "ImportTranslations.h"

#include "Exchange.h"
#include "FileSystem.h"
#include "Fingerprint.h"
#include "Import.h"
#include "LocalizationReport.h"
#include "support/CapturedOutput.h"

namespace QuorvaneEngine {

using Test::CapturedOutput;

namespace {

constexpr const char* Apples =
    R"({"one":"an apple","many":"apples","languages":{"en":{"isDefault":true},"de":{},"pl":{}},)"
    R"("localization":{"terms":{"apples_one":{"sourceText":"one","translatable":true},)"
    R"("apples_other":{"sourceText":"many","translatable":true},"file_other":{"sourceText":"many","translatable":true}}}})";

std::string entry(const std::string& text, const std::string& source) {
    return R"({"text":")" + text + R"(","source":")" + copied(fingerprint(viewed(source))) + "\"}";
}

}

TEST(ImportTranslations, FormsThatOnlyTheTargetHasAreTranslationsOfOther) {
    TestProject project{Apples};
    const std::string file =
        R"({"apples_one":"jabłko","apples_few":"jabłka","apples_many":"jabłek","apples_zero":"0"})";
    expectOneUndoStep(project, [&] { EXPECT_EQ(importFile(project, "pl.json", file), ""); });
    EXPECT_EQ(project.at("/localization/translations/pl"),
        R"({"apples_one":)" + entry("jabłko", "an apple") + R"(,"apples_few":)" + entry("jabłka", "apples") +
            R"(,"apples_many":)" + entry("jabłek", "apples") + R"(,"apples_zero":)" + entry("0", "apples") + '}');
    const std::size_t changes = project.changeCount();
    EXPECT_EQ(importFile(project, "pl.json", file), "");
    EXPECT_EQ(project.changeCount(), changes);
    importFile(project, "pl.json", R"({"apples_few":"inne"})");
    EXPECT_EQ(project.at("/localization/translations/pl/apples_few/text"), R"("inne")");
    EXPECT_EQ(project.changeCount(), changes + 1);
}

TEST(ImportTranslations, FormsThatTheTargetDoesNotHaveAreSkipped) {
    TestProject project{Apples};
    EXPECT_EQ(importFile(project, "de.json", R"({"apples_few":"x","apples_zero":"keine"})"),
        ImportPrefix + "de.json: apples_few: is a plural form that German does not have\n");
    EXPECT_EQ(project.at("/localization/translations/de"), R"({"apples_zero":)" + entry("keine", "apples") + '}');
}

TEST(ImportTranslations, ThoseThatStayStaleAreCounted) {
    TestProject project{Apples};
    const auto stale = [&project](const std::string& json, const bool isConfirming = false) {
        const TestFolder folder;
        folder.write("pl.json", json);
        ImportOptions options;
        options.isConfirming = isConfirming;
        Import import{project.editor(), FallbackLanguage, options};
        LocalizationReport report;
        EXPECT_TRUE(import.read(FileSystem::disk(), viewed(folder.path)) && import.compare(report));
        Containers::Array<UnsignedInt> languages;
        import.apply(languages);
        return report.counts(UnsignedInt(findLanguage("pl"))).stale;
    };
    const std::string file = R"({"apples_one":"jabłko","apples_few":"jabłka","apples_other":"jabłka"})";
    EXPECT_EQ(stale(file), 0u);
    EXPECT_EQ(stale(file), 0u);
    project.session.changes().pushChange("/many", Containers::StringView{"fruit"}, false);
    EXPECT_EQ(stale(file), 2u);
    EXPECT_EQ(stale(R"({"apples_one":"jabłko","apples_few":"owoce"})"), 0u);
    EXPECT_EQ(stale(file.substr(0, file.find(R"("apples_few")")) + R"("apples_other":"jabłka"})"), 1u);
    EXPECT_EQ(stale(R"({"apples_other":"jabłka"})", true), 0u);
    EXPECT_EQ(stale(R"({"apples_other":"jabłka"})"), 0u);
    // What has no source can be no translation of another one.
    project.session.changes().pushChange("/one", Containers::StringView{""}, false);
    EXPECT_EQ(stale(R"({"apples_one":"jabłko"})"), 0u);
}

TEST(ImportTranslations, ANamespaceThatTheDefaultLanguageLacksIsToldOnce) {
    TestProject project{Apples};
    const std::string before = project.text();
    const std::string start =
        ImportPrefix + "pl/menu.json: the project has nothing of the default language's en/menu.json, so ";
    EXPECT_EQ(importFile(project, "pl/menu.json", R"({"a": "A", "b": {"c": "C", "d": 1}, "e": "", "f": [null, "F"]})"),
        start + "all 4 texts are skipped\n");
    EXPECT_EQ(importFile(project, "pl/menu.json", R"({"a": "A"})"), start + "this text is skipped\n");
    EXPECT_EQ(importFile(project, "pl/menu.json", R"({"a": ""})"), "");
    EXPECT_EQ(project.text(), before);

    TestFolder folder;
    folder.write("pl/menu.json", R"({"a": "A", "b": "B", "e": ""})");
    Import import{project.editor(), FallbackLanguage};
    LocalizationReport report;
    EXPECT_TRUE(import.read(FileSystem::disk(), viewed(folder.path)) && import.compare(report));
    const LocalizationReport::Counts counts = report.counts(UnsignedInt(findLanguage("pl")));
    EXPECT_EQ(counts.skipped, 2u);
    EXPECT_EQ(counts.empty, 1u);
    EXPECT_EQ(report.lines().size(), 1u);
    EXPECT_TRUE(report.hasSkippedAll());

    folder.write("en/menu.json", R"({"a": "a"})");
    Import both{project.editor(), FallbackLanguage};
    LocalizationReport other;
    EXPECT_TRUE(both.read(FileSystem::disk(), viewed(folder.path)) && both.compare(other));
    EXPECT_EQ(other.counts(UnsignedInt(findLanguage("pl"))).added, 1u);
    EXPECT_EQ(other.counts(UnsignedInt(findLanguage("pl"))).skipped, 1u);
}

TEST(ImportTranslations, PluralFormsOfVersion3AreToldOnce) {
    TestProject project{R"({"x": "X", "languages": {"en": {"isDefault": true}, "ru": {}}, "localization": {"terms": {
        "key": {"sourceText": "x", "translatable": true}, "key_plural": {"sourceText": "x", "translatable": true}}}})"};
    const std::string notice = "looks like a plural form of version 3 of the format, as 2 more do: they are ordinary "
                               "keys, which version 4 does "
                               "not choose by number\n";
    EXPECT_EQ(importFile(project, "ru.json",
                  R"({"key_0": "{{count}} a", "key_1": "b", "other": "c", "key_2": "d", "key": {"deep_0": "e"}})"),
        ImportPrefix + "ru.json: other: no term has this key\n" + ImportPrefix +
            "ru.json: key.deep_0: no term has this key, and it cannot stand beside key: one is a text, and the other "
            "lies below it\n" +
            ImportPrefix +
            "ru.json: key_0: no term has this key, nor those of 2 more plural forms of version 3 of the format\n" +
            ImportPrefix + "ru.json: key_0: " + notice);
    EXPECT_EQ(importFile(project, "ru.json", R"({"key": "a", "key_plural": "b", "old": "", "old_plural": "d"})"),
        ImportPrefix + "ru.json: old_plural: no term has this key\n" + ImportPrefix +
            "ru.json: key_plural: looks like a plural form of version 3 of the format, as 1 more do: they are ordinary "
            "keys, which version 4 does not choose by number\n");
}

TEST(ImportTranslations, SuffixesProveNothingByThemselves) {
    TestProject project{Apples};
    const std::string before = project.text();
    EXPECT_EQ(importFile(project, "pl.json", R"({"file_few":"x","pears_few":"x","booking_0":"x"})"),
        ImportPrefix + "pl.json: file_few: no term has this key\n" + ImportPrefix +
            "pl.json: pears_few: no term has this key\n" + ImportPrefix + "pl.json: booking_0: no term has this key\n");
    EXPECT_EQ(project.text(), before);
}

TEST(ImportTranslations, OrdinalsAreAGroupOfTheirOwn) {
    TestProject project{R"({"x":"#","languages":{"en":{"isDefault":true},"it":{}},"localization":{"terms":{
        "floor_ordinal_one":{"sourceText":"x","translatable":true},"floor_ordinal_two":{"sourceText":"x","translatable":true},
        "floor_ordinal_few":{"sourceText":"x","translatable":true},
        "floor_ordinal_other":{"sourceText":"x","translatable":true}}}})"};
    EXPECT_EQ(
        importFile(project, "it.json", R"({"floor_ordinal_many":"8","floor_ordinal_other":"1","floor_many":"no"})"),
        ImportPrefix + "it.json: floor_many: no term has this key\n");
    EXPECT_EQ(project.at("/localization/translations/it"),
        R"({"floor_ordinal_many":)" + entry("8", "#") + R"(,"floor_ordinal_other":)" + entry("1", "#") + '}');
}

TEST(ImportTranslations, FormsOfATermThatIsNotTranslatableAreLeft) {
    TestProject project{R"({"x":"X","languages":{"en":{"isDefault":true},"pl":{}},"localization":{"terms":{
        "a_one":{"sourceText":"x","translatable":false},"a_other":{"sourceText":"x","translatable":false}}}})"};
    const std::string before = project.text();
    EXPECT_EQ(importFile(project, "pl.json", R"({"a_few":"x","a_one":"y"})"),
        ImportPrefix + "pl.json: a_few: is not translatable\n" + ImportPrefix +
            "pl.json: a_one: is not translatable\n");
    EXPECT_EQ(project.text(), before);
}

TEST(ImportTranslations, NamespacesAreKeptApart) {
    TestProject project{R"({"x":"X","localization":{"terms":{"a":{"sourceText":"x","translatable":true},
        "menu:a":{"sourceText":"x","translatable":true}}}})"};
    expectOneUndoStep(project, [&] {
        EXPECT_EQ(importFile(project, "de/menu.json", R"({"a":"A","b":"B"})"),
            ImportPrefix + "de/menu.json: menu:b: no term has this key\n");
    });
    EXPECT_EQ(project.at("/localization/translations/de"), R"({"menu:a":)" + entry("A", "X") + '}');
    EXPECT_EQ(importFile(project, "de/other.json", R"({"a":"A"})"),
        ImportPrefix +
            "de/other.json: the project has nothing of the default language's en/other.json, so this text is "
            "skipped\n");
}

TEST(ImportTranslations, ConflictsAreReportedWithBothKeys) {
    TestProject project{R"({"x":"X","localization":{"terms":{"menu.file":{"sourceText":"x","translatable":true}}}})"};
    EXPECT_EQ(importFile(project, "de.json", R"({"menu":"Menü"})"),
        ImportPrefix +
            "de.json: menu: no term has this key, and it cannot stand beside menu.file: one is a text, and the other "
            "lies below it\n");
}

TEST(ImportTranslations, DottedNamesMeanNestedTermsAndTheOtherWayRound) {
    TestProject project{R"({"x":"X","localization":{"terms":{"menu.file":{"sourceText":"x","translatable":true},
        "ui:menu.file":{"sourceText":"x","translatable":true}},"namespaces":{"ui":{"flat":true}}}})"};
    TestFolder folder;
    folder.write("de/translation.json", R"({"menu.file":"Datei"})");
    folder.write("de/ui.json", R"({"menu":{"file":"Datei!"}})");
    const CapturedOutput output;
    importFrom(project, {"en"}, folder.path);
    EXPECT_EQ(output.warning(), "");
    EXPECT_EQ(project.at("/localization/translations/de"),
        R"({"menu.file":)" + entry("Datei", "X") + R"(,"ui:menu.file":)" + entry("Datei!", "X") + '}');
    EXPECT_EQ(importFile(project, "de.json", R"({"menu":{"file":"eins"},"menu.file":"zwei"})"),
        ImportPrefix + "de.json: menu.file: stands in the file a second time, with dots in a name\n");
    EXPECT_EQ(project.at("/localization/translations/de/menu.file/text"), R"("eins")");
}

TEST(ImportTranslations, ValuesAreKeptWhereTheDefaultLanguageHasATermOrAValue) {
    TestProject project{
        R"({"x":"X","localization":{"terms":{"a":{"sourceText":"x","translatable":true},"b":{"sourceText":"x","translatable":true},
        "c":{"sourceText":"x","translatable":false}},"translations":{"de":{"b":{"text":"B"}}},"values":{"en":{"n":1}}}})"};
    expectOneUndoStep(project, [&] {
        EXPECT_EQ(importFile(project, "de.json", R"({"a":1,"b":2,"c":3,"n":"eins","m":5})"),
            ImportPrefix + "de.json: b: is a number and no text, and the term has a translation\n" + ImportPrefix +
                "de.json: c: is not translatable\n" + ImportPrefix +
                "de.json: m: is a number and no text, and no term has this key\n" + ImportPrefix +
                "de.json: a: is a number and no text: it is kept as it is\n" + ImportPrefix +
                "de.json: n: stands where the default language has no text: it is kept as it is\n");
    });
    EXPECT_EQ(project.at("/localization/values/de"), R"({"a":1,"n":"eins"})");
    const std::size_t changes = project.changeCount();
    importFile(project, "de.json", R"({"a":1,"n":"eins"})");
    EXPECT_EQ(project.changeCount(), changes);
}

TEST(ImportTranslations, ValuesThatStandASecondTimeAreLeft) {
    const std::string second = ": stands in the file a second time, with dots in a name\n";
    const std::string kept = ": is a number and no text: it is kept as it is\n";
    const char* const term =
        R"({"x":"X","localization":{"terms":{"menu.file":{"sourceText":"x","translatable":true}}}})";
    for(const auto& [json, isText]: {std::pair{R"({"menu.file":5,"menu":{"file":"Datei"}})", true},
            {R"({"menu":{"file":"Datei"},"menu.file":5})", true}, {R"({"menu.file":5,"menu":{"file":6}})", false}}) {
        TestProject project{term};
        EXPECT_EQ(importFile(project, "de.json", json),
            ImportPrefix + "de.json: menu.file" + second + (isText ? "" : ImportPrefix + "de.json: menu.file" + kept));
        EXPECT_EQ(project.at("/localization/values"), isText ? "nothing" : R"({"de":{"menu.file":6}})");
    }
    TestProject flat{R"({"localization":{"namespaces":{"ui":{"flat":true}},"values":{"en":{"ui:menu.file":1}}}})"};
    EXPECT_EQ(importFile(flat, "de/ui.json", R"({"menu":{"file":5},"menu.file":6})"),
        ImportPrefix + "de/ui.json: ui:menu.file" + second + ImportPrefix + "de/ui.json: ui:menu.file" + kept);
    EXPECT_EQ(flat.at("/localization/values/de"), R"({"ui:menu.file":6})");
    TestProject deep{R"({"localization":{"namespaces":{"ui":{"flat":true}},"values":{"en":{"ui:a.b.c":1}}}})"};
    EXPECT_EQ(importFile(deep, "de/ui.json", R"({"a":{"b.c":5},"a.b":{"c":6}})"),
        ImportPrefix + "de/ui.json: ui:a.b.c" + second + ImportPrefix + "de/ui.json: ui:a.b.c" + kept);
    EXPECT_EQ(deep.at("/localization/values/de"), R"({"ui:a.b.c":5})");
}

TEST(ImportTranslations, ValueOfTheDefaultLanguageCountsBeforeATermOfTheOtherShape) {
    TestProject project{R"({"x":"X","localization":{"terms":{"menu.file":{"sourceText":"x","translatable":true}},
        "values":{"en":{"menu%2Efile":1}}}})"};
    EXPECT_EQ(importFile(project, "de.json", R"({"menu.file":5,"menu":{"file":"Datei"}})"),
        ImportPrefix + "de.json: menu%2Efile: is a number and no text: it is kept as it is\n");
    EXPECT_EQ(project.at("/localization/values/de"), R"({"menu%2Efile":5})");
    EXPECT_EQ(project.at("/localization/translations/de/menu.file/text"), R"("Datei")");
}

TEST(ImportTranslations, FormThatIsTranslatedStaysOneWhereTheDefaultLanguageGetsAValue) {
    const std::string translated = R"("translations":{"pl":{"a_few":{"text":"kilka"}}})";
    TestProject project{
        R"({"x":"X","languages":{"en":{"isDefault":true},"pl":{}},"localization":{"terms":{)"
        R"("a_one":{"sourceText":"x","translatable":true},"a_other":{"sourceText":"x","translatable":true}},)" +
        translated + R"(,"values":{"en":{"a_few":5}}}})"};
    EXPECT_EQ(importFile(project, "pl.json", R"({"a_few":7})"),
        ImportPrefix + "pl.json: a_few: is a number and no text, and the term has a translation\n");
    expectOneUndoStep(project, [&] { EXPECT_EQ(importFile(project, "pl.json", R"({"a_few":"parę"})"), ""); });
    EXPECT_EQ(project.at("/localization/translations/pl/a_few/text"), R"("parę")");
    TestFolder folder;
    exportTo(project, {"en", "pl"}, folder.path);
    EXPECT_EQ(folder.read("pl/translation.json"), "{\n  \"a_few\": \"parę\"\n}\n");
    EXPECT_EQ(folder.read("en/translation.json"), "{\n  \"a_one\": \"X\",\n  \"a_few\": 5,\n  \"a_other\": \"X\"\n}\n");
}

TEST(ImportTranslations, FormsThatHaveNoPlaceAreReported) {
    TestProject project{R"({"x":"X","languages":{"en":{"isDefault":true},"pl":{}},"localization":{"terms":{
        "a_one":{"sourceText":"x","translatable":true},"a_other":{"sourceText":"x","translatable":true},
        "a_few.b":{"sourceText":"x","translatable":true}}}})"};
    const std::string before = project.text();
    EXPECT_EQ(importFile(project, "pl.json", R"({"a_few":"x"})"),
        ImportPrefix +
            "pl.json: a_few: no term has this key, and it cannot stand beside a_few.b: one is a text, and the other "
            "lies below it\n");
    EXPECT_EQ(project.text(), before);
}

TEST(ImportTranslations, OtherMembersOfATranslationStayInTheirPlaces) {
    TestProject project{R"({"x":"X","localization":{"terms":{"a":{"sourceText":"x","translatable":true}},
        "translations":{"de":{"a":{"note":"a note that is longer than a value","source":"old","text":"A","state":"review"}}}}})"};
    expectOneUndoStep(project, [&] { importFile(project, "de.json", R"({"a":"B"})"); });
    EXPECT_EQ(project.at("/localization/translations/de/a"),
        R"({"note":"a note that is longer than a value","source":")" + copied(fingerprint("X")) +
            R"(","text":"B","state":"review"})");
}

TEST(ImportTranslations, ReservedNamesAndVersion3AreNoticedAndKept) {
    TestProject project{"{}"};
    TestFolder folder;
    folder.write("en/m.json", R"({"__proto__":"P","item":"item","item_plural":"items"})");
    const CapturedOutput output;
    importFrom(project, {"en"}, folder.path);
    EXPECT_NE(output.warning().find(ImportPrefix +
                  "en/m.json: m:__proto__: is lost where the i18next library merges a file into another "
                  "one\n"),
        std::string::npos);
    EXPECT_EQ(project.at("/localization/strings"), R"({"m:__proto__":"P","m:item":"item","m:item_plural":"items"})");
}

TEST(ImportTranslations, ThatAreStaleAndComeBackEqualAreConfirmedWhereThatIsWanted) {
    TestProject project{
        R"({"one":"an apple","many":"apples","languages":{"en":{"isDefault":true},"pl":{}},"localization":{"terms":{)"
        R"("apples_one":{"sourceText":"one","translatable":true},"apples_other":{"sourceText":"many","translatable":true},)"
        R"("more":{"sourceText":"many","translatable":true}},"translations":{"pl":{)"
        R"("apples_one":{"text":"a","source":"0","state":"draft"},"apples_few":{"text":"b"},"apples_other":)" +
        entry("c", "apples") + R"(,"more":{"text":"d","source":5}}}}})"};
    TestFolder folder;
    folder.write("pl.json", R"({"apples_one": "a", "apples_few": "b", "apples_other": "c", "more": "new"})");
    const std::string before = project.text();
    std::string notices;
    const auto import = [&](const bool isConfirming) {
        ImportOptions options;
        options.isConfirming = isConfirming;
        Import import{project.editor(), FallbackLanguage, options};
        LocalizationReport report;
        EXPECT_TRUE(import.read(FileSystem::disk(), viewed(folder.path)) && import.compare(report));
        notices.clear();
        for(const LocalizationReport::Line& line: report.lines())
            if(line.outcome == TermOutcome::Notice) notices += copied(line.term) + ' ' + copied(line.reason) + '\n';
        Containers::Array<UnsignedInt> languages;
        import.apply(languages);
    };
    import(false);
    EXPECT_EQ(notices, "");
    EXPECT_EQ(project.at("/localization/translations/pl"),
        R"({"apples_one":{"text":"a","source":"0","state":"draft"},"apples_few":{"text":"b"},"apples_other":)" +
            entry("c", "apples") + R"(,"more":)" + entry("new", "apples") + '}');
    project.session.undo();
    EXPECT_EQ(project.text(), before);

    import(true);
    EXPECT_EQ(notices, "apples_one was stale, and is confirmed\napples_few was stale, and is confirmed\n");
    EXPECT_EQ(project.at("/localization/translations/pl"),
        R"({"apples_one":{"text":"a","source":")" + copied(fingerprint("an apple")) +
            R"(","state":"draft"},"apples_few":)" + entry("b", "apples") + R"(,"apples_other":)" +
            entry("c", "apples") + R"(,"more":)" + entry("new", "apples") + '}');
    project.session.undo();
    EXPECT_EQ(project.text(), before);
    EXPECT_FALSE(project.session.changes().canUndo());
}

namespace {

/** A project that keeps a German text and a Polish number where the default language has `true`. */
std::string keeping() {
    TestProject project{"{}"};
    TestFolder folder;
    folder.write("en.json", R"({"n": true})");
    folder.write("de.json", R"({"n": "Wort"})");
    folder.write("pl.json", R"({"n": 2})");
    importFrom(project, {"en"}, folder.path);
    return project.text();
}

}

TEST(ImportTranslations, TextThatWasKeptIsATranslationWhereItsKeyBecomesATerm) {
    TestProject project{keeping()};
    expectOneUndoStep(project, [&] {
        EXPECT_EQ(importFile(project, "en.json", R"({"n": "Word"})"),
            ImportPrefix + "en.json: n: was no text, and gives its place to what the file has there now\n");
    });
    EXPECT_EQ(project.at("/localization/translations"), R"({"de":{"n":)" + entry("Wort", "Word") + "}}");
    EXPECT_EQ(project.at("/localization/values"), R"({"en":{"n":null},"de":{"n":null},"pl":{"n":2}})");
    EXPECT_EQ(project.at("/languages"), R"({"en":{"isDefault":true},"de":{},"pl":{}})");

    // What an export writes then is known.
    TestFolder folder;
    exportTo(project, {"en", "de", "pl"}, folder.path);
    EXPECT_EQ(folder.read("de/translation.json"), "{\n  \"n\": \"Wort\"\n}\n");
    const std::size_t changes = project.changeCount();
    importFrom(project, {"en"}, folder.path);
    EXPECT_EQ(project.changeCount(), changes);
}

TEST(ImportTranslations, TextOfTheFileComesBeforeOneThatWasKept) {
    TestProject project{keeping()};
    TestFolder folder;
    folder.write("en.json", R"({"n": "Word"})");
    folder.write("de.json", R"({"n": "Neues Wort"})");
    folder.write("pl.json", R"({"n": "słowo"})");
    expectOneUndoStep(project, [&] { importFrom(project, {"en"}, folder.path); });
    EXPECT_EQ(project.at("/localization/translations"),
        R"({"de":{"n":)" + entry("Neues Wort", "Word") + R"(},"pl":{"n":)" + entry("słowo", "Word") + "}}");
    EXPECT_EQ(project.at("/localization/values"), R"({"en":{"n":null},"de":{"n":null},"pl":{"n":null}})");
}

TEST(ImportTranslations, WhatIsKeptWithoutAPlaceIsToldAndStays) {
    TestProject project{keeping()};
    const std::string gone = "n: is kept, and in no file: the default language has something else there now\n";
    EXPECT_EQ(importFile(project, "en.json", R"({"n": {"c": "below"}})"),
        ImportPrefix + "en.json: n: was no text, and gives its place to what the file has there now\n" + ImportPrefix +
            "de: " + gone + ImportPrefix + "pl: " + gone);
    EXPECT_EQ(project.at("/localization/values"), R"({"en":{"n":null},"de":{"n":"Wort"},"pl":{"n":2}})");
    const std::string without = "n: the default language has neither a text nor a value here\n";
    TestFolder folder;
    {
        const CapturedOutput output;
        exportTo(project, {"en", "de", "pl"}, folder.path);
        EXPECT_EQ(output.warning(),
            "LocalizationTools::exportTerms(): de: " + without + "LocalizationTools::exportTerms(): pl: " + without);
    }
    // Another file of the language takes its place.
    EXPECT_EQ(importFile(project, "de.json", R"({"n": {"c": "darunter"}})"),
        ImportPrefix + "de: n: was kept, and gives its place to what the file has there now\n");
    EXPECT_EQ(project.at("/localization/values"), R"({"en":{"n":null},"de":{"n":null},"pl":{"n":2}})");
    // And it is a translation where its key becomes a term.
    TestProject again{keeping()};
    importFile(again, "en.json", R"({"n": {"c": "below"}})");
    std::string text = again.text();
    text.replace(text.find("\"n.c\":{"), 5, "\"m\"");
    TestProject other{text};
    importFile(other, "en.json", R"({"n": "Word"})");
    EXPECT_EQ(other.at("/localization/translations/de/n/text"), R"("Wort")");
}

TEST(ImportTranslations, FormHasNoPlaceAboveAValueOfTheDefaultLanguage) {
    TestProject project{"{}"};
    importFile(project, "en.json", R"({"a_one": "one", "a_other": "many", "a_few": {"b": 5}})");
    EXPECT_EQ(importFile(project, "pl.json", R"({"a_few": "kilka"})"),
        ImportPrefix +
            "pl.json: a_few: no term has this key, and it cannot stand beside a_few.b: one is a text, and the other "
            "lies below it\n");
    EXPECT_EQ(project.at("/localization/translations"), "nothing");
}

}
