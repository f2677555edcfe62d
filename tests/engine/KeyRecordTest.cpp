#include "host/engine/FilmKeys.h"
#include "tests/engine/EngineFixture.h"

#include <cstring>

namespace engine_test {

class KeyRecordTest : public EngineTest {
protected:
    ~KeyRecordTest() override {
        for (IFilmKey* key : loose) {
            Films().keyFactory->DestroyKey(key);
        }
    }
    /// A key in no track, destroyed with the test.
    template <class Record = IFilmKey> Record& Loose(int kind, float time = 0.0f) {
        loose.push_back(MakeKey(kind, time));
        return static_cast<Record&>(*loose.back());
    }
    std::string Description(const IFilmKey& key) {
        char buffer[512];
        std::memset(buffer, 'x', sizeof buffer);
        key.Describe(buffer, 30);
        EXPECT_NE(std::memchr(buffer, '\0', sizeof buffer), nullptr);
        return buffer;
    }

    std::vector<IFilmKey*> loose;
};

TEST_F(KeyRecordTest, FactoryMakesAllKindsWithTheirFlag) {
    for (int kind = 0; kind < KeyKind::FilterCount; ++kind) {
        const IFilmKey& key = Loose(kind);
        EXPECT_EQ(key.kind, kind);
        EXPECT_EQ(key.flags, kind < 10 ? 0u : KeyFlag::NoDuration);
        EXPECT_EQ(key.track, nullptr);
        EXPECT_EQ(key.endTime, 0.0f);
    }
    for (const int kind : {-1, 20, 21, 1000}) {
        EXPECT_EQ(Films().keyFactory->CreateKey(kind), nullptr);
    }
    Films().keyFactory->DestroyKey(nullptr);
}

TEST_F(KeyRecordTest, SettersWriteTheFieldsOfTheirKind) {
    const std::string text = "text";
    const std::string second = "second";
    const float number = 2.5f;
    const Vector3 vector{1.0f, 2.0f, 3.0f};
    const std::int32_t id = 77;

    auto& camera = Loose<CFilmCameraKey>(KeyKind::Camera);
    camera.SetValue(&text);
    EXPECT_EQ(camera.cameraName, text);

    auto& animation = Loose<CFilmAnimationKey>(KeyKind::Animation);
    animation.SetValue(&text);
    animation.SetInHandle(&second);
    EXPECT_EQ(animation.meshElement, text);
    EXPECT_EQ(animation.animationName, second);

    auto& fx = Loose<CFilmFxKey>(KeyKind::FxParticle);
    fx.SetValue(&text);
    fx.SetOutHandle(&id);
    EXPECT_EQ(fx.linkElement, text);
    EXPECT_EQ(fx.objectId, 77);

    auto& speech = Loose<CFilmSpeechKey>(KeyKind::Speech);
    speech.SetValue(&text);
    EXPECT_EQ(speech.speechPath, text);
    auto& sound = Loose<CFilmSoundKey>(KeyKind::Sound);
    sound.SetValue(&text);
    EXPECT_EQ(sound.wavPath, text);
    auto& java = Loose<CFilmJavaKey>(KeyKind::JavaMethod);
    java.SetValue(&text);
    EXPECT_EQ(java.methodName, text);

    for (const int kind : {10, 11, 12, 14, 16, 17}) {
        auto& key = Loose<CFilmVectorKey>(kind);
        key.SetValue(vector.Data());
        key.SetInHandle(vector.Data());
        key.SetOutHandle(vector.Data());
        key.SetInMethod(4);
        key.SetOutMethod(7);
        EXPECT_EQ(key.value, vector);
        EXPECT_EQ(key.inHandle, vector);
        EXPECT_EQ(key.outHandle, vector);
        EXPECT_EQ(key.inMethod, 4);
        EXPECT_EQ(key.outMethod, 7);
    }
    for (const int kind : {18, 19}) {
        auto& key = Loose<CFilmScalarKey>(kind);
        key.SetValue(&number);
        key.SetInHandle(&number);
        key.SetOutHandle(&number);
        key.SetInMethod(3);
        key.SetOutMethod(5);
        EXPECT_EQ(key.value, number);
        EXPECT_EQ(key.inValue, number);
        EXPECT_EQ(key.outValue, number);
        EXPECT_EQ(key.inMethod, 3);
        EXPECT_EQ(key.outMethod, 5);
    }
}

TEST_F(KeyRecordTest, NullValuesChangeNothing) {
    for (int kind = 0; kind < KeyKind::FilterCount; ++kind) {
        IFilmKey& key = Loose(kind, 1.0f);
        IFilmKey& untouched = Loose(kind, 1.0f);
        key.SetValue(nullptr);
        key.SetInHandle(nullptr);
        key.SetOutHandle(nullptr);
        EXPECT_TRUE(key.Equals(untouched, true)) << kind;
    }
}

TEST_F(KeyRecordTest, FlagsKeyIgnoresTheValueSetters) {
    auto& key = Loose<CFilmFlagsKey>(KeyKind::Flags);
    const std::uint32_t bits = 0xFFu;
    key.SetValue(&bits);
    key.SetInHandle(&bits);
    EXPECT_EQ(key.keyFlags, 0u);
}

TEST_F(KeyRecordTest, CopyFromTakesTheContentAndNotTheTimes) {
    auto& source = Loose<CFilmSoundKey>(KeyKind::Sound, 3.0f);
    source.SetEndTime(5.0f);
    source.wavPath = "horn.wav";
    source.looped = 1;
    source.soundPosition = {1.0f, 2.0f, 3.0f};
    auto& target = Loose<CFilmSoundKey>(KeyKind::Sound, 1.0f);
    target.CopyFrom(source, 0);
    EXPECT_TRUE(target.Equals(source, false));
    EXPECT_FALSE(target.Equals(source, true));
    EXPECT_EQ(target.time, 1.0f);
    EXPECT_EQ(target.endTime, 0.0f);
}

TEST_F(KeyRecordTest, CopyFromAnotherKindDoesNothing) {
    auto& position = Loose<CFilmVectorKey>(KeyKind::Position);
    auto& rotation = Loose<CFilmVectorKey>(KeyKind::Rotation);
    rotation.value = {1.0f, 2.0f, 3.0f};
    position.CopyFrom(rotation, 0);
    EXPECT_EQ(position.value, Vector3{});
    EXPECT_FALSE(position.Equals(rotation, false));
}

TEST_F(KeyRecordTest, CopyFromLeavesTheRowOfACameraKey) {
    // Required: pasting attributes keeps the key in its row; the clone takes the priority on its own.
    auto& source = Loose<CFilmCameraKey>(KeyKind::Camera);
    source.cameraName = "A";
    source.priority = 3;
    source.delayTime = 0.5f;
    auto& target = Loose<CFilmCameraKey>(KeyKind::Camera);
    target.CopyFrom(source, 0);
    EXPECT_EQ(target.cameraName, "A");
    EXPECT_EQ(target.delayTime, 0.5f);
    EXPECT_EQ(target.priority, 0);
}

TEST_F(KeyRecordTest, CopyFromMakesEqualKeysOfEveryKind) {
    for (int kind = 0; kind < KeyKind::FilterCount; ++kind) {
        IFilmKey& source = Loose(kind);
        IFilmKey& target = Loose(kind);
        const std::string text = "x";
        const float numbers[3] = {1.0f, 2.0f, 3.0f};
        const bool textual = kind <= 9 || kind == 13;
        source.SetValue(textual ? static_cast<const void*>(&text) : numbers);
        source.SetInMethod(2);
        if (kind == KeyKind::Flags) {
            static_cast<CFilmFlagsKey&>(source).keyFlags = 1;
        }
        EXPECT_FALSE(target.Equals(source, false)) << kind;
        target.CopyFrom(source, 0);
        EXPECT_TRUE(target.Equals(source, false)) << kind;
    }
}

TEST_F(KeyRecordTest, EqualsComparesTimesWithinAMillionth) {
    IFilmKey& key = Loose(KeyKind::Position, 1.0f);
    IFilmKey& same = Loose(KeyKind::Position, 1.0000005f);
    IFilmKey& other = Loose(KeyKind::Position, 1.00001f);
    EXPECT_TRUE(key.Equals(same, true));
    EXPECT_FALSE(key.Equals(other, true));
    EXPECT_TRUE(key.Equals(other, false));
}

TEST_F(KeyRecordTest, NaturalDurationOfAnAnimationIsItsPlayingTime) {
    CFilmObjectTrack& track = AddActor(MakeObject("Robot", {}, nullptr, "MeshObject", "robot.glb"));
    auto& key = Add<CFilmAnimationKey>(track, KeyKind::Animation, 0.0f);
    EXPECT_EQ(key.GetNaturalDuration(), -1.0f);
    key.animationName = "Lift"; // 2 seconds
    EXPECT_FLOAT_EQ(key.GetNaturalDuration(), 2.0f);
    key.repeats = 3;
    key.frequency = 1.5f;
    EXPECT_FLOAT_EQ(key.GetNaturalDuration(), 4.0f);
    key.frequency = 0.0f;
    EXPECT_EQ(key.GetNaturalDuration(), -1.0f);
    key.frequency = 1.0f;
    key.repeats = 0;
    EXPECT_EQ(key.GetNaturalDuration(), -1.0f);
    EXPECT_EQ(Loose(KeyKind::Animation).GetNaturalDuration(), -1.0f);
}

TEST_F(KeyRecordTest, NaturalDurationAsksForTheAnimationInSilence) {
    engine::SceneObject& robot = MakeObject("Robot", {}, nullptr, "MeshObject", "robot.glb");
    std::vector<std::string> told;
    level.SetUnknownAnimationHook([&](const engine::SceneObject& object, const std::string& animation) {
        told.push_back(object.name + "|" + animation);
    });
    auto& key = Add<CFilmAnimationKey>(AddActor(robot), KeyKind::Animation, 0.0f);
    key.animationName = "Run";
    EXPECT_EQ(key.GetNaturalDuration(), -1.0f);
    EXPECT_EQ(told, std::vector<std::string>());
    EXPECT_EQ(robot.FindAnimation("Run"), -1);
    EXPECT_EQ(told, std::vector<std::string>{"Robot|Run"});
    level.SetUnknownAnimationHook(nullptr);
}

float SixSeconds(const std::string& path) {
    return path == "six.wav" ? 6.0f : -1.0f;
}

TEST_F(KeyRecordTest, NaturalDurationOfASoundIsTheFilesUnlessItLoops) {
    level.SetSoundDuration(SixSeconds);
    auto& sound = Loose<CFilmSoundKey>(KeyKind::Sound);
    sound.wavPath = "six.wav";
    EXPECT_EQ(sound.GetNaturalDuration(), 6.0f);
    sound.looped = 1;
    EXPECT_EQ(sound.GetNaturalDuration(), -1.0f);
    auto& speech = Loose<CFilmSpeechKey>(KeyKind::Speech);
    EXPECT_EQ(speech.GetNaturalDuration(), -1.0f);
    speech.speechPath = "six.wav";
    EXPECT_EQ(speech.GetNaturalDuration(), 6.0f);
    EXPECT_EQ(Loose(KeyKind::Position).GetNaturalDuration(), -1.0f);
    EXPECT_EQ(Loose(KeyKind::Camera).GetNaturalDuration(), -1.0f);
}

TEST_F(KeyRecordTest, DescribeTellsKindTimeAndContent) {
    auto& key = Loose<CFilmVectorKey>(KeyKind::Position, 1.5f);
    key.value = {1.0f, -2.0f, 0.25f};
    key.outMethod = BezierMethod::Linear;
    EXPECT_EQ(Description(key), "Position key\nTime: 1.500 s (frame 45)\nValue: 1.000, -2.000, 0.250\n"
                                "In: Smooth  Out: Linear\n");
    auto& camera = Loose<CFilmCameraKey>(KeyKind::Camera, 2.0f);
    camera.SetEndTime(7.0f);
    camera.cameraName = "100%s";
    EXPECT_EQ(Description(camera), "Camera key\nTime: 2.000 s (frame 60)\nDuration: 5.000 s\nCamera: 100%s\n"
                                   "Delay: 0.000 s\n");
}

TEST_F(KeyRecordTest, DescribeOfEveryKindStaysWithinItsBuffer) {
    constexpr const char* kTitles[KeyKind::FilterCount] = {
        "Camera key",   "Animation key",       "FX sequence key",     "FX particle key", "FX trace key",
        "FX rain key",  "FX blind key",        "FX flare key",        "Speech key",      "Sound key",
        "Position key", "Rotation key",        "Scale key",           "Java method key", "Color key",
        "Flags key",    "Camera position key", "Target position key", "Roll key",        "FOV key"};
    for (int kind = 0; kind < KeyKind::FilterCount; ++kind) {
        EXPECT_EQ(Description(Loose(kind)).find(std::string(kTitles[kind]) + '\n'), 0u) << kind;
    }
    auto& speech = Loose<CFilmSpeechKey>(KeyKind::Speech);
    speech.speechPath.assign(4000, 'p');
    speech.speechText.assign(4000, 't');
    EXPECT_LE(Description(speech).size(), 511u);
    speech.Describe(nullptr, 30);
}

TEST_F(KeyRecordTest, FlagNamesFollowTheTrack) {
    auto& onLevel = Add<CFilmFlagsKey>(*film->mainTrack, KeyKind::Flags, 0.0f);
    auto& onObject = Add<CFilmFlagsKey>(AddActor(MakeObject("Box")), KeyKind::Flags, 0.0f);
    auto& onLight = Add<CFilmFlagsKey>(AddTrack(film->CreateGLLightTrack()), KeyKind::Flags, 0.0f);
    EXPECT_EQ(onLevel.GetFlagCount(), 1);
    EXPECT_STREQ(onLevel.GetFlagName(0), "Black bars");
    EXPECT_STREQ(onObject.GetFlagName(0), "Hidden");
    EXPECT_STREQ(onLight.GetFlagName(0), "Light on");
    EXPECT_STREQ(onLight.GetFlagName(1), "");
    EXPECT_STREQ(onLight.GetFlagName(-1), "");
}

TEST_F(KeyRecordTest, LinkedKeyStoresWorldPointsInTheSpaceOfItsLink) {
    engine::SceneObject& cart = MakeObject("Cart", {10.0f, 0.0f, 0.0f});
    auto& key = Loose<CFilmLinkedKey>(KeyKind::CameraPosition);
    const Vector3 eye{12.0f, 3.0f, 0.0f};
    const Vector3 handle{13.0f, 3.0f, 0.0f};
    key.SetValue(eye.Data());
    key.SetOutHandle(handle.Data());
    key.SetLinkObject(&cart);
    EXPECT_EQ(key.linkObjectId, cart.id);
    ExpectVector(key.value, {2.0f, 3.0f, 0.0f});
    Vector3 point;
    key.GetOutPoint(point);
    ExpectVector(point, handle);

    const float moved[3] = {20.0f, 0.0f, 0.0f};
    cart.SetPosition(moved, 0);
    key.GetOutPoint(point);
    ExpectVector(point, {23.0f, 3.0f, 0.0f});
    key.SetInHandle(eye.Data());
    ExpectVector(key.inHandle, {-8.0f, 3.0f, 0.0f});
    key.GetInPoint(point);
    ExpectVector(point, eye);

    key.SetLinkObject(nullptr); // stays in the world where it is now
    ExpectVector(key.value, {22.0f, 3.0f, 0.0f});
    EXPECT_EQ(key.linkObjectId, 0);
}

TEST_F(KeyRecordTest, LinkedKeyFollowsAnElement) {
    engine::SceneObject& robot = MakeObject("Robot", {10.0f, 0.0f, 0.0f}, nullptr, "MeshObject", "robot.glb");
    auto& key = Loose<CFilmLinkedKey>(KeyKind::CameraTarget);
    const Vector3 point{10.0f, 5.0f, 0.0f};
    key.SetLinkObject(&robot);
    key.SetLinkElement("arm"); // stands at (10, 2, 0)
    key.SetValue(point.Data());
    ExpectVector(key.value, {0.0f, 3.0f, 0.0f});
    EXPECT_EQ(key.linkElement, "arm");
    key.SetLinkElement("no such element");
    ExpectVector(key.value, {0.0f, 5.0f, 0.0f});
}

TEST_F(KeyRecordTest, LinkToAFlatObjectKeepsTheNumbers) {
    engine::SceneObject& flat = MakeObject("Flat");
    const engine::Matrix4 matrix = engine::Compose({}, {}, {0.0f, 1.0f, 1.0f});
    flat.SetMatrix(matrix.m, 0);
    auto& key = Loose<CFilmLinkedKey>(KeyKind::CameraPosition);
    const Vector3 eye{1.0f, 2.0f, 3.0f};
    key.SetValue(eye.Data());
    key.SetLinkObject(&flat);
    EXPECT_EQ(key.value, eye);
    key.SetValue(eye.Data());
    EXPECT_EQ(key.value, eye);
}

} // namespace engine_test
