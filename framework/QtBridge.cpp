#include "framework/QtBridge.h"

#include "framework/FormView.h"
#include "framework/Menu.h"
#include "framework/private/NativeWindow.h"
#include "framework/private/ToolWindows.h"

#include <QAction>
#include <QMenu>

#include <memory>
#include <utility>

namespace {

ToolWindowSink toolWindowSink;

} // namespace

void tool_windows::Offer(CDialog& dialog) {
    if (toolWindowSink) {
        toolWindowSink(dialog);
    }
}

QWidget* NativeWidget(const CWnd& window) {
    return window.GetSafeHwnd() ? window.GetSafeHwnd()->widget : nullptr;
}

void SetWindowFrame(CWnd& window, IWindowFrame* frame) {
    if (NativeWindow* native = window.GetSafeHwnd()) {
        native->frame = frame;
    }
}

CRect AskSizing(CWnd& window, const CRect& before, const CRect& now) {
    const auto toRect = [](const CRect& r) { return QRect(r.left, r.top, r.Width(), r.Height()); };
    NativeWindow* native = window.GetSafeHwnd();
    return native ? native->AskSizing(toRect(before), toRect(now)) : now;
}

void SetToolWindowSink(ToolWindowSink sink) {
    toolWindowSink = std::move(sink);
}

namespace {

// A widget that belongs to the host: it sends no messages of its own.
class ForeignWindow : public NativeWindow {
public:
    explicit ForeignWindow(QWidget* w) : NativeWindow(w) {
        gone = QObject::connect(w, &QObject::destroyed, w, [this] { delete this; });
    }
    ~ForeignWindow() override { QObject::disconnect(gone); }

    bool BaseEvent(QEvent* /*event*/) override { return false; }
    QString Text() const override { return widget->windowTitle(); }
    void DeleteLater() override { delete this; }
    void DeleteNow() override { delete this; }

private:
    QMetaObject::Connection gone;
};

} // namespace

CWnd* WrapWidget(QWidget* widget) {
    if (!widget) {
        return nullptr;
    }
    NativeWindow* native = NativeWindow::Of(widget);
    if (!native) {
        const bool quits = widget->testAttribute(Qt::WA_QuitOnClose);
        native = new ForeignWindow(widget);
        widget->setAttribute(Qt::WA_QuitOnClose, quits);
        native->Attach(new CWnd);
        native->ownsWnd = true;
    }
    return native->wnd;
}

void AppendToQMenu(const CMenu& menu, QMenu* target, const CommandSink& onCommand) {
    for (UINT i = 0; i < menu.GetMenuItemCount(); ++i) {
        const MenuItem& item = menu.Items()[i];
        if (item.flags & MF_SEPARATOR) {
            target->addSeparator();
            continue;
        }
        const QString text = QString::fromStdString(item.text);
        QAction* action = nullptr;
        if (item.popup) {
            QMenu* sub = target->addMenu(text);
            AppendToQMenu(*menu.GetSubMenu(static_cast<int>(i)), sub, onCommand);
            action = sub->menuAction();
        } else {
            action = target->addAction(text);
            QObject::connect(action, &QAction::triggered, target,
                             [onCommand, id = item.id] { onCommand(id); });
        }
        action->setEnabled(!(item.flags & (MF_GRAYED | MF_DISABLED)));
        action->setCheckable((item.flags & MF_CHECKED) != 0);
        action->setChecked((item.flags & MF_CHECKED) != 0);
    }
}

QMenu* BuildQMenu(const CMenu& menu, QWidget* parent, const CommandSink& onCommand) {
    auto* built = new QMenu(parent);
    AppendToQMenu(menu, built, onCommand);
    return built;
}

CWnd* CreateFormView(const CRuntimeClass* viewClass, QWidget* parent, UINT id) {
    CWnd* around = WrapWidget(parent);
    if (!around || !viewClass || !viewClass->IsDerivedFrom(RUNTIME_CLASS(CView))) {
        return nullptr;
    }
    std::unique_ptr<CWnd> view(static_cast<CWnd*>(viewClass->CreateObject()));
    if (!view || !view->Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(), around, id)) {
        return nullptr;
    }
    view->SendMessage(WM_INITIALUPDATE);
    return view.release();
}
