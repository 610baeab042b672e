#include "Catalogue.h"

#include <string>
#include <utility>

#include <gtest/gtest.h>

namespace QuorvaneEngine {

TEST(Catalogue, KeepsTextsInTheirOrder) {
    Catalogue catalogue;
    EXPECT_EQ(catalogue.entries().size(), 0u);
    EXPECT_TRUE(catalogue.add("b", "B"));
    EXPECT_TRUE(catalogue.add("a", ""));
    EXPECT_TRUE(catalogue.add("", "nothing"));
    ASSERT_EQ(catalogue.entries().size(), 3u);
    EXPECT_EQ(catalogue.entries()[0].key, "b");
    EXPECT_EQ(catalogue.entries()[0].text, "B");
    EXPECT_EQ(catalogue.entries()[1].key, "a");
    EXPECT_EQ(catalogue.entries()[2].key, "");
}

TEST(Catalogue, FindsTextsByKey) {
    Catalogue catalogue;
    for(int i = 0; i != 1000; ++i) catalogue.add(std::to_string(i).c_str(), "x");
    EXPECT_EQ(catalogue.find("999"), 999);
    EXPECT_EQ(catalogue.find("1000"), -1);
    EXPECT_EQ(catalogue.find(""), -1);
}

TEST(Catalogue, RefusesAKeyThatIsThereAlready) {
    Catalogue catalogue;
    EXPECT_TRUE(catalogue.add("a", "first"));
    EXPECT_FALSE(catalogue.add("a", "second"));
    ASSERT_EQ(catalogue.entries().size(), 1u);
    EXPECT_EQ(catalogue.entries()[0].text, "first");
}

TEST(Catalogue, MovesWithItsIndex) {
    Catalogue catalogue;
    catalogue.add("a", "A");
    Catalogue other = std::move(catalogue);
    EXPECT_EQ(other.find("a"), 0);
}

}
