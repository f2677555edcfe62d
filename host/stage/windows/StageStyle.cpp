#include "host/stage/windows/StageStyle.h"

#include "host/stage/windows/Icons.h"

namespace stage {

StageStyle::StageStyle() : QProxyStyle("Fusion") {
}

QIcon StageStyle::standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const {
    switch (icon) {
    case SP_ToolBarHorizontalExtensionButton:
        return MakeIcon(IconId::MoreRight);
    case SP_ToolBarVerticalExtensionButton:
        return MakeIcon(IconId::MoreBelow);
    // Of docks; the toolkit's own are dark pixels of one size.
    case SP_TitleBarCloseButton:
        return MakeIcon(IconId::CloseWindow);
    case SP_TitleBarNormalButton:
        return MakeIcon(IconId::FloatWindow);
    default:
        return QProxyStyle::standardIcon(icon, option, widget);
    }
}

int StageStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    constexpr int kArrowWidth = 22; // pixels: as easy to hit as a button
    return metric == PM_ToolBarExtensionExtent ? kArrowWidth
                                               : QProxyStyle::pixelMetric(metric, option, widget);
}

} // namespace stage
