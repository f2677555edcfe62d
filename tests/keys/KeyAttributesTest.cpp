#include "keys/attributes/KeyAttributes.h"

#include "tests/keys/AttributesFixture.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// The rows of each kind, in their order.
class KeyAttributesTest : public AttributesTest {
protected:
    template <class Record> Record& Made(int kind) { return *NewRecordOf<Record>(kind); }
    template <class Record> Record& MadeIn(CFilmTrack* track, int kind) {
        return static_cast<Record&>(*AddKey(track, kind, 1.0f));
    }
    CFilmFxKey& MakeFx(int kind, CFilmTrack* track = nullptr) {
        auto& record = track != nullptr ? MadeIn<CFilmFxKey>(track, kind) : Made<CFilmFxKey>(kind);
        record.fxName = "Smoke";
        record.linkElement = "Hand";
        record.objectId = 7;
        record.deleteFlag = 1;
        record.position = {1.0f, 2.0f, 3.5f};
        record.normal = {0.0f, 1.0f, 0.0f};
        record.forward = {0.0f, 0.0f, -1.0f};
        return record;
    }
    CFilmVectorKey& MakeVector(int kind) {
        auto& record = Made<CFilmVectorKey>(kind);
        record.value = {1.0f, 2.0f, 3.0f};
        record.inHandle = {4.0f, 5.0f, 6.0f};
        record.outHandle = {7.0f, 8.0f, 9.0f};
        record.inMethod = BezierMethod::User;
        record.outMethod = BezierMethod::Linear;
        return record;
    }
};

} // namespace

TEST_F(KeyAttributesTest, TwentyKindsHaveAttributesAndNoOther) {
    for (int kind = 0; kind < KeyKind::FilterCount; ++kind) {
        EXPECT_NE(GetKeyAttributes(kind), nullptr) << kind;
    }
    for (const int kind : {-1, 20, KeyKind::None, 22, 1000}) {
        EXPECT_EQ(GetKeyAttributes(kind), nullptr) << kind;
    }
}

TEST_F(KeyAttributesTest, Camera) {
    auto& record = Made<CFilmCameraKey>(KeyKind::Camera);
    record.cameraName = "Bridge";
    record.delayTime = 1.5f;
    Fill(record);
    EXPECT_THAT(Lines(), ElementsAre("CAMERA/Camera/6/Bridge ...camera", "CAMERA/Delay time/3/1.50000"));
}

TEST_F(KeyAttributesTest, Animation) {
    auto& record = Made<CFilmAnimationKey>(KeyKind::Animation);
    record.meshElement = "Head";
    record.animationName = "Walk";
    record.frequency = 0.5f;
    record.repeats = 3;
    record.startFrame = 12.9f; // Required: cut to a whole number by being shown.
    Fill(record);
    EXPECT_THAT(Lines(), ElementsAre("ANIMATION DATA/Mesh element/6/Head ...element",
                                     "ANIMATION DATA/Animation sequence/6/Walk ...animation",
                                     "ANIMATION DATA/Frequency/3/0.50000", "ANIMATION DATA/Repeats/2/3",
                                     "ANIMATION DATA/Start frame/2/12"));
}

TEST_F(KeyAttributesTest, EffectsAtAPlace) {
    const std::vector<std::string> common{
        "BASE DATA/FX name/6/Smoke ...effect", "LINK/Mesh element name/6/Hand ...element",
        "POSITION/Position X/3/1.00000",       "POSITION/Position Y/3/2.00000",
        "POSITION/Position Z/3/3.50000",       "NORMAL/Normal X/3/0.00000",
        "NORMAL/Normal Y/3/1.00000",           "NORMAL/Normal Z/3/0.00000"};
    std::vector<std::string> withDelete = common;
    withDelete.emplace_back("FLAGS/Delete/9/true");
    std::vector<std::string> particle = common;
    particle.insert(particle.end(), {"FORWARD/Forward X/3/0.00000", "FORWARD/Forward Y/3/0.00000",
                                     "FORWARD/Forward Z/3/-1.00000", "FLAGS/Delete/9/true"});
    Fill(MakeFx(KeyKind::FxSequence));
    EXPECT_EQ(Lines(), withDelete);
    Fill(MakeFx(KeyKind::FxTrace));
    EXPECT_EQ(Lines(), withDelete);
    Fill(MakeFx(KeyKind::FxParticle));
    EXPECT_EQ(Lines(), particle);
    Fill(MakeFx(KeyKind::FxFlare));
    EXPECT_EQ(Lines(), common);
}

TEST_F(KeyAttributesTest, EffectsOfTheFilmItselfHaveAnObject) {
    for (const int kind : {KeyKind::FxSequence, KeyKind::FxParticle, KeyKind::FxTrace, KeyKind::FxFlare}) {
        Fill(MakeFx(kind, LevelTrack()));
        const std::vector<std::string> lines = Lines();
        ASSERT_GT(lines.size(), 4u);
        EXPECT_EQ(lines[1], "LINK/Mesh element name/6/Hand ...element") << kind;
        EXPECT_EQ(lines[2], "LINK/Object ID/12/7") << kind;
        EXPECT_EQ(lines[3], "POSITION/Position X/3/1.00000") << kind;
    }
}

TEST_F(KeyAttributesTest, EffectsOfTheWholePicture) {
    Fill(MakeFx(KeyKind::FxRain));
    EXPECT_THAT(Lines(), ElementsAre("BASE DATA/FX name/6/Smoke ...effect"));
    Fill(MakeFx(KeyKind::FxBlind));
    EXPECT_THAT(Lines(), ElementsAre("BASE DATA/FX name/6/Smoke ...effect", "FLAGS/Delete/9/true"));
}

TEST_F(KeyAttributesTest, Speech) {
    auto& record = Made<CFilmSpeechKey>(KeyKind::Speech);
    record.speechPath = "./snd/a.wav";
    record.speechText = "Ahoy";
    Fill(record);
    EXPECT_THAT(Lines(), ElementsAre("SPEECH/Speech/6/./snd/a.wav ...sound", "SPEECH/Text/6/Ahoy"));
}

TEST_F(KeyAttributesTest, SoundByTheClassOfItsTrack) {
    const auto make = [](CFilmSoundKey& record) -> CFilmSoundKey& {
        record.wavPath = "sea.ogg";
        record.looped = 1;
        record.followObject = 1;
        record.soundPosition = {1.0f, 2.0f, 3.0f};
        return record;
    };
    Fill(make(MadeIn<CFilmSoundKey>(ObjectTrack(), KeyKind::Sound)));
    EXPECT_THAT(Lines(), ElementsAre("SOUND DATA/Wav file path/6/sea.ogg ...sound",
                                     "SOUND DATA/Looped/9/true", "ADDITIONAL DATA/Follow object/9/true"));
    Fill(make(MadeIn<CFilmSoundKey>(LevelTrack(), KeyKind::Sound)));
    EXPECT_THAT(Lines(),
                ElementsAre("SOUND DATA/Wav file path/6/sea.ogg ...sound", "SOUND DATA/Looped/9/true",
                            "ADDITIONAL DATA/Position X/3/1.00000", "ADDITIONAL DATA/Position Y/3/2.00000",
                            "ADDITIONAL DATA/Position Z/3/3.00000"));
    auto& loose = make(Made<CFilmSoundKey>(KeyKind::Sound));
    Fill(loose);
    EXPECT_THAT(Lines(),
                ElementsAre("SOUND DATA/Wav file path/6/sea.ogg ...sound", "SOUND DATA/Looped/9/true"));
    loose.track = CameraTrack(); // as in a track of any other class
    Fill(loose);
    EXPECT_EQ(Lines().size(), 2u);
    loose.track = nullptr;
}

TEST_F(KeyAttributesTest, Position) {
    Fill(MakeVector(KeyKind::Position));
    EXPECT_THAT(Lines(), ElementsAre("POSITION/Pos X/3/1.00000", "POSITION/Pos Y/3/2.00000",
                                     "POSITION/Pos Z/3/3.00000", "IN CONTROL POINT/In type/2/User",
                                     "IN CONTROL POINT/In X/3/4.00000", "IN CONTROL POINT/In Y/3/5.00000",
                                     "IN CONTROL POINT/In Z/3/6.00000", "OUT CONTROL POINT/Out type/2/Linear",
                                     "OUT CONTROL POINT/Out X/3/7.00000 hidden",
                                     "OUT CONTROL POINT/Out Y/3/8.00000 hidden",
                                     "OUT CONTROL POINT/Out Z/3/9.00000 hidden"));
}

TEST_F(KeyAttributesTest, RotationShowsYInOutX) {
    Fill(MakeVector(KeyKind::Rotation));
    EXPECT_THAT(Lines(),
                ElementsAre("ROTATION ANGLES/Rotation X/3/1.00000", "ROTATION ANGLES/Rotation Y/3/2.00000",
                            "ROTATION ANGLES/Rotation Z/3/3.00000", "IN CONTROL POINT/In type/2/User",
                            "IN CONTROL POINT/In X/3/4.00000", "IN CONTROL POINT/In Y/3/5.00000",
                            "IN CONTROL POINT/In Z/3/6.00000", "OUT CONTROL POINT/Out type/2/Linear",
                            "OUT CONTROL POINT/Out X/3/8.00000 hidden",
                            "OUT CONTROL POINT/Out Y/3/8.00000 hidden",
                            "OUT CONTROL POINT/Out Z/3/9.00000 hidden"));
}

TEST_F(KeyAttributesTest, Scale) {
    Fill(MakeVector(KeyKind::Scale));
    const std::vector<std::string> lines = Lines();
    ASSERT_EQ(lines.size(), 11u);
    EXPECT_EQ(lines[0], "SCALE/X/3/1.00000");
    EXPECT_EQ(lines[1], "SCALE/Y/3/2.00000");
    EXPECT_EQ(lines[2], "SCALE/Z/3/3.00000");
    EXPECT_EQ(lines[3], "IN CONTROL POINT/In type/2/User");
    EXPECT_EQ(lines[8], "OUT CONTROL POINT/Out X/3/7.00000 hidden");
}

TEST_F(KeyAttributesTest, JavaMethod) {
    auto& record = Made<CFilmJavaKey>(KeyKind::JavaMethod);
    record.methodName = "openGate";
    record.callAfterStop = 1;
    Fill(record);
    EXPECT_THAT(Lines(),
                ElementsAre("JAVA METHOD/Name/6/openGate", "JAVA METHOD/Call after stop movie/9/true"));
}

TEST_F(KeyAttributesTest, Color) {
    auto& record = Made<CFilmVectorKey>(KeyKind::Color);
    record.value = {0.25f, 0.5f, 1.0f};
    Fill(record);
    EXPECT_THAT(Lines(), ElementsAre("COLOR/Color/8/0.2500 , 0.5000 , 1.0000 ...color"));
}

TEST_F(KeyAttributesTest, FlagsHaveTheNamesOfTheirTrack) {
    auto& record = MadeIn<CFilmFlagsKey>(ObjectTrack(), KeyKind::Flags);
    Fill(record);
    EXPECT_THAT(Lines(), ElementsAre("FLAGS/Hidden/9/false"));
    record.keyFlags = 1;
    Fill(record);
    EXPECT_THAT(Lines(), ElementsAre("FLAGS/Hidden/9/true"));
    Fill(MadeIn<CFilmFlagsKey>(LevelTrack(), KeyKind::Flags));
    EXPECT_THAT(Lines(), ElementsAre("FLAGS/Black bars/9/false"));
}

TEST_F(KeyAttributesTest, CameraPoints) {
    for (const int kind : {KeyKind::CameraPosition, KeyKind::CameraTarget}) {
        auto& record = Made<CFilmLinkedKey>(kind);
        record.value = {1.0f, 2.0f, 3.0f};
        record.inHandle = {4.0f, 5.0f, 6.0f};
        record.outHandle = {7.0f, 8.0f, 9.0f};
        record.inMethod = BezierMethod::Inverse;
        record.outMethod = BezierMethod::User;
        record.linkObjectId = 12;
        record.linkElement = "Mast";
        Fill(record);
        EXPECT_THAT(
            Lines(),
            ElementsAre("POSITION/X/3/1.00000", "POSITION/Y/3/2.00000", "POSITION/Z/3/3.00000",
                        "IN CONTROL POINT/In type/2/Inverse", "IN CONTROL POINT/In X/3/4.00000 hidden",
                        "IN CONTROL POINT/In Y/3/5.00000 hidden", "IN CONTROL POINT/In Z/3/6.00000 hidden",
                        "OUT CONTROL POINT/Out type/2/User", "OUT CONTROL POINT/Out X/3/7.00000",
                        "OUT CONTROL POINT/Out Y/3/8.00000", "OUT CONTROL POINT/Out Z/3/9.00000",
                        "LINK/Object ID/12/12", "LINK/Mesh element name/6/Mast ...element"));
    }
}

TEST_F(KeyAttributesTest, RollAndFieldOfView) {
    auto& roll = Made<CFilmScalarKey>(KeyKind::Roll);
    roll.value = -15.0f;
    roll.inValue = 1.0f;
    roll.outValue = 2.0f;
    roll.inMethod = BezierMethod::Slowdown;
    roll.outMethod = BezierMethod::Speedup;
    Fill(roll);
    EXPECT_THAT(Lines(), ElementsAre("ROLL/Roll/3/-15.00000", "IN CONTROL POINT/In type/2/Slowdown",
                                     "IN CONTROL POINT/In value/3/1.00000 hidden",
                                     "OUT CONTROL POINT/Out type/2/Speedup",
                                     "OUT CONTROL POINT/Out value/3/2.00000 hidden"));
    auto& view = Made<CFilmScalarKey>(KeyKind::FieldOfView);
    view.value = 60.0f;
    view.inMethod = BezierMethod::User;
    view.inValue = 55.0f;
    Fill(view);
    EXPECT_THAT(Lines(),
                ElementsAre("FOV/FOV/3/60.00000", "IN CONTROL POINT/In type/2/User",
                            "IN CONTROL POINT/In value/3/55.00000", "OUT CONTROL POINT/Out type/2/Smooth",
                            "OUT CONTROL POINT/Out value/3/0.00000 hidden"));
}

TEST_F(KeyAttributesTest, ApplyingUntouchedRowsKeepsWhatTheyCanShow) {
    for (int kind = 0; kind < KeyKind::FilterCount; ++kind) {
        IFilmKey* record = NewRecord(kind);
        IFilmKey* before = NewRecord(kind);
        before->CopyFrom(*record, 0);
        Fill(*record);
        Apply(*record);
        EXPECT_TRUE(record->Equals(*before, /*compareTime*/ false)) << "kind " << kind;
    }
    EXPECT_THAT(boxes, IsEmpty());
}

TEST_F(KeyAttributesTest, ApplyingNoRowsAtAllWritesNothing) {
    for (int kind = 0; kind < KeyKind::FilterCount; ++kind) {
        IFilmKey* record = NewRecord(kind);
        IFilmKey* before = NewRecord(kind);
        before->CopyFrom(*record, 0);
        rows.DeleteAll();
        Apply(*record);
        EXPECT_TRUE(record->Equals(*before, /*compareTime*/ false)) << "kind " << kind;
    }
    EXPECT_THAT(boxes, IsEmpty());
}
