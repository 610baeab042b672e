#include "ImportSources.h"

#include "Exchange.h"
#include "support/CapturedOutput.h"

namespace QuorvaneEngine {

using Test::CapturedOutput;

TEST(ImportSources, NamespacesMakeTermsOfTheirOwn) {
    TestProject project{"{}"};
    expectOneUndoStep(
        project, [&] { EXPECT_EQ(importFile(project, "en/menu.json", R"({"file": {"open": "Open"}})"), ""); });
    EXPECT_EQ(project.at("/localization"),
        R"({"terms":{"menu:file.open":{"sourceText":"/localization/strings/menu:file.open","translatable":true}},)"
        R"("strings":{"menu:file.open":"Open"}})");
    EXPECT_EQ(importFile(project, "en/translation.json", R"({"file": {"open": "O"}})"),
        ImportPrefix + "en/translation.json: the namespace translation is new\n");
    EXPECT_EQ(project.at("/localization/strings"), R"({"menu:file.open":"Open","file.open":"O"})");
}

TEST(ImportSources, NewNamespaceIsToldWhereThereAreTerms) {
    TestProject project{"{}"};
    EXPECT_EQ(importFile(project, "en/menu.json", R"({"open": "Open"})"), "");
    EXPECT_EQ(importFile(project, "en/menu.json", R"({"open": "Open", "close": "Close"})"), "");
    EXPECT_EQ(importFile(project, "en/empty.json", "{}"), "");
    for(const char* const name: {"menu.bak", "menu (1)", "translation"}) {
        const std::string notice = ImportPrefix + "en/" + name + ".json: the namespace " + name + " is new\n";
        EXPECT_EQ(importFile(project, "en/" + std::string{name} + ".json", R"({"open": "Open"})"), notice);
        EXPECT_EQ(importFile(project, "en/" + std::string{name} + ".json", R"({"open": "Open"})"), "");
    }
}

TEST(ImportSources, FileOfSentencesMakesItsNamespaceFlat) {
    TestProject project{"{}"};
    const std::string file = R"({"Status: Loading...": "Loading", "menu.file": "File", "plain": "P"})";
    expectOneUndoStep(project, [&] {
        EXPECT_EQ(importFile(project, "en/ui.json", file),
            ImportPrefix +
                "en/ui.json: ui:Status%3A Loading...: reads like a sentence: only an application that switches both "
                "separators off is sure to find it\n");
    });
    EXPECT_EQ(project.at("/localization/namespaces"), R"({"ui":{"flat":true}})");
    EXPECT_EQ(project.at("/localization/strings"),
        R"({"ui:Status%3A Loading...":"Loading","ui:menu.file":"File","ui:plain":"P"})");
    const std::size_t changes = project.changeCount();
    importFile(project, "en/ui.json", file);
    EXPECT_EQ(project.changeCount(), changes);
}

TEST(ImportSources, FileWithoutTextsHasNoShape) {
    TestProject project{"{}"};
    importFile(project, "en/ui.json", R"({"menu.file": "", "a b": null})");
    EXPECT_EQ(project.at("/localization"), R"({"namespaces":{"ui":{}}})");
    importFile(project, "en/ui.json", R"({"menu.file": "File"})");
    EXPECT_EQ(project.at("/localization/namespaces"), R"({"ui":{"flat":true}})");
}

TEST(ImportSources, NamespaceWithValuesKeepsItsShape) {
    TestProject project{"{}"};
    importFile(project, "en/ui.json", R"({"menu.file": "", "n": 1})");
    EXPECT_EQ(project.at("/localization/namespaces"), R"({"ui":{"flat":true}})");
    const std::size_t changes = project.changeCount();
    importFile(project, "en/ui.json", R"({"n": 1})");
    EXPECT_EQ(project.changeCount(), changes);
}

TEST(ImportSources, NamespaceWithTermsKeepsItsShape) {
    TestProject project{R"({"localization":{"terms":{"ui:a":{"translatable":true}}}})"};
    importFile(project, "en/ui.json", R"({"menu.file": "File"})");
    EXPECT_EQ(project.at("/localization/namespaces"), "nothing");
    EXPECT_EQ(project.at("/localization/strings"), R"({"ui:menu%2Efile":"File"})");
}

TEST(ImportSources, NestedKeysHaveNoPlaceInAFlatNamespace) {
    TestProject project{
        R"({"x":"X","localization":{"terms":{"a.b":{"sourceText":"x","translatable":true}},"namespaces":{"translation":{"flat":true}}}})"};
    EXPECT_EQ(importFile(project, "en.json", R"({"a": {"b": "new", "c": "C"}})"),
        ImportPrefix + "en.json: a.c: lies in an object, and the namespace is flat\n");
    EXPECT_EQ(project.at("/x"), R"("new")");
}

TEST(ImportSources, ValuesThatAreNoTextsAreKept) {
    TestProject project{"{}"};
    const std::string file =
        R"({"n": 5, "big": 1e300, "list": [], "none": {}, "on": true, "mixed": [1, "x", null, {}]})";
    expectOneUndoStep(project, [&] {
        EXPECT_EQ(importFile(project, "en.json", file),
            ImportPrefix + "en.json: n: is a number and no text: it is kept as it is, and so are 6 more\n");
    });
    EXPECT_EQ(project.at("/localization/values"),
        R"({"en":{"n":5,"big":{"number":"1e300"},"list":[],"none":{},"on":true,"mixed.[0]":1,"mixed.[3]":{}}})");
    const std::size_t changes = project.changeCount();
    EXPECT_EQ(importFile(project, "en.json", file), "");
    EXPECT_EQ(project.changeCount(), changes);
    importFile(project, "en.json", R"({"n": 6})");
    EXPECT_EQ(project.at("/localization/values/en/n"), "6");
    EXPECT_EQ(project.changeCount(), changes + 1);
}

TEST(ImportSources, NumbersKeepTheirSpelling) {
    TestProject project{"{}"};
    const std::string file = "{\n  \"a\": 1.50,\n  \"b\": 1e3,\n  \"c\": -0,\n  \"d\": 12345678901234567890123,\n"
                             "  \"e\": 5,\n  \"f\": 2.5\n}\n";
    expectOneUndoStep(project, [&] { importFile(project, "en.json", file); });
    EXPECT_EQ(project.at("/localization/values/en"),
        R"({"a":{"number":"1.50"},"b":{"number":"1e3"},"c":{"number":"-0"},"d":{"number":"12345678901234567890123"},)"
        R"("e":5,"f":2.5})");
    TestFolder folder;
    exportTo(project, {"en"}, folder.path);
    EXPECT_EQ(folder.read("en/translation.json"), file);

    const std::size_t changes = project.changeCount();
    importFile(project, "en.json", file);
    EXPECT_EQ(project.changeCount(), changes);
    importFile(project, "en.json", R"({"a": 1.5, "f": 2.50})");
    EXPECT_EQ(project.at("/localization/values/en/a"), "1.5");
    EXPECT_EQ(project.at("/localization/values/en/f"), R"({"number":"2.50"})");
}

TEST(ImportSources, WholeNumbersBeyond64BitsKeepAllTheirDigits) {
    TestProject project{"{}"};
    const std::string file = "{\n  \"a\": [\n    18446744073709551615,\n    18446744073709551616\n  ],\n"
                             "  \"b\": {\n    \"c\": -9223372036854775808,\n    \"d\": -9223372036854775809\n  }\n}\n";
    importFile(project, "en.json", file);
    EXPECT_EQ(project.at("/localization/values/en"),
        R"({"a.[0]":18446744073709551615,"a.[1]":{"number":"18446744073709551616"},)"
        R"("b.c":-9223372036854775808,"b.d":{"number":"-9223372036854775809"}})");
    TestFolder folder;
    exportTo(project, {"en"}, folder.path);
    EXPECT_EQ(folder.read("en/translation.json"), file);
}

TEST(ImportSources, ValueInThePlaceOfATermLeavesTheTerm) {
    TestProject project{R"({"x":"X","localization":{"terms":{"a":{"sourceText":"x","translatable":true}}}})"};
    const std::string before = project.at("/localization");
    EXPECT_EQ(importFile(project, "en.json", R"({"a": 5})"),
        ImportPrefix + "en.json: a: is a number and no text, and the project has a term here\n");
    EXPECT_EQ(project.at("/localization"), before);
}

TEST(ImportSources, ValueGivesItsPlaceToWhatTheFileHasThereNow) {
    TestProject before{"{}"};
    importFile(before, "en.json", R"({"b": {}, "n": 1, "k": true, "s": "S"})");
    TestProject project{before.text()};
    EXPECT_EQ(project.at("/localization/values/en"), R"({"b":{},"n":1,"k":true})");
    expectOneUndoStep(project, [&] {
        EXPECT_EQ(importFile(project, "en.json", R"({"b": {"c": "below"}, "n": "now a text", "k": true, "s": "S"})"),
            ImportPrefix + "en.json: b: was no text, and gives its place to what the file has there now\n" +
                ImportPrefix + "en.json: n: was no text, and gives its place to what the file has there now\n");
    });
    EXPECT_EQ(project.at("/localization/values/en"), R"({"b":null,"n":null,"k":true})");
    TestFolder folder;
    const CapturedOutput output;
    exportTo(project, {"en"}, folder.path);
    EXPECT_EQ(output.warning(), "");
    EXPECT_EQ(folder.read("en/translation.json"),
        "{\n  \"b\": {\n    \"c\": \"below\"\n  },\n  \"n\": \"now a text\",\n  \"k\": true,\n  \"s\": \"S\"\n}\n");
}

TEST(ImportSources, ValueGivesItsPlaceToATextAboveIt) {
    for(const char* const now: {R"({"k": "a text"})", R"({"k": 7})", R"({"k": [1]})"}) {
        TestProject project{"{}"};
        importFile(project, "en.json", R"({"k": {"c": 5}})");
        const std::string warning = importFile(project, "en.json", now);
        EXPECT_EQ(warning.substr(warning.find("k.c")),
            "k.c: was no text, and gives its place to what the file has there now\n")
            << now;
        EXPECT_EQ(project.at("/localization/values/en/k.c"), "null");
        TestFolder folder;
        const CapturedOutput output;
        exportTo(project, {"en"}, folder.path);
        EXPECT_EQ(output.warning(), "") << now;
    }
}

TEST(ImportSources, ValueThatATermOfTheProjectLeavesNoPlaceStays) {
    TestProject project{
        R"({"x":"X","localization":{"terms":{"k":{"sourceText":"x","translatable":true}},"values":{"en":{"k.c":5}}}})"};
    EXPECT_EQ(importFile(project, "en.json", R"({"k": "Y", "n": "N"})"), "");
    EXPECT_EQ(project.at("/localization/values/en"), R"({"k.c":5})");
}

TEST(ImportSources, TermHasNoPlaceBelowAPluralFormOfAnotherLanguage) {
    TestProject project{"{}"};
    TestFolder both;
    both.write("en.json", R"({"a_one": "one", "a_other": "many", "b_other": "B"})");
    both.write("pl.json", R"({"a_one": "jeden", "a_few": "kilka"})");
    importFrom(project, {"en"}, both.path);
    const std::string before = project.text();
    EXPECT_EQ(importFile(project, "en.json", R"({"a_few": {"b": "below", "n": 5}})"),
        ImportPrefix + "en.json: a_few.b: cannot stand beside a_few: one is a text, and the other lies below it\n" +
            ImportPrefix + "en.json: a_few.n: cannot stand beside a_few: one is a text, and the other lies below it\n");
    EXPECT_EQ(project.text(), before);
    // No form of a plural.
    EXPECT_EQ(importFile(project, "en.json", R"({"a_many": {"b": "below"}, "b_few": {"b": "below"}})"), "");
    EXPECT_EQ(project.at("/localization/strings/a_many.b"), R"("below")");
}

TEST(ImportSources, KeysThatTheLibraryFindsNotAreTold) {
    TestProject project{"{}"};
    EXPECT_EQ(importFile(project, "en.json", R"({"a.b": "1", "a": {"b": "2"}})"),
        ImportPrefix + "en.json: a%2Eb: the i18next library finds a.b in its place\n");
    EXPECT_EQ(project.at("/localization/strings"), R"({"a%2Eb":"1","a.b":"2"})");
}

TEST(ImportSources, KeyItselfComesBeforeOneOfAnotherShape) {
    TestProject project{"{}"};
    importFile(project, "en.json", R"({"m": {"x": "source"}})");
    TestFolder folder;
    folder.write("de.json", R"({"m.x": "flat", "m": {"x": "nested"}})");
    importFrom(project, {"en"}, folder.path);
    EXPECT_EQ(project.at("/localization/translations/de/m.x/text"), R"("nested")");
    importFile(project, "en.json", R"({"m.x": "flat", "m": {"x": "new"}})");
    EXPECT_EQ(project.at("/localization/strings"), R"({"m.x":"new","m%2Ex":"flat"})");
}

TEST(ImportSources, ValueStaysWhereAFlatNamespaceHasNoPlaceForWhatTheFileHasThereNow) {
    TestProject project{"{}"};
    importFile(project, "en/ui.json", R"({"a b": 1})");
    const std::string before = project.text();
    for(int i = 0; i != 2; ++i)
        EXPECT_EQ(importFile(project, "en/ui.json", R"({"a b": {"c": "C"}})"),
            ImportPrefix + "en/ui.json: ui:a b.c: lies in an object, and the namespace is flat\n");
    EXPECT_EQ(project.text(), before);
}

TEST(ImportSources, EmptyFileOfANamespaceIsRemembered) {
    TestProject project{"{}"};
    expectOneUndoStep(project, [&] { importFile(project, "en/errors.json", "{}"); });
    EXPECT_EQ(project.at("/localization/namespaces"), R"({"errors":{}})");
    const std::size_t changes = project.changeCount();
    importFile(project, "en/errors.json", "{}");
    EXPECT_EQ(project.changeCount(), changes);
    importFile(project, "en.json", "{}");
    EXPECT_EQ(project.at("/localization/namespaces"), R"({"errors":{},"translation":{}})");
}

TEST(ImportSources, ManyTextsOfTheProjectsStringsAreOneChange) {
    std::string terms, strings, file;
    for(int i = 0; i != 100; ++i) {
        const std::string key = "k/" + std::to_string(i);
        terms += (i ? ",\"" : "\"") + key + R"(":{"sourceText":"/localization/strings/k~1)" + std::to_string(i) +
            R"(","translatable":true})";
        strings += (i ? ",\"" : "\"") + key + "\":\"old\"";
        file += (i ? ",\"" : "\"") + key + "\":\"new" + std::to_string(i) + '"';
    }
    TestProject project{
        R"({"languages":{"en":{}},"localization":{"terms":{)" + terms + R"(},"strings":{)" + strings + "}}}"};
    expectOneUndoStep(project, [&] { importFile(project, "en.json", '{' + file + R"(,"more":"M"})"); });
    EXPECT_EQ(project.at("/localization/strings"), '{' + file + R"(,"more":"M"})");
    // The language is known; the new term, and all texts together.
    EXPECT_EQ(project.changeCount(), 2u);
}

TEST(ImportSources, TermsInTwoShapesAreFoundOnce) {
    TestProject project{R"({"x":"X","localization":{"terms":{"a.b":{"sourceText":"x","translatable":true}}}})"};
    EXPECT_EQ(importFile(project, "en.json", R"({"a.b": "new", "a": {"b": "other"}})"),
        ImportPrefix + "en.json: a%2Eb: the i18next library finds a.b in its place\n");
    EXPECT_EQ(project.at("/x"), R"("other")");
    EXPECT_EQ(project.at("/localization/strings"), R"({"a%2Eb":"new"})");
}

}
