#include "framework/ColorDialog.h"

#include "framework/TestHooks.h"

#include <gtest/gtest.h>
#include <QApplication>
#include <QColorDialog>
#include <QTimer>

#include <functional>

namespace {

// Runs the real dialog and answers it by `answer`, which must end it.
int Answer(CColorDialog& dialog, const std::function<void(QColorDialog&)>& answer) {
    QTimer::singleShot(0, [&answer] {
        auto* window = qobject_cast<QColorDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(window, nullptr);
        answer(*window);
    });
    return dialog.DoModal();
}

TEST(ColorDialogTest, CancelKeepsTheFirstColour) {
    const HookScope scope;
    CColorDialog dialog(0x123456, CC_RGBINIT | CC_FULLOPEN | CC_ANYCOLOR);
    Hooks().colorDialog = [](CColorDialog& d) {
        d.SetCurrentColor(0x0000FF);
        return IDCANCEL;
    };
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    EXPECT_EQ(dialog.GetColor(), 0x123456U);
    Hooks().colorDialog = nullptr;
    QTimer::singleShot(0, [] {
        auto* window = qobject_cast<QColorDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(window, nullptr);
        EXPECT_EQ(window->currentColor(), QColor(0x56, 0x34, 0x12));
        window->setCurrentColor(QColor(255, 0, 0));
        window->accept();
    });
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(dialog.GetColor(), 0x0000FFU);
}

TEST(ColorDialogTest, RealDialogBeginsWithTheColourAndCancelLeavesIt) {
    CColorDialog dialog(0x123456, CC_RGBINIT | CC_FULLOPEN);
    const int result = Answer(dialog, [](QColorDialog& window) {
        EXPECT_TRUE(window.testOption(QColorDialog::DontUseNativeDialog));
        EXPECT_FALSE(window.testOption(QColorDialog::ShowAlphaChannel));
        EXPECT_EQ(window.currentColor(), QColor(0x56, 0x34, 0x12));
        window.setCurrentColor(QColor(255, 0, 0));
        window.reject();
    });
    EXPECT_EQ(result, IDCANCEL);
    EXPECT_EQ(dialog.GetColor(), 0x123456U);
}

// The dialog thinks in hue and saturation too, where greys and dark colours are coarse.
TEST(ColorDialogTest, OkAtOnceChangesNoColour) {
    for (const COLORREF color : {0x000000U, 0xFFFFFFU, 0x010203U, 0x7F8081U, 0x000001U, 0xFEFF00U}) {
        CColorDialog dialog(color);
        EXPECT_EQ(Answer(dialog, [](QColorDialog& window) { window.accept(); }), IDOK);
        EXPECT_EQ(dialog.GetColor(), color);
    }
}

} // namespace
