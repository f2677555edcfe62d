// "Attach to object": the window that gives an actor's track its parent.
#include "files/AttachMovieObjectDlg.h"
#include "plugin/PluginImpl.h"
#include "timeline/FilmsMainCtrl.h"

IAttachDialog* CFilmsMainCtrl::GetAttachDialog() {
    return attachDlg.get();
}

void CFilmsMainCtrl::OnMenuAttachToObject() {
    CFilmObjectTrack* track = menuRow != nullptr ? AsObjectTrack(menuRow->track) : nullptr;
    if (track == nullptr) {
        return;
    }
    if (attachDlg == nullptr) {
        attachDlg = std::make_unique<CAttachMovieObjectDlg>(plugin);
    }
    attachDlg->Show(track);
}
