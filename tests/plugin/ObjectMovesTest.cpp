#include "plugin/parts/ObjectMoves.h"

#include "plugin/parts/ActorList.h"
#include "plugin/parts/FirstKeys.h"
#include "plugin/parts/ObjectMatrices.h"
#include "tests/plugin/PartFixture.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// What was recorded of a move: along x, before and after.
struct Recorded {
    const EditorObject* object;
    float before;
    float after;

    bool operator==(const Recorded&) const = default;
};

/// A film of the engine is open, in which "Actor" stands at 3.
class ObjectMovesTest : public PartTest {
protected:
    ObjectMovesTest() {
        IFilmManager& films = *session.GetFilmManager();
        open = films.GetFilm(films.AllocateFilm());
        MakeActor(*actor);
        open->Activate();
        session.currentFilm = open;
        matrices.Rebuild();
    }

    CFilmTrack* MakeActor(EditorObject& object) {
        CFilmTrack* track = open->CreateObjectTrack();
        open->AddTrack(track);
        AsObjectTrack(track)->SetActor(&object, false);
        AddFirstTransform(session, *track, object.GetMatrix(0), /*positionOnly*/ false);
        track->RefreshTrack();
        return track;
    }

    engine::SceneObject* actor = editor.Create("Actor", 3.0f);
    engine::SceneObject* other = editor.Create("Other", 5.0f);
    IFilm* open = nullptr;
    CFilmsLightHelperMgr lights{session};
    CCameraHelpersController helpers{session};
    ObjectMatrixRecords records;
    ObjectMatrices matrices{session, records};
    ActorList actors{session, lights, matrices};
    std::vector<Recorded> recorded;
    ObjectMoves moves{session, records, actors, helpers,
                      [this](EditorObject* object, const float* userMatrix, const float* matrixBefore) {
                          recorded.push_back({object, matrixBefore[12], userMatrix[12]});
                          if (onRecord) {
                              onRecord();
                          }
                      }};
    std::function<void()> onRecord; ///< code that runs while keys are written
};

TEST_F(ObjectMovesTest, AnActorGoesBackToItsFilmPoseAndTheOthersAreTold) {
    Place(*actor, 9.0f);
    moves.OnMoved({actor});
    EXPECT_EQ(XOf(*actor), 3.0f);
    EXPECT_THAT(editor.lastBroadcastObjects, ElementsAre(actor));
    EXPECT_THAT(recorded, IsEmpty());
}

TEST_F(ObjectMovesTest, AnAnimatedActorsMoveIsRecordedFromItsFilmPose) {
    session.animateObjects = 1;
    Place(*actor, 9.0f);
    moves.OnMoved({actor});
    EXPECT_THAT(recorded, ElementsAre(Recorded{actor, 3.0f, 9.0f}));
    EXPECT_EQ(XOf(*actor), 9.0f);
    EXPECT_THAT(editor.broadcasts, IsEmpty());
}

TEST_F(ObjectMovesTest, AnotherObjectHasAnotherPlaceFromNowOn) {
    Place(*other, 9.0f);
    moves.OnMoved({other, nullptr});
    EXPECT_EQ(matrices.Get(other)[12], 9.0f);
    EXPECT_EQ(XOf(*other), 9.0f);
    EXPECT_THAT(editor.broadcasts, IsEmpty());
}

TEST_F(ObjectMovesTest, AnObjectThatGoesWhileKeysAreWrittenIsLeftAlone) {
    session.animateObjects = 1;
    engine::SceneObject* second = editor.Create("Second", 1.0f);
    CFilmTrack* track = MakeActor(*second);
    Place(*actor, 9.0f);
    onRecord = [&] {
        moves.ForgetObject(second);
        open->RemoveTrack(track, 1);
        editor.level.DeleteObject(second);
    };
    moves.OnMoved({actor, second});
    EXPECT_THAT(recorded, ElementsAre(Recorded{actor, 3.0f, 9.0f}));
}

} // namespace
