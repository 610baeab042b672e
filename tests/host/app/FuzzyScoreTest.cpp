#include "app/FuzzyScore.h"

#include <gtest/gtest.h>

namespace QuorvaneEngine {
namespace {

TEST(FuzzyScore, AllCharactersMustStandInTheTextInTheirOrder) {
    EXPECT_GE(fuzzyScore("Reload modules", "rlm"), 0);
    EXPECT_EQ(fuzzyScore("Reload modules", "mr"), NoFuzzyMatch);
    EXPECT_EQ(fuzzyScore("Reload modules", "rlx"), NoFuzzyMatch);
    EXPECT_EQ(fuzzyScore("a", "aa"), NoFuzzyMatch);
    EXPECT_EQ(fuzzyScore("", "a"), NoFuzzyMatch);
}

TEST(FuzzyScore, NothingTypedFitsEverything) {
    EXPECT_EQ(fuzzyScore("Save", ""), 0);
    EXPECT_EQ(fuzzyScore("Save", "  "), 0);
    EXPECT_EQ(fuzzyScore("", ""), 0);
}

TEST(FuzzyScore, CaseAndBlanksDoNotCount) {
    EXPECT_EQ(fuzzyScore("Reload modules", "RELOAD MOD"), fuzzyScore("Reload modules", "reloadmod"));
    EXPECT_GE(fuzzyScore("\u00c4pfel", "\u00e4"), 0);
    EXPECT_GE(fuzzyScore("\u0416\u0443\u043a", "\u0436\u043a"), 0);
    EXPECT_EQ(fuzzyScore("\u00c4pfel", "\u00f6"), NoFuzzyMatch);
}

TEST(FuzzyScore, BeginningsOfWordsCountMore) {
    EXPECT_GT(fuzzyScore("Reset layout", "rl"), fuzzyScore("Reload", "rl"));
    EXPECT_GT(fuzzyScore("menu.start", "s"), fuzzyScore("menus", "s"));
    EXPECT_GT(fuzzyScore("sourceText", "t"), fuzzyScore("source text", "x"));
    EXPECT_GT(fuzzyScore("open", "o"), fuzzyScore("an open", "o"));
}

TEST(FuzzyScore, CharactersThatFollowEachOtherCountMore) {
    EXPECT_GT(fuzzyScore("xabcx", "abc"), fuzzyScore("xaxbxcx", "abc"));
}

TEST(FuzzyScore, ATextHasTheScoreOfItsBestMatch) {
    // The first "s" and "a" are not those of "save".
    EXPECT_GE(fuzzyScore("as always save", "save"), fuzzyScore("x save", "save"));
}

}
}
