#include "TermTree.h"

#include <algorithm>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "CollidingNames.h"
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

TEST(TermTree, NodesKnowTheirPaths) {
    TermTree tree;
    insert(tree, "menu.file.open", 0);
    insert(tree, "menu.edit", 1);
    EXPECT_EQ(tree.nodeCount(), 5u);
    EXPECT_EQ(tree.path(TermTree::Root), "");
    const UnsignedInt menu = tree.child(TermTree::Root, "menu");
    EXPECT_EQ(tree.path(menu), "menu");
    EXPECT_EQ(tree.path(tree.child(menu, "edit")), "menu.edit");
    EXPECT_EQ(tree.node(menu).parent, TermTree::Root);
    EXPECT_EQ(tree.node(TermTree::Root).parent, TermTree::None);
}

TEST(TermTree, SegmentsKnowWhetherTheyAreNames) {
    TermTree tree;
    insert(tree, "plain.%2E", 0);
    const UnsignedInt plain = tree.child(TermTree::Root, "plain");
    EXPECT_TRUE(tree.node(plain).isPlain);
    EXPECT_FALSE(tree.node(tree.child(plain, "%2E")).isPlain);
}

TEST(TermTree, SearchBeginsWhereWaysPart) {
    TermTree tree;
    insert(tree, "menu.file.open", 0);
    const UnsignedInt menu = tree.child(TermTree::Root, "menu"), file = tree.child(menu, "file"),
                      open = tree.child(file, "open");
    const auto start = [&](const char* const key) {
        const TermTree::Start found = tree.startNear(open, key);
        return std::tuple{found.node, found.below, copied(found.rest)};
    };
    EXPECT_EQ(start("menu.file.close"), (std::tuple{file, open, "close"}));
    EXPECT_EQ(start("menu.file.open"), (std::tuple{file, open, "open"}));
    EXPECT_EQ(start("menu.file.open.x"), (std::tuple{open, TermTree::None, "x"}));
    EXPECT_EQ(start("menu.file"), (std::tuple{menu, file, "file"}));
    EXPECT_EQ(start("menu.files.x"), (std::tuple{menu, file, "files.x"}));
    EXPECT_EQ(start("other"), (std::tuple{TermTree::Root, menu, "other"}));
    EXPECT_EQ(start(""), (std::tuple{TermTree::Root, menu, ""}));
}

// The order in which keys come decides where the search for each begins.
TEST(TermTree, FindsConflictsInAnyOrder) {
    const std::string keys[]{"a", "a.b", "a.b.c", "a.[0]", "a.[0].d", "b", "ab.c", "a..b", "", ".a"};
    std::mt19937 random{5};
    for(int i = 0; i != 3000; ++i) {
        std::vector<std::string> shuffled{std::begin(keys), std::end(keys)};
        std::shuffle(shuffled.begin(), shuffled.end(), random);
        TermTree tree;
        std::vector<std::string> taken;
        for(const std::string& key: shuffled) {
            const bool isConflict = std::any_of(taken.begin(), taken.end(), [&](const std::string& other) {
                const auto isBelow = [](const std::string& below, const std::string& above) {
                    return below.compare(0, above.size() + 1, above + '.') == 0;
                };
                const auto mixes = [](const std::string& element, const std::string& member) {
                    return element.compare(0, 3, "a.[") == 0 && member.compare(0, 2, "a.") == 0 && member[2] != '[';
                };
                return isBelow(key, other) || isBelow(other, key) || mixes(key, other) || mixes(other, key);
            });
            EXPECT_EQ(insert(tree, key.c_str(), 0).conflict != TermConflict::None, isConflict) << key;
            if(!isConflict) taken.push_back(key);
        }
    }
}

TEST(TermTree, FindsNamesThatWereMadeToCollide) {
    const std::vector<std::string> names = collidingNames();
    TermTree tree;
    for(const std::string& name: names) EXPECT_EQ(insert(tree, name.c_str(), 7), Fine);
    for(const std::string& name: names) {
        EXPECT_EQ(tree.path(tree.child(TermTree::Root, viewed(name))), viewed(name));
        EXPECT_EQ(insert(tree, name.c_str(), 8), (Inserted{TermConflict::SamePath, 7}));
    }
    EXPECT_EQ(tree.child(TermTree::Root, "x"), TermTree::None);
}

}
