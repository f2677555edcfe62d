#pragma once

#include "helpers/FilmKeyDuplicator.h"
#include "timeline/rows/TimelineContext.h"
#include "undo/FilmsUndoMgr.h"

/// What a main control has for pasting and undo, and how its rows reach it.
class TimelineEdits : public TimelineContext {
public:
    using TimelineContext::TimelineContext;

    CopiedKey& GetCopied() final { return keyDuplicator; }
    const CopiedKey& GetCopied() const final { return keyDuplicator; }
    bool PasteClone() final { return keyDuplicator.Paste(nullptr); }
    CFilmsUndoMgr& GetUndoMgr() final { return undoMgr; }
    void NoteAdded(CTrackCtrl& row, CTrackKey& view) final;
    void NoteRemoved(CTrackCtrl& row, CTrackKey& view) final;
    void NoteSize(CTrackCtrl& row, CTrackKey& view, float oldStart, float oldEnd) final;

    CFilmKeyDuplicator keyDuplicator{this};
    CFilmsUndoMgr undoMgr{this};
};
