#include "host/engine/Film.h"

#include "host/engine/CameraTrack.h"
#include "host/engine/FilmManager.h"
#include "host/engine/Level.h"
#include "host/engine/LevelData.h"
#include "host/engine/LevelTrack.h"
#include "host/engine/LightTrack.h"
#include "host/engine/ObjectTrack.h"
#include "processor/UpperHalves.h"

#include <algorithm>
#include <utility>

namespace engine {

namespace {

/// Attachments and parents deeper than this are taken for a ring.
constexpr int kDeepest = 64;

TrackBase* BaseOf(CFilmTrack* track) {
    switch (track->IsA(ClassId::ObjectTrack)     ? ClassId::ObjectTrack
            : track->IsA(ClassId::CameraTrack)   ? ClassId::CameraTrack
            : track->IsA(ClassId::GLLightTrack)  ? ClassId::GLLightTrack
            : track->IsA(ClassId::DynLightTrack) ? ClassId::DynLightTrack
                                                 : ClassId::LevelTrack) {
    case ClassId::ObjectTrack:
        return static_cast<ObjectTrack*>(track);
    case ClassId::CameraTrack:
        return static_cast<CameraTrack*>(track);
    case ClassId::GLLightTrack:
        return static_cast<GLLightTrack*>(track);
    case ClassId::DynLightTrack:
        return static_cast<DynLightTrack*>(track);
    default:
        return static_cast<LevelTrack*>(track);
    }
}

/// Place of a track class in the order of posing. Object tracks come first, in an order of their own.
int PosingRank(int classId) {
    switch (classId) {
    case ClassId::ObjectTrack:
        return 0;
    case ClassId::CameraTrack:
        return 2;
    case ClassId::LevelTrack:
        return 3;
    default:
        return 1;
    }
}

} // namespace

Matrix4 PresentPose::WorldOf(const SceneObject& object, const std::string& element) const {
    return object.ElementWorld(element);
}

Matrix4 PoseAtTime::WorldOf(const SceneObject& object, const std::string& element) const {
    return Place(object, element, kDeepest);
}

Matrix4 PoseAtTime::Place(const SceneObject& object, const std::string& element, int depth) const {
    const Matrix4 world = Place(object, depth);
    if (element.empty()) {
        return world;
    }
    const ObjectTrack* track = static_cast<ObjectTrack*>(AsObjectTrack(film.FindObjectTrack(&object)));
    const bool posed = track != nullptr && track->HasClips();
    return Multiply(posed ? track->ElementAt(element, time) : Free(object.ElementMatrix(element)), world);
}

Matrix4 PoseAtTime::Place(const SceneObject& object, int depth) const {
    const ObjectTrack* track = static_cast<ObjectTrack*>(AsObjectTrack(film.FindObjectTrack(&object)));
    if (depth == 0) {
        return Free(object.World());
    }
    if (track != nullptr) {
        const Matrix4 local = track->LocalAt(time);
        const SceneObject* parent = track->AttachedTo();
        return parent != nullptr && parent != &object
                   ? Multiply(local, Place(*parent, track->parentElement, depth - 1))
                   : local;
    }
    Matrix4 inverse;
    if (object.Parent() == nullptr || !Invert(object.Parent()->World(), inverse)) {
        return Free(object.World());
    }
    return Multiply(Free(Multiply(object.World(), inverse)), Place(*object.Parent(), depth - 1));
}

Film::Film(FilmManager& filmManager, int slot) : manager(filmManager) {
    index = slot;
    name = nameText.c_str();
}

Film::~Film() {
    for (CFilmTrack* track : tracks) {
        delete track;
    }
}

void Film::Empty() {
    active = playing = startFired = orderKnown = false;
    posedTime = 0.0f;
    plan.Clear();
    order.clear();
    bases.clear();
    mainTrack = nullptr;
    for (CFilmTrack* track : std::exchange(tracks, {})) {
        delete track;
    }
    foreignChunks.clear();
    SetName("");
    length = 10.0f; // seconds, as of a new one
    validated = 0;
    NoteChange();
}

void Film::SetName(const char* text) {
    nameText = text != nullptr ? text : "";
    name = nameText.c_str();
}

void Film::AddTrack(CFilmTrack* track) {
    if (track == nullptr || track->film != nullptr) {
        return;
    }
    const CFilmGLLightTrack* light = AsGLLightTrack(track);
    if (light != nullptr && light->isSun != 0) {
        manager.Data().OnShowing(); // a film that is shown gets one if it has none
    } else {
        manager.Data().OnEdited();
    }
    tracks.push_back(track);
    bases.push_back(BaseOf(track));
    order.reserve(bases.capacity());
    plan.Reserve(bases.size());
    track->film = this;
    OnStructureChanged();
    if (mainTrack == nullptr && track->IsA(ClassId::LevelTrack)) {
        mainTrack = track;
    }
}

CFilmTrack* Film::CreateLevelTrack() {
    return new LevelTrack(manager);
}
CFilmTrack* Film::CreateObjectTrack() {
    return new ObjectTrack(manager);
}
CFilmTrack* Film::CreateGLLightTrack() {
    return new GLLightTrack(manager);
}
CFilmTrack* Film::CreateDynLightTrack() {
    return new DynLightTrack(manager);
}
CFilmTrack* Film::CreateCameraTrack() {
    return new CameraTrack(manager);
}

CFilmTrack* Film::CreateTrack(int classId) {
    switch (classId) {
    case ClassId::LevelTrack:
        return CreateLevelTrack();
    case ClassId::ObjectTrack:
        return CreateObjectTrack();
    case ClassId::GLLightTrack:
        return CreateGLLightTrack();
    case ClassId::DynLightTrack:
        return CreateDynLightTrack();
    case ClassId::CameraTrack:
        return CreateCameraTrack();
    default:
        return nullptr;
    }
}

void Film::RemoveTrack(CFilmTrack* track, int) {
    const auto found = std::find(tracks.begin(), tracks.end(), track);
    // Every film has exactly one level track, which can't be removed.
    if (track == nullptr || found == tracks.end() || track == mainTrack) {
        return;
    }
    OnStructureChanged();
    BaseOf(track)->Rest();
    TellFreedLight(*BaseOf(track));
    bases.erase(bases.begin() + std::distance(tracks.begin(), found));
    tracks.erase(found);
    order.clear();
    OnStructureChanged();
    for (CFilmTrack* other : tracks) {
        if (CFilmLevelTrack* level = AsLevelTrack(other); level != nullptr &&
                                                          level->cameraHolder != nullptr &&
                                                          level->cameraHolder->activeCamera == track) {
            level->cameraHolder->activeCamera = nullptr;
        }
    }
    delete track;
}

void Film::TellFreedLight(const TrackBase& track) const {
    const bool isLight =
        track.TrackClass() == ClassId::GLLightTrack || track.TrackClass() == ClassId::DynLightTrack;
    const bool isSun = track.TrackClass() == ClassId::GLLightTrack &&
                       static_cast<const GLLightTrack&>(track).isSun != 0; // it serves all films and stays
    EditorObject* light = isLight && !isSun ? const_cast<EditorObject*>(track.Driven()) : nullptr;
    if (light != nullptr && !static_cast<SceneObject*>(light)->transient) {
        manager.Data().Owner().OnLightFreed(light);
    }
}

void Film::TellFreedLights() const {
    for (const TrackBase* base : bases) {
        TellFreedLight(*base);
    }
}

ObjectTrack* Film::TrackOfActor(const EditorObject* object) const {
    for (TrackBase* base : bases) {
        if (object != nullptr && base->TrackClass() == ClassId::ObjectTrack) {
            auto* track = static_cast<ObjectTrack*>(base);
            if (track->actor == object) {
                return track;
            }
        }
    }
    return nullptr;
}

CFilmTrack* Film::FindObjectTrack(const EditorObject* object) const {
    return TrackOfActor(object);
}

void Film::Activate() {
    active = true;
    orderKnown = false; // the ordering takes down where the actors stand
    plan.Clear();
    for (TrackBase* base : bases) {
        base->Begin();
    }
}

std::vector<TrackBase*> Film::UpperFirst() const {
    std::vector<std::pair<int, TrackBase*>> byDepth;
    for (TrackBase* base : bases) {
        int depth = 0;
        const EditorObject* above = base->Driven();
        for (; above != nullptr && above->parent != nullptr && depth < LevelData::kDeepestChild; ++depth) {
            above = above->parent;
        }
        byDepth.emplace_back(depth, base);
    }
    std::ranges::stable_sort(byDepth, {}, &std::pair<int, TrackBase*>::first);
    std::vector<TrackBase*> ordered;
    ordered.reserve(byDepth.size());
    for (const auto& [depth, base] : byDepth) {
        ordered.push_back(base);
    }
    return ordered;
}

void Film::Deactivate() {
    // What stands on another goes back to its place there once the other stands.
    for (TrackBase* base : UpperFirst()) {
        base->Rest();
    }
    active = false;
    playing = false;
    startFired = false;
}

void Film::PlaceInOrder(ObjectTrack& track, int depth) {
    if (track.order != 0 || depth == 0) {
        return;
    }
    track.order = 1;
    if (ObjectTrack* parent = TrackOfActor(track.parentObject)) {
        PlaceInOrder(*parent, depth - 1);
    }
    // Objects below another in the level move with it, so what drives the upper one goes first. What a
    // posing parent hangs on counts too.
    for (const EditorObject* start : {track.parentObject, track.actor}) {
        int steps = kDeepest;
        for (const EditorObject* above = start != nullptr ? start->parent : nullptr;
             above != nullptr && steps > 0; above = above->parent, --steps) {
            if (ObjectTrack* upper = TrackOfActor(above)) {
                PlaceInOrder(*upper, depth - 1);
            }
        }
    }
    if (track.IsPlain()) {
        plan.Add(track);
    } else {
        order.push_back(&track);
    }
}

void Film::MakeOrder() {
    order.clear();
    plan.Clear();
    for (TrackBase* base : bases) {
        if (base->TrackClass() == ClassId::ObjectTrack) {
            auto* track = static_cast<ObjectTrack*>(base);
            track->order = 0;
            track->KeepPlace();
        }
    }
    for (TrackBase* base : bases) {
        if (base->TrackClass() == ClassId::ObjectTrack) {
            PlaceInOrder(*static_cast<ObjectTrack*>(base), kDeepest);
        }
    }
    for (int rank = 1; rank <= 3; ++rank) {
        std::copy_if(bases.begin(), bases.end(), std::back_inserter(order),
                     [rank](const TrackBase* base) { return PosingRank(base->TrackClass()) == rank; });
    }
    orderKnown = true;
}

void Film::PoseCameras(float time) {
    for (TrackBase* base : bases) {
        if (base->TrackClass() == ClassId::CameraTrack) {
            base->Pose(time);
        }
    }
}

void Film::SetTime(float time, float previousTime) {
    // Whoever paints between frames leaves the registers in a state in which posing takes three times as
    // long.
    processor::ClearUpperHalves();
    const float now = SafeTime(time);
    if (!active) {
        PoseCameras(now);
        return;
    }
    if (!orderKnown) {
        MakeOrder();
    }
    plan.Pose(now);
    for (TrackBase* base : order) {
        base->Pose(now);
    }
    const bool goesBack = now < posedTime;
    posedTime = now;
    if (previousTime == -1.0f) {
        startFired = startFired && playing && !goesBack;
        return;
    }
    playing = true;
    const float previous = SafeTime(previousTime);
    const bool fromStart = previous == 0.0f && !startFired;
    startFired = startFired || fromStart;
    // By index: a sink must not change tracks, yet a bad one shall not bring the loop down.
    for (std::size_t i = 0; i < bases.size(); ++i) {
        bases[i]->Fire(previous, now, fromStart);
    }
}

void Film::Stop() {
    endedPlaying = playing;
    if (playing) {
        playing = false;
        for (std::size_t i = 0; i < bases.size(); ++i) {
            bases[i]->FireAtStop();
        }
    }
    startFired = false;
    if (IFilmSink* sink = manager.Data().Owner().FilmSink()) {
        sink->OnFilmStopped(*this);
    }
}

void Film::OnLevelLoaded() {
    std::vector<std::string> messages;
    Relink(messages);
    for (TrackBase* base : bases) {
        base->Refresh();
    }
}

void Film::Relink(std::vector<std::string>& messages) {
    std::vector<std::string> found;
    for (TrackBase* base : bases) {
        base->Relink(manager.Data(), found);
    }
    for (const std::string& message : found) {
        messages.push_back("Film \"" + nameText + "\": " + message);
    }
    OnStructureChanged();
}

void Film::Forget(const DoomedObjects& doomed) {
    for (TrackBase* base : bases) {
        base->Forget(doomed);
    }
    OnStructureChanged();
}

void Film::NewCameraName(std::string& cameraName) const {
    int number = 1;
    do {
        cameraName = "Camera " + std::to_string(number++);
    } while (FindCamera(cameraName) != nullptr);
}

CFilmTrack* Film::FindCamera(const std::string& cameraName) const {
    for (TrackBase* base : bases) {
        if (base->TrackClass() == ClassId::CameraTrack) {
            auto* camera = static_cast<CameraTrack*>(base);
            if (camera->cameraName == cameraName) {
                return camera;
            }
        }
    }
    return nullptr;
}

Vector3 Film::CameraPoint(CFilmTrack* camera, int kind, float time) {
    const auto* track = static_cast<CameraTrack*>(AsCameraTrack(camera));
    if (track == nullptr) {
        return {};
    }
    const float safe = SafeTime(time);
    return track->PointAt(kind, safe, PoseAtTime(*this, safe));
}

Vector3 Film::GetCameraPosition(CFilmTrack* camera, float time) {
    return CameraPoint(camera, KeyKind::CameraPosition, time);
}

Vector3 Film::GetCameraTarget(CFilmTrack* camera, float time) {
    return CameraPoint(camera, KeyKind::CameraTarget, time);
}

void Film::SampleCameraPath(TrackRenderData* data, int) {
    auto* camera = data != nullptr ? static_cast<CameraTrack*>(AsCameraTrack(data->track)) : nullptr;
    if (camera == nullptr) {
        return;
    }
    processor::ClearUpperHalves();
    const int detail = std::clamp(data->detail, 1, 1000);
    for (const int strip : {0, 1}) {
        std::int32_t count = 0;
        for (const Vector3& point :
             camera->paths[strip].Sample(*this, *camera, KeyKind::CameraPosition + strip, detail)) {
            *data->strips[strip].At(count++) = point;
        }
        // A strip never shrinks; what a former sampling left behind the end does not belong to the path.
        data->strips[strip].count = count;
    }
}

} // namespace engine
