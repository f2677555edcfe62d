#include "host/stage/host/ObjectCopies.h"
#include "host/stage/windows/assets/Assets.h"
#include "host/stage/windows/CreateMenu.h"
#include "host/stage/windows/Icons.h"
#include "host/stage/windows/ImportFiles.h"
#include "host/stage/windows/MainWindow.h"
#include "host/stage/windows/ObjectLook.h"
#include "host/stage/windows/ObjectTree.h"
#include "host/stage/windows/UndoCommands.h"
#include "host/stage/windows/ViewArea.h"
#include "plugin/contract/ClassIds.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDockWidget>
#include <QInputDialog>
#include <QMenuBar>
#include <QMimeData>
#include <set>

namespace stage {

namespace {

constexpr const char* kObjectsMime = "application/x-stage-objects";

void CopySelected(MainWindow& window) {
    const std::string bytes = CopyObjects(window.host.level, window.commands.Selected());
    if (bytes.empty()) {
        window.Report("None of what is selected can be copied");
        return;
    }
    auto* data = new QMimeData; // the clipboard's own
    data->setData(kObjectsMime, QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size())));
    QApplication::clipboard()->setMimeData(data);
    window.Report("Copied; Ctrl+V puts it into this or another level");
}

void PasteCopied(MainWindow& window) {
    const QMimeData* data = QApplication::clipboard()->mimeData();
    const QByteArray bytes = data != nullptr ? data->data(kObjectsMime) : QByteArray();
    const int count =
        PasteObjects(window.host, window.session, {bytes.data(), static_cast<std::size_t>(bytes.size())});
    window.Report(count > 0 ? MainWindow::tr("Pasted: %1").arg(count).toStdString()
                            : "There are no objects to paste");
}

} // namespace

void MainWindow::MakeEditMenu() {
    QMenu* menu = menuBar()->addMenu(tr("&Edit"));
    undo->AddTo(*menu);
    menu->addSeparator();
    const auto add = [&](const QString& text, const QKeySequence& keys, const std::function<void()>& run,
                         const char* name) {
        QAction* action = AddAction(*menu, text, keys, run, name);
        selectionActions.append(action);
        return action;
    };
    add(
        tr("&Duplicate"), QKeySequence(Qt::CTRL | Qt::Key_D), [this] { DuplicateSelected(); },
        "EditDuplicate")
        ->setIcon(MakeIcon(IconId::Duplicate));
    // These keys mean something else in the windows of plug-ins.
    for (QAction* action :
         {add(
              tr("&Copy"), QKeySequence::Copy, [this] { CopySelected(*this); }, "EditCopy"),
          AddAction(
              *menu, tr("&Paste"), QKeySequence::Paste, [this] { PasteCopied(*this); }, "EditPaste")}) {
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        views->addAction(action);
        tree->addAction(action);
    }
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
    add(
        tr("Select same &kind"), {}, [this] { SelectSameKind(); }, "EditSelectKind");
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
    auto* import = new ImportFiles(*this, *create);
    menu->addSeparator();
    AddAction(
        *menu, tr("&Import models and sounds..."), QKeySequence(Qt::CTRL | Qt::Key_I),
        [import] { import->Ask(); }, "CreateImport");
    assets = new Assets(*this, *create, *import);
    tabifyDockWidget(treeDock, assets->dock);
    treeDock->raise();
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
    if (const engine::Group* group = commands.SelectedGroup();
        group != nullptr && tree->tree->EditName(*group)) {
        return;
    }
    if (tree->tree->EditName(*object)) {
        return;
    }
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

void MainWindow::SelectSameKind() {
    std::set<std::string> kinds;
    for (const engine::SceneObject* object : commands.Selected()) {
        kinds.insert(object->Info().className);
    }
    ObjectList all;
    host.level.CollectObjects(all);
    all.remove_if([&](EditorObject* object) {
        const auto& scene = static_cast<engine::SceneObject&>(*object);
        return !IsListed(scene) || kinds.count(scene.Info().className) == 0;
    });
    host.Select(all);
    Report(tr("Objects of the same kind are selected: %1").arg(all.size()).toStdString());
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
