#include "Ui/PastedJson.h"

#include <string>

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "support/Json.h"

namespace QuorvaneEngine {
namespace {

using Test::toText;

constexpr UnsignedInt SomeDepth = 256;

/** What a text is read as, "refused" where it is not. */
std::string read(const std::string& text, UnsignedInt maxDepth = SomeDepth) {
    rapidjson::Document document;
    return readPastedJson({text.data(), text.size()}, maxDepth, document) ? toText(document) : "refused";
}

std::string nested(std::size_t depth) { return std::string(depth, '[') + std::string(depth, ']'); }

TEST(PastedJson, ValuesOfAllTypesAreRead) {
    for(const char* text:
        {"null", "true", "false", "1", "-2.5", "\"text\"", "[1,[],{}]", R"({"a":{"b":[null]},"c":""})"})
        EXPECT_EQ(read(text), text);
}

TEST(PastedJson, BlanksAroundTheValueAreSkipped) { EXPECT_EQ(read(" \r\n\t[ 1 , 2 ]\n"), "[1,2]"); }

TEST(PastedJson, AByteOrderMarkIsSkippedOnce) {
    EXPECT_EQ(read("\xef\xbb\xbf[1]"), "[1]");
    EXPECT_EQ(read("\xef\xbb\xbf"), "refused");
    EXPECT_EQ(read("\xef\xbb\xbf\xef\xbb\xbf[1]"), "refused");
    EXPECT_EQ(read("[\xef\xbb\xbf"
                   "1]"),
        "refused");
}

TEST(PastedJson, WhatIsNoJsonIsRefused) {
    for(const char* text: {"", " ", "nul", "text", "'text'", "[1,]", "[1", "1]", "{\"a\"}", "{a:1}", "1 2", "\"text",
            "\"\\", "\"\\x\"", "\"\t\"", "+1", "01", ".5", "1.", "1e", "-", "NaN", "Infinity", "[1] // comment"})
        EXPECT_EQ(read(text), "refused") << text;
}

TEST(PastedJson, ATextThatIsCutAnywhereIsRefused) {
    const std::string text = R"([{"a":"\u00e4\ud83d\ude00é","b":[-1.5e10,true,null]}])";
    ASSERT_NE(read(text), "refused");
    for(std::size_t size = 0; size != text.size(); ++size) EXPECT_EQ(read(text.substr(0, size)), "refused") << size;
}

TEST(PastedJson, AnyByteAnywhereDoesNoHarm) {
    const std::string text = R"({"a":["\u00e4\ud83d\ude00",1.5e3]})";
    for(std::size_t at = 0; at != text.size(); ++at)
        for(int byte = 0; byte != 256; ++byte) {
            std::string broken = text;
            broken[at] = char(byte);
            const std::string result = read(broken);
            // What is taken can be read again.
            if(result == "refused") continue;
            EXPECT_EQ(read(result), result) << at << ' ' << byte;
        }
}

TEST(PastedJson, ContainersAreAsDeepAsIsAllowed) {
    EXPECT_EQ(read(nested(3), 3), "[[[]]]");
    EXPECT_EQ(read(nested(4), 3), "refused");
    EXPECT_EQ(read(R"({"a":[{}]})", 3), R"({"a":[{}]})");
    EXPECT_EQ(read(R"({"a":[{}]})", 2), "refused");
    EXPECT_EQ(read("[]", 0), "refused");
    EXPECT_EQ(read("1", 0), "1");
    EXPECT_EQ(read(nested(256)), nested(256));
    EXPECT_EQ(read(nested(257)), "refused");
}

TEST(PastedJson, ContainersBesideEachOtherAreNotDeep) { EXPECT_EQ(read("[[],[],{},[]]", 2), "[[],[],{},[]]"); }

TEST(PastedJson, BracketsInTextsAreText) {
    EXPECT_EQ(read(R"(["[[[","\"[[[","\\"])", 1), R"(["[[[","\"[[[","\\"])");
    EXPECT_EQ(read(R"(["\ud83d\ude00[[["])", 1), "[\"\xf0\x9f\x98\x80[[[\"]");
}

TEST(PastedJson, ABombOfBracketsIsRefused) {
    EXPECT_EQ(read(std::string(1000000, '[')), "refused");
    EXPECT_EQ(read(nested(1000000)), "refused");
    std::string objects;
    for(int i = 0; i != 100000; ++i) objects += "{\"a\":";
    EXPECT_EQ(read(objects), "refused");
}

TEST(PastedJson, NumbersHaveNoMoreThanAHundredCharacters) {
    EXPECT_NE(read(std::string(100, '1')), "refused");
    EXPECT_EQ(read(std::string(101, '1')), "refused");
    EXPECT_EQ(read("0." + std::string(10000000, '1')), "refused");
}

TEST(PastedJson, ExponentsHaveNoMoreThanThreeDigits) {
    EXPECT_EQ(read("[1e100,1E+100,1e-10]"), "[1e100,1e100,1e-10]");
    EXPECT_EQ(read("1e-999"), "0.0");
    for(const char* text: {"1e999", "1e0010", "1e-0010", "1e2147483648", "0e99999999999", "1e-99999999999999999999",
            "1.1e+4294967296", "[0,-1E1000]"})
        EXPECT_EQ(read(text), "refused") << text;
}

TEST(PastedJson, DigitsInTextsAreNoNumbers) {
    const std::string text = '"' + std::string(1000, '1') + "e10000\"";
    EXPECT_EQ(read(text), text);
}

TEST(PastedJson, TextThatIsNotUtf8IsRefused) {
    for(const char* text: {"\"\xff\"", "\"\xc3\"", "\"\xc0\xaf\"", "\"\xed\xa0\x80\"", "\"\xf5\x80\x80\x80\"",
            "\"\x80\"", "{\"\xfe\":1}", "\xff\xfe[\0", "\"\xe2\x82\""})
        EXPECT_EQ(read(text), "refused") << testing::PrintToString(text);
    EXPECT_EQ(read("\"\xc3\xa4\xe2\x82\xac\xf0\x9f\x98\x80\""), "\"\xc3\xa4\xe2\x82\xac\xf0\x9f\x98\x80\"");
}

TEST(PastedJson, HalfASurrogatePairIsRefused) {
    for(const char* text:
        {R"("\ud83d")", R"("\ud83dx")", R"("\ud83d\u0041")", R"("\udc00")", R"("\uDFFF")", R"("\ude00\ud83d")",
            R"("\ud83d\ud83d")", R"("\ud83d\ude00\ude00")", R"({"\uDC00":1})", R"(["\\","\udc00"])"})
        EXPECT_EQ(read(text), "refused") << text;
    EXPECT_EQ(read(R"("\uD83D\uDE00\ud7ff\ue000")"), "\"\xf0\x9f\x98\x80\xed\x9f\xbf\xee\x80\x80\"");
    // A backslash that is escaped begins nothing.
    EXPECT_EQ(read(R"("\\udc00")"), R"("\\udc00")");
}

TEST(PastedJson, AKeyStandsOnceInAnObject) {
    for(const char* text: {R"({"a":1,"a":2})", R"([{"b":{"a":1,"c":2,"\u0061":3}}])", R"({"":1,"":1})"})
        EXPECT_EQ(read(text), "refused") << text;
    EXPECT_EQ(read(R"([{"a":1},{"a":{"a":2}}])"), R"([{"a":1},{"a":{"a":2}}])");
    // A zero byte does not end a key.
    EXPECT_EQ(read(R"({"a\u0000b":1,"a\u0000c":2})"), R"({"a\u0000b":1,"a\u0000c":2})");
}

TEST(PastedJson, TenMegabytesAreRead) {
    const std::string text = '"' + std::string(10000000, 'x') + '"';
    EXPECT_EQ(read(text), text);
    std::string numbers = "[0";
    while(numbers.size() < 10000000) numbers += ",0";
    numbers += ']';
    EXPECT_EQ(read(numbers), numbers);
}

}
}
