#include "helpers/rules/MatrixMath.h"

#include <array>
#include <cmath>
#include <gtest/gtest.h>

namespace {

using Matrix = std::array<float, 16>;
using Triple = std::array<float, 3>;

constexpr float kTolerance = 1e-4f; // degrees and units

Matrix Rows(Triple r0, Triple r1, Triple r2, Triple r3 = {0, 0, 0}) {
    return {r0[0], r0[1], r0[2], 0, r1[0], r1[1], r1[2], 0, r2[0], r2[1], r2[2], 0, r3[0], r3[1], r3[2], 1};
}

const float kSin30 = 0.5f;
const float kCos30 = std::sqrt(0.75f);

/// Turned by 30 degrees about x: the up axis tips towards z.
Matrix TurnedAboutX30() {
    return Rows({1, 0, 0}, {0, kCos30, kSin30}, {0, -kSin30, kCos30});
}

void ExpectNear(const Triple& actual, const Triple& expected) {
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_NEAR(actual[i], expected[i], kTolerance) << "component " << i;
    }
}

Triple AnglesOf(const Matrix& matrix) {
    Triple angles{};
    DecomposeMatrix(matrix.data(), nullptr, angles.data(), nullptr);
    return angles;
}

Triple AnglesNear(const Matrix& matrix, Triple start) {
    DecomposeMatrixNear(matrix.data(), nullptr, start.data(), nullptr);
    return start;
}

} // namespace

TEST(MatrixMathTest, IdentityHasOnesOnTheDiagonalOnly) {
    Matrix matrix;
    matrix.fill(7.0f);
    SetIdentity(matrix.data());
    EXPECT_EQ(matrix, Rows({1, 0, 0}, {0, 1, 0}, {0, 0, 1}));
}

TEST(MatrixMathTest, LookAtBuildsAxesFromDirectionAndUp) {
    Matrix matrix;
    matrix.fill(7.0f);
    const Triple position{1, 2, 3};
    const Triple direction{2, 0, 0};
    const Triple up{0, 5, 0};
    SetLookAt(matrix.data(), position.data(), direction.data(), up.data());
    // forward x; right = up x forward = (0,1,0) x (1,0,0) = -z; up = forward x right = (1,0,0) x (0,0,-1) =
    // +y
    EXPECT_EQ(matrix, Rows({0, 0, -1}, {0, 1, 0}, {1, 0, 0}, {1, 2, 3}));
}

TEST(MatrixMathTest, LookAtAlongUpDividesByZero) {
    Matrix matrix{};
    const Triple position{0, 0, 0};
    const Triple up{0, 1, 0};
    SetLookAt(matrix.data(), position.data(), up.data(), up.data());
    EXPECT_TRUE(std::isnan(matrix[0]));
}

TEST(MatrixMathTest, ScaleRowsLeavesTranslationAndFourthColumn) {
    Matrix matrix = Rows({1, 2, 3}, {4, 5, 6}, {7, 8, 9}, {10, 11, 12});
    ScaleRows(matrix.data(), -1.0f);
    EXPECT_EQ(matrix, Rows({-1, -2, -3}, {-4, -5, -6}, {-7, -8, -9}, {10, 11, 12}));
}

TEST(MatrixMathTest, IdentitySplitsIntoNothing) {
    const Matrix matrix = Rows({1, 0, 0}, {0, 1, 0}, {0, 0, 1});
    Triple position{9, 9, 9};
    Triple angles{9, 9, 9};
    Triple scale{};
    DecomposeMatrix(matrix.data(), position.data(), angles.data(), scale.data());
    EXPECT_EQ(position, (Triple{0, 0, 0}));
    EXPECT_EQ(angles, (Triple{0, 0, 0})); // -0 equals 0
    EXPECT_EQ(scale, (Triple{1, 1, 1}));
}

TEST(MatrixMathTest, AnglesAreTheNegativesOfTheFormulas) {
    ExpectNear(AnglesOf(TurnedAboutX30()), {30, 0, 0});
    ExpectNear(AnglesOf(Rows({kCos30, 0, -kSin30}, {0, 1, 0}, {kSin30, 0, kCos30})), {0, 30, 0});
    ExpectNear(AnglesOf(Rows({kCos30, kSin30, 0}, {-kSin30, kCos30, 0}, {0, 0, 1})), {0, 0, 30});
}

TEST(MatrixMathTest, PositionAndScaleComeFromRows) {
    Triple position{};
    Triple scale{};
    DecomposeMatrix(Rows({2, 0, 0}, {0, 3, 0}, {0, 0, 4}, {5, 6, 7}).data(), position.data(), nullptr,
                    scale.data());
    EXPECT_EQ(position, (Triple{5, 6, 7}));
    EXPECT_EQ(scale, (Triple{2, 3, 4}));
}

TEST(MatrixMathTest, MirroredMatrixGivesThreeNegativeScales) {
    Triple scale{};
    Triple angles{};
    DecomposeMatrix(Rows({-2, 0, 0}, {0, 3, 0}, {0, 0, 4}).data(), nullptr, angles.data(), scale.data());
    EXPECT_EQ(scale, (Triple{-2, -3, -4}));
    // What remains turns y and z over: half a turn about x.
    EXPECT_NEAR(std::abs(angles[0]), 180.0f, kTolerance);
}

TEST(MatrixMathTest, ShearedRightAxisIsCorrectedAgainstTheFullUpAxisAndNotMadeUnit) {
    // r0 - (r1 . r0) r1 = (1,0,0) - 1 * (1,2,0) = (0,-2,0), so z is atan2(1/sqrt 5, 0) = 90, negated.
    Triple scale{};
    Triple angles{};
    DecomposeMatrix(Rows({1, 0, 0}, {1, 2, 0}, {0, 0, 1}).data(), nullptr, angles.data(), scale.data());
    ExpectNear(scale, {1, std::sqrt(5.0f), 1});
    ExpectNear(angles, {0, 0, -90});
}

TEST(MatrixMathTest, LockedMiddleAngleGivesNoThirdAngle) {
    // forward = -x, so y = asin 1; x = atan2(right.y, up.y) = 30, both negated.
    ExpectNear(AnglesOf(Rows({0, kSin30, kCos30}, {0, kCos30, -kSin30}, {-1, 0, 0})), {-30, -90, 0});
}

TEST(MatrixMathTest, LockedMiddleAngleOfTheOtherSign) {
    // forward = +x, so y = asin -1; x = atan2(right.y, up.y) = 30, both negated.
    ExpectNear(AnglesOf(Rows({0, kSin30, -kCos30}, {0, kCos30, kSin30}, {1, 0, 0})), {-30, 90, 0});
}

TEST(MatrixMathTest, NearlyLockedMiddleAngleStillGivesAThirdAngle) {
    // The cosine of the middle angle is 1e-5: x = atan2(1e-5, 0), y = asin(-1) + 0.000573, z = atan2(0,
    // -1e-5).
    ExpectNear(AnglesOf(Rows({-1e-5f, 1, 0}, {0, 0, 1}, {1, 1e-5f, 0})), {-90, 89.999427f, -180});
}

TEST(MatrixMathTest, ShearedForwardAxisLosesWhatItSharesWithTheOthers) {
    // (3,4,5) - 3 right = (0,4,5), less 4 up = (0,0,5)
    Triple scale{};
    Triple angles{9, 9, 9};
    DecomposeMatrix(Rows({1, 0, 0}, {0, 1, 0}, {3, 4, 5}).data(), nullptr, angles.data(), scale.data());
    EXPECT_EQ(scale, (Triple{1, 1, 5}));
    EXPECT_EQ(angles, (Triple{0, 0, 0}));
}

TEST(MatrixMathTest, EveryResultMayBeLeftOut) {
    Matrix matrix = TurnedAboutX30();
    const Matrix before = matrix;
    DecomposeMatrix(matrix.data(), nullptr, nullptr, nullptr);
    DecomposeMatrixNear(matrix.data(), nullptr, nullptr, nullptr);
    EXPECT_EQ(matrix, before);
}

TEST(MatrixMathTest, RowsOfNoLengthGiveNoNaN) {
    Triple scale{9, 9, 9};
    Triple angles{9, 9, 9};
    DecomposeMatrix(Matrix{}.data(), nullptr, angles.data(), scale.data());
    EXPECT_EQ(scale, (Triple{0, 0, 0}));
    EXPECT_EQ(angles, (Triple{0, 0, 0}));
}

TEST(MatrixMathTest, NearSplitKeepsAnglesThatFitAlready) {
    ExpectNear(AnglesNear(Rows({1, 0, 0}, {0, 1, 0}, {0, 0, 1}), {0, 0, 0}), {0, 0, 0});
    ExpectNear(AnglesNear(Rows({1, 0, 0}, {0, 1, 0}, {0, 0, 1}), {360, 0, 0}), {360, 0, 0});
}

TEST(MatrixMathTest, NearSplitMovesEachAngleByASmallStep) {
    ExpectNear(AnglesNear(TurnedAboutX30(), {20, 0, 0}), {30, 0, 0});
    ExpectNear(AnglesNear(TurnedAboutX30(), {380, 0, 0}), {390, 0, 0});
    ExpectNear(AnglesNear(Rows({kCos30, kSin30, 0}, {-kSin30, kCos30, 0}, {0, 0, 1}), {0, 0, 40}),
               {0, 0, 30});
    ExpectNear(AnglesNear(Rows({kCos30, 0, -kSin30}, {0, 1, 0}, {kSin30, 0, kCos30}), {0, 10, 0}),
               {0, 30, 0});
}

TEST(MatrixMathTest, NearSplitFromMoreThan90DegreesOffLandsOnTheOtherBranch) {
    // 30 - 200 = -170, and the arc tangent turns it into +10.
    ExpectNear(AnglesNear(TurnedAboutX30(), {200, 0, 0}), {210, 0, 0});
}

TEST(MatrixMathTest, NearSplitFromExactly90DegreesOffStepsBy45) {
    ExpectNear(AnglesNear(TurnedAboutX30(), {120, 0, 0}), {165, 0, 0}); // q = sin 90 > 0
}

TEST(MatrixMathTest, NearSplitStillSplitsPositionAndScaleWithoutAngles) {
    Triple position{};
    Triple scale{};
    DecomposeMatrixNear(Rows({2, 0, 0}, {0, 2, 0}, {0, 0, 2}, {1, 2, 3}).data(), position.data(), nullptr,
                        scale.data());
    EXPECT_EQ(position, (Triple{1, 2, 3}));
    EXPECT_EQ(scale, (Triple{2, 2, 2}));
}

TEST(MatrixMathTest, NearSplitFrom90DegreesOffBackwardsStepsBackBy45) {
    ExpectNear(AnglesNear(TurnedAboutX30(), {-60, 0, 0}), {-105, 0, 0}); // q = sin -90 < 0
}

TEST(MatrixMathTest, NearSplitOfTheThirdAngleHasTheSameEnds) {
    const Matrix aboutZ30 = Rows({kCos30, kSin30, 0}, {-kSin30, kCos30, 0}, {0, 0, 1});
    ExpectNear(AnglesNear(aboutZ30, {0, 0, 120}), {0, 0, 165});
    ExpectNear(AnglesNear(aboutZ30, {0, 0, -60}), {0, 0, -105});
}

TEST(MatrixMathTest, NearSplitAtARightAngleTakesTheSineAndNotTheCosine) {
    // x goes to 90, where r2.z / cos x would be 0 and leave y at 20; -r2.y / sin x = 1 brings it to 0.
    ExpectNear(AnglesNear(Rows({1, 0, 0}, {0, 0, 1}, {0, -1, 0}), {80, 20, 0}), {90, 0, 0});
}

TEST(MatrixMathTest, NearSplitInLockDriftsBy45) {
    // p and q are both 0 for x and for z: -45 each. w = 0, so y = 80 + asin(-cos 80) = 80 - 10.
    ExpectNear(AnglesNear(Rows({0, 0, 1}, {0, 1, 0}, {-1, 0, 0}), {10, 80, 0}), {-35, 70, -45});
}

TEST(MatrixMathTest, NearSplitMovesTheSecondAngleByARightAngleAtMost) {
    // From 90, x ends at 135: w = 0.8 / cos 135 = -1.131. At y = 60 the sine would be 0.6 / 2 + 1.131 * 0.866
    // = 1.28, at y = -120 it would be -1.28.
    const Matrix matrix = Rows({0.8f, 0, -0.6f}, {0, 1, 0}, {0.6f, 0, 0.8f});
    ExpectNear(AnglesNear(matrix, {90, 60, 0}), {135, 150, 0});
    ExpectNear(AnglesNear(matrix, {90, -120, 0}), {135, -210, 0});
}

TEST(MatrixMathTest, NearSplitOfAMirroredMatrixGivesThreeNegativeScales) {
    Triple scale{};
    Triple angles{180, 0, 0};
    DecomposeMatrixNear(Rows({-2, 0, 0}, {0, 3, 0}, {0, 0, 4}).data(), nullptr, angles.data(), scale.data());
    EXPECT_EQ(scale, (Triple{-2, -3, -4}));
    // What remains is half a turn about x, which the angles hold already.
    ExpectNear(angles, {180, 0, 0});
}
