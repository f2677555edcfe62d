// "Attach to object": the window that gives an actor's track its parent.
#include "files/AttachMovieObjectDlg.h"
#include "timeline/FilmsMainCtrl.h"

IAttachDialog* CFilmsMainCtrl::GetAttachDialog() {
    return attachDlg.get();
}

void CFilmsMainCtrl::OnMenuAttachToObject() {
}
