#include "files/MainCtrlSettingsDlg.h"

#include "framework/DataExchange.h"
#include "resources/resource.h"

CMainCtrlSettingsDlg::CMainCtrlSettingsDlg(CWnd* parentWnd) : CDialog(IDD_MAIN_CTRL_SETTINGS, parentWnd) {
}

/// The numbers are taken as they are typed; the main control puts them in order.
void CMainCtrlSettingsDlg::DoDataExchange(CDataExchange* exchange) {
    CDialog::DoDataExchange(exchange);
    DDX_Text(exchange, IDC_RANGE_BEGIN, begin);
    DDX_Text(exchange, IDC_RANGE_END, end);
    DDX_Text(exchange, IDC_DRAW_INTERVAL, interval);
    DDX_Text(exchange, IDC_BIG_TICS, bigTics);
    DDX_Text(exchange, IDC_LABEL_DISTANCE, labelDistance);
    DDX_Text(exchange, IDC_TICS_DISTANCE, ticsDistance);
}
