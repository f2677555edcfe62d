#include "host/engine/MeshLibrary.h"
#include "plugin/contract/KeyKindTable.h"
#include "tests/support/ElementMesh.h"
#include "tests/support/PickingEditor.h"
#include "tests/timeline/TrackCtrlFixture.h"

#include <algorithm>
#include <functional>
#include <utility>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

using Kinds = std::vector<int>;

class TrackCtrlTreeTest : public TrackCtrlTest {
protected:
    static Kinds ChildKinds(const CTrackCtrl& root) {
        Kinds kinds;
        for (const CTrackCtrl* child : root.children) {
            kinds.push_back(child->kind);
        }
        return kinds;
    }
    CTrackCtrl& CameraRow(CTrackCtrl& root, bool first = false) {
        CTrackCtrl& row = MakeRow(KeyKind::Camera);
        EXPECT_TRUE(root.AddChildRow(&row, first));
        return row;
    }
    CFilmTrack* AddTrack(CFilmTrack* track) {
        film->AddTrack(track);
        return track;
    }
};

class TrackCtrlAnimationRowsTest : public TrackCtrlTreeTest {
protected:
    TrackCtrlAnimationRowsTest() {
        editor.level.SetMeshLibrary(&skeleton);
        robot = editor.Create("Robot");
        robot->SetMeshName("robot.glb");
        plugin.AddActors({robot});
        robotTrack = film->FindObjectTrack(robot);
        timeline.log.clear();
    }
    ~TrackCtrlAnimationRowsTest() override {
        plugin.editor = &editor;
        editor.level.SetMeshLibrary(nullptr);
    }
    CFilmAnimationKey* AddAnimation(const std::string& element) {
        auto* record = static_cast<CFilmAnimationKey*>(AddKey(robotTrack, KeyKind::Animation, 1.0f));
        record->SetValue(&element);
        return record;
    }
    static std::vector<std::string> AnimationNames(const CTrackCtrl& root) {
        std::vector<std::string> names;
        for (const CTrackCtrl* child : root.children) {
            if (child->kind == KeyKind::Animation) {
                names.push_back(child->name);
            }
        }
        return names;
    }

    /// The bones Hips - Spine - Arm - Hand, and Flag, which hangs on a node of another type below Hips.
    ElementMesh skeleton{
        {{"Hips", -1, 1}, {"Spine", 0, 1}, {"Arm", 1, 1}, {"Hand", 2, 1}, {"Group", 0, 2}, {"Flag", 4, 1}},
        {},
        "robot.glb"};
    PickingEditor picker;
    engine::SceneObject* robot = nullptr;
    CFilmTrack* robotTrack = nullptr;
};

} // namespace

TEST_F(TrackCtrlTreeTest, NewRowIsAVisibleFoldedRootWithoutChildren) {
    const CTrackCtrl row;
    EXPECT_TRUE(row.IsRoot());
    EXPECT_EQ(row.kind, 21);
    EXPECT_EQ(row.subIndex, -1);
    EXPECT_TRUE(row.visible);
    EXPECT_FALSE(row.expanded);
    EXPECT_EQ(row.parent, nullptr);
    EXPECT_EQ(row.track, nullptr);
    EXPECT_THAT(row.children, IsEmpty());
    EXPECT_EQ(row.GetLeftWidth(), -1);
}

TEST_F(TrackCtrlTreeTest, MakingARowEndsTheCurrentKey) {
    CTrackCtrl& row = MakeRow(KeyKind::Position);
    CTrackKey* key = AddBar(row, 1.0f);
    EXPECT_EQ(CurrentKey(), key);
    const CTrackCtrl other;
    EXPECT_EQ(CurrentKey(), nullptr);
}

TEST_F(TrackCtrlTreeTest, CreateAnswers1EvenWithoutAParent) {
    CTrackCtrl row;
    EXPECT_EQ(row.Create(nullptr, nullptr, WS_CHILD, CRect(0, 0, 10, 10), nullptr, 55), 1);
    EXPECT_EQ(row.GetSafeHwnd(), nullptr);
    EXPECT_EQ(row.expandButton.GetSafeHwnd(), nullptr);
}

TEST_F(TrackCtrlTreeTest, RowsOfEachTrackClassComeInTheirOrder) {
    EXPECT_EQ(ChildKinds(MakeTree(film->mainTrack, 2)), (Kinds{0, 0, 9, 13, 15, 2, 3, 4, 5, 6, 7}));
    EXPECT_EQ(ChildKinds(MakeTree(boxTrack)), (Kinds{10, 11, 12, 1, 8, 9, 13, 2, 3, 4, 7, 15}));
    EXPECT_EQ(ChildKinds(MakeTree(AddTrack(film->CreateGLLightTrack()))), (Kinds{10, 14, 15}));
    EXPECT_EQ(ChildKinds(MakeTree(AddTrack(film->CreateDynLightTrack()))), (Kinds{10, 11, 12, 14, 15}));
    EXPECT_EQ(ChildKinds(MakeTree(AddCamera(film, "Camera"))), (Kinds{16, 17, 19, 18}));
}

// A kind that a track holds but that has no row could not be seen or edited.
TEST_F(TrackCtrlTreeTest, EveryKindThatATrackHoldsHasARow) {
    const std::pair<unsigned, CFilmTrack*> tracks[] = {
        {TrackBit::Level, film->mainTrack},
        {TrackBit::Object, film->FindObjectTrack(box)},
        {TrackBit::GLLight, AddTrack(film->CreateGLLightTrack())},
        {TrackBit::DynLight, AddTrack(film->CreateDynLightTrack())},
        {TrackBit::Camera, AddTrack(film->CreateCameraTrack())},
    };
    for (const auto& [bit, track] : tracks) {
        const Kinds shown = ChildKinds(MakeTree(track, bit == TrackBit::Level ? 1 : 0));
        for (int kind = 0; kind < KeyKind::FilterCount; ++kind) {
            const bool isHeld = (FindKeyKind(kind)->tracks & bit) != 0;
            EXPECT_EQ(std::ranges::count(shown, kind), isHeld ? 1 : 0) << "track " << bit << " kind " << kind;
        }
    }
}

TEST_F(TrackCtrlTreeTest, ChildRowsHaveTheirKindsNamesTrackAndParent) {
    CTrackCtrl& root = MakeTree(film->mainTrack, 2);
    EXPECT_THAT(ChildNames(root),
                ElementsAre("Camera keys(0)", "Camera keys(1)", "Sound keys", "Java method keys",
                            "Flags keys", "FX sequence keys", "FX particle keys", "FX trace keys",
                            "FX rain keys", "FX blind keys", "FX flare keys"));
    for (const CTrackCtrl* child : root.children) {
        EXPECT_EQ(child->parent, &root);
        EXPECT_EQ(child->track, film->mainTrack);
    }
    EXPECT_EQ(root.subIndex, 1); // the highest camera index
}

TEST_F(TrackCtrlTreeTest, RootWithoutATrackGetsNoChildRows) {
    EXPECT_THAT(MakeTree(nullptr, 3).children, IsEmpty());
}

TEST_F(TrackCtrlTreeTest, RowsThatCantBeMadeEndTheTree) {
    timeline.refuseRows = true;
    CTrackCtrl& root = MakeTree(film->mainTrack, 2);
    EXPECT_THAT(root.children, IsEmpty());
    EXPECT_FALSE(root.AddChildOfKind(KeyKind::Sound));
}

TEST_F(TrackCtrlTreeTest, ChildOfAKindComesWithoutARedraw) {
    CTrackCtrl& root = MakeRow(KeyKind::None, boxTrack);
    EXPECT_TRUE(root.AddChildOfKind(KeyKind::Sound));
    EXPECT_THAT(timeline.log, ElementsAre("AddTrackCtrl false"));
    EXPECT_THAT(ChildNames(root), ElementsAre("Sound keys"));
}

TEST_F(TrackCtrlTreeTest, SecondRowOfAKindIsRefusedAndStaysWithoutParent) {
    CTrackCtrl& root = MakeTree(boxTrack);
    CTrackCtrl& second = MakeRow(KeyKind::Sound);
    EXPECT_FALSE(root.AddChildRow(&second, false));
    EXPECT_EQ(second.parent, nullptr);
    EXPECT_EQ(second.track, nullptr);
    EXPECT_FALSE(root.AddChildRow(nullptr, false));
}

TEST_F(TrackCtrlTreeTest, CameraRowsStandOnLevelRootsOnly) {
    CTrackCtrl& row = MakeRow(KeyKind::Camera);
    EXPECT_FALSE(MakeRow(KeyKind::None, boxTrack).AddChildRow(&row, false));
    EXPECT_FALSE(MakeRow(KeyKind::Sound, film->mainTrack).AddChildRow(&row, false));
    EXPECT_TRUE(MakeRow(KeyKind::None).AddChildRow(&row, false)); // a root without a track takes it
}

TEST_F(TrackCtrlTreeTest, CameraRowsStandByIndexBeforeTheOthers) {
    CTrackCtrl& root = MakeRow(KeyKind::None, film->mainTrack);
    root.AddChildOfKind(KeyKind::Sound);
    CTrackCtrl& zero = CameraRow(root);
    CTrackCtrl& one = CameraRow(root);
    EXPECT_THAT(ChildNames(root), ElementsAre("Camera keys(0)", "Camera keys(1)", "Sound keys"));
    // A new first row: those that stand there move up before.
    zero.SetCameraIndex(1);
    one.SetCameraIndex(2);
    CTrackCtrl& added = CameraRow(root, /*first*/ true);
    EXPECT_EQ(added.subIndex, 0);
    EXPECT_EQ(root.children.front(), &added);
    EXPECT_EQ(root.subIndex, 1); // Required: the counter knows nothing of it.
}

TEST_F(TrackCtrlTreeTest, RemovingACameraRowMovesTheLaterOnesDown) {
    CTrackCtrl& root = MakeRow(KeyKind::None, film->mainTrack);
    CameraRow(root);
    CTrackCtrl& one = CameraRow(root);
    CTrackCtrl& two = CameraRow(root);
    const CTimedTrackKey* key = AddBox(two, 1.0f, 1.0f);
    root.RemoveChildRow(&one);
    EXPECT_THAT(ChildNames(root), ElementsAre("Camera keys(0)", "Camera keys(1)"));
    EXPECT_EQ(two.subIndex, 1);
    EXPECT_EQ(static_cast<CFilmCameraKey*>(key->record)->priority, 1);
    EXPECT_EQ(root.subIndex, 1);
    root.RemoveChildRow(&one); // is none of its rows any more
    root.RemoveChildRow(nullptr);
    EXPECT_EQ(root.subIndex, 1);
}

TEST_F(TrackCtrlTreeTest, RemovingAnotherRowRenumbersNothing) {
    CTrackCtrl& root = MakeTree(film->mainTrack, 2);
    root.RemoveChildRow(root.FindChild(KeyKind::Sound, -2));
    EXPECT_EQ(root.FindChild(KeyKind::Sound, -2), nullptr);
    EXPECT_EQ(root.subIndex, 1);
    EXPECT_NE(root.FindChild(KeyKind::Camera, 1), nullptr);
}

TEST_F(TrackCtrlTreeTest, ChildIsFoundByKindAndIndex) {
    CTrackCtrl& root = MakeTree(film->mainTrack, 3);
    EXPECT_EQ(root.FindChild(KeyKind::Camera, -2)->subIndex, 0);
    EXPECT_EQ(root.FindChild(KeyKind::Camera, 2)->name, "Camera keys(2)");
    EXPECT_EQ(root.FindChild(KeyKind::Camera, 3), nullptr);
    EXPECT_EQ(root.FindChild(KeyKind::Sound, -1)->name, "Sound keys");
    EXPECT_EQ(root.FindChild(KeyKind::Position, -2), nullptr);
    EXPECT_TRUE(root.HasChildNamed("FX rain keys"));
    EXPECT_FALSE(root.HasChildNamed("FX rain"));
}

TEST_F(TrackCtrlTreeTest, CameraIndexIsThePriorityOfTheRowsKeys) {
    CTrackCtrl& camera = MakeRow(KeyKind::Camera);
    camera.subIndex = 0;
    const CTrackKey* key = AddBox(camera, 1.0f, 1.0f);
    camera.SetCameraIndex(7);
    EXPECT_EQ(camera.subIndex, 7);
    EXPECT_EQ(static_cast<CFilmCameraKey*>(key->record)->priority, 7);
    CTrackCtrl& sound = MakeRow(KeyKind::Sound);
    AddBox(sound, 1.0f, 1.0f);
    sound.SetCameraIndex(3); // other rows have nothing to renumber
    EXPECT_EQ(sound.subIndex, 3);
}

TEST_F(TrackCtrlAnimationRowsTest, EachElementGetsARowBeforeTheDefaultOne) {
    AddAnimation("Arm");
    AddAnimation("");
    AddAnimation("Hips");
    AddAnimation("Arm");
    CTrackCtrl& root = MakeRow(KeyKind::None, robotTrack);
    root.CreateChildRows(0);
    EXPECT_THAT(AnimationNames(root), ElementsAre("Arm", "Hips", "Animation keys"));
    EXPECT_THAT(ChildNames(root),
                ElementsAre("Position keys", "Rotation keys", "Scale keys", "Arm", "Hips", "Animation keys",
                            "Speech keys", "Sound keys", "Java method keys", "FX sequence keys",
                            "FX particle keys", "FX trace keys", "FX flare keys", "Flags keys"));
    EXPECT_EQ(root.FindLastAnimationRow()->name, "Animation keys");
    EXPECT_EQ(root.lastAnimationRow->name, "Animation keys");
    EXPECT_THAT(boxes, IsEmpty());
}

TEST_F(TrackCtrlAnimationRowsTest, RowsAreRepaintedOnceAtTheEnd) {
    CTrackCtrl& root = MakeTree(robotTrack);
    AddAnimation("Arm");
    AddAnimation("Hand");
    EXPECT_TRUE(root.CreateAnimationRows());
    EXPECT_THAT(timeline.log,
                ElementsAre("AddAnimationRow Arm", "AddAnimationRow Hand", "ArrangeRows true false"));
}

TEST_F(TrackCtrlAnimationRowsTest, RowGoesBeforeThatOfItsHighestAncestor) {
    AddAnimation("Arm");
    AddAnimation("Spine");
    CTrackCtrl& root = MakeTree(robotTrack);
    CTrackCtrl& hand = MakeRow(KeyKind::Animation);
    hand.name = "Hand";
    const CTrackCtrl* found = root.FindAnimationRowFor(&hand);
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->name, "Spine");
    EXPECT_EQ(hand.parent, &root);
    EXPECT_EQ(hand.track, robotTrack);
}

TEST_F(TrackCtrlAnimationRowsTest, ElementWithoutAncestorsInRowsGoesBeforeTheLast) {
    AddAnimation("Arm");
    CTrackCtrl& root = MakeTree(robotTrack);
    CTrackCtrl& spine = MakeRow(KeyKind::Animation);
    spine.name = "Spine";
    EXPECT_EQ(root.FindAnimationRowFor(&spine)->name, "Animation keys");
}

TEST_F(TrackCtrlAnimationRowsTest, AncestorsEndAtANodeOfAnotherType) {
    AddAnimation("Hips");
    CTrackCtrl& root = MakeTree(robotTrack);
    CTrackCtrl& flag = MakeRow(KeyKind::Animation);
    flag.name = "Flag";
    EXPECT_EQ(root.FindAnimationRowFor(&flag)->name, "Animation keys");
}

TEST_F(TrackCtrlAnimationRowsTest, AncestorsThatGoRoundEnd) {
    CTrackCtrl& root = MakeTree(robotTrack);
    skeleton.elements[0].parent = 2;
    CTrackCtrl& hand = MakeRow(KeyKind::Animation);
    hand.name = "Hand";
    EXPECT_EQ(root.FindAnimationRowFor(&hand)->name, "Animation keys");
    skeleton.elements[0].parent = -1;
}

TEST_F(TrackCtrlAnimationRowsTest, NoPlaceForAnUnknownElementOrARootWithoutObject) {
    CTrackCtrl& root = MakeTree(robotTrack);
    CTrackCtrl& tail = MakeRow(KeyKind::Animation);
    tail.name = "Tail";
    EXPECT_EQ(root.FindAnimationRowFor(&tail), nullptr);
    EXPECT_EQ(tail.parent, &root); // Required: it is set all the same.
    tail.name = "Hand";
    EXPECT_EQ(MakeRow(KeyKind::None, film->mainTrack).FindAnimationRowFor(&tail), nullptr);
    EXPECT_EQ(root.FindAnimationRowFor(nullptr), nullptr);
}

TEST_F(TrackCtrlAnimationRowsTest, UnknownElementIsRenamedAndEndsTheRows) {
    plugin.editor = &picker;
    picker.answer = "Hips";
    const CFilmAnimationKey* lost = AddAnimation("Tail");
    const CFilmAnimationKey* other = AddAnimation("Tail");
    AddAnimation("Arm");
    CTrackCtrl& root = MakeTree(robotTrack);
    EXPECT_THAT(boxes, ElementsAre("Warning, cannot find mesh element \"Tail\" in \"robot.glb\" mesh"));
    EXPECT_THAT(picker.asked, ElementsAre("Robot/"));
    EXPECT_EQ(lost->meshElement, "Hips");
    EXPECT_EQ(other->meshElement, "Hips");
    // Required: the old name finds no place, so neither it nor the new one nor any later one gets a row.
    EXPECT_THAT(AnimationNames(root), ElementsAre("Animation keys"));
    EXPECT_EQ(root.children.back()->kind, KeyKind::Flags); // the rows behind stand all the same
}

TEST_F(TrackCtrlAnimationRowsTest, FailureAsksForNoRepaint) {
    plugin.editor = &picker;
    CTrackCtrl& root = MakeTree(robotTrack);
    AddAnimation("Tail");
    EXPECT_FALSE(root.CreateAnimationRows());
    EXPECT_THAT(timeline.log, ElementsAre("AddAnimationRow Tail"));
}

TEST_F(TrackCtrlAnimationRowsTest, RowsRebuiltWhileTheUserPicksEndTheCall) {
    plugin.editor = &picker;
    CTrackCtrl& root = MakeTree(robotTrack);
    const CFilmAnimationKey* lost = AddAnimation("Tail");
    picker.answer = "Hips";
    picker.onBrowse = [this] { timeline.rows.clear(); };
    EXPECT_FALSE(root.CreateAnimationRows());
    EXPECT_EQ(lost->meshElement, "Tail");
    EXPECT_THAT(timeline.log, IsEmpty());
}

TEST_F(TrackCtrlAnimationRowsTest, RowsRebuiltDuringTheMessageEndTheTree) {
    plugin.editor = &picker;
    AddAnimation("Tail");
    CTrackCtrl& root = MakeRow(KeyKind::None, robotTrack);
    Hooks().messageBox = [this](const std::string&, UINT) {
        timeline.rows.clear();
        return 1;
    };
    root.CreateChildRows(0);
    EXPECT_THAT(timeline.rows, IsEmpty());
    EXPECT_THAT(picker.asked, IsEmpty());
}

TEST_F(TrackCtrlAnimationRowsTest, TrackWithoutAnObjectHasNoElementRows) {
    CTrackCtrl& root = MakeTree(robotTrack);
    AddAnimation("Arm");
    AsObjectTrack(robotTrack)->SetActor(nullptr, false);
    EXPECT_FALSE(root.CreateAnimationRows());
    EXPECT_THAT(boxes, IsEmpty());
    EXPECT_THAT(timeline.log, IsEmpty());
}

TEST_F(TrackCtrlAnimationRowsTest, InsertBeforeTheLastAnimationRow) {
    CTrackCtrl& root = MakeTree(robotTrack);
    CTrackCtrl& hips = MakeRow(KeyKind::Animation);
    hips.name = "Hips";
    EXPECT_TRUE(root.InsertBeforeLastAnimationRow(&hips));
    EXPECT_THAT(AnimationNames(root), ElementsAre("Hips", "Animation keys"));
    EXPECT_FALSE(root.InsertBeforeLastAnimationRow(nullptr));
    CTrackCtrl& bare = MakeRow(KeyKind::None, robotTrack);
    EXPECT_TRUE(bare.InsertBeforeLastAnimationRow(&hips)); // Required: true though it went nowhere.
    EXPECT_THAT(bare.children, IsEmpty());
}

TEST_F(TrackCtrlAnimationRowsTest, RenamingTouchesAnimationKeysOfThatNameOnly) {
    const CFilmAnimationKey* arm = AddAnimation("Arm");
    const CFilmAnimationKey* hips = AddAnimation("Hips");
    CTrackCtrl& root = MakeRow(KeyKind::None, robotTrack);
    root.RenameAnimationKeys("Arm", "Hand");
    EXPECT_EQ(arm->meshElement, "Hand");
    EXPECT_EQ(hips->meshElement, "Hips");
    MakeRow(KeyKind::None).RenameAnimationKeys("Hand", "Arm"); // no track
    EXPECT_EQ(arm->meshElement, "Hand");
}
