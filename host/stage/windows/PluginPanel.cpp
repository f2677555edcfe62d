#include "host/stage/windows/PluginPanel.h"

#include <QAction>
#include <QCloseEvent>

namespace stage {

PluginPanel::PluginPanel(QWidget* parent) : QDockWidget(tr("Plug-in"), parent) {
    setObjectName("PluginDock");
    connect(toggleViewAction(), &QAction::triggered, this, [this](bool shown) {
        if (shown && widget() == nullptr) {
            emit OpenedByUser();
        }
    });
}

void PluginPanel::closeEvent(QCloseEvent* event) {
    event->accept();
    emit ClosedByUser();
}

} // namespace stage
