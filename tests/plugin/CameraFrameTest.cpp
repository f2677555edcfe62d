#include "tests/plugin/PluginFixture.h"

using ::testing::IsEmpty;

namespace {

/// A camera whose eye and target are 5 units apart, and a view at (10, 20, 30) that looks along -z.
class CameraFrameTest : public PluginTest {
protected:
    CameraFrameTest() : film(OpenNewFilm()), camera(AddCamera(film, "Cam")) {
        const Vector3 target{0, 0, -5};
        eyeKey = static_cast<CFilmLinkedKey*>(AddKey(camera, KeyKind::CameraPosition, 0));
        targetKey = static_cast<CFilmLinkedKey*>(AddKey(camera, KeyKind::CameraTarget, 0));
        targetKey->SetValue(target.Data());
        editor.viewMatrix = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 10, 20, 30, 1};
    }
    const CFilmLinkedKey& Last(int kind) {
        return static_cast<const CFilmLinkedKey&>(*KeysOf(*camera, kind).back());
    }

    IFilm* film;
    CFilmCameraTrack* camera;
    CFilmLinkedKey* eyeKey = nullptr;
    CFilmLinkedKey* targetKey = nullptr;
};

} // namespace

TEST_F(CameraFrameTest, NewFrameMakesEyeAndTargetKeysFromTheView) {
    plugin.CreateCameraFrame(camera, 2.0f, 0);
    ASSERT_EQ(camera->keys.size(), 4u);
    EXPECT_EQ(Last(KeyKind::CameraPosition).time, 2.0f);
    EXPECT_EQ(Last(KeyKind::CameraPosition).value, (Vector3{10, 20, 30}));
    EXPECT_EQ(Last(KeyKind::CameraTarget).value, (Vector3{10, 20, 25})); // 5 units against the third row
    EXPECT_EQ(Last(KeyKind::CameraPosition).inMethod, 0);
    EXPECT_EQ(Last(KeyKind::CameraPosition).outMethod, 0);
    EXPECT_EQ(editor.Count("RedrawViews"), 1);
}

TEST_F(CameraFrameTest, FrameAtAKeysTimeChangesThatKeyOnly) {
    EditorObject* crate = editor.Create("Crate");
    eyeKey->SetLinkObject(crate);
    eyeKey->SetInMethod(BezierMethod::Linear);
    plugin.CreateCameraFrame(camera, 0.00009f, 0);
    EXPECT_EQ(camera->keys.size(), 2u);
    EXPECT_EQ(eyeKey->value, (Vector3{10, 20, 30}));
    EXPECT_EQ(eyeKey->linkObject, crate);
    EXPECT_EQ(eyeKey->inMethod, BezierMethod::Linear);
}

TEST_F(CameraFrameTest, OfSeveralKeysAtTheTimeTheLastCounts) {
    auto* second = static_cast<CFilmLinkedKey*>(AddKey(camera, KeyKind::CameraPosition, 0.00005f));
    plugin.CreateCameraFrame(camera, 0.0f, 0);
    EXPECT_EQ(eyeKey->value, Vector3{});
    EXPECT_EQ(second->value, (Vector3{10, 20, 30}));
}

TEST_F(CameraFrameTest, NewKeysTakeTheLinkOfTheNearestKeyBefore) {
    EditorObject* crate = editor.Create("Crate");
    EditorObject* cart = editor.Create("Cart");
    auto* first = AddKey(camera, KeyKind::CameraPosition, 1.0f);
    auto* equal = AddKey(camera, KeyKind::CameraPosition, 1.0f);
    first->SetLinkObject(crate);
    first->SetLinkElement("Head");
    equal->SetLinkObject(cart);
    plugin.CreateCameraFrame(camera, 2.0f, 0);
    EXPECT_EQ(Last(KeyKind::CameraPosition).linkObject, crate); // of equals the first
    EXPECT_EQ(Last(KeyKind::CameraPosition).linkElement, "Head");
    EXPECT_EQ(Last(KeyKind::CameraTarget).linkObject, nullptr);
    EXPECT_EQ(Last(KeyKind::CameraTarget).linkElement, "");
}

TEST_F(CameraFrameTest, NearestKeyBeforeIsTheLatestInWhateverOrderTheyStand) {
    EditorObject* crate = editor.Create("Crate");
    AddKey(camera, KeyKind::CameraTarget, 1.0f);
    AddKey(camera, KeyKind::CameraTarget, 1.5f)->SetLinkObject(crate);
    AddKey(camera, KeyKind::CameraTarget, 0.5f);
    AddKey(camera, KeyKind::CameraTarget, 2.5f); // behind the frame
    plugin.CreateCameraFrame(camera, 2.0f, 0);
    EXPECT_EQ(Last(KeyKind::CameraTarget).time, 2.0f);
    EXPECT_EQ(Last(KeyKind::CameraTarget).linkObject, crate);
}

TEST_F(CameraFrameTest, KeyATenthOfAMillisecondAwayStandsAtAnotherTime) {
    plugin.CreateCameraFrame(camera, 0.0001f, 0); // the limit itself does not count
    EXPECT_EQ(camera->keys.size(), 4u);
    EXPECT_EQ(eyeKey->value, Vector3{});
}

TEST_F(CameraFrameTest, EyeOnItsTargetLooksThreeUnitsAhead) {
    const Vector3 same{};
    targetKey->SetValue(same.Data());
    plugin.CreateCameraFrame(camera, 2.0f, 0);
    EXPECT_EQ(Last(KeyKind::CameraTarget).value, (Vector3{10, 20, 27}));
}

TEST_F(CameraFrameTest, BothEndsOfTheFilmAreInside) {
    plugin.CreateCameraFrame(camera, 10.0f, 0);
    EXPECT_EQ(camera->keys.size(), 4u);
}

TEST_F(CameraFrameTest, NothingHappensOutsideTheFilmOrWithoutTrackOrView) {
    plugin.CreateCameraFrame(nullptr, 2.0f, 0);
    plugin.CreateCameraFrame(camera, 2.0f, -1);
    plugin.CreateCameraFrame(camera, 2.0f, 99); // the host knows no such view
    plugin.CreateCameraFrame(camera, -0.1f, 0);
    plugin.CreateCameraFrame(camera, 10.1f, 0);
    plugin.SetCurrentFilm(nullptr);
    plugin.CreateCameraFrame(camera, 2.0f, 0);
    EXPECT_EQ(camera->keys.size(), 2u);
}

TEST_F(CameraFrameTest, WindowRebuildsAndIsToldTheTime) {
    std::vector<std::string> calls;
    LoggingWindow window(calls);
    plugin.scenarioDlg = &window;
    plugin.currentTime = 2.0f;
    plugin.CreateCameraFrame(camera, 2.0f, 0);
    plugin.scenarioDlg = nullptr;
    EXPECT_THAT(calls, ::testing::ElementsAre("ShowCurrentFilm"));
    EXPECT_THAT(window.times, ::testing::ElementsAre(2.0f));
}
