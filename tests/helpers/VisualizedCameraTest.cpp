#include "helpers/EditorCameraManager.h"
#include "tests/helpers/CameraHelpersFixture.h"

#include <algorithm>

using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

/// A camera from (0, 1, 0) to (4, 1, 0) within 2 seconds, which is visualized.
class VisualizedCameraTest : public CameraHelpersTest {
protected:
    VisualizedCameraTest() {
        AddPoint(KeyKind::CameraPosition, 0, {0, 1, 0});
        AddPoint(KeyKind::CameraPosition, 2, {4, 1, 0});
        AddPoint(KeyKind::CameraTarget, 0, {0, 1, 10});
        plugin.SetFrame(0, -1);
        Visualize();
    }
    int LinesDrawn() {
        editor.lines.clear();
        plugin.OnRender();
        return static_cast<int>(editor.lines.size());
    }
    void ExpectNothingLeft() {
        EXPECT_EQ(plugin.trackVisualizer.renderTrack, nullptr);
        EXPECT_THAT(plugin.trackVisualizer.renderData, IsEmpty());
        EXPECT_EQ(LinesDrawn(), 0);
    }

    /// Segments between two keys, and between the eye's two keys in all.
    static constexpr int kLines = 40;
};

} // namespace

TEST_F(VisualizedCameraTest, PathIsDrawnBeforeTheHandles) {
    auto* key = static_cast<CFilmLinkedKey*>(KeysOf(*camera, KeyKind::CameraPosition).front());
    SetHandles(*key, {0, 1, -3}, {0, 1, 3});
    plugin.SetFrame(0, -1);
    ASSERT_EQ(LinesDrawn(), kLines + 2);
    EXPECT_EQ(editor.lines.front().from, (Vector3{0, 1, 0}));
    EXPECT_EQ(editor.lines[kLines - 1].to, (Vector3{4, 1, 0}));
    EXPECT_EQ(editor.lines[kLines].to, (Vector3{0, 1, -3}));
    EXPECT_EQ(editor.lines[kLines + 1].to, (Vector3{0, 1, 3}));
}

TEST_F(VisualizedCameraTest, PathFollowsADraggedEyeAtOnce) {
    UserMoves(*helpers.positionObject, 0, 9, 0);
    EXPECT_EQ(LinesDrawn(), kLines);
    EXPECT_EQ(editor.lines.front().from, (Vector3{0, 9, 0}));
}

TEST_F(VisualizedCameraTest, HelpersMoveWithTheFilm) {
    plugin.SetTime(1, false);
    EXPECT_FLOAT_EQ(PositionOf(*helpers.positionObject).x, 2.0f);
    plugin.SetTime(2, false);
    EXPECT_EQ(PositionOf(*helpers.positionObject), (Vector3{4, 1, 0}));
}

TEST_F(VisualizedCameraTest, DrawingPutsTheFilmBackToItsTime) {
    EditorObject* crate = editor.Create("Crate");
    plugin.AddActors({crate});
    IFilmKey* key = AddKey(film->FindObjectTrack(crate), KeyKind::Position, 2);
    const Vector3 there{0, 0, 8};
    key->SetValue(there.Data());
    plugin.SetTime(2, false);
    MoveTo(*crate, 5, 5, 5);
    plugin.OnRender();
    EXPECT_EQ(PositionOf(*crate), there);
    EXPECT_EQ(plugin.currentTime, 2.0f);
}

TEST_F(VisualizedCameraTest, HelpersNeverBecomeActors) {
    plugin.SetAnimateObjects(true);
    const std::size_t tracks = film->tracks.size();
    for (EditorObject* object : Objects()) {
        UserMoves(*object, 1, 2, 3);
    }
    EXPECT_EQ(film->tracks.size(), tracks);
    EXPECT_EQ(LinesDrawn(), kLines);
}

TEST_F(VisualizedCameraTest, ReleasedResourcesTakeTheCameraOffTheViews) {
    plugin.OnEvent(EventCode::ReleaseRenderResources, nullptr);
    ExpectNothingLeft();
    EXPECT_THAT(Objects(), IsEmpty());
}

TEST_F(VisualizedCameraTest, NewLevelTakesTheCameraOffTheViews) {
    plugin.OnNew();
    ExpectNothingLeft();
    EXPECT_THAT(Objects(), IsEmpty());
    editor.level.Close();
    editor.level.New("");
    plugin.OnEvent(EventCode::LevelLoaded, nullptr);
    EXPECT_EQ(LinesDrawn(), 0);
    film = OpenNewFilm();
    camera = AddCamera(film, "Cam");
    Visualize();
    EXPECT_THAT(Objects(), SizeIs(6));
}

TEST_F(VisualizedCameraTest, DeletedFilmIsDrawnNoMore) {
    plugin.SetVisualizedTrack(AddCamera(film, "Second"));
    Visualize();
    plugin.DeleteFilm(film);
    ExpectNothingLeft();
    UserMoves(*helpers.positionObject, 3, 4, 5); // belongs to no camera now
    film = OpenNewFilm();
    for (EditorObject* object : Objects()) {
        EXPECT_TRUE(IsHidden(object)) << "the next film's first frame hides them";
    }
}

TEST_F(VisualizedCameraTest, CameraOfAFilmThatWasLeftIsDrawnAndPosedOnAndItsActorsAreLeftAlone) {
    EditorObject* crate = editor.Create("Crate", 7, 0, 0);
    plugin.AddActors({crate});
    plugin.SetCurrentFilm(NewFilm());
    EXPECT_FALSE(IsHidden(helpers.positionObject));
    MoveTo(*crate, 1, 1, 1);
    EXPECT_EQ(LinesDrawn(), kLines);
    EXPECT_EQ(PositionOf(*crate), (Vector3{1, 1, 1})) << "a closed film moves nothing of the level";
    const Vector3 eye = camera->eyePoint;
    camera->eyePoint = {99, 99, 99};
    EXPECT_EQ(LinesDrawn(), kLines);
    EXPECT_EQ(camera->eyePoint, eye) << "the old film is posed at each render all the same";
    plugin.SetCurrentFilm(nullptr);
    EXPECT_EQ(LinesDrawn(), kLines);
}

TEST_F(VisualizedCameraTest, DeletingAnotherFilmLeavesTheCameraOnShow) {
    IFilm* other = NewFilm();
    AddCamera(other, "Cam");
    plugin.DeleteFilm(other);
    EXPECT_EQ(plugin.trackVisualizer.renderTrack, camera);
    EXPECT_EQ(LinesDrawn(), kLines);
}

TEST_F(VisualizedCameraTest, SuspensionKeepsTheCameraOnShow) {
    Suspend();
    EXPECT_EQ(LinesDrawn(), kLines);
    Resume();
    EXPECT_EQ(plugin.trackVisualizer.renderTrack, camera);
    EXPECT_EQ(PositionOf(*helpers.positionObject), (Vector3{0, 1, 0}));
}

TEST_F(VisualizedCameraTest, HelpersDestroyedByTheHostAreMadeAgain) {
    const std::vector<EditorObject*> objects = Objects();
    editor.DeleteObjects({objects.begin(), objects.end()});
    EXPECT_THAT(Objects(), IsEmpty());
    plugin.OnRender();
    plugin.SetFrame(0, -1);
    EXPECT_THAT(Objects(), SizeIs(6));
}

TEST_F(VisualizedCameraTest, HelpersFollowThePlayingFilm) {
    std::uint32_t clock = 1000;
    Hooks().clock = [&clock] { return clock += 100; };
    std::vector<float> places;
    editor.onBroadcast = [&](int, void*) {
        places.push_back(PositionOf(*helpers.positionObject).x);
        plugin.OnRender();
    };
    film->length = 2;
    plugin.Play(0);
    editor.onBroadcast = nullptr;
    EXPECT_GT(places.size(), 3u);
    EXPECT_TRUE(std::is_sorted(places.begin(), places.end()));
    EXPECT_GT(PositionOf(*helpers.positionObject).x, 3.5f);
}

TEST_F(VisualizedCameraTest, CameraThatIsRemovedWhileItsFilmPlaysIsDrawnNoMore) {
    std::uint32_t clock = 1000;
    Hooks().clock = [&clock] { return clock += 100; };
    film->length = 1;
    editor.onBroadcast = [&](int, void*) {
        if (camera != nullptr) {
            plugin.trackVisualizer.RemoveTrack(camera);
            film->RemoveTrack(camera, 1);
            camera = nullptr;
        }
        plugin.OnRender();
    };
    plugin.Play(0);
    editor.onBroadcast = nullptr;
    ExpectNothingLeft();
}

TEST_F(VisualizedCameraTest, CameraNamesAreFoundInTheCurrentFilmOnly) {
    const CEditorCameraManager cameras(plugin);
    EXPECT_TRUE(cameras.CameraExists("Cam"));
    EXPECT_FALSE(cameras.CameraExists("cam"));
    EXPECT_FALSE(cameras.CameraExists(""));
    AddCamera(NewFilm(), "Elsewhere");
    EXPECT_FALSE(cameras.CameraExists("Elsewhere"));
    plugin.SetCurrentFilm(nullptr);
    EXPECT_FALSE(cameras.CameraExists("Cam"));
}
