#include "PathParts.h"

#include <string>

#include <gtest/gtest.h>

namespace QuorvaneEngine {
namespace {

TEST(PathParts, APointerBeginsWithASlashAndHasNoOtherEscapesThanItsOwn) {
    for(const char* path: {"/", "/a", "/a/b", "//", "/~0", "/~1~0", "/ %"}) EXPECT_TRUE(isPointer(path)) << path;
    for(const char* path: {"", "a", "#/a", "/~", "/a~", "/~2", "/~/b"}) EXPECT_FALSE(isPointer(path)) << path;
    EXPECT_FALSE(isPointer({}));
}

TEST(PathParts, TheLastSlashIsFoundOrIsNot) {
    EXPECT_EQ(lastSlash("/a/b"), 2u);
    EXPECT_EQ(lastSlash("/a/"), 2u);
    EXPECT_EQ(lastSlash("/"), 0u);
    EXPECT_EQ(lastSlash("a"), NoSlash);
    EXPECT_EQ(lastSlash({}), NoSlash);
}

TEST(PathParts, EscapesStandForTildeAndSlash) {
    EXPECT_TRUE(unescaped("a~1b~0c") == "a/b~c");
    EXPECT_TRUE(unescaped("~01") == "~1");
    EXPECT_TRUE(unescaped("") == "");
    EXPECT_EQ(unescaped({"a\0b", 3}).size(), 3u);
}

TEST(PathParts, AKeyIsEscapedSoThatItIsOneTokenAndItselfAgain) {
    EXPECT_TRUE(escaped("a/b~c") == "a~1b~0c");
    EXPECT_TRUE(escaped("~1") == "~01");
    EXPECT_TRUE(escaped("plain key") == "plain key");
    EXPECT_TRUE(escaped("") == "");
    for(const Containers::StringView key: {Containers::StringView{"~~//~0~1"}, {"a\0/", 3}, {"/", 1}}) {
        EXPECT_TRUE(isPointer("/" + escaped(key)));
        EXPECT_EQ(lastSlash("/" + escaped(key)), 0u);
        EXPECT_TRUE(unescaped(escaped(key)) == key);
    }
}

/** As "valid element negative value". */
std::string shown(Containers::StringView token) {
    const TokenIndex index = tokenIndex(token);
    return std::string{index.valid ? "valid " : ""} + (index.isElement ? "element " : "") +
        (index.negative ? "-" : "") + std::to_string(index.value);
}

TEST(PathParts, DigitsAreTheIndexOfAnElement) {
    EXPECT_EQ(shown("0"), "valid element 0");
    EXPECT_EQ(shown("120"), "valid element 120");
    EXPECT_EQ(shown("4294967294"), "valid element 4294967294");
}

TEST(PathParts, ANumberWrittenInAnyOtherWayIsNoElement) {
    EXPECT_EQ(shown("007"), "valid 7");
    EXPECT_EQ(shown("00"), "valid 0");
    EXPECT_EQ(shown("-0"), "valid 0");
    EXPECT_EQ(shown("-3"), "valid -3");
    EXPECT_EQ(shown({"12\0x", 4}), "valid 12");
    EXPECT_EQ(shown({"12\0", 3}), "valid 12");
}

TEST(PathParts, ANumberThatIsTooLargeIsNoElement) {
    EXPECT_EQ(shown("4294967295"), "valid 4294967295");
    EXPECT_EQ(shown("18446744073709551616"), "valid 18446744073709551615");
    EXPECT_EQ(shown("-18446744073709551616"), "valid -18446744073709551615");
}

TEST(PathParts, WhatIsNotAllDigitsIsNoNumber) {
    for(const char* token: {"", "-", "--1", "+1", "1a", "a1", "1-", " 1", "1.5"})
        EXPECT_FALSE(tokenIndex(token).valid) << token;
    EXPECT_FALSE(tokenIndex({"\0001", 2}).valid);
    EXPECT_FALSE(tokenIndex({"-\0", 2}).valid);
}

}
}
