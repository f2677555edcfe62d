#include "host/engine/ObjectTrack.h"

#include "host/engine/Changes.h"
#include "host/engine/Film.h"
#include "host/engine/FilmKeys.h"
#include "host/engine/FilmManager.h"
#include "host/engine/LevelData.h"

#include <cstring>

namespace engine {

ObjectTrack::ObjectTrack(FilmManager& filmManager) : TrackOf(filmManager) {
}

ObjectTrack::~ObjectTrack() = default;

SceneObject* ObjectTrack::Actor() const {
    return static_cast<SceneObject*>(actor);
}

SceneObject* ObjectTrack::AttachedTo() const {
    return static_cast<SceneObject*>(parentObject);
}

void ObjectTrack::SetActor(EditorObject* object, bool isVirtual) {
    if (object != actor) {
        Rest();
    }
    actor = object;
    actorIsVirtual = isVirtual;
    actorLink = {};
    CaptureBase();
    Refresh();
    Manager().OnStructureChanged();
}

void ObjectTrack::SetParent(EditorObject* object, bool isVirtual, const std::string& element) {
    parentObject = object;
    parentElement = element;
    parentIsVirtual = isVirtual;
    parentLink = {};
    Manager().OnStructureChanged();
}

const OwnPlace* ObjectTrack::KnownPlace() const {
    return ownPlace.IsOf(Actor()) ? &ownPlace : Manager().Data().PlaceBeforeMove(*Actor());
}

void ObjectTrack::CaptureBase() {
    if (Actor() == nullptr || Actor()->Pose()) {
        return;
    }
    const OwnPlace* known = KnownPlace();
    const Matrix4& own = known != nullptr ? known->World() : Actor()->World();
    if (IsFinite(own)) {
        base = own;
        NoteChange();
    }
}

void ObjectTrack::ToParentSpace(float* matrix) const {
    Matrix4 inverse;
    if (AttachedTo() != nullptr && Invert(AttachedTo()->ElementWorld(parentElement), inverse)) {
        Matrix4 local = Multiply(MatrixFrom(matrix), inverse);
        LeaveGimbal(local);
        std::memcpy(matrix, local.m, sizeof local.m);
    }
}

Matrix4 ObjectTrack::LocalAt(float time) const {
    Vector3 position;
    Vector3 rotation;
    Vector3 scale;
    const bool hasPosition = ChannelAs<VectorChannel>(KeyKind::Position)->Evaluate(time, position.Data());
    const bool hasRotation = ChannelAs<VectorChannel>(KeyKind::Rotation)->Evaluate(time, rotation.Data());
    const auto* scales = ChannelAs<VectorChannel>(KeyKind::Scale);
    const bool hasScale = scales != nullptr && scales->Evaluate(time, scale.Data());
    if (hasPosition && hasRotation && hasScale) {
        return Compose(position, rotation, scale);
    }
    // Without keys a part is that of the actor outside the film, or none in the space of a parent object.
    Matrix4 matrix = AttachedTo() != nullptr ? Matrix4{} : base;
    if (hasRotation || hasScale) {
        Vector3 basePosition;
        Vector3 baseRotation;
        Vector3 baseScale;
        Decompose(matrix, basePosition, baseRotation, baseScale);
        ComposeRows(hasRotation ? rotation : baseRotation, hasScale ? scale : baseScale, matrix.m);
    }
    if (hasPosition) {
        matrix.SetTranslation(position);
    }
    return matrix;
}

void ObjectTrack::Pose(float time) {
    SceneObject* object = Actor();
    if (object == nullptr) {
        return;
    }
    KeepPlace();
    const Matrix4 local = LocalAt(time);
    if (AttachedTo() != nullptr && AttachedTo() != object) {
        object->SetMatrix(Multiply(local, AttachedTo()->ElementWorld(parentElement)).m, 0);
    } else {
        object->SetMatrix(local.m, 0);
    }
    if (const KeyChannel* clips = Channel(KeyKind::Animation)) {
        animation.Apply(*clips, *object, time, Manager().FramesPerSecond());
    }
    if (const KeyChannel* flags = Channel(KeyKind::Flags); flags != nullptr && !flags->Empty()) {
        if (!hides) {
            shownBefore = object->visible != 0;
            hides = true;
        }
        object->visible = (FlagsAt(time, 0) & TrackFlag::ObjectHidden) == 0 ? 1 : 0;
    }
}

bool ObjectTrack::IsPlain() const {
    return actor != nullptr && parentObject == nullptr && Actor()->FreeMatrix() != nullptr &&
           Channel(KeyKind::Scale) != nullptr && Channel(KeyKind::Animation) == nullptr &&
           Channel(KeyKind::Flags) == nullptr;
}

void ObjectTrack::KeepPlace() {
    if (Actor() == nullptr || ownPlace.IsOf(Actor())) {
        return;
    }
    if (const OwnPlace* before = KnownPlace()) {
        ownPlace = *before;
    } else {
        ownPlace.Keep(*Actor());
    }
}

void ObjectTrack::Begin() {
    ownPlace.Forget();
    CaptureBase();
}

void ObjectTrack::Rest() {
    if (Actor() == nullptr) {
        return;
    }
    ownPlace.PutBack(Actor());
    Actor()->SetPosed(false);
    if (hides) {
        Actor()->visible = shownBefore ? 1 : 0;
        hides = false;
    }
}

void ObjectTrack::ShowAtRest() const {
    if (Actor() == nullptr) {
        return;
    }
    OwnPlace(ownPlace).PutBack(Actor());
    if (hides) {
        Actor()->visible = shownBefore ? 1 : 0;
    }
}

void ObjectTrack::Refresh() {
    TrackBase::Refresh();
    if (Actor() != nullptr) {
        animation.Prepare(*Actor());
    }
}

void ObjectTrack::Forget(const DoomedObjects& doomed) {
    TrackBase::Forget(doomed);
    if (doomed.Has(actor)) {
        actor = nullptr;
        hides = false;
        ownPlace.Forget();
    }
    if (doomed.Has(parentObject)) {
        parentObject = nullptr;
        parentElement.clear();
    }
}

void ObjectTrack::Relink(const LevelData& data, std::vector<std::string>& messages) {
    TrackBase::Relink(data, messages);
    if (actorLink.pendingId != 0) {
        if (SceneObject* object = data.Find(actorLink.pendingId)) {
            SetActor(object, actorIsVirtual);
        } else {
            messages.push_back("A track drives object " + std::to_string(actorLink.pendingId) +
                               ", which is not in the level.");
        }
    }
    if (parentLink.pendingId != 0) {
        if (SceneObject* object = data.Find(parentLink.pendingId)) {
            SetParent(object, parentIsVirtual, parentElement);
        } else {
            messages.push_back("A track is attached to object " + std::to_string(parentLink.pendingId) +
                               ", which is not in the level.");
        }
    }
}

bool ObjectTrack::HasClips() const {
    const KeyChannel* clips = Channel(KeyKind::Animation);
    return clips != nullptr && !clips->Empty();
}

Matrix4 ObjectTrack::ElementAt(const std::string& element, float time) const {
    if (Actor() == nullptr || !HasClips()) {
        return Actor() != nullptr ? Actor()->ElementMatrix(element) : Matrix4{};
    }
    return AnimationPose::ElementAt(*Channel(KeyKind::Animation), *Actor(), element, time,
                                    Manager().FramesPerSecond());
}

} // namespace engine
