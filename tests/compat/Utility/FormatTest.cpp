#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>
#include <Corrade/Utility/Format.h>
#include <gtest/gtest.h>

#include "Print.h"

using namespace Corrade;
using namespace Corrade::Containers::Literals;
using Utility::format;

TEST(Format, ReplacesPlaceholdersInOrder) {
    EXPECT_EQ(format("hello, {} and {}!", "you", 3), "hello, you and 3!");
    EXPECT_EQ(format("nothing"), "nothing");
    EXPECT_EQ(format(""), "");
}

TEST(Format, ReplacesByPositionAndGoesOnFromThere) {
    EXPECT_EQ(format("{1} {0} {}", "a", "b", "c"), "b a b");
    EXPECT_EQ(format("{2}{}", "a", "b", "c"), "c{}");
}

TEST(Format, LeavesPlaceholdersWithoutValuesAndUnescapesBraces) {
    EXPECT_EQ(format("{} {} {7:x}", 1), "1 {} {7:x}");
    EXPECT_EQ(format("{{}} {{{}}}", 1), "{} {1}");
}

TEST(Format, FormatsEveryKindOfText) {
    const Containers::String string{"string"};
    char mutableText[]{"mutable"};
    EXPECT_EQ(format("{} {} {} {}", string, "view"_s, mutableText, "a text of more than twenty-two bytes"_s),
        "string view mutable a text of more than twenty-two bytes");
    EXPECT_EQ(format("{}", Containers::StringView{"abc", 2}), "ab");
    EXPECT_EQ(format("{}", Containers::StringView{}), "");
    EXPECT_EQ(format("{:.2}", "abc"), "ab");
}

TEST(Format, FormatsIntegersWithTheLeastNumberOfDigits) {
    EXPECT_EQ(format("{} {} {} {}", -1, 5u, -7l, 18446744073709551615ull), "-1 5 -7 18446744073709551615");
    EXPECT_EQ(format("{} {}", true, 'a'), "1 97");
    EXPECT_EQ(format("{:.3} {:.4d}", 5, -12), "005 -0012");
    EXPECT_EQ(format("{:x} {:X} {:o} {:c}", 255, 255u, 8, 'a'), "ff FF 10 a");
    EXPECT_EQ(format("{:x} {:x}", -1, -1ll), "ffffffff ffffffffffffffff");
}

TEST(Format, FormatsFloatingPointNumbersWithTheirPrecision) {
    EXPECT_EQ(format("{} {}", 0.1f, 0.1), "0.1 0.1");
    EXPECT_EQ(format("{} {}", 1.0f / 3, 1.0 / 3), "0.333333 0.333333333333333");
    EXPECT_EQ(format("{:.3} {:.2f} {:.1e} {:G}", 3.14159, 2.0f, 1234.5, 1e20), "3.14 2.00 1.2e+03 1E+20");
}

TEST(Format, IntoABufferReturnsTheSize) {
    char buffer[8];
    EXPECT_EQ(Utility::formatInto(buffer, "{}-{}", "ab", 12), 5);
    EXPECT_EQ((Containers::StringView{buffer, 5}), "ab-12");
    EXPECT_EQ(Utility::formatInto(Containers::MutableStringView{}, "{}", "counted only"), 12);
}

TEST(FormatDeath, WrongFormatsAbort) {
    EXPECT_DEATH(format("{", 1), "Utility::format\\(\\): unexpected end of format string\n");
    EXPECT_DEATH(format("}", 1), "Utility::format\\(\\): mismatched }\n");
    EXPECT_DEATH(format("{name}", 1), "Utility::format\\(\\): unknown placeholder content: n\n");
    EXPECT_DEATH(format("{:h}", 1), "Utility::format\\(\\): invalid type specifier: h\n");
    EXPECT_DEATH(format("{:.d}", 1), "Utility::format\\(\\): invalid character in precision specifier: d\n");
    EXPECT_DEATH(format("{:x}", 1.0), "Utility::format\\(\\): integral type used for a floating-point value\n");
    EXPECT_DEATH(format("{:c}", 1.0), "Utility::format\\(\\): character type used for a floating-point value\n");
    EXPECT_DEATH(format("{:f}", 1), "Utility::format\\(\\): floating-point type used for an integral value\n");
    EXPECT_DEATH(format("{:c}", 1ll), "Utility::format\\(\\): character type used for a 64-bit value\n");
    EXPECT_DEATH(format("{:x}", "a"), "Utility::format\\(\\): type specifier can't be used for a string value\n");
}

TEST(FormatDeath, ATooSmallBufferAborts) {
    char buffer[4];
    EXPECT_DEATH(Utility::formatInto(buffer, "hello"),
        "Utility::formatInto\\(\\): buffer too small, expected at least 5 but got 4\n");
    EXPECT_DEATH(Utility::formatInto(buffer, "{}", 12345),
        "Utility::formatInto\\(\\): buffer too small, expected at least 5 but got 4\n");
}
