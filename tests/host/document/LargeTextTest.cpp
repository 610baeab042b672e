#include "LargeText.h"

#include <cstring>
#include <string>
#include <utility>

#include <gtest/gtest.h>

namespace QuorvaneEngine {
namespace {

TEST(LargeText, HasItsSizeAndAZeroBehind) {
    for(const std::size_t size: {0, 1, 22, 23, 4096, 131071, 131072, 131073, 1 << 20})
        for(const bool isFilled: {false, true}) {
            Containers::String text = largeText(std::size_t(size), isFilled);
            ASSERT_EQ(text.size(), std::size_t(size));
            if(size != 0) std::memset(text.data(), 'x', text.size());
            EXPECT_EQ(text.data()[text.size()], '\0');
            EXPECT_EQ(text, Containers::StringView{std::string(text.size(), 'x').c_str()});
        }
}

TEST(LargeText, IsAStringLikeAnyOther) {
    Containers::String text = largeText(200000, false);
    std::memset(text.data(), 'x', text.size());
    const char* const characters = text.data();
    const Containers::String copied = text;
    Containers::String moved = std::move(text);
    EXPECT_EQ(moved.data(), characters);
    EXPECT_NE(copied.data(), characters);
    EXPECT_EQ(copied, moved);
    moved = "small";
    EXPECT_EQ(moved, "small");
}

}
}
