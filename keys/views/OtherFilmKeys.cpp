#include "keys/views/OtherFilmKeys.h"

#include "files/base/Log.h"
#include "keys/rules/NewKey.h"
#include "plugin/session/FilmSession.h"

#include <algorithm>
#include <cmath>

namespace {

/// Seconds within which a key stands at the present time.
constexpr float kSameTime = 0.00001f;
/// Where the search for the nearest keys starts.
constexpr float kBeforeAll = -1.0f;
constexpr float kAfterAll = 100000.0f;

const char* RefusalOf(int kind) {
    switch (kind) {
    case KeyKind::Position:
        return "New position key was not added to track\n";
    case KeyKind::Rotation:
        return "New rotation key was not added to track\n";
    default:
        return "New scale key was not added to track\n";
    }
}

} // namespace

OtherFilmKeys::OtherFilmKeys(const FilmSession& shown, CFilmTrack& keyTrack, float keyTime)
    : session(shown), track(keyTrack), time(keyTime) {
}

CFilmVectorKey* OtherFilmKeys::FindKey(int kind) {
    const auto found = std::ranges::find_if(track.keys, [this, kind](const IFilmKey* key) {
        return key->kind == kind && std::abs(key->time - time) < kSameTime;
    });
    return found == track.keys.end() ? nullptr : static_cast<CFilmVectorKey*>(*found);
}

RotationsAbout OtherFilmKeys::Rotations() {
    RotationsAbout about{FindKey(KeyKind::Rotation), nullptr, nullptr};
    float beforeTime = kBeforeAll;
    float afterTime = kAfterAll;
    for (const IFilmKey* key : track.keys) {
        if (key->kind != KeyKind::Rotation) {
            continue;
        }
        if (key->time < time && key->time > beforeTime) {
            beforeTime = key->time;
            about.before = static_cast<const CFilmVectorKey*>(key);
        } else if (key->time > time && key->time < afterTime) {
            afterTime = key->time;
            about.after = static_cast<const CFilmVectorKey*>(key);
        }
    }
    return about;
}

void OtherFilmKeys::TellMoved(const CFilmVectorKey& key) {
    session.TellKeyWritten(&key);
}

void OtherFilmKeys::AddKey(const TransformChange& change) {
    NewKey key(session.GetFilmManager()->keyFactory, change.kind);
    if (!key) {
        return;
    }
    key->SetTime(time);
    if (!key.AddTo(track)) {
        DebugPrint("%s", RefusalOf(change.kind));
    }
    key->SetValue(change.newValue.Data()); // Required: a refused key is filled in all the same.
    key->SetInHandle(change.newValue.Data());
    key->SetOutHandle(change.newValue.Data());
}
