// Objects that become actors or lights while the user reads a message, behind which anything may go.
#include "tests/plugin/PluginFixture.h"

#include <functional>
#include <utility>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

namespace {

class AddBehindMessageTest : public PluginTest {
protected:
    AddBehindMessageTest() {
        Hooks().messageBox = [this](const std::string& text, UINT) {
            boxes.push_back(text);
            if (meanwhile) {
                meanwhile();
            }
            return boxAnswer;
        };
    }

    /// Opens a film and selects a group of two objects and one that is in none.
    IFilm* SelectGroupAndLooseOne() {
        engine::SceneObject* crate = editor.Create("Crate");
        engine::SceneObject* barrel = editor.Create("Barrel");
        loose = editor.Create("Loose");
        Data().MakeGroup("Both", {crate, barrel});
        IFilm* film = OpenNewFilm();
        editor.Select({crate, barrel, loose});
        return film;
    }

    engine::SceneObject* loose = nullptr; ///< in no group
    std::function<void()> meanwhile;
};

} // namespace

TEST_F(AddBehindMessageTest, ObjectDeletedBehindTheWordOfGroupsBecomesNoActor) {
    const IFilm* film = SelectGroupAndLooseOne();
    meanwhile = [&] {
        editor.DeleteObjects({loose});
        editor.Select({editor.Create("Chosen")});
    };
    plugin.AddSelectedActors();
    EXPECT_THAT(boxes, ElementsAre("Some objects are in groups and they cannot be used in movies"));
    EXPECT_EQ(film->tracks.size(), 1U) << "the level's: what was selected meanwhile wasn't asked for";
}

TEST_F(AddBehindMessageTest, WhatWasSelectedBeforeTheWordOfGroupsBecomesActorsWhateverIsSelectedBehindIt) {
    engine::SceneObject* other = editor.Create("Other");
    IFilm* film = SelectGroupAndLooseOne();
    meanwhile = [&] { editor.Select({other}); };
    plugin.AddSelectedActors();
    EXPECT_NE(film->FindObjectTrack(loose), nullptr);
    EXPECT_EQ(film->FindObjectTrack(other), nullptr);
}

TEST_F(AddBehindMessageTest, AnotherLevelBehindTheWordOfGroupsGetsNoActors) {
    const IFilm* film = SelectGroupAndLooseOne();
    meanwhile = [&] {
        plugin.OnNew();
        plugin.SelectFilmByIndex(0);
    };
    plugin.AddSelectedActors();
    EXPECT_EQ(plugin.GetCurrentFilm(), film);
    EXPECT_EQ(film->tracks.size(), 1U);
}

TEST_F(AddBehindMessageTest, ActorWithoutItsPlaceGetsNoKeysInAFilmThatWent) {
    engine::SceneObject* crate = editor.Create("Crate");
    IFilm* film = OpenNewFilm();
    plugin.objectMatrices.clear();
    meanwhile = [&] { plugin.DeleteFilm(film); };
    plugin.AddActors({crate});
    EXPECT_THAT(boxes, ElementsAre(StartsWith("Plugin Films critical internal error")));
    EXPECT_EQ(plugin.GetCurrentFilm(), nullptr);
}

TEST_F(AddBehindMessageTest, FurtherObjectsThatWentBecomeNoActors) {
    engine::SceneObject* crate = editor.Create("Crate");
    engine::SceneObject* barrel = editor.Create("Barrel");
    const IFilm* film = OpenNewFilm();
    plugin.objectMatrices.clear();
    meanwhile = [&] {
        meanwhile = nullptr;
        editor.DeleteObjects({barrel});
    };
    plugin.AddActors({crate, barrel});
    ASSERT_EQ(film->tracks.size(), 2U);
    EXPECT_EQ(AsObjectTrack(film->tracks.back())->actor, crate);
}

TEST_F(AddBehindMessageTest, LightWithoutItsPlaceGetsNoKeysInAFilmThatWent) {
    engine::SceneObject* lamp = editor.CreateOfClass("GLLightEditorObject", "Lamp");
    IFilm* film = OpenNewFilm();
    plugin.objectMatrices.clear();
    meanwhile = [&] { plugin.DeleteFilm(film); };
    EXPECT_FALSE(plugin.AddLightTrack(lamp));
    EXPECT_THAT(plugin.lightHelpers.helpers, IsEmpty());
}

TEST_F(AddBehindMessageTest, LightDeletedBehindTheMessageLeavesNoTrack) {
    engine::SceneObject* lamp = editor.CreateOfClass("GLLightEditorObject", "Lamp");
    const IFilm* film = OpenNewFilm();
    plugin.objectMatrices.clear();
    meanwhile = [&] { editor.DeleteObjects({lamp}); };
    EXPECT_FALSE(plugin.AddLightTrack(lamp));
    EXPECT_EQ(film->tracks.size(), 1U); // the level's
}

TEST_F(AddBehindMessageTest, FurtherLightsThatWentWhileRowsAskedBecomeNone) {
    /// Its rows ask the user.
    class AskingWindow : public LoggingWindow {
    public:
        using LoggingWindow::LoggingWindow;
        void ShowFilm(IFilm* /*film*/, bool /*flag*/) override {
            if (const auto action = std::exchange(whileAsked, nullptr)) {
                action();
            }
        }
        std::function<void()> whileAsked;
    };
    std::vector<std::string> calls;
    AskingWindow asking(calls);
    engine::SceneObject* lamp = editor.CreateOfClass("GLLightEditorObject", "Lamp");
    engine::SceneObject* torch = editor.CreateOfClass("FilmsDynLightEditorObject", "Torch");
    const IFilm* film = OpenNewFilm();
    editor.Select({lamp, torch});
    asking.whileAsked = [&] { editor.DeleteObjects({torch}); };
    plugin.scenarioDlg = &asking;
    plugin.OnEvent(EventCode::ObjectsCreated, nullptr);
    plugin.scenarioDlg = nullptr;
    EXPECT_EQ(film->tracks.size(), 2U); // beside the level's, the lamp's
    EXPECT_EQ(plugin.lightHelpers.helpers.size(), 1U);
}
