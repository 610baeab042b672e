#include "Export.h"

#include <memory>

#include <sys/stat.h>

#include "Exchange.h"
#include "FileSystem.h"
#include "LocalizationReport.h"
#include "TestArchive.h"
#include "support/CapturedOutput.h"

namespace QuorvaneEngine {

using Test::CapturedOutput;

namespace {

using Files = std::map<std::string, std::string>;

constexpr const char* Doors =
    R"({"objects": {"door": {"text": "Open", "hint": "Knock"}}, "name": "Game", "localization": {"terms": {
    "door.text": {"sourceText": "/objects/door/text", "translatable": true},
    "door.hint": {"sourceText": "/objects/door/hint", "translatable": true},
    "name": {"sourceText": "name", "translatable": false}},
    "translations": {"de": {"door.hint": {"text": "Klopfen"}, "door.text": {"text": ""}, "name": {"text": "Spiel"}}}}})";

constexpr const char* English = "{\n  \"door\": {\n    \"text\": \"Open\",\n    \"hint\": \"Knock\"\n  }\n}\n";
constexpr const char* German = "{\n  \"door\": {\n    \"hint\": \"Klopfen\"\n  }\n}\n";

const Files Exported{{"en/", ""}, {"en/translation.json", English}, {"de/", ""}, {"de/translation.json", German},
    {"ja/", ""}, {"ja/translation.json", "{}\n"}};

}

TEST(Export, WritesAFilePerLanguageInTheProjectsOrder) {
    TestProject project{Doors};
    TestFolder folder;
    exportTo(project, {"en", "de", "ja"}, folder.path);
    EXPECT_EQ(folder.files(), Exported);
    EXPECT_EQ(project.changeCount(), 0u);
}

TEST(Export, MakesItsFolder) {
    TestProject project{Doors};
    TestFolder folder;
    exportTo(project, {"en", "de", "ja"}, folder / "a/b");
    EXPECT_EQ(folder.read("a/b/de/translation.json"), German);
}

TEST(Export, OverAnUnchangedExportNoFileIsWritten) {
    TestProject project{Doors};
    TestFolder folder;
    exportTo(project, {"en", "de"}, folder.path);
    exportCompressedTo(project, {"en", "de"}, folder / "x.zip");
    const auto stamps = [&] {
        std::string all;
        for(const auto& [name, bytes]: folder.files()) {
            struct stat status {};
            EXPECT_EQ(stat((folder / name).c_str(), &status), 0);
            all += name + std::to_string(status.st_ino) + '.' + std::to_string(status.st_mtim.tv_sec) + '.' +
                std::to_string(status.st_mtim.tv_nsec) + '\n';
        }
        return all;
    };
    const std::string before = stamps();
    const Files files = folder.files();
    exportTo(project, {"en", "de"}, folder.path);
    exportCompressedTo(project, {"en", "de"}, folder / "x.zip");
    EXPECT_EQ(stamps(), before);
    EXPECT_EQ(folder.files(), files);
}

TEST(Export, OrderOfTheExistingFileIsKept) {
    TestProject project{Doors};
    TestFolder folder;
    const std::string other = "{\n  \"door\": {\n    \"hint\": \"Knock\",\n    \"text\": \"Open\"\n  }\n}\n";
    folder.write("en/translation.json", other);
    exportTo(project, {"en"}, folder.path);
    EXPECT_EQ(folder.read("en/translation.json"), other);
}

TEST(Export, CompressedToAFolderWritesLocalizationZip) {
    TestProject project{Doors};
    TestFolder folder;
    exportCompressedTo(project, {"en"}, folder.path);
    exportCompressedTo(project, {"en"}, folder / "made/");
    exportCompressedTo(project, {"en"}, folder / "deep/er/x.zip");
    ASSERT_EQ(folder.files().count("localization.zip"), 1u);
    EXPECT_EQ(folder.read("made/localization.zip"), folder.read("localization.zip"));
    EXPECT_EQ(folder.read("deep/er/x.zip"), folder.read("localization.zip"));
    EXPECT_EQ(folder.read("localization.zip").substr(0, 4), "PK\3\4");
}

struct ExportRefusal {
    const char* path;
    bool isCompressed;
    const char* warning;
};

class ExportsThatAreRefused: public testing::TestWithParam<ExportRefusal> {};

TEST_P(ExportsThatAreRefused, SayWhyAndTouchNothing) {
    TestProject project{Doors};
    TestFolder folder;
    folder.write("file", "a file");
    folder.write("inside/de", "a file");
    folder.write("full/en/translation.json/x", "a folder");
    folder.write("full/localization.zip/x", "a folder");
    const Files before = folder.files();
    const CapturedOutput output;
    const std::string path = *GetParam().path ? folder / GetParam().path : "";
    if(GetParam().isCompressed) exportCompressedTo(project, {"en", "de"}, path);
    else exportTo(project, {"en", "de"}, path);
    std::string warning = output.warning();
    for(std::size_t at; (at = warning.find(folder.path)) != std::string::npos;)
        warning.replace(at, folder.path.size(), "FOLDER");
    EXPECT_EQ(warning,
        std::string{GetParam().isCompressed ? "LocalizationTools::exportTermsCompressed(): "
                                            : "LocalizationTools::exportTerms(): "} +
            GetParam().warning + '\n');
    EXPECT_EQ(folder.files(), before);
}

INSTANTIATE_TEST_SUITE_P(Paths, ExportsThatAreRefused,
    testing::Values(ExportRefusal{"", false, "the path is empty"}, ExportRefusal{"", true, "the path is empty"},
        ExportRefusal{"file", false, "FOLDER/file: is a file where a folder is needed"},
        ExportRefusal{"file/x", false, "FOLDER/file: is a file where a folder is needed"},
        ExportRefusal{"inside", false, "FOLDER/inside/de: is a file where a folder is needed"},
        ExportRefusal{"full", false, "FOLDER/full/en/translation.json: is a folder where a file is needed"},
        ExportRefusal{"full", true, "FOLDER/full/localization.zip: is a folder where a file is needed"},
        ExportRefusal{"file", true, "FOLDER/file: is a file, but no ZIP archive that could be replaced"},
        ExportRefusal{"file/x.zip", true, "FOLDER/file: is a file where a folder is needed"}));

TEST(Export, ConflictsAreReportedAndTheFirstTermStays) {
    TestProject project{R"({"a": "A", "localization": {"terms": {
        "menu": {"sourceText": "a", "translatable": true}, "menu.file": {"sourceText": "a", "translatable": true},
        "x:": {"sourceText": "a", "translatable": true}, "x%3A": {"sourceText": "a", "translatable": true},
        "[0]": {"sourceText": "a", "translatable": true}, "gone": {"sourceText": "/b", "translatable": true}}}})"};
    TestFolder folder;
    const CapturedOutput output;
    exportTo(project, {"en"}, folder.path);
    EXPECT_EQ(folder.read("en/translation.json"), "{\n  \"menu\": \"A\",\n  \"x:\": \"A\"\n}\n");
    EXPECT_EQ(output.warning(),
        "LocalizationTools::exportTerms(): menu.file: cannot stand beside menu: one is a text, and the other lies "
        "below it\n"
        "LocalizationTools::exportTerms(): x%3A: has the same place in a file as x:\n"
        "LocalizationTools::exportTerms(): [0]: is an element, and a file holds no array\n"
        "LocalizationTools::exportTerms(): en: gone: its source is gone\n");
}

TEST(Export, WhatLeavesAFileIsReported) {
    TestProject project{Doors};
    TestFolder folder;
    folder.write("en/translation.json", R"({"old": "x", "n": 1})");
    folder.write("de/translation.json", "{broken");
    const CapturedOutput output;
    exportTo(project, {"en", "de"}, folder.path);
    EXPECT_EQ(folder.read("en/translation.json"), English);
    EXPECT_EQ(folder.read("de/translation.json"), German);
    EXPECT_NE(output.warning().find("exportTerms(): en: n: is a number and no text, and is no longer in the file\n"),
        std::string::npos);
    EXPECT_NE(output.warning().find("exportTerms(): en: old: no term has this key, and it is no longer in the file\n"),
        std::string::npos);
    EXPECT_NE(output.warning().find("exportTerms(): de: the file that was there is replaced, its order is lost: 1:2: "),
        std::string::npos);
}

TEST(Export, WhatLeavesAnArchiveIsReported) {
    TestProject project{Doors};
    TestFolder folder;
    exportCompressedTo(project, {"en", "de"}, folder / "x.zip");
    const CapturedOutput output;
    exportCompressedTo(project, {"en"}, folder / "x.zip");
    EXPECT_EQ(output.warning(),
        "LocalizationTools::exportTermsCompressed(): de/translation.json: is no longer in the archive\n");
}

TEST(Export, LanguageThatIsListedTwiceIsWrittenOnce) {
    TestProject project{Doors};
    TestFolder once, twice;
    exportCompressedTo(project, {"en", "de"}, once.path);
    exportCompressedTo(project, {"en", "de", "en"}, twice.path);
    EXPECT_EQ(once.files(), twice.files());
}

TEST(Export, AnyProjectIsExported) {
    for(const char* const json: {"{}", R"({"localization": 1})", R"({"localization": {"terms": []}})",
            R"({"localization": {"terms": {"a": 1, "b": {"sourceText": 1, "translatable": true}}, "translations": []}})",
            R"({"x": "X", "localization": {"terms": {"a": {"sourceText": "x", "translatable": true}}, "translations": {"de": 1}}})",
            R"({"x": "X", "localization": {"terms": {"a": {"sourceText": "x", "translatable": true}},
                "translations": {"de": {"a": ["text"]}}}})"}) {
        TestProject project{json};
        TestFolder folder;
        const CapturedOutput output;
        exportTo(project, {"de"}, folder.path);
        EXPECT_EQ(folder.read("de/translation.json"), "{}\n") << json;
    }
}

TEST(Export, LanguagesOutOfTheTableAreLeftOut) {
    TestProject project{Doors};
    TestFolder folder;
    const UnsignedInt languages[]{LanguageCount, ~UnsignedInt{}};
    LocalizationTools::exportTerms(
        project.editor(), languages, FallbackLanguage, viewed(folder.path), LocalizationFormat::I18Next);
    EXPECT_EQ(folder.files(), Files{});
}

TEST(Export, ReportComparesWithTheFilesThatWereThere) {
    TestProject project{Doors};
    TestFolder folder;
    folder.write("en/translation.json", R"({"door": {"text": "Open", "hint": "other"}})");
    const Containers::Array<UnsignedInt> languages = languagesOf({"en", "de"});
    const auto report = std::make_unique<LocalizationReport>();
    FileError error;
    EXPECT_TRUE((Export{project.project(), FileSystem::disk(), languages, FallbackLanguage}.toFolder(
        viewed(folder.path), *report, error)));
    EXPECT_EQ(report->counts(languages[0]).unchanged, 1u);
    EXPECT_EQ(report->counts(languages[0]).changed, 1u);
    EXPECT_EQ(report->counts(languages[1]).added, 1u);
}

}
