#include "timeline/rows/TimelineContext.h"

TimelineContext* TimelineOf(const CWnd* child) {
    return child != nullptr ? dynamic_cast<TimelineContext*>(child->GetParent()) : nullptr;
}

TimelineContext* TimelineOf(const FilmSession& session) {
    IMainCtrl* control = session.GetMainCtrl();
    return control != nullptr ? control->GetTimeline() : nullptr;
}
