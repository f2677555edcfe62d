#include "framework/Wnd.h"
#include "host/stage/windows/ObjectLook.h"
#include "host/stage/windows/ToolWindows.h"
#include "plugin/contract/ClassIds.h"
#include "tests/whole/StageFixture.h"
#include "timeline/TrackCtrl.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <QTest>

namespace {

/// The first camera of the film "Intro" is visualized with a press on its name in the scenario window.
class CameraInStageTest : public StageTest {
protected:
    void SetUp() override {
        ChooseFilm("Intro");
        QListWidget* list = FilmList();
        ASSERT_NE(list, nullptr);
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {},
                           list->visualItemRect(list->item(1)).center());
        Settle();
        camera = AsCameraTrack(Film("Intro")->FindCamera("Establishing"));
        ASSERT_NE(camera, nullptr);
        PressName();
        eye = Find(ClassName::CameraPosition);
        target = Find(ClassName::CameraTarget);
        ASSERT_NE(eye, nullptr);
        ASSERT_NE(target, nullptr);
    }
    /// Presses the name cell of the camera's row.
    void PressName() {
        CTrackCtrl* row = RowOf(camera);
        ASSERT_NE(row, nullptr);
        row->SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(60, 8));
        Settle();
        row->SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(60, 8));
        Settle();
    }
    CTrackCtrl* RowOf(const CFilmTrack* track) const {
        const QList<stage::ToolWindowDock*> docks = window->toolWindows->Docks();
        return docks.isEmpty() ? nullptr : RowBelow(docks.front()->Window(), track);
    }
    static CTrackCtrl* RowBelow(CWnd* parent, const CFilmTrack* track) {
        constexpr int kRowId = 55;
        for (int i = 0; CWnd* child = parent->GetWindowChild(i); ++i) {
            if (child->GetDlgCtrlID() == kRowId) {
                auto* row = static_cast<CTrackCtrl*>(child);
                if (row->track == track && row->parent == nullptr) {
                    return row;
                }
            }
            if (CTrackCtrl* row = RowBelow(child, track)) {
                return row;
            }
        }
        return nullptr;
    }
    engine::SceneObject* Find(const char* className) const {
        for (const auto& object : window->host.level.Data()->Objects()) {
            if (object->Info().className == className) {
                return object.get();
            }
        }
        return nullptr;
    }
    int Points() const {
        int count = 0;
        for (const auto& object : window->host.level.Data()->Objects()) {
            count += object->transient && !stage::IsListed(*object) ? 1 : 0;
        }
        return count;
    }
    std::size_t Lines() const { return window->host.RenderPlugins(0).size(); }
    CFilmVectorKey& FirstKey(int kind) const {
        IFilmKey* first = nullptr;
        for (IFilmKey* key : camera->keys) {
            first = key->kind == kind && (first == nullptr || key->time < first->time) ? key : first;
        }
        return static_cast<CFilmVectorKey&>(*first);
    }
    std::size_t Keys(int kind) const {
        return static_cast<std::size_t>(
            std::ranges::count_if(camera->keys, [kind](const IFilmKey* key) { return key->kind == kind; }));
    }

    CFilmCameraTrack* camera = nullptr;
    engine::SceneObject* eye = nullptr;
    engine::SceneObject* target = nullptr;
};

} // namespace

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
    EXPECT_NE(RowOf(camera), nullptr);
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
    window->commands.DeleteSelected();
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
    float farthest = 0.0f;
    const Vector3 start = eye->World().Translation();
    InsidePump([&] {
        const Vector3 place = eye->World().Translation();
        farthest = std::abs(place.x - start.x);
        EXPECT_GT(Lines(), 0u);
        PressKey(Qt::Key_Space);
    });
    PlayWithShortcut(100);
    EXPECT_GT(farthest, 0.0f);
}
