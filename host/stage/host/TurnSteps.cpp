#include "host/stage/host/TurnSteps.h"

#include "host/engine/Film.h"
#include "host/engine/FilmManager.h"
#include "host/engine/LevelData.h"
#include "host/engine/ObjectTrack.h"

#include <algorithm>
#include <cmath>

namespace stage {

using engine::operator+;
using engine::operator-;
using engine::operator*;

namespace {

/// Degrees. What follows a turn looks for each angle within 90 degrees of the last, less where the others can
/// hardly be told apart.
constexpr float kLargestStep = 45.0f;
/// Seconds within which a key stands at the present time.
constexpr float kSameTime = 0.00001f;

float NearestTurn(float angle, float reference) {
    return reference + std::remainder(angle - reference, 360.0f);
}

Vector3 NearestTurns(const Vector3& angles, const Vector3& reference) {
    return {NearestTurn(angles.x, reference.x), NearestTurn(angles.y, reference.y),
            NearestTurn(angles.z, reference.z)};
}

float LargestChange(const Vector3& angles, const Vector3& reference) {
    const Vector3 change = angles - reference;
    return std::max({std::abs(change.x), std::abs(change.y), std::abs(change.z)});
}

/// Each rotation has two sets of angles, and each angle any number of whole turns.
Vector3 NearestAngles(const Vector3& angles, const Vector3& reference) {
    const Vector3 same = NearestTurns(angles, reference);
    const Vector3 other = NearestTurns({angles.x + 180.0f, 180.0f - angles.y, angles.z + 180.0f}, reference);
    return LargestChange(same, reference) <= LargestChange(other, reference) ? same : other;
}

const engine::TrackBase* TrackOf(const engine::LevelData& data, const engine::SceneObject& object) {
    const auto* film = static_cast<const engine::Film*>(data.filmManager->currentFilm);
    if (film == nullptr) {
        return nullptr;
    }
    const auto& tracks = film->Tracks();
    const auto found =
        std::ranges::find(tracks, static_cast<const EditorObject*>(&object), &engine::TrackBase::Driven);
    return found != tracks.end() ? *found : nullptr;
}

/// Without a key at the time or before it a plug-in starts at no rotation, wherever the film has the object.
Vector3 AnglesOf(const engine::TrackBase& track, float time) {
    const engine::KeyChannel* keys = track.Channel(KeyKind::Rotation);
    const bool isKeyed = keys != nullptr && !keys->Empty() && keys->Times().front() <= time + kSameTime;
    return isKeyed ? track.VectorAt(KeyKind::Rotation, time) : Vector3{};
}

Vector3 AnglesOf(const engine::Matrix4& matrix) {
    Vector3 position;
    Vector3 angles;
    Vector3 scale;
    engine::Decompose(matrix, position, angles, scale);
    return angles;
}

} // namespace

TurnStart StartOfTurn(const engine::LevelData& data, const engine::SceneObject& object) {
    const engine::TrackBase* track = TrackOf(data, object);
    if (track == nullptr) {
        return {AnglesOf(object.World()), {}};
    }
    TurnStart start;
    start.angles = AnglesOf(*track, static_cast<engine::Film*>(data.filmManager->currentFilm)->PosedTime());
    if (const auto* actor = static_cast<const engine::ObjectTrack*>(AsObjectTrack(&track->Self()));
        actor != nullptr && actor->AttachedTo() != nullptr) {
        start.space = actor->AttachedTo()->ElementWorld(actor->parentElement);
    }
    return start;
}

std::vector<engine::Matrix4> TurnSteps(const TurnStart& start, const engine::Matrix4& end) {
    engine::Matrix4 inverse;
    const bool isAttached = !(start.space == engine::Matrix4{}) && engine::Invert(start.space, inverse);
    const auto toWorld = [&](const engine::Matrix4& matrix) {
        return isAttached ? Multiply(matrix, start.space) : matrix;
    };
    const engine::Matrix4 local = isAttached ? Multiply(end, inverse) : end;
    engine::Matrix4 readable = local;
    LeaveGimbal(readable, &start.angles.x);
    Vector3 position;
    Vector3 angles;
    Vector3 scale;
    Decompose(readable, position, angles, scale);
    angles = NearestAngles(angles, start.angles);
    const float change = LargestChange(angles, start.angles);
    const int steps =
        std::isfinite(change) ? std::max(1, static_cast<int>(std::ceil(change / kLargestStep))) : 1;
    std::vector<engine::Matrix4> matrices;
    for (int step = 1; step < steps; ++step) {
        const float share = static_cast<float>(step) / static_cast<float>(steps);
        matrices.push_back(
            toWorld(engine::Compose(position, start.angles + (angles - start.angles) * share, scale)));
    }
    matrices.push_back(readable == local ? end : toWorld(readable));
    return matrices;
}

} // namespace stage
