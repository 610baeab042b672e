#pragma once

#include <memory>
#include <new>

#include "Corrade/Containers/ArrayView.h"
#include "Corrade/Tags.h"

namespace Corrade::Containers {

namespace Implementation {

/** Brace initialisation where there are arguments, so that plain structures work; else the value-initialised object. */
template <class T, class... Args> T* constructAt(T* where, Args&&... args) {
    if constexpr(sizeof...(Args) == 0) return new(where) T();
    else return new(where) T{std::forward<Args>(args)...};
}

} // namespace Implementation

/**
 * Elements on the heap, owned: movable, not copyable. Its size never changes by itself; see GrowableArray.h.
 *
 * @tparam D  what frees the memory: called with the pointer and the size. A null function pointer, the default, stands
 *            for `delete[]`.
 *
 * Move assignment swaps. Indices outside abort in debug builds.
 */
template <class T, class D> class Array {
public:
    using Type = T;
    using Deleter = D;

    Array() noexcept = default;
    template <class U>
    requires std::is_same_v<U, std::nullptr_t> Array(U)
    noexcept {}
    explicit Array(ValueInitT, std::size_t size): _data(size ? new T[size]() : nullptr), _size(size) {}
    /** Trivial types come from `new[]` and need no deleter; others are bytes until the caller has constructed them. */
    explicit Array(NoInitT, std::size_t size): _size(size) {
        if constexpr(std::is_trivially_constructible_v<T>) {
            _data = size ? new T[size] : nullptr;
        } else {
            _data = size ? reinterpret_cast<T*>(new char[size * sizeof(T)]) : nullptr;
            _deleter = [](T* data, std::size_t count) {
                std::destroy_n(data, count);
                delete[] reinterpret_cast<char*>(data);
            };
        }
    }
    template <class... Args> explicit Array(DirectInitT, std::size_t size, Args&&... args): Array(NoInit, size) {
        for(T& element: *this) Implementation::constructAt(&element, std::forward<Args>(args)...);
    }
    Array(InPlaceInitT, ArrayView<const T> list): Array(NoInit, list.size()) {
        for(std::size_t i = 0; i != _size; ++i) Implementation::constructAt(_data + i, list[i]);
    }
    Array(InPlaceInitT, std::initializer_list<T> list): Array(InPlaceInit, arrayView(list)) {}
    /** Takes over memory that `deleter` frees. */
    explicit Array(T* data, std::size_t size, D deleter = {}) noexcept: _data(data), _size(size), _deleter(deleter) {}

    Array(const Array&) = delete;
    Array(Array&& other) noexcept
        : _data(std::exchange(other._data, nullptr)),
          _size(std::exchange(other._size, 0)),
          _deleter(std::exchange(other._deleter, D{})) {}
    Array& operator=(const Array&) = delete;
    Array& operator=(Array&& other) noexcept {
        std::swap(_data, other._data);
        std::swap(_size, other._size);
        std::swap(_deleter, other._deleter);
        return *this;
    }
    ~Array() {
        if constexpr(std::is_pointer_v<D>) {
            if(!_deleter) {
                delete[] _data;
                return;
            }
        }
        _deleter(_data, _size);
    }

    explicit operator bool() const { return _data; }
    T* data() { return _data; }
    const T* data() const { return _data; }
    D deleter() const { return _deleter; }
    std::size_t size() const { return _size; }
    bool isEmpty() const { return _size == 0; }

    T* begin() { return _data; }
    const T* begin() const { return _data; }
    const T* cbegin() const { return _data; }
    T* end() { return _data + _size; }
    const T* end() const { return _data + _size; }
    const T* cend() const { return _data + _size; }

    T& front() { return const_cast<T&>(std::as_const(*this).front()); }
    const T& front() const {
        CORRADE_DEBUG_ASSERT(_size, "Containers::Array::front(): array is empty", *_data);
        return *_data;
    }
    T& back() { return const_cast<T&>(std::as_const(*this).back()); }
    const T& back() const {
        CORRADE_DEBUG_ASSERT(_size, "Containers::Array::back(): array is empty", *_data);
        return _data[_size - 1];
    }
    template <class U>
    requires std::is_convertible_v<U, std::size_t> T& operator[](U i) {
        return const_cast<T&>(std::as_const(*this)[i]);
    }
    template <class U>
    requires std::is_convertible_v<U, std::size_t>
    const T& operator[](U i) const {
        CORRADE_DEBUG_ASSERT(std::size_t(i) < _size,
            "Containers::Array::operator[](): index" << i << "out of range for" << _size << "elements", *_data);
        return _data[i];
    }

    ArrayView<T> slice(std::size_t begin, std::size_t end) { return view().slice(begin, end); }
    ArrayView<const T> slice(std::size_t begin, std::size_t end) const { return view().slice(begin, end); }
    ArrayView<T> sliceSize(std::size_t begin, std::size_t size) { return view().sliceSize(begin, size); }
    ArrayView<const T> sliceSize(std::size_t begin, std::size_t size) const { return view().sliceSize(begin, size); }
    ArrayView<T> prefix(std::size_t size) { return view().prefix(size); }
    ArrayView<const T> prefix(std::size_t size) const { return view().prefix(size); }
    ArrayView<T> exceptPrefix(std::size_t size) { return view().exceptPrefix(size); }
    ArrayView<const T> exceptPrefix(std::size_t size) const { return view().exceptPrefix(size); }
    ArrayView<T> exceptSuffix(std::size_t size) { return view().exceptSuffix(size); }
    ArrayView<const T> exceptSuffix(std::size_t size) const { return view().exceptSuffix(size); }

    /** Hands the memory to the caller, who frees it as deleter() would have; the array is empty then. */
    T* release() {
        _size = 0;
        _deleter = D{};
        return std::exchange(_data, nullptr);
    }

private:
    template <class U> friend struct GrowableAccess;

    ArrayView<T> view() { return ArrayView<T>(_data, _size); }
    ArrayView<const T> view() const { return ArrayView<const T>(_data, _size); }

    T* _data = nullptr;
    std::size_t _size = 0;
    D _deleter{};
};

namespace Implementation {

template <class T, class D> constexpr bool IsViewable<Array<T, D>> = true;

} // namespace Implementation

template <class T> Array<T> array(ArrayView<const T> list) { return Array<T>(InPlaceInit, list); }
template <class T> Array<T> array(std::initializer_list<T> list) { return Array<T>(InPlaceInit, list); }

} // namespace Corrade::Containers
