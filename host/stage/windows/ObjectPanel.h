#pragma once

#include "host/stage/host/DrivenLight.h"
#include "host/stage/windows/LightFields.h"

#include <functional>
#include <QScrollArea>
#include <vector>

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QFormLayout;
class QGroupBox;
class QLabel;
class QLineEdit;

namespace engine {
struct ObjectNotes;
class SceneObject;
} // namespace engine

namespace stage {

class CameraFields;
class EditorHost;
class LabelField;
class ObjectCommands;
class ShapeFields;
class TransformFields;

/// Name, place, mesh, flags and body of the selected objects; the sun when nothing is selected. Where several
/// objects differ, the field says so, and an entry goes to all of them.
class ObjectPanel : public QScrollArea {
    Q_OBJECT
public:
    ObjectPanel(EditorHost& editorHost, ObjectCommands& objectCommands, QWidget* parent);

    /// Shows the present selection anew.
    void Refresh();
    /// Only the numbers that a film changes from frame to frame.
    void RefreshTransform();
    /// True when a film has begun or ceased to set something of the light on show.
    bool IsStale() const;

    QLineEdit* name;
    QLabel* classText;
    TransformFields* transform;
    QComboBox* parentBox;
    QComboBox* mesh;
    QCheckBox* visible;
    QCheckBox* locked;
    LightFields* light;
    LightFields* sun;
    ShapeFields* shape;
    CameraFields* camera;
    LabelField* label;

signals:
    /// The user wants to look through the selected camera.
    void LookRequested(int cameraId);

private:
    QWidget* MakeObjectPage();
    QWidget* MakeLevelPage();
    using Objects = std::vector<engine::SceneObject*>;

    void ShowObjects(const Objects& objects);
    void ShowPlaces(const Objects& objects);
    void ShowBodies(const Objects& objects);
    void ShowLevel();
    void FillParents(const Objects& objects);
    void FillMeshes(const Objects& objects);
    void ConnectFields();
    void ConnectBodies();
    void ConnectSun();
    DrivenLight DrivenNow() const;
    Objects Selected() const; ///< empty while the fields are being filled
    /// Runs a change for each selected object that is still there: a change may call plug-ins.
    void ForEach(const std::function<void(engine::SceneObject&)>& change);
    void ChangeNotes(const std::function<void(engine::ObjectNotes&)>& change);

    EditorHost& host;
    ObjectCommands& commands;
    QWidget* objectPage;
    QWidget* levelPage;
    QGroupBox* bodyBox = nullptr;
    QGroupBox* lightBox = nullptr;
    QGroupBox* sunBox = nullptr;
    QLabel* summary = nullptr;
    QFormLayout* form = nullptr;
    QDoubleSpinBox* sunHeading = nullptr;
    QDoubleSpinBox* sunHeight = nullptr;
    DrivenLight shownDriven;
    bool showing = false;
};

} // namespace stage
