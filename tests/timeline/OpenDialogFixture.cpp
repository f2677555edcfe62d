#include "tests/timeline/OpenDialogFixture.h"

#include "framework/Button.h"
#include "framework/Edit.h"
#include "framework/ListBox.h"
#include "framework/QtBridge.h"
#include "keys/attributes/KeyAttributesDlg.h"
#include "keys/views/TrackKey.h"
#include "plugin/contract/EventCodes.h"
#include "resources/resource.h"

#include <algorithm>
#include <iomanip>
#include <QApplication>
#include <QColorDialog>
#include <QLineEdit>
#include <QTimer>
#include <sstream>

namespace {

constexpr std::uint32_t kClockStep = 2500; ///< milliseconds: a film of ten seconds is over soon

CPoint MiddleOf(const CRect& rect) {
    return {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
}

bool IsChecked(const CWnd& control) {
    const DWORD type = control.GetStyle() & BS_TYPEMASK;
    return dynamic_cast<const CButton*>(&control) != nullptr && type != BS_PUSHBUTTON &&
           type != BS_DEFPUSHBUTTON;
}

void WriteKey(std::ostream& out, const IFilmKey& key) {
    char text[512] = {};
    key.Describe(text, 30);
    out << "  " << key.kind << " " << key.time << " " << key.endTime << " " << key.flags << " " << text
        << "\n";
}

void WriteTrack(std::ostream& out, CFilmTrack& track) {
    if (const CFilmObjectTrack* object = AsObjectTrack(&track)) {
        out << " object " << object->actor << " " << object->parentObject << object->parentElement << "\n";
    } else if (const CFilmCameraTrack* camera = AsCameraTrack(&track)) {
        out << " camera " << camera->cameraName << " " << camera->nearPlane << " " << camera->farPlane;
        for (int i = 0; i < CFilmCameraTrack::kSubTracks; ++i) {
            out << " " << camera->loopMode[i] << " " << camera->subTrackLength[i];
        }
        out << "\n";
    } else {
        out << " track\n";
    }
    for (const IFilmKey* key : track.keys) {
        WriteKey(out, *key);
    }
}

} // namespace

BEGIN_MESSAGE_MAP(PostedWork, CWnd)
ON_MESSAGE(WM_USER, &PostedWork::OnRun)
END_MESSAGE_MAP()

void PostedWork::Post(std::function<void()> posted) {
    work = std::move(posted);
    PostMessage(WM_USER);
}

LRESULT PostedWork::OnRun(WPARAM, LPARAM) {
    work();
    return 0;
}

OpenDialogFixture::OpenDialogFixture() {
    posted.Create(nullptr, "", WS_POPUP, CRect(0, 0, 10, 10), nullptr, 0);
    plugin.makeKeyAttributesDlg = [](IPluginImpl& owner) -> std::unique_ptr<IKeyAttributesDlg> {
        return std::make_unique<CFilmKeyAttributesDlg>(owner);
    };
    editor.onInputNumber = [this](float& value, const std::string&, const std::string&) {
        const bool taken = AnswerHost();
        value = taken ? 3.0f : value;
        return taken;
    };
    editor.onBrowse = [this](const std::string&) {
        return AnswerHost() ? std::optional<std::string>("Chosen") : std::nullopt;
    };
    window->ShowWindow(SW_SHOWNA);
    OpenFilmWith({editor.Create("Barrel")});
    MakeFilm();
    ShowRows();
    NativeWidget(*window)->grab(); // grips lie where the last paint put them
    Hooks().messageBox = nullptr;
}

OpenDialogFixture::~OpenDialogFixture() {
    ++looks;
    plugin.keyAttributesDlg.reset();
    std::filesystem::current_path(workingFolder);
}

void OpenDialogFixture::MakeFilm() {
    crate = editor.Create("Crate", 1, 2, 3);
    film = OpenFilmWith({crate});
    film->SetName("First");
    lamp = editor.CreateOfClass("GLLightEditorObject", "Lamp");
    CFilmTrack* track = film->FindObjectTrack(crate);
    AddKey(track, KeyKind::Position, 1.0f);
    AddKey(track, KeyKind::Rotation, 2.0f);
    for (const char* name : {"Main", "Side"}) {
        AddKey(AddCamera(film, name), KeyKind::CameraPosition, 1.0f);
    }
    AddCut(film, "Main", 1.0f, 2.0f, 0);
}

/// Waits for the next window that comes up; one look-out at a time.
void OpenDialogFixture::Look() {
    QTimer::singleShot(0, &lookout, [this, mine = ++looks] {
        QWidget* top = mine == looks ? QApplication::activeModalWidget() : nullptr;
        if (mine != looks) {
            return;
        }
        if (top != nullptr && std::ranges::find(tops, top) == tops.end()) {
            AtWindow(*top);
        }
        Look();
    });
}

void OpenDialogFixture::Work(const std::function<void()>& open, std::vector<Step> steps, bool playing) {
    way = std::move(steps);
    Look();
    if (playing) {
        RunClock(kClockStep);
        posted.Post(open);
        plugin.Play(0.0f);
    } else {
        open();
    }
}

void OpenDialogFixture::AtWindow(QWidget& top) {
    tops.push_back(&top);
    Look();
    DialogHand hand(top);
    const std::size_t number = windows++;
    if (number == way.size()) {
        UseWindow(hand);
    } else {
        if (number < way.size()) {
            way[number](hand);
        } else {
            ++messages;
        }
        hand.End(DialogHand::Ending::Cancel);
    }
    if (hand.IsOpen()) {
        ADD_FAILURE() << "the window stays open";
        hand.Widget()->hide();
    }
    tops.pop_back();
}

void OpenDialogFixture::UseModeless(const CWnd& shown) {
    ++windows;
    DialogHand hand(shown);
    UseWindow(hand);
}

void OpenDialogFixture::UseWindow(DialogHand& hand) {
    ++used;
    EXPECT_TRUE(hand.IsOpen());
    Edit(hand);
    TakeAway(away);
    filmsBelow = Films();
    const int before = messages;
    hand.End(ending);
    if (hand.IsOpen()) { // it refused, and says why
        EXPECT_GT(messages, before) << "the window stays open without a word";
        hand.End(DialogHand::Ending::Cancel);
    }
    EXPECT_FALSE(hand.IsOpen());
}

bool OpenDialogFixture::AnswerHost() {
    if (windows++ != way.size()) {
        return false;
    }
    ++used;
    TakeAway(away);
    filmsBelow = Films();
    return ending == DialogHand::Ending::Default || ending == DialogHand::Ending::Enter;
}

void OpenDialogFixture::NameFile(DialogHand& hand) const {
    if (auto* name = hand.Widget()->findChild<QLineEdit*>("fileNameEdit")) {
        name->setText(QString::fromStdString(path));
    }
}

/// Whatever the window has to edit gets another value.
void OpenDialogFixture::Edit(DialogHand& hand) {
    NameFile(hand);
    if (auto* colors = qobject_cast<QColorDialog*>(hand.Widget())) {
        colors->setCurrentColor(Qt::red);
    }
    for (std::size_t i = 0; i < hand.Controls().size(); ++i) {
        EditControl(hand, *hand.Controls()[i]);
    }
}

void OpenDialogFixture::EditControl(DialogHand& hand, CWnd& control) {
    CRect line;
    auto* list = dynamic_cast<CListBox*>(&control);
    if (dynamic_cast<const CEdit*>(&control) != nullptr) {
        hand.Type(control, "3");
    } else if (list != nullptr && list->GetItemRect(0, &line) != LB_ERR) {
        hand.Click(control, MiddleOf(line));
    } else if (IsChecked(control)) {
        hand.Click(control);
    }
}

bool OpenDialogFixture::TakesFilm(Away what) {
    return what == Away::FilmDeleted || what == Away::FilmSwitched || what == Away::LevelLeft ||
           what == Away::OtherLevel || what == Away::HostEnds;
}

void OpenDialogFixture::TakeAway(Away what) {
    switch (what) {
    case Away::Nothing:
        break;
    case Away::FilmDeleted:
        plugin.DeleteFilm(film);
        break;
    case Away::FilmSwitched:
        plugin.SelectFilmByIndex(0);
        break;
    case Away::FilmShownAgain:
        window->ShowCurrentFilm();
        break;
    case Away::FilmRenamed:
        film->SetName("Renamed");
        break;
    case Away::FilmSaved:
        Suspend();
        Resume();
        break;
    case Away::FilmPlays:
        RunClock(kClockStep);
        plugin.Play(0.0f);
        break;
    case Away::FilmStopped:
        plugin.StopPlaying();
        break;
    case Away::LevelLeft:
        LeaveLevel();
        NewLevel();
        break;
    case Away::OtherLevel:
        LeaveLevel();
        NewLevel();
        NewFilm();
        MakeFilm();
        break;
    case Away::TracksRemoved:
        RemoveTrack("Crate");
        RemoveTrack("Main");
        break;
    case Away::CameraRemoved:
        RemoveTrack("Main");
        break;
    case Away::KeysRemoved:
        RemoveKeys();
        break;
    case Away::ObjectDeleted:
        editor.DeleteObjects({crate});
        break;
    case Away::LightDeleted:
        editor.DeleteObjects({lamp});
        break;
    case Away::ControlGone:
        delete std::exchange(window->mainCtrl, nullptr);
        break;
    case Away::WindowGone:
        window->DestroyWindow();
        break;
    case Away::WindowReopened:
        window->DestroyWindow();
        window = new ObservedScenarioDlg(plugin);
        window->ShowWindow(SW_SHOWNA);
        ShowRows();
        break;
    case Away::HostEnds:
        EndHost();
        break;
    }
}

void OpenDialogFixture::LeaveLevel() {
    Suspend();
    ObjectList all;
    editor.level.CollectObjects(all);
    editor.level.SetSelection(all);
    plugin.OnEvent(EventCode::ObjectsDeleting, nullptr);
    editor.level.ClearSelection();
    plugin.OnEvent(EventCode::ReleaseRenderResources, nullptr);
    plugin.OnNew();
    editor.level.Close();
}

void OpenDialogFixture::NewLevel() {
    editor.level.New("");
    plugin.OnEvent(EventCode::LevelLoaded, nullptr);
}

void OpenDialogFixture::RemoveTrack(const char* root) {
    if (CTrackCtrl* row = RootRow(root)) {
        Control().RemoveTrackCtrl(row, /*redraw*/ true);
    }
}

void OpenDialogFixture::RemoveKeys() {
    for (CTrackCtrl* row : Control().tracks) {
        while (!row->keys.empty()) {
            row->RemoveKey(row->keys[0], /*destroy*/ true, /*redraw*/ true, /*noUndo*/ false);
        }
    }
}

/// The level goes first, as with every host that ends.
void OpenDialogFixture::EndHost() {
    LeaveLevel();
    plugin.OnEditorClosing();
    plugin.OnEvent(EventCode::HostGoesAway, nullptr);
    window->DestroyWindow();
}

std::string OpenDialogFixture::Films() const {
    std::ostringstream out;
    for (int index = 0; index < IFilmManager::kFilms; ++index) {
        const IFilm* one = plugin.GetFilmByIndex(index);
        if (one == nullptr) {
            continue;
        }
        const FilmViewSettings& shown = plugin.filmViewSettings[static_cast<std::size_t>(index)];
        out << one->name << " " << one->length << " shown " << shown.movieStart << " " << shown.movieEnd
            << " " << shown.ticsDistance << " " << shown.bigTics << " " << shown.labelDistance << "\n";
        for (CFilmTrack* track : one->tracks) {
            WriteTrack(out, *track);
        }
    }
    const CScenarioDlg* shown = dynamic_cast<const CScenarioDlg*>(plugin.scenarioDlg);
    if (shown != nullptr && shown->mainCtrl != nullptr) {
        for (const CTrackCtrl* row : shown->mainCtrl->tracks) {
            out << row->name << (row->visible ? " visible\n" : " hidden\n");
        }
    }
    return out.str();
}

CTrackCtrl* OpenDialogFixture::RootRow(const std::string& name) {
    const auto found = std::ranges::find_if(
        Control().tracks, [&name](const CTrackCtrl* row) { return row->IsRoot() && row->name == name; });
    return found != Control().tracks.end() ? *found : nullptr;
}

CTrackCtrl* OpenDialogFixture::LightRow() {
    const auto found = std::ranges::find_if(Control().tracks, [](const CTrackCtrl* row) {
        return row->IsRoot() && AsGLLightTrack(row->track) != nullptr;
    });
    return found != Control().tracks.end() ? *found : nullptr;
}

CTrackKey* OpenDialogFixture::ViewOf(const IFilmKey* record) {
    for (const CTrackCtrl* row : Control().tracks) {
        for (CTrackKey* view : row->keys) {
            if (view->record == record) {
                return view;
            }
        }
    }
    return nullptr;
}

void OpenDialogFixture::Choose(UINT command, CTrackCtrl* row, CTrackKey* key) {
    Control().menuRow = row;
    Control().menuKey = key;
    Control().OnCmdMsg(command, 0, nullptr, nullptr);
}

CFilmKeyAttributesDlg& OpenDialogFixture::Attributes() {
    return static_cast<CFilmKeyAttributesDlg&>(*plugin.keyAttributesDlg);
}

void OpenDialogFixture::OpenAttributes(IFilmKey* record) {
    CTrackKey* view = ViewOf(record);
    ASSERT_NE(view, nullptr);
    Control().SelectOnly(view);
    view->OnDoubleClick();
    ASSERT_TRUE(Attributes().IsVisible());
}

void OpenDialogFixture::PressAttribute(const std::string& name, bool browse) {
    CAttrPropCtrl& list = Attributes().list;
    const int line = list.FindStringExact(-1, name);
    CRect rect;
    ASSERT_NE(list.GetItemRect(line, &rect), LB_ERR) << name;
    DialogHand hand(Attributes());
    hand.Click(list, {20, MiddleOf(rect).y});
    if (browse) {
        ASSERT_TRUE(list.inPlaceButton.IsWindowVisible());
        hand.Click(list.inPlaceButton);
    }
}
