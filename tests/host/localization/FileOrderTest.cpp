#include "FileOrder.h"

#include <string>

#include <gtest/gtest.h>

#include "Catalogue.h"
#include "TermTree.h"

namespace QuorvaneEngine {

namespace {

/** The children of the root, in the order of a file, with blanks between. */
std::string sorted(const std::vector<const char*>& keys, const std::vector<const char*>& file) {
    TermTree tree;
    Int other = -1;
    for(std::size_t i = 0; i != keys.size(); ++i) tree.insert(keys[i], Int(i), other);
    Catalogue catalogue;
    for(const char* const key: file) catalogue.add(key, {});
    std::vector<UnsignedInt> children;
    for(UnsignedInt i = tree.node(TermTree::Root).firstChild; i != TermTree::None; i = tree.node(i).next)
        children.push_back(i);
    FileOrder fileOrder{tree, &catalogue};
    if(!fileOrder.isTrees()) fileOrder.sort(children.data(), children.size());
    std::string order;
    for(const UnsignedInt child: children) {
        const Containers::StringView segment = tree.node(child).segment;
        order += (order.empty() ? "" : " ") + std::string{segment.data(), segment.size()};
    }
    return order;
}

}

TEST(FileOrder, IsThatOfTheFileAndThenOfTheTree) {
    EXPECT_EQ(sorted({"a", "b", "c"}, {}), "a b c");
    EXPECT_EQ(sorted({"a", "b", "c"}, {"c", "a", "b"}), "c a b");
    EXPECT_EQ(sorted({"a", "b", "c"}, {"c", "gone", "a"}), "c a b");
    EXPECT_EQ(sorted({"new", "a", "b", "c"}, {"c", "b", "a"}), "new c b a");
    EXPECT_EQ(sorted({"a", "behind", "b"}, {"b", "a"}), "b a behind");
}

TEST(FileOrder, OfABranchIsThatOfItsFirstText) {
    EXPECT_EQ(sorted({"a.x", "b.x", "c"}, {"b.y", "c", "a"}), "b c a");
    EXPECT_EQ(sorted({"a.x", "b.x", "c"}, {"c", "c.below", "b.x"}), "a c b");
}

}
