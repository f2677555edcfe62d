#include "framework/Wnd.h"

#include "framework/private/Capture.h"
#include "framework/private/NativeFactory.h"
#include "framework/private/NativeWindow.h"
#include "framework/private/PumpQueue.h"

#include <QGuiApplication>
#include <QScreen>

#include <map>
#include <utility>

IMPLEMENT_DYNCREATE(CWnd, CCmdTarget)

BEGIN_MESSAGE_MAP(CWnd, CCmdTarget)
END_MESSAGE_MAP()

namespace message_map {

CWnd* WindowOf(WPARAM handle) {
    return CWnd::FromHandle(reinterpret_cast<HWND>(handle));
}

} // namespace message_map

namespace {

std::map<std::string, WNDPROC>& WindowClasses() {
    static std::map<std::string, WNDPROC> classes;
    return classes;
}

NativeWindow* mainWindow = nullptr;

// The toolkit's window flags for a window that is no child.
Qt::WindowFlags TopLevelFlags(DWORD style) {
    if ((style & WS_CAPTION) != WS_CAPTION) {
        // Floats above the others and never takes the focus.
        return Qt::ToolTip;
    }
    Qt::WindowFlags flags = Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint;
    flags |= style & WS_SYSMENU ? Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint : Qt::WindowFlags();
    if (style & WS_THICKFRAME) {
        flags |= Qt::WindowMinMaxButtonsHint;
    }
    return flags;
}

} // namespace

CWnd::CWnd() = default;

CWnd::~CWnd() {
    if (native && QtAlive()) {
        CWnd::DestroyWindow();
    } else if (native) {
        native->Detach();
    }
    messages::Forget(this);
}

BOOL CWnd::PreCreateWindow(CREATESTRUCT& /*cs*/) {
    return TRUE;
}
void CWnd::PreSubclassWindow() {
}
void CWnd::PostNcDestroy() {
}

BOOL CWnd::Create(const char* className, const char* windowName, DWORD style, const CRect& rect, CWnd* parent,
                  UINT id, CCreateContext* context) {
    return CWnd::CreateEx(0, className, windowName, style, rect, parent, id, context);
}

BOOL CWnd::CreateEx(DWORD exStyle, const char* className, const char* windowName, DWORD style,
                    const CRect& rect, CWnd* parent, UINT id, void* param) {
    CREATESTRUCT cs{param, parent, id, rect, style, exStyle, windowName, className};
    if (native || !QtAlive() || !PreCreateWindow(cs)) {
        return FALSE;
    }
    const bool isChild = (cs.style & WS_CHILD) != 0;
    NativeWindow* around = cs.parent ? cs.parent->native : nullptr;
    if (isChild && !around) {
        return FALSE;
    }
    PumpQueue::Get();
    const std::string name = cs.lpszClass ? cs.lpszClass : "";
    QWidget* parentWidget = isChild ? around->Client() : around ? around->widget->window() : nullptr;
    NativeWindow* made =
        MakeNative(name, cs.style, parentWidget, isChild ? Qt::WindowFlags() : TopLevelFlags(cs.style));
    made->id = cs.id;
    made->windowStyle = cs.style;
    made->exStyle = cs.dwExStyle;
    const auto windowClass = WindowClasses().find(name);
    made->classProc = windowClass == WindowClasses().end() ? nullptr : windowClass->second;
    made->Attach(this);
    made->SetText(QString::fromUtf8(cs.lpszName ? cs.lpszName : ""));
    made->widget->hide();
    made->SetGeometry(cs.rect, /*sendSize*/ false);
    made->widget->setEnabled(!(cs.style & WS_DISABLED));
    if (SendMessage(WM_CREATE, 0, reinterpret_cast<LPARAM>(&cs)) == -1) {
        DestroyWindow();
        return FALSE;
    }
    if (native) {
        native->SendSizeIfChanged();
    }
    if (native && (cs.style & WS_VISIBLE)) {
        ShowWindow(SW_SHOW);
    }
    return native != nullptr;
}

BOOL CWnd::DestroyWindow() {
    NativeWindow* dying = native;
    if (!dying) {
        return FALSE;
    }
    QWidget* widget = dying->widget;
    dying->AnnounceEnd();
    // The object may be gone by now. The widget goes later: its own event may still be running.
    widget->hide();
    dying->DeleteLater();
    return TRUE;
}

BOOL CWnd::SubclassDlgItem(UINT id, CWnd* parent) {
    if (!parent || !parent->native) {
        return FALSE;
    }
    for (NativeWindow* child : parent->native->Children()) {
        if (child->id == id) {
            return SubclassWindow(child);
        }
    }
    return FALSE;
}

BOOL CWnd::SubclassWindow(HWND handle) {
    if (native || !NativeWindow::Exists(handle) || (handle->wnd && !handle->ownsWnd)) {
        return FALSE;
    }
    CWnd* before = handle->wnd;
    handle->Detach();
    if (std::exchange(handle->ownsWnd, false)) {
        delete before;
    }
    handle->Attach(this);
    PreSubclassWindow();
    return TRUE;
}

HWND CWnd::UnsubclassWindow() {
    NativeWindow* released = native;
    if (released) {
        released->Detach();
        released->Attach(new CWnd);
        released->ownsWnd = true;
    }
    return released;
}

CWnd* CWnd::FromHandle(HWND handle) {
    return NativeWindow::Exists(handle) ? handle->wnd : nullptr;
}

CWnd* CWnd::GetParent() const {
    NativeWindow* parent = native ? native->Parent() : nullptr;
    return parent ? parent->wnd : nullptr;
}

CWnd* CWnd::GetDlgItem(int id) const {
    if (native) {
        for (NativeWindow* child : native->Children()) {
            if (child->id == static_cast<UINT>(id) && child->wnd) {
                return child->wnd;
            }
        }
    }
    return nullptr;
}

CWnd* CWnd::GetWindowChild(int index) const {
    const auto children = native ? native->Children() : std::vector<NativeWindow*>();
    return index >= 0 && index < static_cast<int>(children.size())
               ? children[static_cast<std::size_t>(index)]->wnd
               : nullptr;
}

BOOL CWnd::SetDlgItemText(int id, const std::string& text) {
    CWnd* item = GetDlgItem(id);
    if (item) {
        item->SetWindowText(text);
    }
    return item != nullptr;
}

std::string CWnd::GetDlgItemText(int id) const {
    const CWnd* item = GetDlgItem(id);
    return item ? item->GetWindowText() : std::string();
}

void CWnd::CheckDlgButton(int id, UINT check) {
    SendDlgItemMessage(id, BM_SETCHECK, check);
}

UINT CWnd::IsDlgButtonChecked(int id) const {
    CWnd* item = GetDlgItem(id);
    return item ? static_cast<UINT>(item->SendMessage(BM_GETCHECK)) : 0;
}

int CWnd::GetDlgCtrlID() const {
    return native ? static_cast<int>(native->id) : 0;
}

bool CWnd::IsChild(const CWnd* other) const {
    return native && other && other->native && native != other->native &&
           native->widget->isAncestorOf(other->native->widget);
}

LRESULT CWnd::SendMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    return messages::Send(*this, message, wParam, lParam);
}

BOOL CWnd::PostMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    PumpQueue* queue = native ? PumpQueue::Get() : nullptr;
    if (queue) {
        queue->Post(native, message, wParam, lParam);
    }
    return queue != nullptr;
}

LRESULT CWnd::SendDlgItemMessage(int id, UINT message, WPARAM wParam, LPARAM lParam) {
    CWnd* item = GetDlgItem(id);
    return item ? item->SendMessage(message, wParam, lParam) : 0;
}

BOOL CWnd::PreTranslateMessage(MSG* /*message*/) {
    return FALSE;
}

bool IsWindow(HWND handle) {
    return NativeWindow::Exists(handle) && handle->wnd;
}

LRESULT DefWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    CWnd* object = CWnd::FromHandle(window);
    if (!object) {
        return 0;
    }
    // The procedure of the window's class is where such calls come from; it must not be asked again.
    const WNDPROC procedure = std::exchange(window->classProc, nullptr);
    const LRESULT result = object->CWnd::DefWindowProc(message, wParam, lParam);
    if (NativeWindow::Exists(window)) {
        window->classProc = procedure;
    }
    return result;
}

LRESULT SendMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    CWnd* object = CWnd::FromHandle(window);
    return object ? object->SendMessage(message, wParam, lParam) : 0;
}

BOOL RegisterClass(const WNDCLASS* windowClass) {
    if (!windowClass || !windowClass->lpszClassName) {
        return FALSE;
    }
    return WindowClasses().emplace(windowClass->lpszClassName, windowClass->lpfnWndProc).second;
}

CWnd* AfxGetMainWnd() {
    return NativeWindow::Exists(mainWindow) ? mainWindow->wnd : nullptr;
}

void AfxSetMainWnd(CWnd* window) {
    mainWindow = window ? window->GetSafeHwnd() : nullptr;
}
