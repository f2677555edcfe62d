#include "plugin/PluginImpl.h"

#include "framework/MessageBox.h"
#include "helpers/MatrixMath.h"

#include <algorithm>

namespace {

constexpr const char* kNoMatrix = "Plugin Films critical internal error - no matrix stored for object: ";
constexpr const char* kDontSave = "\n Don't save this level with previous name!!!!";

void CopyMatrix(const float* from, std::array<float, 16>& to) {
    std::copy_n(from, to.size(), to.begin());
}

} // namespace

/// Required: no check for doubles; a deletion takes out only the first.
void IPluginImpl::AddObjectMatrix(EditorObject* object) {
    if (object == nullptr) {
        return;
    }
    EditorObjectInfo* parentInfo = object->parent != nullptr ? object->parent->GetInfo() : nullptr;
    if (parentInfo != nullptr && parentInfo->className == ClassName::HelperCwO) {
        return;
    }
    ObjectMatrixRecord& record = objectMatrices.Add(object);
    CopyMatrix(object->GetMatrix(1), record.matrix);
}

/// Required: with a film open the restoring throws away an outside change of an object without parent.
void IPluginImpl::RefreshMatrices(const ObjectList* objects) {
    if (objects == nullptr) {
        if (level == nullptr || level->selection.empty()) {
            return;
        }
        objects = &level->selection;
    }
    const ObjectList changed = *objects; // the host's list may change while the film is posed
    if (currentFilm != nullptr) {
        RestoreMatrices();
    }
    for (const EditorObject* object : changed) {
        if (object == nullptr || !object->IsA(ClassId::LevelObject)) {
            continue;
        }
        if (ObjectMatrixRecord* record = objectMatrices.Find(object)) {
            CopyMatrix(object->GetMatrix(0), record->matrix);
        }
    }
    SetFrame(currentTime, kNoPrevious);
}

void IPluginImpl::RestoreRecord(const ObjectMatrixRecord& record) {
    if (record.object->IsA(ClassId::LevelObject) && record.object->parent == nullptr) {
        record.object->SetMatrix(record.matrix.data(), 0);
    }
}

void IPluginImpl::RestoreMatrices() {
    for (const ObjectMatrixRecord& record : objectMatrices) {
        RestoreRecord(record);
    }
}

void IPluginImpl::RestoreOneMatrix(EditorObject* object) {
    if (const ObjectMatrixRecord* record = objectMatrices.Find(object)) {
        RestoreRecord(*record);
    }
}

void IPluginImpl::RebuildMatrices() {
    objectMatrices.clear();
    if (editor == nullptr) {
        return;
    }
    ObjectList objects;
    editor->CollectObjects(objects, 1);
    for (EditorObject* object : objects) {
        if (object != nullptr && object->IsA(ClassId::LevelObject)) {
            AddObjectMatrix(object);
        }
    }
}

const float* IPluginImpl::GetStoredMatrix(EditorObject* object) const {
    if (const ObjectMatrixRecord* record = objectMatrices.Find(object)) {
        return record->matrix.data();
    }
    AfxMessageBox(kNoMatrix + object->name + kDontSave);
    static const std::array<float, 16> identity = [] {
        std::array<float, 16> matrix{};
        SetIdentity(matrix.data());
        return matrix;
    }();
    return identity.data();
}
