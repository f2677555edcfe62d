#include "host/stage/windows/films/FilmNameDialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

namespace stage {

namespace {

constexpr double kLongest = 3600.0; ///< seconds; longer films are made so in the settings

} // namespace

FilmNameDialog::FilmNameDialog(const QString& title, const QString& proposal, QStringList taken, bool isNew,
                               QWidget* parent)
    : QDialog(parent), others(std::move(taken)), name(new QLineEdit(proposal, this)), fault(new QLabel(this)),
      length(new QDoubleSpinBox(this)),
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
    camera->setChecked(isNew);
    auto* lengthLabel = new QLabel(tr("&Length in seconds"), this);
    lengthLabel->setBuddy(length);
    length->setObjectName("Length");
    length->setDecimals(2);
    length->setRange(0.1, kLongest);
    length->setValue(kNewLength);
    auto* lengthLine = new QHBoxLayout;
    lengthLine->addWidget(lengthLabel);
    lengthLine->addWidget(length, 1);
    for (QWidget* widget : std::initializer_list<QWidget*>{lengthLabel, length, camera}) {
        widget->setVisible(isNew);
    }
    auto* lines = new QVBoxLayout(this);
    for (QWidget* widget : std::initializer_list<QWidget*>{label, name, fault}) {
        lines->addWidget(widget);
    }
    lines->addLayout(lengthLine);
    lines->addWidget(camera);
    lines->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(name, &QLineEdit::textChanged, this, &FilmNameDialog::Check);
    setMinimumWidth(360);
    Check();
}

QString FilmNameDialog::Name() const {
    return name->text().trimmed();
}

double FilmNameDialog::Seconds() const {
    return length->value();
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
