#include "files/ChooseMovieCameraDlg.h"

#include "framework/QtBridge.h"
#include "framework/Resource.h"
#include "plugin/base/PluginResources.h"
#include "tests/plugin/PluginFixture.h"

#include <functional>
#include <QApplication>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// A film with cameras "main", "Main deck", "Main" and an actor between them.
class ChooseMovieCameraDlgTest : public PluginTest {
protected:
    ChooseMovieCameraDlgTest() {
        film = OpenNewFilm();
        AddCamera(film, "main");
        AddCamera(film, "Main deck");
        plugin.AddActors({editor.Create("Actor")});
        AddCamera(film, "Main");
        dialog.film = film;
    }
    /// Opens the dialog; the real user works in its loop once it is active. Ends it where he doesn't.
    int Run(const std::function<void()>& user) {
        QTimer::singleShot(0, [this, &user] {
            ASSERT_TRUE(QTest::qWaitForWindowActive(Widget()));
            user();
            if (dialog.GetSafeHwnd() != nullptr && dialog.IsWindowVisible()) {
                ADD_FAILURE() << "the dialog is still open";
                dialog.EndDialog(-2);
            }
        });
        return dialog.DoModal();
    }
    QWidget* Widget() { return NativeWidget(dialog); }
    void Key(Qt::Key key) { QTest::keyClick(Widget()->windowHandle(), key); }
    void Click(int id) {
        QWidget* button = NativeWidget(*dialog.GetDlgItem(id));
        QTest::mouseClick(Widget()->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                          button->mapTo(Widget(), button->rect().center()));
    }
    QPoint PlaceOf(int line) {
        CRect rect;
        EXPECT_EQ(dialog.list.GetItemRect(line, &rect), 0);
        CPoint middle((rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2);
        dialog.list.ClientToScreen(&middle);
        dialog.ScreenToClient(&middle);
        return {middle.x, middle.y};
    }
    void ClickLine(int line) {
        QTest::mouseClick(Widget()->windowHandle(), Qt::LeftButton, Qt::NoModifier, PlaceOf(line));
    }
    std::vector<std::string> Lines() const {
        std::vector<std::string> lines;
        lines.reserve(static_cast<std::size_t>(dialog.list.GetCount()));
        for (int i = 0; i < dialog.list.GetCount(); ++i) {
            lines.push_back(dialog.list.GetText(i));
        }
        return lines;
    }
    /// The line that is selected when the dialog opens with this name.
    int FirstLineFor(const char* name) {
        int line = -2;
        dialog.name = name;
        Run([&] {
            line = dialog.list.GetCurSel();
            Key(Qt::Key_Escape);
        });
        return line;
    }

    ResourceScope resources{PluginResources()};
    IFilm* film = nullptr;
    CChooseMovieCameraDlg dialog;
};

} // namespace

TEST_F(ChooseMovieCameraDlgTest, ShowsTheCamerasInTheOrderOfTheirTracks) {
    Run([this] {
        EXPECT_EQ(dialog.GetWindowText(), "Choose camera");
        EXPECT_THAT(Lines(), ElementsAre("main", "Main deck", "Main"));
        EXPECT_EQ(dialog.list.GetDlgCtrlID(), 1782);
        Key(Qt::Key_Escape);
    });
}

TEST_F(ChooseMovieCameraDlgTest, SelectsTheExactNameBeforeOneThatBeginsAlike) {
    EXPECT_EQ(FirstLineFor("Main"), 2);
    EXPECT_EQ(FirstLineFor("main"), 0);
    EXPECT_EQ(FirstLineFor("Main deck"), 1);
    EXPECT_EQ(FirstLineFor("MAIN D"), 1); // the first that begins so, whatever the case
    EXPECT_EQ(FirstLineFor("MAIN"), 0);
    EXPECT_EQ(FirstLineFor("deck"), -1);
    EXPECT_EQ(FirstLineFor(""), -1);
}

TEST_F(ChooseMovieCameraDlgTest, OkTakesTheLineThatWasClicked) {
    dialog.name = "Main";
    EXPECT_EQ(Run([this] {
                  ClickLine(1);
                  Click(IDOK);
              }),
              IDOK);
    EXPECT_EQ(dialog.name, "Main deck");
}

TEST_F(ChooseMovieCameraDlgTest, CancelAndEscapeTakeNothing) {
    dialog.name = "Main";
    EXPECT_EQ(Run([this] {
                  ClickLine(1);
                  Click(IDCANCEL);
              }),
              IDCANCEL);
    EXPECT_EQ(dialog.name, "Main");
    EXPECT_EQ(Run([this] {
                  ClickLine(0);
                  Key(Qt::Key_Escape);
              }),
              IDCANCEL);
    EXPECT_EQ(dialog.name, "Main");
}

TEST_F(ChooseMovieCameraDlgTest, ArrowsChooseAndEnterIsOk) {
    dialog.name = "main";
    EXPECT_EQ(Run([this] {
                  Key(Qt::Key_Down);
                  Key(Qt::Key_Return);
              }),
              IDOK);
    EXPECT_EQ(dialog.name, "Main deck");
}

TEST_F(ChooseMovieCameraDlgTest, DoubleClickIsOk) {
    EXPECT_EQ(Run([this] {
                  const QPoint place = PlaceOf(2);
                  QTest::mouseDClick(Widget()->windowHandle(), Qt::LeftButton, Qt::NoModifier, place);
              }),
              IDOK);
    EXPECT_EQ(dialog.name, "Main");
}

TEST_F(ChooseMovieCameraDlgTest, OkWithoutALineGivesNoName) {
    dialog.name = "gone";
    EXPECT_EQ(Run([this] { Click(IDOK); }), IDOK);
    EXPECT_EQ(dialog.name, "");
}

TEST_F(ChooseMovieCameraDlgTest, OpensEmptyWithoutAFilmOrCameras) {
    for (IFilm* other : {static_cast<IFilm*>(nullptr), NewFilm()}) {
        dialog.film = other;
        dialog.name = "Main";
        EXPECT_EQ(Run([this] {
                      EXPECT_THAT(Lines(), IsEmpty());
                      Key(Qt::Key_Return);
                  }),
                  IDOK);
        EXPECT_EQ(dialog.name, "");
    }
}

TEST_F(ChooseMovieCameraDlgTest, FilmThatIsDeletedWhileItIsOpenDoesntMatter) {
    EXPECT_EQ(Run([this] {
                  plugin.DeleteFilm(film);
                  ClickLine(1);
                  Click(IDOK);
              }),
              IDOK);
    EXPECT_EQ(dialog.name, "Main deck");
}

TEST_F(ChooseMovieCameraDlgTest, SecondTimeBeginsAnew) {
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(Run([this, round] {
                      EXPECT_EQ(Lines().size(), 3u);
                      EXPECT_EQ(dialog.list.GetCurSel(), round == 0 ? -1 : 1);
                      ClickLine(1);
                      Key(Qt::Key_Return);
                  }),
                  IDOK);
        EXPECT_EQ(dialog.name, "Main deck");
    }
}

TEST_F(ChooseMovieCameraDlgTest, EverythingStandsInsideAndApart) {
    Run([this] {
        std::vector<const QWidget*> controls{NativeWidget(dialog.list)};
        for (const QPushButton* button : Widget()->findChildren<QPushButton*>()) {
            controls.push_back(button);
            EXPECT_LE(button->fontMetrics().horizontalAdvance(button->text()), button->width());
        }
        ASSERT_EQ(controls.size(), 3u);
        for (std::size_t a = 0; a < controls.size(); ++a) {
            EXPECT_TRUE(Widget()->rect().contains(controls[a]->geometry()));
            for (std::size_t b = a + 1; b < controls.size(); ++b) {
                EXPECT_FALSE(controls[a]->geometry().intersects(controls[b]->geometry()));
            }
        }
        Key(Qt::Key_Escape);
    });
}
