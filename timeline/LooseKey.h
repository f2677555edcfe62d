#pragma once

class CTrackKey;
class IFilmManager;

/// A new view with its record until a row takes them. Without a row both are deleted here, and whoever shows
/// them lets go first. The record is left alone when its level has gone: it went along.
class LooseKey {
public:
    /// Takes the view over; null is allowed.
    explicit LooseKey(CTrackKey* newView);
    ~LooseKey();
    LooseKey(const LooseKey&) = delete;
    LooseKey& operator=(const LooseKey&) = delete;

    CTrackKey* View() const { return view; }
    /// The view and its record belong to a row now.
    void Release() { view = nullptr; }

private:
    CTrackKey* view;
    const IFilmManager* manager; ///< of the level that the record was made in
};
