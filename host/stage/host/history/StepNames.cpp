#include "host/stage/host/history/StepNames.h"

#include "host/engine/KeyFormat.h"
#include "host/engine/LevelData.h"
#include "plugin/contract/ClassIds.h"

#include <algorithm>
#include <functional>
#include <unordered_map>
#include <vector>

namespace stage {

namespace {

using engine::PartKind;

/// Rows with more bytes are not counted key by key.
constexpr std::size_t kMostCounted = 2 << 20;

/// "Crane", "Crane and 1 other", "Crane and 2 others".
std::string ListOf(const std::vector<std::string>& names) {
    const std::size_t others = names.size() - 1;
    return names.front() +
           (others == 0 ? "" : " and " + std::to_string(others) + (others == 1 ? " other" : " others"));
}

const char* VerbOf(Deed::Kind kind) {
    switch (kind) {
    case Deed::Kind::Paste:
        return "Paste ";
    case Deed::Kind::Duplicate:
        return "Duplicate ";
    case Deed::Kind::Import:
        return "Import ";
    case Deed::Kind::Place:
        return "Place ";
    case Deed::Kind::Group:
        return "Group ";
    case Deed::Kind::Ungroup:
        return "Ungroup ";
    case Deed::Kind::JoinGroup:
        return "Add ";
    case Deed::Kind::LeaveGroup:
        return "Take ";
    case Deed::Kind::RenameGroup:
        return "Rename group to ";
    }
    return "Change ";
}

/// How many keys are others than before.
std::size_t ChangedKeys(const PartChange& change) {
    const std::string none;
    const std::string& before = change.before ? *change.before : none;
    const std::string& after = change.after ? *change.after : none;
    if (before.size() + after.size() > kMostCounted) {
        return 2; // many
    }
    std::unordered_map<std::string_view, int> count;
    for (const std::string_view key : engine::KeyPieces(before, change.key.keys)) {
        ++count[key];
    }
    std::size_t added = 0;
    for (const std::string_view key : engine::KeyPieces(after, change.key.keys)) {
        added += --count[key] < 0 ? 1 : 0;
    }
    std::size_t removed = 0;
    for (const auto& [key, left] : count) {
        removed += left > 0 ? static_cast<std::size_t>(left) : 0;
    }
    return std::max(added, removed);
}

class Namer {
public:
    Namer(const PartChanges& partChanges, const PartStore& partStore, const engine::LevelData& levelData,
          const std::optional<Deed>& toldDeed)
        : changes(partChanges), store(partStore), data(levelData), deed(toldDeed) {}

    std::string Name() const {
        for (const auto topic : {&Namer::OfFilms, &Namer::OfObjectSet, &Namer::OfGroups, &Namer::OfTracks,
                                 &Namer::OfKeys, &Namer::OfFilmHeads, &Namer::OfObjects, &Namer::OfRest}) {
            std::string name = (this->*topic)();
            if (!name.empty()) {
                return name;
            }
        }
        return "Change";
    }

private:
    std::vector<const PartChange*> Of(PartKind kind) const {
        std::vector<const PartChange*> found;
        for (const PartChange& change : changes) {
            if (change.key.kind == kind) {
                found.push_back(&change);
            }
        }
        return found;
    }

    std::string FilmName(int slot) const {
        const auto part = store.Find({PartKind::Film, slot});
        return part ? engine::FilmFactsOf(*part).name : std::string();
    }

    std::string OfFilms() const {
        for (const PartChange* film : Of(PartKind::Film)) {
            if (!film->before) {
                return "New film " + engine::FilmFactsOf(*film->after).name;
            }
            if (!film->after) {
                return "Delete film " + engine::FilmFactsOf(*film->before).name;
            }
        }
        return {};
    }

    /// Of what was made; "Create " also where not all of it was made by the deed.
    const char* MakingVerb() const {
        const bool fits = deed && std::ranges::all_of(Of(PartKind::Object), [this](const PartChange* object) {
                              return object->before || Concerns(object->key.id);
                          });
        return fits ? VerbOf(deed->kind) : "Create ";
    }

    bool Concerns(int id) const { return std::ranges::find(deed->objects, id) != deed->objects.end(); }

    std::string OfObjectSet() const {
        std::vector<std::string> made;
        std::vector<std::string> gone;
        for (const PartChange* object : Of(PartKind::Object)) {
            if (!object->before) {
                made.push_back(engine::ObjectFactsOf(*object->after).name);
            } else if (!object->after) {
                // A plug-in may keep it from now on.
                const bool isKept = data.Find(object->key.id) != nullptr;
                (isKept ? made : gone).push_back(engine::ObjectFactsOf(*object->before).name);
                if (isKept) {
                    return "Hand over " + made.front();
                }
            }
        }
        return !gone.empty() ? "Delete " + ListOf(gone) : !made.empty() ? MakingVerb() + ListOf(made) : "";
    }

    std::string TrackName(const engine::TrackFacts& track) const {
        if (track.classId == ClassId::ObjectTrack) {
            const engine::SceneObject* actor = data.Find(track.actorId);
            return actor != nullptr ? actor->name : std::string("an actor");
        }
        return track.classId == ClassId::CameraTrack ? track.camera : std::string("a light");
    }

    std::string OfTracks() const {
        std::vector<std::string> made;
        std::vector<std::string> gone;
        int film = 0;
        for (const PartChange* track : Of(PartKind::Track)) {
            const auto facts = engine::TrackFactsOf(track->after ? *track->after : *track->before);
            if (facts.isSun || (track->before && track->after)) {
                continue;
            }
            (track->after ? made : gone).push_back(TrackName(facts));
            film = track->key.id;
        }
        if (made.empty() && gone.empty()) {
            return {};
        }
        return made.empty() ? "Remove " + ListOf(gone) + " from " + FilmName(film)
                            : "Add " + ListOf(made) + " to " + FilmName(film);
    }

    std::string OfKeys() const {
        std::size_t count = 0;
        int film = -1;
        bool isCounted = true;
        for (const PartChange* keys : Of(PartKind::Keys)) {
            count += ChangedKeys(*keys);
            isCounted = isCounted && keys->before.value_or("").size() < kMostCounted;
            film = keys->key.id;
        }
        if (film < 0) {
            return {};
        }
        return "Edit " + FilmName(film) + ": " +
               (!isCounted ? "many keys" : std::to_string(count) + (count == 1 ? " key" : " keys"));
    }

    std::string OfFilmHeads() const {
        for (const PartChange* change : Of(PartKind::Film)) {
            const engine::FilmFacts before = engine::FilmFactsOf(*change->before);
            const engine::FilmFacts after = engine::FilmFactsOf(*change->after);
            if (before.name != after.name) {
                return "Rename film " + before.name + " to " + after.name;
            }
            return (before.length != after.length ? "Length of " : "Edit ") + after.name;
        }
        for (const PartChange* change : Of(PartKind::Track)) {
            return "Edit " + FilmName(change->key.id);
        }
        return {};
    }

    static const char* ChangeVerb(const engine::ObjectFacts& before, const engine::ObjectFacts& after) {
        if (before.meshName != after.meshName) {
            return "Mesh of ";
        }
        if (before.parentId != after.parentId) {
            return after.parentId != 0 ? "Attach " : "Set free ";
        }
        if (before.visible != after.visible) {
            return after.visible ? "Show " : "Hide ";
        }
        if (before.matrix != after.matrix) {
            return "Move ";
        }
        return before.others != after.others ? "Light of " : "Change ";
    }

    /// Of several, what goes along with its parent is not named.
    std::string OfObjects() const {
        std::vector<const PartChange*> objects = Of(PartKind::Object);
        if (objects.empty()) {
            return {};
        }
        std::vector<const PartChange*> upper = objects;
        std::erase_if(upper, [&](const PartChange* change) {
            const int parent = engine::ObjectFactsOf(*change->after).parentId;
            return std::ranges::any_of(objects, [&](const PartChange* o) { return o->key.id == parent; });
        });
        objects = upper.empty() ? objects : upper;
        const engine::ObjectFacts before = engine::ObjectFactsOf(*objects.front()->before);
        const engine::ObjectFacts after = engine::ObjectFactsOf(*objects.front()->after);
        if (before.name != after.name) {
            return "Rename " + before.name + " to " + after.name;
        }
        std::vector<std::string> names;
        names.reserve(objects.size());
        for (const PartChange* change : objects) {
            names.push_back(engine::ObjectFactsOf(*change->after).name);
        }
        return ChangeVerb(before, after) + ListOf(names);
    }

    /// By the deed alone: the part of the groups names them, and not what was done.
    std::string OfGroups() const {
        std::vector<const engine::SceneObject*> members;
        for (const int id : deed && !Of(PartKind::Groups).empty() ? deed->objects : std::vector<int>()) {
            if (const engine::SceneObject* object = data.Find(id)) {
                members.push_back(object);
            }
        }
        if (members.empty() || (deed->kind == Deed::Kind::LeaveGroup && !Of(PartKind::Object).empty())) {
            return {}; // what left hangs on something else now
        }
        const engine::Group* group = data.GroupOf(members.front());
        const std::string groupName = group != nullptr ? group->name : "a group";
        if (deed->kind == Deed::Kind::RenameGroup) {
            return VerbOf(deed->kind) + groupName;
        }
        std::vector<std::string> names;
        names.reserve(members.size());
        for (const engine::SceneObject* member : members) {
            names.push_back(member->name);
        }
        return VerbOf(deed->kind) + ListOf(names) +
               (deed->kind == Deed::Kind::JoinGroup    ? " to " + groupName
                : deed->kind == Deed::Kind::LeaveGroup ? " out of a group"
                                                       : "");
    }

    std::string OfRest() const {
        if (!Of(PartKind::Groups).empty()) {
            return "Groups";
        }
        return !Of(PartKind::Sun).empty() ? "Sun" : "Change";
    }

    const PartChanges& changes;
    const PartStore& store;
    const engine::LevelData& data;
    const std::optional<Deed>& deed;
};

/// Rows of lights folded, which plug-ins keep with the lights themselves.
bool IsOnlyShownOtherwise(const PartChange& change) {
    return change.key.kind == PartKind::RootObjects && change.before && change.after &&
           engine::WithoutLooks(change.key, *change.before) ==
               engine::WithoutLooks(change.key, *change.after);
}

bool IsSunTrack(const PartChange& change) {
    return change.key.kind == PartKind::Track && !change.before && change.after &&
           engine::TrackFactsOf(*change.after).isSun;
}

} // namespace

std::string StepName(const PartChanges& changes, const PartStore& store, const engine::LevelData& data,
                     const std::optional<Deed>& deed) {
    return Namer(changes, store, data, deed).Name();
}

bool IsOnlyLook(const PartChanges& changes) {
    const bool hasSun = std::ranges::any_of(changes, IsSunTrack);
    return std::ranges::all_of(changes, [hasSun](const PartChange& change) {
        const bool sameHead = change.key.kind == PartKind::Film && change.before && change.after &&
                              engine::FilmHeadOf(*change.before) == engine::FilmHeadOf(*change.after);
        return engine::IsLook(change.key) || IsOnlyShownOtherwise(change) ||
               (hasSun && (IsSunTrack(change) || sameHead || change.key.kind == PartKind::RootObjects));
    });
}

} // namespace stage
