#pragma once

#include "host/engine/Units.h"

#include <glm/glm.hpp>

namespace stage {

/// The user's own camera of a 3D view: a pivot, two angles and a distance. Pure arithmetic.
/// Right-handed, y up, units and radians.
class ViewNavigation {
public:
    static constexpr float kDefaultFieldOfView = 1.0471976f; ///< 60 degrees, vertical

    /// Turns around the pivot; pixels, right and down positive.
    void Orbit(float dx, float dy);
    /// Turns around a point of the world, which stays where it is in the picture.
    void OrbitAbout(const glm::vec3& point, float dx, float dy);
    /// Turns the head: the eye stays, the pivot moves.
    void Look(float dx, float dy);
    /// Moves eye and pivot so that a point at the pivot's distance follows the mouse.
    void Pan(float dx, float dy, int viewHeight);
    /// Steps of the wheel, positive towards the pivot.
    void Zoom(float steps);
    /// Units along the camera's right, up and forward.
    void Fly(const glm::vec3& move);
    /// Shows a sphere whole.
    void Focus(const glm::vec3& center, float radius);
    void LookAt(const glm::vec3& eye, const glm::vec3& target);

    glm::vec3 Eye() const;
    glm::vec3 Forward() const;
    glm::vec3 Right() const;
    glm::vec3 Up() const;
    /// Camera in the world: rows right, up, backwards, translation.
    glm::mat4 CameraMatrix() const;

    glm::vec3 pivot{0.0f, engine::Metres(1.0f), 0.0f};
    float yaw = 0.7f;    ///< about y; 0 looks along -z
    float pitch = -0.4f; ///< negative looks down
    float distance = engine::Metres(18.0f);
    float fieldOfView = kDefaultFieldOfView;

private:
    void ClampPitch();
};

} // namespace stage
