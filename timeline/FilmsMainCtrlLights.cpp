// "Add GL light" and "Add dyn light".
#include "timeline/FilmsMainCtrl.h"

void CFilmsMainCtrl::OnMenuAddLight(bool /*gl*/) {
}
