#include "tests/support/Answering.h"

#include <gtest/gtest.h>
#include <QApplication>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

void Answering(const std::function<void(QWidget&)>& answer, const std::function<void()>& run) {
    bool answered = false;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&] {
        QWidget* top = QApplication::activePopupWidget();
        top = top != nullptr ? top : QApplication::activeModalWidget();
        if (top != nullptr && !answered) {
            answered = true;
            answer(*top);
        }
    });
    poll.start(10);
    run();
    EXPECT_TRUE(answered) << "no dialog or menu came up";
}

void PressButton(QWidget& box, int standardButton) {
    auto* message = qobject_cast<QMessageBox*>(&box);
    ASSERT_NE(message, nullptr);
    message->button(static_cast<QMessageBox::StandardButton>(standardButton))->click();
}

void ChooseEntry(QWidget& menu, const char* text) {
    auto* popup = qobject_cast<QMenu*>(&menu);
    ASSERT_NE(popup, nullptr);
    for (QAction* action : popup->actions()) {
        if (action->text() == text && action->isEnabled()) {
            popup->setActiveAction(action);
            QTest::keyClick(popup, Qt::Key_Return);
            return;
        }
    }
    popup->close();
}
