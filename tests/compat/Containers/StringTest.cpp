#include <cstdlib>
#include <unordered_map>
#include <utility>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/StaticArray.h>
#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/Containers/StringStlHash.h>
#include <gtest/gtest.h>

#include "Print.h"

using namespace Corrade;
using Containers::AllocatedInit;
using Containers::Array;
using Containers::array;
using Containers::MutableStringView;
using Containers::String;
using Containers::StringView;
using Containers::StringViewFlag;
using namespace Corrade::Containers::Literals;

namespace {

const char* const Long = "a text that is too long to live inside the object";
int deleted = 0;

} // namespace

TEST(String, EmptyIsFalseAndStillNullTerminated) {
    const String string;
    EXPECT_FALSE(string);
    EXPECT_TRUE(string.isEmpty());
    ASSERT_NE(string.data(), nullptr);
    EXPECT_EQ(*string.data(), '\0');
}

TEST(String, UpTo22BytesLiveInTheObject) {
    EXPECT_EQ(sizeof(String), 24);
    EXPECT_TRUE((String{ValueInit, 22}.isSmall()));
    EXPECT_FALSE((String{ValueInit, 23}.isSmall()));
    EXPECT_FALSE((String{AllocatedInit, "x"}.isSmall()));
}

TEST(String, ConstructsFromPointersViewsArraysAndSizes) {
    EXPECT_EQ(String{"hello"}, "hello");
    EXPECT_EQ((String{"hello", 3}), "hel");
    EXPECT_EQ(String{"hel\0lo"_s}.size(), 6);
    EXPECT_EQ(String{static_cast<const char*>(nullptr)}, "");
    EXPECT_EQ((String{ValueInit, 3}), "\0\0\0"_s);
    EXPECT_EQ((String{DirectInit, 3, 'x'}), "xxx");
    String uninitialized{NoInit, 30};
    EXPECT_EQ(uninitialized.size(), 30);
    EXPECT_EQ(uninitialized.data()[30], '\0');
    const Array<char> array{InPlaceInit, {'a', 'b'}};
    EXPECT_EQ(String{Containers::arrayView(array)}, "ab");
    EXPECT_EQ(String{std::string("standard")}, "standard");
}

TEST(String, TakesOverMemoryAndCallsItsDeleterOnce) {
    deleted = 0;
    {
        const String string{strdup("hello"), 5, [](char* data, std::size_t size) {
                                deleted += int(size);
                                std::free(data);
                            }};
        EXPECT_EQ(string, "hello");
        EXPECT_FALSE(string.isSmall());
        EXPECT_NE(string.deleter(), nullptr);
    }
    EXPECT_EQ(deleted, 5);
}

TEST(String, CopiesOwnTheirTextAndAssignToThemselves) {
    for(const char* text: {"short", Long}) {
        String a{text};
        String b = a;
        EXPECT_EQ(b, text);
        EXPECT_NE(a.data(), b.data());
        b = "other";
        b = a;
        EXPECT_EQ(b, text);
        EXPECT_EQ(a, text);
    }
}

TEST(String, MoveConstructionLeavesNothingAndMoveAssignmentSwaps) {
    for(const char* text: {"short", Long}) {
        String a{text};
        String b = std::move(a);
        EXPECT_EQ(b, text);
        EXPECT_EQ(a.size(), 0);
        EXPECT_EQ(a.data(), nullptr);
        String c{"another text that is too long to live inside"};
        c = std::move(b);
        EXPECT_EQ(c, text);
        EXPECT_EQ(b, "another text that is too long to live inside");
    }
}

TEST(String, MovingLongTextKeepsItsAddress) {
    String a{Long};
    const char* data = a.data();
    const String b = std::move(a);
    EXPECT_EQ(b.data(), data);
}

TEST(String, NullTerminatedViewCopiesOnlyWhatIsNotTerminated) {
    const StringView text = "hello"_s;
    EXPECT_EQ(String::nullTerminatedView(text).data(), text.data());
    EXPECT_EQ(String::nullTerminatedView(text).viewFlags(), StringViewFlag::Global | StringViewFlag::NullTerminated);
    const String copy = String::nullTerminatedView(text.prefix(4));
    EXPECT_NE(copy.data(), text.data());
    EXPECT_EQ(copy, "hell");
    EXPECT_NE(String::nullTerminatedGlobalView(StringView{text.data()}).data(), text.data());
    EXPECT_EQ(String::nullTerminatedGlobalView(text).data(), text.data());
    const String copied = String::nullTerminatedGlobalView(text);
    EXPECT_EQ(String{copied}.viewFlags(), StringViewFlag::NullTerminated);
}

TEST(String, GivesMutableViewsWhileItCanChange) {
    String string{"a,b"};
    MutableStringView part = string.exceptPrefix(2);
    part[0] = 'c';
    string[0] = 'x';
    string.split(',')[0][0] = 'y';
    EXPECT_EQ(string, "y,c");
    EXPECT_EQ(string[3], '\0');
    EXPECT_EQ(string.front(), 'y');
    EXPECT_EQ(string.back(), 'c');
    EXPECT_EQ(std::as_const(string).prefix(1), "y");
    EXPECT_EQ(string.find(',').data(), string.data() + 1);
}

TEST(String, HasTheFunctionsOfItsView) {
    const String string{" a/b/c "};
    EXPECT_EQ(string.trimmed(), "a/b/c");
    EXPECT_EQ(string.findLast('/'), "/");
    EXPECT_TRUE(string.hasPrefix(' '));
    EXPECT_TRUE(string.hasSuffix("c "_s));
    EXPECT_TRUE(string.contains("a/b"_s));
    EXPECT_EQ(string.count('/'), 2);
    EXPECT_EQ(printed(string.partition('/')), "{ a, /, b/c }");
    EXPECT_EQ(string + "!"_s, " a/b/c !");
}

TEST(String, ReleaseHandsOverTheMemory) {
    String string{Long};
    char* data = string.release();
    EXPECT_STREQ(data, Long);
    EXPECT_TRUE(string.isEmpty());
    EXPECT_NE(string.data(), nullptr);
    delete[] data;
}

TEST(String, IsAKeyOfUnorderedMaps) {
    std::unordered_map<String, int> map;
    map["one"] = 1;
    map[String{Long}] = 2;
    EXPECT_EQ(map.at("one"), 1);
    EXPECT_EQ(map.at(Long), 2);
    EXPECT_EQ(std::hash<String>{}("one"), std::hash<StringView>{}("one"_s));
}

TEST(StringDeath, MisuseAborts) {
    EXPECT_DEATH(
        (String{static_cast<const char*>(nullptr), 3}), "Containers::String: received a null string of size 3\n");
    char text[]{'a', 'b'};
    EXPECT_DEATH((String{text, 1, [](char*, std::size_t) {}}),
        "Containers::String: can only take ownership of a non-null null-terminated array\n");
    EXPECT_DEATH(String{"small"}.release(), "Containers::String::release\\(\\): cannot call on a SSO instance\n");
    EXPECT_DEATH(String{"small"}.deleter(), "Containers::String::deleter\\(\\): cannot call on a SSO instance\n");
}
