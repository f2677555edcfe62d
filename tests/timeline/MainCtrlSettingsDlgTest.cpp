#include "files/MainCtrlSettingsDlg.h"

#include "framework/QtBridge.h"
#include "framework/Resource.h"
#include "framework/TestHooks.h"
#include "plugin/base/PluginResources.h"
#include "resources/resource.h"

#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QWidget>

using ::testing::ElementsAre;

namespace {

class MainCtrlSettingsDlgTest : public ::testing::Test {
protected:
    MainCtrlSettingsDlgTest() {
        Hooks().messageBox = [this](const std::string& text, UINT) {
            boxes.push_back(text);
            return IDOK;
        };
        dialog.begin = 0.5f;
        dialog.end = 12.25f;
        dialog.interval = 3.0f;
        dialog.bigTics = 5;
        dialog.labelDistance = 2;
        dialog.ticsDistance = 15;
    }
    /// Opens the dialog and lets the user work on it.
    int Run(const std::function<void()>& user) {
        Hooks().modalDialog = [&user](CDialog&) {
            user();
            return IDCANCEL;
        };
        return dialog.DoModal();
    }
    void Press(UINT button) { dialog.SendMessage(WM_COMMAND, button); }

    HookScope hooks;
    ResourceScope resources{PluginResources()};
    std::vector<std::string> boxes;
    CMainCtrlSettingsDlg dialog;
};

} // namespace

TEST_F(MainCtrlSettingsDlgTest, ShowsItsFields) {
    Run([this] {
        EXPECT_EQ(dialog.GetWindowText(), "Settings");
        EXPECT_EQ(dialog.GetDlgItemText(1758), "0.5");
        EXPECT_EQ(dialog.GetDlgItemText(1759), "12.25");
        EXPECT_EQ(dialog.GetDlgItemText(1760), "3");
        EXPECT_EQ(dialog.GetDlgItemText(1773), "5");
        EXPECT_EQ(dialog.GetDlgItemText(1774), "2");
        EXPECT_EQ(dialog.GetDlgItemText(1772), "15");
    });
}

TEST_F(MainCtrlSettingsDlgTest, OkTakesWhatWasTyped) {
    const int result = Run([this] {
        dialog.SetDlgItemText(1758, "-2.5");
        dialog.SetDlgItemText(1759, "1e9");
        dialog.SetDlgItemText(1760, "0.001");
        dialog.SetDlgItemText(1773, "0");
        dialog.SetDlgItemText(1774, "-1");
        dialog.SetDlgItemText(1772, "2147483647");
        Press(IDOK);
    });
    EXPECT_EQ(result, IDOK);
    EXPECT_EQ(dialog.begin, -2.5f);
    EXPECT_EQ(dialog.end, 1.0e9f);
    EXPECT_EQ(dialog.interval, 0.001f);
    EXPECT_EQ(dialog.bigTics, 0);
    EXPECT_EQ(dialog.labelDistance, -1);
    EXPECT_EQ(dialog.ticsDistance, 2147483647);
}

TEST_F(MainCtrlSettingsDlgTest, CancelTakesNothing) {
    EXPECT_EQ(Run([this] {
                  dialog.SetDlgItemText(1758, "7");
                  Press(IDCANCEL);
              }),
              IDCANCEL);
    EXPECT_EQ(dialog.begin, 0.5f);
}

TEST_F(MainCtrlSettingsDlgTest, TextThatIsNoNumberKeepsTheDialogOpen) {
    Run([this] {
        dialog.SetDlgItemText(1758, "soon");
        Press(IDOK);
        EXPECT_TRUE(dialog.IsWindowVisible());
        dialog.SetDlgItemText(1758, "1");
        dialog.SetDlgItemText(1773, "2.5");
        Press(IDOK);
        EXPECT_TRUE(dialog.IsWindowVisible());
    });
    EXPECT_THAT(boxes, ElementsAre("Please enter a number.", "Please enter an integer."));
    EXPECT_EQ(dialog.bigTics, 5);
}

TEST_F(MainCtrlSettingsDlgTest, NumbersThatAreNoTimesKeepTheDialogOpen) {
    const std::pair<UINT, const char*> cases[] = {
        {1758, "-1e99"}, {1759, "inf"}, {1760, "nan"}, {1759, "3e38"}}; // the last is too far from the begin
    Run([&] {
        for (const auto& [id, text] : cases) {
            dialog.SetDlgItemText(1758, "-3e38");
            dialog.SetDlgItemText(1759, "1");
            dialog.SetDlgItemText(1760, "2");
            dialog.SetDlgItemText(static_cast<int>(id), text);
            boxes.clear();
            Press(IDOK);
            EXPECT_TRUE(dialog.IsWindowVisible()) << text;
            EXPECT_THAT(boxes, ElementsAre("Please enter a number.")) << text;
            EXPECT_EQ(dialog.GetDlgItemText(static_cast<int>(id)), text);
        }
        dialog.SetDlgItemText(1758, "0");
        Press(IDOK);
    });
    EXPECT_EQ(dialog.end, 3e38f);
}

TEST_F(MainCtrlSettingsDlgTest, EveryFieldStandsInItsGroup) {
    Run([this] {
        std::map<QString, QRect> groups;
        for (const QGroupBox* box : NativeWidget(dialog)->findChildren<QGroupBox*>()) {
            groups[box->title()] = box->geometry();
        }
        const auto isIn = [&](UINT id, const char* group) {
            return groups.count(group) != 0 &&
                   groups[group].contains(NativeWidget(*dialog.GetDlgItem(static_cast<int>(id)))->geometry());
        };
        EXPECT_EQ(groups.size(), 4U);
        EXPECT_TRUE(isIn(IDC_RANGE_BEGIN, "Movie length [s]"));
        EXPECT_TRUE(isIn(IDC_RANGE_END, "Movie length [s]"));
        EXPECT_TRUE(isIn(IDC_DRAW_INTERVAL, "Control draw range"));
        EXPECT_TRUE(isIn(IDC_TICS_DISTANCE, "Grid"));
        EXPECT_TRUE(isIn(IDC_BIG_TICS, "Grid"));
        EXPECT_TRUE(isIn(IDC_LABEL_DISTANCE, "Grid"));
        EXPECT_TRUE(groups["Time axis"].contains(groups["Movie length [s]"]));
        EXPECT_TRUE(groups["Time axis"].contains(groups["Control draw range"]));
    });
}

TEST_F(MainCtrlSettingsDlgTest, LabelsFitAndNoControlsOverlap) {
    Run([this] {
        std::vector<const QWidget*> controls;
        for (const QLabel* label : NativeWidget(dialog)->findChildren<QLabel*>()) {
            EXPECT_LE(label->fontMetrics().horizontalAdvance(label->text()), label->width())
                << label->text().toStdString();
            controls.push_back(label);
        }
        EXPECT_EQ(controls.size(), 6U);
        for (const QLineEdit* edit : NativeWidget(dialog)->findChildren<QLineEdit*>()) {
            controls.push_back(edit);
        }
        for (const QPushButton* button : NativeWidget(dialog)->findChildren<QPushButton*>()) {
            controls.push_back(button);
        }
        EXPECT_EQ(controls.size(), 14U);
        for (std::size_t a = 0; a < controls.size(); ++a) {
            EXPECT_TRUE(NativeWidget(dialog)->rect().contains(controls[a]->geometry()));
            for (std::size_t b = a + 1; b < controls.size(); ++b) {
                EXPECT_FALSE(controls[a]->geometry().intersects(controls[b]->geometry()));
            }
        }
    });
}
