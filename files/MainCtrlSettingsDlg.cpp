#include "files/MainCtrlSettingsDlg.h"

#include "framework/DataExchange.h"
#include "framework/MessageBox.h"
#include "resources/resource.h"

#include <cmath>

CMainCtrlSettingsDlg::CMainCtrlSettingsDlg(CWnd* parentWnd) : CDialog(IDD_MAIN_CTRL_SETTINGS, parentWnd) {
}

/// The main control puts begin and end in order.
void CMainCtrlSettingsDlg::DoDataExchange(CDataExchange* exchange) {
    CDialog::DoDataExchange(exchange);
    DDX_Text(exchange, IDC_RANGE_BEGIN, begin);
    DDX_Text(exchange, IDC_RANGE_END, end);
    DDX_Text(exchange, IDC_DRAW_INTERVAL, interval);
    DDX_Text(exchange, IDC_BIG_TICS, bigTics);
    DDX_Text(exchange, IDC_LABEL_DISTANCE, labelDistance);
    DDX_Text(exchange, IDC_TICS_DISTANCE, ticsDistance);
}

/// A text like "1e99" or "nan" passes as a number, but is no time.
void CMainCtrlSettingsDlg::OnOK() {
    if (!UpdateData(TRUE)) {
        return;
    }
    const std::pair<int, float> times[] = {{IDC_RANGE_BEGIN, begin},
                                           {IDC_RANGE_END, end},
                                           {IDC_RANGE_END, end - begin},
                                           {IDC_DRAW_INTERVAL, interval}};
    for (const auto& [id, time] : times) {
        if (!std::isfinite(time)) {
            AfxMessageBox("Please enter a number.", MB_ICONEXCLAMATION);
            if (GetSafeHwnd() != nullptr) {
                GotoDlgCtrl(GetDlgItem(id));
            }
            return;
        }
    }
    EndDialog(IDOK);
}
