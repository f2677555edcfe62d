#include "keys/views/TrackKey.h"
#include "plugin/contract/EventCodes.h"
#include "timeline/rows/TimelineContext.h"
#include "timeline/rows/TrackCtrl.h"

#include <utility>

namespace {

bool IsCtrlDown() {
    constexpr int kHighByte = 0xFF00;
    return (GetKeyState(VK_CONTROL) & kHighByte) != 0;
}

} // namespace

void CTrackCtrl::OnLButtonDown(UINT flags, int x, int y) {
    TimelineContext* timeline = TimelineOf(this);
    if (timeline == nullptr) {
        return;
    }
    LoseGesture(*timeline); // one whose release never came
    Hold(FindGrippedKey(x));
    if (dragKey == nullptr) {
        Hold(CurrentKey() = GetKeyAt({x, y}));
    }
    if (dragKey != nullptr) {
        PressKey(*timeline, {x, y}, flags);
    } else {
        PressEmpty(*timeline, x);
    }
}

/// The current key if x is on one of its grips. Required: it may be a key of any row, and the height plays no
/// part.
CTrackKey* CTrackCtrl::FindGrippedKey(int x) const {
    CTrackKey* key = CurrentKey();
    // A removed key may live on as the current one; it is in no row, so nobody sees its grips.
    if (key == nullptr || !key->IsInRow() || viewEnd == viewStart || ClientRect().IsRectEmpty()) {
        return nullptr;
    }
    return key->HitGrip(x, KeyX(key->time, pixelsPerSecond), pixelsPerSecond) ? key : nullptr;
}

void CTrackCtrl::PressKey(TimelineContext& timeline, CPoint point, UINT flags) {
    CTrackKey* key = dragKey;
    if (timeline.keyDescrWnd != nullptr) {
        timeline.ShowKeyDescription(nullptr); // what it tells changes with the drag
    }
    const std::size_t selectedBefore = timeline.selectedKeys.size();
    const bool wasSelected = key->selected;
    const Watch watched(this);
    const Watch watchedKey(key);
    timeline.SelectOnly(key); // writes the attributes window's key, which may rebuild the rows
    if (!watched.IsAlive() || !watchedKey.IsAlive() || dragKey != key) {
        return;
    }
    SetCapture();
    lastPoint = point;

    const CRect client = ClientRect();
    const auto scale = static_cast<float>((client.right - client.left - GetLeftWidth()) /
                                          (static_cast<double>(viewEnd) - viewStart));
    key->OnLButtonDown(KeyX(key->time, scale), GetKeyTop(key, client), scale, point,
                       static_cast<float>(TimeFromPoint(&point)));
    // Required: Shift counts at the press alone.
    if ((flags & MK_SHIFT) != 0) {
        cloneDrag.Begin(timeline.GetCopied(), *key, *this);
        LetGo();
    } else {
        KeyDrag::Begin();
    }
    if (selectedBefore > 1 || (selectedBefore == 1 && !wasSelected)) {
        timeline.ArrangeRows(/*invalidate*/ true, /*move*/ false); // another row lost its selection
    } else {
        Invalidate(FALSE);
    }
}

void CTrackCtrl::PressEmpty(TimelineContext& timeline, int x) {
    timeline.activeKey = nullptr;
    if (ClientRect().IsRectEmpty()) {
        return;
    }
    // Whoever hears of the selection, or is asked about the key on show, may make the rows anew or end the
    // control.
    const Watch watched(this);
    HWND control = GetParent()->GetSafeHwnd();
    FilmSession& session = timeline.session;
    if (x < GetLeftWidth()) {
        if (EditorObject* object = FindObject()) {
            PressObject(session, *object);
            if (!IsWindow(control)) {
                return;
            }
            timeline.InvalidateControl(/*erase*/ true);
        }
        if (watched.IsAlive() && AsCameraTrack(track) != nullptr) {
            PressCamera(session);
            timeline.InvalidateControl(/*erase*/ true);
        }
    } else if (!timeline.selectedKeys.empty()) {
        timeline.ClearSelection();
        if (IKeyAttributesDlg* dialog = session.keyAttributesDlg.get()) {
            dialog->SetKey(nullptr, /*refresh*/ false);
        }
        if (IsWindow(control)) {
            timeline.ArrangeRows(/*invalidate*/ true, /*move*/ false);
        }
    }
}

/// A press on the name selects the object in the level, with Ctrl it takes it into the selection or out of
/// it. The host answers with events that may rebuild the rows.
void CTrackCtrl::PressObject(const FilmSession& session, EditorObject& object) {
    if (session.editor == nullptr) {
        return;
    }
    const EditorObjectInfo* info = object.GetInfo();
    if (!IsCtrlDown()) {
        session.editor->SelectObject(&object, 1, 0);
    } else if (info != nullptr && info->IsSelected()) {
        session.editor->DeselectObject(&object, 0, 0);
    } else {
        session.editor->AddToSelection(&object, 1, 0);
    }
    session.editor->BroadcastEvent(EventCode::SelectionChanged, session.pluginId, nullptr);
    session.editor->RedrawViews();
}

void CTrackCtrl::PressCamera(FilmSession& session) const {
    const bool visualized = session.GetVisualizedTrack() == track;
    session.SetVisualizedTrack(visualized ? nullptr : track);
    if (session.editor != nullptr) {
        session.editor->RedrawViews();
    }
}

void CTrackCtrl::OnMouseMove(UINT flags, int x, int y) {
    TimelineContext* timeline = TimelineOf(this);
    if (timeline == nullptr) {
        return;
    }
    const CPoint point(x, y);
    const auto time =
        static_cast<float>(timeline->session.SnapToFrame(static_cast<float>(TimeFromPoint(&point))));
    const float oldTime = std::exchange(timeline->mouseTime, time);
    timeline->InvalidateInfo();
    if (dragKey != nullptr) {
        KeyDrag::Update(flags, time, *this);
        lastPoint = point;
        Invalidate(FALSE);
    } else if (CloneDrag::Update(timeline->GetCopied(), oldTime, time)) {
        Invalidate(FALSE);
    } else if (timeline->keyDescrWnd != nullptr) {
        timeline->ShowKeyDescription(GetKeyAt(point));
    }
}

void CTrackCtrl::OnLButtonDblClk(UINT /*flags*/, int x, int y) {
    CTrackKey* key = TimelineOf(this) != nullptr ? GetKeyAt({x, y}) : nullptr;
    if (key != nullptr) {
        key->OnDoubleClick();
    }
}

void CTrackCtrl::OnRButtonDown(UINT /*flags*/, int x, int y) {
    if (TimelineContext* timeline = TimelineOf(this)) {
        CPoint screen(x, y);
        ClientToScreen(&screen);
        timeline->ShowContextMenu(screen.x, screen.y, this, GetKeyAt({x, y}));
    }
}

/// Home and End take the cursor to the start and the end of the key under the mouse.
void CTrackCtrl::OnKeyDown(UINT key, UINT repeat, UINT flags) {
    if (key != VK_HOME && key != VK_END) {
        CGridCtrl::OnKeyDown(key, repeat, flags);
        return;
    }
    CPoint mouse;
    GetCursorPos(&mouse);
    ScreenToClient(&mouse);
    TimelineContext* timeline = TimelineOf(this);
    const CTrackKey* under = timeline != nullptr ? GetKeyAt(mouse) : nullptr;
    if (under != nullptr) {
        timeline->SetCurrentFrame(key == VK_HOME ? under->time : under->time + under->GetDuration(),
                                  /*redraw*/ true);
    }
}
