#include "host/stage/windows/SeparatorDrag.h"

#include <gtest/gtest.h>
#include <QDockWidget>
#include <QMainWindow>
#include <QTest>

namespace {

/// A window of 400 by 600 pixels with a dock below its middle.
class SeparatorDragTest : public testing::Test {
protected:
    SeparatorDragTest() {
        window.setCentralWidget(new QWidget);
        dock->setWidget(new QWidget);
        window.addDockWidget(Qt::BottomDockWidgetArea, dock);
        window.resize(400, 600);
        window.show();
        QCoreApplication::processEvents();
        window.resizeDocks({dock}, {200}, Qt::Vertical);
        QCoreApplication::processEvents();
    }

    /// Pulls the dock's upper edge up without a moment of rest between the events.
    void Pull(int pixels) {
        const QPoint line(200, dock->geometry().top() - 3);
        QTest::mousePress(&window, Qt::LeftButton, Qt::NoModifier, line);
        for (int step = 1; step <= 4; ++step) {
            const int moved = pixels * step / 4;
            const QPointF place(line.x(), line.y() - moved);
            QMouseEvent move(QEvent::MouseMove, place, window.mapToGlobal(place), Qt::NoButton,
                             Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(&window, &move);
        }
        QMouseEvent release(QEvent::MouseButtonRelease, QPointF(line) - QPointF(0, pixels),
                            window.mapToGlobal(QPointF(line) - QPointF(0, pixels)), Qt::LeftButton,
                            Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&window, &release);
        QCoreApplication::processEvents();
    }

    QMainWindow window;
    QDockWidget* dock = new QDockWidget("Below", &window);
};

TEST_F(SeparatorDragTest, QuickPullTakesTheLineTheWholeWay) {
    new stage::SeparatorDrag(window);
    const int before = dock->height();
    Pull(120);
    EXPECT_EQ(dock->height(), before + 120);
}

TEST_F(SeparatorDragTest, ReleaseElsewhereMovesNothing) {
    new stage::SeparatorDrag(window);
    const int before = dock->height();
    QTest::mouseClick(&window, Qt::LeftButton, Qt::NoModifier, QPoint(200, 20));
    EXPECT_EQ(dock->height(), before);
}

} // namespace
