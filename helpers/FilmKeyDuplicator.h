#pragma once

class CTrackCtrl;
class CTrackKey;
class IFilmKey;
class TimelineContext;

/// Remembers a key, so that its attributes can be pasted onto another or a clone of it left at another time.
/// A member of the main control.
class CFilmKeyDuplicator {
public:
    static constexpr float kNoTime = -1.0f;

    explicit CFilmKeyDuplicator(TimelineContext* control) : mainCtrl(control) {}
    virtual ~CFilmKeyDuplicator() = default;
    CFilmKeyDuplicator(const CFilmKeyDuplicator&) = delete;
    CFilmKeyDuplicator& operator=(const CFilmKeyDuplicator&) = delete;

    /// False, and nothing changes, without a key or a row.
    bool Set(CTrackKey* key, CTrackCtrl* row, bool clone);
    /// Forgets the key and nothing else.
    void ClearSource() { sourceKey = nullptr; }
    bool HasSource() const { return sourceKey != nullptr; }
    /// Copies the source's attributes onto a key. In clone mode a clone is put at sourceTime, and the source
    /// is forgotten: a new one for null, else the target, which must be in no row and is the caller's if
    /// refused. False if there is nothing to copy or no place for it.
    bool Paste(CTrackKey* target);

    CTrackKey* sourceKey = nullptr; ///< a view of sourceRow, or removed from it with undo
    CTrackCtrl* sourceRow = nullptr;
    float sourceTime = kNoTime; ///< seconds; in clone mode where the ghost stands
    TimelineContext* mainCtrl;
    bool cloneMode = false; ///< false: attributes are pasted; true: a clone is made

private:
    bool CanBecomeClone(const CTrackKey& target) const;
    CTrackKey* MakeCloneTarget() const;
    void PasteAttributes(CTrackKey& target, IFilmKey* saved);
    bool PlaceClone(CTrackKey& target, CTrackKey* made, IFilmKey* saved);
    void AddCloneAction(const CTrackKey& clone) const;
    void ForgetClone();
};
