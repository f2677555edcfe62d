#pragma once

#include "host/stage/windows/assets/AssetFiles.h"
#include "plugin/contract/Types.h"

#include <QObject>

class QDockWidget;
class QMimeData;

namespace stage {

class AssetPanel;
class CreateMenu;
class FileWatch;
class ImportFiles;
class MainWindow;
class ModelWatch;

/// The panel "Assets" with the level: it follows the level's folder, and what is chosen or dropped there
/// comes into the level.
class Assets : public QObject {
    Q_OBJECT
public:
    Assets(MainWindow& mainWindow, CreateMenu& createMenu, ImportFiles& importFiles);

    /// Lists the files anew if the level has another folder; cheap if not.
    void FollowLevel();
    /// Lists the files anew.
    void Rescan();
    /// Says in a box where the open level uses an asset; it offers to select the objects.
    void ShowUses(const Asset& asset);
    /// Lists the files that the level misses, to be found; says so if there are none.
    void ShowMissing();
    /// The same, offered without a box if there are any.
    void OfferMissing();

    bool eventFilter(QObject* watched, QEvent* event) override;

    QDockWidget* dock;
    AssetPanel* panel;

private:
    void Place(const std::string& name, const Vector3& place);
    /// What a drop onto a view does, or why there is none; empty for what is not of the panel.
    QString WordsFor(const QMimeData& data) const;
    bool CanPlace(const QMimeData& data) const;

    MainWindow& window;
    CreateMenu& create;
    FileWatch* watch; ///< of the folders
    ModelWatch* models;
    std::string folder;
};

} // namespace stage
