#pragma once

#include "Magnum/Math/Vector4.h"

namespace Magnum::Math {

/** Red, green and blue, from 0 to 1. */
template <class T> class Color3: public Vector3<T> {
public:
    using Vector3<T>::Vector3;
    constexpr Color3() = default;
    constexpr Color3(const Vector<3, T>& other): Vector3<T>(other) {}

    constexpr T r() const { return (*this)[0]; }
    constexpr T g() const { return (*this)[1]; }
    constexpr T b() const { return (*this)[2]; }
};

/** The same with alpha: 1 where it is not given, but 0 by default. */
template <class T> class Color4: public Vector4<T> {
public:
    constexpr Color4() = default;
    constexpr Color4(T red, T green, T blue, T alpha = T(1)): Vector4<T>(red, green, blue, alpha) {}
    constexpr Color4(const Vector3<T>& rgb, T alpha = T(1)): Vector4<T>(rgb, alpha) {}
    constexpr explicit Color4(T rgb, T alpha = T(1)): Vector4<T>(rgb, rgb, rgb, alpha) {}
    constexpr Color4(const Vector<4, T>& other): Vector4<T>(other) {}

    constexpr T r() const { return (*this)[0]; }
    constexpr T g() const { return (*this)[1]; }
    constexpr T b() const { return (*this)[2]; }
    constexpr T a() const { return (*this)[3]; }
};

} // namespace Magnum::Math
