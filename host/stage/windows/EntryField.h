#pragma once

#include "host/stage/host/NumberEntry.h"

#include <optional>
#include <QDoubleSpinBox>

namespace stage {

/// A number field that understands units and arithmetic, and that can stand for several different numbers.
/// It tells what the user enters when he leaves it or presses Enter.
class EntryField : public QDoubleSpinBox {
    Q_OBJECT
public:
    EntryField(QWidget* parent, NumberKind numberKind);

    /// Shows a number, without `Entered`.
    void Show(double number);
    /// Shows that the numbers behind the field differ; it stays so until one is entered.
    void ShowMixed();
    bool IsMixed() const { return mixed; }

    QValidator::State validate(QString& text, int& place) const override;
    double valueFromText(const QString& text) const override;
    QString textFromValue(double number) const override;
    void fixup(QString& text) const override;

signals:
    /// By the user; also the very number that the field held before it was mixed.
    void Entered(double number);

protected:
    StepEnabled stepEnabled() const override;

private:
    void Finish();
    std::optional<double> Evaluate(const QString& text) const;

    const NumberKind kind;
    QString typed; ///< by the user into a mixed field
    bool mixed = false;
    bool showing = false;
};

} // namespace stage
