#include "tests/support/CleanWindows.h"

#include <gtest/gtest.h>
#include <QCoreApplication>
#include <QEvent>
#include <QGuiApplication>
#include <QTest>
#include <QWidget>

namespace {

/// A gesture that a test has broken off, or a press whose window went with it, leaves the button down.
void ReleaseHeldButtons() {
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
        if (QGuiApplication::mouseButtons().testFlag(button)) {
            QWidget under;
            under.show();
            QTest::mouseRelease(&under, button);
        }
    }
}

class WindowCleaner final : public testing::EmptyTestEventListener {
    void OnTestEnd(const testing::TestInfo&) override {
        ReleaseHeldButtons();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents(); // the next window gets no late word of who is active
    }
};

} // namespace

void DeleteClosedWindowsAfterEachTest() {
    testing::UnitTest::GetInstance()->listeners().Append(new WindowCleaner);
}
