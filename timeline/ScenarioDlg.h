#pragma once

#include "files/base/ToolBarReg.h"
#include "framework/Dialog.h"
#include "plugin/base/Watch.h"
#include "plugin/session/ScenarioWindow.h"
#include "timeline/FilmsMainCtrl.h"

#include <array>

/// The toolbar of the scenario window.
class CScenarioDlgToolbar : public CToolBarReg {
    DECLARE_MESSAGE_MAP()

public:
    CScenarioDlgToolbar();

    CSize fontSize;       ///< average width and height of the system font's characters
    int imageMargin = 13; ///< pixels

protected:
    int OnCreate(CREATESTRUCT* cs);
};

/// The window "Scenario": a modeless dialog with a toolbar and the main control. Make it with new: it enters
/// itself as the plug-in object's window, lives as long as the host's main window and deletes itself with its
/// window. Closing it only hides it.
class CScenarioDlg : public CDialog, public IScenarioWindow, public Watched {
    DECLARE_MESSAGE_MAP()

public:
    static constexpr int kMinWidth = 500;
    static constexpr int kMinHeight = 100;
    static constexpr int kFirstWidth = 500;
    static constexpr int kFirstHeight = 300;

    /// Makes the window at once; it stays hidden.
    explicit CScenarioDlg(IPluginImpl& newPlugin, CWnd* parentWnd = nullptr);
    ~CScenarioDlg() override;

    bool IsEnabled() const override;
    bool IsVisible() const override;
    void Show() override;
    void ShowCurrentFilm() override;
    void SetTime(float time) override;
    void PressButton(unsigned id, bool pressed) override;
    void UpdateAttachButton() override;
    IMainCtrl* GetMainCtrl() override { return mainCtrl; }
    BOOL PreTranslateMessage(MSG* message) override;

    /// Selects the next key in a direction and moves the time there.
    void JumpToKey(bool forward);
    void RecalcLayout();

    IPluginImpl& plugin; ///< outlives the window
    CScenarioDlgToolbar toolbar;
    CFilmsMainCtrl* mainCtrl = nullptr; ///< owned
    bool initialised = false;

protected:
    BOOL OnInitDialog() override;
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
    void OnSize(UINT type, int width, int height);
    void OnSizing(UINT side, CRect* rect);
    void OnClose();
    void OnDestroy();
    BOOL OnMouseWheel(UINT flags, short delta, CPoint screenPoint);
    BOOL OnToolTipText(UINT id, NMHDR* header, LRESULT* result);
    void PostNcDestroy() override;

private:
    void MakeToolbar();
    void MakeMainCtrl(const CRect& rect);
    /// The client area without the toolbar.
    CRect FreeRect();
    /// Shows as much more or less time as the main control grew or shrank, in pixels.
    void KeepScale(int grown);
    bool dying = false;
    std::array<char, 256> tipText{}; ///< the tip that was asked for last
};
