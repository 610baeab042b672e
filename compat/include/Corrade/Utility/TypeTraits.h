#pragma once

#include <type_traits>
#include <utility>

#include "Corrade/Containers/Containers.h"

namespace Corrade::Utility {

namespace Implementation {

template <class T>
concept Iterable = requires(T&& value) {
    value.begin();
    value.end();
};

template <class T>
concept StringLike = std::is_same_v<std::decay_t<T>, Containers::String> ||
    std::is_same_v<std::decay_t<T>, Containers::StringView> ||
    std::is_same_v<std::decay_t<T>, Containers::MutableStringView> || requires(T&& value) {
    value.c_str();
} || requires(T&& value) {
    value.substr();
};

} // namespace Implementation

/** Whether the type has `begin()` and `end()`. */
template <class T> using IsIterable = std::bool_constant<Implementation::Iterable<T>>;

/** Whether the type is text rather than a list of characters. */
template <class T> using IsStringLike = std::bool_constant<Implementation::StringLike<T>>;

} // namespace Corrade::Utility
