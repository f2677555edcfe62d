#include "timeline/TrackOrder.h"

#include "helpers/FilmsLightHelper.h"
#include "plugin/PluginImpl.h"

#include <cstdlib>
#include <cstring>

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

const EditorObject* ObjectOf(CFilmTrack* track) {
    if (const auto* actor = AsObjectTrack(track)) {
        return actor->actor;
    }
    const CFilmsLightHelper* helper = GetPlugin().lightHelpers.FindByTrack(track);
    return helper != nullptr ? helper->object : nullptr;
}

const char* NameOf(CFilmTrack* track) {
    if (const auto* camera = AsCameraTrack(track)) {
        return camera->cameraName.c_str();
    }
    const EditorObject* object = ObjectOf(track);
    return object != nullptr ? object->name.c_str() : "";
}

int Sign(int value) {
    return (value > 0) - (value < 0);
}

/// A light without a helper comes last; two such are equal.
int CompareLights(CFilmTrack* a, CFilmTrack* b) {
    const CFilmsLightHelperMgr& helpers = GetPlugin().lightHelpers;
    const bool aHas = helpers.FindByTrack(a) != nullptr;
    const bool bHas = helpers.FindByTrack(b) != nullptr;
    if (!aHas || !bHas) {
        return static_cast<int>(bHas) - static_cast<int>(aHas);
    }
    return Sign(std::strcmp(NameOf(a), NameOf(b)));
}

int CompareTracks(const void* left, const void* right) {
    CFilmTrack* a = *static_cast<CFilmTrack* const*>(left);
    CFilmTrack* b = *static_cast<CFilmTrack* const*>(right);
    const Group groupA = GroupOf(a);
    const Group groupB = GroupOf(b);
    if (groupA != groupB) {
        return groupA < groupB ? -1 : 1;
    }
    switch (groupA) {
    case Group::Level:
    case Group::Sun:
        return 0;
    case Group::Light:
        return CompareLights(a, b);
    default:
        return Sign(std::strcmp(NameOf(a), NameOf(b)));
    }
}

} // namespace

/// qsort, since it stands any comparison without harm.
void SortTracks(std::vector<CFilmTrack*>& tracks) {
    if (!tracks.empty()) {
        std::qsort(tracks.data(), tracks.size(), sizeof(CFilmTrack*), CompareTracks);
    }
}

std::string RootRowName(CFilmTrack* track) {
    if (AsLevelTrack(track) != nullptr) {
        return "Level";
    }
    if (IsSunTrack(track)) {
        return "Sun";
    }
    return NameOf(track);
}
