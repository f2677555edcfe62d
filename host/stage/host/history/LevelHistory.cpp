#include "host/stage/host/history/LevelHistory.h"

#include "host/engine/Film.h"
#include "host/engine/FilmAtRest.h"
#include "host/engine/FilmManager.h"
#include "host/stage/host/DryWrite.h"
#include "host/stage/host/EditorHost.h"
#include "host/stage/host/history/StepNames.h"
#include "host/stage/host/SelectedIds.h"
#include "processor/UpperHalves.h"

#include <algorithm>
#include <utility>

namespace stage {

namespace {

int OpenFilm(const engine::LevelData& data) {
    const IFilm* film = data.filmManager->currentFilm;
    return film != nullptr ? film->index : -1;
}

/// Parts of the same steps make a series: the same rows turned by the same wheel.
std::uint64_t SeriesOf(const PartChanges& changes, std::uint64_t number) {
    std::uint64_t series = number;
    for (const PartChange& change : changes) {
        if (!change.before || !change.after) {
            return 0;
        }
        if (!engine::IsLook(change.key)) {
            const std::size_t key = std::hash<std::uint64_t>{}(change.key.track) * 31 +
                                    static_cast<std::size_t>(change.key.id) * 7 +
                                    static_cast<std::size_t>(change.key.keys) * 3 +
                                    static_cast<std::size_t>(change.key.kind);
            series ^= (key + 1) * 0x9E3779B97F4A7C15;
        }
    }
    return series | 1u;
}

} // namespace

class LevelHistory::Busy {
public:
    explicit Busy(bool& flag) : isBusy(flag) { isBusy = true; }
    ~Busy() { isBusy = false; }
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;

private:
    bool& isBusy;
};

LevelHistory::LevelHistory(EditorHost& editorHost) : host(editorHost) {
}

void LevelHistory::TellChanged() const {
    if (changed) {
        changed();
    }
}

void LevelHistory::Forget() {
    started = hasFreshStep = false;
    edits.Clear();
    looks.clear();
    deeds.clear();
    store.Clear();
    TellChanged();
}

void LevelHistory::Tell(Deed deed) {
    deeds.push_back(std::move(deed));
}

std::optional<Deed> LevelHistory::TakeDeed() {
    const std::vector<Deed> told = std::exchange(deeds, {});
    if (told.empty() ||
        std::ranges::any_of(told, [&](const Deed& deed) { return deed.kind != told[0].kind; })) {
        return std::nullopt;
    }
    Deed all{told[0].kind, {}};
    for (const Deed& deed : told) {
        all.objects.insert(all.objects.end(), deed.objects.begin(), deed.objects.end());
    }
    return all;
}

std::optional<std::uint64_t> LevelHistory::Start() {
    Forget();
    started = Look(PartStore::Look::All).has_value();
    selected = SelectedIds(host.level);
    return started ? std::optional(store.FullHash()) : std::nullopt;
}

std::optional<PartChanges> LevelHistory::Look(PartStore::Look look) {
    if (host.level.Data() == nullptr) {
        return std::nullopt;
    }
    processor::ClearUpperHalves();
    const Busy reading(busy);
    try {
        const UnsavedState unsaved(*host.level.Data());
        const engine::FilmAtRest film(host.level, engine::FilmAtRest::ClosedFilms::AllDark);
        return store.Update(host.level, look);
    } catch (const std::exception&) {
        store.Clear(); // a save tells why
        edits.Clear();
        looks.clear();
        started = false;
        return std::nullopt;
    }
}

bool LevelHistory::Note(Pace pace) {
    if (busy || host.level.Data() == nullptr) {
        return false;
    }
    if (!started) {
        Start();
        return false;
    }
    std::optional<PartChanges> changes = Look(PartStore::Look::Told);
    const std::optional<Deed> deed = TakeDeed();
    hasFreshStep = changes && Take(std::move(*changes), pace, /*isLate*/ false, deed);
    selected = SelectedIds(host.level);
    return hasFreshStep;
}

bool LevelHistory::NoteAll() {
    const bool wasFresh = hasFreshStep;
    const bool found = Note();
    if (busy || !started) {
        return found;
    }
    hasFreshStep = hasFreshStep || wasFresh;
    std::optional<PartChanges> changes = Look(PartStore::Look::All);
    return changes && (Take(std::move(*changes), Pace::Single, hasFreshStep, std::nullopt) || found);
}

bool LevelHistory::Take(PartChanges changes, Pace pace, bool isLate, const std::optional<Deed>& deed) {
    const bool hasWork =
        std::ranges::any_of(changes, [](const PartChange& change) { return !engine::IsLook(change.key); });
    if (!hasWork) {
        return false; // how it is shown is nothing to take back
    }
    if (IsOnlyLook(changes)) {
        TakeLook(changes);
        return false;
    }
    if (isLate && looks.empty()) {
        edits.Amend(changes, store.WorkHash());
        TellChanged();
        return true;
    }
    for (HistoryStep& look : looks) {
        edits.AddLook(std::move(look));
    }
    looks.clear();
    HistoryStep step;
    step.name = StepName(changes, store, *host.level.Data(), deed);
    step.hashAfter = store.WorkHash();
    step.film = OpenFilm(*host.level.Data());
    step.selectedBefore = selected;
    step.selectedAfter = SelectedIds(host.level);
    step.series = pace == Pace::Series ? SeriesOf(changes, seriesNumber) : 0;
    edits.Add(std::move(step), changes);
    TellChanged();
    return true;
}

/// What was undone stays to be redone.
void LevelHistory::TakeLook(const PartChanges& changes) {
    HistoryStep step;
    step.isLook = true;
    step.hashAfter = store.WorkHash();
    if (!edits.CanRedo()) {
        edits.Add(std::move(step), changes);
        return;
    }
    EditHistory one;
    one.Add(std::move(step), changes);
    looks.push_back(one.Steps().front());
}

bool LevelHistory::MayRestore() const {
    const engine::LevelData* data = host.level.Data();
    const auto* film =
        data != nullptr ? static_cast<const engine::Film*>(data->filmManager->currentFilm) : nullptr;
    return data != nullptr && !busy && (film == nullptr || !film->IsPlaying());
}

bool LevelHistory::Undo() {
    if (!MayRestore()) {
        return false;
    }
    NoteAll();
    return edits.CanUndo() && RestoreTo(edits.BeforeUndo());
}

bool LevelHistory::Redo() {
    if (!MayRestore()) {
        return false;
    }
    NoteAll();
    return edits.CanRedo() && RestoreTo(edits.AfterRedo());
}

bool LevelHistory::GoTo(std::size_t done) {
    if (!MayRestore()) {
        return false;
    }
    NoteAll();
    return done <= edits.Steps().size() && done != edits.Done() && RestoreTo(done);
}

void LevelHistory::SetLimit(std::size_t bytes) {
    edits.SetLimit(bytes);
    TellChanged();
}

std::uint64_t LevelHistory::ContentNow() const {
    processor::ClearUpperHalves();
    const UnsavedState unsaved(*host.level.Data());
    const engine::FilmAtRest film(host.level, engine::FilmAtRest::ClosedFilms::AllDark);
    return store.HashNow(host.level, PartStore::Look::All);
}

std::optional<std::string_view> LevelHistory::Present(const PartTargets& targets,
                                                      const engine::PartKey& key) const {
    const auto target = targets.find(key);
    return target != targets.end() ? std::optional<std::string_view>(target->second) : store.Find(key);
}

bool LevelHistory::AddTargets(PartTargets& targets, const HistoryStep& step, bool isBack) const {
    for (const PartDelta& part : step.parts) {
        const auto present = Present(targets, part.key);
        if (EditHistory::NumberOf(present) != (isBack ? part.after : part.before)) {
            if (engine::IsLook(part.key)) {
                continue; // the user shows it otherwise since
            }
            return false;
        }
        std::optional<std::string> bytes;
        if (isBack ? part.wasThere : part.isThere) {
            const std::string_view from = present.value_or("");
            bytes = isBack ? part.bytes.Before(from) : part.bytes.After(from);
        }
        targets[part.key] = std::move(bytes);
    }
    return true;
}

bool LevelHistory::RestoreTo(std::size_t done) {
    PartTargets targets;
    bool fits = true;
    for (auto look = looks.rbegin(); look != looks.rend(); ++look) {
        fits = fits && AddTargets(targets, *look, /*isBack*/ true);
    }
    for (std::size_t i = edits.Done(); i > done; --i) {
        fits = fits && AddTargets(targets, edits.Steps()[i - 1], /*isBack*/ true);
    }
    for (std::size_t i = edits.Done(); i < done; ++i) {
        fits = fits && AddTargets(targets, edits.Steps()[i], /*isBack*/ false);
    }
    if (!fits) {
        Start();
        host.windows.Report("The level has changed in a way that can't be taken back");
        return false;
    }
    std::erase_if(targets, [this](const auto& target) {
        const auto present = store.Find(target.first);
        return present == std::optional<std::string_view>(target.second);
    });
    const std::vector<int> toSelect = edits.SelectedAt(done);
    looks.clear();
    edits.SetDone(done);
    hasFreshStep = false;
    EndSeries();
    const bool good = Carry(std::move(targets));
    if (host.level.Data() != nullptr) {
        host.Select(ObjectsOf(host.level, toSelect));
        selected = SelectedIds(host.level);
    }
    host.windows.ObjectsChanged();
    host.RedrawViews();
    TellChanged();
    return good;
}

void LevelHistory::ApplyToStore(const PartTargets& targets) {
    for (const auto& [key, bytes] : targets) {
        store.Set(key, bytes);
    }
}

/// The second time round, if any, everything comes from its parts.
bool LevelHistory::Carry(PartTargets targets) {
    LevelRestore restore(host, store);
    LevelRestore::Extent extent = restore.ExtentOf(targets);
    for (;;) {
        bool good = false;
        {
            const Busy restoring(busy);
            good = restore.Restore(targets, extent);
        }
        if (host.level.Data() == nullptr) {
            return false;
        }
        ApplyToStore(targets);
        std::optional<PartChanges> strays = Look(PartStore::Look::All);
        if (!strays) {
            return false;
        }
        const bool hasWork = std::ranges::any_of(
            *strays, [](const PartChange& change) { return !engine::IsLook(change.key); });
        if (!hasWork && good) {
            return true;
        }
        // Nobody but plug-ins has done anything: a level that comes from its parts gets what a loaded one
        // gets.
        if (extent == LevelRestore::Extent::All || (good && IsOnlyLook(*strays))) {
            TakeLook(*strays);
            return true;
        }
        targets.clear();
        for (PartChange& stray : *strays) {
            if (!engine::IsLook(stray.key)) {
                targets[stray.key] = std::move(stray.before);
            }
        }
        extent = LevelRestore::Extent::All;
    }
}

} // namespace stage
