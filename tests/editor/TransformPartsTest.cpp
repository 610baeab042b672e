#include "TransformParts.h"

#include <cmath>
#include <limits>
#include <random>

#include <gtest/gtest.h>

namespace QuorvaneEngine {
namespace {

using Magnum::Float;
using Magnum::Matrix4;
using Magnum::Quaternion;
using Magnum::Vector3;
using Magnum::Vector4;

/** Rotates by a unit quaternion, with nothing but its definition. */
Vector3 rotated(const Quaternion& rotation, const Vector3& vector) {
    const Vector3 axis = rotation.vector();
    const Float w = rotation.scalar();
    const auto cross = [](const Vector3& a, const Vector3& b) {
        return Vector3{a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
    };
    const Vector3 twice = cross(axis, vector) * 2.0f;
    return vector + twice * w + cross(axis, twice);
}

Matrix4 composed(const TransformParts& parts) {
    Matrix4 matrix;
    for(Int i = 0; i != 3; ++i) {
        Vector3 column;
        column[i] = parts.scaling[i];
        column = rotated(parts.rotation, column);
        for(Int j = 0; j != 3; ++j) matrix[i][j] = column[j];
        matrix[3][i] = parts.translation[i];
    }
    return matrix;
}

void expectNear(const Matrix4& actual, const Matrix4& expected, Float tolerance) {
    for(Int i = 0; i != 4; ++i)
        for(Int j = 0; j != 4; ++j)
            EXPECT_NEAR(actual[i][j], expected[i][j], tolerance) << "column " << i << ", row " << j;
}

void expectRotation(const Quaternion& actual, const Vector3& vector, Float scalar) {
    for(Int i = 0; i != 3; ++i) EXPECT_NEAR(actual.vector()[i], vector[i], 1.0e-6f);
    EXPECT_NEAR(actual.scalar(), scalar, 1.0e-6f);
}

Matrix4 columns(const Vector3& x, const Vector3& y, const Vector3& z, const Vector3& translation = {}) {
    Matrix4 matrix;
    const Vector3 all[]{x, y, z, translation};
    for(Int i = 0; i != 4; ++i)
        for(Int j = 0; j != 3; ++j) matrix[i][j] = all[i][j];
    return matrix;
}

TEST(TransformParts, TheIdentityIsNothing) {
    const TransformParts parts = transformParts(Matrix4{});
    EXPECT_EQ(parts.translation, Vector3{});
    EXPECT_EQ(parts.scaling, (Vector3{1.0f, 1.0f, 1.0f}));
    expectRotation(parts.rotation, {}, 1.0f);
}

TEST(TransformParts, TranslationAndScalingStandInTheMatrix) {
    const TransformParts parts =
        transformParts(columns({2.0f, 0.0f, 0.0f}, {0.0f, 3.0f, 0.0f}, {0.0f, 0.0f, 4.0f}, {5.0f, 6.0f, 7.0f}));
    EXPECT_EQ(parts.translation, (Vector3{5.0f, 6.0f, 7.0f}));
    EXPECT_EQ(parts.scaling, (Vector3{2.0f, 3.0f, 4.0f}));
    expectRotation(parts.rotation, {}, 1.0f);
}

TEST(TransformParts, AQuarterTurnAroundEachAxis) {
    const Float half = 0.70710678f;
    const Vector3 x{1.0f, 0.0f, 0.0f};
    const Vector3 y{0.0f, 1.0f, 0.0f};
    const Vector3 z{0.0f, 0.0f, 1.0f};
    expectRotation(transformParts(columns(x, z, y * -1.0f)).rotation, {half, 0.0f, 0.0f}, half);
    expectRotation(transformParts(columns(z * -1.0f, y, x)).rotation, {0.0f, half, 0.0f}, half);
    expectRotation(transformParts(columns(y, x * -1.0f, z)).rotation, {0.0f, 0.0f, half}, half);
}

TEST(TransformParts, HalfATurnAroundEachAxis) {
    const Vector3 x{1.0f, 0.0f, 0.0f};
    const Vector3 y{0.0f, 1.0f, 0.0f};
    const Vector3 z{0.0f, 0.0f, 1.0f};
    expectRotation(transformParts(columns(x, y * -1.0f, z * -1.0f)).rotation, x, 0.0f);
    expectRotation(transformParts(columns(x * -1.0f, y, z * -1.0f)).rotation, y, 0.0f);
    expectRotation(transformParts(columns(x * -1.0f, y * -1.0f, z)).rotation, z, 0.0f);
}

TEST(TransformParts, AnyMatrixWithoutShearIsPutTogetherAgain) {
    std::mt19937 random{7};
    std::uniform_real_distribution<Float> number{-3.0f, 3.0f};
    for(int i = 0; i != 500; ++i) {
        TransformParts parts;
        parts.translation = {number(random), number(random), number(random)};
        parts.scaling = {number(random), number(random), number(random)};
        Vector4 quaternion;
        Float length = 0.0f;
        for(Int j = 0; j != 4; ++j) {
            quaternion[j] = number(random);
            length += quaternion[j] * quaternion[j];
        }
        length = std::sqrt(length);
        parts.rotation = Quaternion{
            {quaternion[0] / length, quaternion[1] / length, quaternion[2] / length}, quaternion[3] / length};
        const Matrix4 matrix = composed(parts);
        expectNear(composed(transformParts(matrix)), matrix, 1.0e-5f);
    }
}

TEST(TransformParts, AMirroredMatrixScalesXByANegativeNumber) {
    const Matrix4 matrix = columns({1.0f, 0.0f, 0.0f}, {0.0f, -2.0f, 0.0f}, {0.0f, 0.0f, 3.0f});
    const TransformParts parts = transformParts(matrix);
    EXPECT_EQ(parts.scaling, (Vector3{-1.0f, 2.0f, 3.0f}));
    expectNear(composed(parts), matrix, 1.0e-6f);
}

TEST(TransformParts, OneZeroScaleKeepsTheRotation) {
    const Matrix4 matrix = columns({0.0f, 2.0f, 0.0f}, {-3.0f, 0.0f, 0.0f}, {});
    const TransformParts parts = transformParts(matrix);
    EXPECT_EQ(parts.scaling, (Vector3{2.0f, 3.0f, 0.0f}));
    expectRotation(parts.rotation, {0.0f, 0.0f, 0.70710678f}, 0.70710678f);
    for(Int missing = 0; missing != 3; ++missing) {
        Vector3 all[]{{0.0f, 2.0f, 0.0f}, {-3.0f, 0.0f, 0.0f}, {0.0f, 0.0f, 4.0f}};
        all[missing] = {};
        const Matrix4 flat = columns(all[0], all[1], all[2]);
        expectNear(composed(transformParts(flat)), flat, 1.0e-6f);
    }
}

TEST(TransformParts, TwoOrThreeZeroScalesGiveNoRotation) {
    const TransformParts line = transformParts(columns({0.0f, 2.0f, 0.0f}, {}, {}));
    EXPECT_EQ(line.scaling, (Vector3{2.0f, 0.0f, 0.0f}));
    expectRotation(line.rotation, {}, 1.0f);
    const TransformParts point = transformParts(columns({}, {}, {}, {1.0f, 2.0f, 3.0f}));
    EXPECT_EQ(point.translation, (Vector3{1.0f, 2.0f, 3.0f}));
    EXPECT_EQ(point.scaling, Vector3{});
    expectRotation(point.rotation, {}, 1.0f);
}

TEST(TransformParts, AShearIsLost) {
    const TransformParts parts = transformParts(columns({1.0f, 0.0f, 0.0f}, {1.0f, 1.0f, 0.0f}, {0.0f, 0.0f, 1.0f}));
    EXPECT_FLOAT_EQ(parts.scaling[1], 1.41421356f);
    expectRotation(parts.rotation, {}, 1.0f);
}

TEST(TransformParts, ParallelColumnsGiveNoRotation) {
    const TransformParts parts = transformParts(columns({0.0f, 1.0f, 0.0f}, {0.0f, 2.0f, 0.0f}, {0.0f, 0.0f, 1.0f}));
    EXPECT_EQ(parts.scaling, (Vector3{1.0f, 2.0f, 1.0f}));
    expectRotation(parts.rotation, {}, 1.0f);
}

TEST(TransformParts, WhatIsNotFiniteGivesNoRotation) {
    for(const Float number: {std::numeric_limits<Float>::quiet_NaN(), std::numeric_limits<Float>::infinity()}) {
        Matrix4 matrix;
        matrix[1][0] = number;
        expectRotation(transformParts(matrix).rotation, {}, 1.0f);
    }
}

}
}
