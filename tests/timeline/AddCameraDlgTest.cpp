#include "files/AddCameraDlg.h"

#include "framework/QtBridge.h"
#include "framework/Resource.h"
#include "framework/UserNote.h"
#include "plugin/base/PluginResources.h"
#include "resources/resource.h"
#include "tests/plugin/PluginFixture.h"

#include <functional>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QWidget>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class AddCameraDlgTest : public PluginTest {
protected:
    AddCameraDlgTest() { dialog.name = "Camera 1"; }
    /// Opens the dialog and lets the user work on it.
    int Run(const std::function<void()>& user) {
        Hooks().modalDialog = [&user](CDialog&) {
            user();
            return IDCANCEL;
        };
        return dialog.DoModal();
    }
    void Type(const char* name) { dialog.SetDlgItemText(1783, name); }
    void Press(UINT button) { dialog.SendMessage(WM_COMMAND, button); }

    ResourceScope resources{PluginResources()};
    CAddCameraDlg dialog{plugin};
};

} // namespace

TEST_F(AddCameraDlgTest, ShowsTheNameAndOkTakesWhatWasTyped) {
    OpenNewFilm();
    EXPECT_EQ(Run([this] {
                  EXPECT_EQ(dialog.GetWindowText(), "Add camera");
                  EXPECT_EQ(dialog.GetDlgItemText(1783), "Camera 1");
                  Type("Bridge");
                  Press(IDOK);
              }),
              IDOK);
    EXPECT_EQ(dialog.name, "Bridge");
    EXPECT_THAT(boxes, IsEmpty());
}

TEST_F(AddCameraDlgTest, CancelTakesNothing) {
    OpenNewFilm();
    EXPECT_EQ(Run([this] {
                  Type("Bridge");
                  Press(IDCANCEL);
              }),
              IDCANCEL);
    EXPECT_EQ(dialog.name, "Camera 1");
}

TEST_F(AddCameraDlgTest, ANameThatIsTakenKeepsTheDialogOpen) {
    std::vector<std::string> notes;
    SetUserNoteSink([&notes](const std::string& text) { notes.push_back(text); });
    AddCamera(OpenNewFilm(), "Bridge");
    const int result = Run([this] {
        Type("Bridge");
        Press(IDOK);
        EXPECT_TRUE(dialog.IsWindowVisible());
        EXPECT_THAT(boxes, ElementsAre("Create camera frame")); // Required: this text, whatever it says.
        Type("bridge");                                         // other letters, another name
        Press(IDOK);
    });
    SetUserNoteSink(nullptr);
    EXPECT_EQ(result, IDOK);
    EXPECT_EQ(dialog.name, "bridge");
    EXPECT_EQ(boxes.size(), 1u);
    EXPECT_THAT(notes, ElementsAre("Another camera of the film is called \"Bridge\"."));
}

TEST_F(AddCameraDlgTest, CamerasOfAnotherFilmDontCount) {
    AddCamera(NewFilm(), "Bridge");
    OpenNewFilm();
    EXPECT_EQ(Run([this] {
                  Type("Bridge");
                  Press(IDOK);
              }),
              IDOK);
}

TEST_F(AddCameraDlgTest, WithoutAFilmItSaysSoAndStaysOpen) {
    EXPECT_EQ(Run([this] {
                  Press(IDOK);
                  EXPECT_TRUE(dialog.IsWindowVisible());
              }),
              IDCANCEL);
    EXPECT_THAT(boxes, ElementsAre("Cannot find film."));
}

TEST_F(AddCameraDlgTest, EverythingStandsInsideAndApart) {
    OpenNewFilm();
    Run([this] {
        QWidget* window = NativeWidget(dialog);
        std::vector<const QWidget*> controls;
        for (const QLabel* label : window->findChildren<QLabel*>()) {
            EXPECT_LE(label->fontMetrics().horizontalAdvance(label->text()), label->width());
            controls.push_back(label);
        }
        for (const QLineEdit* edit : window->findChildren<QLineEdit*>()) {
            controls.push_back(edit);
        }
        for (const QPushButton* button : window->findChildren<QPushButton*>()) {
            controls.push_back(button);
        }
        ASSERT_EQ(controls.size(), 4u);
        for (std::size_t a = 0; a < controls.size(); ++a) {
            EXPECT_TRUE(window->rect().contains(controls[a]->geometry()));
            for (std::size_t b = a + 1; b < controls.size(); ++b) {
                EXPECT_FALSE(controls[a]->geometry().intersects(controls[b]->geometry()));
            }
        }
    });
}
