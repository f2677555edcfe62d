#pragma once

#include "host/stage/windows/ToolWindowDock.h"

#include <QObject>

class CDialog;
class QMainWindow;
class QMenu;

namespace stage {

/// Gives the plug-ins' modeless windows a home in the main window and remembers, per user, where each stood.
/// Owned by the main window.
class ToolWindows : public QObject {
    Q_OBJECT
public:
    explicit ToolWindows(QMainWindow& mainWindow);
    ~ToolWindows() override;

    /// From now on each new tool window is docked here; the last main window to ask gets them.
    void Attach();
    void Detach();
    /// Where the windows are listed, at the end.
    void SetMenu(QMenu* menu) { list = menu; }
    /// Writes all places to the user's settings.
    void SavePlaces();
    /// Destroys the windows; their docks go with them.
    void DestroyAll();
    QList<ToolWindowDock*> Docks() const;

private:
    void Adopt(CDialog& dialog);
    QString NameFor(const QString& title) const;
    void Restore(ToolWindowDock& dock);
    void FitExtent(ToolWindowDock& dock);
    void Save(const ToolWindowDock& dock);

    QMainWindow& main;
    QMenu* list = nullptr;
};

} // namespace stage
