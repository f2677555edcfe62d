// Mouse and keyboard in the rows, the ruler and the scroll bars.
#include "framework/QtBridge.h"
#include "keys/views/TrackKey.h"
#include "tests/editing/World.h"

#include <algorithm>
#include <cmath>
#include <QCoreApplication>
#include <QEvent>
#include <QWidget>

namespace editing {

namespace {

constexpr int kFarPixel = 30000; ///< what a message's coordinates hold
constexpr int kRowMiddle = 10;

/// Every other step holds no key.
int Modifiers(int number) {
    return number / 8 % 2 == 0 ? number % 8 : 0;
}

int Pixel(double value) {
    return std::isfinite(value) ? static_cast<int>(std::clamp(value, -1.0 * kFarPixel, 1.0 * kFarPixel)) : 0;
}

CRect ClientOf(const CWnd& window) {
    CRect client;
    window.GetClientRect(&client);
    return client;
}

int XOf(const CTrackCtrl& row, float time) {
    const double width = ClientOf(row).right - row.GetLeftWidth();
    return Pixel((static_cast<double>(time) - row.viewStart) * width /
                     (static_cast<double>(row.viewEnd) - row.viewStart) +
                 row.GetLeftWidth());
}

} // namespace

void World::HoldKeys(int modifiers) {
    heldKeys = modifiers;
}

/// A mouse message goes to the window that holds the capture, as the framework does it.
void World::Send(CWnd* target, UINT message, UINT flags, CPoint point) {
    if (target == nullptr || target->GetSafeHwnd() == nullptr) {
        return;
    }
    mouse = point;
    target->ClientToScreen(&mouse);
    CWnd* holder = CWnd::GetCapture();
    if (holder != nullptr && holder != target && holder->GetSafeHwnd() != nullptr) {
        point = mouse;
        holder->ScreenToClient(&point);
        target = holder;
    }
    flags |= (heldKeys & Held::kShift) != 0 ? MK_SHIFT : 0;
    flags |= (heldKeys & Held::kCtrl) != 0 ? MK_CONTROL : 0;
    target->SendMessage(
        message, flags,
        MAKELPARAM(std::clamp(point.x, -kFarPixel, kFarPixel), std::clamp(point.y, -kFarPixel, kFarPixel)));
}

void World::PressKey(const Step& step) {
    ActivateTimeline();
    const auto [row, key] = KeyOf(step.numbers[0]);
    if (row == nullptr) {
        return;
    }
    const int start = XOf(*row, key->time);
    const int end = XOf(*row, key->time + key->GetDuration());
    const int grip = 3 + key->rectHeight / 2;
    const int places[] = {(start + end) / 2, (start + end) / 2, start - grip, end + grip, start};
    HoldKeys(Modifiers(step.numbers[2]));
    pressedWindow = row;
    Send(row, WM_LBUTTONDOWN, MK_LBUTTON, {places[step.numbers[1] % 5], kRowMiddle});
}

void World::PressEmpty(const Step& step) {
    ActivateTimeline();
    CTrackCtrl* row = RowOf(step.numbers[0]);
    if (row == nullptr) {
        return;
    }
    HoldKeys(Modifiers(step.numbers[2]));
    const int width = std::max(static_cast<int>(ClientOf(*row).right) - row->GetLeftWidth(), 1);
    pressedWindow = row;
    Send(row, WM_LBUTTONDOWN, MK_LBUTTON,
         {row->GetLeftWidth() + step.numbers[1] % width, step.numbers[2] % 2});
}

void World::PressName(const Step& step) {
    ActivateTimeline();
    if (CTrackCtrl* row = RowOf(step.numbers[0])) {
        HoldKeys(Modifiers(step.numbers[2]));
        pressedWindow = row;
        Send(row, WM_LBUTTONDOWN, MK_LBUTTON, {2 + step.numbers[1] % 100, 1});
    }
}

void World::PressRuler(const Step& step) {
    ActivateTimeline();
    CMarkedGridCtrl* ruler = Control() != nullptr ? Control()->grid : nullptr;
    if (ruler == nullptr) {
        return;
    }
    HoldKeys(step.numbers[2] % 2 == 0 ? Held::kShift : Modifiers(step.numbers[2]));
    const int width = std::max(static_cast<int>(ClientOf(*ruler).right), 1);
    int x = step.numbers[0] % width;
    if (!ruler->marks.empty() && step.numbers[1] % 2 == 0) { // on a mark
        const auto place =
            static_cast<std::ptrdiff_t>(static_cast<std::size_t>(step.numbers[0]) % ruler->marks.size());
        const CMark* mark = *std::next(ruler->marks.begin(), place);
        x = Pixel((static_cast<double>(mark->time) - ruler->viewStart) * width /
                  (static_cast<double>(ruler->viewEnd) - ruler->viewStart));
    }
    pressedWindow = ruler;
    Send(ruler, WM_LBUTTONDOWN, MK_LBUTTON, {x, kRowMiddle});
}

void World::PressBar(const Step& step) {
    ActivateTimeline();
    CFilmsMainCtrl* control = Control();
    if (control == nullptr) {
        return;
    }
    CTimeScrollbar* bar = step.numbers[0] % 2 == 0 ? control->hScroll : control->vScroll;
    const CRect client = ClientOf(*bar);
    const CRect& thumb = bar->thumbRect;
    const CPoint places[] = {{(thumb.left + thumb.right) / 2, (thumb.top + thumb.bottom) / 2},
                             {step.numbers[1] % std::max(static_cast<int>(client.right), 1),
                              step.numbers[1] % std::max(static_cast<int>(client.bottom), 1)}};
    HoldKeys(0);
    pressedWindow = bar;
    Send(bar, WM_LBUTTONDOWN, MK_LBUTTON, places[step.numbers[2] % 2]);
}

/// The window of the press, if it is still there, moved by some pixels from where the mouse is.
CWnd* World::PressedWindow() const {
    const CFilmsMainCtrl* control = Control();
    if (control == nullptr) {
        return nullptr;
    }
    for (CWnd* fixed : {static_cast<CWnd*>(control->grid), static_cast<CWnd*>(control->hScroll),
                        static_cast<CWnd*>(control->vScroll)}) {
        if (fixed == pressedWindow) {
            return fixed;
        }
    }
    const auto row = std::ranges::find(control->tracks, pressedWindow);
    return row != control->tracks.end() ? *row : RowOf(0);
}

void World::Drag(const Step& step) {
    CWnd* target = PressedWindow();
    if (target == nullptr) {
        return;
    }
    const auto* row = dynamic_cast<const CTrackCtrl*>(target);
    const CTrackKey* key = row != nullptr ? row->dragKey : nullptr;
    if (row == nullptr) { // a ruler's drag may play on, and what happens inside is told on its own
        tally.mostAdded += Operation::kAny;
    }
    draggedInAxis = depth == 1 && key != nullptr && key->GetDuration() == 0.0f &&
                    key->time >= row->rangeStart && key->time <= row->rangeEnd;
    HoldKeys(Modifiers(step.numbers[2]) | (step.numbers[2] % 5 == 0 ? Held::kAlt : 0));
    const int range = step.numbers[1] % 8 == 0 ? kFarPixel : 120;
    CPoint point = mouse;
    target->ScreenToClient(&point);
    point.x =
        std::clamp(static_cast<int>(point.x) + step.numbers[0] % (2 * range) - range, -kFarPixel, kFarPixel);
    Send(target, WM_MOUSEMOVE, step.numbers[1] % 16 == 1 ? 0 : MK_LBUTTON, point);
    if (range == kFarPixel) { // back into the window, from where the next step goes
        mouse.x = 200 + step.numbers[0] % 600;
    }
}

void World::Release(const Step& step) {
    CWnd* target = PressedWindow();
    if (target == nullptr) {
        return;
    }
    CPoint point = mouse;
    target->ScreenToClient(&point);
    if (step.numbers[0] % 10 == 0) {
        point.x = step.numbers[1] % 2 == 0 ? -500 : 5000;
    }
    Send(target, WM_LBUTTONUP, 0, point);
    if (CWnd::GetCapture() != nullptr) {
        ReleaseCapture(); // no button is down any more
    }
}

void World::LoseCapture(const Step& step) {
    switch (step.numbers[0] % 3) {
    case 0:
        if (CFilmsMainCtrl* control = Control()) {
            control->infoWnd->SetCapture();
            ReleaseCapture();
        }
        break;
    case 1:
        if (CWnd* holder = CWnd::GetCapture()) {
            holder->SendMessage(WM_CANCELMODE);
        }
        break;
    default:
        if (Control() != nullptr) {
            QEvent deactivated(QEvent::WindowDeactivate);
            QCoreApplication::sendEvent(NativeWidget(*window), &deactivated);
        }
        break;
    }
}

void World::DoubleClick(const Step& step) {
    ActivateTimeline();
    const auto [row, key] = KeyOf(step.numbers[0]);
    if (row != nullptr) {
        HoldKeys(0);
        pressedWindow = row;
        Send(row, WM_LBUTTONDBLCLK, MK_LBUTTON,
             {XOf(*row, key->time + key->GetDuration() / 2.0f), kRowMiddle});
    }
}

void World::Hover(const Step& step) {
    const auto [keyRow, key] = KeyOf(step.numbers[0]);
    HoldKeys(0);
    if (keyRow != nullptr && step.numbers[1] % 2 == 0) {
        Send(keyRow, WM_MOUSEMOVE, 0, {XOf(*keyRow, key->time), kRowMiddle});
    } else if (CTrackCtrl* row = RowOf(step.numbers[0])) {
        Send(row, WM_MOUSEMOVE, 0, {step.numbers[1] % 1000, kRowMiddle});
    }
}

void World::Timer(const Step& step) {
    if (CFilmsMainCtrl* control = Control()) {
        control->SendMessage(WM_TIMER, static_cast<WPARAM>(step.numbers[0] % 2));
    }
}

void World::KeyPress(const Step& step) {
    static constexpr int keys[] = {VK_F2, VK_F2, VK_HOME, VK_END, VK_LMENU, VK_DELETE, VK_LEFT};
    CTrackCtrl* row = RowOf(step.numbers[1]);
    CWnd* target = step.numbers[2] % 2 == 0 || row == nullptr ? static_cast<CWnd*>(Control()) : row;
    if (target != nullptr) {
        target->SendMessage(WM_KEYDOWN, static_cast<WPARAM>(keys[step.numbers[0] % 7]), 1);
    }
}

void World::Wheel(const Step& step) {
    if (Control() != nullptr) {
        const int delta = step.numbers[0] % 2 == 0 ? WHEEL_DELTA : -WHEEL_DELTA;
        window->SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<UINT>(delta)), 0);
    }
}

} // namespace editing
