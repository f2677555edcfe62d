#pragma once

#include "keys/views/Selection.h"
#include "plugin/session/FilmSession.h"

class CTrackKey;

/// What key views ask of the timeline that shows them, and which of them are chosen.
class KeyViewContext : public Selection {
public:
    explicit KeyViewContext(FilmSession& shown) : session(shown) {}
    virtual ~KeyViewContext() = default;
    KeyViewContext(const KeyViewContext&) = delete;
    KeyViewContext& operator=(const KeyViewContext&) = delete;

    /// True while ShowFilm makes rows: selection changes then don't reach the attributes dialog.
    virtual bool IsRebuilding() const = 0;
    /// Repaints the whole control.
    virtual void InvalidateControl(bool erase) = 0;
    /// A view that is about to be deleted: every holder lets go of it.
    virtual void ForgetView(CTrackKey* view) = 0;
    /// The key whose attributes wait to be pasted, or null.
    virtual const CTrackKey* GetCopiedKey() const = 0;

    FilmSession& session;   ///< whose film is shown; outlives the control
    float mouseTime = 0.0f; ///< seconds; written by whoever has the mouse; where a new key goes
};
