#include "TermFiles.h"

#include <cerrno>
#include <filesystem>

#include <unistd.h>

#include <gtest/gtest.h>

#include "../document/MemoryFileSystem.h"
#include "FileSystem.h"
#include "QuorvaneEditor/AllLanguages.h"
#include "TestArchive.h"
#include "TestFolder.h"
#include "TestProject.h"

namespace QuorvaneEngine {

namespace {

/** "code=bytes" of every file, then "passed: ..." and "refused: ..." with "FOLDER" for the folder, lines between. */
std::string found(const TestFolder& folder, const std::string& name = {}) {
    Containers::Array<TermFile> files;
    Containers::Array<Containers::String> passedOver, refusals;
    const std::string path = name.empty() ? folder.path : folder / name;
    const bool isRead = readTermFiles(FileSystem::disk(), viewed(path), files, passedOver, refusals);
    EXPECT_EQ(isRead, refusals.isEmpty());
    std::string lines;
    for(const TermFile& file: files)
        lines += copied(AllLanguages[file.language].code) + '=' + copied(file.bytes) + '\n';
    for(const Containers::String& one: passedOver) lines += "passed: " + copied(one) + '\n';
    for(const Containers::String& one: refusals) lines += "refused: " + copied(one) + '\n';
    for(std::size_t at; (at = lines.find(folder.path)) != std::string::npos;)
        lines.replace(at, folder.path.size(), "FOLDER");
    return lines;
}

constexpr const char* NoTerms =
    ": holds no terms: there is no <language code>/translation.json and no <language code>.json\n";

}

TEST(TermFiles, BothLayoutsOfAFolderAreRead) {
    TestFolder folder;
    folder.write("pt-BR/translation.json", "1");
    folder.write("de.json", "2");
    folder.write("de/README.md", "no");
    folder.write("notes.txt", "no");
    folder.write(".hidden.json", "no");
    folder.write(".git/de.json", "no");
    EXPECT_EQ(found(folder), "de=2\npt-BR=1\n");
}

TEST(TermFiles, UnknownCodesAndOtherNamespacesArePassedOver) {
    TestFolder folder;
    folder.write("de/translation.json", "1");
    folder.write("de/menu.json", "2");
    folder.write("enGB/translation.json", "3");
    folder.write("project.json", "4");
    EXPECT_EQ(found(folder),
        "de=1\n"
        "passed: de/menu.json: only the namespace translation is read, not menu\n"
        "passed: enGB/translation.json: no language has the code enGB\n"
        "passed: project.json: no language has the code project\n");
}

TEST(TermFiles, OneLanguageInTwoFilesIsRefused) {
    TestFolder folder;
    folder.write("de/translation.json", "1");
    folder.write("de.json", "2");
    EXPECT_EQ(
        found(folder), "de=1\nde=2\nrefused: FOLDER/de.json: holds the language of FOLDER/de/translation.json, too\n");
}

TEST(TermFiles, NothingToReadIsRefused) {
    TestFolder folder;
    EXPECT_EQ(found(folder), "refused: FOLDER" + std::string{NoTerms});
    EXPECT_EQ(found(folder, "gone"), "refused: FOLDER/gone: cannot be read: No such file or directory\n");
}

TEST(TermFiles, WhatIsNoFileIsRefused) {
    TestFolder folder;
    std::filesystem::create_directory(folder / "de.json");
    EXPECT_EQ(found(folder), "refused: FOLDER/de.json: cannot be read: Is a directory\n");
}

TEST(TermFiles, UnreadableFilesAndFoldersAreRefused) {
    if(geteuid() == 0)
        GTEST_SKIP() << "a superuser reads everything; the next test has the same on another file system";
    TestFolder folder;
    folder.write("de/translation.json", "1");
    folder.write("fr.json", "2");
    std::filesystem::permissions(folder / "de", std::filesystem::perms::none);
    std::filesystem::permissions(folder / "fr.json", std::filesystem::perms::none);
    EXPECT_EQ(found(folder),
        "refused: FOLDER/de: cannot be read: Permission denied\n"
        "refused: FOLDER/fr.json: cannot be read: Permission denied\n");
    std::filesystem::permissions(folder / "de", std::filesystem::perms::owner_all);
}

TEST(TermFiles, WhateverCannotBeReadIsRefused) {
    MemoryFileSystem measured;
    measured.put("/in/de/translation.json", "1");
    measured.put("/in/fr.json", "2");
    const auto read = [](MemoryFileSystem& files, Containers::Array<Containers::String>& refusals) {
        Containers::Array<TermFile> found;
        Containers::Array<Containers::String> passedOver;
        return readTermFiles(files, "/in", found, passedOver, refusals);
    };
    Containers::Array<Containers::String> none;
    EXPECT_TRUE(read(measured, none));
    const std::size_t steps = measured.steps();
    ASSERT_GE(steps, 4u);
    for(std::size_t step = 0; step != steps; ++step) {
        MemoryFileSystem files;
        files.put("/in/de/translation.json", "1");
        files.put("/in/fr.json", "2");
        files.failAt(step, EACCES);
        Containers::Array<Containers::String> refusals;
        EXPECT_FALSE(read(files, refusals)) << step;
        ASSERT_EQ(refusals.size(), 1u);
        EXPECT_TRUE(refusals[0].hasPrefix("/in") && refusals[0].hasSuffix(": cannot be read: Permission denied"))
            << copied(refusals[0]);
    }
}

TEST(TermFiles, LinksThatLeadOutAreRefused) {
    TestFolder outside;
    outside.write("secret.json", "{}");
    TestFolder folder;
    folder.write("fr/translation.json", "1");
    std::filesystem::create_symlink(outside / "secret.json", folder / "de.json");
    std::filesystem::create_symlink("fr/translation.json", folder / "ja.json");
    EXPECT_EQ(found(folder), "fr=1\nja=1\nrefused: FOLDER/de.json: is a link that leads out of the folder\n");
}

TEST(TermFiles, ArchiveHoldsTheSameFilesAndMayHaveAFolderAround) {
    TestFolder folder;
    folder.write("a.zip",
        TestArchive{{{"i18n/de/translation.json", "1"}, {"i18n/fr.json", "2"}, {"ja/translation.json", "3"},
                        {"i18n/xx.json", "4"}, {"a/b/c/de.json", "5"}, {"__MACOSX/de.json", "6"}}}
            .make());
    EXPECT_EQ(found(folder, "a.zip"), "fr=2\nde=1\nja=3\npassed: i18n/xx.json: no language has the code i18n\n");
}

TEST(TermFiles, ArchiveThatIsRefusedGivesNothing) {
    TestFolder folder;
    folder.write("a.zip", TestArchive{{{"de.json", "1"}, {"../fr.json", "2"}}}.make());
    EXPECT_EQ(found(folder, "a.zip"), "refused: FOLDER/a.zip/../fr.json: leads out of its folder\n");
    folder.write("b.zip", "{}");
    EXPECT_EQ(found(folder, "b.zip"), "refused: FOLDER/b.zip: is no ZIP archive, or is cut off\n");
    TestArchive damaged{{{"de.json", "1"}}};
    damaged.entries[0].crcLie = 1;
    folder.write("c.zip", damaged.make());
    EXPECT_EQ(found(folder, "c.zip"), "refused: FOLDER/c.zip/de.json: is damaged: CRC error\n");
    folder.write("d.zip", TestArchive{}.make());
    EXPECT_EQ(found(folder, "d.zip"), "refused: FOLDER/d.zip" + std::string{NoTerms});
}

TEST(TermFiles, DamageOutsideOfTermsIsNotLookedAt) {
    TestFolder folder;
    TestArchive archive{{{"de.json", "1"}, {"README.md", "2"}}};
    archive.entries[1].crcLie = 1;
    folder.write("a.zip", archive.make());
    EXPECT_EQ(found(folder, "a.zip"), "de=1\n");
}

}
