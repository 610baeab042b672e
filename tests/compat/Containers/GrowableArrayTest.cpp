#include <cstdint>

#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Containers/String.h>
#include <gtest/gtest.h>

#include "Print.h"

using namespace Corrade;
using Containers::Array;
using Containers::array;
using Containers::ArrayMallocAllocator;
using Containers::ArrayNewAllocator;
using Containers::String;
using Containers::StringView;
using namespace Corrade::Containers::Literals;

namespace {

int alive = 0;

struct Counted {
    Counted(int number = 0): number{number} { ++alive; }
    Counted(Counted&& other) noexcept: number{other.number} { ++alive; }
    Counted& operator=(Counted&&) noexcept = default;
    ~Counted() { --alive; }
    int number;
};

struct Plain {
    int number;
    const char* name;
};

} // namespace

TEST(GrowableArray, AnyArrayGrowsAndGetsTheAllocatorsDeleter) {
    Array<int> array{InPlaceInit, {1, 2}};
    EXPECT_FALSE(arrayIsGrowable(array));
    EXPECT_EQ(arrayCapacity(array), 2);
    EXPECT_EQ(arrayAppend(array, 3), 3);
    EXPECT_TRUE(arrayIsGrowable(array));
    EXPECT_EQ(array.deleter(), ArrayMallocAllocator<int>::deleter);
    EXPECT_EQ(printed(array), "{1, 2, 3}");

    Array<String> strings;
    arrayAppend(strings, "a");
    EXPECT_EQ(strings.deleter(), ArrayNewAllocator<String>::deleter);
}

TEST(GrowableArray, AppendsCopiesMovesListsAndInPlace) {
    Array<String> strings;
    const String copied{"copied"};
    arrayAppend(strings, copied);
    arrayAppend(strings, String{"moved"});
    arrayAppend(strings, InPlaceInit, "in place"_s);
    arrayAppend(strings, {"x", "y"});
    EXPECT_EQ(printed(strings), "{copied, moved, in place, x, y}");

    Array<Plain> plain;
    EXPECT_EQ(arrayAppend(plain, InPlaceInit, 5, "five").number, 5);

    Array<char> text;
    arrayAppend(text, "hello"_s);
    EXPECT_EQ(StringView{text}, "hello");
    EXPECT_EQ(arrayAppend(text, ValueInit, 3).size(), 3);
    EXPECT_EQ(text.size(), 8);
    EXPECT_EQ(text[7], 0);
    arrayAppend(text, NoInit, 2)[1] = 'z';
    EXPECT_EQ(text.back(), 'z');
}

TEST(GrowableArray, AppendsAListFromWithinItself) {
    Array<int> array{InPlaceInit, {1, 2, 3}};
    arrayAppend(array, 4);
    for(int i = 0; i != 3; ++i) arrayAppend(array, array.prefix(2));
    EXPECT_EQ(printed(array), "{1, 2, 3, 4, 1, 2, 1, 2, 1, 2}");
}

TEST(GrowableArray, CapacityDoublesWhileSmallAndThenGrowsByHalf) {
    Array<std::int32_t> array;
    std::size_t last = 0;
    std::string capacities;
    for(int i = 0; i != 100; ++i) {
        arrayAppend(array, i);
        if(arrayCapacity(array) != last) capacities += std::to_string(last = arrayCapacity(array)) + " ";
    }
    EXPECT_EQ(capacities, "2 6 14 22 34 52 79 119 ");
}

TEST(GrowableArray, ReserveGivesExactlyTheCapacityAndNeverShrinks) {
    Array<Counted> array;
    EXPECT_EQ(arrayReserve(array, 64), 64);
    EXPECT_EQ(arrayCapacity(array), 64);
    EXPECT_EQ(arrayReserve(array, 10), 64);
    const Counted* data = array.data();
    for(int i = 0; i != 64; ++i) arrayAppend(array, InPlaceInit, i);
    EXPECT_EQ(array.data(), data);
    array = {};
    EXPECT_EQ(alive, 0);
}

TEST(GrowableArray, ResizesToExactlyTheSizeAndInitializesWhatIsNew) {
    Array<int> array{InPlaceInit, {1, 2, 3}};
    arrayResize(array, ValueInit, 5);
    EXPECT_EQ(printed(array), "{1, 2, 3, 0, 0}");
    EXPECT_EQ(arrayCapacity(array), 5);
    arrayResize(array, DirectInit, 6, 9);
    EXPECT_EQ(array.back(), 9);
    arrayResize(array, 7, 8);
    EXPECT_EQ(array.back(), 8);
    arrayResize(array, 2);
    EXPECT_EQ(printed(array), "{1, 2}");
    EXPECT_EQ(arrayCapacity(array), 7);
    arrayResize(array, NoInit, 7);
    EXPECT_EQ(array.size(), 7);
}

TEST(GrowableArray, ResizingToTheSameSizeKeepsForeignStorage) {
    Array<char> array{ValueInit, 100};
    const char* data = array.data();
    arrayResize(array, NoInit, 100);
    EXPECT_EQ(array.data(), data);
    EXPECT_EQ(array.deleter(), nullptr);
}

TEST(GrowableArray, ResizingForeignStorageToZeroLeavesEmptyGrowableStorage) {
    Array<unsigned> array{InPlaceInit, {1, 2}};
    arrayResize(array, NoInit, 0);
    EXPECT_TRUE(array.isEmpty());
    EXPECT_NE(array.data(), nullptr);
    EXPECT_EQ(array.deleter(), ArrayMallocAllocator<unsigned>::deleter);
}

TEST(GrowableArray, ClearKeepsGrowableStorageAndDropsAnyOther) {
    Array<unsigned> array{InPlaceInit, {1, 2}};
    arrayClear(array);
    EXPECT_EQ(array.data(), nullptr);
    EXPECT_EQ(array.deleter(), nullptr);

    arrayAppend(array, {1u, 2u, 3u});
    const unsigned* data = array.data();
    const std::size_t capacity = arrayCapacity(array);
    arrayClear(array);
    EXPECT_TRUE(array.isEmpty());
    EXPECT_EQ(array.data(), data);
    EXPECT_EQ(arrayCapacity(array), capacity);
}

TEST(GrowableArray, InsertsInTheMiddle) {
    Array<String> strings{InPlaceInit, {"a", "c"}};
    EXPECT_EQ(arrayInsert(strings, 1, "b"), "b");
    arrayInsert(strings, 0, InPlaceInit, "start");
    const String last{"end"};
    arrayInsert(strings, 4, last);
    EXPECT_EQ(printed(strings), "{start, a, b, c, end}");
    Array<int> numbers;
    for(int i = 0; i != 40; ++i) arrayInsert(numbers, 0, i);
    EXPECT_EQ(numbers.front(), 39);
    EXPECT_EQ(numbers.back(), 0);
}

TEST(GrowableArray, RemovesAndKeepsTheOrder) {
    Array<String> strings{InPlaceInit, {"a", "b", "c", "d", "e"}};
    arrayRemove(strings, 1);
    EXPECT_EQ(printed(strings), "{a, c, d, e}");
    EXPECT_TRUE(arrayIsGrowable(strings));
    EXPECT_EQ(arrayCapacity(strings), 4);
    arrayRemove(strings, 1, 2);
    EXPECT_EQ(printed(strings), "{a, e}");
    arrayRemove(strings, 2, 0);
    arrayRemoveSuffix(strings);
    EXPECT_EQ(printed(strings), "{a}");
}

TEST(GrowableArray, TheAllocatorCanBeNamed) {
    Array<int> array;
    arrayAppend<ArrayNewAllocator>(array, 1);
    arrayAppend<ArrayNewAllocator>(array, 2);
    EXPECT_EQ(array.deleter(), ArrayNewAllocator<int>::deleter);
    EXPECT_FALSE(arrayIsGrowable(array));
    arrayRemove<ArrayNewAllocator>(array, 0);
    EXPECT_EQ(printed(array), "{2}");
    arrayRemoveSuffix<ArrayNewAllocator>(array);
    EXPECT_EQ(array.deleter(), ArrayNewAllocator<int>::deleter);
    EXPECT_TRUE(array.isEmpty());
}

TEST(GrowableArray, ShrinkGivesPlainStorageOfExactlyTheSize) {
    Array<int> array;
    arrayReserve(array, 100);
    arrayAppend(array, {1, 2});
    arrayShrink(array);
    EXPECT_FALSE(arrayIsGrowable(array));
    EXPECT_EQ(printed(array), "{1, 2}");
    EXPECT_EQ(array.deleter(), nullptr);
}

TEST(GrowableArray, EveryElementIsDestroyedOnce) {
    {
        Array<Counted> array;
        for(int i = 0; i != 100; ++i) arrayAppend(array, InPlaceInit, i);
        EXPECT_EQ(alive, 100);
        arrayRemove(array, 10, 20);
        EXPECT_EQ(alive, 80);
        EXPECT_EQ(array[10].number, 30);
        arrayInsert(array, 5, Counted{1000});
        EXPECT_EQ(alive, 81);
        arrayResize(array, NoInit, 50);
        EXPECT_EQ(alive, 50);
        arrayClear(array);
        EXPECT_EQ(alive, 0);
        arrayResize(array, ValueInit, 3);
    }
    EXPECT_EQ(alive, 0);
}

TEST(GrowableArray, ReleasedStorageIsFreedByItsDeleter) {
    Array<char> bytes;
    arrayAppend(bytes, "hello\0"_s);
    const auto deleter = bytes.deleter();
    const std::size_t size = bytes.size() - 1;
    const String string{bytes.release(), size, deleter};
    EXPECT_EQ(string, "hello");
}

#ifndef NDEBUG
TEST(GrowableArrayDeath, MisuseAbortsInDebugBuilds) {
    Array<int> array{InPlaceInit, {1, 2}};
    EXPECT_DEATH(arrayAppend(array, array[0]),
        "Containers::arrayAppend\\(\\): use the list variant to append values "
        "from within the array itself\n");
    EXPECT_DEATH(arrayRemove(array, 1, 2),
        "Containers::arrayRemove\\(\\): can't remove 2 elements at index 1 from an "
        "array of size 2\n");
    EXPECT_DEATH(arrayRemoveSuffix(array, 3),
        "Containers::arrayRemoveSuffix\\(\\): can't remove 3 elements from an array of size 2\n");
    EXPECT_DEATH(
        arrayInsert(array, 3, 0), "Containers::arrayInsert\\(\\): can't insert at index 3 into an array of size 2\n");
}
#endif
