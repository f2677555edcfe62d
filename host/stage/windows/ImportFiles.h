#pragma once

#include "plugin/contract/Types.h"

#include <functional>
#include <QObject>
#include <QStringList>
#include <string>

class QMimeData;

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
    /// Where a model stands, whose name is told.
    using Where = std::function<Vector3(const std::string& meshName)>;
    /// Copies the files into the level's folder and puts the models next to each other, from the place of the
    /// first one on. What can't be imported is told in one box. The number of files that came in.
    int Import(const QStringList& paths, const Where& where);
    /// The first one at the place itself.
    int Import(const QStringList& paths, const Vector3& place) {
        return Import(paths, [place](const std::string&) { return place; });
    }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// What a drop of the files onto a view does, or what it needs.
    QString WordsFor(const QMimeData& data) const;

    MainWindow& window;
    CreateMenu& create;
};

} // namespace stage
