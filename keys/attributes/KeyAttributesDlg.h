#pragma once

#include "framework/Dialog.h"
#include "keys/attributes/AttrPropCtrl.h"
#include "keys/attributes/AttrRows.h"
#include "plugin/base/Watch.h"
#include "plugin/session/ScenarioWindow.h"

#include <memory>
#include <string>

class FilmSession;

/// The window "Key attributes": what one key says, row by row. Modeless, made hidden with the first film that
/// is shown, owned by the plug-in object. A value goes from the editor to its row's member when the editor
/// loses the focus, and from the members to the record when another key is shown, at Enter, at closing, at a
/// turn of the wheel and at another object id.
class CFilmKeyAttributesDlg : public CDialog,
                              public IKeyAttributesDlg,
                              public Watched,
                              private AttrListParent {
    DECLARE_MESSAGE_MAP()

public:
    /// Values of Show.
    static constexpr int kShow = 5;
    static constexpr int kHide = 0;

    /// Makes the window at once; without an application there is none.
    explicit CFilmKeyAttributesDlg(FilmSession& shown);
    ~CFilmKeyAttributesDlg() override;

    void SetKey(CTrackKey* newKey, bool refresh) override;
    void Show(int command) override;
    /// A row that the caller appends to `rows`. The arguments are those of CMember.
    static std::unique_ptr<AttrRow> AddRow(const char* name, std::uint32_t type, const void* initial,
                                           const char* description, std::uint32_t flags, AttrBrowse browse) {
        return AttrRows::Make(name, type, initial, description, flags, browse);
    }
    CMember* FindMember(const char* name, const char* category) const {
        return rows.FindMember(name, category);
    }
    /// Writes every row, hidden ones too. May ask the user.
    void ApplyChanges() override;
    void UpdateRows() override;
    void RebuildList();
    void DeleteRows() { rows.DeleteAll(); }
    void Reset() override;
    void GoToNeighbour(bool forward);
    void UpdateNeighbourButtons();

    bool GetLinkObjectText(const EditorObject* object, std::string& text) const override {
        return list.GetLinkObjectText(object, text);
    }
    void SetLinkObject(EditorObject* object) override { list.SetLinkObject(object); }
    bool IsVisible() const override { return IsWindowVisible() != FALSE; }
    void Hide() override { Show(kHide); }
    IFilmKey* GetRecord() const override { return record; }
    CTrackKey* GetKey() const override { return key; }
    void ApplyPending() override;
    void Destroy() override { DestroyWindow(); }

    CAttrPropCtrl list;
    AttrRows rows;
    CTrackKey* key = nullptr;
    IFilmKey* record = nullptr; ///< of the key

protected:
    BOOL OnInitDialog() override;
    void OnOK() override;
    void OnDestroy();
    void OnClose();
    void OnNext() { GoToNeighbour(/*forward*/ true); }
    void OnPrev() { GoToNeighbour(/*forward*/ false); }

private:
    FilmSession& session; ///< outlives the window
    FilmSession& GetSession() const override { return session; }
    AttrRow* FindObjectIdRow() const override { return rows.FindObjectIdRow(); }
    void Refresh() override { SetKey(nullptr, /*refresh*/ true); }
    void RowEdited() override { hasPending = true; }
    void MakeKeyCurrent() override;
    void PoseFilm() override;

    bool SaveRows();
    void ShowRows();

    bool hasPending = false; ///< the user edited a row since the record was read or written
    unsigned shownKeys = 0;  ///< counts calls of SetKey that take a key in
};
