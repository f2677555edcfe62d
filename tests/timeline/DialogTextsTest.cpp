// No text of a dialog is cut, on plain screens and on dense ones.
#include "framework/Dialog.h"
#include "framework/QtBridge.h"
#include "framework/Resource.h"
#include "plugin/base/PluginResources.h"
#include "resources/resource.h"

#include <gtest/gtest.h>
#include <QAbstractButton>
#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QProcess>
#include <QStyle>

namespace {

/// The dialog's texts that need more room than their control has, or lie outside of the dialog.
std::vector<std::string> CutTexts(const QWidget& window) {
    std::vector<std::string> cut;
    const auto check = [&](const QWidget& control, const QString& text, int besideIt) {
        const QSize size = control.fontMetrics().size(Qt::TextShowMnemonic, text);
        const bool isInside = window.rect().contains(control.geometry());
        if (!text.isEmpty() &&
            (!isInside || size.width() + besideIt > control.width() || size.height() > control.height())) {
            cut.push_back(text.toStdString());
        }
    };
    const QStyle& style = *window.style();
    const int indicator =
        style.pixelMetric(QStyle::PM_IndicatorWidth) + style.pixelMetric(QStyle::PM_CheckBoxLabelSpacing);
    constexpr int kFrame = 3; // pixels of a button's edge at each side
    for (const QLabel* label : window.findChildren<QLabel*>()) {
        check(*label, label->text(), 0);
    }
    for (const QAbstractButton* button : window.findChildren<QAbstractButton*>()) {
        check(*button, button->text(), button->isCheckable() ? indicator : 2 * kFrame);
    }
    for (const QGroupBox* box : window.findChildren<QGroupBox*>()) {
        check(*box, box->title(), 2 * indicator);
    }
    return cut;
}

class DialogTextsTest : public testing::TestWithParam<UINT> {};

TEST_P(DialogTextsTest, NoneIsCut) {
    const ResourceScope resources(PluginResources());
    CDialog frame; // of the page that is a child window
    ASSERT_TRUE(frame.Create(IDD_EMPTY));
    CDialog dialog;
    ASSERT_TRUE(dialog.Create(GetParam(), &frame));
    const QWidget& window = *NativeWidget(dialog);
    EXPECT_EQ(CutTexts(window), std::vector<std::string>());
    dialog.DestroyWindow();
    frame.DestroyWindow();
}

INSTANTIATE_TEST_SUITE_P(All, DialogTextsTest,
                         testing::Values(IDD_MOVIES, IDD_MAIN_CTRL_SETTINGS, IDD_KEYS_FILTER,
                                         IDD_FILTER_TRACKS, IDD_CHOOSE_CAMERA, IDD_CAMERA_PARAMETERS,
                                         IDD_TRACK_PARAMETERS, IDD_EMPTY, IDD_ADD_CAMERA, IDD_MOVIE_FRAME,
                                         IDD_FX_NAME, IDD_ATTACH_OBJECT, IDD_ADJUST_TIME,
                                         IDD_KEY_ATTRIBUTES));

TEST(CutTextsTest, ATextThatNeedsMoreRoomIsTold) {
    QWidget window;
    window.resize(200, 40);
    QLabel label("A text that is long", &window);
    label.setGeometry(0, 0, label.sizeHint().width(), 20);
    EXPECT_EQ(CutTexts(window), std::vector<std::string>());
    label.resize(label.fontMetrics().horizontalAdvance(label.text()) - 1, 20);
    EXPECT_EQ(CutTexts(window), std::vector<std::string>{"A text that is long"});
}

// The scale is fixed when an application starts, so that another one has to look.
constexpr const char* kDenseScreen = "FILMS_DENSE_SCREEN";

TEST(DialogTextsOnDenseScreensTest, NoneIsCut) {
    if (qEnvironmentVariableIsSet(kDenseScreen)) {
        EXPECT_EQ(qApp->devicePixelRatio(), 2.0); // this is the other application
        return;
    }
    QProcess other;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_SCALE_FACTOR", "2");
    environment.insert(kDenseScreen, "1");
    for (const char* runner : {"GTEST_OUTPUT", "GTEST_TOTAL_SHARDS", "GTEST_SHARD_INDEX", "GTEST_SHUFFLE"}) {
        environment.remove(runner);
    }
    other.setProcessEnvironment(environment);
    other.start(QCoreApplication::applicationFilePath(),
                {"--gtest_filter=All/DialogTextsTest.*:DialogTextsOnDenseScreensTest.*"});
    ASSERT_TRUE(other.waitForFinished(120000));
    const QByteArray report = other.readAllStandardOutput();
    EXPECT_EQ(other.exitCode(), 0) << report.toStdString();
    EXPECT_TRUE(report.contains("[  PASSED  ] 15 tests")) << report.toStdString();
}

} // namespace
