#pragma once

#include "Magnum/Math/Angle.h"
#include "Magnum/Math/Matrix.h"

namespace Magnum::Math {

/** A rotation as vector and scalar part; none by default. */
template <class T> class Quaternion {
public:
    constexpr Quaternion(): _scalar(T(1)) {}
    constexpr Quaternion(const Vector3<T>& vector, T scalar): _vector(vector), _scalar(scalar) {}

    /** @param axis  of length 1: checked in debug builds */
    static Quaternion rotation(Rad<T> angle, const Vector3<T>& axis) {
        CORRADE_DEBUG_ASSERT(
            axis.isNormalized(), "Math::Quaternion::rotation(): axis" << axis << "is not normalized", {});
        return {axis * std::sin(T(angle) / 2), std::cos(T(angle) / 2)};
    }
    /** @param matrix  a rotation, without scaling and reflection: checked in debug builds */
    static Quaternion fromMatrix(const Matrix3x3<T>& matrix) {
        CORRADE_DEBUG_ASSERT(std::abs(matrix.determinant() - T(1)) < T(3) * TypeTraits<T>::epsilon(),
            "Math::Quaternion::fromMatrix(): the matrix is not a rotation:" << Debug::newline << matrix, {});
        return fromRotation(matrix);
    }

    bool operator==(const Quaternion& other) const {
        return _vector == other._vector && TypeTraits<T>::equals(_scalar, other._scalar);
    }
    bool operator!=(const Quaternion& other) const { return !(*this == other); }

    constexpr Vector3<T> vector() const { return _vector; }
    constexpr T scalar() const { return _scalar; }
    constexpr T dot() const { return _vector.dot() + _scalar * _scalar; }
    bool isNormalized() const { return std::abs(dot() - T(1)) < 2 * TypeTraits<T>::epsilon(); }
    Quaternion normalized() const {
        const T length = std::sqrt(dot());
        return {_vector / length, _scalar / length};
    }
    /** The rotation of `other`, then this one. */
    constexpr Quaternion operator*(const Quaternion& other) const {
        return {other._vector * _scalar + _vector * other._scalar + cross(_vector, other._vector),
            _scalar * other._scalar - Math::dot(_vector, other._vector)};
    }
    constexpr Matrix3x3<T> toMatrix() const {
        const auto rotated = [this](const Vector3<T>& unit) {
            return unit + cross(_vector, cross(_vector, unit) + unit * _scalar) * T(2);
        };
        return {rotated(Vector3<T>::xAxis()), rotated(Vector3<T>::yAxis()), rotated(Vector3<T>::zAxis())};
    }

private:
    // The component that is largest comes from a square root, the others from differences and sums across the diagonal.
    static Quaternion fromRotation(const Matrix3x3<T>& m) {
        const T trace = m[0][0] + m[1][1] + m[2][2];
        if(trace > T(0)) {
            const T doubled = std::sqrt(trace + T(1));
            return {
                Vector3<T>(m[1][2] - m[2][1], m[2][0] - m[0][2], m[0][1] - m[1][0]) / (T(2) * doubled), doubled / T(2)};
        }
        const std::size_t i = m[0][0] >= m[1][1] && m[0][0] >= m[2][2] ? 0
            : m[1][1] >= m[2][2]                                       ? 1
                                                                       : 2,
                          j = (i + 1) % 3, k = (i + 2) % 3;
        const T doubled = std::sqrt(m[i][i] - m[j][j] - m[k][k] + T(1));
        Vector3<T> vector;
        vector[i] = doubled / T(2);
        vector[j] = (m[i][j] + m[j][i]) / (T(2) * doubled);
        vector[k] = (m[i][k] + m[k][i]) / (T(2) * doubled);
        return {vector, (m[j][k] - m[k][j]) / (T(2) * doubled)};
    }

    Vector3<T> _vector;
    T _scalar;
};

template <class T> Debug& operator<<(Debug& debug, const Quaternion<T>& value) {
    return debug << "Quaternion(" << Debug::nospace << Debug::packed << value.vector() << Debug::nospace << ","
                 << value.scalar() << Debug::nospace << ")";
}

} // namespace Magnum::Math
