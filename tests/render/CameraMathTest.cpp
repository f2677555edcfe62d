#include "host/stage/render/CameraMath.h"

#include <glm/gtc/matrix_transform.hpp>
#include <glm/gtc/type_ptr.hpp>
#include <gtest/gtest.h>
#include <limits>

using render::MakeCamera;
using render::ProjectToPixel;
using render::RayThroughPixel;
using render::RenderCamera;
using render::UnitsPerPixel;
using render::ViewRay;

namespace {

/// At (0, 0, 10), looking along -z, 90 degrees high, twice as wide as high.
RenderCamera Straight() {
    const float matrix[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 10, 1};
    return MakeCamera(matrix, glm::radians(90.0f), 2.0f, 0.1f, 100.0f);
}

TEST(CameraMathTest, TheMiddlePixelLooksStraightAhead) {
    const ViewRay ray = RayThroughPixel(Straight(), 200, 100, 100, 50);
    EXPECT_NEAR(ray.direction.x, 0.0f, 1e-5f);
    EXPECT_NEAR(ray.direction.y, 0.0f, 1e-5f);
    EXPECT_NEAR(ray.direction.z, -1.0f, 1e-5f);
    EXPECT_NEAR(ray.origin.z, 9.9f, 1e-4f) << "rays start on the near plane";
}

TEST(CameraMathTest, TheUpperEdgeLooksUpByHalfTheAngle) {
    const ViewRay ray = RayThroughPixel(Straight(), 200, 100, 100, 0);
    EXPECT_NEAR(ray.direction.y, 0.70710678f, 1e-4f);
    EXPECT_NEAR(ray.direction.z, -0.70710678f, 1e-4f);
}

// A quarter from the right and from above: half the angle's tangent, 1, makes that 1 to the right, as the
// picture is twice as wide as high, and 0.5 up, 1 ahead. That is 1.5 long.

TEST(CameraMathTest, ARayFromTheEyeStartsAtTheEye) {
    const float matrix[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 10, 1};
    const ViewRay ray = render::RayFromEye(glm::make_mat4(matrix), glm::radians(90.0f), 200, 100, 150, 25);
    EXPECT_EQ(ray.origin, glm::vec3(0, 0, 10));
    EXPECT_NEAR(ray.direction.x, 2.0f / 3.0f, 1e-6f);
    EXPECT_NEAR(ray.direction.y, 1.0f / 3.0f, 1e-6f);
    EXPECT_NEAR(ray.direction.z, -2.0f / 3.0f, 1e-6f);
}

TEST(CameraMathTest, ARayFromTheEyeTurnsWithTheCamera) {
    // To the left: right is -z, ahead -x.
    const float matrix[16] = {0, 0, -1, 0, 0, 1, 0, 0, 1, 0, 0, 0, 5, 6, 7, 1};
    const ViewRay ray = render::RayFromEye(glm::make_mat4(matrix), glm::radians(90.0f), 200, 100, 150, 25);
    EXPECT_EQ(ray.origin, glm::vec3(5, 6, 7));
    EXPECT_NEAR(ray.direction.x, -2.0f / 3.0f, 1e-6f);
    EXPECT_NEAR(ray.direction.y, 1.0f / 3.0f, 1e-6f);
    EXPECT_NEAR(ray.direction.z, -2.0f / 3.0f, 1e-6f);
}

TEST(CameraMathTest, ARayThroughAPixelIsTheEyesFromTheNearPlaneOn) {
    const ViewRay ray = RayThroughPixel(Straight(), 200, 100, 150, 25);
    EXPECT_NEAR(ray.origin.x, 0.1f, 1e-4f);
    EXPECT_NEAR(ray.origin.y, 0.05f, 1e-4f);
    EXPECT_NEAR(ray.origin.z, 9.9f, 1e-4f);
    EXPECT_NEAR(ray.direction.x, 2.0f / 3.0f, 1e-5f);
    EXPECT_NEAR(ray.direction.y, 1.0f / 3.0f, 1e-5f);
    EXPECT_NEAR(ray.direction.z, -2.0f / 3.0f, 1e-5f);
}

TEST(CameraMathTest, APixelCoversMoreFartherAway) {
    EXPECT_NEAR(UnitsPerPixel(10.0f, glm::radians(90.0f), 100), 0.2f, 1e-6f); // 20 units high
    EXPECT_NEAR(UnitsPerPixel(50.0f, glm::radians(90.0f), 100), 1.0f, 1e-6f);
    EXPECT_EQ(UnitsPerPixel(-10.0f, glm::radians(90.0f), 100), 0.0f);
}

TEST(CameraMathTest, ProjectionIsTheWayBack) {
    const RenderCamera camera = Straight();
    glm::vec3 pixel;
    // 10 in front and 10 above is 45 degrees up: the upper edge.
    ASSERT_TRUE(ProjectToPixel(camera, 200, 100, {0, 10, 0}, pixel));
    EXPECT_NEAR(pixel.x, 100.0f, 1e-3f);
    EXPECT_NEAR(pixel.y, 0.0f, 1e-3f);
    // 20 to the right is 20/10/2 of half the width.
    ASSERT_TRUE(ProjectToPixel(camera, 200, 100, {20, 0, 0}, pixel));
    EXPECT_NEAR(pixel.x, 200.0f, 1e-3f);
    EXPECT_FALSE(ProjectToPixel(camera, 200, 100, {0, 0, 11}, pixel));
}

TEST(CameraMathTest, MissingPlanesAreTenCentimetresAndAKilometre) {
    const float matrix[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
    const RenderCamera camera = MakeCamera(matrix, 1.0f, 1.0f, kNan, kNan);
    glm::vec3 pixel;
    ASSERT_TRUE(ProjectToPixel(camera, 100, 100, {0, 0, -10}, pixel));
    EXPECT_NEAR(pixel.z, -1.0f, 1e-4f);
    ASSERT_TRUE(ProjectToPixel(camera, 100, 100, {0, 0, -100000}, pixel));
    EXPECT_NEAR(pixel.z, 1.0f, 1e-4f);
    // No nearer than a millimetre: below, depth has no digits left.
    ASSERT_TRUE(
        ProjectToPixel(MakeCamera(matrix, 1.0f, 1.0f, 0.0f, 1000.0f), 100, 100, {0, 0, -0.1f}, pixel));
    EXPECT_NEAR(pixel.z, -1.0f, 1e-4f);
}

TEST(CameraMathTest, NumbersOutOfRangeGiveAUsableCamera) {
    const float matrix[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
    for (const RenderCamera& camera :
         {MakeCamera(matrix, 0.0f, 1.0f, 0.1f, 100.0f), MakeCamera(matrix, 9.0f, 1.0f, 0.1f, 100.0f),
          MakeCamera(matrix, kNan, kNan, kNan, kNan), MakeCamera(matrix, 1.0f, 1.0f, 0.0f, 0.0f),
          MakeCamera(matrix, 1.0f, 1.0f, 5.0f, 1.0f)}) {
        for (int c = 0; c < 4; ++c) {
            for (int r = 0; r < 4; ++r) {
                EXPECT_TRUE(std::isfinite(camera.projection[c][r]));
            }
        }
        EXPECT_NE(glm::determinant(camera.projection), 0.0f);
    }
}

} // namespace
