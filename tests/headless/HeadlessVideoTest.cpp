#include "host/sound/SoundFile.h"
#include "tests/headless/HeadlessFixture.h"

#include <csignal>

namespace HeadlessExit = headless::HeadlessExit;

namespace {

/// The options of a small video of the sample beside `name`.
std::vector<std::string> VideoArguments(const std::filesystem::path& file, const char* frames) {
    return {"--render", kLevel,  "--film", "Intro",    "--video", file.string(), "--size",
            "16x16",    "--fps", "10",     "--frames", frames,    "--draft"};
}

TEST_F(HeadlessTest, AVideoGetsRawFramesAndTheSound) {
    // Keeps what it was given: its arguments, the frames, and the sound file before it is taken away.
    const FakeProgram ffmpeg(folder, "ffmpeg",
                             "cd " + folder.string() +
                                 "\necho \"$@\" > arguments\ncat > frames\ncp /dev/fd/3 sound.wav\n");
    SampleHost host;
    std::vector<std::string> arguments = {
        "--render", kLevel, "--film",   "Intro", "--video", (folder / "a.mp4").string(), "--size", "64x36",
        "--fps",    "10",   "--frames", "0:4",   "--draft"};
    ASSERT_EQ(Run(arguments, host), HeadlessExit::kDone) << told;
    EXPECT_EQ(Bytes("frames").size(), 5u * 64 * 36 * 4);
    const std::shared_ptr<const sound::SoundData> sound = sound::LoadSound((folder / "sound.wav").string());
    EXPECT_EQ(sound->rate, 48000);
    EXPECT_EQ(sound->channels, 2);
    EXPECT_EQ(sound->samples.size(), 2u * 24000u) << "half a second";
    const std::string command = Bytes("arguments");
    EXPECT_NE(command.find("-s 64x36 -r 10"), std::string::npos) << command;
    EXPECT_NE(command.find("-i /dev/fd/3"), std::string::npos) << command;
    EXPECT_EQ(Names(""), (std::set<std::string>{"a.mp4", "arguments", "bin", "frames", "sound.wav"}));
    EXPECT_EQ(host.begun, 2) << "once for the sound and once for the pictures";
}

TEST_F(HeadlessTest, TheSoundOfTheFilmIsHeard) {
    const FakeProgram ffmpeg(folder, "ffmpeg",
                             "cd " + folder.string() + "\ncat > /dev/null\ncp /dev/fd/3 sound.wav\n");
    SampleHost host;
    ASSERT_EQ(Run(VideoArguments(folder / "a.mp4", "0:19"), host), HeadlessExit::kDone) << told;
    const std::shared_ptr<const sound::SoundData> sound = sound::LoadSound((folder / "sound.wav").string());
    float loudest = 0.0f;
    for (const float sample : sound->samples) {
        loudest = std::max(loudest, std::abs(sample));
    }
    EXPECT_GT(loudest, 0.01f) << "surf and tune";
}

TEST_F(HeadlessTest, AFailingFfmpegIsTold) {
    const FakeProgram ffmpeg(folder, "ffmpeg", "cat > /dev/null\nexit 3\n");
    SampleHost host;
    EXPECT_EQ(Run(VideoArguments(folder / "a.mp4", "0:1"), host), HeadlessExit::kOutput);
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
    const std::string before = SearchPath();
    setenv("PATH", folder.c_str(), 1);
    SampleHost host;
    const int status =
        Run({"--render", kLevel, "--film", "Intro", "--video", (folder / "a.mp4").string()}, host);
    setenv("PATH", before.c_str(), 1);
    EXPECT_EQ(status, HeadlessExit::kOutput);
    EXPECT_NE(told.find("ffmpeg is not installed"), std::string::npos) << told;
    EXPECT_TRUE(host.times.empty());
}

TEST_F(HeadlessTest, AVideoHasItsNameOnlyWhenItIsWhole) {
    const FakeProgram ffmpeg(folder, "ffmpeg",
                             "cat > /dev/null\ncd " + folder.string() +
                                 "\ncp a.mp4 meanwhile\nfor last; do :; done\necho whole > \"$last\"\n");
    std::ofstream(folder / "a.mp4") << "older";
    chmod((folder / "a.mp4").c_str(), 0640);
    SampleHost host;
    ASSERT_EQ(Run(VideoArguments(folder / "a.mp4", "0:1"), host), HeadlessExit::kDone) << told;
    EXPECT_EQ(Bytes("meanwhile"), "older");
    EXPECT_EQ(Bytes("a.mp4"), "whole\n");
    EXPECT_EQ(std::filesystem::status(folder / "a.mp4").permissions(), std::filesystem::perms(0640));
    EXPECT_EQ(Names(""), (std::set<std::string>{"a.mp4", "bin", "meanwhile"}));
}

TEST_F(HeadlessTest, AFailedVideoLeavesTheOlderOneAloneAndNothingBeside) {
    const FakeProgram ffmpeg(folder, "ffmpeg",
                             "for last; do :; done\necho half > \"$last\"\ncat > /dev/null\nexit 3\n");
    std::ofstream(folder / "a.mp4") << "older";
    SampleHost host;
    ASSERT_EQ(Run(VideoArguments(folder / "a.mp4", "0:1"), host), HeadlessExit::kOutput) << told;
    EXPECT_EQ(Bytes("a.mp4"), "older");
    EXPECT_EQ(Names(""), (std::set<std::string>{"a.mp4", "bin"}));
}

TEST_F(HeadlessTest, AVideoInPlaceOfAFolderIsRefused) {
    const FakeProgram ffmpeg(folder, "ffmpeg", "cat > /dev/null\n");
    std::filesystem::create_directories(folder / "a.mp4/inside");
    SampleHost host;
    EXPECT_EQ(Run(VideoArguments(folder / "a.mp4", "0:1"), host), HeadlessExit::kOutput);
    EXPECT_NE(told.find("a.mp4 is not a file"), std::string::npos) << told;
    EXPECT_TRUE(std::filesystem::exists(folder / "a.mp4/inside"));
}

/// A host in which the user presses Ctrl+C at a frame of the pictures.
class ImpatientHost : public SampleHost {
public:
    explicit ImpatientHost(std::size_t pose) : last(pose) {}

    void Pose(IFilm& film, float time, float previous) override {
        SampleHost::Pose(film, time, previous);
        if (times.size() == last) {
            raise(SIGINT);
        }
    }

private:
    std::size_t last;
};

TEST_F(HeadlessTest, CtrlCEndsBetweenTwoFramesWithWholePicturesAndWithoutAVideo) {
    // It would go on for ever, were it not ended.
    const FakeProgram ffmpeg(
        folder, "ffmpeg", "for last; do :; done\necho half > \"$last\"\ncat > /dev/null\nexec sleep 1000\n");
    std::ofstream(folder / "a.mp4") << "older";
    std::vector<std::string> arguments = VideoArguments(folder / "a.mp4", "0:9");
    arguments.insert(arguments.end(), {"--out", (folder / "out").string()});
    ImpatientHost host(10 + 3); // ten frames of sound come first
    EXPECT_EQ(Run(arguments, host), HeadlessExit::kStopped + SIGINT);
    EXPECT_NE(told.find("stopped by Ctrl+C"), std::string::npos) << told;
    EXPECT_EQ(Names("out"), (std::set<std::string>{"frame_0000.png", "frame_0001.png", "frame_0002.png"}));
    EXPECT_EQ(Bytes("a.mp4"), "older");
    EXPECT_EQ(Names(""), (std::set<std::string>{"a.mp4", "bin", "out"}));
    EXPECT_EQ(host.ended, host.begun) << "the level stands as before";
}

TEST_F(HeadlessTest, CtrlCWhileTheSoundIsMixedLeavesNothing) {
    const FakeProgram ffmpeg(folder, "ffmpeg", "cat > /dev/null\n");
    ImpatientHost host(4);
    EXPECT_EQ(Run(VideoArguments(folder / "a.mp4", "0:9"), host), HeadlessExit::kStopped + SIGINT);
    EXPECT_EQ(Names(""), std::set<std::string>{"bin"});
}

TEST_F(HeadlessTest, AfterARunCtrlCIsWhatItWas) {
    const auto handler = [] {
        struct sigaction now = {};
        sigaction(SIGINT, nullptr, &now);
        return now.sa_handler;
    };
    const auto before = handler();
    SampleHost host;
    ASSERT_EQ(Run(Arguments("out", "0:0"), host), HeadlessExit::kDone) << told;
    EXPECT_EQ(handler(), before);
}

} // namespace
