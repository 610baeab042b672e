#include "TermFiles.h"

#include "FoundTermFiles.h"
#include "LanguageLookup.h"
#include "TestArchive.h"

namespace QuorvaneEngine {

TEST(TermFilesOfArchives, EntriesThatLieTooDeepInAnArchiveArePassedOverWithTheirPath) {
    TestFolder folder;
    folder.write("a.zip",
        TestArchive{{{"de/menu.json", "1"}, {"de/quests/first.json", "2"}, {"game/de/quests/first.json", "3"},
                        {"de/fr/menu.json", "4"}, {"docs/old/new/x.json", "5"}}}
            .make());
    EXPECT_EQ(found(folder, "a.zip"),
        "fr menu=4\nde menu=1\n"
        "notice: de/quests/first.json: only files that lie right in the folder of their language are read (1 more lie "
        "too deep)\n");
}

TEST(TermFilesOfArchives, ArchiveHoldsTheSameFilesAndMayHaveAFolderAround) {
    TestFolder folder;
    folder.write("a.zip",
        TestArchive{{{"i18n/de/translation.json", "1"}, {"i18n/fr.json", "2"}, {"ja/translation.json", "3"},
                        {"i18n/xx.json", "4"}, {"a/b/c/de.json", "5"}, {"__MACOSX/de.json", "6"}}}
            .make());
    EXPECT_EQ(found(folder, "a.zip"), "fr=2\nde=1\nja=3\nnotice: i18n/xx.json: no language has the code i18n\n");
}

TEST(TermFilesOfArchives, FolderAroundInAnArchiveIsNoCode) {
    TestFolder folder;
    folder.write("a.zip",
        TestArchive{{{"i18n/de.json", "1"}, {"i18n/enGB.json", "2"}, {"i18n/ptBR.json", "3"}, {"ptBR/menu.json", "4"},
                        {"i18n/esMX/menu.json", "5"}}}
            .make());
    const LanguageMapping map[]{{"esMX", UnsignedInt(findLanguage("es-MX"))}};
    EXPECT_EQ(found(folder, "a.zip", map),
        "de=1\n"
        "es-MX menu=5\n"
        "notice: i18n/enGB.json: no language has the code enGB; the nearest is en-GB: rename it, or map it with "
        "--map enGB=en-GB\n"
        "notice: i18n/ptBR.json: no language has the code ptBR (1 more file); the nearest is pt-BR: rename it, or map "
        "it "
        "with --map ptBR=pt-BR\n");
}

TEST(TermFilesOfArchives, ArchiveThatIsRefusedGivesNothing) {
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

TEST(TermFilesOfArchives, DamageOutsideOfTermsIsNotLookedAt) {
    TestFolder folder;
    TestArchive archive{{{"de.json", "1"}, {"README.md", "2"}}};
    archive.entries[1].crcLie = 1;
    folder.write("a.zip", archive.make());
    EXPECT_EQ(found(folder, "a.zip"), "de=1\n");
}

}
