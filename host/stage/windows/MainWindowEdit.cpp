#include "host/stage/windows/CreateMenu.h"
#include "host/stage/windows/Icons.h"
#include "host/stage/windows/MainWindow.h"
#include "host/stage/windows/ObjectLook.h"
#include "host/stage/windows/ObjectTree.h"
#include "host/stage/windows/UndoCommands.h"
#include "host/stage/windows/ViewArea.h"
#include "plugin/contract/ClassIds.h"

#include <QAction>
#include <QInputDialog>
#include <QMenuBar>

namespace stage {

void MainWindow::MakeEditMenu() {
    QMenu* menu = menuBar()->addMenu(tr("&Edit"));
    undo->AddTo(*menu);
    menu->addSeparator();
    const auto add = [&](const QString& text, const QKeySequence& keys, std::function<void()> run,
                         const char* name) {
        QAction* action = AddAction(*menu, text, keys, run, name);
        selectionActions.append(action);
        return action;
    };
    add(
        tr("&Duplicate"), QKeySequence(Qt::CTRL | Qt::Key_D), [this] { DuplicateSelected(); },
        "EditDuplicate")
        ->setIcon(MakeIcon(IconId::Duplicate));
    add(
        tr("&Rename..."), QKeySequence(Qt::Key_F2), [this] { RenameSelected(); }, "EditRename");
    add(
        tr("De&lete"), QKeySequence(Qt::Key_Delete), [this] { commands.DeleteSelected(); }, "EditDelete")
        ->setIcon(MakeIcon(IconId::Delete));
    menu->addSeparator();
    add(
        tr("&Group"), QKeySequence(Qt::CTRL | Qt::Key_G),
        [this] {
            Report(commands.GroupSelected()
                       ? "Grouped"
                       : "Select two or more objects that are in no group to group them");
        },
        "EditGroup")
        ->setIcon(MakeIcon(IconId::Group));
    add(
        tr("&Ungroup"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_G),
        [this] {
            Report(commands.UngroupSelected() ? "Ungrouped" : "None of the selected objects is in a group");
        },
        "EditUngroup");
    menu->addSeparator();
    AddAction(
        *menu, tr("Select &all"), QKeySequence::SelectAll, [this] { SelectAll(); }, "EditSelectAll");
    add(
        tr("Select &nothing"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_A), [this] { host.Select({}); },
        "EditSelectNone");
}

void MainWindow::MakeCreateMenu() {
    QMenu* menu = menuBar()->addMenu(tr("&Create"));
    create = new CreateMenu(*this);
    create->Fill(*menu);
}

void MainWindow::DuplicateSelected() {
    const std::size_t selected = host.level.selection.size();
    const auto copied = static_cast<std::size_t>(commands.Duplicate());
    if (copied < selected) {
        Report(tr("%1 of %2 selected objects duplicated; what is kept with the films isn't")
                   .arg(copied)
                   .arg(selected)
                   .toStdString());
    }
}

void MainWindow::RenameSelected() {
    const std::vector<engine::SceneObject*> selected = commands.Selected();
    if (selected.empty()) {
        return;
    }
    engine::SceneObject* object = selected.front();
    const int id = object->id;
    bool accepted = false;
    const QString name = QInputDialog::getText(this, tr("Rename"), tr("Name"), QLineEdit::Normal,
                                               QString::fromStdString(object->name), &accepted);
    // The dialog ran a loop of its own, in which the object may have gone.
    object = host.level.FindObject(id);
    if (accepted && object != nullptr) {
        commands.Rename(*object, name.trimmed().toStdString());
    }
}

void MainWindow::SelectAll() {
    ObjectList all;
    host.level.CollectObjects(all);
    all.remove_if([](EditorObject* object) { return !IsListed(static_cast<engine::SceneObject&>(*object)); });
    host.Select(all);
    Report(all.empty() ? "The level has no objects to select"
                       : tr("All objects are selected: %1").arg(all.size()).toStdString());
}

} // namespace stage
