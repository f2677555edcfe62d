#include "host/stage/windows/RecoverDialog.h"

#include <QDateTime>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QLabel>
#include <QLocale>
#include <QMessageBox>
#include <QPushButton>
#include <QVBoxLayout>

namespace stage {

namespace {

QString LineOf(const FoundWork& found) {
    if (!found.error.empty()) {
        return RecoverDialog::tr("%1: %2").arg(QString::fromStdString(found.file),
                                               QString::fromStdString(found.error));
    }
    const QString path = QString::fromStdString(found.work.path);
    const QString name = path.isEmpty() ? RecoverDialog::tr("Untitled") : QFileInfo(path).completeBaseName();
    const QString when =
        QLocale().toString(QDateTime::fromSecsSinceEpoch(found.work.when), QLocale::ShortFormat);
    return (found.work.discarded ? RecoverDialog::tr("%1, not saved when asked, %2")
                                 : RecoverDialog::tr("%1, of a Stage that ended unexpectedly, %2"))
        .arg(name, when);
}

} // namespace

RecoverDialog::RecoverDialog(std::vector<FoundWork> foundWork, QWidget* parent)
    : QDialog(parent), list(new QListWidget(this)), found(std::move(foundWork)) {
    setObjectName("RecoverWork");
    setWindowTitle(tr("Recover work"));
    for (const FoundWork& work : found) {
        auto* item = new QListWidgetItem(LineOf(work), list);
        item->setToolTip(QString::fromStdString(work.work.path.empty() ? work.file : work.work.path));
    }
    list->setCurrentRow(0);
    auto* buttons = new QDialogButtonBox(this);
    recover = buttons->addButton(tr("Recover"), QDialogButtonBox::AcceptRole);
    remove = buttons->addButton(tr("Delete"), QDialogButtonBox::DestructiveRole);
    buttons->addButton(tr("Not now"), QDialogButtonBox::RejectRole);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(
        new QLabel(tr("This work was not saved. Recovered work is saved to its own level."), this));
    layout->addWidget(list);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(remove, &QPushButton::clicked, this, &RecoverDialog::RemoveChosen);
    connect(list, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    connect(list, &QListWidget::currentRowChanged, this, &RecoverDialog::UpdateButtons);
    UpdateButtons();
    resize(560, 240);
}

FoundWork* RecoverDialog::Chosen() {
    const int row = list->currentRow();
    return row >= 0 && row < static_cast<int>(found.size()) ? &found[static_cast<std::size_t>(row)] : nullptr;
}

void RecoverDialog::UpdateButtons() {
    recover->setEnabled(Chosen() != nullptr);
    remove->setEnabled(Chosen() != nullptr);
}

void RecoverDialog::RemoveChosen() {
    FoundWork* chosen = Chosen();
    if (chosen == nullptr ||
        QMessageBox::question(this, windowTitle(), tr("Delete this work for good?")) != QMessageBox::Yes) {
        return;
    }
    WorkFolder::Remove(*chosen);
    const int row = list->currentRow();
    found.erase(found.begin() + row);
    delete list->takeItem(row);
    UpdateButtons();
}

} // namespace stage
