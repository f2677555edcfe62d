#include "host/engine/Math.h"
#include "tests/engine/EngineFixture.h"

namespace engine_test {

using engine::operator*;
using engine::Compose;
using engine::Decompose;
using engine::Matrix4;

TEST(MathTest, PositiveRotationsTurnTheAxesRightHanded) {
    // 90 degrees about x: up (row 1) goes to +z.
    ExpectVector(Compose({}, {90.0f, 0.0f, 0.0f}, {1, 1, 1}).Axis(1), {0.0f, 0.0f, 1.0f});
    // About y: forward (row 2) goes to +x. About z: right (row 0) goes to +y.
    ExpectVector(Compose({}, {0.0f, 90.0f, 0.0f}, {1, 1, 1}).Axis(2), {1.0f, 0.0f, 0.0f});
    ExpectVector(Compose({}, {0.0f, 0.0f, 90.0f}, {1, 1, 1}).Axis(0), {0.0f, 1.0f, 0.0f});
}

TEST(MathTest, RotationsApplyZThenYThenX) {
    // z turns right to up, y leaves up alone, x turns up to +z.
    ExpectVector(Compose({}, {90.0f, 90.0f, 90.0f}, {1, 1, 1}).Axis(0), {0.0f, 0.0f, 1.0f});
}

TEST(MathTest, ScaleStretchesTheRowsAndTranslationStandsInTheLast) {
    const Matrix4 matrix = Compose({1.0f, 2.0f, 3.0f}, {}, {2.0f, 3.0f, 4.0f});
    ExpectVector(matrix.Axis(0), {2.0f, 0.0f, 0.0f});
    ExpectVector(matrix.Axis(1), {0.0f, 3.0f, 0.0f});
    ExpectVector(matrix.Axis(2), {0.0f, 0.0f, 4.0f});
    ExpectVector(matrix.Translation(), {1.0f, 2.0f, 3.0f});
    EXPECT_EQ(matrix.m[15], 1.0f);
    ExpectVector(TransformPoint({1.0f, 1.0f, 1.0f}, matrix), {3.0f, 5.0f, 7.0f});
}

/// The way the plug-in takes a matrix apart, for unscaled rotations: angles are the negatives of these.
Vector3 PluginAngles(const Matrix4& matrix) {
    constexpr float kToDegrees = -57.29577951308232f;
    const Vector3 r0 = matrix.Axis(0);
    const Vector3 r1 = matrix.Axis(1);
    const Vector3 r2 = matrix.Axis(2);
    return Vector3{std::atan2(r2.y, r2.z), std::asin(-r2.x), std::atan2(r1.x, r0.x)} * kToDegrees;
}

TEST(MathTest, ComposeIsInvertedByThePluginsAngles) {
    for (const Vector3& angles : {Vector3{10.0f, 20.0f, 30.0f}, Vector3{-80.0f, 60.0f, 170.0f},
                                  Vector3{179.0f, -89.0f, -5.0f}, Vector3{0.0f, 0.0f, 0.0f}}) {
        ExpectVector(PluginAngles(Compose({}, angles, {1, 1, 1})), angles, 2e-3f);
    }
}

TEST(MathTest, DecomposeInvertsCompose) {
    Vector3 position;
    Vector3 angles;
    Vector3 scale;
    Decompose(Compose({1.0f, -2.0f, 3.0f}, {25.0f, -40.0f, 110.0f}, {2.0f, 0.5f, 3.0f}), position, angles,
              scale);
    ExpectVector(position, {1.0f, -2.0f, 3.0f});
    ExpectVector(angles, {25.0f, -40.0f, 110.0f}, 1e-3f);
    ExpectVector(scale, {2.0f, 0.5f, 3.0f});
}

TEST(MathTest, DecomposeOfAMirrorTurnsAllThreeScalesNegative) {
    Vector3 position;
    Vector3 angles;
    Vector3 scale;
    Matrix4 mirror;
    mirror.m[0] = -1.0f;
    Decompose(mirror, position, angles, scale);
    ExpectVector(scale, {-1.0f, -1.0f, -1.0f});
}

TEST(MathTest, DecomposeAtTheLockKeepsTheMatrix) {
    Vector3 position;
    Vector3 angles;
    Vector3 scale;
    const Matrix4 locked = Compose({}, {30.0f, 90.0f, 0.0f}, {1, 1, 1});
    Decompose(locked, position, angles, scale);
    EXPECT_NEAR(angles.y, 90.0f, 0.1f);
    const Matrix4 again = Compose(position, angles, scale);
    for (int row = 0; row < 3; ++row) {
        ExpectVector(again.Axis(row), locked.Axis(row), 1e-3f);
    }
}

TEST(MathTest, InvertUndoesAMatrixAndRefusesFlatOnes) {
    const Matrix4 matrix = Compose({5.0f, 6.0f, 7.0f}, {10.0f, 20.0f, 30.0f}, {2.0f, 3.0f, 4.0f});
    Matrix4 inverse;
    ASSERT_TRUE(Invert(matrix, inverse));
    ExpectVector(TransformPoint(TransformPoint({1.0f, 2.0f, 3.0f}, matrix), inverse), {1.0f, 2.0f, 3.0f},
                 1e-5f);
    const Matrix4 before = inverse;
    EXPECT_FALSE(Invert(Compose({}, {}, {1.0f, 0.0f, 1.0f}), inverse));
    Matrix4 broken;
    broken.m[5] = std::nanf("");
    EXPECT_FALSE(Invert(broken, inverse));
    EXPECT_EQ(inverse, before);
}

TEST(MathTest, CameraLooksAlongMinusItsThirdRow) {
    const Matrix4 camera = engine::CameraMatrix({0.0f, 0.0f, 10.0f}, {0.0f, 0.0f, 0.0f}, 0.0f);
    EXPECT_EQ(camera.Axis(2), (Vector3{0.0f, 0.0f, 1.0f}));
    ExpectVector(camera.Axis(0), {1.0f, 0.0f, 0.0f});
    ExpectVector(camera.Axis(1), {0.0f, 1.0f, 0.0f});
    ExpectVector(camera.Translation(), {0.0f, 0.0f, 10.0f});
}

TEST(MathTest, CameraRollTurnsItsAxesAboutTheViewDirection) {
    const Matrix4 camera = engine::CameraMatrix({0.0f, 0.0f, 10.0f}, {}, 90.0f);
    ExpectVector(camera.Axis(0), {0.0f, 1.0f, 0.0f});
    ExpectVector(camera.Axis(1), {-1.0f, 0.0f, 0.0f});
}

TEST(MathTest, CameraStraightDownOrOnItsTargetIsStillARotation) {
    for (const Matrix4& camera : {engine::CameraMatrix({0.0f, 5.0f, 0.0f}, {}, 0.0f),
                                  engine::CameraMatrix({1.0f, 1.0f, 1.0f}, {1.0f, 1.0f, 1.0f}, 0.0f)}) {
        EXPECT_TRUE(IsFinite(camera));
        for (int row = 0; row < 3; ++row) {
            EXPECT_NEAR(engine::Length(camera.Axis(row)), 1.0f, 1e-6f);
        }
    }
}

TEST(MathTest, PerspectiveMapsTheClippingPlanesToDepthMinusOneAndOne) {
    const Matrix4 projection = engine::Perspective(90.0f, 2.0f, 1.0f, 100.0f);
    const auto depth = [&](float z) {
        const float w = z * projection.m[11] + projection.m[15];
        return (z * projection.m[10] + projection.m[14]) / w;
    };
    EXPECT_NEAR(depth(-1.0f), -1.0f, 1e-5f);
    EXPECT_NEAR(depth(-100.0f), 1.0f, 1e-5f);
    EXPECT_NEAR(projection.m[5], 1.0f, 1e-6f); // 90 degrees: the edge stands at 45
    EXPECT_NEAR(projection.m[0], 0.5f, 1e-6f);
    EXPECT_TRUE(IsFinite(engine::Perspective(0.0f, 0.0f, 1.0f, 1.0f)));
}

TEST(MathTest, NormalizedFallsBackForVectorsWithoutDirection) {
    EXPECT_EQ(engine::Normalized({0.0f, 0.0f, 0.0f}, {0.0f, 1.0f, 0.0f}), (Vector3{0.0f, 1.0f, 0.0f}));
    EXPECT_EQ(engine::Normalized({std::nanf(""), 0.0f, 0.0f}, {1.0f, 0.0f, 0.0f}),
              (Vector3{1.0f, 0.0f, 0.0f}));
    ExpectVector(engine::Normalized({0.0f, 3.0f, 4.0f}, {}), {0.0f, 0.6f, 0.8f});
}

} // namespace engine_test
