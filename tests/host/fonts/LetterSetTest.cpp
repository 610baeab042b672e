#include "fonts/LetterSet.h"

#include <gtest/gtest.h>

namespace QuorvaneEngine {
namespace {

TEST(LetterSet, HasWhatWasAddedAndNothingElse) {
    LetterSet letters;
    EXPECT_FALSE(letters.has(0));
    letters.add(0);
    letters.add(0x4e00);
    letters.add(0x10ffff);
    for(char32_t letter: {0u, 0x4e00u, 0x10ffffu}) EXPECT_TRUE(letters.has(letter)) << unsigned(letter);
    for(char32_t letter: {1u, 0x4dffu, 0x4e01u, 0x10fffeu}) EXPECT_FALSE(letters.has(letter)) << unsigned(letter);
}

TEST(LetterSet, WhatIsNoCodePointIsLeftOut) {
    LetterSet letters;
    letters.add(0x110000);
    letters.add(0xffffffff);
    EXPECT_FALSE(letters.has(0x110000));
    EXPECT_FALSE(letters.has(0xffffffff));
}

TEST(LetterSet, IsEmptyAfterClear) {
    LetterSet letters;
    letters.add('a');
    letters.clear();
    EXPECT_FALSE(letters.has('a'));
}

}
}
