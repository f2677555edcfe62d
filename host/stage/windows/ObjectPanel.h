#pragma once

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
    engine::LightProperties Properties() const;

    QCheckBox* on;
    ColorButton* color;
    QDoubleSpinBox* intensity;
    QDoubleSpinBox* range;

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
    bool showing = false;
};

} // namespace stage
