#pragma once

#include "plugin/contract/CameraRecord.h"
#include "plugin/contract/FilmManager.h"

/// The level's sun.
class ISunObject : public IHostObject {
public:
    Vector3 direction{0.0f, 1.0f, 0.0f}; ///< from the ground towards the sun, any length
};

/// The engine data of a level.
class ILevelData {
public:
    virtual ~ILevelData() = default;
    /// Nearest hit between two world points. On a hit `to` becomes the point hit and the result is not 0.
    virtual int RayCast(const float* from, float* to, int zero) = 0;
    virtual EditorObject* FindObject(int id) const = 0;

    IFilmManager* filmManager = nullptr; ///< null in a level without film support
    ISunObject* sunObject = nullptr;     ///< null in a level without a sun
};

/// A 3D view.
class IView {
public:
    virtual ~IView() = default;
    /// Radians, units, units.
    virtual void SetProjection(float fieldOfView, float nearPlane, float farPlane, int zero) = 0;
    virtual float GetFieldOfView() const = 0; ///< radians, vertical

    CameraRecord* camera = nullptr; ///< owned by the view
};

class IViewManager {
public:
    virtual ~IViewManager() = default;
    /// Null for a view that does not exist.
    virtual IView* GetView(int number) = 0;
};

/// The level of the editor; one object for the host's life.
class ILevel {
public:
    virtual ~ILevel() = default;
    /// Gives the object a name made from `name` that no other object has.
    virtual void MakeUniqueName(const char* name, EditorObject* object, int zero) = 0;
    virtual IViewManager* GetViewManager() = 0;
    /// Null while no level exists.
    virtual ILevelData* GetLevelData() = 0;

    ObjectList selection; ///< the selected objects; the same list as IEditorView::GetSelectedObjects
};
