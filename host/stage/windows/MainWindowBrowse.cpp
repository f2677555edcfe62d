#include "host/engine/mesh/Mesh.h"
#include "host/stage/windows/browse/AnimationBrowser.h"
#include "host/stage/windows/browse/MeshElementBrowser.h"
#include "host/stage/windows/MainWindow.h"

#include <glm/gtc/type_ptr.hpp>
#include <QApplication>

namespace stage {

namespace {

BrowsedObject LookAt(EditorHost& host, const EditorObject* object) {
    BrowsedObject browsed;
    if (!host.Contains(object)) {
        return browsed;
    }
    const auto& scene = static_cast<const engine::SceneObject&>(*object);
    browsed.exists = true;
    browsed.name = QString::fromStdString(scene.name);
    browsed.meshName = QString::fromStdString(scene.meshName);
    browsed.mesh = host.meshes.FindFile(scene.meshName);
    browsed.meshError = QString::fromStdString(host.meshes.ErrorOf(scene.meshName));
    if (browsed.mesh != nullptr && scene.Pose() != nullptr && scene.Mesh() != nullptr &&
        scene.Mesh()->Elements().size() == browsed.mesh->nodes.size()) {
        for (std::size_t i = 0; i < browsed.mesh->nodes.size(); ++i) {
            browsed.pose.push_back(glm::make_mat4(scene.Pose()[i].m));
        }
    }
    return browsed;
}

/// Runs a browser of this object; it closes when the object goes.
std::optional<std::string> Browse(const MainWindow& window, const EditorObject* object,
                                  MeshBrowser* browser) {
    QObject::connect(&window, &MainWindow::ObjectGoing, browser,
                     [object, browser](const EditorObject* going) {
                         if (going == object) {
                             browser->ObjectGone();
                         }
                     });
    return MeshBrowser::Run(browser);
}

} // namespace

QWidget* MainWindow::AskingWindow() {
    QWidget* active = QApplication::activeWindow();
    return active != nullptr && active->windowType() == Qt::Dialog ? active : this;
}

std::optional<std::string> MainWindow::BrowseMeshElement(EditorObject* object, const std::string& present) {
    return Browse(*this, object, new MeshElementBrowser(LookAt(host, object), present, AskingWindow()));
}

std::optional<std::string> MainWindow::BrowseMeshAnimation(EditorObject* object, const std::string& present) {
    return Browse(*this, object, new AnimationBrowser(LookAt(host, object), present, AskingWindow()));
}

} // namespace stage
