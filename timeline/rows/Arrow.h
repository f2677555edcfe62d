#pragma once

#include "framework/DC.h"

#include <array>

/// The outline of a mark's or the cursor's arrow in a rect, in drawing order.
std::array<CPoint, 8> ArrowPoints(const CRect& rect, bool pointsUp);

/// Draws the arrow with a black outline.
void DrawArrow(CDC* dc, const CRect& rect, bool pointsUp, COLORREF color);
