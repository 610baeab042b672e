#include "HashIndex.h"

#include <map>
#include <random>
#include <set>

#include <gtest/gtest.h>

namespace QuorvaneEngine {

namespace {

std::set<std::uint32_t> positions(const HashIndex& index, std::uint32_t hash) {
    std::set<std::uint32_t> out;
    index.find(hash, [&](std::uint32_t position) {
        out.insert(position);
        return false;
    });
    return out;
}

}

TEST(HashIndex, EmptyIndexFindsNothing) {
    HashIndex index;
    EXPECT_EQ(positions(index, 5), std::set<std::uint32_t>{});
    index.erase(5, 0);
    index.closeGap(0);
    EXPECT_FALSE(index.contains(5, 0));
}

TEST(HashIndex, EqualHashesAreAllOffered) {
    HashIndex index;
    EXPECT_TRUE(index.insert(7, 0));
    EXPECT_TRUE(index.insert(7, 3));
    EXPECT_TRUE(index.insert(8, 1));
    EXPECT_EQ(positions(index, 7), (std::set<std::uint32_t>{0, 3}));
    EXPECT_EQ(index.find(7, [](std::uint32_t position) { return position == 3; }), 3u);
}

TEST(HashIndex, ClosingAGapMovesHigherPositionsAlone) {
    HashIndex index;
    for(std::uint32_t i = 0; i != 4; ++i) index.insert(100 + i, i);
    index.erase(101, 1);
    index.closeGap(1);
    EXPECT_TRUE(index.contains(100, 0));
    EXPECT_FALSE(index.contains(101, 1));
    EXPECT_TRUE(index.contains(102, 1));
    EXPECT_TRUE(index.contains(103, 2));
}

TEST(HashIndex, RunsOfEqualHashesAreRefusedInTheEnd) {
    HashIndex index;
    std::uint32_t inserted = 0;
    while(inserted != 100000 && index.insert(42, inserted)) ++inserted;
    EXPECT_EQ(inserted, HashIndex::LongestRun + 1);
}

TEST(HashIndex, RandomChangesAgreeWithAMap) {
    std::mt19937 random{1};
    for(int run = 0; run != 50; ++run) {
        HashIndex index;
        index.reset(16);
        std::multimap<std::uint32_t, std::uint32_t> model;
        // Few hashes that are near each other, so that runs meet and wrap around.
        const auto anyHash = [&] { return std::uint32_t(random() % 12 + 58); };
        for(std::uint32_t step = 0; step != 400; ++step) {
            if(model.empty() || random() % 5 < 3) {
                const std::uint32_t hash = anyHash();
                ASSERT_TRUE(index.insert(hash, step));
                model.emplace(hash, step);
            } else {
                const auto entry = std::next(model.begin(), std::ptrdiff_t(random() % model.size()));
                index.erase(entry->first, entry->second);
                model.erase(entry);
            }
            for(std::uint32_t hash = 56; hash != 72; ++hash) {
                std::set<std::uint32_t> expected;
                const auto range = model.equal_range(hash);
                for(auto entry = range.first; entry != range.second; ++entry) expected.insert(entry->second);
                ASSERT_EQ(positions(index, hash), expected) << run << " " << step;
            }
        }
    }
}

}
