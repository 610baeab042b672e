#include "Corrade/Containers/StringView.h"

#include <algorithm>
#include <string_view>

#include "Corrade/Containers/GrowableArray.h"
#include "Corrade/Containers/StaticArray.h"
#include "Corrade/Containers/String.h"
#include "Corrade/Containers/StringIterable.h"

namespace Corrade::Containers {

namespace {

constexpr StringView Whitespace{" \t\f\v\r\n", 6};

std::string_view std(StringView view) { return {view.data(), view.size()}; }

// The standard's "not found" as a null pointer.
const char* at(const char* data, std::size_t position) {
    return position == std::string_view::npos ? nullptr : data + position;
}

template <class T, class Find>
Array<BasicStringView<T>> splitWith(BasicStringView<T> rest, bool emptyParts, Find&& nextDelimiter) {
    Array<BasicStringView<T>> out;
    if(rest.isEmpty()) return out;
    for(;;) {
        const BasicStringView<T> delimiter = nextDelimiter(rest);
        const BasicStringView<T> part = rest.prefix(delimiter.begin());
        if(emptyParts || !part.isEmpty()) arrayAppend(out, part);
        if(delimiter.isEmpty()) return out;
        rest = rest.suffix(delimiter.end());
    }
}

String joinWith(StringView delimiter, const StringIterable& strings, bool emptyParts) {
    std::size_t size = 0, count = 0;
    for(StringView string: strings) {
        if(emptyParts || !string.isEmpty()) {
            size += string.size();
            ++count;
        }
    }
    String out(NoInit, size + (count ? (count - 1) * delimiter.size() : 0));
    char* end = out.data();
    for(StringView string: strings) {
        if(!emptyParts && string.isEmpty()) continue;
        end = std::copy(string.begin(), string.end(), end);
        if(--count) end = std::copy(delimiter.begin(), delimiter.end(), end);
    }
    return out;
}

} // namespace

namespace Implementation {

const char* stringFind(const char* data, std::size_t size, const char* what, std::size_t whatSize) {
    return at(data, std::string_view(data, size).find(std::string_view(what, whatSize)));
}

const char* stringFindLast(const char* data, std::size_t size, const char* what, std::size_t whatSize) {
    return at(data, std::string_view(data, size).rfind(std::string_view(what, whatSize)));
}

} // namespace Implementation

template <class T> BasicStringView<T> BasicStringView<T>::exceptPrefix(StringView prefix) const {
    CORRADE_ASSERT(
        hasPrefix(prefix), "Containers::StringView::exceptPrefix(): string doesn't begin with" << prefix, {});
    return exceptPrefix(prefix.size());
}

template <class T> BasicStringView<T> BasicStringView<T>::exceptSuffix(StringView suffix) const {
    CORRADE_ASSERT(hasSuffix(suffix), "Containers::StringView::exceptSuffix(): string doesn't end with" << suffix, {});
    return exceptSuffix(suffix.size());
}

template <class T> Array<BasicStringView<T>> BasicStringView<T>::split(char delimiter) const {
    return splitWith(*this, true, [&](BasicStringView rest) { return rest.findOr(delimiter, rest.end()); });
}

template <class T> Array<BasicStringView<T>> BasicStringView<T>::split(StringView delimiter) const {
    CORRADE_ASSERT(!delimiter.isEmpty(), "Containers::StringView::split(): delimiter is empty", {});
    return splitWith(*this, true, [&](BasicStringView rest) { return rest.findOr(delimiter, rest.end()); });
}

template <class T> Array<BasicStringView<T>> BasicStringView<T>::splitWithoutEmptyParts(char delimiter) const {
    return splitWith(*this, false, [&](BasicStringView rest) { return rest.findOr(delimiter, rest.end()); });
}

template <class T>
Array<BasicStringView<T>> BasicStringView<T>::splitOnAnyWithoutEmptyParts(StringView delimiters) const {
    return splitWith(*this, false, [&](BasicStringView rest) { return rest.findAnyOr(delimiters, rest.end()); });
}

template <class T> Array<BasicStringView<T>> BasicStringView<T>::splitOnWhitespaceWithoutEmptyParts() const {
    return splitOnAnyWithoutEmptyParts(Whitespace);
}

// Before, at and behind a separator; where there is none, everything is before it, or behind it if `last`.
template <class T>
Array3<BasicStringView<T>> BasicStringView<T>::cut(const char* at, std::size_t count, bool last) const {
    const std::size_t begin = at ? std::size_t(at - _data) : last ? 0 : size();
    const std::size_t end = begin + (at ? count : 0);
    if(!at && last) return {exceptPrefix(size()), exceptPrefix(size()), *this};
    return {prefix(begin), slice(begin, end), exceptPrefix(end)};
}

template <class T> Array3<BasicStringView<T>> BasicStringView<T>::partition(char separator) const {
    return cut(find(separator).data(), 1, false);
}

template <class T> Array3<BasicStringView<T>> BasicStringView<T>::partition(StringView separator) const {
    return cut(find(separator).data(), separator.size(), false);
}

template <class T> Array3<BasicStringView<T>> BasicStringView<T>::partitionLast(char separator) const {
    return cut(findLast(separator).data(), 1, true);
}

template <class T> Array3<BasicStringView<T>> BasicStringView<T>::partitionLast(StringView separator) const {
    return cut(findLast(separator).data(), separator.size(), true);
}

template <class T> String BasicStringView<T>::join(const StringIterable& strings) const {
    return joinWith(*this, strings, true);
}

template <class T> String BasicStringView<T>::joinWithoutEmptyParts(const StringIterable& strings) const {
    return joinWith(*this, strings, false);
}

template <class T> bool BasicStringView<T>::hasPrefix(StringView prefix) const {
    return std(*this).starts_with(std(prefix));
}

template <class T> bool BasicStringView<T>::hasPrefix(char prefix) const { return std(*this).starts_with(prefix); }

template <class T> bool BasicStringView<T>::hasSuffix(StringView suffix) const {
    return std(*this).ends_with(std(suffix));
}

template <class T> bool BasicStringView<T>::hasSuffix(char suffix) const { return std(*this).ends_with(suffix); }

template <class T> BasicStringView<T> BasicStringView<T>::trimmed(StringView characters) const {
    return trimmedPrefix(characters).trimmedSuffix(characters);
}

template <class T> BasicStringView<T> BasicStringView<T>::trimmed() const { return trimmed(Whitespace); }

template <class T> BasicStringView<T> BasicStringView<T>::trimmedPrefix(StringView characters) const {
    return exceptPrefix(std::min(std(*this).find_first_not_of(std(characters)), size()));
}

template <class T> BasicStringView<T> BasicStringView<T>::trimmedPrefix() const { return trimmedPrefix(Whitespace); }

template <class T> BasicStringView<T> BasicStringView<T>::trimmedSuffix(StringView characters) const {
    // "Not found" is the largest number, and one more is zero.
    return prefix(std(*this).find_last_not_of(std(characters)) + 1);
}

template <class T> BasicStringView<T> BasicStringView<T>::trimmedSuffix() const { return trimmedSuffix(Whitespace); }

template <class T> BasicStringView<T> BasicStringView<T>::findOr(StringView text, T* fail) const {
    return found(Implementation::stringFind(_data, size(), text.data(), text.size()), text.size(), fail);
}

template <class T> BasicStringView<T> BasicStringView<T>::findOr(char character, T* fail) const {
    return found(Implementation::stringFind(_data, size(), &character, 1), 1, fail);
}

template <class T> BasicStringView<T> BasicStringView<T>::findLastOr(StringView text, T* fail) const {
    return found(Implementation::stringFindLast(_data, size(), text.data(), text.size()), text.size(), fail);
}

template <class T> BasicStringView<T> BasicStringView<T>::findLastOr(char character, T* fail) const {
    return found(Implementation::stringFindLast(_data, size(), &character, 1), 1, fail);
}

template <class T> BasicStringView<T> BasicStringView<T>::findAnyOr(StringView characters, T* fail) const {
    return found(at(_data, std(*this).find_first_of(std(characters))), 1, fail);
}

template <class T> BasicStringView<T> BasicStringView<T>::findLastAnyOr(StringView characters, T* fail) const {
    return found(at(_data, std(*this).find_last_of(std(characters))), 1, fail);
}

template <class T> bool BasicStringView<T>::contains(StringView text) const {
    return Implementation::stringFind(_data, size(), text.data(), text.size());
}

template <class T> bool BasicStringView<T>::contains(char character) const {
    return Implementation::stringFind(_data, size(), &character, 1);
}

template <class T> bool BasicStringView<T>::containsAny(StringView characters) const {
    return std(*this).find_first_of(std(characters)) != std::string_view::npos;
}

template <class T> std::size_t BasicStringView<T>::count(char character) const {
    return std::size_t(std::count(begin(), end(), character));
}

template class BasicStringView<char>;
template class BasicStringView<const char>;

bool operator==(StringView a, StringView b) { return std(a) == std(b); }

bool operator!=(StringView a, StringView b) { return std(a) != std(b); }

bool operator<(StringView a, StringView b) { return std(a) < std(b); }

bool operator<=(StringView a, StringView b) { return std(a) <= std(b); }

bool operator>=(StringView a, StringView b) { return std(a) >= std(b); }

bool operator>(StringView a, StringView b) { return std(a) > std(b); }

String operator+(StringView a, StringView b) { return joinWith({}, {a, b}, true); }

} // namespace Corrade::Containers
