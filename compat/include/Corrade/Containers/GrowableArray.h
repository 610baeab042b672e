#pragma once

/** @file
 * Functions that let a plain Array grow, shrink and change in the middle.
 *
 * A growable array is one whose deleter is that of an allocator of this file. An array with any other storage is moved
 * into such storage by the first call that changes its size; arrayClear() drops other storage instead. Elements are
 * moved when storage moves, so addresses die.
 *
 * Sanitizers see the memory behind the size as ordinary memory.
 */

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <memory>
#include <type_traits>

#include "Corrade/Containers/Array.h"

namespace Corrade::Containers {

namespace Implementation {

/** Bytes in front of the elements that hold the capacity, without spoiling their alignment. */
template <class T>
constexpr std::size_t CapacityOffset = std::clamp(
    alignof(T), sizeof(std::size_t), std::size_t(__STDCPP_DEFAULT_NEW_ALIGNMENT__));

/** Doubles small allocations and adds half to larger ones; counted in bytes with the header. */
template <class T> std::size_t grownCapacity(std::size_t current, std::size_t desired) {
    const std::size_t bytes = current * sizeof(T) + CapacityOffset<T>;
    const std::size_t grown = bytes < __STDCPP_DEFAULT_NEW_ALIGNMENT__ ? __STDCPP_DEFAULT_NEW_ALIGNMENT__
        : bytes < 64                                                   ? bytes * 2
                                                                       : bytes + bytes / 2;
    return std::max(desired, (grown - CapacityOffset<T>) / sizeof(T));
}

} // namespace Implementation

/** Storage from `new char[]`, for types that must be moved one by one. */
template <class T> struct ArrayNewAllocator {
    using Type = T;

    static T* allocate(std::size_t capacity) {
        char* memory = new char[capacity * sizeof(T) + Implementation::CapacityOffset<T>];
        std::memcpy(memory, &capacity, sizeof capacity);
        return reinterpret_cast<T*>(memory + Implementation::CapacityOffset<T>);
    }
    static void reallocate(T*& array, std::size_t size, std::size_t newCapacity) {
        static_assert(std::is_nothrow_move_constructible_v<T>, "elements move when the array grows");
        T* moved = allocate(newCapacity);
        std::uninitialized_move_n(array, size, moved);
        deleter(std::exchange(array, moved), size);
    }
    static void deallocate(T* data) { delete[](reinterpret_cast<char*>(data) - Implementation::CapacityOffset<T>); }
    static std::size_t grow(T* array, std::size_t desired) {
        return Implementation::grownCapacity<T>(array ? capacity(array) : 0, desired);
    }
    static std::size_t capacity(T* array) {
        std::size_t out;
        std::memcpy(&out, reinterpret_cast<char*>(array) - Implementation::CapacityOffset<T>, sizeof out);
        return out;
    }
    static void deleter(T* data, std::size_t size) {
        std::destroy_n(data, size);
        deallocate(data);
    }
};

/** Storage from `malloc`, for types that may be copied as bytes. */
template <class T> struct ArrayMallocAllocator {
    static_assert(std::is_trivially_copyable_v<T>, "elements are moved as bytes");
    using Type = T;

    static T* allocate(std::size_t capacity) { return resized(nullptr, capacity, "allocate"); }
    static void reallocate(T*& array, std::size_t, std::size_t newCapacity) {
        array = resized(reinterpret_cast<char*>(array) - Implementation::CapacityOffset<T>, newCapacity, "reallocate");
    }
    static void deallocate(T* data) {
        if(data) std::free(reinterpret_cast<char*>(data) - Implementation::CapacityOffset<T>);
    }
    static std::size_t grow(T* array, std::size_t desired) {
        return Implementation::grownCapacity<T>(array ? capacity(array) : 0, desired);
    }
    static std::size_t capacity(T* array) {
        std::size_t bytes;
        std::memcpy(&bytes, reinterpret_cast<char*>(array) - Implementation::CapacityOffset<T>, sizeof bytes);
        return (bytes - Implementation::CapacityOffset<T>) / sizeof(T);
    }
    static void deleter(T* data, std::size_t) { deallocate(data); }

private:
    static T* resized(void* memory, std::size_t capacity, const char* what) {
        const std::size_t bytes = capacity * sizeof(T) + Implementation::CapacityOffset<T>;
        memory = std::realloc(memory, bytes);
        CORRADE_ASSERT(memory, "Containers::ArrayMallocAllocator: can't" << what << bytes << "bytes", nullptr);
        std::memcpy(memory, &bytes, sizeof bytes);
        return reinterpret_cast<T*>(static_cast<char*>(memory) + Implementation::CapacityOffset<T>);
    }
};

template <class T>
using ArrayAllocator =
    std::conditional_t<std::is_trivially_copyable_v<T>, ArrayMallocAllocator<T>, ArrayNewAllocator<T>>;

/** Way into an array's members; for the functions below alone. */
template <class T> struct GrowableAccess {
    static T*& data(Array<T>& array) { return array._data; }
    static std::size_t& size(Array<T>& array) { return array._size; }
    /** Whether an element lies among the first `count` of the array. */
    static bool holds(const Array<T>& array, const T* element, std::size_t count) {
        const std::less<const T*> before;
        return !before(element, array._data) && before(element, array._data + count);
    }

    /** Moves the elements into storage of the allocator with the given capacity. */
    template <class Allocator> static void move(Array<T>& array, std::size_t size, std::size_t capacity) {
        T* moved = Allocator::allocate(capacity);
        std::uninitialized_move_n(array._data, size, moved);
        array = Array<T>(moved, size, Allocator::deleter);
    }

    /** Makes room for `count` unconstructed elements at `index` and returns the first. */
    template <class Allocator> static T* gap(Array<T>& array, std::size_t index, std::size_t count) {
        const std::size_t size = array._size;
        if(count && array._deleter != Allocator::deleter)
            move<Allocator>(array, size, Allocator::grow(nullptr, size + count));
        else if(count && Allocator::capacity(array._data) < size + count)
            Allocator::reallocate(array._data, size, Allocator::grow(array._data, size + count));
        T* const at = array._data + index;
        if constexpr(std::is_trivially_copyable_v<T>) {
            if(count && index != size) std::memmove(static_cast<void*>(at + count), at, (size - index) * sizeof(T));
        } else if(count) {
            for(T* it = array._data + size; it != at; --it) {
                new(it - 1 + count) T(std::move(it[-1]));
                it[-1].~T();
            }
        }
        array._size = size + count;
        return at;
    }
};

template <class T, class Allocator = ArrayAllocator<T>> bool arrayIsGrowable(Array<T>& array) {
    return array.deleter() == Allocator::deleter;
}

/** The size that the array can have without moving; of storage that does not grow, its size. */
template <class T, class Allocator = ArrayAllocator<T>> std::size_t arrayCapacity(Array<T>& array) {
    return arrayIsGrowable<T, Allocator>(array) ? Allocator::capacity(array.data()) : array.size();
}

/** Makes the capacity at least the given one, exactly so where it was less; returns the new one. */
template <class T, class Allocator = ArrayAllocator<T>>
std::size_t arrayReserve(Array<T>& array, std::size_t capacity) {
    const std::size_t current = arrayCapacity<T, Allocator>(array);
    if(current >= capacity) return current;
    if(arrayIsGrowable<T, Allocator>(array))
        Allocator::reallocate(GrowableAccess<T>::data(array), array.size(), capacity);
    else GrowableAccess<T>::template move<Allocator>(array, array.size(), capacity);
    return capacity;
}

/** Changes the size; new elements are the caller's to construct. The same size changes nothing. */
template <class T, class Allocator = ArrayAllocator<T>> void arrayResize(Array<T>& array, NoInitT, std::size_t size) {
    const std::size_t before = array.size();
    if(before == size) return;
    if(!arrayIsGrowable<T, Allocator>(array)) {
        T* moved = Allocator::allocate(size);
        std::uninitialized_move_n(array.data(), std::min(before, size), moved);
        array = Array<T>(moved, size, Allocator::deleter);
        return;
    }
    if(Allocator::capacity(array.data()) < size) Allocator::reallocate(GrowableAccess<T>::data(array), before, size);
    else if(size < before) std::destroy(array.begin() + size, array.end());
    GrowableAccess<T>::size(array) = size;
}
template <class T, class Allocator = ArrayAllocator<T>, class... Args>
void arrayResize(Array<T>& array, DirectInitT, std::size_t size, Args&&... args) {
    const std::size_t before = array.size();
    arrayResize<T, Allocator>(array, NoInit, size);
    for(std::size_t i = before; i < size; ++i)
        Implementation::constructAt(array.data() + i, std::forward<Args>(args)...);
}
template <class T, class Allocator = ArrayAllocator<T>>
void arrayResize(Array<T>& array, ValueInitT, std::size_t size) {
    const std::size_t before = array.size();
    arrayResize<T, Allocator>(array, NoInit, size);
    for(std::size_t i = before; i < size; ++i) new(array.data() + i) T();
}
template <template <class> class Allocator, class T> void arrayResize(Array<T>& array, NoInitT, std::size_t size) {
    arrayResize<T, Allocator<T>>(array, NoInit, size);
}
template <template <class> class Allocator, class T> void arrayResize(Array<T>& array, ValueInitT, std::size_t size) {
    arrayResize<T, Allocator<T>>(array, ValueInit, size);
}
template <class T, class Allocator = ArrayAllocator<T>> void arrayResize(Array<T>& array, std::size_t size) {
    arrayResize<T, Allocator>(array, ValueInit, size);
}
template <class T, class Allocator = ArrayAllocator<T>>
void arrayResize(Array<T>& array, std::size_t size, const std::type_identity_t<T>& value) {
    arrayResize<T, Allocator>(array, DirectInit, size, value);
}

/** Adds one element made from the arguments, and returns it. */
template <class T, class Allocator = ArrayAllocator<T>, class... Args>
T& arrayAppend(Array<T>& array, InPlaceInitT, Args&&... args) {
    return *Implementation::constructAt(
        GrowableAccess<T>::template gap<Allocator>(array, array.size(), 1), std::forward<Args>(args)...);
}
/** Adds one element, which must not be of the array itself. */
template <class T, class Allocator = ArrayAllocator<T>>
T& arrayAppend(Array<T>& array, const std::type_identity_t<T>& value) {
    CORRADE_DEBUG_ASSERT((!GrowableAccess<T>::holds(array, &value, arrayCapacity<T, Allocator>(array))),
        "Containers::arrayAppend(): use the list variant to append values from within the array itself", *array.data());
    return *new(GrowableAccess<T>::template gap<Allocator>(array, array.size(), 1)) T(value);
}
template <template <class> class Allocator, class T>
T& arrayAppend(Array<T>& array, const std::type_identity_t<T>& value) {
    return arrayAppend<T, Allocator<T>>(array, value);
}
template <class T, class Allocator = ArrayAllocator<T>>
T& arrayAppend(Array<T>& array, std::type_identity_t<T>&& value) {
    CORRADE_DEBUG_ASSERT((!GrowableAccess<T>::holds(array, &value, arrayCapacity<T, Allocator>(array))),
        "Containers::arrayAppend(): use the list variant to append values from within the array itself", *array.data());
    return *new(GrowableAccess<T>::template gap<Allocator>(array, array.size(), 1)) T(std::move(value));
}
/** Adds copies of all values, which may be of the array itself; returns the new ones. */
template <class T, class Allocator = ArrayAllocator<T>>
ArrayView<T> arrayAppend(Array<T>& array, std::type_identity_t<ArrayView<const T>> values) {
    const bool own = GrowableAccess<T>::holds(array, values.data(), array.size());
    const std::size_t within = own ? std::size_t(values.data() - array.data()) : 0;
    T* const added = GrowableAccess<T>::template gap<Allocator>(array, array.size(), values.size());
    std::uninitialized_copy_n(own ? array.data() + within : values.data(), values.size(), added);
    return ArrayView<T>(added, values.size());
}
template <class T, class Allocator = ArrayAllocator<T>>
ArrayView<T> arrayAppend(Array<T>& array, std::initializer_list<std::type_identity_t<T>> values) {
    return arrayAppend<T, Allocator>(array, arrayView(values));
}
template <class T, class Allocator = ArrayAllocator<T>>
ArrayView<T> arrayAppend(Array<T>& array, NoInitT, std::size_t count) {
    return ArrayView<T>(GrowableAccess<T>::template gap<Allocator>(array, array.size(), count), count);
}
template <class T, class Allocator = ArrayAllocator<T>>
ArrayView<T> arrayAppend(Array<T>& array, ValueInitT, std::size_t count) {
    const ArrayView<T> added = arrayAppend<T, Allocator>(array, NoInit, count);
    std::uninitialized_value_construct(added.begin(), added.end());
    return added;
}

/** Puts one element in front of the one at `index`, and returns it. */
template <class T, class Allocator = ArrayAllocator<T>, class... Args>
T& arrayInsert(Array<T>& array, std::size_t index, InPlaceInitT, Args&&... args) {
    CORRADE_DEBUG_ASSERT(index <= array.size(),
        "Containers::arrayInsert(): can't insert at index" << index << "into an array of size" << array.size(),
        *array.data());
    return *Implementation::constructAt(
        GrowableAccess<T>::template gap<Allocator>(array, index, 1), std::forward<Args>(args)...);
}
template <class T, class Allocator = ArrayAllocator<T>>
T& arrayInsert(Array<T>& array, std::size_t index, const std::type_identity_t<T>& value) {
    return arrayInsert<T, Allocator>(array, index, InPlaceInit, value);
}
template <class T, class Allocator = ArrayAllocator<T>>
T& arrayInsert(Array<T>& array, std::size_t index, std::type_identity_t<T>&& value) {
    return arrayInsert<T, Allocator>(array, index, InPlaceInit, std::move(value));
}

/** Removes `count` elements from `index` on, and keeps the order of the others. */
template <class T, class Allocator = ArrayAllocator<T>>
void arrayRemove(Array<T>& array, std::size_t index, std::size_t count = 1) {
    CORRADE_DEBUG_ASSERT(index + count <= array.size(),
        "Containers::arrayRemove(): can't remove" << count << "elements at index" << index << "from an array of size"
                                                  << array.size(), );
    if(!count) return;
    if(!arrayIsGrowable<T, Allocator>(array)) {
        T* kept = Allocator::allocate(array.size() - count);
        std::uninitialized_move_n(array.begin(), index, kept);
        std::uninitialized_move(array.begin() + index + count, array.end(), kept + index);
        array = Array<T>(kept, array.size() - count, Allocator::deleter);
        return;
    }
    std::move(array.begin() + index + count, array.end(), array.begin() + index);
    std::destroy(array.end() - count, array.end());
    GrowableAccess<T>::size(array) -= count;
}
template <template <class> class Allocator, class T>
void arrayRemove(Array<T>& array, std::size_t index, std::size_t count = 1) {
    arrayRemove<T, Allocator<T>>(array, index, count);
}

/** Removes `count` elements from the end. */
template <class T, class Allocator = ArrayAllocator<T>> void arrayRemoveSuffix(Array<T>& array, std::size_t count = 1) {
    CORRADE_DEBUG_ASSERT(count <= array.size(),
        "Containers::arrayRemoveSuffix(): can't remove" << count << "elements from an array of size" << array.size(), );
    arrayResize<T, Allocator>(array, NoInit, array.size() - count);
}
template <template <class> class Allocator, class T> void arrayRemoveSuffix(Array<T>& array, std::size_t count = 1) {
    arrayRemoveSuffix<T, Allocator<T>>(array, count);
}

/** Removes all elements: growable storage is kept, any other is replaced by an empty array without storage. */
template <class T, class Allocator = ArrayAllocator<T>> void arrayClear(Array<T>& array) {
    if(arrayIsGrowable<T, Allocator>(array)) arrayResize<T, Allocator>(array, NoInit, 0);
    else array = Array<T>{};
}

/** Turns growable storage into plain storage of exactly the size; leaves other storage alone. */
template <class T, class Allocator = ArrayAllocator<T>> void arrayShrink(Array<T>& array, NoInitT = NoInit) {
    if(!arrayIsGrowable<T, Allocator>(array)) return;
    Array<T> exact(NoInit, array.size());
    std::uninitialized_move_n(array.data(), array.size(), exact.data());
    array = std::move(exact);
}

} // namespace Corrade::Containers
