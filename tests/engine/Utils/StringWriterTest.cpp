#include "Utils/StringWriter.h"

#include <cstring>
#include <string>
#include <type_traits>

#include <Corrade/Containers/String.h>
#include <gtest/gtest.h>

#include "support/Abort.h"

namespace QuorvaneEngine::Utils {
namespace {

using Corrade::Containers::String;
using Corrade::Containers::StringView;

constexpr const char* TooSmall = "Assertion available() > bytes failed at Utils/StringWriter:83";

/** A writer of this capacity with so many letters. */
StringWriter filled(const std::uint64_t capacity, const std::size_t size) {
    StringWriter writer{capacity};
    writer.appendInto(String{Corrade::DirectInit, size, 'x'});
    return writer;
}

static_assert(!std::is_copy_constructible_v<StringWriter> && !std::is_copy_assignable_v<StringWriter>);
static_assert(std::is_nothrow_move_constructible_v<StringWriter> && std::is_nothrow_move_assignable_v<StringWriter>);

TEST(StringWriter, ANewOneHasNoBuffer) {
    const StringWriter writer;
    EXPECT_EQ(writer.size(), 0u);
    EXPECT_EQ(writer.capacity(), 0u);
    EXPECT_EQ(writer.available(), 0u);
    EXPECT_FALSE(writer.data().data());
    EXPECT_EQ(writer.text(), "");
    EXPECT_FALSE(StringWriter{0}.data().data());
}

TEST(StringWriter, BeginsWithTheCapacityThatIsAskedFor) {
    const StringWriter writer{100};
    EXPECT_EQ(writer.capacity(), 100u);
    EXPECT_EQ(writer.available(), 100u);
    EXPECT_EQ(writer.size(), 0u);
}

TEST(StringWriter, AppendsBehindWhatWasWritten) {
    StringWriter writer{32};
    writer.appendInto("one ");
    writer.append("two ");
    writer.append("");
    writer.append(StringView{});
    writer.appendInto("three");
    EXPECT_EQ(writer.text(), "one two three");
    EXPECT_EQ(writer.size(), 13u);
    EXPECT_EQ(writer.available(), 19u);
    EXPECT_EQ(writer.capacity(), 32u);
}

TEST(StringWriter, TakesAnyBytesAndTextWithoutATerminator) {
    StringWriter writer;
    writer.append(StringView{"a\0b\xff", 4});
    writer.append(StringView{"cdefgh"}.prefix(2));
    EXPECT_EQ(writer.text(), (StringView{"a\0b\xff\x63\x64", 6}));
}

TEST(StringWriter, AZeroByteStandsBehindTheTextAfterEveryAppend) {
    StringWriter writer{1000};
    // What the buffer held before must not matter.
    std::memset(const_cast<char*>(writer.data().data()), '?', 1000);
    for(const char* text: {"a", "", "some more", "and more"}) {
        writer.append(text);
        EXPECT_EQ(writer.data()[writer.size()], '\0') << text;
        EXPECT_EQ(std::strlen(writer.data().data()), writer.size()) << text;
    }
    for(int i = 0; i != 200; ++i) {
        writer.append("twelve bytes");
        ASSERT_EQ(writer.data()[writer.size()], '\0') << i;
        ASSERT_LT(writer.size(), writer.capacity()) << i;
    }
}

TEST(StringWriter, WhatFitsMustLeaveAByteForTheTerminator) {
    StringWriter writer = filled(10, 5);
    writer.appendInto("four");
    EXPECT_EQ(writer.available(), 1u);
    writer.appendInto("");
    QUORVANE_EXPECT_ABORT(writer.appendInto("x"), TooSmall);
    QUORVANE_EXPECT_ABORT(filled(10, 5).appendInto("12345"), TooSmall);
    QUORVANE_EXPECT_ABORT(filled(10, 5).appendInto("123456"), TooSmall);
}

TEST(StringWriter, NothingFitsWhereThereIsNoBuffer) {
    QUORVANE_EXPECT_ABORT(StringWriter{}.appendInto(""), TooSmall);
    QUORVANE_EXPECT_ABORT(StringWriter{}.appendInto("x"), TooSmall);
}

TEST(StringWriter, ReservingGrowsToExactlyWhatIsAskedForAndNeverShrinks) {
    StringWriter writer = filled(10, 5);
    const char* const before = writer.data().data();
    writer.reserve(10);
    writer.reserve(3);
    writer.reserve(0);
    EXPECT_EQ(writer.capacity(), 10u);
    EXPECT_EQ(writer.data().data(), before);
    writer.reserve(11);
    EXPECT_EQ(writer.capacity(), 11u);
    writer.reserve(1001);
    EXPECT_EQ(writer.capacity(), 1001u);
    EXPECT_EQ(writer.text(), "xxxxx");
    EXPECT_EQ(writer.data()[5], '\0');
}

TEST(StringWriter, TheBufferIsFreedByArrayDelete) {
    StringWriter writer{10};
    EXPECT_FALSE(writer.data().deleter());
    writer.append("more than the ten bytes at first");
    EXPECT_FALSE(writer.data().deleter());
}

TEST(StringWriter, ATextAsLongAsWhatIsLeftGrowsTheBufferFirst) {
    StringWriter writer = filled(100, 90);
    writer.append("ten bytes!");
    EXPECT_EQ(writer.capacity(), 150u);
    EXPECT_EQ(writer.size(), 100u);

    StringWriter other = filled(100, 90);
    other.append("nine byte");
    EXPECT_EQ(other.capacity(), 100u);
    EXPECT_EQ(other.available(), 1u);
}

TEST(StringWriter, FiveBytesGrowAnEmptyWriterToSix) {
    StringWriter writer;
    writer.append("12345");
    EXPECT_EQ(writer.capacity(), 6u);
    EXPECT_EQ(writer.text(), "12345");
}

TEST(StringWriter, NoBytesGrowAnEmptyWriterToOne) {
    StringWriter writer;
    writer.append("");
    EXPECT_EQ(writer.capacity(), 1u);
    EXPECT_EQ(writer.data()[0], '\0');
}

TEST(StringWriter, TwentyBytesGrowAHundredWithNinetyWrittenToAHundredAndFifty) {
    StringWriter writer = filled(100, 90);
    writer.append("twenty bytes of text");
    EXPECT_EQ(writer.capacity(), 150u);
    EXPECT_EQ(writer.size(), 110u);
}

TEST(StringWriter, GrowsByMoreThanHalfWhereTheTextNeedsIt) {
    StringWriter writer = filled(100, 90);
    writer.append(String{Corrade::DirectInit, 60, 'y'});
    EXPECT_EQ(writer.capacity(), 151u);
}

TEST(StringWriter, HalfAByteIsDropped) {
    StringWriter writer = filled(11, 5);
    writer.append("123456");
    EXPECT_EQ(writer.capacity(), 16u);
}

TEST(StringWriter, GrowsInSinglePrecision) {
    // 2^25 + 1 is no float; the nearest is 2^25.
    StringWriter writer = filled(33554433, 33554400);
    writer.append(String{Corrade::DirectInit, 33, 'y'});
    EXPECT_EQ(writer.capacity(), 50331648u);
}

TEST(StringWriter, CanAppendItsOwnText) {
    StringWriter writer;
    writer.append("a longer text than any that is kept in place, ");
    for(int i = 0; i != 4; ++i) writer.append(writer.text());
    EXPECT_EQ(writer.size(), 46u * 16);
    EXPECT_TRUE(writer.text().hasSuffix("in place, a longer text than any that is kept in place, "));
}

TEST(StringWriter, MovingTakesTheBuffer) {
    StringWriter writer = filled(10, 5);
    const char* const buffer = writer.data().data();
    StringWriter moved{std::move(writer)};
    EXPECT_EQ(moved.data().data(), buffer);
    EXPECT_EQ(moved.text(), "xxxxx");
    // NOLINTNEXTLINE(bugprone-use-after-move)
    EXPECT_EQ(writer.size(), 0u);
    EXPECT_EQ(writer.capacity(), 0u);
    writer.append("again");
    EXPECT_EQ(writer.text(), "again");
    moved = StringWriter{3};
    EXPECT_EQ(moved.capacity(), 3u);
    EXPECT_EQ(moved.size(), 0u);
}

}
}
