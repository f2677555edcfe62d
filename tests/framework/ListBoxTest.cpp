#include "framework/ListBox.h"

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

class ListBoxTest : public testing::Test {
protected:
    ListBoxTest() { top.Create(nullptr, "top", WS_POPUP | WS_CAPTION, {100, 100, 500, 400}, nullptr, 0); }

    void Show() {
        top.ShowWindow(SW_SHOW);
        ASSERT_TRUE(QTest::qWaitForWindowActive(NativeWidget(top)));
    }
    QWindow* Window() { return NativeWidget(top)->windowHandle(); }

    CWnd top;
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
    DrawnList list;
    ASSERT_TRUE(
        list.Create(WS_CHILD | WS_VISIBLE | LBS_OWNERDRAWFIXED | LBS_HASSTRINGS, {0, 0, 120, 100}, &top, 1));
    list.AddString("a");
    Show();
    const std::vector<int> plain = Paint(list);
    ASSERT_EQ(plain.size(), 2U);
    CFont ofDialog;
    ofDialog.CreatePointFont(180, "Arial");
    CFont ofList;
    ofList.CreatePointFont(300, "Arial");
    ASSERT_LT(plain[0], HeightOf(ofDialog));
    ASSERT_LT(HeightOf(ofDialog), HeightOf(ofList));
    top.SetFont(&ofDialog);
    EXPECT_EQ(Paint(list), std::vector<int>(2, HeightOf(ofDialog)));
    list.SetFont(&ofList);
    EXPECT_EQ(Paint(list), std::vector<int>(2, HeightOf(ofList)));
    list.SetFont(nullptr);
    top.SetFont(nullptr);
    EXPECT_EQ(Paint(list), plain);
}

TEST_F(ListBoxTest, FontOfAWindowOutlivesTheObjectItWasSetBy) {
    DrawnList list;
    ASSERT_TRUE(
        list.Create(WS_CHILD | WS_VISIBLE | LBS_OWNERDRAWFIXED | LBS_HASSTRINGS, {0, 0, 120, 100}, &top, 1));
    list.AddString("a");
    Show();
    int height = 0;
    {
        CFont font;
        font.CreatePointFont(240, "Arial");
        height = HeightOf(font);
        list.SetFont(&font);
    }
    EXPECT_EQ(Paint(list), std::vector<int>(2, height));
}

} // namespace
