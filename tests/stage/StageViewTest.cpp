#include "host/stage/host/StageView.h"

#include <cmath>
#include <cstring>
#include <gtest/gtest.h>

namespace {
void LookFromTen(StageView& view) {
    view.Resize(200, 100);
    view.navigation.LookAt({0.0f, 0.0f, 10.0f}, {0.0f, 0.0f, 0.0f});
    view.ApplyNavigation();
}
} // namespace

TEST(StageViewTest, TheRayThroughTheMiddleIsTheLineOfSight) {
    StageView view;
    LookFromTen(view);
    const ViewRay ray = view.RayAt(100.0f, 50.0f);
    EXPECT_NEAR(ray.origin.z, 10.0f, 1e-4f);
    EXPECT_NEAR(ray.direction.z, -1.0f, 1e-4f);
}

TEST(StageViewTest, ProjectionAndRayAgree) {
    StageView view;
    LookFromTen(view);
    const ViewRay ray = view.RayAt(30.0f, 20.0f);
    glm::vec2 pixel;
    ASSERT_TRUE(view.Project(ray.origin + ray.direction * 7.0f, pixel));
    EXPECT_NEAR(pixel.x, 30.0f, 1e-2f);
    EXPECT_NEAR(pixel.y, 20.0f, 1e-2f);
}

TEST(StageViewTest, APointBehindTheCameraHasNoPixel) {
    StageView view;
    LookFromTen(view);
    glm::vec2 pixel;
    EXPECT_FALSE(view.Project({0.0f, 0.0f, 20.0f}, pixel));
}

TEST(StageViewTest, UsersCameraStaysOutOfAViewThatAPluginHolds) {
    StageView view;
    LookFromTen(view);
    view.attachedTo = 1;
    view.camera->data.matrices[0][14] = 42.0f;
    view.navigation.LookAt({0.0f, 0.0f, 5.0f}, {0.0f, 0.0f, 0.0f});
    view.ApplyNavigation();
    EXPECT_FLOAT_EQ(view.camera->data.matrices[0][14], 42.0f);
    view.attachedTo = 0;
    view.ApplyNavigation();
    EXPECT_FLOAT_EQ(view.camera->data.matrices[0][14], 5.0f);
}

TEST(StageViewTest, ProjectionKeepsTheViewsOwnAspect) {
    StageView view;
    view.Resize(300, 100);
    view.SetProjection(1.0f, 0.5f, 50.0f, 0);
    EXPECT_FLOAT_EQ(view.GetFieldOfView(), 1.0f);
    const glm::mat4 projection = view.ProjectionMatrix();
    EXPECT_NEAR(projection[1][1] / projection[0][0], 3.0f, 1e-5f);
    EXPECT_NEAR(projection[1][1], 1.0f / std::tan(0.5f), 1e-5f);
}

TEST(StageViewTest, HostileProjectionsAndMatricesKeepTheViewUsable) {
    StageView view;
    LookFromTen(view);
    view.SetProjection(NAN, -1.0f, 0.0f, 0);
    view.SetProjection(0.0f, NAN, NAN, 0);
    EXPECT_FLOAT_EQ(view.GetFieldOfView(), ViewNavigation::kDefaultFieldOfView);
    view.camera->data.matrices[0][0] = NAN;
    EXPECT_NEAR(glm::inverse(view.ViewMatrix())[3].z, 10.0f, 1e-4f);
    std::memset(view.camera->data.matrices[0], 0, sizeof(view.camera->data.matrices[0]));
    EXPECT_NEAR(glm::inverse(view.ViewMatrix())[3].z, 10.0f, 1e-4f);
}

TEST(StageViewsTest, OnlyShownViewsExist) {
    StageViews views;
    EXPECT_NE(views.GetView(0), nullptr);
    EXPECT_EQ(views.GetView(1), nullptr);
    EXPECT_EQ(views.GetView(-1), nullptr);
    views.shown = 4;
    EXPECT_NE(views.GetView(3), nullptr);
    EXPECT_EQ(views.GetView(4), nullptr);
}
