#pragma once

#include "framework/PickMode.h"

#include <QString>

class QLabel;
class QStatusBar;

namespace stage {

class ViewArea;

/// Says in the status bar what a plug-in waits for the user to choose, with another cursor over the views, or
/// else what Stage itself waits for.
class PickModeSign final : public IPickModeHost {
public:
    /// Both must outlive this.
    PickModeSign(QStatusBar& statusBar, ViewArea& viewArea);
    ~PickModeSign() override;

    void ShowPickMode(const PickMode* mode) override;
    /// What a view waits for, and what a drag in a list does; empty if nothing. A drag's comes at once,
    /// others when the line that tells what has happened has gone.
    void ShowViewMode(const QString& text, bool isDrag);
    void ShowListMode(const QString& text);
    /// A drag in a view ends first.
    bool NeedsEscape() const override;

private:
    void Show(bool atOnce);
    void ShowOwn();

    QStatusBar& bar;
    ViewArea& views;
    QLabel* label; ///< of plug-ins; owned by the bar
    QLabel* own;   ///< of Stage; owned by the bar
    QString viewMode;
    QString listMode;
    bool isPicking = false;
};

} // namespace stage
