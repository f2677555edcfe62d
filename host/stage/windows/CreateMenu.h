#pragma once

#include "host/engine/LevelData.h"

#include <functional>
#include <QObject>
#include <QString>

class QMenu;

namespace stage {

class MainWindow;
struct CreateEntry;

/// What a user can put into a level: shapes, meshes, lights, cameras, labels and places. Serves the menu
/// "Create", where things come before the active view, and "Add here" in the menu of a view.
class CreateMenu : public QObject {
    Q_OBJECT
public:
    explicit CreateMenu(MainWindow& mainWindow);

    /// Fills the menu for good; its entries have names for scripts.
    void Fill(QMenu& menu);
    /// Fills a menu that is shown once; what is chosen stands at the place, in the world.
    void FillHere(QMenu& menu, const Vector3& place);
    /// Makes an object with a mesh of the level's folder. Its id, 0 without a level.
    int CreateMesh(const QString& meshName, const Vector3& place);
    /// A camera that stands and looks as the active view does.
    void CreateCameraFromView();

private:
    using Where = std::function<Vector3(const std::string& meshName)>;

    void Append(QMenu& menu, const Where& where, bool named);
    void FillMeshes(QMenu& menu, const Where& where);
    void Create(const CreateEntry& entry, const Vector3& place);
    engine::SceneObject* Create(const engine::ObjectSpec& spec);

    MainWindow& window;
};

} // namespace stage
