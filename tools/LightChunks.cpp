#include "tools/LightChunks.h"

#include "host/engine/FilmManager.h"
#include "host/engine/LevelData.h"
#include "plugin/contract/Chunks.h"
#include "plugin/contract/ClassIds.h"
#include "plugin/contract/Film.h"
#include "plugin/rules/FilmViewSettings.h"

namespace {

constexpr std::uint32_t kGLLight = 0;
constexpr std::uint32_t kDynLight = 1;
/// Kind and sun flag in front of the object.
constexpr std::uint32_t kLightHeaderBytes = 5;

/// Calls the function with each track of all films that is driven by a light.
template <class Function> void ForEachLightTrack(const engine::FilmManager& films, Function function) {
    for (IFilm* film : films.films) {
        if (film == nullptr) {
            continue;
        }
        for (CFilmTrack* track : film->tracks) {
            if (CFilmGLLightTrack* light = AsGLLightTrack(track)) {
                function(kGLLight, light->isSun != 0, light->lightObject);
            } else if (CFilmDynLightTrack* dynamic = AsDynLightTrack(track)) {
                function(kDynLight, false, dynamic->lightObject);
            }
        }
    }
}

} // namespace

std::vector<LightChunks::Light> LightChunks::LightsInOrder() const {
    std::vector<Light> lights;
    Light sun;
    ForEachLightTrack(data->Films(), [&](std::uint32_t kind, bool isSun, EditorObject*& object) {
        if (object == nullptr) {
            return;
        }
        if (isSun) {
            sun = {kGLLight, true, object};
        } else {
            lights.push_back({kind, false, object});
        }
    });
    if (sun.object != nullptr) {
        lights.insert(lights.begin(), sun);
    }
    return lights;
}

void LightChunks::CollectHiddenObjects(IObjectCollection& collection) {
    if (data != nullptr) {
        for (const Light& light : LightsInOrder()) {
            light.object->savedAsObject = 0;
            collection.Add(light.object);
        }
    }
}

void LightChunks::SaveChunks(fs::file& file, IHostObject* object) {
    if (data == nullptr || object == nullptr || !object->IsA(ClassId::LevelRoot)) {
        return;
    }
    SaveViewSettings(file);
    ChunkSaveStart(file, kLights);
    for (const Light& light : LightsInOrder()) {
        ChunkSaveStart(file, kLight);
        const std::uint8_t isSun = light.isSun ? 1 : 0;
        file.Write(&light.kind, sizeof(light.kind));
        file.Write(&isSun, 1);
        light.object->Save(file);
        ChunkSaveEnd(file, kLight);
    }
    ChunkSaveEnd(file, kLights);
}

void LightChunks::SaveViewSettings(fs::file& file) const {
    ChunkSaveStart(file, kViewSettings);
    for (const IFilm* film : data->Films().films) {
        FilmViewSettings settings;
        if (film != nullptr) {
            settings.movieEnd = settings.viewEnd = film->length;
        }
        file.Write(&settings, sizeof(settings));
    }
    ChunkSaveEnd(file, kViewSettings);
}

void LightChunks::LoadChunk(IHostObject* object, fs::file& file, std::uint16_t id, std::uint32_t size) {
    if (id == kViewSettings) {
        return; // made anew from the films
    }
    loaded.clear();
    auto* root = static_cast<EditorObject*>(object);
    for (std::uint32_t counted = 0; counted + ChunkHeader::kBytes < size;) {
        ChunkHeader header;
        const std::uint32_t bytes = ChunkLoadHeader(file, header);
        if (header.id != kLight || bytes < kLightHeaderBytes || bytes > size - counted) {
            return;
        }
        Light light;
        std::uint8_t isSun = 0;
        file.Read(&light.kind, sizeof(light.kind));
        file.Read(&isSun, 1);
        light.isSun = isSun != 0;
        light.object = root->LoadObject(file, bytes - kLightHeaderBytes, ClassId::EditorObject, root);
        loaded.push_back(light);
        counted += bytes + ChunkHeader::kBytes;
    }
}

void LightChunks::PairWithTracks(engine::FilmManager& films) {
    EditorObject* sun = nullptr;
    auto next = loaded.begin();
    if (next != loaded.end() && next->isSun) {
        sun = next->object;
        ++next;
    }
    ForEachLightTrack(films, [&](std::uint32_t, bool isSun, EditorObject*& object) {
        if (isSun) {
            object = sun;
        } else if (next != loaded.end()) {
            object = next->object;
            ++next;
        }
    });
}
