#include "host/stage/windows/films/TimelineHand.h"

#include "framework/Dialog.h"
#include "framework/Menu.h"
#include "framework/QtBridge.h"
#include "framework/TestHooks.h"
#include "host/engine/DescribedKey.h"
#include "host/stage/windows/films/FilmsIds.h"
#include "host/stage/windows/ToolWindows.h"

#include <algorithm>
#include <QApplication>
#include <QEvent>
#include <QWidget>

namespace stage {

namespace {

LPARAM PointOf(CPoint place) {
    return MAKELPARAM(place.x, place.y);
}

QRect ScreenRect(const CWnd& window) {
    CRect rect;
    window.GetWindowRect(&rect);
    return {rect.left, rect.top, rect.Width(), rect.Height()};
}

/// Keeps the dialog that is answered for the user off the screen.
class OffScreen : public QObject {
public:
    OffScreen() { qApp->installEventFilter(this); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Polish && watched->isWidgetType()) {
            auto* widget = static_cast<QWidget*>(watched);
            if (widget->isWindow() && widget->windowType() == Qt::Dialog) {
                widget->setAttribute(Qt::WA_DontShowOnScreen);
            }
        }
        return false;
    }
};

} // namespace

CWnd* TimelineHand::Window() const {
    for (const ToolWindowDock* dock : windows.Docks()) {
        if (dock->Window()->GetDlgItem(films_id::kTimeline) != nullptr) {
            return dock->Window();
        }
    }
    return nullptr;
}

CWnd* TimelineHand::Timeline() const {
    const CWnd* window = Window();
    return window != nullptr ? window->GetDlgItem(films_id::kTimeline) : nullptr;
}

bool TimelineHand::Holds(const QObject* widget) const {
    const CWnd* window = Window();
    const QWidget* native = window != nullptr ? NativeWidget(*window) : nullptr;
    for (; native != nullptr && widget != nullptr; widget = widget->parent()) {
        if (widget == native) {
            return true;
        }
    }
    return false;
}

std::vector<CWnd*> TimelineHand::Rows() const {
    std::vector<CWnd*> rows;
    const CWnd* timeline = Timeline();
    for (int i = 0; CWnd* child = timeline != nullptr ? timeline->GetWindowChild(i) : nullptr; ++i) {
        if (child->GetDlgCtrlID() == films_id::kRow && child->IsWindowVisible()) {
            rows.push_back(child);
        }
    }
    std::ranges::sort(rows, {}, [](const CWnd* row) { return ScreenRect(*row).top(); });
    return rows;
}

CWnd* TimelineHand::RowAt(const QPoint& screen) const {
    const CWnd* timeline = Timeline();
    if (timeline == nullptr || !ScreenRect(*timeline).contains(screen)) {
        return nullptr;
    }
    const std::vector<CWnd*> rows = Rows();
    const auto found =
        std::ranges::find_if(rows, [&](const CWnd* row) { return ScreenRect(*row).contains(screen); });
    return found != rows.end() ? *found : nullptr;
}

CWnd* TimelineHand::Ruler() const {
    const CWnd* timeline = Timeline();
    for (int i = 0; CWnd* child = timeline != nullptr ? timeline->GetWindowChild(i) : nullptr; ++i) {
        const QRect rect = ScreenRect(*child);
        if (child->GetDlgCtrlID() == films_id::kRuler && rect.width() > rect.height()) {
            return child;
        }
    }
    return nullptr;
}

CWnd* TimelineHand::TimeBar() const {
    const CWnd* timeline = Timeline();
    return timeline != nullptr ? timeline->GetDlgItem(films_id::kTimeBar) : nullptr;
}

void TimelineHand::PressButton(unsigned id) const {
    if (CWnd* window = Window()) {
        window->SendMessage(WM_COMMAND, MAKEWPARAM(id, 0));
    }
}

bool TimelineHand::ChooseAt(CWnd& row, CPoint place, unsigned id) const {
    bool isOffered = false;
    {
        const HookScope hooks;
        Hooks().popupMenu = [&](const CMenu& menu, CPoint) {
            constexpr UINT kAbsent = 0xFFFFFFFF;
            const UINT state = menu.GetMenuState(id, MF_BYCOMMAND);
            isOffered = state != kAbsent && (state & (MF_GRAYED | MF_DISABLED)) == 0;
            return 0U;
        };
        row.SendMessage(WM_RBUTTONDOWN, 0, PointOf(place));
    }
    CWnd* timeline = Timeline();
    if (!isOffered || timeline == nullptr) {
        return false;
    }
    timeline->SendMessage(WM_COMMAND, MAKEWPARAM(id, 0));
    return true;
}

void TimelineHand::AnswerDialog(unsigned id, const std::function<bool(CDialog&)>& fill) const {
    CWnd* timeline = Timeline();
    if (timeline == nullptr) {
        return;
    }
    const OffScreen hidden;
    const HookScope hooks;
    Hooks().modalDialog = [&fill](CDialog& dialog) {
        if (fill(dialog)) {
            dialog.SendMessage(WM_COMMAND, MAKEWPARAM(IDOK, 0));
        }
        return IDCANCEL; // counts only if the dialog is not over yet
    };
    timeline->SendMessage(WM_COMMAND, MAKEWPARAM(id, 0));
}

const IFilmKey* TimelineHand::KeyAt(CWnd& row, CPoint place) const {
    CWnd* timeline = Timeline();
    if (timeline == nullptr) {
        return nullptr;
    }
    // The mouse comes from the background, so that the key below it is described anew.
    timeline->SendMessage(WM_MOUSEMOVE, 0, 0);
    engine::TakeDescribedKey();
    row.SendMessage(WM_MOUSEMOVE, 0, PointOf(place));
    return engine::TakeDescribedKey();
}

void TimelineHand::Click(CWnd& target, CPoint place) {
    const HWND handle = target.GetSafeHwnd();
    target.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, PointOf(place));
    if (CWnd* alive = CWnd::FromHandle(handle)) {
        alive->SendMessage(WM_LBUTTONUP, 0, PointOf(place));
    }
}

} // namespace stage
