#pragma once

#include "Magnum/Math/Angle.h"
#include "Magnum/Math/Matrix.h"

namespace Magnum::Math {

/** A transformation of space: what is farther right in a product is applied first. */
template <class T> class Matrix4: public Matrix<4, T> {
public:
    using Matrix<4, T>::Matrix;
    constexpr Matrix4() = default;
    constexpr Matrix4(const Matrix<4, T>& other): Matrix<4, T>(other) {}

    static constexpr Matrix4 translation(const Vector3<T>& vector) { return from({}, vector); }
    static constexpr Matrix4 scaling(const Vector3<T>& vector) {
        Matrix4 out;
        for(std::size_t i = 0; i != 3; ++i) out[i][i] = vector[i];
        return out;
    }
    /** @param axis  of length 1: checked in debug builds */
    static Matrix4 rotation(Rad<T> angle, const Vector3<T>& axis) {
        CORRADE_DEBUG_ASSERT(axis.isNormalized(), "Math::Matrix4::rotation(): axis" << axis << "is not normalized", {});
        const T c = std::cos(T(angle)), s = std::sin(T(angle));
        Matrix4 out;
        for(std::size_t i = 0; i != 3; ++i) {
            Vector3<T> unit;
            unit[i] = T(1);
            // Rodrigues' formula, for each unit vector.
            out[i] = Vector4<T>(unit * c + cross(axis, unit) * s + axis * (axis[i] * (T(1) - c)), T(0));
        }
        return out;
    }
    static Matrix4 rotationX(Rad<T> angle) { return rotation(angle, Vector3<T>::xAxis()); }
    static Matrix4 rotationY(Rad<T> angle) { return rotation(angle, Vector3<T>::yAxis()); }
    static Matrix4 rotationZ(Rad<T> angle) { return rotation(angle, Vector3<T>::zAxis()); }
    static constexpr Matrix4 from(const Matrix3x3<T>& rotationScaling, const Vector3<T>& translation) {
        Matrix4 out;
        for(std::size_t i = 0; i != 3; ++i) out[i] = Vector4<T>(Vector3<T>(rotationScaling[i]), T(0));
        out[3] = Vector4<T>(translation, T(1));
        return out;
    }

    constexpr Matrix4 operator*(const Matrix4& other) const { return Matrix<4, T>::operator*(other); }
    using Matrix<4, T>::operator*;

    constexpr Vector3<T> translation() const { return axis(3); }
    /** Lengths of the three axes, without signs. */
    Vector3<T> scaling() const { return {axis(0).length(), axis(1).length(), axis(2).length()}; }
    constexpr Matrix3x3<T> rotationScaling() const { return {axis(0), axis(1), axis(2)}; }
    /** The axes at length 1. */
    Matrix3x3<T> rotationShear() const { return {axis(0).normalized(), axis(1).normalized(), axis(2).normalized()}; }
    /** The same where they are at right angles: checked in debug builds. */
    Matrix3x3<T> rotation() const {
        const Matrix3x3<T> out = rotationShear();
        CORRADE_DEBUG_ASSERT(out.isOrthogonal(),
            "Math::Matrix4::rotation(): the normalized rotation part is not orthogonal:" << Debug::newline << out, {});
        return out;
    }
    /** The axes where they are of length 1 and at right angles: checked in debug builds. */
    Matrix3x3<T> rotationNormalized() const {
        const Matrix3x3<T> out = rotationScaling();
        CORRADE_DEBUG_ASSERT(out.isOrthogonal(),
            "Math::Matrix4::rotationNormalized(): the rotation part is not orthogonal:" << Debug::newline << out, {});
        return out;
    }
    constexpr Vector3<T> transformVector(const Vector3<T>& vector) const {
        return Vector4<T>(*this * Vector4<T>(vector, T(0))).xyz();
    }
    constexpr Vector3<T> transformPoint(const Vector3<T>& point) const {
        const Vector4<T> out = *this * Vector4<T>(point, T(1));
        return out.xyz() / out.w();
    }

private:
    constexpr Vector3<T> axis(std::size_t i) const { return Vector4<T>((*this)[i]).xyz(); }
};

} // namespace Magnum::Math
