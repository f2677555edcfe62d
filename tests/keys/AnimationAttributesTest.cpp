#include "tests/engine/EngineFixture.h"
#include "tests/keys/AttributesFixture.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

using RecordedAnimation = RecordedKey<CFilmAnimationKey, &ShowString>;

/// A robot that knows the sequences "Lift" and "Turn".
class AnimationAttributesTest : public AttributesTest {
protected:
    AnimationAttributesTest() {
        editor.level.SetMeshLibrary(&meshes);
        track = ObjectTrack();
        actor = static_cast<engine::SceneObject*>(AsObjectTrack(track)->actor);
        actor->SetMeshName("robot.glb");
        key.kind = KeyKind::Animation;
        key.track = track;
        key.animationName = "Lift";
        key.meshElement = "arm";
        key.startFrame = 3.75f;
    }
    ~AnimationAttributesTest() override { editor.level.SetMeshLibrary(nullptr); }
    void EditNumbers(const char* frequency, const char* repeats, const char* startFrame) {
        Type("Frequency", kCategory, frequency);
        Type("Repeats", kCategory, repeats);
        Type("Start frame", kCategory, startFrame);
    }

    static constexpr const char* kCategory = "ANIMATION DATA";
    engine_test::TestMeshLibrary meshes;
    CFilmTrack* track = nullptr;
    engine::SceneObject* actor = nullptr;
    RecordedAnimation key;
};

} // namespace

TEST_F(AnimationAttributesTest, SequenceIsWrittenAroundTheElementAndNumbersBehindThem) {
    key.state = [this] { return ShowFloat(&key.frequency); };
    Fill(key);
    Type("Animation sequence", kCategory, "Turn");
    Type("Mesh element", kCategory, "hip");
    EditNumbers("2.5", "4", "-7");
    Apply(key);
    EXPECT_THAT(key.log, ElementsAre("SetInHandle Turn | 1", "SetValue hip | 1", "SetInHandle Turn | 1"));
    EXPECT_EQ(key.frequency, 2.5f);
    EXPECT_EQ(key.repeats, 4);
    EXPECT_EQ(key.startFrame, -7.0f);
}

TEST_F(AnimationAttributesTest, UntouchedRowsCutTheStartFrame) {
    Fill(key);
    Apply(key);
    EXPECT_EQ(key.startFrame, 3.0f);
    key.startFrame = -3.75f;
    Fill(key);
    Apply(key);
    EXPECT_EQ(key.startFrame, -3.0f); // toward zero
}

TEST_F(AnimationAttributesTest, UnknownSequenceKeepsEverything) {
    for (const char* name : {"Jump", "lift", ""}) {
        Fill(key);
        Type("Animation sequence", kCategory, name);
        Type("Mesh element", kCategory, "hip");
        EditNumbers("2.5", "4", "7");
        Apply(key);
    }
    EXPECT_THAT(key.log, IsEmpty());
    EXPECT_EQ(key.frequency, 1.0f);
    EXPECT_EQ(key.repeats, 1);
    EXPECT_EQ(key.startFrame, 3.75f);
}

TEST_F(AnimationAttributesTest, OtherTracksAndLostActorsWriteNothing) {
    Fill(key);
    EditNumbers("2.5", "4", "7");
    key.track = LevelTrack();
    Apply(key);
    key.track = nullptr;
    Apply(key);
    key.track = track;
    AsObjectTrack(track)->actor = nullptr;
    Apply(key);
    AsObjectTrack(track)->actor = actor;
    EXPECT_THAT(key.log, IsEmpty());
    EXPECT_EQ(key.frequency, 1.0f);
    Apply(key);
    EXPECT_EQ(key.frequency, 2.5f);
}

TEST_F(AnimationAttributesTest, StartFramesBeyondAnIntStopAtItsLimits) {
    key.startFrame = 1e30f;
    Fill(key);
    EXPECT_EQ(TextOf("Start frame", kCategory), "2147483647");
    key.startFrame = std::numeric_limits<float>::quiet_NaN();
    Fill(key);
    EXPECT_EQ(TextOf("Start frame", kCategory), "0");
}

TEST_F(AnimationAttributesTest, RealRecordTakesThem) {
    auto& real = static_cast<CFilmAnimationKey&>(*AddKey(track, KeyKind::Animation, 1.0f));
    Fill(real);
    Type("Animation sequence", kCategory, "Turn");
    Type("Mesh element", kCategory, "hand");
    EditNumbers("2", "3", "4");
    Apply(real);
    EXPECT_EQ(real.animationName, "Turn");
    EXPECT_EQ(real.meshElement, "hand");
    EXPECT_EQ(real.GetNaturalDuration(), 6.0f); // 4 seconds three times at twice the speed
}
