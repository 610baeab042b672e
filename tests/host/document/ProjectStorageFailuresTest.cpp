#include <cerrno>
#include <cstring>
#include <ostream>
#include <string>
#include <utility>

#include "ProjectStorageTest.h"

/* What is no project, and steps that fail or lose their power while one is opened or saved. */

namespace QuorvaneEngine {
namespace {

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

}
}
