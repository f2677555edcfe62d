#include "host/stage/windows/PressedButtons.h"

#include <QAction>
#include <QRegularExpression>
#include <QToolBar>

namespace stage {

PressedButtons::PressedButtons(const QWidget& window) {
    static const QRegularExpression kPluginBars("^PluginBar");
    for (const QToolBar* bar : window.findChildren<QToolBar*>(kPluginBars)) {
        for (QAction* action : bar->actions()) {
            if (action->isChecked()) {
                buttons.emplace_back(action);
            }
        }
    }
}

/// What a press calls may let any of them go.
void PressedButtons::PressAgain() const {
    for (const QPointer<QAction>& button : std::vector<QPointer<QAction>>(buttons)) {
        if (button != nullptr && !button->isChecked() && button->isEnabled()) {
            button->trigger();
        }
    }
}

} // namespace stage
