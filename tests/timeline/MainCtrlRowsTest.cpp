#include "tests/timeline/ControlFixture.h"

#include "keys/views/NullTimeTrackKey.h"
#include "tests/support/ElementMesh.h"

#include <algorithm>
#include <gmock/gmock.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class MainCtrlRowsTest : public ControlTest {
protected:
    /// Rows of no track: "0", "1", ...
    void AddBareRows(int count) {
        for (int i = 0; i < count; ++i) {
            control->AddTrackCtrl(/*redraw*/ false)->name = std::to_string(i);
        }
    }
    CTrackCtrl* Row(std::size_t index) {
        return *std::next(control->tracks.begin(), static_cast<long>(index));
    }
    std::string TopName() const { return control->topRow != nullptr ? control->topRow->name : "none"; }
};

/// A film whose actor "Robot" has the bones Hips - Spine - Arm - Hand.
class MainCtrlElementRowsTest : public MainCtrlRowsTest {
protected:
    MainCtrlElementRowsTest() {
        editor.level.SetMeshLibrary(&skeleton);
        engine::SceneObject* robot = editor.Create("Robot");
        robot->SetMeshName("robot.glb");
        film = OpenFilmWith({robot});
    }
    ~MainCtrlElementRowsTest() override { editor.level.SetMeshLibrary(nullptr); }
    /// Level, the actor and the rows of its 12 kinds.
    CTrackCtrl* ShowEveryKind() {
        CTrackCtrl* root = RowOf("Robot");
        root->expanded = true;
        root->ApplyKindFlags(nullptr, true);
        control->RebuildVisibleRows(/*redraw*/ true, nullptr);
        return root;
    }
    static std::vector<std::string> ChildNames(const CTrackCtrl& root, int kind) {
        std::vector<std::string> names;
        for (const CTrackCtrl* child : root.children) {
            if (child->kind == kind) {
                names.push_back(child->name);
            }
        }
        return names;
    }

    ElementMesh skeleton{{{"Hips", -1, 1}, {"Spine", 0, 1}, {"Arm", 1, 1}, {"Hand", 2, 1}}};
    IFilm* film = nullptr;
};

} // namespace

TEST_F(MainCtrlRowsTest, TheFirstRowBecomesTheTopRow) {
    AddBareRows(2);
    EXPECT_EQ(TopName(), "0");
    EXPECT_EQ(control->vScroll->rangeEnd, 2.0f);
    EXPECT_EQ(control->vScroll->page, 2.0f);
}

TEST_F(MainCtrlRowsTest, ThePageGrowsOnlyWhileRowsFit) {
    AddBareRows(20); // 16 count as fitting
    EXPECT_EQ(control->vScroll->rangeEnd, 20.0f);
    EXPECT_EQ(control->vScroll->page, 16.0f);
}

TEST_F(MainCtrlRowsTest, ANewRowTakesTheAxisOfTheRuler) {
    control->SetMovieRange(0.0f, 8.0f);
    control->SetViewRange(1.0f, 5.0f, false);
    control->SetTicsDistance(0.5f, false);
    control->SetBigTics(3, false);
    CTrackCtrl* row = control->AddTrackCtrl(false);
    EXPECT_EQ(row->rangeEnd, 8.0f);
    EXPECT_EQ(row->viewStart, 1.0f);
    EXPECT_EQ(row->viewEnd, 5.0f);
    EXPECT_EQ(row->ticDistance, 0.5f);
    EXPECT_EQ(row->bigTics, 3);
    EXPECT_NE(row->IsFlickerFree(), 0);
    EXPECT_FALSE(row->IsWindowVisible());
}

TEST_F(MainCtrlRowsTest, ANewRowIsPlacedWhenARedrawIsAskedFor) {
    CTrackCtrl* first = control->AddTrackCtrl(/*redraw*/ false);
    EXPECT_FALSE(first->IsWindowVisible());
    CTrackCtrl* second = control->AddTrackCtrl(/*redraw*/ true);
    EXPECT_EQ(PlaceOf(first), CRect(0, 31, 780, 51));
    EXPECT_EQ(PlaceOf(second), CRect(0, 51, 780, 71));
    EXPECT_TRUE(first->IsWindowVisible());
    EXPECT_TRUE(second->IsWindowVisible());
}

TEST_F(MainCtrlRowsTest, RebuildingHidesRowsWhoseFlagIsClear) {
    AddBareRows(3);
    control->RebuildVisibleRows(/*redraw*/ true, nullptr);
    EXPECT_TRUE(Row(1)->IsWindowVisible());
    Row(1)->visible = false;
    control->RebuildVisibleRows(/*redraw*/ true, nullptr);
    EXPECT_FALSE(Row(1)->IsWindowVisible());
    EXPECT_EQ(PlaceOf(Row(2)), CRect(0, 51, 780, 71));
}

TEST_F(MainCtrlRowsTest, RebuildingListsTheVisibleRowsInOrder) {
    AddBareRows(4);
    Row(1)->visible = false;
    control->RebuildVisibleRows(/*redraw*/ false, nullptr);
    EXPECT_THAT(VisibleNames(), ElementsAre("0", "2", "3"));
    EXPECT_EQ(control->vScroll->rangeEnd, 3.0f);
}

TEST_F(MainCtrlRowsTest, AHiddenTopRowGivesWayToTheNextTowardsTheStart) {
    AddBareRows(40);
    control->topRow = Row(10);
    Row(10)->visible = false;
    Row(9)->visible = false;
    control->RebuildVisibleRows(false, nullptr);
    EXPECT_EQ(TopName(), "8");
}

TEST_F(MainCtrlRowsTest, WithNoneTowardsTheStartTheNearestBehindBecomesTheTopRow) {
    AddBareRows(40);
    for (std::size_t i = 0; i < 5; ++i) {
        Row(i)->visible = false;
    }
    control->topRow = Row(1);
    control->RebuildVisibleRows(false, nullptr);
    EXPECT_EQ(TopName(), "5");
}

TEST_F(MainCtrlRowsTest, WithNoVisibleRowThereIsNoTopRow) {
    AddBareRows(2);
    Row(0)->visible = Row(1)->visible = false;
    control->RebuildVisibleRows(true, nullptr);
    EXPECT_EQ(TopName(), "none");
    EXPECT_EQ(control->vScroll->position, 0.0f);
}

TEST_F(MainCtrlRowsTest, TheLastPageStaysFullButForOneRow) {
    AddBareRows(30);
    control->topRow = Row(25); // 5 rows are left of 16: 10 rows back
    control->RebuildVisibleRows(false, nullptr);
    EXPECT_EQ(TopName(), "15");
    EXPECT_EQ(control->vScroll->position, 15.0f);
}

TEST_F(MainCtrlRowsTest, TheLastPageStopsAtTheFirstRow) {
    AddBareRows(4);
    control->topRow = Row(3);
    control->RebuildVisibleRows(false, nullptr);
    EXPECT_EQ(TopName(), "0");
}

TEST_F(MainCtrlRowsTest, ATopRowOutsideTheListCountsAsNone) {
    AddBareRows(3);
    control->visibleTracks.erase(control->visibleTracks.begin());
    control->ArrangeRows(false, true); // the top row is no longer listed
    for (const CTrackCtrl* row : control->visibleTracks) {
        EXPECT_FALSE(row->IsWindowVisible());
    }
}

TEST_F(MainCtrlRowsTest, HandleFindsTheRowAgain) {
    OpenFilmWithActors(40);
    control->topRow = RowOf("Actor105");
    RowHandle handle;
    control->GetTopRowHandle(handle);
    EXPECT_EQ(handle.track, control->topRow->track);
    EXPECT_EQ(handle.kind, KeyKind::None);
    control->topRow = nullptr;
    control->RebuildVisibleRows(false, &handle);
    EXPECT_EQ(TopName(), "Actor105");
}

TEST_F(MainCtrlRowsTest, HandleOfNoRowReadsEmpty) {
    RowHandle handle{nullptr, 3, 7};
    control->GetTopRowHandle(handle);
    EXPECT_EQ(handle.track, nullptr);
    EXPECT_EQ(handle.kind, 21);
    EXPECT_EQ(handle.subIndex, -1);
}

TEST_F(MainCtrlRowsTest, AnUnknownHandleLeavesTheTopRow) {
    OpenFilmWithActors(40);
    control->topRow = RowOf("Actor103");
    const RowHandle unknown{control->topRow->track, KeyKind::Camera, 4};
    control->RebuildVisibleRows(false, &unknown);
    EXPECT_EQ(TopName(), "Actor103");
}

TEST_F(MainCtrlRowsTest, InsertMovesARowBeforeOrBehindAnother) {
    AddBareRows(4);
    control->InsertTrackCtrl(Row(3), Row(1), /*before*/ true);
    EXPECT_THAT(RowNames(), ElementsAre("0", "3", "1", "2"));
    control->InsertTrackCtrl(Row(0), Row(3), /*before*/ false);
    EXPECT_THAT(RowNames(), ElementsAre("3", "1", "2", "0"));
}

TEST_F(MainCtrlRowsTest, InsertBesideAnUnknownRowTakesTheRowOut) {
    AddBareRows(2);
    control->InsertTrackCtrl(Row(0), nullptr, true);
    EXPECT_THAT(RowNames(), ElementsAre("1"));
    control->RebuildVisibleRows(true, nullptr);
    EXPECT_EQ(TopName(), "1");
}

TEST_F(MainCtrlRowsTest, RemovingARootRowRemovesItsTrackFromTheFilm) {
    IFilm* film = OpenFilmWithActors(2);
    const std::size_t tracks = film->tracks.size();
    control->RemoveTrackCtrl(RowOf("Actor100"), true);
    EXPECT_EQ(film->tracks.size(), tracks - 1);
    EXPECT_EQ(RowOf("Actor100"), nullptr);
    EXPECT_NE(RowOf("Actor101"), nullptr);
}

TEST_F(MainCtrlRowsTest, RemovingTheTopRowFindsAnother) {
    OpenFilmWithActors(40);
    control->topRow = RowOf("Actor105");
    control->RemoveTrackCtrl(RowOf("Actor105"), true);
    EXPECT_EQ(TopName(), "Actor104");
}

TEST_F(MainCtrlRowsTest, RemovingAKindRowKeepsItsRecords) {
    IFilm* film = OpenFilmWithActors(1);
    CTrackCtrl* root = RowOf("Actor100");
    CTrackCtrl* positions = RowOf("Actor100", KeyKind::Position);
    control->RemoveTrackCtrl(positions, true);
    EXPECT_EQ(root->FindChild(KeyKind::Position, -2), nullptr);
    EXPECT_EQ(KeysOf(*film->tracks.back(), KeyKind::Position).size(), 1u);
}

TEST_F(MainCtrlRowsTest, RemovedCameraTakesItsPathAndItsHelpersAlong) {
    IFilm* film = OpenFilmWithActors(1);
    CFilmCameraTrack* gone = AddCamera(film, "Gone");
    CFilmCameraTrack* kept = AddCamera(film, "Kept");
    holder.ShowCurrentFilm();
    plugin.SetVisualizedTrack(kept);
    plugin.SetVisualizedTrack(gone);
    control->RemoveTrackCtrl(RowOf("Gone"), /*redraw*/ true);
    EXPECT_EQ(plugin.trackVisualizer.renderTrack, nullptr);
    ASSERT_EQ(plugin.trackVisualizer.renderData.size(), 1u);
    EXPECT_EQ(plugin.trackVisualizer.renderData.front()->track, kept);
    EXPECT_TRUE(editor.hideCalls.back().hidden);
    plugin.OnRender();
    plugin.SetVisualizedTrack(kept);
    control->RemoveTrackCtrl(RowOf("Actor100"), /*redraw*/ true);
    EXPECT_EQ(plugin.trackVisualizer.renderTrack, kept) << "another row's removal leaves the camera on show";
}

TEST_F(MainCtrlRowsTest, RemovingACameraRowDeletesItsKeysAndRenumbersTheOthers) {
    IFilm* film = OpenNewFilm();
    for (int index = 0; index < 3; ++index) {
        AddCut(film, "", static_cast<float>(index), static_cast<float>(index) + 1.0f, index);
    }
    control->ShowFilm(film, true);
    control->RemoveTrackCtrl(RowOf("Level", KeyKind::Camera, 1), true);
    CTrackCtrl* level = RowOf("Level");
    EXPECT_NE(level->FindChild(KeyKind::Camera, 0), nullptr);
    EXPECT_EQ(level->FindChild(KeyKind::Camera, 1)->name, "Camera keys(1)");
    EXPECT_EQ(level->FindChild(KeyKind::Camera, 2), nullptr);
    const std::vector<IFilmKey*> left = KeysOf(*film->mainTrack, KeyKind::Camera);
    ASSERT_EQ(left.size(), 2u);
    EXPECT_EQ(static_cast<CFilmCameraKey*>(left[1])->priority, 1);
}

TEST_F(MainCtrlRowsTest, DeletingAllRowsEmptiesTheRowBar) {
    OpenFilmWithActors(20);
    control->DeleteAllRows();
    EXPECT_THAT(RowNames(), IsEmpty());
    EXPECT_THAT(VisibleNames(), IsEmpty());
    EXPECT_EQ(control->topRow, nullptr);
    EXPECT_EQ(control->vScroll->rangeEnd, 0.0f);
    EXPECT_EQ(control->vScroll->page, 0.0f);
}

TEST_F(MainCtrlRowsTest, FindsTheRowOfAnObjectOnlyAmongActorsAndLights) {
    OpenFilmWithActors(2);
    EditorObject* actor = AsObjectTrack(RowOf("Actor101")->track)->actor;
    EXPECT_EQ(control->FindRowOfObject(actor), RowOf("Actor101"));
    EXPECT_EQ(control->FindRowOfObject(nullptr), nullptr);
    EXPECT_EQ(control->FindRowOfObject(editor.Create("Bystander")), nullptr);
}

TEST_F(MainCtrlRowsTest, FindsTheRowOfARecord) {
    IFilm* film = OpenFilmWithActors(1);
    CFilmCameraKey* second = AddCut(film, "", 0.0f, 1.0f, 1);
    control->ShowFilm(film, true);
    EXPECT_EQ(control->FindRowOfKey(second), RowOf("Level", KeyKind::Camera, 1));
    IFilmKey* position = KeysOf(*RowOf("Actor100")->track, KeyKind::Position).front();
    EXPECT_EQ(control->FindRowOfKey(position), RowOf("Actor100", KeyKind::Position));
    EXPECT_EQ(control->FindRowOfKey(nullptr), nullptr);
}

TEST_F(MainCtrlRowsTest, FindsTheRowOfAView) {
    OpenFilmWithActors(2);
    CTrackCtrl* row = RowOf("Actor101", KeyKind::Rotation);
    EXPECT_EQ(control->FindRowOfKeyView(row->keys.front(), /*byValue*/ false), row);
    EXPECT_EQ(control->FindRowOfKeyView(nullptr, false), nullptr);
    CNullTimeTrackKey twin;
    twin.SetRecord(row->keys.front()->record, /*takeTimes*/ true);
    const Vector3 turn{1, 2, 3}; // unlike the other actor's
    twin.record->SetValue(turn.Data());
    twin.ApplyKeyParams(control->GetKeyParams(KeyKind::Rotation));
    EXPECT_EQ(control->FindRowOfKeyView(&twin, /*byValue*/ false), nullptr);
    EXPECT_EQ(control->FindRowOfKeyView(&twin, /*byValue*/ true), row);
}

TEST_F(MainCtrlElementRowsTest, RowOfAnElementStandsBeforeThatOfItsHighestAncestor) {
    for (const std::string element : {"Arm", "Spine", "Hand"}) {
        AddKey(RowOf("Robot")->track, KeyKind::Animation, 1.0f)->SetValue(&element);
    }
    control->ShowFilm(film, true);
    const std::vector<std::string> names = RowNames();
    const auto first = std::ranges::find(names, "  Scale keys");
    ASSERT_GE(names.end() - first, 6);
    EXPECT_THAT(std::vector<std::string>(first + 1, first + 6),
                ElementsAre("  Arm", "  Hand", "  Spine", "  Animation keys", "  Speech keys"));
    // Required: below the root they stand as they were made.
    EXPECT_THAT(ChildNames(*RowOf("Robot"), KeyKind::Animation),
                ElementsAre("Arm", "Spine", "Hand", "Animation keys"));
    // Required: the row that is told for an animation key is the first, whatever its element.
    for (const IFilmKey* record : KeysOf(*RowOf("Robot")->track, KeyKind::Animation)) {
        EXPECT_EQ(control->FindRowOfKey(record)->name, "Arm");
    }
}

TEST_F(MainCtrlElementRowsTest, NewRowOfAnElementBecomesTheTopRowAndLengthensTheBar) {
    CTrackCtrl* root = ShowEveryKind();
    control->topRow = RowOf("Level");
    EXPECT_EQ(control->vScroll->rangeEnd, 14.0f);
    EXPECT_EQ(control->vScroll->page, 14.0f);
    CTrackCtrl* hips = control->AddAnimationRow(root, "Hips");
    ASSERT_NE(hips, nullptr);
    EXPECT_EQ(control->topRow, hips);
    EXPECT_EQ(hips->kind, KeyKind::Animation);
    EXPECT_EQ(hips->parent, root);
    EXPECT_EQ(hips->track, root->track);
    EXPECT_EQ(hips->rangeEnd, control->movieEnd);
    EXPECT_EQ(control->visibleTracks[5], hips); // in front of "Animation keys"
    EXPECT_EQ(control->visibleTracks[6], root->FindLastAnimationRow());
    EXPECT_TRUE(hips->IsWindowVisible());
    EXPECT_EQ(control->vScroll->rangeEnd, 15.0f);
    EXPECT_EQ(control->vScroll->page, 15.0f);
    ASSERT_NE(control->AddAnimationRow(root, "Spine"), nullptr);
    ASSERT_NE(control->AddAnimationRow(root, "Arm"), nullptr);
    EXPECT_EQ(control->vScroll->rangeEnd, 17.0f);
    EXPECT_EQ(control->vScroll->page, 16.0f); // 16 count as fitting
}

TEST_F(MainCtrlElementRowsTest, WithoutVisibleRowsTheTopRowStays) {
    CTrackCtrl* root = RowOf("Robot");
    control->visibleTracks.clear();
    control->topRow = nullptr;
    CTrackCtrl* hips = control->AddAnimationRow(root, "Hips");
    EXPECT_EQ(control->topRow, nullptr);
    EXPECT_THAT(control->visibleTracks, ElementsAre(hips));
}

TEST_F(MainCtrlElementRowsTest, ElementThatTheMeshHasNotGetsNoRow) {
    CTrackCtrl* root = ShowEveryKind();
    const std::vector<std::string> before = RowNames();
    EXPECT_EQ(control->AddAnimationRow(root, "Tail"), nullptr);
    EXPECT_EQ(control->AddAnimationRow(nullptr, "Hips"), nullptr);
    EXPECT_EQ(RowNames(), before);
    EXPECT_EQ(TopName(), "Level");
    EXPECT_EQ(control->vScroll->rangeEnd, 14.0f);
}
