#include "Export.h"

#include <filesystem>

#include <gtest/gtest.h>

#include "Exchange.h"
#include "FileSystem.h"
#include "LocalizationReport.h"
#include "TestArchive.h"

namespace QuorvaneEngine {

namespace {

namespace fs = std::filesystem;

constexpr const char* Doors = R"({"languages": {"en": {"isDefault": true}, "de": {}}, "x": "Door", "localization": {
    "terms": {"door": {"sourceText": "x", "translatable": true}},
    "translations": {"de": {"door": {"text": "T\u00fcr"}}}}})";

/** Why an export fails, with "FOLDER" for its folder; empty where it does not. */
std::string failure(const TestFolder& folder, const std::string& name = {}, const bool isDryRun = false) {
    TestProject project{Doors};
    LocalizationReport report;
    FileError error;
    const Containers::Array<UnsignedInt> languages = languagesOf({"en", "de"});
    const Export request{
        project.project(), FileSystem::disk(), languages, FallbackLanguage, ExportOptions{isDryRun, false}};
    const std::string path = name.empty() ? folder.path : folder / name;
    if(name.ends_with(".zip") ? request.toArchive(viewed(path), report, error)
                              : request.toFolder(viewed(path), report, error))
        return {};
    std::string text = copied(error.path) + ": " + copied(error.reason);
    if(const std::size_t at = text.find(folder.path); at != std::string::npos)
        text.replace(at, folder.path.size(), "FOLDER");
    return text;
}

constexpr const char* German = "{\n  \"door\": \"T\u00fcr\"\n}\n";

}

TEST(ExportLinks, LeadToTheFilesThatAreWritten) {
    TestFolder folder;
    folder.write("german.json", "{}");
    fs::create_directory(folder / "de");
    fs::create_symlink("../german.json", folder / "de/translation.json");
    folder.write("english/translation.json", "{}");
    fs::create_directory_symlink("english", folder / "en");
    EXPECT_EQ(failure(folder), "");
    EXPECT_EQ(folder.read("german.json"), German);
    EXPECT_TRUE(fs::is_symlink(folder / "de/translation.json"));
    EXPECT_NE(folder.read("english/translation.json").find("Door"), std::string::npos);
    EXPECT_TRUE(fs::is_symlink(folder / "en"));
    const auto time = fs::last_write_time(folder / "german.json");
    EXPECT_EQ(failure(folder), "");
    EXPECT_EQ(fs::last_write_time(folder / "german.json"), time);
}

TEST(ExportLinks, ToAFolderWithoutTheFileAreFollowed) {
    TestFolder folder;
    fs::create_directory(folder / "deutsch");
    fs::create_directory_symlink("deutsch", folder / "de");
    EXPECT_EQ(failure(folder), "");
    EXPECT_EQ(folder.read("deutsch/translation.json"), German);
}

TEST(ExportLinks, ThatLeadElsewhereFailTheExport) {
    const TestFolder folder;
    folder.write("i18n/de/x", "");
    folder.write("i18n/a/b/c.json", "{}");
    folder.write("out.json", "{}");
    folder.write("i18n/notes.txt", "{}");
    const std::string file = folder / "i18n/de/translation.json";
    const auto fails = [&](const char* const target, const std::string& reason) {
        fs::remove(file);
        fs::create_symlink(target, file);
        const auto before = folder.files();
        for(const bool isDryRun: {true, false})
            EXPECT_EQ(failure(folder, "i18n", isDryRun), "FOLDER/i18n/de/translation.json: is a link " + reason);
        fs::remove(file);
        EXPECT_FALSE(fs::exists(folder / "i18n/en")) << target;
    };
    fails("../../out.json", "that leads out of the folder");
    fails("gone.json", "that leads nowhere");
    fails("../a/b/c.json", "to a/b/c.json, where an export does not write");
    fails("../notes.txt", "to notes.txt, where an export does not write");
    folder.write("i18n/en/translation.json", "{}");
    fs::create_symlink("../en/translation.json", file);
    EXPECT_EQ(failure(folder, "i18n"),
        "FOLDER/i18n/de/translation.json: is a link to en/translation.json, which the export writes itself");
    EXPECT_EQ(folder.read("i18n/en/translation.json"), "{}");

    fs::remove_all(folder / "i18n/de");
    fs::create_directory(folder / "elsewhere");
    fs::create_directory_symlink("../elsewhere", folder / "i18n/de");
    EXPECT_EQ(failure(folder, "i18n"), "FOLDER/i18n/de: is a link that leads out of the folder");
}

TEST(ExportLinks, ToAnArchiveAreFollowedWhereverTheyLead) {
    TestFolder folder;
    folder.write("build/x", "");
    fs::create_symlink("build/i18n.zip", folder / "x.zip");
    EXPECT_EQ(failure(folder, "x.zip"), "FOLDER/x.zip: is a link that leads nowhere");
    ASSERT_EQ(failure(folder, "build/i18n.zip"), "");
    const std::string all = folder.read("build/i18n.zip");
    folder.write("build/i18n.zip", TestArchive{{{"en/translation.json", "{}"}, {"de/translation.json", "{}"}}}.make());
    EXPECT_EQ(failure(folder, "x.zip"), "");
    EXPECT_TRUE(fs::is_symlink(folder / "x.zip"));
    EXPECT_EQ(folder.read("build/i18n.zip"), all);
}

}
