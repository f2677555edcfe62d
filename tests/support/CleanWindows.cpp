#include "tests/support/CleanWindows.h"

#include <gtest/gtest.h>
#include <QCoreApplication>
#include <QEvent>

namespace {

class WindowCleaner final : public testing::EmptyTestEventListener {
    void OnTestEnd(const testing::TestInfo&) override {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
};

} // namespace

void DeleteClosedWindowsAfterEachTest() {
    testing::UnitTest::GetInstance()->listeners().Append(new WindowCleaner);
}
