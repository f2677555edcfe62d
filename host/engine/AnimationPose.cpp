#include "host/engine/AnimationPose.h"

#include "host/engine/SceneObject.h"

#include <algorithm>
#include <cmath>

namespace engine {

float AnimationPose::ClipTime(const CFilmAnimationKey& key, float time, float duration, int framesPerSecond) {
    if (!(duration > 0.0f) || !std::isfinite(key.frequency) || !std::isfinite(key.startFrame)) {
        return 0.0f;
    }
    const float start = framesPerSecond > 0 ? key.startFrame / static_cast<float>(framesPerSecond) : 0.0f;
    const float played = std::max(start + (time - key.time) * key.frequency, 0.0f);
    const float whole = duration * static_cast<float>(key.repeats);
    if (key.repeats > 0 && played >= whole) {
        return duration;
    }
    return std::fmod(played, duration);
}

void AnimationPose::Prepare(SceneObject& object) {
    const IMesh* mesh = object.PreparePose() != nullptr ? object.Mesh() : nullptr;
    const std::size_t count = mesh != nullptr ? mesh->Elements().size() : 0;
    locals.resize(count);
    sampled.resize(count);
    inside.resize(count);
}

void AnimationPose::SampleSubtree(const IMesh& mesh, int element, int clip, float seconds) {
    const auto& elements = mesh.Elements();
    mesh.SampleClip(clip, seconds, sampled.data());
    for (int i = 0; i < static_cast<int>(elements.size()); ++i) {
        const int parent = elements[static_cast<std::size_t>(i)].parent;
        const bool below = parent >= 0 && parent < i && inside[static_cast<std::size_t>(parent)] != 0;
        inside[static_cast<std::size_t>(i)] = element < 0 || i == element || below ? 1 : 0;
        if (inside[static_cast<std::size_t>(i)] != 0) {
            locals[static_cast<std::size_t>(i)] = sampled[static_cast<std::size_t>(i)];
        }
    }
}

bool AnimationPose::Sample(const KeyChannel& clips, const IMesh& mesh, float time, int framesPerSecond) {
    const int last = clips.LastAtOrBefore(time);
    std::copy(mesh.RestLocals().begin(), mesh.RestLocals().end(), locals.begin());
    bool any = false;
    // From the whole mesh down: elements stand behind their parents in the table.
    for (int element = -1, next = 0; next != -1; element = next) {
        const CFilmAnimationKey* inForce = nullptr;
        next = -1;
        for (int i = 0; i <= last; ++i) {
            const auto& key =
                static_cast<const CFilmAnimationKey&>(*clips.Keys()[static_cast<std::size_t>(i)]);
            const int own = key.meshElement.empty() ? -1 : FindElement(mesh, key.meshElement);
            if (own == element) {
                inForce = &key;
            } else if (own > element && (next == -1 || own < next)) {
                next = own;
            }
        }
        const int clip = inForce != nullptr ? FindClip(mesh, inForce->animationName) : -1;
        if (clip >= 0) {
            const float duration = mesh.Clips()[static_cast<std::size_t>(clip)].duration;
            SampleSubtree(mesh, element, clip, ClipTime(*inForce, time, duration, framesPerSecond));
            any = true;
        }
    }
    return any;
}

void AnimationPose::Apply(const KeyChannel& clips, SceneObject& object, float time, int framesPerSecond) {
    Matrix4* pose = object.PreparePose();
    if (pose == nullptr) {
        return;
    }
    if (locals.size() != object.Mesh()->Elements().size()) {
        Prepare(object);
    }
    const bool any = Sample(clips, *object.Mesh(), time, framesPerSecond);
    if (any) {
        ComposePose(*object.Mesh(), locals.data(), pose);
    }
    object.SetPosed(any);
}

Matrix4 AnimationPose::ElementAt(const KeyChannel& clips, const SceneObject& object,
                                 const std::string& element, float time, int framesPerSecond) {
    const IMesh* mesh = object.Mesh();
    const int index = mesh != nullptr ? FindElement(*mesh, element) : -1;
    if (index < 0) {
        return {};
    }
    AnimationPose own;
    own.locals.resize(mesh->Elements().size());
    own.sampled.resize(mesh->Elements().size());
    own.inside.resize(mesh->Elements().size());
    own.Sample(clips, *mesh, time, framesPerSecond);
    ComposePose(*mesh, own.locals.data(), own.sampled.data());
    return own.sampled[static_cast<std::size_t>(index)];
}

} // namespace engine
