#include "host/stage/windows/ObjectPanel.h"

#include "host/engine/ClassDatabase.h"
#include "host/engine/Shape.h"
#include "host/stage/host/EditorHost.h"
#include "host/stage/host/ObjectCommands.h"
#include "host/stage/windows/BodyFields.h"
#include "host/stage/windows/EntryField.h"
#include "host/stage/windows/MeshFiles.h"
#include "host/stage/windows/ObjectLook.h"
#include "host/stage/windows/TransformFields.h"

#include <algorithm>
#include <cmath>
#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace stage {

namespace {
constexpr double kDegrees = 57.29577951308232;

EntryField* AngleField(QWidget* parent, double least, double most) {
    auto* field = new EntryField(parent, NumberKind::Angle);
    field->setRange(least, most);
    field->setSuffix(QString(QChar(0x00b0)));
    field->setDecimals(1);
    field->setSingleStep(5.0);
    return field;
}

/// A box that several objects share: partly checked where they differ, and without that state for the user.
void ShowCheck(QCheckBox& box, int checked, std::size_t all) {
    if (checked == 0 || static_cast<std::size_t>(checked) == all) {
        box.setTristate(false);
        box.setChecked(checked != 0);
    } else {
        box.setCheckState(Qt::PartiallyChecked);
    }
}

template <class Test> int CountIf(const std::vector<engine::SceneObject*>& objects, Test test) {
    return static_cast<int>(std::ranges::count_if(objects, test));
}

bool IsCamera(const engine::SceneObject* object) {
    return object->Info().className == engine::kCameraClass;
}

bool IsLabel(const engine::SceneObject* object) {
    return object->Info().className == engine::kLabelClass;
}

bool IsShape(const engine::SceneObject* object) {
    return engine::ShapeOf(object->meshName).has_value();
}

QString MeshText(const std::string& meshName) {
    const QString text = QString::fromStdString(meshName);
    return engine::ShapeOf(meshName) ? ObjectPanel::tr("Shape") : ObjectPanel::tr("%1 (missing)").arg(text);
}
} // namespace

ObjectPanel::ObjectPanel(EditorHost& editorHost, ObjectCommands& objectCommands, QWidget* parent)
    : QScrollArea(parent), host(editorHost), commands(objectCommands) {
    setObjectName("ObjectPanel");
    setWidgetResizable(true);
    setFrameShape(NoFrame);
    auto* content = new QWidget(this);
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(10, 10, 10, 10);
    objectPage = MakeObjectPage();
    levelPage = MakeLevelPage();
    layout->addWidget(objectPage);
    layout->addWidget(levelPage);
    layout->addStretch(1);
    setWidget(content);
    ConnectFields();
    Refresh();
}

QWidget* ObjectPanel::MakeObjectPage() {
    auto* page = new QWidget(this);
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    form = new QFormLayout;
    name = new QLineEdit(page);
    name->setObjectName("ObjectName");
    classText = new QLabel(page);
    classText->setProperty("role", "hint");
    transform = new TransformFields(page);
    parentBox = new QComboBox(page);
    mesh = new QComboBox(page);
    mesh->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    parentBox->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    visible = new QCheckBox(tr("Visible"), page);
    locked = new QCheckBox(tr("Locked"), page);
    locked->setObjectName("ObjectLocked");
    locked->setToolTip(tr("Clicks in the views pass over it"));
    form->addRow(tr("Name"), name);
    form->addRow(QString(), classText);
    form->addRow(transform);
    form->addRow(tr("Parent"), parentBox);
    form->addRow(tr("Mesh"), mesh);
    form->addRow(QString(), visible);
    form->addRow(QString(), locked);
    bodyBox = new QGroupBox(tr("Body"), page);
    auto* bodies = new QVBoxLayout(bodyBox);
    shape = new ShapeFields(bodyBox);
    camera = new CameraFields(bodyBox);
    label = new LabelField(bodyBox);
    bodies->addWidget(shape);
    bodies->addWidget(camera);
    bodies->addWidget(label);
    lightBox = new QGroupBox(tr("Light"), page);
    light = new LightFields(lightBox, true);
    (new QVBoxLayout(lightBox))->addWidget(light);
    layout->addLayout(form);
    layout->addWidget(bodyBox);
    layout->addWidget(lightBox);
    return page;
}

QWidget* ObjectPanel::MakeLevelPage() {
    auto* page = new QWidget(this);
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    summary = new QLabel(page);
    summary->setProperty("role", "hint");
    summary->setWordWrap(true);
    sunBox = new QGroupBox(tr("Sun"), page);
    auto* sunLayout = new QVBoxLayout(sunBox);
    auto* angles = new QFormLayout;
    sunHeading = AngleField(sunBox, -180.0, 180.0);
    sunHeight = AngleField(sunBox, -90.0, 90.0);
    angles->addRow(tr("Direction"), sunHeading);
    angles->addRow(tr("Height"), sunHeight);
    sun = new LightFields(sunBox, false);
    sunLayout->addLayout(angles);
    sunLayout->addWidget(sun);
    layout->addWidget(summary);
    layout->addWidget(sunBox);
    return page;
}

void ObjectPanel::ForEach(const std::function<void(engine::SceneObject&)>& change) {
    std::vector<int> ids;
    for (const engine::SceneObject* object : Selected()) {
        ids.push_back(object->id);
    }
    for (const int id : ids) {
        if (engine::SceneObject* object = host.level.FindObject(id)) {
            change(*object);
        }
    }
}

void ObjectPanel::ChangeNotes(const std::function<void(engine::ObjectNotes&)>& change) {
    ForEach([&](engine::SceneObject& object) {
        engine::ObjectNotes notes = object.notes;
        change(notes);
        commands.SetNotes(object, notes);
    });
}

void ObjectPanel::ConnectFields() {
    connect(name, &QLineEdit::editingFinished, this, [this] {
        const Objects selected = Selected();
        if (selected.size() == 1 &&
            !commands.Rename(*selected.front(), name->text().trimmed().toStdString())) {
            name->setText(QString::fromStdString(selected.front()->name));
        }
    });
    connect(transform, &TransformFields::Changed, this, [this](int row, int axis, double number) {
        const Objects selected = Selected();
        std::vector<ObjectMove> moves;
        for (engine::SceneObject* object : selected) {
            // The numbers of a single object's fields are as the user typed them.
            moves.push_back({object, selected.size() == 1
                                         ? transform->Matrix()
                                         : TransformFields::With(object->World(), row, axis, number)});
        }
        commands.Move(std::move(moves));
    });
    connect(parentBox, &QComboBox::activated, this, [this](int row) {
        const int parentId = parentBox->itemData(row).toInt();
        const std::string refusal = commands.SetParent(Selected(), host.level.FindObject(parentId));
        if (!refusal.empty()) {
            host.windows.Report(refusal);
            Refresh();
        }
    });
    connect(mesh, &QComboBox::activated, this, [this](int row) {
        const std::string chosen = mesh->itemData(row).toString().toStdString();
        ForEach([&](engine::SceneObject& object) { commands.SetMesh(object, chosen); });
    });
    connect(visible, &QCheckBox::stateChanged, this, [this](int state) {
        ForEach([&](engine::SceneObject& object) { commands.SetVisible(object, state != Qt::Unchecked); });
    });
    connect(locked, &QCheckBox::stateChanged, this, [this](int state) {
        ChangeNotes([state](engine::ObjectNotes& notes) { notes.locked = state != Qt::Unchecked; });
    });
    ConnectBodies();
    ConnectSun();
}

void ObjectPanel::ConnectBodies() {
    connect(shape, &ShapeFields::Entered, this, [this] {
        ForEach([&](engine::SceneObject& object) {
            if (const std::optional<engine::Shape> present = engine::ShapeOf(object.meshName)) {
                commands.SetMesh(object, engine::ShapeName(shape->Changed(*present)));
            }
        });
    });
    connect(camera, &CameraFields::AngleEntered, this, [this](float angle) {
        ChangeNotes([angle](engine::ObjectNotes& notes) { notes.fieldOfView = angle; });
    });
    connect(camera, &CameraFields::LookRequested, this, [this] {
        const Objects selected = Selected();
        if (selected.size() == 1) {
            emit LookRequested(selected.front()->id);
        }
    });
    connect(label, &LabelField::TextEntered, this, [this](const QString& text) {
        ChangeNotes([&](engine::ObjectNotes& notes) { notes.text = text.toStdString(); });
    });
    connect(light, &LightFields::Changed, this, [this] {
        ForEach([&](engine::SceneObject& object) {
            if (object.light.has_value()) {
                commands.SetLight(object, light->Properties(*object.light));
            }
        });
    });
}

void ObjectPanel::ConnectSun() {
    const auto takeSun = [this] {
        const engine::SunObject* present = host.level.Data() != nullptr ? host.level.Data()->Sun() : nullptr;
        if (!showing && present != nullptr) {
            const double heading = sunHeading->value() / kDegrees;
            const double height = sunHeight->value() / kDegrees;
            const Vector3 chosen{static_cast<float>(std::sin(heading) * std::cos(height)),
                                 static_cast<float>(std::sin(height)),
                                 static_cast<float>(std::cos(heading) * std::cos(height))};
            commands.SetSun(sunHeading->isEnabledTo(sunBox) ? chosen : present->direction,
                            sun->Properties(present->light));
        }
    };
    connect(sun, &LightFields::Changed, this, takeSun);
    connect(sunHeading, &QDoubleSpinBox::valueChanged, this, takeSun);
    connect(sunHeight, &QDoubleSpinBox::valueChanged, this, takeSun);
}

ObjectPanel::Objects ObjectPanel::Selected() const {
    return showing ? Objects() : commands.Selected();
}

void ObjectPanel::Refresh() {
    const Objects selected = commands.Selected();
    objectPage->setVisible(!selected.empty());
    levelPage->setVisible(selected.empty());
    showing = true;
    shownDriven = DrivenNow();
    if (selected.empty()) {
        ShowLevel();
    } else {
        ShowObjects(selected);
    }
    showing = false;
}

DrivenLight ObjectPanel::DrivenNow() const {
    const engine::LevelData* levelData = host.level.Data();
    const ObjectList& selected = host.level.selection;
    if (levelData == nullptr || selected.size() > 1) {
        return {};
    }
    const auto* object = selected.empty() ? nullptr : static_cast<engine::SceneObject*>(selected.front());
    return object == nullptr || object->IsLight() ? DrivenLightOf(*levelData, object) : DrivenLight{};
}

bool ObjectPanel::IsStale() const {
    return DrivenNow() != shownDriven;
}

void ObjectPanel::RefreshTransform() {
    const Objects selected = Selected();
    if (!selected.empty()) {
        showing = true;
        ShowPlaces(selected);
        showing = false;
    }
}

void ObjectPanel::ShowPlaces(const Objects& objects) {
    std::vector<engine::Matrix4> places;
    for (const engine::SceneObject* object : objects) {
        places.push_back(object->World());
    }
    transform->Show(places);
}

void ObjectPanel::ShowObjects(const Objects& objects) {
    const engine::SceneObject& first = *objects.front();
    const bool isOne = objects.size() == 1;
    name->setEnabled(isOne);
    if (!isOne) {
        name->setText(tr("%n objects", nullptr, static_cast<int>(objects.size())));
    } else if (!name->hasFocus() || !name->isModified()) {
        name->setText(QString::fromStdString(first.name));
    }
    const bool sameClass = std::ranges::all_of(objects, [&](const engine::SceneObject* object) {
        return object->Info().className == first.Info().className;
    });
    classText->setText((sameClass ? ClassText(first) : tr("Of several kinds")) +
                       (isOne ? QString("  \u00b7  id %1").arg(first.id) : QString()));
    ShowPlaces(objects);
    FillParents(objects);
    FillMeshes(objects);
    ShowCheck(*visible, CountIf(objects, [](const auto* object) { return object->visible != 0; }),
              objects.size());
    ShowCheck(*locked, CountIf(objects, [](const auto* object) { return object->notes.locked; }),
              objects.size());
    ShowBodies(objects);
}

void ObjectPanel::ShowBodies(const Objects& objects) {
    const bool areShapes = std::ranges::all_of(objects, IsShape);
    const bool areCameras = std::ranges::all_of(objects, IsCamera);
    const bool areLabels = std::ranges::all_of(objects, IsLabel);
    const bool areLights = std::ranges::all_of(objects, &engine::SceneObject::IsLight);
    bodyBox->setVisible(areShapes || areCameras || areLabels);
    bodyBox->setTitle(areShapes ? tr("Shape") : areCameras ? tr("Camera") : tr("Label"));
    shape->setVisible(areShapes);
    camera->setVisible(areCameras);
    label->setVisible(areLabels);
    lightBox->setVisible(areLights);
    std::vector<engine::Shape> shapes;
    std::vector<engine::ObjectNotes> notes;
    std::vector<engine::LightProperties> lights;
    for (const engine::SceneObject* object : objects) {
        shapes.push_back(engine::ShapeOf(object->meshName).value_or(engine::Shape()));
        notes.push_back(object->notes);
        lights.push_back(object->light.value_or(engine::LightProperties()));
    }
    shape->Show(shapes);
    camera->Show(notes);
    label->Show(notes);
    light->Show(lights);
    light->ShowDriven(shownDriven);
}

void ObjectPanel::ShowLevel() {
    const engine::LevelData* levelData = host.level.Data();
    sunBox->setVisible(levelData != nullptr && levelData->Sun() != nullptr);
    const int count = levelData != nullptr ? static_cast<int>(levelData->Objects().size()) : 0;
    summary->setText(tr("Nothing is selected. Click an object in a view or in the list.") + "\n\n" +
                     (count == 1 ? tr("1 object in the level.") : tr("%1 objects in the level.").arg(count)));
    if (levelData != nullptr && levelData->Sun() != nullptr) {
        const Vector3& way = levelData->Sun()->direction;
        sunHeading->setValue(std::atan2(way.x, way.z) * kDegrees);
        sunHeight->setValue(std::atan2(way.y, std::hypot(way.x, way.z)) * kDegrees);
        sun->Show({levelData->Sun()->light});
        sun->ShowDriven(shownDriven);
        sunHeading->setEnabled(!shownDriven.direction);
        sunHeight->setEnabled(!shownDriven.direction);
    }
}

void ObjectPanel::FillParents(const Objects& objects) {
    parentBox->clear();
    parentBox->addItem(tr("None"), 0);
    for (const auto& other : host.level.Data()->Objects()) {
        if (!host.level.IsSelected(other.get()) && IsListed(*other)) {
            parentBox->addItem(QString::fromStdString(other->name), other->id);
        }
    }
    const EditorObject* parent = objects.front()->parent;
    const bool differ = std::ranges::any_of(
        objects, [parent](const engine::SceneObject* object) { return object->parent != parent; });
    if (!differ && parent != nullptr && parentBox->findData(parent->id) < 0) {
        parentBox->addItem(QString::fromStdString(parent->name), parent->id); // is selected itself
    }
    parentBox->setPlaceholderText(tr("mixed"));
    parentBox->setCurrentIndex(differ ? -1
                                      : std::max(0, parentBox->findData(parent != nullptr ? parent->id : 0)));
}

void ObjectPanel::FillMeshes(const Objects& objects) {
    mesh->clear();
    mesh->addItem(tr("None"), QString());
    for (const std::string& file : FindMeshFiles(host.level.Folder())) {
        mesh->addItem(QString::fromStdString(file), QString::fromStdString(file));
    }
    const std::string& first = objects.front()->meshName;
    const bool differ = std::ranges::any_of(
        objects, [&](const engine::SceneObject* object) { return object->meshName != first; });
    const QString present = QString::fromStdString(first);
    if (!differ && mesh->findData(present) < 0) {
        mesh->addItem(MeshText(first), present);
    }
    mesh->setPlaceholderText(tr("mixed"));
    mesh->setCurrentIndex(differ ? -1 : mesh->findData(present));
    const bool haveMeshes = std::ranges::all_of(objects, [](const engine::SceneObject* object) {
        return !object->IsLight() && IsListed(*object) && !IsCamera(object) && !IsLabel(object);
    });
    form->labelForField(mesh)->setVisible(haveMeshes);
    mesh->setVisible(haveMeshes);
}

} // namespace stage
