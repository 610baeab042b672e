#pragma once

/** @file Makes `std::string` convert to and from String and StringView. */

#include <string>

#include "Corrade/Containers/String.h"
#include "Corrade/Containers/StringIterable.h"

namespace Corrade::Containers::Implementation {

template <> struct StringConverter<std::string> {
    static String from(const std::string& other) { return String(other.data(), other.size()); }
    static std::string to(const String& other) { return std::string(other.data(), other.size()); }
};
template <> struct StringViewConverter<const char, std::string> {
    static StringView from(const std::string& other) {
        return StringView(other.data(), other.size(), StringViewFlag::NullTerminated);
    }
    static std::string to(StringView other) { return std::string(other.data(), other.size()); }
};
template <> struct StringIterableConverter<std::string> {
    static StringView accessor(const void* element, const void*, std::ptrdiff_t, std::size_t) {
        return *static_cast<const std::string*>(element);
    }
};

} // namespace Corrade::Containers::Implementation
