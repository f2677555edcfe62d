#include "host/stage/windows/PluginPanel.h"

#include <QCloseEvent>

namespace stage {

PluginPanel::PluginPanel(QWidget* parent) : QDockWidget(tr("Plug-in"), parent) {
    setObjectName("PluginDock");
}

void PluginPanel::closeEvent(QCloseEvent* event) {
    event->accept();
    emit ClosedByUser();
}

} // namespace stage
