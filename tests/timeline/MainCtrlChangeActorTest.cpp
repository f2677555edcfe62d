// "Change actor": what the new actor must have, by the keys of the track.
#include "host/engine/LevelRoot.h"
#include "host/engine/MeshLibrary.h"
#include "host/engine/ObjectTrack.h"
#include "resources/resource.h"
#include "tests/support/ElementMesh.h"
#include "tests/timeline/CommandFixture.h"

#include <algorithm>
#include <gmock/gmock.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// The user has asked to change the actor "Crate"; "Ship" has a mesh.
class ChangeActorTest : public CommandTest {
protected:
    ChangeActorTest() {
        editor.level.SetMeshLibrary(&boats);
        ship = editor.Create("Ship");
        ship->SetMeshName("ship.glb");
        Ask();
    }
    ~ChangeActorTest() override {
        Settle();
        editor.level.SetMeshLibrary(nullptr);
    }
    void Ask() { RunAt(IDC_CHANGE_ACTOR, RowOf("Crate"), 0.0f); }
    /// The user clicks an object, as the host tells it.
    void Choose(EditorObject* object) {
        editor.Select({object});
        plugin.OnEvent(EventCode::SelectionChanged, nullptr);
    }
    EditorObject* Actor() const { return AsObjectTrack(track)->actor; }
    bool IsMarkedVirtual() const {
        return static_cast<const engine::ObjectTrack*>(AsObjectTrack(track))->actorIsVirtual;
    }
    CFilmAnimationKey& PutAnimation(const std::string& element, const std::string& sequence) {
        auto& key = static_cast<CFilmAnimationKey&>(*AddKey(track, KeyKind::Animation, 1.0f));
        key.meshElement = element;
        key.animationName = sequence;
        return key;
    }
    void ExpectRefused(const std::string& words) {
        EXPECT_THAT(boxes, ElementsAre(words));
        EXPECT_EQ(Actor(), crate);
        EXPECT_NE(RowOf("Crate"), nullptr);
        EXPECT_FALSE(control->IsChangingActor());
        boxes.clear();
    }

    ElementMesh boats{{{"Mast", -1, 1}}, {{"Sail", 2.0f}}}; ///< every file: a mast, and it can sail
    engine::SceneObject* ship;
};

} // namespace

TEST_F(ChangeActorTest, TheChosenObjectPlaysThePartAtOnce) {
    Choose(ship);
    EXPECT_EQ(Actor(), ship);
    EXPECT_FALSE(IsMarkedVirtual());
    EXPECT_EQ(PositionOf(*ship), (Vector3{1, 2, 3})); // where the film has its actor
    EXPECT_THAT(boxes, IsEmpty());
    EXPECT_FALSE(control->IsChangingActor());
    Choose(crate); // the mode is over
    EXPECT_EQ(Actor(), ship);
}

TEST_F(ChangeActorTest, RowsStandInTheOrderOfTheNewNames) {
    plugin.AddActors({editor.Create("Mill")});
    Ask();
    Choose(ship);
    std::vector<std::string> roots;
    for (const CTrackCtrl* row : control->tracks) {
        if (row->IsRoot()) {
            roots.push_back(row->name);
        }
    }
    EXPECT_THAT(roots, ElementsAre("Level", "Mill", "Ship"));
    ExpectNothingDangles();
}

TEST_F(ChangeActorTest, AVirtualObjectIsTakenAndMarked) {
    EditorObject* ghost = editor.CreateOfClass("VirtualObjEditorObject", "Ghost");
    Choose(ghost);
    EXPECT_EQ(Actor(), ghost);
    EXPECT_TRUE(IsMarkedVirtual());
}

TEST_F(ChangeActorTest, HelpersLightsAndWhatIsNoEditorObjectAreRefused) {
    EditorObject* others[] = {editor.CreateOfClass("HelperEditorObject", "Helper"),
                              editor.CreateOfClass("GLLightEditorObject", "Lamp"), &Data().Root()};
    for (EditorObject* other : others) {
        Ask();
        Choose(other);
        ExpectRefused("Cannot change actor to that object!");
    }
}

TEST_F(ChangeActorTest, OneObjectMustBeSelected) {
    editor.Select({ship, crate});
    plugin.OnEvent(EventCode::SelectionChanged, nullptr);
    ExpectRefused("Cannot perform action for such selection!");
    Ask();
    editor.Select({});
    plugin.OnEvent(EventCode::SelectionChanged, nullptr);
    ExpectRefused("Cannot perform action for such selection!");
}

TEST_F(ChangeActorTest, AnimationsNeedTheirElement) {
    PutAnimation("Keel", "");
    Choose(ship);
    ExpectRefused("Cannot find mesh element for animation key!");
    Ask();
    static_cast<CFilmAnimationKey*>(KeysOf(*track, KeyKind::Animation).front())->meshElement = "Mast";
    Choose(ship);
    EXPECT_EQ(Actor(), ship);
}

TEST_F(ChangeActorTest, AnimationsNeedTheirSequence) {
    CFilmAnimationKey& key = PutAnimation("Mast", "Fly");
    Choose(ship);
    ExpectRefused("Cannot find animation sequence Fly for animation key!");
    Ask();
    key.animationName = "Sail";
    Choose(ship);
    EXPECT_EQ(Actor(), ship);
    EXPECT_THAT(boxes, IsEmpty());
}

TEST_F(ChangeActorTest, EffectsNeedTheElementThatTheyHangOn) {
    for (const int kind : {2, 3, 4, 7}) {
        auto* key = static_cast<CFilmFxKey*>(AddKey(track, kind, 1.0f));
        key->linkElement = "Keel";
        Ask();
        Choose(ship);
        ExpectRefused("Cannot find mesh element for FX key!");
        track->RemoveKey(key, /*destroy*/ true);
    }
}

TEST_F(ChangeActorTest, TheFirstFaultAlongTheTrackIsTold) {
    static_cast<CFilmFxKey*>(AddKey(track, KeyKind::FxTrace, 2.0f))->linkElement = "Keel";
    PutAnimation("Mast", "Fly");
    const auto first = std::ranges::find_if(track->keys, [](const IFilmKey* key) {
        return key->kind == KeyKind::Animation || key->kind == KeyKind::FxTrace;
    });
    ASSERT_NE(first, track->keys.end());
    Choose(ship);
    ExpectRefused((*first)->kind == KeyKind::Animation
                      ? "Cannot find animation sequence Fly for animation key!"
                      : "Cannot find mesh element for FX key!");
}
