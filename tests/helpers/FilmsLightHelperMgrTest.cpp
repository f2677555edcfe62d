#include "tests/plugin/PluginFixture.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class FilmsLightHelperMgrTest : public PluginTest {
protected:
    CFilmsLightHelper* AddHelper(EditorObject* object, CFilmTrack* track = nullptr, bool isSun = false) {
        auto* helper = new CFilmsLightHelper;
        helper->object = object;
        helper->track = track;
        helper->isSun = isSun;
        helpers.Add(helper);
        return helper;
    }

    CFilmsLightHelperMgr& helpers = plugin.lightHelpers;
};

} // namespace

TEST_F(FilmsLightHelperMgrTest, NullIsNeitherAddedNorRemovedNorFound) {
    helpers.Add(nullptr);
    EXPECT_THAT(helpers.helpers, IsEmpty());
    CFilmsLightHelper* helper = AddHelper(nullptr);
    helpers.Remove(nullptr);
    EXPECT_THAT(helpers.helpers, ElementsAre(helper));
    EXPECT_EQ(helpers.FindByObject(nullptr), nullptr) << "though the helper has no object";
    EXPECT_EQ(helpers.FindByTrack(nullptr), nullptr) << "though the helper has no track";
    helpers.HideFromLevel(nullptr);
    helpers.SetLightsForFilm(nullptr, true);
}

TEST_F(FilmsLightHelperMgrTest, RemovedHelperIsTheCallers) {
    CFilmsLightHelper* helper = AddHelper(nullptr);
    helpers.Remove(helper);
    EXPECT_THAT(helpers.helpers, IsEmpty());
    EXPECT_FALSE(helper->isSun); // still there
    delete helper;
}

TEST_F(FilmsLightHelperMgrTest, ObjectsWithOneIdAreOne) {
    EditorObject* lamp = editor.Create("Lamp");
    EditorObject* twin = editor.Create("Twin");
    CFilmsLightHelper* first = AddHelper(lamp);
    AddHelper(twin);
    const int id = twin->id;
    twin->id = lamp->id;
    EXPECT_EQ(helpers.FindByObject(twin), first);
    twin->id = id;
    EXPECT_NE(helpers.FindByObject(twin), first);
    EXPECT_EQ(helpers.FindByObject(editor.Create("Other")), nullptr);
}

TEST_F(FilmsLightHelperMgrTest, TrackIsFoundByItsHolderAndASunTrackByTheSunToo) {
    IFilm* film = NewFilm();
    CFilmTrack* track = film->CreateGLLightTrack();
    CFilmTrack* sunTrack = film->CreateGLLightTrack();
    film->AddTrack(track);
    film->AddTrack(sunTrack);
    AsGLLightTrack(sunTrack)->isSun = 1;
    EXPECT_EQ(helpers.FindByTrack(sunTrack), nullptr) << "there is no sun";
    CFilmsLightHelper* sun = AddHelper(nullptr, nullptr, /*isSun*/ true);
    AddHelper(nullptr, nullptr, /*isSun*/ true);
    EXPECT_EQ(helpers.GetSunHelper(), sun) << "the first";
    EXPECT_EQ(helpers.FindByTrack(sunTrack), sun);
    EXPECT_EQ(helpers.FindByTrack(track), nullptr);
    EXPECT_EQ(helpers.FindHolder(sunTrack), nullptr);
    CFilmsLightHelper* holder = AddHelper(nullptr, sunTrack);
    EXPECT_EQ(helpers.FindByTrack(sunTrack), holder) << "who holds it comes before the sun";
    holder->track = track;
    EXPECT_EQ(helpers.FindByTrack(track), holder);
}

TEST_F(FilmsLightHelperMgrTest, HiddenLightsAreMarkedAndCollectedInOrder) {
    EditorObject* lamp = editor.Create("Lamp");
    EditorObject* other = editor.Create("Other");
    AddHelper(other);
    AddHelper(nullptr);
    AddHelper(lamp);
    ObjectList hidden;
    helpers.HideFromLevel(&hidden);
    EXPECT_THAT(hidden, ElementsAre(other, lamp));
    EXPECT_EQ(lamp->savedAsObject, 0);
    EXPECT_EQ(other->savedAsObject, 0);
}

TEST_F(FilmsLightHelperMgrTest, SunWithoutADirectionStandsAtTheOrigin) {
    Data().SetSun(true);
    Data().Sun()->direction = {};
    CFilmsLightHelper* sun = helpers.GetOrCreateSunHelper(&Data());
    ASSERT_NE(sun, nullptr);
    EXPECT_EQ(PositionOf(*sun->object), Vector3{});
    EXPECT_EQ(helpers.GetOrCreateSunHelper(nullptr), sun) << "the one there is";
}

TEST_F(FilmsLightHelperMgrTest, SunIsNormalisedAndPutAThousandUnitsAway) {
    Data().SetSun(true);
    Data().Sun()->direction = {3, 0, -4};
    const CFilmsLightHelper* sun = helpers.GetOrCreateSunHelper(&Data());
    ASSERT_NE(sun, nullptr);
    EXPECT_FLOAT_EQ(PositionOf(*sun->object).x, 600.0f);
    EXPECT_FLOAT_EQ(PositionOf(*sun->object).z, -800.0f);
    EXPECT_EQ(sun->lightKind, 0u);
    EXPECT_EQ(sun->track, nullptr);
}

TEST_F(FilmsLightHelperMgrTest, NoSunWithoutLevelDataOrItsSun) {
    EXPECT_EQ(helpers.GetOrCreateSunHelper(nullptr), nullptr);
    EXPECT_EQ(helpers.GetOrCreateSunHelper(&Data()), nullptr);
    Data().SetSun(true);
    plugin.editor = nullptr;
    EXPECT_EQ(helpers.GetOrCreateSunHelper(&Data()), nullptr);
    plugin.editor = &editor;
}
