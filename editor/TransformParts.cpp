#include "TransformParts.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace QuorvaneEngine {

namespace {

/** In double precision, so that what is lost is lost in the matrix alone. */
using Vector = std::array<double, 3>;

/** Shorter than this part of the longest column, a column has no direction. */
constexpr double DirectionEpsilon = 1.0e-6;

double dot(const Vector& a, const Vector& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

double length(const Vector& a) { return std::sqrt(dot(a, a)); }

Vector cross(const Vector& a, const Vector& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

void scale(Vector& a, const double factor) {
    for(double& component: a) component *= factor;
}

/** Makes three columns an orthonormal right-handed basis. Returns false where they name none. */
bool orthonormalize(Vector (&basis)[3], const double (&lengths)[3]) {
    const double longest = std::max({lengths[0], lengths[1], lengths[2]});
    if(!std::isfinite(lengths[0] + lengths[1] + lengths[2])) return false;
    Int missing = -1;
    for(Int i = 0; i != 3; ++i) {
        if(lengths[i] > longest * DirectionEpsilon) {
            scale(basis[i], 1.0 / lengths[i]);
            continue;
        }
        if(missing != -1) return false;
        missing = i;
    }
    // The two columns that are orthogonalized; the third follows from them.
    const Int first = missing == 0 ? 1 : 0;
    const Int second = missing == 2 || missing == -1 ? 1 : 2;
    const double shear = dot(basis[first], basis[second]);
    for(Int i = 0; i != 3; ++i) basis[second][i] -= basis[first][i] * shear;
    const double rest = length(basis[second]);
    if(!(rest > DirectionEpsilon)) return false;
    scale(basis[second], 1.0 / rest);
    const Int third = 3 - first - second;
    basis[third] = cross(basis[(third + 1) % 3], basis[(third + 2) % 3]);
    return true;
}

/** Quaternion of an orthonormal right-handed basis (Shepperd 1978): divides by the largest of the four components. */
Magnum::Quaternion quaternion(const Vector (&basis)[3]) {
    const double diagonal[]{basis[0][0], basis[1][1], basis[2][2]};
    const double trace = diagonal[0] + diagonal[1] + diagonal[2];
    Vector vector{};
    double scalar = 0.0;
    if(trace > 0.0) {
        const double root = std::sqrt(trace + 1.0);
        scalar = 0.5 * root;
        const double factor = 0.5 / root;
        vector = {(basis[1][2] - basis[2][1]) * factor, (basis[2][0] - basis[0][2]) * factor,
            (basis[0][1] - basis[1][0]) * factor};
    } else {
        const Int i = Int(std::max_element(diagonal, diagonal + 3) - diagonal);
        const Int j = (i + 1) % 3;
        const Int k = (i + 2) % 3;
        const double root = std::sqrt(diagonal[i] - diagonal[j] - diagonal[k] + 1.0);
        const double factor = 0.5 / root;
        vector[i] = 0.5 * root;
        vector[j] = (basis[i][j] + basis[j][i]) * factor;
        vector[k] = (basis[i][k] + basis[k][i]) * factor;
        scalar = (basis[j][k] - basis[k][j]) * factor;
    }
    using Magnum::Float;
    return Magnum::Quaternion{{Float(vector[0]), Float(vector[1]), Float(vector[2])}, Float(scalar)};
}

}

TransformParts transformParts(const Magnum::Matrix4& transform) {
    Vector basis[3];
    double lengths[3];
    for(Int i = 0; i != 3; ++i) {
        basis[i] = {transform[i][0], transform[i][1], transform[i][2]};
        lengths[i] = length(basis[i]);
    }
    const bool mirrors = dot(cross(basis[0], basis[1]), basis[2]) < 0.0;
    if(mirrors) scale(basis[0], -1.0);

    using Magnum::Float;
    TransformParts parts;
    parts.translation = {transform[3][0], transform[3][1], transform[3][2]};
    parts.scaling = {Float(mirrors ? -lengths[0] : lengths[0]), Float(lengths[1]), Float(lengths[2])};
    if(orthonormalize(basis, lengths)) parts.rotation = quaternion(basis);
    return parts;
}

}
