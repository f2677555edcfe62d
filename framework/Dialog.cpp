#include "framework/Dialog.h"

#include "framework/private/Capture.h"
#include "framework/private/DialogTemplate.h"
#include "framework/private/ModalState.h"
#include "framework/private/NativeFactory.h"
#include "framework/private/NativeWindow.h"
#include "framework/private/ToolWindows.h"
#include "framework/QtBridge.h"
#include "framework/TestHooks.h"

#include <QApplication>
#include <QPushButton>
#include <QScreen>

#include <utility>

IMPLEMENT_DYNCREATE(CDialog, CWnd)

BEGIN_MESSAGE_MAP(CDialog, CWnd)
ON_MESSAGE(WM_INITDIALOG, &CDialog::OnInitDialogMessage)
ON_COMMAND(IDOK, &CDialog::OnOK)
ON_COMMAND(IDCANCEL, &CDialog::OnCancel)
ON_WM_CLOSE()
ON_WM_DESTROY()
END_MESSAGE_MAP()

namespace {

// Of the window that owns this one while it is shown, else of the screen.
QRect AreaAround(const QWidget& widget) {
    const QWidget* around = widget.parentWidget() ? widget.parentWidget()->window() : nullptr;
    return around && around->isVisible() ? around->geometry() : widget.screen()->availableGeometry();
}

void MoveIntoScreen(QWidget& widget, const QRect& place) {
    const QRect screen = widget.screen()->availableGeometry();
    widget.move(std::max(screen.left(), place.left()), std::max(screen.top(), place.top()));
}

} // namespace

CDialog::CDialog() = default;

CDialog::CDialog(UINT templateId, CWnd* parentWindow) : resourceId(templateId), owner(parentWindow) {
}

CDialog::~CDialog() {
    if (modal) {
        modal->objectGone = true;
        modal->loop.quit();
    }
}

void MakeTemplateControls(CWnd& parent, const DialogTemplate& dialog) {
    if (dialog.font) {
        parent.GetSafeHwnd()->SetFont(dialog.font.get());
    }
    for (const DialogItem& item : dialog.items) {
        CWnd* control = MakeControlObject(item.className, item.style);
        const BOOL made = control->CWnd::CreateEx(item.exStyle, item.className.c_str(), item.text.c_str(),
                                                  item.style | WS_CHILD, item.rect, &parent, item.id);
        if (made) {
            control->GetSafeHwnd()->ownsWnd = true;
            if (dialog.font) {
                control->GetSafeHwnd()->SetFont(dialog.font.get());
            }
        } else {
            delete control;
        }
    }
}

void CDialog::MakeControls(const DialogTemplate& dialog) {
    MakeTemplateControls(*this, dialog);
    for (const DialogItem& item : dialog.items) {
        if (item.className == "BUTTON" && (item.style & BS_TYPEMASK) == BS_DEFPUSHBUTTON) {
            defaultId = item.id;
        }
    }
}

BOOL CDialog::CreateFromTemplate(UINT id, CWnd* parentWindow) {
    const std::optional<DialogTemplate> dialog = LoadDialog(id);
    if (!dialog || GetSafeHwnd()) {
        return FALSE;
    }
    resourceId = id;
    const bool isChild = (dialog->style & WS_CHILD) != 0;
    CWnd* around = parentWindow || isChild ? parentWindow : AfxGetMainWnd();
    if (!CWnd::CreateEx(dialog->exStyle, nullptr, dialog->caption.c_str(), dialog->style & ~WS_VISIBLE,
                        dialog->rect, around, 0)) {
        return FALSE;
    }
    MakeControls(*dialog);
    const bool isFixedTool = !modal && !(dialog->style & WS_THICKFRAME);
    if (!isChild && isFixedTool) {
        PlaceBeside();
    } else if (!isChild) {
        CenterWindow();
    }
    if (!isChild && !modal && (dialog->style & WS_THICKFRAME) && (!around || around == AfxGetMainWnd())) {
        tool_windows::Offer(*this);
    }
    endedInInit = false;
    initialising = true;
    const LRESULT giveFocus = SendMessage(WM_INITDIALOG);
    initialising = false;
    if (giveFocus && GetSafeHwnd()) {
        GotoDlgCtrl(nullptr);
    }
    if (GetSafeHwnd() && (dialog->style & WS_VISIBLE) && !endedInInit) {
        ShowWindow(SW_SHOW);
    }
    return GetSafeHwnd() != nullptr;
}

BOOL CDialog::Create(UINT id, CWnd* parentWindow) {
    return CreateFromTemplate(id, parentWindow);
}

int CDialog::DoModal() {
    capture::Cancel();
    const std::shared_ptr<ModalState> state = QtAlive() ? std::make_shared<ModalState>() : nullptr;
    if (!state) {
        return -1;
    }
    modal = state;
    if (CreateFromTemplate(resourceId, owner) && !state->ended) {
        RunModal();
    }
    if (state->objectGone) {
        return state->result;
    }
    modal.reset();
    DestroyWindow();
    return state->result;
}

// Nothing of the dialog is touched behind the loop or hook but what the state says still lives.
int CDialog::RunModal() {
    const std::shared_ptr<ModalState> state = modal;
    QWidget* widget = GetSafeHwnd()->widget;
    if (Hooks().modalDialog) {
        ShowWindow(SW_SHOWNA);
        const int result = Hooks().modalDialog(*this);
        if (!state->ended) {
            state->result = result;
        }
        return state->result;
    }
    widget->setWindowModality(Qt::ApplicationModal);
    ShowWindow(SW_SHOW);
    if (!state->ended) {
        state->loop.exec();
    }
    return state->result;
}

void CDialog::EndDialog(int result) {
    endedInInit = endedInInit || initialising;
    if (modal) {
        modal->result = result;
        modal->ended = true;
        modal->loop.quit();
    }
    ShowWindow(SW_HIDE);
}

LRESULT CDialog::OnInitDialogMessage(WPARAM /*wParam*/, LPARAM /*lParam*/) {
    return OnInitDialog();
}

BOOL CDialog::OnInitDialog() {
    UpdateData(FALSE);
    return TRUE;
}

void CDialog::OnOK() {
    if (UpdateData(TRUE)) {
        EndDialog(IDOK);
    }
}

void CDialog::OnCancel() {
    EndDialog(IDCANCEL);
}

void CDialog::OnClose() {
    SendMessage(WM_COMMAND, IDCANCEL);
}

void CDialog::OnDestroy() {
    CWnd::OnDestroy();
    if (modal) {
        modal->ended = true;
        modal->loop.quit();
    }
}

void CDialog::GotoDlgCtrl(CWnd* control) {
    if (control) {
        control->SetFocus();
        control->SendMessage(EM_SETSEL, 0, -1);
        return;
    }
    for (NativeWindow* child : GetSafeHwnd()->Children()) {
        if ((child->windowStyle & WS_TABSTOP) && child->IsShown() && child->widget->isEnabled()) {
            child->widget->setFocus(Qt::OtherFocusReason);
            child->Send(EM_SETSEL, 0, -1);
            return;
        }
    }
}

void CDialog::CenterWindow() {
    if (QWidget* widget = GetSafeHwnd() ? GetSafeHwnd()->widget : nullptr) {
        QRect place(QPoint(), widget->size());
        place.moveCenter(AreaAround(*widget).center());
        MoveIntoScreen(*widget, place);
    }
}

void CDialog::PlaceBeside() {
    constexpr QPoint kInset(48, 120); // pixels: free of title, menu and tool bars of the owner
    if (QWidget* widget = GetSafeHwnd() ? GetSafeHwnd()->widget : nullptr) {
        QRect place(QPoint(), widget->size());
        place.moveTopRight(AreaAround(*widget).topRight() + QPoint(-kInset.x(), kInset.y()));
        MoveIntoScreen(*widget, place);
    }
}

namespace {

// Docked by the host: part of another window, which no key closes.
bool IsPanel(const CDialog& dialog) {
    const NativeWindow* native = dialog.GetSafeHwnd();
    return native && native->frame && native->frame->IsPanel();
}

} // namespace

bool CDialog::PressDefault() {
    const auto* focused = dynamic_cast<QPushButton*>(QApplication::focusWidget());
    NativeWindow* button = NativeWindow::Of(focused);
    UINT id = button && button->Parent() == GetSafeHwnd() ? button->id : defaultId;
    const CWnd* control = GetDlgItem(static_cast<int>(id));
    if (control ? !control->IsWindowEnabled() : IsPanel(*this)) {
        return false;
    }
    SendMessage(WM_COMMAND, MAKEWPARAM(id, BN_CLICKED),
                reinterpret_cast<LPARAM>(control ? control->GetSafeHwnd() : nullptr));
    return true;
}

BOOL CDialog::PreTranslateMessage(MSG* message) {
    const bool isPage = (GetStyle() & WS_CHILD) != 0;
    if (!isPage && message->message == WM_KEYDOWN && message->wParam == static_cast<WPARAM>(VK_RETURN)) {
        PressDefault();
        return TRUE;
    }
    if (!isPage && message->message == WM_KEYDOWN && message->wParam == static_cast<WPARAM>(VK_ESCAPE)) {
        if (capture::Cancel()) {
            return TRUE; // it ended a drag
        }
        if (!IsPanel(*this)) {
            SendMessage(WM_COMMAND, IDCANCEL);
            return TRUE;
        }
    }
    return CWnd::PreTranslateMessage(message);
}
