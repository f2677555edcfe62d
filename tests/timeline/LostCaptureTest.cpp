// A gesture whose mouse another window takes: everything stays as it stands, and nothing is asked.
#include "framework/Menu.h"
#include "framework/MessageBox.h"
#include "framework/QtBridge.h"
#include "resources/resource.h"
#include "tests/support/MouseScript.h"
#include "tests/timeline/HeldGestureFixture.h"

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

enum class Loss { OtherWindow, WindowDeactivated, MessageBox, Menu, ModeCancelled };

constexpr const char* kLossNames[] = {"OtherWindow", "WindowDeactivated", "MessageBox", "Menu",
                                      "ModeCancelled"};

class LostCaptureTest : public HeldGestureTest,
                        public ::testing::WithParamInterface<std::tuple<Gesture, Loss>> {
protected:
    void Lose(Loss loss) {
        switch (loss) {
        case Loss::OtherWindow:
            control->infoWnd->SetCapture();
            ReleaseCapture();
            return;
        case Loss::WindowDeactivated: {
            QEvent deactivated(QEvent::WindowDeactivate);
            QCoreApplication::sendEvent(NativeWidget(frame), &deactivated);
            return;
        }
        case Loss::MessageBox:
            AfxMessageBox("Somebody else's", MB_OK);
            EXPECT_THAT(boxes, ElementsAre("Somebody else's"));
            boxes.clear();
            return;
        case Loss::Menu:
            Hooks().popupMenu = [](const CMenu&, CPoint) { return UINT{0}; };
            control->ShowContextMenu(0, 0, nullptr, nullptr);
            return;
        case Loss::ModeCancelled:
            if (CWnd* holding = CWnd::GetCapture()) {
                holding->SendMessage(WM_CANCELMODE);
            }
            return;
        }
    }
};

using LostCaptureOnceTest = HeldGestureTest;

} // namespace

TEST_P(LostCaptureTest, LeavesEverythingWhereItStands) {
    const auto [gesture, loss] = GetParam();
    const std::vector<std::string> before = Picture();
    Begin(gesture);
    const std::vector<std::string> held = Picture();
    if (gesture != Gesture::CloneDrag && gesture != Gesture::NamePress) {
        EXPECT_NE(held, before); // or there is nothing to lose
    }
    Lose(loss);
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
    ExpectNothingHeld();
    EXPECT_EQ(Picture(), held);
    MoveOnAndRelease();
    EXPECT_EQ(Picture(), held);
    EXPECT_THAT(boxes, IsEmpty());
    ExpectNothingHeld();
    ExpectNextGestureWorks();
}

TEST_F(LostCaptureOnceTest, MenuOverAHeldCloneOffersNothingToPaste) {
    for (const bool ofKey : {false, true}) {
        UINT pasteKey = 0;
        UINT pasteAttributes = 0;
        Hooks().popupMenu = [&](const CMenu& menu, CPoint) {
            pasteKey = menu.GetMenuState(IDC_PASTE_KEY, MF_BYCOMMAND);
            pasteAttributes = menu.GetMenuState(IDC_PASTE_ATTRIBUTES, MF_BYCOMMAND);
            return UINT{0};
        };
        Begin(Gesture::CloneDrag);
        ASSERT_TRUE(control->keyDuplicator.HasSource());
        control->ShowContextMenu(0, 0, bars, ofKey ? bars->keys[0] : nullptr);
        constexpr UINT kNoItem = ~0u;
        EXPECT_EQ(pasteKey, kNoItem);
        EXPECT_EQ(pasteAttributes, ofKey ? MF_DISABLED | MF_GRAYED : kNoItem);
        MoveOnAndRelease();
        ExpectNothingHeld();
    }
}

INSTANTIATE_TEST_SUITE_P(All, LostCaptureTest,
                         ::testing::Combine(::testing::ValuesIn(kAllGestures),
                                            ::testing::Values(Loss::OtherWindow, Loss::WindowDeactivated,
                                                              Loss::MessageBox, Loss::Menu,
                                                              Loss::ModeCancelled)),
                         [](const auto& test) {
                             return NameOf(std::get<0>(test.param)) + "To" +
                                    kLossNames[static_cast<int>(std::get<1>(test.param))];
                         });
