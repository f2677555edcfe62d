#pragma once

#include "framework/CmdTarget.h"

#include <string>

class CDataExchange;

struct CREATESTRUCT {
    void* lpCreateParams = nullptr;
    CWnd* parent = nullptr;
    UINT id = 0;
    CRect rect;
    DWORD style = 0;
    DWORD dwExStyle = 0;
    const char* lpszName = nullptr;
    const char* lpszClass = nullptr;
};

struct CCreateContext {
    const CRuntimeClass* newViewClass = nullptr;
};

struct MSG {
    HWND hwnd = nullptr;
    UINT message = 0;
    WPARAM wParam = 0;
    LPARAM lParam = 0;
    DWORD time = 0; // milliseconds of the clock
    CPoint pt;      // screen coordinates
    /// The input behind the message, kept by the queue; 0 for a posted one.
    std::uint64_t ticket = 0;
};

using WNDPROC = LRESULT (*)(HWND, UINT, WPARAM, LPARAM);

struct WNDCLASS {
    UINT style = 0;
    WNDPROC lpfnWndProc = nullptr;
    HINSTANCE hInstance = nullptr;
    const char* lpszClassName = nullptr;
};

struct PAINTSTRUCT {
    CRect rcPaint;
    BOOL fErase = FALSE;
};

/// The object of a window. It may exist without a window, before the application and after it; Create gives
/// it one, DestroyWindow takes it away. All coordinates are logical pixels, those of a child are its parent's
/// client ones.
class FILMS_API CWnd : public CCmdTarget {
    DECLARE_DYNCREATE(CWnd)
public:
    CWnd();
    /// Destroys the window without messages reaching the derived class any more.
    ~CWnd() override;

    /// Class names are those of the standard controls ("STATIC", "BUTTON", "EDIT", "COMBOBOX", "LISTBOX",
    /// "SysTabControl32"); null or any other is a plain window. FALSE without an application or when OnCreate
    /// answers -1.
    virtual BOOL Create(const char* className, const char* windowName, DWORD style, const CRect& rect,
                        CWnd* parent, UINT id, CCreateContext* context = nullptr);
    virtual BOOL CreateEx(DWORD exStyle, const char* className, const char* windowName, DWORD style,
                          const CRect& rect, CWnd* parent, UINT id, void* param = nullptr);
    virtual BOOL DestroyWindow();
    /// Takes over the window of a control that a dialog's template made. FALSE when there is none.
    BOOL SubclassDlgItem(UINT id, CWnd* parent);
    BOOL SubclassWindow(HWND handle);
    HWND UnsubclassWindow();

    HWND GetSafeHwnd() const { return native; }
    static CWnd* FromHandle(HWND handle);
    CWnd* GetParent() const;
    /// The child of this number, whoever made it: the caller's object, or the one a dialog made for its
    /// control.
    CWnd* GetDlgItem(int id) const;
    BOOL SetDlgItemText(int id, const std::string& text);
    std::string GetDlgItemText(int id) const;
    void CheckDlgButton(int id, UINT check);
    UINT IsDlgButtonChecked(int id) const;
    int GetDlgCtrlID() const;
    bool IsChild(const CWnd* other) const;
    CWnd* GetWindowChild(int index) const;

    DWORD GetStyle() const;
    BOOL ModifyStyle(DWORD remove, DWORD add, UINT flags = 0);
    BOOL ShowWindow(int command);
    BOOL IsWindowVisible() const;
    BOOL EnableWindow(BOOL enable = TRUE);
    BOOL IsWindowEnabled() const;

    /// WM_SIZE reaches the window before these return, also while it is hidden.
    void MoveWindow(int x, int y, int width, int height, BOOL repaint = TRUE);
    void MoveWindow(const CRect& r, BOOL repaint = TRUE) {
        MoveWindow(r.left, r.top, r.Width(), r.Height(), repaint);
    }
    BOOL SetWindowPos(const CWnd* after, int x, int y, int width, int height, UINT flags);
    void BringWindowToTop();
    void GetClientRect(CRect* rect) const;
    void GetWindowRect(CRect* rect) const; // screen coordinates
    void ClientToScreen(CPoint* point) const;
    void ClientToScreen(CRect* rect) const;
    void ScreenToClient(CPoint* point) const;
    void ScreenToClient(CRect* rect) const;

    void Invalidate(BOOL erase = TRUE);
    void InvalidateRect(const CRect* rect, BOOL erase = TRUE);
    void ValidateRect();
    /// What a paint would draw now; FALSE and empty when nothing is asked for.
    BOOL GetUpdateRect(CRect* rect) const;
    void UpdateWindow();
    void RedrawWindow();
    void SetRedraw(BOOL redraw = TRUE);

    void SetWindowText(const std::string& text);
    std::string GetWindowText() const;
    void GetWindowText(std::string& text) const { text = GetWindowText(); }
    /// That of SetFont, else that of the template, else the application's.
    class CFont* GetFont() const;
    /// The caller keeps the object while GetFont may be asked. Null is the application's font.
    void SetFont(class CFont* font, BOOL redraw = TRUE);

    CWnd* SetCapture();
    static CWnd* GetCapture();
    CWnd* SetFocus();
    static CWnd* GetFocus();
    static CWnd* GetActiveWindow();
    CWnd* SetActiveWindow();

    /// Starts the timer anew if it runs. Returns the id (1 for 0), 0 without a window.
    UINT_PTR SetTimer(UINT_PTR id, UINT milliseconds, void* callback = nullptr);
    BOOL KillTimer(UINT_PTR id);

    LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    BOOL PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    LRESULT SendDlgItemMessage(int id, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

    BOOL EnableToolTips(BOOL enable = TRUE);
    /// Places the tool bars among the children with ids first..last along the top. `left` receives what
    /// remains of the client area; with query nothing is moved. `client` replaces the client rect.
    enum BarMode { reposDefault = 0, reposQuery = 1 };
    void RepositionBars(UINT first, UINT last, UINT leftOver, UINT mode = reposDefault, CRect* left = nullptr,
                        const CRect* client = nullptr, BOOL stretch = TRUE);

    /// Moves data between the controls and the fields by DoDataExchange. FALSE when a text did not fit its
    /// field.
    BOOL UpdateData(BOOL saveAndValidate = TRUE);

    /// Sees key, button and wheel messages for this window and its children before they are dispatched
    /// outside a message pump of the caller's own. TRUE swallows the message.
    virtual BOOL PreTranslateMessage(MSG* message);
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    /// With the message that is being handled: the toolkit's own handling of the event behind it, once.
    virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);

protected:
    virtual BOOL PreCreateWindow(CREATESTRUCT& cs);
    /// After subclassing, when the control already stands.
    virtual void PreSubclassWindow();
    /// The last call of a window's life; an object made with new may delete itself here.
    virtual void PostNcDestroy();
    virtual BOOL OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);
    virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam);
    virtual BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result);
    /// A control's own chance at what it sends to its parent. TRUE keeps it from the parent.
    virtual BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);
    virtual void DoDataExchange(CDataExchange* exchange);
    virtual WNDPROC* GetSuperWndProcAddr();

    LRESULT Default();

    /// Handlers of a message map; each hands the message on to the default.
    int OnCreate(CREATESTRUCT* cs);
    void OnDestroy();
    void OnMove(int x, int y);
    void OnSize(UINT type, int width, int height);
    void OnSizing(UINT side, CRect* rect);
    void OnSetFocus(CWnd* old);
    void OnKillFocus(CWnd* next);
    void OnPaint();
    void OnClose();
    BOOL OnEraseBkgnd(CDC* dc);
    void OnShowWindow(BOOL show, UINT status);
    void OnWinIniChange(const char* section);
    void OnPaletteChanged(CWnd* focus);
    void OnCaptureChanged(CWnd* next);
    void OnCancelMode();
    void OnTimer(UINT_PTR id);
    void OnKeyDown(UINT key, UINT repeat, UINT flags);
    void OnKeyUp(UINT key, UINT repeat, UINT flags);
    void OnSysKeyDown(UINT key, UINT repeat, UINT flags);
    void OnSysKeyUp(UINT key, UINT repeat, UINT flags);
    void OnMouseMove(UINT flags, CPoint point);
    BOOL OnMouseWheel(UINT flags, short delta, CPoint screenPoint);
    void OnMouseLeave();
    void OnLButtonDown(UINT flags, CPoint point);
    void OnLButtonUp(UINT flags, CPoint point);
    void OnLButtonDblClk(UINT flags, CPoint point);
    void OnRButtonDown(UINT flags, CPoint point);
    void OnRButtonUp(UINT flags, CPoint point);
    void OnMButtonDown(UINT flags, CPoint point);
    void OnMButtonUp(UINT flags, CPoint point);

    DECLARE_MESSAGE_MAP()

private:
    friend class NativeWindow;

    LRESULT DefaultAnswer(UINT message, WPARAM wParam, LPARAM lParam);

    NativeWindow* native = nullptr;
    CFont* windowFont = nullptr;
};

FILMS_API bool IsWindow(HWND handle);
FILMS_API LRESULT DefWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
FILMS_API LRESULT SendMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
/// Adds a class name for Create; its procedure gets what the window's own handling leaves over.
FILMS_API BOOL RegisterClass(const WNDCLASS* windowClass);
FILMS_API BOOL ReleaseCapture();
FILMS_API BOOL GetCursorPos(CPoint* point);
/// The top bit (0x8000) is set while the key is down: at the message being handled, or right now.
FILMS_API short GetKeyState(int key);
FILMS_API short GetAsyncKeyState(int key);
/// The host's main window, the owner of dialogs that are given none.
FILMS_API CWnd* AfxGetMainWnd();
FILMS_API void AfxSetMainWnd(CWnd* window);
