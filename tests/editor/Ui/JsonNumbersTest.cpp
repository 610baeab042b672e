#include "Ui/JsonNumbers.h"

#include <limits>

#include <Corrade/Containers/ArrayView.h>
#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "support/Json.h"

namespace QuorvaneEngine {
namespace {

using Test::parsed;
using Test::toText;

constexpr float MaxFloat = std::numeric_limits<float>::max();
constexpr Int MaxInt = std::numeric_limits<Int>::max();
constexpr Int MinInt = std::numeric_limits<Int>::min();

float readFloat(const char* json) {
    const rapidjson::Document document = parsed(json);
    return jsonFloat(&document);
}

Int readInt(const char* json) {
    const rapidjson::Document document = parsed(json);
    return jsonInt(&document);
}

TEST(JsonNumbers, FloatsAreReadFromAllTypesOfNumbers) {
    EXPECT_EQ(readFloat("2.5"), 2.5f);
    EXPECT_EQ(readFloat("-3"), -3.0f);
    EXPECT_EQ(readFloat("4294967295"), 4294967296.0f);
    EXPECT_EQ(readFloat("-4294967296"), -4294967296.0f);
    EXPECT_EQ(readFloat("18446744073709551615"), 18446744073709551616.0f);
}

TEST(JsonNumbers, WhatAFloatCannotHoldIsItsLimit) {
    EXPECT_EQ(readFloat("1e300"), MaxFloat);
    EXPECT_EQ(readFloat("-1e300"), -MaxFloat);
    EXPECT_EQ(readFloat("1e-300"), 0.0f);
    for(const double sign: {1.0, -1.0}) {
        const rapidjson::Value value{sign * std::numeric_limits<double>::infinity()};
        EXPECT_EQ(jsonFloat(&value), float(sign) * MaxFloat);
    }
    const rapidjson::Value value{std::numeric_limits<double>::quiet_NaN()};
    EXPECT_EQ(jsonFloat(&value), 0.0f);
}

TEST(JsonNumbers, IntegersAreRead) {
    EXPECT_EQ(readInt("5"), 5);
    EXPECT_EQ(readInt("2147483647"), MaxInt);
    EXPECT_EQ(readInt("-2147483648"), MinInt);
}

TEST(JsonNumbers, AnIntegerWithoutASignKeepsItsBits) {
    EXPECT_EQ(readInt("4294967295"), -1);
    EXPECT_EQ(readInt("2147483648"), MinInt);
}

TEST(JsonNumbers, BitsAreThoseOfAnIntegerOfUpTo64) {
    const struct {
        const char* json;
        UnsignedInt bits;
        const char* toggled;
    } cases[]{
        {"5", 5, "6"},
        {"-1", 0xffffffff, "-4"},
        {"2147483647", 0x7fffffff, "2147483644"},
        {"-2147483648", 0x80000000, "-2147483645"},
        {"4294967295", 0xffffffff, "-4"},
        {"4294967296", 0, "4294967299"},
        {"-4294967291", 5, "-4294967290"},
        {"9223372036854775807", 0xffffffff, "9223372036854775804"},
        {"18446744073709551614", 0xfffffffe, "18446744073709551613"},
        {"5.0", 5, "6"},
        {"-1.0", 0xffffffff, "-4"},
        {"2.5", 0, "3"},
        {"4294967296.0", 0, "3"},
        {"1e300", 0, "3"},
        {"-1e300", 0, "3"},
        {"true", 0, "3"},
        {"\"5\"", 0, "3"},
        {"null", 0, "3"},
    };
    for(const auto& each: cases) {
        const rapidjson::Document document = parsed(each.json);
        EXPECT_EQ(jsonBits(&document), each.bits) << each.json;
        EXPECT_EQ(toText(toggledBits(&document, 3)), each.toggled) << each.json;
    }
    EXPECT_EQ(jsonBits(nullptr), 0u);
    EXPECT_EQ(toText(toggledBits(nullptr, 0x80000000)), "-2147483648");
}

TEST(JsonNumbers, WhatAnIntegerCannotHoldIsTheNearestOne) {
    EXPECT_EQ(readInt("2.9"), 2);
    EXPECT_EQ(readInt("-2.9"), -2);
    EXPECT_EQ(readInt("3.0"), 3);
    EXPECT_EQ(readInt("1e300"), MaxInt);
    EXPECT_EQ(readInt("-1e300"), MinInt);
    EXPECT_EQ(readInt("4294967296"), MaxInt);
    EXPECT_EQ(readInt("-4294967296"), MinInt);
    EXPECT_EQ(readInt("18446744073709551615"), MaxInt);
}

TEST(JsonNumbers, WhatIsNoNumberIsZero) {
    for(const char* json: {"null", "true", "false", "\"5\"", "[5]", "{\"a\":5}"}) {
        EXPECT_EQ(readFloat(json), 0.0f) << json;
        EXPECT_EQ(readInt(json), 0) << json;
    }
    EXPECT_EQ(jsonFloat(nullptr), 0.0f);
    EXPECT_EQ(jsonInt(nullptr), 0);
}

TEST(JsonNumbers, OnlyArraysHaveElements) {
    const rapidjson::Document array = parsed("[1,2]");
    EXPECT_EQ(jsonElement(&array, 0), &array[0]);
    EXPECT_EQ(jsonElement(&array, 1), &array[1]);
    EXPECT_EQ(jsonElement(&array, 2), nullptr);
    for(const char* json: {"null", "1", "\"text\"", "{\"0\":1}", "[]"}) {
        const rapidjson::Document other = parsed(json);
        EXPECT_EQ(jsonElement(&other, 0), nullptr) << json;
    }
    EXPECT_EQ(jsonElement(nullptr, 0), nullptr);
}

TEST(JsonNumbers, FloatsAreWrittenAsDoubles) {
    EXPECT_EQ(toText(toJson(2.0f)), "2.0");
    EXPECT_EQ(toText(toJson(0.1f)), "0.10000000149011612");
    EXPECT_TRUE(toJson(2.0f).IsDouble());
    EXPECT_TRUE(toJson(2).IsInt());
    EXPECT_EQ(toText(toJson(-2)), "-2");
}

TEST(JsonNumbers, ArraysAreWrittenInOrder) {
    rapidjson::Document document;
    const float floats[]{1.0f, -2.5f, 3.0f};
    EXPECT_EQ(toText(toJson(Containers::ArrayView<const float>{floats}, document.GetAllocator())), "[1.0,-2.5,3.0]");
    const Int integers[]{4, -5};
    EXPECT_EQ(toText(toJson(Containers::ArrayView<const Int>{integers}, document.GetAllocator())), "[4,-5]");
    EXPECT_EQ(toText(toJson(Containers::ArrayView<const Int>{}, document.GetAllocator())), "[]");
}

}
}
