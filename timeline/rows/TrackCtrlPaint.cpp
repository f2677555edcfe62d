#include "framework/PaintDC.h"
#include "keys/rules/Pixels.h"
#include "keys/views/KeyDrawing.h"
#include "keys/views/NullTimeTrackKey.h"
#include "timeline/rows/MarkedGridCtrl.h"
#include "timeline/rows/TimelineContext.h"
#include "timeline/rows/TrackCtrl.h"

#include <algorithm>
#include <cmath>
#include <typeinfo>
#include <unordered_set>

namespace {

constexpr int kChildIndent = 20;   // pixels
constexpr int kMinNameWidth = 110; // pixels; a narrower name column has no text
constexpr int kNameIndent = 25;    // pixels
constexpr int kButtonWidth = 20;   // pixels
constexpr COLORREF kBlack = 0x000000;
constexpr COLORREF kSelectedActor = 0xFF0000;
constexpr COLORREF kVisualizedCamera = 0x008000;

/// With fewer keys to draw, drawing all of them is quicker than looking for covered ones.
constexpr std::size_t kManyKeys = 4000;

/// Lengths of a bar and of no key.
constexpr std::int64_t kFixedWidth = -1;
constexpr std::int64_t kNoBox = -2;

/// Keys with equal boxes paint the same pixels.
struct KeyBox {
    int x = 0;
    int height = 0;
    std::int64_t length = kNoBox;

    bool operator==(const KeyBox&) const = default;
};

struct KeyBoxHash {
    std::size_t operator()(const KeyBox& box) const {
        constexpr std::uint64_t kMix = 0x9E3779B97F4A7C15;
        const auto place = static_cast<std::uint64_t>(box.x) * kMix + static_cast<std::uint64_t>(box.length);
        return static_cast<std::size_t>((place * kMix + static_cast<std::uint64_t>(box.height)) * kMix >> 16);
    }
};

/// The length tells keys apart finer than their boxes: half pixels decide, exact halves among them.
std::int64_t LengthInBox(const CTrackKey& key, float pixelsPerSecond) {
    if (typeid(key) == typeid(CNullTimeTrackKey)) {
        return kFixedWidth;
    }
    const double halves = std::fabs(2.0 * (pixelsPerSecond * key.GetDuration()));
    const std::int64_t whole = CutToPixel(halves);
    return 2 * whole + (halves > static_cast<double>(whole) ? 1 : 0);
}

/// The boxes that are drawn already.
class DrawnBoxes {
public:
    DrawnBoxes(int firstColumn, int columns)
        : first(firstColumn), latest(static_cast<std::size_t>(std::max(columns, 0))) {}

    /// False if the box is in already.
    bool Add(const KeyBox& box) {
        const auto column = static_cast<std::size_t>(static_cast<std::int64_t>(box.x) - first);
        if (column >= latest.size()) {
            return boxes.insert(box).second;
        }
        // Most keys of a column look alike, so most never come to the set.
        if (latest[column] == box) {
            return false;
        }
        latest[column] = box;
        return boxes.insert(box).second;
    }

private:
    std::int64_t first;
    std::vector<KeyBox> latest; ///< by column
    std::unordered_set<KeyBox, KeyBoxHash> boxes;
};

} // namespace

void CTrackCtrl::OnPaint() {
    CPaintDC dc(this);
    const CRect client = ClientRect();
    const int areaLeft = client.left + GetLeftWidth();
    const int cellLeft = PaintFrame(dc, client);
    if (viewEnd == viewStart) {
        return;
    }
    const CRect area(areaLeft, client.top, client.right, client.bottom);
    {
        const SelectionScope<CFont> font(dc, TimelineFont());
        DrawGrid(&dc, area, /*labelDistance*/ -1);
        pixelsPerSecond = static_cast<float>(area.Width() / (static_cast<double>(viewEnd) - viewStart));
        PaintKeys(dc, area);
        PaintGhost(dc, area);
        const CRect cell(cellLeft, client.top, areaLeft, client.bottom);
        dc.Rectangle(cell); // covers what reached into the name cell
        if (areaLeft - client.left >= kMinNameWidth) {
            PaintName(dc, cell);
        }
    }
    const TimelineContext* timeline = TimelineOf(this);
    if (timeline == nullptr || timeline->grid == nullptr) {
        return; // Required: without a ruler the button isn't looked after either.
    }
    PaintLines(dc, area, *timeline);
    PlaceButton(client);
}

/// Returns the left edge of the name cell.
int CTrackCtrl::PaintFrame(CDC& dc, const CRect& client) const {
    CPen rowPen(PS_SOLID, 0, kBackground);
    CBrush rowBrush(kBackground);
    const SelectionScope<CPen> pen(dc, rowPen);
    const SelectionScope<CBrush> brush(dc, rowBrush);
    dc.Rectangle(client);

    CPen blackPen(PS_SOLID, 0, kBlack);
    const SelectionScope<CPen> frame(dc, blackPen);
    int left = client.left;
    if (!IsRoot()) {
        dc.MoveTo(client.left, client.top);
        dc.LineTo(client.left, client.bottom);
        left += kChildIndent;
    }
    dc.Rectangle(left, client.top, client.right, client.bottom);
    return left;
}

void CTrackCtrl::PaintKeys(CDC& dc, const CRect& area) {
    static std::vector<CTrackKey*> overlapping; // kept between paints, like the next
    static std::vector<CTrackKey*> shown;
    keys.Overlapping(viewStart, viewEnd, overlapping);
    shown.clear();
    CTrackKey* onTop = nullptr;
    for (CTrackKey* key : overlapping) {
        if (key->selected) {
            onTop = key; // Required: of several the last; the others aren't drawn.
        } else {
            shown.push_back(key);
        }
    }
    if (shown.size() > kManyKeys) {
        DropCoveredKeys(shown, area);
    }
    for (CTrackKey* key : shown) {
        PaintKey(dc, *key, area);
    }
    if (onTop != nullptr) {
        PaintKey(dc, *onTop, area);
    }
}

void CTrackCtrl::PaintKey(CDC& dc, CTrackKey& key, const CRect& area) const {
    key.Draw(&dc, KeyX(key.time, pixelsPerSecond), GetKeyTop(&key, area), pixelsPerSecond, &area,
             /*outline*/ false);
}

/// Where a clone that hangs on the mouse would go. Required: it is drawn all over the axis, also where the
/// clone would be refused.
void CTrackCtrl::PaintGhost(CDC& dc, const CRect& area) const {
    const TimelineContext* timeline = TimelineOf(this);
    if (timeline == nullptr) {
        return;
    }
    const CopiedKey& copied = timeline->GetCopied();
    CTrackKey* source = copied.sourceKey;
    const float time = copied.sourceTime;
    if (source != nullptr && copied.sourceRow == this && copied.cloneMode && time >= timeline->movieStart &&
        time < timeline->movieEnd) {
        source->Draw(&dc, KeyX(time, pixelsPerSecond), GetKeyTop(source, area), pixelsPerSecond, &area,
                     /*outline*/ true);
    }
}

/// Takes out the keys that a later one of the same box paints over, so that a row draws no more keys than its
/// pixels can show.
void CTrackCtrl::DropCoveredKeys(std::vector<CTrackKey*>& shown, const CRect& area) const {
    const int nameWidth = GetLeftWidth();
    DrawnBoxes drawn(area.left, area.Width() + 1);
    std::vector<CTrackKey*> kept;
    for (auto key = shown.rbegin(); key != shown.rend(); ++key) {
        if ((*key)->state == CTrackKey::kHidden) {
            continue;
        }
        const double x = (static_cast<double>((*key)->time) - viewStart) * pixelsPerSecond + nameWidth;
        const KeyBox box{CutToPixel(x), (*key)->rectHeight, LengthInBox(**key, pixelsPerSecond)};
        if (drawn.Add(box)) {
            kept.push_back(*key);
        }
    }
    std::ranges::reverse_copy(kept, shown.begin());
    shown.resize(kept.size());
}

void CTrackCtrl::PaintName(CDC& dc, const CRect& cell) const {
    const COLORREF old = dc.SetTextColor(GetNameColor());
    dc.TextOut(cell.left + kNameIndent, cell.Height() / 3 + cell.top, name + ":");
    dc.SetTextColor(old);
}

COLORREF CTrackCtrl::GetNameColor() const {
    if (EditorObject* object = FindObject()) {
        const EditorObjectInfo* info = object->GetInfo();
        return info != nullptr && info->IsSelected() ? kSelectedActor : kBlack;
    }
    const FilmSession* session = GetSession();
    const bool visualized =
        AsCameraTrack(track) != nullptr && session != nullptr && session->GetVisualizedTrack() == track;
    return visualized ? kVisualizedCamera : kBlack;
}

/// The ruler's marks and the cursor.
void CTrackCtrl::PaintLines(CDC& dc, const CRect& area, const TimelineContext& timeline) const {
    const CMarkedGridCtrl& ruler = *timeline.grid;
    CPen markPen(PS_DOT, 0, ruler.markColor);
    CPen dragPen(PS_DOT, 0, ruler.dragMarkColor);
    for (const CMark* mark : ruler.marks) {
        if (mark->time >= viewStart && mark->time <= viewEnd) {
            const SelectionScope<CPen> pen(dc, mark == ruler.dragMark ? dragPen : markPen);
            PaintLine(dc, area, mark->time);
        }
    }
    // Required: the cursor stops short of the view's edges, its arrow on the ruler doesn't.
    if (timeline.currentTime > viewStart && timeline.currentTime < viewEnd) {
        CPen cursorPen(PS_DOT, 0, ruler.cursorColor);
        const SelectionScope<CPen> pen(dc, cursorPen);
        PaintLine(dc, area, timeline.currentTime);
    }
}

void CTrackCtrl::PaintLine(CDC& dc, const CRect& area, float time) const {
    const int x = CutToPixel((static_cast<double>(time) - viewStart) * pixelsPerSecond) + area.left;
    dc.MoveTo(x, area.top);
    dc.LineTo(x, area.bottom);
}

/// Touches the button only where something differs: a repaint must not cause the next.
void CTrackCtrl::PlaceButton(const CRect& client) {
    if (expandButton.GetSafeHwnd() == nullptr) {
        if (!IsRoot()) {
            return;
        }
        CreateButton();
    }
    const bool shown = (expandButton.GetStyle() & WS_VISIBLE) != 0;
    if (!IsRoot()) {
        if (shown) {
            expandButton.ShowWindow(SW_HIDE);
        }
        return;
    }
    SetButtonSign(expanded ? '-' : '+');
    const CRect wanted(client.TopLeft() + CPoint(1, 1), {kButtonWidth, std::max(client.Height() - 2, 0)});
    if (wanted != buttonRect || !shown) {
        buttonRect = wanted;
        expandButton.SetWindowPos(nullptr, wanted.left, wanted.top, wanted.Width(), wanted.Height(),
                                  SWP_NOACTIVATE | SWP_SHOWWINDOW);
    }
}

void CTrackCtrl::SetButtonSign(char sign) {
    if (sign != buttonSign) {
        buttonSign = sign;
        expandButton.SetWindowText(std::string(1, sign));
    }
}
