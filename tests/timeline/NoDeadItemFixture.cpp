#include "tests/timeline/NoDeadItemFixture.h"

#include "framework/FileDialog.h"
#include "framework/Menu.h"
#include "framework/PickMode.h"
#include "framework/ToolBar.h"
#include "framework/UserNote.h"
#include "host/engine/LevelFile.h"
#include "keys/views/TrackKey.h"

#include <iterator>
#include <QCoreApplication>
#include <sstream>

namespace {

constexpr UINT kDisabled = MF_GRAYED | MF_DISABLED;
constexpr std::uint32_t kClockStep = 1000;
constexpr int kMethods = BezierMethod::Inverse + 1;

} // namespace

NoDeadItemTest::NoDeadItemTest() {
    for (const char* name :
         {ClassName::CameraPosition, ClassName::CameraTarget, ClassName::CameraControlPoint}) {
        editor.AddClassDescriptor(name, "camera.mesh");
    }
    for (std::size_t i = 0; i < 16; i += 5) {
        editor.viewMatrix[i] = 1.0f;
    }
    chunks.plugins = {&plugin};
    editor.level.SetChunkClient(&chunks);
    Data().SetSun(true);
    IFilm* film = OpenFilmWith({editor.Create("Crate", 1, 2, 3)});
    editor.CreateOfClass(ClassName::GLLight, "Lamp", 0, 4, 0);
    editor.CreateOfClass(ClassName::DynLight, "Torch", 0, 4, 0);
    AddCamera(film, "Main");
    for (CFilmTrack* track : film->tracks) {
        FillTrack(track);
    }
    plugin.SetCurrentFilm(nullptr);
    saved = Bytes();
    RunClock(kClockStep);
    Hooks().messageBox = [this](const std::string& text, UINT) {
        boxes.push_back(text);
        return IDYES;
    };
    Hooks().modalDialog = [this](CDialog&) {
        ++asked;
        return IDCANCEL;
    };
    Hooks().fileDialog = [this](CFileDialog&) {
        ++asked;
        return IDCANCEL;
    };
    Hooks().popupMenu = [this](const CMenu& menu, CPoint) {
        items.clear();
        Collect(menu);
        return choice;
    };
    editor.onInputNumber = [this](float&, const std::string&, const std::string&) {
        ++asked;
        return false;
    };
    SetUserNoteSink([this](const std::string&) { ++notes; });
}

NoDeadItemTest::~NoDeadItemTest() {
    SetUserNoteSink(nullptr);
    editor.level.SetChunkClient(nullptr);
}

void NoDeadItemTest::FillTrack(CFilmTrack* track) {
    for (int kind = 0; kind < KeyKind::FilterCount; ++kind) {
        for (const float time : {1.0f, 4.0f}) {
            IFilmKey* key = Films().keyFactory->CreateKey(kind);
            key->SetTime(time);
            key->SetEndTime((key->flags & KeyFlag::NoDuration) == 0 ? time + 0.5f : time);
            // Each method stays to be chosen in the menu of some key.
            key->SetInMethod(kind % kMethods);
            key->SetOutMethod((kind + 1) % kMethods);
            if (!track->AddKey(key)) { // not a kind of this track
                Films().keyFactory->DestroyKey(key);
            }
        }
    }
    track->Finish();
}

std::string NoDeadItemTest::Bytes() {
    engine::LevelMessages messages;
    return engine::SerializeLevel(editor.level, "/level", messages);
}

void NoDeadItemTest::Begin(bool withFilm) {
    plugin.StopPlaying();
    engine::PendingLevel pending = engine::ParseLevel(editor.level, "/level", saved);
    plugin.OnEvent(EventCode::Suspend, nullptr);
    ObjectList all;
    editor.level.CollectObjects(all);
    editor.level.SetSelection(all);
    plugin.OnEvent(EventCode::ObjectsDeleting, nullptr);
    editor.level.ClearSelection();
    plugin.OnEvent(EventCode::ReleaseRenderResources, nullptr);
    plugin.OnNew();
    editor.level.Close();
    engine::InstallLevel(editor.level, std::move(pending));
    plugin.OnEvent(EventCode::LevelLoaded, nullptr);
    for (const int number : std::vector<int>(plugin.attachedViews.begin(), plugin.attachedViews.end())) {
        plugin.DetachView(number);
    }
    if (withFilm) {
        plugin.SelectFilmByIndex(0);
        GoTo(1.0f);
        window->ShowCurrentFilm();
        for (CTrackCtrl* row : Control().tracks) {
            if (row->IsRoot() && !row->expanded) {
                row->ToggleExpanded(); // is kept when the film is shown anew
            }
        }
        window->ShowCurrentFilm();
    }
    Control().keyDuplicator.ClearSource();
    Control().keyDuplicator.cloneMode = false;
    Control().menuRow = nullptr;
    Control().menuKey = nullptr;
}

std::string NoDeadItemTest::Look() {
    std::ostringstream look;
    const CTrackKey* copied = Control().keyDuplicator.sourceKey;
    look << Bytes() << '|' << boxes.size() << ' ' << asked << ' ' << notes << '|' << plugin.currentTime << ' '
         << plugin.isPlaying << ' ' << plugin.animateObjects << '|' << plugin.attachedViews.size() << ' '
         << (PickMode::Present() != nullptr) << ' ' << (copied != nullptr ? copied->time : -1.0f) << '|';
    for (const CTrackCtrl* row : Control().visibleTracks) {
        look << row->name << '/' << row->keys.size() << ' ';
    }
    for (const CTrackKey* key : Control().selectedKeys) {
        look << key->record->kind << (key->marked ? " marked " : " ");
    }
    for (const EditorObject* object : editor.level.selection) {
        look << object->name << ' ';
    }
    for (const ToolBarButton& button : window->toolbar.Buttons()) {
        look << button.state << ' ';
    }
    const auto* attach = dynamic_cast<const CWnd*>(Control().GetAttachDialog());
    look << '|' << (attach != nullptr && attach->IsWindowVisible());
    return look.str();
}

void NoDeadItemTest::Collect(const CMenu& menu) {
    for (int place = 0; place < static_cast<int>(menu.GetMenuItemCount()); ++place) {
        if (const CMenu* popup = menu.GetSubMenu(place)) {
            Collect(*popup);
            continue;
        }
        const UINT id = menu.GetMenuItemID(place);
        const UINT state = menu.GetMenuState(static_cast<UINT>(place), MF_BYPOSITION);
        if (id != 0 && (state & (kDisabled | MF_CHECKED)) == 0) {
            items.insert(id);
        }
    }
}

CTrackCtrl* NoDeadItemTest::RowAt(int place) {
    return place < 0 ? nullptr : *std::next(Control().tracks.begin(), place);
}

CTrackKey* NoDeadItemTest::FirstKeyOf(int place) {
    const CTrackCtrl* row = RowAt(place);
    return row != nullptr && !row->keys.empty() ? row->keys[0] : nullptr;
}

void NoDeadItemTest::ChooseIn(int place, bool ofKey, UINT id) {
    choice = id;
    Control().mouseTime = 6.0f;
    Control().ShowContextMenu(0, 0, RowAt(place), ofKey ? FirstKeyOf(place) : nullptr);
    QCoreApplication::sendPostedEvents();
}

bool NoDeadItemTest::IsDead(int place, bool ofKey, UINT id) {
    const std::string before = Look();
    ChooseIn(place, ofKey, id);
    EXPECT_TRUE(IsAlive());
    ++walked;
    return Look() == before;
}

std::set<UINT> NoDeadItemTest::DeadIn(int place, bool ofKey, const Prepare& prepare) {
    prepare();
    ChooseIn(place, ofKey, 0);
    const std::set<UINT> offered = items;
    EXPECT_FALSE(offered.empty());
    std::set<UINT> dead;
    for (const UINT id : offered) {
        prepare();
        if (IsDead(place, ofKey, id)) {
            dead.insert(id);
        }
    }
    return dead;
}

std::set<UINT> NoDeadItemTest::DeadButtons(const Prepare& prepare) {
    std::set<UINT> dead;
    const std::vector<ToolBarButton> buttons = window->toolbar.Buttons();
    for (const ToolBarButton& button : buttons) {
        if (button.id == 0) {
            continue; // a rule
        }
        prepare();
        const std::string before = Look();
        Command(button.id);
        EXPECT_TRUE(IsAlive());
        ++walked;
        if (Look() == before) {
            dead.insert(button.id);
        }
    }
    return dead;
}

std::string NoDeadItemTest::LookWhilePlaying(int place, bool ofKey, UINT id) {
    std::string before;
    std::string after;
    Begin();
    RunClock(0); // the film stands still and doesn't end
    InsidePump([&] {
        EXPECT_EQ(plugin.isPlaying, 1);
        before = Look();
        ChooseIn(place, ofKey, id); // the command comes when the pump goes on
        InsidePump([&] {
            InsidePump([&] {
                after = Look();
                plugin.StopPlaying();
            });
        });
    });
    plugin.Play(plugin.currentTime);
    while (after.empty()) {
        Settle(); // the command has stopped the film
    }
    RunClock(kClockStep);
    EXPECT_TRUE(IsAlive());
    return before == after ? std::string() : after;
}

std::set<UINT> NoDeadItemTest::DeadWhilePlaying(int place, bool ofKey) {
    LookWhilePlaying(place, ofKey, 0);
    const std::set<UINT> offered = items;
    EXPECT_FALSE(offered.empty());
    std::set<UINT> dead;
    for (const UINT id : offered) {
        ++walked;
        if (LookWhilePlaying(place, ofKey, id).empty()) {
            dead.insert(id);
        }
    }
    return dead;
}

CTrackCtrl* NoDeadItemTest::RowOfKind(int kind) {
    for (CTrackCtrl* row : Control().tracks) {
        if (row->kind == kind && !row->keys.empty()) {
            return row;
        }
    }
    return nullptr;
}
