#pragma once

#include <functional>
#include <QList>
#include <QObject>

class QAction;
class QMenu;

namespace stage {

class ViewArea;
struct SnapSettings;

/// The choices of what a drag keeps to: switches for the tool bar and a menu with the steps. Remembered per
/// user.
class SnapMenu : public QObject {
    Q_OBJECT
public:
    explicit SnapMenu(ViewArea& viewArea);

    void Fill(QMenu& menu);
    /// The switches, in the order of the tool bar.
    const QList<QAction*>& Switches() const { return switches; }

private:
    void AddSteps(QMenu& menu, const QString& title, const QList<double>& steps, const QString& unit,
                  float SnapSettings::*step, const char* name);
    void Save() const;
    void Load();

    ViewArea& area;
    QList<QAction*> switches;
};

} // namespace stage
