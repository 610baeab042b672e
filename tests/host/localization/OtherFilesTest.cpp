#include "OtherFiles.h"

#include <string>
#include <vector>

#include <Corrade/Containers/GrowableArray.h>
#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "FileSystem.h"
#include "LocalizationReport.h"
#include "TestFolder.h"
#include "TestProject.h"

namespace QuorvaneEngine {

namespace {

constexpr const char* Languages = R"({"languages": {"en": {"isDefault": true}, "de": {}, "fr": {}}})";

std::vector<ExportFile> exported() {
    std::vector<ExportFile> files;
    for(const char* const path: {"en/translation.json", "en/menu.json", "de/translation.json", "de/menu.json"}) {
        files.emplace_back();
        files.back().path = path;
    }
    return files;
}

std::string linesOf(const LocalizationReport& report) {
    std::string lines;
    for(const LocalizationReport::Line& line: report.lines()) {
        EXPECT_EQ(line.outcome, TermOutcome::Notice);
        lines += copied(line.file) + ": " + copied(line.reason) + '\n';
    }
    return lines;
}

std::string inFolder(const TestFolder& folder, const char* const project = Languages) {
    rapidjson::Document document;
    document.Parse(project);
    const std::vector<ExportFile> files = exported();
    LocalizationReport report;
    OtherFiles{document, files}.notice(FileSystem::disk(), viewed(folder.path), report);
    return linesOf(report);
}

std::string inArchive(const std::vector<const char*>& names) {
    rapidjson::Document document;
    document.Parse(Languages);
    const std::vector<ExportFile> files = exported();
    Containers::Array<Containers::String> entries;
    for(const char* const name: names) arrayAppend(entries, Corrade::InPlaceInit, name);
    LocalizationReport report;
    OtherFiles{document, files}.notice(entries, report);
    return linesOf(report);
}

}

TEST(OtherFiles, OfLanguagesAndNamespacesThatTheProjectDoesNotHaveAreTold) {
    TestFolder folder;
    for(const char* const name: {"en/translation.json", "de/menu.json", "fr/menu.json", "README.md", "package.json",
            "de/notes.txt", ".git/it.json", "en-XA/menu.json", "src/it.json", "de/old/menu.json"})
        folder.write(name, "{}");
    EXPECT_EQ(inFolder(folder), "");
    for(const char* const name: {"it/menu.json", "it.json", "de/old.json", "fr/old.json", "fr.json"})
        folder.write(name, "{}");
    EXPECT_EQ(inFolder(folder),
        "de/old.json: the project has no texts for the namespace old; this file stays as it is\n"
        "fr/old.json: the project has no texts for the namespace old; this file stays as it is\n"
        "fr.json: an export writes fr/translation.json; this file stays as it is\n"
        "it/menu.json: the project does not have the language it; this file stays as it is\n"
        "it.json: the project does not have the language it; this file stays as it is\n");
    EXPECT_EQ(inFolder(TestFolder{}), "");
}

TEST(OtherFiles, MayBeOfAnyLanguageWhereTheProjectNamesNone) {
    TestFolder folder;
    for(const char* const name: {"de/menu.json", "fr/menu.json", "fr/old.json"}) folder.write(name, "{}");
    for(const char* const project: {"{}", R"({"languages": {}})", R"({"languages": 1})"})
        EXPECT_EQ(inFolder(folder, project),
            "fr/old.json: the project has no texts for the namespace old; this file stays as it is\n");
}

TEST(OtherFiles, OfAnArchiveAreToldWhateverTheyAre) {
    EXPECT_EQ(inArchive({"en/menu.json", "", "de/menu.json"}), "");
    EXPECT_EQ(
        inArchive({"en/menu.json", "README.txt"}), "README.txt: is not of this export, and stays in the archive\n");
    EXPECT_EQ(inArchive({"it.json", "README.txt", "fr/menu.json", "i18n/de/menu.json"}),
        "it.json: the project does not have the language it; this file stays as it is\n"
        "i18n/de/menu.json: an export writes de/menu.json; this file stays as it is\n"
        "README.txt: is not of this export, and stays in the archive (1 more file)\n");
}

}
