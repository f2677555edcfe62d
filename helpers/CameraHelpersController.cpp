#include "helpers/CameraHelpersController.h"

#include "files/base/Log.h"
#include "framework/Path.h"
#include "helpers/HelperPlugin.h"
#include "helpers/rules/MatrixMath.h"
#include "plugin/session/FilmSession.h"

#include <cmath>
#include <cstring>

namespace {

using Controller = CCameraHelpersController;

constexpr float kInColor[4] = {0.0f, 1.0f, 0.0f, 1.0f}; ///< r, g, b, a
constexpr float kOutColor[4] = {0.0f, 0.0f, 1.0f, 1.0f};

/// All objects in the order in which they are collected and matched.
constexpr EditorObject* Controller::*kObjects[] = {
    &Controller::positionObject, &Controller::posInControl,    &Controller::posOutControl,
    &Controller::targetObject,   &Controller::targetInControl, &Controller::targetOutControl};

struct HandleField {
    EditorObject* Controller::*object;
    const char* name;
};

constexpr HandleField kHandles[] = {{&Controller::posInControl, "PosInControlPoint"},
                                    {&Controller::posOutControl, "PosOutControlPoint"},
                                    {&Controller::targetInControl, "TargetInControlPoint"},
                                    {&Controller::targetOutControl, "TargetOutControlPoint"}};

bool IsHidden(EditorObject* object) {
    const EditorObjectInfo* info = object->GetInfo();
    return info == nullptr || info->IsPlaced();
}

/// The path of the class's file as seen from the editor's base folder.
std::string ModelPath(IEditor& editor, const EditorClassDescriptor& descriptor) {
    const std::string base = editor.GetHelperTemplate();
    std::string relative;
    PathRelativePathTo(relative, base, FILE_ATTRIBUTE_DIRECTORY, PathCombine(base, descriptor.path), 0);
    return relative;
}

void CreateObject(const FilmSession& session, HelperObjectParams& params,
                  const EditorClassDescriptor& descriptor, EditorObject*& object) {
    if (object != nullptr) {
        return; // made by an earlier try in which others failed
    }
    params.className = descriptor.name;
    params.modelPath = ModelPath(*session.editor, descriptor);
    EditorObject* made = nullptr;
    session.editor->CreateHelperObject(HelperPlugin::kName, session.pluginId, HelperPlugin::kType, params,
                                       &made);
    object = made;
}

/// Stands the object at a point, looking along a direction. A vertical or zero direction gives axes that are
/// no numbers.
void PlaceHandle(EditorObject& object, const Vector3& point, const Vector3& direction) {
    const Vector3& d = direction;
    const float length = 1.0f / std::sqrt(d.z * d.z + d.x * d.x);
    const Vector3 side{-d.z * length, 0.0f * length, d.x * length};
    const Vector3 up{d.y * side.z - d.z * side.y, d.z * side.x - d.x * side.z, d.x * side.y - d.y * side.x};
    float matrix[16];
    SetLookAt(matrix, point.Data(), d.Data(), up.Data());
    object.SetMatrix(matrix, 0);
}

/// One side of a key: the object of its handle, and how the key gives and takes it.
struct HandleSide {
    EditorObject* object;
    std::int32_t CFilmVectorKey::*method;
    void (CFilmLinkedKey::*get)(Vector3&) const;
};

/// Places the handle, or puts it on the list to hide if the key has none of its own.
void UpdateHandle(const HandleSide& side, const EditorObject* owner, const CFilmLinkedKey* key,
                  ObjectList& hidden) {
    if (side.object == nullptr) {
        return;
    }
    if (key == nullptr || owner == nullptr || key->*side.method != BezierMethod::User) {
        hidden.push_back(side.object);
        return;
    }
    Vector3 point;
    (key->*side.get)(point);
    const float* from = owner->GetPosition(0);
    PlaceHandle(*side.object, point, {point.x - from[0], point.y - from[1], point.z - from[2]});
}

void UpdateHandles(EditorObject* in, EditorObject* out, const EditorObject* owner, const CFilmLinkedKey* key,
                   ObjectList& hidden) {
    UpdateHandle({in, &CFilmVectorKey::inMethod, &CFilmLinkedKey::GetInPoint}, owner, key, hidden);
    UpdateHandle({out, &CFilmVectorKey::outMethod, &CFilmLinkedKey::GetOutPoint}, owner, key, hidden);
}

void DrawHandleLine(IEditorView& view, const EditorObject* owner, EditorObject* handle, const float* color) {
    if (owner != nullptr && handle != nullptr && !IsHidden(handle)) {
        view.DrawLine(owner->GetPosition(0), handle->GetPosition(0), color);
    }
}

} // namespace

void CCameraHelpersController::GetHelpersDesc() {
    IEditor* editor = session.editor;
    if (editor == nullptr) {
        DebugPrint("[CCameraHelpersController::GetHelpersDesc()] called before editor is available");
        return;
    }
    for (const EditorClassDescriptor& descriptor : editor->GetEditorClasses()) {
        if (std::strcmp(descriptor.name, ClassName::CameraPosition) == 0) {
            positionDesc = &descriptor;
        } else if (std::strcmp(descriptor.name, ClassName::CameraTarget) == 0) {
            targetDesc = &descriptor;
        } else if (std::strcmp(descriptor.name, ClassName::CameraControlPoint) == 0) {
            controlPointDesc = &descriptor;
        }
    }
}

bool CCameraHelpersController::CreateObjects() {
    IEditor* editor = session.editor;
    if (editor == nullptr || !editor->HasObjectClass(HelperPlugin::kName)) {
        DebugPrint("[CCameraHelpersController::CreateObjects()] plugin Control is not accessible\n");
        return false;
    }
    const auto known = [this] {
        return positionDesc != nullptr && targetDesc != nullptr && controlPointDesc != nullptr;
    };
    if (!known()) {
        GetHelpersDesc();
    }
    if (!known()) {
        DebugPrint("[CCameraHelpersController::CreateObjects()] cannot get helper definitions\n");
        return false;
    }
    HelperObjectParams params;
    CreateObject(session, params, *positionDesc, positionObject);
    CreateObject(session, params, *targetDesc, targetObject);
    for (const HandleField& handle : kHandles) {
        EditorObject*& object = this->*handle.object;
        CreateObject(session, params, *controlPointDesc, object);
        if (object != nullptr) {
            object->name = handle.name;
        }
    }
    // Required by the log: printed at each success, also when single objects could not be made.
    DebugPrint("[CCameraHelpersController::CreateObjects()] TODO\n");
    editor->RedrawViews();
    return true;
}

void CCameraHelpersController::CollectObjects(ObjectList& objects) const {
    for (EditorObject* const Controller::*object : kObjects) {
        if (this->*object != nullptr) {
            objects.push_back(this->*object);
        }
    }
}

void CCameraHelpersController::ShowObjects(bool hide) const {
    ObjectList objects;
    CollectObjects(objects);
    if (IEditor* editor = session.editor) {
        editor->SetObjectsHidden(objects, hide);
    }
}

void CCameraHelpersController::UpdateObjects(CFilmTrack* track, float time) {
    const CFilmCameraTrack* camera = AsCameraTrack(track);
    if (camera == nullptr) {
        ShowObjects(/*hide*/ true);
        return;
    }
    if (positionObject == nullptr && !CreateObjects()) {
        DebugPrint("[CCameraHelpersController::UpdateObjects] cannot create objects\n");
        return;
    }
    ShowObjects(/*hide*/ false);
    if (positionObject != nullptr) {
        positionObject->SetPosition(camera->eyePoint.Data(), 0);
    }
    if (targetObject != nullptr) {
        targetObject->SetPosition(camera->targetPoint.Data(), 0);
    }
    ObjectList hidden;
    UpdateHandles(posInControl, posOutControl, positionObject, camera->GetEyeKeyAt(time), hidden);
    UpdateHandles(targetInControl, targetOutControl, targetObject, camera->GetTargetKeyAt(time), hidden);
    if (IEditor* editor = session.editor) {
        editor->SetObjectsHidden(hidden, true);
    }
}

void CCameraHelpersController::Draw() const {
    IEditorView* view = session.view;
    if (view == nullptr) {
        return;
    }
    DrawHandleLine(*view, positionObject, posInControl, kInColor);
    DrawHandleLine(*view, positionObject, posOutControl, kOutColor);
    DrawHandleLine(*view, targetObject, targetInControl, kInColor);
    DrawHandleLine(*view, targetObject, targetOutControl, kOutColor);
}

void CCameraHelpersController::ForgetObject(const EditorObject* object) {
    for (EditorObject* Controller::*field : kObjects) {
        if (this->*field == object) {
            this->*field = nullptr;
        }
    }
}

void CCameraHelpersController::Reset() {
    for (EditorObject* Controller::*field : kObjects) {
        this->*field = nullptr;
    }
}
