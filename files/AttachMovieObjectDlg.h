#pragma once

#include "framework/Dialog.h"
#include "timeline/ScenarioWindow.h"

/// The dialog "Attach movie object": names the parent of an actor's track. Modeless, owned by the main
/// control.
class CAttachMovieObjectDlg : public CDialog, public IAttachDialog {
public:
    CAttachMovieObjectDlg();

    bool IsVisible() const override { return IsWindowVisible() != FALSE; }
    CFilmTrack* GetTrack() const override { return track; }
    void SetObject(EditorObject* parent) override { object = parent; }

private:
    EditorObject* object = nullptr; ///< the parent to be
    CFilmTrack* track = nullptr;
};
