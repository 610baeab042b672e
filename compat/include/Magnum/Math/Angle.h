#pragma once

#include "Magnum/Magnum.h"

namespace Magnum::Math {

/** An angle in radians. Numbers become angles, and angles numbers, only explicitly. */
template <class T> class Rad {
public:
    constexpr Rad() = default;
    constexpr explicit Rad(T value): _value(value) {}
    constexpr Rad(Deg<T> degrees);
    constexpr explicit operator T() const { return _value; }
    constexpr Rad operator-() const { return Rad(-_value); }

private:
    T _value = 0;
};

/** An angle in degrees. */
template <class T> class Deg {
public:
    constexpr Deg() = default;
    constexpr explicit Deg(T value): _value(value) {}
    constexpr Deg(Rad<T> radians): _value(T(radians) * T(180 / 3.14159265358979323846)) {}
    constexpr explicit operator T() const { return _value; }
    constexpr Deg operator-() const { return Deg(-_value); }

private:
    T _value = 0;
};

template <class T> constexpr Rad<T>::Rad(Deg<T> degrees): _value(T(degrees) * T(3.14159265358979323846 / 180)) {}

namespace Literals {
inline namespace AngleLiterals {

constexpr Deg<Float> operator""_degf(long double value) { return Deg<Float>(Float(value)); }
constexpr Rad<Float> operator""_radf(long double value) { return Rad<Float>(Float(value)); }

} // namespace AngleLiterals
} // namespace Literals

} // namespace Magnum::Math
