#pragma once

#include "files/FilmWatch.h"
#include "framework/Dialog.h"
#include "framework/ListBox.h"

/// The dialog "Filter tracks": the root rows of the timeline, those that show selected. Modal; OK shows and
/// hides them, the caller places the rows anew. Rows that went while it was open are passed over.
class CFilterTracksDlg : public CDialog {
    DECLARE_MESSAGE_MAP()

public:
    explicit CFilterTracksDlg(const FilmSession& shown, CWnd* parentWnd = nullptr);

    CListBox list; ///< the item data is the row's track, which is compared only

protected:
    void DoDataExchange(CDataExchange* exchange) override;
    BOOL OnInitDialog() override;
    void OnOK() override;
    void OnAll() { SelectAll(/*select*/ true); }
    void OnNone() { SelectAll(/*select*/ false); }
    void OnInverse();

private:
    void FillList();
    void SelectAll(bool select);
    void ShowRows();

    const FilmSession& session; ///< outlives the dialog
    FilmWatch film{session};    ///< whose rows are listed
};
