#include "Ui/TextBuffer.h"

#include <string>

#include <gtest/gtest.h>

#include "support/Allocations.h"

namespace QuorvaneEngine {
namespace {

using Test::Allocations;

TEST(TextBuffer, GrowsToExactlyTheSizeAndZeroFills) {
    Containers::Array<char> buffer{Corrade::DirectInit, 3, 'x'};
    growBuffer(buffer, 6);
    ASSERT_EQ(buffer.size(), 6u);
    for(std::size_t i = 0; i != 6; ++i) EXPECT_EQ(buffer[i], i < 3 ? 'x' : '\0') << i;
}

TEST(TextBuffer, AFreshOneGrows) {
    Containers::Array<char> buffer;
    growBuffer(buffer, 2);
    EXPECT_EQ(buffer.size(), 2u);
}

TEST(TextBuffer, NeverShrinks) {
    Containers::Array<char> buffer{Corrade::DirectInit, 3, 'x'};
    const char* const before = buffer.data();
    for(const std::size_t size: {0u, 1u, 3u}) growBuffer(buffer, size);
    EXPECT_EQ(buffer.size(), 3u);
    EXPECT_EQ(buffer.data(), before);
}

/** It outlives the library that grew it. */
TEST(TextBuffer, KeepsNoAddressOfADeleter) {
    Containers::Array<char> buffer;
    assignBuffer(buffer, "text");
    growBuffer(buffer, 100);
    EXPECT_EQ(buffer.deleter(), nullptr);
}

TEST(TextBuffer, HoldsTheTextAndAZero) {
    Containers::Array<char> buffer;
    assignBuffer(buffer, "text");
    EXPECT_EQ(buffer.size(), 5u);
    EXPECT_STREQ(buffer.data(), "text");
    assignBuffer(buffer, "a");
    EXPECT_EQ(buffer.size(), 5u);
    EXPECT_STREQ(buffer.data(), "a");
    assignBuffer(buffer, {});
    EXPECT_STREQ(buffer.data(), "");
}

TEST(TextBuffer, HasAsMuchRoomAsIsAskedFor) {
    Containers::Array<char> buffer;
    assignBuffer(buffer, "text", 2);
    EXPECT_EQ(buffer.size(), 6u);
    assignBuffer(buffer, {}, 1);
    EXPECT_EQ(buffer.size(), 6u);
}

TEST(TextBuffer, TheTextNeedNotBeTerminated) {
    Containers::Array<char> buffer;
    assignBuffer(buffer, Containers::StringView{"text"}.prefix(2));
    EXPECT_STREQ(buffer.data(), "te");
}

TEST(TextBuffer, TheTextEndsAtTheFirstZero) {
    Containers::Array<char> buffer;
    EXPECT_EQ(bufferText(buffer), Containers::StringView{""});
    assignBuffer(buffer, "text", 10);
    EXPECT_EQ(bufferText(buffer), Containers::StringView{"text"});
    assignBuffer(buffer, {"a\0b", 3});
    EXPECT_EQ(bufferText(buffer), Containers::StringView{"a"});
}

TEST(TextBuffer, ATextWithoutAZeroEndsWithTheBuffer) {
    const Containers::Array<char> buffer{Corrade::DirectInit, 3, 'x'};
    EXPECT_EQ(bufferText(buffer), Containers::StringView{"xxx"});
}

TEST(TextBuffer, NothingIsAllocatedWhereThereIsRoom) {
    Containers::Array<char> buffer{Corrade::ValueInit, 10};
    const Allocations allocations;
    assignBuffer(buffer, "text", 6);
    EXPECT_EQ(allocations.count(), 0u);
}

}
}
