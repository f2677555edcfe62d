// Assets with the plug-in loaded: films that are open while files change and objects are deleted.
#include "host/stage/host/ModelReload.h"
#include "host/stage/windows/Notice.h"
#include "tests/support/Paths.h"
#include "tests/whole/StageFixture.h"

#include <filesystem>
#include <QToolButton>

namespace {

class AssetsInStageTest : public StageTest {
protected:
    /// Writes another sample model over the one that the object has.
    void Replace(const engine::SceneObject& object, const char* model) const {
        std::filesystem::copy_file(SampleFolder() + "/models/" + model,
                                   window->host.level.Folder() + object.meshName,
                                   std::filesystem::copy_options::overwrite_existing);
    }
};

} // namespace

TEST_F(AssetsInStageTest, AModelIsLoadedAnewUnderAnOpenFilmWhichPosesItAgain) {
    ShowPanel();
    const std::string name = FilmLines()[1];
    OpenScenario(name);
    Settle(); // the rows are laid out with the window
    IFilm* film = Films().currentFilm;
    ASSERT_NE(film, nullptr);
    const std::size_t rows = ScenarioRows().size();
    engine::SceneObject* actor = nullptr;
    for (const auto& object : window->host.level.Data()->Objects()) {
        const bool isPerson =
            object->meshName == "models/sailor.glb" || object->meshName == "models/harbour_master.glb";
        actor = actor == nullptr && isPerson && object->Pose() != nullptr ? object.get() : actor;
    }
    ASSERT_NE(actor, nullptr) << "the film poses somebody";
    const std::vector<float> place = MatrixOf(*actor);
    const engine::IMesh* before = actor->Mesh();
    const std::size_t elements = before->Elements().size();
    Replace(*actor, actor->meshName.ends_with("sailor.glb") ? "harbour_master.glb" : "sailor.glb");
    const stage::ModelNews news = stage::ReloadModels(window->host);
    EXPECT_EQ(news.loaded, std::vector<std::string>{actor->meshName});
    EXPECT_TRUE(news.refused.empty());
    Settle();
    EXPECT_EQ(Films().currentFilm, film);
    EXPECT_EQ(ScenarioRows().size(), rows);
    EXPECT_EQ(MatrixOf(*actor), place);
    EXPECT_EQ(actor->Mesh()->Elements().size(), elements) << "both have the same bones";
    EXPECT_NE(actor->Pose(), nullptr) << "the film poses the new one";
}

TEST_F(AssetsInStageTest, ADeletedParentIsToldAndComesBackWithItsChild) {
    engine::SceneObject* cart = window->commands.Create({"EmptyObject", "Wagon", "", {}, nullptr, true});
    engine::SceneObject* load = window->commands.Create({"EmptyObject", "Load", "", {}, cart, true});
    window->session.History().NoteAll();
    ASSERT_EQ(load->Parent(), cart);
    window->host.Select({cart});
    Settle();
    window->commands.DeleteSelected();
    EXPECT_EQ(window->notice->Text(), "Deleted. Wagon carries Load.");
    window->notice->findChild<QToolButton*>("NoticeAction")->click();
    ASSERT_NE(Object("Wagon"), nullptr);
    EXPECT_EQ(Object("Load")->Parent(), Object("Wagon"));
}
