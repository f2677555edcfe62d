#include "plugin/parts/VirtualObjects.h"

#include "framework/MessageBox.h"
#include "plugin/contract/EventCodes.h"
#include "plugin/contract/Plugin.h"
#include "plugin/session/FilmSession.h"

#include <algorithm>

void VirtualObjects::ConvertToVirtual(const ObjectList* objects) {
    if (objects == nullptr) {
        return;
    }
    if (AfxMessageBox("Transform selected objects to virtual objects ?", MB_YESNO) != IDYES ||
        session.GetLevelData() == nullptr || session.view == nullptr || session.editor == nullptr) {
        return;
    }
    ObjectList others;
    session.view->GetAllObjects(others, 1);
    const ObjectList candidates = *objects;
    bool converted = false;
    for (EditorObject* object : candidates) {
        if (object != nullptr && object->IsA(ClassId::EditorObject) &&
            !session.ObjectDerivesFrom(object, ClassName::Helper)) {
            ConvertOne(object, others);
            converted = true;
        }
    }
    if (converted) {
        TellClassesChanged();
    }
}

void VirtualObjects::ConvertOne(EditorObject* object, const ObjectList& others) {
    const std::string realClass = object->GetInfo()->className;
    object->GetInfo()->SetClassName(ClassName::VirtualObject);
    object->savedAsObject = 0;
    for (const EditorObject* other : others) {
        if (other != nullptr && other != object && other->name == object->name && session.level != nullptr) {
            session.level->MakeUniqueName(std::string(object->name).c_str(), object, 0);
        }
    }
    records.push_back({object->name, object->meshName, realClass, object});
    for (int index = 0; index < IFilmManager::kFilms; ++index) {
        const IFilm* film = session.GetFilmByIndex(index);
        if (auto* track = AsObjectTrack(film != nullptr ? film->FindObjectTrack(object) : nullptr)) {
            track->SetActor(object, /*isVirtual*/ true);
        }
    }
}

void VirtualObjects::ConvertToNormal(const ObjectList* objects) {
    IFilmManager* manager = session.GetFilmManager();
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
        const auto record = std::ranges::find(records, object, &VirtualObjectRecord::object);
        // Required: without a record the real class is lost and the name becomes empty.
        const std::string realClass = record != records.end() ? record->className : std::string();
        RemoveRecord(object);
        object->GetInfo()->SetClassName(realClass);
        object->savedAsObject = 1;
    }
    if (session.editor != nullptr) {
        session.editor->SetSelection(remaining, 0, 0, 0);
        TellClassesChanged();
    }
}

void VirtualObjects::TellClassesChanged() const {
    session.editor->BroadcastEvent(EventCode::ClassesChanged, session.pluginId, nullptr);
    session.editor->RefreshObjectTree(0);
    session.editor->RefreshObjectPanel(0);
}

void VirtualObjects::RemoveRecord(const EditorObject* object) {
    if (object == nullptr) {
        return;
    }
    const auto record = std::ranges::find(records, object, &VirtualObjectRecord::object);
    if (record != records.end()) {
        records.erase(record);
    }
}

void VirtualObjects::RefreshNames() {
    for (VirtualObjectRecord& record : records) {
        record.objectName = record.object->name;
        record.meshName = record.object->meshName;
    }
}

void VirtualObjects::ForgetObject(const EditorObject* object) {
    records.remove_if([object](const VirtualObjectRecord& record) { return record.object == object; });
}

void VirtualObjects::Hide(IObjectCollection& collection) const {
    for (const VirtualObjectRecord& record : records) {
        collection.Add(record.object);
        record.object->savedAsObject = 0;
    }
}
