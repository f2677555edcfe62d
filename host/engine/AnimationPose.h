#pragma once

#include "host/engine/KeyChannel.h"
#include "host/engine/MeshLibrary.h"

#include <vector>

namespace engine {

class SceneObject;

/// Poses a mesh by the animation keys of a track. A key counts from its time until the next key of its mesh
/// element; it plays its sequence `repeats` times and then holds the last pose, and 0 repeats or fewer go on
/// without end. Keys of an element move it and what hangs on it, over the keys of elements above it and over
/// those of the whole mesh. An element that the mesh does not have means the whole mesh.
class AnimationPose {
public:
    /// Makes room, so that Apply allocates nothing.
    void Prepare(SceneObject& object);
    /// Before the first key the mesh is at rest.
    void Apply(const KeyChannel& clips, SceneObject& object, float time, int framesPerSecond);
    /// Mesh-space matrix of one element at a time, without posing the object.
    static Matrix4 ElementAt(const KeyChannel& clips, const SceneObject& object, const std::string& element,
                             float time, int framesPerSecond);
    /// Seconds into the sequence at a film time at or after the key's, for a sequence that lasts `duration`.
    static float ClipTime(const CFilmAnimationKey& key, float time, float duration, int framesPerSecond);

private:
    bool Sample(const KeyChannel& clips, const IMesh& mesh, float time, int framesPerSecond);
    void SampleSubtree(const IMesh& mesh, int element, int clip, float seconds);

    std::vector<Matrix4> locals;
    std::vector<Matrix4> sampled;
    std::vector<char> inside;
};

} // namespace engine
