#pragma once

#include <optional>
#include <QDialog>
#include <QDoubleSpinBox>

namespace stage {

/// A field for a float: shows as many digits as the number needs and no more, and takes all that are typed.
class NumberField : public QDoubleSpinBox {
    Q_OBJECT
public:
    explicit NumberField(QWidget* parent);
    QString textFromValue(double value) const override;
};

/// Asks for one number.
class NumberDialog : public QDialog {
    Q_OBJECT
public:
    NumberDialog(const QString& title, const QString& prompt, float present, QWidget* parent);

    /// The number; nothing on cancel. One that was left as it stood comes back to the last bit.
    static std::optional<float> Ask(const QString& title, const QString& prompt, float present,
                                    QWidget* parent);

    NumberField* field;
};

} // namespace stage
