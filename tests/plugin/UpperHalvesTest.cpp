#include "tests/plugin/PluginFixture.h"
#include "tests/processor/UsedUpperHalves.h"

#include "host/engine/LevelFile.h"
#include "tests/support/TempFolder.h"

namespace {

/// The engine is called from between the toolkit's paints, which leave something in the registers.
class EngineUpperHalvesTest : public PluginTest {
protected:
    void SetUp() override {
        if (!processor::UpperHalvesInUse().has_value()) {
            GTEST_SKIP() << "this processor does not tell whether the upper halves are in use";
        }
    }
    template <class Call> static void ExpectCleared(Call call) {
        LeaveUpperHalvesInUse();
        call();
        EXPECT_EQ(processor::UpperHalvesInUse(), false);
        processor::ClearUpperHalves();
    }
};

TEST_F(EngineUpperHalvesTest, AFrameIsPosedWithThemClean) {
    IFilm* film = OpenFilmWith({editor.Create("Crate")});
    ExpectCleared([&] { film->SetTime(1.0f, -1.0f); });
    editor.onBroadcast = [](int, void*) { EXPECT_EQ(processor::UpperHalvesInUse(), false); };
    ExpectCleared([&] { plugin.SetTime(2.0f, false); });
    editor.onBroadcast = nullptr;
}

TEST_F(EngineUpperHalvesTest, APathIsSampledWithThemClean) {
    IFilm* film = OpenNewFilm();
    CFilmCameraTrack* camera = AddCamera(film, "Camera");
    AddKey(camera, KeyKind::CameraPosition, 0);
    TrackRenderData data;
    data.track = camera;
    ExpectCleared([&] { film->SampleCameraPath(&data, 0); });
}

TEST_F(EngineUpperHalvesTest, LevelsAreWrittenAndReadWithThemClean) {
    const TempFolder folder;
    const std::string path = folder.File("a.level");
    ExpectCleared([&] { engine::SaveLevel(editor.level, path); });
    ExpectCleared([&] { engine::ReadLevel(editor.level, path); });
}

} // namespace
