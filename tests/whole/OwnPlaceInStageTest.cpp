#include "host/engine/LevelFile.h"
#include "tests/whole/StageFixture.h"

/// Objects that a move in the views makes actors: their own places are where they stood before it.
class OwnPlaceInStageTest : public StageTest {
protected:
    static constexpr unsigned kAnimateObject = 50;

    void SetUp() override {
        cart = Make("Trolley", {100, 500, 0});
        box = Make("Box", {110, 500, 0});
        ASSERT_EQ(window->commands.SetParent({box}, cart), "");
        ASSERT_TRUE(window->SaveLevelAs(QString::fromStdString(levelPath)));
        ChooseFilm("Epilogue");
        for (const auto* entry : window->host.plugins.Entries()) {
            entry->plugin->OnCommand(entry->plugin->GetPluginId().PluginNumber(), kAnimateObject);
        }
    }
    engine::SceneObject* Make(const std::string& name, const Vector3& place) {
        engine::Matrix4 matrix;
        matrix.SetTranslation(place);
        engine::SceneObject* object =
            window->commands.Create({ClassName::Mesh, name, "models/crate.glb", matrix, nullptr, true});
        Settle();
        return object;
    }
    static Vector3 PlaceOf(const engine::SceneObject& object) { return object.World().Translation(); }

    engine::SceneObject* cart = nullptr;
    engine::SceneObject* box = nullptr;
};

TEST_F(OwnPlaceInStageTest, TheyGoBackThereWhenTheFilmCloses) {
    Move(cart, 300, 500, 0);
    ASSERT_NE(Film("Epilogue")->FindObjectTrack(cart), nullptr);
    ASSERT_NE(Film("Epilogue")->FindObjectTrack(box), nullptr) << "it went along";
    EXPECT_EQ(PlaceOf(*cart), (Vector3{300, 500, 0}));
    EXPECT_EQ(PlaceOf(*box), (Vector3{310, 500, 0}));
    ChooseFilm("<none>");
    EXPECT_EQ(PlaceOf(*cart), (Vector3{100, 500, 0}));
    EXPECT_EQ(PlaceOf(*box), (Vector3{110, 500, 0}));
}

TEST_F(OwnPlaceInStageTest, AChildThatWasMovedByItselfToo) {
    Move(box, 110, 900, 0);
    ChooseFilm("Intro");
    EXPECT_EQ(PlaceOf(*box), (Vector3{110, 500, 0}));
    ChooseFilm("Epilogue");
    EXPECT_EQ(PlaceOf(*box), (Vector3{110, 900, 0}));
}

TEST_F(OwnPlaceInStageTest, TheLevelIsSavedWithThem) {
    Move(cart, 300, 500, 0);
    ASSERT_TRUE(window->SaveLevelAs(QString::fromStdString(levelPath)));
    EXPECT_EQ(PlaceOf(*cart), (Vector3{300, 500, 0})) << "the film is open again";
    engine::Level saved;
    engine::LoadLevel(saved, levelPath);
    EXPECT_EQ(PlaceOf(*saved.FindObject("Trolley")), (Vector3{100, 500, 0}));
    EXPECT_EQ(PlaceOf(*saved.FindObject("Box")), (Vector3{110, 500, 0}));
}
