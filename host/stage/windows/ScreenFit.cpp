#include "host/stage/windows/ScreenFit.h"

#include <algorithm>

namespace stage {

QRect FitInto(const QRect& wanted, const QRect& area, const QSize& frame) {
    const QSize size = wanted.size().boundedTo(area.size() - frame);
    const int left = std::clamp(wanted.left(), area.left(), area.left() + area.width() - size.width());
    const int top = std::clamp(wanted.top(), area.top(), area.top() + area.height() - size.height());
    return {QPoint(left, top), size};
}

} // namespace stage
