#include "tests/plugin/PluginFixture.h"

using ::testing::ElementsAre;

namespace {

class LightsTest : public PluginTest {};

} // namespace

TEST_F(LightsTest, GLLightPlacedByTheUserGetsATrackWithTwoKeys) {
    IFilm* film = OpenNewFilm();
    EditorObject* lamp = editor.CreateOfClass("GLLightEditorObject", "Lamp", 1, 2, 3);
    auto* track = AsGLLightTrack(film->tracks.back());
    ASSERT_NE(track, nullptr);
    EXPECT_EQ(track->lightObject, lamp);
    EXPECT_EQ(track->isSun, 0);
    EXPECT_EQ(track->isFixedLight, 0);
    ASSERT_EQ(track->keys.size(), 2u);
    const auto* flags = static_cast<const CFilmFlagsKey*>(track->keys.front());
    EXPECT_EQ(flags->kind, KeyKind::Flags);
    EXPECT_EQ(flags->keyFlags & 1u, 1u);
    EXPECT_EQ(track->keys.back()->kind, KeyKind::Position);
    EXPECT_EQ(VectorKey(track->keys.back()).value, (Vector3{1, 2, 3}));
    EXPECT_EQ(lamp->name.rfind("MovieGLLight", 0), 0u);
    EXPECT_THAT(editor.broadcasts, ElementsAre(EventCode::ObjectSetChanged));
    ASSERT_EQ(plugin.lightHelpers.helpers.size(), 1u);
    EXPECT_EQ(plugin.lightHelpers.helpers.front()->lightKind, 0u);
    EXPECT_EQ(plugin.lightHelpers.helpers.front()->track, track);
}

TEST_F(LightsTest, DynamicLightGetsFourKeys) {
    IFilm* film = OpenNewFilm();
    EditorObject* lamp = editor.CreateOfClass("FilmsDynLightEditorObject", "Lamp", 1, 2, 3);
    auto* track = AsDynLightTrack(film->tracks.back());
    ASSERT_NE(track, nullptr);
    EXPECT_EQ(track->lightObject, lamp);
    std::vector<int> kinds;
    for (const IFilmKey* key : track->keys) {
        kinds.push_back(key->kind);
    }
    EXPECT_THAT(kinds, ElementsAre(KeyKind::Flags, KeyKind::Position, KeyKind::Rotation, KeyKind::Scale));
    EXPECT_EQ(lamp->name.rfind("MovieDynLight", 0), 0u);
    EXPECT_EQ(plugin.lightHelpers.helpers.front()->lightKind, 1u);
}

TEST_F(LightsTest, StoreOfALightStandsUnderAnEmptyName) {
    const IFilm* film = OpenNewFilm();
    EditorObject* lamp = editor.CreateOfClass("GLLightEditorObject", "Lamp");
    CPluginFilmsParams* params = ParamsOf(lamp);
    ASSERT_NE(params, nullptr);
    EXPECT_NE(params->Find(film->name, "", nullptr), nullptr);
    EXPECT_EQ(params->Find(film->name, lamp->name, nullptr), nullptr);
}

TEST_F(LightsTest, LightThatIsNotActiveYetGetsNoTrack) {
    const IFilm* film = OpenNewFilm();
    HelperObjectParams params;
    params.className = "GLLightEditorObject";
    EditorObject* object = nullptr;
    editor.CreateHelperObject("Control", plugin.pluginId, 2, params, &object);
    EXPECT_EQ(film->tracks.size(), 1u);
    EXPECT_EQ(plugin.objectMatrices.size(), 1u);
    EXPECT_TRUE(plugin.AddLightTrack(object));
    EXPECT_TRUE(object->GetInfo()->IsActive());
}

TEST_F(LightsTest, NoLightTrackWithoutFilmLevelOrLight) {
    EditorObject* lamp = editor.CreateOfClass("GLLightEditorObject", "Lamp");
    EXPECT_FALSE(plugin.AddLightTrack(lamp)); // no film
    OpenNewFilm();
    EXPECT_FALSE(plugin.AddLightTrack(nullptr));
    EXPECT_FALSE(plugin.AddLightTrack(editor.Create("Crate")));
    EXPECT_FALSE(plugin.AddSunTrack(nullptr));
}

TEST_F(LightsTest, SunTrackFollowsOneHelperInAllFilms) {
    Data().SetSun(true);
    Data().Sun()->direction = {0, 2, 0};
    const IFilm* first = NewFilm();
    const IFilm* second = NewFilm();
    auto* one = AsGLLightTrack(first->tracks.back());
    auto* two = AsGLLightTrack(second->tracks.back());
    EXPECT_EQ(one->isSun, 1);
    EXPECT_EQ(one->isFixedLight, 1);
    EXPECT_EQ(one->lightObject, two->lightObject);
    ASSERT_EQ(plugin.lightHelpers.helpers.size(), 1u);
    EXPECT_TRUE(plugin.lightHelpers.helpers.front()->isSun);
    EXPECT_EQ(plugin.lightHelpers.helpers.front()->track, nullptr);
    ASSERT_EQ(one->keys.size(), 2u);
    EXPECT_EQ(VectorKey(one->keys.back()).value, (Vector3{0, 1000, 0})); // normalised, times 1000
    EXPECT_EQ(one->lightObject->name.rfind("SunHelper", 0), 0u);
    EXPECT_EQ(editor.Count("CreateHelperObject GLLightEditorObject 2"), 1);
}

TEST_F(LightsTest, NewSunIsLitActiveAndToldToTheOthers) {
    OpenNewFilm();
    Data().SetSun(true);
    editor.calls.clear();
    editor.broadcasts.clear();
    ASSERT_TRUE(plugin.AddSunTrack(plugin.GetCurrentFilm()));
    const auto* track = AsGLLightTrack(plugin.GetCurrentFilm()->tracks.back());
    EXPECT_EQ(track->keys.front()->kind, KeyKind::Flags);
    EXPECT_EQ(static_cast<const CFilmFlagsKey*>(track->keys.front())->keyFlags & 1u, 1u);
    EXPECT_EQ(track->keys.front()->time, 0.0f);
    EXPECT_TRUE(track->lightObject->GetInfo()->IsActive());
    EXPECT_THAT(editor.broadcasts, ElementsAre(EventCode::ObjectSetChanged));
    EXPECT_THAT(editor.calls, ElementsAre("CreateHelperObject GLLightEditorObject 2", "RedrawViews"));
    ASSERT_EQ(editor.helperParams.size(), 1u);
    EXPECT_EQ(editor.helperParams.front().scale, (Vector3{1, 1, 1}));
    EXPECT_EQ(editor.helperParams.front().rotation, Vector3{});
    EXPECT_EQ(editor.helperParams.front().modelPath, "gllight.mesh");
}

TEST_F(LightsTest, OthersHearOfANewSunThatHasItsHelperAndItsNameBeforeTheViewsAreDrawn) {
    Data().SetSun(true);
    editor.calls.clear();
    int told = 0;
    editor.onBroadcast = [&](int, void*) {
        ++told;
        const CFilmsLightHelper* sun = plugin.lightHelpers.GetSunHelper();
        ASSERT_NE(sun, nullptr);
        EXPECT_EQ(sun->object->name.rfind("SunHelper", 0), 0u);
        EXPECT_TRUE(sun->object->GetInfo()->IsActive());
        EXPECT_EQ(editor.Count("RedrawViews"), 0);
    };
    ASSERT_NE(plugin.lightHelpers.GetOrCreateSunHelper(&Data()), nullptr);
    editor.onBroadcast = nullptr;
    EXPECT_EQ(told, 1);
    EXPECT_EQ(editor.Count("RedrawViews"), 1);
}

TEST_F(LightsTest, SunWhoseObjectIsMissingHasNoPositionKey) {
    Data().SetSun(true);
    auto* helper = new CFilmsLightHelper;
    helper->isSun = true;
    plugin.lightHelpers.Add(helper);
    const IFilm* film = NewFilm();
    const auto* track = AsGLLightTrack(film->tracks.back());
    ASSERT_NE(track, nullptr);
    EXPECT_EQ(track->isSun, 1);
    ASSERT_EQ(track->keys.size(), 1u);
    EXPECT_EQ(track->keys.front()->kind, KeyKind::Flags);
    EXPECT_EQ(track->lightObject, nullptr);
}

TEST_F(LightsTest, HostThatMakesNoSunLeavesTheFilmWithout) {
    Data().SetSun(true);
    editor.refusedHelpers.insert("GLLightEditorObject");
    EXPECT_EQ(NewFilm()->tracks.size(), 1u);
    EXPECT_EQ(plugin.lightHelpers.GetSunHelper(), nullptr);
}

TEST_F(LightsTest, SunTrackIsMadeOnce) {
    Data().SetSun(true);
    IFilm* film = NewFilm();
    EXPECT_FALSE(plugin.AddSunTrack(film));
    EXPECT_EQ(film->tracks.size(), 2u);
}

TEST_F(LightsTest, NoSunWithoutControlOrClass) {
    Data().SetSun(true);
    editor.hasControl = false;
    EXPECT_EQ(NewFilm()->tracks.size(), 1u);
    editor.hasControl = true;
    plugin.glLightClass = nullptr;
    EXPECT_EQ(NewFilm()->tracks.size(), 1u);
    EXPECT_EQ(plugin.lightHelpers.GetSunHelper(), nullptr);
}

TEST_F(LightsTest, HostThatReportsTheSunAsActiveGetsOnlyAMatrixRecord) {
    OpenNewFilm();
    Data().SetSun(true);
    editor.onBroadcast = nullptr;
    EXPECT_TRUE(plugin.AddSunTrack(plugin.GetCurrentFilm()));
    EXPECT_EQ(plugin.lightHelpers.helpers.size(), 1u);
    EXPECT_EQ(plugin.objectMatrices.size(), 1u);
}

TEST_F(LightsTest, DeletingALightOfATrackGoesThroughTheHost) {
    IFilm* film = OpenNewFilm();
    editor.CreateOfClass("GLLightEditorObject", "Lamp");
    CFilmTrack* track = film->tracks.back();
    EXPECT_TRUE(plugin.DeleteLightOfTrack(track));
    EXPECT_EQ(film->tracks.size(), 1u);
    EXPECT_TRUE(plugin.lightHelpers.helpers.empty());
    EXPECT_TRUE(Data().Objects().empty());
}

TEST_F(LightsTest, SunIsNeverDeletedThroughItsTrack) {
    Data().SetSun(true);
    IFilm* film = OpenNewFilm();
    EXPECT_FALSE(plugin.DeleteLightOfTrack(film->tracks.back()));
    EXPECT_FALSE(plugin.DeleteLightOfTrack(nullptr));
    EXPECT_FALSE(plugin.DeleteLightOfTrack(film->mainTrack));
    EXPECT_EQ(plugin.lightHelpers.helpers.size(), 1u);
}

TEST_F(LightsTest, RemovingALightActorKeepsItsHelperUnpaired) {
    IFilm* film = OpenNewFilm();
    EditorObject* lamp = editor.CreateOfClass("GLLightEditorObject", "Lamp");
    const ObjectList objects{lamp};
    plugin.RemoveActors(film, &objects, true);
    EXPECT_EQ(film->tracks.size(), 1u);
    ASSERT_EQ(plugin.lightHelpers.helpers.size(), 1u);
    EXPECT_EQ(plugin.lightHelpers.helpers.front()->track, nullptr);
}

TEST_F(LightsTest, RemovingTheSunAsAnActorLeavesItsTrack) {
    Data().SetSun(true);
    IFilm* film = OpenNewFilm();
    const ObjectList objects{plugin.lightHelpers.GetSunHelper()->object};
    plugin.RemoveActors(film, &objects, false);
    EXPECT_EQ(film->tracks.size(), 2u);
}

TEST_F(LightsTest, LightOfAnotherFilmIsNotRemovedFromThisOne) {
    OpenNewFilm();
    EditorObject* lamp = editor.CreateOfClass("GLLightEditorObject", "Lamp");
    IFilm* other = NewFilm();
    const ObjectList objects{lamp};
    plugin.RemoveActors(other, &objects, true);
    EXPECT_NE(plugin.lightHelpers.helpers.front()->track, nullptr);
}

TEST_F(LightsTest, LightsShowOnlyInTheirFilm) {
    IFilm* film = OpenNewFilm();
    EditorObject* lamp = editor.CreateOfClass("GLLightEditorObject", "Lamp");
    lamp->SetFlags(0x9);
    plugin.SetCurrentFilm(nullptr);
    EXPECT_EQ(lamp->visible, 0);
    EXPECT_EQ(lamp->GetFlags(), 0xDu); // bit 2 added
    plugin.SetCurrentFilm(film);
    EXPECT_EQ(lamp->visible, 1);
    EXPECT_EQ(lamp->GetFlags(), 0x9u); // the other bits as they were
}

TEST_F(LightsTest, TrackOfTheSunIsTheFilmsOwn) {
    Data().SetSun(true);
    IFilm* first = NewFilm();
    IFilm* second = NewFilm();
    EditorObject* sun = plugin.lightHelpers.GetSunHelper()->object;
    EXPECT_EQ(plugin.FindTrackOfObject(first, sun), first->tracks.back());
    EXPECT_EQ(plugin.FindTrackOfObject(second, sun), second->tracks.back());
    second->RemoveTrack(second->tracks.back(), 1);
    EXPECT_EQ(plugin.FindTrackOfObject(second, sun), nullptr);
    EXPECT_EQ(plugin.FindObjectByTrack(first->tracks.back()), sun);
}
