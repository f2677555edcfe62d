#pragma once

#include "host/stage/host/DrivenLight.h"

#include <QScrollArea>

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QFormLayout;
class QGroupBox;
class QLabel;
class QLineEdit;

namespace engine {
class SceneObject;
struct LightProperties;
} // namespace engine

namespace stage {

class ColorButton;
class EditorHost;
class ObjectCommands;
class TransformFields;

/// Colour, strength and range of a light.
class LightFields : public QWidget {
    Q_OBJECT
public:
    explicit LightFields(QWidget* parent, bool withRange);

    void Show(const engine::LightProperties& light);
    /// The fields that the open film sets are grey, and a line says whose they are.
    void ShowDriven(const DrivenLight& driven);
    /// What is grey comes from the light as it shines now.
    engine::LightProperties Properties(const engine::LightProperties& present) const;

    QCheckBox* on;
    ColorButton* color;
    QDoubleSpinBox* intensity;
    QDoubleSpinBox* range;
    QLabel* belongs; ///< shown while a film drives the light

signals:
    /// By the user.
    void Changed();

private:
    void Tell();
    bool showing = false;
};

/// Name, place, mesh and flags of the selected object; the sun when nothing is selected.
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
    LightFields* light;
    LightFields* sun;

private:
    QWidget* MakeObjectPage();
    QWidget* MakeLevelPage();
    void ShowObject(engine::SceneObject& object);
    void ShowLevel();
    void FillParents(const engine::SceneObject& object);
    void FillMeshes(const engine::SceneObject& object);
    void ConnectFields();
    DrivenLight DrivenNow() const;
    engine::SceneObject* Object() const; ///< the one selected object, else null

    EditorHost& host;
    ObjectCommands& commands;
    QWidget* objectPage;
    QWidget* levelPage;
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
