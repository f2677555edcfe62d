#include "tests/timeline/TrackCtrlFixture.h"

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class TrackCtrlFoldingTest : public TrackCtrlTest {
protected:
    static std::vector<int> VisibleKinds(const CTrackCtrl& root) {
        std::vector<int> kinds;
        for (const CTrackCtrl* child : root.children) {
            if (child->visible) {
                kinds.push_back(child->kind);
            }
        }
        return kinds;
    }
    static std::vector<int> SetFlags(const KeyFilter& flags) {
        std::vector<int> kinds;
        for (int kind = 0; kind < KeyKind::FilterCount; ++kind) {
            if (flags[static_cast<std::size_t>(kind)] != 0) {
                kinds.push_back(kind);
            }
        }
        return kinds;
    }
    CTrackCtrl& Child(CTrackCtrl& root, int kind, int index = -2) { return *root.FindChild(kind, index); }
    /// A tree of the box with a position and a sound key.
    CTrackCtrl& TreeWithKeys() {
        CTrackCtrl& root = MakeTree(boxTrack);
        AddBar(Child(root, KeyKind::Position), 1.0f);
        AddBox(Child(root, KeyKind::Sound), 1.0f, 1.0f);
        return root;
    }
    const MovieParamsRecord* Record(CPluginFilmsParams& store, const std::string& entry) {
        for (const MovieParamsRecord& record : store.records) {
            if (record.filmName == film->name && record.objectName == entry) {
                return &record;
            }
        }
        return nullptr;
    }
};

} // namespace

TEST_F(TrackCtrlFoldingTest, UpdateShowsKindsThatHaveKeysWhenUnfolded) {
    CTrackCtrl& root = TreeWithKeys();
    root.visible = false;
    root.kindFlags.fill(1);
    root.expanded = true;
    root.UpdateVisibility(true);
    EXPECT_TRUE(root.visible);
    EXPECT_THAT(SetFlags(root.kindFlags), ElementsAre(KeyKind::Sound, KeyKind::Position));
    EXPECT_THAT(VisibleKinds(root), ElementsAre(KeyKind::Position, KeyKind::Sound));
}

TEST_F(TrackCtrlFoldingTest, UpdateHidesAllKindsWhileFolded) {
    CTrackCtrl& root = TreeWithKeys();
    root.UpdateVisibility(true);
    EXPECT_TRUE(root.visible);
    EXPECT_THAT(VisibleKinds(root), IsEmpty());
    EXPECT_THAT(SetFlags(root.kindFlags), ElementsAre(KeyKind::Sound, KeyKind::Position));
    root.expanded = true;
    root.UpdateVisibility(false);
    EXPECT_THAT(VisibleKinds(root), IsEmpty());
}

TEST_F(TrackCtrlFoldingTest, UnfoldingShowsKindsWithASetFlagOnly) {
    CTrackCtrl& root = TreeWithKeys();
    root.UpdateVisibility(true);
    root.SetExpanded(true, /*redraw*/ false);
    EXPECT_TRUE(root.expanded);
    EXPECT_THAT(VisibleKinds(root), ElementsAre(KeyKind::Position, KeyKind::Sound));
    EXPECT_THAT(timeline.log, IsEmpty());
    root.SetExpanded(false, /*redraw*/ true);
    EXPECT_THAT(VisibleKinds(root), IsEmpty());
    EXPECT_TRUE(root.visible);
    EXPECT_THAT(timeline.log, ElementsAre("RebuildVisibleRows true null"));
}

TEST_F(TrackCtrlFoldingTest, LevelRootOfANewFilmUnfoldsToNothing) {
    CTrackCtrl& root = MakeTree(film->mainTrack, 1);
    root.UpdateVisibility(true);
    root.SetExpanded(true, false);
    EXPECT_THAT(VisibleKinds(root), IsEmpty());
}

TEST_F(TrackCtrlFoldingTest, FlagsAreKeptEqualDownTheTree) {
    CTrackCtrl& root = TreeWithKeys();
    root.expanded = true;
    KeyFilter filter{};
    filter[KeyKind::Rotation] = 1;
    root.ApplyKindFlags(filter.data(), true);
    for (const CTrackCtrl* child : root.children) {
        EXPECT_EQ(child->kindFlags, filter);
    }
    EXPECT_THAT(VisibleKinds(root), ElementsAre(KeyKind::Rotation));
    root.ApplyKindFlags(nullptr, true);
    EXPECT_EQ(VisibleKinds(root).size(), root.children.size());
    root.ApplyKindFlags(nullptr, false);
    EXPECT_THAT(VisibleKinds(root), IsEmpty());
    EXPECT_TRUE(root.visible); // kinds from 20 on keep what they have
}

TEST_F(TrackCtrlFoldingTest, FoldedRootKeepsItsChildrenHiddenUnderAFilter) {
    CTrackCtrl& root = TreeWithKeys();
    root.ApplyKindFlags(nullptr, true);
    EXPECT_THAT(VisibleKinds(root), IsEmpty());
    EXPECT_EQ(SetFlags(root.children.front()->kindFlags).size(), 20U);
}

TEST_F(TrackCtrlFoldingTest, ButtonTogglesShowsStoresAndGivesUpTheFocus) {
    CTrackCtrl& root = TreeWithKeys();
    root.UpdateVisibility(true);
    const LPARAM button = reinterpret_cast<LPARAM>(root.expandButton.GetSafeHwnd());
    root.SendMessage(WM_COMMAND, MAKEWPARAM(0, 0), button);
    EXPECT_TRUE(root.expanded);
    EXPECT_EQ(root.expandButton.GetWindowText(), "-");
    EXPECT_THAT(VisibleKinds(root), ElementsAre(KeyKind::Position, KeyKind::Sound));
    EXPECT_THAT(timeline.log, ElementsAre("RebuildVisibleRows true null", "FocusControl"));
    ASSERT_NE(Record(*ParamsOf(box), "Box"), nullptr);
    EXPECT_EQ(Record(*ParamsOf(box), "Box")->expanded, 1);
    root.expandButton.Click();
    EXPECT_FALSE(root.expanded);
    EXPECT_EQ(root.expandButton.GetWindowText(), "+");
    EXPECT_THAT(VisibleKinds(root), IsEmpty());
    EXPECT_EQ(Record(*ParamsOf(box), "Box")->expanded, 0);
}

TEST_F(TrackCtrlFoldingTest, OtherCommandsDontToggle) {
    CTrackCtrl& root = TreeWithKeys();
    const LPARAM button = reinterpret_cast<LPARAM>(root.expandButton.GetSafeHwnd());
    root.SendMessage(WM_COMMAND, MAKEWPARAM(0, BN_DOUBLECLICKED), button);
    root.SendMessage(WM_COMMAND, MAKEWPARAM(0, 0), 0);
    EXPECT_FALSE(root.expanded);
}

TEST_F(TrackCtrlFoldingTest, ToggleKeepsTheStoredFilter) {
    CTrackCtrl& root = TreeWithKeys();
    KeyFilter filter{};
    filter[3] = 1;
    ParamsOf(box)->Set(film->name, filter.data(), 0, CPluginFilmsParams::kFilter, "Box");
    root.ToggleExpanded();
    EXPECT_EQ(Record(*ParamsOf(box), "Box")->keyFilter, filter);
}

TEST_F(TrackCtrlFoldingTest, HiddenKindRowClearsItsFlagInTheRootAndTheStore) {
    CTrackCtrl& root = TreeWithKeys();
    root.UpdateVisibility(true);
    root.SetExpanded(true, false);
    ParamsOf(box)->Clear();
    Child(root, KeyKind::Sound).SetVisibleFlag(false);
    EXPECT_FALSE(Child(root, KeyKind::Sound).visible);
    EXPECT_THAT(SetFlags(root.kindFlags), ElementsAre(KeyKind::Position));
    const MovieParamsRecord* record = Record(*ParamsOf(box), "Box");
    ASSERT_NE(record, nullptr);
    EXPECT_THAT(SetFlags(record->keyFilter), ElementsAre(KeyKind::Position));
    EXPECT_EQ(record->expanded, 1); // Required: what a new record gets here.
}

TEST_F(TrackCtrlFoldingTest, HidingOneCameraRowHidesThemAllAtTheNextFold) {
    CTrackCtrl& root = MakeTree(film->mainTrack, 2);
    AddBox(Child(root, KeyKind::Camera, 0), 1.0f, 1.0f);
    AddBox(Child(root, KeyKind::Camera, 1), 1.0f, 1.0f);
    root.UpdateVisibility(true);
    root.SetExpanded(true, false);
    Child(root, KeyKind::Camera, 0).SetVisibleFlag(false);
    EXPECT_TRUE(Child(root, KeyKind::Camera, 1).visible);
    EXPECT_EQ(root.kindFlags[0], 0);
    root.SetExpanded(false, false);
    root.SetExpanded(true, false);
    EXPECT_THAT(VisibleKinds(root), IsEmpty());
}

TEST_F(TrackCtrlFoldingTest, KindWithAClearedFlagCantBeShownByItself) {
    CTrackCtrl& root = TreeWithKeys();
    root.UpdateVisibility(true);
    root.SetExpanded(true, false);
    CTrackCtrl& rotation = Child(root, KeyKind::Rotation);
    rotation.SetVisibleFlag(true);
    EXPECT_FALSE(rotation.visible); // Required: its own flag decides.
    EXPECT_EQ(root.kindFlags[KeyKind::Rotation], 0);
}

TEST_F(TrackCtrlFoldingTest, HiddenRootHidesItsChildrenAndStoresNothing) {
    CTrackCtrl& root = TreeWithKeys();
    root.UpdateVisibility(true);
    root.SetExpanded(true, false);
    ParamsOf(box)->Clear();
    root.SetVisibleFlag(false);
    EXPECT_FALSE(root.visible);
    EXPECT_THAT(VisibleKinds(root), IsEmpty());
    EXPECT_THAT(ParamsOf(box)->records, IsEmpty());
}

TEST_F(TrackCtrlFoldingTest, FlagsOfKindsWithoutAByteAreIgnored) {
    CTrackCtrl& root = TreeWithKeys();
    ParamsOf(box)->Clear();
    const KeyFilter before = root.kindFlags;
    for (const int kind : {-1, 20, 21, 22, 1000}) {
        root.SetKindFlag(kind, true);
    }
    EXPECT_EQ(root.kindFlags, before);
    EXPECT_THAT(ParamsOf(box)->records, IsEmpty());
}

TEST_F(TrackCtrlFoldingTest, LevelTrackIsKeptInTheLevelStore) {
    CTrackCtrl& root = MakeTree(film->mainTrack, 1);
    Child(root, KeyKind::Sound).SetKindFlag(KeyKind::Sound, true);
    const MovieParamsRecord* record = Record(plugin.levelParams, "Level");
    ASSERT_NE(record, nullptr);
    EXPECT_THAT(SetFlags(record->keyFilter), ElementsAre(KeyKind::Sound));
}

TEST_F(TrackCtrlFoldingTest, LightTrackIsKeptAtItsObject) {
    EditorObject* light = editor.CreateOfClass(ClassName::GLLight, "Lamp"); // joins the open film
    CTrackCtrl& root = MakeTree(plugin.FindTrackOfObject(film, light));
    root.ToggleExpanded();
    const MovieParamsRecord* record = Record(*ParamsOf(light), light->name);
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->expanded, 1);
}

TEST_F(TrackCtrlFoldingTest, EachCameraHasAStoreOfItsName) {
    CTrackCtrl& first = MakeTree(AddCamera(film, "First"));
    CTrackCtrl& second = MakeTree(AddCamera(film, "Second"));
    second.ToggleExpanded();
    first.SetKindFlag(KeyKind::Roll, true);
    second.ToggleExpanded();
    ASSERT_EQ(plugin.cameraParams.size(), 2U);
    const MovieParamsRecord* record = Record(plugin.cameraParams.front(), "Second");
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->expanded, 0);
    ASSERT_NE(Record(plugin.cameraParams.back(), "First"), nullptr);
    EXPECT_THAT(SetFlags(Record(plugin.cameraParams.back(), "First")->keyFilter), ElementsAre(KeyKind::Roll));
}

TEST_F(TrackCtrlFoldingTest, ObjectTrackWithoutAnObjectIsKeptInTheLevelStore) {
    CTrackCtrl& root = MakeTree(boxTrack);
    AsObjectTrack(boxTrack)->SetActor(nullptr, false);
    root.ToggleExpanded();
    ASSERT_NE(Record(plugin.levelParams, "Level"), nullptr);
    EXPECT_EQ(Record(plugin.levelParams, "Level")->expanded, 1);
}

TEST_F(TrackCtrlFoldingTest, ObjectWithoutAStoreGetsOne) {
    CTrackCtrl& root = MakeTree(boxTrack);
    delete ParamsOf(box);
    box->GetInfo()->SetPluginData(IPluginImpl::kPluginKind, nullptr);
    root.ToggleExpanded();
    ASSERT_NE(ParamsOf(box), nullptr);
    EXPECT_EQ(Record(*ParamsOf(box), "Box")->expanded, 1);
}

TEST_F(TrackCtrlFoldingTest, RootWithoutATrackOrAnOpenFilmStoresNothing) {
    CTrackCtrl& bare = MakeRow(KeyKind::None);
    bare.ToggleExpanded();
    EXPECT_TRUE(bare.expanded);
    CTrackCtrl& root = MakeTree(film->mainTrack, 1);
    plugin.SetCurrentFilm(nullptr);
    plugin.levelParams.Clear();
    root.ToggleExpanded();
    root.SetKindFlag(KeyKind::Sound, true);
    EXPECT_THAT(plugin.levelParams.records, IsEmpty());
}

TEST_F(TrackCtrlFoldingTest, StoredFoldStateIsReadAndMadeWithDefaults) {
    CTrackCtrl& root = MakeTree(film->mainTrack, 1);
    plugin.levelParams.Clear();
    std::uint8_t expanded = 7;
    root.ReadStoredState(expanded);
    EXPECT_EQ(expanded, 0);
    const MovieParamsRecord* record = Record(plugin.levelParams, "Level");
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(SetFlags(record->keyFilter).size(), 20U);
    root.ToggleExpanded();
    root.ReadStoredState(expanded);
    EXPECT_EQ(expanded, 1);
    EXPECT_EQ(plugin.levelParams.records.size(), 1U);
}

TEST_F(TrackCtrlFoldingTest, RowWithoutAParentWindowFolds) {
    CTrackCtrl row;
    row.SetExpanded(true, /*redraw*/ true);
    row.ToggleExpanded();
    EXPECT_FALSE(row.expanded);
}
