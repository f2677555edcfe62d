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

TEST(MathTest, QuarterTurnsAboutYKeepTheOtherTwoAnglesApart) {
    for (const float y : {90.0f, -90.0f, 270.0f, 90.00003f}) {
        for (const Vector3& angles : {Vector3{30.0f, y, 40.0f}, Vector3{-120.0f, y, 10.0f}}) {
            const Matrix4 matrix = Compose({}, angles, {1, 1, 1});
            const Vector3 forward = matrix.Axis(2);
            EXPECT_GE(std::hypot(forward.y, forward.z), 1.7e-6f); // the sine of 0.0001 degrees
            Vector3 position;
            Vector3 read;
            Vector3 scale;
            Decompose(matrix, position, read, scale);
            // Either the angles themselves or, seen from behind, half a turn on.
            const float half = std::abs(std::remainder(read.x - angles.x, 360.0f)) > 90.0f ? 180.0f : 0.0f;
            EXPECT_NEAR(std::remainder(read.x - angles.x - half, 360.0f), 0.0f, 1e-2f);
            EXPECT_NEAR(std::remainder(read.z - angles.z - half, 360.0f), 0.0f, 1e-2f);
        }
    }
}

TEST(MathTest, DecomposeIsExactNextToAQuarterTurn) {
    for (const float y : {89.9f, 89.99f, 89.999f, -89.999f}) {
        Vector3 position;
        Vector3 angles;
        Vector3 scale;
        Decompose(Compose({}, {30.0f, y, 40.0f}, {2, 2, 2}), position, angles, scale);
        ExpectVector(angles, {30.0f, y, 40.0f}, 1e-2f);
    }
}

TEST(MathTest, AMatrixAtTheQuarterTurnIsMovedFromItByTheLeastTurn) {
    // Forward is +x, up +y, right -z: a quarter turn about y. The exact one, and a mirrored and stretched
    // one.
    for (const float scale : {1.0f, -3.0f}) {
        Matrix4 exact;
        exact.m[0] = exact.m[10] = 0.0f;
        exact.m[2] = -scale;
        exact.m[5] = scale;
        exact.m[8] = scale;
        const float firstAngle = 25.0f;
        for (const float* first : {static_cast<const float*>(nullptr), &firstAngle}) {
            Matrix4 moved = exact;
            LeaveGimbal(moved, first);
            for (int i = 0; i < 16; ++i) {
                EXPECT_NEAR(moved.m[i], exact.m[i], 6e-6f);
            }
            Vector3 position;
            Vector3 angles;
            Vector3 size;
            Decompose(moved, position, angles, size);
            const float x = first != nullptr ? firstAngle : 0.0f;
            ExpectVector(angles, {x, 90.0f, -x}, 1e-2f);
            Matrix4 again = moved;
            LeaveGimbal(again, first);
            EXPECT_EQ(again, moved);
        }
    }
}

TEST(MathTest, OtherMatricesAreNotMovedFromTheQuarterTurn) {
    for (const Vector3& angles : {Vector3{10.0f, 89.99f, 30.0f}, Vector3{}, Vector3{30.0f, 90.0f, 40.0f}}) {
        const Matrix4 matrix = Compose({1.0f, 2.0f, 3.0f}, angles, {2, 2, 2});
        Matrix4 same = matrix;
        LeaveGimbal(same);
        EXPECT_EQ(same, matrix);
    }
    Matrix4 flat = Compose({}, {}, {0.0f, 0.0f, 0.0f});
    LeaveGimbal(flat);
    EXPECT_EQ(flat, Compose({}, {}, {0.0f, 0.0f, 0.0f}));
}

} // namespace engine_test
