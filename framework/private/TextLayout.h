#pragma once

#include "framework/Types.h"

#include <QStringList>

namespace surface {
class Face;
}

// How DrawText breaks and shortens its text.
namespace text_layout {

// The lines to draw, prefixes removed, wrapped and shortened to `width` pixels as the DT_ flags of `format`
// say.
QStringList Lines(const QString& text, surface::Face& face, int width, UINT format);

// A mnemonic's '&' vanishes and "&&" becomes one.
QString WithoutPrefix(const QString& text);

// Keeps the part behind the last separator of a path, of either kind, and shortens what stands before it.
QString PathEllipsis(const QString& text, surface::Face& face, int width);

} // namespace text_layout
