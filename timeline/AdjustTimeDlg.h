#pragma once

#include "framework/Button.h"
#include "framework/Dialog.h"
#include "framework/Edit.h"
#include "plugin/base/Watch.h"
#include "timeline/rows/TimelineContext.h"

#include <string>

class CFilmsMainCtrl;

/// The dialog "Adjust time": puts time into the film at the cursor or takes it out, and stretches an
/// interval. Modal; a member of the main control, so that it shows what was typed last. Opened from the menu
/// of a row (the control's menuRow is set) it works on that row alone.
class CAdjustTimeDlg : public CDialog, public Watched {
    DECLARE_MESSAGE_MAP()

public:
    explicit CAdjustTimeDlg(CFilmsMainCtrl* mainControl);

    /// The control is about to show another film or none: the dialog, if it is open, closes without an edit.
    void LeaveFilm();

    float length = 0.0f;  ///< seconds to put in, negative to take out
    float current = 0.0f; ///< seconds, of the cursor, as the dialog shows it: in thousandths
    float from = 0.0f;    ///< seconds, of the interval as it is
    float to = 0.0f;      ///< seconds, of the interval as it shall be
    CEdit fromEdit;
    CButton endCheck;
    std::string lengthText;
    std::string currentText;
    std::string fromText;
    std::string toText;
    int toEnd = 0; ///< 1: the interval goes to the end of the film, whatever `fromText` says

protected:
    void DoDataExchange(CDataExchange* exchange) override;
    BOOL OnInitDialog() override;
    void OnEndCheck();
    void OnInsert();

private:
    void NoteTarget();
    bool FindTarget() const;
    void ReadNumbers();

    CFilmsMainCtrl* control;
    const IFilm* film = nullptr; ///< which the dialog was opened for; compared only
    bool forOneRow = false;
    RowHandle row; ///< for one row: which, across a rebuild
    std::string rowName;
};
