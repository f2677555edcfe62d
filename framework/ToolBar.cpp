#include "framework/ToolBar.h"

#include "framework/private/ByteReader.h"
#include "framework/private/NativeWindow.h"
#include "framework/private/ToolBarView.h"
#include "framework/Resource.h"

#include <algorithm>

IMPLEMENT_DYNCREATE(CToolBar, CWnd)

CToolBar::CToolBar() = default;

CToolBar::~CToolBar() {
    for (ToolBarView* view : views) {
        view->Forget();
    }
}

BOOL CToolBar::Create(CWnd* parent, DWORD style, UINT id) {
    barStyle = style & 0xFFFF;
    return CWnd::Create("ToolbarWindow32", nullptr, (style & 0xFFFF0000) | WS_CHILD, CRect(), parent, id);
}

BOOL CToolBar::LoadToolBar(UINT id) {
    constexpr UINT kVersion = 1;
    ByteReader in(FindResource(AfxGetResourceHandle(), RT_TOOLBAR, id));
    const UINT version = in.U16();
    const CSize image{in.U16(), in.U16()};
    const UINT count = in.U16();
    std::vector<UINT> ids;
    for (UINT i = 0; i < count && in.Ok(); ++i) {
        ids.push_back(in.U16());
    }
    if (!in.Ok() || version != kVersion) {
        return FALSE;
    }
    imageSize = image;
    SetButtons(ids.data(), static_cast<int>(ids.size()));
    return LoadBitmap(id);
}

BOOL CToolBar::LoadBitmap(UINT id) {
    // Where the bitmap of twice the size lies, if there is one.
    constexpr UINT kLargeOffset = 10000;
    resources = AfxGetResourceHandle();
    const BOOL loaded = bitmap.LoadBitmap(id);
    largeBitmap.LoadBitmap(id + kLargeOffset);
    DataChanged();
    return loaded;
}

void CToolBar::SetSizes(CSize /*button*/, CSize image) {
    imageSize = image;
    DataChanged();
}

BOOL CToolBar::SetButtons(const UINT* ids, int count) {
    constexpr int kSeparatorWidth = 8;
    buttons.assign(static_cast<std::size_t>(std::max(count, 0)), ToolBarButton{});
    int image = 0;
    for (std::size_t i = 0; i < buttons.size(); ++i) {
        const bool separator = ids[i] == 0;
        buttons[i] = {ids[i], separator ? TBBS_SEPARATOR : TBBS_BUTTON, TBSTATE_ENABLED,
                      separator ? kSeparatorWidth : image};
        image += separator ? 0 : 1;
    }
    resources = AfxGetResourceHandle();
    DataChanged();
    return TRUE;
}

void CToolBar::GetButtonInfo(int index, UINT& id, UINT& style, int& image) const {
    id = 0;
    style = 0;
    image = 0;
    if (index >= 0 && index < GetButtonCount()) {
        const ToolBarButton& b = buttons[static_cast<std::size_t>(index)];
        id = b.id;
        style = (b.style & 0xFFFF) | ((b.state ^ TBSTATE_ENABLED) << 16);
        image = b.image;
    }
}

void CToolBar::SetButtonInfo(int index, UINT id, UINT style, int image) {
    if (index >= 0 && index < GetButtonCount()) {
        buttons[static_cast<std::size_t>(index)] = {id, style & 0xFFFF, (style >> 16) ^ TBSTATE_ENABLED,
                                                    image};
        DataChanged();
    }
}

UINT CToolBar::GetItemID(int index) const {
    return index >= 0 && index < GetButtonCount() ? buttons[static_cast<std::size_t>(index)].id : 0;
}

int CToolBar::CommandToIndex(UINT id) const {
    const auto found = std::find_if(buttons.begin(), buttons.end(), [id](const ToolBarButton& b) {
        return b.id == id && !(b.style & TBBS_SEPARATOR);
    });
    return found == buttons.end() ? -1 : static_cast<int>(found - buttons.begin());
}

const ToolBarButton* CToolBar::FindButton(UINT id) const {
    const int index = CommandToIndex(id);
    return index < 0 ? nullptr : &buttons[static_cast<std::size_t>(index)];
}

BOOL CToolBar::HasState(UINT id, UINT bit) const {
    const ToolBarButton* button = FindButton(id);
    return button && (button->state & bit);
}

BOOL CToolBar::SetState(UINT id, UINT bit, BOOL on) {
    const int index = CommandToIndex(id);
    if (index < 0) {
        return FALSE;
    }
    UINT& state = buttons[static_cast<std::size_t>(index)].state;
    state = on ? state | bit : state & ~bit;
    for (ToolBarView* view : views) {
        view->Refresh();
    }
    return TRUE;
}

std::string CToolBar::TipText(UINT id) const {
    std::string text;
    LoadString(resources, id, text);
    const std::size_t lineFeed = text.find('\n');
    return lineFeed == std::string::npos ? text : text.substr(lineFeed + 1);
}

void CToolBar::Press(UINT id) {
    CWnd* parent = GetParent();
    if (parent) {
        parent->SendMessage(WM_COMMAND, MAKEWPARAM(id, 0), 0);
    }
}

void CToolBar::DataChanged() {
    for (ToolBarView* view : views) {
        view->Rebuild();
    }
}

namespace {

// The state bit that a message sets (first) or asks for (second).
constexpr struct {
    UINT set;
    UINT ask;
    UINT bit;
} kStateMessages[] = {
    {TB_ENABLEBUTTON, TB_ISBUTTONENABLED, TBSTATE_ENABLED},
    {TB_CHECKBUTTON, TB_ISBUTTONCHECKED, TBSTATE_CHECKED},
    {TB_PRESSBUTTON, TB_ISBUTTONPRESSED, TBSTATE_PRESSED},
    {TB_HIDEBUTTON, TB_ISBUTTONHIDDEN, TBSTATE_HIDDEN},
    {TB_INDETERMINATE, TB_ISBUTTONINDETERMINATE, TBSTATE_INDETERMINATE},
};

} // namespace

BOOL CToolBar::HandleToolBarMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    const UINT id = static_cast<UINT>(wParam);
    for (const auto& row : kStateMessages) {
        if (message == row.set) {
            result = SetState(id, row.bit, (lParam & 0xFFFF) != 0);
            return TRUE;
        }
        if (message == row.ask) {
            result = HasState(id, row.bit);
            return TRUE;
        }
    }
    switch (message) {
    case TB_GETSTATE: {
        const ToolBarButton* button = FindButton(id);
        result = button ? static_cast<LRESULT>(button->state) : -1;
        return TRUE;
    }
    case TB_SETSTATE:
        SetState(id, 0xFF, FALSE);
        result = SetState(id, static_cast<UINT>(lParam) & 0xFF, TRUE);
        return TRUE;
    case TB_BUTTONCOUNT:
        result = GetButtonCount();
        return TRUE;
    default:
        return FALSE;
    }
}

LRESULT CToolBar::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    LRESULT result = 0;
    if (HandleToolBarMessage(message, wParam, lParam, result)) {
        return result;
    }
    if (message == WM_CREATE && GetSafeHwnd()) {
        if (auto* bar = dynamic_cast<QToolBar*>(GetSafeHwnd()->widget)) {
            new ToolBarView(*this, *bar, nullptr);
        }
    }
    if (message == WM_SETTEXT) {
        title = reinterpret_cast<const char*>(lParam);
        for (ToolBarView* view : views) {
            view->Refresh();
        }
    }
    return CWnd::WindowProc(message, wParam, lParam);
}
