#include "tests/plugin/PluginFixture.h"

#include <algorithm>

namespace {

/// A film with the camera "Cam" in force from 0 to 5 seconds.
class CameraViewTest : public PluginTest {
protected:
    CameraViewTest() : film(NewFilm()), camera(AddCamera(film, "Cam")) {
        camera->fieldOfView = 90.0f;
        camera->nearPlane = 0.5f;
        camera->farPlane = 200.0f;
        const Vector3 eye{1, 2, 3};
        const Vector3 target{1, 2, -7};
        AddKey(camera, KeyKind::CameraPosition, 0)->SetValue(eye.Data());
        AddKey(camera, KeyKind::CameraTarget, 0)->SetValue(target.Data());
        AddCut(film, "Cam", 0, 5, 0);
        plugin.SetCurrentFilm(film);
    }

    IFilm* film;
    CFilmCameraTrack* camera;
};

} // namespace

TEST_F(CameraViewTest, AttachedViewGetsTheCameraRecordAndProjection) {
    plugin.AttachView(1);
    plugin.SetTime(1.0f, true);
    const engine::View* view = editor.level.Views().At(1);
    EXPECT_EQ(view->IView::camera->data.recordNear, 0.5f);
    EXPECT_EQ(view->IView::camera->data.recordFar, 200.0f);
    EXPECT_EQ(view->CameraMatrix()[12], 1.0f);
    EXPECT_EQ(view->CameraMatrix()[13], 2.0f);
    EXPECT_EQ(view->CameraMatrix()[14], 3.0f);
    EXPECT_FLOAT_EQ(view->GetFieldOfView(), 90.0f * 0.017453292f);
}

TEST_F(CameraViewTest, OthersAreToldBetweenThePoseOfTheFilmAndTheViews) {
    plugin.AttachView(1);
    camera->eyePoint = {9, 9, 9};
    editor.hideCalls.clear();
    editor.calls.clear();
    const float before = editor.level.Views().At(1)->CameraMatrix()[12];
    ASSERT_NE(before, 1.0f);
    Vector3 eye;
    float viewX = 1.0f;
    editor.onBroadcast = [&](int, void*) {
        eye = camera->eyePoint;
        viewX = editor.level.Views().At(1)->CameraMatrix()[12];
        EXPECT_TRUE(editor.hideCalls.empty()) << "the camera's objects follow later";
        EXPECT_EQ(editor.Count("RedrawViews"), 0);
    };
    plugin.SetTime(1.0f, true);
    editor.onBroadcast = nullptr;
    EXPECT_EQ(eye, (Vector3{1, 2, 3}));
    EXPECT_EQ(viewX, before) << "the view gets the camera later";
    EXPECT_EQ(editor.level.Views().At(1)->CameraMatrix()[12], 1.0f);
    EXPECT_EQ(editor.hideCalls.size(), 1u);
}

TEST_F(CameraViewTest, ViewThatIsNotAttachedStaysAsItIs) {
    const std::vector<float> before(editor.level.Views().At(0)->CameraMatrix(),
                                    editor.level.Views().At(0)->CameraMatrix() + 16);
    plugin.AttachView(1);
    plugin.SetTime(1.0f, true);
    const float* after = editor.level.Views().At(0)->CameraMatrix();
    EXPECT_TRUE(std::equal(before.begin(), before.end(), after));
}

TEST_F(CameraViewTest, WithoutAnActiveCameraTheOtherStepsRun) {
    plugin.AttachView(1);
    editor.calls.clear();
    editor.broadcasts.clear();
    plugin.SetTime(6.0f, true); // behind the cut
    EXPECT_EQ(AsLevelTrack(film->mainTrack)->cameraHolder->activeCamera, nullptr);
    EXPECT_EQ(editor.Count("RedrawViews"), 1);
    EXPECT_EQ(editor.broadcasts.size(), 1u);
}

TEST_F(CameraViewTest, ViewThatWasClosedIsSkipped) {
    plugin.AttachView(1);
    editor.level.Views().SetCount(1);
    plugin.SetTime(1.0f, true);
    EXPECT_EQ(plugin.currentTime, 1.0f);
}
