#include "fonts/LanguageLetters.h"

#include <string>

#include <gtest/gtest.h>

namespace QuorvaneEngine {
namespace {

LanguageLetters lettersOf(const char* const text, const LetterSet& drawn = {}) {
    LanguageLetters letters;
    letters.add(text, drawn);
    return letters;
}

/** j for joined, l for what runs to the left, m for marks. */
std::string shaping(const char* const text) {
    const LanguageLetters letters = lettersOf(text);
    return std::string{letters.isJoined ? "j" : ""} + (letters.isRightToLeft ? "l" : "") +
        (letters.hasMarks ? "m" : "");
}

TEST(LanguageLetters, AsciiIsAlwaysDrawn) {
    EXPECT_TRUE(lettersOf("A door!\n\t").isWell());
    EXPECT_TRUE(lettersOf("").isWell());
}

TEST(LanguageLetters, CountsDifferentLettersThatNoFontHas) {
    LetterSet drawn;
    drawn.add(U'ü');
    LanguageLetters letters = lettersOf("Tür", drawn);
    EXPECT_TRUE(letters.isWell());
    letters.add("灯台灯", drawn);
    letters.add("台ü", drawn);
    EXPECT_FALSE(letters.isWell());
    EXPECT_EQ(letters.undrawn, 2u);
    EXPECT_EQ(unsigned(letters.firstUndrawn), unsigned(U'灯'));
}

TEST(LanguageLetters, WhatHasNoInkNeedsNoFont) {
    EXPECT_EQ(lettersOf("a\u00a0b\u200bc\u2060d\ufe0f\u3000").undrawn, 0u);
    EXPECT_EQ(lettersOf("\xff").undrawn, 1u);
    EXPECT_EQ(unsigned(lettersOf("\xff").firstUndrawn), 0xfffdu);
}

TEST(LanguageLetters, WhatLettersNeedMore) {
    const struct {
        const char* text;
        const char* shaping;
    } texts[]{{"Grüße, ñ ß Œ", ""}, {"Привет", ""}, {"Γειά", ""}, {"שלום", "l"}, {"سلام", "jl"}, {"नमस्ते", "m"},
        {"กา", ""}, {"ที่", "m"}, {"こんにちは", ""}, {"한국어", ""}, {"\u1112\u1161\u11ab", "j"}, {"中文", ""},
        {"e\u0301", "m"}, {"“…”\u00a0—", ""}, {"a\u200bb\u2060\ufe0f", ""}, {"ᠮᠣᠩᠭᠣᠯ", "j"}};
    for(const auto& text: texts) EXPECT_EQ(shaping(text.text), text.shaping) << text.text;
}

}
}
