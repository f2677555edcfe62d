#include "timeline/rows/TimelineLink.h"

#include "timeline/rows/TimelineContext.h"

TimelineContext* TimelineLink::Of(const CWnd& child) {
    CWnd* present = child.GetParent();
    if (present == nullptr) {
        return nullptr;
    }
    const std::type_info& presentType = typeid(*present);
    if (present != parent || type == nullptr || presentType != *type) {
        parent = present;
        type = &presentType;
        timeline = dynamic_cast<TimelineContext*>(present);
    }
    return timeline;
}
