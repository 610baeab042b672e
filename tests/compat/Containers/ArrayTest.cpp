#include <utility>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/StaticArray.h>
#include <Corrade/Containers/String.h>
#include <gtest/gtest.h>

#include "Print.h"

using namespace Corrade;
using Containers::Array;
using Containers::array;
using Containers::arrayCast;
using Containers::arraySize;
using Containers::ArrayView;
using Containers::arrayView;
using Containers::StaticArray;
using Containers::String;
using namespace Corrade::Containers::Literals;

namespace {

int alive = 0;

struct Counted {
    explicit Counted(int number = 0): number{number} { ++alive; }
    Counted(const Counted& other): number{other.number} { ++alive; }
    ~Counted() { --alive; }
    int number;
};

} // namespace

TEST(Array, NothingHasNoMemory) {
    EXPECT_FALSE(Array<int>{});
    EXPECT_EQ((Array<int>{ValueInit, 0}.data()), nullptr);
    EXPECT_TRUE(Array<int>{nullptr}.isEmpty());
}

TEST(Array, ValueInitializationGivesZeros) {
    const Array<int> array{ValueInit, 3};
    EXPECT_EQ(printed(array), "{0, 0, 0}");
}

TEST(Array, NoInitOfATrivialTypeIsPlainNewWithoutADeleter) {
    EXPECT_EQ((Array<char>{NoInit, 100}.deleter()), nullptr);
    EXPECT_EQ((Array<char>{NoInit, 100}.size()), 100);
}

TEST(Array, NoInitOfOtherTypesConstructsNothingAndDestroysEverything) {
    {
        Array<Counted> array{NoInit, 2};
        EXPECT_EQ(alive, 0);
        EXPECT_NE(array.deleter(), nullptr);
        for(Counted& counted: array) new(&counted) Counted{7};
    }
    EXPECT_EQ(alive, 0);
}

TEST(Array, DirectAndInPlaceInitializationConstructEveryElement) {
    {
        const Array<Counted> direct{DirectInit, 3, 5};
        EXPECT_EQ(direct.back().number, 5);
        const Array<Counted> list{InPlaceInit, {Counted{1}, Counted{2}}};
        EXPECT_EQ(list[1].number, 2);
        EXPECT_EQ(alive, 5);
    }
    EXPECT_EQ(alive, 0);
    EXPECT_EQ(printed(array({1, 2, 3})), "{1, 2, 3}");
}

TEST(Array, CallsACustomDeleterWithPointerAndSize) {
    static std::pair<const int*, std::size_t> got;
    static int data[3]{};
    {
        const Array<int> array{data, 3, [](int* pointer, std::size_t size) { got = {pointer, size}; }};
    }
    EXPECT_EQ(got.first, data);
    EXPECT_EQ(got.second, 3);
}

TEST(Array, MoveConstructionEmptiesAndMoveAssignmentSwaps) {
    Array<int> a{InPlaceInit, {1, 2}};
    Array<int> b = std::move(a);
    EXPECT_EQ(a.data(), nullptr);
    EXPECT_EQ(a.size(), 0);
    Array<int> c{InPlaceInit, {3}};
    c = std::move(b);
    EXPECT_EQ(printed(c), "{1, 2}");
    EXPECT_EQ(printed(b), "{3}");
}

TEST(Array, ReleaseForgetsTheMemory) {
    Array<int> array{ValueInit, 2};
    const int* data = array.data();
    int* released = array.release();
    EXPECT_EQ(released, data);
    EXPECT_FALSE(array);
    EXPECT_EQ(array.size(), 0);
    delete[] released;
}

TEST(Array, SlicesAreViews) {
    Array<int> array{InPlaceInit, {1, 2, 3, 4}};
    array.slice(1, 3)[0] = 9;
    EXPECT_EQ(printed(array.prefix(2)), "{1, 9}");
    EXPECT_EQ(printed(array.exceptPrefix(2)), "{3, 4}");
    EXPECT_EQ(printed(std::as_const(array).exceptSuffix(3)), "{1}");
    EXPECT_EQ(printed(array.sliceSize(1, 2)), "{9, 3}");
}

TEST(ArrayView, IsMadeFromArraysListsAndStrings) {
    const int plain[]{1, 2, 3};
    Array<int> array{InPlaceInit, {1, 2}};
    const ArrayView<const int> fromArray = array;
    EXPECT_EQ(fromArray.size(), 2);
    EXPECT_EQ(ArrayView<const int>{plain}.size(), 3);
    EXPECT_EQ(arrayView(plain).data(), plain);
    EXPECT_EQ(arrayView({1, 2, 3, 4}).size(), 4);
    const String string{"hello"};
    EXPECT_EQ(ArrayView<const char>{string}.size(), 5);
    EXPECT_FALSE(ArrayView<int>{});
    EXPECT_EQ(arraySize(plain), 3);
}

TEST(ArrayView, WithoutATypeCountsBytes) {
    const Array<int> array{ValueInit, 3};
    EXPECT_EQ(ArrayView<const void>{array}.size(), 12);
    EXPECT_EQ(ArrayView<const void>{"hello"_s}.size(), 5);
    EXPECT_EQ(ArrayView<const void>{String{"hi"}}.size(), 2);
    const short plain[]{1, 2};
    EXPECT_EQ(ArrayView<const void>{plain}.size(), 4);
    EXPECT_EQ((ArrayView<const void>{plain, 1}.size()), 2);
    EXPECT_EQ(ArrayView<const void>{nullptr}.size(), 0);
    Array<char> bytes{ValueInit, 8};
    EXPECT_EQ(ArrayView<void>{bytes}.data(), bytes.data());
    EXPECT_EQ(arrayCast<int>(arrayView(bytes)).size(), 2);
}

TEST(StaticArray, HoldsItsElements) {
    StaticArray<3, int> array{1, 2, 3};
    array[1] = 5;
    EXPECT_EQ(printed(array), "{1, 5, 3}");
    EXPECT_EQ(array.size(), 3);
}

#ifndef NDEBUG
TEST(ArrayDeath, IndicesOutsideAbortInDebugBuilds) {
    Array<int> array{ValueInit, 2};
    EXPECT_DEATH(array[2], "Containers::Array::operator\\[\\]\\(\\): index 2 out of range for 2 elements\n");
    EXPECT_DEATH(
        arrayView(array)[2], "Containers::ArrayView::operator\\[\\]\\(\\): index 2 out of range for 2 elements\n");
    EXPECT_DEATH(Array<int>{}.front(), "Containers::Array::front\\(\\): array is empty\n");
    EXPECT_DEATH(Array<int>{}.back(), "Containers::Array::back\\(\\): array is empty\n");
    EXPECT_DEATH(array.prefix(3), "Containers::ArrayView::slice\\(\\): slice \\[0:3\\] out of range for 2 elements\n");
}
#endif
