#include "LanguageLookup.h"

#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "TestProject.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

std::string nearest(const Containers::StringView name) {
    const Int index = nearestLanguage(name);
    return index == -1 ? "none" : copied(AllLanguages[index].code);
}

using Expected = std::pair<const char*, const char*>;

}

TEST(LanguageLookup, FindsEveryLanguageByItsCode) {
    for(UnsignedInt i = 0; i != LanguageCount; ++i) EXPECT_EQ(findLanguage(AllLanguages[i].code), Int(i));
}

TEST(LanguageLookup, ComparesTheWholeCodeWithItsCase) {
    for(const char* const code: {"", "EN", "en ", "e", "en-us", "enGB", "es_MX", "project", "zzz", "aaa"})
        EXPECT_EQ(findLanguage(code), -1) << code;
    EXPECT_EQ(findLanguage("en\0"_s), -1);
}

TEST(LanguageLookup, EveryCodeAndEveryNameOfAsciiIsNearestToItself) {
    for(UnsignedInt i = 0; i != LanguageCount; ++i) {
        EXPECT_EQ(nearestLanguage(AllLanguages[i].code), Int(i));
        const std::string name = copied(AllLanguages[i].name);
        if(name.find_first_of("\xc2\xc3\xc4\xc5\xca\xe2") == name.npos) {
            EXPECT_EQ(nearestLanguage(AllLanguages[i].name), Int(i)) << name;
        }
    }
}

TEST(LanguageLookup, ACodeWrittenInAnotherWayIsTheSame) {
    for(const auto& [name, code]: {Expected{"EN", "en"}, {"En", "en"}, {"en_US", "en-US"}, {"enGB", "en-GB"},
            {"es_MX", "es-MX"}, {"zh-cn", "zh-CN"}, {"zh_CN", "zh-CN"}, {"zhCN", "zh-CN"}, {"zhcn", "zh-CN"},
            {"ZH_TW", "zh-TW"}, {"zh-Hans", "zh-Hans"}, {"zh-hans", "zh-Hans"}, {"zhHans", "zh-Hans"},
            {"zh_hant", "zh-Hant"}, {"pt_br", "pt-BR"}, {"ptBR", "pt-BR"}, {"ptbr", "pt-BR"}, {"PTBR", "pt-BR"},
            {"pt-br", "pt-BR"}, {"nb_NO", "nb-NO"}, {"uz@Latn", "uz-Latn"}, {"uz@Cyrl", "uz-Cyrl"},
            {"sr@latin", "sr-Latn"}, {"sr@Latn", "sr-Latn"}, {"sr-latin", "sr-Latn"}, {"sr_cyrillic", "sr-Cyrl"},
            {"srLatn", "sr-Latn"}, {"sr_latn_me", "sr-Latn-ME"}, {"az_Cyrl", "az-Cyrl"}, {"es_419", "es-419"},
            {"de_DE@euro", "de-DE"}, {"ca@valencia", "ca"}, {"CKB", "ckb"}, {"filPH", "fil-PH"}})
        EXPECT_EQ(nearest(name), code) << name;
}

TEST(LanguageLookup, CodesOfTheTableAreThemselvesWhateverElseTheyCouldMean) {
    for(const char* const code: {"no", "se", "br", "es-419", "ckb", "ar", "my", "am", "uk", "ca", "ml", "sl"})
        EXPECT_EQ(nearest(code), code);
}

TEST(LanguageLookup, OtherNamesOfALanguageAreItsOwn) {
    for(const auto& [name, code]: {Expected{"iw", "he"}, {"in", "id"}, {"tl", "fil"}, {"ji", "yi"}, {"jw", "jv"},
            {"mo", "ro"}, {"sh", "sr-Latn"}, {"iw_IL", "he-IL"}, {"in-ID", "id-ID"}, {"tl_PH", "fil-PH"},
            {"en-UK", "en-GB"}, {"en_uk", "en-GB"}, {"eng", "en"}, {"deu", "de"}, {"ger", "de"}, {"fre", "fr"},
            {"chi", "zh"}, {"zho", "zh"}, {"jpn", "ja"}, {"spa", "es"}, {"por", "pt"}, {"rum", "ro"},
            {"cmn-Hans-CN", "zh-CN"}, {"cmn_TW", "zh-TW"}, {"prs-AF", "fa-AF"}})
        EXPECT_EQ(nearest(name), code) << name;
}

TEST(LanguageLookup, ACountryStandsForTheLanguageThatIsReadThere) {
    for(const auto& [name, code]: {Expected{"kz", "kk"}, {"cn", "zh"}, {"CN", "zh"}, {"jp", "ja"}, {"gr", "el"},
            {"ua", "uk"}, {"cz", "cs"}, {"dk", "da"}, {"vn", "vi"}, {"il", "he"}, {"ir", "fa"}, {"by", "be"},
            {"rs", "sr"}, {"ge", "ka"}, {"tw", "zh-TW"}, {"hk", "zh-HK"}, {"us", "en"}, {"gb", "en-GB"},
            {"at", "de-AT"}, {"mx", "es-MX"}, {"au", "en-AU"}, {"jp-JP", "ja-JP"}, {"cz_CZ", "cs-CZ"},
            {"ua-UA", "uk-UA"}, {"kz_KZ", "kk-KZ"}, {"cn-CN", "zh-CN"}, {"dkDK", "da-DK"}})
        EXPECT_EQ(nearest(name), code) << name;
}

TEST(LanguageLookup, ARegionThatTheTableLacksIsTheLanguageInTheSameScript) {
    for(const auto& [name, code]: {Expected{"fr-GP", "fr"}, {"de-NA", "de"}, {"pt_GW", "pt"}, {"es-BZ", "es"},
            {"zh-Hans-CN", "zh-CN"}, {"zh_Hant_TW", "zh-TW"}, {"zh-Hant-HK", "zh-HK"}, {"zhHansCN", "zh-CN"},
            {"zh_Hans_MY", "zh-Hans"}, {"sr-Latn-RS", "sr-Latn"}, {"sr_RS@latin", "sr-Latn"}, {"sr_RS", "sr"},
            {"sr-ME", "sr-Latn-ME"}, {"uz-Latn-UZ", "uz-Latn"}, {"uz_Cyrl_UZ", "uz-Cyrl"}, {"az-AZ", "az"},
            {"pa-PK", "pa-Arab"}, {"no-NO", "no"}, {"ku-TR", "ku"}, {"la-VA", "la"}})
        EXPECT_EQ(nearest(name), code) << name;
}

TEST(LanguageLookup, NamesInEnglishAreUnderstood) {
    for(const auto& [name, code]: {Expected{"english", "en"}, {"German", "de"}, {"FRENCH", "fr"},
            {"chinese_simplified", "zh-Hans"}, {"Chinese (Traditional)", "zh-Hant"}, {"spanish-mexico", "es-MX"},
            {"portuguese brazil", "pt-BR"}, {"Klingon", "tlh"}})
        EXPECT_EQ(nearest(name), code) << name;
}

TEST(LanguageLookup, WhatResemblesNoLanguageHasNoNearestOne) {
    for(const char* const name: {"", "readme", "README", "node_modules", "node-modules", "$schema", "index",
            "translations", "common", "translation", "messages", "project", "package", "package-lock", "tsconfig",
            "src", "lib", "dist", "test", "tests", "assets", "i18n", "locales", "lang", "strings", "meta", "Meta",
            "en-common", "de-old", "in-game", "no-auth", "noAuth", "inGame", "is-list", "my-text", "ui", "js", "db",
            "ai", "v2", "2", "x", "xx", "qq", "zz-ZZ", "de-XX", "de-QX", "en-123", "en-GB-x-pseudo", "ja-Latn",
            "de-Thai", "en--US", "-en", "en-", "en_", "_", "@", "@latin", "en US", "de de", "settings", "und", "root",
            "en.common", "de/at", "../de", "dé", "default", "template", "backup", "new", "old", "tmp", "data", "info"})
        EXPECT_EQ(nearest(name), "none") << name;
    EXPECT_EQ(nearest("de\0at"_s), "none");
    EXPECT_EQ(nearest(viewed(std::string(1000000, 'e'))), "none");
    EXPECT_EQ(nearest(viewed("en" + std::string(60, '-'))), "none");
}

TEST(LanguageLookup, TheLanguagesOfAProjectAreThoseOfTheTableInItsOrder) {
    TestProject project{R"({"languages": {"fr": {}, "tlh-XX": {}, "de": 1}})"};
    const Containers::Array<UnsignedInt> languages = languagesOf(project.session.project());
    ASSERT_EQ(languages.size(), 2u);
    EXPECT_EQ(Int(languages[0]), findLanguage("fr"));
    EXPECT_EQ(Int(languages[1]), findLanguage("de"));
    TestProject other{R"({"languages": "none"})"};
    EXPECT_TRUE(languagesOf(other.session.project()).isEmpty());
}

TEST(LanguageLookup, OfSomeLanguagesFindsTheOneThatIsTheSame) {
    const auto same = [](const char* const code, const std::initializer_list<const char*> codes) {
        std::vector<UnsignedInt> some;
        for(const char* const one: codes) some.push_back(UnsignedInt(findLanguage(one)));
        const Int found = sameLanguage(UnsignedInt(findLanguage(code)), {some.data(), some.size()});
        return found == -1 ? "none" : copied(AllLanguages[found].code);
    };
    EXPECT_EQ(same("pt-BR", {"de", "pt", "pt-BR"}), "pt-BR");
    EXPECT_EQ(same("pt-BR", {"de", "pt-PT", "pt"}), "pt");
    EXPECT_EQ(same("zh-CN", {"zh-Hant", "zh-Hans"}), "zh-Hans");
    EXPECT_EQ(same("en", {"en-GB", "en-US"}), "en-US");
    EXPECT_EQ(same("en", {"de", "en-GB", "en-AU"}), "en-GB");
    EXPECT_EQ(same("pt-PT", {"pt", "pt-BR"}), "none");
    EXPECT_EQ(same("zh-Hant", {"zh-Hans", "zh"}), "none");
    EXPECT_EQ(same("de", {}), "none");
}

}
