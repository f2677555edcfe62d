#include "host/stage/windows/assets/MissingDialog.h"

#include "host/stage/host/EditorHost.h"
#include "host/stage/host/LevelSession.h"

#include <algorithm>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace stage {

namespace {

constexpr QSize kSize(640, 380);
constexpr std::size_t kMostUsers = 4; ///< in a line; the tip has more

QString Joined(const std::vector<std::string>& names, std::size_t most) {
    QStringList texts;
    for (std::size_t i = 0; i < std::min(most, names.size()); ++i) {
        texts << QString::fromStdString(names[i]);
    }
    const QString text = texts.join(", ");
    return names.size() > most ? MissingDialog::tr("%1 and %2 more").arg(text).arg(names.size() - most)
                               : text;
}

} // namespace

MissingDialog::MissingDialog(EditorHost& editorHost, LevelSession& levelSession, QWidget* parent)
    : QDialog(parent), list(new QTreeWidget(this)), result(new QLabel(this)), host(editorHost),
      session(levelSession) {
    setObjectName("MissingDialog");
    setWindowTitle(tr("Missing files"));
    askFile = [this](const QString& title, const QString& filter) {
        return QFileDialog::getOpenFileName(this, title, QString::fromStdString(host.level.Folder()), filter);
    };
    askFolder = [this](const QString& title) {
        return QFileDialog::getExistingDirectory(this, title, QString::fromStdString(host.level.Folder()));
    };
    list->setHeaderLabels({tr("File"), tr("Needed by")});
    list->setRootIsDecorated(false);
    list->setUniformRowHeights(true);
    list->header()->resizeSection(0, kSize.width() / 2);
    result->setWordWrap(true);
    result->setProperty("role", "hint");
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    find = buttons->addButton(tr("&Find..."), QDialogButtonBox::ActionRole);
    findInFolder = buttons->addButton(tr("Find in f&older..."), QDialogButtonBox::ActionRole);
    connect(find, &QPushButton::clicked, this, &MissingDialog::Find);
    connect(findInFolder, &QPushButton::clicked, this, &MissingDialog::FindInFolder);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(list, &QTreeWidget::itemDoubleClicked, this, &MissingDialog::Find);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(list, 1);
    layout->addWidget(result);
    layout->addWidget(buttons);
    resize(kSize);
    Fill();
}

void MissingDialog::Fill() {
    missing = FindMissing(host);
    list->clear();
    for (const MissingAsset& asset : missing) {
        auto* line =
            new QTreeWidgetItem(list, {QString::fromStdString(asset.name), Joined(asset.users, kMostUsers)});
        line->setToolTip(0, QString::fromStdString(asset.reason));
        line->setToolTip(1, Joined(asset.users, asset.users.size()));
    }
    list->setCurrentItem(list->topLevelItem(0));
    find->setEnabled(!missing.empty());
    findInFolder->setEnabled(!missing.empty());
}

void MissingDialog::Find() {
    const int line = list->indexOfTopLevelItem(list->currentItem());
    if (line < 0) {
        return;
    }
    const MissingAsset asset = missing[static_cast<std::size_t>(line)];
    const QString path = askFile(tr("Find %1").arg(QString::fromStdString(asset.name)),
                                 asset.kind == AssetKind::Model ? tr("Models (*.glb *.gltf)")
                                                                : tr("Sounds (*.wav *.ogg *.flac)"));
    if (!path.isEmpty()) {
        Take({{{asset.kind, asset.name}, path.toStdString()}});
    }
}

void MissingDialog::FindInFolder() {
    const QString folder = askFolder(tr("Find missing files in a folder"));
    if (!folder.isEmpty()) {
        Take(stage::FindInFolder(missing, folder.toStdString()));
    }
}

void MissingDialog::Take(const AssetPaths& paths) {
    const std::size_t before = missing.size();
    const int places = PointTo(host, session, paths);
    Fill();
    const std::size_t found = before > missing.size() ? before - missing.size() : 0;
    if (!paths.empty() && places == 0) {
        result->setText(tr("Stop the film first: nothing was changed."));
    } else if (paths.empty()) {
        result->setText(tr("No file there is called so."));
    } else if (found < paths.size()) {
        result->setText(tr("Found: %1. The other files can't be used; the tips tell why.").arg(found));
    } else {
        result->setText(missing.empty() ? tr("All files are found.")
                                        : tr("Found: %1. Still missing: %2.").arg(found).arg(missing.size()));
    }
}

} // namespace stage
