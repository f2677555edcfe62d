#include "host/engine/Level.h"

#include "host/engine/LevelRoot.h"
#include "host/engine/UniqueNames.h"

#include <algorithm>
#include <unordered_set>

namespace engine {

namespace {

std::string WithSeparator(const std::string& folder) {
    return folder.empty() || folder.back() == '/' ? folder : folder + '/';
}

} // namespace

Level::Level() = default;

Level::~Level() {
    Close();
}

void Level::New(const std::string& newFolder) {
    Close();
    Replace(std::make_unique<LevelData>(*this));
    SetFolder(newFolder);
}

void Level::Close() {
    ClearSelection();
    data.reset();
}

void Level::Replace(std::unique_ptr<LevelData> newData) {
    Close();
    data = std::move(newData);
    SetFolder(folder);
}

void Level::SetFolder(const std::string& newFolder) {
    folder = WithSeparator(newFolder);
    if (data != nullptr) {
        data->Root().name = folder.empty() ? unsavedFolder : folder;
    }
}

void Level::SetUnsavedFolder(const std::string& newFolder) {
    unsavedFolder = WithSeparator(newFolder);
    SetFolder(folder);
}

void Level::OnDestroying(EditorObject* object) {
    if (destroyHook) {
        destroyHook(object);
    }
}

void Level::OnLightFreed(EditorObject* object) {
    if (freedLightHook) {
        freedLightHook(object);
    }
}

void Level::OnShowing() {
    if (showHook) {
        showHook();
    }
}

void Level::OnEdited() {
    if (editHook) {
        editHook();
    }
}

void Level::OnUnknownAnimation(const SceneObject& object, const std::string& animation) {
    if (unknownAnimationHook) {
        unknownAnimationHook(object, animation);
    }
}

SceneObject* Level::CreateObject(const ObjectSpec& spec, UniqueNames* names) {
    return data != nullptr ? &data->Create(spec, names) : nullptr;
}

void Level::DeleteObject(EditorObject* object) {
    if (data != nullptr && object != nullptr) {
        data->Delete(static_cast<SceneObject*>(object));
    }
}

void Level::Rename(SceneObject* object, const std::string& name) {
    if (object != nullptr) {
        MakeUniqueName(name.c_str(), object, 0);
    }
}

void Level::MakeUniqueName(const char* name, EditorObject* object, int) {
    if (data == nullptr || object == nullptr) {
        return;
    }
    object->name = UniqueNames(*data, object).Take(name != nullptr ? name : "");
}

bool Level::SetParent(SceneObject* object, SceneObject* parent) {
    return data != nullptr && object != nullptr && data->SetParent(*object, parent);
}

SceneObject* Level::FindObject(int id) const {
    return data != nullptr ? data->Find(id) : nullptr;
}

SceneObject* Level::FindObject(const std::string& name) const {
    return data != nullptr ? data->FindByName(name) : nullptr;
}

void Level::CollectObjects(ObjectList& objects) const {
    if (data == nullptr) {
        return;
    }
    for (const auto& object : data->Objects()) {
        objects.push_back(object.get());
    }
}

void Level::ClearSelection() {
    for (EditorObject* object : selection) {
        if (object != nullptr) {
            object->GetInfo()->flags &= ~EditorObjectInfo::kSelected;
        }
    }
    selection.clear();
}

void Level::AddToSelection(EditorObject* object) {
    if (object == nullptr || IsSelected(object)) {
        return;
    }
    selection.push_back(object);
    object->GetInfo()->flags |= EditorObjectInfo::kSelected;
}

void Level::Deselect(EditorObject* object) {
    if (object != nullptr && IsSelected(object)) {
        selection.remove(object);
        object->GetInfo()->flags &= ~EditorObjectInfo::kSelected;
    }
}

void Level::SetSelection(const ObjectList& objects) {
    const ObjectList wanted(objects.begin(), objects.end()); // the caller may pass the selection itself
    ClearSelection();
    std::unordered_set<const EditorObject*> known;
    for (EditorObject* object : wanted) {
        if (object != nullptr && known.insert(object).second) {
            selection.push_back(object);
            object->GetInfo()->flags |= EditorObjectInfo::kSelected;
        }
    }
}

bool Level::IsSelected(const EditorObject* object) const {
    return std::find(selection.begin(), selection.end(), object) != selection.end();
}

} // namespace engine
