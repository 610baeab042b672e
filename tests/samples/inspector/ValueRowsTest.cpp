#include "ValueRows.h"

#include <string>

#include <gtest/gtest.h>

#include "QuorvaneEditor/ProjectFile.h"
#include "support/Json.h"

namespace InspectorPlugin {

namespace {

class ValueRowsTest: public testing::Test {
protected:
    std::string labels() {
        std::string out;
        for(const ValueRows::Row& row: rows.rows()) out += std::string(std::size_t(row.depth), '>') + row.label + " ";
        return out;
    }

    ProjectFile project;
    ValueRows rows;
};

TEST_F(ValueRowsTest, AreTheMembersInTheirOrderWithoutTheName) {
    QuorvaneEngine::Test::load(project, R"({"o": {"b": 1, "name": "Door", "a": {"x": 1, "name": "n"}}})");
    EXPECT_TRUE(rows.update(project, "/o"));
    EXPECT_EQ(labels(), "b a ");
    EXPECT_FALSE(rows.update(project, "/o"));
    rows.toggle(rows.rows()[1]);
    EXPECT_TRUE(rows.update(project, "/o"));
    EXPECT_EQ(labels(), "b a >x >name ");
    EXPECT_EQ(rows.rows()[2].path, "/o/a/x");
    EXPECT_EQ(rows.rows()[2].parent, "/o/a");
    rows.toggle(rows.rows()[1]);
    rows.update(project, "/o");
    EXPECT_EQ(labels(), "b a ");
}

TEST_F(ValueRowsTest, ANameThatIsNoTextIsAValueLikeOthers) {
    QuorvaneEngine::Test::load(project, R"({"o": {"name": 7}})");
    rows.update(project, "/o");
    EXPECT_EQ(labels(), "name ");
}

TEST_F(ValueRowsTest, ElementsAreNumberedAndKnownByTheirArraysName) {
    QuorvaneEngine::Test::load(project, R"({"colors": [[1, 0, 0], [0, 1, 0]], "color": [[1, 0, 0], [0, 1, 0]]})");
    rows.update(project, "/color");
    EXPECT_EQ(labels(), "0 1 ");
    EXPECT_EQ(rows.rows()[0].widget, Widget::Color);
    EXPECT_EQ(rows.rows()[0].size, 3u);
    rows.update(project, "/colors");
    EXPECT_EQ(rows.rows()[0].widget, Widget::Integers);
}

TEST_F(ValueRowsTest, KeysAreEscapedInPathsAndShownAsTheyAre) {
    QuorvaneEngine::Test::load(project, R"({"o": {"a/b~c": 1}})");
    rows.update(project, "/o");
    EXPECT_EQ(rows.rows()[0].label, "a/b~c");
    EXPECT_EQ(rows.rows()[0].token, "a~1b~0c");
    EXPECT_EQ(rows.rows()[0].path, "/o/a~1b~0c");
}

TEST_F(ValueRowsTest, WhatNoWidgetEditsIsShownAsText) {
    QuorvaneEngine::Test::load(project,
        R"({"o": {"a": null, "b": 12345678901, "c": [], "d": {}, "e": -12345678901, "f": {"x": 1}, "g": [1, "x"], "": 1,
            "h": "a\u0000b"}})");
    rows.update(project, "/o");
    const char* const texts[]{"null", "12345678901", "no elements", "no members", "-12345678901", "1 member",
        "2 elements", "1", "a text with zero bytes"};
    ASSERT_EQ(rows.rows().size(), std::size(texts));
    for(std::size_t i = 0; i != std::size(texts); ++i) EXPECT_EQ(rows.rows()[i].text, texts[i]) << i;
}

TEST_F(ValueRowsTest, AValueThatIsNotThereHasNone) {
    QuorvaneEngine::Test::load(project, R"({"o": 1})");
    rows.update(project, "/p");
    EXPECT_TRUE(rows.rows().empty());
    rows.update(project, "/o");
    EXPECT_TRUE(rows.rows().empty());
}

}
}
