#include "host/stage/windows/MainWindow.h"

#include <QMenuBar>

namespace stage {

void MainWindow::MakePluginMenu() {
    pluginMenu = menuBar()->addMenu(tr("&Plug-ins"));
}
void MainWindow::FillPluginMenu() {
}
void MainWindow::ShowMenu(int, EditorObject*, const QPoint&) {
}
void MainWindow::ShowPanel(const CRuntimeClass*) {
}
void MainWindow::HidePanel() {
}
bool MainWindow::IsPanelShown() {
    return false;
}
bool MainWindow::AddToolbar(CToolBar*, unsigned) {
    return false;
}
void MainWindow::RemoveToolbar(CToolBar*) {
}
void MainWindow::ShortcutsChanged() {
}

} // namespace stage
