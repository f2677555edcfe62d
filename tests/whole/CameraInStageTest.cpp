#include "host/stage/windows/ObjectLook.h"
#include "plugin/contract/ClassIds.h"
#include "tests/support/Answering.h"
#include "tests/whole/CameraStageFixture.h"

#include <cmath>
#include <fstream>
#include <functional>
#include <QMessageBox>
#include <QTest>

TEST_F(CameraInStageTest, PressOnItsNameShowsItsPathAndPointsAndAnotherHidesThem) {
    EXPECT_EQ(Points(), 6);
    EXPECT_EQ(Lines(), 80u) << "40 segments between two keys, for eye and target";
    EXPECT_TRUE(eye->IsShown());
    EXPECT_EQ(eye->World().Translation(), FirstKey(KeyKind::CameraPosition).value);
    PressName();
    EXPECT_EQ(Lines(), 0u);
    EXPECT_FALSE(eye->IsShown());
    EXPECT_EQ(Points(), 6);
}

TEST_F(CameraInStageTest, DraggedEyeMovesItsKeyAndThePath) {
    Move(eye, 1, 2, 3);
    EXPECT_EQ(FirstKey(KeyKind::CameraPosition).value, (Vector3{1, 2, 3}));
    EXPECT_EQ(window->host.RenderPlugins(0).front().from[1], 2.0f);
    EXPECT_EQ(window->host.level.selection, ObjectList{eye}) << "it can be dragged on";
}

TEST_F(CameraInStageTest, DraggedPointsMakeKeysWhereNoneStood) {
    FirstKey(KeyKind::CameraPosition).SetTime(0.5f);
    FirstKey(KeyKind::CameraTarget).SetTime(0.5f);
    const std::size_t eyes = Keys(KeyKind::CameraPosition);
    Move(eye, 1, 2, 3);
    Move(eye, 2, 2, 3);
    Move(target, 4, 5, 6);
    EXPECT_EQ(Keys(KeyKind::CameraPosition), eyes + 1);
    EXPECT_EQ(FirstKey(KeyKind::CameraPosition).time, 0.0f);
    EXPECT_EQ(FirstKey(KeyKind::CameraPosition).value, (Vector3{2, 2, 3}));
    EXPECT_EQ(FirstKey(KeyKind::CameraTarget).value, (Vector3{4, 5, 6}));
    EXPECT_EQ(Lines(), 160u);
}

TEST_F(CameraInStageTest, HandlesOfAUserKeyCanBeDraggedEvenStraightAbove) {
    CFilmVectorKey& key = FirstKey(KeyKind::CameraPosition);
    key.SetOutMethod(BezierMethod::User);
    const float above[] = {key.value.x, key.value.y + 4, key.value.z};
    key.SetOutHandle(above);
    PressName();
    PressName();
    engine::SceneObject* handle = Object("PosOutControlPoint");
    ASSERT_NE(handle, nullptr);
    EXPECT_TRUE(handle->IsShown());
    EXPECT_FALSE(Object("PosInControlPoint")->IsShown());
    EXPECT_TRUE(engine::IsFinite(handle->World()));
    Move(handle, 5, 6, 7);
    EXPECT_EQ(key.outHandle, (Vector3{5, 6, 7}));
    EXPECT_EQ(Lines(), 81u);
}

TEST_F(CameraInStageTest, PointsStayOutOfTheLevelFile) {
    ASSERT_TRUE(window->session.Save(levelPath));
    std::ifstream file(levelPath, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(file)), {});
    EXPECT_EQ(bytes.find("CameraPositionEditorObject"), std::string::npos);
    EXPECT_EQ(bytes.find("ControlPoint"), std::string::npos);
    EXPECT_EQ(Lines(), 80u) << "the camera stays on show";
    Move(eye, 1, 2, 3);
    EXPECT_EQ(FirstKey(KeyKind::CameraPosition).value, (Vector3{1, 2, 3}));
}

TEST_F(CameraInStageTest, PointsCantBeDeletedDuplicatedOrAnimated) {
    window->host.Select({eye, target});
    Answering([](QWidget& box) { PressButton(box, QMessageBox::Ok); },
              [this] { window->commands.DeleteSelected(); });
    window->commands.Duplicate();
    EXPECT_EQ(Points(), 6);
    const std::size_t tracks = Film("Intro")->tracks.size();
    window->host.RunCommand(PluginCommandId::FromPluginNumber(window->host.plugins.Entries().front()->number)
                                .WithLocal(50)); // "Animate object"
    Move(eye, 1, 2, 3);
    EXPECT_EQ(Film("Intro")->tracks.size(), tracks);
}

TEST_F(CameraInStageTest, AnotherLevelTakesTheCameraAway) {
    ASSERT_TRUE(window->OpenLevel(QString::fromStdString(levelPath)));
    Settle();
    EXPECT_EQ(Points(), 0);
    EXPECT_EQ(Lines(), 0u);
    window->session.New();
    EXPECT_EQ(Lines(), 0u);
}

TEST_F(CameraInStageTest, PointsFollowThePlayingFilm) {
    constexpr int kMostLooks = 50;
    float farthest = 0.0f;
    int looks = 0;
    const Vector3 start = eye->World().Translation();
    const std::function<void()> look = [&] {
        const Vector3 place = eye->World().Translation();
        farthest = std::abs(place.x - start.x);
        EXPECT_GT(Lines(), 0u);
        if (farthest == 0.0f && ++looks < kMostLooks) {
            InsidePump(look); // the clock has been read, and no frame posed yet
        } else {
            PressKey(Qt::Key_Space);
        }
    };
    InsidePump(look);
    PlayWithShortcut(100);
    EXPECT_GT(farthest, 0.0f);
}
