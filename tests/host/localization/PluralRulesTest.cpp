#include "PluralRules.h"

#include <string>

#include <gtest/gtest.h>

#include "QuorvaneEditor/AllLanguages.h"
#include "TestProject.h"

namespace QuorvaneEngine {

namespace {

std::string listed(const PluralCategories categories) {
    std::string list;
    for(const PluralCategory category: AllPluralCategories)
        if(categories & category) list += (list.empty() ? "" : " ") + copied(pluralCategoryName(category));
    return list;
}

std::string cardinals(const Containers::StringView code) {
    return listed(pluralCategories(code, PluralKind::Cardinal));
}

std::string ordinals(const Containers::StringView code) { return listed(pluralCategories(code, PluralKind::Ordinal)); }

}

TEST(PluralRules, CategoriesAreOrderedAsFormsAreWritten) {
    EXPECT_EQ(listed(~PluralCategories{}), "zero one two few many other");
    for(std::size_t i = 0; i != PluralCategoryCount; ++i) EXPECT_EQ(pluralCategoryIndex(AllPluralCategories[i]), i);
}

TEST(PluralRules, LanguagesOfEuropeCountAsCldrSays) {
    for(const char* const code:
        {"en", "de", "nl", "sv", "da", "nb", "nn", "no", "fi", "et", "hu", "bg", "el", "eu", "gl"})
        EXPECT_EQ(cardinals(code), "one other") << code;
    for(const char* const code: {"fr", "es", "it", "pt", "ca"}) EXPECT_EQ(cardinals(code), "one many other") << code;
    for(const char* const code: {"ru", "uk", "be", "pl", "cs", "sk", "lt"})
        EXPECT_EQ(cardinals(code), "one few many other") << code;
    for(const char* const code: {"hr", "sr", "bs", "ro"}) EXPECT_EQ(cardinals(code), "one few other") << code;
    EXPECT_EQ(cardinals("lv"), "zero one other");
    EXPECT_EQ(cardinals("sl"), "one two few other");
    EXPECT_EQ(cardinals("cy"), "zero one two few many other");
    EXPECT_EQ(cardinals("ga"), "one two few many other");
    EXPECT_EQ(cardinals("gd"), "one two few other");
    EXPECT_EQ(cardinals("br"), "one two few many other");
}

TEST(PluralRules, LanguagesOfAsiaAndAfricaCountAsCldrSays) {
    EXPECT_EQ(cardinals("ar"), "zero one two few many other");
    EXPECT_EQ(cardinals("he"), "one two other");
    for(const char* const code: {"ja", "ko", "zh", "yue", "th", "vi", "id", "ms", "my", "lo", "yo"})
        EXPECT_EQ(cardinals(code), "other") << code;
    for(const char* const code: {"hi", "bn", "fa", "tr", "ka", "kk", "uz", "mn", "sw", "zu", "am"})
        EXPECT_EQ(cardinals(code), "one other") << code;
}

TEST(PluralRules, OrdinalsHaveRulesOfTheirOwn) {
    EXPECT_EQ(ordinals("en"), "one two few other");
    EXPECT_EQ(ordinals("it"), "many other");
    EXPECT_EQ(ordinals("fr"), "one other");
    EXPECT_EQ(ordinals("sv"), "one other");
    EXPECT_EQ(ordinals("uk"), "few other");
    EXPECT_EQ(ordinals("hu"), "one other");
    EXPECT_EQ(ordinals("ca"), "one two few other");
    EXPECT_EQ(ordinals("cy"), "zero one two few many other");
    for(const char* const code: {"de", "es", "pt", "ru", "pl", "ar", "ja", "he", "tr"})
        EXPECT_EQ(ordinals(code), "other") << code;
}

TEST(PluralRules, RegionsAndScriptsHaveTheRulesOfTheirLanguage) {
    EXPECT_EQ(cardinals("en-GB"), "one other");
    EXPECT_EQ(cardinals("pt-BR"), "one many other");
    EXPECT_EQ(cardinals("pt-PT"), "one many other");
    EXPECT_EQ(cardinals("es-419"), "one many other");
    EXPECT_EQ(cardinals("sr-Latn-ME"), "one few other");
    EXPECT_EQ(cardinals("zh-Hant"), "other");
    EXPECT_EQ(cardinals("uz-Cyrl"), "one other");
    EXPECT_EQ(ordinals("en-US"), "one two few other");
}

TEST(PluralRules, OtherNamesOfALanguageHaveItsRules) {
    EXPECT_EQ(cardinals("cnr"), "one few other");
    EXPECT_EQ(cardinals("iw"), "one two other");
    EXPECT_EQ(cardinals("tl"), cardinals("fil"));
}

TEST(PluralRules, WhatHasNoRulesHasNoCategories) {
    for(const char* const code: {"la", "tt", "tlh", "ht", "mi", "rw", "qu", "tok"}) {
        EXPECT_EQ(cardinals(code), "") << code;
        EXPECT_EQ(ordinals(code), "") << code;
    }
    const std::string longCode(10000, 'e');
    for(const Containers::StringView code:
        {Containers::StringView{""}, Containers::StringView{"en_US"}, Containers::StringView{"x"},
            Containers::StringView{"e n"}, Containers::StringView{"english language"}, viewed(longCode)})
        EXPECT_EQ(cardinals(code), "") << copied(code);
}

TEST(PluralRules, SomeCategoriesHoldASingleNumber) {
    const auto singles = [](const char* const code, const PluralKind kind = PluralKind::Cardinal) {
        return listed(singleNumberCategories(code, kind));
    };
    EXPECT_EQ(singles("en"), "one");
    EXPECT_EQ(singles("ar"), "zero one two");
    EXPECT_EQ(singles("cy"), "zero one two few many");
    // 0 and 1, and 1, 21, 31...
    EXPECT_EQ(singles("fr"), "");
    EXPECT_EQ(singles("ru"), "");
    // Millions are many.
    EXPECT_EQ(singles("es"), "one");
    EXPECT_EQ(singles("ja"), "");
    EXPECT_EQ(singles("en", PluralKind::Ordinal), "");
    EXPECT_EQ(singles("fr", PluralKind::Ordinal), "one");
    for(const char* const code: {"la", "", "x"}) EXPECT_EQ(singles(code), "") << code;
}

TEST(PluralRules, EveryLanguageWithRulesHasOther) {
    std::size_t withRules = 0;
    for(const Language& language: AllLanguages) {
        const PluralCategories categories = pluralCategories(language.code, PluralKind::Cardinal);
        EXPECT_EQ(!categories, !pluralCategories(language.code, PluralKind::Ordinal)) << copied(language.code);
        if(!categories) continue;
        ++withRules;
        EXPECT_TRUE(categories >= PluralCategory::Other) << copied(language.code);
        EXPECT_TRUE(pluralCategories(language.code, PluralKind::Ordinal) >= PluralCategory::Other)
            << copied(language.code);
    }
    EXPECT_GT(withRules, 300u);
}

}
