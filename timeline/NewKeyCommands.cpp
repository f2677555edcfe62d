#include "timeline/NewKeyCommands.h"

#include "helpers/rules/MatrixMath.h"
#include "keys/rules/KeyKinds.h"
#include "keys/views/LooseKey.h"
#include "keys/views/NullTimeTrackKey.h"
#include "keys/views/TimedTrackKey.h"
#include "plugin/contract/KeyKindTable.h"
#include "plugin/PluginImpl.h"
#include "timeline/FilmsMainCtrl.h"

#include <algorithm>
#include <array>
#include <memory>
#include <utility>

namespace {

constexpr float kNewDuration = 5.0f; ///< seconds

/// Seconds of a new key for the time under the mouse.
float NotBeforeFilm(float mouse) {
    return mouse < 0.0f ? 0.0f : mouse;
}

/// What the record is about, by the row that it is made for: camera index or mesh element.
void FillFromRow(IFilmKey& record, const CTrackCtrl& row) {
    if (record.kind == KeyKind::Camera) {
        static_cast<CFilmCameraKey&>(record).priority = row.subIndex;
    } else if (record.kind == KeyKind::Animation && row.parent != nullptr) {
        const std::string element = &row == row.parent->FindLastAnimationRow() ? std::string() : row.name;
        record.SetValue(&element);
    }
}

/// A position, rotation or scale key takes what the film makes of the object at the time, which is brought
/// into the film. False without a film or an object.
bool FillFromPose(const FilmSession& plugin, IFilmKey& record, CFilmTrack* track, float& time) {
    const IFilm* film = plugin.GetCurrentFilm();
    const EditorObject* object = plugin.FindObjectByTrack(track);
    if (film == nullptr || object == nullptr) {
        return false;
    }
    time = std::min(time, film->length);
    track->ApplyAt(time, IPluginImpl::kNoPrevious, 0);
    Vector3 position;
    Vector3 rotation;
    Vector3 scale;
    DecomposeMatrix(object->GetMatrix(0), position.Data(), rotation.Data(), scale.Data());
    switch (record.kind) {
    case KeyKind::Position:
        record.SetValue(position.Data());
        record.SetInHandle(position.Data());
        record.SetOutHandle(position.Data());
        break;
    case KeyKind::Rotation:
        // Required: the out handle is written twice and the in handle never.
        record.SetValue(rotation.Data());
        record.SetOutHandle(rotation.Data());
        record.SetOutHandle(rotation.Data());
        break;
    default:
        record.SetValue(scale.Data()); // required: its handles stay as they were made
        break;
    }
    return true;
}

bool IsPosed(int kind) {
    return kind == KeyKind::Position || kind == KeyKind::Rotation || kind == KeyKind::Scale;
}

/// No key is selected or on show any more. The user may be asked about what was edited: false if the control
/// went meanwhile, and the new key's record with it.
bool LeaveKeys(CFilmsMainCtrl& control, CTrackKey& newKey) {
    const FilmSession& session = control.session;
    const Watch<CFilmsMainCtrl> window(&control);
    control.ClearSelection();
    IKeyAttributesDlg* dialog = session.keyAttributesDlg.get();
    if (window.IsAlive() && dialog != nullptr) {
        dialog->SetKey(nullptr, /*refresh*/ false);
    }
    if (!window.IsAlive()) {
        newKey.context = nullptr;
        ReturnRecord(session, std::exchange(newKey.record, nullptr));
    }
    return window.IsAlive();
}

/// Required: there must be room under the mouse, also where the key goes elsewhere (before the film or behind
/// its end).
bool PlaceNewKey(CFilmsMainCtrl& control, LooseKey& key, float mouse, float time, bool redraw) {
    if (!control.menuRow->CanPlaceKey(key.get(), mouse)) {
        return false;
    }
    key->SetPosition(time, /*viewOnly*/ false);
    const bool taken = control.menuRow->AddKeyView(key.get(), redraw, /*existing*/ false, /*noUndo*/ false);
    if (taken) {
        static_cast<void>(key.release()); // the row owns it now
    }
    return taken;
}

} // namespace

CTrackKey* MakeNewKey(KeyViewContext& context, int kind) {
    IFilmManager* manager = context.session.GetFilmManager();
    IFilmKey* record =
        manager != nullptr && FindKeyKind(kind) != nullptr ? manager->keyFactory->CreateKey(kind) : nullptr;
    if (record == nullptr) {
        return nullptr;
    }
    if (!IsTimedKind(kind)) {
        auto view = std::make_unique<CNullTimeTrackKey>();
        view->context = &context;
        view->SetRecord(record, /*takeTimes*/ false);
        return view.release();
    }
    auto view = std::make_unique<CTimedTrackKey>();
    view->context = &context;
    // Required: before the record comes, whose times stay those of the factory until the key is placed.
    view->SetDuration(kNewDuration, /*viewOnly*/ false);
    view->SetRecord(record, /*takeTimes*/ false);
    return view.release();
}

void AddKey(CFilmsMainCtrl& control) {
    CTrackCtrl* row = control.menuRow;
    LooseKey key(row != nullptr ? control.CreateKeyView(row->kind) : nullptr);
    if (key == nullptr) {
        return;
    }
    const float mouse = control.mouseTime;
    float time = NotBeforeFilm(mouse);
    FillFromRow(*key->record, *row);
    if (IsPosed(row->kind) && !FillFromPose(control.plugin, *key->record, row->track, time)) {
        return;
    }
    if (!LeaveKeys(control, *key) || control.menuRow != row) {
        return;
    }
    control.RepaintRows();
    PlaceNewKey(control, key, mouse, time, /*redraw*/ true);
}

const IFilmKey* CopiedRecord(const CFilmsMainCtrl& control) {
    return control.keyDuplicator.HasSource() && !control.keyDuplicator.cloneMode
               ? control.keyDuplicator.sourceKey->record
               : nullptr;
}

void PasteKey(CFilmsMainCtrl& control) {
    const IFilmKey* source = CopiedRecord(control);
    if (control.menuRow == nullptr || source == nullptr || source->kind != control.menuRow->kind) {
        return;
    }
    LooseKey key(control.CreateKeyView(control.menuRow->kind));
    CTrackKey* view = key.get();
    if (view == nullptr) {
        return;
    }
    if (view->record->kind == KeyKind::Camera) {
        static_cast<CFilmCameraKey*>(view->record)->priority = control.menuRow->subIndex;
    }
    const Watch<CFilmsMainCtrl> window(&control);
    const Watch<FilmShow> shown(control.GetShow());
    const bool taken =
        PlaceNewKey(control, key, control.mouseTime, NotBeforeFilm(control.mouseTime), /*redraw*/ false);
    if (!shown.IsAlive()) {
        return;
    }
    if (!taken) {
        control.undoMgr.retired.KeepView(key.release()); // Required: pasted onto and shown all the same.
    }
    control.keyDuplicator.Paste(view);
    ShowPastedKey(control.session, view);
    if (window.IsAlive()) {
        control.RepaintRows();
    }
}

void ShowPastedKey(const FilmSession& session, CTrackKey* view) {
    IKeyAttributesDlg* dialog = session.keyAttributesDlg.get();
    if (dialog == nullptr) {
        return;
    }
    if (dialog->GetRecord() == view->record) {
        dialog->SetKey(nullptr, /*refresh*/ true);
    } else {
        dialog->SetKey(view, /*refresh*/ false);
    }
}
