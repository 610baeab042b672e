#include "ProjectStorage.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>

#include <Corrade/Utility/Debug.h>
#include <gtest/gtest.h>
#include <rapidjson/document.h>
#include <unistd.h>

#include "MemoryFileSystem.h"
#include "WarnedTest.h"
#include "support/OrdinaryUser.h"

namespace QuorvaneEngine {
namespace {

using QuorvaneEngine::Test::OrdinaryUser;

const std::string Project = "{\n"
                            "  \"languages\": {\n"
                            "    \"en\": {\"isDefault\": true}\n"
                            "  },\n"
                            "  \"localization\": {\n"
                            "    \"terms\": {\n"
                            "      \"a\": {\"sourceText\": \"/objects/o/text\"}\n"
                            "    }\n"
                            "  },\n"
                            "  \"objects\": {\n"
                            "    \"o\": {\"text\": \"Hello\"}\n"
                            "  }\n"
                            "}\n";
const std::string German = "{\n  \"a\": {\"text\": \"Hallo\"},\n  \"b\": {\"text\": \"\"}\n}\n";
const std::string French = "{\n  \"a\": {\"text\": \"Bonjour\"}\n}\n";

/* A small project in memory, and the warning of the last call. */
class ProjectStorageTest: public WarnedTest {
protected:
    ProjectStorageTest() {
        disk.put("/p/project.json", Project);
        disk.put("/p/localization/de.json", German);
        disk.put("/p/localization/fr.json", French);
    }

    bool open(const std::string& folder = "/p") { return open(storage, folder); }

    bool open(ProjectStorage& opened, const std::string& folder) {
        return warned([&] { return opened.open({folder.data(), folder.size()}, document); });
    }

    bool save() {
        return warned([&] { return storage.save(document); });
    }

    rapidjson::Value& translations() { return document["localization"]["translations"]; }

    rapidjson::Value copy(const rapidjson::Value& value) { return rapidjson::Value{value, document.GetAllocator()}; }

    MemoryFileSystem disk;
    ProjectStorage storage{disk};
    rapidjson::Document document{rapidjson::kObjectType};
};

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

struct BrokenCase {
    const char* name;
    const char* path;
    std::string bytes;
    const char* warning;
};

void PrintTo(const BrokenCase& item, std::ostream* out) { *out << item.name; }

class ProjectStorageRefuses: public ProjectStorageTest, public testing::WithParamInterface<BrokenCase> {};

INSTANTIATE_TEST_SUITE_P(Projects, ProjectStorageRefuses,
    testing::Values(BrokenCase{"EmptyProject", "/p/project.json", "", "/p/project.json:1:1: a value is missing"},
        BrokenCase{"AnArray", "/p/project.json", "\n  []", "/p/project.json:2:3: an object is expected here"},
        BrokenCase{"AText", "/p/project.json", "\"x\"", "/p/project.json:1:1: an object is expected here"},
        BrokenCase{"DeepNesting", "/p/project.json", "{\"a\":" + std::string(100000, '['),
            "/p/project.json:1:261: containers are nested more than 256 levels deep"},
        BrokenCase{"NotUtf8", "/p/project.json", "{\n\"a\": \"\xe4\"}", "/p/project.json:2:7: not valid UTF-8"},
        BrokenCase{"ADuplicateKey", "/p/project.json", "{\"a\": 1,\n \"a\": 2}",
            "/p/project.json:2:2: the name \"a\" stands twice in one object"},
        BrokenCase{"BrokenTranslations", "/p/localization/fr.json", "{\n  \"a\": {\"text\": \"x}\n}\n",
            "/p/localization/fr.json:2:20: control character U+000A"},
        BrokenCase{"AnArrayOfTranslations", "/p/localization/fr.json", "[]",
            "/p/localization/fr.json:1:1: an object is expected here"},
        BrokenCase{"NoLanguageCode", "/p/localization/de_DE.json", "{}",
            "/p/localization/de_DE.json: is not named by a language code"},
        BrokenCase{"NoName", "/p/localization/x.json", "{}", "/p/localization/x.json: is not named by a language code"},
        BrokenCase{"TranslationsThatAreAFolder", "/p/localization/it.json/x", "",
            "/p/localization/it.json: cannot be read: Is a directory"},
        BrokenCase{"TranslationsTwice", "/p/project.json", R"({"localization": {"translations": {"de": {}}}})",
            "/p/localization/de.json: project.json holds translations into this language, too"},
        BrokenCase{"ALocalizationThatIsNoObject", "/p/project.json", R"({"localization": []})",
            "/p/localization/de.json: \"/localization\" of project.json is no object to hold this"},
        BrokenCase{"TranslationsThatAreNoObject", "/p/project.json", R"({"localization": {"translations": 1}})",
            "/p/localization/de.json: \"/localization/translations\" of project.json is no object to hold this"},
        BrokenCase{"AJournalThatIsNone", "/p/.editor/save/journal", "x",
            "/p/.editor/save/journal: is no journal of a save; without it the files are taken as they are"}),
    [](const auto& info) { return std::string{info.param.name}; });

TEST_P(ProjectStorageRefuses, WithFilePlaceAndReasonAndChangesNothing) {
    ASSERT_TRUE(open());
    const std::string before = textOf(document);
    disk.put("/q/project.json", "{}");
    disk.put(GetParam().path, GetParam().bytes);
    const auto files = disk.files();

    EXPECT_FALSE(open());
    EXPECT_EQ(warning, std::string{"ProjectStorage::open(): "} + GetParam().warning + "\n");
    EXPECT_EQ(textOf(document), before);
    EXPECT_EQ(disk.files(), files);
    EXPECT_EQ(disk.changes, 0);
    EXPECT_TRUE(storage.isSaved(document));
}

TEST_F(ProjectStorageTest, WhatIsNoFolderOfAProjectIsRefused) {
    disk.putFolder("/empty");
    disk.put("/file", "x");
    disk.putFolder("/folders/project.json");
    disk.put("/translations/project.json", "{}");
    disk.put("/translations/localization", "x");
    const std::pair<std::string, std::string> cases[]{
        {"/missing", "/missing/project.json: cannot be read: No such file or directory"},
        {"/empty", "/empty/project.json: cannot be read: No such file or directory"},
        {"/file", "/file/project.json: cannot be read: Not a directory"},
        {"/folders", "/folders/project.json: cannot be read: Is a directory"},
        {"/translations", "/translations/localization: cannot be read: Not a directory"},
        {"", ": is no folder's name"},
        {std::string{"/p\0x", 4}, std::string{"/p\0x", 4} + ": is no folder's name"},
    };
    for(const auto& [folder, reason]: cases) {
        EXPECT_FALSE(open(folder));
        EXPECT_EQ(warning, "ProjectStorage::open(): " + reason + "\n");
        EXPECT_EQ(storage.folder(), "");
    }
    EXPECT_EQ(disk.changes, 0);
}

TEST_F(ProjectStorageTest, AProjectCutAtAnyByteIsRefused) {
    for(const auto& [path, bytes]: disk.files()) {
        // Without its last line feed it is still whole.
        for(std::size_t size = 0; size != bytes.size() - 1; ++size) {
            disk.put(path, bytes.substr(0, size));
            EXPECT_FALSE(open()) << path << " " << size;
            EXPECT_TRUE(warning.starts_with("ProjectStorage::open(): " + path + ":")) << warning;
            EXPECT_EQ(textOf(document), "{}\n");
        }
        disk.put(path, bytes.substr(0, bytes.size() - 1));
        EXPECT_TRUE(open());
        document.SetObject();
        disk.put(path, bytes);
    }
}

TEST_F(ProjectStorageTest, AStepThatFailsWhileOpeningIsToldOf) {
    ASSERT_TRUE(open());
    const std::size_t begin = disk.steps();
    ASSERT_TRUE(open());
    const std::size_t steps = disk.steps() - begin;
    std::size_t failures = 0;
    for(std::size_t step = 0; step != steps; ++step)
        for(const int error: {EACCES, EIO}) {
            document.SetObject();
            disk.failAt(step, error);
            if(open()) continue;
            ++failures;
            EXPECT_NE(warning.find(std::string{": cannot be read: "} + std::strerror(error)), std::string::npos)
                << warning;
            EXPECT_EQ(textOf(document), "{}\n");
        }
    // All but two, which look for what a save might have left.
    EXPECT_EQ(failures, 2 * (steps - 2));
    EXPECT_EQ(disk.changes, 0);
}

TEST_F(ProjectStorageTest, ASaveWithoutFolderIsRefused) {
    EXPECT_FALSE(save());
    EXPECT_EQ(warning, "ProjectStorage::save(): the project has no folder\n");
}

TEST_F(ProjectStorageTest, WhatNoFileCanHoldIsNotSaved) {
    ASSERT_TRUE(open());
    document["objects"]["o"]["text"].SetString("\xff");
    EXPECT_FALSE(save());
    EXPECT_EQ(warning, "ProjectStorage::save(): /p/project.json: /objects/o/text: a text is not valid UTF-8\n");
    document["objects"]["o"]["text"].SetString("");
    translations()["de"]["a"]["text"].SetString("\xff");
    EXPECT_FALSE(save());
    EXPECT_EQ(warning, "ProjectStorage::save(): /p/localization/de.json: /a/text: a text is not valid UTF-8\n");
    document.SetArray();
    EXPECT_FALSE(save());
    EXPECT_EQ(warning, "ProjectStorage::save(): /p/project.json: the root is no object\n");
    EXPECT_FALSE(storage.isSaved(document));
    EXPECT_EQ(disk.changes, 0);
}

TEST_F(ProjectStorageTest, WhereverThePowerGoesDuringASaveTheProjectIsTheOldOrTheNewOne) {
    const auto change = [this] {
        document["objects"]["o"]["text"].SetString("Hi");
        translations()["de"]["a"]["text"].SetString("He");
        translations().RemoveMember("fr");
        rapidjson::Value japanese = copy(translations()["de"]);
        translations().AddMember("ja", japanese, document.GetAllocator());
    };
    std::size_t old = 0, fresh = 0;
    for(std::size_t step = 0;; ++step) {
        bool isCut = false;
        for(unsigned seed = 0; seed != 12; ++seed) {
            disk = {};
            disk.put("/p/project.json", Project);
            disk.put("/p/localization/de.json", German);
            disk.put("/p/localization/fr.json", French);
            ASSERT_TRUE(open());
            const std::string before = textOf(document);
            change();
            const std::string after = textOf(document);
            disk.losePowerAfter(step);
            try {
                ASSERT_TRUE(storage.save(document));
            } catch(const MemoryFileSystem::PowerLoss&) {
                isCut = true;
            }
            disk.powerOn(seed < 4 ? MemoryFileSystem::Kept(seed) : MemoryFileSystem::Kept::AnyPart, seed);
            ProjectStorage next{disk};
            ASSERT_TRUE(open(next, "/p")) << warning;
            const std::string found = textOf(document);
            ASSERT_TRUE(found == before || found == after) << "step " << step << ": " << found;
            (found == before ? old : fresh)++;
        }
        if(!isCut) break;
    }
    EXPECT_GT(old, 100);
    EXPECT_GT(fresh, 100);
}

TEST_F(ProjectStorageTest, AStepThatFailsWhileSavingLeavesDiskDocumentAndMarkAsTheyWere) {
    const auto before = disk.files();
    const auto edit = [&] {
        for(const auto& [path, bytes]: before) disk.put(path, bytes);
        EXPECT_TRUE(open());
        document["objects"]["o"]["text"].SetString("Hi");
        translations().RemoveMember("fr");
    };
    edit();
    ASSERT_TRUE(save());
    edit();
    const std::string changed = textOf(document);
    const std::size_t begin = disk.steps();
    ASSERT_TRUE(save());
    const std::size_t steps = disk.steps() - begin;
    for(const int error: {ENOSPC, EACCES, EIO}) {
        std::size_t failures = 0;
        for(std::size_t step = 0; step != steps; ++step) {
            edit();
            disk.failAt(step, error);
            if(save()) continue;
            ++failures;
            EXPECT_TRUE(warning.starts_with("ProjectStorage::save(): /p")) << warning;
            EXPECT_TRUE(warning.ends_with(std::string{": "} + std::strerror(error) + "\n")) << warning;
            EXPECT_EQ(disk.files(), before) << "step " << step;
            EXPECT_EQ(textOf(document), changed);
            EXPECT_FALSE(storage.isSaved(document));
        }
        // All steps but those that look whether something is there, or only tidy up.
        EXPECT_GT(failures, steps * 2 / 3);
    }
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

/* On the real disk. */
class ProjectStorageDiskTest: public ProjectStorageTest {
protected:
    ProjectStorageDiskTest() {
        std::string name = (std::filesystem::temp_directory_path() / "quorvane-XXXXXX").string();
        folder = mkdtemp(name.data());
        std::filesystem::create_directory(folder + "/localization");
        std::ofstream{folder + "/project.json"} << Project;
        std::ofstream{folder + "/localization/de.json"} << German;
    }
    ~ProjectStorageDiskTest() override {
        std::filesystem::permissions(folder, std::filesystem::perms::owner_all);
        std::filesystem::permissions(folder + "/localization", std::filesystem::perms::owner_all);
        std::filesystem::remove_all(folder);
    }

    std::string read(const std::string& name) {
        std::ifstream file{folder + "/" + name, std::ios::binary};
        return {std::istreambuf_iterator<char>{file}, std::istreambuf_iterator<char>{}};
    }

    bool saveAfterEdit() {
        document["objects"]["o"]["text"].SetString("Hi");
        translations()["de"]["a"]["text"].SetString("He");
        return warned([&] { return disk.save(document); });
    }

    ProjectStorage disk{FileSystem::disk()};
    std::string folder;
};

TEST_F(ProjectStorageDiskTest, AProjectIsOpenedSavedAndOpenedAgain) {
    ASSERT_TRUE(open(disk, folder)) << warning;
    ASSERT_TRUE(saveAfterEdit()) << warning;
    const std::string before = textOf(document);
    EXPECT_NE(read("project.json").find("\"Hi\""), std::string::npos);
    EXPECT_NE(read("localization/de.json").find("\"He\""), std::string::npos);
    EXPECT_EQ(read(".editor/.gitignore"), "*\n");
    EXPECT_FALSE(std::filesystem::exists(folder + "/.editor/save"));
    ASSERT_TRUE(open(disk, folder));
    EXPECT_EQ(textOf(document), before);
}

TEST_F(ProjectStorageDiskTest, AProjectThatAnotherProgramHasLockedIsReadAndNotSaved) {
    {
        ProjectStorage other{FileSystem::disk()};
        ASSERT_TRUE(other.lock({folder.data(), folder.size()}));
        ASSERT_TRUE(open(disk, folder)) << warning;
        const std::string before = read("project.json");
        EXPECT_FALSE(saveAfterEdit());
        EXPECT_EQ(
            warning, "ProjectStorage::save(): " + folder + ": another program has the project open for writing\n");
        EXPECT_EQ(read("project.json"), before);
        EXPECT_FALSE(disk.isSaved(document));
    }
    EXPECT_TRUE(saveAfterEdit()) << warning;
}

TEST_F(ProjectStorageDiskTest, WhoHasTheLockOpensAndSavesAndSharesItWithNobody) {
    const Containers::StringView path{folder.data(), folder.size()};
    ASSERT_TRUE(disk.lock(path));
    EXPECT_TRUE(disk.lock(path));
    ProjectStorage other{FileSystem::disk()};
    Containers::String out;
    {
        Corrade::Utility::Warning redirect{&out};
        EXPECT_FALSE(other.lock(path));
    }
    EXPECT_EQ(text(out), "ProjectStorage::open(): " + folder + ": another program has the project open for writing\n");
    ASSERT_TRUE(open(disk, folder)) << warning;
    EXPECT_TRUE(saveAfterEdit()) << warning;
}

TEST_F(ProjectStorageDiskTest, ASaveOfAnotherProgramIsNotRecoveredWhileItIsRunning) {
    const std::string journal = "quorvane-journal 1\ncomplete\nreplace project.json\nend\n";
    std::filesystem::create_directories(folder + "/.editor/save");
    std::ofstream{folder + "/.editor/save/journal"} << journal;
    std::ofstream{folder + "/.editor/save/0.new"} << "{}";
    const std::string before = read("project.json");
    {
        ProjectStorage other{FileSystem::disk()};
        ASSERT_TRUE(other.lock({folder.data(), folder.size()}));
        EXPECT_FALSE(open(disk, folder));
        EXPECT_EQ(
            warning, "ProjectStorage::open(): " + folder + ": another program has the project open for writing\n");
        EXPECT_EQ(read("project.json"), before);
        EXPECT_EQ(read(".editor/save/journal"), journal);
    }
    EXPECT_TRUE(open(disk, folder)) << warning;
    EXPECT_EQ(read("project.json"), "{}");
}

TEST_F(ProjectStorageDiskTest, AFolderThatCannotBeWrittenToIsToldOfAndNothingChanges) {
    const OrdinaryUser user{folder};
    if(!user.isOrdinary) GTEST_SKIP() << "permissions do not bind the superuser, who cannot become another user here";
    ASSERT_TRUE(open(disk, folder)) << warning;
    const std::pair<const char*, const char*> cases[]{
        {"", "/.editor: cannot be made"}, {"/localization", "/localization/de.json: cannot be put in place"}};
    for(const auto& [place, reason]: cases) {
        std::filesystem::permissions(
            folder + place, std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
        EXPECT_FALSE(saveAfterEdit());
        EXPECT_EQ(warning, "ProjectStorage::save(): " + folder + reason + ": Permission denied\n");
        EXPECT_EQ(read("project.json"), Project);
        EXPECT_EQ(read("localization/de.json"), German);
        EXPECT_FALSE(std::filesystem::exists(folder + "/.editor/save"));
        std::filesystem::permissions(folder + place, std::filesystem::perms::owner_all);
    }
    EXPECT_TRUE(saveAfterEdit()) << warning;
}

TEST_F(ProjectStorageDiskTest, AFileThatCannotBeReadIsToldOf) {
    const OrdinaryUser user{folder};
    if(!user.isOrdinary) GTEST_SKIP() << "permissions do not bind the superuser, who cannot become another user here";
    for(const char* const name: {"/project.json", "/localization/de.json", "/localization"}) {
        std::filesystem::permissions(folder + name, std::filesystem::perms::none);
        EXPECT_FALSE(open(disk, folder));
        EXPECT_EQ(warning, "ProjectStorage::open(): " + folder + name + ": cannot be read: Permission denied\n");
        std::filesystem::permissions(folder + name, std::filesystem::perms::owner_all);
    }
}

TEST_F(ProjectStorageDiskTest, AFileInTheWayOfASaveIsToldOf) {
    std::ofstream{folder + "/.editor"} << "x";
    ASSERT_TRUE(open(disk, folder)) << warning;
    EXPECT_FALSE(saveAfterEdit());
    EXPECT_EQ(warning, "ProjectStorage::save(): " + folder + "/.editor/save: cannot be made: Not a directory\n");
    EXPECT_EQ(read("project.json"), Project);
    EXPECT_EQ(read("localization/de.json"), German);
}

TEST_F(ProjectStorageDiskTest, AFolderInPlaceOfAFileIsToldOfAndTheOthersAreAsTheyWere) {
    ASSERT_TRUE(open(disk, folder));
    std::filesystem::remove(folder + "/localization/de.json");
    std::filesystem::create_directory(folder + "/localization/de.json");
    EXPECT_FALSE(saveAfterEdit());
    EXPECT_TRUE(warning.starts_with("ProjectStorage::save(): " + folder + "/localization/de.json: ")) << warning;
    EXPECT_EQ(read("project.json"), Project);
    EXPECT_FALSE(disk.isSaved(document));
}

}
}
