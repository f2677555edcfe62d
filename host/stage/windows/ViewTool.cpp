#include "host/stage/windows/ViewTool.h"

#include "host/stage/host/EditorHost.h"
#include "host/stage/host/ObjectCommands.h"
#include "host/stage/windows/ViewArea.h"

#include <algorithm>

namespace stage {

void ViewTool::Choose(const ObjectList& found, Qt::KeyboardModifiers modifiers) {
    const ObjectList met = area.commands.WithGroups(found);
    if (!(modifiers & (Qt::ShiftModifier | Qt::ControlModifier))) {
        area.host.Select(met);
        return;
    }
    ObjectList chosen = area.host.level.selection;
    for (EditorObject* object : met) {
        const auto present = std::find(chosen.begin(), chosen.end(), object);
        if (present == chosen.end()) {
            chosen.push_back(object);
        } else if (modifiers & Qt::ControlModifier) {
            chosen.erase(present);
        }
    }
    area.host.Select(chosen);
}

bool ViewTool::Hover(const StageView&, const QPointF&) {
    return false;
}
bool ViewTool::Leave() {
    return false;
}
bool ViewTool::Press(const StageView&, const QPointF&) {
    return false;
}
void ViewTool::Drag(const StageView&, const QPointF&, bool) {
}
void ViewTool::Release() {
}
void ViewTool::Cancel() {
}

} // namespace stage
