#pragma once

#include <vector>

class CTrackCtrl;
class CTrackKey;

/// Which keys the user has chosen, points at and works on, and the row of the menu. Pointers only, to views
/// and rows that others own: each is forgotten here before it is deleted (ForgetView and ForgetRow of the
/// main control).
class Selection {
public:
    /// A view that goes. The current key of the plug-in is let go of too.
    void Forget(const CTrackKey* view);
    /// A row that goes.
    void Forget(const CTrackCtrl* row);
    /// Every row and view goes at once.
    void ForgetAll();

    std::vector<CTrackKey*> selectedKeys; ///< oldest first
    CTrackKey* activeKey = nullptr;       ///< last told by a key view; written only
    CTrackKey* hoverKey = nullptr;        ///< whose description is shown or pending
    CTrackKey* menuKey = nullptr;         ///< under the last right click
    CTrackCtrl* menuRow = nullptr;        ///< under the last right click; menu commands work on it
    CTrackCtrl* adjustRow = nullptr;      ///< whose keys "Adjust time" moved last; written only
};

/// The key last pressed or last added, of the whole plug-in; null while there is none.
CTrackKey*& CurrentKey();
