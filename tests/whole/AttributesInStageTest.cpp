// The key attributes window as films.so shows it in Stage.
#include "framework/Constants.h"
#include "framework/ListBox.h"
#include "framework/Menu.h"
#include "framework/QtBridge.h"
#include "host/stage/windows/ToolWindows.h"
#include "tests/support/Answering.h"
#include "tests/whole/StageFixture.h"

#include <filesystem>
#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QWheelEvent>
#include <QWindow>

using ::testing::Contains;

namespace {

constexpr int kListId = 1745;
constexpr int kButtonId = 2;
constexpr int kNameWidth = 150;
constexpr float kFilmSeconds = 10.0f;

/// A film of its own, ten seconds long, with one actor, "Fishing boat", that has a position key at 5 seconds.
class AttributesInStageTest : public StageTest {
protected:
    void SetUp() override {
        NewFilm();
        ASSERT_NE(film, nullptr);
        boat = Object("Fishing boat");
        ASSERT_NE(boat, nullptr);
        track = AsObjectTrack(film->CreateObjectTrack());
        track->SetActor(boat, /*isVirtual*/ false);
        film->AddTrack(track);
        key = static_cast<CFilmVectorKey*>(AddKey(*track, KeyKind::Position, 5.0f));
        key->SetValue(Vector3{10.0f, 0.0f, 0.0f}.Data());
    }
    void NewFilm() {
        for (QPushButton* button : window->findChildren<QPushButton*>()) {
            if (button->text() == "Add") {
                button->click();
            }
        }
        film = Films().currentFilm;
    }
    IFilmKey* AddKey(CFilmTrack& to, int kind, float time) {
        IFilmKey* made = Films().keyFactory->CreateKey(kind);
        made->SetTime(time);
        made->SetEndTime(time + 1.0f);
        EXPECT_TRUE(to.AddKey(made));
        return made;
    }
    /// Shows the film in the scenario window with the actor's rows unfolded.
    void ShowFilm() {
        const std::string name = film->name;
        ChooseFilm("<none>");
        OpenScenario(name);
        FoldButton(*ScenarioRows().back());
    }
    /// Unfolds a root row.
    void FoldButton(CWnd& row) {
        // The button is made when the row is first painted.
        ASSERT_TRUE(QTest::qWaitFor([&row] { return row.GetWindowChild(0) != nullptr; }));
        QTest::mouseClick(NativeWidget(*row.GetWindowChild(0)), Qt::LeftButton);
        Settle();
    }
    /// Double-clicks the place of a time in one row after the other, until a key with this first row shows.
    void OpenKey(float seconds, const std::string& firstRow) {
        for (CWnd* row : ScenarioRows()) {
            QWidget* widget = NativeWidget(*row);
            const int x = kNameWidth + static_cast<int>(seconds / kFilmSeconds *
                                                        static_cast<float>(widget->width() - kNameWidth));
            QTest::mouseDClick(widget, Qt::LeftButton, {}, {x, widget->height() / 2});
            Settle();
            if (!Names().empty() && Names().front() == firstRow) {
                return;
            }
        }
        FAIL() << "no key that says " << firstRow;
    }
    /// The window, or null while it isn't shown.
    static CWnd* Attributes() {
        for (QWidget* top : QApplication::topLevelWidgets()) {
            if (top->isVisible() && top->windowTitle() == "Key attributes") {
                return WrapWidget(top);
            }
        }
        return nullptr;
    }
    static CListBox* List() {
        CWnd* window = Attributes();
        return window != nullptr ? dynamic_cast<CListBox*>(window->GetDlgItem(kListId)) : nullptr;
    }
    static std::vector<std::string> Names() {
        std::vector<std::string> names;
        for (int i = 0; List() != nullptr && i < List()->GetCount(); ++i) {
            names.push_back(List()->GetText(i));
        }
        return names;
    }
    /// Presses a row by its name and types a text into its editor.
    static void Edit(const std::string& name, const std::string& text) {
        ASSERT_NE(List(), nullptr);
        const int row = List()->FindStringExact(-1, name);
        CRect rect;
        ASSERT_EQ(List()->GetItemRect(row, &rect), 0) << name;
        QWidget* top = NativeWidget(*Attributes());
        QWidget* list = NativeWidget(*List());
        top->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(top));
        const QPoint place = list->mapTo(top, QPoint(20, rect.top + 10));
        QTest::mouseClick(top->windowHandle(), Qt::LeftButton, {}, place);
        Settle();
        QTest::keyClicks(QApplication::focusWidget(), QString::fromStdString(text));
    }
    static void Press(Qt::Key pressed) {
        QTest::keyClick(NativeWidget(*Attributes())->windowHandle(), pressed);
        Settle();
    }
    static void Wheel(int delta) {
        QWidget* edit = QApplication::focusWidget();
        ASSERT_NE(edit, nullptr);
        const QPointF place = edit->mapTo(edit->window(), edit->rect().center());
        QWheelEvent wheel(place, edit->window()->mapToGlobal(place), QPoint(), QPoint(0, delta), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QSpontaneKeyEvent::setSpontaneous(&wheel); // as the user's
        qApp->notify(edit->window()->windowHandle(), &wheel);
        Settle();
    }
    /// Below level and sun.
    static constexpr std::size_t kCameraRow = 2;

    IFilm* film = nullptr;
    engine::SceneObject* boat = nullptr;
    CFilmObjectTrack* track = nullptr;
    CFilmVectorKey* key = nullptr;
};

} // namespace

TEST_F(AttributesInStageTest, DoubleClickOnAKeyShowsWhatItSays) {
    ShowFilm();
    EXPECT_EQ(Attributes(), nullptr);
    ASSERT_NO_FATAL_FAILURE(OpenKey(5.0f, "Pos X"));
    EXPECT_EQ(Names(), (std::vector<std::string>{"Pos X", "Pos Y", "Pos Z", "In type", "Out type"}));
}

TEST_F(AttributesInStageTest, WheelMovesTheObjectInTheViews) {
    ShowFilm();
    ASSERT_NO_FATAL_FAILURE(OpenKey(5.0f, "Pos X"));
    ASSERT_NO_FATAL_FAILURE(Edit("Pos X", ""));
    Wheel(120);
    EXPECT_EQ(key->value.x, 11.0f);
    EXPECT_EQ(boat->World().Translation().x, 11.0f);
}

TEST_F(AttributesInStageTest, EditIsInTheSavedLevelAndInTheNextSave) {
    auto* cut = static_cast<CFilmCameraKey*>(AddKey(*film->mainTrack, KeyKind::Camera, 2.0f));
    cut->priority = 0;
    const std::string name = film->name;
    ShowFilm();
    ASSERT_NO_FATAL_FAILURE(OpenKey(5.0f, "Pos X"));
    ASSERT_NO_FATAL_FAILURE(Edit("Pos Y", "3.5"));
    ASSERT_TRUE(window->SaveLevelAs(QString::fromStdString(levelPath)));
    for (int round = 0; round < 2; ++round) {
        ASSERT_TRUE(window->OpenLevel(QString::fromStdString(levelPath)));
        Settle();
        EXPECT_TRUE(Names().empty());
        const CFilmTrack* reloaded = Film(name)->FindObjectTrack(Object("Fishing boat"));
        ASSERT_NE(reloaded, nullptr);
        bool found = false;
        for (const IFilmKey* one : reloaded->keys) {
            found = found || (one->kind == KeyKind::Position && one->time == 5.0f &&
                              static_cast<const CFilmVectorKey*>(one)->value.y == 3.5f);
        }
        EXPECT_TRUE(found);
        ASSERT_TRUE(window->SaveLevelAs(QString::fromStdString(levelPath)));
    }
}

TEST_F(AttributesInStageTest, SaveShortcutWorksFromTheWindowAndTakesTheEditAlong) {
    ShowFilm();
    ASSERT_NO_FATAL_FAILURE(OpenKey(5.0f, "Pos X"));
    ASSERT_NO_FATAL_FAILURE(Edit("Pos X", "4"));
    EXPECT_EQ(key->value.x, 10.0f);
    const auto before = std::filesystem::file_size(levelPath);
    QTest::keyClick(NativeWidget(*Attributes())->windowHandle(), Qt::Key_S, Qt::ControlModifier);
    Settle();
    EXPECT_EQ(key->value.x, 4.0f);
    EXPECT_NE(std::filesystem::file_size(levelPath), before); // the new film is in it
}

TEST_F(AttributesInStageTest, WheelWorksWhileTheFilmPlays) {
    ShowFilm();
    ASSERT_NO_FATAL_FAILURE(OpenKey(5.0f, "Pos X"));
    ASSERT_NO_FATAL_FAILURE(Edit("Pos X", ""));
    bool turned = false;
    InsidePump([&] {
        QWidget* edit = QApplication::focusWidget();
        turned = edit != nullptr;
        Wheel(120);
    });
    PlayWithShortcut(200);
    EXPECT_TRUE(turned);
    EXPECT_EQ(key->value.x, 11.0f);
}

TEST_F(AttributesInStageTest, KeysTypedIntoTheWindowDontReachStage) {
    ShowFilm();
    window->host.Select({boat});
    ASSERT_NO_FATAL_FAILURE(OpenKey(5.0f, "Pos X"));
    ASSERT_NO_FATAL_FAILURE(Edit("Pos X", "12"));
    Press(Qt::Key_Backspace);
    Press(Qt::Key_Delete);
    EXPECT_EQ(Object("Fishing boat"), boat);
    Press(Qt::Key_Return);
    EXPECT_EQ(key->value.x, 1.0f);
    EXPECT_EQ(Attributes(), nullptr);
}

TEST_F(AttributesInStageTest, CameraPointIsLinkedFromTheMenuOfAnObject) {
    CFilmTrack* camera = film->CreateCameraTrack();
    film->AddTrack(camera);
    static_cast<CFilmCameraTrack*>(camera)->cameraName = "Cam";
    auto* eye = static_cast<CFilmLinkedKey*>(AddKey(*camera, KeyKind::CameraPosition, 5.0f));
    const std::string name = film->name;
    ChooseFilm("<none>");
    OpenScenario(name);
    FoldButton(*ScenarioRows()[kCameraRow]);
    ASSERT_NO_FATAL_FAILURE(OpenKey(5.0f, "X"));
    ASSERT_THAT(Names(), Contains("Object ID"));
    ASSERT_NO_FATAL_FAILURE(Edit("Object ID", ""));
    CMenu menu;
    menu.CreatePopupMenu();
    ASSERT_TRUE(window->host.FillObjectMenu(&menu, boat));
    UINT command = 0;
    for (UINT i = 0; i < menu.GetMenuItemCount(); ++i) {
        std::string text;
        menu.GetMenuString(i, text, MF_BYPOSITION);
        if (text == "Link camera to object Fishing boat(" + std::to_string(boat->id) + ")") {
            command = menu.GetMenuItemID(static_cast<int>(i));
        }
    }
    ASSERT_NE(command, 0u);
    window->host.RunCommand(PluginCommandId{command});
    Settle();
    EXPECT_EQ(eye->linkObject, boat);
    EXPECT_EQ(eye->linkObjectId, boat->id);
}

TEST_F(AttributesInStageTest, ObjectOfTheKeyIsInUseAndTheEditGoesOn) {
    ShowFilm();
    ASSERT_NO_FATAL_FAILURE(OpenKey(5.0f, "Pos X"));
    ASSERT_NO_FATAL_FAILURE(Edit("Pos X", "4"));
    Answering([](QWidget& box) { PressButton(box, QMessageBox::Ok); },
              [this] { window->host.DeleteObjects({boat}); });
    EXPECT_EQ(Object("Fishing boat"), boat);
    Press(Qt::Key_Return);
    EXPECT_EQ(key->value.x, 4.0f);
}

TEST_F(AttributesInStageTest, BrowserBelongsToTheWindowThatItGivesTheKeyboardBackTo) {
    auto* rain = static_cast<CFilmFxKey*>(AddKey(*film->mainTrack, KeyKind::FxRain, 3.0f));
    rain->SetEndTime(8.0f);
    const std::string name = film->name;
    ChooseFilm("<none>");
    OpenScenario(name);
    FoldButton(*ScenarioRows().front());
    ASSERT_NO_FATAL_FAILURE(OpenKey(5.0f, "FX name"));
    ASSERT_NO_FATAL_FAILURE(Edit("FX name", ""));
    CWnd* button = List()->GetDlgItem(kButtonId);
    ASSERT_NE(button, nullptr);
    Answering(
        [](QWidget& browser) {
            ASSERT_NE(browser.parentWidget(), nullptr);
            EXPECT_EQ(browser.parentWidget()->windowTitle(), "Key attributes");
            QTest::keyClick(&browser, Qt::Key_Escape);
        },
        [button] { QTest::mouseClick(NativeWidget(*button), Qt::LeftButton); });
    EXPECT_EQ(rain->fxName, "");
}

TEST_F(AttributesInStageTest, ClosingTheScenarioHidesTheWindow) {
    ShowFilm();
    ASSERT_NO_FATAL_FAILURE(OpenKey(5.0f, "Pos X"));
    ASSERT_NE(Attributes(), nullptr);
    window->toolWindows->Docks().front()->close();
    Settle();
    EXPECT_EQ(Attributes(), nullptr);
}
