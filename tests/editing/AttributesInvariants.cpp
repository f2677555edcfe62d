#include "tests/editing/AttributesInvariants.h"

#include "keys/views/TrackKey.h"
#include "tests/editing/RowInvariants.h"
#include "tests/editing/World.h"

#include <algorithm>

namespace editing {

namespace {

using Answer = std::optional<Failure>;

/// A key that was pasted where there was no room for it: it is shown all the same.
bool IsUnplaced(const CFilmsMainCtrl& control, const CTrackKey* key) {
    const auto& views = control.undoMgr.retired.Views();
    return std::ranges::find(views, key) != views.end() && key->record->track == nullptr;
}

/// Views that other edits took out live on, but the window doesn't show them.
Answer CheckKey(const World& world, const CFilmKeyAttributesDlg& dialog, const CFilmsMainCtrl& control,
                const Ledger& now) {
    if ((dialog.key == nullptr) != (dialog.record == nullptr)) {
        return Failure{"attributes-half", "the attributes window has a key without a record or the reverse"};
    }
    if (dialog.key == nullptr) {
        return std::nullopt;
    }
    const bool isInRow = std::ranges::any_of(control.tracks, [&](const CTrackCtrl* row) {
        return std::ranges::find(row->keys, dialog.key) != row->keys.end();
    });
    if (!isInRow && IsUnplaced(control, dialog.key)) {
        return dialog.key->record == dialog.record ? Answer()
                                                   : Failure{"attributes-other", "of an unplaced key"};
    }
    if (!isInRow) {
        return Failure{"attributes-key", "the attributes window shows a key that is in no row"};
    }
    if (!now.inTracks.contains(dialog.record)) {
        return Failure{"attributes-record", "the attributes window shows a record that is in no track"};
    }
    if (dialog.key->record != dialog.record) {
        return Failure{"attributes-other", "the attributes window writes another record than its key's"};
    }
    if (dialog.record->track->film != world.plugin.GetCurrentFilm()) {
        return Failure{"attributes-film", Name(*dialog.key) + " in the attributes window is of another film"};
    }
    return std::nullopt;
}

Answer CheckList(const CFilmKeyAttributesDlg& dialog) {
    const CAttrPropCtrl& list = dialog.list;
    if (dialog.record == nullptr && (!dialog.rows.empty() || list.GetCount() != 0)) {
        return Failure{"attributes-rows", "the attributes window shows rows of no key"};
    }
    for (int i = 0; i < list.GetCount(); ++i) {
        if (std::ranges::find(dialog.rows, list.GetItemDataPtr(i)) == dialog.rows.end()) {
            return Failure{"attributes-item", "line " + std::to_string(i) + " is of a row that is gone"};
        }
    }
    return std::nullopt;
}

Answer CheckEditor(const CFilmKeyAttributesDlg& dialog) {
    const CAttrPropCtrl& list = dialog.list;
    if (list.activeRow < -1 || list.activeRow >= std::max(list.GetCount(), 0)) {
        return Failure{"attributes-active", "row " + std::to_string(list.activeRow) + " of " +
                                                std::to_string(list.GetCount()) + " is under edit"};
    }
    const bool isShown = list.inPlaceEdit.IsWindowVisible() != FALSE ||
                         list.inPlaceCombo.IsWindowVisible() != FALSE ||
                         list.inPlaceButton.IsWindowVisible() != FALSE;
    if (list.activeRow < 0 && (isShown || list.activeEditor != nullptr)) {
        return Failure{"attributes-editor", "an editor is shown for no row"};
    }
    return std::nullopt;
}

} // namespace

std::optional<Failure> CheckAttributes(const World& world, const CFilmsMainCtrl& control, const Ledger& now) {
    const CFilmKeyAttributesDlg* dialog = world.Attributes();
    if (dialog == nullptr) {
        return std::nullopt;
    }
    if (dialog->locked) {
        return Failure{"attributes-locked", "the attributes window takes no key any more"};
    }
    Answer wrong = CheckKey(world, *dialog, control, now);
    wrong = wrong ? wrong : CheckList(*dialog);
    return wrong || world.IsBehindBox() ? wrong : CheckEditor(*dialog);
}

} // namespace editing
