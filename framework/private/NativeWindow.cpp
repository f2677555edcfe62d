#include "framework/private/NativeWindow.h"

#include "framework/private/Capture.h"
#include "framework/private/DyingWindows.h"
#include "framework/private/Face.h"
#include "framework/QtBridge.h"

#include <QCoreApplication>
#include <QResizeEvent>

#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace {

using Registry = std::unordered_map<const QWidget*, NativeWindow*>;

// Never destroyed: windows may die after the statics of this library.
Registry& AllWindows() {
    static auto* all = new Registry;
    return *all;
}

// The same windows by themselves, for handles whose widget nobody knows any more.
std::unordered_set<const NativeWindow*>& AllHandles() {
    static auto* all = new std::unordered_set<const NativeWindow*>;
    return *all;
}

void DeleteAllWindows() {
    while (!AllWindows().empty()) {
        NativeWindow* native = AllWindows().begin()->second;
        native->AnnounceEnd();
        native->DeleteNow();
    }
}

} // namespace

NativeWindow::NativeWindow(QWidget* w) : widget(w) {
    static bool registered = false;
    if (!registered) {
        registered = true;
        qAddPostRoutine([] {
            registered = false;
            DeleteAllWindows();
        });
    }
    AllWindows()[w] = this;
    AllHandles().insert(this);
    w->setAttribute(Qt::WA_QuitOnClose, false);
}

NativeWindow::~NativeWindow() {
    AllWindows().erase(widget);
    AllHandles().erase(this);
    CWnd* object = wnd;
    Detach();
    if (ownsWnd) {
        delete object;
    }
}

void NativeWindow::DeleteNow() {
    delete widget;
}
void NativeWindow::DeleteLater() {
    dying_windows::Add(widget);
}

NativeWindow* NativeWindow::Of(const QWidget* widget) {
    const auto found = AllWindows().find(widget);
    return found == AllWindows().end() ? nullptr : found->second;
}

NativeWindow* NativeWindow::Around(const QWidget* widget) {
    for (; widget; widget = widget->parentWidget()) {
        if (NativeWindow* native = Of(widget)) {
            return native;
        }
    }
    return nullptr;
}

NativeWindow* NativeWindow::InWindowOf(const QWidget* widget) {
    for (; widget; widget = widget->parentWidget()) {
        if (NativeWindow* native = Of(widget)) {
            return native;
        }
        if (widget->isWindow() && widget->windowType() != Qt::Popup) {
            return nullptr;
        }
    }
    return nullptr;
}

bool NativeWindow::Exists(const NativeWindow* native) {
    return AllHandles().count(native) != 0;
}

NativeWindow* NativeWindow::Parent() const {
    return Around(widget->parentWidget());
}

std::vector<NativeWindow*> NativeWindow::Children() const {
    std::vector<NativeWindow*> children = Owned();
    std::erase_if(children, [](const NativeWindow* child) { return child->widget->isWindow(); });
    return children;
}

std::vector<NativeWindow*> NativeWindow::Owned() const {
    std::vector<NativeWindow*> owned;
    for (QObject* object : Client()->children()) {
        if (auto* window = object->isWidgetType() ? Of(static_cast<QWidget*>(object)) : nullptr) {
            owned.push_back(window);
        }
    }
    return owned;
}

void NativeWindow::SetText(const QString& newText) {
    caption = newText;
    widget->setWindowTitle(newText);
}

QString NativeWindow::Text() const {
    return caption;
}

std::optional<LRESULT> NativeWindow::ControlMessage(UINT /*message*/, WPARAM /*wParam*/, LPARAM /*lParam*/) {
    return std::nullopt;
}

LRESULT NativeWindow::Send(UINT message, WPARAM wParam, LPARAM lParam, QEvent* event) {
    return wnd ? messages::Send(*wnd, message, wParam, lParam, event) : 0;
}

bool NativeWindow::Reflect(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    return wnd && wnd->OnChildNotify(message, wParam, lParam, result);
}

void NativeWindow::NotifyParent(UINT code) {
    NativeWindow* parent = Parent();
    if (parent && parent->wnd && wnd) {
        parent->Send(WM_COMMAND, MAKEWPARAM(id, code), reinterpret_cast<LPARAM>(this));
    }
}

LRESULT NativeWindow::NotifyParent(NMHDR& header) {
    NativeWindow* parent = Parent();
    return parent ? parent->Send(WM_NOTIFY, header.idFrom, reinterpret_cast<LPARAM>(&header)) : 0;
}

void NativeWindow::Attach(CWnd* object) {
    wnd = object;
    object->native = this;
}

void NativeWindow::Detach() {
    if (wnd) {
        capture::Forget(wnd);
        wnd->native = nullptr;
        wnd = nullptr;
    }
}

void NativeWindow::AnnounceEnd() {
    if (ending) {
        return;
    }
    ending = true;
    Send(WM_DESTROY, 0, 0);
    for (NativeWindow* child : Owned()) {
        if (Exists(child)) {
            child->AnnounceEnd();
        }
    }
    Send(WM_NCDESTROY, 0, 0);
    CWnd* object = wnd;
    const bool owned = std::exchange(ownsWnd, false);
    Detach();
    if (IWindowFrame* around = std::exchange(frame, nullptr)) {
        around->ContentGone();
    }
    if (owned) {
        delete object;
    } else if (object) {
        object->PostNcDestroy();
    }
}

void NativeWindow::SetFont(const CFont* newFont) {
    font = newFont ? &surface::KeptFont(*newFont) : nullptr;
    widget->setFont((font ? surface::FaceOf(*font) : surface::DefaultFace()).Font());
    FontChanged();
}

CFont* NativeWindow::FontInForce() const {
    const NativeWindow* around = this;
    while (!around->font && !around->IsTopLevel() && around->Parent()) {
        around = around->Parent();
    }
    return around->font;
}

CRect NativeWindow::Geometry() const {
    if (pendingGeometry) {
        return *pendingGeometry;
    }
    const QRect g = frame ? QRect(widget->mapToGlobal(QPoint()), widget->size()) : widget->geometry();
    return {g.x(), g.y(), g.x() + g.width(), g.y() + g.height()};
}

CSize NativeWindow::ClientSize() const {
    if (pendingGeometry) {
        return pendingGeometry->Size();
    }
    return {Client()->width(), Client()->height()};
}

bool NativeWindow::IsShown() const {
    return pendingShown.value_or(!widget->isHidden());
}

void NativeWindow::SetGeometry(const CRect& rect, bool sendSize) {
    const CRect r =
        Fit(CRect(rect.left, rect.top, std::max(rect.left, rect.right), std::max(rect.top, rect.bottom)));
    if (frame && messages::InPaint()) {
        QMetaObject::invokeMethod(
            widget, [this, r] { SetGeometry(r, /*sendSize*/ true); }, Qt::QueuedConnection);
    } else if (frame) {
        frame->PlaceContent(r);
    } else if (messages::InPaint() && r == Geometry()) {
        // Nothing to do afterwards.
    } else if (messages::InPaint()) {
        // The toolkit must not move windows while it paints; the new place already counts, the move follows.
        pendingGeometry = r;
        SchedulePending();
    } else {
        pendingGeometry.reset();
        PlaceWidget(r);
    }
    if (sendSize) {
        SendSizeIfChanged();
    }
}

void NativeWindow::PlaceWidget(const CRect& r) {
    const bool isFixed =
        widget->isWindow() && (windowStyle & WS_CAPTION) == WS_CAPTION && !(windowStyle & WS_THICKFRAME);
    if (isFixed) {
        // Or the desktop offers to stretch it.
        widget->setFixedSize(r.Width(), r.Height());
    }
    widget->setGeometry(r.left, r.top, r.Width(), r.Height());
}

void NativeWindow::SendSizeIfChanged() {
    if (!widget->isVisible() && !pendingGeometry && widget->size() != lastLaidOut) {
        // The toolkit tells hidden windows late; their insides are laid out now.
        QResizeEvent event(widget->size(), lastLaidOut);
        lastLaidOut = widget->size();
        BaseEvent(&event);
    }
    const CSize size = ClientSize();
    if (size == lastSize) {
        return;
    }
    lastSize = size;
    const UINT type = widget->isMinimized()   ? SIZE_MINIMIZED
                      : widget->isMaximized() ? SIZE_MAXIMIZED
                                              : SIZE_RESTORED;
    Send(WM_SIZE, type, MAKELPARAM(size.cx, size.cy));
}

void NativeWindow::SetShown(bool shown, bool mayActivate) {
    // A floating popup never takes the focus, however it is shown.
    const bool activate = mayActivate && widget->windowType() != Qt::ToolTip;
    if (shown == IsShown()) {
        if (shown && activate && frame) {
            frame->RaiseContent(/*activate*/ true);
        } else if (shown && activate && widget->isWindow()) {
            widget->activateWindow();
        }
        return;
    }
    Send(WM_SHOWWINDOW, shown ? 1 : 0, 0);
    if (!shown && wnd) {
        capture::Lose(wnd);
    }
    if (messages::InPaint()) {
        pendingShown = shown;
        SchedulePending();
        return;
    }
    pendingShown.reset();
    if (widget->isWindow()) {
        widget->setAttribute(Qt::WA_ShowWithoutActivating, !activate);
    }
    widget->setVisible(shown);
    if (frame) {
        frame->ContentShown(shown);
    }
    if (shown && activate && IsTopLevel()) {
        Raise(/*activate*/ true);
    }
}

void NativeWindow::Raise(bool activate) {
    if (frame) {
        frame->RaiseContent(activate);
        return;
    }
    widget->raise();
    if (activate) {
        widget->activateWindow();
    }
}

void NativeWindow::SchedulePending() {
    if (!pendingScheduled) {
        pendingScheduled = true;
        QMetaObject::invokeMethod(
            widget, [this] { ApplyPending(); }, Qt::QueuedConnection);
    }
}

void NativeWindow::ApplyPending() {
    pendingScheduled = false;
    if (messages::InPaint()) {
        SchedulePending();
        return;
    }
    if (pendingGeometry) {
        PlaceWidget(*std::exchange(pendingGeometry, std::nullopt));
        SendSizeIfChanged();
    }
    if (pendingShown) {
        const bool shown = *std::exchange(pendingShown, std::nullopt);
        widget->setVisible(shown);
        if (frame) {
            frame->ContentShown(shown);
        }
    }
}

// The window that is being painted now and has to be painted again whenever this one is, because it shows
// through; null for a window that covers what is behind it.
NativeWindow* NativeWindow::RepaintedWith() const {
    if (!messages::InPaint()) {
        return nullptr;
    }
    for (const QWidget* w = widget; !w->isWindow() && !w->testAttribute(Qt::WA_OpaquePaintEvent);) {
        w = w->parentWidget();
        NativeWindow* behind = Of(w);
        if (behind && messages::IsPainting(behind)) {
            return behind;
        }
    }
    return nullptr;
}

// A window that asks for its transparent children while it paints would be painted for them, ask again, and
// so on for ever. It is painted for them once.
bool NativeWindow::MayAskWhilePainting(const QRegion& region) const {
    NativeWindow* behind = RepaintedWith();
    if (behind && !behind->echoing) {
        behind->echoes += region.translated(Client()->mapTo(behind->widget, QPoint()));
    }
    return !behind || !behind->echoing;
}

void NativeWindow::Invalidate(const QRegion& region, bool erase) {
    if (!widget->isVisible() || !MayAskWhilePainting(region)) {
        return;
    }
    updateRegion += region;
    eraseAsked = eraseAsked || erase;
    Client()->update(region);
}
