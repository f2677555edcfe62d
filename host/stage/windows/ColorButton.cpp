#include "host/stage/windows/ColorButton.h"

#include <QColorDialog>
#include <QPainter>

namespace stage {

ColorButton::ColorButton(QWidget* parent) : QToolButton(parent), color(Qt::white) {
    setMinimumSize(64, 24);
    setToolTip(tr("Choose a colour"));
    connect(this, &QToolButton::clicked, this, [this] {
        const QColor chosen = QColorDialog::getColor(color, window(), tr("Colour"));
        if (chosen.isValid()) {
            SetColor(chosen);
            emit ColorChosen(chosen);
        }
    });
}

void ColorButton::SetColor(const QColor& newColor) {
    color = newColor;
    update();
}

void ColorButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(palette().color(QPalette::Mid), 1));
    painter.setBrush(isEnabled() ? color : palette().color(QPalette::Window));
    painter.drawRoundedRect(QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5), 4, 4);
}

} // namespace stage
