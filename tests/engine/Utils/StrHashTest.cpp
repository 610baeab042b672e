#include "Utils/StrHash.h"

#include <unordered_map>

#include <Corrade/Containers/String.h>
#include <Corrade/Utility/MurmurHash2.h>
#include <gtest/gtest.h>

#include "support/Allocations.h"

namespace QuorvaneEngine {
namespace {

using Test::Allocations;

using Corrade::Containers::String;
using Corrade::Containers::StringView;

std::size_t murmur(const StringView text) {
    return std::size_t(Corrade::Utility::Implementation::MurmurHash2<8>{}(0, text.data(), text.size()));
}

TEST(StrHash, IsMurmurHashOfTheBytesWithSeedZero) {
    for(const char* text: {"", "a", "greeting", "a text that is longer than the 22 bytes kept in place"})
        EXPECT_EQ(StrHash{}(text), murmur(text)) << text;
}

TEST(StrHash, TheEmptyTextHashesLikeNoBytes) {
    EXPECT_EQ(StrHash{}(""), murmur({}));
    EXPECT_EQ(StrHash{}(StringView{}), murmur({}));
}

TEST(StrHash, TheKnownValuesStay) {
    // Computed apart from this project, from the definition of MurmurHash64A.
    EXPECT_EQ(StrHash{}(""), 0x0000000000000000u);
    EXPECT_EQ(StrHash{}("a"), 0x071717d2d36b6b11u);
    EXPECT_EQ(StrHash{}("greeting"), 0xcc06541abdf5bcc8u);
    EXPECT_EQ(StrHash{}("localization"), 0x7744f2f655a5aed3u);
}

TEST(StrHash, EqualBytesAtDifferentAddressesHashAndCompareEqual) {
    const String a{"the same text"};
    const String b{"the same text"};
    ASSERT_NE(a.data(), b.data());
    EXPECT_EQ(StrHash{}(a), StrHash{}(b));
    EXPECT_TRUE(StrEq{}(a, b));
}

TEST(StrHash, TheTerminatorDoesNotCount) {
    const StringView text = "ab";
    EXPECT_EQ(StrHash{}(text.prefix(1)), StrHash{}("a"));
    EXPECT_NE(StrHash{}(text), StrHash{}("a"));
}

TEST(StrHash, ZeroBytesCount) {
    const StringView text{"a\0b", 3};
    EXPECT_NE(StrHash{}(text), StrHash{}("a"));
    EXPECT_FALSE(StrEq{}(text, "a"));
}

TEST(StrEq, ComparesSizeAndBytes) {
    EXPECT_TRUE(StrEq{}("", StringView{}));
    EXPECT_TRUE(StrEq{}("a", "a"));
    EXPECT_FALSE(StrEq{}("a", "b"));
    EXPECT_FALSE(StrEq{}("a", "ab"));
}

TEST(StrHash, AMapOfStringsIsSearchedByViewWithoutAllocating) {
    std::unordered_map<String, int, StrHash, StrEq> map;
    map.emplace("a key that does not fit into the string object", 3);
    const StringView text = "<a key that does not fit into the string object>";
    const Allocations allocations;
    const auto found = map.find(text.slice(1, text.size() - 1));
    EXPECT_EQ(allocations.count(), 0u);
    ASSERT_NE(found, map.end());
    EXPECT_EQ(found->second, 3);
}

}
}
