#pragma once

class CMark;
class TimelineContext;

/// The drag of a mark of the ruler, which takes along the keys that stand at it.
class MarkDrag {
public:
    /// The press on the mark; it is drawn as dragged from here on.
    void Hold(CMark& mark);
    /// Notes where the keys come from, once the ruler has the mouse.
    void Begin(TimelineContext& timeline);
    /// Seconds.
    void Update(TimelineContext& timeline, float time);
    /// The answer is the mark, which the drag has let go. A mark that isn't kept is to be deleted; the keys
    /// that it carried are back where they were.
    CMark* End(TimelineContext& timeline, bool keep);
    /// The mark goes.
    void Drop();

    CMark* dragMark = nullptr;  ///< one of the ruler's marks
    float dragMarkTime = -1.0f; ///< seconds, where the drag began
};
