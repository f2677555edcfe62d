#pragma once

#include "framework/Gdi.h"
#include "framework/Wnd.h"

#include <memory>
#include <vector>

struct ToolBarView;

/// Part of TTN_NEEDTEXT: the owner may point `text` at the tip it wants.
struct TOOLTIPTEXT {
    NMHDR hdr;
    const char* lpszText = nullptr;
    char szText[80] = {};
    HINSTANCE hinst = nullptr;
    UINT uFlags = 0;
};

struct ToolBarButton {
    UINT id = 0;
    UINT style = 0; // TBBS_ bits
    UINT state = 0; // TBSTATE_ bits
    int image = 0;  // of a separator: its width
};

/// A row of buttons as data, which a window may show: one of its own as a child of its owner (Create), or one
/// that the host makes and docks (CreateNativeToolBar). All TB_ messages work without a window too.
class FILMS_API CToolBar : public CWnd {
    DECLARE_DYNCREATE(CToolBar)
public:
    CToolBar();
    ~CToolBar() override;

    using CWnd::Create;
    /// Pressing a button sends WM_COMMAND with its id and high word 0 to the parent.
    BOOL Create(CWnd* parent, DWORD style = WS_CHILD | WS_VISIBLE | CBRS_TOP, UINT id = AFX_IDW_TOOLBAR);

    /// Buttons and their bitmap from the current resource module; the bitmap has the tool bar's number. FALSE
    /// when the buttons are missing or damaged.
    BOOL LoadToolBar(UINT id);
    BOOL LoadBitmap(UINT id);
    void SetSizes(CSize button, CSize image);
    CSize GetImageSize() const { return imageSize; }
    BOOL SetButtons(const UINT* ids, int count);

    int GetButtonCount() const { return static_cast<int>(buttons.size()); }
    /// The style carries the state in its high word, where the enabled bit is turned over, so that a plain
    /// enabled button has 0 there.
    void GetButtonInfo(int index, UINT& id, UINT& style, int& image) const;
    void SetButtonInfo(int index, UINT id, UINT style, int image);
    UINT GetItemID(int index) const;
    /// -1 when no button has this id.
    int CommandToIndex(UINT id) const;
    const ToolBarButton* FindButton(UINT id) const;
    const std::vector<ToolBarButton>& Buttons() const { return buttons; }
    void SetBarStyle(DWORD style) { barStyle = style; }
    DWORD GetBarStyle() const { return barStyle; }

    BOOL IsButtonPressed(UINT id) const { return HasState(id, TBSTATE_PRESSED); }
    BOOL IsButtonChecked(UINT id) const { return HasState(id, TBSTATE_CHECKED); }
    BOOL IsButtonEnabled(UINT id) const { return HasState(id, TBSTATE_ENABLED); }
    BOOL IsButtonIndeterminate(UINT id) const { return HasState(id, TBSTATE_INDETERMINATE); }
    CToolBar& GetToolBarCtrl() { return *this; }
    const CToolBar& GetToolBarCtrl() const { return *this; }
    BOOL PressButton(UINT id, BOOL press = TRUE) { return SetState(id, TBSTATE_PRESSED, press); }
    BOOL CheckButton(UINT id, BOOL check = TRUE) { return SetState(id, TBSTATE_CHECKED, check); }
    BOOL EnableButton(UINT id, BOOL enable = TRUE) { return SetState(id, TBSTATE_ENABLED, enable); }

    /// The string table's text: what stands behind its line feed, or all of it.
    std::string TipText(UINT id) const;
    const CBitmap& Bitmap() const { return bitmap; }
    const CBitmap& LargeBitmap() const { return largeBitmap; }
    /// Sends the command of a button to the parent.
    void Press(UINT id);
    const std::string& Title() const { return title; }

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    friend struct ToolBarView;

    BOOL HasState(UINT id, UINT bit) const;
    BOOL SetState(UINT id, UINT bit, BOOL on);
    BOOL HandleToolBarMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    void DataChanged();

    std::vector<ToolBarButton> buttons;
    CBitmap bitmap;
    CBitmap largeBitmap;
    CSize imageSize{16, 15};
    DWORD barStyle = 0;
    std::string title;
    HINSTANCE resources = nullptr;
    std::vector<ToolBarView*> views;
};
