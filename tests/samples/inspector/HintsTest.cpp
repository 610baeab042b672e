#include "Hints.h"

#include <string>

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "support/Json.h"

namespace InspectorPlugin {

namespace {

Widget widgetOf(const char* const member, const std::string& json) {
    return widgetFor(QuorvaneEngine::Test::parsed(json), hintFor(member));
}

TEST(Hints, TheTypeChoosesWhereNothingIsKnownOfTheName) {
    EXPECT_EQ(widgetOf("x", "true"), Widget::Checkbox);
    EXPECT_EQ(widgetOf("x", "3"), Widget::Integer);
    EXPECT_EQ(widgetOf("x", "3.5"), Widget::Number);
    EXPECT_EQ(widgetOf("x", "[1, 2]"), Widget::Integers);
    EXPECT_EQ(widgetOf("x", "[1, 2.5, 3]"), Widget::Numbers);
    EXPECT_EQ(widgetOf("x", R"("word")"), Widget::Line);
    EXPECT_EQ(widgetOf("x", R"("two\nlines")"), Widget::Lines);
    EXPECT_EQ(widgetOf("x", R"(["a", "b"])"), Widget::List);
    EXPECT_EQ(widgetOf("x", R"({"a": 1})"), Widget::Section);
    EXPECT_EQ(widgetOf("x", "[1, 2, 3, 4, 5]"), Widget::Section);
    EXPECT_EQ(widgetOf("x", R"([1, "a"])"), Widget::Section);
}

TEST(Hints, TheNameChoosesAmongWhatGoesWithTheType) {
    EXPECT_EQ(widgetOf("lampTint", "[1, 0.5, 0]"), Widget::Color);
    EXPECT_EQ(widgetOf("lampTint", "[1, 2]"), Widget::Integers);
    EXPECT_EQ(widgetOf("lampTint", "7"), Widget::Integer);
    EXPECT_EQ(widgetOf("mesh", R"("boy")"), Widget::Resource);
    EXPECT_EQ(widgetOf("texture", "null"), Widget::Resource);
    EXPECT_EQ(widgetOf("mesh", "7"), Widget::Integer);
    EXPECT_EQ(widgetOf("alphaMode", R"("opaque")"), Widget::Choice);
    EXPECT_EQ(widgetOf("layers", "5"), Widget::Bits);
    EXPECT_EQ(widgetOf("colorMask", "15"), Widget::Flags);
    EXPECT_EQ(widgetOf("layers", "5.5"), Widget::Number);
}

TEST(Hints, WhatAWidgetWouldSpoilHasNone) {
    EXPECT_EQ(widgetOf("x", "null"), Widget::None);
    EXPECT_EQ(widgetOf("x", "{}"), Widget::None);
    EXPECT_EQ(widgetOf("x", "[]"), Widget::None);
    EXPECT_EQ(widgetOf("x", "3000000000"), Widget::None);
    EXPECT_EQ(widgetOf("x", R"("a\u0000b")"), Widget::None);
}

TEST(Hints, TheFirstThatFitsCounts) {
    ASSERT_TRUE(hintFor("walkSpeed"));
    EXPECT_EQ(hintFor("walkSpeed")->unit, "m/s");
    ASSERT_TRUE(hintFor("scrollSpeed"));
    EXPECT_TRUE(hintFor("scrollSpeed")->unit.isEmpty());
    EXPECT_FALSE(hintFor("speed"));
    EXPECT_FALSE(hintFor(""));
}

}
}
