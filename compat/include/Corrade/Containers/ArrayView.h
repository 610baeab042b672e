#pragma once

#include <cstddef>
#include <initializer_list>
#include <type_traits>
#include <utility>

#include "Corrade/Containers/Containers.h"
#include "Corrade/Utility/Assert.h"
#include "Corrade/Utility/DebugAssert.h"

namespace Corrade::Containers {

namespace Implementation {

/** Whether a type of this library is a run of elements behind `data()` and `size()`. */
template <class> constexpr bool IsViewable = false;
template <> inline constexpr bool IsViewable<String> = true;
template <class T> constexpr bool IsViewable<BasicStringView<T>> = true;

/** What can stand for a pointer, but not for an index. */
template <class U, class T>
concept PointerTo = std::is_convertible_v<U, T*> && !std::is_convertible_v<U, std::size_t>;

/** Conversions from foreign containers; specialised by compatibility headers. */
template <class, class> struct ArrayViewConverter;

template <class C> using ElementOf = std::remove_pointer_t<decltype(std::declval<C>().data())>;

template <class C, class T>
concept ViewableAs = IsViewable<std::remove_cvref_t<C>> && std::is_convertible_v < ElementOf<C>
*, T* > ;

} // namespace Implementation

/** Elements owned by somebody else. Indices outside abort in debug builds. */
template <class T> class ArrayView {
public:
    using Type = T;

    constexpr ArrayView() noexcept = default;
    template <class U>
    requires std::is_same_v<U, std::nullptr_t>
    constexpr ArrayView(U) noexcept {}
    constexpr ArrayView(T* data, std::size_t size) noexcept: _data(data), _size(size) {}
    template <class U, std::size_t size>
    requires std::is_convertible_v<U*, T*>
    constexpr ArrayView(U (&data)[size]) noexcept: _data(data), _size(size) {
        static_assert(sizeof(T) == sizeof(U), "elements of another size");
    }
    template <class U>
    requires Implementation::ViewableAs<U, T>
    constexpr ArrayView(U&& other) noexcept: _data(other.data()), _size(other.size()) {
        static_assert(sizeof(T) == sizeof(*other.data()), "elements of another size");
    }
    template <class U,
        class = decltype(Implementation::ArrayViewConverter<T, std::decay_t<U&&>>::from(std::declval<U&&>()))>
    constexpr ArrayView(U&& other) noexcept
        : ArrayView(Implementation::ArrayViewConverter<T, std::decay_t<U&&>>::from(std::forward<U>(other))) {}

    /** Whether there is memory at all; a view of no elements may be true. */
    constexpr explicit operator bool() const { return _data; }
    constexpr T* data() const { return _data; }
    constexpr std::size_t size() const { return _size; }
    constexpr bool isEmpty() const { return _size == 0; }
    constexpr T* begin() const { return _data; }
    constexpr T* cbegin() const { return _data; }
    constexpr T* end() const { return _data + _size; }
    constexpr T* cend() const { return _data + _size; }

    constexpr T& front() const {
        CORRADE_CONSTEXPR_DEBUG_ASSERT(_size, "Containers::ArrayView::front(): view is empty");
        return *_data;
    }
    constexpr T& back() const {
        CORRADE_CONSTEXPR_DEBUG_ASSERT(_size, "Containers::ArrayView::back(): view is empty");
        return _data[_size - 1];
    }
    template <class U>
    requires std::is_convertible_v<U, std::size_t>
    constexpr T& operator[](U i) const {
        CORRADE_CONSTEXPR_DEBUG_ASSERT(std::size_t(i) < _size,
            "Containers::ArrayView::operator[](): index" << i << "out of range for" << _size << "elements");
        return _data[i];
    }

    constexpr ArrayView slice(std::size_t begin, std::size_t end) const {
        CORRADE_CONSTEXPR_DEBUG_ASSERT(begin <= end && end <= _size,
            "Containers::ArrayView::slice(): slice ["
                << Utility::Debug::nospace << begin << Utility::Debug::nospace << ":" << Utility::Debug::nospace << end
                << Utility::Debug::nospace << "] out of range for" << _size << "elements");
        return ArrayView(_data + begin, end - begin);
    }
    constexpr ArrayView slice(T* begin, T* end) const {
        return slice(std::size_t(begin - _data), std::size_t(end - _data));
    }
    constexpr ArrayView sliceSize(std::size_t begin, std::size_t size) const { return slice(begin, begin + size); }
    constexpr ArrayView prefix(std::size_t size) const { return slice(0, size); }
    template <Implementation::PointerTo<T> U> constexpr ArrayView prefix(U end) const {
        return static_cast<T*>(end) ? slice(_data, static_cast<T*>(end)) : ArrayView{};
    }
    constexpr ArrayView suffix(T* begin) const { return _data && !begin ? ArrayView{} : slice(begin, _data + _size); }
    constexpr ArrayView exceptPrefix(std::size_t size) const { return slice(size, _size); }
    constexpr ArrayView exceptSuffix(std::size_t size) const { return slice(0, _size - size); }

private:
    T* _data = nullptr;
    std::size_t _size = 0;
};

namespace Implementation {

/** Bytes of any element type; `V` is `void` or `const void`, sizes are in bytes. */
template <class V> class ErasedArrayView {
    template <class T> static constexpr bool Takes = std::is_convertible_v<T*, V*> && !std::is_void_v<T>;

public:
    using Type = V;

    constexpr ErasedArrayView() noexcept = default;
    constexpr ErasedArrayView(V* data, std::size_t size) noexcept: _data(data), _size(size) {}
    template <class T>
    requires Takes<T>
    constexpr ErasedArrayView(T* data, std::size_t size) noexcept: _data(data), _size(size * sizeof(T)) {}
    template <class T, std::size_t size>
    requires Takes<T>
    constexpr ErasedArrayView(T (&data)[size]) noexcept: _data(data), _size(size * sizeof(T)) {}
    template <class C>
    requires(IsViewable<std::remove_cvref_t<C>>&& Takes<ElementOf<C>>) constexpr ErasedArrayView(C&& other) noexcept
        : _data(other.data()), _size(other.size() * sizeof(*other.data())) {}

    constexpr explicit operator bool() const { return _data; }
    constexpr V* data() const { return _data; }
    constexpr std::size_t size() const { return _size; }
    constexpr bool isEmpty() const { return _size == 0; }

private:
    V* _data = nullptr;
    std::size_t _size = 0;
};

} // namespace Implementation

template <> class ArrayView<void>: public Implementation::ErasedArrayView<void> {
public:
    using ErasedArrayView::ErasedArrayView;
    constexpr ArrayView() noexcept = default;
    template <class U>
    requires std::is_same_v<U, std::nullptr_t>
    constexpr ArrayView(U) noexcept {}
};

template <> class ArrayView<const void>: public Implementation::ErasedArrayView<const void> {
public:
    using ErasedArrayView::ErasedArrayView;
    constexpr ArrayView() noexcept = default;
    template <class U>
    requires std::is_same_v<U, std::nullptr_t>
    constexpr ArrayView(U) noexcept {}
    constexpr ArrayView(ArrayView<void> view) noexcept: ErasedArrayView(view.data(), view.size()) {}
};

namespace Implementation {

template <class T> constexpr bool IsViewable<ArrayView<T>> = !std::is_void_v<T>;

} // namespace Implementation

template <class T> constexpr ArrayView<T> arrayView(T* data, std::size_t size) { return ArrayView<T>(data, size); }
template <std::size_t size, class T> constexpr ArrayView<T> arrayView(T (&data)[size]) { return ArrayView<T>(data); }
/** Lives only as long as the full expression that made the list. */
template <class T> ArrayView<const T> arrayView(std::initializer_list<T> list) {
    return ArrayView<const T>(list.begin(), list.size());
}
template <class C>
requires Implementation::IsViewable<std::remove_cvref_t<C>>
constexpr auto arrayView(C&& container) {
    return ArrayView<Implementation::ElementOf<C>>(container.data(), container.size());
}

/** The same memory as elements of another standard-layout type; its size must divide. */
template <class U, class T> ArrayView<U> arrayCast(ArrayView<T> view) {
    static_assert(std::is_standard_layout_v<T> && std::is_standard_layout_v<U>);
    const std::size_t bytes = view.size() * sizeof(T);
    CORRADE_ASSERT(bytes % sizeof(U) == 0,
        "Containers::arrayCast(): can't reinterpret" << view.size() << sizeof(T) << Utility::Debug::nospace
                                                     << "-byte items into a" << sizeof(U) << Utility::Debug::nospace
                                                     << "-byte type",
        {});
    return ArrayView<U>(reinterpret_cast<U*>(view.data()), bytes / sizeof(U));
}

template <std::size_t size, class T> constexpr std::size_t arraySize(T (&)[size]) { return size; }

} // namespace Corrade::Containers
