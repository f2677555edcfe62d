#include "host/stage/windows/MainWindow.h"
#include "host/stage/windows/PickDialog.h"
#include "plugin/contract/EditorObject.h"

#include <QInputDialog>
#include <QMessageBox>

namespace stage {

namespace {

// Effects by the kind that a plug-in asks for: 1 sequence, 2 particle, 3 trace, 4 flare, 5 rain, 6 blind.
constexpr const char* kEffects[][6] = {
    {"", "", "", "", "", ""},
    {"Explosion", "Fireworks", "Lightning", "Splash", "Sparkle", "Teleport"},
    {"Dust", "Embers", "Smoke", "Sparks", "Spray", "Steam"},
    {"Blade", "Comet", "Footprints", "Ribbon", "Wake", "Wheel"},
    {"Beacon", "Lantern", "Lens", "Moon", "Star", "Sun"},
    {"Drizzle", "Hail", "Leaves", "Rain", "Sleet", "Snow"},
    {"Black", "Flash", "Red", "Sepia", "Soft", "White"},
};

std::optional<std::string> ToText(const std::optional<QString>& text) {
    return text.has_value() ? std::optional<std::string>(text->toStdString()) : std::nullopt;
}

} // namespace

std::optional<std::string> MainWindow::BrowseMeshElement(EditorObject* object, const std::string& present) {
    PickList pick;
    pick.title = tr("Mesh element");
    if (host.Contains(object)) {
        pick.hint = QString::fromStdString(object->name);
        for (int i = 0; const MeshElement* element = object->GetMeshElement(i); ++i) {
            pick.names << QString::fromStdString(element->name);
        }
    }
    if (pick.names.isEmpty()) {
        pick.hint = tr("The object has no mesh with elements.");
    }
    pick.present = QString::fromStdString(present);
    return ToText(PickDialog::Pick(pick, this));
}

std::optional<std::string> MainWindow::BrowseMeshAnimation(EditorObject* object, const std::string& present) {
    PickList pick;
    pick.title = tr("Animation");
    const engine::IMesh* mesh =
        host.Contains(object) ? static_cast<engine::SceneObject*>(object)->Mesh() : nullptr;
    if (mesh != nullptr) {
        pick.hint = QString::fromStdString(object->name);
        for (const engine::MeshClip& clip : mesh->Clips()) {
            pick.names << QString::fromStdString(clip.name);
        }
    }
    if (pick.names.isEmpty()) {
        pick.hint = tr("The object has no animations.");
    }
    pick.present = QString::fromStdString(present);
    return ToText(PickDialog::Pick(pick, this));
}

std::optional<std::string> MainWindow::BrowseFx(int fxKind, const std::string& present) {
    PickList pick;
    pick.title = tr("Effect");
    pick.freeText = true;
    if (fxKind > 0 && fxKind < static_cast<int>(std::size(kEffects))) {
        for (const char* name : kEffects[fxKind]) {
            pick.names << name;
        }
    }
    pick.present = QString::fromStdString(present);
    return ToText(PickDialog::Pick(pick, this));
}

std::optional<float> MainWindow::InputNumber(float present, const std::string& title,
                                             const std::string& prompt) {
    bool accepted = false;
    const double number =
        QInputDialog::getDouble(this, QString::fromStdString(title), QString::fromStdString(prompt),
                                static_cast<double>(present), -1.0e9, 1.0e9, 3, &accepted);
    return accepted ? std::optional<float>(static_cast<float>(number)) : std::nullopt;
}

void MainWindow::ReportError(const std::string& text) {
    QMessageBox box(QMessageBox::Warning, tr("Stage"), QString::fromStdString(text), QMessageBox::Ok, this);
    box.setObjectName("ReportError");
    box.exec();
}

void MainWindow::ShowDeleteRefusals(const std::list<DeleteMessage>& messages) {
    constexpr int kShown = 15;
    QStringList lines;
    for (const DeleteMessage& message : messages) {
        lines << QString::fromStdString(message.text);
    }
    if (lines.size() > kShown) {
        const int more = static_cast<int>(lines.size()) - kShown;
        lines = lines.mid(0, kShown) << tr("... and %1 more").arg(more);
    }
    QMessageBox box(QMessageBox::Information, tr("Delete"), tr("These objects are in use and were kept."),
                    QMessageBox::Ok, this);
    box.setObjectName("DeleteRefused");
    box.setInformativeText(lines.join('\n'));
    box.exec();
}

} // namespace stage
