#include "plugin/parts/ObjectMatrices.h"

#include "framework/MessageBox.h"
#include "helpers/rules/MatrixMath.h"
#include "plugin/session/FilmSession.h"

#include <algorithm>

namespace {

constexpr const char* kNoMatrix = "Plugin Films critical internal error - no matrix stored for object: ";
constexpr const char* kDontSave = "\n Don't save this level with previous name!!!!";

void CopyMatrix(const float* from, std::array<float, 16>& to) {
    std::copy_n(from, to.size(), to.begin());
}

void RestoreRecord(const ObjectMatrixRecord& record) {
    if (record.object->IsA(ClassId::LevelObject) && record.object->parent == nullptr) {
        record.object->SetMatrix(record.matrix.data(), 0);
    }
}

} // namespace

/// Required by the host's events, of which several may tell of one object: no check for doubles. A deletion
/// takes out only the first.
void ObjectMatrices::Add(EditorObject* object) {
    if (object == nullptr) {
        return;
    }
    EditorObjectInfo* parentInfo = object->parent != nullptr ? object->parent->GetInfo() : nullptr;
    if (parentInfo != nullptr && parentInfo->className == ClassName::HelperCwO) {
        return;
    }
    ObjectMatrixRecord& record = records.Add(object);
    CopyMatrix(object->GetMatrix(1), record.matrix);
}

/// Required: with a film open the restoring throws away an outside change of an object without parent.
void ObjectMatrices::Refresh(const ObjectList* objects) {
    if (objects == nullptr) {
        if (session.level == nullptr || session.level->selection.empty()) {
            return;
        }
        objects = &session.level->selection;
    }
    const ObjectList changed = *objects; // the host's list may change while the film is posed
    if (session.currentFilm != nullptr) {
        Restore();
    }
    for (const EditorObject* object : changed) {
        if (object != nullptr && object->IsA(ClassId::LevelObject)) {
            TakePresent(*object);
        }
    }
    session.SetFrame(session.currentTime, FilmSession::kNoPrevious);
}

void ObjectMatrices::TakePresent(const EditorObject& object) {
    if (ObjectMatrixRecord* record = records.Find(&object)) {
        CopyMatrix(object.GetMatrix(0), record->matrix);
    }
}

void ObjectMatrices::Restore() const {
    for (const ObjectMatrixRecord& record : records) {
        RestoreRecord(record);
    }
}

void ObjectMatrices::RestoreOne(const EditorObject* object) const {
    if (const ObjectMatrixRecord* record = records.Find(object)) {
        RestoreRecord(*record);
    }
}

void ObjectMatrices::Rebuild() {
    records.clear();
    if (session.editor == nullptr) {
        return;
    }
    ObjectList objects;
    session.editor->CollectObjects(objects, 1);
    for (EditorObject* object : objects) {
        if (object != nullptr && object->IsA(ClassId::LevelObject)) {
            Add(object);
        }
    }
}

const float* ObjectMatrices::Get(const EditorObject* object) const {
    if (const ObjectMatrixRecord* record = records.Find(object)) {
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

void ObjectMatrices::RecordChildren(const EditorObject& object, const ObjectSet& deleted) {
    for (EditorObject* child = object.firstChild; child != nullptr; child = child->nextSibling) {
        if (!Has(child)) {
            if (!deleted.contains(child)) {
                Add(child);
            }
        } else if (child->IsA(ClassId::LevelObject)) {
            TakePresent(*child);
        }
    }
}
