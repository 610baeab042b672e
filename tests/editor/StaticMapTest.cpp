#include "StaticMap.h"

#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "support/Abort.h"
#include "support/Allocations.h"

namespace QuorvaneEngine {
namespace {

using Corrade::Containers::String;
using Corrade::Containers::StringView;
using Test::Allocations;

TEST(StaticMap, AFreshOneIsCompiledAndHasNoRoom) {
    StaticMap<int> map;
    EXPECT_TRUE(map.isCompiled());
    EXPECT_EQ(map.size(), 0u);
    EXPECT_EQ(map.capacity(), 0u);
    EXPECT_EQ(map.find("a"), nullptr);
}

TEST(StaticMap, FindsWhatWasPut) {
    StaticMap<int> map;
    map.grow(3);
    map.put("materials", 1);
    map.put("a", 2);
    map.put("objects", 3);
    map.compile();
    ASSERT_TRUE(map.find("a"));
    EXPECT_EQ(*map.find("a"), 2);
    EXPECT_EQ(*map.find("materials"), 1);
    EXPECT_EQ(*map.find("objects"), 3);
    EXPECT_EQ(map.find("b"), nullptr);
    EXPECT_EQ(map.find("zzz"), nullptr);
    EXPECT_EQ(map.find(""), nullptr);
}

TEST(StaticMap, KeysAreOrderedAsBytesAPrefixFirst) {
    StaticMap<int> map;
    map.grow(5);
    int value = 0;
    for(const char* key: {"b", "\xc3\xa4", "a", "ab", "B"}) map.put(key, value++);
    map.compile();
    value = 0;
    for(const char* key: {"b", "\xc3\xa4", "a", "ab", "B"}) {
        ASSERT_TRUE(map.find(key)) << key;
        EXPECT_EQ(*map.find(key), value++) << key;
    }
}

TEST(StaticMap, PutGivesTheStoredValueAndCopiesTheKey) {
    StaticMap<int> map;
    map.grow(1);
    {
        const String key{"a key that is gone when it is looked for"};
        int* const value = map.put(key, 1);
        *value = 5;
    }
    EXPECT_FALSE(map.isCompiled());
    map.compile();
    EXPECT_EQ(*map.find("a key that is gone when it is looked for"), 5);
}

TEST(StaticMap, GrowKeepsTheEntries) {
    StaticMap<std::unique_ptr<int>> map;
    map.grow(16);
    map.put("a", std::make_unique<int>(1));
    map.grow(16);
    EXPECT_EQ(map.capacity(), 32u);
    EXPECT_EQ(map.size(), 1u);
    map.compile();
    EXPECT_EQ(**map.find("a"), 1);
}

TEST(StaticMap, ClearKeepsCapacityAndCompiledState) {
    const auto shared = std::make_shared<int>(1);
    StaticMap<std::shared_ptr<int>> map;
    map.grow(4);
    map.put("a", std::shared_ptr<int>{shared});
    map.clear();
    EXPECT_EQ(shared.use_count(), 1);
    EXPECT_EQ(map.size(), 0u);
    EXPECT_EQ(map.capacity(), 4u);
    EXPECT_FALSE(map.isCompiled());
    map.compile();
    map.clear();
    EXPECT_TRUE(map.isCompiled());
    EXPECT_EQ(map.find("a"), nullptr);
}

TEST(StaticMap, OneOfTwoEntriesWithOneKeyIsFound) {
    StaticMap<int> map;
    map.grow(2);
    map.put("a", 1);
    map.put("a", 2);
    map.compile();
    ASSERT_TRUE(map.find("a"));
    EXPECT_TRUE(*map.find("a") == 1 || *map.find("a") == 2);
}

TEST(StaticMap, FindAllocatesNothing) {
    StaticMap<int> map;
    map.grow(2);
    map.put("a key that does not fit into the string object", 1);
    map.compile();
    const Allocations allocations;
    EXPECT_TRUE(map.find("a key that does not fit into the string object"));
    EXPECT_FALSE(map.find("another key that does not fit into the string object"));
    EXPECT_EQ(allocations.count(), 0u);
}

TEST(StaticMapDeathTest, AnEmptyKeyAborts) {
    StaticMap<int> map;
    map.grow(1);
    QUORVANE_EXPECT_ABORT(map.put("", 1), "StaticMap::put(): key cannot be nullptr.");
    QUORVANE_EXPECT_ABORT(map.put(StringView{}, 1), "StaticMap::put(): key cannot be nullptr.");
}

TEST(StaticMapDeathTest, AFullMapAborts) {
    StaticMap<int> map;
    QUORVANE_EXPECT_ABORT(map.put("a", 1), "StaticMap::put(): capacity exhausted.");
    map.grow(1);
    map.put("a", 1);
    QUORVANE_EXPECT_ABORT(map.put("b", 1), "StaticMap::put(): capacity exhausted.");
}

TEST(StaticMapDeathTest, FindBehindAPutThatWasNotCompiledAborts) {
    StaticMap<int> map;
    map.grow(1);
    map.put("a", 1);
    QUORVANE_EXPECT_ABORT(map.find("a"), "StaticMap::find(): Map needs to be compiled.");
}

}
}
