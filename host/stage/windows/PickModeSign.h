#pragma once

#include "framework/PickMode.h"

class QLabel;
class QStatusBar;

namespace stage {

class ViewArea;

/// Says in the status bar, and by the cursor over the views, what a plug-in waits for the user to choose.
class PickModeSign final : public IPickModeHost {
public:
    /// Both must outlive this.
    PickModeSign(QStatusBar& statusBar, ViewArea& viewArea);
    ~PickModeSign() override;

    void ShowPickMode(const PickMode* mode) override;
    /// A drag with the gizmo ends first.
    bool NeedsEscape() const override;

private:
    QStatusBar& bar;
    ViewArea& views;
    QLabel* label; ///< owned by the bar
};

} // namespace stage
