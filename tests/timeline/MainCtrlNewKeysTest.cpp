#include "framework/Menu.h"
#include "framework/Resource.h"
#include "keys/views/LooseKey.h"
#include "plugin/base/PluginResources.h"
#include "resources/resource.h"
#include "tests/timeline/CommandFixture.h"
#include "tests/timeline/NotingKey.h"
#include "undo/KeyActions.h"

#include <cmath>
#include <gmock/gmock.h>
#include <limits>
#include <typeinfo>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// New keys from the menu of a row, and attributes from key to key.
class NewKeysTest : public CommandTest {
protected:
    const IFilmKey* Newest(int kind) const { return KeysOf(*track, kind).back(); }
    /// Turns the crate's one rotation key, so that the film poses the crate so.
    void Turn(float x, float y, float z) {
        const Vector3 angles{x, y, z};
        KeysOf(*track, KeyKind::Rotation).front()->SetValue(angles.Data());
    }
    /// The control goes when the attributes window is next given a key.
    void LetControlGoIn(FakeAttributes& dialog) {
        dialog.onSetKey = [this] {
            if (control != nullptr) {
                plugin.scenarioDlg = nullptr;
                control.reset();
            }
        };
    }
    /// The axis above the rows is painted anew, and each row that shows.
    void ExpectAllPainted() const {
        CRect rect;
        EXPECT_TRUE(control->grid->GetUpdateRect(&rect));
        for (const CTrackCtrl* row : control->visibleTracks) {
            EXPECT_TRUE(WantsPaint(*row)) << row->name;
        }
    }
};

} // namespace

TEST_F(NewKeysTest, NewViewsAreOfTheirKindAndInNoTrack) {
    for (int kind = 0; kind < KeyKind::FilterCount; ++kind) {
        CTrackKey* view = control->CreateKeyView(kind);
        const LooseKey owner(view);
        ASSERT_NE(view, nullptr) << kind;
        EXPECT_EQ(view->record->kind, kind);
        EXPECT_EQ(view->record->track, nullptr);
        EXPECT_EQ(typeid(*view) == typeid(CTimedTrackKey), kind <= KeyKind::Sound);
        EXPECT_EQ(view->GetDuration(), kind <= KeyKind::Sound ? 5.0f : 0.0f);
    }
    for (const int kind : {-1, 20, 21, 1000}) {
        EXPECT_EQ(control->CreateKeyView(kind), nullptr);
    }
}

TEST_F(NewKeysTest, ATimedRecordKeepsTheFactorysTimesUntilItsKeyIsPlaced) {
    const IFilmKey* made = Films().keyFactory->CreateKey(KeyKind::Sound);
    const LooseKey key(control->CreateKeyView(KeyKind::Sound));
    EXPECT_EQ(key->record->time, made->time);
    EXPECT_EQ(key->record->endTime, made->endTime);
    Films().keyFactory->DestroyKey(const_cast<IFilmKey*>(made));
    ASSERT_NE(key->record->endTime, 5.0f);
    key->SetPosition(2.0f, /*viewOnly*/ false);
    EXPECT_EQ(key->record->time, 2.0f);
    EXPECT_EQ(key->record->endTime, 7.0f);
}

TEST_F(NewKeysTest, WithoutALevelThereAreNoViews) {
    plugin.level = nullptr;
    EXPECT_EQ(control->CreateKeyView(KeyKind::Position), nullptr);
    plugin.level = &editor.level;
}

TEST_F(NewKeysTest, AddedKeyStandsUnderTheMouseSelected) {
    CTrackCtrl* row = Row(KeyKind::JavaMethod);
    RunAt(IDC_ADD_KEY, row, 2.5f);
    ASSERT_THAT(TimesOf(*row), ElementsAre(2.5f));
    EXPECT_EQ(KeysOf(*track, KeyKind::JavaMethod).size(), 1u);
    EXPECT_EQ(Newest(KeyKind::JavaMethod)->time, 2.5f);
    EXPECT_THAT(control->selectedKeys, ElementsAre(*row->keys.begin()));
}

TEST_F(NewKeysTest, TimedKeyIsFiveSecondsLongOrAsLongAsThereIsRoom) {
    CTrackCtrl* row = Row(KeyKind::Sound);
    RunAt(IDC_ADD_KEY, row, 1.0f);
    EXPECT_EQ(Newest(KeyKind::Sound)->endTime, 6.0f);
    RunAt(IDC_ADD_KEY, row, 8.0f);
    EXPECT_EQ(Newest(KeyKind::Sound)->endTime, 10.0f);
}

TEST_F(NewKeysTest, WithoutRoomThereIsNoKeyAndNoWord) {
    CTrackCtrl* row = Row(KeyKind::Sound);
    Put(row, 1.0f, 2.0f);
    control->SelectOnly(*row->keys.begin());
    for (const float time : {2.0f, -1.0f, 10.5f}) {
        RunAt(IDC_ADD_KEY, row, time);
    }
    EXPECT_THAT(TimesOf(*row), ElementsAre(1.0f));
    EXPECT_EQ(KeysOf(*track, KeyKind::Sound).size(), 1u);
    EXPECT_THAT(boxes, IsEmpty());
    EXPECT_THAT(control->selectedKeys, IsEmpty()); // required: the keys are deselected all the same
}

TEST_F(NewKeysTest, AddedKeyIsNotedForUndo) {
    CTrackCtrl* row = Row(KeyKind::JavaMethod);
    RunAt(IDC_ADD_KEY, row, 2.5f);
    const std::vector<CFilmsUndoAction*>& actions = control->undoMgr.retired.Actions();
    ASSERT_EQ(actions.size(), 1u);
    const auto* action = dynamic_cast<const CFUAAddKey*>(actions.back());
    ASSERT_NE(action, nullptr);
    EXPECT_EQ(action->key, row->keys.front());
    EXPECT_EQ(action->trackCtrl, row);
}

TEST_F(NewKeysTest, AllIsPaintedThoughTheNewKeyFindsNoRoom) {
    Settle();
    RunAt(IDC_ADD_KEY, Row(KeyKind::Position), 0.0f);
    EXPECT_THAT(TimesOf(*Row(KeyKind::Position)), ElementsAre(0.0f));
    ExpectAllPainted();
}

TEST_F(NewKeysTest, PosedRecordsAreWrittenInTheirOrder) {
    NotingFactory factory(Films());
    factory.namesKinds = true;
    const auto written = [&](int kind) {
        factory.log.clear();
        RunAt(IDC_ADD_KEY, Row(kind), 0.0f); // there is no room: the record comes straight back
        return factory.log;
    };
    EXPECT_THAT(written(KeyKind::Position), ElementsAre("value", "in", "out"));
    EXPECT_THAT(written(KeyKind::Rotation), ElementsAre("value", "out", "out")); // Required: never "in".
    EXPECT_THAT(written(KeyKind::Scale), ElementsAre("value"));
}

TEST_F(NewKeysTest, ATimeThatIsNoNumberMakesNoKey) {
    CTrackCtrl* row = Row(KeyKind::Position);
    for (const float time : {std::nanf(""), std::numeric_limits<float>::infinity()}) {
        RunAt(IDC_ADD_KEY, row, time);
        RunAt(IDC_ADD_KEY, Row(KeyKind::Sound), time);
    }
    EXPECT_THAT(TimesOf(*row), ElementsAre(0.0f));
    EXPECT_THAT(TimesOf(*Row(KeyKind::Sound)), IsEmpty());
}

TEST_F(NewKeysTest, RoomBeforeTheFilmIsRoomForAKeyAtItsStart) {
    control->SetMovieRange(-5.0f, 10.0f);
    CTrackCtrl* row = Row(KeyKind::JavaMethod);
    Put(row, 0.0f);
    RunAt(IDC_ADD_KEY, row, -2.0f); // Required: nothing stands at -2, so a second key goes to 0.
    EXPECT_THAT(TimesOf(*row), ElementsAre(0.0f, 0.0f));
}

TEST_F(NewKeysTest, RootRowsAndNoRowTakeNoKey) {
    const std::size_t before = track->keys.size();
    RunAt(IDC_ADD_KEY, RowOf("Crate"), 2.0f);
    RunAt(IDC_ADD_KEY, nullptr, 2.0f);
    EXPECT_EQ(track->keys.size(), before);
}

TEST_F(NewKeysTest, CameraKeyTakesTheIndexOfItsRow) {
    AddCut(film, "", 0.0f, 1.0f, 2); // so that there are three rows
    control->ShowFilm(film, true);
    CTrackCtrl* row = RowOf("Level", KeyKind::Camera, 1);
    RunAt(IDC_ADD_KEY, row, 4.0f);
    ASSERT_EQ(row->keys.size(), 1u);
    EXPECT_EQ(static_cast<const CFilmCameraKey*>((*row->keys.begin())->record)->priority, 1);
}

TEST_F(NewKeysTest, AnimationKeyOfTheWholeObjectHasNoElement) {
    CTrackCtrl* row = Row(KeyKind::Animation);
    RunAt(IDC_ADD_KEY, row, 4.0f);
    ASSERT_EQ(row->keys.size(), 1u);
    EXPECT_EQ(static_cast<const CFilmAnimationKey*>(Newest(KeyKind::Animation))->meshElement, "");
}

TEST_F(NewKeysTest, AnimationKeyOfAPartTakesTheNameOfItsRow) {
    CTrackCtrl* row = control->AddTrackCtrl(/*redraw*/ false);
    row->kind = KeyKind::Animation;
    row->name = "Hips";
    row->track = track;
    row->parent = RowOf("Crate");
    row->parent->InsertBeforeLastAnimationRow(row);
    RunAt(IDC_ADD_KEY, row, 4.0f);
    ASSERT_EQ(row->keys.size(), 1u);
    EXPECT_EQ(static_cast<const CFilmAnimationKey*>(Newest(KeyKind::Animation))->meshElement, "Hips");
}

TEST_F(NewKeysTest, PositionKeyTakesThePlaceOfTheFilmAtItsTime) {
    auto* last = static_cast<CFilmVectorKey*>(AddKey(track, KeyKind::Position, 10.0f));
    const Vector3 end{11, 2, 3};
    last->SetValue(end.Data());
    for (IFilmKey* key : KeysOf(*track, KeyKind::Position)) {
        key->SetInMethod(BezierMethod::Linear);
        key->SetOutMethod(BezierMethod::Linear);
    }
    control->ShowFilm(film, true);
    MoveTo(*crate, 50, 50, 50); // where the object stands otherwise plays no part
    RunAt(IDC_ADD_KEY, Row(KeyKind::Position), 5.0f);
    const CFilmVectorKey& key = VectorKey(Newest(KeyKind::Position));
    EXPECT_EQ(key.time, 5.0f);
    EXPECT_EQ(key.value, (Vector3{6, 2, 3})); // half way from 1 to 11
    EXPECT_EQ(key.inHandle, (Vector3{6, 2, 3}));
    EXPECT_EQ(key.outHandle, (Vector3{6, 2, 3}));
}

TEST_F(NewKeysTest, RotationKeyGetsItsOutHandleAndNeverItsInHandle) {
    Turn(0, 30, 0);
    RunAt(IDC_ADD_KEY, Row(KeyKind::Rotation), 5.0f);
    const CFilmVectorKey& key = VectorKey(Newest(KeyKind::Rotation));
    EXPECT_NEAR(key.value.y, 30.0f, 1e-4f);
    EXPECT_EQ(key.outHandle, key.value);
    EXPECT_EQ(key.inHandle, Vector3{});
}

TEST_F(NewKeysTest, ScaleKeyGetsItsValueOnly) {
    const Vector3 large{2, 3, 4};
    KeysOf(*track, KeyKind::Scale).front()->SetValue(large.Data());
    RunAt(IDC_ADD_KEY, Row(KeyKind::Scale), 5.0f);
    const CFilmVectorKey& key = VectorKey(Newest(KeyKind::Scale));
    EXPECT_NEAR(key.value.x, 2.0f, 1e-5f);
    EXPECT_NEAR(key.value.z, 4.0f, 1e-5f);
    EXPECT_EQ(key.inHandle, Vector3{});
    EXPECT_EQ(key.outHandle, Vector3{});
}

TEST_F(NewKeysTest, PosedKeysGoNoFurtherThanTheFilmAndOthersDo) {
    film->length = 4.0f; // the axis still reaches to 10
    RunAt(IDC_ADD_KEY, Row(KeyKind::Position), 6.0f);
    RunAt(IDC_ADD_KEY, Row(KeyKind::JavaMethod), 6.0f);
    EXPECT_THAT(TimesOf(*Row(KeyKind::Position)), ElementsAre(0.0f, 4.0f));
    EXPECT_THAT(TimesOf(*Row(KeyKind::JavaMethod)), ElementsAre(6.0f));
}

TEST_F(NewKeysTest, LightsArePosedThroughTheirHelper) {
    EditorObject* lamp = editor.CreateOfClass("GLLightEditorObject", "Lamp", 7, 8, 9);
    plugin.AddLightTrack(lamp);
    CTrackCtrl* row = RowOf(lamp->name, KeyKind::Position);
    ASSERT_NE(row, nullptr);
    RunAt(IDC_ADD_KEY, row, 3.0f);
    EXPECT_THAT(TimesOf(*row), ElementsAre(0.0f, 3.0f));
    EXPECT_EQ(VectorKey(KeysOf(*row->track, KeyKind::Position).back()).value, (Vector3{7, 8, 9}));
}

TEST_F(NewKeysTest, ATrackThatLostItsObjectGetsNoPosedKey) {
    AsObjectTrack(track)->actor = nullptr;
    control->SelectOnly(*Row(KeyKind::Scale)->keys.begin());
    RunAt(IDC_ADD_KEY, Row(KeyKind::Position), 3.0f);
    EXPECT_THAT(TimesOf(*Row(KeyKind::Position)), ElementsAre(0.0f));
    EXPECT_EQ(control->selectedKeys.size(), 1u);
    AsObjectTrack(track)->actor = crate;
}

TEST_F(NewKeysTest, AttributesAreBlankedBeforeTheNewKeyComes) {
    FakeAttributes& dialog = OpenFakeAttributes(plugin);
    RunAt(IDC_ADD_KEY, Row(KeyKind::JavaMethod), 3.0f);
    EXPECT_THAT(dialog.log, ElementsAre("SetKey null"));
    dialog.visible = true;
    RunAt(IDC_ADD_KEY, Row(KeyKind::JavaMethod), 4.0f);
    EXPECT_EQ(dialog.record, Newest(KeyKind::JavaMethod));
}

TEST_F(NewKeysTest, RowsThatGoWhileTheAttributesAskAreNotTouched) {
    FakeAttributes& dialog = OpenFakeAttributes(plugin);
    dialog.onSetKey = [&] {
        dialog.onSetKey = nullptr;
        control->ShowFilm(film, true);
    };
    RunAt(IDC_ADD_KEY, Row(KeyKind::JavaMethod), 3.0f);
    EXPECT_THAT(KeysOf(*track, KeyKind::JavaMethod), IsEmpty());
}

TEST_F(NewKeysTest, ControlThatGoesWhileTheAttributesAskGetsNoKey) {
    FakeAttributes& dialog = OpenFakeAttributes(plugin);
    LetControlGoIn(dialog);
    control->SelectOnly(Put(Row(KeyKind::Rotation), 6.0f));
    dialog.visible = true; // it hears of the key that is no longer selected
    RunAt(IDC_ADD_KEY, Row(KeyKind::JavaMethod), 3.0f);
    EXPECT_EQ(control, nullptr);
    EXPECT_THAT(KeysOf(*track, KeyKind::JavaMethod), IsEmpty());
}

TEST_F(NewKeysTest, ControlThatGoesWhileTheAttributesAreBlankedGetsNoKey) {
    LetControlGoIn(OpenFakeAttributes(plugin));
    RunAt(IDC_ADD_KEY, Row(KeyKind::JavaMethod), 3.0f);
    EXPECT_EQ(control, nullptr);
    EXPECT_THAT(KeysOf(*track, KeyKind::JavaMethod), IsEmpty());
}

TEST_F(NewKeysTest, AttributesAreCopiedFromKeyToKey) {
    FakeAttributes& dialog = OpenFakeAttributes(plugin);
    CTrackCtrl* row = Row(KeyKind::Position); // the key at 0 stands for (1, 2, 3)
    CTrackKey* source = *row->keys.begin();
    CTrackKey* target = Put(row, 5.0f);
    RunOn(IDC_COPY_ATTRIBUTES, row, source);
    RunOn(IDC_PASTE_ATTRIBUTES, row, target);
    EXPECT_EQ(VectorKey(target->record).value, (Vector3{1, 2, 3}));
    EXPECT_EQ(target->time, 5.0f);
    EXPECT_THAT(dialog.log, ElementsAre("SetKey key"));
    EXPECT_EQ(dialog.key, target);
    RunOn(IDC_PASTE_ATTRIBUTES, row, target); // once more; on show already it is only read anew
    EXPECT_THAT(dialog.log, ElementsAre("SetKey key", "Refresh"));
}

TEST_F(NewKeysTest, AllIsPaintedWhenSomethingWasPasted) {
    CTrackCtrl* row = Row(KeyKind::Position);
    CTrackKey* target = Put(row, 5.0f);
    RunOn(IDC_COPY_ATTRIBUTES, row, row->keys.front());
    Settle();
    RunOn(IDC_PASTE_ATTRIBUTES, row, target);
    ExpectAllPainted();
    Settle();
    RunAt(IDC_PASTE_KEY, row, 7.0f);
    ExpectAllPainted();
    Settle();
    RunAt(IDC_PASTE_KEY, row, 7.0f); // where there is no room
    ExpectAllPainted();
}

TEST_F(NewKeysTest, PasteIsOfferedOnKeysAndRowsOfTheCopiedKind) {
    CTrackCtrl* row = Row(KeyKind::Position);
    CTrackKey* key = *row->keys.begin();
    RunOn(IDC_COPY_ATTRIBUTES, row, key);
    const ResourceScope resources(PluginResources());
    CMenu keySource;
    CMenu rowSource;
    keySource.LoadMenu(IDR_KEY_MENU);
    rowSource.LoadMenu(IDR_ROW_MENU);
    const auto isOffered = [](CMenu& menu, UINT id) {
        const UINT state = menu.GetMenuState(id, MF_BYCOMMAND);
        return state != 0xFFFFFFFF && (state & MF_GRAYED) == 0;
    };
    for (const int kind : {KeyKind::Position, KeyKind::Rotation}) {
        CMenu keyMenu;
        keyMenu.CreatePopupMenu();
        (*Row(kind)->keys.begin())->FillKeyMenu(&keyMenu, &keySource);
        EXPECT_EQ(isOffered(keyMenu, IDC_PASTE_ATTRIBUTES), kind == KeyKind::Position) << kind;
        CMenu rowMenu;
        rowMenu.CreatePopupMenu();
        Row(kind)->FillRowMenu(&rowMenu, &rowSource);
        EXPECT_EQ(isOffered(rowMenu, IDC_PASTE_KEY), kind == KeyKind::Position) << kind;
    }
}

TEST_F(NewKeysTest, NothingIsPastedWithoutASourceOrAKey) {
    FakeAttributes& dialog = OpenFakeAttributes(plugin);
    CTrackCtrl* row = Row(KeyKind::Position);
    CTrackKey* key = *row->keys.begin();
    RunOn(IDC_PASTE_ATTRIBUTES, row, key);
    RunAt(IDC_PASTE_KEY, row, 4.0f);
    RunOn(IDC_COPY_ATTRIBUTES, nullptr, key);
    RunOn(IDC_COPY_ATTRIBUTES, row, nullptr);
    RunOn(IDC_PASTE_ATTRIBUTES, row, key);
    RunOn(IDC_COPY_ATTRIBUTES, row, key);
    RunOn(IDC_PASTE_ATTRIBUTES, row, nullptr);
    RunAt(IDC_PASTE_KEY, nullptr, 4.0f);
    EXPECT_THAT(dialog.log, IsEmpty());
    EXPECT_THAT(TimesOf(*row), ElementsAre(0.0f));
}

TEST_F(NewKeysTest, PastedKeyStandsUnderTheMouseWithTheAttributesOfItsSource) {
    FakeAttributes& dialog = OpenFakeAttributes(plugin);
    CTrackCtrl* row = Row(KeyKind::Position);
    RunOn(IDC_COPY_ATTRIBUTES, row, *row->keys.begin());
    RunAt(IDC_PASTE_KEY, row, 4.0f);
    EXPECT_THAT(TimesOf(*row), ElementsAre(0.0f, 4.0f));
    EXPECT_EQ(VectorKey(Newest(KeyKind::Position)).value, (Vector3{1, 2, 3}));
    EXPECT_EQ(dialog.record, Newest(KeyKind::Position));
    RunAt(IDC_PASTE_KEY, row, 6.0f); // one copy, many keys
    EXPECT_THAT(TimesOf(*row), ElementsAre(0.0f, 4.0f, 6.0f));
}

TEST_F(NewKeysTest, RoomBeforeTheFilmIsRoomForAPastedKeyAtItsStart) {
    control->SetMovieRange(-5.0f, 10.0f);
    CTrackCtrl* row = Row(KeyKind::Position);
    RunOn(IDC_COPY_ATTRIBUTES, row, *row->keys.begin()); // the key at 0
    RunAt(IDC_PASTE_KEY, row, -2.0f); // Required: nothing stands at -2, so a second key goes to 0.
    EXPECT_THAT(TimesOf(*row), ElementsAre(0.0f, 0.0f));
}

TEST_F(NewKeysTest, KeyIsPastedIntoRowsOfItsKindOnly) {
    CTrackCtrl* row = Row(KeyKind::Position);
    RunOn(IDC_COPY_ATTRIBUTES, row, *row->keys.begin());
    RunAt(IDC_PASTE_KEY, Row(KeyKind::Rotation), 4.0f);
    RunAt(IDC_PASTE_KEY, RowOf("Crate"), 4.0f);
    EXPECT_THAT(TimesOf(*Row(KeyKind::Rotation)), ElementsAre(0.0f));
}

TEST_F(NewKeysTest, PastedCameraKeyKeepsTheIndexOfItsRowAndTheLengthOfItsSource) {
    CTrackCtrl* first = LevelRow(KeyKind::Camera);
    AddCut(film, "Cam", 0.0f, 1.5f, 0);
    AddCut(film, "", 0.0f, 1.0f, 1);
    control->ShowFilm(film, true);
    first = RowOf("Level", KeyKind::Camera, 0);
    CTrackCtrl* second = RowOf("Level", KeyKind::Camera, 1);
    RunOn(IDC_COPY_ATTRIBUTES, first, *first->keys.begin());
    RunAt(IDC_PASTE_KEY, second, 4.0f);
    EXPECT_THAT(TimesOf(*second), ElementsAre(0.0f, 4.0f));
    const auto* pasted = static_cast<const CFilmCameraKey*>(KeysOf(*film->mainTrack, KeyKind::Camera).back());
    EXPECT_EQ(pasted->priority, 1);
    EXPECT_EQ(pasted->cameraName, "Cam");
    EXPECT_EQ(pasted->endTime, 5.5f);
}

TEST_F(NewKeysTest, WithoutRoomTheKeyIsPastedOntoAndShownInNoRow) {
    FakeAttributes& dialog = OpenFakeAttributes(plugin);
    CTrackCtrl* row = Row(KeyKind::Position);
    CTrackKey* source = *row->keys.begin();
    RunOn(IDC_COPY_ATTRIBUTES, row, source);
    RunAt(IDC_PASTE_KEY, row, 0.0f);
    EXPECT_THAT(TimesOf(*row), ElementsAre(0.0f));
    EXPECT_EQ(KeysOf(*track, KeyKind::Position).size(), 1u);
    ASSERT_NE(dialog.key, nullptr);
    EXPECT_NE(dialog.key, source);
    EXPECT_EQ(dialog.record->track, nullptr);
    EXPECT_EQ(VectorKey(dialog.record).value, (Vector3{1, 2, 3}));
    dialog.record->SetInMethod(BezierMethod::User); // what the user does with it there
    RunAt(IDC_PASTE_KEY, row, 0.0f);
    EXPECT_EQ(VectorKey(dialog.record).inMethod, BezierMethod::Smooth);
    control->ShowFilm(film, true);
    EXPECT_EQ(dialog.key, nullptr);
}

TEST_F(NewKeysTest, CopiedKeyOfAnElementRowIsPastedOntoTheWholeObjectAndNotOntoItsOwnRow) {
    CTrackCtrl* row = control->AddTrackCtrl(/*redraw*/ false);
    row->kind = KeyKind::Animation;
    row->name = "Hips";
    row->track = track;
    row->parent = RowOf("Crate");
    row->parent->InsertBeforeLastAnimationRow(row);
    RunAt(IDC_ADD_KEY, row, 1.0f);
    RunOn(IDC_COPY_ATTRIBUTES, row, *row->keys.begin());
    RunAt(IDC_PASTE_KEY, row, 8.0f); // Required: the new record has no element yet and is refused.
    EXPECT_THAT(TimesOf(*row), ElementsAre(1.0f));
    CTrackCtrl* whole = RowOf("Crate")->FindLastAnimationRow();
    RunAt(IDC_PASTE_KEY, whole, 8.0f);
    EXPECT_THAT(TimesOf(*whole), ElementsAre(8.0f));
    EXPECT_EQ(static_cast<const CFilmAnimationKey*>(Newest(KeyKind::Animation))->meshElement, "Hips");
}

TEST_F(NewKeysTest, WhileACloneIsDraggedNothingIsPasted) {
    CTrackCtrl* row = Row(KeyKind::Position);
    CTrackKey* key = *row->keys.begin();
    control->keyDuplicator.Set(key, row, /*clone*/ true);
    RunAt(IDC_PASTE_KEY, row, 4.0f);
    RunOn(IDC_PASTE_ATTRIBUTES, row, key);
    EXPECT_THAT(TimesOf(*row), ElementsAre(0.0f));
    EXPECT_EQ(control->keyDuplicator.sourceKey, key);
}

TEST_F(NewKeysTest, NothingDanglesWhenRowsGoInsidePasteKey) {
    FakeAttributes& dialog = OpenFakeAttributes(plugin);
    dialog.visible = true;
    CTrackCtrl* row = Row(KeyKind::Position);
    RunOn(IDC_COPY_ATTRIBUTES, row, *row->keys.begin());
    dialog.onSetKey = [&] {
        dialog.onSetKey = nullptr;
        control->ShowFilm(film, true);
    };
    RunAt(IDC_PASTE_KEY, row, 4.0f);
    ExpectNothingDangles();
    EXPECT_THAT(TimesOf(*Row(KeyKind::Position)), ElementsAre(0.0f, 4.0f));
}
