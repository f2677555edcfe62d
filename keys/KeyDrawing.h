#pragma once

#include "framework/DC.h"

/// Gives the surface another pen, brush or font and puts the old one back at the end of the scope.
template <class Object> class SelectionScope {
public:
    SelectionScope(CDC& surface, Object& object) : dc(surface), old(surface.SelectObject(&object)) {}
    ~SelectionScope() { dc.SelectObject(old); }
    SelectionScope(const SelectionScope&) = delete;
    SelectionScope& operator=(const SelectionScope&) = delete;

private:
    CDC& dc;
    Object* old;
};

/// Marks a key that follows the mouse: a frame of the selected pen, 5 pixels around the rect, cut to the clip
/// if there is one.
void DrawKeyOutline(CDC& dc, const CRect& rect, const CRect* clip);
