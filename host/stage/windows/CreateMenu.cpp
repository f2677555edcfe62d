#include "host/stage/windows/CreateMenu.h"

#include "host/engine/ClassDatabase.h"
#include "host/engine/mesh/GlmConvert.h"
#include "host/engine/Shape.h"
#include "host/engine/Units.h"
#include "host/stage/windows/Icons.h"
#include "host/stage/windows/MainWindow.h"
#include "host/stage/windows/MeshFiles.h"
#include "host/stage/windows/ObjectLook.h"
#include "host/stage/windows/ViewArea.h"
#include "plugin/contract/ClassIds.h"

#include <QAction>
#include <QFileInfo>
#include <QMenu>

namespace stage {

/// A thing to put into the level.
struct CreateEntry {
    const char* action; ///< name of the menu's action
    const char* text;
    IconId icon;
    const char* className;
    const char* objectName;
    float lift = 0.0f; ///< units above the place that is chosen
    const char* shape = nullptr;
};

namespace {

using engine::Metres;

/// Colours that stand out against sky, fog and each other.
constexpr CreateEntry kShapes[] = {
    {"CreateBox", QT_TR_NOOP("&Box"), IconId::Box, ClassName::Mesh, "Box", 0.0f,
     "shape:box 100 100 100 #c67b4f"},
    {"CreatePlane", QT_TR_NOOP("&Plane"), IconId::Plane, ClassName::Mesh, "Plane", 0.0f,
     "shape:plane 1000 1 1000 #4f6b43"},
    {"CreateSphere", QT_TR_NOOP("&Sphere"), IconId::Sphere, ClassName::Mesh, "Sphere", 0.0f,
     "shape:sphere 100 100 100 #4f8fc6"},
    {"CreateCylinder", QT_TR_NOOP("C&ylinder"), IconId::Cylinder, ClassName::Mesh, "Cylinder", 0.0f,
     "shape:cylinder 100 100 100 #6fa84f"},
    {"CreateCone", QT_TR_NOOP("&Cone"), IconId::Cone, ClassName::Mesh, "Cone", 0.0f,
     "shape:cone 100 100 100 #d1a13c"},
    {"CreateCapsule", QT_TR_NOOP("C&apsule"), IconId::Capsule, ClassName::Mesh, "Capsule", 0.0f,
     "shape:capsule 60 180 60 #a56bb0"},
};

constexpr CreateEntry kThings[] = {
    {"CreateCamera", QT_TR_NOOP("&Camera"), IconId::Camera, engine::kCameraClass, "Camera", Metres(1.6f)},
    {"CreateLabel", QT_TR_NOOP("&Text label"), IconId::Label, engine::kLabelClass, "Label", Metres(1.0f)},
    // A light on the ground would shine on nothing.
    {"CreateLight", QT_TR_NOOP("&Light"), IconId::Light, ClassName::GLLight, "Light", Metres(2.0f)},
    {"CreateDynamicLight", QT_TR_NOOP("&Dynamic light"), IconId::DynamicLight, ClassName::DynLight,
     "DynamicLight", Metres(2.0f)},
    {"CreateEmpty", QT_TR_NOOP("&Empty"), IconId::Empty, "EmptyObject", "Empty"},
    {"CreateSound", QT_TR_NOOP("S&ound emitter"), IconId::Sound, "SoundEmitter", "Sound"},
};

/// Upright, looking the way that a view looks.
engine::Matrix4 LookingAs(const StageView& view) {
    ViewNavigation level = view.navigation;
    level.pitch = 0.0f;
    return mesh::FromGlm(level.CameraMatrix());
}

} // namespace

CreateMenu::CreateMenu(MainWindow& mainWindow) : QObject(&mainWindow), window(mainWindow) {
}

void CreateMenu::Fill(QMenu& menu) {
    Append(
        menu, [this](const std::string& meshName) { return window.views->PlaceForNew(meshName); },
        /*named*/ true);
    menu.addSeparator();
    QAction* action = menu.addAction(MakeIcon(IconId::Camera), tr("Camera from &view"), this,
                                     &CreateMenu::CreateCameraFromView);
    action->setObjectName("CreateCameraFromView");
}

void CreateMenu::FillHere(QMenu& menu, const Vector3& place) {
    Append(
        menu, [place](const std::string&) { return place; }, /*named*/ false);
}

void CreateMenu::Append(QMenu& menu, const Where& where, bool named) {
    const auto add = [&](QMenu& target, const CreateEntry& entry) {
        QAction* action = target.addAction(MakeIcon(entry.icon), tr(entry.text), this, [this, entry, where] {
            Create(entry, where(entry.shape != nullptr ? entry.shape : ""));
        });
        action->setObjectName(named ? entry.action : "");
    };
    for (const CreateEntry& entry : kShapes) {
        add(menu, entry);
    }
    menu.addSeparator();
    QMenu* meshes = menu.addMenu(MakeIcon(IconId::Mesh), tr("&Mesh"));
    connect(meshes, &QMenu::aboutToShow, this, [this, meshes, where] { FillMeshes(*meshes, where); });
    for (const CreateEntry& entry : kThings) {
        add(menu, entry);
    }
}

void CreateMenu::FillMeshes(QMenu& menu, const Where& where) {
    menu.clear();
    const std::string& folder = window.host.level.Folder();
    for (const std::string& file : FindMeshFiles(folder)) {
        const QString meshName = QString::fromStdString(file);
        menu.addAction(MenuText(meshName), this,
                       [this, meshName, where] { CreateMesh(meshName, where(meshName.toStdString())); });
    }
    if (menu.isEmpty()) {
        const QString reason = folder.empty() ? tr("Save the level first: meshes are found in its folder")
                                              : tr("No .glb or .gltf files in the level's folder");
        menu.addAction(reason)->setEnabled(false);
    }
}

int CreateMenu::CreateMesh(const QString& meshName, const Vector3& place) {
    engine::ObjectSpec spec;
    spec.className = ClassName::Mesh;
    spec.name = QFileInfo(meshName).baseName().toStdString();
    spec.meshName = meshName.toStdString();
    spec.matrix.SetTranslation(place);
    engine::SceneObject* object = Create(spec);
    if (object != nullptr && object->Mesh() != nullptr && !object->Mesh()->Clips().empty()) {
        object->Info().SetClassName("SkinnedMeshObject");
        window.ObjectsChanged();
    }
    return object != nullptr ? object->id : 0;
}

void CreateMenu::Create(const CreateEntry& entry, const Vector3& place) {
    engine::ObjectSpec spec;
    spec.className = entry.className;
    spec.name = entry.objectName;
    spec.meshName = entry.shape != nullptr ? entry.shape : "";
    const StageView* view = window.host.views.At(window.ActiveView());
    if (spec.className == engine::kCameraClass && view != nullptr) {
        spec.matrix = LookingAs(*view);
    } else if (spec.className == engine::kLabelClass) {
        spec.notes.text = tr("Label").toStdString();
    }
    spec.matrix.SetTranslation({place.x, place.y + entry.lift, place.z});
    Create(spec);
}

void CreateMenu::CreateCameraFromView() {
    const StageView* view = window.host.views.At(window.ActiveView());
    if (view == nullptr) {
        return;
    }
    engine::ObjectSpec spec;
    spec.className = engine::kCameraClass;
    spec.name = "Camera";
    spec.matrix = mesh::FromGlm(view->CameraMatrix());
    spec.notes.fieldOfView = view->FieldOfView();
    Create(spec);
}

engine::SceneObject* CreateMenu::Create(const engine::ObjectSpec& spec) {
    engine::SceneObject* object = window.commands.Create(spec);
    if (object != nullptr) {
        window.Report(tr("%1 is in the level").arg(QString::fromStdString(object->name)).toStdString());
    }
    return object;
}

} // namespace stage
