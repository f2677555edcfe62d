// The tests, or with --seed, --steps or --script a run of one's own.
#include "framework/FilmsApplication.h"
#include "tests/editing/Runner.h"
#include "tests/support/CleanWindows.h"

#include <cstdlib>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", /*overwrite*/ 0);
    testing::InitGoogleTest(&argc, argv);
    DeleteClosedWindowsAfterEachTest();
    FilmsApplication application(argc, argv);
    const int result = editing::RunFromCommandLine(argc, argv);
    return result >= 0 ? result : RUN_ALL_TESTS();
}
