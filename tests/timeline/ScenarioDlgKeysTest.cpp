#include "tests/timeline/ScenarioDlgFixture.h"

#include "files/base/Log.h"
#include "keys/views/TrackKey.h"
#include "resources/resource.h"
#include "tests/support/FakeAttributes.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

std::vector<std::string> theLog;

/// A film with a level key at 2 seconds, two cameras with target keys and two actors with script keys, all
/// rows unfolded. No camera is in force and no actor is selected.
class JumpToKeyTest : public ScenarioDlgTest {
protected:
    JumpToKeyTest() {
        film = OpenFilmWith({editor.Create("Crate"), editor.Create("Barrel")});
        crate = film->tracks.back();
        for (CFilmTrack* track : film->tracks) {
            const CFilmObjectTrack* object = AsObjectTrack(track);
            if (object != nullptr && object->actor->name == "Crate") {
                crate = track;
            } else if (object != nullptr) {
                barrel = track;
            }
        }
        for (CFilmTrack* track : {crate, barrel}) {
            for (const int kind : {KeyKind::Position, KeyKind::Rotation, KeyKind::Scale}) {
                track->ClearKind(kind);
            }
        }
        camera = AddCamera(film, "Cam");
        otherCamera = AddCamera(film, "Other");
        theLog.clear();
        SetLogListener([](const char* text) { theLog.emplace_back(text); });
    }
    ~JumpToKeyTest() override { SetLogListener(nullptr); }

    void Select(CFilmTrack* track) { editor.Select({AsObjectTrack(track)->actor}); }
    /// Jumps from a time; returns where to.
    float Jump(float from, bool forward) {
        GoTo(from);
        window->JumpToKey(forward);
        return plugin.currentTime;
    }
    float Forward(float from) { return Jump(from, true); }
    float Back(float from) { return Jump(from, false); }

    IFilm* film;
    CFilmTrack* crate = nullptr;
    CFilmTrack* barrel = nullptr;
    CFilmCameraTrack* camera = nullptr;
    CFilmCameraTrack* otherCamera = nullptr;
};

} // namespace

TEST_F(JumpToKeyTest, SelectedObjectsAndTheActiveCameraComeFirst) {
    AddKey(film->mainTrack, KeyKind::Sound, 2.0f);
    AddKey(barrel, KeyKind::Position, 3.0f);
    AddKey(otherCamera, KeyKind::CameraTarget, 4.0f);
    AddKey(camera, KeyKind::CameraTarget, 6.0f);
    AddKey(crate, KeyKind::Position, 5.0f);
    AddKey(crate, KeyKind::Rotation, 7.0f);
    AddCut(film, "Cam", 0.0f, 10.0f, 0); // this camera is in force all the time
    Select(crate);
    ShowRows();
    EXPECT_EQ(Forward(0.0f), 5.0f);
    EXPECT_EQ(Forward(5.0f), 6.0f);
    EXPECT_EQ(Forward(6.0f), 7.0f);
    EXPECT_EQ(Forward(7.0f), 7.0f) << "there is none behind";
    EXPECT_EQ(Back(5.0f), 5.0f) << "keys of the level, other objects and other cameras don't count";
    editor.Select({});
    EXPECT_EQ(Forward(0.0f), 6.0f) << "the active camera alone keeps the others out too";
}

TEST_F(JumpToKeyTest, WithoutThemAllOtherRowsCount) {
    AddKey(film->mainTrack, KeyKind::Sound, 2.0f);
    AddKey(barrel, KeyKind::Position, 3.0f);
    AddKey(otherCamera, KeyKind::CameraTarget, 4.0f);
    ShowRows();
    EXPECT_EQ(Forward(0.0f), 2.0f);
    EXPECT_EQ(Forward(2.0f), 3.0f) << "the key that stands at the time is passed over";
    EXPECT_EQ(Forward(3.5f), 4.0f);
    EXPECT_EQ(Back(10.0f), 4.0f);
    EXPECT_EQ(Back(4.0f), 3.0f);
    EXPECT_EQ(Back(2.5f), 2.0f);
    EXPECT_EQ(Back(2.0f), 2.0f);
}

TEST_F(JumpToKeyTest, OtherRowsStayOutForARowWithoutAKeyInTheDirection) {
    AddKey(crate, KeyKind::Position, 1.0f);
    AddKey(barrel, KeyKind::Position, 3.0f);
    Select(crate);
    ShowRows();
    EXPECT_EQ(Forward(2.0f), 2.0f); // required: a row is enough, it needs no key ahead
}

TEST_F(JumpToKeyTest, FoldedSelectedObjectDoesntCount) {
    AddKey(crate, KeyKind::Position, 1.0f);
    AddKey(barrel, KeyKind::Position, 3.0f);
    Select(crate);
    ShowRows();
    RowOf("Crate", KeyKind::Position)->parent->SetExpanded(false, /*redraw*/ true);
    EXPECT_EQ(Forward(0.0f), 3.0f);
}

TEST_F(JumpToKeyTest, KeyBecomesTheOnlySelectedOneAndTheCursorFollows) {
    AddKey(barrel, KeyKind::Position, 1.0f);
    AddKey(barrel, KeyKind::Position, 3.0f);
    ShowRows();
    CTrackCtrl* row = RowOf("Barrel", KeyKind::Position);
    Control().SelectOnly(row->keys[0]);
    GoTo(1.5f);
    Command(IDC_KEY_FRAME_FORWARD);
    EXPECT_THAT(Control().selectedKeys, ElementsAre(row->keys[1]));
    EXPECT_TRUE(row->keys[1]->selected);
    EXPECT_FALSE(row->keys[0]->selected);
    EXPECT_EQ(Control().currentTime, 3.0f);
    Command(IDC_KEY_FRAME_BACK);
    EXPECT_THAT(Control().selectedKeys, ElementsAre(row->keys[0]));
    EXPECT_EQ(plugin.currentTime, 1.0f);
}

TEST_F(JumpToKeyTest, WithNoKeyTheSelectionAndTheTimeStay) {
    AddKey(barrel, KeyKind::Position, 1.0f);
    ShowRows();
    CTrackKey* key = RowOf("Barrel", KeyKind::Position)->keys[0];
    Control().SelectOnly(key);
    EXPECT_EQ(Forward(2.0f), 2.0f);
    EXPECT_THAT(Control().selectedKeys, ElementsAre(key));
}

TEST_F(JumpToKeyTest, TimeMovesThoughTheWindowGoesWhileTheKeyIsSelected) {
    AddKey(crate, KeyKind::Position, 4.0f);
    ShowRows();
    FakeAttributes& attributes = OpenFakeAttributes(plugin);
    attributes.visible = true;
    attributes.onSetKey = [&] {
        attributes.onSetKey = nullptr;
        delete plugin.scenarioDlg;
    };
    EXPECT_EQ(Forward(0.0f), 4.0f);
    EXPECT_FALSE(IsAlive());
}

TEST_F(JumpToKeyTest, NoFilmNoJump) {
    AddKey(barrel, KeyKind::Position, 1.0f);
    ShowRows();
    plugin.SetCurrentFilm(nullptr);
    EXPECT_EQ(Forward(0.0f), 0.0f);
}

TEST_F(JumpToKeyTest, KeyTenThousandSecondsAwayIsTooFar) {
    film->length = 30000.0f;
    plugin.filmViewSettings[static_cast<std::size_t>(film->index)].movieEnd = 30000.0f;
    AddKey(barrel, KeyKind::Position, 10000.0f);
    AddKey(barrel, KeyKind::Position, 25000.0f);
    ShowRows();
    ASSERT_EQ(RowOf("Barrel", KeyKind::Position)->keys.size(), 2U);
    EXPECT_EQ(Forward(0.0f), 0.0f); // the limit itself is left out
    EXPECT_EQ(Forward(1.0f), 10000.0f);
    EXPECT_EQ(Forward(10000.0f), 10000.0f); // 15000 away
}

TEST_F(JumpToKeyTest, OfTwoRowsTheNearerKeyWins) {
    AddKey(crate, KeyKind::Position, 4.0f);
    AddKey(crate, KeyKind::Rotation, 3.0f);
    AddKey(barrel, KeyKind::Position, 2.0f);
    Select(crate);
    ShowRows();
    EXPECT_EQ(Forward(0.0f), 3.0f);
    editor.Select({});
    EXPECT_EQ(Forward(0.0f), 2.0f);
}

TEST_F(JumpToKeyTest, OfTwoKeysAsNearTheFirstRowsWins) {
    AddKey(crate, KeyKind::Position, 4.0f);
    AddKey(barrel, KeyKind::Position, 4.0f);
    editor.Select({AsObjectTrack(crate)->actor, AsObjectTrack(barrel)->actor});
    ShowRows();
    EXPECT_EQ(Forward(0.0f), 4.0f);
    ASSERT_EQ(Control().selectedKeys.size(), 1u);
    EXPECT_EQ(Control().selectedKeys.front()->record->track, barrel); // the rows are sorted by name
}

TEST_F(JumpToKeyTest, LightsCountAsTheObjectsThatStandForThem) {
    EditorObject* lamp = editor.CreateOfClass("GLLightEditorObject", "Lamp", 0, 0, 0);
    CFilmTrack* light = plugin.FindTrackOfObject(film, lamp);
    ASSERT_NE(light, nullptr);
    light->ClearKind(KeyKind::Position);
    light->ClearKind(KeyKind::Color);
    AddKey(light, KeyKind::Color, 6.0f);
    AddKey(barrel, KeyKind::Position, 2.0f);
    editor.Select({lamp});
    ShowRows();
    EXPECT_EQ(Forward(0.0f), 6.0f);
    EXPECT_THAT(theLog, IsEmpty());
}

TEST_F(JumpToKeyTest, MissingRowsAndTracksAreReportedAndPassedOver) {
    AddKey(crate, KeyKind::Position, 2.0f);
    AddKey(barrel, KeyKind::Position, 3.0f);
    ShowRows();
    CTrackCtrl* row = RowOf("Crate", KeyKind::Position);
    GoTo(4.0f);
    theLog.clear();
    CFilmTrack* track = std::exchange(row->track, nullptr);
    Control().tracks.push_front(nullptr);
    window->JumpToKey(/*forward*/ true);
    Control().tracks.pop_front();
    EXPECT_THAT(theLog, ElementsAre("NULL CTrackCtrl pointer on track list\n",
                                    "CTrackCtrl with NULL pointer to CFilmTrack\n"));
    window->JumpToKey(/*forward*/ false);
    EXPECT_EQ(plugin.currentTime, 3.0f);
    window->JumpToKey(/*forward*/ false);
    EXPECT_EQ(plugin.currentTime, 3.0f) << "the row without a track isn't looked at";
    row->track = track;
}

TEST_F(JumpToKeyTest, ObjectTrackWithoutAnObjectIsReportedAndPassedOver) {
    AddKey(crate, KeyKind::Position, 2.0f);
    ShowRows();
    EditorObject* actor = std::exchange(AsObjectTrack(crate)->actor, nullptr);
    window->JumpToKey(/*forward*/ true);
    AsObjectTrack(crate)->actor = actor;
    EXPECT_THAT(theLog, ElementsAre("Object track with no attached object\n"));
    EXPECT_EQ(plugin.currentTime, 0.0f);
}

TEST_F(JumpToKeyTest, LightWithoutAHelperOrItsObjectIsReportedAndPassedOver) {
    EditorObject* lamp = editor.CreateOfClass("FilmsDynLightEditorObject", "Lamp", 0, 0, 0);
    CFilmTrack* light = plugin.FindTrackOfObject(film, lamp);
    for (const int kind : {KeyKind::Flags, KeyKind::Position, KeyKind::Rotation, KeyKind::Scale}) {
        light->ClearKind(kind);
    }
    AddKey(light, KeyKind::Color, 6.0f); // one row, so one line in the log
    ShowRows();
    theLog.clear();
    CFilmsLightHelper* helper = plugin.lightHelpers.FindByTrack(light);
    ASSERT_NE(helper, nullptr);
    helper->object = nullptr;
    window->JumpToKey(/*forward*/ true);
    EXPECT_THAT(theLog, ElementsAre("CFilmsLightHelper without representing object\n"));
    helper->object = lamp;
    helper->track = nullptr;
    theLog.clear();
    window->JumpToKey(/*forward*/ true);
    EXPECT_THAT(theLog, ElementsAre("No helper connected with gl- or dyn- light track\n"));
    helper->track = light;
    EXPECT_EQ(plugin.currentTime, 0.0f);
}
