#pragma once

#include <list>

class EditorObject;
class CFilmTrack;
class IFilmKey;

/// Three floats in the order x, y, z. Right-handed space, y up, one unit is a centimetre.
struct Vector3 {
    float x = 0.0f;
    float y = 0.0f;
    float z = 0.0f;

    const float* Data() const { return &x; }
    float* Data() { return &x; }
    bool operator==(const Vector3&) const = default;
};

/// Level objects in insertion order; the list never owns them.
using ObjectList = std::list<EditorObject*>;
