#pragma once

#include "framework/Dialog.h"
#include "framework/Edit.h"

#include <string>

class CFilmsMainCtrl;

/// The dialog "Adjust time": puts time into the film at the cursor or takes it out, and stretches an
/// interval. Modal; a member of the main control, so that it shows what was typed last.
class CAdjustTimeDlg : public CDialog {
public:
    explicit CAdjustTimeDlg(CFilmsMainCtrl* mainControl);

    float length = 0.0f;  ///< seconds to put in, negative to take out
    float current = 0.0f; ///< seconds, of the cursor
    float from = 0.0f;    ///< seconds, of the interval as it is
    float to = 0.0f;      ///< seconds, of the interval as it shall be
};
