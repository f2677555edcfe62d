#pragma once

#include <QToolButton>

namespace stage {

/// A button that shows a colour and lets the user choose another.
class ColorButton : public QToolButton {
    Q_OBJECT
public:
    explicit ColorButton(QWidget* parent);

    void SetColor(const QColor& newColor);
    QColor color;

signals:
    /// By the user, never by SetColor.
    void ColorChosen(const QColor& chosen);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace stage
