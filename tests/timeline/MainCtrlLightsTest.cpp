// "Add GL light" and "Add dyn light".
#include "framework/UserNote.h"
#include "helpers/rules/FilmsLightHelper.h"
#include "resources/resource.h"
#include "tests/timeline/CommandFixture.h"

#include <gmock/gmock.h>
#include <limits>

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using ::testing::StartsWith;

namespace {

/// A view at (10, 20, 30) that looks along -x. Its forward row, (3, 0, 0), is not of length one.
class AddLightTest : public CommandTest {
protected:
    AddLightTest() {
        editor.viewMatrix = {0, 0, -1, 0, 0, 1, 0, 0, 3, 0, 0, 0, 10, 20, 30, 1};
        editor.helperParams.clear();
        editor.helperMakers.clear();
    }
    std::vector<CFilmTrack*> Lights() const {
        std::vector<CFilmTrack*> lights;
        for (CFilmTrack* candidate : film->tracks) {
            if (candidate->IsA(ClassId::GLLightTrack) || candidate->IsA(ClassId::DynLightTrack)) {
                lights.push_back(candidate);
            }
        }
        return lights;
    }
    static std::vector<int> Kinds(const CFilmTrack& light) {
        std::vector<int> kinds;
        for (const IFilmKey* key : light.keys) {
            EXPECT_EQ(key->time, 0.0f);
            kinds.push_back(key->kind);
        }
        return kinds;
    }
    Vector3 FirstPosition(const CFilmTrack& light) {
        return VectorKey(KeysOf(light, KeyKind::Position).front()).value;
    }
};

} // namespace

TEST_F(AddLightTest, AGLLightStandsAHundredUnitsBeforeTheView) {
    Run(IDC_ADD_GL_LIGHT);
    ASSERT_EQ(Lights().size(), 1u);
    const auto* light = AsGLLightTrack(Lights().front());
    ASSERT_NE(light, nullptr);
    ASSERT_NE(light->lightObject, nullptr);
    EXPECT_EQ(PositionOf(*light->lightObject), (Vector3{-90, 20, 30}));
    EXPECT_THAT(Kinds(*light), ElementsAre(KeyKind::Flags, KeyKind::Position));
    EXPECT_EQ(FirstPosition(*light), (Vector3{-90, 20, 30}));
    EXPECT_EQ(light->isSun, 0);
    EXPECT_EQ(light->isFixedLight, 0);
    EXPECT_EQ(light->lightObject->GetInfo()->className, "GLLightEditorObject");
    EXPECT_THAT(light->lightObject->name, StartsWith("MovieGLLight"));
    EXPECT_TRUE(light->lightObject->GetInfo()->IsActive());
    EXPECT_NE(plugin.lightHelpers.FindHolder(Lights().front()), nullptr);
    EXPECT_NE(RowOf(light->lightObject->name), nullptr);
}

TEST_F(AddLightTest, ADynamicLightHasATransformOfItsOwn) {
    Run(IDC_ADD_DYN_LIGHT);
    ASSERT_EQ(Lights().size(), 1u);
    const auto* light = AsDynLightTrack(Lights().front());
    ASSERT_NE(light, nullptr);
    EXPECT_THAT(Kinds(*light),
                ElementsAre(KeyKind::Flags, KeyKind::Position, KeyKind::Rotation, KeyKind::Scale));
    EXPECT_EQ(FirstPosition(*light), (Vector3{-90, 20, 30}));
    EXPECT_EQ(VectorKey(KeysOf(*light, KeyKind::Rotation).front()).value, (Vector3{0, 0, 0}));
    EXPECT_EQ(VectorKey(KeysOf(*light, KeyKind::Scale).front()).value, (Vector3{1, 1, 1}));
    EXPECT_EQ(light->lightObject->GetInfo()->className, "FilmsDynLightEditorObject");
    EXPECT_THAT(light->lightObject->name, StartsWith("MovieDynLight"));
}

TEST_F(AddLightTest, TheHostMakesThemFromTheirClassEntries) {
    Run(IDC_ADD_GL_LIGHT);
    Run(IDC_ADD_DYN_LIGHT);
    EXPECT_EQ(editor.Count("CreateHelperObject GLLightEditorObject 2"), 1);
    EXPECT_EQ(editor.Count("CreateHelperObject FilmsDynLightEditorObject 2"), 1);
    EXPECT_THAT(editor.helperMakers, Each(Pair("Control", plugin.pluginId)));
    ASSERT_EQ(editor.helperParams.size(), 2u);
    EXPECT_EQ(editor.helperParams[0].modelPath, "gllight.mesh");
    EXPECT_EQ(editor.helperParams[1].modelPath, "dynlight.mesh");
    EXPECT_EQ(editor.helperParams[1].rotation, (Vector3{0, 0, 0}));
    EXPECT_EQ(editor.helperParams[1].scale, (Vector3{1, 1, 1}));
}

TEST_F(AddLightTest, EachUseMakesALightOfItsOwnName) {
    Run(IDC_ADD_GL_LIGHT);
    Run(IDC_ADD_GL_LIGHT);
    ASSERT_EQ(Lights().size(), 2u);
    EXPECT_NE(plugin.FindObjectByTrack(Lights()[0])->name, plugin.FindObjectByTrack(Lights()[1])->name);
}

TEST_F(AddLightTest, NothingIsMadeWithoutWhatItNeeds) {
    const auto nothing = [this](const char* what) {
        Run(IDC_ADD_GL_LIGHT);
        Run(IDC_ADD_DYN_LIGHT);
        EXPECT_THAT(editor.helperParams, IsEmpty()) << what;
    };
    editor.hasControl = false;
    nothing("helpers");
    editor.hasControl = true;
    const EditorClassDescriptor* entry = plugin.dynLightClass;
    plugin.dynLightClass = nullptr;
    nothing("one of the two classes");
    plugin.dynLightClass = entry;
    editor.activeView = -1;
    nothing("a view");
    editor.activeView = 0;
    editor.viewMatrix.fill(0.0f);
    nothing("a direction");
    editor.viewMatrix.fill(std::numeric_limits<float>::quiet_NaN());
    nothing("numbers");
    editor.viewMatrix = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    plugin.SetCurrentFilm(nullptr);
    nothing("a film");
}

TEST_F(AddLightTest, TheUserIsToldTheNameOfANewLight) {
    std::vector<std::string> notes;
    SetUserNoteSink([&notes](const std::string& text) { notes.push_back(text); });
    Run(IDC_ADD_DYN_LIGHT);
    editor.refusedHelpers = {"GLLightEditorObject"};
    Run(IDC_ADD_GL_LIGHT); // none is made
    SetUserNoteSink(nullptr);
    ASSERT_EQ(Lights().size(), 1u);
    EXPECT_THAT(notes, ElementsAre("\"" + std::string(plugin.FindObjectByTrack(Lights().front())->name) +
                                   "\" stands 1 m before the view. A click on its name selects it."));
}

TEST_F(AddLightTest, ALightThatGoesWhileItsRowsAskIsNotTold) {
    const std::string element = "tail";
    AddKey(track, KeyKind::Animation, 1.0f)->SetValue(&element); // which the actor's mesh doesn't have
    int notes = 0;
    SetUserNoteSink([&](const std::string&) { ++notes; });
    Hooks().messageBox = [this](const std::string& text, UINT) {
        boxes.push_back(text);
        if (boxes.size() == 1) {
            editor.DeleteObjects({plugin.FindObjectByTrack(Lights().front())});
        }
        return IDOK;
    };
    boxes.clear();
    Run(IDC_ADD_GL_LIGHT);
    SetUserNoteSink(nullptr);
    EXPECT_FALSE(boxes.empty());
    EXPECT_THAT(Lights(), IsEmpty());
    EXPECT_EQ(notes, 0);
}

TEST_F(AddLightTest, AHostThatMakesNoObjectMakesNoTrack) {
    editor.refusedHelpers = {"GLLightEditorObject"};
    Run(IDC_ADD_GL_LIGHT);
    EXPECT_THAT(Lights(), IsEmpty());
}

TEST_F(AddLightTest, ALightWhoseFilmIsClosedMeanwhileIsTakenAwayAgain) {
    const std::size_t before = Data().Objects().size();
    editor.onCreateHelper = [this] { plugin.SetCurrentFilm(nullptr); };
    Run(IDC_ADD_GL_LIGHT);
    EXPECT_EQ(editor.helperParams.size(), 1u);
    EXPECT_THAT(Lights(), IsEmpty());
    EXPECT_EQ(Data().Objects().size(), before);
}

TEST_F(AddLightTest, RemoveActorDeletesTheLight) {
    Run(IDC_ADD_GL_LIGHT);
    ASSERT_EQ(Lights().size(), 1u);
    const std::string name = plugin.FindObjectByTrack(Lights().front())->name;
    RunAt(IDC_REMOVE_ACTOR, RowOf(name), 0.0f);
    EXPECT_THAT(Lights(), IsEmpty());
    EXPECT_EQ(RowOf(name), nullptr);
    EXPECT_EQ(editor.level.FindObject(name), nullptr);
    EXPECT_TRUE(plugin.lightHelpers.helpers.empty());
}

TEST_F(AddLightTest, ALightThatTheUserMovesSnapsBackUnlessObjectsAreAnimated) {
    Run(IDC_ADD_GL_LIGHT);
    CFilmTrack* light = Lights().front();
    EditorObject* object = plugin.FindObjectByTrack(light);
    UserMoves(*object, 5, 6, 7);
    EXPECT_EQ(PositionOf(*object), (Vector3{-90, 20, 30}));
    plugin.SetTime(4.0f, /*fromWindow*/ false);
    plugin.SetAnimateObjects(true);
    UserMoves(*object, 5, 6, 7);
    ASSERT_EQ(KeysOf(*light, KeyKind::Position).size(), 2u);
    const auto& key = VectorKey(KeysOf(*light, KeyKind::Position).back());
    EXPECT_EQ(key.time, 4.0f);
    EXPECT_EQ(key.value, (Vector3{5, 6, 7}));
    plugin.SetTime(0.0f, /*fromWindow*/ false);
    EXPECT_EQ(PositionOf(*object), (Vector3{-90, 20, 30}));
}
