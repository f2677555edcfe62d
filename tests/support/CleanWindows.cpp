#include "tests/support/CleanWindows.h"

#include <gtest/gtest.h>
#include <QCoreApplication>
#include <QEvent>

namespace {

class WindowCleaner final : public testing::EmptyTestEventListener {
    void OnTestEnd(const testing::TestInfo&) override {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents(); // the next window gets no late word of who is active
    }
};

} // namespace

void DeleteClosedWindowsAfterEachTest() {
    testing::UnitTest::GetInstance()->listeners().Append(new WindowCleaner);
}
