#pragma once

class EditorObjectInfo;

/// Root of all host objects: a destructor and the type test stand first in each of them.
class IHostObject {
public:
    virtual ~IHostObject() = default;
    virtual bool IsA(int classId) const = 0;
};
