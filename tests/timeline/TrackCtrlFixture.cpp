#include "tests/timeline/TrackCtrlFixture.h"

#include "framework/QtBridge.h"
#include "tests/support/RetiredRecords.h"

#include <algorithm>
#include <QCoreApplication>
#include <QPixmap>
#include <QWidget>

namespace {

std::string Hex(COLORREF color) {
    char text[8];
    std::snprintf(text, sizeof(text), "%06X", color);
    return text;
}

std::string Point(int x, int y) {
    return std::to_string(x) + "," + std::to_string(y);
}

std::string PenText(const DrawCall& call) {
    const std::string dots = call.penStyle == PS_DOT ? " dots" : "";
    return call.penStyle == PS_NULL ? " pen none" : " pen " + Hex(call.penColor) + dots;
}

std::string CallText(const DrawCall& call) {
    const CRect& r = call.rect;
    const std::string corners = Point(r.left, r.top) + "," + Point(r.right, r.bottom);
    switch (call.kind) {
    case DrawKind::Line:
        return "line " + Point(r.left, r.top) + " " + Point(r.right, r.bottom) + PenText(call);
    case DrawKind::Rectangle:
        return "rect " + corners + PenText(call) + " brush " + Hex(call.brushColor);
    case DrawKind::Text:
        return "text " + Point(r.left, r.top) + " '" + call.text + "' " + Hex(call.textColor);
    default:
        return "other " + corners;
    }
}

} // namespace

CTrackCtrl& RowTimeline::MakeRow(int kind) {
    CTrackCtrl& row = *rows.emplace_back(std::make_unique<CTrackCtrl>());
    row.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(0, 0, 650, 20), this, 55);
    row.kind = kind;
    row.SetTimeRange(0.0f, 100.0f);
    row.SetView(0.0f, 10.0f);
    row.SetTicDistance(1000.0f);
    row.SetBigTics(5);
    return row;
}

CTrackCtrl* RowTimeline::AddTrackCtrl(bool redraw) {
    FakeTimeline::AddTrackCtrl(redraw);
    return refuseRows ? nullptr : &MakeRow(KeyKind::None);
}

CTrackCtrl* RowTimeline::AddAnimationRow(CTrackCtrl* parentRow, const std::string& name) {
    FakeTimeline::AddAnimationRow(parentRow, name);
    CTrackCtrl& row = MakeRow(KeyKind::Animation);
    row.name = name;
    return parentRow->FindAnimationRowFor(&row) != nullptr ? &row : nullptr;
}

TrackCtrlTest::TrackCtrlTest() {
    timeline.Create(nullptr, nullptr, WS_POPUP | WS_VISIBLE, CRect(0, 0, 800, 400), nullptr, 0);
    timeline.grid = &ruler;
    timeline.currentTime = -1.0f;
    window.timeline = &timeline;
    plugin.scenarioDlg = &window;
    box = editor.Create("Box");
    film = OpenFilmWith({box});
    boxTrack = film->FindObjectTrack(box);
    timeline.log.clear();
    windowLog.clear();
}

TrackCtrlTest::~TrackCtrlTest() {
    for (const IFilmKey* record : RetiredRecords(timeline.undoMgr)) {
        std::erase(loose, record); // it goes with what keeps it
    }
    timeline.undoMgr.Clear();
    timeline.rows.clear();
    for (IFilmKey* record : loose) {
        if (record->track == nullptr) {
            Films().keyFactory->DestroyKey(record);
        }
    }
    plugin.scenarioDlg = nullptr;
    timeline.DestroyWindow();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

CTrackCtrl& TrackCtrlTest::MakeRow(int kind, CFilmTrack* track) {
    CTrackCtrl& row = timeline.MakeRow(kind);
    row.track = track;
    return row;
}

CTrackCtrl& TrackCtrlTest::MakeTree(CFilmTrack* track, int cameraCount) {
    CTrackCtrl& root = MakeRow(KeyKind::None, track);
    root.CreateChildRows(cameraCount);
    timeline.log.clear();
    return root;
}

std::unique_ptr<CTrackKey> TrackCtrlTest::MakeView(int kind, float time, float duration) {
    IFilmKey* record = Films().keyFactory->CreateKey(kind);
    record->SetTime(time);
    record->SetEndTime(time + duration);
    std::unique_ptr<CTrackKey> view;
    if ((record->flags & KeyFlag::NoDuration) != 0) {
        view = std::make_unique<CNullTimeTrackKey>();
    } else {
        view = std::make_unique<CTimedTrackKey>();
    }
    view->context = &timeline;
    view->SetRecord(record, /*takeTimes*/ true);
    loose.push_back(record);
    return view;
}

CNullTimeTrackKey* TrackCtrlTest::AddBar(CTrackCtrl& row, float time) {
    std::unique_ptr<CTrackKey> view = MakeView(row.kind, time);
    EXPECT_TRUE(row.AddKeyView(view.get(), false, true, true));
    timeline.ClearSelection();
    timeline.log.clear();
    return static_cast<CNullTimeTrackKey*>(view.release());
}

CTimedTrackKey* TrackCtrlTest::AddBox(CTrackCtrl& row, float time, float duration) {
    std::unique_ptr<CTrackKey> view = MakeView(row.kind, time, duration);
    if (row.kind == KeyKind::Camera) {
        static_cast<CFilmCameraKey*>(view->record)->priority = row.subIndex;
    }
    EXPECT_TRUE(row.AddKeyView(view.get(), false, true, true));
    timeline.ClearSelection();
    timeline.log.clear();
    return static_cast<CTimedTrackKey*>(view.release());
}

void TrackCtrlTest::RenderRow(CTrackCtrl& row) {
    NativeWidget(row)->grab();
    row.ValidateRect();
}

std::vector<std::string> TrackCtrlTest::Paint(CTrackCtrl& row) {
    std::vector<std::string> lines;
    {
        const HookScope scope;
        Hooks().drawing = [&lines](const DrawCall& call) { lines.push_back(CallText(call)); };
        RenderRow(row);
    }
    return lines;
}

std::vector<std::string> TrackCtrlTest::PaintKeys(CTrackCtrl& row) {
    std::vector<std::string> lines = Paint(row);
    const auto isFrame = [](const std::string& line) {
        return line.find("FAFAFA") != std::string::npos || line.starts_with("text") ||
               line.starts_with("line");
    };
    std::erase_if(lines, isFrame);
    if (!lines.empty()) {
        lines.pop_back(); // the name cell
    }
    return lines;
}

std::vector<std::string> TrackCtrlTest::Only(const std::string& word, const std::vector<std::string>& lines) {
    std::vector<std::string> found;
    std::ranges::copy_if(lines, std::back_inserter(found),
                         [&](const std::string& line) { return line.starts_with(word); });
    return found;
}

bool TrackCtrlTest::WantsPaint(const CTrackCtrl& row) {
    CRect rect;
    return row.GetUpdateRect(&rect) != FALSE;
}

void TrackCtrlTest::SettleAll() {
    for (const auto& row : timeline.rows) {
        row->ValidateRect();
    }
}

std::vector<std::string> TrackCtrlTest::ChildNames(const CTrackCtrl& root) {
    std::vector<std::string> names;
    std::ranges::transform(root.children, std::back_inserter(names),
                           [](const CTrackCtrl* child) { return child->name; });
    return names;
}
