#include "framework/ComboBox.h"
#include "framework/Dialog.h"
#include "framework/Edit.h"
#include "framework/ListBox.h"
#include "framework/QtBridge.h"
#include "framework/Resource.h"
#include "TestResources.h"

#include <gtest/gtest.h>
#include <QApplication>
#include <QFont>
#include <QFontMetrics>
#include <QWidget>

namespace {

QFont FontOf(const CWnd& window) {
    return NativeWidget(window)->font();
}

class MeasuringList : public CListBox {
public:
    int height = 0;

protected:
    void DrawItem(DRAWITEMSTRUCT* item) override {
        TEXTMETRIC metrics;
        item->hDC->GetTextMetrics(&metrics);
        height = metrics.tmHeight;
    }
};

class DialogFontTest : public testing::Test {
protected:
    ResourceScope scope{TestResources()};
    CDialog dlg;
};

// 18 points are 18 * 96 / 72 = 24 pixels.
TEST_F(DialogFontTest, WindowAndControlsTakeTheFontOfTheTemplate) {
    ASSERT_TRUE(dlg.Create(1790));
    for (const int id : {0, 10, 11, 12, 13, 14, 15}) {
        const CWnd* window = id == 0 ? &dlg : dlg.GetDlgItem(id);
        ASSERT_NE(window, nullptr) << id;
        const QFont font = FontOf(*window);
        EXPECT_EQ(font.pixelSize(), 24) << id;
        EXPECT_TRUE(font.bold()) << id;
        EXPECT_TRUE(font.italic()) << id;
        EXPECT_EQ(font.families().front(), "Arial") << id;
        EXPECT_TRUE(font.families().contains("Liberation Sans")) << id << ": what stands in for it";
        EXPECT_EQ(window->GetFont()->pixelHeight, 24) << id;
        EXPECT_EQ(window->GetFont()->face, "Arial") << id;
        EXPECT_TRUE(window->GetFont()->bold) << id;
    }
}

TEST_F(DialogFontTest, PlacesAreTheSameWithAnyFont) {
    ASSERT_TRUE(dlg.Create(1790));
    CRect r;
    dlg.GetClientRect(&r);
    EXPECT_EQ(r, CRect(0, 0, 300, 162)); // 200 * 6 / 4 by 100 * 13 / 8
    dlg.GetDlgItem(15)->GetWindowRect(&r);
    dlg.ScreenToClient(&r);
    EXPECT_EQ(r, CRect(150, 130, 225, 152));
}

TEST_F(DialogFontTest, ClosedComboIsAsHighAsItsFontNeeds) {
    ASSERT_TRUE(dlg.Create(1790));
    CRect r;
    dlg.GetDlgItem(14)->GetClientRect(&r);
    EXPECT_GE(r.Height(), 24);
    EXPECT_LT(r.Height(), 50) << "not the rect of the open list";
}

TEST_F(DialogFontTest, OldTemplatesHaveOneTooAndNoneIsTheApplications) {
    ASSERT_TRUE(dlg.Create(1791));
    EXPECT_EQ(FontOf(*dlg.GetDlgItem(15)).pixelSize(), 16); // 12 * 96 / 72
    EXPECT_FALSE(FontOf(*dlg.GetDlgItem(15)).bold());
    CDialog plain;
    ASSERT_TRUE(plain.Create(1792));
    EXPECT_EQ(FontOf(*plain.GetDlgItem(15)).pixelSize(), 12);
}

TEST_F(DialogFontTest, SystemsOwnNameIsTheApplicationsFace) {
    ASSERT_TRUE(dlg.Create(1749));
    EXPECT_EQ(FontOf(*dlg.GetDlgItem(1)).families(), QApplication::font().families());
    EXPECT_EQ(FontOf(*dlg.GetDlgItem(1)).pixelSize(), 11); // 8 * 96 / 72 = 10.7
}

TEST_F(DialogFontTest, ListTakenOverDrawsItsRowsInTheFontOfTheTemplate) {
    ASSERT_TRUE(dlg.Create(1790));
    MeasuringList list;
    ASSERT_TRUE(list.SubclassDlgItem(13, &dlg));
    list.AddString("a");
    NativeWidget(list)->grab();
    EXPECT_EQ(list.height, QFontMetrics(FontOf(list)).height());
    EXPECT_GT(list.height, 24);
    EXPECT_EQ(list.GetFont()->pixelHeight, 24);
    CEdit editor;
    ASSERT_TRUE(editor.Create(WS_CHILD, {0, 0, 10, 10}, &list, 0));
    editor.SetFont(list.GetFont());
    EXPECT_EQ(FontOf(editor), FontOf(list));
}

} // namespace
