#include "host/stage/windows/NumberDialog.h"

#include <array>
#include <charconv>
#include <limits>
#include <QDialogButtonBox>
#include <QLabel>
#include <QVBoxLayout>

namespace stage {

namespace {
/// Decimals of the smallest float that is not denormal, 1.17549435e-38.
constexpr int kDecimals = 46;
} // namespace

NumberField::NumberField(QWidget* parent) : QDoubleSpinBox(parent) {
    constexpr double kLargest = std::numeric_limits<float>::max();
    setDecimals(kDecimals);
    setRange(-kLargest, kLargest);
    setButtonSymbols(NoButtons);
}

QString NumberField::textFromValue(double number) const {
    std::array<char, 128> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), static_cast<float>(number),
                                   std::chars_format::fixed);
    return QString::fromLatin1(text.data(), static_cast<int>(end.ptr - text.data()))
        .replace('.', locale().decimalPoint());
}

NumberDialog::NumberDialog(const QString& title, const QString& prompt, float present, QWidget* parent)
    : QDialog(parent), field(new NumberField(this)) {
    setWindowTitle(title);
    auto* label = new QLabel(prompt, this);
    label->setBuddy(field);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(field);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    field->setValue(static_cast<double>(present));
    field->selectAll();
    field->setFocus();
}

std::optional<float> NumberDialog::Ask(const QString& title, const QString& prompt, float present,
                                       QWidget* parent) {
    NumberDialog dialog(title, prompt, present, parent);
    if (dialog.exec() != Accepted) {
        return std::nullopt;
    }
    return static_cast<float>(dialog.field->value());
}

} // namespace stage
