#include "timeline/rows/MarkDrag.h"

#include "timeline/rows/MarkedGridCtrl.h"
#include "timeline/rows/TimelineContext.h"

#include <utility>

void MarkDrag::Hold(CMark& mark) {
    dragMark = &mark;
    dragMarkTime = mark.time;
}

void MarkDrag::Begin(TimelineContext& timeline) {
    timeline.SaveKeyTimes();
}

void MarkDrag::Update(TimelineContext& timeline, float time) {
    timeline.ShiftKeysAtMark(dragMark->time, time);
    dragMark->time = time;
}

CMark* MarkDrag::End(TimelineContext& timeline, bool keep) {
    timeline.RestoreKeyTimes(keep);
    CMark* mark = dragMark;
    Drop();
    return mark;
}

void MarkDrag::Drop() {
    dragMark = nullptr;
    dragMarkTime = -1.0f;
}
