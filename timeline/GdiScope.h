#pragma once

#include "framework/DC.h"

/// Selects a pen, brush, font or bitmap into a surface for as long as it lives, then puts back the one of
/// before.
template <class Object> class GdiScope {
public:
    GdiScope(CDC* surface, Object* object) : dc(surface), old(surface->SelectObject(object)) {}
    ~GdiScope() { dc->SelectObject(old); }
    GdiScope(const GdiScope&) = delete;
    GdiScope& operator=(const GdiScope&) = delete;

private:
    CDC* dc;
    Object* old;
};
