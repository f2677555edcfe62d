#include "framework/Pump.h"

#include "framework/private/PumpQueue.h"
#include "framework/TestHooks.h"

#include <chrono>

BOOL PeekMessage(MSG* message, CWnd* /*window*/, UINT /*first*/, UINT /*last*/, UINT flags) {
    PumpQueue* queue = PumpQueue::Get();
    return queue && queue->Peek(message, (flags & PM_REMOVE) != 0);
}

BOOL GetMessage(MSG* message, CWnd* /*window*/, UINT /*first*/, UINT /*last*/) {
    PumpQueue* queue = PumpQueue::Get();
    if (!queue) {
        return FALSE;
    }
    queue->Wait(message);
    return TRUE;
}

BOOL TranslateMessage(const MSG* message) {
    return message->message == WM_KEYDOWN;
}

LRESULT DispatchMessage(const MSG* message) {
    PumpQueue* queue = PumpQueue::Get();
    return queue ? queue->Dispatch(*message) : 0;
}

std::uint32_t timeGetTime() {
    if (Hooks().clock) {
        return Hooks().clock();
    }
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
}
