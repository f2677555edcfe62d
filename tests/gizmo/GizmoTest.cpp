#include "host/stage/gizmo/Gizmo.h"

#include "host/stage/gizmo/GizmoGeometry.h"
#include "host/stage/gizmo/GizmoLines.h"

#include <glm/gtc/matrix_transform.hpp>
#include <gtest/gtest.h>
#include <limits>

namespace GizmoGeometry = gizmo::GizmoGeometry;
using gizmo::GizmoLines;
using gizmo::GizmoMode;
using gizmo::GizmoPart;
using render::ViewRay;

namespace {

/// The camera stands at (0, 0, 10) and looks along -z with an angle of 90 degrees, so the gizmo at the origin
/// is 10 * 1 * 0.24 = 2.4 units long. Rays run straight along -z unless told otherwise.
class GizmoTest : public testing::Test {
protected:
    GizmoTest() {
        camera.view = glm::lookAt(glm::vec3(0, 0, 10), glm::vec3(0, 0, 0), glm::vec3(0, 1, 0));
        camera.projection = glm::perspective(glm::radians(90.0f), 1.0f, 0.1f, 100.0f);
        gizmo.ShowAt({0, 0, 0});
    }

    static ViewRay Down(float x, float y) { return {{x, y, 10}, {0, 0, -1}}; }
    GizmoPart Hit(float x, float y) { return gizmo.HitTest(Down(x, y), camera); }
    bool Begin(GizmoPart part, float x, float y) { return gizmo.BeginDrag(part, Down(x, y), camera); }
    glm::vec3 Moved(float x, float y, bool snap = false) {
        return glm::vec3(gizmo.UpdateDrag(Down(x, y), snap) * glm::vec4(0, 0, 0, 1));
    }

    static void ExpectNear(const glm::vec3& actual, const glm::vec3& expected) {
        EXPECT_NEAR(actual.x, expected.x, 1e-4f);
        EXPECT_NEAR(actual.y, expected.y, 1e-4f);
        EXPECT_NEAR(actual.z, expected.z, 1e-4f);
    }

    render::RenderCamera camera;
    gizmo::Gizmo gizmo;
};

TEST_F(GizmoTest, ItsSizeOnTheScreenDoesNotDependOnDistance) {
    EXPECT_NEAR(gizmo.Size(camera), 2.4f, 1e-4f);
    gizmo.ShowAt({0, 0, -10});
    EXPECT_NEAR(gizmo.Size(camera), 4.8f, 1e-4f);
}

TEST_F(GizmoTest, AxesAndPlanesAreHitWhereTheyAre) {
    EXPECT_EQ(Hit(1.8f, 0.0f), GizmoPart::AxisX);
    EXPECT_EQ(Hit(0.0f, 1.8f), GizmoPart::AxisY);
    EXPECT_EQ(Hit(0.9f, 0.9f), GizmoPart::PlaneXY);
    EXPECT_EQ(Hit(1.8f, 1.8f), GizmoPart::None);
    EXPECT_EQ(Hit(-1.8f, 0.0f), GizmoPart::None);
    EXPECT_EQ(Hit(2.7f, 0.0f), GizmoPart::None);
}

TEST_F(GizmoTest, CirclesAreHitInRotateMode) {
    gizmo.SetMode(GizmoMode::Rotate);
    EXPECT_EQ(Hit(1.697f, 1.697f), GizmoPart::AxisZ) << "2.4 from the middle, between the other circles";
    EXPECT_EQ(Hit(0.9f, 0.9f), GizmoPart::None);
}

TEST_F(GizmoTest, TheMiddleScalesAllAxes) {
    gizmo.SetMode(GizmoMode::Scale);
    EXPECT_EQ(Hit(0.0f, 0.0f), GizmoPart::Uniform);
    EXPECT_EQ(Hit(0.9f, 0.9f), GizmoPart::None) << "no planes in this mode";
}

TEST_F(GizmoTest, HiddenAndDraggedGizmosAreNotHit) {
    gizmo.Hide();
    EXPECT_EQ(Hit(1.8f, 0.0f), GizmoPart::None);
    EXPECT_FALSE(Begin(GizmoPart::AxisX, 1.8f, 0.0f));
    gizmo.ShowAt({0, 0, 0});
    ASSERT_TRUE(Begin(GizmoPart::AxisX, 1.8f, 0.0f));
    EXPECT_EQ(Hit(1.8f, 0.0f), GizmoPart::None);
}

TEST_F(GizmoTest, AnAxisDragMovesAlongTheAxisAlone) {
    ASSERT_TRUE(Begin(GizmoPart::AxisX, 1.5f, 0.0f));
    ExpectNear(Moved(4.0f, 3.0f), {2.5f, 0, 0});
    ExpectNear(Moved(0.5f, -7.0f), {-1.0f, 0, 0});
}

TEST_F(GizmoTest, AnAxisDragFollowsASlantedSight) {
    ASSERT_TRUE(Begin(GizmoPart::AxisX, 1.0f, 0.0f));
    // From (0, 0, 10) towards (5, 0, 0): meets the axis at 5.
    const ViewRay ray{{0, 0, 10}, glm::normalize(glm::vec3(5, 0, -10))};
    ExpectNear(glm::vec3(gizmo.UpdateDrag(ray, false)[3]), {4, 0, 0});
}

TEST_F(GizmoTest, APlaneDragMovesAlongBothItsAxes) {
    ASSERT_TRUE(Begin(GizmoPart::PlaneXY, 1.0f, 1.0f));
    ExpectNear(Moved(3.0f, 0.5f), {2.0f, -0.5f, 0});
}

TEST_F(GizmoTest, SnappingKeepsToWholeSteps) {
    gizmo.snapping.units = 0.5f;
    ASSERT_TRUE(Begin(GizmoPart::PlaneXY, 1.0f, 1.0f));
    ExpectNear(Moved(2.3f, 1.2f, /*snap*/ true), {1.5f, 0.0f, 0});
    ExpectNear(Moved(2.3f, 1.2f, /*snap*/ false), {1.3f, 0.2f, 0});
}

TEST_F(GizmoTest, MovesSnapToQuartersOfAMetre) {
    ASSERT_TRUE(Begin(GizmoPart::AxisX, 1.0f, 0.0f));
    ExpectNear(Moved(41.0f, 0.0f, /*snap*/ true), {50, 0, 0}); // 40 lies nearer to 50 than to 25
    ExpectNear(Moved(31.0f, 0.0f, /*snap*/ true), {25, 0, 0});
}

TEST_F(GizmoTest, NearerThanFiveCentimetresItShrinksNoMore) {
    gizmo.ShowAt({0, 0, 9});
    EXPECT_NEAR(gizmo.Size(camera), 5.0f * 0.24f, 1e-4f);
}

TEST_F(GizmoTest, ATurnIsTheAngleBetweenThePresses) {
    gizmo.SetMode(GizmoMode::Rotate);
    ASSERT_TRUE(Begin(GizmoPart::AxisZ, 2.4f, 0.0f));
    const glm::mat4 quarter = gizmo.UpdateDrag(Down(0.0f, 5.0f), false);
    ExpectNear(glm::vec3(quarter * glm::vec4(1, 0, 0, 1)), {0, 1, 0});
    // 50 degrees is nearest to 45.
    const float angle = glm::radians(50.0f);
    const glm::mat4 snapped = gizmo.UpdateDrag(Down(std::cos(angle), std::sin(angle)), true);
    ExpectNear(glm::vec3(snapped * glm::vec4(1, 0, 0, 1)), {0.70710678f, 0.70710678f, 0});
}

TEST_F(GizmoTest, TurnsAndScalesKeepThePlace) {
    gizmo.ShowAt({3, 1, 0});
    gizmo.SetMode(GizmoMode::Rotate);
    ASSERT_TRUE(Begin(GizmoPart::AxisZ, 5.0f, 1.0f));
    ExpectNear(glm::vec3(gizmo.UpdateDrag(Down(3.0f, 4.0f), false) * glm::vec4(3, 1, 0, 1)), {3, 1, 0});
    gizmo.EndDrag();
    gizmo.SetMode(GizmoMode::Scale);
    ASSERT_TRUE(Begin(GizmoPart::AxisX, 5.0f, 1.0f));
    ExpectNear(glm::vec3(gizmo.UpdateDrag(Down(7.0f, 1.0f), false) * glm::vec4(3, 1, 0, 1)), {3, 1, 0});
}

TEST_F(GizmoTest, ScalingIsTheRatioOfTheDistances) {
    gizmo.SetMode(GizmoMode::Scale);
    gizmo.ShowAt({0, 0, 0});
    ASSERT_TRUE(Begin(GizmoPart::AxisX, 2.0f, 0.0f));
    const glm::mat4 wide = gizmo.UpdateDrag(Down(3.0f, 0.0f), false);
    ExpectNear(glm::vec3(wide * glm::vec4(2, 1, 1, 1)), {3, 1, 1});
    const glm::mat4 through = gizmo.UpdateDrag(Down(-3.0f, 0.0f), false);
    EXPECT_GT(through[0][0], 0.0f) << "never mirrored and never flat";
}

TEST_F(GizmoTest, UniformScalingGrowsUpAndRight) {
    gizmo.SetMode(GizmoMode::Scale);
    ASSERT_TRUE(Begin(GizmoPart::Uniform, 0.0f, 0.0f));
    // 2.4 to the upper right along the diagonal is one size of the gizmo: twice as large.
    const float step = 2.4f * 0.70710678f;
    const glm::mat4 twice = gizmo.UpdateDrag(Down(step, step), false);
    ExpectNear(glm::vec3(twice * glm::vec4(1, 1, 1, 1)), {2, 2, 2});
}

TEST_F(GizmoTest, ItsAxesAreThoseOfTheFrame) {
    gizmo.Show(glm::rotate(glm::mat4(1.0f), glm::radians(90.0f), glm::vec3(0, 0, 1)) *
               glm::scale(glm::mat4(1.0f), glm::vec3(7.0f)));
    EXPECT_EQ(Hit(0.0f, 1.8f), GizmoPart::AxisX) << "x points up now";
    ASSERT_TRUE(Begin(GizmoPart::AxisX, 0.0f, 1.0f));
    ExpectNear(Moved(5.0f, 3.0f), {0, 2, 0});
}

TEST_F(GizmoTest, FlatFramesFallBackToTheWorldsAxes) {
    gizmo.Show(glm::scale(glm::mat4(1.0f), glm::vec3(0.0f)));
    EXPECT_TRUE(gizmo.IsShown());
    EXPECT_EQ(Hit(1.8f, 0.0f), GizmoPart::AxisX);
    gizmo.ShowAt(glm::vec3(std::numeric_limits<float>::quiet_NaN()));
    EXPECT_FALSE(gizmo.IsShown());
}

TEST_F(GizmoTest, EndingLeavesTheGizmoWhereItWasDragged) {
    ASSERT_TRUE(Begin(GizmoPart::AxisX, 1.5f, 0.0f));
    Moved(3.5f, 0.0f);
    gizmo.EndDrag();
    EXPECT_FALSE(gizmo.IsDragging());
    EXPECT_EQ(Hit(3.8f, 0.0f), GizmoPart::AxisX);
}

TEST_F(GizmoTest, CancellingPutsItBack) {
    ASSERT_TRUE(Begin(GizmoPart::AxisX, 1.5f, 0.0f));
    Moved(3.5f, 0.0f);
    gizmo.CancelDrag();
    EXPECT_FALSE(gizmo.IsDragging());
    EXPECT_EQ(Hit(1.8f, 0.0f), GizmoPart::AxisX);
    ExpectNear(Moved(9.0f, 0.0f), {0, 0, 0});
}

TEST_F(GizmoTest, ASightAlongTheAxisTellsNothing) {
    EXPECT_FALSE(Begin(GizmoPart::AxisZ, 0.0f, 0.0f));
    EXPECT_FALSE(gizmo.IsDragging());
    ASSERT_TRUE(Begin(GizmoPart::AxisX, 1.0f, 0.0f));
    Moved(2.0f, 0.0f);
    const ViewRay along{{-20, 0, 0}, {1, 0, 0}};
    ExpectNear(glm::vec3(gizmo.UpdateDrag(along, false)[3]), {1, 0, 0});
}

TEST_F(GizmoTest, ASightAwayFromThePlaneKeepsTheLastMatrix) {
    ASSERT_TRUE(Begin(GizmoPart::PlaneXY, 1.0f, 1.0f));
    Moved(2.0f, 1.0f);
    const ViewRay away{{0, 0, 10}, {0, 0, 1}};
    ExpectNear(glm::vec3(gizmo.UpdateDrag(away, false)[3]), {1, 0, 0});
}

TEST_F(GizmoTest, NothingChangesUnderADrag) {
    ASSERT_TRUE(Begin(GizmoPart::AxisX, 1.5f, 0.0f));
    gizmo.SetMode(GizmoMode::Rotate);
    gizmo.ShowAt({50, 50, 50});
    EXPECT_EQ(gizmo.Mode(), GizmoMode::Translate);
    EXPECT_FALSE(Begin(GizmoPart::AxisY, 0.0f, 1.5f));
    ExpectNear(Moved(2.5f, 0.0f), {1, 0, 0});
}

TEST_F(GizmoTest, PartsOfOtherModesCanNotBeDragged) {
    EXPECT_FALSE(Begin(GizmoPart::Uniform, 0.0f, 0.0f));
    EXPECT_FALSE(Begin(GizmoPart::None, 0.0f, 0.0f));
    gizmo.SetMode(GizmoMode::Rotate);
    EXPECT_FALSE(Begin(GizmoPart::PlaneXY, 1.0f, 1.0f));
}

TEST_F(GizmoTest, HidingEndsADrag) {
    ASSERT_TRUE(Begin(GizmoPart::AxisX, 1.5f, 0.0f));
    gizmo.Hide();
    EXPECT_FALSE(gizmo.IsDragging());
}

TEST_F(GizmoTest, ItIsDrawnInItsModeAndFollowsTheDrag) {
    std::vector<render::RenderLine> lines;
    GizmoLines::Append(gizmo, camera, GizmoPart::AxisX, lines);
    ASSERT_FALSE(lines.empty());
    EXPECT_NEAR(lines[0].to.x, 2.4f, 1e-4f) << "the x axis first";
    const glm::vec4 hot = lines[0].color;
    std::vector<render::RenderLine> cold;
    GizmoLines::Append(gizmo, camera, GizmoPart::None, cold);
    EXPECT_NE(cold[0].color, hot);
    ASSERT_TRUE(Begin(GizmoPart::AxisX, 1.5f, 0.0f));
    Moved(3.5f, 0.0f);
    lines.clear();
    GizmoLines::Append(gizmo, camera, GizmoPart::None, lines);
    EXPECT_NEAR(lines[0].to.x, 4.4f, 1e-4f);
    EXPECT_EQ(lines[0].color, hot) << "what is gripped is bright";
    gizmo.Hide();
    lines.clear();
    GizmoLines::Append(gizmo, camera, GizmoPart::None, lines);
    EXPECT_TRUE(lines.empty());
}

TEST(GizmoGeometryTest, DistancesFromALineOfSight) {
    const ViewRay ray{{0, 0, 10}, {0, 0, -1}};
    EXPECT_FLOAT_EQ(GizmoGeometry::DistanceToPoint(ray, {3, 4, 0}), 5.0f);
    EXPECT_FLOAT_EQ(GizmoGeometry::DistanceToPoint(ray, {0, 0, 12}), 2.0f) << "nothing behind the eye";
    EXPECT_FLOAT_EQ(GizmoGeometry::DistanceToSegment(ray, {2, -1, 0}, {2, 1, 0}), 2.0f);
    EXPECT_FLOAT_EQ(GizmoGeometry::DistanceToSegment(ray, {3, 4, 0}, {6, 8, 0}), 5.0f) << "beyond its end";
    EXPECT_FLOAT_EQ(GizmoGeometry::DistanceToSegment(ray, {1, 0, 5}, {1, 0, -5}), 1.0f) << "along the sight";
}

} // namespace
