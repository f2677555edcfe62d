#include "tests/timeline/ControlFixture.h"

#include "framework/FileDialog.h"
#include "keys/views/TrackKey.h"

#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <random>

namespace {

/// A user who looks around in films at random: nothing may dangle, and every row holds the records of its
/// kind.
class MainCtrlRandomTest : public ControlTest {
protected:
    static constexpr int kSteps = 3000;

    MainCtrlRandomTest() : before(std::filesystem::current_path()) {
        Hooks().cursorPos = [this] { return CPoint(Pick(kWidth), Pick(kHeight)); };
        Hooks().clock = [this] { return clock += 200; };
        Hooks().popupMenu = [this](const CMenu& menu, CPoint) {
            const auto& items = menu.Items();
            return items.empty() ? UINT{0}
                                 : items[static_cast<std::size_t>(Pick(static_cast<int>(items.size())))].id;
        };
        Hooks().modalDialog = [](CDialog&) { return int{IDCANCEL}; };
        Hooks().fileDialog = [](CFileDialog&) { return int{IDCANCEL}; };
        for (int i = 0; i < 3; ++i) {
            MakeFilm(i);
        }
    }

    /// Dialogs for files leave the program's folder behind.
    ~MainCtrlRandomTest() override { std::filesystem::current_path(before); }

    int Pick(int count) { return std::uniform_int_distribution<int>(0, count - 1)(random); }
    float PickTime() { return static_cast<float>(Pick(1200)) / 100.0f - 1.0f; }

    void MakeFilm(int number) {
        IFilm* film = OpenFilmWith(
            {editor.Create("A" + std::to_string(number)), editor.Create("B" + std::to_string(number))});
        AddCamera(film, "Cam");
        AddCut(film, "Cam", 0.0f, 4.0f, 0);
        AddCut(film, "Cam", 4.0f, 9.0f, 2);
        for (CFilmTrack* track : film->tracks) {
            for (int i = 0; AsObjectTrack(track) != nullptr && i < 20; ++i) {
                AddKey(track, KeyKind::Position + Pick(3), 0.5f * static_cast<float>(i));
                AddKey(track, KeyKind::Sound, 0.5f * static_cast<float>(i));
            }
        }
        plugin.SetCurrentFilm(film);
    }

    CTrackCtrl* PickRow() {
        if (control->tracks.empty()) {
            return nullptr;
        }
        return *std::next(control->tracks.begin(), Pick(static_cast<int>(control->tracks.size())));
    }
    IFilm* PickFilm() { return plugin.GetFilmByIndex(Pick(4)); }

    void Mouse(CWnd* window, UINT message, UINT flags) {
        if (window != nullptr) {
            window->SendMessage(message, flags, MAKELPARAM(Pick(kWidth + 40) - 20, Pick(30) - 5));
        }
    }
    void OnRow(const std::function<void(CTrackCtrl*)>& action) {
        if (CTrackCtrl* row = PickRow()) {
            action(row);
        }
    }

    void Step() {
        static constexpr UINT kKeys[] = {VK_HOME, VK_END, VK_F1 + 1, VK_LMENU, VK_LEFT};
        CTimeScrollbar* bar = Pick(2) == 0 ? control->hScroll : control->vScroll;
        const std::function<void()> actions[] = {
            [&] { Mouse(PickRow(), WM_LBUTTONDOWN, MK_LBUTTON | (Pick(2) == 0 ? MK_SHIFT : 0)); },
            [&] { Mouse(PickRow(), WM_LBUTTONUP, 0); },
            [&] { Mouse(PickRow(), WM_MOUSEMOVE, Pick(2) == 0 ? MK_LBUTTON : 0); },
            [&] { Mouse(PickRow(), WM_LBUTTONDBLCLK, MK_LBUTTON); },
            [&] { Mouse(PickRow(), WM_RBUTTONDOWN, MK_RBUTTON); },
            [&] { Mouse(control->grid, WM_LBUTTONDOWN, MK_LBUTTON | (Pick(2) == 0 ? MK_SHIFT : 0)); },
            [&] { Mouse(control->grid, WM_MOUSEMOVE, MK_LBUTTON | (Pick(2) == 0 ? MK_SHIFT : 0)); },
            [&] { Mouse(control->grid, WM_LBUTTONUP, 0); },
            [&] { Mouse(bar, WM_LBUTTONDOWN, MK_LBUTTON); },
            [&] { Mouse(bar, WM_MOUSEMOVE, MK_LBUTTON); },
            [&] { Mouse(bar, WM_LBUTTONUP, 0); },
            [&] { control->SendMessage(WM_KEYDOWN, kKeys[Pick(5)], 1); },
            [&] { control->SendMessage(WM_TIMER, static_cast<WPARAM>(Pick(2))); },
            [&] { control->OnWheelForward(); },
            [&] { control->OnWheelBack(); },
            [&] { OnRow([](CTrackCtrl* row) { row->ToggleExpanded(); }); },
            [&] { OnRow([&](CTrackCtrl* row) { row->SetVisibleFlag(Pick(2) == 0); }); },
            [&] { control->RebuildVisibleRows(true, nullptr); },
            [&] { control->SetMovieRange(PickTime(), PickTime()); },
            [&] { control->SetViewRange(PickTime(), PickTime(), true); },
            [&] { control->SetCurrentFrame(PickTime(), true); },
            [&] { Resize(Pick(1000), Pick(600)); },
            [&] { plugin.SetCurrentFilm(PickFilm()); },
            [&] { control->ShowFilm(plugin.GetCurrentFilm(), true); },
            [&] {
                OnRow([&](CTrackCtrl* row) { Pick(20) == 0 ? control->RemoveTrackCtrl(row, true) : void(); });
            },
            [&] { Pick(30) == 0 ? plugin.Play(0.0f) : void(); },
            [&] { Settle(); },
        };
        actions[Pick(static_cast<int>(std::size(actions)))]();
    }

    void ExpectRowsHoldTheirKind() {
        for (const CTrackCtrl* row : control->tracks) {
            for (const CTrackKey* view : row->keys) {
                ASSERT_NE(view->record, nullptr);
                ASSERT_EQ(view->record->kind, row->kind);
                ASSERT_EQ(view->record->track, row->track);
                ASSERT_EQ(view->record->GetTime(), view->time);
            }
        }
    }

    std::filesystem::path before;
    std::mt19937 random;
    std::uint32_t clock = 0;
};

} // namespace

TEST_F(MainCtrlRandomTest, LookingAroundLeavesNothingDangling) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    random.seed(seed);
    for (int i = 0; i < kSteps && !HasFailure(); ++i) {
        Step();
        ExpectNothingDangles();
        ExpectRowsHoldTheirKind();
    }
}
