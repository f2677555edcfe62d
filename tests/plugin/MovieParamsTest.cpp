#include "plugin/parts/MovieParams.h"

#include "tests/plugin/PartFixture.h"

using ::testing::SizeIs;

namespace {

class MovieParamsTest : public PartTest {
protected:
    static CPluginFilmsParams StoreOf(const char* filmName, const char* objectName) {
        CPluginFilmsParams store;
        store.Set(filmName, nullptr, 0, CPluginFilmsParams::kFilter, objectName);
        return store;
    }
};

TEST_F(MovieParamsTest, ACamerasStoreEntersOnceAndEmptyOnesAlways) {
    AddCameraParams(session, StoreOf("One", "Main"));
    AddCameraParams(session, StoreOf("One", "Main"));
    EXPECT_THAT(session.cameraParams, SizeIs(1));
    AddCameraParams(session, StoreOf("Two", "Main"));
    AddCameraParams(session, CPluginFilmsParams());
    AddCameraParams(session, CPluginFilmsParams());
    EXPECT_THAT(session.cameraParams, SizeIs(4));
}

TEST_F(MovieParamsTest, OfAFilmThatGoesNothingIsRemembered) {
    session.levelParams = StoreOf("Logging", "Level");
    session.levelParams.Set("Other", nullptr, 0, CPluginFilmsParams::kFilter, "Level");
    AddCameraParams(session, StoreOf("Logging", "Main"));
    DeleteMovieParams(session, &film);
    ASSERT_THAT(session.levelParams.records, SizeIs(1));
    EXPECT_EQ(session.levelParams.records.front().filmName, "Other");
    ASSERT_THAT(session.cameraParams, SizeIs(1));
    EXPECT_THAT(session.cameraParams.front().records, SizeIs(0));
}

TEST_F(MovieParamsTest, WithoutAFilmEverythingStays) {
    session.levelParams = StoreOf("Logging", "Level");
    DeleteMovieParams(session, nullptr);
    EXPECT_THAT(session.levelParams.records, SizeIs(1));
}

} // namespace
