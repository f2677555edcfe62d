#include "framework/private/Input.h"

#include "framework/Constants.h"

#include <QKeyEvent>

#include <array>
#include <bitset>
#include <utility>

namespace input {
namespace {

constexpr std::array<std::pair<int, int>, 24> kKeys{{
    {Qt::Key_Backspace, VK_BACK},  {Qt::Key_Tab, VK_TAB},       {Qt::Key_Backtab, VK_TAB},
    {Qt::Key_Return, VK_RETURN},   {Qt::Key_Enter, VK_RETURN},  {Qt::Key_Shift, VK_SHIFT},
    {Qt::Key_Control, VK_CONTROL}, {Qt::Key_Alt, VK_MENU},      {Qt::Key_Escape, VK_ESCAPE},
    {Qt::Key_Space, VK_SPACE},     {Qt::Key_PageUp, VK_PRIOR},  {Qt::Key_PageDown, VK_NEXT},
    {Qt::Key_End, VK_END},         {Qt::Key_Home, VK_HOME},     {Qt::Key_Left, VK_LEFT},
    {Qt::Key_Up, VK_UP},           {Qt::Key_Right, VK_RIGHT},   {Qt::Key_Down, VK_DOWN},
    {Qt::Key_Insert, VK_INSERT},   {Qt::Key_Delete, VK_DELETE}, {Qt::Key_Plus, 187},
    {Qt::Key_Minus, 189},          {Qt::Key_Comma, 188},        {Qt::Key_Period, 190},
}};

// The key symbol of the right one of the two Alt keys.
constexpr quint32 kRightAlt = 0xFFEA;

std::bitset<256> down;
bool rightAlt = false;

} // namespace

UINT MouseFlags(Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers) {
    UINT flags = 0;
    flags |= buttons & Qt::LeftButton ? MK_LBUTTON : 0;
    flags |= buttons & Qt::RightButton ? MK_RBUTTON : 0;
    flags |= buttons & Qt::MiddleButton ? MK_MBUTTON : 0;
    flags |= modifiers & Qt::ShiftModifier ? MK_SHIFT : 0;
    flags |= modifiers & Qt::ControlModifier ? MK_CONTROL : 0;
    return flags;
}

int VirtualKey(const QKeyEvent& event) {
    const int key = event.key();
    if ((key >= Qt::Key_0 && key <= Qt::Key_9) || (key >= Qt::Key_A && key <= Qt::Key_Z)) {
        return key;
    }
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24) {
        return VK_F1 + key - Qt::Key_F1;
    }
    for (const auto& [qtKey, virtualKey] : kKeys) {
        if (qtKey == key) {
            return virtualKey;
        }
    }
    return 0;
}

LPARAM KeyData(const QKeyEvent& event) {
    constexpr LPARAM kWasDown = LPARAM{1} << 30;
    constexpr LPARAM kGoingUp = LPARAM{1} << 31;
    LPARAM data = 1;
    if (event.isAutoRepeat() || event.type() == QEvent::KeyRelease) {
        data |= kWasDown;
    }
    return event.type() == QEvent::KeyRelease ? data | kGoingUp : data;
}

UINT KeyMessage(const QKeyEvent& event) {
    const bool system = event.key() == Qt::Key_Alt || (event.modifiers() & Qt::AltModifier);
    if (event.type() == QEvent::KeyPress) {
        return system ? WM_SYSKEYDOWN : WM_KEYDOWN;
    }
    return system ? WM_SYSKEYUP : WM_KEYUP;
}

UINT ButtonMessage(QEvent::Type type, Qt::MouseButton button) {
    const UINT step = type == QEvent::MouseButtonPress ? 0 : type == QEvent::MouseButtonRelease ? 1 : 2;
    switch (button) {
    case Qt::LeftButton:
        return WM_LBUTTONDOWN + step;
    case Qt::RightButton:
        return WM_RBUTTONDOWN + step;
    case Qt::MiddleButton:
        return WM_MBUTTONDOWN + step;
    default:
        return 0;
    }
}

void Track(const QKeyEvent& event) {
    const bool pressed = event.type() == QEvent::KeyPress;
    const int key = VirtualKey(event);
    if (event.key() == Qt::Key_Alt && pressed) {
        rightAlt = event.nativeVirtualKey() == kRightAlt;
    }
    if (key > 0 && key < 256) {
        down.set(static_cast<std::size_t>(key), pressed);
    }
}

void ForgetKeys() {
    down.reset();
}

bool IsDown(int key, Qt::KeyboardModifiers modifiers, Qt::MouseButtons buttons) {
    switch (key) {
    case VK_SHIFT:
    case VK_LSHIFT:
        return modifiers & Qt::ShiftModifier;
    case VK_CONTROL:
    case VK_LCONTROL:
        return modifiers & Qt::ControlModifier;
    case VK_MENU:
        return modifiers & Qt::AltModifier;
    case VK_LMENU:
        return (modifiers & Qt::AltModifier) && !rightAlt;
    case VK_RMENU:
        return (modifiers & Qt::AltModifier) && rightAlt;
    case VK_LBUTTON:
        return buttons & Qt::LeftButton;
    case VK_RBUTTON:
        return buttons & Qt::RightButton;
    case VK_MBUTTON:
        return buttons & Qt::MiddleButton;
    default:
        return key > 0 && key < 256 && down.test(static_cast<std::size_t>(key));
    }
}

} // namespace input
