#include "keys/views/TrackKey.h"
#include "tests/keys/AttributesWindowFixture.h"

#include <gmock/gmock.h>

using ::testing::IsEmpty;

namespace {

/// The attributes window while time is put into the film and taken out: a position key at 2 seconds is on
/// show, and the user has typed another place.
class KeyAttributesAdjustTest : public AttributesWindowTest {
protected:
    void SetUp() override {
        key = PutPosition(2.0f, 1.5f);
        Open(key);
        Edit("Pos X", "4.5");
    }

    CFilmVectorKey* key = nullptr;
};

} // namespace

TEST_F(KeyAttributesAdjustTest, InsertedTimeKeepsKeyAndEdit) {
    control->InsertTime(1.0f, 3.0f);
    EXPECT_EQ(key->time, 5.0f);
    EXPECT_EQ(key->value.x, 4.5f);
    EXPECT_EQ(Dialog().GetRecord(), key);
    EXPECT_EQ(Dialog().GetKey(), ViewOf(key));
    EXPECT_EQ(Lines().front(), "Pos X=4.50000");
    control->ClearSelection();
    EXPECT_EQ(key->time, 5.0f);
}

TEST_F(KeyAttributesAdjustTest, KeyThatFallsOutEmptiesTheWindow) {
    control->InsertTime(1.0f, -3.0f);
    EXPECT_EQ(KeysOf(*track, KeyKind::Position).size(), 0u);
    ExpectEmpty();
    ExpectNothingDangles();
    control->ClearSelection();
}

TEST_F(KeyAttributesAdjustTest, HiddenWindowKeepsItsKeyToo) {
    Dialog().Hide();
    control->InsertTime(1.0f, 3.0f);
    EXPECT_EQ(Dialog().GetRecord(), key);
    EXPECT_EQ(Dialog().GetKey(), ViewOf(key));
    control->InsertTime(1.0f, -9.0f);
    ExpectEmpty();
}

TEST_F(KeyAttributesAdjustTest, StretchedKeyStaysOnShow) {
    control->StretchTime(1.0f, 2.0f, 4.0f);
    EXPECT_EQ(key->time, 3.0f);
    EXPECT_EQ(Dialog().GetRecord(), key);
}

TEST_F(KeyAttributesAdjustTest, NothingIsAskedAboutACutWhoseCameraIsGone) {
    CFilmCameraKey* cut = AddCut(film, "gone", 3.0f, 4.0f, 0);
    control->ShowFilm(film, true);
    Open(cut);
    boxes.clear();
    control->InsertTime(1.0f, 3.0f);
    EXPECT_EQ(cut->time, 6.0f);
    EXPECT_EQ(Dialog().GetRecord(), cut);
    control->InsertTime(1.0f, -9.0f); // selected, and it falls out
    EXPECT_THAT(KeysOf(*film->mainTrack, KeyKind::Camera), IsEmpty());
    EXPECT_THAT(boxes, IsEmpty());
    ExpectEmpty();
}

TEST_F(KeyAttributesAdjustTest, FilmThatIsLeftWhileTheUserIsAskedIsLeftAlone) {
    CFilmCameraKey* cut = AddCut(film, "main", 3.0f, 4.0f, 0);
    AddCamera(film, "main");
    control->ShowFilm(film, true);
    Open(cut);
    Edit("Camera", "gone");
    bool isAsked = false;
    Hooks().messageBox = [&](const std::string&, UINT) {
        if (!isAsked) {
            isAsked = true;
            plugin.SetCurrentFilm(nullptr);
        }
        return int{IDYES};
    };
    control->InsertTime(1.0f, 3.0f);
    EXPECT_TRUE(isAsked);
    EXPECT_EQ(plugin.GetCurrentFilm(), nullptr);
    EXPECT_EQ(film->length, 10.0f);
    EXPECT_EQ(cut->time, 3.0f);
}
