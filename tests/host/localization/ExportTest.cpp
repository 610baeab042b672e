#include "Export.h"

#include <sys/stat.h>

#include <Corrade/Utility/Path.h>

#include "Exchange.h"
#include "ExportedDoors.h"
#include "FileSystem.h"
#include "LocalizationReport.h"
#include "Progress.h"
#include "TestArchive.h"
#include "support/CapturedOutput.h"

namespace QuorvaneEngine {

using Test::CapturedOutput;

namespace {

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

TEST(Export, MakesItsFolderHoweverItsPathEnds) {
    TestProject project{Doors};
    for(const char* const end: {"/", "/.", "//", "/./", "/.//"}) {
        TestFolder folder;
        exportTo(project, {"de"}, folder / "new" + end);
        EXPECT_EQ(folder.read("new/de/translation.json"), German) << end;
        exportCompressedTo(project, {"de"}, folder / "packed" + end);
        EXPECT_TRUE(folder.files().contains("packed/localization.zip")) << end;
    }
}

TEST(Export, TheEditorsProposalIsTakenByAProjectThatHasNoSuchFolder) {
    TestProject project{Doors};
    TestFolder folder;
    const Containers::String proposed =
        Corrade::Utility::Path::join(Corrade::Utility::Path::join(viewed(folder.path), "i18n"), "");
    ASSERT_TRUE(proposed.hasSuffix('/'));
    const CapturedOutput output;
    exportTo(project, {"en", "de", "ja"}, copied(proposed));
    EXPECT_EQ(output.warning(), "");
    Files expected{{"i18n/", ""}};
    for(const auto& [name, bytes]: Exported) expected["i18n/" + name] = bytes;
    EXPECT_EQ(folder.files(), expected);
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

TEST(Export, WhatAnEarlierExportLeftHalfDoneIsFinishedBeforeFilesAreCompared) {
    TestProject project{Doors};
    TestFolder folder;
    exportTo(project, {"en", "de"}, folder.path);
    folder.write(".localization-export/0.new", "{}\n");
    folder.write(".localization-export/journal", "quorvane-journal 1\ncomplete\nreplace de/translation.json\nend\n");
    const CapturedOutput output;
    exportTo(project, {"en", "de"}, folder.path);
    EXPECT_EQ(folder.files(),
        (Files{{"en/", ""}, {"en/translation.json", English}, {"de/", ""}, {"de/translation.json", German}}));
    EXPECT_EQ(output.warning(),
        "LocalizationTools::exportTerms(): .localization-export: was left by an export that was cut short, and is put "
        "in "
        "order\n");
}

TEST(Export, OrderOfTheExistingFileIsKept) {
    TestProject project{Doors};
    TestFolder folder;
    const std::string other = "{\n  \"door\": {\n    \"hint\": \"Knock\",\n    \"text\": \"Open\"\n  }\n}\n";
    folder.write("en/translation.json", other);
    exportTo(project, {"en"}, folder.path);
    EXPECT_EQ(folder.read("en/translation.json"), other);
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

TEST(Export, AFileThatIsNoCatalogueIsNotReplacedNorIsAnyOther) {
    TestProject project{Doors};
    TestFolder folder;
    folder.write("en/translation.json", "{}");
    folder.write("de/translation.json", "{\n<<<<<<< HEAD\n  \"door\": {}\n=======\n}\n");
    folder.write(
        "x.zip", TestArchive{{{"de/translation.json", "{\n<<<<<<< HEAD\n"}, {"en/translation.json", "{}"}}}.make());
    const Files before = folder.files();
    const CapturedOutput output;
    exportTo(project, {"en", "de"}, folder.path);
    exportCompressedTo(project, {"en", "de"}, folder / "x.zip");
    const std::string place = "/de/translation.json:2:1: the name of a member is missing, and is not replaced\n";
    EXPECT_EQ(output.warning(),
        "LocalizationTools::exportTerms(): " + folder.path + place +
            "LocalizationTools::exportTermsCompressed(): " + folder / "x.zip" + place);
    EXPECT_EQ(folder.files(), before);

    const Containers::Array<UnsignedInt> languages = languagesOf({"en", "de"});
    LocalizationReport report;
    FileError error;
    EXPECT_FALSE((Export{project.project(), FileSystem::disk(), languages, FallbackLanguage, {true, false}}.toFolder(
        viewed(folder.path), report, error)));
}

TEST(Export, APipeIsNeitherReadNorReplaced) {
    TestProject project{Doors};
    TestFolder folder;
    folder.write("de/other", "");
    ASSERT_EQ(mkfifo((folder / "de/translation.json").c_str(), 0600), 0);
    const CapturedOutput output;
    exportTo(project, {"de"}, folder.path);
    EXPECT_EQ(
        output.warning(), "LocalizationTools::exportTerms(): " + folder / "de/translation.json" + ": is no file\n");
    EXPECT_TRUE(std::filesystem::is_fifo(folder / "de/translation.json"));
}

TEST(Export, AnEmptyFileCountsAsNone) {
    TestProject project{Doors};
    TestFolder folder;
    folder.write("de/translation.json", "");
    const CapturedOutput output;
    exportTo(project, {"de"}, folder.path);
    EXPECT_EQ(folder.read("de/translation.json"), German);
    EXPECT_EQ(output.warning(), "");
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

TEST(Export, DryRunReportsTheSameAndWritesNothing) {
    TestProject project{Doors};
    TestFolder folder;
    folder.write("en/translation.json", R"({"door": {"text": "Other"}})");
    const Files before = folder.files();
    const Containers::Array<UnsignedInt> languages = languagesOf({"en", "de"});
    FileError error;
    LocalizationReport dry, wet;
    const Export dryRun{project.project(), FileSystem::disk(), languages, FallbackLanguage, {true, false}};
    EXPECT_TRUE(dryRun.toFolder(viewed(folder.path), dry, error));
    EXPECT_TRUE(dryRun.toFolder(viewed(folder / "new"), dry, error));
    EXPECT_TRUE(dryRun.toArchive(viewed(folder / "x.zip"), dry, error));
    EXPECT_EQ(folder.files(), before);

    const Export real{project.project(), FileSystem::disk(), languages, FallbackLanguage};
    EXPECT_TRUE(real.toFolder(viewed(folder.path), wet, error));
    EXPECT_TRUE(real.toFolder(viewed(folder / "new"), wet, error));
    EXPECT_TRUE(real.toArchive(viewed(folder / "x.zip"), wet, error));
    EXPECT_EQ(copied(dry.json()), copied(wet.json()));
}

TEST(Export, CancelledWritesNothing) {
    TestProject project{Doors};
    TestFolder folder;
    const Containers::Array<UnsignedInt> languages = languagesOf({"en", "de"});
    Progress progress;
    progress.isCancelled = true;
    FileError error;
    LocalizationReport report;
    const Export request{project.project(), FileSystem::disk(), languages, FallbackLanguage, {}, &progress};
    EXPECT_FALSE(request.toFolder(viewed(folder.path), report, error));
    EXPECT_TRUE(error.path.isEmpty());
    EXPECT_EQ(folder.files(), Files{});
    progress.isCancelled = false;
    EXPECT_TRUE(request.toFolder(viewed(folder.path), report, error));
    EXPECT_EQ(progress.done, 2u);
    EXPECT_EQ(progress.total, 2u);
}

}
