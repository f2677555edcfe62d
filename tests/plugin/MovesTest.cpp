#include "files/base/Log.h"
#include "tests/plugin/FakeActor.h"
#include "tests/plugin/PluginFixture.h"
#include "tests/support/FakeKeyFactory.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class MovesTest : public PluginTest {
protected:
    MovesTest() : window(calls) {}
    ~MovesTest() override { plugin.scenarioDlg = nullptr; }

    std::vector<std::string> calls;
    LoggingWindow window;
};

/// Keys are written to a film that is not the one shown.
class RecordKeysTest : public PluginTest {
protected:
    RecordKeysTest() : crate(editor.Create("Crate", 1, 0, 0)), film(OpenFilmWith({crate})) {
        plugin.SetCurrentFilm(nullptr);
        track = film->FindObjectTrack(crate);
        oldMatrix = newMatrix = MatrixOf(*crate);
    }

    static std::array<float, 16> MatrixOf(const EditorObject& object) {
        std::array<float, 16> matrix{};
        std::copy_n(object.GetMatrix(0), matrix.size(), matrix.begin());
        return matrix;
    }
    void Record(float time = 0.0f) {
        plugin.RecordTransformKeys(crate, film, time, newMatrix.data(), oldMatrix.data());
    }

    EditorObject* crate;
    IFilm* film;
    CFilmTrack* track = nullptr;
    std::array<float, 16> oldMatrix{};
    std::array<float, 16> newMatrix{};
};

} // namespace

TEST_F(MovesTest, FreeObjectKeepsItsPlaceAndItsRecordFollows) {
    EditorObject* crate = editor.Create("Crate");
    UserMoves(*crate, 3, 4, 5);
    EXPECT_EQ(PositionOf(*crate), (Vector3{3, 4, 5}));
    EXPECT_EQ(plugin.GetStoredMatrix(crate)[12], 3.0f);
}

TEST_F(MovesTest, ActorSnapsBackAndOthersAreToldWhileAnimateIsOff) {
    EditorObject* crate = editor.Create("Crate", 1, 2, 3);
    EditorObject* free = editor.Create("Free");
    OpenFilmWith({crate});
    editor.broadcasts.clear();
    editor.Select({crate, free});
    MoveTo(*crate, 9, 9, 9);
    plugin.OnEvent(EventCode::ObjectsMoved, nullptr);
    EXPECT_EQ(PositionOf(*crate), (Vector3{1, 2, 3}));
    EXPECT_THAT(editor.broadcasts, ElementsAre(EventCode::ObjectsMoved));
    EXPECT_THAT(editor.lastBroadcastObjects, ElementsAre(crate));
}

TEST_F(MovesTest, ActorIsPosedByItsFilmThenStandsAtTheUsersPlaceAndOnlyThenSnapsBack) {
    std::vector<std::string> log;
    FakeActorFilm film(log);
    plugin.SetCurrentFilm(&film);
    MoveTo(film.object, 9, 0, 0);
    log.clear();
    plugin.OnObjectsMoved({&film.object});
    EXPECT_THAT(log, ElementsAre("SetMatrix 1", "SetMatrix 9", "SetMatrix 1"));
    log.clear();
    plugin.SetAnimateObjects(true);
    MoveTo(film.object, 9, 0, 0);
    log.clear();
    plugin.OnObjectsMoved({&film.object});
    EXPECT_THAT(log, ElementsAre("SetMatrix 1", "SetMatrix 9"));
    plugin.SetCurrentFilm(nullptr);
}

TEST_F(MovesTest, MoveOfAnActorIsHandedToTheMainControl) {
    EditorObject* crate = editor.Create("Crate", 1, 2, 3);
    OpenFilmWith({crate});
    plugin.scenarioDlg = &window;
    plugin.OnCommand(kPluginNumber, 50);
    plugin.SetTime(2.0f, true);
    UserMoves(*crate, 4, 5, 6);
    EXPECT_EQ(window.recordedObject, crate);
    EXPECT_EQ(window.recordedTime, 2.0f);
    EXPECT_EQ(window.recordedNew, (Vector3{4, 5, 6}));
    EXPECT_EQ(window.recordedOld, (Vector3{1, 2, 3}));
    EXPECT_EQ(PositionOf(*crate), (Vector3{4, 5, 6}));
    EXPECT_EQ(plugin.GetStoredMatrix(crate)[12], 1.0f);
}

TEST_F(MovesTest, MoveWithAnimateOnMakesAnObjectAnActorWhereItStoodBefore) {
    EditorObject* crate = editor.Create("Crate", 1, 2, 3);
    IFilm* film = OpenNewFilm();
    plugin.scenarioDlg = &window;
    plugin.OnCommand(kPluginNumber, 50);
    plugin.SetTime(2.0f, true);
    UserMoves(*crate, 4, 5, 6);
    const CFilmTrack* track = film->FindObjectTrack(crate);
    ASSERT_NE(track, nullptr);
    EXPECT_EQ(VectorKey(track->keys.front()).value, (Vector3{1, 2, 3}));
    EXPECT_EQ(window.recordedNew, (Vector3{4, 5, 6})); // not what a rebuild of the window posed
}

TEST_F(MovesTest, ObjectsThatGoWhileTheRowsOfANewActorAreShownAreNotTouched) {
    /// Its rows ask the user, behind whose back an object goes.
    class AskingWindow : public LoggingWindow {
    public:
        using LoggingWindow::LoggingWindow;
        void ShowCurrentFilm() override {
            if (const auto action = std::exchange(whileAsked, nullptr)) {
                action();
            }
        }
        std::function<void()> whileAsked;
    } asking(calls);
    EditorObject* crate = editor.Create("Crate", 1, 2, 3);
    EditorObject* barrel = editor.Create("Barrel");
    IFilm* film = OpenNewFilm();
    plugin.OnCommand(kPluginNumber, 50);
    asking.whileAsked = [&] {
        const ObjectList doomed = {barrel};
        plugin.RemoveActors(film, &doomed, /*lightsOnly*/ false);
        editor.DeleteObjects(doomed);
    };
    plugin.scenarioDlg = &asking;
    MoveTo(*crate, 4, 5, 6);
    plugin.OnObjectsMoved({barrel, crate});
    plugin.scenarioDlg = nullptr;
    EXPECT_EQ(editor.level.FindObject("Barrel"), nullptr);
    EXPECT_EQ(asking.recordedObject, crate);
    EXPECT_EQ(asking.recordedNew, (Vector3{4, 5, 6}));
}

TEST_F(MovesTest, WithoutAMainControlNothingIsWritten) {
    EditorObject* crate = editor.Create("Crate", 1, 2, 3);
    IFilm* film = OpenFilmWith({crate});
    plugin.OnCommand(kPluginNumber, 50);
    UserMoves(*crate, 4, 5, 6);
    EXPECT_EQ(film->FindObjectTrack(crate)->keys.size(), 3u);
    EXPECT_EQ(VectorKey(film->FindObjectTrack(crate)->keys.front()).value, (Vector3{1, 2, 3}));
}

TEST_F(MovesTest, AnimateOnWithoutAFilmLeavesTheRecordSoThatAFilmTakesTheObjectBack) {
    EditorObject* crate = editor.Create("Crate", 1, 2, 3);
    plugin.animateObjects = 1;
    UserMoves(*crate, 4, 5, 6);
    EXPECT_EQ(plugin.GetStoredMatrix(crate)[12], 1.0f);
    OpenNewFilm();
    plugin.SetCurrentFilm(nullptr);
    EXPECT_EQ(PositionOf(*crate), (Vector3{1, 2, 3}));
}

TEST_F(MovesTest, ObjectWithoutARecordIsLeftAlone) {
    EditorObject* crate = editor.Create("Crate");
    plugin.objectMatrices.clear();
    plugin.animateObjects = 1;
    UserMoves(*crate, 4, 5, 6);
    EXPECT_EQ(PositionOf(*crate), (Vector3{4, 5, 6}));
    EXPECT_THAT(boxes, IsEmpty());
}

TEST_F(MovesTest, ObjectTrackedForItsMatrixOnlyJustUpdatesItsRecord) {
    EditorObject* crate = editor.Create("Crate");
    crate->objectKind = ObjectKind::MatrixOnly;
    OpenFilmWith({crate});
    UserMoves(*crate, 4, 5, 6);
    EXPECT_EQ(PositionOf(*crate), (Vector3{4, 5, 6}));
    EXPECT_EQ(plugin.GetStoredMatrix(crate)[12], 4.0f);
}

TEST_F(MovesTest, MovedEventWithNothingSelectedDoesNothing) {
    EditorObject* crate = editor.Create("Crate", 1, 2, 3);
    MoveTo(*crate, 4, 5, 6);
    ObjectList data{crate};
    plugin.OnEvent(EventCode::ObjectsMoved, &data); // the data plays no part
    EXPECT_EQ(plugin.GetStoredMatrix(crate)[12], 1.0f);
}

TEST_F(RecordKeysTest, KeyAtTheTimeTakesTheValueAndItsHandlesMoveAlong) {
    auto* key = static_cast<CFilmVectorKey*>(KeysOf(*track, KeyKind::Position).front());
    const Vector3 in{1, 1, 1};
    const Vector3 out{2, 2, 2};
    key->SetInHandle(in.Data());
    key->SetOutHandle(out.Data());
    newMatrix[12] = 4.0f; // from 1 to 4 in x
    Record();
    EXPECT_EQ(key->value, (Vector3{4, 0, 0}));
    EXPECT_EQ(key->inHandle, (Vector3{4, 1, 1}));
    EXPECT_EQ(key->outHandle, (Vector3{5, 2, 2}));
}

TEST_F(RecordKeysTest, NewKeyGoesToTheCurrentTimeWithBothHandlesOnIt) {
    plugin.currentTime = 2.0f;
    newMatrix[12] = 4.0f;
    Record(7.0f); // the time given plays no part
    const std::vector<IFilmKey*> keys = KeysOf(*track, KeyKind::Position);
    ASSERT_EQ(keys.size(), 2u);
    EXPECT_EQ(keys[1]->time, 2.0f);
    EXPECT_EQ(VectorKey(keys[1]).value, (Vector3{4, 0, 0}));
    EXPECT_EQ(VectorKey(keys[1]).inHandle, (Vector3{4, 0, 0}));
    EXPECT_EQ(VectorKey(keys[1]).outHandle, (Vector3{4, 0, 0}));
    EXPECT_EQ(KeysOf(*track, KeyKind::Rotation).size(), 1u); // did not change
    EXPECT_EQ(KeysOf(*track, KeyKind::Scale).size(), 1u);
}

TEST_F(RecordKeysTest, ChangesBelowTheLimitMakeNoKey) {
    plugin.currentTime = 2.0f;
    oldMatrix[12] = newMatrix[12] = 0.0f;
    newMatrix[12] = 0.000009f;
    Record();
    EXPECT_EQ(KeysOf(*track, KeyKind::Position).size(), 1u);
    newMatrix[12] = 0.000011f;
    Record();
    EXPECT_EQ(KeysOf(*track, KeyKind::Position).size(), 2u);
}

TEST_F(RecordKeysTest, KeyTimesCountAsSameStrictlyWithinTheLimit) {
    newMatrix[12] = 4.0f;
    plugin.currentTime = 0.000009f;
    Record();
    EXPECT_EQ(KeysOf(*track, KeyKind::Position).size(), 1u);
    plugin.currentTime = 0.00002f;
    newMatrix[12] = 8.0f;
    Record();
    EXPECT_EQ(KeysOf(*track, KeyKind::Position).size(), 2u);
}

TEST_F(RecordKeysTest, RotationStaysNextToTheEarlierKey) {
    const Vector3 turned{0, 370, 0};
    KeysOf(*track, KeyKind::Rotation).front()->SetValue(turned.Data());
    plugin.currentTime = 1.0f;
    // A turn of 30 degrees about y, from 10 as a start of 370: the new key is 390, not 30.
    const float c = std::sqrt(0.75f);
    newMatrix = {c, 0, -0.5f, 0, 0, 1, 0, 0, 0.5f, 0, c, 0, 1, 0, 0, 1};
    Record();
    const std::vector<IFilmKey*> keys = KeysOf(*track, KeyKind::Rotation);
    ASSERT_EQ(keys.size(), 2u);
    EXPECT_NEAR(VectorKey(keys[1]).value.y, 390.0f, 1e-3f);
}

TEST_F(RecordKeysTest, RotationBeforeAllKeysStartsFromNone) {
    IFilmKey* later = KeysOf(*track, KeyKind::Rotation).front();
    const Vector3 turned{0, 370, 0};
    later->SetValue(turned.Data());
    later->SetTime(2.0f);
    plugin.currentTime = 1.0f;
    const float c = std::sqrt(0.75f); // 30 degrees about y; next to the later key it would be 390
    newMatrix = {c, 0, -0.5f, 0, 0, 1, 0, 0, 0.5f, 0, c, 0, 1, 0, 0, 1};
    Record();
    const std::vector<IFilmKey*> keys = KeysOf(*track, KeyKind::Rotation);
    ASSERT_EQ(keys.size(), 2u);
    const IFilmKey* added = keys[0] == later ? keys[1] : keys[0];
    EXPECT_NEAR(VectorKey(added).value.y, 30.0f, 1e-3f);
}

TEST_F(RecordKeysTest, RotationBetweenTwoKeysStartsFromTheCurve) {
    auto* last = AddKey(track, KeyKind::Rotation, 2.0f);
    const Vector3 full{0, 720, 0};
    last->SetValue(full.Data());
    for (IFilmKey* key : KeysOf(*track, KeyKind::Rotation)) {
        key->SetInMethod(BezierMethod::Linear);
        key->SetOutMethod(BezierMethod::Linear);
    }
    track->NotifyKeysChanged(KeyKind::Rotation);
    plugin.currentTime = 1.0f; // the curve stands at 360
    const float c = std::sqrt(0.75f);
    newMatrix = {c, 0, -0.5f, 0, 0, 1, 0, 0, 0.5f, 0, c, 0, 1, 0, 0, 1};
    Record();
    const std::vector<IFilmKey*> keys = KeysOf(*track, KeyKind::Rotation);
    ASSERT_EQ(keys.size(), 3u);
    EXPECT_NEAR(VectorKey(keys[2]).value.y, 390.0f, 1e-3f);
}

TEST_F(RecordKeysTest, NothingHappensWithoutObjectFilmOrTrack) {
    newMatrix[12] = 4.0f;
    plugin.RecordTransformKeys(nullptr, film, 0, newMatrix.data(), oldMatrix.data());
    plugin.RecordTransformKeys(crate, nullptr, 0, newMatrix.data(), oldMatrix.data());
    plugin.RecordTransformKeys(crate, NewFilm(), 0, newMatrix.data(), oldMatrix.data());
    EXPECT_EQ(VectorKey(KeysOf(*track, KeyKind::Position).front()).value, (Vector3{1, 0, 0}));
}

TEST_F(RecordKeysTest, KeysThatTheTrackRefusesAreToldFilledInAndDestroyed) {
    static std::vector<std::string> told;
    told.clear();
    SetLogListener([](const char* text) { told.emplace_back(text); });
    FakeKeyFactory factory(Films());
    factory.spoiledKind = KeyKind::Roll; // no track of an object takes it
    std::vector<Vector3> values;
    factory.onDestroy = [&] {
        const CFilmVectorKey& key = VectorKey(factory.destroyed.back());
        values.insert(values.end(), {key.value, key.inHandle, key.outHandle});
    };
    plugin.currentTime = 2.0f;
    newMatrix = {0, 2, 0, 0, -2, 0, 0, 0, 0, 0, 2, 0, 4, 5, 6, 1}; // turned about z, twice as large
    Record();
    SetLogListener(nullptr);
    EXPECT_THAT(told, ElementsAre("New position key was not added to track\n",
                                  "New rotation key was not added to track\n",
                                  "New scale key was not added to track\n"));
    ASSERT_EQ(values.size(), 9u);
    EXPECT_EQ(values[0], (Vector3{4, 5, 6}));
    EXPECT_EQ(values[1], values[0]);
    EXPECT_EQ(values[2], values[0]);
    EXPECT_EQ(values[6], (Vector3{2, 2, 2}));
    EXPECT_EQ(values[8], (Vector3{2, 2, 2}));
    EXPECT_EQ(track->keys.size(), 3u);
    EXPECT_EQ(factory.living, 0);
}

TEST_F(RecordKeysTest, AFactoryThatMakesNoKeysIsLivedWith) {
    FakeKeyFactory factory(Films());
    factory.granted = 0;
    plugin.currentTime = 2.0f;
    newMatrix[12] = 9.0f;
    Record();
    EXPECT_EQ(track->keys.size(), 3u);
}
