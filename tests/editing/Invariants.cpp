#include "tests/editing/Invariants.h"

#include "keys/views/TrackKey.h"
#include "tests/editing/AttributesInvariants.h"
#include "tests/editing/Living.h"
#include "tests/editing/RowInvariants.h"
#include "tests/editing/World.h"

#include <algorithm>
#include <cmath>

namespace editing {

namespace {

using Answer = std::optional<Failure>;

bool InOrder(float a, float b) {
    return a <= b; // false for what is no number
}

Answer CheckAxis(const CFilmsMainCtrl& control) {
    const CMarkedGridCtrl& ruler = *control.grid;
    const float movie = control.movieEnd - control.movieStart;
    if (!InOrder(control.movieStart, control.movieEnd) || !std::isfinite(movie)) {
        return Failure{"axis", "the time axis is inverted or no number"};
    }
    const float slack = 1e-5f * std::max(std::fabs(control.movieEnd), 1.0f);
    if (!InOrder(control.viewEnd, control.movieEnd + slack) || !std::isfinite(control.viewStart)) {
        return Failure{"view", "the view ends behind the axis"};
    }
    if (!InOrder(control.movieStart, control.viewStart) && !(control.hScroll->page > movie - slack)) {
        return Failure{"view", "the view starts before the axis"};
    }
    if (!InOrder(ruler.viewStart, ruler.viewEnd) || !InOrder(ruler.rangeStart, ruler.viewStart) ||
        !InOrder(ruler.viewEnd, ruler.rangeEnd)) {
        return Failure{"ruler-view", "the ruler shows what is not in its axis"};
    }
    if (!std::isfinite(control.currentTime) || !std::isfinite(control.mouseTime) ||
        !std::isfinite(control.secondsPerPixel)) {
        return Failure{"time", "cursor, mouse or zoom is no number"};
    }
    for (const CTrackCtrl* row : control.tracks) {
        if (row->rangeStart != ruler.rangeStart || row->rangeEnd != ruler.rangeEnd ||
            row->viewStart != ruler.viewStart || row->viewEnd != ruler.viewEnd ||
            row->ticDistance != ruler.ticDistance || row->bigTics != ruler.bigTics) {
            return Failure{"row-axis", Name(*row) + " and the ruler differ"};
        }
    }
    return std::nullopt;
}

Answer CheckDrag(const World& world, const CFilmsMainCtrl& control) {
    for (const CTrackCtrl* row : world.draggedInAxis ? control.tracks : std::list<CTrackCtrl*>{}) {
        const CTrackKey* key = row->dragKey;
        if (key != nullptr && !(InOrder(row->rangeStart, key->time) && InOrder(key->time, row->rangeEnd))) {
            return Failure{"drag-out", Name(*key) + " was dragged out of the axis"};
        }
    }
    return std::nullopt;
}

Answer CheckSelection(const CFilmsMainCtrl& control, const Living& living) {
    std::unordered_set<const CTrackKey*> selected;
    for (const CTrackKey* key : control.selectedKeys) {
        if (!living.views.contains(key)) {
            return Failure{"selected-gone", "a key is selected that is gone"};
        }
        if (!key->selected || !selected.insert(key).second) {
            return Failure{"selected-flag", Name(*key) + " is selected twice or without its flag"};
        }
    }
    for (const CTrackCtrl* row : control.tracks) {
        for (const CTrackKey* key : row->keys) {
            if (key->selected && !selected.contains(key)) {
                return Failure{"flagged", Name(*key) + " has the flag and is not selected"};
            }
        }
    }
    return std::nullopt;
}

Answer CheckHolders(const World& world, const CFilmsMainCtrl& control, const Living& living) {
    const IKeyAttributesDlg* dialog = world.plugin.keyAttributesDlg.get();
    const std::pair<const char*, const CTrackKey*> keys[] = {
        {"current-key", CurrentKey()},
        {"hover-key", control.hoverKey},
        {"active-key", control.activeKey},
        {"menu-key", control.menuKey},
        {"source-key", control.keyDuplicator.sourceKey},
        {"dialog-key", dialog != nullptr ? dialog->GetKey() : nullptr}};
    for (const auto& [name, key] : keys) {
        if (key != nullptr && !living.views.contains(key)) {
            return Failure{name, std::string(name) + " points at a view that is gone"};
        }
    }
    // Without its key the duplicator looks at no row.
    const CTrackCtrl* sourceRow =
        control.keyDuplicator.sourceKey != nullptr ? control.keyDuplicator.sourceRow : nullptr;
    const std::pair<const char*, const CTrackCtrl*> rows[] = {{"menu-row", control.menuRow},
                                                              {"top-row", control.topRow},
                                                              {"adjust-row", control.adjustRow},
                                                              {"source-row", sourceRow}};
    for (const auto& [name, row] : rows) {
        if (row != nullptr && !living.rows.contains(row)) {
            return Failure{name, std::string(name) + " points at a row that is gone"};
        }
    }
    for (const CTrackCtrl* row : control.tracks) {
        if (row->dragKey != nullptr && !living.views.contains(row->dragKey)) {
            return Failure{"drag-key", Name(*row) + " drags a view that is gone"};
        }
    }
    const IFilmKey* shown = dialog != nullptr ? dialog->GetRecord() : nullptr;
    if (shown != nullptr && !living.records.contains(shown)) {
        return Failure{"dialog-record", "the attributes window shows a record that is gone"};
    }
    return std::nullopt;
}

Answer CheckOthers(const World& world, const CFilmsMainCtrl& control, const Living& living) {
    const CMarkedGridCtrl& ruler = *control.grid;
    if (ruler.dragMark != nullptr && std::ranges::find(ruler.marks, ruler.dragMark) == ruler.marks.end()) {
        return Failure{"drag-mark", "the ruler drags a mark that is gone"};
    }
    const CFilmTrack* track = world.plugin.trackVisualizer.renderTrack;
    if (track != nullptr && !living.tracks.contains(track)) {
        return Failure{"drawn-track", "the path of a camera is drawn that is gone"};
    }
    const CCameraHelpersController& helpers = world.plugin.cameraHelpers;
    ObjectList shown;
    helpers.CollectObjects(shown);
    for (const EditorObject* object : shown) {
        if (!living.objects.contains(object)) {
            return Failure{"camera-helper", "a camera's handle stands for an object that is gone"};
        }
    }
    const CWnd* holder = CWnd::GetCapture();
    if (holder != nullptr && holder->GetParent() == &control &&
        dynamic_cast<const CTrackCtrl*>(holder) != nullptr &&
        !living.rows.contains(static_cast<const CTrackCtrl*>(holder))) {
        return Failure{"capture", "a row has the mouse that is in no list"};
    }
    if (!control.undoMgr.actions.empty() || control.undoMgr.position != -1) {
        return Failure{"undo", "an edit was recorded"};
    }
    return std::nullopt;
}

/// No record is lost and none is left over.
Answer CheckLedger(const World& world, const Ledger& before, const Ledger& now, const Living& living) {
    if (world.Films() == nullptr) {
        return std::nullopt;
    }
    auto& films = const_cast<engine::FilmManager&>(*world.Films());
    if (films.Keys().Count() != living.records.size()) {
        return Failure{"records", std::to_string(films.Keys().Count()) + " records exist and " +
                                      std::to_string(living.records.size()) + " have an owner"};
    }
    if (now.level != before.level) {
        return std::nullopt;
    }
    const auto missing = std::ranges::count_if(
        before.inTracks, [&](const IFilmKey* record) { return !now.inTracks.contains(record); });
    const auto added = std::ranges::count_if(
        now.inTracks, [&](const IFilmKey* record) { return !before.inTracks.contains(record); });
    if (missing > world.tally.mostRemoved) {
        return Failure{"keys-lost", std::to_string(missing) + " keys went, at most " +
                                        std::to_string(world.tally.mostRemoved) + " may"};
    }
    if (added > world.tally.mostAdded) {
        return Failure{"keys-added", std::to_string(added) + " keys came, at most " +
                                         std::to_string(world.tally.mostAdded) + " may"};
    }
    return std::nullopt;
}

} // namespace

Ledger::Ledger(const World& world) : level(world.editor.level.Data()) {
    for (const CFilmTrack* track : world.Tracks()) {
        inTracks.insert(track->keys.begin(), track->keys.end());
    }
}

namespace {

Answer CheckWindows(const World& world, const CFilmsMainCtrl& control, const Living& living,
                    const Ledger& now) {
    Answer wrong = CheckTree(control, living);
    const auto then = [&wrong](const auto& check) {
        if (!wrong) {
            wrong = check();
        }
    };
    then([&] { return CheckHolders(world, control, living); });
    then([&] { return CheckRows(world, control); });
    then([&] { return world.IsBehindBox() ? std::nullopt : CheckSelection(control, living); });
    then([&] { return CheckAxis(control); });
    then([&] { return CheckDrag(world, control); });
    then([&] { return CheckOthers(world, control, living); });
    then([&] { return CheckAttributes(world, control, now); });
    return wrong;
}

} // namespace

std::optional<Failure> CheckWhileOpen(const World& world) {
    const CFilmsMainCtrl& control = *world.Control();
    return CheckWindows(world, control, Living(world, control), Ledger(world));
}

std::optional<Failure> CheckInvariants(const World& world, const Ledger& before, const Ledger& now) {
    const CFilmsMainCtrl* control = world.Control();
    if (control == nullptr || control->grid == nullptr) {
        return Failure{"window", "the scenario window has no control any more"};
    }
    const Living living(world, *control);
    Answer wrong = CheckWindows(world, *control, living, now);
    wrong = wrong ? wrong : world.WrongInside();
    return wrong ? wrong : CheckLedger(world, before, now, living);
}

} // namespace editing
