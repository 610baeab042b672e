#pragma once

#include "Magnum/Math/Vector4.h"

namespace Magnum::Math {

/** A square matrix as a row of column vectors: `matrix[column][row]`. The identity by default. */
template <std::size_t size, class T> class Matrix {
public:
    using Type = T;
    enum : std::size_t { Size = size };

    constexpr Matrix() {
        for(std::size_t i = 0; i != size; ++i) _columns[i][i] = T(1);
    }
    template <class... U>
    requires(sizeof...(U) == size - 1) constexpr Matrix(const Vector<size, T>& first, const U&... next)
        : _columns{first, Vector<size, T>(next)...} {}

    constexpr Vector<size, T>& operator[](std::size_t column) { return _columns[column]; }
    constexpr const Vector<size, T>& operator[](std::size_t column) const { return _columns[column]; }
    constexpr Vector<size, T> row(std::size_t row) const {
        Vector<size, T> out;
        for(std::size_t i = 0; i != size; ++i) out[i] = _columns[i][row];
        return out;
    }

    bool operator==(const Matrix& other) const {
        for(std::size_t i = 0; i != size; ++i) {
            if(_columns[i] != other[i]) return false;
        }
        return true;
    }
    bool operator!=(const Matrix& other) const { return !(*this == other); }

    constexpr Vector<size, T> operator*(const Vector<size, T>& vector) const {
        Vector<size, T> out;
        for(std::size_t i = 0; i != size; ++i) out += _columns[i] * vector[i];
        return out;
    }
    constexpr Matrix operator*(const Matrix& other) const {
        Matrix out;
        for(std::size_t i = 0; i != size; ++i) out[i] = *this * other[i];
        return out;
    }
    constexpr Matrix transposed() const {
        Matrix out;
        for(std::size_t i = 0; i != size; ++i) out[i] = row(i);
        return out;
    }
    constexpr T determinant() const {
        static_assert(size == 3, "only of 3x3 matrices");
        return dot(cross(Vector3<T>(_columns[0]), Vector3<T>(_columns[1])), Vector3<T>(_columns[2]));
    }
    /** Whether the columns are of length 1 and at right angles: a rotation or a reflection. */
    bool isOrthogonal() const {
        for(std::size_t i = 0; i != size; ++i) {
            if(!_columns[i].isNormalized()) return false;
            for(std::size_t j = 0; j != i; ++j) {
                if(std::abs(dot(_columns[i], _columns[j])) > TypeTraits<T>::epsilon()) return false;
            }
        }
        return true;
    }

private:
    Vector<size, T> _columns[size];
};

template <std::size_t size, class T> Debug& operator<<(Debug& debug, const Matrix<size, T>& value) {
    debug << "Matrix(" << Debug::nospace;
    for(std::size_t row = 0; row != size; ++row) {
        if(row) debug << Debug::nospace << ",\n      ";
        debug << value[0][row];
        for(std::size_t column = 1; column != size; ++column) debug << Debug::nospace << "," << value[column][row];
    }
    return debug << Debug::nospace << ")";
}

} // namespace Magnum::Math
