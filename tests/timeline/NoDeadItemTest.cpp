// No item of a menu or toolbar of the timeline is dead: whatever can be chosen changes something that the
// user sees, or asks or tells him something.
#include "tests/timeline/NoDeadItemFixture.h"

#include "framework/ToolBar.h"
#include "keys/views/TrackKey.h"
#include "resources/resource.h"

#include <algorithm>
#include <iterator>

using ::testing::IsEmpty;

namespace {

/// Gives the key another content than the film's keys have, at the same time.
void MakeDifferent(IFilmKey& key) {
    if (auto* camera = dynamic_cast<CFilmCameraKey*>(&key)) {
        camera->delayTime = 2.0f;
    } else if (auto* animation = dynamic_cast<CFilmAnimationKey*>(&key)) {
        animation->frequency = 2.0f;
    } else if (auto* effect = dynamic_cast<CFilmFxKey*>(&key)) {
        effect->fxName = "Other";
    } else if (auto* speech = dynamic_cast<CFilmSpeechKey*>(&key)) {
        speech->speechText = "Other";
    } else if (auto* sound = dynamic_cast<CFilmSoundKey*>(&key)) {
        sound->wavPath = "Other.wav";
    } else if (auto* vector = dynamic_cast<CFilmVectorKey*>(&key)) {
        vector->value = {7.0f, 8.0f, 9.0f};
    } else if (auto* script = dynamic_cast<CFilmJavaKey*>(&key)) {
        script->methodName = "Other";
    } else if (auto* flags = dynamic_cast<CFilmFlagsKey*>(&key)) {
        flags->keyFlags = 6; // a light that is on has 1
    } else if (auto* scalar = dynamic_cast<CFilmScalarKey*>(&key)) {
        scalar->value = 9.0f;
    }
}

} // namespace

TEST_F(NoDeadItemTest, MenuBesideTheRows) {
    EXPECT_THAT(DeadIn(-1, /*ofKey*/ false, [this] { Begin(); }), IsEmpty());
    EXPECT_EQ(walked, 11); // all but "Stop movie"
}

TEST_F(NoDeadItemTest, MenuBesideTheRowsWithObjectsSelected) {
    const auto select = [this](const std::vector<const char*>& names) {
        Begin();
        std::vector<EditorObject*> objects;
        for (const char* name : names) {
            EditorObject* object = editor.level.FindObject(name);
            objects.push_back(object != nullptr ? object : editor.Create(name));
        }
        editor.Select(objects);
    };
    Begin();
    const auto isLamp = [](CFilmTrack* track) {
        const auto* light = AsGLLightTrack(track);
        return light != nullptr && light->isSun == 0;
    };
    const auto& tracks = plugin.GetCurrentFilm()->tracks;
    const std::string lamp = plugin.FindObjectByTrack(*std::ranges::find_if(tracks, isLamp))->name;
    EXPECT_THAT(DeadIn(-1, false, [&] { select({"Crate"}); }), IsEmpty());
    EXPECT_THAT(DeadIn(-1, false, [&] { select({"Barrel"}); }), IsEmpty());
    EXPECT_THAT(DeadIn(-1, false, [&] { select({"Barrel", "Crate"}); }), IsEmpty());
    EXPECT_THAT(DeadIn(-1, false, [&] { select({lamp.c_str()}); }), IsEmpty());
    const auto selectVirtual = [&] {
        select({"Crate"});
        Command(IDC_TO_VIRTUAL_OBJECT);
    };
    EXPECT_THAT(DeadIn(-1, false, selectVirtual), IsEmpty());
}

TEST_F(NoDeadItemTest, MenuBesideTheRowsWithoutAFilm) {
    EXPECT_THAT(DeadIn(-1, /*ofKey*/ false, [this] { Begin(/*withFilm*/ false); }), IsEmpty());
}

TEST_F(NoDeadItemTest, MenusOfAllRows) {
    Begin();
    const int rows = RowCount();
    for (int place = 0; place < rows; ++place) {
        EXPECT_THAT(DeadIn(place, /*ofKey*/ false, [this] { Begin(); }), IsEmpty())
            << place << ' ' << RowAt(place)->name;
    }
    EXPECT_GT(walked, 150);
}

TEST_F(NoDeadItemTest, MenusOfAKeyOfEachRow) {
    Begin();
    const int rows = RowCount();
    for (int place = 0; place < rows; ++place) {
        Begin();
        if (FirstKeyOf(place) == nullptr) {
            continue;
        }
        EXPECT_THAT(DeadIn(place, /*ofKey*/ true, [this] { Begin(); }), IsEmpty())
            << place << ' ' << RowAt(place)->name;
    }
    EXPECT_GT(walked, 100);
}

/// What the menus offer with a copied key and not without; the rest is as it was.
TEST_F(NoDeadItemTest, MenusWithACopiedKey) {
    Begin();
    const int rows = RowCount();
    for (int place = 0; place < rows; ++place) {
        for (const bool ofKey : {true, false}) {
            Begin();
            if (FirstKeyOf(place) == nullptr) {
                continue;
            }
            CTrackKey* other = RowAt(place)->keys[1];
            MakeDifferent(*other->record);
            Control().keyDuplicator.Set(other, RowAt(place), /*clone*/ false);
            const UINT paste = ofKey ? IDC_PASTE_ATTRIBUTES : IDC_PASTE_KEY;
            EXPECT_FALSE(IsDead(place, ofKey, paste)) << place << ' ' << RowAt(place)->name;
            EXPECT_TRUE(items.contains(paste));
        }
    }
    EXPECT_GT(walked, 60);
}

TEST_F(NoDeadItemTest, MenuOfAKeyWithSeveralKeysMarked) {
    const auto marked = [this] {
        Begin();
        CTrackCtrl* row = RowOfKind(KeyKind::Position);
        for (CTrackKey* key : {row->keys[0], row->keys[1]}) {
            key->marked = true;
        }
        Control().SelectOnly(row->keys[1]);
    };
    marked();
    const int place = static_cast<int>(std::distance(
        Control().tracks.begin(), std::ranges::find(Control().tracks, RowOfKind(KeyKind::Position))));
    EXPECT_THAT(DeadIn(place, /*ofKey*/ true, marked), IsEmpty());
}

TEST_F(NoDeadItemTest, MenusWhileAFilmPlays) {
    EXPECT_THAT(DeadWhilePlaying(-1, /*ofKey*/ false), IsEmpty());
    EXPECT_EQ(walked, 11); // all but "Play movie"
    Begin();
    const int rows = RowCount();
    for (int place = 0; place < rows; ++place) {
        EXPECT_THAT(DeadWhilePlaying(place, /*ofKey*/ false), IsEmpty()) << place;
        Begin();
        if (FirstKeyOf(place) != nullptr) {
            EXPECT_THAT(DeadWhilePlaying(place, /*ofKey*/ true), IsEmpty()) << place;
        }
    }
}

TEST_F(NoDeadItemTest, ToolbarWithAKeyAnActorAndACamera) {
    for (const bool isMarked : {false, true}) {
        const auto prepare = [&] {
            Begin();
            CTrackKey* key = RowOfKind(KeyKind::Position)->keys[0];
            Control().SelectOnly(key);
            key->marked = isMarked;
            editor.Select({editor.level.FindObject("Crate")});
            plugin.SetVisualizedTrack(plugin.GetCurrentFilm()->FindCamera("Main"));
        };
        EXPECT_THAT(DeadButtons(prepare), IsEmpty());
    }
    EXPECT_EQ(walked, 2 * 17);
}

TEST_F(NoDeadItemTest, ToolbarWithNothingSelected) {
    EXPECT_THAT(DeadButtons([this] { Begin(); }), IsEmpty());
}

TEST_F(NoDeadItemTest, ToolbarWithoutAFilm) {
    EXPECT_THAT(DeadButtons([this] { Begin(/*withFilm*/ false); }), IsEmpty());
}

TEST_F(NoDeadItemTest, StopWhileAFilmPlays) {
    for (const bool inMenu : {true, false}) {
        Begin();
        RunClock(1);
        float stoppedAt = -1.0f;
        InsidePump([&] {
            stoppedAt = plugin.currentTime;
            inMenu ? ChooseIn(-1, /*ofKey*/ false, IDC_STOP_MOVIE) : Command(IDC_STOP_MOVIE);
        });
        plugin.Play(0.0f);
        EXPECT_GE(stoppedAt, 1.0f);
        EXPECT_LT(plugin.currentTime, 2.0f); // of ten seconds
    }
}

TEST_F(NoDeadItemTest, ValidatingTellsAlsoOfAFilmThatIsValidatedAlready) {
    Begin();
    plugin.GetCurrentFilm()->validated = 0;
    for (int told = 1; told <= 4; ++told) {
        told % 2 == 1 ? Command(IDC_VALIDATE_MOVIE) : ChooseIn(-1, /*ofKey*/ false, IDC_VALIDATE_MOVIE);
        EXPECT_EQ(notes, told);
        EXPECT_EQ(plugin.GetCurrentFilm()->validated, 1);
    }
}
