#pragma once

#include "Corrade/Containers/ArrayView.h"

namespace Corrade::Containers {

/** A fixed number of elements, held in place. */
template <std::size_t size_, class T> class StaticArray {
public:
    enum : std::size_t { Size = size_ };
    using Type = T;

    constexpr StaticArray() = default;
    /** Exactly `size_` elements. */
    template <class... Args>
    requires(sizeof...(Args) == size_ && (std::is_convertible_v<Args, T> && ...)) constexpr StaticArray(
        Args&&... values)
        : _data{T(std::forward<Args>(values))...} {}

    constexpr T* data() { return _data; }
    constexpr const T* data() const { return _data; }
    constexpr std::size_t size() const { return size_; }
    constexpr bool isEmpty() const { return size_ == 0; }
    constexpr T* begin() { return _data; }
    constexpr const T* begin() const { return _data; }
    constexpr T* end() { return _data + size_; }
    constexpr const T* end() const { return _data + size_; }
    constexpr T& front() { return _data[0]; }
    constexpr const T& front() const { return _data[0]; }
    constexpr T& back() { return _data[size_ - 1]; }
    constexpr const T& back() const { return _data[size_ - 1]; }
    constexpr T& operator[](std::size_t i) { return const_cast<T&>(std::as_const(*this)[i]); }
    constexpr const T& operator[](std::size_t i) const {
        CORRADE_CONSTEXPR_DEBUG_ASSERT(i < size_,
            "Containers::StaticArray::operator[](): index" << i << "out of range for" << size_ << "elements");
        return _data[i];
    }

private:
    T _data[size_]{};
};

namespace Implementation {

template <std::size_t size, class T> constexpr bool IsViewable<StaticArray<size, T>> = true;

} // namespace Implementation

} // namespace Corrade::Containers
