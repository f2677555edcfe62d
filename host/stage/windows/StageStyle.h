#pragma once

#include <QProxyStyle>

namespace stage {

/// Fusion with a clear arrow at the end of a toolbar that has no room for all of its buttons, and with
/// buttons of docks in the colours of the theme, sharp at any scale.
class StageStyle : public QProxyStyle {
    Q_OBJECT
public:
    StageStyle();

    QIcon standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
};

} // namespace stage
