#include "timeline/rows/TrackOrder.h"

#include "helpers/rules/FilmsLightHelper.h"
#include "plugin/session/FilmSession.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iterator>

namespace {

enum class Group { Level, Sun, Camera, Object, Light };

Group GroupOf(CFilmTrack* track) {
    if (AsLevelTrack(track) != nullptr) {
        return Group::Level;
    }
    if (IsSunTrack(track)) {
        return Group::Sun;
    }
    if (AsCameraTrack(track) != nullptr) {
        return Group::Camera;
    }
    return AsObjectTrack(track) != nullptr ? Group::Object : Group::Light;
}

const EditorObject* ObjectOf(const FilmSession& session, CFilmTrack* track) {
    if (const auto* actor = AsObjectTrack(track)) {
        return actor->actor;
    }
    const CFilmsLightHelper* helper = session.FindLightByTrack(track);
    return helper != nullptr ? helper->object : nullptr;
}

const char* NameOf(const FilmSession& session, CFilmTrack* track) {
    if (const auto* camera = AsCameraTrack(track)) {
        return camera->cameraName.c_str();
    }
    const EditorObject* object = ObjectOf(session, track);
    return object != nullptr ? object->name.c_str() : "";
}

/// What a track's place depends on.
struct Place {
    CFilmTrack* track;
    Group group;
    bool hasLight; ///< a light that has a helper
    const char* name;
};

Place PlaceOf(const FilmSession& session, CFilmTrack* track) {
    const Group group = GroupOf(track);
    const bool hasLight = group == Group::Light && session.FindLightByTrack(track) != nullptr;
    return {track, group, hasLight, NameOf(session, track)};
}

int Sign(int value) {
    return (value > 0) - (value < 0);
}

/// A light without a helper comes last; two such are equal.
int CompareLights(const Place& a, const Place& b) {
    if (!a.hasLight || !b.hasLight) {
        return static_cast<int>(b.hasLight) - static_cast<int>(a.hasLight);
    }
    return Sign(std::strcmp(a.name, b.name));
}

int ComparePlaces(const void* left, const void* right) {
    const Place& a = *static_cast<const Place*>(left);
    const Place& b = *static_cast<const Place*>(right);
    if (a.group != b.group) {
        return a.group < b.group ? -1 : 1;
    }
    switch (a.group) {
    case Group::Level:
    case Group::Sun:
        return 0;
    case Group::Light:
        return CompareLights(a, b);
    default:
        return Sign(std::strcmp(a.name, b.name));
    }
}

} // namespace

/// qsort, since it stands any comparison without harm.
void SortTracks(const FilmSession& session, std::vector<CFilmTrack*>& tracks) {
    if (tracks.empty()) {
        return;
    }
    std::vector<Place> places;
    std::ranges::transform(tracks, std::back_inserter(places),
                           [&](CFilmTrack* track) { return PlaceOf(session, track); });
    std::qsort(places.data(), places.size(), sizeof(Place), ComparePlaces);
    std::ranges::transform(places, tracks.begin(), &Place::track);
}

std::string RootRowName(const FilmSession& session, CFilmTrack* track) {
    if (AsLevelTrack(track) != nullptr) {
        return "Level";
    }
    if (IsSunTrack(track)) {
        return "Sun";
    }
    return NameOf(session, track);
}
