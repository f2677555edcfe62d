// The commands of the key menu and of the row menu that edit keys.
#include "timeline/FilmsMainCtrl.h"

CTrackKey* CFilmsMainCtrl::CreateKeyView(int /*kind*/) {
    return nullptr;
}
