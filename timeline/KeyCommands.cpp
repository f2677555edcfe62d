#include "timeline/KeyCommands.h"

#include "files/base/Log.h"
#include "framework/UserNote.h"
#include "keys/rules/KeyKinds.h"
#include "keys/views/TimedTrackKey.h"
#include "plugin/PluginImpl.h"
#include "timeline/FilmsMainCtrl.h"
#include "timeline/NewKeyCommands.h"

#include <cmath>

namespace {

/// The key under the last right click, while its row still has it.
CTrackKey* KeyOfMenuRow(const CFilmsMainCtrl& control) {
    return control.menuRow != nullptr ? control.menuRow->FindKeyView(control.menuKey, /*byValue*/ false)
                                      : nullptr;
}

/// False on cancel, for what is no number, and when the key of the menu went while the user was asked.
bool AskForSeconds(CFilmsMainCtrl& control, float& seconds, const char* title, const char* prompt) {
    IEditor* editor = control.plugin.editor;
    const CTrackKey* key = KeyOfMenuRow(control);
    const Watch<CFilmsMainCtrl> window(&control);
    return key != nullptr && editor != nullptr && editor->InputNumber(&seconds, title, prompt) &&
           window.IsAlive() && KeyOfMenuRow(control) == key && std::isfinite(seconds);
}

} // namespace

void RemoveKey(CFilmsMainCtrl& control) {
    if (CTrackKey* key = KeyOfMenuRow(control)) {
        control.menuKey = nullptr; // it lives on in the undo action, but in no row
        control.menuRow->RemoveKey(key, /*destroy*/ true, /*redraw*/ true, /*noUndo*/ false);
    }
}

void MoveKey(CFilmsMainCtrl& control) {
    CTrackKey* key = KeyOfMenuRow(control);
    float time = key != nullptr ? key->time : 0.0f;
    if (key == nullptr || !AskForSeconds(control, time, "Key position", "Position :")) {
        return;
    }
    if (control.menuRow->CanPlaceKey(key, time)) {
        key->SetPosition(time, /*viewOnly*/ false);
    } else {
        NoteForUser("There is no room for the key at that time: it stays where it is.");
    }
    control.plugin.TellKeyWritten(key->record);
    control.menuRow->Invalidate(FALSE);
}

void SetKeyDuration(CFilmsMainCtrl& control) {
    auto* key = dynamic_cast<CTimedTrackKey*>(KeyOfMenuRow(control));
    float duration = key != nullptr ? key->duration : 0.0f;
    if (key == nullptr || !AskForSeconds(control, duration, "Key duration", "Duration :")) {
        return;
    }
    key->SetDuration(duration, /*viewOnly*/ false);
    control.menuRow->CanPlaceKey(key, key->time); // only cuts it back to the next key
    control.plugin.TellKeyWritten(key->record);
    control.menuRow->Invalidate(FALSE);
}

void TakeNaturalDuration(CFilmsMainCtrl& control) {
    auto* key = dynamic_cast<CTimedTrackKey*>(KeyOfMenuRow(control));
    if (key == nullptr || key->record == nullptr || (key->record->flags & KeyFlag::NoDuration) != 0) {
        return;
    }
    const float length = key->GetNaturalDuration();
    if (length > 0.0f && std::isfinite(length)) {
        const float oldDuration = key->duration;
        key->SetDuration(length, /*viewOnly*/ false);
        if (!control.menuRow->CanPlaceKey(key, key->time)) {
            key->SetDuration(oldDuration, /*viewOnly*/ false);
        }
        control.plugin.TellKeyWritten(key->record);
    }
    control.menuRow->Invalidate(FALSE);
}

void CopyAttributes(CFilmsMainCtrl& control) {
    CTrackKey* key = KeyOfMenuRow(control);
    control.keyDuplicator.Set(key, control.menuRow, /*clone*/ false);
    if (key != nullptr) {
        NoteForUser("The key is copied. \"Paste attributes\" on a key of its kind takes what it says, "
                    "\"Paste key\" on a row makes another.");
    }
}

void PasteAttributes(CFilmsMainCtrl& control) {
    if (control.menuKey == nullptr || CopiedRecord(control) == nullptr) {
        return;
    }
    const Watch<CFilmsMainCtrl> window(&control);
    control.keyDuplicator.Paste(control.menuKey);
    ShowPastedKey(control.session, control.menuKey);
    if (window.IsAlive()) {
        control.RepaintRows();
    }
}

void ChangeBezierMethod(CFilmsMainCtrl& control, bool in, int method) {
    IFilmKey* record = control.menuKey != nullptr ? control.menuKey->record : nullptr;
    if (record == nullptr) {
        return;
    }
    if (!IsBezierKind(record->kind)) {
        DebugPrint("[CFilmsMainCtrl::OnMenuChangeBezierMethod] not Bezier key\n");
        return;
    }
    if (in) {
        record->SetInMethod(method);
    } else {
        record->SetOutMethod(method);
    }
    control.plugin.TellKeyWritten(record);
    if (control.plugin.editor != nullptr) {
        control.plugin.editor->RedrawViews();
    }
}
