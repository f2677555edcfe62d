#include "tests/helpers/FakeCamera.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

constexpr std::array<float, 4> kWhite{1, 1, 1, 1};
constexpr std::array<float, 4> kMagenta{1, 0, 1, 1};

/// A visualized camera whose eye path has the points a, b, c and whose target path p, q.
class TrackVisualizatorTest : public PluginTest {
protected:
    TrackVisualizatorTest() : film(calls) {
        camera.film = &film;
        film.points[0] = {a, b, c};
        film.points[1] = {p, q};
    }
    ~TrackVisualizatorTest() override { visualizer.Reset(); }

    const Vector3 a{0, 0, 0};
    const Vector3 b{1, 0, 0};
    const Vector3 c{1, 2, 0};
    const Vector3 p{0, 0, 5};
    const Vector3 q{3, 0, 5};
    std::vector<std::string> calls;
    PathFilm film;
    FakeCamera camera;
    CTrackVisualizator& visualizer = plugin.trackVisualizer;
};

} // namespace

TEST_F(TrackVisualizatorTest, StartsWithItsFixedValues) {
    EXPECT_EQ(visualizer.detail, 40);
    EXPECT_EQ(visualizer.colors[0], kWhite);
    EXPECT_EQ(visualizer.colors[1], kMagenta);
    EXPECT_EQ(visualizer.renderTrack, nullptr);
    EXPECT_EQ(visualizer.renderTrackData, nullptr);
    EXPECT_THAT(visualizer.renderData, IsEmpty());
}

TEST_F(TrackVisualizatorTest, DrawsTheEyesPathThenTheTargets) {
    visualizer.SetRenderTrack(&camera);
    visualizer.Draw();
    EXPECT_THAT(editor.lines,
                ElementsAre(DrawnLine{a, b, kWhite}, DrawnLine{b, c, kWhite}, DrawnLine{p, q, kMagenta}));
}

TEST_F(TrackVisualizatorTest, SamplingGoesFirstAndTheFilmIsPutBackWithoutFiringKeys) {
    plugin.currentTime = 2.5f;
    visualizer.detail = 7;
    visualizer.SetRenderTrack(&camera);
    visualizer.detail = 9; // copied to the record at each draw
    visualizer.Draw();
    EXPECT_THAT(calls, ElementsAre("SampleCameraPath 1", "SetTime"));
    EXPECT_THAT(film.times, ElementsAre(2.5f));
    EXPECT_THAT(film.previousTimes, ElementsAre(-1.0f));
    EXPECT_EQ(film.sampled, visualizer.renderTrackData);
    EXPECT_EQ(film.sampledDetail, 9);
}

TEST_F(TrackVisualizatorTest, NothingIsSampledWithoutATrack) {
    visualizer.Draw();
    visualizer.SetRenderTrack(&camera);
    visualizer.SetRenderTrack(nullptr);
    visualizer.Draw();
    EXPECT_THAT(calls, IsEmpty());
    EXPECT_THAT(editor.lines, IsEmpty());
    EXPECT_EQ(visualizer.renderTrackData, nullptr);
    EXPECT_THAT(visualizer.renderData, SizeIs(1)) << "the record is kept for the next time";
}

TEST_F(TrackVisualizatorTest, NoPointsOrOneDrawNoLine) {
    film.points[0].clear();
    film.points[1] = {p};
    visualizer.SetRenderTrack(&camera);
    visualizer.Draw();
    visualizer.Draw();
    EXPECT_THAT(editor.lines, IsEmpty());
    EXPECT_EQ(visualizer.renderTrackData->strips[0].count, 0) << "drawing makes no point";
    EXPECT_EQ(visualizer.renderTrackData->strips[1].count, 1);
}

TEST_F(TrackVisualizatorTest, LoopOfTheEyeClosesItsPathBehindIt) {
    film.points[1].clear();
    visualizer.SetRenderTrack(&camera);
    for (const int mode : {LoopMode::Loop, LoopMode::SmoothLoop}) {
        camera.loopMode[0] = mode;
        editor.lines.clear();
        visualizer.Draw();
        EXPECT_THAT(editor.lines,
                    ElementsAre(DrawnLine{a, b, kWhite}, DrawnLine{b, c, kWhite}, DrawnLine{a, c, kWhite}));
    }
}

TEST_F(TrackVisualizatorTest, LoopOfTheTargetClosesTheEyesPathAndNotItsOwn) {
    camera.loopMode[1] = LoopMode::Loop;
    visualizer.SetRenderTrack(&camera);
    visualizer.Draw();
    EXPECT_THAT(editor.lines, ElementsAre(DrawnLine{a, b, kWhite}, DrawnLine{b, c, kWhite},
                                          DrawnLine{a, c, kWhite}, DrawnLine{p, q, kMagenta}));
}

TEST_F(TrackVisualizatorTest, PingPongAndLoopsOfOtherSubTracksCloseNothing) {
    camera.loopMode[0] = camera.loopMode[1] = LoopMode::PingPong;
    camera.loopMode[2] = camera.loopMode[3] = LoopMode::Loop;
    visualizer.SetRenderTrack(&camera);
    visualizer.Draw();
    EXPECT_THAT(editor.lines, SizeIs(3));
}

TEST_F(TrackVisualizatorTest, ClosedPathOfOnePointIsALineToItself) {
    camera.loopMode[0] = LoopMode::Loop;
    film.points[0] = {b};
    film.points[1].clear();
    visualizer.SetRenderTrack(&camera);
    visualizer.Draw();
    EXPECT_THAT(editor.lines, ElementsAre(DrawnLine{b, b, kWhite}));
}

TEST_F(TrackVisualizatorTest, ClosedPathWithoutPointsIsNoLine) {
    camera.loopMode[0] = LoopMode::Loop;
    film.points[0].clear();
    film.points[1].clear();
    visualizer.SetRenderTrack(&camera);
    visualizer.Draw();
    EXPECT_THAT(editor.lines, IsEmpty());
}

TEST_F(TrackVisualizatorTest, PathRunsThroughManyBlocks) {
    film.points[0].clear();
    for (int i = 0; i < 250; ++i) {
        film.points[0].push_back({static_cast<float>(i), 0, 0});
    }
    film.points[1].clear();
    visualizer.SetRenderTrack(&camera);
    visualizer.Draw();
    ASSERT_THAT(editor.lines, SizeIs(249));
    for (int i = 0; i < 249; ++i) {
        const auto x = static_cast<float>(i);
        EXPECT_EQ(editor.lines[static_cast<std::size_t>(i)], (DrawnLine{{x, 0, 0}, {x + 1, 0, 0}, kWhite}));
    }
}

TEST_F(TrackVisualizatorTest, PointsOfALongerSamplingThatTheEngineLeavesAreDrawnToo) {
    visualizer.SetRenderTrack(&camera);
    visualizer.Draw();
    film.points[0] = {c, b}; // the strip's count stays 3
    film.points[1].clear();
    editor.lines.clear();
    visualizer.Draw();
    EXPECT_THAT(editor.lines,
                ElementsAre(DrawnLine{c, b, kWhite}, DrawnLine{b, c, kWhite}, DrawnLine{p, q, kMagenta}));
}

TEST_F(TrackVisualizatorTest, OneTrackHasOneRecord) {
    FakeCamera other;
    visualizer.SetRenderTrack(&camera);
    const TrackRenderData* record = visualizer.renderTrackData;
    EXPECT_EQ(record->track, &camera);
    EXPECT_EQ(record->detail, 40);
    visualizer.SetRenderTrack(&camera);
    EXPECT_THAT(visualizer.renderData, SizeIs(1));
    visualizer.SetRenderTrack(&other);
    EXPECT_THAT(visualizer.renderData, SizeIs(2));
    visualizer.SetRenderTrack(&camera);
    EXPECT_EQ(visualizer.renderTrackData, record);
    EXPECT_THAT(visualizer.renderData, SizeIs(2));
}

TEST_F(TrackVisualizatorTest, RemovedTrackIsDrawnNoMore) {
    visualizer.SetRenderTrack(&camera);
    visualizer.RemoveTrack(&camera);
    EXPECT_EQ(visualizer.renderTrack, nullptr);
    EXPECT_EQ(visualizer.renderTrackData, nullptr);
    EXPECT_THAT(visualizer.renderData, IsEmpty());
    visualizer.Draw();
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(TrackVisualizatorTest, RemovingAnotherTrackLeavesTheDrawingAlone) {
    FakeCamera other;
    visualizer.SetRenderTrack(&other);
    visualizer.SetRenderTrack(&camera);
    visualizer.RemoveTrack(&other);
    visualizer.RemoveTrack(nullptr);
    EXPECT_EQ(visualizer.renderTrack, &camera);
    EXPECT_THAT(visualizer.renderData, SizeIs(1));
    visualizer.Draw();
    EXPECT_THAT(editor.lines, SizeIs(3));
}

TEST_F(TrackVisualizatorTest, FilmThatGoesTakesAllItsCameras) {
    FakeCamera second;
    FakeCamera stranger;
    film.tracks = {&camera, &second};
    visualizer.SetRenderTrack(&second);
    visualizer.SetRenderTrack(&stranger);
    visualizer.SetRenderTrack(&camera);
    visualizer.RemoveCameraTracksOf(nullptr);
    EXPECT_THAT(visualizer.renderData, SizeIs(3));
    visualizer.RemoveCameraTracksOf(&film);
    EXPECT_EQ(visualizer.renderTrack, nullptr);
    ASSERT_THAT(visualizer.renderData, SizeIs(1));
    EXPECT_EQ(visualizer.renderData.front()->track, &stranger);
    film.tracks.clear();
}

TEST_F(TrackVisualizatorTest, ResetDropsRecordsAndSetsTheFixedValues) {
    visualizer.SetRenderTrack(&camera);
    visualizer.detail = 3;
    visualizer.colors[1] = kWhite;
    visualizer.Reset();
    EXPECT_EQ(visualizer.detail, 40);
    EXPECT_EQ(visualizer.colors[1], kMagenta);
    EXPECT_EQ(visualizer.renderTrack, nullptr);
    EXPECT_EQ(visualizer.renderTrackData, nullptr);
    EXPECT_THAT(visualizer.renderData, IsEmpty());
}

TEST_F(TrackVisualizatorTest, NothingIsDrawnWithoutTheHost) {
    visualizer.SetRenderTrack(&camera);
    plugin.OnEvent(EventCode::HostGoesAway, nullptr);
    visualizer.Draw();
    EXPECT_THAT(editor.lines, IsEmpty());
    plugin.Initialize(&editor, kPluginNumber, &editor);
}

TEST_F(TrackVisualizatorTest, PointStripGrowsByAskingAndKeepsItsPoints) {
    PointStrip strip;
    EXPECT_EQ(strip.count, 0);
    Vector3* first = strip.At(0);
    *first = a;
    *strip.At(199) = b;
    EXPECT_EQ(strip.count, 200);
    *strip.At(201) = c;
    EXPECT_EQ(strip.currentBase, 200);
    EXPECT_EQ(strip.currentOffset, 1);
    EXPECT_EQ(*strip.At(199), b);
    EXPECT_EQ(strip.At(0), first);
    EXPECT_EQ(*strip.At(201), c);
    EXPECT_EQ(strip.At(-1), first);
    EXPECT_EQ(strip.count, 202);
}
