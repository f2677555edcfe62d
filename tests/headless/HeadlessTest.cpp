#include "host/engine/Film.h"
#include "host/engine/mesh/GltfMeshLibrary.h"
#include "host/stage/headless/FilmPlayback.h"
#include "plugin/contract/Film.h"
#include "tests/headless/HeadlessFixture.h"

namespace HeadlessExit = headless::HeadlessExit;
using headless::FrameCount;

namespace {

TEST_F(HeadlessTest, ALinkedLevelFindsItsMeshesBesideTheFileItself) {
    const std::string link = (folder / "link.level").string();
    std::filesystem::create_symlink(kLevel, link);
    SampleHost host;
    EXPECT_TRUE(host.Open(link).empty());
    EXPECT_NE(host.Level().FindObject("Crate")->Mesh(), nullptr);
    EXPECT_EQ(host.Level().Folder(), SampleFolder() + "/");
}

TEST_F(HeadlessTest, FramesAreNumberedByTheFilm) {
    SampleHost host;
    ASSERT_EQ(Run(Arguments("out", "30:32"), host), HeadlessExit::kDone) << told;
    EXPECT_TRUE(std::filesystem::exists(folder / "out/frame_0030.png"));
    EXPECT_TRUE(std::filesystem::exists(folder / "out/frame_0032.png"));
    EXPECT_FALSE(std::filesystem::exists(folder / "out/frame_0029.png"));
    EXPECT_FALSE(std::filesystem::exists(folder / "out/frame_0033.png"));
    EXPECT_EQ(Bytes("out/frame_0030.png").substr(0, 8), "\x89PNG\r\n\x1a\n");
    EXPECT_NE(told.find("3/3 frames"), std::string::npos) << told;
}

TEST_F(HeadlessTest, TheFilmIsPosedThroughTheHost) {
    SampleHost host;
    ASSERT_EQ(Run(Arguments("out", "30:32"), host), HeadlessExit::kDone) << told;
    ASSERT_EQ(host.times.size(), 3u);
    EXPECT_FLOAT_EQ(host.times[0], 1.0f);
    EXPECT_FLOAT_EQ(host.times[2], 32.0f / 30.0f);
    EXPECT_EQ(host.previousTimes[0], -1.0f) << "the first pose fires no keys";
    EXPECT_EQ(host.previousTimes[1], host.times[0]);
    EXPECT_EQ(host.begun, 1);
    EXPECT_EQ(host.ended, 1);
}

TEST_F(HeadlessTest, TheSameInputGivesTheSameBytesAndTimeChangesThem) {
    SampleHost first;
    SampleHost second;
    ASSERT_EQ(Run(Arguments("one", "0:60"), first), HeadlessExit::kDone) << told;
    ASSERT_EQ(Run(Arguments("two", "60:60"), second), HeadlessExit::kDone) << told;
    EXPECT_EQ(Bytes("one/frame_0060.png"), Bytes("two/frame_0060.png"));
    EXPECT_NE(Bytes("one/frame_0000.png"), Bytes("one/frame_0060.png"));
}

TEST_F(HeadlessTest, ALastFrameBeyondTheEndIsTheEnd) {
    SampleHost host;
    ASSERT_EQ(Run(Arguments("out", "719:5000"), host), HeadlessExit::kDone) << told;
    EXPECT_TRUE(std::filesystem::exists(folder / "out/frame_0719.png"));
    EXPECT_EQ(host.times.size(), 1u);
}

TEST_F(HeadlessTest, AFirstFrameBeyondTheEndIsAnError) {
    SampleHost host;
    EXPECT_EQ(Run(Arguments("out", "720:"), host), HeadlessExit::kUsage);
    EXPECT_NE(told.find("the film's frames are 0 to 719"), std::string::npos) << told;
}

TEST_F(HeadlessTest, WrongArgumentsAreToldInOneLine) {
    SampleHost host;
    EXPECT_EQ(Run({"--render"}, host), HeadlessExit::kUsage);
    EXPECT_EQ(told, "stage: --render needs a level file (--help tells more)\n");
}

TEST_F(HeadlessTest, ALevelThatIsNotThereIsNamed) {
    SampleHost host;
    EXPECT_EQ(Run({"--render", "/nowhere/x.level", "--film", "a", "--out", "o"}, host), HeadlessExit::kLevel);
    EXPECT_NE(told.find("/nowhere/x.level"), std::string::npos) << told;
}

TEST_F(HeadlessTest, ALevelThatIsBrokenIsToldWithItsPlace) {
    std::ofstream(folder / "broken.level", std::ios::binary) << std::string(40, 'x');
    SampleHost host;
    EXPECT_EQ(Run({"--render", (folder / "broken.level").string(), "--film", "a", "--out", "o"}, host),
              HeadlessExit::kLevel);
    EXPECT_NE(told.find("broken.level"), std::string::npos) << told;
    EXPECT_NE(told.find("byte"), std::string::npos) << told;
}

TEST_F(HeadlessTest, AnUnknownFilmIsToldWithThoseThatExist) {
    SampleHost host;
    EXPECT_EQ(Run({"--render", kLevel, "--film", "Outro", "--out", "o"}, host), HeadlessExit::kFilm);
    EXPECT_NE(told.find("there is no film \"Outro\"; the level has \"Intro\", \"Epilogue\""),
              std::string::npos)
        << told;
}

TEST_F(HeadlessTest, AFolderThatCanNotBeMadeIsNamed) {
    std::ofstream(folder / "file") << "in the way";
    SampleHost host;
    EXPECT_EQ(Run(Arguments("file", "0:0"), host), HeadlessExit::kOutput);
    EXPECT_NE(told.find((folder / "file").string()), std::string::npos) << told;
}

TEST_F(HeadlessTest, WithoutACameraTheLevelsViewIsShown) {
    class Bare : public SampleHost {
    public:
        engine::LevelMessages Open(const std::string& path) override {
            engine::LevelMessages messages = SampleHost::Open(path);
            Level().Data()->Films().FindFilm("Intro")->mainTrack->ClearKind(KeyKind::Camera);
            return messages;
        }
    } host;
    SampleHost whole;
    ASSERT_EQ(Run(Arguments("bare", "0:0"), host), HeadlessExit::kDone) << told;
    ASSERT_EQ(Run(Arguments("whole", "0:0"), whole), HeadlessExit::kDone) << told;
    EXPECT_NE(Bytes("bare/frame_0000.png"), Bytes("whole/frame_0000.png"));
}

TEST(FrameCountTest, OneFrameAtEachWholeStepBeforeTheEnd) {
    EXPECT_EQ(FrameCount(24.0f, 30), 720);
    EXPECT_EQ(FrameCount(24.01f, 30), 721);
    EXPECT_EQ(FrameCount(0.1f, 30), 3) << "0.1 as a float is a hair more than a tenth";
    EXPECT_EQ(FrameCount(0.0f, 30), 1);
    EXPECT_EQ(FrameCount(-5.0f, 30), 1);
    EXPECT_EQ(FrameCount(std::numeric_limits<float>::quiet_NaN(), 30), 1);
}

TEST(BlackBarsTest, AWidePictureRemains) {
    render::RenderImage image;
    image.width = 235;
    image.height = 120;
    image.pixels.assign(235 * 120, 0xffffffffu);
    headless::DrawBlackBars(image);
    // 235 / 2.35 = 100 rows remain, 10 go above and below.
    EXPECT_EQ(image.pixels[9 * 235], 0xff000000u);
    EXPECT_EQ(image.pixels[10 * 235], 0xffffffffu);
    EXPECT_EQ(image.pixels[110 * 235 - 1], 0xffffffffu);
    EXPECT_EQ(image.pixels[110 * 235], 0xff000000u);
}

TEST(BlackBarsTest, WiderPicturesAreLeftAlone) {
    render::RenderImage image;
    image.width = 400;
    image.height = 100;
    image.pixels.assign(400 * 100, 0xffffffffu);
    headless::DrawBlackBars(image);
    EXPECT_EQ(image.pixels.front(), 0xffffffffu);
    EXPECT_EQ(image.pixels.back(), 0xffffffffu);
}

} // namespace
