#include "timeline/TimelineContext.h"

#include "plugin/PluginImpl.h"
#include "timeline/FilmsMainCtrl.h"

#include <typeinfo>

TimelineContext* TimelineOf(const CWnd* child) {
    CWnd* parent = child != nullptr ? child->GetParent() : nullptr;
    // Asked for every key of a film that opens: the cast at run time takes ten times as long.
    if (parent != nullptr && typeid(*parent) == typeid(CFilmsMainCtrl)) {
        return static_cast<CFilmsMainCtrl*>(parent);
    }
    return dynamic_cast<TimelineContext*>(parent);
}

TimelineContext* TimelineOf(const FilmSession& session) {
    IMainCtrl* control = session.GetMainCtrl();
    return control != nullptr ? control->GetTimeline() : nullptr;
}

TimelineContext* GetTimeline() {
    return TimelineOf(GetPlugin());
}
