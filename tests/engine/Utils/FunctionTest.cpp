#include "Utils/Function.h"

#include <array>
#include <memory>
#include <type_traits>

#include <gtest/gtest.h>

#include "support/Allocations.h"

namespace QuorvaneEngine {
namespace {

using Test::Allocations;

using Sum = Function<int(int, int)>;

static_assert(!std::is_copy_constructible_v<Sum> && !std::is_copy_assignable_v<Sum>);
static_assert(std::is_nothrow_move_constructible_v<Sum> && std::is_nothrow_move_assignable_v<Sum>);
static_assert(Sum::StorageSize == 64);
static_assert(!std::is_constructible_v<Sum, int (*)(const char*)>);

int add(int a, int b) { return a + b; }

TEST(Function, ADefaultOneIsEmpty) { EXPECT_FALSE(Sum{}); }

TEST(Function, ANullPointerMakesAnEmptyOne) {
    EXPECT_FALSE(Sum{nullptr});
    int (*const none)(int, int) = nullptr;
    EXPECT_FALSE(Sum{none});
}

TEST(Function, CallsAPlainFunction) {
    Sum sum{add};
    ASSERT_TRUE(sum);
    EXPECT_EQ(sum(3, 4), 7);
}

TEST(Function, CallsALambdaWithState) {
    int calls = 0;
    Sum sum{[&calls](int a, int b) {
        ++calls;
        return a * b;
    }};
    EXPECT_EQ(sum(3, 4), 12);
    EXPECT_EQ(sum(5, 6), 30);
    EXPECT_EQ(calls, 2);
}

TEST(Function, KeepsTheStateOfAMutableLambda) {
    Function<int()> next{[i = 0]() mutable { return ++i; }};
    EXPECT_EQ(next(), 1);
    EXPECT_EQ(next(), 2);
}

TEST(Function, TakesAndGivesWhatCanOnlyBeMoved) {
    Function<std::unique_ptr<int>(std::unique_ptr<int>)> pass{[](std::unique_ptr<int> value) {
        ++*value;
        return value;
    }};
    EXPECT_EQ(*pass(std::make_unique<int>(1)), 2);
}

TEST(Function, PassesReferencesThrough) {
    Function<void(int&)> increment{[](int& value) { ++value; }};
    int value = 1;
    increment(value);
    EXPECT_EQ(value, 2);
}

TEST(Function, AMovedFromOneIsEmpty) {
    Sum source{add};
    Sum target{std::move(source)};
    EXPECT_FALSE(source);
    EXPECT_EQ(target(1, 2), 3);
}

TEST(Function, MoveAssignmentDestroysWhatWasThere) {
    const auto first = std::make_shared<int>(1);
    const auto second = std::make_shared<int>(2);
    Function<int()> a{[first] { return *first; }};
    Function<int()> b{[second] { return *second; }};
    a = std::move(b);
    EXPECT_EQ(first.use_count(), 1);
    EXPECT_EQ(second.use_count(), 2);
    EXPECT_FALSE(b);
    EXPECT_EQ(a(), 2);
}

TEST(Function, AssignmentToItselfChangesNothing) {
    const auto shared = std::make_shared<int>(5);
    Function<int()> function{[shared] { return *shared; }};
    Function<int()>& same = function;
    function = std::move(same);
    EXPECT_EQ(function(), 5);
    EXPECT_EQ(shared.use_count(), 2);
}

TEST(Function, DestroysItsCallableOnce) {
    const auto shared = std::make_shared<int>(5);
    {
        Function<int()> function{[shared] { return *shared; }};
        Function<int()> other{std::move(function)};
        EXPECT_EQ(shared.use_count(), 2);
    }
    EXPECT_EQ(shared.use_count(), 1);
}

TEST(Function, UpTo64PlainBytesNeedNoHeap) {
    const std::array<char, 64> fits{1};
    const std::array<char, 65> isTooLarge{2};
    const Allocations allocations;
    Function<int()> inPlace{[fits] { return fits[0]; }};
    EXPECT_EQ(allocations.count(), 0u);
    Function<int()> onHeap{[isTooLarge] { return isTooLarge[0]; }};
    EXPECT_EQ(allocations.count(), 1u);
    Function<int()> moved{std::move(onHeap)};
    EXPECT_EQ(allocations.count(), 1u);
    EXPECT_EQ(inPlace(), 1);
    EXPECT_EQ(moved(), 2);
}

TEST(Function, AlignmentOfTheCallableIsKept) {
    struct alignas(64) Aligned {
        bool operator()() const { return reinterpret_cast<std::uintptr_t>(this) % 64 == 0; }
    };
    Function<bool()> function{Aligned{}};
    EXPECT_TRUE(function());
    Function<bool()> moved{std::move(function)};
    EXPECT_TRUE(moved());
}

}
}
