#pragma once

#include <typeinfo>

class CWnd;
class TimelineContext;

/// The main control above a window that asks for it again and again, as a row does for each key of a film
/// that opens: the cast at run time takes ten times as long as to see that the parent is the one of the last
/// time.
class TimelineLink {
public:
    /// Null without one.
    TimelineContext* Of(const CWnd& child);

private:
    const CWnd* parent = nullptr;
    const std::type_info* type = nullptr; ///< a parent that is being destroyed has another
    TimelineContext* timeline = nullptr;
};
