#pragma once

#include "framework/Wnd.h"

#include <memory>

struct DialogTemplate;
struct ModalState;

/// A window made from a template of the current resource module, modal or not. Enter presses the default
/// button, Esc cancels. A modeless one is hidden by OK and Cancel, not destroyed.
class FILMS_API CDialog : public CWnd {
    DECLARE_DYNCREATE(CDialog)
public:
    CDialog();
    explicit CDialog(UINT templateId, CWnd* parentWindow = nullptr);
    ~CDialog() override;

    using CWnd::Create;
    /// Modeless. Without a parent the main window owns it. FALSE when the template is missing or damaged.
    virtual BOOL Create(UINT id, CWnd* parentWindow = nullptr);
    /// Returns what EndDialog was given, -1 when the dialog could not be made.
    virtual int DoModal();
    /// Ends a modal dialog, hides a modeless one. Inside OnInitDialog the dialog never shows.
    void EndDialog(int result);

    UINT GetDefID() const { return defaultId; }
    /// Gives a control the keyboard, null the first that takes it. The text of an edit is selected, so that
    /// typing replaces it.
    void GotoDlgCtrl(CWnd* control);
    void CenterWindow();
    /// To the upper right of the owner, where a modeless window hides the least of what it belongs to.
    void PlaceBeside();

    BOOL PreTranslateMessage(MSG* message) override;

protected:
    /// By default fills the controls. TRUE gives the first control that takes it the focus.
    virtual BOOL OnInitDialog();
    /// By default reads the controls and, when they were right, ends with IDOK.
    virtual void OnOK();
    virtual void OnCancel();
    /// Makes the controls in this window and remembers the default button.
    void MakeControls(const DialogTemplate& dialog);
    LRESULT OnInitDialogMessage(WPARAM wParam, LPARAM lParam);
    void OnClose();
    void OnDestroy();

    DECLARE_MESSAGE_MAP()

private:
    BOOL CreateFromTemplate(UINT id, CWnd* parentWindow);
    bool PressDefault();
    int RunModal();

    UINT resourceId = 0;
    CWnd* owner = nullptr;
    UINT defaultId = 1; // IDOK
    std::shared_ptr<ModalState> modal;
    bool endedInInit = false;
    bool initialising = false;
};

/// A new control of a template inside `parent`; owned by its window until someone subclasses it.
void MakeTemplateControls(CWnd& parent, const DialogTemplate& dialog);
