#pragma once

#include <QRect>

namespace stage {

/// The rect inside the area: moved, and made smaller if it must be. `frame` is what the window manager adds
/// around it, in pixels of width and height.
QRect FitInto(const QRect& wanted, const QRect& area, const QSize& frame);

} // namespace stage
