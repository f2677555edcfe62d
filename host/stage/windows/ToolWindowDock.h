#pragma once

#include "framework/QtBridge.h"
#include "framework/Types.h"

#include <QDockWidget>
#include <QPointer>

namespace stage {

/// Where a tool window stands. Kept per user, by the title that the window was made with.
struct ToolWindowPlace {
    Qt::DockWidgetArea area = Qt::BottomDockWidgetArea;
    bool isFloating = false;
    QRect floating; ///< screen coordinates of the whole dock; invalid: not floated yet
    int extent = 0; ///< pixels away from the main window's edge while docked; 0: not docked yet
};

/// A plug-in's modeless window inside Stage's main window, docked or floating. The window notices nothing:
/// it shows, hides, closes and destroys itself, and the dock follows. Belongs to the main window and deletes
/// itself when its window is destroyed.
class ToolWindowDock : public QDockWidget, public IWindowFrame {
    Q_OBJECT
public:
    /// `window` is a hidden top-level window. `name` is the dock's own name in the main window's state.
    ToolWindowDock(CWnd& window, const QString& name, QWidget* mainWindow);
    ~ToolWindowDock() override;

    /// Null once it is destroyed.
    CWnd* Window() const { return content; }
    /// The present place, which the dock notes while the user changes it.
    ToolWindowPlace place;
    /// Until then the dock's comings and goings are not the user's.
    bool isPlaced = false;
    bool isFitted = false; ///< has been given its first docked size

    // IWindowFrame
    void ContentShown(bool shown) override;
    void RaiseContent(bool activate) override;
    void PlaceContent(const CRect& wanted) override;
    void ContentGone() override;
    bool IsPanel() const override { return !isFloating(); }
    bool IsCovered() const override;

signals:
    /// The window has come up; the main window is not laid out anew yet.
    void Shown();
    /// The place is final: the window goes.
    void PlaceChanged();

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    bool eventFilter(QObject* receiver, QEvent* event) override;

private:
    void FloatingChanged(bool floating);
    void FocusMoved(QWidget* old, QWidget* now);
    void FocusContent();
    void ApplySmallestSize();
    void AskForSize(const QRect& before);
    void NotePlace();
    QRect ContentRect() const;

    CWnd* content;
    QPointer<QWidget> widget;      ///< of the window
    QPointer<QWidget> lastFocus;   ///< inside the window
    QPointer<QWidget> focusBefore; ///< outside of it, when the keyboard came in
    QSize wantedSize;              ///< of the window itself, before the user changed it
    QRect lastContentRect;         ///< screen coordinates
    QSize lastSize;                ///< of the dock
};

} // namespace stage
