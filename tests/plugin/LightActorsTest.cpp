#include "plugin/parts/LightActors.h"

#include "plugin/parts/ObjectMatrices.h"
#include "tests/plugin/PartFixture.h"

namespace {

class LightActorsTest : public PartTest {
protected:
    LightActorsTest() {
        IFilmManager& films = *session.GetFilmManager();
        open = films.GetFilm(films.AllocateFilm());
        session.currentFilm = open;
        matrices.Rebuild();
    }
    ~LightActorsTest() override { delete FilmSession::GetParams(lamp); }

    engine::SceneObject* lamp = editor.CreateOfClass("GLLightEditorObject", "Lamp", 4.0f);
    IFilm* open = nullptr;
    CFilmsLightHelperMgr helpers{session};
    ObjectMatrixRecords records;
    ObjectMatrices matrices{session, records};
    LightActors lights{session, helpers, matrices};
};

TEST_F(LightActorsTest, ALightGetsATrackWithAHelperAndItsPlace) {
    EXPECT_TRUE(lights.AddTrack(lamp));
    const CFilmsLightHelper* helper = helpers.FindByObject(lamp);
    ASSERT_NE(helper, nullptr);
    ASSERT_NE(AsGLLightTrack(helper->track), nullptr);
    EXPECT_EQ(AsGLLightTrack(helper->track)->lightObject, lamp);
    const auto keys = std::vector<IFilmKey*>(helper->track->keys.begin(), helper->track->keys.end());
    ASSERT_EQ(keys.size(), 2u);
    EXPECT_EQ(keys[0]->kind, KeyKind::Flags);
    EXPECT_EQ(static_cast<CFilmFlagsKey*>(keys[0])->keyFlags & 1u, 1u) << "it is lit";
    EXPECT_EQ(keys[1]->kind, KeyKind::Position);
    EXPECT_EQ(static_cast<CFilmVectorKey*>(keys[1])->value.x, 4.0f);
}

TEST_F(LightActorsTest, NeedsALightAndAnOpenFilm) {
    EXPECT_FALSE(lights.AddTrack(nullptr));
    EXPECT_FALSE(lights.AddTrack(editor.Create("Crate")));
    session.currentFilm = nullptr;
    EXPECT_FALSE(lights.AddTrack(lamp));
    EXPECT_TRUE(helpers.helpers.empty());
    session.currentFilm = open;
}

TEST_F(LightActorsTest, ALevelWithoutASunHasNoSunTrack) {
    EXPECT_FALSE(lights.AddSunTrack(open));
    EXPECT_FALSE(lights.AddSunTrack(nullptr));
}

TEST_F(LightActorsTest, ALightIsDeletedThroughItsTrack) {
    EXPECT_TRUE(lights.AddTrack(lamp));
    CFilmTrack* track = helpers.FindByObject(lamp)->track;
    EXPECT_FALSE(lights.DeleteLightOf(nullptr));
    delete FilmSession::GetParams(lamp);
    lamp->GetInfo()->SetPluginData(FilmSession::kPluginKind, nullptr);
    const int id = lamp->id;
    EXPECT_TRUE(lights.DeleteLightOf(track));
    EXPECT_EQ(editor.level.FindObject(id), nullptr);
    helpers.DeleteHelpers();
    lamp = nullptr;
}

} // namespace
