#include "tests/stage/WindowFixture.h"

#include <QApplication>
#include <QEvent>
#include <QMessageBox>
#include <stdexcept>

namespace {

/// A handler that can't do its work.
class Thrower : public QObject {
public:
    bool event(QEvent* event) override {
        if (event->type() == QEvent::User) {
            throw std::runtime_error("Error reading file");
        }
        return QObject::event(event);
    }
};

class ExceptionReportTest : public WindowFixture {
protected:
    void Throw() { QApplication::postEvent(&thrower, new QEvent(QEvent::User)); }
    static QMessageBox* Box() { return qobject_cast<QMessageBox*>(QApplication::activeModalWidget()); }
    /// Opens a box with a throw and presses its button.
    QString Told() {
        QString text;
        Answering(
            [&text](QWidget& box) {
                text = dynamic_cast<QMessageBox&>(box).text();
                PressButton(box, QMessageBox::Ok);
            },
            [this] {
                Throw();
                Settle();
            });
        return text;
    }

    Thrower thrower;
};

} // namespace

TEST_F(ExceptionReportTest, WhatAHandlerThrowsIsToldInABox) {
    EXPECT_EQ(Told().toStdString(), "The command has failed.\nError reading file");
    EXPECT_EQ(Box(), nullptr);
}

TEST_F(ExceptionReportTest, WhatIsThrownBehindABoxOpensNoSecondOne) {
    int boxes = 0;
    Answering(
        [&](QWidget& box) {
            Throw();
            Throw();
            Settle();
            for (QWidget* top : QApplication::topLevelWidgets()) {
                boxes += qobject_cast<QMessageBox*>(top) != nullptr && top->isVisible() ? 1 : 0;
            }
            EXPECT_EQ(Box(), &box);
            PressButton(box, QMessageBox::Ok);
        },
        [this] {
            Throw();
            Throw();
            Settle();
        });
    EXPECT_EQ(boxes, 1);
    EXPECT_EQ(Box(), nullptr);
    EXPECT_EQ(Told().toStdString(), "The command has failed.\nError reading file"); // of the next one
}

TEST_F(ExceptionReportTest, WindowThatHasLeftTellsNothing) {
    window.ShutdownHost();
    Throw();
    Settle();
    EXPECT_EQ(Box(), nullptr);
}
