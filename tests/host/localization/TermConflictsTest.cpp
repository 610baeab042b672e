#include "TermConflicts.h"

#include <gtest/gtest.h>

namespace QuorvaneEngine {

TEST(TermConflicts, NamesTheOtherKey) {
    EXPECT_EQ(describe(TermConflict::None, "menu"), "");
    EXPECT_EQ(describe(TermConflict::SamePath, "a:b"), "has the same place in a file as a:b");
    EXPECT_EQ(describe(TermConflict::LeafAndBranch, "menu"),
        "cannot stand beside menu: one is a text, and the other lies below it");
    EXPECT_EQ(describe(TermConflict::MemberAndElement, "list.[0]"),
        "cannot stand beside list.[0]: one is an element, and the other has a name");
    EXPECT_EQ(describe(TermConflict::RootElement, ""), "is an element, and a file holds no array");
    EXPECT_EQ(describe(TermConflict::TooDeep, ""), "is nested deeper than 256 levels");
}

}
