#include "host/engine/BezierCurve.h"

#include <gtest/gtest.h>

namespace {

using engine::CurvePoint;
using engine::InControl;
using engine::MakeSegment;
using engine::OutControl;

CurvePoint<1> Point(float time, float value, int method) {
    CurvePoint<1> point;
    point.time = time;
    point.value[0] = value;
    point.inMethod = method;
    point.outMethod = method;
    return point;
}

float At(const engine::CurveSegment<1>& segment, float time) {
    float value = 0.0f;
    segment.Evaluate(time, &value);
    return value;
}

/// A row of the table: both keys with this method, values 0 and 12 over 2 seconds, without neighbours.
struct MethodRow {
    const char* name;
    int method;
    float out;     ///< control point behind the first key
    float in;      ///< control point in front of the second
    float quarter; ///< value at u = 1/4: 27/64 out + 9/64 in + 1/64 * 12 times, see below
};

class MethodTest : public ::testing::TestWithParam<MethodRow> {};

// B(1/4) = 27/64 * 0 + 27/64 * out + 9/64 * in + 1/64 * 12.
INSTANTIATE_TEST_SUITE_P(AllMethods, MethodTest,
                         ::testing::Values(MethodRow{"Smooth", 0, 4.0f, 8.0f, 3.0f},
                                           MethodRow{"Linear", 1, 4.0f, 8.0f, 3.0f},
                                           MethodRow{"Slowdown", 2, 0.0f, 12.0f, 1.875f},
                                           MethodRow{"Speedup", 3, 8.0f, 4.0f, 4.125f},
                                           MethodRow{"User", 4, 6.0f, 7.0f, 3.703125f},
                                           MethodRow{"Inverse", 5, 4.0f, 8.0f, 3.0f},
                                           MethodRow{"Unknown", 17, 4.0f, 8.0f, 3.0f}),
                         [](const auto& row) { return row.param.name; });

TEST_P(MethodTest, ShapesTheSegmentBetweenTwoKeys) {
    CurvePoint<1> a = Point(1.0f, 0.0f, GetParam().method);
    CurvePoint<1> b = Point(3.0f, 12.0f, GetParam().method);
    a.out[0] = 6.0f;
    b.in[0] = 7.0f;
    float control = 0.0f;
    OutControl<1>(nullptr, a, &b, &control);
    EXPECT_FLOAT_EQ(control, GetParam().out);
    InControl<1>(&a, b, nullptr, &control);
    EXPECT_FLOAT_EQ(control, GetParam().in);

    const auto segment = MakeSegment<1>(nullptr, a, b, nullptr);
    EXPECT_FLOAT_EQ(At(segment, 1.0f), 0.0f);
    EXPECT_NEAR(At(segment, 1.5f), GetParam().quarter, 1e-5f);
    EXPECT_TRUE(segment.Holds(1.0f));
    EXPECT_TRUE(segment.Holds(2.999f));
    EXPECT_FALSE(segment.Holds(3.0f));
}

TEST(BezierCurveTest, SmoothTakesTheVelocityOfUnevenNeighbours) {
    // Slopes 2 over one second and 5 over two: (2 * 2 + 5 * 1) / 3 = 3 a second.
    const auto before = Point(0.0f, 0.0f, BezierMethod::Smooth);
    const auto key = Point(1.0f, 2.0f, BezierMethod::Smooth);
    const auto after = Point(3.0f, 12.0f, BezierMethod::Smooth);
    float control = 0.0f;
    OutControl<1>(&before, key, &after, &control);
    EXPECT_FLOAT_EQ(control, 2.0f + 3.0f * 2.0f / 3.0f);
    InControl<1>(&before, key, &after, &control);
    EXPECT_FLOAT_EQ(control, 2.0f - 3.0f * 1.0f / 3.0f);
}

TEST(BezierCurveTest, SmoothLetsKeysAtOneTimeCountAsNoNeighbour) {
    const auto before = Point(1.0f, 50.0f, BezierMethod::Smooth);
    const auto key = Point(1.0f, 2.0f, BezierMethod::Smooth);
    const auto after = Point(2.0f, 5.0f, BezierMethod::Smooth);
    float control = 0.0f;
    OutControl<1>(&before, key, &after, &control);
    EXPECT_FLOAT_EQ(control, 3.0f); // 2 + slope 3 * 1 / 3
}

TEST(BezierCurveTest, InverseMirrorsTheOtherSideAboutTheKey) {
    const auto before = Point(0.0f, 0.0f, BezierMethod::Linear);
    auto key = Point(1.0f, 6.0f, BezierMethod::Speedup);
    const auto after = Point(2.0f, 100.0f, BezierMethod::Linear);
    key.outMethod = BezierMethod::Inverse;
    float control = 0.0f;
    // In: two thirds of the way back from 6 to 0 is 2. Mirrored about 6: 10.
    OutControl<1>(&before, key, &after, &control);
    EXPECT_FLOAT_EQ(control, 10.0f);

    key.inMethod = BezierMethod::Inverse;
    key.outMethod = BezierMethod::User;
    key.out[0] = 7.5f;
    InControl<1>(&before, key, &after, &control);
    EXPECT_FLOAT_EQ(control, 4.5f);
}

TEST(BezierCurveTest, InverseAgainstAnEndOfTheCurveIsSmoothButMirrorsAUserHandle) {
    auto key = Point(1.0f, 6.0f, BezierMethod::Linear);
    const auto after = Point(4.0f, 12.0f, BezierMethod::Linear);
    key.outMethod = BezierMethod::Inverse;
    float control = 0.0f;
    OutControl<1>(nullptr, key, &after, &control);
    EXPECT_FLOAT_EQ(control, 8.0f); // slope 2 a second, 3 seconds, a third of it
    key.inMethod = BezierMethod::User;
    key.in[0] = 5.0f;
    OutControl<1>(nullptr, key, &after, &control);
    EXPECT_FLOAT_EQ(control, 7.0f);
}

TEST(BezierCurveTest, SmoothSegmentFromKnotsIsThatOfSmoothKeys) {
    const float times[] = {0.0f, 1.0f, 3.0f, 3.5f};
    const float values[] = {0.0f, 2.0f, 12.0f, 4.0f};
    CurvePoint<1> points[4];
    engine::CurveKnot<1> knots[4];
    for (int i = 0; i < 4; ++i) {
        points[i] = Point(times[i], values[i], BezierMethod::Smooth);
        knots[i] = {times[i], {values[i]}};
    }
    // Velocities 3 at the second key and (5 * 0.5 - 16 * 2) / 2.5 = -11.8 at the third: control points 4 and
    // 12 + 11.8 * 2/3, so the middle is (2 + 3 * 4 + 3 * 19.8666667 + 12) / 8.
    const auto inside = engine::MakeSmoothSegment(&knots[0], knots[1], knots[2], &knots[3]);
    EXPECT_NEAR(At(inside, 2.0f), 10.7f, 1e-5f);
    EXPECT_NEAR(At(MakeSegment(&points[0], points[1], points[2], &points[3]), 2.0f), 10.7f, 1e-5f);
    const auto alone = engine::MakeSmoothSegment<1>(nullptr, knots[1], knots[2], nullptr);
    EXPECT_NEAR(At(alone, 2.0f), 7.0f, 1e-5f);
}

TEST(BezierCurveTest, SidesOfOneSegmentMayDiffer) {
    auto a = Point(0.0f, 0.0f, BezierMethod::Slowdown);
    auto b = Point(1.0f, 8.0f, BezierMethod::Linear);
    const auto segment = MakeSegment<1>(nullptr, a, b, nullptr);
    // Control points 0, 0, 16/3, 8: B(1/2) = (0 + 0 + 3 * 16/3 + 8) / 8 = 3.
    EXPECT_FLOAT_EQ(At(segment, 0.5f), 3.0f);
}

TEST(BezierCurveTest, SegmentWithoutTimeStaysAtItsFirstKey) {
    const auto a = Point(1.0f, 3.0f, BezierMethod::Linear);
    const auto b = Point(1.0f, 9.0f, BezierMethod::Linear);
    EXPECT_FLOAT_EQ(At(MakeSegment<1>(nullptr, a, b, nullptr), 1.0f), 3.0f);
}

TEST(BezierCurveTest, FreshSegmentHoldsNoTime) {
    const engine::CurveSegment<3> segment;
    EXPECT_FALSE(segment.Holds(0.0f));
    EXPECT_FALSE(segment.Holds(std::numeric_limits<float>::infinity()));
}

TEST(BezierCurveTest, ComponentsAreIndependent) {
    CurvePoint<3> a;
    CurvePoint<3> b;
    b.time = 1.0f;
    b.value[0] = 3.0f;
    b.value[2] = -6.0f;
    a.outMethod = b.inMethod = BezierMethod::Linear;
    float value[3];
    MakeSegment<3>(nullptr, a, b, nullptr).Evaluate(1.0f / 3.0f, value);
    EXPECT_NEAR(value[0], 1.0f, 1e-6f);
    EXPECT_NEAR(value[1], 0.0f, 1e-6f);
    EXPECT_NEAR(value[2], -2.0f, 1e-6f);
}

} // namespace
