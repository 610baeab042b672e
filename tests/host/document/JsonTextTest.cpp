#include "JsonText.h"

#include <cmath>
#include <cstring>
#include <limits>
#include <random>

#include <gtest/gtest.h>

#include "TestDocument.h"

namespace QuorvaneEngine {

namespace {

std::string number(double value) { return printed(rapidjson::Value{value}); }

}

TEST(JsonText, ScalarsAndContainersAreCompact) {
    for(const char* json: {"null", "true", "false", "0", "-7", R"("")", R"("a b")", "[]", "{}", "[1,[],{}]",
            R"({"a":1,"":[true,null],"b":{"c":{}}})"})
        EXPECT_EQ(printed(parsed(json)), json);
}

TEST(JsonText, IntegersKeepAllDigits) {
    EXPECT_EQ(printed(rapidjson::Value{std::numeric_limits<std::int64_t>::min()}), "-9223372036854775808");
    EXPECT_EQ(printed(rapidjson::Value{std::numeric_limits<std::uint64_t>::max()}), "18446744073709551615");
    EXPECT_EQ(printed(rapidjson::Value{std::numeric_limits<std::int32_t>::min()}), "-2147483648");
}

TEST(JsonText, DoublesKeepAPoint) {
    EXPECT_EQ(number(0.0), "0.0");
    EXPECT_EQ(number(-0.0), "-0.0");
    EXPECT_EQ(number(1.0), "1.0");
    EXPECT_EQ(number(-3.0), "-3.0");
    EXPECT_EQ(number(0.1), "0.1");
    EXPECT_EQ(number(100000.0), "100000.0");
    EXPECT_EQ(number(1e15), "1000000000000000.0");
    EXPECT_EQ(number(1e16), "1.0e+16");
    EXPECT_EQ(number(1.5e300), "1.5e+300");
    EXPECT_EQ(number(1e-4), "0.0001");
    EXPECT_EQ(number(1e-5), "1.0e-05");
    EXPECT_EQ(number(1.0 / 3.0), "0.3333333333333333");
    EXPECT_EQ(number(double(0.1f)), "0.10000000149011612");
}

TEST(JsonText, WhatIsNotFiniteIsNull) {
    EXPECT_EQ(number(std::numeric_limits<double>::infinity()), "null");
    EXPECT_EQ(number(-std::numeric_limits<double>::infinity()), "null");
    EXPECT_EQ(number(std::numeric_limits<double>::quiet_NaN()), "null");
}

TEST(JsonText, DoublesReadBackAsTheSameDoubles) {
    std::mt19937_64 random{4};
    std::size_t compared = 0;
    for(int i = 0; i != 100000; ++i) {
        const std::uint64_t bits = random();
        double value;
        std::memcpy(&value, &bits, sizeof(value));
        if(i % 2) value = double(std::int64_t(bits) >> (bits % 60)) / 1000.0;
        if(!std::isfinite(value)) continue;
        const rapidjson::Document back = parsed(number(value));
        ASSERT_TRUE(back.IsDouble()) << number(value);
        const double read = back.GetDouble();
        // Numbers so small that they have lost digits are read as their neighbours by the library's own reader.
        if(std::abs(value) < std::numeric_limits<double>::min())
            ASSERT_EQ(std::strtod(number(value).data(), nullptr), value);
        else ASSERT_EQ(std::memcmp(&read, &value, sizeof(value)), 0) << number(value);
        ++compared;
    }
    EXPECT_GT(compared, 90000u);
}

TEST(JsonText, ControlCharactersQuotesAndBackslashesAreEscaped) {
    std::string all;
    for(int c = 0; c != 0x20; ++c) all += char(c);
    std::string text;
    appendJsonString(text, all + "\"\\/\x7f");
    EXPECT_EQ(text,
        R"("\u0000\u0001\u0002\u0003\u0004\u0005\u0006\u0007\b\t\n\u000B\f\r\u000E\u000F)"
        R"(\u0010\u0011\u0012\u0013\u0014\u0015\u0016\u0017\u0018\u0019\u001A\u001B\u001C\u001D\u001E\u001F)"
        "\\\"\\\\/\x7f\"");
}

TEST(JsonText, CharactersStayAsTheyAre) {
    for(const char* json: {R"("äß 語 🐉")", R"({"ключ":"значение"})"}) EXPECT_EQ(printed(parsed(json)), json);
    std::string text;
    appendJsonString(text, "\xff\xc3");
    EXPECT_EQ(text, "\"\xff\xc3\"");
}

TEST(JsonText, KeysAreEscapedAsTextsAre) {
    const char* const json = R"({"a\"\n\u0000":1})";
    EXPECT_EQ(printed(parsed(json)), json);
}

TEST(JsonText, AnyDepthIsPrinted) {
    rapidjson::Document document;
    rapidjson::Value value{1};
    for(int i = 0; i != 500000; ++i) {
        rapidjson::Value outer{i % 2 ? rapidjson::kArrayType : rapidjson::kObjectType};
        if(i % 2) outer.PushBack(value, document.GetAllocator());
        else outer.AddMember("a", value, document.GetAllocator());
        value = outer;
    }
    EXPECT_EQ(printed(value).size(), 500000u / 2 * (2 + 6) + 1);
}

}
