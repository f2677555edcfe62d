#pragma once

#include "framework/DC.h"
#include "framework/DrawCall.h"

#include <span>

// Hands drawing calls to the test hook; costs one test when there is none.
namespace recording {

void Note(const CDC& dc, DrawKind kind, const CRect& rect);
void NoteFill(const CDC& dc, const CRect& rect, COLORREF color, DrawKind kind = DrawKind::FillRect);
void NotePolygon(const CDC& dc, std::span<const CPoint> points);
void NoteText(const CDC& dc, const CRect& rect, const std::string& text, UINT format);

} // namespace recording
