#pragma once

#include "framework/Types.h"

#include <QStringList>

#include <string>

namespace surface {
class Face;
struct DrawnText;
struct TextLine;
} // namespace surface

// How DrawText breaks and shortens its text.
namespace text_layout {

// The lines to draw of a text of several lines, prefixes removed, wrapped at `width` pixels as the DT_ flags
// of `format` say.
QStringList Lines(const QString& text, surface::Face& face, int width, UINT format);

// A mnemonic's '&' vanishes and "&&" becomes one.
QString WithoutPrefix(const QString& text);

// The line to draw of a text that stays on one line, as above.
surface::DrawnText SingleLine(const std::string& text, surface::Face& face, int width, UINT format);

// Keeps the part behind the last separator of a path, of either kind, and shortens what stands before it.
surface::DrawnText PathEllipsis(surface::TextLine& line, surface::Face& face, int width);

} // namespace text_layout
