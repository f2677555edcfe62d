#pragma once

#include "keys/attributes/AttrPropCtrl.h"
#include "tests/plugin/PluginFixture.h"

#include <functional>
#include <string>
#include <vector>

/// The window around a property list: it has the rows and notes what the list asks for.
class NotingAttrParent : public AttrListParent {
public:
    NotingAttrParent(CAttrPropCtrl& around, FilmSession& shown) : list(around), session(shown) {}

    FilmSession& GetSession() const override { return session; }
    IFilmKey* GetRecord() const override { return record; }
    AttrRow* FindObjectIdRow() const override { return rows.FindObjectIdRow(); }
    void UpdateRows() override;
    void ApplyChanges() override;
    void Refresh() override;
    void RowEdited() override { log.push_back("RowEdited"); }
    void ApplyPending() override { log.push_back("ApplyPending"); }
    void MakeKeyCurrent() override { log.push_back("MakeKeyCurrent"); }
    void PoseFilm() override { log.push_back("PoseFilm"); }
    /// Puts every row that isn't hidden into the list.
    void FillList();

    CAttrPropCtrl& list;
    FilmSession& session;
    AttrRows rows;
    IFilmKey* record = nullptr;
    std::function<void()> onApply;
    std::vector<std::string> log;
};

/// A property list of 201 x 120 pixels inside, in a window of its own.
class AttrListTest : public PluginTest {
protected:
    static constexpr int kWidth = 201;
    static constexpr int kHeight = 120;

    AttrListTest();
    ~AttrListTest() override;

    CMember& AddRow(const char* name, std::uint32_t type, const void* initial, AttrBrowse browse = nullptr);
    CMember& AddNumber(const char* name, float value) { return AddRow(name, MemberType::Float, &value); }
    CMember& AddText(const char* name, const char* text, AttrBrowse browse = nullptr) {
        return AddRow(name, MemberType::String, text, browse);
    }
    /// A choice of these items with this one chosen.
    CMember& AddChoice(const char* name, const std::vector<std::string>& items, int chosen);
    void ShowRows() { around.FillList(); }
    /// The left button goes down and up on the value of a row.
    void Click(int row);
    void ClickAt(int x, int y);
    /// Keys to whatever has the focus.
    void Type(const std::string& text);
    /// A turn of the wheel over the edit.
    void Wheel(int delta);
    /// The keyboard goes to another window, as after a click there.
    void LeaveEditor();
    static bool IsShown(const CWnd& window) { return window.IsWindowVisible() != FALSE; }
    /// In the client coordinates of the list.
    CRect PlaceOf(const CWnd& child) const;
    static std::string TextOf(const CMember& member) { return GetRowText(member); }

    CWnd frame;
    CWnd elsewhere; ///< takes the focus
    CAttrPropCtrl list;
    NotingAttrParent around{list, plugin};
};
