#include "CaseFolding.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace QuorvaneEngine {
namespace {

std::u32string folded(const std::string& text) {
    std::u32string characters;
    for(const char *at = text.data(), *end = at + text.size(); at != end;) characters += nextFolded(at, end);
    return characters;
}

TEST(CaseFolding, LettersLoseTheirCaseAndOthersStay) {
    EXPECT_EQ(folded("aZ09[@`{"), U"az09[@`{");
    EXPECT_EQ(folded("\u00c4\u0416\u03a3\u03c2"), U"\u00e4\u0436\u03c3\u03c3");
    EXPECT_EQ(folded("\U00010400"), U"\U00010428");
    EXPECT_EQ(folded(std::string{"\0", 1}), std::u32string(1, U'\0'));
}

TEST(CaseFolding, WhatWouldBecomeSeveralLettersStays) { EXPECT_EQ(folded("\u00df"), U"\u00df"); }

TEST(CaseFolding, BytesThatAreNotValidAreNumbersBeyondUnicode) {
    const std::u32string characters = folded("\xff"
                                             "a\xc3");
    ASSERT_EQ(characters.size(), 3u);
    EXPECT_EQ(characters[0], char32_t(0x110000 + 0xff));
    EXPECT_EQ(characters[1], U'a');
    EXPECT_EQ(characters[2], char32_t(0x110000 + 0xc3));
}

}
}
