#include "QuorvaneEditor/AllLanguages.h"

#include <set>
#include <string>

#include <gtest/gtest.h>
#include <unicode/uloc.h>

#include "TestProject.h"

namespace QuorvaneEngine {

TEST(AllLanguages, HasExactly411Entries) {
    EXPECT_EQ(LanguageCount, 411u);
    EXPECT_EQ(sizeof(AllLanguages) / sizeof(AllLanguages[0]), 411u);
    for(const Language& language: AllLanguages) {
        EXPECT_FALSE(language.name.isEmpty());
        EXPECT_FALSE(language.code.isEmpty());
    }
}

TEST(AllLanguages, FallbackIsEnglishAt89) {
    EXPECT_EQ(FallbackLanguage, 89u);
    EXPECT_EQ(AllLanguages[89].name, "English");
    EXPECT_EQ(AllLanguages[89].code, "en");
}

TEST(AllLanguages, AreOrderedByName) {
    for(UnsignedInt i = 1; i != LanguageCount; ++i)
        EXPECT_LT(copied(AllLanguages[i - 1].name), copied(AllLanguages[i].name)) << i;
}

TEST(AllLanguages, CodesAndNamesAreUnique) {
    std::set<std::string> codes, names;
    for(const Language& language: AllLanguages) {
        EXPECT_TRUE(codes.insert(copied(language.code)).second) << copied(language.code);
        EXPECT_TRUE(names.insert(copied(language.name)).second) << copied(language.name);
    }
}

TEST(AllLanguages, CodesAreValidTags) {
    for(const Language& language: AllLanguages) {
        const std::string code = copied(language.code);
        char locale[ULOC_FULLNAME_CAPACITY];
        std::int32_t parsed = 0;
        UErrorCode error = U_ZERO_ERROR;
        uloc_forLanguageTag(code.c_str(), locale, sizeof(locale), &parsed, &error);
        EXPECT_TRUE(U_SUCCESS(error)) << code;
        EXPECT_EQ(std::size_t(parsed), code.size()) << code << " is well-formed up to " << parsed;
        EXPECT_STRNE(locale, "") << code;
    }
}

TEST(AllLanguages, NamesAndCodesAreNulTerminated) {
    for(const Language& language: AllLanguages) {
        EXPECT_EQ(language.name.data()[language.name.size()], '\0');
        EXPECT_EQ(language.code.data()[language.code.size()], '\0');
    }
}

}
