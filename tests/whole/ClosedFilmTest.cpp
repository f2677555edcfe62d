#include "host/engine/LevelFile.h"
#include "tests/support/Answering.h"
#include "tests/whole/CameraStageFixture.h"

#include <QMessageBox>

using ::testing::Contains;
using ::testing::IsEmpty;

/// Views are painted while a camera of "Intro" is on show: the plug-in poses the film at each paint.
class ClosedFilmTest : public CameraInStageTest {
protected:
    /// Names of the objects of the sample's file that stand elsewhere now. The films' lights are not in it.
    static std::vector<std::string> MovedIn(const engine::Level& level, const std::string& sample) {
        engine::Level original;
        engine::LoadLevel(original, sample);
        std::vector<std::string> moved;
        for (const auto& object : original.Data()->Objects()) {
            const engine::SceneObject* present = level.FindObject(object->name);
            if (present == nullptr || !(present->World() == object->World())) {
                moved.push_back(object->name);
            }
        }
        return moved;
    }
    std::vector<std::string> Moved() const { return MovedIn(window->host.level, levelPath); }
    void Paint() { window->host.RenderPlugins(0); }
};

TEST_F(ClosedFilmTest, PaintingACameraOnShowMovesNothingOnceItsFilmIsClosed) {
    EXPECT_THAT(Moved(), Contains("Sailor")) << "the film poses its actors";
    ChooseFilm("<none>");
    EXPECT_GT(Lines(), 0u) << "the camera is still on show";
    Paint();
    EXPECT_THAT(Moved(), IsEmpty());
}

TEST_F(ClosedFilmTest, AFailedSaveWhoseBoxPaintsTheViewsStoresNoFilmPose) {
    Answering(
        [&](QWidget& box) {
            Paint();
            PressButton(box, QMessageBox::Ok);
        },
        [&] { EXPECT_FALSE(window->SaveLevelAs("/nonexistent/harbour.level")); });
    const std::string path = folder.File("harbour/again.level");
    ASSERT_TRUE(window->SaveLevelAs(QString::fromStdString(path)));
    engine::Level saved;
    engine::LoadLevel(saved, path);
    EXPECT_THAT(MovedIn(saved, levelPath), IsEmpty());
}
