#include "host/stage/host/ViewNavigation.h"

#include <cmath>
#include <glm/gtc/type_ptr.hpp>
#include <gtest/gtest.h>

using stage::ViewNavigation;

namespace {
void ExpectNear(const glm::vec3& got, const glm::vec3& wanted, float tolerance = 1e-4f) {
    EXPECT_NEAR(got.x, wanted.x, tolerance);
    EXPECT_NEAR(got.y, wanted.y, tolerance);
    EXPECT_NEAR(got.z, wanted.z, tolerance);
}

ViewNavigation Level() {
    ViewNavigation navigation;
    navigation.pivot = {0.0f, 0.0f, 0.0f};
    navigation.yaw = 0.0f;
    navigation.pitch = 0.0f;
    navigation.distance = 10.0f;
    return navigation;
}
} // namespace

TEST(ViewNavigationTest, AtZeroAnglesTheCameraLooksAlongMinusZ) {
    const ViewNavigation navigation = Level();
    ExpectNear(navigation.Forward(), {0.0f, 0.0f, -1.0f});
    ExpectNear(navigation.Right(), {1.0f, 0.0f, 0.0f});
    ExpectNear(navigation.Up(), {0.0f, 1.0f, 0.0f});
    ExpectNear(navigation.Eye(), {0.0f, 0.0f, 10.0f});
}

TEST(ViewNavigationTest, CameraMatrixHasRowTwoBackwards) {
    const ViewNavigation navigation = Level();
    const glm::mat4 matrix = navigation.CameraMatrix();
    ExpectNear(glm::vec3(matrix[2]), {0.0f, 0.0f, 1.0f});
    ExpectNear(glm::vec3(matrix[3]), {0.0f, 0.0f, 10.0f});
}

TEST(ViewNavigationTest, OrbitKeepsThePivotAndLookKeepsTheEye) {
    ViewNavigation orbit = Level();
    orbit.Orbit(100.0f, 50.0f);
    ExpectNear(orbit.pivot, {0.0f, 0.0f, 0.0f});
    EXPECT_NEAR(glm::length(orbit.Eye()), 10.0f, 1e-4f);

    ViewNavigation look = Level();
    look.Look(100.0f, 50.0f);
    ExpectNear(look.Eye(), {0.0f, 0.0f, 10.0f});
}

TEST(ViewNavigationTest, PitchStopsShortOfStraightUp) {
    ViewNavigation navigation = Level();
    navigation.Orbit(0.0f, -10000.0f);
    EXPECT_LT(navigation.pitch, 1.5708f);
    EXPECT_GT(navigation.Up().y, 0.0f);
}

TEST(ViewNavigationTest, PanMovesByTheHeightOfTheViewAtThePivot) {
    ViewNavigation navigation = Level();
    navigation.fieldOfView = 2.0f * std::atan(0.5f); // as high as it is far
    navigation.Pan(100.0f, 0.0f, 1000);
    ExpectNear(navigation.pivot, {-1.0f, 0.0f, 0.0f});
    navigation.Pan(0.0f, 100.0f, 1000);
    ExpectNear(navigation.pivot, {-1.0f, 1.0f, 0.0f});
}

TEST(ViewNavigationTest, PanInAViewWithoutHeightDoesNothing) {
    ViewNavigation navigation = Level();
    navigation.Pan(100.0f, 100.0f, 0);
    ExpectNear(navigation.pivot, {0.0f, 0.0f, 0.0f});
}

TEST(ViewNavigationTest, ZoomTowardsThePivotNeverReachesIt) {
    ViewNavigation navigation = Level();
    navigation.Zoom(1.0f);
    EXPECT_NEAR(navigation.distance, 8.8f, 1e-4f);
    navigation.Zoom(1000.0f);
    EXPECT_FLOAT_EQ(navigation.distance, 5.0f); // centimetres
    navigation.Zoom(-100000.0f);
    EXPECT_FLOAT_EQ(navigation.distance, 500000.0f); // 5 km
}

TEST(ViewNavigationTest, FlyMovesAlongTheCamerasAxes) {
    ViewNavigation navigation = Level();
    navigation.Fly({1.0f, 2.0f, 3.0f});
    ExpectNear(navigation.Eye(), {1.0f, 2.0f, 7.0f});
}

TEST(ViewNavigationTest, FocusShowsTheSphereWhole) {
    ViewNavigation navigation = Level();
    navigation.Focus({5.0f, 6.0f, 7.0f}, 200.0f);
    ExpectNear(navigation.pivot, {5.0f, 6.0f, 7.0f});
    EXPECT_NEAR(navigation.distance, 400.0f, 1e-2f); // radius over the sine of 30 degrees
}

TEST(ViewNavigationTest, FocusOnATrifleKeepsHalfAMetreAway) {
    ViewNavigation navigation = Level();
    navigation.Focus({5.0f, 6.0f, 7.0f}, 1.0f);
    EXPECT_NEAR(navigation.distance, 50.0f, 1e-3f); // as for a radius of 25
}

TEST(ViewNavigationTest, AFreshViewStandsEighteenMetresFromAPointAMetreUp) {
    const ViewNavigation navigation;
    ExpectNear(navigation.pivot, {0.0f, 100.0f, 0.0f});
    EXPECT_NEAR(glm::distance(navigation.Eye(), navigation.pivot), 1800.0f, 1e-2f);
}
