// Pointer, Optional, Pair, Reference and EnumSet.

#include <utility>

#include <Corrade/Containers/EnumSet.h>
#include <Corrade/Containers/Optional.h>
#include <Corrade/Containers/Pair.h>
#include <Corrade/Containers/Pointer.h>
#include <Corrade/Containers/Reference.h>
#include <Corrade/Containers/String.h>
#include <gtest/gtest.h>

#include "Print.h"

using namespace Corrade;
using Containers::enumCastUnderlyingType;
using Containers::EnumSet;
using Containers::NullOpt;
using Containers::Optional;
using Containers::Pair;
using Containers::Pointer;
using Containers::pointerCast;
using Containers::Reference;
using Containers::String;

namespace {

int alive = 0;

struct Base {
    explicit Base(int number = 0): number{number} { ++alive; }
    virtual ~Base() { --alive; }
    int number;
};
struct Derived: Base {
    using Base::Base;
};

} // namespace

// Not in the nameless namespace, where Clang warns of those of the operators that no case uses.
namespace HoldersTest {

enum class Flag : unsigned { A = 1 << 0, B = 1 << 1, C = 1 << 2 };
using Flags = EnumSet<Flag>;
CORRADE_ENUMSET_OPERATORS(Flags)

} // namespace HoldersTest

using HoldersTest::Flag;
using HoldersTest::Flags;

TEST(Pointer, OwnsOneObject) {
    {
        Pointer<Base> a{new Base{1}};
        Pointer<Base> b = Containers::pointer<Base>(2);
        EXPECT_EQ(alive, 2);
        EXPECT_EQ(a->number + (*b).number, 3);
        b = std::move(a);
        EXPECT_EQ(b->number, 1);
        EXPECT_EQ(a->number, 2);
        a = nullptr;
        EXPECT_TRUE(a == nullptr);
        EXPECT_EQ(b->number, 1);
    }
    EXPECT_EQ(alive, 0);
}

TEST(Pointer, ResetEmplaceAndReleaseChangeOwnership) {
    Pointer<Base> pointer;
    EXPECT_FALSE(pointer);
    EXPECT_EQ(pointer.emplace(3).number, 3);
    EXPECT_EQ(pointer.emplace<Derived>(4).number, 4);
    pointer.reset(new Base{5});
    EXPECT_EQ(alive, 1);
    Base* released = pointer.release();
    EXPECT_EQ(pointer.get(), nullptr);
    delete released;
    EXPECT_EQ(alive, 0);
}

TEST(Pointer, ConvertsToTheBaseAndCastsBack) {
    Pointer<Base> base = Pointer<Derived>{InPlaceInit, 7};
    Pointer<Derived> derived = pointerCast<Derived>(std::move(base));
    EXPECT_FALSE(base);
    EXPECT_EQ(derived->number, 7);
}

TEST(Optional, HoldsAValueOrNothing) {
    Optional<String> optional;
    EXPECT_FALSE(optional);
    EXPECT_TRUE(optional == NullOpt);
    optional = String{"hello"};
    EXPECT_EQ(*optional, "hello");
    EXPECT_EQ(optional->size(), 5);
    EXPECT_TRUE(optional == Optional<String>{"hello"});
    optional.emplace("other");
    EXPECT_EQ(*optional, "other");
    optional = {};
    EXPECT_FALSE(optional);
    EXPECT_EQ(*Containers::optional(5), 5);
    EXPECT_EQ(printed(Optional<int>{}), "Containers::NullOpt");
    EXPECT_EQ(printed(Containers::optional(5)), "5");
}

TEST(Pair, HoldsTwoValues) {
    Pair<int, String> pair{1, "one"};
    pair.first() = 2;
    EXPECT_EQ(pair.second(), "one");
    EXPECT_TRUE((pair == Pair<int, String>{2, "one"}));
    const String moved = std::move(pair).second();
    EXPECT_EQ(moved, "one");
    EXPECT_EQ(printed(Pair<int, float>{1, 2.5f}), "{1, 2.5}");
}

TEST(Reference, RebindsOnAssignment) {
    int a = 1, b = 2;
    Reference<int> reference = a;
    reference = b;
    *reference = 5;
    EXPECT_EQ(a, 1);
    EXPECT_EQ(b, 5);
}

TEST(EnumSet, CombinesFlags) {
    Flags flags = Flag::A | Flag::C;
    EXPECT_TRUE(flags & Flag::A);
    EXPECT_FALSE(flags & Flag::B);
    EXPECT_TRUE(flags >= Flag::C);
    EXPECT_FALSE(flags >= (Flag::A | Flag::B));
    EXPECT_TRUE(Flag::A <= flags);
    flags |= Flag::B;
    flags &= ~Flag::A;
    EXPECT_EQ(flags, Flag::B | Flag::C);
    EXPECT_EQ(flags ^ Flag::B, Flag::C);
    EXPECT_FALSE(Flags{});
    EXPECT_EQ(unsigned(flags), 6);
    EXPECT_EQ(enumCastUnderlyingType(Flag::C), 4);
    EXPECT_EQ(sizeof(Flags), 4);
}

#ifndef NDEBUG
TEST(HoldersDeath, AccessToNothingAbortsInDebugBuilds) {
    EXPECT_DEATH(*Pointer<int>{}, "Containers::Pointer: the pointer is null\n");
    EXPECT_DEATH(*Optional<int>{}, "Containers::Optional: the optional is empty\n");
}
#endif
