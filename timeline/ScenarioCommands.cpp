#include "timeline/ScenarioCommands.h"

#include "files/ValidateMovie.h"
#include "keys/rules/FrameTimes.h"
#include "keys/views/TrackKey.h"
#include "plugin/PluginImpl.h"
#include "plugin/rules/LocalCommands.h"
#include "resources/resource.h"
#include "timeline/ScenarioDlg.h"

#include <algorithm>

namespace {

void RunPluginCommand(IPluginImpl& plugin, std::uint32_t local) {
    plugin.OnCommand(plugin.pluginId.PluginNumber(), local);
}

/// Goes to a time; a film that plays plays on from there. The window may be gone afterwards.
void StepTo(CScenarioDlg& window, float time) {
    IPluginImpl& films = window.plugin; // the window may go in what follows
    const bool wasPlaying = films.isPlaying != 0;
    if (wasPlaying) {
        films.StopPlaying();
    }
    window.SetTime(time);
    films.SetTime(time, /*fromWindow*/ true);
    if (wasPlaying) {
        films.Play(time);
    }
}

} // namespace

void PlayFromCursor(CScenarioDlg& window) {
    window.plugin.Play(window.plugin.currentTime);
}

void StopPlaying(CScenarioDlg& window) {
    window.plugin.StopPlaying();
}

void ValidateShownFilm(CScenarioDlg& window) {
    ValidateMovie(window.plugin, window.plugin.GetCurrentFilm());
}

/// Required: with animating off it is the button "Deselect keys" that is released. The plug-in object has
/// set the command's own button already.
void ToggleAnimating(CScenarioDlg& window) {
    const Watch<CScenarioDlg> self(&window);
    RunPluginCommand(window.plugin, LocalCommand::AnimateObject);
    if (!self.IsAlive()) {
        return;
    }
    if (window.plugin.animateObjects != 1) {
        window.PressButton(IDC_DESELECT_KEYS, false);
    } else {
        window.PressButton(IDC_ANIMATE_OBJECT, true);
    }
}

void ToggleAttachedView(CScenarioDlg& window) {
    const int number = window.plugin.editor != nullptr ? window.plugin.editor->GetActiveView() : -1;
    const auto& views = window.plugin.attachedViews;
    const bool attach = number >= 0 && std::find(views.begin(), views.end(), number) == views.end();
    window.PressButton(IDC_ATTACH_MOVIE, attach);
    if (number < 0) {
        return;
    }
    if (attach) {
        window.plugin.AttachView(number);
    } else {
        window.plugin.DetachView(number);
    }
}

void MoveToBegin(CScenarioDlg& window) {
    if (window.plugin.GetCurrentFilm() != nullptr) {
        StepTo(window, 0.0f);
    }
}

void MoveToEnd(CScenarioDlg& window) {
    if (const IFilm* film = window.plugin.GetCurrentFilm()) {
        window.plugin.StopPlaying();
        const float end = film->length;
        window.SetTime(end);
        window.plugin.SetTime(end, /*fromWindow*/ true);
    }
}

void UndoEdit(CScenarioDlg& window) {
    if (window.mainCtrl != nullptr) {
        window.mainCtrl->undoMgr.Undo();
    }
}

void StepFrameBack(CScenarioDlg& window) {
    if (window.plugin.GetCurrentFilm() != nullptr) {
        StepTo(window, FrameBack(window.plugin.currentTime, window.plugin.framesPerSecond));
    }
}

void StepFrameForward(CScenarioDlg& window) {
    if (const IFilm* film = window.plugin.GetCurrentFilm()) {
        StepTo(window, FrameForward(window.plugin.currentTime, window.plugin.framesPerSecond, film->length));
    }
}

void JumpKeyBack(CScenarioDlg& window) {
    window.JumpToKey(/*forward*/ false);
}

void JumpKeyForward(CScenarioDlg& window) {
    window.JumpToKey(/*forward*/ true);
}

void CreateCameraFrame(CScenarioDlg& window) {
    RunPluginCommand(window.plugin, LocalCommand::CreateCameraFrame);
}

void ToVirtualObject(CScenarioDlg& window) {
    RunPluginCommand(window.plugin, LocalCommand::ToVirtualObject);
}

void ClearMarksOfRow(CScenarioDlg& window) {
    if (window.mainCtrl != nullptr && !window.mainCtrl->selectedKeys.empty()) {
        CTrackKey* key = window.mainCtrl->selectedKeys.front();
        key->ClearMarks(window.mainCtrl->FindRowOfKeyView(key, /*byValue*/ false));
    }
}

void ToggleMark(CScenarioDlg& window) {
    if (window.mainCtrl != nullptr && !window.mainCtrl->selectedKeys.empty()) {
        CTrackKey* key = window.mainCtrl->selectedKeys.front();
        key->marked = !key->marked;
        window.PressButton(IDC_SELECT_KEY, key->marked);
        if (CTrackCtrl* row = window.mainCtrl->FindRowOfKeyView(key, /*byValue*/ false)) {
            row->Invalidate(FALSE);
        }
    }
    window.Invalidate();
}
