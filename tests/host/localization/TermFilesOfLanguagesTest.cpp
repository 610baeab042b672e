#include "TermFiles.h"

#include <filesystem>

#include "../../support/OrdinaryUser.h"
#include "FoundTermFiles.h"
#include "LanguageLookup.h"
#include "TestArchive.h"

namespace QuorvaneEngine {

namespace {

const UnsignedInt German[]{UnsignedInt(findLanguage("de"))};

}

TEST(TermFilesOfLanguages, OnlyThoseThatAreAskedForAreRead) {
    TestFolder folder;
    for(const char* const name: {"de/menu.json", "de.json", "fr.json", "ja/menu.json"}) folder.write(name, "1");
    EXPECT_EQ(found(folder, {}, {}, German), "de menu=1\nde=1\n");
    folder.write("a.zip", TestArchive{{{"de/menu.json", "1"}, {"fr.json", "2"}, {"i18n/ja.json", "3"}}}.make());
    EXPECT_EQ(found(folder, "a.zip", {}, German), "de menu=1\n");
}

TEST(TermFilesOfLanguages, FilesOfOthersMayBeAsTheyWant) {
    TestFolder outside;
    outside.write("translation.json", "1");
    TestFolder folder;
    folder.write("de.json", "1");
    folder.write("ja.json", "2");
    folder.write("ja/translation.json", "3");
    folder.write("fr/m\n.json", "4");
    folder.write("fr/m\xff.json", "5");
    folder.write("it/quests/first.json", "6");
    std::filesystem::create_directory(folder / "ko.json");
    std::filesystem::create_symlink(outside / "translation.json", folder / "es.json");
    std::filesystem::create_directory_symlink(outside.path, folder / "ru");
    EXPECT_EQ(found(folder, {}, {}, German), "de=1\n");
    const std::string all = found(folder);
    for(const char* const name: {"ja.json", "fr/m\\n.json", "es.json", "ru/translation.json"})
        EXPECT_NE(all.find("refused: FOLDER/" + std::string{name}), std::string::npos) << all;
    EXPECT_NE(all.find("notice: it/quests/first.json"), std::string::npos) << all;
    std::filesystem::remove_all(folder / "fr");
    EXPECT_NE(found(folder).find("refused: FOLDER/ko.json: cannot be read"), std::string::npos);
}

TEST(TermFilesOfLanguages, FilesOfOthersMayBeUnreadable) {
    TestFolder folder;
    folder.write("de/translation.json", "1");
    folder.write("fr.json", "2");
    folder.write("enGB/translation.json", "3");
    const LanguageMapping map[]{{"enGB", UnsignedInt(findLanguage("en-GB"))}};
    const QuorvaneEngine::Test::OrdinaryUser user{folder.path};
    if(!user.isOrdinary) GTEST_SKIP() << "a superuser reads everything";
    for(const char* const name: {"fr.json", "enGB"})
        std::filesystem::permissions(folder / name, std::filesystem::perms::none);
    EXPECT_EQ(found(folder, {}, map, German), "de=1\n");
    EXPECT_NE(
        found(folder, {}, map).find("refused: FOLDER/enGB: cannot be read: Permission denied"), std::string::npos);
    std::filesystem::permissions(folder / "enGB", std::filesystem::perms::owner_all);
}

TEST(TermFilesOfLanguages, EntriesOfOthersMayBeDamagedOrTwoOfOne) {
    TestFolder folder;
    TestArchive archive{{{"de.json", "1"}, {"fr.json", "2"}, {"ja.json", "3"}, {"ja/translation.json", "4"},
        {"fr/quests/first.json", "5"}, {"game/fr/quests/first.json", "6"}}};
    archive.entries[1].crcLie = 1;
    folder.write("a.zip", archive.make());
    EXPECT_EQ(found(folder, "a.zip", {}, German), "de=1\n");
    EXPECT_NE(found(folder, "a.zip").find("refused: FOLDER/a.zip/fr.json: is damaged: CRC error\n"), std::string::npos);
}

TEST(TermFilesOfLanguages, WhatIsWrongWithOneThatIsAskedForIsRefused) {
    TestFolder folder;
    folder.write("de/translation.json", "1");
    folder.write("de.json", "2");
    folder.write("fr.json", "3");
    EXPECT_EQ(found(folder, {}, {}, German),
        "de=1\nde=2\n"
        "refused: FOLDER/de.json: holds the same as FOLDER/de/translation.json: one language, one namespace\n");
}

TEST(TermFilesOfLanguages, WhereThereAreOnlyOthersNothingIsRead) {
    for(const char* const name: {"fr.json", "fr/translation.json", "fr/quests/first.json"}) {
        TestFolder folder;
        folder.write(name, "1");
        // What lies around is looked at where nothing else is there.
        folder.write("old/de.json", "2");
        EXPECT_EQ(found(folder, {}, {}, German), "notice: old/de.json: no language has the code old\n") << name;
    }
    TestFolder folder;
    folder.write("a.zip", TestArchive{{{"fr/quests/first.json", "1"}}}.make());
    EXPECT_EQ(found(folder, "a.zip", {}, German), "");
    EXPECT_EQ(found(TestFolder{}, {}, {}, German), "refused: FOLDER" + std::string{NoTerms});
}

TEST(TermFilesOfLanguages, AFolderLiesAroundThoseOfOthersToo) {
    TestFolder folder;
    folder.write("i18n/fr.json", "1");
    EXPECT_EQ(found(folder, {}, {}, German), "");
    folder.write("i18n/de.json", "2");
    EXPECT_EQ(found(folder, {}, {}, German), "de=2\n");
}

TEST(TermFilesOfLanguages, ACodeThatIsMeantForAnotherOneIsToldAsEver) {
    TestFolder folder;
    folder.write("de.json", "1");
    folder.write("fr-FR.json", "2");
    folder.write("fr_FR.json", "3");
    folder.write("enGB.json", "4");
    const std::string notices = found(folder).substr(std::string{"fr-FR=2\nde=1\n"}.size());
    EXPECT_EQ(found(folder, {}, {}, German), "de=1\n" + notices);
    EXPECT_NE(notices.find("of which there are other files"), std::string::npos) << notices;
}

}
