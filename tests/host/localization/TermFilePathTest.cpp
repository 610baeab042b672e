#include "TermFilePath.h"

#include <gtest/gtest.h>

#include "LanguageLookup.h"
#include "QuorvaneEditor/AllLanguages.h"
#include "TestProject.h"

namespace QuorvaneEngine {

struct PathCase {
    const char* path;
    bool isEnclosed;
    /** "code namespace", "? namespace" for a code that is not known, "" for no path of terms. */
    const char* expected;
};

static const LanguageMapping Map[]{
    {"uz@Latn", UnsignedInt(findLanguage("fr"))}, {"ru", UnsignedInt(findLanguage("de"))}};

class TermFilePaths: public testing::TestWithParam<PathCase> {};

TEST_P(TermFilePaths, AreReadAs) {
    TermFilePath parsed;
    std::string read;
    if(TermFilePath::parse(GetParam().path, GetParam().isEnclosed, Map, parsed))
        read = (parsed.language == -1 ? "?" + copied(parsed.code) : copied(AllLanguages[parsed.language].code)) + ' ' +
            copied(parsed.nameSpace);
    EXPECT_EQ(read, GetParam().expected) << GetParam().path;
}

INSTANTIATE_TEST_SUITE_P(InAFolder, TermFilePaths,
    testing::Values(PathCase{"de/translation.json", false, "de translation"},
        PathCase{"pt-BR/menu.json", false, "pt-BR menu"}, PathCase{"de.json", false, "de translation"},
        PathCase{"enGB/translation.json", false, "?enGB translation"},
        PathCase{"project.json", false, "?project translation"}, PathCase{"i18n/de/translation.json", false, ""},
        PathCase{"i18n/de.json", false, "?i18n de"}, PathCase{"de/translation.JSON", false, ""},
        PathCase{"de/translation", false, ""}, PathCase{".json", false, ""}, PathCase{"de/.json", false, ""},
        PathCase{"", false, ""}, PathCase{"de/._translation.json", false, ""}, PathCase{".git/de.json", false, ""},
        PathCase{"/de.json", false, ""}, PathCase{"uz@Latn/menu.json", false, "fr menu"},
        PathCase{"uz@Latn.json", false, "fr translation"}, PathCase{"ru.json", false, "de translation"}));

INSTANTIATE_TEST_SUITE_P(InAnArchive, TermFilePaths,
    testing::Values(PathCase{"de/translation.json", true, "de translation"},
        PathCase{"de.json", true, "de translation"}, PathCase{"i18n/de/translation.json", true, "de translation"},
        PathCase{"i18n/de.json", true, "de translation"}, PathCase{"en/de.json", true, "en de"},
        PathCase{"a/b/de/translation.json", true, ""}, PathCase{"__MACOSX/de/translation.json", true, ""},
        PathCase{"i18n/xx/menu.json", true, "?xx menu"}, PathCase{"i18n/uz@Latn.json", true, "fr translation"}));

TEST(TermFilePath, IsMadeOfCodeAndNamespace) {
    EXPECT_EQ(TermFilePath::make("pt-BR", "translation"), "pt-BR/translation.json");
}

}
