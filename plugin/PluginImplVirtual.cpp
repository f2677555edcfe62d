#include "plugin/PluginImpl.h"

#include "framework/MessageBox.h"

#include <algorithm>

void IPluginImpl::ConvertToVirtualObjects(const ObjectList* objects) {
    if (objects == nullptr) {
        return;
    }
    if (AfxMessageBox("Transform selected objects to virtual objects ?", MB_YESNO) != IDYES ||
        GetLevelData() == nullptr || view == nullptr || editor == nullptr) {
        return;
    }
    ObjectList others;
    view->GetAllObjects(others, 1);
    const ObjectList candidates = *objects;
    bool converted = false;
    for (EditorObject* object : candidates) {
        if (object != nullptr && object->IsA(ClassId::EditorObject) &&
            !ObjectDerivesFrom(object, ClassName::Helper)) {
            ConvertToVirtual(object, others);
            converted = true;
        }
    }
    if (converted) {
        TellClassesChanged();
    }
}

void IPluginImpl::ConvertToVirtual(EditorObject* object, const ObjectList& others) {
    const std::string realClass = object->GetInfo()->className;
    object->GetInfo()->SetClassName(ClassName::VirtualObject);
    object->savedAsObject = 0;
    for (const EditorObject* other : others) {
        if (other != nullptr && other != object && other->name == object->name && level != nullptr) {
            level->MakeUniqueName(std::string(object->name).c_str(), object, 0);
        }
    }
    virtualObjects.push_back({object->name, object->meshName, realClass, object});
    for (int index = 0; index < IFilmManager::kFilms; ++index) {
        const IFilm* film = GetFilmByIndex(index);
        if (auto* track = AsObjectTrack(film != nullptr ? film->FindObjectTrack(object) : nullptr)) {
            track->SetActor(object, /*isVirtual*/ true);
        }
    }
}

void IPluginImpl::ConvertToNormalObjects(const ObjectList* objects) {
    IFilmManager* manager = GetFilmManager();
    if (objects == nullptr || manager == nullptr) {
        return;
    }
    ObjectList remaining = *objects;
    remaining.remove_if([](EditorObject* object) {
        return object == nullptr || !object->IsA(ClassId::EditorObject) ||
               object->GetInfo()->className != ClassName::VirtualObject;
    });
    if (remaining.empty()) {
        return;
    }
    manager->ReleaseVirtualObjects(remaining, 0);
    for (EditorObject* object : remaining) {
        const auto record = std::ranges::find(virtualObjects, object, &VirtualObjectRecord::object);
        // Required: without a record the real class is lost and the name becomes empty.
        const std::string realClass = record != virtualObjects.end() ? record->className : std::string();
        RemoveVirtualRecord(object);
        object->GetInfo()->SetClassName(realClass);
        object->savedAsObject = 1;
    }
    if (editor != nullptr) {
        editor->SetSelection(remaining, 0, 0, 0);
        TellClassesChanged();
    }
}

void IPluginImpl::TellClassesChanged() {
    editor->BroadcastEvent(EventCode::ClassesChanged, pluginId, nullptr);
    editor->RefreshObjectTree(0);
    editor->RefreshObjectPanel(0);
}

void IPluginImpl::RemoveVirtualRecord(const EditorObject* object) {
    if (object == nullptr) {
        return;
    }
    const auto record = std::ranges::find(virtualObjects, object, &VirtualObjectRecord::object);
    if (record != virtualObjects.end()) {
        virtualObjects.erase(record);
    }
}

void IPluginImpl::RefreshVirtualNames() {
    for (VirtualObjectRecord& record : virtualObjects) {
        record.objectName = record.object->name;
        record.meshName = record.object->meshName;
    }
}

void IPluginImpl::CollectHiddenObjects(HiddenObjectsRequest* request) {
    if (request == nullptr || request->collection == nullptr) {
        return;
    }
    for (const VirtualObjectRecord& record : virtualObjects) {
        request->collection->Add(record.object);
        record.object->savedAsObject = 0;
    }
    ObjectList lights;
    lightHelpers.HideFromLevel(&lights);
    for (EditorObject* light : lights) {
        request->collection->Add(light);
    }
}
