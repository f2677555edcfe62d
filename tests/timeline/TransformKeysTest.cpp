#include "tests/support/FakeAttributes.h"
#include "tests/timeline/CommandFixture.h"
#include "tests/timeline/NotingKey.h"

#include <array>
#include <cmath>
#include <gmock/gmock.h>
#include <limits>

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

using Matrix = std::array<float, 16>;

/// Moves in the 3D views while "Animate object" is on, from the host's event to the keys of the engine's
/// track.
class TransformKeysTest : public CommandTest {
protected:
    static constexpr float kCos30 = 0.8660254f;

    TransformKeysTest() { plugin.animateObjects = 1; }

    void GoTo(float time) { plugin.SetTime(time, /*fromWindow*/ false); }
    static Matrix MatrixOf(const EditorObject& object) {
        Matrix matrix{};
        std::copy_n(object.GetMatrix(0), matrix.size(), matrix.begin());
        return matrix;
    }
    /// The user gives an object other axes where it stands.
    void UserTurns(EditorObject& object, const std::array<float, 9>& axes) {
        Matrix matrix = MatrixOf(object);
        for (std::size_t row = 0; row < 3; ++row) {
            std::copy_n(axes.begin() + static_cast<std::ptrdiff_t>(row * 3), 3,
                        matrix.begin() + static_cast<std::ptrdiff_t>(row * 4));
        }
        editor.Select({&object});
        object.SetMatrix(matrix.data(), 0);
        plugin.OnEvent(EventCode::ObjectsMoved, nullptr);
    }
    /// 30 degrees about y.
    void UserTurns30(EditorObject& object) {
        UserTurns(object, {kCos30, 0, -0.5f, 0, 1, 0, 0.5f, 0, kCos30});
    }
    std::size_t Count(int kind) const { return KeysOf(*track, kind).size(); }
    CFilmVectorKey& First(int kind) { return static_cast<CFilmVectorKey&>(*KeysOf(*track, kind).front()); }
    const CFilmVectorKey& Last(int kind) const { return VectorKey(KeysOf(*track, kind).back()); }
    void SetHandles(CFilmVectorKey& key, const Vector3& in, const Vector3& out) {
        key.SetInHandle(in.Data());
        key.SetOutHandle(out.Data());
    }
    static void ExpectNear(const Vector3& value, const Vector3& expected) {
        EXPECT_NEAR(value.x, expected.x, 1e-4f);
        EXPECT_NEAR(value.y, expected.y, 1e-4f);
        EXPECT_NEAR(value.z, expected.z, 1e-4f);
    }
};

} // namespace

TEST_F(TransformKeysTest, AKeyThatNoRowTakesGetsItsTimesAndNoValues) {
    Matrix moved = MatrixOf(*crate);
    const Matrix old = moved;
    moved[12] += 50.0f;
    NotingFactory factory(Films());
    control->RecordObjectKeys(crate, 2.0f, moved.data(), old.data());
    EXPECT_THAT(factory.log, ElementsAre("time", "end"));
}

TEST_F(TransformKeysTest, ValuesOfANewKeyAreWrittenWhenItStandsInItsRow) {
    GoTo(2.0f);
    FakeAttributes& attributes = OpenFakeAttributes(plugin);
    attributes.visible = true;
    std::vector<std::pair<float, Vector3>> seen;
    attributes.onSetKey = [&] {
        if (seen.empty() && Count(KeyKind::Position) == 2) {
            seen.emplace_back(Last(KeyKind::Position).time, Last(KeyKind::Position).value);
        }
    };
    UserMoves(*crate, 4, 5, 6);
    ASSERT_EQ(seen.size(), 1u);
    EXPECT_EQ(seen[0].first, 2.0f);
    EXPECT_EQ(seen[0].second, Vector3()) << "the factory's";
    EXPECT_EQ(Last(KeyKind::Position).value, (Vector3{4, 5, 6}));
}

TEST_F(TransformKeysTest, ANewKeyWhoseRowsAreMadeAnewMeanwhileGetsItsValuesAllTheSame) {
    GoTo(2.0f);
    FakeAttributes& attributes = OpenFakeAttributes(plugin);
    attributes.visible = true;
    bool rebuilt = false;
    attributes.onSetKey = [&] {
        if (!rebuilt && Count(KeyKind::Position) == 2) {
            rebuilt = true;
            control->ShowFilm(film, true);
        }
    };
    UserMoves(*crate, 4, 5, 6);
    ASSERT_TRUE(rebuilt);
    EXPECT_EQ(Last(KeyKind::Position).value, (Vector3{4, 5, 6}));
}

TEST_F(TransformKeysTest, ANewKeyThatIsGoneMeanwhileIsWrittenNoMore) {
    GoTo(2.0f);
    FakeAttributes& attributes = OpenFakeAttributes(plugin);
    attributes.visible = true;
    bool left = false;
    attributes.onSetKey = [&] {
        if (!left && Count(KeyKind::Position) == 2) {
            left = true;
            plugin.SetCurrentFilm(nullptr);
            film->mainTrack->film->RemoveTrack(track, 1);
        }
    };
    UserMoves(*crate, 4, 5, 6);
    EXPECT_TRUE(left);
}

TEST_F(TransformKeysTest, MoveBetweenKeysMakesAPositionKeyThere) {
    GoTo(2.0f);
    UserMoves(*crate, 4, 5, 6);
    EXPECT_THAT(TimesOf(*Row(KeyKind::Position)), ElementsAre(0.0f, 2.0f));
    EXPECT_EQ(Last(KeyKind::Position).time, 2.0f);
    EXPECT_EQ(Last(KeyKind::Position).value, (Vector3{4, 5, 6}));
    EXPECT_EQ(Last(KeyKind::Position).inHandle, (Vector3{4, 5, 6}));
    EXPECT_EQ(Last(KeyKind::Position).outHandle, (Vector3{4, 5, 6}));
    EXPECT_EQ(Count(KeyKind::Rotation), 1u);
    EXPECT_EQ(Count(KeyKind::Scale), 1u);
    EXPECT_EQ(PositionOf(*crate), (Vector3{4, 5, 6}));
    GoTo(2.0f);
    EXPECT_EQ(PositionOf(*crate), (Vector3{4, 5, 6})); // the film has it
}

TEST_F(TransformKeysTest, MoveBeforeTheFirstKeyMakesAKey) {
    First(KeyKind::Position).SetTime(5.0f);
    First(KeyKind::Rotation).SetTime(5.0f);
    control->ShowFilm(film, true);
    GoTo(1.0f);
    UserMoves(*crate, 4, 5, 6);
    EXPECT_THAT(TimesOf(*Row(KeyKind::Position)), ElementsAre(1.0f, 5.0f));
    EXPECT_EQ(Count(KeyKind::Rotation), 1u);
}

TEST_F(TransformKeysTest, MoveAtAKeyChangesThatKeyAndLeavesItsInHandle) {
    SetHandles(First(KeyKind::Position), {1, 1, 1}, {2, 2, 2});
    UserMoves(*crate, 4, 2, 3); // 3 units in x
    EXPECT_THAT(TimesOf(*Row(KeyKind::Position)), ElementsAre(0.0f));
    EXPECT_EQ(First(KeyKind::Position).value, (Vector3{4, 2, 3}));
    EXPECT_EQ(First(KeyKind::Position).inHandle, (Vector3{1, 1, 1}));
    // Required: the out handle is set twice, first to the in handle moved along, then moved along itself.
    EXPECT_EQ(First(KeyKind::Position).outHandle, (Vector3{7, 1, 1}));
}

TEST_F(TransformKeysTest, AKeyIsAtTheTimeWithinAHundredthOfAMillisecond) {
    GoTo(0.000009f);
    UserMoves(*crate, 4, 2, 3);
    EXPECT_EQ(Count(KeyKind::Position), 1u);
    GoTo(0.00002f);
    UserMoves(*crate, 8, 2, 3);
    EXPECT_EQ(Count(KeyKind::Position), 2u);
}

TEST_F(TransformKeysTest, MoveBetweenTheSameWholeNumbersMakesNoKey) {
    GoTo(2.0f);
    UserMoves(*crate, 1.9f, 2.9f, 3.9f);
    EXPECT_EQ(Count(KeyKind::Position), 1u);
    UserMoves(*crate, 1.0f, 2.0f, 2.9f); // below 3
    EXPECT_EQ(Count(KeyKind::Position), 2u);
}

TEST_F(TransformKeysTest, WholeNumbersAreCutTowardsNothing) {
    const Vector3 place{-0.9f, 2, 3};
    First(KeyKind::Position).SetValue(place.Data());
    GoTo(2.0f);
    UserMoves(*crate, 0.9f, 2, 3); // both 0
    EXPECT_EQ(Count(KeyKind::Position), 1u);
    UserMoves(*crate, -1.0f, 2, 3);
    EXPECT_EQ(Count(KeyKind::Position), 2u);
}

TEST_F(TransformKeysTest, SmallMoveAtAKeyIsTaken) {
    UserMoves(*crate, 1.25f, 2, 3);
    EXPECT_EQ(First(KeyKind::Position).value, (Vector3{1.25f, 2, 3}));
}

TEST_F(TransformKeysTest, TurnMakesARotationKeyAlone) {
    GoTo(2.0f);
    UserTurns30(*crate);
    EXPECT_THAT(TimesOf(*Row(KeyKind::Rotation)), ElementsAre(0.0f, 2.0f));
    ExpectNear(Last(KeyKind::Rotation).value, {0, 30, 0});
    EXPECT_EQ(Last(KeyKind::Rotation).inHandle, Last(KeyKind::Rotation).value);
    EXPECT_EQ(Last(KeyKind::Rotation).outHandle, Last(KeyKind::Rotation).value);
    EXPECT_EQ(Count(KeyKind::Position), 1u);
    EXPECT_EQ(Count(KeyKind::Scale), 1u);
}

TEST_F(TransformKeysTest, TurnAtAKeyMovesBothItsHandles) {
    SetHandles(First(KeyKind::Rotation), {0, 1, 0}, {0, 2, 0});
    UserTurns30(*crate);
    EXPECT_EQ(Count(KeyKind::Rotation), 1u);
    ExpectNear(First(KeyKind::Rotation).value, {0, 30, 0});
    ExpectNear(First(KeyKind::Rotation).inHandle, {0, 31, 0});
    ExpectNear(First(KeyKind::Rotation).outHandle, {0, 32, 0});
}

TEST_F(TransformKeysTest, AnglesStayNextToTheKeyAtTheTime) {
    const Vector3 turned{0, 370, 0};
    First(KeyKind::Rotation).SetValue(turned.Data());
    UserTurns30(*crate);
    ExpectNear(First(KeyKind::Rotation).value, {0, 390, 0});
}

TEST_F(TransformKeysTest, AnglesStayNextToTheKeyBefore) {
    const Vector3 turned{0, 370, 0};
    First(KeyKind::Rotation).SetValue(turned.Data());
    GoTo(2.0f);
    UserTurns30(*crate);
    ExpectNear(Last(KeyKind::Rotation).value, {0, 390, 0});
}

TEST_F(TransformKeysTest, AnglesBetweenTwoKeysStayNextToTheCurve) {
    auto* end = AddKey(track, KeyKind::Rotation, 2.0f);
    const Vector3 twice{0, 720, 0};
    end->SetValue(twice.Data());
    for (IFilmKey* key : KeysOf(*track, KeyKind::Rotation)) {
        key->SetInMethod(BezierMethod::Linear);
        key->SetOutMethod(BezierMethod::Linear);
    }
    control->ShowFilm(film, true);
    GoTo(1.0f); // the curve stands at 360
    UserTurns30(*crate);
    ExpectNear(Last(KeyKind::Rotation).value, {0, 390, 0});
}

TEST_F(TransformKeysTest, AnglesBeforeTheFirstKeyStartFromNothing) {
    const Vector3 turned{0, 370, 0};
    First(KeyKind::Rotation).SetValue(turned.Data());
    First(KeyKind::Rotation).SetTime(5.0f);
    control->ShowFilm(film, true);
    GoTo(1.0f);
    UserTurns30(*crate);
    ExpectNear(Last(KeyKind::Rotation).value, {0, 30, 0});
}

TEST_F(TransformKeysTest, ScalingMakesAScaleKeyAndAtAKeyMovesItsHandles) {
    GoTo(2.0f);
    UserTurns(*crate, {2, 0, 0, 0, 1, 0, 0, 0, 1});
    EXPECT_THAT(TimesOf(*Row(KeyKind::Scale)), ElementsAre(0.0f, 2.0f));
    ExpectNear(Last(KeyKind::Scale).value, {2, 1, 1});
    ExpectNear(Last(KeyKind::Scale).inHandle, {2, 1, 1});
    UserTurns(*crate, {2, 0, 0, 0, 4, 0, 0, 0, 1});
    EXPECT_EQ(Count(KeyKind::Scale), 2u);
    ExpectNear(Last(KeyKind::Scale).value, {2, 4, 1});
    ExpectNear(Last(KeyKind::Scale).inHandle, {2, 4, 1});
    ExpectNear(Last(KeyKind::Scale).outHandle, {2, 4, 1});
    EXPECT_EQ(Count(KeyKind::Rotation), 1u);
}

TEST_F(TransformKeysTest, AnAttachedActorGetsKeysInTheSpaceOfItsParent) {
    EditorObject* cart = editor.Create("Cart", 10, 0, 0);
    AsObjectTrack(track)->SetParent(cart, false, "");
    GoTo(2.0f);
    EXPECT_EQ(PositionOf(*crate), (Vector3{11, 2, 3}));
    UserMoves(*crate, 15, 2, 3);
    EXPECT_EQ(Last(KeyKind::Position).value, (Vector3{5, 2, 3}));
    GoTo(2.0f);
    EXPECT_EQ(PositionOf(*crate), (Vector3{15, 2, 3}));
}

TEST_F(TransformKeysTest, OtherFilmsKeepTheirKeys) {
    const std::size_t before = track->keys.size();
    IFilm* second = OpenFilmWith({crate});
    GoTo(2.0f);
    UserMoves(*crate, 4, 5, 6);
    EXPECT_EQ(KeysOf(*second->FindObjectTrack(crate), KeyKind::Position).size(), 2u);
    EXPECT_EQ(track->keys.size(), before);
}

TEST_F(TransformKeysTest, AnObjectThatIsNoActorBecomesOneWithAKeyHere) {
    EditorObject* cart = editor.Create("Cart", 7, 7, 7);
    GoTo(2.0f);
    UserMoves(*cart, 9, 7, 7);
    CTrackCtrl* row = RowOf("Cart", KeyKind::Position);
    ASSERT_NE(row, nullptr);
    EXPECT_THAT(TimesOf(*row), ElementsAre(0.0f, 2.0f));
    const std::vector<IFilmKey*> keys = KeysOf(*row->track, KeyKind::Position);
    EXPECT_EQ(VectorKey(keys.front()).value, (Vector3{7, 7, 7}));
    EXPECT_EQ(VectorKey(keys.back()).value, (Vector3{9, 7, 7}));
    EXPECT_EQ(PositionOf(*cart), (Vector3{9, 7, 7}));
}

TEST_F(TransformKeysTest, AGLLightHasAPlaceOnly) {
    EditorObject* lamp = editor.CreateOfClass("GLLightEditorObject", "Lamp", 7, 8, 9);
    plugin.AddLightTrack(lamp);
    CTrackCtrl* row = RowOf(lamp->name, KeyKind::Position);
    ASSERT_NE(row, nullptr);
    GoTo(2.0f);
    UserMoves(*lamp, 9, 8, 9);
    UserTurns30(*lamp);
    EXPECT_THAT(TimesOf(*row), ElementsAre(0.0f, 2.0f));
    EXPECT_EQ(VectorKey(KeysOf(*row->track, KeyKind::Position).back()).value, (Vector3{9, 8, 9}));
    EXPECT_THAT(KeysOf(*row->track, KeyKind::Rotation), IsEmpty());
}

TEST_F(TransformKeysTest, ADynamicLightHasAllThree) {
    EditorObject* lamp = editor.CreateOfClass("FilmsDynLightEditorObject", "Lamp", 7, 8, 9);
    plugin.AddLightTrack(lamp);
    CTrackCtrl* row = RowOf(lamp->name, KeyKind::Position);
    ASSERT_NE(row, nullptr);
    GoTo(2.0f);
    UserMoves(*lamp, 9, 8, 9);
    UserTurns30(*lamp);
    EXPECT_EQ(KeysOf(*row->track, KeyKind::Position).size(), 2u);
    EXPECT_EQ(KeysOf(*row->track, KeyKind::Rotation).size(), 2u);
    ExpectNear(VectorKey(KeysOf(*row->track, KeyKind::Rotation).back()).value, {0, 30, 0});
}

TEST_F(TransformKeysTest, WithAnimateOffTheActorSnapsBackAndNoKeyIsWritten) {
    plugin.animateObjects = 0;
    GoTo(2.0f);
    editor.broadcasts.clear();
    UserMoves(*crate, 4, 5, 6);
    EXPECT_EQ(Count(KeyKind::Position), 1u);
    EXPECT_EQ(PositionOf(*crate), (Vector3{1, 2, 3}));
    EXPECT_THAT(editor.broadcasts, Contains(EventCode::ObjectsMoved));
    EXPECT_THAT(editor.lastBroadcastObjects, ElementsAre(crate));
}

TEST_F(TransformKeysTest, NewKeyIsSelectedAndItsRowRepainted) {
    CTrackKey* before = *Row(KeyKind::Scale)->keys.begin();
    control->SelectOnly(before);
    GoTo(2.0f);
    Settle();
    UserMoves(*crate, 4, 5, 6);
    EXPECT_TRUE(WantsPaint(*Row(KeyKind::Position)));
    EXPECT_TRUE(WantsPaint(*Row(KeyKind::Scale))); // its key is no longer selected
    EXPECT_FALSE(before->selected);
    ASSERT_EQ(control->selectedKeys.size(), 1u);
    EXPECT_EQ(control->selectedKeys.front()->record, &Last(KeyKind::Position));
}

TEST_F(TransformKeysTest, RowOfANewKeyAsksForItsPaintItself) {
    Matrix moved = MatrixOf(*crate);
    const Matrix old = moved;
    moved[12] += 50.0f;
    CTrackCtrl* positions = Row(KeyKind::Position);
    Settle();
    ASSERT_FALSE(WantsPaint(*positions));
    positions->parent->WriteTransformKeys(2.0f, moved.data(), old.data());
    EXPECT_TRUE(WantsPaint(*positions));
}

TEST_F(TransformKeysTest, AttributesAreReadAnew) {
    FakeAttributes& dialog = OpenFakeAttributes(plugin);
    UserMoves(*crate, 4, 5, 6);
    EXPECT_THAT(dialog.log, ElementsAre("Refresh"));
}

TEST_F(TransformKeysTest, MatricesThatAreNoNumbersMakeNoKeys) {
    const Matrix old = MatrixOf(*crate);
    for (const float bad :
         {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()}) {
        Matrix broken;
        broken.fill(bad);
        for (const float time : {0.0f, 2.0f}) {
            control->RecordObjectKeys(crate, time, broken.data(), old.data());
            control->RecordObjectKeys(crate, time, old.data(), broken.data());
        }
    }
    EXPECT_EQ(track->keys.size(), 3u);
    EXPECT_EQ(First(KeyKind::Position).value, (Vector3{1, 2, 3}));
    EXPECT_EQ(First(KeyKind::Position).outHandle, Vector3{});
}

TEST_F(TransformKeysTest, HugePlacesAreComparedToo) {
    const Matrix old = MatrixOf(*crate);
    Matrix far = old;
    far[12] = 1.0e30f;
    control->RecordObjectKeys(crate, 2.0f, far.data(), old.data());
    EXPECT_EQ(Last(KeyKind::Position).value.x, 1.0e30f);
}

TEST_F(TransformKeysTest, WithoutObjectRowOrTimeNothingIsWritten) {
    const Matrix old = MatrixOf(*crate);
    Matrix moved = old;
    moved[12] = 50.0f;
    EditorObject* stranger = editor.Create("Stranger");
    control->RecordObjectKeys(nullptr, 2.0f, moved.data(), old.data());
    control->RecordObjectKeys(stranger, 2.0f, moved.data(), old.data());
    control->RecordObjectKeys(crate, -0.5f, moved.data(), old.data());
    control->RecordObjectKeys(crate, std::nanf(""), moved.data(), old.data());
    control->RecordObjectKeys(crate, 2.0f, nullptr, old.data());
    control->RecordObjectKeys(crate, 2.0f, moved.data(), nullptr);
    RowOf("Crate")->WriteTransformKeys(-1.0f, moved.data(), old.data());
    EXPECT_EQ(track->keys.size(), 3u);
}

TEST_F(TransformKeysTest, RowsThatGoWhileAKeyIsAddedAreNotTouched) {
    FakeAttributes& dialog = OpenFakeAttributes(plugin);
    dialog.visible = true;
    dialog.onSetKey = [&] {
        dialog.onSetKey = nullptr;
        control->ShowFilm(film, true);
    };
    GoTo(2.0f);
    UserMoves(*crate, 4, 5, 6);
    ExpectNothingDangles();
    EXPECT_EQ(Last(KeyKind::Position).value, (Vector3{4, 5, 6}));
}
