#include "host/engine/FilmManager.h"
#include "tests/plugin/PluginFixture.h"
#include "tests/support/FakeAttributes.h"

#include <algorithm>

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

namespace {

class EventsTest : public PluginTest {
protected:
    EventsTest() : window(calls) {}
    ~EventsTest() override { plugin.scenarioDlg = nullptr; }

    std::vector<std::string> calls;
    LoggingWindow window;
};

} // namespace

TEST_F(EventsTest, SelectionChangeRepaintsTheMainControl) {
    plugin.scenarioDlg = &window;
    OpenNewFilm();
    calls.clear();
    plugin.OnEvent(EventCode::SelectionChanged, nullptr);
    EXPECT_THAT(calls, ElementsAre("Invalidate"));
}

TEST_F(EventsTest, SelectionChangeGoesToAnActorThatIsBeingChanged) {
    plugin.scenarioDlg = &window;
    OpenNewFilm();
    calls.clear();
    window.changingActor = true;
    plugin.OnEvent(EventCode::SelectionChanged, nullptr);
    EXPECT_THAT(calls, ElementsAre("ChangeActor"));
}

TEST_F(EventsTest, SelectionChangeWithoutAFilmOrControlDoesNothing) {
    plugin.scenarioDlg = &window;
    plugin.OnEvent(EventCode::SelectionChanged, nullptr);
    EXPECT_THAT(calls, IsEmpty());
    window.hasControl = false;
    OpenNewFilm();
    calls.clear();
    plugin.OnEvent(EventCode::SelectionChanged, nullptr);
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(EventsTest, RenamesRefreshVirtualNamesOnly) {
    EditorObject* crate = editor.Create("Crate");
    plugin.virtualObjects.push_back({"old", "old.glb", "MeshObject", crate});
    plugin.scenarioDlg = &window;
    plugin.OnEvent(EventCode::ObjectsRenamed, nullptr);
    EXPECT_EQ(plugin.virtualObjects.front().objectName, "Crate");
    EXPECT_EQ(plugin.virtualObjects.front().meshName, "box.glb");
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(EventsTest, ChangedObjectSetRefreshesNamesAndWindow) {
    EditorObject* crate = editor.Create("Crate");
    plugin.virtualObjects.push_back({"old", "old.glb", "MeshObject", crate});
    plugin.scenarioDlg = &window;
    plugin.OnEvent(EventCode::ObjectSetChanged, nullptr);
    EXPECT_EQ(plugin.virtualObjects.front().objectName, "Crate");
    EXPECT_THAT(calls, ElementsAre("ShowCurrentFilm"));
}

TEST_F(EventsTest, CreatedObjectsGetARecordEachTimeTheyAreTold) {
    EditorObject* crate = editor.Create("Crate", 1, 2, 3);
    editor.Select({crate});
    plugin.OnEvent(EventCode::ObjectsCreated, nullptr);
    EXPECT_EQ(plugin.objectMatrices.size(), 2u); // no check for doubles
}

TEST_F(EventsTest, NullAmongCreatedAndDeletedObjectsIsPassedOver) {
    EditorObject* crate = editor.Create("Crate");
    plugin.objectMatrices.clear();
    editor.level.selection = {nullptr, crate, nullptr};
    plugin.OnEvent(EventCode::ObjectsCreated, nullptr);
    EXPECT_EQ(plugin.objectMatrices.size(), 1u);
    plugin.OnEvent(EventCode::ObjectsDeleting, nullptr);
    EXPECT_THAT(plugin.objectMatrices, IsEmpty());
    editor.level.selection.clear();
}

TEST_F(EventsTest, CreatedObjectUnderAHelperWithChildrenGetsNoRecord) {
    engine::SceneObject* holder = editor.CreateOfClass("HelperCwOEditorObject", "Holder");
    engine::SceneObject* child = editor.Create("Child");
    plugin.objectMatrices.clear();
    ASSERT_TRUE(editor.level.SetParent(child, holder));
    editor.Select({holder, child});
    plugin.OnEvent(EventCode::ObjectsCreated, nullptr);
    ASSERT_EQ(plugin.objectMatrices.size(), 1u);
    EXPECT_EQ(plugin.objectMatrices.front().object, holder);
}

TEST_F(EventsTest, OutsideChangesOfListedObjectsAreStored) {
    EditorObject* crate = editor.Create("Crate");
    EditorObject* other = editor.Create("Other");
    MoveTo(*crate, 4, 5, 6);
    MoveTo(*other, 7, 8, 9);
    ObjectList changed{nullptr, crate};
    plugin.OnEvent(EventCode::ObjectsChangedOutside, &changed);
    EXPECT_EQ(plugin.GetStoredMatrix(crate)[12], 4.0f);
    EXPECT_EQ(plugin.GetStoredMatrix(other)[12], 0.0f);
    editor.Select({other});
    plugin.OnEvent(EventCode::ObjectsChangedOutside, nullptr); // null means the selection
    EXPECT_EQ(plugin.GetStoredMatrix(other)[12], 7.0f);
    editor.Select({});
    plugin.OnEvent(EventCode::ObjectsChangedOutside, nullptr);
}

TEST_F(EventsTest, OutsideChangeWithAFilmOpenIsThrownAway) {
    EditorObject* crate = editor.Create("Crate", 1, 1, 1);
    OpenNewFilm();
    MoveTo(*crate, 4, 5, 6);
    ObjectList changed{crate};
    plugin.OnEvent(EventCode::ObjectsChangedOutside, &changed);
    EXPECT_EQ(PositionOf(*crate), (Vector3{1, 1, 1}));
    EXPECT_EQ(plugin.GetStoredMatrix(crate)[12], 1.0f);
}

TEST_F(EventsTest, AfterAnOutsideChangeTheFilmPosesItsActorsAgain) {
    EditorObject* actor = editor.Create("Actor", 1, 1, 1);
    OpenFilmWith({actor});
    const Vector3 place{5, 0, 0};
    AddKey(plugin.GetCurrentFilm()->FindObjectTrack(actor), KeyKind::Position, 2.0f)->SetValue(place.Data());
    plugin.SetTime(2.0f, true);
    editor.broadcasts.clear();
    ObjectList changed{actor};
    plugin.OnEvent(EventCode::ObjectsChangedOutside, &changed);
    EXPECT_EQ(PositionOf(*actor), place);
    EXPECT_THAT(editor.broadcasts, ElementsAre(EventCode::ObjectsMoved));
}

TEST_F(EventsTest, ParentedObjectsAreNotRestored) {
    engine::SceneObject* cart = editor.Create("Cart");
    engine::SceneObject* crate = editor.Create("Crate", 1, 0, 0);
    ASSERT_TRUE(editor.level.SetParent(crate, cart));
    OpenNewFilm();
    MoveTo(*crate, 5, 0, 0);
    plugin.SetCurrentFilm(nullptr);
    EXPECT_EQ(PositionOf(*crate), (Vector3{5, 0, 0}));
}

TEST_F(EventsTest, MissingMatrixWarnsAndGivesTheIdentity) {
    EditorObject* crate = editor.Create("100% Crate", 3, 3, 3);
    plugin.objectMatrices.clear();
    const float* matrix = plugin.GetStoredMatrix(crate);
    EXPECT_EQ(matrix[0], 1.0f);
    EXPECT_EQ(matrix[12], 0.0f);
    EXPECT_THAT(boxes, ElementsAre("Plugin Films critical internal error - no matrix stored for object: "
                                   "100% Crate\n Don't save this level with previous name!!!!"));
}

TEST_F(EventsTest, HostGoingAwayForgetsTheThreePointers) {
    plugin.OnEvent(EventCode::HostGoesAway, nullptr);
    EXPECT_EQ(plugin.editor, nullptr);
    EXPECT_EQ(plugin.view, nullptr);
    EXPECT_EQ(plugin.level, nullptr);
    for (int code = 0; code <= 20; ++code) {
        plugin.OnEvent(code, nullptr); // none may touch the host
    }
    plugin.SetCurrentFilm(nullptr);
    plugin.SetTime(1.0f, false);
    plugin.Initialize(&editor, kPluginNumber, &editor);
}

TEST_F(EventsTest, SuspendClosesTheFilmAndResumeOpensItAtItsTime) {
    EditorObject* crate = editor.Create("Crate", 1, 2, 3);
    IFilm* film = OpenFilmWith({crate});
    plugin.SetTime(2.5f, true);
    MoveTo(*crate, 8, 8, 8);
    Suspend();
    EXPECT_EQ(plugin.GetCurrentFilm(), nullptr);
    EXPECT_EQ(PositionOf(*crate), (Vector3{1, 2, 3}));
    MoveTo(*crate, 4, 4, 4);
    Resume();
    EXPECT_EQ(plugin.GetCurrentFilm(), film);
    EXPECT_EQ(plugin.currentTime, 2.5f);
    EXPECT_EQ(plugin.GetStoredMatrix(crate)[12], 4.0f);
}

TEST_F(EventsTest, SuspendWithoutAFilmPutsObjectsBackTooAndResumeTakesWhatIsThere) {
    EditorObject* crate = editor.Create("Crate", 1, 2, 3);
    MoveTo(*crate, 8, 8, 8); // nobody told the plug-in
    Suspend();
    EXPECT_EQ(PositionOf(*crate), (Vector3{1, 2, 3}));
    MoveTo(*crate, 4, 4, 4);
    Resume();
    EXPECT_EQ(plugin.GetCurrentFilm(), nullptr);
    EXPECT_EQ(plugin.GetStoredMatrix(crate)[12], 4.0f);
}

TEST_F(EventsTest, ResumeAtANegativeTimeStartsAtZero) {
    OpenNewFilm();
    plugin.scenarioDlg = &window;
    Suspend();
    plugin.suspendedTime = -2.0f;
    Resume();
    EXPECT_EQ(plugin.currentTime, 0.0f);
    EXPECT_EQ(window.times.back(), 0.0f);
}

TEST_F(EventsTest, SecondSuspendForgetsTheFilm) {
    OpenNewFilm();
    Suspend();
    Suspend();
    Resume();
    EXPECT_EQ(plugin.GetCurrentFilm(), nullptr);
}

TEST_F(EventsTest, ResumeDoesNotOpenAFilmThatWentMeanwhile) {
    IFilm* film = OpenNewFilm();
    Suspend();
    plugin.DeleteFilm(film);
    Resume();
    EXPECT_EQ(plugin.GetCurrentFilm(), nullptr);
    OpenNewFilm();
    Suspend();
    editor.level.New("");
    plugin.OnNew();
    Resume();
    EXPECT_EQ(plugin.GetCurrentFilm(), nullptr);
}

TEST_F(EventsTest, ResumeGoesOnPlaying) {
    std::uint32_t now = 0;
    Hooks().clock = [&now] { return now += 4000; };
    OpenNewFilm();
    plugin.isPlaying = 1;
    Suspend();
    editor.broadcasts.clear();
    Resume();
    EXPECT_THAT(editor.broadcasts,
                Contains(EventCode::ObjectsMoved).Times(4)); // two of opening, frames 4 s and 8 s
    EXPECT_EQ(plugin.isPlaying, 0);
}

TEST_F(EventsTest, NewLevelResetsEverythingButCameraStores) {
    plugin.scenarioDlg = &window;
    OpenNewFilm();
    plugin.OnCommand(kPluginNumber, 50);
    plugin.attachedViews.push_back(1);
    plugin.levelParams.Set("f", nullptr, 1, 3, "Level");
    plugin.cameraParams.emplace_back();
    plugin.virtualObjects.emplace_back();
    plugin.currentTime = 3.0f;
    calls.clear();
    plugin.OnNew();
    EXPECT_EQ(plugin.GetCurrentFilm(), nullptr);
    EXPECT_THAT(plugin.objectMatrices, IsEmpty());
    EXPECT_THAT(plugin.attachedViews, IsEmpty());
    EXPECT_THAT(plugin.levelParams.records, IsEmpty());
    EXPECT_THAT(plugin.virtualObjects, IsEmpty());
    EXPECT_EQ(plugin.cameraParams.size(), 1u);
    EXPECT_EQ(plugin.animateObjects, 0);
    EXPECT_EQ(plugin.currentTime, 0.0f);
    EXPECT_THAT(calls, ElementsAre("ClearUndo", "ShowCurrentFilm", "Reset", "PressButton 36823 up"));
    EXPECT_EQ(window.times.back(), 0.0f);
}

TEST_F(EventsTest, LoadedLevelTakesItsFilmsLengthsAndMatrices) {
    NewFilm()->length = 42.0f;
    plugin.filmViewSettings[0].movieStart = 3.0f;
    editor.Create("Crate");
    plugin.objectMatrices.clear();
    plugin.OnEvent(EventCode::LevelLoaded, nullptr);
    EXPECT_EQ(plugin.filmViewSettings[0].movieStart, 0.0f);
    EXPECT_EQ(plugin.filmViewSettings[0].movieEnd, 42.0f);
    EXPECT_EQ(plugin.filmViewSettings[1].movieEnd, 10.0f);
    EXPECT_EQ(plugin.objectMatrices.size(), 1u);
}

TEST_F(EventsTest, LoadedLevelIsToldTheRateAndItsFilmsThatTheyAreThere) {
    LoggingFilm film(calls);
    Films().films[3] = &film;
    auto& manager = static_cast<engine::FilmManager&>(Films());
    manager.SetFramesPerSecond(1);
    plugin.OnEvent(EventCode::LevelLoaded, nullptr);
    Films().films[3] = nullptr;
    EXPECT_THAT(calls, ElementsAre("OnLevelLoaded"));
    EXPECT_EQ(manager.FramesPerSecond(), 30);
}

TEST_F(EventsTest, LoadedLevelForgetsTheFilmItsTimeItsKeyAndTheToggle) {
    OpenNewFilm();
    plugin.scenarioDlg = &window;
    OpenFakeAttributes(plugin, calls);
    plugin.SetAnimateObjects(true);
    plugin.SetTime(3.0f, true);
    plugin.isPlaying = 1;
    calls.clear();
    plugin.OnEvent(EventCode::LevelLoaded, nullptr);
    EXPECT_THAT(calls, ElementsAre("Reset", "ClearUndo", "ShowCurrentFilm", "PressButton 36823 up"));
    EXPECT_EQ(plugin.GetCurrentFilm(), nullptr);
    EXPECT_EQ(plugin.currentTime, 0.0f);
    EXPECT_EQ(window.times.back(), 0.0f);
    EXPECT_EQ(plugin.isPlaying, 0);
    EXPECT_EQ(plugin.animateObjects, 0);
    plugin.keyAttributesDlg.reset();
}

TEST_F(EventsTest, LoadedEventWithoutALevelDropsTheFilmAndStops) {
    OpenNewFilm();
    editor.level.Close();
    plugin.OnEvent(EventCode::LevelLoaded, nullptr);
    EXPECT_EQ(plugin.GetCurrentFilm(), nullptr);
}

TEST_F(EventsTest, EventFifteenDeletesTheLightHelpers) {
    OpenNewFilm();
    editor.CreateOfClass("GLLightEditorObject", "Lamp");
    CFilmTrack* track = plugin.GetCurrentFilm()->tracks.back();
    plugin.OnEvent(EventCode::ReleaseRenderResources, nullptr);
    EXPECT_THAT(plugin.lightHelpers.helpers, IsEmpty());
    EXPECT_EQ(plugin.FindObjectByTrack(track), nullptr);
}

TEST_F(EventsTest, HiddenObjectsAreCollectedAndMarked) {
    struct Collection : IObjectCollection {
        bool Contains(const EditorObject* object) const override {
            return std::find(objects.begin(), objects.end(), object) != objects.end();
        }
        void Add(EditorObject* object) override { objects.push_back(object); }
        std::vector<EditorObject*> objects;
    } collection;
    OpenNewFilm();
    EditorObject* crate = editor.Create("Crate");
    EditorObject* lamp = editor.CreateOfClass("GLLightEditorObject", "Lamp");
    plugin.virtualObjects.push_back({"Crate", "", "MeshObject", crate});
    HiddenObjectsRequest request{&collection};
    plugin.OnEvent(EventCode::CollectHiddenObjects, &request);
    EXPECT_THAT(collection.objects, ElementsAre(crate, lamp));
    EXPECT_EQ(crate->savedAsObject, 0);
    EXPECT_EQ(lamp->savedAsObject, 0);
    plugin.OnEvent(EventCode::CollectHiddenObjects, nullptr);
}

TEST_F(EventsTest, ViewRequestTellsWhetherAViewFollowsTheFilm) {
    plugin.AttachView(1);
    std::int32_t number = 1;
    bool attached = false;
    plugin.OnViewRequest(ViewRequest::IsAttached, 0, &number, &attached);
    EXPECT_TRUE(attached);
    number = 0;
    plugin.OnViewRequest(ViewRequest::IsAttached, 0, &number, &attached);
    EXPECT_FALSE(attached);
    attached = true;
    plugin.OnViewRequest(ViewRequest::IsAttached, 0, nullptr, &attached);
    EXPECT_FALSE(attached);
    plugin.OnViewRequest(ViewRequest::IsAttached, 0, &number, nullptr);
}

TEST_F(EventsTest, ViewRequestDetachesTheView) {
    plugin.AttachView(1);
    std::int32_t number = 1;
    plugin.OnViewRequest(ViewRequest::Detach, 0, nullptr, nullptr);
    EXPECT_THAT(plugin.attachedViews, ElementsAre(1));
    plugin.OnViewRequest(ViewRequest::Detach, 0, &number, nullptr);
    EXPECT_THAT(plugin.attachedViews, IsEmpty());
}

TEST_F(EventsTest, ViewRequestTellsOfMovedObjects) {
    EditorObject* crate = editor.Create("Crate");
    MoveTo(*crate, 1, 1, 1);
    ObjectList moved{crate};
    plugin.OnViewRequest(ViewRequest::ObjectsMoved, 0, &moved, nullptr);
    EXPECT_EQ(plugin.GetStoredMatrix(crate)[12], 1.0f);
    plugin.OnViewRequest(ViewRequest::ObjectsMoved, 0, nullptr, nullptr);
    plugin.OnViewRequest(77, 0, &moved, nullptr);
}

TEST_F(EventsTest, DestroyedObjectIsForgottenEverywhere) {
    OpenNewFilm();
    engine::SceneObject* crate = editor.Create("Crate");
    plugin.AddActors({crate});
    plugin.contextObject = crate;
    plugin.virtualObjects.push_back({"Crate", "", "MeshObject", crate});
    ASSERT_NE(ParamsOf(crate), nullptr);
    plugin.OnObjectDestroyed(crate);
    EXPECT_EQ(ParamsOf(crate), nullptr);
    EXPECT_THAT(plugin.objectMatrices, IsEmpty());
    EXPECT_THAT(plugin.virtualObjects, IsEmpty());
    EXPECT_EQ(plugin.contextObject, nullptr);
    plugin.OnObjectDestroyed(nullptr);
}

TEST_F(EventsTest, LightDestroyedWithoutTheEventBeforeHasNoHelperAnyMore) {
    OpenNewFilm();
    EditorObject* lamp = editor.CreateOfClass("GLLightEditorObject", "Lamp");
    ASSERT_EQ(plugin.lightHelpers.helpers.size(), 1u);
    plugin.OnObjectDestroyed(lamp);
    EXPECT_THAT(plugin.lightHelpers.helpers, IsEmpty());
}

TEST_F(EventsTest, EditorClosingLeavesBothListsInOrder) {
    plugin.OnEditorClosing();
    EXPECT_THAT(editor.calls, ElementsAre("RemoveListenerA", "RemoveListenerB"));
}

TEST_F(EventsTest, EditorClosingForgetsWhatBelongsToTheLevel) {
    OpenNewFilm();
    editor.CreateOfClass("GLLightEditorObject", "Lamp");
    plugin.attachedViews.push_back(1);
    plugin.levelParams.Set("f", nullptr, 1, 3, "Level");
    plugin.cameraParams.emplace_back();
    plugin.virtualObjects.emplace_back();
    plugin.OnEditorClosing();
    EXPECT_THAT(plugin.objectMatrices, IsEmpty());
    EXPECT_THAT(plugin.attachedViews, IsEmpty());
    EXPECT_THAT(plugin.levelParams.records, IsEmpty());
    EXPECT_THAT(plugin.lightHelpers.helpers, IsEmpty());
    EXPECT_THAT(plugin.virtualObjects, IsEmpty());
    EXPECT_EQ(plugin.cameraParams.size(), 1u);
}
