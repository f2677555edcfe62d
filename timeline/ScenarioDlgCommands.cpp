#include "files/ValidateMovie.h"
#include "keys/FrameTimes.h"
#include "keys/TrackKey.h"
#include "plugin/LocalCommands.h"
#include "plugin/PluginImpl.h"
#include "resources/resource.h"
#include "timeline/CommandNotes.h"
#include "timeline/ScenarioDlg.h"

#include <algorithm>

namespace {

void RunPluginCommand(IPluginImpl& plugin, std::uint32_t local) {
    plugin.OnCommand(plugin.pluginId.PluginNumber(), local);
}

} // namespace

/// A command of the toolbar. With `baseToo` the message goes on to the base class.
struct CScenarioDlg::Command {
    void (CScenarioDlg::*run)();
    UINT id;
    bool baseToo;
};

const CScenarioDlg::Command CScenarioDlg::kCommands[] = {
    {&CScenarioDlg::OnPlay, IDC_PLAY_MOVIE, false},
    {&CScenarioDlg::OnStop, IDC_STOP_MOVIE, false},
    {&CScenarioDlg::OnValidate, IDC_VALIDATE_MOVIE, false},
    {&CScenarioDlg::OnAnimate, IDC_ANIMATE_OBJECT, true},
    {&CScenarioDlg::OnAttach, IDC_ATTACH_MOVIE, false},
    {&CScenarioDlg::OnMoveToBegin, IDC_MOVE_TO_BEGIN, false},
    {&CScenarioDlg::OnMoveToEnd, IDC_MOVE_TO_END, false},
    {&CScenarioDlg::OnUndo, IDC_UNDO, false},
    {&CScenarioDlg::OnUndo, IDC_REDO, false},
    {&CScenarioDlg::OnFrameBack, IDC_FRAME_BACK, false},
    {&CScenarioDlg::OnFrameForward, IDC_FRAME_FORWARD, false},
    {&CScenarioDlg::OnCreateCameraFrame, IDC_CREATE_CAMERA_FRAME, true},
    {&CScenarioDlg::OnToVirtualObject, IDC_TO_VIRTUAL_OBJECT, true},
    {&CScenarioDlg::OnKeyFrameBack, IDC_KEY_FRAME_BACK, false},
    {&CScenarioDlg::OnKeyFrameForward, IDC_KEY_FRAME_FORWARD, false},
    {&CScenarioDlg::OnDeselectKeys, IDC_DESELECT_KEYS, true},
    {&CScenarioDlg::OnSelectKey, IDC_SELECT_KEY, true},
};

/// Playing, and whatever asks the user, pumps messages: the window may be gone when a command returns.
BOOL CScenarioDlg::OnCommand(WPARAM wParam, LPARAM lParam) {
    const Watch<CScenarioDlg> self(this);
    const auto* command =
        std::find_if(std::begin(kCommands), std::end(kCommands),
                     [wParam](const Command& c) { return HIWORD(wParam) == 0 && LOWORD(wParam) == c.id; });
    if (command == std::end(kCommands)) {
        return CDialog::OnCommand(wParam, lParam);
    }
    plugin.ApplyPendingEdits();
    if (!self.IsAlive()) {
        return TRUE;
    }
    if (mainCtrl != nullptr) {
        NoteIfIdle(command->id, *mainCtrl);
    }
    (this->*command->run)();
    return !command->baseToo || !self.IsAlive() || CDialog::OnCommand(wParam, lParam);
}

void CScenarioDlg::OnPlay() {
    plugin.Play(plugin.currentTime);
}

void CScenarioDlg::OnStop() {
    plugin.StopPlaying();
}

void CScenarioDlg::OnValidate() {
    ValidateMovie(plugin, plugin.GetCurrentFilm());
}

/// Required: with animating off it is the button "Deselect keys" that is released. The plug-in object has
/// set the command's own button already.
void CScenarioDlg::OnAnimate() {
    const Watch<CScenarioDlg> self(this);
    RunPluginCommand(plugin, LocalCommand::AnimateObject);
    if (!self.IsAlive()) {
        return;
    }
    if (plugin.animateObjects != 1) {
        PressButton(IDC_DESELECT_KEYS, false);
    } else {
        PressButton(IDC_ANIMATE_OBJECT, true);
    }
}

void CScenarioDlg::OnAttach() {
    const int number = plugin.editor != nullptr ? plugin.editor->GetActiveView() : -1;
    const auto& views = plugin.attachedViews;
    const bool attach = number >= 0 && std::find(views.begin(), views.end(), number) == views.end();
    PressButton(IDC_ATTACH_MOVIE, attach);
    if (number < 0) {
        return;
    }
    if (attach) {
        plugin.AttachView(number);
    } else {
        plugin.DetachView(number);
    }
}

void CScenarioDlg::StepTo(float time) {
    IPluginImpl& films = plugin; // this window may go in what follows
    const bool wasPlaying = films.isPlaying != 0;
    if (wasPlaying) {
        films.StopPlaying();
    }
    SetTime(time);
    films.SetTime(time, /*fromWindow*/ true);
    if (wasPlaying) {
        films.Play(time);
    }
}

void CScenarioDlg::OnMoveToBegin() {
    if (plugin.GetCurrentFilm() != nullptr) {
        StepTo(0.0f);
    }
}

/// A film that played stays stopped.
void CScenarioDlg::OnMoveToEnd() {
    if (const IFilm* film = plugin.GetCurrentFilm()) {
        plugin.StopPlaying();
        const float end = film->length;
        SetTime(end);
        plugin.SetTime(end, /*fromWindow*/ true);
    }
}

/// "Undo" and "Redo" are one command to the manager, which has nothing recorded.
void CScenarioDlg::OnUndo() {
    if (mainCtrl != nullptr) {
        mainCtrl->undoMgr.Undo();
    }
}

void CScenarioDlg::OnFrameBack() {
    if (plugin.GetCurrentFilm() != nullptr) {
        StepTo(FrameBack(plugin.currentTime, plugin.framesPerSecond));
    }
}

void CScenarioDlg::OnFrameForward() {
    if (const IFilm* film = plugin.GetCurrentFilm()) {
        StepTo(FrameForward(plugin.currentTime, plugin.framesPerSecond, film->length));
    }
}

void CScenarioDlg::OnCreateCameraFrame() {
    RunPluginCommand(plugin, LocalCommand::CreateCameraFrame);
}

void CScenarioDlg::OnToVirtualObject() {
    RunPluginCommand(plugin, LocalCommand::ToVirtualObject);
}

void CScenarioDlg::OnDeselectKeys() {
    if (mainCtrl != nullptr && !mainCtrl->selectedKeys.empty()) {
        CTrackKey* key = mainCtrl->selectedKeys.front();
        key->ClearMarks(mainCtrl->FindRowOfKeyView(key, /*byValue*/ false));
    }
}

void CScenarioDlg::OnSelectKey() {
    if (mainCtrl != nullptr && !mainCtrl->selectedKeys.empty()) {
        CTrackKey* key = mainCtrl->selectedKeys.front();
        key->marked = !key->marked;
        PressButton(IDC_SELECT_KEY, key->marked);
        if (CTrackCtrl* row = mainCtrl->FindRowOfKeyView(key, /*byValue*/ false)) {
            row->Invalidate(FALSE);
        }
    }
    Invalidate();
}
