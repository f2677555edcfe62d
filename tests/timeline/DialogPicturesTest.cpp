#include "files/AddCameraDlg.h"
#include "files/ChooseMovieCameraDlg.h"
#include "files/MovieFrameDlg.h"
#include "framework/QtBridge.h"
#include "framework/Resource.h"
#include "plugin/base/PluginResources.h"
#include "tests/support/Golden.h"
#include "tests/timeline/ControlFixture.h"
#include "timeline/AdjustTimeDlg.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QGroupBox>
#include <QImage>
#include <QLabel>
#include <QLineEdit>

namespace {

/// Small dialogs at a film of 10 seconds with two cameras and the cursor at 5.
class DialogPicturesTest : public ControlTest {
protected:
    DialogPicturesTest() {
        IFilm* film = OpenFilmWithActors(1);
        AddCamera(film, "Pier");
        AddCamera(film, "Tower");
        plugin.SetTime(5.0f, /*fromWindow*/ false);
    }
    /// Texts differ with the fonts of a machine; frames, boxes and their places don't.
    static std::vector<CRect> TextAreas(const QWidget& window) {
        std::vector<CRect> areas;
        const auto add = [&areas](const QRect& place) {
            areas.emplace_back(place.left(), place.top(), place.right() + 1, place.bottom() + 1);
        };
        for (const QLabel* label : window.findChildren<QLabel*>()) {
            add(label->geometry());
        }
        for (const QLineEdit* edit : window.findChildren<QLineEdit*>()) {
            add(edit->geometry().adjusted(3, 3, -3, -3));
        }
        for (const QAbstractButton* button : window.findChildren<QAbstractButton*>()) {
            const int left = button->isCheckable() ? 20 : 4; // the box of a check box stays
            add(button->geometry().adjusted(left, 4, -4, -4));
        }
        for (const QAbstractScrollArea* list : window.findChildren<QAbstractScrollArea*>()) {
            add(list->geometry().adjusted(2, 2, -2, -2));
        }
        for (const QGroupBox* box : window.findChildren<QGroupBox*>()) {
            QRect title = box->geometry();
            title.setHeight(16);
            add(title);
        }
        return areas;
    }
    static void Compare(CDialog& dialog, const std::string& name) {
        Hooks().modalDialog = [&name](CDialog& open) {
            Settle();
            ExpectGolden(PictureOf(open), "tests/timeline", name, TextAreas(*NativeWidget(open)));
            return IDCANCEL;
        };
        EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    }

    ResourceScope resources{PluginResources()};
};

} // namespace

TEST_F(DialogPicturesTest, AdjustTime) {
    CAdjustTimeDlg dialog(control.get());
    Compare(dialog, "adjust_time");
}

TEST_F(DialogPicturesTest, AdjustTimeToTheEnd) {
    CAdjustTimeDlg dialog(control.get());
    dialog.toEnd = 1;
    dialog.length = -1234.5f;
    Compare(dialog, "adjust_time_end");
}

TEST_F(DialogPicturesTest, SetMovieFrame) {
    CMovieFrameDlg dialog(plugin, control.get());
    dialog.text = "150";
    Compare(dialog, "movie_frame");
}

TEST_F(DialogPicturesTest, AddCamera) {
    CAddCameraDlg dialog(plugin, control.get());
    dialog.name = "Camera01";
    Compare(dialog, "add_camera");
}

TEST_F(DialogPicturesTest, ChooseCamera) {
    CChooseMovieCameraDlg dialog(control.get());
    dialog.film = plugin.GetCurrentFilm();
    dialog.name = "Tower";
    Compare(dialog, "choose_camera");
}
