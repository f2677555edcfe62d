#include "tests/keys/AttributesFixture.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

constexpr const char* kQuestion =
    "There is no camera with such a name. Movie will be invalid.\n Do you still want to set that name?";

/// A key of a cut to the camera "Old" in a film with the one camera "Bridge".
class CameraAttributesTest : public AttributesTest {
protected:
    CameraAttributesTest() {
        film = OpenNewFilm();
        AddCamera(film, "Bridge");
        key = AddCut(film, "Old", 1.0f, 2.0f, 0);
        Hooks().messageBox = [this](const std::string& text, UINT type) {
            boxes.push_back(text);
            boxType = type;
            if (onBox) {
                onBox();
            }
            return boxAnswer;
        };
    }
    void Edit(const char* name, const char* delay) {
        Fill(*key);
        Type("Camera", "CAMERA", name);
        Type("Delay time", "CAMERA", delay);
    }

    IFilm* film = nullptr;
    CFilmCameraKey* key = nullptr;
    UINT boxType = 0;
    std::function<void()> onBox;
};

} // namespace

TEST_F(CameraAttributesTest, KnownNameIsTakenWithoutAQuestion) {
    Edit("Bridge", "0.75");
    Apply(*key);
    EXPECT_THAT(boxes, IsEmpty());
    EXPECT_EQ(key->cameraName, "Bridge");
    EXPECT_EQ(key->delayTime, 0.75f);
}

TEST_F(CameraAttributesTest, EmptyNameIsTakenWithoutAQuestion) {
    Edit("", "0.5");
    Apply(*key);
    EXPECT_THAT(boxes, IsEmpty());
    EXPECT_EQ(key->cameraName, "");
    EXPECT_EQ(key->delayTime, 0.5f);
}

TEST_F(CameraAttributesTest, UnknownNameIsTakenOnYes) {
    boxAnswer = IDYES;
    Edit("bridge", "0.25"); // other letters, another name
    Apply(*key);
    EXPECT_THAT(boxes, ElementsAre(kQuestion));
    EXPECT_EQ(boxType, 4u); // yes and no
    EXPECT_EQ(key->cameraName, "bridge");
    EXPECT_EQ(key->delayTime, 0.25f);
}

TEST_F(CameraAttributesTest, NoKeepsTheNameAndWritesTheDelayAndTheRowStays) {
    for (const int answer : {IDNO, IDCANCEL, 0}) { // closing the box is no
        boxAnswer = answer;
        key->delayTime = 0.0f;
        Edit("Nowhere", "0.25");
        Apply(*key);
        EXPECT_EQ(key->cameraName, "Old");
        EXPECT_EQ(key->delayTime, 0.25f);
        EXPECT_EQ(TextOf("Camera", "CAMERA"), "Nowhere");
    }
    Fill(*key);
    EXPECT_EQ(TextOf("Camera", "CAMERA"), "Old");
}

TEST_F(CameraAttributesTest, QuestionComesForANameThatDidNotChange) {
    boxAnswer = IDNO;
    Fill(*key);
    Apply(*key);
    EXPECT_THAT(boxes, ElementsAre(kQuestion)); // Required: it is asked each time.
}

TEST_F(CameraAttributesTest, TheFilmOfTheKeyCountsNotTheOneOnShow) {
    IFilm* other = NewFilm();
    AddCamera(other, "Tower");
    plugin.SetCurrentFilm(other); // the rows of the film that was left are written after this
    Edit("Bridge", "0");
    Apply(*key);
    EXPECT_THAT(boxes, IsEmpty());
    EXPECT_EQ(key->cameraName, "Bridge");
    boxAnswer = IDNO;
    Edit("Tower", "0");
    Apply(*key);
    EXPECT_THAT(boxes, ElementsAre(kQuestion));
    EXPECT_EQ(key->cameraName, "Bridge");
}

TEST_F(CameraAttributesTest, KeyOfNoFilmKnowsNoCamera) {
    auto* loose = NewRecordOf<CFilmCameraKey>(KeyKind::Camera);
    boxAnswer = IDYES;
    Fill(*loose);
    Type("Camera", "CAMERA", "Bridge");
    Apply(*loose);
    EXPECT_THAT(boxes, ElementsAre(kQuestion));
    EXPECT_EQ(loose->cameraName, "Bridge");
    CFilmTrack* track = film->CreateLevelTrack(); // in no film
    loose->track = track;
    Apply(*loose);
    EXPECT_EQ(boxes.size(), 2u);
    loose->track = nullptr;
    delete track;
}

TEST_F(CameraAttributesTest, KeyThatGoesDuringTheQuestionIsNotTouched) {
    for (const int answer : {IDYES, IDNO}) {
        CFilmCameraKey* doomed = AddCut(film, "Old", 3.0f, 4.0f, 0);
        bool alive = true;
        boxAnswer = answer;
        onBox = [&] {
            film->mainTrack->RemoveKey(doomed, /*destroy*/ true);
            rows.DeleteAll(); // the window let go of it
            alive = false;
        };
        Fill(*doomed);
        Type("Camera", "CAMERA", "Nowhere");
        Apply(*doomed, [&alive] { return alive; });
    }
    EXPECT_EQ(boxes.size(), 2u);
    EXPECT_THAT(KeysOf(*film->mainTrack, KeyKind::Camera), ElementsAre(key));
}

TEST_F(CameraAttributesTest, RowsThatGoDuringTheQuestionHaveBeenRead) {
    boxAnswer = IDYES;
    onBox = [this] { rows.DeleteAll(); };
    Edit("Nowhere", "0.25");
    Apply(*key, [] { return true; });
    EXPECT_EQ(key->cameraName, "Nowhere");
    EXPECT_EQ(key->delayTime, 0.25f);
}

TEST_F(CameraAttributesTest, WithoutTheRowOfTheNameNothingIsWritten) {
    key->delayTime = 0.5f;
    rows.Append(AttrRows::Make("Delay time", MemberType::Float, nullptr, "CAMERA", 0, nullptr));
    Apply(*key);
    EXPECT_EQ(key->delayTime, 0.5f);
    EXPECT_THAT(boxes, IsEmpty());
}
