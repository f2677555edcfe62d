#include "tests/timeline/CameraDialogFixture.h"

#include "framework/QtBridge.h"

#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>

namespace {

constexpr int kMark = 18; // pixels, of a radio button's circle and the gap behind it

} // namespace

CameraDialogTest::CameraDialogTest()
    : film(OpenNewFilm()), bridge(AddCamera(film, "Bridge")), deck(AddCamera(film, "Deck")) {
    control->ShowFilm(film, true);
    Settle();
}

QWidget* CameraDialogTest::Window() const {
    return NativeWidget(*shown);
}

void CameraDialogTest::Work(const std::function<void()>& user) {
    const QPointer<QWidget> window = Window();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window));
    user();
    if (window && window->isVisible()) {
        ADD_FAILURE() << "the dialog is still open";
        shown->EndDialog(-2);
    }
}

int CameraDialogTest::RunDialog(CDialog& dialog, const std::function<void()>& user) {
    shown = &dialog;
    QTimer::singleShot(0, [&] { Work(user); });
    return dialog.DoModal();
}

void CameraDialogTest::RunCommand(UINT id, CTrackCtrl* row, const std::function<void()>& user) {
    bool worked = false;
    QTimer::singleShot(0, [&] {
        worked = true;
        shown = dynamic_cast<CDialog*>(WrapWidget(QApplication::activeModalWidget()));
        ASSERT_NE(shown, nullptr);
        Work(user);
    });
    control->menuKey = nullptr;
    control->menuRow = row;
    control->OnCmdMsg(id, 0, nullptr, nullptr);
    EXPECT_TRUE(worked) << "no dialog came up";
}

void CameraDialogTest::Key(int key) {
    QTest::keyClick(Window()->windowHandle(), static_cast<Qt::Key>(key));
}

void CameraDialogTest::Click(int id) {
    QWidget* target = NativeWidget(*shown->GetDlgItem(id));
    const QPoint left(8, target->height() / 2); // on the mark of a radio button
    QTest::mouseClick(Window()->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                      target->mapTo(Window(), left));
}

void CameraDialogTest::Type(int id, const std::string& text) {
    Click(id);
    QTest::keyClick(Window()->windowHandle(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(Window()->windowHandle(), Qt::Key_Delete);
    QTest::keyClicks(NativeWidget(*shown->GetDlgItem(id)), QString::fromStdString(text));
}

void CameraDialogTest::ExpectTidy() const {
    std::vector<const QWidget*> controls;
    const QWidget* window = Window();
    for (const QLabel* label : window->findChildren<QLabel*>()) {
        EXPECT_LE(label->fontMetrics().horizontalAdvance(label->text()), label->width());
        controls.push_back(label);
    }
    for (const QAbstractButton* button : window->findChildren<QAbstractButton*>()) {
        const int mark = qobject_cast<const QRadioButton*>(button) != nullptr ? kMark : 0;
        EXPECT_LE(button->fontMetrics().horizontalAdvance(button->text()) + mark, button->width());
        controls.push_back(button);
    }
    for (const QLineEdit* edit : window->findChildren<QLineEdit*>()) {
        controls.push_back(edit);
    }
    for (std::size_t a = 0; a < controls.size(); ++a) {
        EXPECT_TRUE(window->rect().contains(controls[a]->geometry()));
        for (std::size_t b = a + 1; b < controls.size(); ++b) {
            EXPECT_FALSE(controls[a]->geometry().intersects(controls[b]->geometry()));
        }
    }
    for (const QGroupBox* group : window->findChildren<QGroupBox*>()) {
        EXPECT_TRUE(window->rect().contains(group->geometry()));
        EXPECT_LE(group->fontMetrics().horizontalAdvance(group->title()), group->width() - 16);
        for (const QWidget* one : controls) {
            EXPECT_TRUE(group->geometry().contains(one->geometry()) ||
                        !group->geometry().intersects(one->geometry()));
        }
    }
}

std::vector<CRect> CameraDialogTest::TextAreas() const {
    std::vector<CRect> areas;
    const auto add = [&areas](const QRect& rect) {
        areas.emplace_back(rect.left(), rect.top(), rect.right() + 1, rect.bottom() + 1);
    };
    const QWidget* window = Window();
    for (const QLabel* label : window->findChildren<QLabel*>()) {
        add(label->geometry());
    }
    for (const QLineEdit* edit : window->findChildren<QLineEdit*>()) {
        add(edit->geometry().adjusted(3, 3, -3, -3));
    }
    for (const QPushButton* button : window->findChildren<QPushButton*>()) {
        add(button->geometry().adjusted(5, 4, -5, -4));
    }
    for (const QRadioButton* radio : window->findChildren<QRadioButton*>()) {
        add(radio->geometry().adjusted(kMark, 0, 0, 0));
    }
    for (const QGroupBox* group : window->findChildren<QGroupBox*>()) {
        constexpr int kTitle = 18; // pixels
        add({group->geometry().topLeft(), QSize(group->width(), kTitle)});
    }
    return areas;
}
