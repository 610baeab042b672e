#include "DocumentTree.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "QuorvaneEditor/ProjectFile.h"
#include "support/Json.h"

namespace InspectorPlugin {

namespace {

class DocumentTreeTest: public testing::Test {
protected:
    void load(const std::string& json) { QuorvaneEngine::Test::load(project, json); }

    std::vector<std::string> paths(const std::string& search = {}) {
        tree.update(project, search);
        std::vector<std::string> out;
        for(std::size_t i = 0; i != tree.size(); ++i) {
            out.push_back(tree.row(i).path);
            EXPECT_EQ(tree.rowOf(out.back()), i) << out.back();
        }
        return out;
    }

    using Paths = std::vector<std::string>;

    ProjectFile project;
    DocumentTree tree;
};

TEST_F(DocumentTreeTest, HasTheObjectsOfTheRootAndNoPlainValues) {
    load(R"({"a": {"x": {}}, "b": 1, "c": [1, 2], "d": [{}], "e": "f"})");
    EXPECT_EQ(paths(), (Paths{"/a", "/d"}));
}

TEST_F(DocumentTreeTest, WhatIsUnfoldedHasItsRowsBelowIt) {
    load(R"({"a": {"x": {"y": {}}, "z": {}}, "b": {"w": {}}, "c": [{}, {}]})");
    tree.setOpen("/a", true);
    EXPECT_EQ(paths(), (Paths{"/a", "/a/x", "/a/z", "/b", "/c"}));
    tree.setOpen("/c", true);
    tree.setOpen("/a/x", true);
    EXPECT_EQ(paths(), (Paths{"/a", "/a/x", "/a/x/y", "/a/z", "/b", "/c", "/c/0", "/c/1"}));
    EXPECT_EQ(tree.row(2).depth, 2);
    EXPECT_TRUE(tree.row(1).isOpen);
    EXPECT_FALSE(tree.row(3).isOpen);
    EXPECT_TRUE(tree.row(4).hasChildren);
    EXPECT_FALSE(tree.row(6).hasChildren);
    tree.setOpen("/a", false);
    EXPECT_EQ(paths(), (Paths{"/a", "/b", "/c", "/c/0", "/c/1"}));
}

TEST_F(DocumentTreeTest, ARowSaysKeyNameAndSize) {
    load(R"({"a/b~": {"name": "Door", "x": 1}})");
    EXPECT_EQ(paths(), (Paths{"/a~1b~0"}));
    EXPECT_EQ(tree.row(0).key, "a/b~");
    EXPECT_EQ(tree.row(0).name, "Door");
    EXPECT_EQ(tree.row(0).size, 2u);
}

TEST_F(DocumentTreeTest, RevealingUnfoldsWhatIsAbove) {
    load(R"({"a": {"x": {"y": {}}}})");
    tree.reveal("/a/x/y");
    EXPECT_EQ(paths(), (Paths{"/a", "/a/x", "/a/x/y"}));
}

TEST_F(DocumentTreeTest, ASearchFindsKeysAndNamesAtAnyDepth) {
    load(R"({"doors": {"a": {"name": "Front Door"}, "b": {}}, "list": [{"name": "DOORWAY"}], "x": {"name": 7}})");
    EXPECT_EQ(paths("door"), (Paths{"/doors", "/doors/a", "/list/0"}));
    EXPECT_EQ(tree.row(2).key, "0");
    EXPECT_EQ(paths("nothing"), Paths{});
    EXPECT_EQ(paths(), (Paths{"/doors", "/list", "/x"}));
}

TEST_F(DocumentTreeTest, FollowsTheDocumentAndForgetsNothingThatIsUnfolded) {
    load(R"({"a": {"x": {}}, "b": {}})");
    tree.setOpen("/a", true);
    EXPECT_EQ(paths(), (Paths{"/a", "/a/x", "/b"}));
    EXPECT_FALSE(tree.update(project, {}));
    load(R"({"b": {}})");
    EXPECT_EQ(paths(), (Paths{"/b"}));
    load(R"({"c": {}, "a": {"y": {}}})");
    EXPECT_EQ(paths(), (Paths{"/c", "/a", "/a/y"}));
}

TEST_F(DocumentTreeTest, KeysThatNoWidgetCanBeNamedAfterHaveNoRows) {
    load(R"({"": {"x": {}}, "a\u0000b": {}, "c": {}})");
    EXPECT_EQ(paths(), (Paths{"/c"}));
    EXPECT_EQ(paths("x"), Paths{});
}

TEST_F(DocumentTreeTest, ADocumentThatIsNoObjectHasNoRows) {
    load("[1]");
    EXPECT_EQ(paths(), Paths{});
    EXPECT_EQ(paths("x"), Paths{});
}

}
}
