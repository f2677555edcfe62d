#pragma once

#include "host/engine/AnimationPose.h"
#include "host/engine/OwnPlace.h"
#include "host/engine/TrackBase.h"

namespace engine {

/// Drives a level object: its matrix, its visibility and the pose of its mesh.
class ObjectTrack final : public TrackOf<CFilmObjectTrack, ClassId::ObjectTrack> {
public:
    explicit ObjectTrack(FilmManager& filmManager);
    ~ObjectTrack() override;

    void SetActor(EditorObject* object, bool isVirtual) override;
    void SetParent(EditorObject* object, bool isVirtual, const std::string& element) override;
    void ToParentSpace(float* matrix) const override;

    void Pose(float time) override;
    void Begin() override;
    void Rest() override;
    void ShowAtRest() const override;
    void Forget(const DoomedObjects& doomed) override;
    void Relink(const LevelData& data, std::vector<std::string>& messages) override;
    void Refresh() override;
    const EditorObject* Driven() const override { return actor; }

    /// Takes down where the actor stands, unless that is known: the film is about to pose it.
    void KeepPlace();
    SceneObject* Actor() const;
    SceneObject* AttachedTo() const;
    /// The actor's matrix at a time in the space that it is posed in: its parent object's, or the world.
    Matrix4 LocalAt(float time) const;
    /// Mesh-space matrix of an element of the actor at a time; nothing is posed.
    Matrix4 ElementAt(const std::string& element, float time) const;

    /// False when the film leaves the actor's mesh elements as they are.
    bool HasClips() const;

    /// True while posing means no more than three vector channels that make a free object's matrix.
    bool IsPlain() const;

    ObjectLink actorLink;
    ObjectLink parentLink;
    bool actorIsVirtual = false;
    bool parentIsVirtual = false;
    int order = 0; ///< mark of Film's ordering

private:
    /// The actor's own place as far as it is known while a film or a move has it elsewhere, else null.
    const OwnPlace* KnownPlace() const;
    void CaptureBase();

    Matrix4 base; ///< what the actor's matrix is without keys
    OwnPlace ownPlace;
    AnimationPose animation;
    bool shownBefore = true; ///< the actor's visibility outside the film
    bool hides = false;
};

} // namespace engine
