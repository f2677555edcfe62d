#include "files/CameraParametersDlg.h"

#include "framework/UserNote.h"
#include "resources/resource.h"
#include "tests/support/FakeAttributes.h"
#include "tests/support/Golden.h"
#include "tests/timeline/CameraDialogFixture.h"

#include <gmock/gmock.h>
#include <QImage>
#include <QTest>

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

constexpr int kName = 1783;
constexpr int kNear = 1784;
constexpr int kFar = 1785;
constexpr int kLength = 1802;
/// By loop mode.
constexpr int kModes[] = {1786, 1787, 1801, 1788};

class CameraParametersDlgTest : public CameraDialogTest {
protected:
    CameraParametersDlgTest() { dialog.track = bridge; }

    int Run(const std::function<void()>& user) { return RunDialog(dialog, user); }
    void SetLengths(float a, float b, float c, float d) {
        const float lengths[] = {a, b, c, d};
        std::ranges::copy(lengths, bridge->subTrackLength);
    }
    void SetModes(int a, int b, int c, int d) {
        const int modes[] = {a, b, c, d};
        std::ranges::copy(modes, bridge->loopMode);
    }
    /// The modes whose buttons are checked.
    std::vector<int> Checked() const {
        std::vector<int> modes;
        for (int mode = 0; mode < 4; ++mode) {
            if (IsChecked(kModes[mode])) {
                modes.push_back(mode);
            }
        }
        return modes;
    }
    /// OK is refused with a message, and the dialog left by Cancel.
    void ExpectRefused(int id, const std::string& text, const char* message) {
        boxes.clear();
        EXPECT_EQ(Run([&] {
                      Type(id, text);
                      Click(IDOK);
                      EXPECT_TRUE(dialog.IsWindowVisible());
                      EXPECT_THAT(boxes, ElementsAre(message));
                      Key(Qt::Key_Escape);
                  }),
                  IDCANCEL)
            << id << text;
    }
    const std::string& NameIn(const CFilmCameraKey* key) const { return key->cameraName; }

    CCameraParametersDlg dialog{plugin};
};

} // namespace

TEST_F(CameraParametersDlgTest, ShowsTheCamera) {
    bridge->nearPlane = 0.5f;
    bridge->farPlane = 2500.0f;
    SetLengths(4.0f, 4.0f, 4.0f, 4.0f);
    SetModes(2, 2, 2, 2);
    Run([this] {
        EXPECT_EQ(dialog.GetWindowText(), "Camera parameters");
        EXPECT_EQ(Text(kName), "Bridge");
        EXPECT_EQ(Text(kNear), "0.5");
        EXPECT_EQ(Text(kFar), "2500");
        EXPECT_EQ(Text(kLength), "4");
        EXPECT_THAT(Checked(), ElementsAre(2));
        EXPECT_EQ(dialog.lengthChanged, 0);
        Key(Qt::Key_Escape);
    });
    EXPECT_EQ(dialog.oldName, "Bridge");
    EXPECT_EQ(dialog.loopSet, 1);
}

TEST_F(CameraParametersDlgTest, FieldsBeginEmptyWithoutACamera) {
    const CCameraParametersDlg fresh(plugin);
    EXPECT_EQ(fresh.track, nullptr);
    EXPECT_EQ(fresh.loopMode, 0);
    EXPECT_EQ(fresh.loopSet, 0);
    EXPECT_EQ(fresh.lengthChanged, 0);
    EXPECT_EQ(fresh.allLength, 0.0f);
}

TEST_F(CameraParametersDlgTest, ModeThatAllHaveIsChecked) {
    for (int mode = 0; mode < 4; ++mode) {
        SetModes(mode, mode, mode, mode);
        Run([&] {
            EXPECT_THAT(Checked(), ElementsAre(mode));
            Key(Qt::Key_Escape);
        });
    }
}

TEST_F(CameraParametersDlgTest, ModesThatDifferCheckNoneAndStay) {
    SetModes(0, 0, 0, 1);
    dialog.loopSet = 1; // as an earlier use may have left it
    EXPECT_EQ(Run([this] {
                  EXPECT_THAT(Checked(), IsEmpty());
                  EXPECT_EQ(dialog.loopMode, 0); // the position's
                  Click(IDOK);
              }),
              IDOK);
    EXPECT_THAT(bridge->loopMode, ElementsAre(0, 0, 0, 1));
    SetModes(3, 0, 0, 0);
    EXPECT_EQ(Run([this] { Key(Qt::Key_Return); }), IDOK);
    EXPECT_THAT(bridge->loopMode, ElementsAre(3, 0, 0, 0));
}

TEST_F(CameraParametersDlgTest, ClickedModeGoesToAllFour) {
    SetModes(0, 1, 2, 3);
    for (int mode = 0; mode < 4; ++mode) {
        EXPECT_EQ(Run([&] {
                      Click(kModes[mode]);
                      EXPECT_THAT(Checked(), ElementsAre(mode));
                      Click(IDOK);
                  }),
                  IDOK);
        EXPECT_THAT(bridge->loopMode, Each(mode));
        EXPECT_THAT(deck->loopMode, Each(0));
    }
}

TEST_F(CameraParametersDlgTest, ArrowsAndSpaceChooseTheMode) {
    SetModes(0, 1, 2, 3);
    EXPECT_EQ(Run([this] {
                  dialog.GetDlgItem(kModes[0])->SetFocus();
                  Key(Qt::Key_Space);
                  EXPECT_THAT(Checked(), ElementsAre(0));
                  Key(Qt::Key_Down);
                  Key(Qt::Key_Down);
                  EXPECT_THAT(Checked(), ElementsAre(2));
                  Key(Qt::Key_Down);
                  EXPECT_THAT(Checked(), ElementsAre(3));
                  Key(Qt::Key_Down); // round
                  EXPECT_THAT(Checked(), ElementsAre(0));
                  Key(Qt::Key_Up);
                  Key(Qt::Key_Return);
              }),
              IDOK);
    EXPECT_THAT(bridge->loopMode, Each(3));
}

TEST_F(CameraParametersDlgTest, LengthsThatAreNearlyAlikeShowTheLargestAndStay) {
    SetLengths(10.0f, 10.0f, 10.000001f, 10.0f);
    EXPECT_EQ(Run([this] {
                  EXPECT_EQ(Text(kLength), "10");
                  EXPECT_EQ(dialog.allLength, 10.000001f);
                  Click(IDOK);
              }),
              IDOK);
    EXPECT_THAT(bridge->subTrackLength, ElementsAre(10.0f, 10.0f, 10.000001f, 10.0f));
}

TEST_F(CameraParametersDlgTest, LengthsThatDifferShowZeroAndStay) {
    SetLengths(10.0f, 10.0f, 10.00002f, 10.0f);
    EXPECT_EQ(Run([this] {
                  EXPECT_EQ(Text(kLength), "0");
                  Click(IDOK);
              }),
              IDOK);
    EXPECT_THAT(bridge->subTrackLength, ElementsAre(10.0f, 10.0f, 10.00002f, 10.0f));
}

TEST_F(CameraParametersDlgTest, TypedLengthGoesToAllFour) {
    SetLengths(1.0f, 2.0f, 3.0f, 4.0f);
    EXPECT_EQ(Run([this] {
                  Type(kLength, "2.5");
                  EXPECT_EQ(dialog.lengthChanged, 1);
                  Key(Qt::Key_Return);
              }),
              IDOK);
    EXPECT_THAT(bridge->subTrackLength, Each(2.5f));
}

TEST_F(CameraParametersDlgTest, TypedZeroGoesToAllFourThoughItStoodThere) {
    SetLengths(1.0f, 2.0f, 3.0f, 4.0f);
    EXPECT_EQ(Run([this] {
                  EXPECT_EQ(Text(kLength), "0");
                  Type(kLength, "0");
                  Click(IDOK);
              }),
              IDOK);
    EXPECT_THAT(bridge->subTrackLength, Each(0.0f));
}

TEST_F(CameraParametersDlgTest, TextThatTheProgramSetsIsNoEdit) {
    SetLengths(1.0f, 2.0f, 3.0f, 4.0f);
    EXPECT_EQ(Run([this] {
                  dialog.SetDlgItemText(kLength, "7");
                  Click(IDOK);
              }),
              IDOK);
    EXPECT_THAT(bridge->subTrackLength, ElementsAre(1.0f, 2.0f, 3.0f, 4.0f));
}

TEST_F(CameraParametersDlgTest, PlanesAreTaken) {
    EXPECT_EQ(Run([this] {
                  Type(kNear, "0.25");
                  Type(kFar, "750");
                  Click(IDOK);
              }),
              IDOK);
    EXPECT_EQ(bridge->nearPlane, 0.25f);
    EXPECT_EQ(bridge->farPlane, 750.0f);
    EXPECT_EQ(bridge->cameraData->data.recordNear, 0.25f) << "posed anew";
}

TEST_F(CameraParametersDlgTest, NumbersLeftAloneStayToTheLastBit) {
    bridge->nearPlane = 0.12345678f; // the fields show six digits
    bridge->farPlane = 123456.78f;
    EXPECT_EQ(Run([this] {
                  EXPECT_EQ(Text(kFar), "123457");
                  Click(IDOK);
              }),
              IDOK);
    EXPECT_EQ(bridge->nearPlane, 0.12345678f);
    EXPECT_EQ(bridge->farPlane, 123456.78f);
}

TEST_F(CameraParametersDlgTest, WhatIsNoNumberIsRefused) {
    const float far = bridge->farPlane;
    for (const int id : {kNear, kFar, kLength}) {
        for (const char* text : {"soon", "", "1 2", "nan", "inf", "1e999"}) {
            ExpectRefused(id, text, "Please enter a number.");
        }
    }
    EXPECT_EQ(bridge->farPlane, far);
    EXPECT_EQ(bridge->cameraName, "Bridge");
}

TEST_F(CameraParametersDlgTest, CancelAndEscapeTakeNothing) {
    SetModes(1, 1, 1, 1);
    for (const bool escapes : {false, true}) {
        EXPECT_EQ(Run([&] {
                      Type(kName, "Tower");
                      Type(kNear, "7");
                      Type(kLength, "7");
                      Click(kModes[3]);
                      if (escapes) {
                          Key(Qt::Key_Escape);
                      } else {
                          Click(IDCANCEL);
                      }
                  }),
                  IDCANCEL);
        EXPECT_EQ(bridge->cameraName, "Bridge");
        EXPECT_NE(bridge->nearPlane, 7.0f);
        EXPECT_THAT(bridge->subTrackLength, Each(0.0f));
        EXPECT_THAT(bridge->loopMode, Each(1));
    }
}

TEST_F(CameraParametersDlgTest, EnterInEachFieldIsOk) {
    for (const int id : {kName, kNear, kFar, kLength, kModes[0], kModes[3]}) {
        EXPECT_EQ(Run([&] {
                      Click(id);
                      Key(Qt::Key_Return);
                  }),
                  IDOK)
            << id;
    }
    EXPECT_EQ(Run([&] {
                  dialog.GetDlgItem(IDCANCEL)->SetFocus();
                  Key(Qt::Key_Return);
              }),
              IDCANCEL);
}

TEST_F(CameraParametersDlgTest, NewNameGoesToTheKeysThatShowTheCamera) {
    CFilmCameraKey* first = AddCut(film, "Bridge", 0.0f, 1.0f, 0);
    CFilmCameraKey* second = AddCut(film, "Bridge", 2.0f, 3.0f, 1);
    CFilmCameraKey* other = AddCut(film, "Deck", 4.0f, 5.0f, 0);
    CFilmCameraKey* alike = AddCut(film, "bridge", 6.0f, 7.0f, 0);
    IFilm* elsewhere = NewFilm();
    AddCamera(elsewhere, "Bridge");
    CFilmCameraKey* foreign = AddCut(elsewhere, "Bridge", 0.0f, 1.0f, 0);
    EXPECT_EQ(Run([this] {
                  Type(kName, "Tower");
                  Click(IDOK);
              }),
              IDOK);
    EXPECT_EQ(bridge->cameraName, "Tower");
    EXPECT_EQ(NameIn(first), "Tower");
    EXPECT_EQ(NameIn(second), "Tower");
    EXPECT_EQ(NameIn(other), "Deck");
    EXPECT_EQ(NameIn(alike), "bridge");
    EXPECT_EQ(NameIn(foreign), "Bridge");
    EXPECT_NE(RowOf("Tower"), nullptr) << "the film is shown anew";
    EXPECT_EQ(RowOf("Bridge"), nullptr);
    std::string now;
    plugin.GetCameraNameAtTime(now, 0.5f, nullptr);
    EXPECT_EQ(now, "Tower");
}

TEST_F(CameraParametersDlgTest, AttributesWindowReadsTheNewNameAndWritesNoOldOne) {
    CFilmCameraKey* cut = AddCut(film, "Bridge", 0.0f, 1.0f, 0);
    control->ShowFilm(film, true);
    FakeAttributes& attributes = OpenFakeAttributes(plugin);
    CTrackKey* view = *RowOf("Level", KeyKind::Camera, 0)->keys.begin();
    attributes.SetKey(view, false);
    attributes.log.clear();
    EXPECT_EQ(Run([this] {
                  Type(kName, "Tower");
                  Click(IDOK);
              }),
              IDOK);
    ASSERT_FALSE(attributes.log.empty());
    EXPECT_EQ(attributes.log.front(), "Refresh");
    EXPECT_EQ(attributes.record, cut);
    EXPECT_EQ(NameIn(cut), "Tower");
}

TEST_F(CameraParametersDlgTest, WithoutANewNameTheAttributesWindowHearsNothingOfIt) {
    AddCut(film, "Bridge", 0.0f, 1.0f, 0);
    FakeAttributes& attributes = OpenFakeAttributes(plugin);
    EXPECT_EQ(Run([this] { Click(IDOK); }), IDOK);
    EXPECT_THAT(attributes.log, ::testing::Not(::testing::Contains("Refresh")));
}

TEST_F(CameraParametersDlgTest, FoldStateGoesAlongToTheNewName) {
    RowOf("Bridge")->ToggleExpanded();
    ASSERT_TRUE(RowOf("Bridge")->expanded);
    CPluginFilmsParams stale; // of a camera that was removed
    stale.Set(film->name, nullptr, /*expanded*/ 0, 3, "Tower");
    plugin.AddCameraParams(stale);
    EXPECT_EQ(Run([this] {
                  Type(kName, "Tower");
                  Click(IDOK);
              }),
              IDOK);
    EXPECT_TRUE(RowOf("Tower")->expanded);
    EXPECT_FALSE(RowOf("Deck")->expanded);
    int records = 0;
    for (const CPluginFilmsParams& store : plugin.cameraParams) {
        records += static_cast<int>(store.records.size());
    }
    EXPECT_EQ(records, 2) << "of both cameras, none twice";
}

TEST_F(CameraParametersDlgTest, TakenNameKeepsTheDialogOpen) {
    std::vector<std::string> notes;
    SetUserNoteSink([&notes](const std::string& text) { notes.push_back(text); });
    AddCut(film, "Bridge", 0.0f, 1.0f, 0);
    EXPECT_EQ(Run([this] {
                  Type(kName, "Deck");
                  Type(kNear, "5");
                  Click(IDOK);
                  EXPECT_TRUE(dialog.IsWindowVisible());
                  EXPECT_THAT(boxes, ElementsAre("Create camera frame")); // Required: this text.
                  EXPECT_EQ(bridge->cameraName, "Bridge");
                  EXPECT_NE(bridge->nearPlane, 5.0f);
                  Type(kName, "deck"); // other letters, another name
                  Click(IDOK);
              }),
              IDOK);
    SetUserNoteSink(nullptr);
    EXPECT_EQ(bridge->cameraName, "deck");
    EXPECT_EQ(boxes.size(), 1u);
    EXPECT_THAT(notes, ElementsAre("Another camera of the film is called \"Deck\"."));
}

TEST_F(CameraParametersDlgTest, UnchangedNameIsNotTested) {
    deck->cameraName = "Bridge";
    EXPECT_EQ(Run([this] { Click(IDOK); }), IDOK);
    EXPECT_THAT(boxes, IsEmpty());
}

TEST_F(CameraParametersDlgTest, WithoutAFilmItSaysSoAndStaysOpen) {
    EXPECT_EQ(Run([this] {
                  plugin.SetCurrentFilm(nullptr);
                  Type(kName, "Tower");
                  Click(IDOK);
                  EXPECT_THAT(boxes, ElementsAre("Cannot find film."));
                  Click(IDCANCEL);
              }),
              IDCANCEL);
    EXPECT_EQ(bridge->cameraName, "Bridge");
}

TEST_F(CameraParametersDlgTest, WhatGoesWhileItIsOpenIsToldAndNothingIsWritten) {
    const std::function<void()> goings[] = {
        [this] { control->RemoveTrackCtrl(RowOf("Bridge"), true); },
        [this] { plugin.SetCurrentFilm(NewFilm()); },
        [this] { plugin.DeleteFilm(film); },
        [this] {
            plugin.SetCurrentFilm(nullptr);
            editor.level.New("");
            plugin.OnNew();
            plugin.OnEvent(EventCode::LevelLoaded, nullptr);
            boxes.clear(); // this editor has no data folder
        },
    };
    for (const auto& go : goings) {
        if (!plugin.FilmExists(film)) {
            film = OpenNewFilm();
        }
        plugin.SetCurrentFilm(film);
        bridge = film->FindCamera("Bridge") != nullptr ? AsCameraTrack(film->FindCamera("Bridge"))
                                                       : AddCamera(film, "Bridge");
        control->ShowFilm(film, true);
        dialog.track = bridge;
        boxes.clear();
        EXPECT_EQ(Run([&] {
                      go();
                      Type(kName, "Tower");
                      Click(IDOK);
                      EXPECT_THAT(boxes, ElementsAre("Cannot find film."));
                      Click(IDCANCEL);
                  }),
                  IDCANCEL);
    }
}

TEST_F(CameraParametersDlgTest, ControlThatGoesWhileItIsOpenEndsItWell) {
    RunCommand(IDC_CAMERA_PARAMETERS, RowOf("Bridge"), [this] {
        plugin.scenarioDlg = nullptr;
        control.reset();
        Settle();
        if (shown->GetSafeHwnd() != nullptr && shown->IsWindowVisible()) {
            Click(IDOK);
        }
    });
    EXPECT_EQ(control, nullptr);
}

TEST_F(CameraParametersDlgTest, SecondTimeBeginsAnew) {
    for (const char* next : {"Tower", "Keep"}) {
        RunCommand(IDC_CAMERA_PARAMETERS, RowOf(bridge->cameraName), [&] {
            EXPECT_EQ(Text(kName), bridge->cameraName);
            Type(kName, next);
            Click(IDOK);
        });
        EXPECT_EQ(bridge->cameraName, next);
    }
    EXPECT_EQ(control->menuRow, nullptr);
    ExpectNothingDangles();
}

TEST_F(CameraParametersDlgTest, WhileTheFilmPlaysItGoesOn) {
    std::uint32_t now = 0;
    Hooks().clock = [&now] { return now += 100; };
    bool renamed = false;
    editor.onBroadcast = [&](int code, void*) {
        if (code != EventCode::ObjectsMoved || plugin.isPlaying == 0) {
            return;
        }
        if (!renamed && plugin.currentTime > 1.0f) {
            renamed = true;
            RunCommand(IDC_CAMERA_PARAMETERS, RowOf("Bridge"), [this] {
                Type(kName, "Tower");
                Click(IDOK);
            });
            EXPECT_NE(plugin.isPlaying, 0);
        }
    };
    plugin.Play(0.0f);
    editor.onBroadcast = nullptr;
    EXPECT_TRUE(renamed);
    EXPECT_EQ(bridge->cameraName, "Tower");
}

TEST_F(CameraParametersDlgTest, ShownCameraKeepsItsPath) {
    plugin.SetVisualizedTrack(bridge);
    EXPECT_EQ(Run([this] {
                  Type(kName, "Tower");
                  Click(IDOK);
              }),
              IDOK);
    EXPECT_EQ(plugin.trackVisualizer.renderTrack, bridge);
}

TEST_F(CameraParametersDlgTest, OnlyRowsOfACameraOpenIt) {
    Hooks().modalDialog = [](CDialog&) {
        ADD_FAILURE() << "a dialog came up";
        return IDCANCEL;
    };
    control->menuRow = nullptr;
    control->OnCmdMsg(IDC_CAMERA_PARAMETERS, 0, nullptr, nullptr);
    control->menuRow = RowOf("Level");
    control->OnCmdMsg(IDC_CAMERA_PARAMETERS, 0, nullptr, nullptr);
}

TEST_F(CameraParametersDlgTest, EverythingStandsInsideAndApart) {
    Run([this] {
        ExpectTidy();
        Key(Qt::Key_Escape);
    });
}

TEST_F(CameraParametersDlgTest, Picture) {
    SetModes(1, 1, 1, 1);
    SetLengths(8.0f, 8.0f, 8.0f, 8.0f);
    Run([this] {
        dialog.GetDlgItem(IDOK)->SetFocus(); // no caret
        ExpectGolden(PictureOf(dialog), "tests/timeline", "camera_parameters", TextAreas());
        Key(Qt::Key_Escape);
    });
}
