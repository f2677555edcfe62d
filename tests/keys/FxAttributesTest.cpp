#include "tests/keys/AttributesFixture.h"

#include <cmath>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

using RecordedFx = RecordedKey<CFilmFxKey, &ShowString, &ShowInt>;

constexpr int kPlaced[] = {KeyKind::FxSequence, KeyKind::FxParticle, KeyKind::FxTrace, KeyKind::FxFlare};

class FxAttributesTest : public AttributesTest {
protected:
    FxAttributesTest() {
        key.state = [this] { return State(); };
    }
    /// What the fields that are written directly hold.
    std::string State() const {
        return key.fxName + ", at " + ShowVector(key.position) + ", up " + ShowVector(key.normal);
    }
    void Begin(int kind, CFilmTrack* track = nullptr) {
        key.kind = kind;
        key.track = track;
        key.log.clear();
        Fill(key);
    }
    void TypeNormal(const char* x, const char* y, const char* z) {
        Type("Normal X", "NORMAL", x);
        Type("Normal Y", "NORMAL", y);
        Type("Normal Z", "NORMAL", z);
    }
    bool ElementShowsFor(const char* objectId) {
        Type("Object ID", "LINK", objectId);
        return !IsHidden("Mesh element name", "LINK");
    }

    RecordedFx key;
};

} // namespace

TEST_F(FxAttributesTest, WritesNameThenLinkThenTheRest) {
    for (const int kind : kPlaced) {
        key.fxName = "Old";
        key.position = {};
        key.normal = {0.0f, 1.0f, 0.0f};
        Begin(kind, LevelTrack());
        Type("FX name", "BASE DATA", "Smoke");
        Type("Object ID", "LINK", "7");
        Type("Mesh element name", "LINK", "Hand");
        Type("Position X", "POSITION", "1");
        Type("Position Y", "POSITION", "2");
        Type("Position Z", "POSITION", "3");
        TypeNormal("0", "0", "2");
        Apply(key);
        EXPECT_THAT(key.log, ElementsAre("SetOutHandle 7 | Smoke, at 0 0 0, up 0 1 0",
                                         "SetValue Hand | Smoke, at 0 0 0, up 0 1 0"))
            << kind;
        EXPECT_EQ(State(), "Smoke, at 1 2 3, up 0 0 1") << kind;
    }
}

TEST_F(FxAttributesTest, ObjectIsWrittenOnlyInTheFilmsOwnTrack) {
    CFilmTrack* object = ObjectTrack();
    for (CFilmTrack* track : {object, static_cast<CFilmTrack*>(nullptr)}) {
        Begin(KeyKind::FxSequence, track);
        EXPECT_EQ(TextOf("Object ID", "LINK"), "none");
        Apply(key);
        EXPECT_THAT(key.log, ElementsAre("SetValue  | , at 0 0 0, up 0 1 0"));
    }
    Begin(KeyKind::FxSequence, LevelTrack()); // the rows of one track
    key.track = object;                       // and the key in another
    Apply(key);
    EXPECT_THAT(key.log, ElementsAre("SetValue  | , at 0 0 0, up 0 1 0"));
}

TEST_F(FxAttributesTest, ElementNeedsAnObjectButInSequences) {
    for (const int kind : {KeyKind::FxParticle, KeyKind::FxTrace, KeyKind::FxFlare}) {
        Begin(kind, LevelTrack());
        EXPECT_FALSE(ElementShowsFor("0")) << kind;
        EXPECT_TRUE(ElementShowsFor("1")) << kind;
        EXPECT_TRUE(ElementShowsFor("-1")) << kind;
        EXPECT_TRUE(ElementShowsFor("12589")) << kind;
    }
}

TEST_F(FxAttributesTest, ElementOfASequenceIsHiddenForOneIdOnly) {
    // Required: "-1" as four bytes, 0x2D and 0x31 from the lowest: 0x31 * 256 + 0x2D = 12544 + 45.
    Begin(KeyKind::FxSequence, LevelTrack());
    EXPECT_FALSE(ElementShowsFor("12589"));
    EXPECT_TRUE(ElementShowsFor("0"));
    EXPECT_TRUE(ElementShowsFor("-1"));
    EXPECT_TRUE(ElementShowsFor("12588"));
}

TEST_F(FxAttributesTest, HiddenElementIsWrittenAllTheSame) {
    key.linkElement = "Hand";
    Begin(KeyKind::FxTrace, LevelTrack());
    ASSERT_FALSE(ElementShowsFor("0"));
    Apply(key);
    ASSERT_EQ(key.log.size(), 2u);
    EXPECT_EQ(key.log[1].substr(0, 13), "SetValue Hand");
}

TEST_F(FxAttributesTest, NormalIsScaledToALengthOfOne) {
    for (const int kind : kPlaced) {
        Begin(kind);
        TypeNormal("0", "3", "4");
        Apply(key);
        EXPECT_EQ(key.normal.x, 0.0f) << kind;
        EXPECT_FLOAT_EQ(key.normal.y, 0.6f) << kind;
        EXPECT_FLOAT_EQ(key.normal.z, 0.8f) << kind;
    }
}

TEST_F(FxAttributesTest, NormalOfNoLengthIsNoNumber) {
    // Required: 1 / sqrt(0) is infinite, and 0 times that is no number.
    for (const int kind : kPlaced) {
        Begin(kind);
        TypeNormal("0", "0", "0");
        Apply(key);
        EXPECT_TRUE(std::isnan(key.normal.x) && std::isnan(key.normal.y) && std::isnan(key.normal.z)) << kind;
        key.normal = {0.0f, 1.0f, 0.0f};
    }
}

TEST_F(FxAttributesTest, NormalOfParticlesIsScaledTwice) {
    // The square of 1e20 is beyond a float: the first scale is 0, and a second one meets no length.
    Begin(KeyKind::FxTrace);
    TypeNormal("1e20", "0", "0");
    Apply(key);
    EXPECT_EQ(key.normal, (Vector3{0.0f, 0.0f, 0.0f}));
    Begin(KeyKind::FxParticle);
    TypeNormal("1e20", "0", "0");
    Apply(key);
    EXPECT_TRUE(std::isnan(key.normal.x));
}

TEST_F(FxAttributesTest, ForwardIsNeverScaled) {
    Begin(KeyKind::FxParticle);
    Type("Forward X", "FORWARD", "0");
    Type("Forward Y", "FORWARD", "30");
    Type("Forward Z", "FORWARD", "40");
    Apply(key);
    EXPECT_EQ(key.forward, (Vector3{0.0f, 30.0f, 40.0f}));
}

TEST_F(FxAttributesTest, DeleteIsWrittenByAllButFlaresAndRain) {
    for (const int kind : {KeyKind::FxSequence, KeyKind::FxParticle, KeyKind::FxTrace, KeyKind::FxBlind}) {
        key.deleteFlag = 0;
        Begin(kind);
        Tick("Delete", "FLAGS", true);
        Apply(key);
        EXPECT_EQ(key.deleteFlag, 1) << kind;
        Tick("Delete", "FLAGS", false);
        Apply(key);
        EXPECT_EQ(key.deleteFlag, 0) << kind;
    }
    for (const int kind : {KeyKind::FxFlare, KeyKind::FxRain}) {
        key.deleteFlag = 1;
        Begin(kind);
        EXPECT_EQ(TextOf("Delete", "FLAGS"), "none");
        Apply(key);
        EXPECT_EQ(key.deleteFlag, 1) << kind;
    }
}

TEST_F(FxAttributesTest, ByteOtherThanOneShowsAsTrue) {
    key.deleteFlag = 2;
    Begin(KeyKind::FxBlind);
    EXPECT_EQ(TextOf("Delete", "FLAGS"), "true");
    Apply(key);
    EXPECT_EQ(key.deleteFlag, 1);
}

TEST_F(FxAttributesTest, EffectsOfTheWholePictureCallNoSetter) {
    for (const int kind : {KeyKind::FxRain, KeyKind::FxBlind}) {
        Begin(kind);
        Type("FX name", "BASE DATA", "Storm");
        Apply(key);
        EXPECT_EQ(key.fxName, "Storm");
        EXPECT_THAT(key.log, IsEmpty());
        key.fxName.clear();
    }
}
