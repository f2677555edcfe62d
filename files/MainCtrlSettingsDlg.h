#pragma once

#include "framework/Dialog.h"

/// The dialog "Settings" of the main control. Modal; the caller fills the fields and reads them after OK,
/// when begin, end, what lies between them, and interval are finite.
class CMainCtrlSettingsDlg : public CDialog {
public:
    explicit CMainCtrlSettingsDlg(CWnd* parentWnd = nullptr);

    float begin = 0.0f;    ///< seconds, of the time axis
    float end = 0.0f;      ///< seconds, of the time axis
    float interval = 0.0f; ///< seconds that are drawn
    int bigTics = 0;       ///< small tics from one big tic to the next
    int labelDistance = 0; ///< big tics from one time label to the next
    int ticsDistance = 0;  ///< frames from one small tic to the next

protected:
    void DoDataExchange(CDataExchange* exchange) override;
    void OnOK() override;
};
