#include "tests/timeline/ControlFixture.h"

#include "keys/views/TrackKey.h"
#include "plugin/contract/EventCodes.h"
#include "tests/support/FakeAttributes.h"

#include <gmock/gmock.h>

using ::testing::IsEmpty;

namespace {

/// What is shown may go at any moment: by the menu, the level, a film change.
class MainCtrlForgetTest : public ControlTest {
protected:
    MainCtrlForgetTest() {
        Hooks().cursorPos = [] { return CPoint(100, 100); };
        film = OpenFilmWithActors(2);
        light = editor.CreateOfClass(ClassName::GLLight, "Lamp");
        Unfold("Actor100", KeyKind::Position);
    }
    /// The row that the test is about, and its first key.
    void Unfold(const std::string& root, int kind) {
        RowOf(root)->SetExpanded(true, true);
        row = RowOf(root, kind);
        key = row->keys.front();
        Settle();
    }
    void PressKey() {
        CRect client;
        row->GetClientRect(&client);
        row->SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(150, client.Height() / 2));
    }
    std::string NameOfLight() const { return light->name; }
    void DeleteLight() { editor.DeleteObjects({light}); }
    void ExpectNothingHeld() {
        EXPECT_THAT(control->selectedKeys, IsEmpty());
        EXPECT_EQ(control->hoverKey, nullptr);
        EXPECT_EQ(control->menuKey, nullptr);
        EXPECT_EQ(control->menuRow, nullptr);
        EXPECT_EQ(control->activeKey, nullptr);
        // The key last added stays current; it must be one that is shown.
        EXPECT_TRUE(CurrentKey() == nullptr || control->FindRowOfKeyView(CurrentKey(), false) != nullptr);
        EXPECT_FALSE(control->keyDescrWnd->IsWindowVisible());
    }
    /// Every timer and every paint that is still due.
    void Drain() {
        control->SendMessage(WM_TIMER, 0);
        control->SendMessage(WM_TIMER, 1);
        Settle(20);
    }

    CTrackCtrl* FindLightRow() {
        for (CTrackCtrl* candidate : control->tracks) {
            if (AsGLLightTrack(candidate->track) != nullptr) {
                return candidate;
            }
        }
        return nullptr;
    }

    IFilm* film = nullptr;
    EditorObject* light = nullptr;
    CTrackCtrl* row = nullptr;
    CTrackKey* key = nullptr;
};

} // namespace

TEST_F(MainCtrlForgetTest, AFilmChangeWhileAKeyIsHeld) {
    PressKey();
    ASSERT_EQ(row->dragKey, key);
    ASSERT_EQ(CWnd::GetCapture(), row);
    control->ShowFilm(film, true);
    ExpectNothingHeld();
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
    Drain();
}

TEST_F(MainCtrlForgetTest, ARebuildForgetsTheCopiedKeyAndTheMenu) {
    control->keyDuplicator.Set(key, row, /*clone*/ false);
    control->menuRow = row;
    control->menuKey = key;
    control->ShowFilm(film, true);
    EXPECT_EQ(control->keyDuplicator.sourceKey, nullptr);
    ExpectNothingHeld();
}

TEST_F(MainCtrlForgetTest, AFilmChangeWhileAHoverIsPending) {
    control->ShowKeyDescription(key);
    plugin.SetCurrentFilm(nullptr);
    ExpectNothingHeld();
    Drain();
}

TEST_F(MainCtrlForgetTest, AFilmChangeWhileThePopupShows) {
    control->ShowKeyDescription(key);
    control->SendMessage(WM_TIMER, 0);
    ASSERT_TRUE(control->keyDescrWnd->IsWindowVisible());
    plugin.SetCurrentFilm(NewFilm());
    ExpectNothingHeld();
    Drain();
}

TEST_F(MainCtrlForgetTest, AnObjectDeletedWhileItsKeyIsHeld) {
    Unfold(NameOfLight(), KeyKind::Position);
    PressKey();
    ASSERT_EQ(row->dragKey, key);
    control->ShowKeyDescription(key);
    DeleteLight();
    EXPECT_EQ(FindLightRow(), nullptr);
    ExpectNothingHeld();
    Drain();
}

TEST_F(MainCtrlForgetTest, AnObjectDeletedUnderAnOpenMenu) {
    Unfold(NameOfLight(), KeyKind::Position);
    Hooks().popupMenu = [this](const CMenu&, CPoint) {
        DeleteLight();
        return UINT{36814};
    };
    control->ShowContextMenu(0, 0, row, key);
    Drain();
    EXPECT_EQ(control->menuRow, nullptr);
    EXPECT_EQ(control->menuKey, nullptr);
}

TEST_F(MainCtrlForgetTest, ARowRemovedUnderAnOpenMenu) {
    Hooks().popupMenu = [this](const CMenu&, CPoint) {
        control->RemoveTrackCtrl(RowOf("Actor100"), true);
        return UINT{36803};
    };
    control->ShowContextMenu(0, 0, RowOf("Actor100"), nullptr);
    Drain();
    EXPECT_EQ(control->menuRow, nullptr);
    EXPECT_NE(RowOf("Actor101"), nullptr);
}

TEST_F(MainCtrlForgetTest, AFilmDeletedWhileAMarkIsDragged) {
    control->grid->AddMark(5.0f);
    // 10 seconds over 630 pixels: 5 seconds at 315.
    control->grid->SendMessage(WM_LBUTTONDOWN, MK_LBUTTON | MK_SHIFT, MAKELPARAM(315, 10));
    ASSERT_NE(control->grid->dragMark, nullptr);
    plugin.DeleteFilm(film);
    EXPECT_EQ(control->grid->dragMark, nullptr);
    control->grid->SendMessage(WM_MOUSEMOVE, MK_LBUTTON | MK_SHIFT, MAKELPARAM(330, 10));
    control->grid->SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(330, 10));
    Drain();
    ExpectNothingHeld();
}

TEST_F(MainCtrlForgetTest, RowsRebuiltWhileAMarkIsDraggedKeepTheirTimes) {
    key->SetPosition(5.0f, false);
    control->grid->AddMark(5.0f);
    control->grid->SendMessage(WM_LBUTTONDOWN, MK_LBUTTON | MK_SHIFT, MAKELPARAM(315, 10));
    IFilmKey* record = key->record;
    control->ShowFilm(film, true);
    control->grid->SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(-500, 10));
    Drain();
    EXPECT_EQ(record->GetTime(), 5.0f);
}

TEST_F(MainCtrlForgetTest, AKeyRemovedFromEveryHolder) {
    control->SelectOnly(key);
    control->ShowKeyDescription(key);
    control->menuKey = key;
    control->activeKey = key;
    PressKey();
    row->RemoveKey(key, /*destroy*/ true, /*redraw*/ true, /*noUndo*/ true);
    EXPECT_EQ(row->dragKey, nullptr);
    ExpectNothingHeld();
    row->SendMessage(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(200, 10));
    row->SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(200, 10));
    Drain();
}

TEST_F(MainCtrlForgetTest, AShorterAxisLetsGoOfTheKeysOutsideIt) {
    key->SetPosition(8.0f, false);
    control->SelectOnly(key);
    control->ShowKeyDescription(key);
    IFilmKey* record = key->record;
    control->SetMovieRange(0.0f, 5.0f);
    EXPECT_THAT(row->keys, IsEmpty());
    ExpectNothingHeld();
    EXPECT_EQ(record->track, row->track); // the record stays
    control->ShowFilm(film, true);
    Drain();
}

TEST_F(MainCtrlForgetTest, ADroppedTrackLeavesEmptyRows) {
    control->SelectOnly(key);
    control->ForgetTrack(row->track);
    EXPECT_THAT(control->selectedKeys, IsEmpty());
    EXPECT_EQ(row->track, nullptr);
    EXPECT_THAT(row->keys, IsEmpty());
    EXPECT_EQ(RowOf("Actor100")->track, nullptr);
    Drain();
    int menus = 0;
    Hooks().popupMenu = [&menus](const CMenu&, CPoint) { return static_cast<UINT>(++menus * 0); };
    row->SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(10, 5));
    row->SendMessage(WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(10, 5));
    RowOf("Actor100")->ToggleExpanded();
    EXPECT_EQ(menus, 0); // it has nothing to offer
}

TEST_F(MainCtrlForgetTest, TheControlGoesWhenTheHostHearsOfAPressOnAName) {
    editor.onBroadcast = [this](int code, void*) {
        if (code == EventCode::SelectionChanged) {
            plugin.scenarioDlg = nullptr;
            control.reset();
        }
    };
    RowOf("Actor100")->SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(60, 10));
    EXPECT_EQ(control, nullptr);
}

TEST_F(MainCtrlForgetTest, TheControlGoesWhenAPressBesideTheKeysAsksTheUser) {
    FakeAttributes& dialog = OpenFakeAttributes(plugin);
    dialog.visible = true;
    control->SelectOnly(key);
    dialog.log.clear();
    dialog.onSetKey = [this] {
        plugin.scenarioDlg = nullptr;
        control.reset();
    };
    row->SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(600, 10));
    EXPECT_EQ(control, nullptr);
    EXPECT_EQ(dialog.log.back(), "SetKey null");
}

TEST_F(MainCtrlForgetTest, TheControlGoesWhileAHoverIsPending) {
    control->ShowKeyDescription(key);
    holder.control = nullptr;
    control.reset();
    Settle(600);
    EXPECT_EQ(frame.GetWindowChild(0), nullptr);
    EXPECT_EQ(TimelineOf(plugin), nullptr);
}

TEST_F(MainCtrlForgetTest, AFilmClosedFromInsideItsPlaying) {
    std::uint32_t clock = 0;
    int frames = 0;
    Hooks().clock = [&clock] { return clock += 20; };
    editor.onBroadcast = [this, &frames](int code, void*) {
        if (code == EventCode::ObjectsMoved && plugin.isPlaying != 0 && ++frames == 3) {
            plugin.DeleteFilm(film);
        }
    };
    plugin.Play(0.0f);
    editor.onBroadcast = nullptr;
    EXPECT_EQ(frames, 3);
    EXPECT_EQ(plugin.GetCurrentFilm(), nullptr);
    EXPECT_THAT(RowNames(), IsEmpty());
    Drain();
}

TEST_F(MainCtrlForgetTest, TheRulerMovedInAPlayingFilmPlaysOnFromThere) {
    std::uint32_t clock = 0;
    int frames = 0;
    int depth = 0;
    Hooks().clock = [&clock] { return clock += 20; };
    editor.onBroadcast = [this, &frames, &depth](int code, void*) {
        if (code == EventCode::ObjectsMoved && plugin.isPlaying != 0 && ++frames < 200) {
            ++depth;
            control->SetCurrentFrame(1.0f,
                                     true); // plays inside the play, far deeper than the stack would bear
            --depth;
        }
    };
    plugin.Play(0.0f);
    editor.onBroadcast = nullptr;
    EXPECT_GE(frames, 200);
    EXPECT_EQ(plugin.isPlaying, 0);
    EXPECT_NEAR(plugin.currentTime, film->length, 0.1f);
}
