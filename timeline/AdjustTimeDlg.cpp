#include "timeline/AdjustTimeDlg.h"

#include "resources/resource.h"
#include "timeline/FilmsMainCtrl.h"

CAdjustTimeDlg::CAdjustTimeDlg(CFilmsMainCtrl* mainControl) : CDialog(IDD_ADJUST_TIME, mainControl) {
}
