#include "timeline/KeyHover.h"

#include "keys/views/TrackKey.h"
#include "plugin/session/FilmSession.h"
#include "timeline/FilmsKeyDescrWnd.h"
#include "timeline/rows/TimelineContext.h"

#include <array>
#include <cmath>
#include <cstdio>

namespace {

constexpr UINT_PTR kShowTimer = 0;
constexpr UINT_PTR kHideTimer = 1;
constexpr UINT kShowDelayMs = 500;
constexpr UINT kHideDelayMs = 3000;
constexpr int kPopupOffset = 20; // pixels right of and below the cursor
/// Room for a record's own text and what is added to it.
constexpr std::size_t kDescriptionBytes = 2048;

bool IsShown(const CWnd* window) {
    return window != nullptr && window->IsWindowVisible();
}

/// What a position key of an actor adds: how far the actor is from it now, and how fast it must go.
std::string DistanceText(float now, CFilmTrack* track, const CFilmVectorKey& key) {
    const Vector3 place = track->GetPositionAt(now);
    const double x = static_cast<double>(key.value.x) - place.x;
    const double y = static_cast<double>(key.value.y) - place.y;
    const double z = static_cast<double>(key.value.z) - place.z;
    const double distance = std::sqrt(x * x + y * y + z * z);
    const double time = std::abs(static_cast<double>(key.time) - now);
    std::array<char, 128> text{};
    std::snprintf(text.data(), text.size(), "Distance: %4.3f\nSpeed: %4.3f\n", distance,
                  time > 0.0 ? distance / time : 0.0);
    return text.data();
}

} // namespace

void KeyHover::Show(CTrackKey* key) {
    if (timeline.keyDescrWnd == nullptr) {
        return;
    }
    if (key == timeline.hoverKey) {
        if (IsShown(timeline.keyDescrWnd)) {
            timeline.keyDescrWnd->ShowWindow(SW_SHOWNOACTIVATE);
        }
        window.SetTimer(kHideTimer, kHideDelayMs);
    } else if (key == nullptr) {
        timeline.keyDescrWnd->ShowWindow(SW_HIDE);
        window.KillTimer(kHideTimer);
        timeline.hoverKey = nullptr; // required: a delay that runs goes on, and finds no key
    } else {
        if (key->record != nullptr) {
            DescribeKey(*key->record);
        }
        timeline.hoverKey = key;
    }
    if (timeline.hoverKey != nullptr) {
        MovePopupToCursor(/*onTop*/ false);
    }
}

void KeyHover::DescribeKey(const IFilmKey& record) const {
    std::array<char, kDescriptionBytes> text{};
    record.Describe(text.data(), timeline.session.framesPerSecond);
    auto* popup = static_cast<CFilmsKeyDescrWnd*>(timeline.keyDescrWnd);
    popup->text = text.data();
    if (record.kind == KeyKind::Position && AsObjectTrack(record.track) != nullptr) {
        popup->text += DistanceText(timeline.session.currentTime, record.track,
                                    static_cast<const CFilmVectorKey&>(record));
    }
    if (IsShown(popup)) {
        popup->Invalidate(FALSE);
        window.SetTimer(kHideTimer, kHideDelayMs);
    } else {
        window.SetTimer(kShowTimer, kShowDelayMs);
    }
}

void KeyHover::MovePopupToCursor(bool onTop) const {
    CPoint cursor;
    if (GetCursorPos(&cursor)) {
        timeline.keyDescrWnd->SetWindowPos(nullptr, cursor.x + kPopupOffset, cursor.y + kPopupOffset, 0, 0,
                                           SWP_NOSIZE | SWP_NOACTIVATE | (onTop ? 0U : SWP_NOZORDER));
    }
}

void KeyHover::OnTimer(UINT_PTR id) {
    if (id == kShowTimer && timeline.keyDescrWnd != nullptr && timeline.hoverKey != nullptr) {
        MovePopupToCursor(/*onTop*/ true);
        if (!IsShown(timeline.keyDescrWnd)) {
            timeline.keyDescrWnd->ShowWindow(SW_SHOWNOACTIVATE);
        }
        window.SetTimer(kHideTimer, kHideDelayMs);
        TakeFocus();
    } else if (id == kHideTimer && IsShown(timeline.keyDescrWnd)) {
        timeline.keyDescrWnd->ShowWindow(SW_HIDE);
    }
    window.KillTimer(id);
}

/// Home and End then reach the key that is described. Only while the keyboard is with the scenario window: an
/// editor elsewhere keeps its caret.
void KeyHover::TakeFocus() const {
    const CWnd* scenario = window.GetParent();
    const CWnd* focus = CWnd::GetFocus();
    const bool inside =
        focus != nullptr && (focus == scenario || (scenario != nullptr && scenario->IsChild(focus)));
    if (inside || (scenario != nullptr && CWnd::GetActiveWindow() == scenario)) {
        window.SetFocus();
    }
}

void KeyHover::Stop() {
    timeline.hoverKey = nullptr;
    if (timeline.keyDescrWnd != nullptr) {
        timeline.keyDescrWnd->ShowWindow(SW_HIDE);
    }
    window.KillTimer(kShowTimer);
    window.KillTimer(kHideTimer);
}
