#pragma once

#include "Magnum/Math/Vector.h"

namespace Magnum::Math {

template <class T> class Vector2: public Vector<2, T> {
public:
    using Vector<2, T>::Vector;
    constexpr Vector2() = default;
    constexpr Vector2(const Vector<2, T>& other): Vector<2, T>(other) {}

    static constexpr Vector2 xAxis(T length = T(1)) { return {length, T(0)}; }
    static constexpr Vector2 yAxis(T length = T(1)) { return {T(0), length}; }

    constexpr T& x() { return (*this)[0]; }
    constexpr T& y() { return (*this)[1]; }
    constexpr T x() const { return (*this)[0]; }
    constexpr T y() const { return (*this)[1]; }
    Vector2 normalized() const { return *this / this->length(); }
};

} // namespace Magnum::Math
