#include "tests/keys/AttributesFixture.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

using RecordedSpeech = RecordedKey<CFilmSpeechKey, &ShowString>;
using RecordedSound = RecordedKey<CFilmSoundKey, &ShowString>;

class SoundAttributesTest : public AttributesTest {
protected:
    SoundAttributesTest() {
        speech.kind = KeyKind::Speech;
        sound.kind = KeyKind::Sound;
    }

    RecordedSpeech speech;
    RecordedSound sound;
};

} // namespace

TEST_F(SoundAttributesTest, SpeechTextIsWrittenBeforeThePath) {
    speech.state = [this] { return speech.speechText; };
    Fill(speech);
    Type("Speech", "SPEECH", "ahoy.wav");
    Type("Text", "SPEECH", "Ahoy!");
    Apply(speech);
    EXPECT_THAT(speech.log, ElementsAre("SetValue ahoy.wav | Ahoy!"));
}

TEST_F(SoundAttributesTest, TwoAmpersandsWithoutAPathAreNoText) {
    speech.speechText = "&&";
    Fill(speech);
    EXPECT_EQ(TextOf("Text", "SPEECH"), "");
    Apply(speech);
    EXPECT_EQ(speech.speechText, ""); // Required: they are lost by it.
}

TEST_F(SoundAttributesTest, TwoAmpersandsWithAPathAreText) {
    speech.speechText = "&&";
    speech.speechPath = "a.wav";
    Fill(speech);
    EXPECT_EQ(TextOf("Text", "SPEECH"), "&&");
    Apply(speech);
    EXPECT_EQ(speech.speechText, "&&");
    speech.speechText = "&& ";
    speech.speechPath.clear();
    Fill(speech);
    EXPECT_EQ(TextOf("Text", "SPEECH"), "&& ");
}

TEST_F(SoundAttributesTest, LongTextInAnyScriptStaysWhole) {
    std::string text;
    for (int i = 0; i < 1000; ++i) {
        text += "שלום żółć "; // right to left, and letters of two bytes
    }
    speech.speechText = text;
    Fill(speech);
    Apply(speech);
    EXPECT_EQ(speech.speechText, text);
}

TEST_F(SoundAttributesTest, SoundOfAnObjectFollowsItOrNot) {
    sound.track = ObjectTrack();
    sound.soundPosition = {1.0f, 2.0f, 3.0f};
    Fill(sound);
    Type("Wav file path", "SOUND DATA", "sea.ogg");
    Tick("Looped", "SOUND DATA", true);
    Tick("Follow object", "ADDITIONAL DATA", true);
    Apply(sound);
    EXPECT_EQ(sound.wavPath, "sea.ogg");
    EXPECT_EQ(sound.looped, 1);
    EXPECT_EQ(sound.followObject, 1);
    EXPECT_EQ(sound.soundPosition, (Vector3{1.0f, 2.0f, 3.0f}));
    EXPECT_THAT(sound.log, IsEmpty());
}

TEST_F(SoundAttributesTest, SoundOfTheFilmHasAPlace) {
    sound.track = LevelTrack();
    sound.followObject = 1;
    Fill(sound);
    Type("Position X", "ADDITIONAL DATA", "1");
    Type("Position Y", "ADDITIONAL DATA", "2.5");
    Type("Position Z", "ADDITIONAL DATA", "-3");
    Apply(sound);
    EXPECT_EQ(sound.soundPosition, (Vector3{1.0f, 2.5f, -3.0f}));
    EXPECT_EQ(sound.followObject, 1);
}

TEST_F(SoundAttributesTest, TheTrackAtTheTimeOfWritingCounts) {
    CFilmTrack* object = ObjectTrack();
    sound.track = LevelTrack();
    Fill(sound);
    Type("Position X", "ADDITIONAL DATA", "1");
    sound.track = object;
    Apply(sound);
    EXPECT_EQ(sound.soundPosition, Vector3{});
    sound.track = nullptr;
    Apply(sound);
    EXPECT_EQ(sound.soundPosition, Vector3{});
    EXPECT_EQ(sound.followObject, 0);
}
