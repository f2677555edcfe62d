#include "host/stage/host/history/LevelRestore.h"

#include "host/engine/FilmManager.h"
#include "host/engine/LevelFile.h"
#include "host/stage/host/EditorHost.h"
#include "host/stage/host/SelectedIds.h"
#include "plugin/contract/ClassIds.h"
#include "plugin/contract/EventCodes.h"

#include <algorithm>
#include <vector>

namespace stage {

namespace {

using engine::PartKey;
using engine::PartKind;
using Extent = LevelRestore::Extent;

/// Of a part that is there and stays.
Extent ExtentOfChange(const PartKey& key, std::string_view before, std::string_view after) {
    switch (key.kind) {
    case PartKind::Keys:
        return Extent::Keys;
    case PartKind::Film: {
        const bool same = engine::TrackOrderOf(before) == engine::TrackOrderOf(after) &&
                          engine::FilmFactsOf(before).name == engine::FilmFactsOf(after).name;
        return same ? Extent::Keys : Extent::All; // lists of films are told by event 6 alone
    }
    case PartKind::Track:
        return engine::TrackFactsOf(after).classId == ClassId::CameraTrack ? Extent::Keys : Extent::All;
    case PartKind::Object:
    case PartKind::ObjectPlugins:
    case PartKind::Root:
    case PartKind::Groups:
    case PartKind::Sun:
        return Extent::Places;
    default:
        return Extent::All;
    }
}

} // namespace

Extent LevelRestore::ExtentOf(const PartTargets& targets) const {
    Extent extent = Extent::Keys;
    for (const auto& [key, bytes] : targets) {
        const auto present = store.Find(key);
        const bool stays = present && bytes;
        const bool comesOrGoes = present.has_value() != bytes.has_value();
        if (comesOrGoes && key.kind != PartKind::Keys && key.kind != PartKind::ObjectPlugins) {
            return Extent::All;
        }
        extent = std::max(extent, stays                        ? ExtentOfChange(key, *present, *bytes)
                                  : key.kind == PartKind::Keys ? Extent::Keys
                                                               : Extent::Places);
    }
    return extent;
}

bool LevelRestore::Restore(const PartTargets& targets, Extent extent) {
    if (extent == Extent::Keys) {
        const bool good = RestoreInPlace(targets);
        host.plugins.SendEvent(EventCode::ObjectSetChanged, nullptr);
        ObjectList none;
        host.plugins.SendEvent(EventCode::ObjectsChangedOutside, &none);
        return good;
    }
    host.plugins.SendEvent(EventCode::Suspend, nullptr);
    bool good = host.level.Data() != nullptr;
    if (good) {
        host.level.Data()->Films().DropParked();
        if (extent == Extent::Places) {
            good = RestoreInPlace(targets);
            GiveLooks(targets);
            TellObjects(targets);
        } else {
            RestoreAll(targets);
        }
    }
    host.plugins.SendEvent(EventCode::Resume, nullptr);
    return good;
}

bool LevelRestore::RestoreInPlace(const PartTargets& targets) {
    bool good = true;
    for (const auto& [key, bytes] : targets) {
        if (!engine::IsLook(key)) {
            good = engine::RestorePart(host.level, key, bytes) && good;
        }
    }
    return good;
}

void LevelRestore::GiveLooks(const PartTargets& targets) {
    for (const auto& target : targets) {
        if (engine::IsLook(target.first) && target.second) {
            host.plugins.Guarded("LoadChunk",
                                 [&] { engine::GivePluginChunks(host.level, target.first, *target.second); });
        }
    }
}

void LevelRestore::TellObjects(const PartTargets& targets) {
    ObjectList changed;
    for (const auto& [key, bytes] : targets) {
        engine::SceneObject* object = key.kind == PartKind::Object ? host.level.FindObject(key.id) : nullptr;
        if (object != nullptr) {
            changed.push_back(object);
        }
    }
    if (!changed.empty()) {
        host.plugins.SendEvent(EventCode::ObjectsRenamed, nullptr);
        host.plugins.SendEvent(EventCode::ObjectSetChanged, nullptr);
        host.plugins.SendEvent(EventCode::ObjectsChangedOutside, &changed);
    }
}

void LevelRestore::RestoreAll(const PartTargets& targets) {
    const engine::PartSource source = [&](const PartKey& key) -> std::optional<std::string_view> {
        const auto target = targets.find(key);
        return target != targets.end() ? std::optional<std::string_view>(target->second) : store.Find(key);
    };
    std::string bytes = engine::AssembleLevel(*host.level.Data(), source);
    const std::vector<int> selected = SelectedIds(host.level);
    ObjectList all;
    host.level.CollectObjects(all);
    host.level.SetSelection(all);
    host.plugins.SendEvent(EventCode::ObjectsDeleting, nullptr);
    host.level.ClearSelection();
    host.plugins.SendEvent(EventCode::ReleaseRenderResources, nullptr);
    engine::RefillLevel(host.level, std::move(bytes));
    engine::NumberTracks(*host.level.Data(), source);
    host.plugins.SendEvent(EventCode::LevelLoaded, nullptr);
    // A level that was loaded is shown from its start; this one is shown as it was.
    for (int place = 0; source({PartKind::Root, place}) || source({PartKind::RootObjects, place}); ++place) {
        if (const auto chunk = source({PartKind::Root, place})) {
            const std::string kept(*chunk);
            host.plugins.Guarded("LoadChunk", [&] {
                engine::GivePluginChunks(host.level, {PartKind::Root, place}, kept);
            });
        }
    }
    host.level.SetSelection(ObjectsOf(host.level, selected));
    host.plugins.SendEvent(EventCode::SelectionChanged, nullptr);
    host.windows.SelectionChanged();
}

} // namespace stage
