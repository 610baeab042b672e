#include <cmath>

#include <Magnum/Magnum.h>
#include <Magnum/Math/Angle.h>
#include <Magnum/Math/Color.h>
#include <Magnum/Math/Matrix4.h>
#include <Magnum/Math/Quaternion.h>
#include <Magnum/Math/Range.h>
#include <Magnum/Math/Vector3.h>
#include <Magnum/Math/Vector4.h>
#include <gtest/gtest.h>

#include "Print.h"

using namespace Magnum;
using namespace Magnum::Math::Literals;

TEST(Vector, IsZeroByDefaultAndIndexed) {
    Vector3 vector;
    EXPECT_EQ(vector, Vector3(0.0f, 0.0f, 0.0f));
    vector[1] = 2.0f;
    vector.x() = 1.0f;
    EXPECT_EQ(vector, (Vector3{1.0f, 2.0f, 0.0f}));
    EXPECT_EQ(vector.xy(), (Vector2{1.0f, 2.0f}));
    EXPECT_EQ((Vector4{vector, 5.0f}.w()), 5.0f);
    EXPECT_EQ((Vector4{vector, 5.0f}.xyz()), vector);
    EXPECT_EQ(Vector2{3.0f}, (Vector2{3.0f, 3.0f}));
    EXPECT_EQ((Vector2i{Vector2{1.9f, -1.9f}}), (Vector2i{1, -1}));
}

TEST(Vector, ComputesComponentByComponent) {
    const Vector3 a{1.0f, 2.0f, 3.0f}, b{4.0f, 5.0f, 6.0f};
    EXPECT_EQ(a + b, (Vector3{5.0f, 7.0f, 9.0f}));
    EXPECT_EQ((b - a).z(), 3.0f);
    EXPECT_EQ(a * b, (Vector3{4.0f, 10.0f, 18.0f}));
    EXPECT_EQ(2.0f * a, a * 2.0f);
    EXPECT_EQ(b / 2.0f, (Vector3{2.0f, 2.5f, 3.0f}));
    EXPECT_EQ(-a, (Vector3{-1.0f, -2.0f, -3.0f}));
    Vector3 c = a;
    c += b;
    c *= 2.0f;
    EXPECT_EQ(c, (Vector3{10.0f, 14.0f, 18.0f}));
    EXPECT_EQ(Math::dot(a, b), 32.0f);
    EXPECT_EQ(Math::cross(a, b), (Vector3{-3.0f, 6.0f, -3.0f}));
    EXPECT_EQ((Vector2i{3, 4}.product()), 12);
    EXPECT_EQ((Vector2i{3, 4}.sum()), 7);
}

TEST(Vector, HasALength) {
    EXPECT_EQ((Vector2{3.0f, 4.0f}.length()), 5.0f);
    EXPECT_EQ((Vector2{3.0f, 4.0f}.dot()), 25.0f);
    EXPECT_TRUE((Vector3{3.0f, 4.0f, 5.0f}.normalized().isNormalized()));
    EXPECT_FALSE((Vector3{1.0f, 0.1f, 0.0f}.isNormalized()));
}

TEST(Vector, IsComparedWithATolerance) {
    EXPECT_EQ((Vector2{1.0f, 1.0e6f}), (Vector2{1.000001f, 1.000001e6f}));
    EXPECT_NE((Vector2{1.0f, 1.0f}), (Vector2{1.0001f, 1.0f}));
    EXPECT_NE((Vector2{0.0f, 0.0f}), (Vector2{1.0e-4f, 0.0f}));
    EXPECT_NE((Vector2i{1, 2}), (Vector2i{1, 3}));
}

TEST(Math, Prints) {
    EXPECT_EQ(printed(Vector3{1.0f, 2.5f, -3.0f}), "Vector(1, 2.5, -3)");
    EXPECT_EQ(printed(Vector2i{1, 2}), "Vector(1, 2)");
    EXPECT_EQ(printed(Color4{0.5f, 0.25f, 1.0f}), "Vector(0.5, 0.25, 1, 1)");
    EXPECT_EQ(printed(Quaternion{{1.0f, 2.0f, 3.0f}, 4.0f}), "Quaternion({1, 2, 3}, 4)");
    EXPECT_EQ(printed(Range2Di{{1, 2}, {3, 4}}), "Range({1, 2}, {3, 4})");
    EXPECT_EQ(printed(Matrix3x3{Vector3{1.0f, 2.0f, 3.0f}, Vector3{4.0f, 5.0f, 6.0f}, Vector3{7.0f, 8.0f, 9.0f}}),
        "Matrix(1, 4, 7,\n       2, 5, 8,\n       3, 6, 9)");
}

TEST(Range, IsMadeOfCornersOrOfASize) {
    const Range2Di range{{1, 2}, {4, 6}};
    EXPECT_EQ(range, Range2Di::fromSize({1, 2}, {3, 4}));
    EXPECT_EQ(range.size(), (Vector2i{3, 4}));
    EXPECT_EQ(range.sizeX() + range.sizeY(), 7);
    EXPECT_EQ(range.left(), 1);
    EXPECT_EQ(range.top(), 6);
    EXPECT_EQ((Range2Di{{}, {4, 6}}).min(), (Vector2i{}));
}

TEST(Color, AlphaIsOneUnlessGiven) {
    EXPECT_EQ((Color4{0.1f, 0.2f, 0.3f}.a()), 1.0f);
    EXPECT_EQ((Color4{0.1f, 0.2f, 0.3f, 0.4f}.a()), 0.4f);
    EXPECT_EQ(Color4{}.a(), 0.0f);
    EXPECT_EQ((Color3{0.1f, 0.2f, 0.3f}.g()), 0.2f);
}

TEST(Angle, ConvertsBetweenDegreesAndRadians) {
    EXPECT_FLOAT_EQ(Float(Rad(180.0_degf)), 3.14159265f);
    EXPECT_FLOAT_EQ(Float(Deg(Rad{1.5707963f})), 90.0f);
}

TEST(Matrix4, IsTheIdentityByDefaultAndColumnMajor) {
    EXPECT_EQ(Matrix4{}[2][2], 1.0f);
    EXPECT_EQ(Matrix4{}[3][2], 0.0f);
    const Matrix4 translation = Matrix4::translation({1.0f, 2.0f, 3.0f});
    EXPECT_EQ(translation[3], (Vector4{1.0f, 2.0f, 3.0f, 1.0f}));
    EXPECT_EQ(translation.translation(), (Vector3{1.0f, 2.0f, 3.0f}));
    EXPECT_EQ(translation.row(1), (Vector4{0.0f, 1.0f, 0.0f, 2.0f}));
}

TEST(Matrix4, AppliesTheRightmostTransformationFirst) {
    const Matrix4 matrix =
        Matrix4::translation({1.0f, 0.0f, 0.0f}) * Matrix4::rotationZ(90.0_degf) * Matrix4::scaling({2.0f, 3.0f, 4.0f});
    EXPECT_EQ(matrix.transformPoint({1.0f, 0.0f, 0.0f}), (Vector3{1.0f, 2.0f, 0.0f}));
    EXPECT_EQ(matrix.transformVector({0.0f, 1.0f, 1.0f}), (Vector3{-3.0f, 0.0f, 4.0f}));
    EXPECT_EQ(matrix.scaling(), (Vector3{2.0f, 3.0f, 4.0f}));
    EXPECT_EQ(matrix.rotation(), Matrix4::rotationZ(90.0_degf).rotationScaling());
    EXPECT_EQ(Matrix4::from(matrix.rotationScaling(), matrix.translation()), matrix);
}

TEST(Matrix4, RotatesByTheRightHandRule) {
    EXPECT_EQ(Matrix4::rotationX(90.0_degf).transformVector(Vector3::yAxis()), Vector3::zAxis());
    EXPECT_EQ(Matrix4::rotationY(90.0_degf).transformVector(Vector3::zAxis()), Vector3::xAxis());
    EXPECT_EQ(Matrix4::rotationZ(90.0_degf).transformVector(Vector3::xAxis()), Vector3::yAxis());
    const Vector3 axis = Vector3{1.0f, 1.0f, 1.0f}.normalized();
    EXPECT_EQ(Matrix4::rotation(120.0_degf, axis).transformVector(Vector3::xAxis()), Vector3::yAxis());
    EXPECT_NEAR(Matrix4::rotation(50.0_degf, axis).rotationScaling().determinant(), 1.0f, 1.0e-6f);
    EXPECT_TRUE(Matrix4::rotation(50.0_degf, axis).rotationScaling().isOrthogonal());
}

TEST(Quaternion, ComesFromAxesAndFromMatricesAlike) {
    EXPECT_EQ(Quaternion{}.scalar(), 1.0f);
    const Vector3 axes[]{Vector3::xAxis(), Vector3::yAxis(), Vector3::zAxis(), Vector3{1.0f, -2.0f, 3.0f}.normalized()};
    for(const Vector3& axis: axes) {
        for(const Float degrees: {0.0f, 35.0f, 120.0f, 170.0f}) {
            const Quaternion quaternion = Quaternion::rotation(Deg{degrees}, axis);
            const Matrix4 matrix = Matrix4::rotation(Deg{degrees}, axis);
            EXPECT_TRUE(quaternion.isNormalized());
            EXPECT_EQ(quaternion.toMatrix(), matrix.rotationScaling());
            EXPECT_EQ(Quaternion::fromMatrix(matrix.rotationScaling()), quaternion) << degrees;
        }
    }
    const Quaternion a = Quaternion::rotation(30.0_degf, Vector3::xAxis());
    const Quaternion b = Quaternion::rotation(40.0_degf, Vector3::yAxis());
    EXPECT_EQ((a * b).toMatrix(), a.toMatrix() * b.toMatrix());
}

#ifndef NDEBUG
TEST(MathDeath, MatricesThatAreNoRotationsAbortInDebugBuilds) {
    const Matrix4 sheared{Vector4{1.0f, 0.0f, 0.0f, 0.0f}, Vector4{1.0f, 1.0f, 0.0f, 0.0f},
        Vector4{0.0f, 0.0f, 1.0f, 0.0f}, Vector4{0.0f, 0.0f, 0.0f, 1.0f}};
    EXPECT_DEATH(sheared.rotation(),
        "Math::Matrix4::rotation\\(\\): the normalized rotation part is not orthogonal:\n"
        "Matrix\\(1, 0.707107, 0,\n");
    EXPECT_DEATH(Matrix4::scaling({2.0f, 2.0f, 2.0f}).rotationNormalized(),
        "Math::Matrix4::rotationNormalized\\(\\): the rotation part is not orthogonal:\nMatrix\\(2, 0, 0,\n");
    EXPECT_DEATH(Matrix4::rotation(1.0_radf, {2.0f, 0.0f, 0.0f}),
        "Math::Matrix4::rotation\\(\\): axis Vector\\(2, 0, 0\\) is not normalized\n");
    EXPECT_DEATH(Quaternion::fromMatrix(Matrix4::scaling({2.0f, 2.0f, 2.0f}).rotationScaling()),
        "Math::Quaternion::fromMatrix\\(\\): the matrix is not a rotation:\nMatrix\\(2, 0, 0,\n");
}
#endif
