#pragma once

#include "framework/Types.h"

class CTrackKey;
class CWnd;
class IFilmKey;
class TimelineContext;

/// The popup that describes the key under the mouse: it comes after a while, follows the mouse and goes. A
/// member of the main control, whose hoverKey and keyDescrWnd it moves by; nothing happens without the popup.
class KeyHover {
public:
    /// Both are the control.
    KeyHover(TimelineContext& around, CWnd& newWindow) : timeline(around), window(newWindow) {}

    /// The key under the mouse, or null.
    void Show(CTrackKey* key);
    /// A timer of the control has run off.
    void OnTimer(UINT_PTR id);
    /// Popup and delays end, and no key is hovered.
    void Stop();

private:
    void DescribeKey(const IFilmKey& record) const;
    void MovePopupToCursor(bool onTop) const;
    void TakeFocus() const;

    TimelineContext& timeline;
    CWnd& window;
};
