#include "host/stage/windows/PickDialog.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace stage {

PickDialog::PickDialog(const PickList& pickList, QWidget* parent)
    : QDialog(parent), search(new QLineEdit(this)), list(new QListWidget(this)), freeText(pickList.freeText) {
    setWindowTitle(pickList.title);
    auto* hint = new QLabel(pickList.hint, this);
    hint->setProperty("role", "hint");
    hint->setVisible(!pickList.hint.isEmpty());
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    ok = buttons->button(QDialogButtonBox::Ok);
    search->setPlaceholderText(freeText ? tr("Search, or type a name") : tr("Search"));
    search->setClearButtonEnabled(true);
    list->addItems(pickList.names);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(hint);
    layout->addWidget(search);
    layout->addWidget(list, 1);
    layout->addWidget(buttons);
    connect(search, &QLineEdit::textChanged, this, &PickDialog::Filter);
    connect(list, &QListWidget::currentRowChanged, this, &PickDialog::UpdateButtons);
    connect(list, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    const QList<QListWidgetItem*> present = list->findItems(pickList.present, Qt::MatchExactly);
    if (!present.isEmpty()) {
        list->setCurrentItem(present.front());
    } else if (freeText) {
        search->setText(pickList.present);
    }
    resize(340, 420);
    UpdateButtons();
}

void PickDialog::Filter(const QString& text) {
    for (int row = 0; row < list->count(); ++row) {
        list->item(row)->setHidden(!list->item(row)->text().contains(text, Qt::CaseInsensitive));
    }
    if (list->currentItem() != nullptr && list->currentItem()->isHidden()) {
        list->setCurrentItem(nullptr);
    }
    UpdateButtons();
}

void PickDialog::UpdateButtons() {
    ok->setEnabled(!Chosen().isEmpty());
}

QString PickDialog::Chosen() const {
    if (list->currentItem() != nullptr) {
        return list->currentItem()->text();
    }
    return freeText ? search->text().trimmed() : QString();
}

std::optional<QString> PickDialog::Pick(const PickList& pickList, QWidget* parent) {
    PickDialog dialog(pickList, parent);
    if (dialog.exec() != Accepted || dialog.Chosen().isEmpty()) {
        return std::nullopt;
    }
    return dialog.Chosen();
}

} // namespace stage
