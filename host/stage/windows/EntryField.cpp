#include "host/stage/windows/EntryField.h"

#include <algorithm>
#include <QLineEdit>
#include <utility>

namespace stage {

EntryField::EntryField(QWidget* parent, NumberKind numberKind) : QDoubleSpinBox(parent), kind(numberKind) {
    setKeyboardTracking(false);
    setLocale(QLocale::c());
    connect(this, &QDoubleSpinBox::valueChanged, this, [this](double number) {
        if (!showing) {
            Show(number);
            emit Entered(number);
        }
    });
    connect(lineEdit(), &QLineEdit::textEdited, this, [this](const QString& text) { typed = text; });
    connect(this, &QDoubleSpinBox::editingFinished, this, &EntryField::Finish);
}

void EntryField::Show(double number) {
    showing = true;
    const bool wasMixed = std::exchange(mixed, false);
    if (wasMixed) {
        lineEdit()->setPlaceholderText(QString());
        lineEdit()->setText(textFromValue(value()) + suffix());
    }
    setValue(number);
    showing = false;
}

void EntryField::ShowMixed() {
    if (mixed && hasFocus() && !typed.isEmpty()) {
        return; // the user is typing
    }
    showing = true;
    mixed = true;
    lineEdit()->setPlaceholderText(tr("mixed"));
    lineEdit()->clear();
    typed.clear();
    showing = false;
}

void EntryField::Finish() {
    // The number may be the one that the field still holds, which is no change to a spin box.
    const std::optional<double> number = mixed ? Evaluate(std::exchange(typed, QString())) : std::nullopt;
    if (number) {
        Show(std::clamp(*number, minimum(), maximum()));
        emit Entered(value());
    }
}

QAbstractSpinBox::StepEnabled EntryField::stepEnabled() const {
    return mixed ? StepEnabled(StepNone) : QDoubleSpinBox::stepEnabled();
}

/// Behind what is typed the field keeps its own unit, which counts only where no other is named: "6m cm".
std::optional<double> EntryField::Evaluate(const QString& text) const {
    const std::optional<double> number = EvaluateEntry(text.toStdString(), kind);
    const bool hasUnit = !suffix().isEmpty() && text.endsWith(suffix());
    return number || !hasUnit ? number : EvaluateEntry(text.chopped(suffix().size()).toStdString(), kind);
}

QValidator::State EntryField::validate(QString& text, int& /*place*/) const {
    const std::optional<double> number = Evaluate(text);
    const bool inRange = number && *number >= minimum() && *number <= maximum();
    return inRange ? QValidator::Acceptable : QValidator::Intermediate;
}

double EntryField::valueFromText(const QString& text) const {
    return Evaluate(text).value_or(value());
}

QString EntryField::textFromValue(double number) const {
    return mixed ? QString() : QLocale::c().toString(number, 'f', decimals()).remove(',');
}

/// What is out of range goes to its end; what can't be understood is dropped.
void EntryField::fixup(QString& text) const {
    if (mixed && text.trimmed().isEmpty()) {
        return;
    }
    const std::optional<double> number = Evaluate(text);
    text = textFromValue(std::clamp(number.value_or(value()), minimum(), maximum())) + suffix();
}

} // namespace stage
