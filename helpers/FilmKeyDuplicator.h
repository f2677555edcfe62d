#pragma once

#include "timeline/rows/CopiedKey.h"

class IFilmKey;
class TimelineContext;

/// Remembers a key, so that its attributes can be pasted onto another or a clone of it left at another time.
/// A member of the main control.
class CFilmKeyDuplicator : public CopiedKey {
public:
    explicit CFilmKeyDuplicator(TimelineContext* control) : mainCtrl(control) {}
    virtual ~CFilmKeyDuplicator() = default;
    CFilmKeyDuplicator(const CFilmKeyDuplicator&) = delete;
    CFilmKeyDuplicator& operator=(const CFilmKeyDuplicator&) = delete;

    /// Copies the source's attributes onto a key. In clone mode a clone is put at sourceTime, and the source
    /// is forgotten: a new one for null, else the target, which must be in no row and is the caller's if
    /// refused. False if there is nothing to copy or no place for it.
    bool Paste(CTrackKey* target);

    TimelineContext* mainCtrl;

private:
    bool CanBecomeClone(const CTrackKey& target) const;
    CTrackKey* MakeCloneTarget() const;
    void PasteAttributes(CTrackKey& target, IFilmKey* saved);
    bool PlaceClone(CTrackKey& target, CTrackKey* made, IFilmKey* saved);
    void AddCloneAction(const CTrackKey& clone) const;
    void ForgetClone();
};
