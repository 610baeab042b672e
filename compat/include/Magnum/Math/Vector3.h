#pragma once

#include "Magnum/Math/Vector2.h"

namespace Magnum::Math {

template <class T> class Vector3: public Vector<3, T> {
public:
    using Vector<3, T>::Vector;
    constexpr Vector3() = default;
    constexpr Vector3(const Vector<3, T>& other): Vector<3, T>(other) {}
    constexpr Vector3(const Vector2<T>& xy, T z): Vector<3, T>(xy.x(), xy.y(), z) {}

    static constexpr Vector3 xAxis(T length = T(1)) { return {length, T(0), T(0)}; }
    static constexpr Vector3 yAxis(T length = T(1)) { return {T(0), length, T(0)}; }
    static constexpr Vector3 zAxis(T length = T(1)) { return {T(0), T(0), length}; }

    constexpr T& x() { return (*this)[0]; }
    constexpr T& y() { return (*this)[1]; }
    constexpr T& z() { return (*this)[2]; }
    constexpr T x() const { return (*this)[0]; }
    constexpr T y() const { return (*this)[1]; }
    constexpr T z() const { return (*this)[2]; }
    constexpr Vector2<T> xy() const { return {x(), y()}; }
    Vector3 normalized() const { return *this / this->length(); }
};

/** The vector at right angles to both, by the right-hand rule. */
template <class T> constexpr Vector3<T> cross(const Vector3<T>& a, const Vector3<T>& b) {
    return {a.y() * b.z() - a.z() * b.y(), a.z() * b.x() - a.x() * b.z(), a.x() * b.y() - a.y() * b.x()};
}

} // namespace Magnum::Math
