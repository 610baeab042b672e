#pragma once

#include <algorithm>
#include <cmath>
#include <type_traits>

#include "Magnum/Magnum.h"

namespace Magnum::Math {

/** How numbers are compared: integers exactly; floating-point ones relatively, and absolutely below 1. */
template <class T> struct TypeTraits {
    static constexpr T epsilon() {
        if constexpr(std::is_same_v<T, float>) return 1.0e-5f;
        else if constexpr(std::is_floating_point_v<T>) return T(1.0e-14);
        else return 1;
    }
    static bool equals(T a, T b) {
        if constexpr(std::is_floating_point_v<T>)
            // Infinities are equal to themselves only.
            return a == b || std::abs(a - b) < epsilon() * std::max(T(1), std::abs(a) + std::abs(b));
        else return a == b;
    }
};

} // namespace Magnum::Math
