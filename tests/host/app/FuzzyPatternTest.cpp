#include "app/FuzzyPattern.h"

#include <gtest/gtest.h>

#include "support/Allocations.h"

namespace QuorvaneEngine {
namespace {

constexpr Int NoMatch = FuzzyPattern::NoMatch;

Int fuzzyScore(const Containers::StringView text, const Containers::StringView search) {
    return FuzzyPattern{search}.score(text);
}

TEST(FuzzyPattern, AllCharactersMustStandInTheTextInTheirOrder) {
    EXPECT_GE(fuzzyScore("Reload modules", "rlm"), 0);
    EXPECT_EQ(fuzzyScore("Reload modules", "mr"), NoMatch);
    EXPECT_EQ(fuzzyScore("Reload modules", "rlx"), NoMatch);
    EXPECT_EQ(fuzzyScore("a", "aa"), NoMatch);
    EXPECT_EQ(fuzzyScore("", "a"), NoMatch);
}

TEST(FuzzyPattern, NothingTypedFitsEverything) {
    EXPECT_EQ(fuzzyScore("Save", ""), 0);
    EXPECT_EQ(fuzzyScore("Save", "  "), 0);
    EXPECT_EQ(fuzzyScore("", ""), 0);
}

TEST(FuzzyPattern, CaseAndBlanksDoNotCount) {
    EXPECT_EQ(fuzzyScore("Reload modules", "RELOAD MOD"), fuzzyScore("Reload modules", "reloadmod"));
    EXPECT_GE(fuzzyScore("\u00c4pfel", "\u00e4"), 0);
    EXPECT_GE(fuzzyScore("\u0416\u0443\u043a", "\u0436\u043a"), 0);
    EXPECT_EQ(fuzzyScore("\u00c4pfel", "\u00f6"), NoMatch);
}

TEST(FuzzyPattern, BeginningsOfWordsCountMore) {
    EXPECT_GT(fuzzyScore("Reset layout", "rl"), fuzzyScore("Reload", "rl"));
    EXPECT_GT(fuzzyScore("menu.start", "s"), fuzzyScore("menus", "s"));
    EXPECT_GT(fuzzyScore("sourceText", "t"), fuzzyScore("source text", "x"));
    EXPECT_GT(fuzzyScore("open", "o"), fuzzyScore("an open", "o"));
}

TEST(FuzzyPattern, CharactersThatFollowEachOtherCountMore) {
    EXPECT_GT(fuzzyScore("xabcx", "abc"), fuzzyScore("xaxbxcx", "abc"));
}

TEST(FuzzyPattern, ATextHasTheScoreOfItsBestMatch) {
    // The first "s" and "a" are not those of "save".
    EXPECT_GE(fuzzyScore("as always save", "save"), fuzzyScore("x save", "save"));
}

TEST(FuzzyPattern, TheBeginningOfATextIsWorthWhatIsAskedFor) {
    FuzzyPattern even{"open", FuzzyPattern::WordStart};
    EXPECT_EQ(even.score("open"), even.score("an open"));
    EXPECT_LT(even.score("open"), FuzzyPattern{"open"}.score("open"));
}

TEST(FuzzyPattern, OnePatternLooksAtManyTextsWithoutMemoryOfTheOnesBefore) {
    FuzzyPattern pattern{"men st"};
    const Int score = pattern.score("menu.start");
    EXPECT_EQ(pattern.size(), 5u);
    const QuorvaneEngine::Test::Allocations counter;
    EXPECT_EQ(pattern.score("men"), NoMatch);
    EXPECT_LT(pattern.score("xmxexnxsxtx"), score);
    EXPECT_EQ(pattern.score(""), NoMatch);
    EXPECT_EQ(pattern.score("menu.start"), score);
    EXPECT_EQ(counter.count(), 0u);
}

TEST(FuzzyPattern, BytesThatAreNoTextMatchThemselves) {
    EXPECT_GE(fuzzyScore("a\xff"
                         "b",
                  "\xff"),
        0);
    EXPECT_EQ(fuzzyScore("a\xfe"
                         "b",
                  "\xff"),
        NoMatch);
}

}
}
