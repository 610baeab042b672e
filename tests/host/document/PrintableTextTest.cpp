#include "PrintableText.h"

#include <string>

#include <gtest/gtest.h>

namespace QuorvaneEngine {
namespace {

std::string shown(const std::string& text) {
    const Containers::String printed = printable({text.data(), text.size()});
    return {printed.data(), printed.size()};
}

TEST(PrintableText, WhatCanBePrintedStaysAsItIs) {
    for(const char* const text:
        {"", "de/translation.json", "a\\b \"c\" 'd'", "Übersetzung", "日本語", "👨‍👩‍👧"})
        EXPECT_EQ(shown(text), text);
}

TEST(PrintableText, ControlCharactersAreShownAsEscapes) {
    EXPECT_EQ(shown("a\nb\rc\td"), "a\\nb\\rc\\td");
    EXPECT_EQ(shown("\x1b[31mred\x7f"), "\\x1b[31mred\\x7f");
    EXPECT_EQ(shown(std::string{"a\0b", 3}), "a\\x00b");
    // The one byte that some terminals take for the beginning of a sequence, as a character of its own.
    EXPECT_EQ(shown("\xc2\x9b"), "\\u009b");
}

TEST(PrintableText, SeparatorsAndTurnsOfDirectionAreShownAsEscapes) {
    EXPECT_EQ(shown("a\u2028b\u2029c"), "a\\u2028b\\u2029c");
    EXPECT_EQ(shown("\u202egnp.nosj\u2066\u200f"), "\\u202egnp.nosj\\u2066\\u200f");
}

TEST(PrintableText, BytesThatAreNotUtf8AreShownAsEscapes) {
    EXPECT_EQ(shown("\xff"), "\\xff");
    EXPECT_EQ(shown("M\x82nu"), "M\\x82nu");
    EXPECT_EQ(shown("\xe2\x82"), "\\xe2\\x82");
    EXPECT_EQ(shown("\xed\xa0\x80\xc3\xa4"), "\\xed\\xa0\\x80\u00e4");
    EXPECT_EQ(shown("\xf4\x90\x80\x80"), "\\xf4\\x90\\x80\\x80");
}

}
}
