#pragma once

#include "framework/DC.h"

/// Selects a pen, brush, font or bitmap into a surface for as long as it lives, then puts back the one of
/// before.
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
