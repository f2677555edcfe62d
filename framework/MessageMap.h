#pragma once

#include "framework/Constants.h"
#include "framework/Export.h"

#include <cstddef>
#include <type_traits>

class CCmdTarget;
class CWnd;
struct CREATESTRUCT;

struct NMHDR {
    HWND hwndFrom = nullptr;
    UINT_PTR idFrom = 0;
    UINT code = 0;
};

/// One message on its way to a handler.
struct MessageCall {
    UINT message = 0;
    WPARAM wParam = 0;
    LPARAM lParam = 0;
    UINT id = 0;
    LRESULT result = 0;
};

/// One row of a message map. `call` answers false when the handler leaves the message to others.
struct MessageEntry {
    UINT message;
    UINT code;
    UINT id;
    UINT lastId;
    bool (*call)(CCmdTarget&, MessageCall&);
};

struct MessageMap {
    const MessageMap* base;
    const MessageEntry* entries;
    std::size_t count;
};

namespace message_map {

template <class> struct Member;
template <class C, class R, class... A> struct Member<R (C::*)(A...)> {
    using Class = C;
    using Result = R;
};

template <auto Fn> auto& Self(CCmdTarget& target) {
    return static_cast<typename Member<decltype(Fn)>::Class&>(target);
}
inline CPoint PointOf(const MessageCall& c) {
    return {GET_X_LPARAM(c.lParam), GET_Y_LPARAM(c.lParam)};
}
FILMS_API CWnd* WindowOf(WPARAM handle);

/// Calls the handler and keeps what it returns, if anything, as the message's result.
template <auto Fn, class... Args> bool Run(CCmdTarget& t, MessageCall& c, Args... args) {
    if constexpr (std::is_void_v<typename Member<decltype(Fn)>::Result>) {
        (Self<Fn>(t).*Fn)(args...);
        c.result = 0;
    } else {
        c.result = static_cast<LRESULT>((Self<Fn>(t).*Fn)(args...));
    }
    return true;
}

template <auto Fn> bool Plain(CCmdTarget& t, MessageCall& c) {
    return Run<Fn>(t, c);
}
template <auto Fn> bool Raw(CCmdTarget& t, MessageCall& c) {
    return Run<Fn>(t, c, c.wParam, c.lParam);
}
template <auto Fn> bool Mouse(CCmdTarget& t, MessageCall& c) {
    return Run<Fn>(t, c, static_cast<UINT>(c.wParam), PointOf(c));
}
template <auto Fn> bool Wheel(CCmdTarget& t, MessageCall& c) {
    return Run<Fn>(t, c, static_cast<UINT>(LOWORD(c.wParam)), static_cast<short>(HIWORD(c.wParam)),
                   PointOf(c));
}
template <auto Fn> bool Size(CCmdTarget& t, MessageCall& c) {
    const UINT_PTR l = static_cast<UINT_PTR>(c.lParam);
    return Run<Fn>(t, c, static_cast<UINT>(c.wParam), static_cast<int>(LOWORD(l)),
                   static_cast<int>(HIWORD(l)));
}
template <auto Fn> bool Move(CCmdTarget& t, MessageCall& c) {
    return Run<Fn>(t, c, GET_X_LPARAM(c.lParam), GET_Y_LPARAM(c.lParam));
}
template <auto Fn> bool Sizing(CCmdTarget& t, MessageCall& c) {
    return Run<Fn>(t, c, static_cast<UINT>(c.wParam), reinterpret_cast<CRect*>(c.lParam));
}
template <auto Fn> bool Key(CCmdTarget& t, MessageCall& c) {
    return Run<Fn>(t, c, static_cast<UINT>(c.wParam), static_cast<UINT>(c.lParam & 0xFFFF),
                   static_cast<UINT>((c.lParam >> 16) & 0xFFFF));
}
template <auto Fn> bool Timer(CCmdTarget& t, MessageCall& c) {
    return Run<Fn>(t, c, UINT_PTR{c.wParam});
}
template <auto Fn> bool Window(CCmdTarget& t, MessageCall& c) {
    return Run<Fn>(t, c, WindowOf(c.wParam));
}
template <auto Fn> bool LastWindow(CCmdTarget& t, MessageCall& c) {
    return Run<Fn>(t, c, WindowOf(static_cast<WPARAM>(c.lParam)));
}
template <auto Fn> bool Show(CCmdTarget& t, MessageCall& c) {
    return Run<Fn>(t, c, static_cast<BOOL>(c.wParam), static_cast<UINT>(c.lParam));
}
template <auto Fn> bool Erase(CCmdTarget& t, MessageCall& c) {
    return Run<Fn>(t, c, reinterpret_cast<CDC*>(c.wParam));
}
template <auto Fn> bool Text(CCmdTarget& t, MessageCall& c) {
    return Run<Fn>(t, c, reinterpret_cast<const char*>(c.lParam));
}
template <auto Fn> bool Create(CCmdTarget& t, MessageCall& c) {
    return Run<Fn>(t, c, reinterpret_cast<CREATESTRUCT*>(c.lParam));
}
template <auto Fn> bool CommandId(CCmdTarget& t, MessageCall& c) {
    return Run<Fn>(t, c, c.id);
}
template <auto Fn> bool Notify(CCmdTarget& t, MessageCall& c) {
    (Self<Fn>(t).*Fn)(reinterpret_cast<NMHDR*>(c.lParam), &c.result);
    return true;
}
template <auto Fn> bool NotifyEx(CCmdTarget& t, MessageCall& c) {
    return (Self<Fn>(t).*Fn)(c.id, reinterpret_cast<NMHDR*>(c.lParam), &c.result) != 0;
}

/// Leaves room for an empty map, which an array alone could not be.
inline constexpr MessageEntry kEnd{0, 0, 0, 0, nullptr};

} // namespace message_map

#define DECLARE_MESSAGE_MAP()                                                                                \
protected:                                                                                                   \
    static const MessageMap* GetThisMessageMap();                                                            \
    const MessageMap* GetMessageMap() const override;

#define BEGIN_MESSAGE_MAP(Class, Base)                                                                       \
    const MessageMap* Class::GetMessageMap() const {                                                         \
        return GetThisMessageMap();                                                                          \
    }                                                                                                        \
    const MessageMap* Class::GetThisMessageMap() {                                                           \
        using ThisClass [[maybe_unused]] = Class;                                                            \
        using BaseClass = Base;                                                                              \
        static constexpr MessageEntry entries[] = {

#define END_MESSAGE_MAP()                                                                                    \
    message_map::kEnd                                                                                        \
    }                                                                                                        \
    ;                                                                                                        \
    static const MessageMap map{BaseClass::GetThisMessageMap(), entries, std::size(entries) - 1};            \
    return &map;                                                                                             \
    }

// Handlers are given as &Class::Handler.
#define ON_COMMAND(id, fn) {WM_COMMAND, 0, id, id, &message_map::Plain<fn>},
#define ON_COMMAND_RANGE(id, last, fn) {WM_COMMAND, 0, id, last, &message_map::CommandId<fn>},
#define ON_CONTROL(code, id, fn) {WM_COMMAND, code, id, id, &message_map::Plain<fn>},
#define ON_CONTROL_RANGE(code, id, last, fn) {WM_COMMAND, code, id, last, &message_map::CommandId<fn>},
#define ON_NOTIFY(code, id, fn) {WM_NOTIFY, code, id, id, &message_map::Notify<fn>},
#define ON_NOTIFY_EX_RANGE(code, id, last, fn) {WM_NOTIFY, code, id, last, &message_map::NotifyEx<fn>},
#define ON_MESSAGE(message, fn) {message, 0, 0, 0, &message_map::Raw<fn>},
#define ON_BN_CLICKED(id, fn) ON_CONTROL(BN_CLICKED, id, fn)
#define ON_BN_DOUBLECLICKED(id, fn) ON_CONTROL(BN_DOUBLECLICKED, id, fn)
#define ON_EN_CHANGE(id, fn) ON_CONTROL(EN_CHANGE, id, fn)
#define ON_EN_SETFOCUS(id, fn) ON_CONTROL(EN_SETFOCUS, id, fn)
#define ON_EN_KILLFOCUS(id, fn) ON_CONTROL(EN_KILLFOCUS, id, fn)
#define ON_LBN_SELCHANGE(id, fn) ON_CONTROL(LBN_SELCHANGE, id, fn)
#define ON_LBN_DBLCLK(id, fn) ON_CONTROL(LBN_DBLCLK, id, fn)
#define ON_CBN_SELCHANGE(id, fn) ON_CONTROL(CBN_SELCHANGE, id, fn)
#define ON_CBN_EDITCHANGE(id, fn) ON_CONTROL(CBN_EDITCHANGE, id, fn)
#define ON_CBN_KILLFOCUS(id, fn) ON_CONTROL(CBN_KILLFOCUS, id, fn)

#define FILMS_WM(message, shape, name) {message, 0, 0, 0, &message_map::shape<&ThisClass::name>},
#define ON_WM_CREATE() FILMS_WM(WM_CREATE, Create, OnCreate)
#define ON_WM_DESTROY() FILMS_WM(WM_DESTROY, Plain, OnDestroy)
#define ON_WM_MOVE() FILMS_WM(WM_MOVE, Move, OnMove)
#define ON_WM_SIZE() FILMS_WM(WM_SIZE, Size, OnSize)
#define ON_WM_SIZING() FILMS_WM(WM_SIZING, Sizing, OnSizing)
#define ON_WM_SETFOCUS() FILMS_WM(WM_SETFOCUS, Window, OnSetFocus)
#define ON_WM_KILLFOCUS() FILMS_WM(WM_KILLFOCUS, Window, OnKillFocus)
#define ON_WM_PAINT() FILMS_WM(WM_PAINT, Plain, OnPaint)
#define ON_WM_CLOSE() FILMS_WM(WM_CLOSE, Plain, OnClose)
#define ON_WM_ERASEBKGND() FILMS_WM(WM_ERASEBKGND, Erase, OnEraseBkgnd)
#define ON_WM_SHOWWINDOW() FILMS_WM(WM_SHOWWINDOW, Show, OnShowWindow)
#define ON_WM_WININICHANGE() FILMS_WM(WM_WININICHANGE, Text, OnWinIniChange)
#define ON_WM_PALETTECHANGED() FILMS_WM(WM_PALETTECHANGED, Window, OnPaletteChanged)
#define ON_WM_CAPTURECHANGED() FILMS_WM(WM_CAPTURECHANGED, LastWindow, OnCaptureChanged)
#define ON_WM_CANCELMODE() FILMS_WM(WM_CANCELMODE, Plain, OnCancelMode)
#define ON_WM_TIMER() FILMS_WM(WM_TIMER, Timer, OnTimer)
#define ON_WM_KEYDOWN() FILMS_WM(WM_KEYDOWN, Key, OnKeyDown)
#define ON_WM_KEYUP() FILMS_WM(WM_KEYUP, Key, OnKeyUp)
#define ON_WM_SYSKEYDOWN() FILMS_WM(WM_SYSKEYDOWN, Key, OnSysKeyDown)
#define ON_WM_SYSKEYUP() FILMS_WM(WM_SYSKEYUP, Key, OnSysKeyUp)
#define ON_WM_MOUSEMOVE() FILMS_WM(WM_MOUSEMOVE, Mouse, OnMouseMove)
#define ON_WM_MOUSEWHEEL() FILMS_WM(WM_MOUSEWHEEL, Wheel, OnMouseWheel)
#define ON_WM_MOUSELEAVE() FILMS_WM(WM_MOUSELEAVE, Plain, OnMouseLeave)
#define ON_WM_LBUTTONDOWN() FILMS_WM(WM_LBUTTONDOWN, Mouse, OnLButtonDown)
#define ON_WM_LBUTTONUP() FILMS_WM(WM_LBUTTONUP, Mouse, OnLButtonUp)
#define ON_WM_LBUTTONDBLCLK() FILMS_WM(WM_LBUTTONDBLCLK, Mouse, OnLButtonDblClk)
#define ON_WM_RBUTTONDOWN() FILMS_WM(WM_RBUTTONDOWN, Mouse, OnRButtonDown)
#define ON_WM_RBUTTONUP() FILMS_WM(WM_RBUTTONUP, Mouse, OnRButtonUp)
#define ON_WM_MBUTTONDOWN() FILMS_WM(WM_MBUTTONDOWN, Mouse, OnMButtonDown)
#define ON_WM_MBUTTONUP() FILMS_WM(WM_MBUTTONUP, Mouse, OnMButtonUp)
