#include "ExportFiles.h"

#include "Exchange.h"
#include "LocalizationReport.h"
#include "support/CapturedOutput.h"

namespace QuorvaneEngine {

using Test::CapturedOutput;

namespace {

using Files = std::map<std::string, std::string>;

/** Files as our own export writes them. */
const Files Catalogues{{"en/", ""}, {"pl/", ""}, {"de/", ""},
    {"en/translation.json",
        "{\n  \"title\": \"Title\",\n  \"version\": 3,\n  \"apples_one\": \"apple\",\n  \"apples_other\": \"apples\",\n"
        "  \"list\": [\n    \"one\",\n    2,\n    {\n      \"deep\": \"D\"\n    }\n  ],\n  \"none\": {},\n  \"last\": "
        "\"L\"\n}\n"},
    {"en/ui.json",
        "{\n  \"Status: Loading...\": \"Loading\",\n  \"menu.file\": \"File\",\n  \"menu\": \"Menu\",\n  \"flag\": "
        "true\n}\n"},
    {"en/errors.json", "{}\n"},
    {"pl/translation.json",
        "{\n  \"last\": \"l\",\n  \"apples_one\": \"jabłko\",\n  \"apples_few\": \"jabłka\",\n  \"apples_many\": "
        "\"jabłek\",\n"
        "  \"apples_other\": \"jabłka\",\n  \"title\": \"tytuł\",\n  \"version\": \"trzy\",\n  \"list\": [\n    "
        "null,\n    4,\n"
        "    {\n      \"deep\": \"d\"\n    }\n  ]\n}\n"},
    {"pl/ui.json", "{\n  \"Status: Loading...\": \"Ładowanie\",\n  \"menu\": \"menu\"\n}\n"},
    {"pl/errors.json", "{}\n"},
    {"de/translation.json", "{\n  \"title\": \"Titel\",\n  \"version\": 4,\n  \"last\": \"l\"\n}\n"},
    {"de/ui.json", "{}\n"}, {"de/errors.json", "{}\n"}};

void write(const TestFolder& folder, const Files& files) {
    for(const auto& [name, bytes]: files)
        if(name.back() != '/') folder.write(name, bytes);
}

}

TEST(ExportFiles, CataloguesThatCameInGoOutAsTheyWere) {
    TestFolder folder;
    std::filesystem::create_directory(folder / "in");
    TestFolder in;
    write(in, Catalogues);
    TestProject project{"{}"};
    const CapturedOutput output;
    expectOneUndoStep(project, [&] { EXPECT_EQ(importFrom(project, {}, in.path), "en de pl"); });
    TestFolder out;
    exportTo(project, {"en", "de", "pl"}, out.path);
    EXPECT_EQ(out.files(), Catalogues);

    // And again, in every way: nothing changes.
    const std::string before = project.text();
    const std::size_t changes = project.changeCount();
    importFrom(project, {"en"}, in.path);
    importFrom(project, {"en"}, out.path);
    EXPECT_EQ(project.text(), before);
    EXPECT_EQ(project.changeCount(), changes);
    exportCompressedTo(project, {"en", "de", "pl"}, folder / "x.zip");
    TestProject other{"{}"};
    importFrom(other, {}, folder / "x.zip");
    EXPECT_EQ(other.text(), before);
}

TEST(ExportFiles, OrderOfAnExistingFileCountsMoreThanTheNote) {
    TestFolder in;
    write(in, Catalogues);
    TestProject project{"{}"};
    const CapturedOutput output;
    importFrom(project, {}, in.path);
    const std::string other = "{\n  \"menu\": \"menu\",\n  \"Status: Loading...\": \"Ładowanie\"\n}\n";
    in.write("pl/ui.json", other);
    exportTo(project, {"pl"}, in.path);
    EXPECT_EQ(in.read("pl/ui.json"), other);
}

TEST(ExportFiles, NoteOfTheDefaultLanguageServesTheOthers) {
    TestProject project{R"({"x":"X","localization":{"terms":{"a":{"sourceText":"x","translatable":true},
        "b":{"sourceText":"x","translatable":true}},"translations":{"de":{"a":{"text":"A"},"b":{"text":"B"}},
        "fr":{"a":{"text":"A"},"b":{"text":"B"}}},
        "namespaces":{"translation":{"order":{"en":["b","a"],"fr":[]}}}}})"};
    TestFolder folder;
    const CapturedOutput output;
    exportTo(project, {"en", "de", "fr"}, folder.path);
    EXPECT_EQ(folder.read("en/translation.json"), "{\n  \"b\": \"X\",\n  \"a\": \"X\"\n}\n");
    EXPECT_EQ(folder.read("de/translation.json"), "{\n  \"b\": \"B\",\n  \"a\": \"A\"\n}\n");
    EXPECT_EQ(folder.read("fr/translation.json"), "{\n  \"a\": \"A\",\n  \"b\": \"B\"\n}\n");
}

TEST(ExportFiles, EveryConflictIsReportedWithBothKeys) {
    TestProject project{R"({"x":"X","localization":{"terms":{"menu":{"sourceText":"x","translatable":true},
        "menu.file":{"sourceText":"x","translatable":true},"menu.edit":{"sourceText":"x","translatable":true},
        "ui:a.b":{"sourceText":"x","translatable":true},"ui:a":{"sourceText":"x","translatable":true}},
        "values":{"en":{"menu.n":1}}}})"};
    TestFolder folder;
    const CapturedOutput output;
    exportTo(project, {"en"}, folder.path);
    const auto line = [](const std::string& key, const std::string& other) {
        return "LocalizationTools::exportTerms(): " + key + ": cannot stand beside " + other +
            ": one is a text, and the other lies below it\n";
    };
    EXPECT_EQ(output.warning(),
        line("menu.file", "menu") + line("menu.edit", "menu") + line("menu.n", "menu") + line("ui:a", "ui:a.b"));
}

TEST(ExportFiles, AreReadOneAfterTheOtherAndFailWithTheFirst) {
    TestProject project{R"({"localization":{"namespaces":{"a":{},"b":{}}}})"};
    const UnsignedInt languages[]{UnsignedInt(findLanguage("de")), UnsignedInt(findLanguage("fr"))};
    std::string asked;
    std::vector<ExportFile> files;
    LocalizationReport report;
    const auto read = [&](const Containers::StringView path, Containers::String&) {
        asked += copied(path) + ' ';
        return path != "fr/a.json";
    };
    EXPECT_FALSE(makeExportFiles(
        project.project().document(), FallbackLanguage, languages, false, read, files, report, nullptr));
    EXPECT_EQ(asked, "de/a.json de/b.json fr/a.json ");
}

}
