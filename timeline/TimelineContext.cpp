#include "timeline/TimelineContext.h"

#include "plugin/PluginImpl.h"

TimelineContext* TimelineOf(const CWnd* child) {
    return child != nullptr ? dynamic_cast<TimelineContext*>(child->GetParent()) : nullptr;
}

TimelineContext* GetTimeline() {
    IMainCtrl* control = GetPlugin().GetMainCtrl();
    return control != nullptr ? control->GetTimeline() : nullptr;
}
