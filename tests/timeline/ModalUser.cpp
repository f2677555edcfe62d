#include "tests/timeline/ModalUser.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <QAbstractButton>
#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QWindow>

bool ModalUser::Work(const std::function<void()>& command, const std::function<void()>& user) {
    bool opened = false;
    QTimer::singleShot(0, [&] {
        QWidget* window = Window();
        opened = window != nullptr;
        if (!opened) {
            return;
        }
        if (QTest::qWaitForWindowActive(window)) {
            user();
        }
        if (QWidget* left = Window()) {
            ADD_FAILURE() << "the dialog is still open";
            left->close();
        }
    });
    command();
    QCoreApplication::processEvents(); // the timer, where no dialog opened
    return opened;
}

QWidget* ModalUser::Window() {
    return QApplication::activeModalWidget();
}

void ModalUser::Key(Qt::Key key) {
    QTest::keyClick(Window()->windowHandle(), key);
}

void ModalUser::ClickAt(const QWidget& widget) {
    QTest::mouseClick(Window()->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                      widget.mapTo(Window(), widget.rect().center()));
}

void ModalUser::Click(const QString& button) {
    const QAbstractButton* found = Button(button);
    ASSERT_NE(found, nullptr) << button.toStdString();
    QWidget* window = Window();
    // A check box takes presses at its sign and text only, which stand at its left.
    const QPoint place(std::min(found->width() / 2, 8), found->height() / 2);
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, Qt::NoModifier, found->mapTo(window, place));
}

QLineEdit* ModalUser::Field(int index) {
    const QList<QLineEdit*> fields = Window()->findChildren<QLineEdit*>();
    return index < fields.size() ? fields[index] : nullptr;
}

QAbstractButton* ModalUser::Button(const QString& text) {
    for (QAbstractButton* button : Window()->findChildren<QAbstractButton*>()) {
        if (button->text() == text) {
            return button;
        }
    }
    return nullptr;
}

void ModalUser::Type(int field, const std::string& text) {
    ClickAt(*Field(field));
    QTest::keyClick(Window()->windowHandle(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(Window()->windowHandle(), Qt::Key_Delete);
    for (const char letter : text) {
        QTest::keyClick(Window()->windowHandle(), letter);
    }
    ASSERT_EQ(TextOf(field), text);
}

std::string ModalUser::TextOf(int field) {
    const QLineEdit* edit = Field(field);
    return edit != nullptr ? edit->text().toStdString() : "no such field";
}

bool ModalUser::Says(const std::string& text) {
    const QList<QLabel*> labels = Window()->findChildren<QLabel*>();
    return std::ranges::any_of(labels,
                               [&](const QLabel* label) { return label->text().toStdString() == text; });
}

void ModalUser::ExpectNeat() {
    std::vector<const QWidget*> controls;
    for (const QLabel* label : Window()->findChildren<QLabel*>()) {
        EXPECT_LE(label->fontMetrics().horizontalAdvance(label->text()), label->width());
        controls.push_back(label);
    }
    for (const QAbstractButton* button : Window()->findChildren<QAbstractButton*>()) {
        EXPECT_LE(button->fontMetrics().horizontalAdvance(button->text()), button->width());
        controls.push_back(button);
    }
    for (const QLineEdit* edit : Window()->findChildren<QLineEdit*>()) {
        controls.push_back(edit);
    }
    for (std::size_t a = 0; a < controls.size(); ++a) {
        EXPECT_TRUE(Window()->rect().contains(controls[a]->geometry()));
        for (std::size_t b = a + 1; b < controls.size(); ++b) {
            EXPECT_FALSE(controls[a]->geometry().intersects(controls[b]->geometry()));
        }
        for (const QGroupBox* box : Window()->findChildren<QGroupBox*>()) {
            const QRect inside = box->geometry().intersected(controls[a]->geometry());
            EXPECT_TRUE(inside.isEmpty() || inside == controls[a]->geometry());
        }
    }
}
