#pragma once

#include "framework/SelectionScope.h"

/// "Arial" of 8 points: the font of everything that rows and small windows write. Shared, made at first use.
CFont& TimelineFont();

/// Marks a key that follows the mouse: a frame of the selected pen, 5 pixels around the rect, cut to the clip
/// if there is one.
void DrawKeyOutline(CDC& dc, const CRect& rect, const CRect* clip);
