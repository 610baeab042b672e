#include <string>

#include <Corrade/Utility/MurmurHash2.h>
#include <gtest/gtest.h>

using Corrade::Utility::MurmurHash2;

namespace {

unsigned long long hash(unsigned long long seed, const std::string& text) {
    return Corrade::Utility::Implementation::MurmurHash2<8>{}(seed, text.data(), text.size());
}

} // namespace

TEST(MurmurHash2, GivesTheKnownValues) {
    EXPECT_EQ(hash(0, ""), 0x0000000000000000ull);
    EXPECT_EQ(MurmurHash2::digest("hello").hexString(), "17f17b457cd1681e");
    EXPECT_EQ(MurmurHash2::digest("a text with more than eight bytes").hexString(), "e5a86d98eabceb44");
    EXPECT_EQ(MurmurHash2{23}("hello", 5).hexString(), "d4fbc2e6305ff226");
}

TEST(MurmurHash2, EveryLengthOfTheRestCounts) {
    const std::string text = "0123456789abcdef";
    std::string digests;
    for(std::size_t size = 0; size <= text.size(); ++size)
        digests += MurmurHash2{}(text.data(), size).hexString() + "\n";
    EXPECT_EQ(MurmurHash2::digest(digests).hexString(), "daa9d8a29df5c98a");
}

TEST(MurmurHash2, BytesAreNotSigned) { EXPECT_EQ(MurmurHash2::digest("\xff\xfe").hexString(), "e1ec8778f9a9bdd8"); }

TEST(MurmurHash2, DigestsCompareByBytes) {
    EXPECT_EQ(MurmurHash2::digest("a"), (MurmurHash2{}("a", 1)));
    EXPECT_NE(MurmurHash2::digest("a"), MurmurHash2::digest("b"));
}
