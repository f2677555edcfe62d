#include "resources/resource.h"
#include "tests/timeline/CommandFixture.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;

namespace {

/// "Add camera track" in a film whose level row has one camera row, as every new film.
class CameraTracksTest : public CommandTest {
protected:
    CameraTracksTest() {
        RowOf("Level")->SetExpanded(true, true);
        Settle();
    }
    CTrackCtrl* CameraRow(int index) { return RowOf("Level", KeyKind::Camera, index); }
    static const CFilmCameraKey& Record(const CTrackKey* key) {
        return static_cast<const CFilmCameraKey&>(*key->record);
    }
    std::vector<std::string> CameraNames() const {
        std::vector<std::string> names;
        for (const CTrackCtrl* row : control->tracks) {
            if (row->kind == KeyKind::Camera) {
                names.push_back(row->name);
            }
        }
        return names;
    }
};

} // namespace

TEST_F(CameraTracksTest, NewRowStandsFirstAndTheOthersMoveOn) {
    CTrackCtrl* old = CameraRow(0);
    CTrackKey* key = PutTimed(old, 1.0f, 2.0f);
    RunOn(IDC_ADD_CAMERA_TRACK, RowOf("Level"), nullptr);
    EXPECT_THAT(CameraNames(), ElementsAre("Camera keys(0)", "Camera keys(1)"));
    EXPECT_EQ(old->subIndex, 1);
    EXPECT_EQ(Record(key).priority, 1);
    CTrackCtrl* added = CameraRow(0);
    ASSERT_NE(added, nullptr);
    EXPECT_NE(added, old);
    EXPECT_EQ(added->parent, RowOf("Level"));
    EXPECT_EQ(added->track, film->mainTrack);
    EXPECT_TRUE(added->keys.empty());
    EXPECT_EQ(*std::next(control->tracks.begin()), added) << "directly behind the level's row";
    EXPECT_EQ(RowOf("Level")->children.front(), added);
    ExpectNothingDangles();
}

TEST_F(CameraTracksTest, NewRowIsShownAtOnce) {
    RunOn(IDC_ADD_CAMERA_TRACK, RowOf("Level"), nullptr);
    Settle();
    EXPECT_EQ(VisibleNames()[1], "Camera keys(0)");
    EXPECT_TRUE(CameraRow(0)->IsWindowVisible());
}

TEST_F(CameraTracksTest, EachTimeAllMoveOn) {
    CTrackKey* first = PutTimed(CameraRow(0), 1.0f, 2.0f);
    RunOn(IDC_ADD_CAMERA_TRACK, RowOf("Level"), nullptr);
    CTrackKey* second = PutTimed(CameraRow(0), 3.0f, 2.0f);
    RunOn(IDC_ADD_CAMERA_TRACK, RowOf("Level"), nullptr);
    EXPECT_THAT(CameraNames(), ElementsAre("Camera keys(0)", "Camera keys(1)", "Camera keys(2)"));
    EXPECT_EQ(Record(first).priority, 2);
    EXPECT_EQ(Record(second).priority, 1);
}

// Required: the level row's counter stays where it was, one too low.
TEST_F(CameraTracksTest, CounterOfTheLevelRowStays) {
    EXPECT_EQ(RowOf("Level")->subIndex, 0);
    RunOn(IDC_ADD_CAMERA_TRACK, RowOf("Level"), nullptr);
    EXPECT_EQ(RowOf("Level")->subIndex, 0);
}

TEST_F(CameraTracksTest, KeysOfTheNewRowWin) {
    auto* old = PutTimed(CameraRow(0), 1.0f, 4.0f);
    const std::string low = "Low";
    old->record->SetValue(&low);
    RunOn(IDC_ADD_CAMERA_TRACK, RowOf("Level"), nullptr);
    RunAt(IDC_ADD_KEY, CameraRow(0), 2.0f);
    ASSERT_EQ(CameraRow(0)->keys.size(), 1u);
    IFilmKey* added = (*CameraRow(0)->keys.begin())->record;
    const std::string high = "High";
    added->SetValue(&high);
    EXPECT_EQ(static_cast<CFilmCameraKey*>(added)->priority, 0);
    std::string shown;
    plugin.GetCameraNameAtTime(shown, 1.5f, nullptr);
    EXPECT_EQ(shown, "Low");
    plugin.GetCameraNameAtTime(shown, 2.5f, nullptr);
    EXPECT_EQ(shown, "High");
}

TEST_F(CameraTracksTest, RowWithKeysComesBackWhenTheFilmIsShownAnew) {
    PutTimed(CameraRow(0), 1.0f, 2.0f);
    RunOn(IDC_ADD_CAMERA_TRACK, RowOf("Level"), nullptr);
    PutTimed(CameraRow(0), 3.0f, 2.0f);
    control->ShowFilm(film, true);
    EXPECT_THAT(CameraNames(), ElementsAre("Camera keys(0)", "Camera keys(1)"));
    EXPECT_THAT(TimesOf(*CameraRow(0)), ElementsAre(3.0f));
    EXPECT_THAT(TimesOf(*CameraRow(1)), ElementsAre(1.0f));
}

TEST_F(CameraTracksTest, RowThatIsRemovedGivesTheIndicesBack) {
    CTrackKey* key = PutTimed(CameraRow(0), 1.0f, 2.0f);
    RunOn(IDC_ADD_CAMERA_TRACK, RowOf("Level"), nullptr);
    RunOn(IDC_REMOVE_TRACK, CameraRow(0), nullptr);
    EXPECT_THAT(CameraNames(), ElementsAre("Camera keys(0)"));
    EXPECT_EQ(Record(key).priority, 0);
    ExpectNothingDangles();
}

TEST_F(CameraTracksTest, ElsewhereNothingHappens) {
    PutTimed(CameraRow(0), 1.0f, 2.0f);
    AddCamera(film, "Bridge");
    control->ShowFilm(film, true);
    const std::vector<std::string> before = RowNames();
    RunOn(IDC_ADD_CAMERA_TRACK, nullptr, nullptr);
    RunOn(IDC_ADD_CAMERA_TRACK, RowOf("Crate"), nullptr);
    RunOn(IDC_ADD_CAMERA_TRACK, RowOf("Bridge"), nullptr);
    RunOn(IDC_ADD_CAMERA_TRACK, CameraRow(0), nullptr); // of the level's track, but not its root
    EXPECT_EQ(RowNames(), before);
    EXPECT_EQ(CameraRow(0)->subIndex, 0);
    CTrackCtrl* level = RowOf("Level");
    level->DropTrack();
    RunOn(IDC_ADD_CAMERA_TRACK, level, nullptr);
    EXPECT_EQ(RowNames(), before);
}

TEST_F(CameraTracksTest, AttributesWindowHearsOfTheMovedKeyThatItShows) {
    CTrackKey* key = PutTimed(CameraRow(0), 1.0f, 2.0f);
    FakeAttributes& attributes = OpenFakeAttributes(plugin);
    attributes.SetKey(key, false);
    attributes.log.clear();
    RunOn(IDC_ADD_CAMERA_TRACK, RowOf("Level"), nullptr);
    EXPECT_THAT(attributes.log, ElementsAre("Refresh"));
}
