#pragma once

#include <string>

class FilmSession;

/// Knows the cameras of the film that is open. Without state of its own.
class CEditorCameraManager {
public:
    explicit CEditorCameraManager(const FilmSession& openSession) : session(openSession) {}

    /// Whether the current film has a camera of exactly this name.
    bool CameraExists(const std::string& name) const;

private:
    const FilmSession& session;
};
