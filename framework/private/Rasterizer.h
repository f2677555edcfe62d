#pragma once

#include "framework/Types.h"

#include <span>

// The pixel rules of lines, polygons and rectangles, free of any toolkit. Results are horizontal or vertical
// runs in integer pixels, already cut to the clip rect.
namespace raster {

// A run of w by h pixels. `gap` marks the space between the dashes of a pen.
struct Run {
    int x = 0;
    int y = 0;
    int w = 1;
    int h = 1;
    bool gap = false;
};
// Takes the runs one by one.
class Sink {
public:
    virtual ~Sink() = default;
    virtual void Take(const Run& run) = 0;
};

struct Pen {
    int style = 0;
    int width = 1;
};

// From `from` up to, and without, `to`. `phase` counts the pixels since the dashes began and is carried on.
void Line(CPoint from, CPoint to, const Pen& pen, const CRect& clip, int& phase, Sink& sink);

// The inside by the even-odd rule, without the outline.
void FillPolygon(std::span<const CPoint> points, const CRect& clip, Sink& sink);

// The frame of a normalised rect whose right and bottom edges are excluded.
void Frame(const CRect& rect, const Pen& pen, const CRect& clip, Sink& sink);

} // namespace raster
