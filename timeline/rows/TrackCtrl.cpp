#include "timeline/rows/TrackCtrl.h"

#include "keys/rules/Pixels.h"
#include "keys/views/TimedTrackKey.h"
#include "timeline/rows/TimelineContext.h"

#include <algorithm>

BEGIN_MESSAGE_MAP(CTrackCtrl, CGridCtrl)
ON_WM_PAINT()
ON_WM_KEYDOWN()
ON_WM_CAPTURECHANGED()
END_MESSAGE_MAP()

TimelineContext* TimelineOf(const CTrackCtrl* row) {
    return row != nullptr ? row->timelineLink.Of(*row) : nullptr;
}

CTrackCtrl::CTrackCtrl() {
    // Required: any new row ends the editing of the current key.
    CurrentKey() = nullptr;
}

CTrackCtrl::~CTrackCtrl() {
    EndWatches();
    DropViews();
}

BOOL CTrackCtrl::Create(const char* className, const char* windowName, DWORD style, const CRect& rect,
                        CWnd* parentWnd, UINT id, CCreateContext* context) {
    if (CGridCtrl::Create(className, windowName, style, rect, parentWnd, id, context)) {
        const TimelineContext* timeline = TimelineOf(this);
        // Of the thousands of rows of a film that opens, few ever show their button: those make it as they
        // paint.
        if (timeline == nullptr || !timeline->IsRebuilding()) {
            CreateButton();
        }
    }
    return 1; // Required: also without a window.
}

void CTrackCtrl::CreateButton() {
    expandButton.Create(std::string(1, buttonSign).c_str(), WS_CHILD, CRect(0, 0, 10, 10), this, 0);
}

void CTrackCtrl::SetTimeRange(float a, float b) {
    CGridCtrl::SetTimeRange(a, b);
    std::vector<CTrackKey*> outside;
    std::ranges::copy_if(keys, std::back_inserter(outside), [this](const CTrackKey* key) {
        return !(key->time >= rangeStart && key->time <= rangeEnd);
    });
    RemoveViews(outside);
    for (CTrackKey* key : keys) {
        auto* timed = dynamic_cast<CTimedTrackKey*>(key);
        if (timed != nullptr && timed->time + timed->duration > rangeEnd) {
            // Required: the shortest durations are refused, so a key that starts at the very end stays long.
            timed->SetDuration(rangeEnd - timed->time, /*viewOnly*/ false);
        }
    }
}

FilmSession* CTrackCtrl::GetSession() const {
    const TimelineContext* timeline = TimelineOf(this);
    return timeline != nullptr ? &timeline->session : nullptr;
}

/// The object that the row's track moves; null for none.
EditorObject* CTrackCtrl::FindObject() const {
    const FilmSession* session = GetSession();
    return session != nullptr ? session->FindObjectByTrack(track) : nullptr;
}

/// A window that shows the key reads it anew.
void CTrackCtrl::TellWritten(const IFilmKey* record) const {
    if (const FilmSession* session = GetSession()) {
        session->TellKeyWritten(record);
    }
}

CRect CTrackCtrl::ClientRect() const {
    CRect client;
    GetClientRect(&client);
    return client;
}

int CTrackCtrl::GetLeftWidth() const {
    const TimelineContext* timeline = TimelineOf(this);
    return timeline != nullptr ? timeline->leftWidth : -1;
}

int CTrackCtrl::GetKeyTop(const CTrackKey* key, const CRect& rect) const {
    if (key == nullptr) {
        return -1;
    }
    switch (alignment) {
    case kTop:
        return rect.top + 2;
    case kMiddle:
        return rect.Height() / 2 - key->rectHeight / 2; // Required: without the rect's top.
    case kBottom:
        return rect.bottom - key->rectHeight - 1;
    default:
        return -1;
    }
}

double CTrackCtrl::TimeFromPoint(const CPoint* point) const {
    if (point == nullptr) {
        return -1.0;
    }
    const CRect client = ClientRect();
    const int nameWidth = GetLeftWidth();
    const int width = client.right - nameWidth - client.left;
    if (width == 0) {
        return viewStart; // no pixel for any other time
    }
    return (static_cast<double>(viewEnd) - viewStart) / width * (point->x - nameWidth) + viewStart;
}

int CTrackCtrl::KeyX(float time, float scale) const {
    return CutToPixel((static_cast<double>(time) - viewStart) * scale + GetLeftWidth());
}

/// Required: one of the key's ends must be in the view; a key that reaches beyond both sides isn't.
bool CTrackCtrl::IsInView(const CTrackKey& key) const {
    const float end = key.time + key.GetDuration();
    return (key.time >= viewStart && key.time <= viewEnd) || (end >= viewStart && end <= viewEnd);
}
