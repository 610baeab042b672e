#include "FoundLanguages.h"

#include <gtest/gtest.h>

#include "LanguageLookup.h"
#include "TestProject.h"

namespace QuorvaneEngine {

namespace {

UnsignedInt indexOf(const char* const code) { return UnsignedInt(findLanguage(code)); }

}

TEST(FoundLanguages, ACodeIsOneOfTheMapOrOfTheTable) {
    const LanguageMapping map[]{{"enGB", indexOf("en-GB")}, {"ja", indexOf("de")}};
    const FoundLanguages languages{map, {}};
    EXPECT_EQ(languages.find("enGB"), findLanguage("en-GB"));
    EXPECT_EQ(languages.find("ja"), findLanguage("de"));
    EXPECT_EQ(languages.find("fr"), findLanguage("fr"));
    EXPECT_EQ(languages.find("deDE"), -1);
    EXPECT_EQ(languages.find(""), -1);
}

TEST(FoundLanguages, AllAreAskedForUnlessSomeAreNamed) {
    EXPECT_TRUE((FoundLanguages{{}, {}}.isAskedFor(indexOf("fr"))));
    const UnsignedInt asked[]{indexOf("de"), indexOf("ja")};
    const FoundLanguages languages{{}, asked};
    EXPECT_TRUE(languages.isAskedFor(indexOf("ja")));
    EXPECT_FALSE(languages.isAskedFor(indexOf("fr")));
}

TEST(FoundLanguages, OthersAreHeldOnce) {
    const UnsignedInt asked[]{indexOf("de")};
    FoundLanguages languages{{}, asked};
    EXPECT_TRUE(languages.others().isEmpty());
    for(const char* const code: {"fr", "de", "ja", "fr"}) languages.add(code, indexOf(code));
    ASSERT_EQ(languages.others().size(), 2u);
    EXPECT_EQ(languages.others()[0], indexOf("fr"));
    EXPECT_EQ(languages.others()[1], indexOf("ja"));
}

TEST(FoundLanguages, AMappingIsUsedByFilesThatNobodyAskedForToo) {
    const LanguageMapping map[]{{"enGB", indexOf("en-GB")}, {"a\nb", indexOf("fr")}};
    const UnsignedInt asked[]{indexOf("de")};
    FoundLanguages languages{map, asked};
    languages.add("enGB", indexOf("en-GB"));
    Containers::Array<FileNotice> notices;
    EXPECT_TRUE(languages.noticeUnusedMappings(notices));
    ASSERT_EQ(notices.size(), 1u);
    EXPECT_EQ(copied(notices[0].reason), "--map a\\nb=fr: nothing is called a\\nb here");
    languages.add("a\nb", indexOf("fr"));
    EXPECT_FALSE(languages.noticeUnusedMappings(notices));
    EXPECT_EQ(notices.size(), 1u);
}

}
