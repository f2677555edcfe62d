#pragma once

#include "host/stage/windows/assets/AssetFiles.h"

#include <QAbstractListModel>
#include <QSortFilterProxyModel>

namespace stage {

class AssetPictures;

/// The assets as a list for views: a picture or the sign of the kind, and the name. All can be dragged,
/// models to stand where they are dropped.
class AssetModel : public QAbstractListModel {
    Q_OBJECT
public:
    /// Of dragged models: the path as UTF-8.
    static constexpr const char* kMime = "application/x-stage-model";
    /// Of what has no place in a view: the name as UTF-8.
    static constexpr const char* kSoundMime = "application/x-stage-sound";
    static constexpr const char* kEffectMime = "application/x-stage-effect";

    AssetModel(AssetPictures& assetPictures, QObject* parent);

    /// Another list; where it is the same as before, nothing moves.
    void Set(std::vector<Asset> shown, const std::string& levelFolder);
    const std::vector<Asset>& Assets() const { return assets; }
    const Asset& At(const QModelIndex& index) const { return assets[static_cast<std::size_t>(index.row())]; }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QStringList mimeTypes() const override { return {kMime, kSoundMime, kEffectMime}; }
    QMimeData* mimeData(const QModelIndexList& indexes) const override;

private:
    QString TipOf(const Asset& asset) const;

    AssetPictures& pictures;
    std::vector<Asset> assets;
    std::string folder;
};

/// Those of the assets that are of a kind and have all words of a search in their names.
class AssetFilter : public QSortFilterProxyModel {
    Q_OBJECT
public:
    explicit AssetFilter(AssetModel& assetModel);
    /// None stands for all kinds.
    void SetKind(AssetKind wanted);
    void SetSearch(const QString& text);

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

private:
    AssetModel& model;
    AssetKind kind = AssetKind::None;
    QStringList words;
};

} // namespace stage
