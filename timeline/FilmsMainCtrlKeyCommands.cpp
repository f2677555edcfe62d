// The commands of the menu of a key.
#include "files/Log.h"
#include "keys/KeyKinds.h"
#include "keys/TimedTrackKey.h"
#include "plugin/PluginImpl.h"
#include "timeline/FilmsMainCtrl.h"

#include <cmath>

/// The key under the last right click, while its row still has it.
CTrackKey* CFilmsMainCtrl::KeyOfMenuRow() const {
    return menuRow != nullptr ? menuRow->FindKeyView(menuKey, /*byValue*/ false) : nullptr;
}

/// False on cancel, for what is no number, and when the key of the menu went while the user was asked.
bool CFilmsMainCtrl::AskForSeconds(float& seconds, const char* title, const char* prompt) {
    IEditor* editor = plugin.editor;
    const CTrackKey* key = KeyOfMenuRow();
    const Watch<CFilmsMainCtrl> window(this);
    return key != nullptr && editor != nullptr && editor->InputNumber(&seconds, title, prompt) &&
           window.IsAlive() && KeyOfMenuRow() == key && std::isfinite(seconds);
}

void CFilmsMainCtrl::OnMenuRemoveKey() {
    if (CTrackKey* key = KeyOfMenuRow()) {
        menuKey = nullptr; // it lives on in the undo action, but in no row
        menuRow->RemoveKey(key, /*destroy*/ true, /*redraw*/ true, /*noUndo*/ false);
    }
}

void CFilmsMainCtrl::OnMenuSetPosition() {
    CTrackKey* key = KeyOfMenuRow();
    float time = key != nullptr ? key->time : 0.0f;
    if (!AskForSeconds(time, "Key position", "Position :")) {
        return;
    }
    if (menuRow->CanPlaceKey(key, time)) {
        key->SetPosition(time, /*viewOnly*/ false);
    }
    plugin.TellKeyWritten(key->record);
    menuRow->Invalidate(FALSE);
}

void CFilmsMainCtrl::OnMenuSetDuration() {
    auto* key = dynamic_cast<CTimedTrackKey*>(KeyOfMenuRow());
    float duration = key != nullptr ? key->duration : 0.0f;
    if (key == nullptr || !AskForSeconds(duration, "Key duration", "Duration :")) {
        return;
    }
    key->SetDuration(duration, /*viewOnly*/ false);
    menuRow->CanPlaceKey(key, key->time); // only cuts it back to the next key
    plugin.TellKeyWritten(key->record);
    menuRow->Invalidate(FALSE);
}

void CFilmsMainCtrl::OnMenuCalcKeyDuration() {
    auto* key = dynamic_cast<CTimedTrackKey*>(KeyOfMenuRow());
    if (key == nullptr || key->record == nullptr || (key->record->flags & KeyFlag::NoDuration) != 0) {
        return;
    }
    const float length = key->GetNaturalDuration();
    if (length > 0.0f && std::isfinite(length)) {
        const float oldDuration = key->duration;
        key->SetDuration(length, /*viewOnly*/ false);
        if (!menuRow->CanPlaceKey(key, key->time)) {
            key->SetDuration(oldDuration, /*viewOnly*/ false);
        }
        plugin.TellKeyWritten(key->record);
    }
    menuRow->Invalidate(FALSE);
}

/// The commands stand in the table of the methods, which the check marks of the menu use too.
void CFilmsMainCtrl::RunMethodCommand(UINT id) {
    for (int method = BezierMethod::Smooth; method <= BezierMethod::Inverse; ++method) {
        for (const bool in : {true, false}) {
            if (static_cast<UINT>(GetIDByMethod(method, in)) == id) {
                OnMenuChangeBezierMethod(in, method);
                return; // the control may be gone
            }
        }
    }
}

void CFilmsMainCtrl::OnMenuChangeBezierMethod(bool in, int method) {
    IFilmKey* record = menuKey != nullptr ? menuKey->record : nullptr;
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
    plugin.TellKeyWritten(record);
    if (plugin.editor != nullptr) {
        plugin.editor->RedrawViews();
    }
}
