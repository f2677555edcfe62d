#include "host/stage/windows/ToolWindowDock.h"

#include "framework/Wnd.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLayout>
#include <QMainWindow>
#include <QScreen>
#include <QShowEvent>

namespace stage {

namespace {

CRect ToCRect(const QRect& r) {
    return {r.x(), r.y(), r.x() + r.width(), r.y() + r.height()};
}

bool IsSide(Qt::DockWidgetArea area) {
    return area == Qt::LeftDockWidgetArea || area == Qt::RightDockWidgetArea;
}

bool Contains(const QWidget* outer, const QWidget* inner) {
    return outer != nullptr && inner != nullptr && (outer == inner || outer->isAncestorOf(inner));
}

} // namespace

ToolWindowDock::ToolWindowDock(CWnd& window, const QString& name, QWidget* mainWindow)
    : QDockWidget(mainWindow), content(&window), widget(NativeWidget(window)), wantedSize(widget->size()) {
    setObjectName(name);
    setWindowTitle(widget->windowTitle());
    connect(widget, &QWidget::windowTitleChanged, this, &QWidget::setWindowTitle);
    connect(this, &QDockWidget::topLevelChanged, this, &ToolWindowDock::FloatingChanged);
    connect(this, &QDockWidget::dockLocationChanged, this, &ToolWindowDock::ApplySmallestSize);
    connect(qApp, &QApplication::focusChanged, this, &ToolWindowDock::FocusMoved);
    setWidget(widget);
    widget->hide();
    hide();
    SetWindowFrame(window, this);
    qApp->installEventFilter(this);
}

ToolWindowDock::~ToolWindowDock() {
    qApp->removeEventFilter(this);
    if (content != nullptr) {
        content->DestroyWindow();
    }
    // The base class still moves the keyboard.
    disconnect(qApp, nullptr, this, nullptr);
    disconnect(this, nullptr, this, nullptr);
}

void ToolWindowDock::ContentShown(bool shown) {
    if (shown) {
        ApplySmallestSize();
        if (isFloating() && place.floating.isValid()) {
            // A dock whose content is hidden has no room for more than its title.
            layout()->activate();
            setGeometry(place.floating);
        }
        show();
        emit Shown();
        return;
    }
    const bool hadFocus = Contains(widget, QApplication::focusWidget());
    hide();
    if (hadFocus && focusBefore != nullptr && focusBefore->isVisible()) {
        focusBefore->setFocus(Qt::ActiveWindowFocusReason);
    }
}

void ToolWindowDock::RaiseContent(bool activate) {
    raise();
    if (activate) {
        window()->activateWindow();
        FocusContent();
    }
}

// A docked window has the size that the main window's layout gives it. Its wish counts before it is shown
// and while it floats.
void ToolWindowDock::PlaceContent(const CRect& wanted) {
    wantedSize = QSize(wanted.Width(), wanted.Height());
    if (!isVisible()) {
        widget->resize(wantedSize);
    } else if (isFloating()) {
        const QRect now = ContentRect();
        move(pos() + QPoint(wanted.left, wanted.top) - now.topLeft());
        resize(size() + wantedSize - now.size());
    }
}

void ToolWindowDock::ContentGone() {
    content = nullptr;
    hide();
    emit PlaceChanged();
    deleteLater();
}

// Behind another tab. A main window that is minimised or not shown yet covers nothing.
bool ToolWindowDock::IsCovered() const {
    const auto* main = qobject_cast<const QMainWindow*>(parentWidget());
    return main != nullptr && main->isVisible() && isVisible() && !isFloating() &&
           !main->tabifiedDockWidgets(const_cast<ToolWindowDock*>(this)).isEmpty() &&
           visibleRegion().isEmpty();
}

// A window of its own would take the keyboard when it is clicked, and give it to whoever had it there last.
bool ToolWindowDock::eventFilter(QObject* receiver, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress && receiver->isWidgetType() &&
        Contains(widget, static_cast<QWidget*>(receiver)) && !Contains(widget, QApplication::focusWidget())) {
        FocusContent();
    }
    return false;
}

void ToolWindowDock::FocusContent() {
    QWidget* target = lastFocus != nullptr && lastFocus->isVisible() ? lastFocus.data() : widget.data();
    if (content != nullptr && target != nullptr && !Contains(widget, QApplication::focusWidget())) {
        target->setFocus(Qt::ActiveWindowFocusReason);
    }
}

void ToolWindowDock::FocusMoved(QWidget* old, QWidget* now) {
    if (!Contains(widget, now)) {
        return;
    }
    lastFocus = now;
    if (old != nullptr && !Contains(this, old)) {
        focusBefore = old;
    }
}

bool ToolWindowDock::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride) {
        // Plain keys belong to the window that has the keyboard, not to the main window's commands. Help is
        // for all.
        constexpr Qt::KeyboardModifiers kCommands = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
        const auto* key = static_cast<QKeyEvent*>(event);
        if ((key->modifiers() & kCommands) == Qt::NoModifier && key->key() != Qt::Key_F1) {
            event->accept();
            return true;
        }
    }
    const bool handled = QDockWidget::event(event);
    if (event->type() == QEvent::WindowActivate && isFloating()) {
        FocusContent();
    }
    return handled;
}

void ToolWindowDock::closeEvent(QCloseEvent* event) {
    event->ignore();
    if (content != nullptr) {
        content->SendMessage(WM_CLOSE);
    }
    // The window may have stayed; the menu's check mark is already off.
    toggleViewAction()->setChecked(!isHidden());
}

void ToolWindowDock::showEvent(QShowEvent* event) {
    QDockWidget::showEvent(event);
    // By the menu; the window itself comes first otherwise.
    if (content != nullptr && isPlaced && widget->isHidden()) {
        content->ShowWindow(SW_SHOW);
    }
}

void ToolWindowDock::resizeEvent(QResizeEvent* event) {
    QDockWidget::resizeEvent(event);
    const QRect before = lastContentRect;
    const bool byUser = event->spontaneous() || (QApplication::mouseButtons() & Qt::LeftButton) != 0;
    if (isFloating() && isVisible() && byUser && before.isValid()) {
        AskForSize(before);
    }
    lastSize = size();
    NotePlace();
}

void ToolWindowDock::moveEvent(QMoveEvent* event) {
    QDockWidget::moveEvent(event);
    if (size() == lastSize) {
        NotePlace();
    } // else resizeEvent follows, which needs the rect before both
}

QRect ToolWindowDock::ContentRect() const {
    return widget != nullptr ? QRect(widget->mapToGlobal(QPoint()), widget->size()) : QRect();
}

void ToolWindowDock::AskForSize(const QRect& before) {
    const QRect now = ContentRect();
    if (content == nullptr || now.size() == before.size()) {
        return;
    }
    const CRect wanted = AskSizing(*content, ToCRect(before), ToCRect(now));
    if (wanted != ToCRect(now)) {
        const QSize growth = QSize(wanted.Width(), wanted.Height()) - now.size();
        setGeometry(QRect(pos() + QPoint(wanted.left, wanted.top) - now.topLeft(), size() + growth));
    }
}

// Asks the window as a drag to nothing would, so that the frame stops there by itself.
void ToolWindowDock::ApplySmallestSize() {
    if (content == nullptr) {
        return;
    }
    const CRect now = ToCRect(ContentRect());
    const CRect smallest = AskSizing(*content, now, {now.left, now.top, now.left + 1, now.top + 1});
    // Above or below the views the user may take all of its height away. In a column at a side its
    // neighbours would do that, and views and column would leave it no width.
    constexpr int kColumnHeight = 240; // pixels: a toolbar, the ruler and some rows
    const auto* main = qobject_cast<QMainWindow*>(parentWidget());
    const int height = isFloating()                                            ? smallest.Height()
                       : main != nullptr && IsSide(main->dockWidgetArea(this)) ? kColumnHeight
                                                                               : 0;
    widget->setMinimumSize(std::max(1, smallest.Width()), height);
}

void ToolWindowDock::FloatingChanged(bool floating) {
    if (!isPlaced) {
        return;
    }
    ApplySmallestSize();
    const bool dragged = (QApplication::mouseButtons() & Qt::LeftButton) != 0;
    if (floating && !dragged && !place.floating.isValid()) {
        QRect first(QPoint(), wantedSize);
        first.moveCenter(parentWidget()->geometry().center());
        setGeometry(first);
    }
    NotePlace();
}

void ToolWindowDock::NotePlace() {
    lastContentRect = ContentRect();
    if (!isVisible() || !isPlaced || content == nullptr || widget->isHidden()) {
        return; // what the user sees is not a place of the window
    }
    place.isFloating = isFloating();
    if (isFloating()) {
        place.floating = geometry();
        return;
    }
    const auto* main = qobject_cast<QMainWindow*>(parentWidget());
    place.area = main != nullptr ? main->dockWidgetArea(this) : place.area;
    place.extent = IsSide(place.area) ? width() : height();
}

// Tab goes round inside the window, as it would with a frame of its own.
bool ToolWindowDock::focusNextPrevChild(bool next) {
    QWidget* from = QApplication::focusWidget();
    if (!Contains(widget, from)) {
        return QDockWidget::focusNextPrevChild(next);
    }
    const auto step = [next](QWidget* w) { return next ? w->nextInFocusChain() : w->previousInFocusChain(); };
    for (QWidget* to = step(from); to != from && to != nullptr; to = step(to)) {
        if (Contains(widget, to) && (to->focusPolicy() & Qt::TabFocus) == Qt::TabFocus && to->isVisible() &&
            to->isEnabled() && to->focusProxy() == nullptr) {
            to->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
            return true;
        }
    }
    return true;
}

} // namespace stage
