#include "host/stage/windows/films/FilmNameDialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

namespace stage {

FilmNameDialog::FilmNameDialog(const QString& title, const QString& proposal, QStringList taken,
                               bool offersCamera, QWidget* parent)
    : QDialog(parent), others(std::move(taken)), name(new QLineEdit(proposal, this)), fault(new QLabel(this)),
      camera(new QCheckBox(tr("Add a &camera here, as the active view stands"), this)),
      buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this)) {
    setObjectName("FilmName");
    setWindowTitle(title);
    auto* label = new QLabel(tr("&Name of the film"), this);
    label->setBuddy(name);
    name->setObjectName("Name");
    name->selectAll();
    fault->setProperty("role", "hint");
    camera->setObjectName("Camera");
    camera->setChecked(offersCamera);
    camera->setVisible(offersCamera);
    auto* lines = new QVBoxLayout(this);
    for (QWidget* widget : std::initializer_list<QWidget*>{label, name, fault, camera, buttons}) {
        lines->addWidget(widget);
    }
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(name, &QLineEdit::textChanged, this, &FilmNameDialog::Check);
    setMinimumWidth(360);
    Check();
}

QString FilmNameDialog::Name() const {
    return name->text().trimmed();
}

bool FilmNameDialog::WantsCamera() const {
    return camera->isChecked();
}

void FilmNameDialog::Check() {
    const QString text = Name();
    fault->setText(text.isEmpty()          ? tr("A film needs a name.")
                   : others.contains(text) ? tr("Another film has this name.")
                                           : QString());
    buttons->button(QDialogButtonBox::Ok)->setEnabled(fault->text().isEmpty());
}

} // namespace stage
