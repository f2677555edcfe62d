#include "host/stage/headless/Headless.h"

#include "host/engine/Film.h"
#include "host/engine/FilmManager.h"
#include "host/engine/Level.h"
#include "host/engine/mesh/GltfMeshLibrary.h"
#include "host/stage/headless/FilmPlayback.h"
#include "host/stage/headless/VideoPipe.h"
#include "plugin/contract/Film.h"
#include "tests/support/Paths.h"
#include "tools/LightChunks.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const std::string kLevel = SampleFolder() + "/harbour.level";

/// The engine's host with the film lights of the level's chunk, and a record of what was asked of it.
class SampleHost : public HeadlessHost {
public:
    SampleHost() { Level().SetChunkClient(&lights); }

    engine::LevelMessages Open(const std::string& path) override {
        engine::LevelMessages messages = HeadlessHost::Open(path);
        lights.PairWithTracks(Level().Data()->Films());
        return messages;
    }
    void Begin(IFilm& film) override {
        ++begun;
        HeadlessHost::Begin(film);
    }
    void Pose(IFilm& film, float time, float previous) override {
        times.push_back(time);
        previousTimes.push_back(previous);
        HeadlessHost::Pose(film, time, previous);
    }
    void End(IFilm& film) override {
        ++ended;
        HeadlessHost::End(film);
    }

    std::vector<float> times;
    std::vector<float> previousTimes;
    int begun = 0;
    int ended = 0;

private:
    LightChunks lights;
};

class HeadlessTest : public testing::Test {
protected:
    HeadlessTest() {
        const auto* info = testing::UnitTest::GetInstance()->current_test_info();
        folder = std::filesystem::temp_directory_path() /
                 (std::string("films-headless-") + info->name() + "-" + std::to_string(getpid()));
        std::filesystem::create_directories(folder);
    }
    ~HeadlessTest() override { std::filesystem::remove_all(folder); }

    /// Runs small drafts of the sample level; what is told goes to `told`.
    int Run(std::vector<std::string> arguments, HeadlessHost& host) {
        std::FILE* stream = std::tmpfile();
        const int status = RunHeadless(arguments, host, stream);
        std::rewind(stream);
        told.clear();
        for (int c = std::fgetc(stream); c != EOF; c = std::fgetc(stream)) {
            told.push_back(static_cast<char>(c));
        }
        std::fclose(stream);
        return status;
    }

    std::vector<std::string> Arguments(const std::string& out, const std::string& frames) const {
        return {"--render", kLevel,   "--film",  "Intro",    "--out", (folder / out).string(),
                "--size",   "128x72", "--draft", "--frames", frames};
    }

    std::string Bytes(const std::string& file) const {
        std::ifstream stream(folder / file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }

    std::filesystem::path folder;
    std::string told;
};

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

/// Puts a program of this name first on the PATH for the life of the scope.
class FakeProgram {
public:
    FakeProgram(const std::filesystem::path& folder, const char* name, const std::string& script)
        : before(std::getenv("PATH")) {
        const std::filesystem::path bin = folder / "bin";
        std::filesystem::create_directories(bin);
        std::ofstream(bin / name) << "#!/bin/sh\n" << script;
        chmod((bin / name).c_str(), 0755);
        setenv("PATH", (bin.string() + ":" + before).c_str(), 1);
    }
    ~FakeProgram() { setenv("PATH", before.c_str(), 1); }

private:
    std::string before;
};

TEST_F(HeadlessTest, AVideoGetsRawFramesAndTheSound) {
    // Keeps what it was given: its arguments, the frames, and the sound file before it is taken away.
    const FakeProgram ffmpeg(folder, "ffmpeg",
                             "cd " + folder.string() +
                                 "\necho \"$@\" > arguments\ncat > frames\ncp *.sound.wav sound.wav\n");
    SampleHost host;
    std::vector<std::string> arguments = {
        "--render", kLevel, "--film",   "Intro", "--video", (folder / "a.mp4").string(), "--size", "64x36",
        "--fps",    "10",   "--frames", "0:4",   "--draft"};
    ASSERT_EQ(Run(arguments, host), HeadlessExit::kDone) << told;
    EXPECT_EQ(Bytes("frames").size(), 5u * 64 * 36 * 4);
    // Half a second of 48,000 stereo frames of 16 bits behind a header of 44 bytes.
    EXPECT_EQ(Bytes("sound.wav").size(), 44u + 24000u * 4u);
    const std::string command = Bytes("arguments");
    EXPECT_NE(command.find("-s 64x36 -r 10"), std::string::npos) << command;
    EXPECT_NE(command.find("a.mp4"), std::string::npos) << command;
    EXPECT_FALSE(std::filesystem::exists(folder / "a.mp4.sound.wav"));
    EXPECT_EQ(host.begun, 2) << "once for the sound and once for the pictures";
}

TEST_F(HeadlessTest, TheSoundOfTheFilmIsHeard) {
    const FakeProgram ffmpeg(folder, "ffmpeg",
                             "cd " + folder.string() + "\ncat > /dev/null\ncp *.sound.wav sound.wav\n");
    SampleHost host;
    ASSERT_EQ(Run({"--render", kLevel, "--film", "Intro", "--video", (folder / "a.mp4").string(), "--size",
                   "16x16", "--fps", "10", "--frames", "0:19", "--draft"},
                  host),
              HeadlessExit::kDone)
        << told;
    const std::string bytes = Bytes("sound.wav");
    ASSERT_GT(bytes.size(), 44u + 4800u);
    long loudest = 0;
    for (std::size_t i = 44; i + 1 < bytes.size(); i += 2) {
        const auto sample = static_cast<std::int16_t>(static_cast<unsigned char>(bytes[i]) |
                                                      static_cast<unsigned char>(bytes[i + 1]) << 8);
        loudest = std::max(loudest, std::labs(sample));
    }
    EXPECT_GT(loudest, 300) << "surf and tune";
}

TEST_F(HeadlessTest, AFailingFfmpegIsTold) {
    const FakeProgram ffmpeg(folder, "ffmpeg", "cat > /dev/null\nexit 3\n");
    SampleHost host;
    EXPECT_EQ(Run({"--render", kLevel, "--film", "Intro", "--video", (folder / "a.mp4").string(), "--size",
                   "16x16", "--frames", "0:1", "--draft"},
                  host),
              HeadlessExit::kOutput);
    EXPECT_NE(told.find("a.mp4: ffmpeg failed with status 3"), std::string::npos) << told;
}

TEST_F(HeadlessTest, AnFfmpegThatDiesEarlyIsToldAndEndsTheRun) {
    const FakeProgram ffmpeg(folder, "ffmpeg", "exit 1\n");
    SampleHost host;
    EXPECT_EQ(Run({"--render", kLevel, "--film", "Intro", "--video", (folder / "a.mp4").string(), "--size",
                   "512x512", "--frames", "0:9", "--draft"},
                  host),
              HeadlessExit::kOutput);
    EXPECT_NE(told.find("a.mp4: ffmpeg"), std::string::npos) << told;
}

TEST_F(HeadlessTest, WithoutFfmpegAVideoIsRefusedAtOnce) {
    const std::string before = std::getenv("PATH");
    setenv("PATH", folder.c_str(), 1);
    SampleHost host;
    const int status =
        Run({"--render", kLevel, "--film", "Intro", "--video", (folder / "a.mp4").string()}, host);
    setenv("PATH", before.c_str(), 1);
    EXPECT_EQ(status, HeadlessExit::kOutput);
    EXPECT_NE(told.find("ffmpeg is not installed"), std::string::npos) << told;
    EXPECT_TRUE(host.times.empty());
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
    RenderImage image;
    image.width = 235;
    image.height = 120;
    image.pixels.assign(235 * 120, 0xffffffffu);
    DrawBlackBars(image);
    // 235 / 2.35 = 100 rows remain, 10 go above and below.
    EXPECT_EQ(image.pixels[9 * 235], 0xff000000u);
    EXPECT_EQ(image.pixels[10 * 235], 0xffffffffu);
    EXPECT_EQ(image.pixels[110 * 235 - 1], 0xffffffffu);
    EXPECT_EQ(image.pixels[110 * 235], 0xff000000u);
}

TEST(BlackBarsTest, WiderPicturesAreLeftAlone) {
    RenderImage image;
    image.width = 400;
    image.height = 100;
    image.pixels.assign(400 * 100, 0xffffffffu);
    DrawBlackBars(image);
    EXPECT_EQ(image.pixels.front(), 0xffffffffu);
    EXPECT_EQ(image.pixels.back(), 0xffffffffu);
}

} // namespace
