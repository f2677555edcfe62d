#include "host/stage/host/ObjectUses.h"

#include "host/engine/FilmManager.h"
#include "host/engine/LevelData.h"
#include "host/stage/host/AssetUses.h"
#include "plugin/contract/TrackObjects.h"

#include <algorithm>
#include <unordered_set>
#include <vector>

namespace stage {

namespace {

constexpr std::size_t kMostNames = 6;
constexpr std::size_t kMostSentences = 6;

/// Each once, in the order in which they were met.
class Names {
public:
    void Add(const std::string& name) {
        if (std::ranges::find(names, name) == names.end()) {
            names.push_back(name);
        }
    }
    bool IsEmpty() const { return names.empty(); }
    /// "Intro, Harbour and End", "Intro, Harbour and 5 others".
    std::string Text() const {
        const std::size_t shown = names.size() > kMostNames ? kMostNames - 1 : names.size();
        std::string text;
        for (std::size_t i = 0; i < shown; ++i) {
            const bool isLast = i + 1 == names.size();
            text += (i == 0 ? "" : isLast ? " and " : ", ") + names[i];
        }
        return shown < names.size() ? text + " and " + std::to_string(names.size() - shown) + " others"
                                    : text;
    }

private:
    std::vector<std::string> names;
};

bool HasEffectAt(const CFilmTrack& track, int id) {
    return std::ranges::any_of(track.keys, [id](const IFilmKey* key) {
        const CFilmFxKey* effect = AsEffect(*key);
        return effect != nullptr && effect->objectId == id;
    });
}

bool LinksTo(const CFilmTrack& track, const EditorObject* object) {
    return std::ranges::any_of(track.keys, [object](const IFilmKey* key) {
        const bool isLink = key->kind == KeyKind::CameraPosition || key->kind == KeyKind::CameraTarget;
        return isLink && static_cast<const CFilmLinkedKey*>(key)->linkObject == object;
    });
}

class Teller {
public:
    Teller(const engine::LevelData& levelData, const ObjectList& objects)
        : level(levelData), doomed(objects.begin(), objects.end()) {}

    void Tell(const EditorObject& object) {
        Names films;
        Names attached;
        Names cameras;
        Names effects;
        for (int slot = 0; slot < IFilmManager::kFilms; ++slot) {
            const IFilm* film = level.filmManager->GetFilm(slot);
            if (film == nullptr) {
                continue;
            }
            for (CFilmTrack* track : film->tracks) {
                const std::string name = film->name != nullptr ? film->name : "a film";
                const CFilmObjectTrack* actor = AsObjectTrack(track);
                if (PlayedObject(track) == &object) {
                    films.Add(name);
                } else if (HasEffectAt(*track, object.id)) {
                    effects.Add(name);
                }
                if (actor != nullptr && actor->parentObject == &object && !doomed.contains(actor->actor)) {
                    attached.Add(TrackUser(*track) + " in " + name);
                }
                if (LinksTo(*track, &object)) {
                    cameras.Add(TrackUser(*track) + " in " + name);
                }
            }
        }
        Names children;
        for (const EditorObject* child = object.firstChild; child != nullptr; child = child->nextSibling) {
            if (!doomed.contains(child)) {
                children.Add(child->name);
            }
        }
        Say(object.name + " is in ", films);
        Say(object.name + " is followed by ", cameras);
        Say(object.name + " has effects in ", effects);
        Say(object.name + " carries ", attached);
        Say(object.name + " carries ", children);
    }
    std::string Text() const {
        std::string text;
        for (std::size_t i = 0; i < std::min(sentences.size(), kMostSentences); ++i) {
            text += (i == 0 ? "" : "; ") + sentences[i];
        }
        return sentences.size() > kMostSentences ? text + "; and more" : text;
    }

private:
    void Say(const std::string& beginning, const Names& names) {
        if (!names.IsEmpty()) {
            sentences.push_back(beginning + names.Text());
        }
    }

    const engine::LevelData& level;
    const std::unordered_set<const EditorObject*> doomed;
    std::vector<std::string> sentences;
};

} // namespace

std::string TellUses(const engine::LevelData& level, const ObjectList& objects) {
    Teller teller(level, objects);
    for (const EditorObject* object : objects) {
        teller.Tell(*object);
    }
    return teller.Text();
}

} // namespace stage
