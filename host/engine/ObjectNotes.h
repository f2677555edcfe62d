#pragma once

#include <string>

namespace engine {

/// What the editor keeps of an object besides its place and its body. Saved where it says something.
struct ObjectNotes {
    bool locked = false;      ///< clicks and rectangles in the views pass over the object
    float fieldOfView = 0.0f; ///< radians, vertical, of a camera that stands in the level; 0 for the usual
    std::string text;         ///< of a label

    static constexpr float kUsualFieldOfView = 1.0471976f; ///< 60 degrees
    /// The angle that a camera looks with, whatever a file says.
    float Angle() const {
        return fieldOfView > 0.01f && fieldOfView < 3.1f ? fieldOfView : kUsualFieldOfView;
    }

    bool operator==(const ObjectNotes&) const = default;
};

} // namespace engine
