#pragma once

#include "plugin/contract/Level.h"

/// The views' side of the editor. Owned by the host, good until event 11.
class IEditorView {
public:
    virtual ~IEditorView() = default;
    virtual ILevel* GetLevel() = 0;
    /// World matrix of a view's camera, row-major; row 2 points backwards. Null for an unknown view.
    virtual const float* GetViewMatrix(int view) = 0;
    /// The level's selection list; never freed by the caller.
    virtual ObjectList* GetSelectedObjects() = 0;
    virtual void GetAllObjects(ObjectList& objects, int one) = 0;
    /// Not null if the object belongs to a group.
    virtual void* GetGroupOf(EditorObject* object) = 0;
    /// A line in the view that is being drawn: world points of 3 floats, colour r, g, b, a.
    virtual void DrawLine(const float* from, const float* to, const float* color) = 0;
};
