#pragma once

/** @file Makes `std::string_view` convert to and from String and StringView. */

#include <string_view>

#include "Corrade/Containers/String.h"
#include "Corrade/Containers/StringIterable.h"

namespace Corrade::Containers::Implementation {

template <> struct StringConverter<std::string_view> {
    static String from(std::string_view other) { return String(other.data(), other.size()); }
    static std::string_view to(const String& other) { return std::string_view(other.data(), other.size()); }
};
template <> struct StringViewConverter<const char, std::string_view> {
    static StringView from(std::string_view other) { return StringView(other.data(), other.size()); }
    static std::string_view to(StringView other) { return std::string_view(other.data(), other.size()); }
};
template <> struct StringIterableConverter<std::string_view> {
    static StringView accessor(const void* element, const void*, std::ptrdiff_t, std::size_t) {
        return *static_cast<const std::string_view*>(element);
    }
};

} // namespace Corrade::Containers::Implementation
