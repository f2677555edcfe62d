#pragma once

#include "plugin/contract/Types.h"

#include <QObject>
#include <QStringList>

namespace stage {

class CreateMenu;
class MainWindow;

/// Brings models and sounds into the level: by a dialog, or dropped onto a view. Models stand where they were
/// dropped, or before the active view.
class ImportFiles : public QObject {
    Q_OBJECT
public:
    ImportFiles(MainWindow& mainWindow, CreateMenu& createMenu);

    /// Asks for the files.
    void Ask();
    /// Copies the files into the level's folder and puts the models next to each other at a place. What can't
    /// be imported is told in one box. The number of files that came in.
    int Import(const QStringList& paths, const Vector3& place);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    MainWindow& window;
    CreateMenu& create;
};

} // namespace stage
