// What the host does: objects, selection, moves, level files.
#include "tests/editing/World.h"

#include "host/engine/LevelFile.h"
#include "host/engine/SceneObject.h"

#include <algorithm>

namespace editing {

namespace {

constexpr std::size_t kMostObjects = 40;

} // namespace

void World::CreateObject(const Step& step) {
    static const char* const classes[] = {ClassName::Mesh, ClassName::GLLight, ClassName::DynLight,
                                          "MeshObject"};
    if (editor.level.Data() == nullptr || editor.level.Data()->Objects().size() >= kMostObjects) {
        return;
    }
    const auto place = static_cast<float>(step.numbers[1] % 20);
    editor.Make(classes[step.numbers[0] % 4], "New" + std::to_string(++made), {place, 0.0f, -place});
}

void World::DeleteObjects(const Step& step) {
    ObjectList doomed;
    for (int i = 0; i <= step.numbers[1] % 2; ++i) {
        engine::SceneObject* object = ObjectOf(step.numbers[0] + i);
        if (object != nullptr && std::ranges::find(doomed, object) == doomed.end()) {
            doomed.push_back(object);
        }
    }
    if (!doomed.empty()) {
        editor.DeleteObjects(doomed);
    }
}

void World::SelectObjects(const Step& step) {
    ObjectList chosen;
    for (int i = 0; i < step.numbers[1] % 3; ++i) {
        if (engine::SceneObject* object = ObjectOf(step.numbers[0] + i)) {
            chosen.push_back(object);
        }
    }
    editor.level.SetSelection(chosen);
    plugin.OnEvent(EventCode::SelectionChanged, nullptr);
}

/// The user moves, turns or scales objects in a view; the numbers reach from a part of a unit to far away.
void World::MoveObject(const Step& step) {
    engine::SceneObject* object = ObjectOf(step.numbers[0]);
    if (object == nullptr) {
        return;
    }
    editor.level.SetSelection({object});
    std::array<float, 16> matrix{};
    std::copy_n(object->GetMatrix(0), matrix.size(), matrix.begin());
    const float step1 = static_cast<float>(step.numbers[1] % 400 - 200) / 40.0f;
    switch (step.numbers[2] % 4) {
    case 0:
        matrix[12 + static_cast<std::size_t>(step.numbers[1] % 3)] += step1;
        break;
    case 1: // a quarter turn about y
        for (std::size_t i = 0; i < 3; ++i) {
            std::swap(matrix[i], matrix[8 + i]);
            matrix[i] = -matrix[i];
        }
        break;
    case 2:
        for (std::size_t i = 0; i < 11; ++i) {
            matrix[i] *= step1 > 0.0f ? 1.25f : 0.8f;
        }
        break;
    default:
        matrix[12] = 100.0f * step1;
        break;
    }
    object->SetMatrix(matrix.data(), 0);
    if (step.numbers[2] % 3 == 0) {
        ObjectList moved{object};
        plugin.OnViewRequest(ViewRequest::ObjectsMoved, 0, &moved, nullptr);
    } else {
        plugin.OnEvent(EventCode::ObjectsMoved, nullptr);
    }
}

void World::Animate(const Step& step) {
    plugin.SetAnimateObjects(step.numbers[0] % 3 != 0);
}

std::string World::Save() {
    engine::LevelMessages messages;
    return engine::SerializeLevel(editor.level, folder.File("edited.level"), messages);
}

/// As the host does it: the film is closed while the level is written.
void World::SaveLevel(const Step& /*step*/) {
    if (editor.level.Data() == nullptr) {
        return;
    }
    plugin.OnEvent(EventCode::Suspend, nullptr);
    savedLevel = Save();
    plugin.OnEvent(EventCode::Resume, nullptr);
}

void World::LoadLevel(const Step& step) {
    Load(step.numbers[0] % 2 == 0 ? firstLevel : savedLevel);
    plugin.SelectFilmByIndex(step.numbers[1] % 2 == 0 ? 0 : step.numbers[1] % 5);
}

void World::LeaveLevel() {
    plugin.OnEvent(EventCode::Suspend, nullptr);
    ObjectList all;
    editor.level.CollectObjects(all);
    editor.level.SetSelection(all);
    plugin.OnEvent(EventCode::ObjectsDeleting, nullptr);
    editor.level.ClearSelection();
    plugin.OnEvent(EventCode::ReleaseRenderResources, nullptr);
    plugin.OnNew();
}

/// One without objects and films.
void World::NewLevel(const Step& /*step*/) {
    LeaveLevel();
    editor.level.Close();
    editor.level.New(folder.Path());
    plugin.OnEvent(EventCode::LevelLoaded, nullptr);
}

void World::Load(std::string bytes) {
    engine::PendingLevel pending =
        engine::ParseLevel(editor.level, folder.File("edited.level"), std::move(bytes));
    LeaveLevel();
    editor.level.Close();
    engine::InstallLevel(editor.level, std::move(pending));
    plugin.OnEvent(EventCode::LevelLoaded, nullptr);
}

void World::HostEvent(const Step& step) {
    switch (step.numbers[0] % 4) {
    case 0:
        plugin.OnEvent(EventCode::Suspend, nullptr);
        plugin.OnEvent(EventCode::Resume, nullptr);
        break;
    case 1:
        plugin.OnEvent(EventCode::ObjectSetChanged, nullptr);
        break;
    case 2: {
        ObjectList changed = editor.level.selection;
        plugin.OnEvent(EventCode::ObjectsChangedOutside, &changed);
        break;
    }
    default:
        plugin.OnEvent(EventCode::ObjectsRenamed, nullptr);
        break;
    }
}

void World::Render(const Step& /*step*/) {
    plugin.OnRender();
}

} // namespace editing
