// The window with an open edit while what it shows goes away, and what becomes of the edit.
#include "keys/views/TrackKey.h"
#include "resources/resource.h"
#include "tests/keys/AttributesWindowFixture.h"
#include "tests/support/MouseScript.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// A position key at 2 seconds is on show, and "4.5" is typed over its x of 1.5.
class KeyAttributesLossTest : public AttributesWindowTest {
protected:
    void SetUp() override {
        key = PutPosition(2.0f, 1.5f);
        Open(key);
        Edit("Pos X", "4.5");
    }
    CTrackCtrl& Row() { return *control->FindRowOfKey(key); }

    CFilmVectorKey* key = nullptr;
};

} // namespace

TEST_F(KeyAttributesLossTest, AnotherFilmTakesTheEditAlong) {
    IFilm* other = NewFilm();
    plugin.SetCurrentFilm(other);
    EXPECT_EQ(key->value.x, 4.5f);
    ExpectEmpty();
}

TEST_F(KeyAttributesLossTest, NoFilmTakesTheEditAlong) {
    plugin.SetCurrentFilm(nullptr);
    EXPECT_EQ(key->value.x, 4.5f);
    ExpectEmpty();
}

TEST_F(KeyAttributesLossTest, SameFilmAnewKeepsKeyAndEdit) {
    control->ShowFilm(film, /*flag*/ true);
    EXPECT_EQ(Dialog().GetRecord(), key);
    EXPECT_EQ(Dialog().GetKey(), ViewOf(key));
    EXPECT_EQ(key->value.x, 4.5f);
    EXPECT_EQ(Lines().front(), "Pos X=4.50000");
}

TEST_F(KeyAttributesLossTest, RemovedKeyEmptiesTheWindow) {
    Row().RemoveKey(ViewOf(key), /*destroy*/ true, /*redraw*/ true, /*noUndo*/ false);
    ExpectEmpty();
}

TEST_F(KeyAttributesLossTest, KeyDeletedForGoodEmptiesTheWindow) {
    Row().RemoveKey(ViewOf(key), /*destroy*/ true, /*redraw*/ true, /*noUndo*/ true);
    ExpectEmpty();
}

TEST_F(KeyAttributesLossTest, RemovedActorEmptiesTheWindow) {
    const ObjectList actors{crate};
    plugin.RemoveActors(film, &actors, /*lightsOnly*/ false);
    ExpectEmpty();
}

TEST_F(KeyAttributesLossTest, DestroyedObjectLeavesNothingThatDangles) {
    editor.DeleteObjects({crate});
    control->ShowFilm(film, /*flag*/ true);
    Dialog().SetKey(nullptr, /*refresh*/ true);
    Dialog().SetKey(nullptr, /*refresh*/ false);
    ExpectEmpty();
}

TEST_F(KeyAttributesLossTest, DeletedFilmEmptiesTheWindow) {
    plugin.DeleteFilm(film);
    ExpectEmpty();
}

TEST_F(KeyAttributesLossTest, SuspendTakesTheEditAlongAndResumeLeavesTheWindowEmpty) {
    Suspend();
    EXPECT_EQ(key->value.x, 4.5f);
    ExpectEmpty();
    Resume();
    ExpectEmpty();
}

TEST_F(KeyAttributesLossTest, NewLevelEmptiesTheWindowAndWritesNothing) {
    plugin.OnNew();
    EXPECT_EQ(key->value.x, 1.5f);
    ExpectEmpty();
}

TEST_F(KeyAttributesLossTest, LoadedLevelEmptiesTheWindowAndWritesNothing) {
    plugin.OnEvent(EventCode::LevelLoaded, nullptr);
    EXPECT_EQ(key->value.x, 1.5f);
    ExpectEmpty();
}

TEST_F(KeyAttributesLossTest, CommandKeepsTheEditThoughItRebuilds) {
    control->OnCmdMsg(IDC_ADD_ACTORS, 0, nullptr, nullptr);
    EXPECT_EQ(key->value.x, 4.5f);
}

// Required: a new key takes the object's pose as the film has it.
TEST_F(KeyAttributesLossTest, AddKeyDoesNotWaitForTheEdit) {
    plugin.SetFrame(0.0f, IPluginImpl::kNoPrevious);
    control->menuRow = &Row();
    control->mouseTime = 5.0f;
    control->OnCmdMsg(IDC_ADD_KEY, 0, nullptr, nullptr);
    const std::vector<IFilmKey*> keys = KeysOf(*track, KeyKind::Position);
    ASSERT_EQ(keys.size(), 2u);
    EXPECT_EQ(VectorKey(keys[1]).value.x, 1.5f);
    EXPECT_EQ(key->value.x, 4.5f); // written when the new key was selected
}

TEST_F(KeyAttributesLossTest, MovedObjectIsNotOverwrittenByTheEdit) {
    plugin.SetTime(2.0f, /*fromWindow*/ false);
    plugin.SetAnimateObjects(true);
    UserMoves(*crate, 50.0f, 0.0f, 0.0f);
    EXPECT_EQ(key->value.x, 50.0f);
    EXPECT_EQ(Lines().front(), "Pos X=50.00000");
    Dialog().SetKey(nullptr, /*refresh*/ false);
    EXPECT_EQ(key->value.x, 50.0f);
}

TEST_F(KeyAttributesLossTest, WindowIsEmptyWhenTheTimelineGoes) {
    control.reset();
    holder.control = nullptr;
    ExpectEmpty();
}

TEST_F(KeyAttributesLossTest, WindowGoesWithItsPlugin) {
    plugin.keyAttributesDlg.reset();
    Settle();
    control->SelectOnly(ViewOf(key));
    EXPECT_EQ(key->value.x, 1.5f);
    plugin.GetKeyAttributesDlg();
    ExpectEmpty();
}

namespace {

/// A camera key names "Gone", which the film doesn't have; its delay is under edit.
class KeyAttributesQuestionTest : public AttributesWindowTest {
protected:
    void SetUp() override {
        key = AddCut(film, "Gone", 1.0f, 2.0f, 0);
        other = AddCut(film, "", 3.0f, 4.0f, 0);
        control->ShowFilm(film, /*flag*/ true);
        Open(key);
        Edit("Delay time", "0.5");
        boxAnswer = IDYES;
    }
    /// In the row of both keys, near the end of the film.
    void PressBesideTheKeys() {
        CTrackCtrl* row = control->FindRowOfKey(key);
        row->parent->SetExpanded(true, /*redraw*/ true);
        CRect client;
        row->GetClientRect(&client);
        MouseScript(*row).Press(client.right - 5, 10);
    }
    /// Runs while the question waits.
    void WhileAsked(const std::function<void()>& action) {
        Hooks().messageBox = [this, action](const std::string& text, UINT) {
            boxes.push_back(text);
            if (boxes.size() == 1) {
                action();
            }
            return IDYES;
        };
    }

    CFilmCameraKey* key = nullptr;
    CFilmCameraKey* other = nullptr;
};

} // namespace

TEST_F(KeyAttributesQuestionTest, AsksAtAnotherKey) {
    control->SelectOnly(ViewOf(other));
    ASSERT_FALSE(boxes.empty());
    EXPECT_EQ(boxes[0], "There is no camera with such a name. Movie will be invalid.\n Do you still want to "
                        "set that name?");
    EXPECT_EQ(key->delayTime, 0.5f);
    EXPECT_EQ(Dialog().GetRecord(), other);
}

TEST_F(KeyAttributesQuestionTest, FilmMayGoWhileTheUserIsAsked) {
    WhileAsked([this] { plugin.DeleteFilm(film); });
    control->SelectOnly(ViewOf(other));
    ExpectEmpty();
}

TEST_F(KeyAttributesQuestionTest, FilmMayGoWhileItsSwitchAsks) {
    IFilm* next = NewFilm();
    WhileAsked([this, next] { plugin.DeleteFilm(next); });
    plugin.SetCurrentFilm(next);
    Settle();
    ExpectEmpty();
}

TEST_F(KeyAttributesQuestionTest, WindowMayGoWhileTheUserIsAsked) {
    WhileAsked([this] { plugin.keyAttributesDlg.reset(); });
    Dialog().SetKey(nullptr, /*refresh*/ false);
    EXPECT_EQ(plugin.keyAttributesDlg, nullptr);
    plugin.GetKeyAttributesDlg();
}

TEST_F(KeyAttributesQuestionTest, KeyMayGoWhileTheUserIsAsked) {
    WhileAsked([this] {
        control->FindRowOfKey(key)->RemoveKey(ViewOf(key), /*destroy*/ true, /*redraw*/ true,
                                              /*noUndo*/ true);
    });
    Dialog().SetKey(nullptr, /*refresh*/ false);
    ExpectEmpty();
}

TEST_F(KeyAttributesQuestionTest, RowsThatGoWhileTheirRemovalAsksAreNotTouched) {
    WhileAsked([this] { control->ShowFilm(film, /*flag*/ true); });
    const std::vector<std::string> rows = RowNames();
    control->RemoveTrackCtrl(control->FindRowOfKey(key), /*redraw*/ true);
    EXPECT_FALSE(boxes.empty());
    EXPECT_EQ(RowNames(), rows) << "and none of the new rows, one of which may stand in the old one's place";
    EXPECT_EQ(KeysOf(*film->mainTrack, KeyKind::Camera).size(), 2u) << "the user may say it once more";
    ExpectNothingDangles();
}

TEST_F(KeyAttributesQuestionTest, WindowsThatGoWhileARemovalAsksAreNotTouched) {
    WhileAsked([this] {
        plugin.scenarioDlg = nullptr;
        control.reset();
    });
    control->RemoveTrackCtrl(control->FindRowOfKey(key), /*redraw*/ true);
    EXPECT_EQ(control, nullptr);
    EXPECT_EQ(KeysOf(*film->mainTrack, KeyKind::Camera).size(), 2u);
}

TEST_F(KeyAttributesQuestionTest, WindowsThatGoWhileAPressBesideTheKeysAsksAreNotTouched) {
    WhileAsked([this] {
        plugin.scenarioDlg = nullptr;
        control.reset();
    });
    PressBesideTheKeys();
    EXPECT_FALSE(boxes.empty());
    EXPECT_EQ(control, nullptr);
    ExpectEmpty();
}

TEST_F(KeyAttributesQuestionTest, RowsThatGoWhileAPressBesideTheKeysAsksAreNotTouched) {
    WhileAsked([this] { control->ShowFilm(film, /*flag*/ true); });
    PressBesideTheKeys();
    EXPECT_FALSE(boxes.empty());
    ExpectNothingDangles();
    ExpectEmpty();
}

TEST_F(KeyAttributesQuestionTest, WindowsThatGoWhileANewKeyAsksAreNotTouched) {
    WhileAsked([this] {
        plugin.scenarioDlg = nullptr;
        control.reset();
    });
    control->menuRow = control->FindRowOfKey(key);
    control->mouseTime = 6.0f;
    control->OnCmdMsg(IDC_ADD_KEY, 0, nullptr, nullptr);
    EXPECT_EQ(control, nullptr);
    EXPECT_EQ(KeysOf(*film->mainTrack, KeyKind::Camera).size(), 2u);
    ExpectEmpty();
}

TEST_F(KeyAttributesQuestionTest, NewerKeyStaysWhenItIsShownWhileTheUserIsAsked) {
    WhileAsked([this] { Dialog().SetKey(ViewOf(other), /*refresh*/ false); });
    Dialog().SetKey(nullptr, /*refresh*/ false);
    EXPECT_EQ(Dialog().GetRecord(), other);
    EXPECT_EQ(key->delayTime, 0.5f);
}

TEST_F(KeyAttributesQuestionTest, KeyThatIsSelectedWhileTheSelectionIsClearedIsNotSelectedHalf) {
    WhileAsked([this] { control->SelectOnly(ViewOf(other)); });
    control->ClearSelection();
    EXPECT_FALSE(boxes.empty());
    EXPECT_THAT(control->selectedKeys, IsEmpty());
    EXPECT_FALSE(ViewOf(other)->selected);
    EXPECT_FALSE(ViewOf(key)->selected);
}

TEST_F(KeyAttributesQuestionTest, KeyThatIsSelectedAnewWhileItIsClearedIsClearedToo) {
    WhileAsked([this] { control->SelectOnly(ViewOf(key)); });
    control->ClearSelection();
    EXPECT_FALSE(boxes.empty());
    EXPECT_THAT(control->selectedKeys, IsEmpty());
    EXPECT_FALSE(ViewOf(key)->selected);
}

TEST_F(KeyAttributesQuestionTest, KeyThatAsksWhileItIsSelectedIsInTheSelectionAlready) {
    control->selectedKeys.clear(); // rows made anew select nothing; the window keeps its key
    ViewOf(key)->selected = false;
    WhileAsked([this] {
        EXPECT_THAT(control->selectedKeys, ElementsAre(ViewOf(other)));
        control->SelectOnly(ViewOf(key));
    });
    control->SelectOnly(ViewOf(other));
    EXPECT_FALSE(boxes.empty());
    EXPECT_THAT(control->selectedKeys, ElementsAre(ViewOf(key))) << "the newer choice alone";
    EXPECT_FALSE(ViewOf(other)->selected);
}

TEST_F(KeyAttributesQuestionTest, NoQuestionAtASwitchOfFilmsForACameraOfTheFilmThatIsLeft) {
    AddCamera(film, "Gone");
    plugin.SetCurrentFilm(NewFilm());
    EXPECT_THAT(boxes, IsEmpty());
    EXPECT_EQ(key->delayTime, 0.5f);
}
