#pragma once

#include "files/ToolBarReg.h"
#include "framework/Dialog.h"
#include "timeline/FilmsMainCtrl.h"
#include "timeline/ScenarioWindow.h"

#include <memory>

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

/// The window "Scenario": a modeless dialog with a toolbar and the main control. It is made once by the
/// plug-in object's panel and lives as long as the host's main window.
class CScenarioDlg : public CDialog, public IScenarioWindow {
    DECLARE_MESSAGE_MAP()

public:
    static constexpr int kMinWidth = 500;
    static constexpr int kMinHeight = 100;
    static constexpr int kFirstWidth = 500;
    static constexpr int kFirstHeight = 300;

    /// Makes the window at once; it stays hidden.
    explicit CScenarioDlg(CWnd* parentWnd = nullptr);
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
};
