#include "LanguageLookup.h"

#include <gtest/gtest.h>

namespace QuorvaneEngine {

TEST(LanguageLookup, FindsEveryLanguageByItsCode) {
    for(UnsignedInt i = 0; i != LanguageCount; ++i) EXPECT_EQ(findLanguage(AllLanguages[i].code), Int(i));
}

TEST(LanguageLookup, ComparesTheWholeCodeWithItsCase) {
    for(const char* const code: {"", "EN", "en ", "e", "en-us", "enGB", "es_MX", "project"})
        EXPECT_EQ(findLanguage(code), -1) << code;
}

}
