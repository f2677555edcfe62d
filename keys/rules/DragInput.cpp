#include "keys/rules/DragInput.h"

#include "framework/Constants.h"
#include "framework/Wnd.h"

bool IsAltDown() {
    constexpr int kHighByte = 0xFF00;
    return (GetAsyncKeyState(VK_LMENU) & kHighByte) != 0 || (GetAsyncKeyState(VK_RMENU) & kHighByte) != 0;
}
