#include "framework/MessageBox.h"

#include "framework/ColorDialog.h"
#include "framework/QtBridge.h"
#include "framework/Resource.h"
#include "framework/TestHooks.h"
#include "framework/Wnd.h"
#include "TestResources.h"

#include <gtest/gtest.h>
#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include <memory>
#include <string>
#include <vector>

namespace {

class MessageBoxTest : public testing::Test {
protected:
    ResourceScope scope{TestResources()};
    HookScope hooks;
};

TEST_F(MessageBoxTest, MessageBoxTakesTextOrNumberAndAnswers) {
    std::vector<std::string> said;
    Hooks().messageBox = [&said](const std::string& text, UINT type) {
        said.push_back(text + " " + std::to_string(type));
        return IDYES;
    };
    EXPECT_EQ(AfxMessageBox("Really?", MB_YESNO), IDYES);
    EXPECT_EQ(AfxMessageBox(36846), IDYES);
    EXPECT_EQ(said, (std::vector<std::string>{"Really? 4", "Create camera frame 0"}));
}

TEST_F(MessageBoxTest, MessageBoxTakesTheMouseFromWhoeverHasIt) {
    CWnd window;
    window.Create(nullptr, "", WS_POPUP, CRect(0, 0, 50, 50), nullptr, 0);
    window.SetCapture();
    const CWnd* holder = &window;
    Hooks().messageBox = [&holder](const std::string&, UINT) {
        holder = CWnd::GetCapture();
        return IDYES;
    };
    AfxMessageBox("Really?", MB_YESNO);
    EXPECT_EQ(holder, nullptr);
}

TEST_F(MessageBoxTest, RealMessageBoxReturnsThePressedButton) {
    const auto press = [](QMessageBox::StandardButton which) {
        QTimer::singleShot(0, [which] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            box->button(which)->click();
        });
    };
    press(QMessageBox::No);
    EXPECT_EQ(AfxMessageBox("Really?", MB_YESNO), IDNO);
    press(QMessageBox::Cancel);
    EXPECT_EQ(AfxMessageBox("Really?", MB_OKCANCEL), IDCANCEL);
    press(QMessageBox::Ok);
    EXPECT_EQ(AfxMessageBox("So it is", MB_ICONEXCLAMATION), IDOK);
}

TEST_F(MessageBoxTest, RealBoxThatGoesWithItsWindowIsCancelled) {
    for (const bool colour : {false, true}) {
        auto window = std::make_unique<CWnd>();
        window->Create(nullptr, "", WS_POPUP | WS_VISIBLE, CRect(0, 0, 50, 50), nullptr, 0);
        QWidget* native = NativeWidget(*window);
        QApplication::setActiveWindow(native);
        QWidget* parentOfBox = nullptr;
        QTimer::singleShot(0, [native, &parentOfBox] {
            QWidget* box = QApplication::activeModalWidget();
            parentOfBox = box->parentWidget();
            delete (parentOfBox == native ? native : box);
        });
        if (colour) {
            CColorDialog dialog(RGB(1, 2, 3), 0, window.get());
            EXPECT_EQ(dialog.DoModal(), IDCANCEL);
            EXPECT_EQ(dialog.GetColor(), RGB(1, 2, 3));
        } else {
            EXPECT_EQ(AfxMessageBox("Really?", MB_YESNO), IDNO);
        }
        EXPECT_EQ(parentOfBox, native);
    }
}

} // namespace
