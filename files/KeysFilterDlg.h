#pragma once

#include "files/KeyFiltersListBox.h"
#include "framework/Dialog.h"

#include <array>
#include <cstdint>
#include <string>

class CFilmTrack;
class FilmSession;

/// The dialog "Keys filter & settings": how the keys of each kind are drawn, and which kinds a track shows.
/// Modal; works on a copy of the parameters, which the caller sets before and reads after OK.
class CKeysFilterDlg : public CDialog {
    DECLARE_MESSAGE_MAP()

public:
    explicit CKeysFilterDlg(const FilmSession& shown, CWnd* parentWnd = nullptr);

    /// The kinds that the track can hold are listed; none for null. The track is looked at only here.
    void SetTrack(CFilmTrack* track);
    void SetParams(const KeyKindParamsTable& records) { params = records; }
    void GetParams(KeyKindParamsTable& records) const { records = params; }

    KeyKindParamsTable params;
    std::array<std::uint8_t, kKeyKindCount> available{}; ///< 1 for the kinds that are listed
    CKeyFiltersListBox list;
    int applyToAll = 0; ///< "Apply to all tracks" is checked

protected:
    void DoDataExchange(CDataExchange* exchange) override;
    BOOL OnInitDialog() override;
    void OnDefaults();
    void OnExport();
    void OnImport();

private:
    const FilmSession& session; ///< outlives the dialog

    void FillList();
    bool AskForFile(bool open, std::string& path);
};
