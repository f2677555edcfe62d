// New keys from the menu of a row, and the copying of attributes from key to key.
#include "helpers/MatrixMath.h"
#include "keys/KeyKinds.h"
#include "keys/NullTimeTrackKey.h"
#include "keys/TimedTrackKey.h"
#include "plugin/PluginImpl.h"
#include "timeline/FilmsMainCtrl.h"

#include <algorithm>
#include <array>
#include <memory>

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

} // namespace

CTrackKey* CFilmsMainCtrl::CreateKeyView(int kind) {
    IFilmManager* manager = plugin.GetFilmManager();
    IFilmKey* record = manager != nullptr && kind >= 0 && kind < KeyKind::FilterCount
                           ? manager->keyFactory->CreateKey(kind)
                           : nullptr;
    if (record == nullptr) {
        return nullptr;
    }
    if (!IsTimedKind(kind)) {
        auto view = std::make_unique<CNullTimeTrackKey>();
        view->SetRecord(record, /*takeTimes*/ false);
        return view.release();
    }
    auto view = std::make_unique<CTimedTrackKey>();
    // Required: before the record comes, whose times stay those of the factory until the key is placed.
    view->SetDuration(kNewDuration, /*viewOnly*/ false);
    view->SetRecord(record, /*takeTimes*/ false);
    return view.release();
}

/// Required: there must be room under the mouse, also where the key goes elsewhere (before the film or behind
/// its end).
bool CFilmsMainCtrl::PlaceNewKey(LooseKey& key, float mouse, float time, bool redraw) {
    if (!menuRow->CanPlaceKey(key.get(), mouse)) {
        return false;
    }
    key->SetPosition(time, /*viewOnly*/ false);
    const bool taken = menuRow->AddKeyView(key.get(), redraw, /*existing*/ false, /*noUndo*/ false);
    if (taken) {
        key.release();
    }
    return taken;
}

void CFilmsMainCtrl::OnMenuAddKey() {
    CTrackCtrl* row = menuRow;
    LooseKey key(row != nullptr ? CreateKeyView(row->kind) : nullptr);
    if (key == nullptr) {
        return;
    }
    const float mouse = mouseTime;
    float time = NotBeforeFilm(mouse);
    FillFromRow(*key->record, *row);
    if (IsPosed(row->kind) && !FillFromPose(plugin, *key->record, row->track, time)) {
        return;
    }
    const Watch<CFilmsMainCtrl> window(this);
    ClearSelection();
    if (IKeyAttributesDlg* dialog = plugin.keyAttributesDlg.get()) {
        dialog->SetKey(nullptr, /*refresh*/ false); // may ask the user about what was edited there
    }
    if (!window.IsAlive() || menuRow != row) {
        return;
    }
    RepaintRows();
    PlaceNewKey(key, mouse, time, /*redraw*/ true);
}

/// The record whose attributes would be pasted; null without one, and while a clone is being dragged.
const IFilmKey* CFilmsMainCtrl::CopiedRecord() const {
    return keyDuplicator.HasSource() && !keyDuplicator.cloneMode ? keyDuplicator.sourceKey->record : nullptr;
}

void CFilmsMainCtrl::OnMenuCopyAttributes() {
    keyDuplicator.Set(KeyOfMenuRow(), menuRow, /*clone*/ false);
}

void CFilmsMainCtrl::OnMenuPasteAttributes() {
    if (menuKey == nullptr || CopiedRecord() == nullptr) {
        return;
    }
    const Watch<CFilmsMainCtrl> window(this);
    keyDuplicator.Paste(menuKey);
    ShowInAttributes(menuKey);
    if (window.IsAlive()) {
        RepaintRows();
    }
}

void CFilmsMainCtrl::OnMenuPasteKey() {
    const IFilmKey* source = CopiedRecord();
    if (menuRow == nullptr || source == nullptr || source->kind != menuRow->kind) {
        return;
    }
    LooseKey key(CreateKeyView(menuRow->kind));
    CTrackKey* view = key.get();
    if (view == nullptr) {
        return;
    }
    if (view->record->kind == KeyKind::Camera) {
        static_cast<CFilmCameraKey*>(view->record)->priority = menuRow->subIndex;
    }
    const Watch<CFilmsMainCtrl> window(this);
    const Watch<FilmShow> shown(show.get());
    const bool taken = PlaceNewKey(key, mouseTime, NotBeforeFilm(mouseTime), /*redraw*/ false);
    if (!shown.IsAlive()) {
        return;
    }
    if (!taken) {
        undoMgr.retired.KeepView(key.release()); // Required: pasted onto and shown all the same.
    }
    keyDuplicator.Paste(view);
    ShowInAttributes(view);
    if (window.IsAlive()) {
        RepaintRows();
    }
}

/// A key that the attributes window shows already is only read anew: taken in once more, the window would
/// first write its old values over what was changed.
void CFilmsMainCtrl::ShowInAttributes(CTrackKey* view) {
    IKeyAttributesDlg* dialog = plugin.keyAttributesDlg.get();
    if (dialog == nullptr) {
        return;
    }
    if (dialog->GetRecord() == view->record) {
        dialog->SetKey(nullptr, /*refresh*/ true);
    } else {
        dialog->SetKey(view, /*refresh*/ false);
    }
}
