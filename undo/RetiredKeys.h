#pragma once

#include <unordered_set>
#include <vector>

class CFilmsUndoAction;
class CTrackKey;
class IFilmKey;
class TimelineContext;

/// What edits took out of a film or never put in, kept alive until the film is shown anew: pointers to a
/// removed view stay good so long. Owns all of it.
class RetiredKeys {
public:
    /// The control may be null: then what goes tells nobody, and no record goes back.
    explicit RetiredKeys(TimelineContext* control) : timeline(control) {}
    ~RetiredKeys();
    RetiredKeys(const RetiredKeys&) = delete;
    RetiredKeys& operator=(const RetiredKeys&) = delete;

    /// Takes the action over. A view that is kept already doesn't get a second owner: the action's `ownsKey`
    /// is then cleared.
    void KeepAction(CFilmsUndoAction* action);
    /// Takes over a view that is in no row, with its record.
    void KeepView(CTrackKey* view);
    /// Takes over a record that is in no track.
    void KeepRecord(IFilmKey* record);
    /// A view that somebody else is about to delete.
    void Forget(const CTrackKey* view);
    /// Destroys all of it.
    void Clear();

    /// Oldest first.
    const std::vector<CFilmsUndoAction*>& Actions() const { return actions; }
    const std::vector<CTrackKey*>& Views() const { return views; }
    const std::vector<IFilmKey*>& Records() const { return records; }

private:
    /// False for what is kept already.
    bool Note(const void* thing) { return noted.insert(thing).second; }

    TimelineContext* timeline;
    std::vector<CFilmsUndoAction*> actions;
    std::vector<CTrackKey*> views; ///< those in no action that owns its key
    std::vector<IFilmKey*> records;
    std::unordered_set<const void*> noted; ///< actions, and all views that go with them or with `views`
};
