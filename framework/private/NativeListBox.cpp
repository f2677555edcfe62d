#include "framework/DC.h"
#include "framework/ListBox.h"
#include "framework/private/NativeControls.h"
#include "framework/private/NativeOf.h"
#include "framework/private/Surface.h"

#include <QListWidget>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>

#include <optional>
#include <utility>
#include <vector>

namespace {

class NativeListBox : public NativeOf<QListWidget>, public NativeListBoxControl {
public:
    NativeListBox(DWORD listStyle, QWidget* parent);

    QWidget* Client() const override { return viewport(); }
    bool event(QEvent* e) override;
    bool BaseEvent(QEvent* e) override;
    bool DrawItemByProgram(QPainter& painter, const QStyleOptionViewItem& option, int index);

    int InsertItem(int index, const QString& text) override;
    bool RemoveItem(int index) override;
    void Clear() override { clear(); }
    int Count() const override { return count(); }
    QString ItemText(int index) const override { return item(index) ? item(index)->text() : QString(); }
    UINT_PTR ItemData(int index) const override {
        return item(index) ? static_cast<UINT_PTR>(item(index)->data(Qt::UserRole).toULongLong()) : 0;
    }
    bool SetItemData(int index, UINT_PTR number) override;
    int Current() const override;
    bool SetCurrent(int index) override;
    bool IsSelected(int index) const override { return item(index) && item(index)->isSelected(); }
    bool Select(int index, bool on) override;
    CRect ItemRect(int index) const override;
    int ItemAt(CPoint p) const override { return row(itemAt(p.x, p.y)); }
    int TopIndex() const override;
    void SetTopIndex(int index) override;
    int ItemHeight() const override { return itemHeight; }
    void SetItemHeight(int height) override;
    std::optional<LRESULT> ControlMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

protected:
    bool viewportEvent(QEvent* e) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    // What a refill without drawing gives back at its end.
    struct Refill {
        int top;
        int current;
        bool topIsNew = false; // the program has scrolled meanwhile
    };

    std::vector<int> Selection() const;
    void LayOut() const;
    void ScrollTo(int index);
    void SetRedraw(bool on);
    bool KeepTopWhileShowing(QEvent* e);

    int itemHeight = 18;
    std::optional<Refill> refill;
};

// Rows of one height, drawn by the program where the style says so.
class RowDelegate : public QStyledItemDelegate {
public:
    explicit RowDelegate(NativeListBox& owner) : QStyledItemDelegate(&owner), list(owner) {}

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        return {QStyledItemDelegate::sizeHint(option, index).width(), list.ItemHeight()};
    }
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        if (!list.DrawItemByProgram(*painter, option, index.row())) {
            QStyledItemDelegate::paint(painter, option, index);
        }
    }

private:
    NativeListBox& list;
};

bool BelongsToViewport(QEvent::Type type) {
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::Paint:
    case QEvent::Leave:
    case QEvent::ContextMenu:
        return true;
    default:
        return false;
    }
}

NativeListBox::NativeListBox(DWORD listStyle, QWidget* parent) : NativeOf<QListWidget>(parent) {
    windowStyle = listStyle;
    setItemDelegate(new RowDelegate(*this));
    setUniformItemSizes(true);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    setTabKeyNavigation(false);
    const bool several = (listStyle & (LBS_EXTENDEDSEL | LBS_MULTIPLESEL)) != 0;
    setSelectionMode(several ? QAbstractItemView::ExtendedSelection : QAbstractItemView::SingleSelection);
    viewport()->setMouseTracking(true);
}

bool NativeListBox::event(QEvent* e) {
    // The list's own frame is the toolkit's; the program's window is the viewport.
    return BelongsToViewport(e->type()) ? QListWidget::event(e) : HandleEvent(e);
}

bool NativeListBox::viewportEvent(QEvent* e) {
    return BelongsToViewport(e->type()) ? HandleEvent(e) : QListWidget::viewportEvent(e);
}

std::vector<int> NativeListBox::Selection() const {
    std::vector<int> rows;
    for (int i = 0; i < count(); ++i) {
        if (item(i)->isSelected()) {
            rows.push_back(i);
        }
    }
    return rows;
}

bool NativeListBox::BaseEvent(QEvent* e) {
    const QEvent::Type type = e->type();
    const bool isInput = e->isInputEvent();
    const bool isFocus = IsFocusChange(*e); // the event may also be this object's end
    if (isInput) {
        LayOut(); // the wheel after a refill has somewhere to go
    }
    const std::vector<int> before = isInput ? Selection() : std::vector<int>();
    const bool onItem = type == QEvent::MouseButtonDblClick &&
                        itemAt(static_cast<QMouseEvent*>(e)->position().toPoint()) != nullptr;
    const bool clears = type == QEvent::MouseButtonPress && selectionMode() == SingleSelection &&
                        itemAt(static_cast<QMouseEvent*>(e)->position().toPoint()) == nullptr;
    const bool result = type == QEvent::Show      ? KeepTopWhileShowing(e)
                        : BelongsToViewport(type) ? QListWidget::viewportEvent(e)
                                                  : QListWidget::event(e);
    if (type == QEvent::Resize && !isVisible()) {
        updateGeometries(); // the viewport hears of its size when it shows
    }
    if (clears) {
        // The toolkit would do so at the release.
        SetCurrent(-1);
    }
    if (isInput && Selection() != before) {
        NotifyParent(LBN_SELCHANGE);
    }
    if (onItem) {
        NotifyParent(LBN_DBLCLK);
    }
    if (isFocus) {
        NotifyFocus(*e, LBN_SETFOCUS, LBN_KILLFOCUS);
    }
    return result;
}

bool NativeListBox::DrawItemByProgram(QPainter& painter, const QStyleOptionViewItem& option, int index) {
    if (!(windowStyle & LBS_OWNERDRAWFIXED) || !wnd) {
        return false;
    }
    const QRect r = option.rect;
    CDC dc;
    painter.save();
    DRAWITEMSTRUCT draw;
    draw.CtlType = ODT_LISTBOX;
    draw.CtlID = id;
    draw.itemID = static_cast<UINT>(index);
    draw.itemState =
        (option.state & QStyle::State_Selected ? ODS_SELECTED : 0) | (isEnabled() ? 0 : ODS_DISABLED);
    draw.hDC = &dc;
    draw.rcItem = CRect(0, r.top(), viewport()->width(), r.top() + r.height());
    draw.itemData = ItemData(index);
    CRect visible;
    visible.IntersectRect(draw.rcItem, CRect(0, 0, viewport()->width(), viewport()->height()));
    dc.State().Borrow(painter, visible);
    dc.SelectObject(FontInForce()); // null selects nothing
    LRESULT result = 0;
    const bool drawn = Reflect(WM_DRAWITEM, id, reinterpret_cast<LPARAM>(&draw), &result);
    painter.restore();
    return drawn;
}

int NativeListBox::InsertItem(int index, const QString& text) {
    int at = index < 0 || index > count() ? count() : index;
    if (index < 0 && (windowStyle & LBS_SORT)) {
        for (at = 0; at < count() && item(at)->text().compare(text, Qt::CaseInsensitive) <= 0;) {
            ++at;
        }
    }
    insertItem(at, text);
    return at;
}

bool NativeListBox::RemoveItem(int index) {
    const QListWidgetItem* removed = takeItem(index);
    delete removed;
    return removed != nullptr;
}

bool NativeListBox::SetItemData(int index, UINT_PTR number) {
    if (item(index)) {
        item(index)->setData(Qt::UserRole, QVariant::fromValue<qulonglong>(number));
    }
    return item(index) != nullptr;
}

int NativeListBox::Current() const {
    const std::vector<int> rows = Selection();
    return rows.empty() ? -1 : rows.front();
}

bool NativeListBox::SetCurrent(int index) {
    clearSelection();
    if (!item(index)) {
        setCurrentRow(-1);
        return index == -1;
    }
    setCurrentRow(index);
    if (!isVisible()) {
        LayOut();
        scrollToItem(item(index)); // the toolkit does it for visible ones
    }
    return true;
}

bool NativeListBox::Select(int index, bool on) {
    if (index == -1) {
        on ? selectAll() : clearSelection();
        return true;
    }
    if (item(index)) {
        item(index)->setSelected(on);
    }
    return item(index) != nullptr;
}

CRect NativeListBox::ItemRect(int index) const {
    if (!item(index)) {
        return {};
    }
    LayOut();
    const QRect r = visualItemRect(item(index));
    return {0, r.top(), viewport()->width(), r.top() + r.height()};
}

// Refills and new sizes are laid out late, or when the list shows; nobody sees anything older than they are.
void NativeListBox::LayOut() const {
    const_cast<NativeListBox*>(this)->executeDelayedItemsLayout();
}

int NativeListBox::TopIndex() const {
    LayOut();
    return verticalScrollBar()->value(); // in rows
}

void NativeListBox::ScrollTo(int index) {
    LayOut();
    verticalScrollBar()->setValue(index);
}

void NativeListBox::SetTopIndex(int index) {
    if (!item(index)) {
        return;
    }
    ScrollTo(index);
    if (refill) {
        refill->top = index;
        refill->topIsNew = true;
    }
}

void NativeListBox::SetRedraw(bool on) {
    if (!on && !refill) {
        refill = Refill{TopIndex(), Current()};
    }
    if (on && refill) {
        const Refill before = *std::exchange(refill, std::nullopt);
        ScrollTo(before.top);
        const int now = Current();
        if (!before.topIsNew && now >= 0 && now != before.current) {
            scrollToItem(item(now));
        }
    }
    setUpdatesEnabled(on);
}

// The toolkit scrolls to the current row when a list shows, wherever the program has scrolled to.
bool NativeListBox::KeepTopWhileShowing(QEvent* e) {
    const int top = TopIndex();
    const bool result = QListWidget::event(e);
    ScrollTo(top);
    return result;
}

// The windows in a list stay where the program puts them; the toolkit would move them along.
void NativeListBox::scrollContentsBy(int dx, int dy) {
    if (Owned().empty()) {
        QListWidget::scrollContentsBy(dx, dy);
        return;
    }
    QListWidget::scrollContentsBy(0, 0); // ends a scroll that is under way
    viewport()->update();
}

void NativeListBox::SetItemHeight(int height) {
    itemHeight = std::max(1, height);
    scheduleDelayedItemsLayout();
}

std::optional<LRESULT> NativeListBox::ControlMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const int index = static_cast<int>(wParam);
    switch (message) {
    case WM_SETREDRAW:
        SetRedraw(wParam != 0);
        return 0;
    case LB_ADDSTRING:
        return InsertItem(-1, QString::fromUtf8(reinterpret_cast<const char*>(lParam)));
    case LB_RESETCONTENT:
        Clear();
        return 0;
    case LB_GETCOUNT:
        return Count();
    case LB_GETCURSEL:
        return Current();
    case LB_SETCURSEL:
        return SetCurrent(index) ? index : LB_ERR;
    case LB_GETSEL:
        return IsSelected(index) ? 1 : 0;
    case LB_SETSEL:
        return Select(static_cast<int>(lParam), wParam != 0) ? 0 : LB_ERR;
    case LB_GETITEMDATA:
        return static_cast<LRESULT>(ItemData(index));
    case LB_SETITEMDATA:
        return SetItemData(index, static_cast<UINT_PTR>(lParam)) ? 0 : LB_ERR;
    case LB_FINDSTRING:
    case LB_SELECTSTRING: {
        const int found =
            FindText(*this, index, QString::fromUtf8(reinterpret_cast<const char*>(lParam)), false);
        if (message == LB_SELECTSTRING && found >= 0) {
            SetCurrent(found);
        }
        return found;
    }
    default:
        return NativeWindow::ControlMessage(message, wParam, lParam);
    }
}

} // namespace

namespace {

// The first item behind `after`, round the end, that the test holds for.
template <class Test> int FindItem(const NativeListControl& list, int after, const Test& matches) {
    const int count = list.Count();
    for (int step = 1; step <= count; ++step) {
        const int i = (std::max(after, -1) + step) % count;
        if (matches(list.ItemText(i))) {
            return i;
        }
    }
    return -1;
}

} // namespace

int FindText(const NativeListControl& list, int after, const QString& text, bool exact) {
    if (!exact) {
        return FindItem(list, after, [&text](const QString& candidate) {
            return candidate.startsWith(text, Qt::CaseInsensitive);
        });
    }
    const int same = FindItem(list, after, [&text](const QString& candidate) { return candidate == text; });
    return same >= 0 ? same : FindItem(list, after, [&text](const QString& candidate) {
        return candidate.compare(text, Qt::CaseInsensitive) == 0;
    });
}

NativeWindow* MakeListBox(DWORD style, QWidget* parent) {
    return new NativeListBox(style, parent);
}
