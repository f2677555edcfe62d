#include "host/stage/host/StageView.h"

#include <cmath>
#include <cstring>
#include <gtest/gtest.h>

using stage::StageView;
using stage::StageViews;
using stage::ViewNavigation;

class StageViewTest : public ::testing::Test {
protected:
    StageViewTest() {
        view.Resize(200, 100);
        view.navigation.LookAt({0.0f, 0.0f, 10.0f}, {0.0f, 0.0f, 0.0f});
        view.ApplyNavigation();
    }
    engine::View engineView;
    StageView view{engineView};
};

TEST_F(StageViewTest, TheRayThroughTheMiddleIsTheLineOfSight) {
    const render::ViewRay ray = view.RayAt(100.0f, 50.0f);
    EXPECT_NEAR(ray.origin.z, 10.0f, 1e-4f);
    EXPECT_NEAR(ray.direction.z, -1.0f, 1e-4f);
}

TEST_F(StageViewTest, ProjectionAndRayAgree) {
    const render::ViewRay ray = view.RayAt(30.0f, 20.0f);
    glm::vec2 pixel;
    ASSERT_TRUE(view.Project(ray.origin + ray.direction * 7.0f, pixel));
    EXPECT_NEAR(pixel.x, 30.0f, 1e-2f);
    EXPECT_NEAR(pixel.y, 20.0f, 1e-2f);
}

TEST_F(StageViewTest, APointBehindTheCameraHasNoPixel) {
    glm::vec2 pixel;
    EXPECT_FALSE(view.Project({0.0f, 0.0f, 20.0f}, pixel));
}

TEST_F(StageViewTest, UsersCameraStaysOutOfAViewThatAPluginHolds) {
    view.attachedTo = 1;
    engineView.camera->data.matrices[0][14] = 42.0f;
    view.navigation.LookAt({0.0f, 0.0f, 5.0f}, {0.0f, 0.0f, 0.0f});
    view.ApplyNavigation();
    EXPECT_FLOAT_EQ(engineView.CameraMatrix()[14], 42.0f);
    view.attachedTo = 0;
    view.ApplyNavigation();
    EXPECT_FLOAT_EQ(engineView.CameraMatrix()[14], 5.0f);
}

TEST_F(StageViewTest, ProjectionKeepsTheViewsOwnAspect) {
    view.Resize(300, 100);
    engineView.camera->data.aspect = 1.0f; // as a copied film camera brings it
    engineView.SetProjection(1.0f, 0.5f, 50.0f, 0);
    EXPECT_FLOAT_EQ(view.FieldOfView(), 1.0f);
    const glm::mat4 projection = view.ProjectionMatrix();
    EXPECT_NEAR(projection[1][1] / projection[0][0], 3.0f, 1e-5f);
    EXPECT_NEAR(projection[1][1], 1.0f / std::tan(0.5f), 1e-5f);
}

TEST_F(StageViewTest, TheUsersCameraShowsFromTenCentimetresToAKilometre) {
    EXPECT_FLOAT_EQ(engineView.camera->data.recordNear, 10.0f);
    EXPECT_FLOAT_EQ(engineView.camera->data.recordFar, 100000.0f);
    const auto depthOf = [this](float distance) {
        const glm::vec4 clip = view.ProjectionMatrix() * glm::vec4(0.0f, 0.0f, -distance, 1.0f);
        return clip.z / clip.w;
    };
    EXPECT_NEAR(depthOf(10.0f), -1.0f, 1e-4f);
    EXPECT_NEAR(depthOf(100000.0f), 1.0f, 1e-4f);
    engineView.SetProjection(1.0f, -1.0f, 5.0f, 0); // planes that show nothing
    EXPECT_NEAR(depthOf(10.0f), -1.0f, 1e-4f);
    EXPECT_NEAR(depthOf(100000.0f), 1.0f, 1e-4f);
}

TEST_F(StageViewTest, HostileCamerasKeepTheViewUsable) {
    engineView.SetProjection(NAN, -1.0f, NAN, 0);
    EXPECT_FLOAT_EQ(view.FieldOfView(), ViewNavigation::kDefaultFieldOfView);
    EXPECT_TRUE(std::isfinite(view.ProjectionMatrix()[2][2]));
    engineView.camera->data.matrices[0][0] = NAN;
    EXPECT_NEAR(view.CameraMatrix()[3].z, 10.0f, 1e-4f);
    std::memset(engineView.camera->data.matrices[0], 0, sizeof(engineView.camera->data.matrices[0]));
    EXPECT_NEAR(view.CameraMatrix()[3].z, 10.0f, 1e-4f);
}

TEST(StageViewsTest, OnlyShownViewsExist) {
    engine::ViewManager manager;
    StageViews views(manager);
    EXPECT_NE(manager.GetView(0), nullptr);
    EXPECT_EQ(manager.GetView(1), nullptr);
    EXPECT_EQ(views.At(-1), nullptr);
    views.SetCount(4);
    EXPECT_EQ(&views.At(3)->Engine(), manager.At(3));
    views.SetCount(9);
    EXPECT_EQ(views.Count(), 4);
    views.SetCount(0);
    EXPECT_EQ(views.Count(), 1);
    EXPECT_EQ(manager.GetView(1), nullptr);
}
