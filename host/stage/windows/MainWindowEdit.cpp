#include "host/engine/Units.h"
#include "host/stage/windows/Icons.h"
#include "host/stage/windows/MainWindow.h"
#include "host/stage/windows/MeshFiles.h"
#include "host/stage/windows/ObjectLook.h"
#include "host/stage/windows/ObjectTree.h"
#include "host/stage/windows/ViewArea.h"
#include "plugin/contract/ClassIds.h"

#include <QAction>
#include <QFileInfo>
#include <QInputDialog>
#include <QMenuBar>

namespace stage {

void MainWindow::MakeEditMenu() {
    QMenu* menu = menuBar()->addMenu(tr("&Edit"));
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
    meshMenu = menu->addMenu(MakeIcon(IconId::Mesh), tr("&Mesh"));
    connect(meshMenu, &QMenu::aboutToShow, this, &MainWindow::FillMeshMenu);
    menu->addSeparator();
    AddAction(
        *menu, tr("&Light"), {}, [this] { CreateObject(ClassName::GLLight, tr("Light"), {}); }, "CreateLight")
        ->setIcon(MakeIcon(IconId::Light));
    AddAction(
        *menu, tr("&Dynamic light"), {},
        [this] { CreateObject(ClassName::DynLight, tr("DynamicLight"), {}); }, "CreateDynamicLight")
        ->setIcon(MakeIcon(IconId::DynamicLight));
    AddAction(
        *menu, tr("&Empty"), {}, [this] { CreateObject("EmptyObject", tr("Empty"), {}); }, "CreateEmpty")
        ->setIcon(MakeIcon(IconId::Empty));
    AddAction(
        *menu, tr("&Sound emitter"), {}, [this] { CreateObject("SoundEmitter", tr("Sound"), {}); },
        "CreateSound")
        ->setIcon(MakeIcon(IconId::Sound));
}

void MainWindow::FillMeshMenu() {
    meshMenu->clear();
    for (const std::string& file : FindMeshFiles(host.level.Folder())) {
        const QString meshName = QString::fromStdString(file);
        connect(meshMenu->addAction(meshName), &QAction::triggered, this, [this, meshName] {
            CreateObject(ClassName::Mesh, QFileInfo(meshName).baseName(), meshName);
        });
    }
    if (meshMenu->isEmpty()) {
        const QString reason = host.level.Folder().empty()
                                   ? tr("Save the level first: meshes are found in its folder")
                                   : tr("No .glb or .gltf files in the level's folder");
        meshMenu->addAction(reason)->setEnabled(false);
    }
}

void MainWindow::CreateObject(const char* className, const QString& name, const QString& meshName) {
    engine::ObjectSpec spec;
    spec.className = className;
    spec.name = name.toStdString();
    spec.meshName = meshName.toStdString();
    Vector3 place = views->PlaceForNew();
    if (host.classes.IsDerivedFrom(className, ClassName::Helper)) {
        place.y += engine::Metres(2.0f); // a light on the ground would shine on nothing
    }
    spec.matrix.SetTranslation(place);
    if (engine::SceneObject* object = commands.Create(spec)) {
        if (object->Mesh() != nullptr && !object->Mesh()->Clips().empty()) {
            object->Info().SetClassName("SkinnedMeshObject");
            ObjectsChanged();
        }
    }
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
