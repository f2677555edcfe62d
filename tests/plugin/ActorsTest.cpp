#include "files/base/Log.h"
#include "tests/plugin/PluginFixture.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class ActorsTest : public PluginTest {
protected:
    std::vector<std::string> TextsOf(const ObjectList& objects, bool expected) {
        std::list<DeleteMessage> messages;
        EXPECT_EQ(plugin.CanDeleteObjects(&objects, &messages), expected);
        std::vector<std::string> texts;
        for (const DeleteMessage& message : messages) {
            texts.push_back(message.text);
        }
        return texts;
    }
};

} // namespace

TEST_F(ActorsTest, ActorGetsATrackWithThreeKeysFromItsStoredMatrix) {
    EditorObject* crate = editor.Create("Crate", 1, 2, 3);
    IFilm* film = OpenNewFilm();
    MoveTo(*crate, 9, 9, 9); // the film may have moved it; the record counts
    plugin.AddActors({crate});
    auto* track = AsObjectTrack(film->FindObjectTrack(crate));
    ASSERT_NE(track, nullptr);
    EXPECT_EQ(track->actor, crate);
    ASSERT_EQ(track->keys.size(), 3u);
    auto key = track->keys.begin();
    EXPECT_EQ((*key)->kind, KeyKind::Position);
    EXPECT_EQ(VectorKey(*key).value, (Vector3{1, 2, 3}));
    EXPECT_EQ((*key)->time, 0.0f);
    EXPECT_EQ(VectorKey(*key).inHandle, Vector3{}); // no handles, no methods
    EXPECT_EQ(VectorKey(*key).outHandle, Vector3{});
    EXPECT_EQ(VectorKey(*key).inMethod, 0);
    ++key;
    EXPECT_EQ((*key)->kind, KeyKind::Rotation);
    EXPECT_EQ(VectorKey(*key).value, Vector3{});
    ++key;
    EXPECT_EQ((*key)->kind, KeyKind::Scale);
    EXPECT_EQ(VectorKey(*key).value, (Vector3{1, 1, 1}));
}

TEST_F(ActorsTest, ActorGetsAStoreWithADefaultRecord) {
    EditorObject* crate = editor.Create("Crate");
    const IFilm* film = OpenFilmWith({crate});
    CPluginFilmsParams* params = ParamsOf(crate);
    ASSERT_NE(params, nullptr);
    std::uint8_t expanded = 9;
    const std::uint8_t* filter = params->Find(film->name, "Crate", &expanded);
    ASSERT_NE(filter, nullptr);
    EXPECT_THAT(std::vector<int>(filter, filter + 20), ::testing::Each(1));
    EXPECT_EQ(expanded, 0);
}

TEST_F(ActorsTest, KnownRecordOfAnActorIsKept) {
    EditorObject* crate = editor.Create("Crate");
    IFilm* film = OpenFilmWith({crate});
    ParamsOf(crate)->Set(film->name, nullptr, 1, CPluginFilmsParams::kExpanded, "Crate");
    ObjectList objects{crate};
    plugin.RemoveActors(film, &objects, false);
    plugin.AddActors(objects);
    std::uint8_t expanded = 0;
    ParamsOf(crate)->Find(film->name, "Crate", &expanded);
    EXPECT_EQ(expanded, 1);
    EXPECT_EQ(ParamsOf(crate)->records.size(), 1u);
}

TEST_F(ActorsTest, SameSelectionTwiceAddsNoSecondTrack) {
    EditorObject* crate = editor.Create("Crate");
    IFilm* film = OpenFilmWith({crate});
    const std::size_t tracks = film->tracks.size();
    editor.Select({crate});
    plugin.AddSelectedActors();
    EXPECT_EQ(film->tracks.size(), tracks);
}

TEST_F(ActorsTest, GroupedObjectsAreRefusedWithOneMessageAndOthersAdded) {
    engine::SceneObject* a = editor.Create("A");
    engine::SceneObject* b = editor.Create("B");
    EditorObject* free = editor.Create("Free");
    ASSERT_NE(Data().MakeGroup("Pair", {a, b}), nullptr);
    IFilm* film = OpenNewFilm();
    editor.Select({a, b, free});
    plugin.AddSelectedActors();
    EXPECT_THAT(boxes, ElementsAre("Some objects are in groups and they cannot be used in movies"));
    EXPECT_EQ(film->FindObjectTrack(a), nullptr);
    EXPECT_EQ(film->FindObjectTrack(b), nullptr);
    EXPECT_NE(film->FindObjectTrack(free), nullptr);
}

TEST_F(ActorsTest, HelpersAreSkippedButVirtualObjectsAreTaken) {
    EditorObject* helper = editor.CreateOfClass("CameraTargetEditorObject", "Target");
    EditorObject* ghost = editor.CreateOfClass("VirtualObjEditorObject", "Ghost");
    IFilm* film = OpenFilmWith({helper, ghost});
    EXPECT_EQ(film->FindObjectTrack(helper), nullptr);
    EXPECT_NE(film->FindObjectTrack(ghost), nullptr);
}

TEST_F(ActorsTest, NullElementsAndMissingHostsAreIgnored) {
    EditorObject* crate = editor.Create("Crate");
    plugin.AddActors({crate}); // no film
    IFilm* film = OpenNewFilm();
    plugin.AddActors({nullptr});
    plugin.view = nullptr;
    plugin.AddActors({crate});
    plugin.AddSelectedActors();
    plugin.view = &editor;
    EXPECT_EQ(film->FindObjectTrack(crate), nullptr);
}

TEST_F(ActorsTest, WindowRebuildsOnlyIfAnActorWasAdded) {
    EditorObject* crate = editor.Create("Crate");
    OpenNewFilm();
    std::vector<std::string> calls;
    LoggingWindow window(calls);
    plugin.scenarioDlg = &window;
    plugin.AddActors({crate});
    EXPECT_THAT(calls, ElementsAre("ShowCurrentFilm"));
    plugin.AddActors({crate});
    EXPECT_THAT(calls, ElementsAre("ShowCurrentFilm"));
    plugin.scenarioDlg = nullptr;
}

TEST_F(ActorsTest, MissingMatrixIsReportedAndKeysStandAtTheOrigin) {
    EditorObject* crate = editor.Create("Crate", 5, 5, 5);
    IFilm* film = OpenNewFilm();
    plugin.objectMatrices.clear();
    plugin.AddActors({crate});
    EXPECT_EQ(boxes.size(), 1u);
    const CFilmTrack* track = film->FindObjectTrack(crate);
    EXPECT_EQ(VectorKey(track->keys.front()).value, Vector3{});
}

TEST_F(ActorsTest, RemovedActorGoesBackAndLosesItsTrack) {
    EditorObject* crate = editor.Create("Crate", 1, 2, 3);
    IFilm* film = OpenFilmWith({crate});
    MoveTo(*crate, 9, 9, 9);
    const ObjectList objects{nullptr, crate};
    plugin.RemoveActors(film, &objects, false);
    EXPECT_EQ(film->FindObjectTrack(crate), nullptr);
    EXPECT_EQ(PositionOf(*crate), (Vector3{1, 2, 3}));
    plugin.RemoveActors(nullptr, &objects, false);
    plugin.RemoveActors(film, nullptr, false);
}

TEST_F(ActorsTest, RemovalRestoresEvenObjectsWithoutATrack) {
    EditorObject* crate = editor.Create("Crate", 1, 2, 3);
    IFilm* film = OpenNewFilm();
    MoveTo(*crate, 9, 9, 9);
    const ObjectList objects{crate};
    plugin.RemoveActors(film, &objects, true);
    EXPECT_EQ(PositionOf(*crate), (Vector3{1, 2, 3}));
}

TEST_F(ActorsTest, RemovedActorBelowAnotherObjectStaysWhereThePluginFindsIt) {
    engine::SceneObject* cart = editor.Create("Cart");
    engine::SceneObject* crate = editor.Create("Crate", 1, 0, 0);
    ASSERT_TRUE(editor.level.SetParent(crate, cart));
    IFilm* film = OpenNewFilm();
    MoveTo(*crate, 5, 0, 0);
    const ObjectList objects{crate};
    plugin.RemoveActors(film, &objects, false);
    EXPECT_EQ(PositionOf(*crate), (Vector3{5, 0, 0}));
}

TEST_F(ActorsTest, VirtualActorIsNotRemovedWithTheSelection) {
    EditorObject* ghost = editor.CreateOfClass("VirtualObjEditorObject", "Ghost", 1, 2, 3);
    IFilm* film = OpenFilmWith({ghost});
    MoveTo(*ghost, 9, 9, 9);
    const ObjectList objects{ghost};
    plugin.RemoveActors(film, &objects, false);
    EXPECT_NE(film->FindObjectTrack(ghost), nullptr);
    EXPECT_EQ(PositionOf(*ghost), (Vector3{1, 2, 3})) << "it is put back all the same";
}

TEST_F(ActorsTest, ActorOfTheSameNameInAnotherFilmKeepsItsTrack) {
    EditorObject* crate = editor.Create("Crate");
    IFilm* first = OpenFilmWith({crate});
    IFilm* second = OpenFilmWith({crate});
    const ObjectList objects{crate};
    plugin.RemoveActors(second, &objects, false);
    EXPECT_NE(first->FindObjectTrack(crate), nullptr);
    EXPECT_EQ(second->FindObjectTrack(crate), nullptr);
}

TEST_F(ActorsTest, LightsOnlyLeavesObjectTracks) {
    EditorObject* crate = editor.Create("Crate");
    IFilm* film = OpenFilmWith({crate});
    const ObjectList objects{crate};
    plugin.RemoveActors(film, &objects, true);
    EXPECT_NE(film->FindObjectTrack(crate), nullptr);
}

TEST_F(ActorsTest, ActorCannotBeDeletedOncePerFilm) {
    EditorObject* crate = editor.Create("Crate");
    IFilm* first = OpenFilmWith({crate});
    IFilm* second = OpenFilmWith({crate});
    const std::string name = "Crate(" + std::to_string(crate->id) + ") is actor in film ";
    EXPECT_THAT(TextsOf({crate}, false), ElementsAre(name + first->name, name + second->name));
}

TEST_F(ActorsTest, LinkOfACameraKeyCannotBeDeletedOncePerKey) {
    EditorObject* crate = editor.Create("Crate");
    IFilm* film = NewFilm();
    CFilmCameraTrack* camera = AddCamera(film, "Cam");
    AddKey(camera, KeyKind::CameraPosition, 0)->SetLinkObject(crate);
    AddKey(camera, KeyKind::CameraTarget, 0)->SetLinkObject(crate);
    AddKey(camera, KeyKind::Roll, 0);
    const std::string text = std::string("camera Cam from film ") + film->name + " is linked to Crate(" +
                             std::to_string(crate->id) + ")";
    EXPECT_THAT(TextsOf({crate}, false), ElementsAre(text, text));
}

TEST_F(ActorsTest, LightsAndFreeObjectsMayBeDeleted) {
    OpenNewFilm();
    EditorObject* lamp = editor.CreateOfClass("GLLightEditorObject", "Lamp");
    EditorObject* crate = editor.Create("Crate");
    EXPECT_THAT(TextsOf({lamp, crate}, true), IsEmpty());
    EXPECT_TRUE(plugin.CanDeleteObjects(nullptr, nullptr));
    ObjectList objects{crate};
    EXPECT_TRUE(plugin.CanDeleteObjects(&objects, nullptr));
    editor.level.Close();
    std::list<DeleteMessage> messages;
    ObjectList none;
    EXPECT_FALSE(plugin.CanDeleteObjects(&none, &messages));
}

TEST_F(ActorsTest, DeletionForgetsTheObjectEverywhere) {
    EditorObject* crate = editor.CreateOfClass("VirtualObjEditorObject", "Ghost");
    plugin.virtualObjects.push_back({"Ghost", "", "MeshObject", crate});
    ASSERT_EQ(plugin.objectMatrices.size(), 1u);
    editor.DeleteObjects({crate});
    EXPECT_THAT(plugin.objectMatrices, IsEmpty());
    EXPECT_THAT(plugin.virtualObjects, IsEmpty());
}

TEST_F(ActorsTest, DeletionOfOneRecordLeavesItsDouble) {
    EditorObject* crate = editor.Create("Crate");
    plugin.AddObjectMatrix(crate);
    editor.Select({crate});
    plugin.OnEvent(EventCode::ObjectsDeleting, nullptr);
    EXPECT_EQ(plugin.objectMatrices.size(), 1u);
}

TEST_F(ActorsTest, ChildrenOfADeletedObjectGetTheirPresentMatrix) {
    engine::SceneObject* cart = editor.Create("Cart");
    engine::SceneObject* known = editor.Create("Known", 1, 0, 0);
    engine::SceneObject* unknown = editor.Create("Unknown", 2, 0, 0);
    ASSERT_TRUE(editor.level.SetParent(known, cart));
    ASSERT_TRUE(editor.level.SetParent(unknown, cart));
    plugin.objectMatrices.RemoveAll(unknown);
    MoveTo(*known, 7, 0, 0);
    editor.Select({cart});
    plugin.OnEvent(EventCode::ObjectsDeleting, nullptr);
    EXPECT_EQ(plugin.GetStoredMatrix(known)[12], 7.0f);
    EXPECT_EQ(plugin.GetStoredMatrix(unknown)[12], 2.0f);
    EXPECT_THAT(boxes, IsEmpty());
}

TEST_F(ActorsTest, ChildThatIsDeletedTooGetsNoNewRecord) {
    engine::SceneObject* cart = editor.Create("Cart");
    engine::SceneObject* child = editor.Create("Child");
    ASSERT_TRUE(editor.level.SetParent(child, cart));
    editor.Select({child, cart});
    plugin.OnEvent(EventCode::ObjectsDeleting, nullptr);
    EXPECT_THAT(plugin.objectMatrices, IsEmpty());
}

TEST_F(ActorsTest, ObjectOfATrackByItsClass) {
    EditorObject* crate = editor.Create("Crate");
    IFilm* film = OpenFilmWith({crate});
    EXPECT_EQ(plugin.FindObjectByTrack(nullptr), nullptr);
    EXPECT_EQ(plugin.FindObjectByTrack(film->mainTrack), nullptr);
    EXPECT_EQ(plugin.FindObjectByTrack(AddCamera(film, "Cam")), nullptr);
    EXPECT_EQ(plugin.FindObjectByTrack(film->FindObjectTrack(crate)), crate);
    EditorObject* lamp = editor.CreateOfClass("FilmsDynLightEditorObject", "Lamp");
    EXPECT_EQ(plugin.FindObjectByTrack(film->tracks.back()), lamp);
}

TEST_F(ActorsTest, TrackThatNoLightHoldsIsTold) {
    static std::string told;
    told.clear();
    SetLogListener([](const char* text) { told += text; });
    IFilm* film = OpenNewFilm();
    CFilmTrack* track = film->CreateDynLightTrack();
    film->AddTrack(track);
    EXPECT_EQ(plugin.FindObjectByTrack(track), nullptr);
    SetLogListener(nullptr);
    EXPECT_EQ(told, "[IPluginImpl::FindObjectByTrack()] fatal error - invalid track\n");
}

TEST_F(ActorsTest, TrackOfAnObjectByItsClass) {
    EditorObject* crate = editor.Create("Crate");
    IFilm* film = OpenFilmWith({crate});
    EditorObject* lamp = editor.CreateOfClass("GLLightEditorObject", "Lamp");
    CFilmTrack* lampTrack = film->tracks.back();
    EXPECT_EQ(plugin.FindTrackOfObject(nullptr, crate), nullptr);
    EXPECT_EQ(plugin.FindTrackOfObject(film, nullptr), nullptr);
    EXPECT_EQ(plugin.FindTrackOfObject(film, crate), film->FindObjectTrack(crate));
    EXPECT_EQ(plugin.FindTrackOfObject(film, lamp), lampTrack);
    IFilm* other = NewFilm();
    EXPECT_EQ(plugin.FindTrackOfObject(other, crate), nullptr);
    EXPECT_EQ(plugin.FindTrackOfObject(other, lamp), lampTrack); // a light's track even of another film
}
