#include "framework/ListBox.h"

#include "framework/ComboBox.h"
#include "framework/QtBridge.h"
#include "framework/TestHooks.h"

#include <gtest/gtest.h>
#include <QTest>

#include <string>
#include <vector>

namespace {

// Draws its rows itself and writes down the heights of the fonts that it is handed.
class DrawnList : public CListBox {
public:
    std::vector<int> heights;
    CFont own;

protected:
    void DrawItem(DRAWITEMSTRUCT* item) override {
        TEXTMETRIC metrics;
        item->hDC->GetTextMetrics(&metrics);
        heights.push_back(metrics.tmHeight);
        CFont* before = item->hDC->SelectObject(&own);
        item->hDC->SelectObject(before);
        item->hDC->GetTextMetrics(&metrics);
        heights.push_back(metrics.tmHeight);
        item->hDC->TextOut(item->rcItem.left + 2, item->rcItem.top + 2, "row");
    }
};

// Hears of the selection.
class ListOwner : public CWnd {
public:
    int changes = 0;

protected:
    void OnListChanged() { ++changes; }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(ListOwner, CWnd)
ON_LBN_SELCHANGE(1, &ListOwner::OnListChanged)
END_MESSAGE_MAP()

class ListBoxTest : public testing::Test {
protected:
    ListBoxTest() { top.Create(nullptr, "top", WS_POPUP | WS_CAPTION, {100, 100, 500, 400}, nullptr, 0); }

    // Rows of 20 pixels; five and a half of them fit.
    void MakeList(int rows, DWORD style = 0) {
        ASSERT_TRUE(list.Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP | LBS_NOTIFY | style, {10, 10, 130, 122},
                                &top, 1));
        list.SetItemHeight(0, 20);
        Fill(rows);
    }
    void Fill(int rows) {
        for (int i = 0; i < rows; ++i) {
            list.AddString("row " + std::to_string(i));
        }
    }
    void Press(CPoint inList) {
        list.ClientToScreen(&inList);
        top.ScreenToClient(&inList);
        QTest::mouseClick(Window(), Qt::LeftButton, Qt::NoModifier, QPoint(inList.x, inList.y));
    }

    void Show() {
        top.ShowWindow(SW_SHOW);
        ASSERT_TRUE(QTest::qWaitForWindowActive(NativeWidget(top)));
    }
    QWindow* Window() { return NativeWidget(top)->windowHandle(); }

    ListOwner top;
    CListBox list;
};

// Paints one row; the fonts' heights before and after a font was selected and put back.
std::vector<int> Paint(DrawnList& list) {
    list.heights.clear();
    NativeWidget(list)->grab();
    return list.heights;
}

int HeightOf(const CFont& font) {
    CFont copy;
    copy.face = font.face;
    copy.pixelHeight = font.pixelHeight;
    CDC dc;
    dc.CreateCompatibleDC(nullptr);
    dc.SelectObject(&copy);
    TEXTMETRIC metrics;
    dc.GetTextMetrics(&metrics);
    return metrics.tmHeight;
}

TEST_F(ListBoxTest, DrawnRowsGetTheFontOfTheListElseOfTheDialog) {
    DrawnList drawn;
    ASSERT_TRUE(
        drawn.Create(WS_CHILD | WS_VISIBLE | LBS_OWNERDRAWFIXED | LBS_HASSTRINGS, {0, 0, 120, 100}, &top, 1));
    drawn.AddString("a");
    Show();
    const std::vector<int> plain = Paint(drawn);
    ASSERT_EQ(plain.size(), 2U);
    CFont ofDialog;
    ofDialog.CreatePointFont(180, "Arial");
    CFont ofList;
    ofList.CreatePointFont(300, "Arial");
    ASSERT_LT(plain[0], HeightOf(ofDialog));
    ASSERT_LT(HeightOf(ofDialog), HeightOf(ofList));
    top.SetFont(&ofDialog);
    EXPECT_EQ(Paint(drawn), std::vector<int>(2, HeightOf(ofDialog)));
    drawn.SetFont(&ofList);
    EXPECT_EQ(Paint(drawn), std::vector<int>(2, HeightOf(ofList)));
    drawn.SetFont(nullptr);
    top.SetFont(nullptr);
    EXPECT_EQ(Paint(drawn), plain);
}

TEST_F(ListBoxTest, FontOfAWindowOutlivesTheObjectItWasSetBy) {
    DrawnList drawn;
    ASSERT_TRUE(
        drawn.Create(WS_CHILD | WS_VISIBLE | LBS_OWNERDRAWFIXED | LBS_HASSTRINGS, {0, 0, 120, 100}, &top, 1));
    drawn.AddString("a");
    Show();
    int height = 0;
    {
        CFont font;
        font.CreatePointFont(240, "Arial");
        height = HeightOf(font);
        drawn.SetFont(&font);
    }
    EXPECT_EQ(Paint(drawn), std::vector<int>(2, height));
}

TEST_F(ListBoxTest, PressBelowTheLastRowSelectsNothingAndTellsOnce) {
    MakeList(3);
    Show();
    Press({30, 30});
    EXPECT_EQ(list.GetCurSel(), 1);
    EXPECT_EQ(top.changes, 1);
    top.SetFocus();
    Press({30, 70});
    EXPECT_EQ(list.GetCurSel(), LB_ERR);
    EXPECT_EQ(top.changes, 2);
    EXPECT_EQ(CWnd::GetFocus(), &list);
    Press({30, 70});
    EXPECT_EQ(top.changes, 2) << "nothing was selected before";
    QTest::keyClick(Window(), Qt::Key_Down);
    EXPECT_EQ(list.GetCurSel(), 0) << "the keyboard begins anew";
}

TEST_F(ListBoxTest, HandlerOfThePressSeesTheSelectionCleared) {
    MakeList(3);
    Show();
    list.SetCurSel(2);
    QTest::mousePress(Window(), Qt::LeftButton, Qt::NoModifier, QPoint(40, 90));
    EXPECT_EQ(list.GetCurSel(), LB_ERR);
    EXPECT_EQ(top.changes, 1);
    QTest::mouseRelease(Window(), Qt::LeftButton, Qt::NoModifier, QPoint(40, 90));
    EXPECT_EQ(list.GetCurSel(), LB_ERR);
    EXPECT_EQ(top.changes, 1);
    list.SetCurSel(1);
    list.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(30, 70));
    EXPECT_EQ(list.GetCurSel(), LB_ERR) << "by the program's own press too";
    list.SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(30, 70));
}

TEST_F(ListBoxTest, ExactSearchPrefersTheSameCase) {
    MakeList(0);
    CComboBox combo;
    ASSERT_TRUE(combo.Create(WS_CHILD | CBS_DROPDOWN, {0, 0, 100, 200}, &top, 2));
    for (const char* text : {"WAVE", "Wave", "wave", "Wave", "Waves", "\u00C4RM", "\u00E4rm"}) {
        list.AddString(text);
        combo.AddString(text);
    }
    EXPECT_EQ(list.FindStringExact(-1, "wave"), 2);
    EXPECT_EQ(combo.FindStringExact(-1, "wave"), 2);
    EXPECT_EQ(list.FindStringExact(1, "Wave"), 3);
    EXPECT_EQ(list.FindStringExact(3, "Wave"), 1) << "round the end";
    EXPECT_EQ(list.FindStringExact(-1, "\u00E4rm"), 6);
    EXPECT_EQ(list.FindStringExact(1, "wAvE"), 2) << "none is the same, so the next in any case";
    EXPECT_EQ(combo.FindStringExact(-1, "wAvE"), 0);
    EXPECT_EQ(list.FindStringExact(-1, "Wav"), LB_ERR);
    EXPECT_EQ(list.FindString(-1, "waves"), 4) << "the beginning of a text has no case";
    EXPECT_EQ(list.FindString(-1, "wa"), 0);
}

// 122 pixels less the frame hold five whole rows: 20 rows have tops up to 15.
TEST_F(ListBoxTest, TopRowIsExactBeforeTheListEverShows) {
    MakeList(20);
    EXPECT_EQ(list.GetTopIndex(), 0);
    list.SetTopIndex(7);
    EXPECT_EQ(list.GetTopIndex(), 7);
    CRect r;
    ASSERT_EQ(list.GetItemRect(8, &r), 0);
    EXPECT_EQ(r.top, 20);
    EXPECT_EQ(r.bottom, 40);
    ASSERT_EQ(list.GetItemRect(6, &r), 0);
    EXPECT_EQ(r.top, -20);
    list.SetTopIndex(19);
    EXPECT_EQ(list.GetTopIndex(), 15);
    list.SetTopIndex(20);
    EXPECT_EQ(list.GetTopIndex(), 15) << "no such row";
    list.SetTopIndex(4);
    Show();
    QCoreApplication::processEvents();
    EXPECT_EQ(list.GetTopIndex(), 4);
    ASSERT_EQ(list.GetItemRect(4, &r), 0);
    EXPECT_EQ(r.top, 0);
}

TEST_F(ListBoxTest, ShowingKeepsTheTopRowWhereverTheSelectionIs) {
    MakeList(20);
    list.SetCurSel(1);
    list.SetTopIndex(9);
    Show();
    QCoreApplication::processEvents();
    EXPECT_EQ(list.GetTopIndex(), 9);
    top.ShowWindow(SW_HIDE);
    list.SetCurSel(19);
    EXPECT_EQ(list.GetTopIndex(), 15) << "a new selection comes into view, hidden or not";
}

TEST_F(ListBoxTest, HiddenListFollowsItsNewSizeAtOnce) {
    MakeList(20);
    list.SetTopIndex(15);
    list.MoveWindow(10, 10, 120, 212); // 10 whole rows and the frame
    EXPECT_EQ(list.GetTopIndex(), 10);
    CRect client;
    list.GetClientRect(&client);
    CRect r;
    list.GetItemRect(10, &r);
    EXPECT_EQ(r, CRect(0, 0, client.right, 20));
}

TEST_F(ListBoxTest, RowsHaveTheirPlaceRightAfterARefill) {
    MakeList(20);
    Show();
    for (const int rows : {3, 20, 7}) {
        list.ResetContent();
        Fill(rows);
        CRect client;
        list.GetClientRect(&client);
        CRect r;
        ASSERT_EQ(list.GetItemRect(rows - 1, &r), 0);
        EXPECT_EQ(r.top, 20 * (rows - 1));
        EXPECT_EQ(r.Height(), 20);
    }
    list.SetItemHeight(0, 30);
    CRect r;
    ASSERT_EQ(list.GetItemRect(2, &r), 0);
    EXPECT_EQ(r.top, 60);
}

TEST_F(ListBoxTest, RefillWithoutDrawingKeepsTheTopRow) {
    MakeList(20);
    Show();
    list.SetCurSel(2);
    list.SetTopIndex(6);
    list.SetRedraw(FALSE);
    list.ResetContent();
    Fill(20);
    list.SetCurSel(2);
    list.SetRedraw(TRUE);
    EXPECT_EQ(list.GetTopIndex(), 6) << "the same row is selected, which did not show before";
    list.SetRedraw(FALSE);
    list.ResetContent();
    Fill(20);
    list.SetCurSel(12);
    list.SetRedraw(TRUE);
    EXPECT_EQ(list.GetTopIndex(), 8) << "12 is the last of five rows";
    list.SetRedraw(FALSE);
    list.ResetContent();
    Fill(20);
    list.SetTopIndex(3);
    list.SetCurSel(19);
    list.SetRedraw(TRUE);
    EXPECT_EQ(list.GetTopIndex(), 3) << "as the program said";
    list.SetRedraw(FALSE);
    list.ResetContent();
    Fill(6);
    list.SetRedraw(TRUE);
    EXPECT_EQ(list.GetTopIndex(), 1) << "of six rows five fit";
}

TEST_F(ListBoxTest, RefillWithoutDrawingPaintsOnceAndTheSame) {
    DrawnList drawn;
    ASSERT_TRUE(
        drawn.Create(WS_CHILD | WS_VISIBLE | LBS_OWNERDRAWFIXED | LBS_HASSTRINGS, {0, 0, 120, 100}, &top, 1));
    const auto fill = [&drawn] {
        for (int i = 0; i < 20; ++i) {
            drawn.AddString("a");
        }
    };
    fill();
    Show();
    drawn.SetTopIndex(4);
    const QImage before = NativeWidget(drawn)->grab().toImage();
    QCoreApplication::processEvents();
    drawn.heights.clear();
    drawn.SetRedraw(FALSE);
    drawn.ResetContent();
    QCoreApplication::processEvents();
    fill();
    QCoreApplication::processEvents();
    EXPECT_TRUE(drawn.heights.empty());
    drawn.SetRedraw(TRUE);
    QCoreApplication::processEvents();
    EXPECT_FALSE(drawn.heights.empty());
    EXPECT_EQ(NativeWidget(drawn)->grab().toImage(), before);
}

} // namespace
