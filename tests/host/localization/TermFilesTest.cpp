#include "TermFiles.h"

#include <cerrno>
#include <filesystem>
#include <utility>

#include <gtest/gtest.h>

#include "../../support/OrdinaryUser.h"
#include "../document/MemoryFileSystem.h"
#include "FileSystem.h"
#include "FoundTermFiles.h"
#include "LanguageLookup.h"
#include "Progress.h"
#include "TestArchive.h"
#include "TestFolder.h"
#include "TestProject.h"

namespace QuorvaneEngine {

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

TEST(TermFiles, NamespacesAreReadLanguageByLanguage) {
    TestFolder folder;
    folder.write("de/translation.json", "1");
    folder.write("de/menu.json", "2");
    folder.write("de/in game.json", "3");
    folder.write("fr.json", "4");
    folder.write("fr/menu.json", "5");
    EXPECT_EQ(found(folder), "fr menu=5\nfr=4\nde in game=3\nde menu=2\nde=1\n");
}

TEST(TermFiles, UnknownCodesArePassedOverWithTheNearestOne) {
    TestFolder folder;
    folder.write("de/translation.json", "1");
    folder.write("enGB/menu.json", "2");
    folder.write("enGB/translation.json", "3");
    folder.write("enGB/zzz.json", "4");
    folder.write("project.json", "5");
    EXPECT_EQ(found(folder),
        "de=1\n"
        "notice: enGB/menu.json: no language has the code enGB (2 more files); the nearest is en-GB: rename it, or map "
        "it with --map enGB=en-GB\n"
        "notice: project.json: no language has the code project\n");
}

TEST(TermFiles, ACodeThatMayBeMeantForALanguageIsMissed) {
    const auto lacksLanguages = [](const char* const file) {
        TestFolder folder;
        folder.write("de.json", "1");
        folder.write(file, "2");
        TermFiles found;
        EXPECT_TRUE(readTermFiles(FileSystem::disk(), viewed(folder.path), {}, found));
        return found.lacksLanguages;
    };
    EXPECT_TRUE(lacksLanguages("enGB/menu.json"));
    EXPECT_TRUE(lacksLanguages("pt_BR.json"));
    EXPECT_FALSE(lacksLanguages("fr/menu.json"));
    EXPECT_FALSE(lacksLanguages("package.json"));
    EXPECT_FALSE(lacksLanguages("en-XA/translation.json"));
}

TEST(TermFiles, WhereNoCodeIsKnownTheFirstOneIsSaid) {
    TestFolder folder;
    folder.write("enGB/translation.json", "1");
    folder.write("zz/translation.json", "2");
    EXPECT_EQ(found(folder),
        "notice: enGB/translation.json: no language has the code enGB; the nearest is en-GB: rename it, or map it with "
        "--map enGB=en-GB\n"
        "notice: zz/translation.json: no language has the code zz\n"
        "refused: FOLDER: holds no terms of a known language; enGB/translation.json: no language has the code enGB; "
        "the nearest is "
        "en-GB: rename it, or map it with --map enGB=en-GB\n");
}

TEST(TermFiles, TheMadeUpLanguageIsPassedOver) {
    TestFolder folder;
    folder.write("de.json", "1");
    folder.write("en-XA/translation.json", "2");
    EXPECT_EQ(found(folder), "de=1\nnotice: en-XA/translation.json: made-up texts of an export are not read\n");
}

TEST(TermFiles, ManyUnknownCodesDoNotAllGetASuggestion) {
    TestFolder folder;
    folder.write("de.json", "1");
    for(int i = 0; i != 150; ++i) folder.write("en_GB@" + std::to_string(1000 + i) + ".json", "2");
    const std::string all = found(folder);
    std::size_t count = 0;
    for(std::size_t at = 0; (at = all.find("the nearest is en-GB", at)) != std::string::npos; ++at) ++count;
    EXPECT_EQ(count, 100u) << all;
}

TEST(TermFiles, FilesThatLieTooDeepArePassedOverWithTheirPath) {
    TestFolder folder;
    folder.write("de/menu.json", "1");
    folder.write("de/quests/first.json", "2");
    folder.write("de/notes/README.md", "3");
    folder.write("de/.cache/x.json", "4");
    folder.write("docs/de/old/x.json", "5");
    EXPECT_EQ(found(folder),
        "de menu=1\n"
        "notice: de/quests/first.json: only files that lie right in the folder of their language are read\n");
    folder.write("de/a/b/c/d/second.json", "6");
    folder.write("fr/quests/first.json", "7");
    EXPECT_EQ(found(folder),
        "de menu=1\n"
        "notice: de/a/b/c/d/second.json: only files that lie right in the folder of their language are read (2 more "
        "lie "
        "too deep)\n");
}

TEST(TermFiles, WhereAllFilesLieTooDeepItIsSaid) {
    TestFolder folder;
    folder.write("de/quests/first.json", "1");
    EXPECT_EQ(found(folder),
        "notice: de/quests/first.json: only files that lie right in the folder of their language are read\n"
        "refused: FOLDER: holds no terms; de/quests/first.json: only files that lie right in the folder of their "
        "language "
        "are read\n");
}

TEST(TermFiles, LinksBelowALanguageAreNotFollowed) {
    TestFolder folder;
    folder.write("de/menu.json", "1");
    std::filesystem::create_directory_symlink(folder.path, folder / "de/circle");
    EXPECT_EQ(found(folder), "de menu=1\n");
}

TEST(TermFiles, MapTakesWhatIsNoCode) {
    TestFolder folder;
    folder.write("enGB/translation.json", "1");
    folder.write("uz@Latn.json", "2");
    const LanguageMapping map[]{
        {"enGB", UnsignedInt(findLanguage("en-GB"))}, {"uz@Latn", UnsignedInt(findLanguage("de"))}};
    EXPECT_EQ(found(folder, {}, map), "en-GB=1\nde=2\n");
}

TEST(TermFiles, OneNamespaceOfALanguageInTwoFilesIsRefused) {
    TestFolder folder;
    folder.write("de/translation.json", "1");
    folder.write("de.json", "2");
    EXPECT_EQ(found(folder),
        "de=1\nde=2\n"
        "refused: FOLDER/de.json: holds the same as FOLDER/de/translation.json: one language, one namespace\n");
}

TEST(TermFiles, NothingToReadIsRefused) {
    TestFolder folder;
    EXPECT_EQ(found(folder), "refused: FOLDER" + std::string{NoTerms});
    EXPECT_EQ(found(folder, "gone"), "refused: FOLDER/gone: cannot be read: No such file or directory\n");
}

TEST(TermFiles, FolderInWhichAnExportWasCutShortIsRefused) {
    TestFolder folder;
    folder.write("de.json", "1");
    folder.write(".localization-export/0.new", "2");
    EXPECT_EQ(found(folder), "de=1\n");
    folder.write(".localization-export/journal", "quorvane-journal 1\ncomplete\nreplace de.json\nend\n");
    EXPECT_EQ(found(folder),
        "refused: FOLDER/.localization-export: an export was cut short here, and another one puts the files in order; "
        "without this folder they are taken as they are\n");
    EXPECT_EQ(folder.read("de.json"), "1");
}

TEST(TermFiles, OneFolderMayLieAroundAsInAnArchive) {
    TestFolder folder;
    folder.write("i18n/de/translation.json", "1");
    folder.write("i18n/fr.json", "2");
    folder.write("i18n/enGB.json", "3");
    folder.write("package.json", "4");
    folder.write("src/x.json", "5");
    const std::string notice =
        "notice: i18n/enGB.json: no language has the code enGB; the nearest is en-GB: rename it, or map it with --map "
        "enGB=en-GB\n";
    EXPECT_EQ(found(folder), "fr=2\nde=1\n" + notice);
    folder.write("i18n/.localization-export/journal", "quorvane-journal 1\ncomplete\nreplace de.json\nend\n");
    EXPECT_NE(found(folder).find("refused: FOLDER/i18n/.localization-export: "), std::string::npos);
    std::filesystem::remove_all(folder / "i18n/.localization-export");
    folder.write("old/de.json", "6");
    EXPECT_EQ(found(folder),
        "notice: i18n/enGB.json: no language has the code i18n (1 more file)\n"
        "notice: old/de.json: no language has the code old\n"
        "notice: package.json: no language has the code package\n"
        "notice: src/x.json: no language has the code src\n"
        "refused: FOLDER: holds no terms itself, but its folders i18n and old do: give one of them\n");
    folder.write("ja.json", "7");
    EXPECT_EQ(found(folder).substr(0, 5), "ja=7\n");
}

TEST(TermFiles, WhatMayBeMeantForALanguageComesBeforeAFolderAround) {
    TestFolder folder;
    folder.write("backup/de/translation.json", "1");
    folder.write("enGB/translation.json", "2");
    EXPECT_NE(found(folder).find("refused: FOLDER: holds no terms of a known language; "), std::string::npos);
}

TEST(TermFiles, TheFolderOfOneLanguageIsRefused) {
    TestFolder folder;
    folder.write("i18n/de/translation.json", "1");
    folder.write("i18n/de/menu.json", "2");
    for(const std::string end: {"", "/", "/."})
        EXPECT_NE(found(folder, "i18n/de" + end)
                      .find("refused: FOLDER/i18n/de: is the folder of one language; give the folder around it\n"),
            std::string::npos);
}

TEST(TermFiles, TheFolderOfAProjectsTranslationsIsRefused) {
    TestFolder folder;
    folder.write("localization/de.json", "1");
    EXPECT_EQ(found(folder, "localization"), "de=1\n");
    EXPECT_EQ(found(folder), "de=1\n");
    folder.write("project.json", "{}");
    EXPECT_EQ(found(folder, "localization"),
        "refused: FOLDER/localization: is where a project keeps its translations; give a folder that an export has "
        "written\n");
    EXPECT_EQ(found(folder).find("de=1"), std::string::npos);
    folder.write("i18n/fr.json", "2");
    EXPECT_EQ(found(folder), "fr=2\n");
}

TEST(TermFiles, WhatIsNoFileIsRefused) {
    TestFolder folder;
    std::filesystem::create_directory(folder / "de.json");
    EXPECT_EQ(found(folder), "refused: FOLDER/de.json: cannot be read: Is a directory\n");
}

TEST(TermFiles, UnreadableFilesAndFoldersAreRefused) {
    TestFolder folder;
    folder.write("de/translation.json", "1");
    folder.write("fr.json", "2");
    folder.write("notes/translation.json", "3");
    const QuorvaneEngine::Test::OrdinaryUser user{folder.path};
    if(!user.isOrdinary)
        GTEST_SKIP() << "a superuser reads everything; the next test has the same on another file system";
    for(const char* const name: {"de", "fr.json", "notes"})
        std::filesystem::permissions(folder / name, std::filesystem::perms::none);
    EXPECT_EQ(found(folder),
        "refused: FOLDER/de: cannot be read: Permission denied\n"
        "refused: FOLDER/fr.json: cannot be read: Permission denied\n");
    for(const char* const name: {"de", "notes"})
        std::filesystem::permissions(folder / name, std::filesystem::perms::owner_all);
}

TEST(TermFiles, WhatCannotBeReadIsToldFromWhatShouldNotBe) {
    TestFolder folder;
    const auto isInaccessible = [&folder] {
        TermFiles found;
        EXPECT_FALSE(readTermFiles(FileSystem::disk(), viewed(folder.path), {}, found));
        return found.isInaccessible;
    };
    EXPECT_FALSE(isInaccessible());
    std::filesystem::create_directory(folder / "de.json");
    EXPECT_TRUE(isInaccessible());
    std::filesystem::remove(folder / "de.json");
    std::filesystem::create_symlink("/etc/hostname", folder / "de.json");
    EXPECT_FALSE(isInaccessible());
}

TEST(TermFiles, WhateverCannotBeReadIsRefused) {
    MemoryFileSystem measured;
    measured.put("/in/de/translation.json", "1");
    measured.put("/in/fr.json", "2");
    const auto read = [](MemoryFileSystem& files, Containers::Array<Containers::String>& refusals) {
        TermFiles found;
        const bool isRead = readTermFiles(files, "/in", {}, found);
        refusals = std::move(found.refusals);
        return isRead;
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

TEST(TermFiles, FoldersElsewhereAreNotLookedInto) {
    TestFolder outside;
    outside.write("translation.json", "{}");
    TestFolder folder;
    folder.write("fr.json", "1");
    std::filesystem::create_directory_symlink(outside.path, folder / "xx");
    EXPECT_EQ(found(folder), "fr=1\n");
    std::filesystem::create_directory_symlink(outside.path, folder / "de");
    EXPECT_EQ(found(folder), "fr=1\nrefused: FOLDER/de/translation.json: is a link that leads out of the folder\n");
}

TEST(TermFiles, NamesThatAreHarmfulAreShownAsEscapes) {
    TestFolder folder;
    folder.write("fr.json", "1");
    folder.write("\x1b[2J\n/x.json", "2");
    EXPECT_EQ(found(folder), "fr=1\nnotice: \\x1b[2J\\n/x.json: no language has the code \\x1b[2J\\n\n");
}

TEST(TermFiles, NamesThatNoNamespaceCanHaveAreRefused) {
    TestFolder folder;
    folder.write("de/m\xff.json", "1");
    folder.write("de/m\n.json", "2");
    EXPECT_EQ(found(folder),
        "refused: FOLDER/de/m\\n.json: has a name that no namespace can have\n"
        "refused: FOLDER/de/m\\xff.json: has a name that is not valid UTF-8\n");
}

/** Cancels what it is read for when its first file has been read. */
class CancellingFiles: public MemoryFileSystem {
public:
    int readFile(Containers::StringView path, Containers::String& bytes, std::size_t maxSize) override {
        progress.isCancelled = true;
        ++reads;
        return MemoryFileSystem::readFile(path, bytes, maxSize);
    }

    Progress progress;
    int reads = 0;
};

TEST(TermFiles, NothingIsReadOrRefusedAnyMoreWhenItIsCancelled) {
    CancellingFiles files;
    for(const char* code: {"de", "fr", "ja"}) files.put("/in/" + std::string{code} + ".json", "1");
    TermFiles found;
    EXPECT_FALSE(readTermFiles(files, "/in", {}, found, &files.progress));
    EXPECT_EQ(files.reads, 1);
    EXPECT_TRUE(found.refusals.isEmpty());

    files.put("/a.zip", TestArchive{{{"de.json", "1"}, {"fr.json", "2"}}}.make());
    files.progress.isCancelled = false;
    TermFiles inArchive;
    EXPECT_FALSE(readTermFiles(files, "/a.zip", {}, inArchive, &files.progress));
    EXPECT_TRUE(inArchive.files.isEmpty());
    EXPECT_TRUE(inArchive.refusals.isEmpty());

    files.progress.isCancelled = true;
    TermFiles nothingThere;
    EXPECT_FALSE(readTermFiles(files, "/nowhere", {}, nothingThere, &files.progress));
    EXPECT_TRUE(nothingThere.refusals.isEmpty());
}

}
