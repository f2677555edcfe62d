#include "host/stage/windows/ObjectPanel.h"

#include "host/stage/host/EditorHost.h"
#include "host/stage/host/ObjectCommands.h"
#include "host/stage/windows/MeshFiles.h"
#include "host/stage/windows/ObjectLook.h"
#include "host/stage/windows/TransformFields.h"

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

QDoubleSpinBox* AngleField(QWidget* parent, double least, double most) {
    auto* field = new QDoubleSpinBox(parent);
    field->setRange(least, most);
    field->setSuffix(QString(QChar(0x00b0)));
    field->setDecimals(1);
    field->setSingleStep(5.0);
    field->setKeyboardTracking(false);
    return field;
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
    form->addRow(tr("Name"), name);
    form->addRow(QString(), classText);
    form->addRow(transform);
    form->addRow(tr("Parent"), parentBox);
    form->addRow(tr("Mesh"), mesh);
    form->addRow(QString(), visible);
    lightBox = new QGroupBox(tr("Light"), page);
    light = new LightFields(lightBox, true);
    (new QVBoxLayout(lightBox))->addWidget(light);
    layout->addLayout(form);
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

void ObjectPanel::ConnectFields() {
    connect(name, &QLineEdit::editingFinished, this, [this] {
        engine::SceneObject* object = Object();
        if (object != nullptr && !commands.Rename(*object, name->text().trimmed().toStdString())) {
            name->setText(QString::fromStdString(object->name));
        }
    });
    connect(transform, &TransformFields::Changed, this, [this] {
        if (engine::SceneObject* object = Object()) {
            commands.Move({{object, transform->Matrix()}});
        }
    });
    connect(parentBox, &QComboBox::activated, this, [this](int row) {
        if (engine::SceneObject* object = Object()) {
            commands.SetParent(*object, host.level.FindObject(parentBox->itemData(row).toInt()));
        }
    });
    connect(mesh, &QComboBox::activated, this, [this](int row) {
        if (engine::SceneObject* object = Object()) {
            commands.SetMesh(*object, mesh->itemData(row).toString().toStdString());
        }
    });
    connect(visible, &QCheckBox::toggled, this, [this](bool checked) {
        if (!showing) {
            for (engine::SceneObject* object : commands.Selected()) {
                commands.SetVisible(*object, checked);
            }
        }
    });
    connect(light, &LightFields::Changed, this, [this] {
        if (engine::SceneObject* object = Object()) {
            if (object->light.has_value()) {
                commands.SetLight(*object, light->Properties(*object->light));
            }
        }
    });
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

engine::SceneObject* ObjectPanel::Object() const {
    const std::vector<engine::SceneObject*> selected = commands.Selected();
    return !showing && selected.size() == 1 ? selected.front() : nullptr;
}

void ObjectPanel::Refresh() {
    const std::vector<engine::SceneObject*> selected = commands.Selected();
    objectPage->setVisible(selected.size() == 1);
    levelPage->setVisible(selected.size() != 1);
    showing = true;
    shownDriven = DrivenNow();
    if (selected.size() == 1) {
        ShowObject(*selected.front());
    } else {
        ShowLevel();
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
    if (const engine::SceneObject* object = Object()) {
        showing = true;
        transform->Show(object->World());
        showing = false;
    }
}

void ObjectPanel::ShowObject(engine::SceneObject& object) {
    if (!name->hasFocus() || !name->isModified()) {
        name->setText(QString::fromStdString(object.name));
    }
    classText->setText(ClassText(object) + QString("  \u00b7  id %1").arg(object.id));
    transform->Show(object.World());
    FillParents(object);
    FillMeshes(object);
    visible->setChecked(object.visible != 0);
    lightBox->setVisible(object.IsLight());
    if (object.IsLight()) {
        light->Show(*object.light);
        light->ShowDriven(shownDriven);
    }
}

void ObjectPanel::ShowLevel() {
    const engine::LevelData* levelData = host.level.Data();
    const std::size_t selected = host.level.selection.size();
    sunBox->setVisible(selected == 0 && levelData != nullptr && levelData->Sun() != nullptr);
    if (selected > 0) {
        summary->setText(tr("%n objects are selected. Move them together with the gizmo in a view.", nullptr,
                            static_cast<int>(selected)));
        return;
    }
    const int count = levelData != nullptr ? static_cast<int>(levelData->Objects().size()) : 0;
    summary->setText(
        tr("Nothing is selected. Click an object in a view or in the list.\n\n%1 objects in the level.")
            .arg(count));
    if (levelData != nullptr && levelData->Sun() != nullptr) {
        const Vector3& way = levelData->Sun()->direction;
        sunHeading->setValue(std::atan2(way.x, way.z) * kDegrees);
        sunHeight->setValue(std::atan2(way.y, std::hypot(way.x, way.z)) * kDegrees);
        sun->Show(levelData->Sun()->light);
        sun->ShowDriven(shownDriven);
        sunHeading->setEnabled(!shownDriven.direction);
        sunHeight->setEnabled(!shownDriven.direction);
    }
}

void ObjectPanel::FillParents(const engine::SceneObject& object) {
    parentBox->clear();
    parentBox->addItem(tr("None"), 0);
    for (const auto& other : host.level.Data()->Objects()) {
        if (other.get() != &object && IsListed(*other)) {
            parentBox->addItem(QString::fromStdString(other->name), other->id);
        }
    }
    parentBox->setCurrentIndex(
        std::max(0, parentBox->findData(object.parent != nullptr ? object.parent->id : 0)));
}

void ObjectPanel::FillMeshes(const engine::SceneObject& object) {
    mesh->clear();
    mesh->addItem(tr("None"), QString());
    for (const std::string& file : FindMeshFiles(host.level.Folder())) {
        mesh->addItem(QString::fromStdString(file), QString::fromStdString(file));
    }
    const QString present = QString::fromStdString(object.meshName);
    if (mesh->findData(present) < 0) {
        mesh->addItem(tr("%1 (missing)").arg(present), present);
    }
    mesh->setCurrentIndex(mesh->findData(present));
    const bool hasMesh = !object.IsLight() && IsListed(object);
    form->labelForField(mesh)->setVisible(hasMesh);
    mesh->setVisible(hasMesh);
}

} // namespace stage
