#include "tests/timeline/ControlFixture.h"

#include "keys/views/TrackKey.h"

#include <algorithm>
#include <functional>
#include <gmock/gmock.h>

namespace {

enum class State {
    Idle,
    KeySelected,
    KeyHeld,
    HoverPending,
    PopupShown,
    MarkDragged,
    CursorDragged,
    MenuOpen,
    Playing
};
enum class Deletion { Key, KindRow, RootRow, Film, Object, FilmSwitch, FilmClosed, AllFilms, Rebuild };

constexpr const char* kStateNames[] = {"Idle",          "KeySelected", "KeyHeld",
                                       "HoverPending",  "PopupShown",  "MarkDragged",
                                       "CursorDragged", "MenuOpen",    "Playing"};
constexpr const char* kDeletionNames[] = {"Key",        "KindRow",    "RootRow",  "Film",   "Object",
                                          "FilmSwitch", "FilmClosed", "AllFilms", "Rebuild"};

/// Everything that can go, in every state that the control can be in.
class MainCtrlDeletionTest : public ControlTest,
                             public ::testing::WithParamInterface<std::tuple<State, Deletion>> {
protected:
    MainCtrlDeletionTest() {
        Hooks().cursorPos = [] { return CPoint(200, 100); };
        Hooks().clock = [this] { return clock += 20; };
        film = OpenFilmWithActors(2);
        light = editor.CreateOfClass(ClassName::GLLight, "Lamp");
        root = FindLightRoot();
        root->SetExpanded(true, true);
        row = root->FindChild(KeyKind::Position, -2);
        key = row->keys.front();
        Settle();
    }

    CTrackCtrl* FindLightRoot() {
        const auto found = std::ranges::find_if(control->tracks, [](CTrackCtrl* r) {
            return r->IsRoot() && AsGLLightTrack(r->track) != nullptr;
        });
        return found != control->tracks.end() ? *found : nullptr;
    }

    void Delete(Deletion deletion) {
        gone = true; // what follows poses the film, which may call this again
        switch (deletion) {
        case Deletion::Key:
            row->RemoveKey(key, true, true, true);
            break;
        case Deletion::KindRow:
            control->RemoveTrackCtrl(row, true);
            break;
        case Deletion::RootRow:
            control->RemoveTrackCtrl(root, true);
            break;
        case Deletion::Film:
            plugin.DeleteFilm(film);
            break;
        case Deletion::Object:
            editor.DeleteObjects({light});
            break;
        case Deletion::FilmSwitch:
            plugin.SetCurrentFilm(NewFilm());
            break;
        case Deletion::FilmClosed:
            plugin.SetCurrentFilm(nullptr);
            break;
        case Deletion::AllFilms:
            plugin.OnNew();
            break;
        case Deletion::Rebuild:
            control->ShowFilm(film, true);
            break;
        }
        ExpectNothingDangles();
    }

    /// Brings the control into the state, deletes in it, and lets the state end as it would.
    void Run(State state, const std::function<void()>& deletion) {
        CMarkedGridCtrl& ruler = *control->grid;
        const LPARAM middle = MAKELPARAM(315, 10);
        switch (state) {
        case State::Idle:
            deletion();
            break;
        case State::KeySelected:
            control->SelectOnly(key);
            control->activeKey = key;
            deletion();
            break;
        case State::KeyHeld:
            row->SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(150, 10));
            EXPECT_EQ(row->dragKey, key);
            deletion();
            break;
        case State::HoverPending:
            control->ShowKeyDescription(key);
            deletion();
            break;
        case State::PopupShown:
            control->ShowKeyDescription(key);
            control->SendMessage(WM_TIMER, 0);
            deletion();
            break;
        case State::MarkDragged:
            ruler.AddMark(5.0f);
            ruler.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON | MK_SHIFT, middle);
            deletion();
            ruler.SendMessage(WM_MOUSEMOVE, MK_LBUTTON | MK_SHIFT, MAKELPARAM(400, 10));
            ruler.SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(400, 10));
            break;
        case State::CursorDragged:
            ruler.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, middle);
            deletion();
            ruler.SendMessage(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(400, 10));
            ruler.SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(400, 10));
            break;
        case State::MenuOpen:
            Hooks().popupMenu = [&deletion](const CMenu&, CPoint) {
                deletion();
                return UINT{36803};
            };
            control->ShowContextMenu(0, 0, row, nullptr);
            break;
        case State::Playing:
            editor.onBroadcast = [&](int code, void*) {
                if (code == EventCode::ObjectsMoved && plugin.isPlaying != 0 && !gone) {
                    deletion();
                }
            };
            plugin.Play(0.0f);
            editor.onBroadcast = nullptr;
            break;
        }
    }

    std::uint32_t clock = 0;
    IFilm* film = nullptr;
    EditorObject* light = nullptr;
    CTrackCtrl* root = nullptr;
    CTrackCtrl* row = nullptr;
    CTrackKey* key = nullptr;
    bool gone = false;
};

} // namespace

TEST_P(MainCtrlDeletionTest, LeavesNothingDangling) {
    const auto [state, deletion] = GetParam();
    Run(state, [this, what = deletion] { Delete(what); });
    EXPECT_TRUE(gone);
    ExpectNothingDangles();
    // Timers, paints and the mouse of a user who noticed nothing.
    control->SendMessage(WM_TIMER, 0);
    control->SendMessage(WM_TIMER, 1);
    Settle(5);
    for (CTrackCtrl* shown : std::list<CTrackCtrl*>(control->tracks)) {
        shown->SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(200, 10));
        shown->SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(200, 10));
    }
    Settle(5);
    ExpectNothingDangles();
}

INSTANTIATE_TEST_SUITE_P(
    All, MainCtrlDeletionTest,
    ::testing::Combine(::testing::Values(State::Idle, State::KeySelected, State::KeyHeld, State::HoverPending,
                                         State::PopupShown, State::MarkDragged, State::CursorDragged,
                                         State::MenuOpen, State::Playing),
                       ::testing::Values(Deletion::Key, Deletion::KindRow, Deletion::RootRow, Deletion::Film,
                                         Deletion::Object, Deletion::FilmSwitch, Deletion::FilmClosed,
                                         Deletion::AllFilms, Deletion::Rebuild)),
    [](const auto& test) {
        return std::string(kDeletionNames[static_cast<int>(std::get<1>(test.param))]) + "While" +
               kStateNames[static_cast<int>(std::get<0>(test.param))];
    });
