#pragma once

/** @file Forward declarations of everything in `Corrade::Containers`. */

#include <cstddef>
#include <type_traits>

#include "Corrade/configure.h"

namespace Corrade::Containers {

template <class T, class D = void (*)(T*, std::size_t)> class Array;
template <class> class ArrayView;
template <std::size_t, class> class StaticArray;
template <class T> using Array2 = StaticArray<2, T>;
template <class T> using Array3 = StaticArray<3, T>;
template <class T> using Array4 = StaticArray<4, T>;

template <class T, std::underlying_type_t<T> fullValue = std::underlying_type_t<T>(~0)> class EnumSet;

template <class> class Optional;
template <class, class> class Pair;
template <class> class Pointer;
template <class> class Reference;

enum class StringViewFlag : std::size_t;
using StringViewFlags = EnumSet<StringViewFlag, std::size_t{3} << (sizeof(std::size_t) * 8 - 2)>;
class String;
template <class> class BasicStringView;
using StringView = BasicStringView<const char>;
using MutableStringView = BasicStringView<char>;
class StringIterable;
class StringIterableIterator;

} // namespace Corrade::Containers
