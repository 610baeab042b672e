#include "TermTree.h"

#include <string>

#include <gtest/gtest.h>

#include "TestProject.h"

namespace QuorvaneEngine {

struct Inserted {
    TermConflict conflict;
    Int other;
    bool operator==(const Inserted&) const = default;
};

static Inserted insert(TermTree& tree, const char* const key, const Int term) {
    Int other = -2;
    const TermConflict conflict = tree.insert(key, term, other);
    return {conflict, other};
}

constexpr Inserted Fine{TermConflict::None, -1};

TEST(TermTree, NestsKeysInTheOrderThatTheyCome) {
    TermTree tree;
    EXPECT_EQ(insert(tree, "menu.open", 0), Fine);
    EXPECT_EQ(insert(tree, "title", 1), Fine);
    EXPECT_EQ(insert(tree, "menu.close", 2), Fine);
    const UnsignedInt menu = tree.node(TermTree::Root).firstChild;
    EXPECT_EQ(tree.node(menu).segment, "menu");
    EXPECT_EQ(tree.node(menu).term, -1);
    EXPECT_EQ(tree.node(tree.node(menu).next).segment, "title");
    EXPECT_EQ(tree.node(tree.node(menu).firstChild).term, 0);
    EXPECT_EQ(tree.node(tree.node(menu).lastChild).term, 2);
    EXPECT_EQ(tree.child(menu, "close"), tree.node(menu).lastChild);
    EXPECT_EQ(tree.child(menu, "title"), TermTree::None);
}

TEST(TermTree, LeafAndBranchAreInConflictInEitherOrder) {
    TermTree tree;
    insert(tree, "menu", 0);
    EXPECT_EQ(insert(tree, "menu.file.open", 1), (Inserted{TermConflict::LeafAndBranch, 0}));
    insert(tree, "dialog.save.title", 2);
    EXPECT_EQ(insert(tree, "dialog", 3), (Inserted{TermConflict::LeafAndBranch, 2}));
    EXPECT_EQ(insert(tree, "dialog.save", 3), (Inserted{TermConflict::LeafAndBranch, 2}));
}

TEST(TermTree, SamePathTwiceIsAConflict) {
    TermTree tree;
    insert(tree, "a.b", 4);
    EXPECT_EQ(insert(tree, "a.b", 5), (Inserted{TermConflict::SamePath, 4}));
}

TEST(TermTree, ElementsAndNamesDoNotMix) {
    TermTree tree;
    EXPECT_EQ(insert(tree, "list.[0].text", 0), Fine);
    EXPECT_EQ(insert(tree, "list.[1]", 1), Fine);
    EXPECT_EQ(insert(tree, "list.name", 2), (Inserted{TermConflict::MemberAndElement, 0}));
    EXPECT_EQ(insert(tree, "plain.name", 3), Fine);
    EXPECT_EQ(insert(tree, "plain.[0]", 4), (Inserted{TermConflict::MemberAndElement, 3}));
    EXPECT_TRUE(tree.node(tree.child(TermTree::Root, "list")).isArray);
    EXPECT_FALSE(tree.node(tree.child(TermTree::Root, "plain")).isArray);
}

TEST(TermTree, FileIsNoArray) {
    TermTree tree;
    EXPECT_EQ(insert(tree, "[0]", 0), (Inserted{TermConflict::RootElement, -1}));
    EXPECT_EQ(insert(tree, "[0].a", 0), (Inserted{TermConflict::RootElement, -1}));
}

TEST(TermTree, NestsNoDeeperThanFilesDo) {
    std::string key = "a";
    for(int i = 1; i != 256; ++i) key += ".a";
    TermTree tree;
    EXPECT_EQ(insert(tree, (key + ".a").c_str(), 0), (Inserted{TermConflict::TooDeep, -1}));
    EXPECT_EQ(insert(tree, key.c_str(), 0), Fine);
}

TEST(TermTree, ConflictChangesNothing) {
    TermTree tree;
    insert(tree, "a.b", 0);
    insert(tree, "a.b.c", 1);
    insert(tree, "a.[0]", 2);
    const UnsignedInt a = tree.node(TermTree::Root).firstChild;
    EXPECT_EQ(tree.node(TermTree::Root).lastChild, a);
    EXPECT_EQ(tree.node(a).firstChild, tree.node(a).lastChild);
    EXPECT_EQ(tree.node(tree.node(a).firstChild).firstChild, TermTree::None);
}

TEST(TermTree, EmptySegmentsAreNamesLikeOthers) {
    TermTree tree;
    EXPECT_EQ(insert(tree, "", 0), Fine);
    EXPECT_EQ(insert(tree, "a..b", 1), Fine);
    EXPECT_EQ(insert(tree, ".x", 2), (Inserted{TermConflict::LeafAndBranch, 0}));
}

}
