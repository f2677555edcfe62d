#pragma once

#include "host/stage/windows/assets/AssetModel.h"

#include <functional>
#include <QWidget>

class QButtonGroup;
class QLabel;
class QLineEdit;
class QListView;

namespace stage {

class AssetPictures;
class AssetPlayer;

/// The list of the project's models, sounds and effects, with pictures, a search and their kinds to choose
/// from. It knows nothing of the level: what is to be done with an asset is asked for.
class AssetPanel : public QWidget {
    Q_OBJECT
public:
    explicit AssetPanel(QWidget* parent);

    /// What there is; without a level's folder only effects, and the panel says what to do.
    void Show(std::vector<Asset> assets, const std::string& levelFolder);
    /// What a double click does: models are placed, others play.
    void Activate(const QModelIndex& index);
    AssetPictures& Pictures() { return *pictures; }

    /// Opens a folder in the desktop's own program.
    std::function<void(const QString& folder)> openFolder;

    QLineEdit* search;
    QListView* list;
    QLabel* hint; ///< what to do where there is little or nothing to see
    AssetPlayer* player;

signals:
    void PlaceRequested(const Asset& asset);
    void UsesRequested(const Asset& asset);
    void ImportRequested();

private:
    QWidget* MakeKinds();
    void MakeList();
    void ShowMenu(const QPoint& place);
    void UpdateHint();
    const Asset* AssetAt(const QModelIndex& index) const;

    AssetPictures* pictures;
    AssetModel* model;
    AssetFilter* filter;
    QButtonGroup* kinds;
    bool hasFolder = false;
};

} // namespace stage
