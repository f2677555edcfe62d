#include "framework/ColorDialog.h"
#include "framework/FileDialog.h"
#include "framework/Wnd.h"
#include "host/engine/ClassDatabase.h"
#include "host/engine/Film.h"
#include "host/engine/FilmManager.h"
#include "host/stage/windows/browse/AnimationBrowser.h"
#include "host/stage/windows/browse/EffectBrowser.h"
#include "host/stage/windows/films/FilmCommands.h"
#include "host/stage/windows/films/FilmNameDialog.h"
#include "host/stage/windows/films/TimelineHand.h"
#include "host/stage/windows/ToolWindows.h"
#include "host/stage/windows/UndoCommands.h"
#include "tests/support/Answering.h"
#include "tests/whole/StageFixture.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QContextMenuEvent>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QStatusBar>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>

namespace {

/// Stage's menu "Films" over the sample level and the plug-in's panel.
class FilmsMenuTest : public StageTest {
protected:
    void Choose(const char* action) {
        window->findChild<QAction*>(action)->trigger();
        Settle();
    }
    /// Answers the next dialog that asks for a film's name, as with the keyboard.
    void AnswerName(const QString& name, bool camera = false, double seconds = 10.0) {
        QTimer::singleShot(0, window.get(), [this, name, camera, seconds] {
            auto* dialog = qobject_cast<stage::FilmNameDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            auto* line = dialog->findChild<QLineEdit*>("Name");
            proposal = line->text();
            line->setText(name);
            dialog->findChild<QCheckBox*>("Camera")->setChecked(camera);
            dialog->findChild<QDoubleSpinBox*>("Length")->setValue(seconds);
            auto* ok = dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
            isAccepted = ok->isEnabled();
            QTest::keyClick(dialog, isAccepted ? Qt::Key_Return : Qt::Key_Escape);
        });
    }
    engine::Film* Open() const { return static_cast<engine::Film*>(Films().currentFilm); }
    /// The first actor of the sample's film, selected, with the film open.
    CFilmTrack* SelectActor() {
        ChooseFilm("Intro");
        EditorObject* actor = FirstActor(Open());
        window->host.Select({actor});
        Settle();
        return stage::TrackOfObject(*Open(), actor);
    }
    static std::vector<IFilmKey*> KeysOf(const CFilmTrack& track, int kind) {
        std::vector<IFilmKey*> keys;
        std::ranges::copy_if(track.keys, std::back_inserter(keys),
                             [kind](const IFilmKey* key) { return key->kind == kind; });
        return keys;
    }
    /// The value of the first key of the kind.
    static Vector3 PointOf(const CFilmTrack& track, int kind) {
        return static_cast<CFilmVectorKey*>(KeysOf(track, kind).at(0))->value;
    }
    std::string Note() const { return window->statusBar()->currentMessage().toStdString(); }

    QString proposal;
    bool isAccepted = false;
};

} // namespace

TEST_F(FilmsMenuTest, NewFilmGetsItsNameAndOpensInTheDockedTimeline) {
    AnswerName("Harbour at night");
    Choose("FilmsNew");
    ASSERT_NE(Open(), nullptr);
    EXPECT_STREQ(Open()->name, "Harbour at night");
    EXPECT_EQ(FilmLines().back(), "Harbour at night");
    EXPECT_EQ(FilmList()->currentItem()->text(), "Harbour at night");
    ASSERT_EQ(window->toolWindows->Docks().size(), 1);
    EXPECT_TRUE(window->toolWindows->Docks().front()->isVisible());
    EXPECT_FALSE(window->toolWindows->Docks().front()->isFloating());
    EXPECT_TRUE(boxes.empty());
}

TEST_F(FilmsMenuTest, NewFilmWithACameraShowsItFromTheStart) {
    AnswerName("Close", /*camera*/ true);
    Choose("FilmsNew");
    ASSERT_NE(Open(), nullptr);
    const std::vector<IFilmKey*> keys = KeysOf(*Open()->mainTrack, KeyKind::Camera);
    ASSERT_EQ(keys.size(), 1u);
    EXPECT_EQ(keys[0]->time, 0.0f);
    EXPECT_EQ(keys[0]->endTime, 10.0f);
    EXPECT_NE(Open()->FindCamera(static_cast<CFilmCameraKey*>(keys[0])->cameraName), nullptr);
    EXPECT_TRUE(boxes.empty());
    Choose("FilmsAddCamera"); // a second one is for the user to cut to
    EXPECT_EQ(KeysOf(*Open()->mainTrack, KeyKind::Camera).size(), 1u);
}

TEST_F(FilmsMenuTest, NewFilmIsAsLongAsAskedForAndSoIsItsCameraKey) {
    for (const double seconds : {24.5, 4.0}) {
        AnswerName(QString("Long %1").arg(seconds), /*camera*/ true, seconds);
        Choose("FilmsNew");
        ASSERT_NE(Open(), nullptr);
        EXPECT_EQ(Open()->length, static_cast<float>(seconds));
        const std::vector<IFilmKey*> keys = KeysOf(*Open()->mainTrack, KeyKind::Camera);
        ASSERT_EQ(keys.size(), 1u);
        EXPECT_EQ(keys[0]->time, 0.0f);
        EXPECT_EQ(keys[0]->endTime, static_cast<float>(seconds));
    }
    EXPECT_TRUE(boxes.empty());
}

TEST_F(FilmsMenuTest, ACameraOfTheFilmStandsWhereACameraOfTheLevelLooksFrom) {
    ChooseFilm("Intro");
    // Looks along -x from 100 above the ground: row 2 of a camera points back.
    engine::ObjectSpec spec;
    spec.className = engine::kCameraClass;
    spec.name = "Corner";
    const float rows[16] = {0, 0, -2, 0, 0, 2, 0, 0, 2, 0, 0, 0, 90000, 100, 300, 1}; // twice its size
    std::ranges::copy(rows, spec.matrix.m);
    spec.notes.fieldOfView = 0.5235988f; // 30 degrees
    window->host.Select({window->commands.Create(spec)});
    Settle();
    const int view = window->ActiveView();
    const std::vector<float> before(window->host.GetViewMatrix(view), window->host.GetViewMatrix(view) + 16);
    const std::list<CFilmTrack*> tracks = Open()->tracks;
    Choose("FilmsAddCameraFromObject");
    const auto made = std::ranges::find_if(Open()->tracks, [&](CFilmTrack* track) {
        return AsCameraTrack(track) != nullptr && std::ranges::find(tracks, track) == tracks.end();
    });
    ASSERT_NE(made, Open()->tracks.end());
    const Vector3 eye = PointOf(**made, KeyKind::CameraPosition);
    EXPECT_FLOAT_EQ(eye.x, 90000.0f);
    EXPECT_FLOAT_EQ(eye.y, 100.0f);
    EXPECT_FLOAT_EQ(eye.z, 300.0f);
    const Vector3 target =
        PointOf(**made, KeyKind::CameraTarget); // nothing is met out there: 5,000 units ahead
    EXPECT_NEAR(target.x, 85000.0f, 0.1f);
    EXPECT_NEAR(target.y, 100.0f, 0.1f);
    EXPECT_NEAR(target.z, 300.0f, 0.1f);
    const float angle = static_cast<CFilmScalarKey*>(KeysOf(**made, KeyKind::FieldOfView).at(0))->value;
    EXPECT_NEAR(angle, 30.0f, 0.001f);
    const float* after = window->host.GetViewMatrix(view);
    EXPECT_EQ(std::vector<float>(after, after + 16), before) << "the view looks as before";
    EXPECT_NE(Note().find("stands at the object"), std::string::npos) << Note();
}

TEST_F(FilmsMenuTest, ACameraAtAnObjectLooksAlongItAndNeedsOneAlone) {
    ChooseFilm("Intro");
    const std::size_t tracks = Open()->tracks.size();
    Choose("FilmsAddCameraFromObject");
    EXPECT_EQ(Open()->tracks.size(), tracks);
    EXPECT_EQ(Note(),
              "Select the camera of the level, or the object, that the film's camera shall stand at.");
    engine::ObjectSpec spec;
    spec.className = "EmptyObject";
    spec.name = "Lookout";
    spec.matrix.SetTranslation({90000, 100, 300}); // row 2 points along z
    window->host.Select({window->commands.Create(spec)});
    Settle();
    Choose("FilmsAddCameraFromObject");
    ASSERT_EQ(Open()->tracks.size(), tracks + 1);
    const auto camera = std::ranges::find_if(Open()->tracks, [](CFilmTrack* track) {
        return AsCameraTrack(track) != nullptr && PointOf(*track, KeyKind::CameraPosition).x == 90000.0f;
    });
    ASSERT_NE(camera, Open()->tracks.end());
    EXPECT_NEAR(PointOf(**camera, KeyKind::CameraTarget).z, 5300.0f, 0.1f);
}

TEST_F(FilmsMenuTest, DeleteTakesTheOpenFilmAwayAndUndoBringsItBack) {
    ChooseFilm("Intro");
    const std::size_t lines = FilmLines().size();
    Choose("FilmsDelete");
    EXPECT_EQ(Open(), nullptr);
    EXPECT_EQ(FilmLines().size(), lines - 1);
    EXPECT_EQ(Note(), "Intro is deleted; Ctrl+Z brings it back");
    window->session.History().NoteAll();
    window->undo->Undo();
    Settle();
    EXPECT_EQ(FilmLines().size(), lines);
    ChooseFilm("<none>");
    Choose("FilmsDelete");
    EXPECT_EQ(FilmLines().size(), lines) << "no film is open";
}

TEST_F(FilmsMenuTest, ARightClickOnAFilmOpensItAndItsMenu) {
    ChooseFilm("<none>");
    QTimer::singleShot(0, window.get(), [] {
        QTimer::singleShot(0, qApp, [] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            ASSERT_NE(menu, nullptr);
            EXPECT_EQ(menu->objectName(), "FilmListMenu");
            QStringList texts;
            for (const QAction* action : menu->actions()) {
                texts << (action->isSeparator() ? "-" : action->text().remove('&'));
            }
            EXPECT_EQ(texts, (QStringList{"New film...", "-", "Rename film...", "Duplicate film...",
                                          "Delete film"}));
            menu->close();
        });
    });
    const QPoint place = FilmList()->visualItemRect(FilmList()->item(1)).center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, FilmList()->viewport()->mapToGlobal(place));
    QApplication::sendEvent(FilmList()->viewport(), &event);
    Settle();
    ASSERT_NE(Open(), nullptr);
    EXPECT_EQ(Open()->name, FilmLines()[1]);
}

TEST_F(FilmsMenuTest, NewFilmRefusesATakenNameAndMakesNothing) {
    const std::vector<std::string> before = FilmLines();
    AnswerName("Intro");
    Choose("FilmsNew");
    EXPECT_FALSE(isAccepted);
    AnswerName("  ");
    Choose("FilmsNew");
    EXPECT_FALSE(isAccepted);
    EXPECT_EQ(FilmLines(), before);
}

TEST_F(FilmsMenuTest, RenamedFilmIsListedSoAndKeepsItsTracks) {
    ChooseFilm("Intro");
    engine::Film* film = Open();
    const std::size_t tracks = film->tracks.size();
    AnswerName("Opening");
    Choose("FilmsRename");
    EXPECT_EQ(proposal, "Intro");
    EXPECT_STREQ(film->name, "Opening");
    EXPECT_EQ(Open(), film);
    EXPECT_EQ(film->tracks.size(), tracks);
    EXPECT_EQ(FilmList()->currentItem()->text(), "Opening");
    Settle();
    EXPECT_TRUE(window->session.IsChanged());
}

TEST_F(FilmsMenuTest, CopyOfAFilmHasAllButItsLightsAndOutlivesIt) {
    ChooseFilm("Intro");
    engine::Film* film = Open();
    std::size_t tracks = 0;
    std::size_t keys = 0;
    for (CFilmTrack* track : film->tracks) {
        const CFilmGLLightTrack* light = AsGLLightTrack(track);
        if (AsDynLightTrack(track) == nullptr && (light == nullptr || light->isSun != 0)) {
            ++tracks;
            keys += track->keys.size();
        }
    }
    AnswerName("Second");
    Choose("FilmsDuplicate");
    EXPECT_EQ(proposal, "Intro copy");
    engine::Film* copy = Open();
    ASSERT_NE(copy, film);
    EXPECT_STREQ(copy->name, "Second");
    EXPECT_EQ(copy->length, film->length);
    EXPECT_EQ(copy->tracks.size(), tracks);
    std::size_t copied = 0;
    for (const CFilmTrack* track : copy->tracks) {
        copied += track->keys.size();
    }
    EXPECT_EQ(copied, keys);
    EXPECT_TRUE(window->SaveLevelAs(QString::fromStdString(levelPath)));
    // Camera and actors stand where the first film has them, also when that has gone.
    EditorObject* actor = FirstActor(film);
    const auto poseAt = [&](engine::Film& shown) {
        shown.SetTime(2.0f, -1.0f);
        return MatrixOf(*actor);
    };
    const std::vector<float> second = poseAt(*copy);
    ChooseFilm("Intro");
    EXPECT_EQ(poseAt(*film), second);
    for (QPushButton* button : window->findChildren<QPushButton*>()) {
        if (button->text() == "Delete" && button->isVisible()) {
            button->click();
        }
    }
    Settle();
    EXPECT_EQ(Film("Intro"), nullptr);
    ChooseFilm("Second");
    EXPECT_EQ(poseAt(*copy), second);
    EXPECT_TRUE(boxes.empty());
}

TEST_F(FilmsMenuTest, RenameWithoutAFilmSaysWhatToDo) {
    Choose("FilmsRename");
    EXPECT_EQ(Note(), "Open the film first: choose it in the list.");
    Choose("FilmsAddCamera");
    EXPECT_NE(Note().find("Open a film first"), std::string::npos);
}

TEST_F(FilmsMenuTest, SoundKeyComesAtTheCursorWithTheChosenFile) {
    CFilmTrack* track = SelectActor();
    ASSERT_NE(track, nullptr);
    OpenScenario("Intro");
    window->host.Select({FirstActor(Open())});
    const stage::TimelineHand hand(*window->toolWindows);
    for (int i = 0; i < 3; ++i) {
        hand.PressButton(36841); // a frame forward
    }
    const std::size_t before = KeysOf(*track, KeyKind::Sound).size();
    const std::string sound = window->host.level.Folder() + "sounds/bell.wav";
    Hooks().fileDialog = [&](CFileDialog& dialog) {
        dialog.SetPathName(sound);
        return IDOK;
    };
    Choose("FilmsAddSound");
    const std::vector<IFilmKey*> keys = KeysOf(*track, KeyKind::Sound);
    ASSERT_EQ(keys.size(), before + 1);
    const auto found = std::ranges::find_if(keys, [](const IFilmKey* key) {
        return static_cast<const CFilmSoundKey*>(key)->wavPath == "sounds/bell.wav";
    });
    ASSERT_NE(found, keys.end());
    EXPECT_NEAR((*found)->time, 0.1f, 1e-5f);
    EXPECT_GT((*found)->endTime, (*found)->time);
    EXPECT_EQ(Open(), Film("Intro"));
    EXPECT_NEAR(Open()->PosedTime(), 0.1f, 1e-5f);
    EXPECT_EQ(window->host.level.selection.front(), FirstActor(Open())); // as it was
    Choose("FilmsAddSound");
    EXPECT_EQ(KeysOf(*track, KeyKind::Sound).size(), before + 1);
    EXPECT_NE(Note().find("in the way"), std::string::npos);
}

TEST_F(FilmsMenuTest, AnActorGetsItsFirstKeyOfAKindToo) {
    CFilmTrack* track = SelectActor();
    ASSERT_NE(track, nullptr);
    const std::string sound = window->host.level.Folder() + "sounds/bell.wav";
    Hooks().fileDialog = [&](CFileDialog& dialog) {
        dialog.SetPathName(sound);
        return IDOK;
    };
    EditorObject* other = nullptr;
    for (const auto& object : window->host.level.Data()->Objects()) {
        const bool isFree = !object->IsLight() && !object->transient &&
                            stage::TrackOfObject(*Open(), object.get()) == nullptr;
        other = isFree && other == nullptr ? object.get() : other;
    }
    ASSERT_NE(other, nullptr);
    CFilmTrack* made = Open()->CreateObjectTrack();
    AsObjectTrack(made)->SetActor(other, false);
    Open()->AddTrack(made);
    ASSERT_EQ(made->subTracks[KeyKind::Speech], nullptr);
    window->host.Select({other});
    Choose("FilmsAddSpeech");
    EXPECT_EQ(KeysOf(*made, KeyKind::Speech).size(), 1u) << Note();
}

TEST_F(FilmsMenuTest, CancelledChoiceAddsNothing) {
    CFilmTrack* track = SelectActor();
    const std::size_t before = track->keys.size();
    Hooks().fileDialog = [](CFileDialog&) { return IDCANCEL; };
    Choose("FilmsAddSpeech");
    EXPECT_EQ(track->keys.size(), before);
    Hooks().fileDialog = [this](CFileDialog& dialog) { // the film closes while the user is asked
        ChooseFilm("<none>");
        dialog.SetPathName("/tmp/x.wav");
        return IDOK;
    };
    Choose("FilmsAddSpeech");
    EXPECT_EQ(track->keys.size(), before);
    EXPECT_EQ(Open(), nullptr);
}

TEST_F(FilmsMenuTest, ColourIsForLightsAndAnAnimationForActors) {
    SelectActor();
    Choose("FilmsAddColor");
    EXPECT_NE(Note().find("Select one light"), std::string::npos);
    window->host.Select({});
    Choose("FilmsAddAnimation");
    EXPECT_NE(Note().find("Select one actor"), std::string::npos);
    ChooseFilm("<none>");
    Choose("FilmsAddAnimation");
    EXPECT_NE(Note().find("Open a film first"), std::string::npos);
}

TEST_F(FilmsMenuTest, AnimationKeyTakesWhatTheBrowserGivesAndIsAsLong) {
    ChooseFilm("Intro");
    engine::SceneObject* sailor = Object("Sailor");
    CFilmTrack* track = stage::TrackOfObject(*Open(), sailor);
    ASSERT_NE(track, nullptr);
    track->ClearKind(KeyKind::Animation);
    window->host.Select({sailor});
    std::string chosen;
    Answering(
        [&chosen](QWidget& box) {
            auto& browser = dynamic_cast<stage::AnimationBrowser&>(box);
            browser.list->setCurrentItem(browser.list->topLevelItem(browser.list->topLevelItemCount() - 1));
            chosen = browser.list->currentItem()->text(0).toStdString();
            QTest::keyClick(browser.search, Qt::Key_Return);
        },
        [this] { Choose("FilmsAddAnimation"); });
    const std::vector<IFilmKey*> keys = KeysOf(*track, KeyKind::Animation);
    ASSERT_EQ(keys.size(), 1u) << Note();
    const auto& key = static_cast<const CFilmAnimationKey&>(*keys.front());
    EXPECT_EQ(key.animationName, chosen);
    EXPECT_EQ(key.meshElement, "");
    EXPECT_FLOAT_EQ(key.endTime - key.time, keys.front()->GetNaturalDuration());
    EXPECT_EQ(Note(), "Animation key added at the cursor");
}

TEST_F(FilmsMenuTest, EffectKeyTakesWhatTheBrowserGives) {
    CFilmTrack* track = SelectActor();
    track->ClearKind(KeyKind::FxParticle);
    std::string chosen;
    Answering(
        [&chosen](QWidget& box) {
            auto& browser = dynamic_cast<stage::EffectBrowser&>(box);
            browser.list->setCurrentRow(browser.list->count() - 1);
            chosen = browser.Chosen();
            QTest::keyClick(browser.search, Qt::Key_Return);
        },
        [this] { Choose("FilmsAddParticle"); });
    ASSERT_NE(chosen, "");
    const std::vector<IFilmKey*> keys = KeysOf(*track, KeyKind::FxParticle);
    ASSERT_EQ(keys.size(), 1u) << Note();
    EXPECT_EQ(static_cast<const CFilmFxKey*>(keys.front())->fxName, chosen);
}

TEST_F(FilmsMenuTest, ColourKeyOfALightIsLevelWithTheChosenColour) {
    ChooseFilm("Intro");
    const auto lights = [this] {
        return std::ranges::find_if(Open()->tracks, [](CFilmTrack* track) { return AsGLLightTrack(track); });
    };
    ASSERT_NE(lights(), Open()->tracks.end());
    CFilmTrack* track = *lights();
    track->ClearKind(KeyKind::Color);
    window->host.Select({AsGLLightTrack(track)->lightObject});
    Hooks().colorDialog = [](CColorDialog& dialog) {
        dialog.SetCurrentColor(RGB(255, 51, 0));
        return IDOK;
    };
    Choose("FilmsAddColor");
    const std::vector<IFilmKey*> keys = KeysOf(*track, KeyKind::Color);
    ASSERT_EQ(keys.size(), 1u) << Note();
    const auto& key = static_cast<const CFilmVectorKey&>(*keys.front());
    for (const Vector3* color : {&key.value, &key.inHandle, &key.outHandle}) {
        EXPECT_FLOAT_EQ(color->x, 1.0f);
        EXPECT_FLOAT_EQ(color->y, 0.2f); // 51 of 255
        EXPECT_FLOAT_EQ(color->z, 0.0f);
    }
    Hooks().colorDialog = [](CColorDialog&) { return IDCANCEL; };
    track->ClearKind(KeyKind::Color);
    Choose("FilmsAddColor");
    EXPECT_TRUE(KeysOf(*track, KeyKind::Color).empty());
}

TEST_F(FilmsMenuTest, AFullLevelSaysSoAndGetsNoFilm) {
    ChooseFilm("Intro");
    while (Films().AllocateFilm() >= 0) {
    }
    AnswerName("One too many");
    Choose("FilmsNew");
    EXPECT_EQ(Film("One too many"), nullptr);
    EXPECT_EQ(Note(),
              "No film was added: a level holds " + std::to_string(IFilmManager::kFilms) + " at most.");
    AnswerName("Copy");
    Choose("FilmsDuplicate");
    EXPECT_EQ(Film("Copy"), nullptr);
    EXPECT_EQ(Note(),
              "No film was added: a level holds " + std::to_string(IFilmManager::kFilms) + " at most.");
}
