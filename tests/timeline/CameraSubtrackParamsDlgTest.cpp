#include "files/CameraSubtrackParamsDlg.h"

#include "resources/resource.h"
#include "tests/support/Golden.h"
#include "tests/timeline/CameraDialogFixture.h"

#include <gmock/gmock.h>
#include <QImage>
#include <QTest>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

constexpr int kLength = 1803;
constexpr int kFirstMode = 1804;

/// Lengths 1, 2, 3, 4 and modes 0, 1, 2, 3 of the kinds 16 to 19.
class CameraSubtrackParamsDlgTest : public CameraDialogTest {
protected:
    CameraSubtrackParamsDlgTest() {
        for (int i = 0; i < 4; ++i) {
            bridge->loopMode[i] = i;
            bridge->subTrackLength[i] = static_cast<float>(i + 1);
        }
        dialog.track = bridge;
        dialog.kind = KeyKind::CameraPosition;
    }
    int Run(const std::function<void()>& user) { return RunDialog(dialog, user); }
    std::vector<int> Checked() const {
        std::vector<int> modes;
        for (int mode = 0; mode < 4; ++mode) {
            if (IsChecked(kFirstMode + mode)) {
                modes.push_back(mode);
            }
        }
        return modes;
    }
    CTrackCtrl* BridgeRow(int kind) { return RowOf("Bridge", kind); }

    CCameraSubtrackParamsDlg dialog{plugin};
};

} // namespace

TEST_F(CameraSubtrackParamsDlgTest, ShowsTheSubTrackOfItsKind) {
    for (int i = 0; i < 4; ++i) {
        dialog.kind = KeyKind::CameraPosition + i;
        Run([&] {
            EXPECT_EQ(dialog.GetWindowText(), "Track parameters");
            EXPECT_THAT(Checked(), ElementsAre(i));
            EXPECT_EQ(Text(kLength), std::to_string(i + 1));
            Key(Qt::Key_Escape);
        });
    }
}

TEST_F(CameraSubtrackParamsDlgTest, BeginsWithTheKindOfARootRow) {
    const CCameraSubtrackParamsDlg fresh(plugin);
    EXPECT_EQ(fresh.track, nullptr);
    EXPECT_EQ(fresh.kind, 21);
}

TEST_F(CameraSubtrackParamsDlgTest, OtherKindsShowZerosAndChangeNothing) {
    for (const int kind : {KeyKind::Color, 15, 20, KeyKind::None, -1}) {
        dialog.kind = kind;
        EXPECT_EQ(Run([&] {
                      EXPECT_EQ(Text(kLength), "0");
                      EXPECT_THAT(Checked(), ElementsAre(0));
                      Click(kFirstMode + 3);
                      Type(kLength, "9");
                      Click(IDOK);
                  }),
                  IDOK);
    }
    EXPECT_THAT(bridge->loopMode, ElementsAre(0, 1, 2, 3));
    EXPECT_THAT(bridge->subTrackLength, ElementsAre(1.0f, 2.0f, 3.0f, 4.0f));
    EXPECT_THAT(boxes, IsEmpty());
}

TEST_F(CameraSubtrackParamsDlgTest, OkWritesTheTwoFieldsOfItsKindAlone) {
    dialog.kind = KeyKind::Roll;
    EXPECT_EQ(Run([this] {
                  Click(kFirstMode + 3);
                  EXPECT_THAT(Checked(), ElementsAre(3));
                  Type(kLength, "7.5");
                  Click(IDOK);
              }),
              IDOK);
    EXPECT_THAT(bridge->loopMode, ElementsAre(0, 1, 3, 3));
    EXPECT_THAT(bridge->subTrackLength, ElementsAre(1.0f, 2.0f, 7.5f, 4.0f));
    EXPECT_THAT(deck->loopMode, ElementsAre(0, 0, 0, 0));
}

TEST_F(CameraSubtrackParamsDlgTest, ArrowsChooseTheMode) {
    EXPECT_EQ(Run([this] {
                  dialog.GetDlgItem(kFirstMode)->SetFocus();
                  Key(Qt::Key_Down);
                  EXPECT_THAT(Checked(), ElementsAre(1));
                  Key(Qt::Key_Up);
                  Key(Qt::Key_Up); // round
                  EXPECT_THAT(Checked(), ElementsAre(3));
                  Key(Qt::Key_Return);
              }),
              IDOK);
    EXPECT_EQ(bridge->loopMode[0], 3);
}

TEST_F(CameraSubtrackParamsDlgTest, CancelAndEscapeTakeNothing) {
    for (const bool escapes : {false, true}) {
        EXPECT_EQ(Run([&] {
                      Click(kFirstMode + 2);
                      Type(kLength, "9");
                      if (escapes) {
                          Key(Qt::Key_Escape);
                      } else {
                          Click(IDCANCEL);
                      }
                  }),
                  IDCANCEL);
    }
    EXPECT_THAT(bridge->loopMode, ElementsAre(0, 1, 2, 3));
    EXPECT_THAT(bridge->subTrackLength, ElementsAre(1.0f, 2.0f, 3.0f, 4.0f));
}

TEST_F(CameraSubtrackParamsDlgTest, EnterInEachFieldIsOk) {
    for (const int id : {kLength, kFirstMode, kFirstMode + 3}) {
        EXPECT_EQ(Run([&] {
                      Click(id);
                      Key(Qt::Key_Return);
                  }),
                  IDOK);
    }
}

TEST_F(CameraSubtrackParamsDlgTest, WhatIsNoNumberIsRefused) {
    for (const char* text : {"soon", "", "nan", "-inf", "1e39"}) {
        boxes.clear();
        EXPECT_EQ(Run([&] {
                      Type(kLength, text);
                      Click(IDOK);
                      EXPECT_TRUE(dialog.IsWindowVisible());
                      EXPECT_THAT(boxes, ElementsAre("Please enter a number."));
                      Key(Qt::Key_Escape);
                  }),
                  IDCANCEL);
    }
    EXPECT_EQ(bridge->subTrackLength[0], 1.0f);
}

TEST_F(CameraSubtrackParamsDlgTest, LengthLeftAloneStaysToTheLastBit) {
    bridge->subTrackLength[0] = 12.345678f;
    EXPECT_EQ(Run([this] {
                  EXPECT_EQ(Text(kLength), "12.3457");
                  Click(IDOK);
              }),
              IDOK);
    EXPECT_EQ(bridge->subTrackLength[0], 12.345678f);
}

TEST_F(CameraSubtrackParamsDlgTest, CameraThatGoesWhileItIsOpenIsTold) {
    EXPECT_EQ(Run([this] {
                  control->RemoveTrackCtrl(RowOf("Bridge"), true);
                  Click(IDOK);
                  EXPECT_THAT(boxes, ElementsAre("Cannot find film."));
                  plugin.DeleteFilm(film);
                  Click(IDOK);
                  EXPECT_EQ(boxes.size(), 2u);
                  Click(IDCANCEL);
              }),
              IDCANCEL);
}

TEST_F(CameraSubtrackParamsDlgTest, CommandOpensItForTheKindOfTheRow) {
    RunCommand(IDC_TRACK_PARAMETERS, BridgeRow(KeyKind::CameraTarget), [this] {
        EXPECT_EQ(Text(kLength), "2");
        Type(kLength, "5");
        Click(IDOK);
    });
    RunCommand(IDC_TRACK_PARAMETERS, BridgeRow(KeyKind::FieldOfView), [this] {
        EXPECT_EQ(Text(kLength), "4");
        Type(kLength, "6");
        Click(IDOK);
    });
    EXPECT_THAT(bridge->subTrackLength, ElementsAre(1.0f, 5.0f, 3.0f, 6.0f));
}

TEST_F(CameraSubtrackParamsDlgTest, CameraStandsAtOnceWhereTheLoopPutsIt) {
    for (int i = 0; i < 3; ++i) {
        auto* key =
            static_cast<CFilmVectorKey*>(AddKey(bridge, KeyKind::CameraPosition, static_cast<float>(i)));
        const float place[] = {static_cast<float>(10 * i), 0.0f, 0.0f};
        key->SetValue(place);
        key->SetInMethod(BezierMethod::Linear);
        key->SetOutMethod(BezierMethod::Linear);
    }
    bridge->loopMode[0] = LoopMode::None;
    control->ShowFilm(film, true);
    plugin.SetTime(3.0f, /*fromWindow*/ false);
    ASSERT_EQ(bridge->eyePoint.x, 20.0f); // constant behind the last key
    RunCommand(IDC_TRACK_PARAMETERS, BridgeRow(KeyKind::CameraPosition), [this] {
        Click(kFirstMode + LoopMode::Loop);
        Type(kLength, "2");
        Click(IDOK);
    });
    EXPECT_NEAR(bridge->eyePoint.x, 10.0f, 1e-5f); // 3 seconds into a loop of 2
    EXPECT_EQ(plugin.currentTime, 3.0f);
}

TEST_F(CameraSubtrackParamsDlgTest, OnlyRowsBelowACameraOpenIt) {
    Hooks().modalDialog = [](CDialog&) {
        ADD_FAILURE() << "a dialog came up";
        return IDCANCEL;
    };
    for (CTrackCtrl* row : {static_cast<CTrackCtrl*>(nullptr), RowOf("Bridge"),
                            RowOf("Level", KeyKind::Camera, 0), RowOf("Level")}) {
        control->menuRow = row;
        control->OnCmdMsg(IDC_TRACK_PARAMETERS, 0, nullptr, nullptr);
    }
}

TEST_F(CameraSubtrackParamsDlgTest, ControlThatGoesWhileItIsOpenEndsItWell) {
    RunCommand(IDC_TRACK_PARAMETERS, BridgeRow(KeyKind::Roll), [this] {
        plugin.scenarioDlg = nullptr;
        control.reset();
        Settle();
        if (shown->GetSafeHwnd() != nullptr && shown->IsWindowVisible()) {
            Click(IDOK);
        }
    });
    EXPECT_EQ(control, nullptr);
}

TEST_F(CameraSubtrackParamsDlgTest, EverythingStandsInsideAndApart) {
    Run([this] {
        ExpectTidy();
        Key(Qt::Key_Escape);
    });
}

TEST_F(CameraSubtrackParamsDlgTest, Picture) {
    Run([this] {
        dialog.GetDlgItem(IDOK)->SetFocus(); // no caret
        ExpectGolden(PictureOf(dialog), "tests/timeline", "track_parameters", TextAreas());
        Key(Qt::Key_Escape);
    });
}
