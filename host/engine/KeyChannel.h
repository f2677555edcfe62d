#pragma once

#include "host/engine/Changes.h"
#include "plugin/contract/FilmTrack.h"
#include "plugin/contract/KeyKindTable.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace engine {

class FilmManager;

/// The keys of one kind of one track, in the order of time. Owns them; the track's list only refers to them.
/// Lives as long as its track.
class KeyChannel : public MKTrack {
public:
    KeyChannel(CFilmTrack& owner, int kind, FilmManager& manager);
    ~KeyChannel() override;
    KeyChannel(const KeyChannel&) = delete;
    KeyChannel& operator=(const KeyChannel&) = delete;

    /// The new keys' `track` is set, but putting them into the track's list is left to the caller. An empty
    /// rest of file is a body without keys. Refused are bodies that are cut short or of another kind, bytes
    /// behind them, times that are no finite numbers, and keys that have a duration where the kind has none.
    void Import(fs::file& file, int zero, int kind) override;
    void Export(fs::file& file, int zero) override;
    void CollectKeys(KeyList& list) const override;

    void Insert(IFilmKey* key);
    /// Adds many keys at once; their order is made at the next use.
    void Append(std::vector<IFilmKey*> added);
    /// The same keys or others in this order, which stays for those of one time. Those that are left out are
    /// the caller's now.
    void SetKeys(std::vector<IFilmKey*> keys);
    /// Takes the key out without destroying it; false if it is not here.
    bool Remove(IFilmKey* key);
    void DestroyAll();
    /// Keys were written to: times and order are read anew before the next use.
    void MarkDirty() {
        dirty = true;
        Touch();
    }
    /// Another number, never used before, after every change of the keys.
    std::uint64_t Revision() const { return revision; }

    int Kind() const { return kind; }
    bool Empty() const { return sortedKeys.empty(); }
    std::size_t Size() const { return sortedKeys.size(); }
    std::span<IFilmKey* const> Keys() const {
        Refresh();
        return sortedKeys;
    }
    std::span<const float> Times() const {
        Refresh();
        return sortedTimes;
    }
    /// Index of the last key with a time not after `time`, -1 if there is none.
    int LastAtOrBefore(float time) const;

protected:
    void Refresh() const {
        if (dirty || stale) {
            Rebuild();
        }
    }
    /// Keys came, went or changed: what was made from them is no longer good.
    virtual void OnTouched() {}
    /// Times and order are good again; what is derived from them goes here.
    virtual void OnRebuilt() const {}

    CFilmTrack& track;
    FilmManager& manager;

private:
    /// The body of a track file, or none if the file ends before it or goes on behind it.
    std::optional<std::string> ReadBody(fs::file& file) const;

    void Touch() {
        revision = NoteChange();
        OnTouched();
    }
    void Rebuild() const;
    void Sort() const;

    int kind;
    std::uint64_t revision = NoteChange();
    mutable bool dirty = false;             ///< times or order may be wrong
    mutable bool stale = false;             ///< only what is derived from them is
    mutable std::vector<float> sortedTimes; ///< of the keys unless dirty; not-a-number is the end of time
    mutable std::vector<IFilmKey*> sortedKeys;
};

/// Tells the key's channel, if the key stands in a track.
void MarkChannelDirty(const IFilmKey& key);

} // namespace engine
