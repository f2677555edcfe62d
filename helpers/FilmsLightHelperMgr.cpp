#include "helpers/FilmsLightHelperMgr.h"

#include "helpers/HelperPlugin.h"
#include "plugin/contract/Chunks.h"
#include "plugin/contract/EventCodes.h"
#include "plugin/contract/ObjectFlags.h"
#include "plugin/contract/TrackObjects.h"
#include "plugin/rules/ChunkReader.h"
#include "plugin/rules/LevelChunkIds.h"
#include "plugin/session/FilmSession.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

namespace {

/// Where the sun's helper stands along its direction, in units from the origin.
constexpr float kSunDistance = 1000.0f;

template <class Visit> void ForEachFilm(const IFilmManager* manager, Visit visit) {
    if (manager == nullptr) {
        return;
    }
    for (IFilm* film : manager->films) {
        if (film != nullptr) {
            visit(film);
        }
    }
}

Vector3 SunPosition(const ISunObject& sun) {
    const Vector3& d = sun.direction;
    const float length = std::sqrt(d.x * d.x + d.y * d.y + d.z * d.z);
    const float factor = length > 0.0f ? kSunDistance / length : 0.0f;
    return {d.x * factor, d.y * factor, d.z * factor};
}

} // namespace

CFilmsLightHelperMgr::~CFilmsLightHelperMgr() {
    DeleteHelpers();
}

void CFilmsLightHelperMgr::Add(CFilmsLightHelper* helper) {
    if (helper != nullptr) {
        helpers.push_back(helper);
    }
}

void CFilmsLightHelperMgr::Remove(CFilmsLightHelper* helper) {
    if (helper != nullptr) {
        helpers.remove(helper);
    }
}

void CFilmsLightHelperMgr::DeleteHelpers() {
    for (CFilmsLightHelper* helper : helpers) {
        delete helper;
    }
    helpers.clear();
}

CFilmsLightHelper* CFilmsLightHelperMgr::FindByObject(const EditorObject* object) const {
    if (object == nullptr) {
        return nullptr;
    }
    for (CFilmsLightHelper* helper : helpers) {
        if (helper->object != nullptr && helper->object->id == object->id) {
            return helper;
        }
    }
    return nullptr;
}

CFilmsLightHelper* CFilmsLightHelperMgr::FindHolder(const CFilmTrack* track) const {
    if (track == nullptr) {
        return nullptr;
    }
    const auto found = std::ranges::find_if(
        helpers, [track](const CFilmsLightHelper* helper) { return helper->track == track; });
    return found == helpers.end() ? nullptr : *found;
}

CFilmsLightHelper* CFilmsLightHelperMgr::FindByTrack(CFilmTrack* track) const {
    if (CFilmsLightHelper* holder = FindHolder(track)) {
        return holder;
    }
    return IsSunTrack(track) ? GetSunHelper() : nullptr;
}

CFilmsLightHelper* CFilmsLightHelperMgr::GetSunHelper() const {
    const auto found = std::ranges::find_if(helpers, &CFilmsLightHelper::isSun);
    return found == helpers.end() ? nullptr : *found;
}

CFilmsLightHelper* CFilmsLightHelperMgr::GetOrCreateSunHelper(ILevelData* levelData) {
    if (CFilmsLightHelper* sun = GetSunHelper()) {
        return sun;
    }
    IEditor* editor = session.editor;
    if (creatingSun || levelData == nullptr || levelData->sunObject == nullptr || editor == nullptr ||
        !editor->HasObjectClass(HelperPlugin::kName) || session.glLightClass == nullptr) {
        return nullptr;
    }
    HelperObjectParams params;
    params.position = SunPosition(*levelData->sunObject);
    params.className = ClassName::GLLight;
    params.modelPath = session.glLightClass->path;
    EditorObject* object = nullptr;
    creatingSun = true;
    editor->CreateHelperObject(HelperPlugin::kName, session.pluginId, HelperPlugin::kType, params, &object);
    creatingSun = false;
    if (object == nullptr) {
        return nullptr;
    }
    auto* helper = new CFilmsLightHelper;
    helper->isSun = true;
    helper->object = object;
    Add(helper);
    object->GetInfo()->Update(0);
    if (session.level != nullptr) {
        session.level->MakeUniqueName("SunHelper", object, 0);
    }
    editor->BroadcastEvent(EventCode::ObjectSetChanged, session.pluginId, nullptr);
    editor->RedrawViews();
    return helper;
}

void CFilmsLightHelperMgr::SetLightsForFilm(IFilm* film, bool hide) {
    if (film == nullptr) {
        return;
    }
    for (CFilmTrack* track : film->tracks) {
        EditorObject* object = LightOf(track);
        if (object == nullptr) {
            continue;
        }
        object->visible = hide ? 0 : 1;
        const std::uint32_t others = object->GetFlags() & ~ObjectFlag::LeftOut;
        object->SetFlags(hide ? others | ObjectFlag::LeftOut : others);
    }
}

void CFilmsLightHelperMgr::HideFromLevel(ObjectList* objects) {
    if (objects == nullptr) {
        return;
    }
    for (const CFilmsLightHelper* helper : helpers) {
        if (helper->object != nullptr) {
            helper->object->savedAsObject = 0;
            objects->push_back(helper->object);
        }
    }
}

void CFilmsLightHelperMgr::Save(fs::file& file, const IFilmManager* manager) const {
    const auto saveOne = [&file](const CFilmsLightHelper* helper) {
        if (helper != nullptr) {
            ChunkSaveStart(file, LevelChunk::LightHelper);
            helper->Save(file);
            ChunkSaveEnd(file, LevelChunk::LightHelper);
        }
    };
    saveOne(GetSunHelper());
    ForEachFilm(manager, [&](IFilm* film) {
        for (CFilmTrack* track : film->tracks) {
            if (IsLightTrack(track) && !IsSunTrack(track)) {
                saveOne(FindHolder(track));
            }
        }
    });
}

void CFilmsLightHelperMgr::Load(fs::file& file, EditorObject* reader, std::uint32_t size) {
    ForEachSubChunk(file, size, [&](const ChunkHeader&, std::uint32_t bytes) {
        if (reader == nullptr) {
            ChunkReader(file, bytes).SkipRest();
            return;
        }
        auto helper = std::make_unique<CFilmsLightHelper>();
        if (bytes < CFilmsLightHelper::kHeaderBytes) {
            ChunkReader(file, bytes).SkipRest();
        } else {
            helper->Load(file, reader, bytes);
        }
        // A light that can't be read keeps its place: those behind it are paired by their order. A sun is
        // made anew instead.
        if (helper->object != nullptr || !helper->isSun) {
            Add(helper.release());
        }
    });
}

void CFilmsLightHelperMgr::PairWithTracks(ILevelData* levelData) {
    if (levelData == nullptr) {
        return;
    }
    // A snapshot: a sun helper made on the way must not be taken for a track's helper.
    const std::vector<CFilmsLightHelper*> loaded(helpers.begin(), helpers.end());
    std::size_t next = !loaded.empty() && loaded.front()->isSun ? 1 : 0;
    ForEachFilm(levelData->filmManager, [&](IFilm* film) {
        for (CFilmTrack* track : film->tracks) {
            EditorObject** slot = LightSlotOf(track);
            if (slot == nullptr) {
                continue;
            }
            if (IsSunTrack(track)) {
                const CFilmsLightHelper* sun = GetOrCreateSunHelper(levelData);
                *slot = sun != nullptr ? sun->object : nullptr;
            } else if (next < loaded.size()) {
                loaded[next]->track = track;
                *slot = loaded[next]->object;
                ++next;
            } else {
                *slot = nullptr;
            }
        }
    });
}

void CFilmsLightHelperMgr::ForgetFilm(const IFilm* film) {
    for (CFilmsLightHelper* helper : helpers) {
        if (helper->track != nullptr && helper->track->film == film) {
            helper->track = nullptr;
        }
    }
}

void CFilmsLightHelperMgr::ForgetObject(const EditorObject* object) {
    helpers.remove_if([object](CFilmsLightHelper* helper) {
        if (helper->object != object) {
            return false;
        }
        delete helper;
        return true;
    });
}
