#include "QuorvaneEditor/ResourceIndexMap.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <Corrade/Containers/ArrayView.h>

namespace QuorvaneEngine {

TEST(ResourceIndexMap, UnknownIdIsInsertedWithIndexZero) {
    ResourceIndexMap map;
    EXPECT_EQ(map["stone"], 0);
    EXPECT_EQ(map["stone"], 0);
    EXPECT_EQ(map.size(), 1u);
}

TEST(ResourceIndexMap, EmptyIdIsZeroAndNeverStored) {
    ResourceIndexMap map;
    EXPECT_EQ(map[""], 0);
    const Containers::StringView ids[]{"", "stone"};
    EXPECT_EQ(map.size(), 0u);
    map.assign(ids);
    EXPECT_EQ(map.size(), 1u);
    EXPECT_EQ(map[""], 0);
    EXPECT_EQ(map["stone"], 1);
}

TEST(ResourceIndexMap, AssignNumbersFromOneInOrder) {
    ResourceIndexMap map;
    map["gone"];
    const Containers::StringView ids[]{"stone", "a", "wood"};
    map.assign(ids);
    EXPECT_EQ(map["stone"], 1);
    EXPECT_EQ(map["a"], 2);
    EXPECT_EQ(map["wood"], 3);
    EXPECT_EQ(map.size(), 3u);
}

TEST(ResourceIndexMap, SameIdTwiceKeepsItsFirstNumber) {
    ResourceIndexMap map;
    const Containers::StringView ids[]{"a", "a", "b"};
    map.assign(ids);
    EXPECT_EQ(map["a"], 1);
    EXPECT_EQ(map["b"], 2);
}

TEST(ResourceIndexMap, BeyondSixteenBitsEveryoneSharesZero) {
    std::vector<std::string> texts;
    for(int i = 0; i != 65540; ++i) texts.push_back(std::to_string(i));
    std::vector<Containers::StringView> ids;
    for(const std::string& text: texts) ids.emplace_back(text.data(), text.size());
    ResourceIndexMap map;
    map.assign({ids.data(), ids.size()});
    EXPECT_EQ(map[ids[65534]], 65535);
    EXPECT_EQ(map[ids[65535]], 0);
    EXPECT_EQ(map[ids[65539]], 0);
    EXPECT_EQ(map.size(), 65540u);
}

}
