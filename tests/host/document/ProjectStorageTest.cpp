#include "ProjectStorage.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>

#include "ProjectStorageTest.h"

namespace QuorvaneEngine {
namespace {

TEST_F(ProjectStorageTest, OpensAllFilesAsOneDocument) {
    ASSERT_TRUE(open());
    EXPECT_EQ(warning, "");
    EXPECT_EQ(textOf(document),
        R"({"languages": {"en": {"isDefault": true}}, )"
        R"("localization": {"terms": {"a": {"sourceText": "/objects/o/text"}}, )"
        R"("translations": {"de": {"a": {"text": "Hallo"}, "b": {"text": ""}}, "fr": {"a": {"text": "Bonjour"}}}}, )"
        R"("objects": {"o": {"text": "Hello"}}})"
        "\n");
    EXPECT_EQ(storage.folder(), "/p");
}

TEST_F(ProjectStorageTest, AProjectWithoutTranslationsNeedsNoFolderForThem) {
    disk.put("/q/project.json", "{}");
    ASSERT_TRUE(open("/q"));
    EXPECT_EQ(textOf(document), "{}\n");
}

TEST_F(ProjectStorageTest, TranslationsMakeTheirPlaceInTheDocument) {
    disk.put("/q/project.json", "{}");
    disk.put("/q/localization/de.json", German);
    ASSERT_TRUE(open("/q"));
    EXPECT_STREQ(document["localization"]["translations"]["de"]["a"]["text"].GetString(), "Hallo");
}

TEST_F(ProjectStorageTest, TextsOfTheDefaultLanguageAmongTheTranslationsAreToldOf) {
    disk.put("/q/project.json", R"({"languages": {"fr": {}, "en": {"isDefault": true}, "de": {"isDefault": true}}})");
    disk.put("/q/localization/fr.json", R"({"a": {"text": "A"}})");
    disk.put("/q/localization/en.json", "{}");
    ASSERT_TRUE(open("/q"));
    EXPECT_EQ(warning, "");
    disk.put("/q/localization/en.json", R"({"a": {"text": "A"}})");
    const auto before = disk.files();
    ASSERT_TRUE(open("/q"));
    EXPECT_EQ(warning,
        "ProjectStorage::open(): /q/localization/en.json: is of the default language, whose texts are those of the "
        "terms in project.json: it is passed over\n");
    for(const char* const languages: {"1", "{}", R"({"en": 1})", R"({"en": {"isDefault": 1}})", R"({"fr": {}})"}) {
        disk.put("/q/project.json", R"({"languages": )" + std::string{languages} + '}');
        ASSERT_TRUE(open("/q"));
        EXPECT_EQ(warning, "") << languages;
    }
    disk.put("/q/project.json", before.at("/q/project.json"));
    EXPECT_EQ(disk.files(), before);
}

TEST_F(ProjectStorageTest, HiddenFilesAndFilesOfOtherTypesAreLeftAlone) {
    for(const char* const name: {".#de.json", "README.md", "de.json~", "de.json.orig"})
        disk.put(std::string{"/p/localization/"} + name, "x");
    ASSERT_TRUE(open());
    document["objects"]["o"]["text"].SetString("x");
    translations().RemoveMember("fr");
    ASSERT_TRUE(save());
    EXPECT_EQ(disk.files().size(), 6);
}

TEST_F(ProjectStorageTest, TheFolderIsMadeAbsolute) {
    disk.put(std::filesystem::current_path().string() + "/q/project.json", "{}");
    for(const char* const folder: {"q", "./q/", "q//", "r/../q"}) {
        ASSERT_TRUE(open(folder)) << warning;
        EXPECT_EQ(text(storage.folder()), std::filesystem::current_path().string() + "/q");
    }
}

TEST_F(ProjectStorageTest, SavingAnUnchangedProjectChangesNothingOnDisk) {
    disk.put("/p/project.json", "\xef\xbb\xbf{\"b\":{},\r\n\"a\":[1,  2]}");
    ASSERT_TRUE(open());
    EXPECT_TRUE(storage.isSaved(document));
    EXPECT_TRUE(save());
    EXPECT_EQ(disk.changes, 0);
}

TEST_F(ProjectStorageTest, WritesOnlyTheFilesWhoseContentChanged) {
    ASSERT_TRUE(open());
    translations()["de"]["a"]["text"].SetString("Guten Tag");
    EXPECT_FALSE(storage.isSaved(document));
    // Others have changed what this one has not, which is no reason to undo it.
    disk.put("/p/project.json", "{}");
    EXPECT_TRUE(save());
    EXPECT_TRUE(storage.isSaved(document));
    auto files = disk.files();
    EXPECT_EQ(files["/p/project.json"], "{}");
    EXPECT_EQ(files["/p/localization/fr.json"], French);
    EXPECT_EQ(
        files["/p/localization/de.json"], "{\n  \"a\": {\"text\": \"Guten Tag\"},\n  \"b\": {\"text\": \"\"}\n}\n");
}

TEST_F(ProjectStorageTest, TermsOfALanguageAreWrittenInByteOrder) {
    ASSERT_TRUE(open());
    for(const char* const key: {"\xc3\xa4", "Z", "a.b", "0"}) {
        rapidjson::Value name{key, document.GetAllocator()};
        translations()["de"].AddMember(name, rapidjson::Value{1}, document.GetAllocator());
    }
    ASSERT_TRUE(save());
    EXPECT_EQ(disk.files()["/p/localization/de.json"],
        "{\n  \"0\": 1,\n  \"Z\": 1,\n  \"a\": {\"text\": \"Hallo\"},\n  \"a.b\": 1,\n  \"b\": {\"text\": \"\"},\n  "
        "\"\xc3\xa4\": 1\n}\n");
}

TEST_F(ProjectStorageTest, FilesOfLanguagesAppearAndVanish) {
    ASSERT_TRUE(open());
    translations().RemoveMember("de");
    translations().AddMember("pt-BR", rapidjson::Value{rapidjson::kObjectType}, document.GetAllocator());
    ASSERT_TRUE(save());
    EXPECT_EQ(disk.files(),
        (std::map<std::string, std::string>{{"/p/project.json", Project}, {"/p/localization/fr.json", French},
            {"/p/localization/pt-BR.json", "{}\n"}}));

    const std::string before = textOf(document);
    ASSERT_TRUE(open());
    EXPECT_EQ(textOf(document), before);
    document["localization"].RemoveMember("translations");
    ASSERT_TRUE(save());
    EXPECT_EQ(disk.files(), (std::map<std::string, std::string>{{"/p/project.json", Project}}));
}

TEST_F(ProjectStorageTest, WhatIsNoFileOfTranslationsStaysInTheProject) {
    const std::string odd =
        R"({"localization": {"translations": {"de_DE": {"a": 1}, "it": 5, "../x": {}, "es": {"b": 2}, "": {}}}})"
        "\n";
    disk.put("/q/project.json", odd);
    ASSERT_TRUE(open("/q"));
    EXPECT_EQ(textOf(document), odd);
    document.AddMember("x", 1, document.GetAllocator());
    ASSERT_TRUE(save());
    auto files = disk.files();
    EXPECT_EQ(files["/q/localization/es.json"], "{\n  \"b\": 2\n}\n");
    EXPECT_EQ(files["/q/project.json"],
        "{\n  \"localization\": {\n    \"translations\": {\n      \"de_DE\": {\"a\": 1},\n      \"it\": 5,\n      "
        "\"../x\": {},\n"
        "      \"\": {}\n    }\n  },\n  \"x\": 1\n}\n");
    ASSERT_TRUE(open("/q"));
    EXPECT_EQ(document["localization"]["translations"]["es"]["b"].GetInt(), 2);
}

TEST_F(ProjectStorageTest, KeysOfEveryWrongTypeAreKept) {
    for(const char* const value: {"null", "5", "\"x\"", "[]", "[{}]", "true"})
        for(const char* const form: {"{\"localization\": @}\n", "{\"localization\": {\"translations\": @}}\n",
                "{\"languages\": @}\n", "{\"localization\": {\"terms\": @}}\n", "{\"objects\": @}\n"}) {
            std::string odd{form};
            odd.replace(odd.find('@'), 1, value);
            disk.put("/q/project.json", odd);
            ASSERT_TRUE(open("/q")) << odd;
            EXPECT_EQ(textOf(document), odd);
            document.AddMember("x", 1, document.GetAllocator());
            ASSERT_TRUE(save());
            ASSERT_TRUE(open("/q"));
            EXPECT_EQ(textOf(document), odd.substr(0, odd.size() - 2) + ", \"x\": 1}\n");
        }
}

TEST_F(ProjectStorageTest, ASavedSampleIsTheSampleByteForByte) {
    const std::filesystem::path sample{QUORVANE_SOURCE_DIR "/samples/lighthouse"};
    std::map<std::string, std::string> expected;
    for(const auto& entry: std::filesystem::recursive_directory_iterator{sample}) {
        // An export lies beside the project's own files.
        if(entry.path().extension() != ".json" || entry.path().string().find("/i18n/") != std::string::npos) continue;
        std::ifstream file{entry.path(), std::ios::binary};
        const std::string path = "/s/" + std::filesystem::relative(entry.path(), sample).string();
        disk.put(path, expected[path] = {std::istreambuf_iterator<char>{file}, std::istreambuf_iterator<char>{}});
    }
    ASSERT_EQ(expected.size(), 7);
    ASSERT_TRUE(open("/s")) << warning;

    // From a document that owes nothing to these files.
    disk.put("/t/project.json", "{}");
    rapidjson::Document loaded;
    loaded.CopyFrom(document, loaded.GetAllocator());
    ASSERT_TRUE(open("/t"));
    document.CopyFrom(loaded, document.GetAllocator());
    ASSERT_TRUE(save()) << warning;
    auto files = disk.files();
    for(const auto& [path, bytes]: expected) EXPECT_TRUE(files["/t" + path.substr(2)] == bytes) << path;
}

struct CodeCase {
    const char* text;
    bool isCode;
};

TEST(ProjectStorage, LanguageCodesAreBuiltLikeBcp47) {
    for(const auto& [text, isCode]: {CodeCase{"de", true}, {"pt-BR", true}, {"zh-Hant-TW", true}, {"yue", true},
            {"es-419", true}, {"ca-valencia", true}, {"sl-rozaj-1994", true}, {"de-x", true}, {"", false}, {"d", false},
            {"de_DE", false}, {"de-", false}, {"-de", false}, {"de--DE", false}, {"d3", false}, {"../de", false},
            {"de.json", false}, {"deutschland", false}, {"de-deutschland", false}, {"d\xc3\xa4", false},
            {"de-a-b-c-d-e-f-g-h-i-j-k-l-m-n-o-p-q", false}})
        EXPECT_EQ(ProjectStorage::isLanguageCode(text), isCode) << text;
}

TEST_F(ProjectStorageTest, WhatSomebodyElseHasWrittenIsNotWrittenOver) {
    ASSERT_TRUE(open());
    translations()["de"]["a"]["text"].SetString("Guten Tag");
    document["objects"]["o"]["text"].SetString("Hi");
    disk.put("/p/localization/de.json", "{}");
    EXPECT_FALSE(save());
    const std::string reason = " was changed by another program since it was read, and is not written over\n";
    EXPECT_EQ(warning, "ProjectStorage::save(): /p/localization/de.json:" + reason);
    EXPECT_EQ(disk.files()["/p/project.json"], Project);
    EXPECT_EQ(disk.files()["/p/localization/de.json"], "{}");
    EXPECT_FALSE(storage.isSaved(document));

    // Neither is a file that another program has made, nor one to be removed.
    ASSERT_TRUE(open());
    disk.put("/p/localization/es.json", "{}");
    translations().AddMember("es", rapidjson::Value{rapidjson::kObjectType}, document.GetAllocator());
    EXPECT_FALSE(save());
    EXPECT_EQ(warning, "ProjectStorage::save(): /p/localization/es.json:" + reason);
    translations().RemoveMember("es");
    translations().RemoveMember("fr");
    disk.put("/p/localization/fr.json", "{}");
    EXPECT_FALSE(save());
    EXPECT_EQ(warning, "ProjectStorage::save(): /p/localization/fr.json:" + reason);
}

TEST_F(ProjectStorageTest, AnEarlierSaveThatIsFinishedAccountsForItsOwnFilesAlone) {
    ASSERT_TRUE(open());
    const std::string german = "{\n  \"a\": {\"text\": \"Servus\"}\n}\n", foreign = "{}";
    disk.put("/p/.editor/save/journal", "quorvane-journal 1\ncomplete\nreplace localization/de.json\nend\n");
    disk.put("/p/.editor/save/0.new", german);
    disk.put("/p/localization/fr.json", foreign);
    for(const char* const code: {"de", "fr"}) translations()[code]["a"]["text"].SetString("X");
    EXPECT_FALSE(save());
    EXPECT_EQ(warning,
        "ProjectStorage::save(): /p/localization/fr.json: was changed by another program since it was read, and is "
        "not written over\n");
    EXPECT_EQ(disk.files().at("/p/localization/fr.json"), foreign);
    translations()["fr"]["a"]["text"].SetString("Bonjour");
    EXPECT_TRUE(save()) << warning;
    EXPECT_NE(disk.files().at("/p/localization/de.json").find("\"X\""), std::string::npos);
    EXPECT_EQ(disk.files().at("/p/localization/fr.json"), foreign);
}

TEST_F(ProjectStorageTest, TheDocumentCanBeKeptOverWhatSomebodyElseHasWritten) {
    ASSERT_TRUE(open());
    disk.put("/p/project.json", "{}");
    disk.put("/p/localization/es.json", "{}");
    disk.removeFile("/p/localization/de.json");
    Containers::String changed;
    EXPECT_EQ(storage.look(&changed), DiskState::Changed);
    EXPECT_EQ(text(changed), "/p/project.json and 2 more");
    storage.keepDocument();
    EXPECT_EQ(storage.look(), DiskState::Same);
    EXPECT_FALSE(storage.isSaved(document));
    ASSERT_TRUE(save()) << warning;
    EXPECT_EQ(disk.files(),
        (std::map<std::string, std::string>{
            {"/p/localization/de.json", German}, {"/p/localization/fr.json", French}, {"/p/project.json", written()}}));
    EXPECT_TRUE(storage.isSaved(document));
    EXPECT_EQ(storage.look(), DiskState::Same);
}

TEST_F(ProjectStorageTest, AProjectThatIsGoneIsWrittenAnew) {
    for(const bool isFolderGone: {false, true}) {
        disk.put("/p/localization/de.json", German);
        disk.put("/p/localization/fr.json", French);
        ASSERT_TRUE(open()) << warning;
        translations().RemoveMember("fr");
        for(const char* const file: {"/p/project.json", "/p/localization/de.json", "/p/localization/fr.json"})
            disk.removeFile(file);
        if(isFolderGone)
            for(const char* const file: {"/p/.editor/.gitignore", "/p/localization"}) disk.removeFile(file);
        if(isFolderGone)
            for(const char* const folder: {"/p/.editor", "/p/localization", "/p"}) disk.removeFolder(folder);
        EXPECT_EQ(disk.exists("/p"), !isFolderGone);
        EXPECT_EQ(storage.look(), DiskState::Gone);
        ASSERT_TRUE(save()) << warning;
        EXPECT_EQ(disk.files(),
            (std::map<std::string, std::string>{{"/p/localization/de.json", German}, {"/p/project.json", written()}}));
        EXPECT_EQ(storage.look(), DiskState::Same);
    }
}

TEST_F(ProjectStorageTest, AProjectThatIsGoneWithAllAroundItFailsWithASentence) {
    disk.put("/deep/p/project.json", Project);
    ASSERT_TRUE(open("/deep/p")) << warning;
    disk.removeFile("/deep/p/project.json");
    disk.removeFolder("/deep/p");
    disk.removeFolder("/deep");
    EXPECT_FALSE(save());
    EXPECT_EQ(warning, "ProjectStorage::save(): /deep/p/.editor: cannot be made: No such file or directory\n");
    EXPECT_EQ(storage.look(), DiskState::Gone);
    EXPECT_FALSE(storage.isSaved(document));
    disk.putFolder("/deep");
    EXPECT_TRUE(save()) << warning;
    EXPECT_EQ(disk.files()["/deep/p/project.json"], written());
}

}
}
