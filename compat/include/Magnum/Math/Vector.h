#pragma once

#include <concepts>
#include <cstddef>

#include "Corrade/Utility/Debug.h"
#include "Corrade/Utility/DebugAssert.h"
#include "Magnum/Math/TypeTraits.h"

namespace Magnum::Math {

/** Any number of components; Vector2, Vector3 and Vector4 give them names. Compared as TypeTraits says. */
template <std::size_t size, class T> class Vector {
public:
    using Type = T;
    enum : std::size_t { Size = size };

    /** Zeros. */
    constexpr Vector() = default;
    constexpr explicit Vector(T value) {
        for(T& component: _data) component = value;
    }
    template <class... U>
    requires(sizeof...(U) == size && size > 1 && (std::is_convertible_v<U, T> && ...)) constexpr Vector(U... components)
        : _data{T(components)...} {}
    template <class U>
    requires(!std::is_same_v<T, U>) constexpr explicit Vector(const Vector<size, U>& other) {
        for(std::size_t i = 0; i != size; ++i) _data[i] = T(other[i]);
    }

    constexpr T* data() { return _data; }
    constexpr const T* data() const { return _data; }
    constexpr T& operator[](std::size_t i) { return _data[i]; }
    constexpr const T& operator[](std::size_t i) const { return _data[i]; }

    bool operator==(const Vector& other) const {
        for(std::size_t i = 0; i != size; ++i) {
            if(!TypeTraits<T>::equals(_data[i], other[i])) return false;
        }
        return true;
    }
    bool operator!=(const Vector& other) const { return !(*this == other); }
    bool isZero() const { return *this == Vector{}; }

    /** Of the vector with itself: the square of its length. */
    constexpr T dot() const {
        T out = 0;
        for(T component: _data) out += component * component;
        return out;
    }
    T length() const { return std::sqrt(dot()); }
    bool isNormalized() const { return std::abs(dot() - T(1)) < 2 * TypeTraits<T>::epsilon(); }
    constexpr T sum() const {
        T out = 0;
        for(T component: _data) out += component;
        return out;
    }
    constexpr T product() const {
        T out = 1;
        for(T component: _data) out *= component;
        return out;
    }

private:
    T _data[size]{};
};

namespace Implementation {

template <class V>
concept VectorLike = std::derived_from<V, Vector<V::Size, typename V::Type>>;

template <class V, class F> constexpr V componentwise(const V& a, const V& b, F&& function) {
    V out;
    for(std::size_t i = 0; i != V::Size; ++i) out[i] = function(a[i], b[i]);
    return out;
}

} // namespace Implementation

// Of two vectors: component by component.
template <Implementation::VectorLike V> constexpr V operator+(const V& a, const V& b) {
    return Implementation::componentwise(a, b, [](auto x, auto y) { return x + y; });
}
template <Implementation::VectorLike V> constexpr V operator-(const V& a, const V& b) {
    return Implementation::componentwise(a, b, [](auto x, auto y) { return x - y; });
}
template <Implementation::VectorLike V> constexpr V operator*(const V& a, const V& b) {
    return Implementation::componentwise(a, b, [](auto x, auto y) { return x * y; });
}
template <Implementation::VectorLike V> constexpr V operator/(const V& a, const V& b) {
    return Implementation::componentwise(a, b, [](auto x, auto y) { return x / y; });
}
template <Implementation::VectorLike V> constexpr V operator*(const V& a, typename V::Type b) { return a * V(b); }
template <Implementation::VectorLike V> constexpr V operator*(typename V::Type a, const V& b) { return V(a) * b; }
template <Implementation::VectorLike V> constexpr V operator/(const V& a, typename V::Type b) { return a / V(b); }
template <Implementation::VectorLike V> constexpr V operator-(const V& a) { return V() - a; }
template <Implementation::VectorLike V> constexpr V& operator+=(V& a, const V& b) { return a = a + b; }
template <Implementation::VectorLike V> constexpr V& operator-=(V& a, const V& b) { return a = a - b; }
template <Implementation::VectorLike V> constexpr V& operator*=(V& a, typename V::Type b) { return a = a * b; }
template <Implementation::VectorLike V> constexpr V& operator/=(V& a, typename V::Type b) { return a = a / b; }

template <std::size_t size, class T> constexpr T dot(const Vector<size, T>& a, const Vector<size, T>& b) {
    T out = 0;
    for(std::size_t i = 0; i != size; ++i) out += a[i] * b[i];
    return out;
}

template <std::size_t size, class T> Debug& operator<<(Debug& debug, const Vector<size, T>& value) {
    const bool packed = debug.immediateFlags() >= Debug::Flag::Packed;
    debug << (packed ? "{" : "Vector(") << Debug::nospace << value[0];
    for(std::size_t i = 1; i != size; ++i) debug << Debug::nospace << "," << value[i];
    return debug << Debug::nospace << (packed ? "}" : ")");
}

} // namespace Magnum::Math
