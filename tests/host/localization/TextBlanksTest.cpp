#include "TextBlanks.h"

#include <string>

#include <gtest/gtest.h>

namespace QuorvaneEngine {

TEST(TextBlanks, AreThoseAroundATextAlone) {
    EXPECT_EQ(TextBlanks::leading(" \t\na b "), " \t\n");
    EXPECT_EQ(TextBlanks::trailing(" a b\r\n "), "\r\n ");
    EXPECT_EQ(TextBlanks::trimmed(" \ta b\n"), "a b");
    EXPECT_EQ(TextBlanks::leading("a"), "");
    EXPECT_EQ(TextBlanks::trailing("a"), "");
}

TEST(TextBlanks, OfATextOfBlanksAllAreLeading) {
    EXPECT_EQ(TextBlanks::leading("  "), "  ");
    EXPECT_EQ(TextBlanks::trailing("  "), "");
    EXPECT_EQ(TextBlanks::trimmed("  "), "");
    EXPECT_EQ(TextBlanks::leading(""), "");
    EXPECT_EQ(TextBlanks::trailing(""), "");
    EXPECT_EQ(TextBlanks::trimmed({}), "");
}

TEST(TextBlanks, AreThoseOfUnicode) {
    // No-break, ideographic and narrow no-break space, line separator, byte order mark
    for(const std::string blank: {"\u00a0", "\u3000", "\u202f", "\u2028", "\ufeff"}) {
        const std::string text = blank + "é" + blank;
        EXPECT_EQ(TextBlanks::leading(text.c_str()), blank.c_str());
        EXPECT_EQ(TextBlanks::trailing(text.c_str()), blank.c_str());
    }
    // Zero width space and joiner
    for(const char* const text: {"\u200b", "\u200d", "é", "\xff", "\xc2", "\x80"}) {
        EXPECT_EQ(TextBlanks::leading(text), "");
        EXPECT_EQ(TextBlanks::trailing(text), "");
    }
}

}
