#include "host/stage/headless/FilmSounds.h"

#include "host/engine/References.h"
#include "plugin/contract/Film.h"

#include <algorithm>
#include <cmath>

namespace headless {

namespace {

constexpr int kBlocksPerSecond = 10;

std::array<float, 3> PlaceOf(const EditorObject& object) {
    const float* matrix = object.GetMatrix(0);
    return {matrix[12], matrix[13], matrix[14]};
}

} // namespace

FilmSounds::FilmSounds(const std::string& levelFolder, int rate, Output samplesOutput)
    : folder(levelFolder), mixer(rate), output(std::move(samplesOutput)) {
}

void FilmSounds::OnKeyFired(IFilm&, CFilmTrack& track, const IFilmKey& key, float late) {
    CFilmObjectTrack* actorTrack = AsObjectTrack(&track);
    EditorObject* actor = actorTrack != nullptr ? actorTrack->actor : nullptr;
    sound::SoundRequest request;
    if (key.kind == KeyKind::Speech) {
        if (actor != nullptr) {
            request.position = PlaceOf(*actor);
        }
        Start(static_cast<const CFilmSpeechKey&>(key).speechPath, key, request, actor, late);
    } else if (key.kind == KeyKind::Sound) {
        const auto& record = static_cast<const CFilmSoundKey&>(key);
        EditorObject* follows = record.followObject != 0 ? actor : nullptr;
        request.looped = record.looped != 0;
        if (follows != nullptr) {
            request.position = PlaceOf(*follows);
        } else if (!(record.soundPosition == Vector3())) {
            request.position = {record.soundPosition.x, record.soundPosition.y, record.soundPosition.z};
        }
        Start(record.wavPath, key, request, follows, late);
    }
}

void FilmSounds::Start(const std::string& path, const IFilmKey& key, sound::SoundRequest request,
                       EditorObject* follows, float late) {
    if (mixer.Space() == nullptr || path.empty()) {
        return;
    }
    request.path = engine::ReferencePath(folder, path);
    request.offset = late;
    try {
        const int sound = mixer.Space()->Play(request);
        if (sound != 0) {
            playing.push_back({sound, key.endTime, follows});
        }
    } catch (const sound::SoundError& error) {
        errors.insert(error.what());
    }
}

void FilmSounds::OnFilmStopped(IFilm&) {
    if (mixer.Space() != nullptr) {
        mixer.Space()->StopAll();
    }
    playing.clear();
}

void FilmSounds::Update(float time) {
    std::erase_if(playing, [&](const Playing& entry) {
        const bool over = time >= entry.end;
        if (over) {
            mixer.Space()->Stop(entry.sound);
        } else if (entry.follows != nullptr) {
            mixer.Space()->Move(entry.sound, PlaceOf(*entry.follows));
        }
        return over;
    });
}

void FilmSounds::MixUpTo(float time, float length, const float* camera) {
    if (mixer.Space() != nullptr) {
        if (camera != nullptr) {
            mixer.Space()->SetListener(camera);
        }
        Update(time);
    }
    const long long wanted = std::llround(static_cast<double>(length) * mixer.Rate());
    const long long most = mixer.Rate() / kBlocksPerSecond;
    while (mixed < wanted) {
        const long long frames = std::min(wanted - mixed, most);
        block.clear();
        mixer.Render(static_cast<int>(frames), block);
        mixed += frames;
        output(block);
    }
}

} // namespace headless
