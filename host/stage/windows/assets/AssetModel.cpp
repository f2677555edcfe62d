#include "host/stage/windows/assets/AssetModel.h"

#include "host/stage/windows/assets/AssetPictures.h"
#include "host/stage/windows/Icons.h"

#include <algorithm>
#include <QFileInfo>
#include <QMimeData>

namespace stage {

namespace {

IconId SignOf(AssetKind kind) {
    return kind == AssetKind::Model ? IconId::Mesh : kind == AssetKind::Sound ? IconId::Sound : IconId::Sun;
}

QString ShortName(const Asset& asset) {
    const QString name = QString::fromStdString(asset.name);
    return asset.kind == AssetKind::Effect ? name : QFileInfo(name).completeBaseName();
}

} // namespace

AssetModel::AssetModel(AssetPictures& assetPictures, QObject* parent)
    : QAbstractListModel(parent), pictures(assetPictures) {
    connect(&pictures, &AssetPictures::Made, this, [this](const QString& path) {
        const auto found = std::ranges::find(assets, path.toStdString(), &Asset::path);
        if (found != assets.end()) {
            const QModelIndex changed = index(static_cast<int>(found - assets.begin()));
            emit dataChanged(changed, changed, {Qt::DecorationRole, Qt::ToolTipRole});
        }
    });
}

void AssetModel::Set(std::vector<Asset> shown, const std::string& levelFolder) {
    if (shown == assets && folder == levelFolder) {
        emit dataChanged(index(0), index(rowCount() - 1), {Qt::DecorationRole}); // files may be others
        return;
    }
    beginResetModel();
    assets = std::move(shown);
    folder = levelFolder;
    endResetModel();
}

int AssetModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(assets.size());
}

QString AssetModel::TipOf(const Asset& asset) const {
    const QString what = asset.kind == AssetKind::Model
                             ? tr("Drag it into a view, or double-click to place it")
                             : tr("Double-click to play it");
    const QString error = pictures.ErrorOf(asset);
    return QString::fromStdString(asset.name) + '\n' + (error.isEmpty() ? what : error);
}

QVariant AssetModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount()) {
        return {};
    }
    const Asset& asset = At(index);
    switch (role) {
    case Qt::DisplayRole:
        return ShortName(asset);
    case Qt::ToolTipRole:
        return TipOf(asset);
    case Qt::DecorationRole: {
        const QPixmap picture = pictures.Get(asset, folder);
        return picture.isNull() ? MakeIcon(SignOf(asset.kind)) : QIcon(picture);
    }
    default:
        return {};
    }
}

Qt::ItemFlags AssetModel::flags(const QModelIndex& index) const {
    if (!index.isValid()) {
        return Qt::NoItemFlags;
    }
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled;
}

QMimeData* AssetModel::mimeData(const QModelIndexList& indexes) const {
    if (indexes.isEmpty()) {
        return nullptr;
    }
    const Asset& asset = At(indexes.front());
    const bool isModel = asset.kind == AssetKind::Model;
    auto* data = new QMimeData; // the drag's own
    data->setData(isModel                          ? kMime
                  : asset.kind == AssetKind::Sound ? kSoundMime
                                                   : kEffectMime,
                  QByteArray::fromStdString(isModel ? asset.path : asset.name));
    return data;
}

AssetFilter::AssetFilter(AssetModel& assetModel) : QSortFilterProxyModel(&assetModel), model(assetModel) {
    setSourceModel(&model);
}

void AssetFilter::SetKind(AssetKind wanted) {
    kind = wanted;
    invalidateFilter();
}

void AssetFilter::SetSearch(const QString& text) {
    words = text.split(' ', Qt::SkipEmptyParts);
    invalidateFilter();
}

bool AssetFilter::filterAcceptsRow(int row, const QModelIndex&) const {
    const Asset& asset = model.Assets()[static_cast<std::size_t>(row)];
    const QString name = QString::fromStdString(asset.name);
    return (kind == AssetKind::None || kind == asset.kind) &&
           std::ranges::all_of(words,
                               [&](const QString& word) { return name.contains(word, Qt::CaseInsensitive); });
}

} // namespace stage
