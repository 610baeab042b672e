#include <utility>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/StaticArray.h>
#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringIterable.h>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/Containers/StringStlView.h>
#include <Corrade/Containers/StringView.h>
#include <gtest/gtest.h>

#include "Print.h"

using namespace Corrade;
using Containers::Array;
using Containers::MutableStringView;
using Containers::String;
using Containers::StringIterable;
using Containers::StringView;
using Containers::StringViewFlag;
using Containers::StringViewFlags;
using namespace Corrade::Containers::Literals;

TEST(StringView, ALiteralIsGlobalAndNullTerminated) {
    constexpr StringView view = "hello"_s;
    EXPECT_EQ(view.size(), 5);
    EXPECT_EQ(view.flags(), StringViewFlag::Global | StringViewFlag::NullTerminated);
}

TEST(StringView, APointerIsNullTerminatedAndAPointerWithSizeIsNot) {
    EXPECT_EQ(StringView{"hello"}.flags(), StringViewFlag::NullTerminated);
    EXPECT_EQ((StringView{"hello", 3}.flags()), StringViewFlags{});
    EXPECT_EQ((StringView{"hello", 3}), "hel");
}

TEST(StringView, NothingIsEmptyGlobalAndFalse) {
    EXPECT_EQ(StringView{}.flags(), StringViewFlag::Global);
    EXPECT_EQ(StringView{nullptr}.data(), nullptr);
    EXPECT_EQ(StringView{static_cast<const char*>(nullptr)}.flags(), StringViewFlag::Global);
    EXPECT_FALSE(StringView{});
    EXPECT_FALSE(""_s);
    EXPECT_TRUE("x"_s);
}

TEST(StringView, AViewOfAStringIsNullTerminatedUnlessTheStringIsTemporary) {
    String string{"hello"};
    EXPECT_EQ(StringView{string}.flags(), StringViewFlag::NullTerminated);
    EXPECT_EQ(StringView{std::as_const(string)}.flags(), StringViewFlag::NullTerminated);
    EXPECT_EQ(StringView{String::nullTerminatedView("x"_s)}.flags(), StringViewFlags{});
}

TEST(StringView, SlicesKeepGlobalAndKeepNullTerminatedAtTheEndAlone) {
    EXPECT_EQ("hello"_s.exceptPrefix(2).flags(), StringViewFlag::Global | StringViewFlag::NullTerminated);
    EXPECT_EQ("hello"_s.prefix(2).flags(), StringViewFlag::Global);
    EXPECT_EQ(StringView{"hello"}.slice(1, 3).flags(), StringViewFlags{});
    EXPECT_EQ("hello"_s.exceptPrefix(2), "llo");
    EXPECT_EQ("hello"_s.exceptSuffix(2), "hel");
    EXPECT_EQ("hello"_s.slice(1, 3), "el");
    EXPECT_EQ("hello"_s.sliceSize(1, 3), "ell");
}

TEST(StringView, PrefixAndSuffixAtANullPointerAreNull) {
    EXPECT_EQ("hello"_s.prefix(static_cast<const char*>(nullptr)).data(), nullptr);
    EXPECT_EQ("hello"_s.suffix(nullptr).data(), nullptr);
    const StringView view = "hello"_s;
    EXPECT_EQ(view.prefix(view.begin() + 2), "he");
    EXPECT_EQ(view.suffix(view.begin() + 2), "llo");
}

TEST(StringView, ComparesBytesAndThenSizes) {
    EXPECT_EQ("a"_s, String{"a"});
    EXPECT_NE("a"_s, "b"_s);
    EXPECT_LT("a"_s, "aa"_s);
    EXPECT_LT("a"_s, "\xff"_s);
    EXPECT_GE("b"_s, "ab"_s);
    EXPECT_EQ("a\0b"_s.size(), 3);
    EXPECT_NE("a\0b"_s, "a\0c"_s);
    EXPECT_EQ(""_s, StringView{});
}

TEST(StringView, FindsTheFirstAndTheLastOccurrence) {
    const StringView view = "so, hello hello!"_s;
    EXPECT_EQ(view.find("hello"_s).data(), view.data() + 4);
    EXPECT_EQ(view.findLast("hello"_s).data(), view.data() + 10);
    EXPECT_EQ(view.find('l').data(), view.data() + 6);
    EXPECT_EQ(view.findLast('l').data(), view.data() + 13);
    EXPECT_EQ(view.findAny("!,"_s).data(), view.data() + 2);
    EXPECT_EQ(view.findLastAny("!,"_s).data(), view.data() + 15);
    EXPECT_TRUE(view.contains("lo he"_s));
    EXPECT_FALSE(view.contains('z'));
    EXPECT_TRUE(view.containsAny("zyx!"_s));
    EXPECT_EQ(view.count('l'), 4);
}

TEST(StringView, WhatIsNotFoundIsEmptyAtTheGivenPlace) {
    const StringView view = "hello"_s;
    EXPECT_EQ(view.find("z"_s).data(), nullptr);
    EXPECT_FALSE(view.find('z'));
    EXPECT_EQ(view.findOr('z', view.end()).data(), view.end());
    EXPECT_TRUE(view.findOr('z', view.end()).isEmpty());
    EXPECT_EQ(view.find(""_s).data(), view.data());
    EXPECT_EQ(""_s.find("x"_s).data(), nullptr);
}

TEST(StringView, SplitsWithEmptyPartsAndWithout) {
    EXPECT_EQ(printed(",a,,b,"_s.split(',')), "{, a, , b, }");
    EXPECT_EQ(printed("a::b"_s.split("::"_s)), "{a, b}");
    EXPECT_EQ(printed(",a,,b,"_s.splitWithoutEmptyParts(',')), "{a, b}");
    EXPECT_EQ(printed("a;b,,c"_s.splitOnAnyWithoutEmptyParts(";,"_s)), "{a, b, c}");
    EXPECT_EQ(printed(" a\tb\n"_s.splitOnWhitespaceWithoutEmptyParts()), "{a, b}");
    EXPECT_TRUE(""_s.split(',').isEmpty());
    EXPECT_EQ("a,b"_s.split(',')[1].flags(), StringViewFlag::Global | StringViewFlag::NullTerminated);
}

TEST(StringView, PartitionsAtTheFirstAndAtTheLastSeparator) {
    EXPECT_EQ(printed("a=b=c"_s.partition('=')), "{a, =, b=c}");
    EXPECT_EQ(printed("a=b=c"_s.partitionLast('=')), "{a=b, =, c}");
    EXPECT_EQ(printed("abc"_s.partition("=="_s)), "{abc, , }");
    EXPECT_EQ(printed("abc"_s.partitionLast("=="_s)), "{, , abc}");
}

TEST(StringView, JoinsWithTheViewBetween) {
    EXPECT_EQ(", "_s.join({"a"_s, ""_s, "b"_s}), "a, , b");
    EXPECT_EQ(", "_s.joinWithoutEmptyParts({"a"_s, ""_s, "b"_s}), "a, b");
    EXPECT_EQ(", "_s.join({}), "");
    const String strings[]{"x", "y"};
    EXPECT_EQ("/"_s.join(strings), "x/y");
    EXPECT_EQ("ab"_s + "cd"_s, "abcd");
}

TEST(StringView, KnowsItsPrefixesAndSuffixes) {
    EXPECT_TRUE("hello"_s.hasPrefix("he"_s));
    EXPECT_TRUE("hello"_s.hasPrefix('h'));
    EXPECT_TRUE("hello"_s.hasSuffix("llo"_s));
    EXPECT_FALSE("hello"_s.hasSuffix("hello!"_s));
    EXPECT_FALSE(""_s.hasPrefix('x'));
    EXPECT_TRUE(""_s.hasPrefix(""_s));
    EXPECT_EQ("hello"_s.exceptPrefix("he"_s), "llo");
    EXPECT_EQ("hello"_s.exceptSuffix("llo"_s), "he");
}

TEST(StringView, TrimsWhiteSpaceOrAGivenSet) {
    EXPECT_EQ("\t\r\n\f\v a b \n"_s.trimmed(), "a b");
    EXPECT_EQ("  "_s.trimmed(), "");
    EXPECT_EQ("//a/"_s.trimmed("/"_s), "a");
    EXPECT_EQ("//a/"_s.trimmedPrefix("/"_s), "a/");
    EXPECT_EQ("//a/"_s.trimmedSuffix("/"_s), "//a");
    EXPECT_EQ(" a "_s.trimmedPrefix(), "a ");
    EXPECT_EQ(" a "_s.trimmedSuffix(), " a");
}

TEST(StringView, AMutableViewChangesTheText) {
    char text[]{"hello"};
    MutableStringView view = text;
    view[0] = 'H';
    view.slice(1, 2)[0] = 'E';
    EXPECT_EQ(StringView{view}, "HEllo");
}

TEST(StringView, ConvertsFromAndToStandardStrings) {
    const std::string string = "hello";
    EXPECT_EQ(StringView{string}.flags(), StringViewFlag::NullTerminated);
    EXPECT_EQ((StringView{std::string_view{string}.substr(1)}), "ello");
    EXPECT_EQ(std::string("hello"_s), string);
    EXPECT_EQ(std::string_view("hello"_s), string);
}

TEST(StringIterable, ListsAnyKindOfStrings) {
    const auto joined = [](const StringIterable& strings) { return "|"_s.join(strings); };
    const char* const pointers[]{"a", "b"};
    const std::string standard[]{"a", "b"};
    Array<String> strings{InPlaceInit, {"a", "b"}};
    EXPECT_EQ(joined({"a"_s, "b"_s}), "a|b");
    EXPECT_EQ(joined(pointers), "a|b");
    EXPECT_EQ(joined(Containers::arrayView(standard)), "a|b");
    EXPECT_EQ(joined(strings), "a|b");
    EXPECT_EQ(joined(Array<StringView>{InPlaceInit, {"a"_s, "b"_s}}), "a|b");
    EXPECT_TRUE(StringIterable{}.isEmpty());
    EXPECT_EQ(StringIterable{strings}[1], "b");
    EXPECT_EQ(StringIterable{strings}.back(), "b");
    EXPECT_EQ(StringIterable{strings}.size(), 2);
}

#ifndef NDEBUG
TEST(StringViewDeath, IndicesOutsideAbortInDebugBuilds) {
    EXPECT_DEATH("hello"_s[6],
        "Containers::StringView::operator\\[\\]\\(\\): index 6 out of range for 5 null-terminated bytes\n");
    EXPECT_DEATH(
        "hello"_s.slice(2, 6), "Containers::StringView::slice\\(\\): slice \\[2:6\\] out of range for 5 elements\n");
    EXPECT_DEATH(StringView{}.front(), "Containers::StringView::front\\(\\): view is empty\n");
}
#endif

TEST(StringViewDeath, APrefixThatIsNotThereAborts) {
    EXPECT_DEATH(
        "hello"_s.exceptPrefix("x"_s), "Containers::StringView::exceptPrefix\\(\\): string doesn't begin with x\n");
    EXPECT_DEATH(
        "hello"_s.exceptSuffix("x"_s), "Containers::StringView::exceptSuffix\\(\\): string doesn't end with x\n");
    EXPECT_DEATH("hello"_s.split(""_s), "Containers::StringView::split\\(\\): delimiter is empty\n");
}
