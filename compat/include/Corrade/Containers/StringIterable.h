#pragma once

#include <initializer_list>

#include "Corrade/Containers/ArrayView.h"
#include "Corrade/Containers/Containers.h"

namespace Corrade::Containers {

namespace Implementation {

/** How an element becomes a view; one static function `accessor` for each element type. */
template <class> struct StringIterableConverter;

} // namespace Implementation

/**
 * Any run of things that are text (StringView, MutableStringView, String, `const char*`, and what compatibility headers
 * add), as an argument of functions. Owns nothing: lives as long as what it was made from.
 */
class StringIterable {
public:
    using Accessor = StringView (*)(const void* element, const void* context, std::ptrdiff_t stride, std::size_t index);

    constexpr StringIterable() noexcept = default;
    template <class T>
    requires std::is_same_v<T, std::nullptr_t>
    constexpr StringIterable(T) noexcept {}
    StringIterable(std::initializer_list<StringView> views) noexcept;
    template <class C, class T = std::remove_cv_t<Implementation::ElementOf<C>>,
        class = decltype(Implementation::StringIterableConverter<T>::accessor)>
    requires Implementation::IsViewable<std::remove_cvref_t<C>> StringIterable(C&& container)
    noexcept
        : StringIterable(container.data(), nullptr, container.size(), sizeof(T),
              Implementation::StringIterableConverter<T>::accessor) {}
    template <class T, std::size_t size, class = decltype(Implementation::StringIterableConverter<T>::accessor)>
    StringIterable(const T (&data)[size]) noexcept: StringIterable(ArrayView<const T>(data)) {}
    explicit StringIterable(
        const void* data, const void* context, std::size_t size, std::ptrdiff_t stride, Accessor accessor) noexcept
        : _data(data), _context(context), _size(size), _stride(stride), _accessor(accessor) {}

    explicit operator bool() const { return _size; }
    std::size_t size() const { return _size; }
    bool isEmpty() const { return _size == 0; }

    inline StringIterableIterator begin() const;
    inline StringIterableIterator end() const;
    StringView front() const;
    StringView back() const;
    StringView operator[](std::size_t i) const;

private:
    friend StringIterableIterator;

    const void* _data = nullptr;
    const void* _context = nullptr;
    std::size_t _size = 0;
    std::ptrdiff_t _stride = 0;
    Accessor _accessor = nullptr;
};

class StringIterableIterator {
public:
    bool operator==(const StringIterableIterator& other) const { return _i == other._i; }
    bool operator!=(const StringIterableIterator& other) const { return _i != other._i; }
    StringIterableIterator& operator++() {
        ++_i;
        return *this;
    }
    StringView operator*() const;

private:
    friend StringIterable;
    StringIterableIterator(const StringIterable& list, std::size_t i): _list(list), _i(i) {}

    // By value: the list may be a temporary whose iterators go on living.
    StringIterable _list;
    std::size_t _i;
};

inline StringIterableIterator StringIterable::begin() const { return {*this, 0}; }
inline StringIterableIterator StringIterable::end() const { return {*this, _size}; }

namespace Implementation {

template <> struct StringIterableConverter<StringView> {
    static StringView accessor(const void* element, const void*, std::ptrdiff_t, std::size_t);
};
template <> struct StringIterableConverter<MutableStringView> {
    static StringView accessor(const void* element, const void*, std::ptrdiff_t, std::size_t);
};
template <> struct StringIterableConverter<String> {
    static StringView accessor(const void* element, const void*, std::ptrdiff_t, std::size_t);
};
template <> struct StringIterableConverter<const char*> {
    static StringView accessor(const void* element, const void*, std::ptrdiff_t, std::size_t);
};

} // namespace Implementation

} // namespace Corrade::Containers
