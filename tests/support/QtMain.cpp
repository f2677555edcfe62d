// The main of test programs that open windows: off the screen unless the caller names a platform.
#include "framework/FilmsApplication.h"
#include "tests/support/CleanWindows.h"

#include <cstdlib>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", /*overwrite*/ 0);
    testing::InitGoogleTest(&argc, argv);
    DeleteClosedWindowsAfterEachTest();
    FilmsApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
