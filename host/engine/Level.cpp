#include "host/engine/Level.h"

#include "host/engine/LevelRoot.h"

#include <algorithm>
#include <set>

namespace engine {

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
    folder = newFolder;
    if (!folder.empty() && folder.back() != '/') {
        folder += '/';
    }
    if (data != nullptr) {
        data->Root().name = folder;
    }
}

void Level::OnDestroying(EditorObject* object) {
    if (destroyHook) {
        destroyHook(object);
    }
}

SceneObject* Level::CreateObject(const ObjectSpec& spec) {
    return data != nullptr ? &data->Create(spec) : nullptr;
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
    std::set<std::string> taken;
    for (const auto& other : data->Objects()) {
        if (other.get() != object) {
            taken.insert(other->name);
        }
    }
    const std::string wanted = name != nullptr && *name != '\0' ? name : "Object";
    // "Crate7" asks for the next free "Crate", not for "Crate71".
    const std::size_t lastLetter = wanted.find_last_not_of("0123456789");
    const std::string base = lastLetter == std::string::npos ? wanted : wanted.substr(0, lastLetter + 1);
    std::string unique = wanted;
    for (int number = 1; taken.count(unique) != 0; ++number) {
        unique = base + std::to_string(number);
    }
    object->name = unique;
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
            object->GetInfo()->flags &= ~SceneObjectInfo::kSelected;
        }
    }
    selection.clear();
}

void Level::AddToSelection(EditorObject* object) {
    if (object == nullptr || IsSelected(object)) {
        return;
    }
    selection.push_back(object);
    object->GetInfo()->flags |= SceneObjectInfo::kSelected;
}

void Level::Deselect(EditorObject* object) {
    if (object != nullptr && IsSelected(object)) {
        selection.remove(object);
        object->GetInfo()->flags &= ~SceneObjectInfo::kSelected;
    }
}

void Level::SetSelection(const ObjectList& objects) {
    const ObjectList wanted(objects.begin(), objects.end()); // the caller may pass the selection itself
    ClearSelection();
    for (EditorObject* object : wanted) {
        AddToSelection(object);
    }
}

bool Level::IsSelected(const EditorObject* object) const {
    return std::find(selection.begin(), selection.end(), object) != selection.end();
}

} // namespace engine
