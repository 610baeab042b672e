#include "Catalogue.h"

#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "CollidingNames.h"

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

TEST(Catalogue, TextsStayWhereTheyAreWhenItMoves) {
    Catalogue catalogue;
    catalogue.add("a", "A");
    const Containers::StringView text = catalogue.entries()[0].text;
    const Catalogue other = std::move(catalogue);
    EXPECT_EQ(other.entries()[0].text.data(), text.data());
}

TEST(Catalogue, KeepsValuesAmongTexts) {
    rapidjson::Document list;
    list.Parse("[]");
    Catalogue catalogue;
    EXPECT_TRUE(catalogue.add("a", "A"));
    EXPECT_TRUE(catalogue.addValue("b", rapidjson::Value{1.5}));
    EXPECT_TRUE(catalogue.addValue("c", list));
    EXPECT_FALSE(catalogue.addValue("a", list));
    EXPECT_FALSE(catalogue.add("b", "B"));
    ASSERT_EQ(catalogue.entries().size(), 3u);
    EXPECT_EQ(catalogue.entries()[0].value, nullptr);
    EXPECT_EQ(catalogue.entries()[1].value->GetDouble(), 1.5);
    EXPECT_TRUE(catalogue.entries()[2].value->IsArray());
    EXPECT_EQ(catalogue.entries()[1].text, "");
    EXPECT_EQ(catalogue.spelling(1), "");
}

TEST(Catalogue, FindsKeysThatCameAfterTheLastSearch) {
    Catalogue catalogue;
    catalogue.add("a", "");
    EXPECT_EQ(catalogue.find("b"), -1);
    catalogue.add("b", "");
    EXPECT_EQ(catalogue.find("b"), 1);
}

TEST(Catalogue, IsFlatWhereKeysOfTheRootReadLikeSentencesOrPaths) {
    const auto isFlat = [](const std::initializer_list<const char*> keys, const char* const value = nullptr) {
        Catalogue catalogue;
        for(const char* const key: keys) catalogue.add(key, "x");
        rapidjson::Document document;
        if(value) catalogue.addValue("value", document.Parse(value));
        return catalogue.isFlat();
    };
    EXPECT_TRUE(isFlat({"plain", "menu%2Efile"}));
    EXPECT_TRUE(isFlat({"Status%3A x"}));
    EXPECT_TRUE(isFlat({"Save all"}, "12"));
    EXPECT_FALSE(isFlat({"plain", "100%25"}));
    EXPECT_FALSE(isFlat({}));
    EXPECT_FALSE(isFlat({"Save all", "menu.file"}));
    EXPECT_FALSE(isFlat({"Save all"}, "{}"));
    EXPECT_FALSE(isFlat({"Save all"}, "[]"));
}

TEST(Catalogue, KeepsNoticesInTheirOrder) {
    Catalogue catalogue;
    catalogue.addNotice("a", "is odd");
    catalogue.addNotice({}, "is old");
    ASSERT_EQ(catalogue.notices().size(), 2u);
    EXPECT_EQ(catalogue.notices()[0].key, "a");
    EXPECT_EQ(catalogue.notices()[0].reason, "is odd");
    EXPECT_EQ(catalogue.notices()[1].key, "");
}

TEST(Catalogue, FindsKeysThatWereMadeToCollide) {
    Catalogue catalogue;
    const std::vector<std::string> keys = collidingNames();
    for(const std::string& key: keys) EXPECT_TRUE(catalogue.add(key.c_str(), ""));
    for(std::size_t i = 0; i != keys.size(); ++i) {
        EXPECT_EQ(catalogue.find(keys[i].c_str()), Int(i));
        EXPECT_FALSE(catalogue.add(keys[i].c_str(), ""));
    }
    EXPECT_EQ(catalogue.find("x"), -1);
}

}
