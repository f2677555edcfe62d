// Motion that goes from level to level in files, by the menus of films.so in Stage.
#include "framework/FileDialog.h"
#include "framework/Menu.h"
#include "framework/QtBridge.h"
#include "framework/Wnd.h"
#include "host/stage/windows/ToolWindows.h"
#include "tests/support/Answering.h"
#include "tests/whole/StageFixture.h"

#include <filesystem>
#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

constexpr UINT kExport = 36871;
constexpr UINT kImport = 36872;

/// A film of its own with one actor, which has position and rotation keys. File dialogs change the working
/// directory; it is put back.
class TrackFilesInStageTest : public StageTest {
protected:
    TrackFilesInStageTest() : before(std::filesystem::current_path()) {}
    ~TrackFilesInStageTest() override { std::filesystem::current_path(before); }

    void MakeFilm(const char* actor) {
        for (QPushButton* button : window->findChildren<QPushButton*>()) {
            if (button->text() == "Add") {
                button->click();
            }
        }
        film = Films().currentFilm;
        ASSERT_NE(film, nullptr);
        track = AsObjectTrack(film->CreateObjectTrack());
        ASSERT_NE(Object(actor), nullptr);
        track->SetActor(Object(actor), /*isVirtual*/ false);
        film->AddTrack(track);
    }
    CFilmVectorKey& Put(int kind, float time, const Vector3& value, int method) {
        auto* key = static_cast<CFilmVectorKey*>(Films().keyFactory->CreateKey(kind));
        key->SetTime(time);
        key->SetValue(value.Data());
        key->SetInHandle(Vector3{value.x + 1.0f, value.y, value.z}.Data());
        key->SetOutHandle(Vector3{value.x, value.y + 2.0f, value.z}.Data());
        key->SetInMethod(method);
        key->SetOutMethod(method);
        EXPECT_TRUE(track->AddKey(key));
        return *key;
    }
    void PutMotion() {
        Put(KeyKind::Position, 0.0f, {1.0f, 2.0f, 3.0f}, BezierMethod::Smooth);
        Put(KeyKind::Position, 2.0f, {5.0f, 0.0f, -3.0f}, BezierMethod::User);
        Put(KeyKind::Position, 5.0f, {0.5f, 8.0f, 3.0f}, BezierMethod::Slowdown);
        Put(KeyKind::Rotation, 1.0f, {0.0f, 45.0f, 0.0f}, BezierMethod::Linear);
        Put(KeyKind::Rotation, 4.0f, {10.0f, 270.0f, -5.0f}, BezierMethod::User);
    }
    /// Shows the film with the actor's rows unfolded, which stand last: those of the two kinds.
    void Show() {
        const std::string name = film->name;
        ChooseFilm("<none>");
        OpenScenario(name);
        window->resize(1200, 1000);
        window->resizeDocks({window->toolWindows->Docks().front()}, {500}, Qt::Vertical);
        Settle();
        CWnd* root = ScenarioRows().back();
        rootPlace = ScenarioRows().size() - 1;
        ASSERT_TRUE(QTest::qWaitFor([root] { return root->GetWindowChild(0) != nullptr; }));
        QTest::mouseClick(NativeWidget(*root->GetWindowChild(0)), Qt::LeftButton);
        Settle();
        ASSERT_EQ(ScenarioRows().size(), rootPlace + 3);
    }
    /// Right-clicks a row and chooses a command of its menu, and then a file.
    void Choose(CWnd& row, UINT command, const std::string& file) {
        bool offered = false;
        Hooks().popupMenu = [&](const CMenu& menu, CPoint) {
            for (UINT i = 0; i < menu.GetMenuItemCount(); ++i) {
                offered = offered || menu.GetMenuItemID(static_cast<int>(i)) == command;
            }
            return offered ? command : 0;
        };
        Hooks().fileDialog = [&](CFileDialog& dialog) {
            EXPECT_EQ(dialog.IsOpenDialog() != FALSE, command == kImport);
            dialog.SetPathName(file);
            return IDOK;
        };
        QTest::mouseClick(NativeWidget(row), Qt::RightButton, {}, {60, 8});
        Settle();
        Hooks().popupMenu = nullptr;
        Hooks().fileDialog = nullptr;
        EXPECT_TRUE(offered);
    }
    CWnd& PositionRow() { return *ScenarioRows()[ScenarioRows().size() - 2]; }
    CWnd& RotationRow() { return *ScenarioRows().back(); }
    std::vector<float> Motion() const {
        std::vector<float> places;
        for (int i = 0; i <= 60; ++i) {
            const float time = static_cast<float>(i) * 0.1f;
            for (const Vector3& vector : {track->GetPositionAt(time), track->GetRotationAt(time)}) {
                places.insert(places.end(), {vector.x, vector.y, vector.z});
            }
        }
        return places;
    }
    void OpenLevel(const std::string& path) {
        ASSERT_TRUE(window->OpenLevel(QString::fromStdString(path)));
        Settle();
        ShowPanel();
    }

    IFilm* film = nullptr;
    CFilmObjectTrack* track = nullptr;
    std::size_t rootPlace = 0; ///< of the actor's row among those that show

private:
    std::filesystem::path before;
};

} // namespace

TEST_F(TrackFilesInStageTest, MotionGoesToAnotherActorOfAnotherLevelAndIsSavedThere) {
    const std::string walk = folder.File("walk.track");
    const std::string turn = folder.File("turn.track");
    const std::string otherLevel = folder.File("other/harbour.level");
    std::filesystem::copy(folder.File("harbour"), folder.File("other"),
                          std::filesystem::copy_options::recursive);
    MakeFilm("Fishing boat");
    PutMotion();
    const std::vector<float> motion = Motion();
    Show();
    Choose(PositionRow(), kExport, walk);
    Choose(RotationRow(), kExport, turn);
    EXPECT_EQ(std::filesystem::file_size(walk), 4u + 4u + 4u + 3u * 43u);
    EXPECT_EQ(std::filesystem::file_size(turn), 4u + 4u + 4u + 2u * 43u);
    ASSERT_TRUE(window->SaveLevelAs(QString::fromStdString(levelPath)));

    OpenLevel(otherLevel);
    const std::string actor = FirstActor(Film("Intro"))->name;
    MakeFilm(actor.c_str());
    Put(KeyKind::Position, 9.0f, {}, BezierMethod::Linear);
    Put(KeyKind::Rotation, 9.0f, {}, BezierMethod::Linear);
    const std::string name = film->name;
    Show();
    Choose(PositionRow(), kImport, walk);
    Choose(RotationRow(), kImport, turn);
    EXPECT_EQ(track->keys.size(), 5u);
    EXPECT_EQ(Motion(), motion);
    EXPECT_THAT(boxes, IsEmpty());
    ASSERT_TRUE(window->SaveLevelAs(QString::fromStdString(otherLevel)));

    OpenLevel(otherLevel);
    track = AsObjectTrack(Film(name)->FindObjectTrack(Object(actor)));
    ASSERT_NE(track, nullptr);
    EXPECT_EQ(track->keys.size(), 5u);
    EXPECT_EQ(Motion(), motion);
}

TEST_F(TrackFilesInStageTest, DamagedFileIsToldAndTheFilmGoesOnWithoutTheKeys) {
    const std::string walk = folder.File("walk.track");
    MakeFilm("Fishing boat");
    PutMotion();
    Show();
    Choose(PositionRow(), kExport, walk);
    std::filesystem::resize_file(walk, std::filesystem::file_size(walk) - 1);
    QString told;
    Answering(
        [&told](QWidget& box) {
            told = qobject_cast<QMessageBox*>(&box)->text();
            PressButton(box, QMessageBox::Ok);
        },
        [&] {
            Choose(PositionRow(), kImport, walk);
            EXPECT_TRUE(QTest::qWaitFor([&told] { return !told.isEmpty(); }));
        });
    EXPECT_EQ(told.toStdString(), "The command has failed.\nError reading file");
    EXPECT_EQ(track->keys.size(), 2u); // the rotations
    EXPECT_EQ(track->GetPositionAt(2.0f), (Vector3{0.0f, 0.0f, 0.0f}));
    PlayWithShortcut(100);
    ASSERT_TRUE(window->SaveLevelAs(QString::fromStdString(levelPath)));
    const std::string name = film->name;
    OpenLevel(levelPath);
    EXPECT_EQ(Film(name)->FindObjectTrack(Object("Fishing boat"))->keys.size(), 2u);
}

TEST_F(TrackFilesInStageTest, FileOfTheOtherKindIsRefused) {
    const std::string walk = folder.File("walk.track");
    MakeFilm("Fishing boat");
    PutMotion();
    Show();
    const std::vector<float> motion = Motion();
    Choose(PositionRow(), kExport, walk);
    Choose(RotationRow(), kImport, walk);
    EXPECT_THAT(boxes, ElementsAre("Track class doesn't match file"));
    EXPECT_EQ(Motion(), motion);
}
