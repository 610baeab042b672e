#pragma once

#include "Magnum/Math/Vector3.h"

namespace Magnum::Math {

template <class T> class Vector4: public Vector<4, T> {
public:
    using Vector<4, T>::Vector;
    constexpr Vector4() = default;
    constexpr Vector4(const Vector<4, T>& other): Vector<4, T>(other) {}
    constexpr Vector4(const Vector3<T>& xyz, T w): Vector<4, T>(xyz.x(), xyz.y(), xyz.z(), w) {}

    constexpr T& x() { return (*this)[0]; }
    constexpr T& y() { return (*this)[1]; }
    constexpr T& z() { return (*this)[2]; }
    constexpr T& w() { return (*this)[3]; }
    constexpr T x() const { return (*this)[0]; }
    constexpr T y() const { return (*this)[1]; }
    constexpr T z() const { return (*this)[2]; }
    constexpr T w() const { return (*this)[3]; }
    constexpr Vector3<T> xyz() const { return {x(), y(), z()}; }
};

} // namespace Magnum::Math
