#include "Utf8.h"

#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace QuorvaneEngine {
namespace {

/** How many bytes are plain, in memory that ends where they do, so that a sanitizer sees a read behind it. */
std::size_t plain(const std::string& text) {
    const std::vector<char> exact{text.begin(), text.end()};
    return std::size_t(skipPlainText(exact.data(), exact.data() + exact.size()) - exact.data());
}

/** The same, one sequence after the other. */
std::size_t plainOneByOne(const std::string& text) {
    std::size_t at = 0;
    while(at != text.size()) {
        const auto byte = static_cast<unsigned char>(text[at]);
        if(byte < 0x20 || byte == '"' || byte == '\\') break;
        const std::size_t size = utf8SequenceSize(text.data() + at, text.data() + text.size());
        if(!size) break;
        at += size;
    }
    return at;
}

std::string encoded(const unsigned character) {
    if(character < 0x80) return {char(character)};
    if(character < 0x800) return {char(0xc0 | character >> 6), char(0x80 | (character & 63))};
    if(character < 0x10000)
        return {char(0xe0 | character >> 12), char(0x80 | (character >> 6 & 63)), char(0x80 | (character & 63))};
    return {char(0xf0 | character >> 18), char(0x80 | (character >> 12 & 63)), char(0x80 | (character >> 6 & 63)),
        char(0x80 | (character & 63))};
}

TEST(Utf8, EveryCharacterIsOneSequence) {
    for(unsigned character = 0; character != 0x110000; ++character) {
        const std::string text = encoded(character);
        const bool isSurrogate = character >= 0xd800 && character < 0xe000;
        ASSERT_EQ(utf8SequenceSize(text.data(), text.data() + text.size()), isSurrogate ? 0 : text.size()) << character;
        const bool isCutWell = text.size() == 1 || utf8SequenceSize(text.data(), text.data() + text.size() - 1) == 0;
        ASSERT_TRUE(isCutWell) << character;
    }
}

TEST(Utf8, WhatIsNoSequenceHasNoSize) {
    for(const std::string text:
        {"\x80", "\xbf", "\xc0\x80", "\xc1\xbf", "\xc2", "\xc2\x7f", "\xc2\xc0", "\xe0\x9f\xbf", "\xe1\x80",
            "\xe1\x80\x7f", "\xf0\x8f\xbf\xbf", "\xf1\x80\x80", "\xf4\x90\x80\x80", "\xf5\x80\x80\x80", "\xff"})
        EXPECT_EQ(utf8SequenceSize(text.data(), text.data() + text.size()), 0) << testing::PrintToString(text);
}

TEST(Utf8, PlainTextEndsWhereAStringHasToEscape) {
    EXPECT_EQ(plain(""), 0);
    EXPECT_EQ(plain("abc"), 3);
    EXPECT_EQ(plain("\x7f \xc3\xa4"), 4);
    for(const char stop: {'"', '\\', '\n', '\0', '\x1f'})
        for(std::size_t before = 0; before != 40; ++before)
            EXPECT_EQ(plain(std::string(before, 'a') + stop + std::string(20, 'b')), before);
}

TEST(Utf8, PlainTextEndsBeforeABrokenSequenceAtAnyPlace) {
    for(const std::string broken:
        {"\x80", "\xff", "\xc3", "\xc3(", "\xc0\x80", "\xe0\x9f\xbf", "\xed\xa0\x80", "\xe2\x82", "\xe2\x82\"",
            "\xf0\x8f\xbf\xbf", "\xf4\x90\x80\x80", "\xf0\x9f\x98", "\xf5\x80\x80\x80", "\xc3\xa4\xa4"})
        for(std::size_t before = 0; before != 40; ++before)
            for(const std::string behind: {"", "b", "\xc3\xa4", "0123456789012345678901234567890123456789"}) {
                const std::string text = std::string(before, 'a') + broken + behind;
                EXPECT_EQ(plain(text), plainOneByOne(text)) << testing::PrintToString(text);
                const std::string foreign = std::string(before % 3, 'a') + encoded(0x20ac) + encoded(0x1f600) + text;
                EXPECT_EQ(plain(foreign), plainOneByOne(foreign)) << testing::PrintToString(foreign);
            }
}

TEST(Utf8, PlainTextOfAnyCharactersIsWhatItIsOneByOne) {
    static constexpr unsigned Characters[]{
        'a', ' ', 0x7f, 0x80, 0xe4, 0x7ff, 0x800, 0xfff, 0x20ac, 0xd7ff, 0xe000, 0xffff, 0x10000, 0x1f600, 0x10ffff};
    std::mt19937 random{3};
    std::size_t broken = 0;
    for(int i = 0; i != 100000; ++i) {
        std::string text;
        for(unsigned count = random() % 40; count; --count)
            text += encoded(Characters[random() % std::size(Characters)]);
        if(i % 2 && !text.empty()) {
            text[random() % text.size()] = char(random());
            ++broken;
        }
        if(i % 8 == 0) text.resize(random() % (text.size() + 1));
        ASSERT_EQ(plain(text), plainOneByOne(text)) << testing::PrintToString(text);
    }
    EXPECT_GT(broken, 1000);
}

}
}
