#pragma once

#include <string>

/// Knows the cameras of the film that is open. Without state.
class CEditorCameraManager {
public:
    /// Whether the current film has a camera of exactly this name.
    bool CameraExists(const std::string& name) const;
};
