#include "ImportFiles.h"

#include "Exchange.h"
#include "FileSystem.h"
#include "Progress.h"

namespace QuorvaneEngine {

namespace {

std::string paths(const ImportedFiles& imported) {
    std::string paths;
    for(const ImportedFile& file: imported.files)
        paths += (paths.empty() ? "" : ", ") + copied(file.path) + " " + copied(file.nameSpace) + " " +
            std::to_string(file.catalogue.entries().size());
    return paths;
}

}

TEST(ImportFiles, AreThoseOfAllLanguagesAndNamespaces) {
    TestFolder folder;
    folder.write("de/menu.json", R"({"a": "A", "b": 1})");
    folder.write("de/common.json", "{}");
    folder.write("ar.json", R"({"x": "X"})");
    ImportedFiles imported;
    EXPECT_TRUE(readImportFiles(FileSystem::disk(), viewed(folder.path), {}, imported));
    EXPECT_EQ(paths(imported), "ar.json translation 1, de/common.json common 0, de/menu.json menu 2");
}

TEST(ImportFiles, LanguagesCanBeChosen) {
    TestFolder folder;
    for(const char* const code: {"ar", "de", "fr"}) folder.write(code + std::string{".json"}, "{}");
    folder.write("ja.json", "broken");
    const Containers::Array<UnsignedInt> languages = languagesOf({"fr", "de"});
    ImportedFiles imported;
    EXPECT_TRUE(readImportFiles(FileSystem::disk(), viewed(folder.path), {{}, languages}, imported));
    EXPECT_EQ(paths(imported), "fr.json translation 0, de.json translation 0");
}

TEST(ImportFiles, CodesCanBeMapped) {
    TestFolder folder;
    folder.write("enGB/menu.json", R"({"a": "A"})");
    folder.write("deXX.json", "{}");
    const LanguageMapping map[]{{"enGB", UnsignedInt(findLanguage("en-GB"))}};
    ImportedFiles imported;
    EXPECT_TRUE(readImportFiles(FileSystem::disk(), viewed(folder.path), {map, {}}, imported));
    EXPECT_EQ(paths(imported), "enGB/menu.json menu 1");
    EXPECT_EQ(copied(AllLanguages[imported.files[0].language].code), "en-GB");
    ASSERT_EQ(imported.notices.size(), 1u);
    EXPECT_EQ(copied(imported.notices[0].file), "deXX.json");
}

TEST(ImportFiles, RefusalsNameFileLineAndColumn) {
    TestFolder folder;
    folder.write("de.json", "{\n  \"a\" 1}");
    folder.write("fr.json", "");
    folder.write("ja.json", "{}");
    ImportedFiles imported;
    EXPECT_FALSE(readImportFiles(FileSystem::disk(), viewed(folder.path), {}, imported));
    ASSERT_EQ(imported.refusals.size(), 2u);
    EXPECT_EQ(copied(imported.refusals[0]), folder / "fr.json:1:1: a value is missing");
    EXPECT_EQ(copied(imported.refusals[1]), folder / "de.json:2:7: a colon is missing behind the name of a member");
}

TEST(ImportFiles, ANamespaceThatTheLibraryDoesNotSeeIsNoticed) {
    TestFolder folder;
    for(const char* const name: {"__proto__", "constructor", "menu"})
        folder.write("de/" + std::string{name} + ".json", R"({"a": "A"})");
    ImportedFiles imported;
    EXPECT_TRUE(readImportFiles(FileSystem::disk(), viewed(folder.path), {}, imported));
    EXPECT_EQ(paths(imported), "de/__proto__.json __proto__ 1, de/constructor.json constructor 1, de/menu.json menu 1");
    ASSERT_EQ(imported.files[0].catalogue.notices().size(), 1u);
    EXPECT_EQ(copied(imported.files[0].catalogue.notices()[0].key), "");
    EXPECT_EQ(copied(imported.files[0].catalogue.notices()[0].reason),
        "is a namespace that the i18next library finds, but does not hold for loaded, so that it loads it again and "
        "again");
    EXPECT_EQ(imported.files[1].catalogue.notices().size(), 0u);
    EXPECT_EQ(imported.files[2].catalogue.notices().size(), 0u);
}

TEST(ImportFiles, CancelledReadingRefusesNothing) {
    TestFolder folder;
    folder.write("de.json", "{}");
    Progress progress;
    progress.isCancelled = true;
    ImportedFiles imported;
    EXPECT_FALSE(readImportFiles(FileSystem::disk(), viewed(folder.path), {}, imported, &progress));
    EXPECT_EQ(imported.refusals.size(), 0u);
}

}
