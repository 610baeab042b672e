#include "fonts/FontWords.h"

#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "fonts/LanguageLetters.h"
#include "localization/LanguageLookup.h"

namespace QuorvaneEngine {
namespace {

using Texts = std::initializer_list<std::pair<const char*, const char*>>;

std::vector<LanguageLetters> lettersOf(Texts texts) {
    LetterSet drawn;
    for(const char32_t letter: std::u32string{U"üשابที่é"}) drawn.add(letter);
    std::vector<LanguageLetters> all;
    for(const auto& [code, text]: texts) {
        LanguageLetters letters;
        letters.language = UnsignedInt(findLanguage(code));
        letters.add(text, drawn);
        all.push_back(std::move(letters));
    }
    return all;
}

std::string summary(Texts texts) {
    const std::vector<LanguageLetters> letters = lettersOf(texts);
    return FontWords::summary({letters.data(), letters.size()});
}

std::string details(Texts texts) {
    const std::vector<LanguageLetters> letters = lettersOf(texts);
    return FontWords::details({letters.data(), letters.size()});
}

TEST(FontWords, WhereAllIsWellThereIsNothingToTell) {
    EXPECT_EQ(summary({}), "");
    EXPECT_EQ(details({}), "");
    EXPECT_EQ(summary({{"de", "Tür"}, {"en", "Door"}}), "");
    EXPECT_EQ(details({{"de", "Tür"}, {"en", "Door"}}), "");
}

TEST(FontWords, OfOneLanguageTheWorstIsTold) {
    EXPECT_EQ(summary({{"de", "Tür"}, {"ja", "灯"}}), "Japanese: letters are missing");
    EXPECT_EQ(summary({{"ar", "ج"}}), "Arabic: letters are missing");
    EXPECT_EQ(summary({{"ar", "باب"}}), "Arabic: letters are not joined");
    EXPECT_EQ(summary({{"he", "ש"}}), "Hebrew: runs from left to right");
    EXPECT_EQ(summary({{"th", "ที่"}}), "Thai: accents may be misplaced");
}

TEST(FontWords, OfManyLanguagesTheFirstIsNamed) {
    EXPECT_EQ(summary({{"ar", "باب"}, {"de", "Tür"}, {"th", "ที่"}}), "Arabic, Thai: not drawn as written");
    EXPECT_EQ(summary({{"ar", "باب"}, {"de", "ß"}, {"th", "ที่"}}), "Arabic and 2 more: not drawn as written");
}

TEST(FontWords, EachLanguageIsToldWithItsReasons) {
    EXPECT_EQ(details({{"ar", "باب"}, {"de", "Tür"}, {"he", "ש"}}),
        "Arabic (ar): letters are not joined, runs from left to right\n"
        "Hebrew (he): runs from left to right\n\n"
        "This is how the editor shows these texts. What is saved and exported is as it was written.");
    EXPECT_EQ(details({{"ja", "灯台"}, {"de", "ß"}, {"th", "ที่"}}),
        "Japanese (ja): no font has 2 of its letters, such as U+706F\n"
        "German (de): no font has its letter U+00DF\n"
        "Thai (th): accents and vowel signs may be misplaced\n\n"
        "This is how the editor shows these texts. What is saved and exported is as it was written.\n"
        "Letters that are missing appear when a font that has them is installed and the editor starts anew.");
}

TEST(FontWords, CodePointsHaveFourDigitsOrMore) {
    EXPECT_EQ(FontWords::codePoint(0xdf), "U+00DF");
    EXPECT_EQ(FontWords::codePoint(0x1f600), "U+1F600");
}

}
}
