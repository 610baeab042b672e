#pragma once

#include <cstring>
#include <type_traits>
#include <utility>

#include "Corrade/Containers/ArrayView.h"
#include "Corrade/Containers/EnumSet.h"
#include "Corrade/Utility/DebugAssert.h"

namespace Corrade::Containers {

namespace Implementation {

/** Conversions from and to foreign string types; headers such as StringStl.h specialise it. */
template <class, class> struct StringViewConverter;

template <class> constexpr bool IsStringView = false;
template <class T> constexpr bool IsStringView<BasicStringView<T>> = true;

// Null where nothing is found. What is searched may be empty and null.
const char* stringFind(const char* data, std::size_t size, const char* what, std::size_t whatSize);
const char* stringFindLast(const char* data, std::size_t size, const char* what, std::size_t whatSize);

constexpr std::size_t StringFlagBits = std::size_t{3} << (sizeof(std::size_t) * 8 - 2);

} // namespace Implementation

enum class StringViewFlag : std::size_t {
    /** The text lives as long as the program: a literal. */
    Global = std::size_t{1} << (sizeof(std::size_t) * 8 - 1),
    /** A zero byte follows the text. */
    NullTerminated = std::size_t{1} << (sizeof(std::size_t) * 8 - 2)
};

CORRADE_ENUMSET_OPERATORS(StringViewFlags)

/**
 * Text owned by somebody else: a pointer, a size in bytes, and two flags. `T` is `const char` (StringView) or `char`
 * (MutableStringView).
 *
 * A null view is empty and Global. Slices keep Global, and NullTerminated where they reach to the end. Indices outside
 * abort in debug builds.
 */
template <class T> class BasicStringView {
public:
    constexpr BasicStringView() noexcept = default;
    template <class U>
    requires std::is_same_v<U, std::nullptr_t>
    constexpr BasicStringView(U) noexcept {}

    /** @param flags  NullTerminated is checked in debug builds */
    constexpr BasicStringView(T* data, std::size_t size, StringViewFlags flags = {}) noexcept
        : _data(data),
          _size((CORRADE_CONSTEXPR_DEBUG_ASSERT(!(flags & StringViewFlag::NullTerminated) || (data && !data[size]),
                     "Containers::StringView: Containers::StringViewFlag::NullTerminated expects non-null "
                     "null-terminated data"),
              size | std::size_t(flags))) {}

    /** Text up to the first zero byte; null makes an empty view. The view is NullTerminated. */
    template <class U>
    requires(std::is_pointer_v<U>&& std::is_convertible_v<const U&, T*>)
        BasicStringView(U data, StringViewFlags extraFlags = {})
    noexcept
        : _data(data),
          _size((data ? std::strlen(data) : 0) |
              std::size_t(extraFlags | (data ? StringViewFlag::NullTerminated : StringViewFlag::Global))) {}

    BasicStringView(String& string) noexcept;
    template <class U = T>
    requires std::is_const_v<U> BasicStringView(const String& string)
    noexcept;

    template <class U>
    requires(std::is_same_v<const U, T>) constexpr BasicStringView(BasicStringView<U> mutableView) noexcept
        : _data(mutableView._data), _size(mutableView._size) {}

    /** Any other run of characters; a temporary String counts as one. No flags but the given ones. */
    template <class U>
    requires(Implementation::ViewableAs<U, T> &&
        !Implementation::IsStringView<std::remove_cvref_t<U>>) constexpr BasicStringView(U&& data,
        StringViewFlags flags = {}) noexcept
        : BasicStringView(ArrayView<T>(data).data(), ArrayView<T>(data).size(), flags) {}

    template <class U,
        class = decltype(Implementation::StringViewConverter<T, std::decay_t<U&&>>::from(std::declval<U&&>()))>
    constexpr BasicStringView(U&& other) noexcept
        : BasicStringView(Implementation::StringViewConverter<T, std::decay_t<U&&>>::from(std::forward<U>(other))) {}
    template <class U, class = decltype(Implementation::StringViewConverter<T, U>::to(std::declval<BasicStringView>()))>
    constexpr operator U() const {
        return Implementation::StringViewConverter<T, U>::to(*this);
    }

    /** Whether there is any text. */
    constexpr explicit operator bool() const { return _data && size(); }
    constexpr StringViewFlags flags() const { return StringViewFlags(_size & Implementation::StringFlagBits); }
    constexpr T* data() const { return _data; }
    constexpr std::size_t size() const { return _size & ~Implementation::StringFlagBits; }
    constexpr bool isEmpty() const { return size() == 0; }

    constexpr T* begin() const { return _data; }
    constexpr T* end() const { return _data + size(); }
    constexpr T& front() const {
        CORRADE_CONSTEXPR_DEBUG_ASSERT(size(), "Containers::StringView::front(): view is empty");
        return *_data;
    }
    constexpr T& back() const {
        CORRADE_CONSTEXPR_DEBUG_ASSERT(size(), "Containers::StringView::back(): view is empty");
        return _data[size() - 1];
    }
    constexpr T& operator[](std::size_t i) const {
        CORRADE_CONSTEXPR_DEBUG_ASSERT(i < size() + (flags() >= StringViewFlag::NullTerminated ? 1 : 0),
            "Containers::StringView::operator[](): index"
                << i << "out of range for" << size()
                << (flags() >= StringViewFlag::NullTerminated ? "null-terminated bytes" : "bytes"));
        return _data[i];
    }

    constexpr BasicStringView slice(std::size_t begin, std::size_t end) const {
        CORRADE_CONSTEXPR_DEBUG_ASSERT(begin <= end && end <= size(),
            "Containers::StringView::slice(): slice ["
                << Utility::Debug::nospace << begin << Utility::Debug::nospace << ":" << Utility::Debug::nospace << end
                << Utility::Debug::nospace << "] out of range for" << size() << "elements");
        return part(_data + begin, _data + end);
    }
    constexpr BasicStringView slice(T* begin, T* end) const {
        CORRADE_CONSTEXPR_DEBUG_ASSERT(_data <= begin && begin <= end && end <= _data + size(),
            "Containers::StringView::slice(): slice ["
                << Utility::Debug::nospace << begin - _data << Utility::Debug::nospace << ":" << Utility::Debug::nospace
                << end - _data << Utility::Debug::nospace << "] out of range for" << size() << "elements");
        return part(begin, end);
    }
    constexpr BasicStringView sliceSize(std::size_t begin, std::size_t count) const {
        return slice(begin, begin + count);
    }
    template <Implementation::PointerTo<T> U> constexpr BasicStringView sliceSize(U begin, std::size_t count) const {
        return slice(begin, begin + count);
    }
    constexpr BasicStringView prefix(std::size_t count) const { return slice(0, count); }
    /** Text before `end`; a null view where `end` is null. */
    template <Implementation::PointerTo<T> U> constexpr BasicStringView prefix(U end) const {
        return static_cast<T*>(end) ? slice(_data, end) : BasicStringView{};
    }
    /** Text from `begin` on; a null view where `begin` is null. */
    constexpr BasicStringView suffix(T* begin) const {
        return _data && !begin ? BasicStringView{} : slice(begin, _data + size());
    }
    constexpr BasicStringView exceptPrefix(std::size_t count) const { return slice(count, size()); }
    constexpr BasicStringView exceptSuffix(std::size_t count) const { return slice(0, size() - count); }
    /** Text without the given beginning, which it must have. */
    BasicStringView exceptPrefix(StringView prefix) const;
    BasicStringView exceptSuffix(StringView suffix) const;
    // A character would silently be taken for a size.
    template <class U>
    requires std::is_same_v < std::decay_t<U>,
    char > BasicStringView exceptPrefix(U&& prefix) const = delete;
    template <class U>
    requires std::is_same_v < std::decay_t<U>,
    char > BasicStringView exceptSuffix(U&& suffix) const = delete;

    /** Parts between delimiters, empty ones too. Of an empty view: none. */
    Array<BasicStringView> split(char delimiter) const;
    Array<BasicStringView> split(StringView delimiter) const;
    Array<BasicStringView> splitWithoutEmptyParts(char delimiter) const;
    Array<BasicStringView> splitOnAnyWithoutEmptyParts(StringView delimiters) const;
    Array<BasicStringView> splitOnWhitespaceWithoutEmptyParts() const;
    /** What is before the first separator, the separator, and what follows; all in the first part if there is none. */
    Array3<BasicStringView> partition(char separator) const;
    Array3<BasicStringView> partition(StringView separator) const;
    /** The same at the last separator; all in the last part if there is none. */
    Array3<BasicStringView> partitionLast(char separator) const;
    Array3<BasicStringView> partitionLast(StringView separator) const;
    /** The strings, with this text between them. */
    String join(const StringIterable& strings) const;
    String joinWithoutEmptyParts(const StringIterable& strings) const;

    bool hasPrefix(StringView prefix) const;
    bool hasPrefix(char prefix) const;
    bool hasSuffix(StringView suffix) const;
    bool hasSuffix(char suffix) const;

    /** Without leading and trailing characters of the set; without one, white space. */
    BasicStringView trimmed(StringView characters) const;
    BasicStringView trimmed() const;
    BasicStringView trimmedPrefix(StringView characters) const;
    BasicStringView trimmedPrefix() const;
    BasicStringView trimmedSuffix(StringView characters) const;
    BasicStringView trimmedSuffix() const;

    /** A view of the first occurrence; where there is none, an empty view at `fail`, or a null one. */
    BasicStringView find(StringView text) const { return findOr(text, nullptr); }
    BasicStringView find(char character) const { return findOr(character, nullptr); }
    BasicStringView findOr(StringView text, T* fail) const;
    BasicStringView findOr(char character, T* fail) const;
    BasicStringView findLast(StringView text) const { return findLastOr(text, nullptr); }
    BasicStringView findLast(char character) const { return findLastOr(character, nullptr); }
    BasicStringView findLastOr(StringView text, T* fail) const;
    BasicStringView findLastOr(char character, T* fail) const;
    BasicStringView findAny(StringView characters) const { return findAnyOr(characters, nullptr); }
    BasicStringView findAnyOr(StringView characters, T* fail) const;
    BasicStringView findLastAny(StringView characters) const { return findLastAnyOr(characters, nullptr); }
    BasicStringView findLastAnyOr(StringView characters, T* fail) const;
    bool contains(StringView text) const;
    bool contains(char character) const;
    bool containsAny(StringView characters) const;
    std::size_t count(char character) const;

private:
    template <class> friend class BasicStringView;

    // Not checked; keeps the flags that still hold.
    constexpr BasicStringView part(T* begin, T* end) const {
        BasicStringView out;
        out._data = begin;
        const std::size_t lost = end == _data + size() ? 0 : std::size_t(StringViewFlag::NullTerminated);
        out._size = std::size_t(end - begin) | (_size & Implementation::StringFlagBits & ~lost);
        return out;
    }
    BasicStringView found(const char* at, std::size_t count, T* fail) const {
        if(at) return slice(const_cast<T*>(at), const_cast<T*>(at) + count);
        BasicStringView out(fail, 0);
        return out;
    }
    Array3<BasicStringView> cut(const char* at, std::size_t count, bool last) const;

    T* _data = nullptr;
    std::size_t _size = std::size_t(StringViewFlag::Global);
};

/** Order of bytes; a prefix comes before the longer text. */
bool operator==(StringView a, StringView b);
bool operator!=(StringView a, StringView b);
bool operator<(StringView a, StringView b);
bool operator<=(StringView a, StringView b);
bool operator>=(StringView a, StringView b);
bool operator>(StringView a, StringView b);
String operator+(StringView a, StringView b);

namespace Literals {
inline namespace StringLiterals {

/** A view of a literal: Global and NullTerminated. */
constexpr StringView operator""_s(const char* data, std::size_t size) {
    return StringView{data, size, StringViewFlag::Global | StringViewFlag::NullTerminated};
}

} // namespace StringLiterals
} // namespace Literals

} // namespace Corrade::Containers
