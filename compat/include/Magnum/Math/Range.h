#pragma once

#include "Magnum/Math/Vector2.h"

namespace Magnum::Math {

/** A rectangle: from min, included, to max, excluded. */
template <class T> class Range2D {
public:
    constexpr Range2D() = default;
    constexpr Range2D(const Vector2<T>& min, const Vector2<T>& max): _min(min), _max(max) {}
    static constexpr Range2D fromSize(const Vector2<T>& min, const Vector2<T>& size) { return {min, min + size}; }

    bool operator==(const Range2D& other) const { return _min == other._min && _max == other._max; }
    bool operator!=(const Range2D& other) const { return !(*this == other); }

    constexpr const Vector2<T>& min() const { return _min; }
    constexpr const Vector2<T>& max() const { return _max; }
    constexpr Vector2<T> size() const { return _max - _min; }
    constexpr T sizeX() const { return size().x(); }
    constexpr T sizeY() const { return size().y(); }
    constexpr T left() const { return _min.x(); }
    constexpr T right() const { return _max.x(); }
    constexpr T bottom() const { return _min.y(); }
    constexpr T top() const { return _max.y(); }

private:
    Vector2<T> _min, _max;
};

template <class T> Debug& operator<<(Debug& debug, const Range2D<T>& value) {
    return debug << "Range(" << Debug::nospace << Debug::packed << value.min() << Debug::nospace << "," << Debug::packed
                 << value.max() << Debug::nospace << ")";
}

} // namespace Magnum::Math
