#pragma once

/// From here on the windows that a test has closed are gone before the next test starts (the toolkit deletes
/// them only when its event loop comes round), and no mouse button is held. Call it after
/// testing::InitGoogleTest.
void DeleteClosedWindowsAfterEachTest();
