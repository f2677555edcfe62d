#include "tests/editing/World.h"

#include "framework/QtBridge.h"
#include "keys/views/TrackKey.h"
#include "timeline/FilmsView.h"

#include <algorithm>
#include <QCoreApplication>
#include <QEvent>

namespace editing {

namespace {

constexpr std::uint32_t kPluginNumber = 5;
constexpr int kWindowWidth = 1000;
constexpr int kWindowHeight = 760;

/// Seconds; some sounds are there.
float LengthOf(const std::string& path) {
    return path.ends_with(".wav") ? 2.5f : -1.0f;
}

/// A row that takes this record now.
bool Takes(const CTrackCtrl& row, const IFilmKey& record) {
    if (row.track != record.track || row.kind != record.kind) {
        return false;
    }
    if (record.kind == KeyKind::Camera) {
        return static_cast<const CFilmCameraKey&>(record).priority == row.subIndex;
    }
    if (record.kind == KeyKind::Animation) {
        const std::string& element = static_cast<const CFilmAnimationKey&>(record).meshElement;
        return row.name == (element.empty() ? "Animation keys" : element);
    }
    return true;
}

/// Null if no row takes it.
HWND RowThatTakes(const CFilmsMainCtrl& control, const IFilmKey& record) {
    const auto found =
        std::ranges::find_if(control.tracks, [&](const CTrackCtrl* row) { return Takes(*row, record); });
    return found != control.tracks.end() ? (*found)->GetSafeHwnd() : nullptr;
}

} // namespace

bool NoTimers::eventFilter(QObject* receiver, QEvent* event) {
    return event->type() == QEvent::Timer && receiver->isWidgetType();
}

World::World() {
    InstallHooks();
    MakeFiles();
    editor.quiet = true;
    editor.level.SetMeshLibrary(&meshes);
    editor.level.SetSoundDuration(LengthOf);
    editor.level.SetChunkClient(&chunks);
    editor.level.New(folder.Path());
    chunks.plugins = {&plugin};
    CFilmsView::OfferTo(plugin);
    plugin.makeKeyAttributesDlg = [](IPluginImpl& owner) -> std::unique_ptr<IKeyAttributesDlg> {
        return std::make_unique<CFilmKeyAttributesDlg>(owner);
    };
    for (const char* name :
         {ClassName::CameraPosition, ClassName::CameraTarget, ClassName::CameraControlPoint}) {
        editor.AddClassDescriptor(name, "camera.mesh");
    }
    plugin.Initialize(&editor, kPluginNumber, &editor);
    editor.plugin = &plugin;
    plugin.OnEditorReady();
    plugin.OnNew();
    plugin.OnEvent(EventCode::LevelLoaded, nullptr);
    OpenWindow();
    MakeFilms();
    firstLevel = savedLevel = Save();
    plugin.SelectFilmByIndex(0);
    Paint({});
    NoteHiddenKeys();
}

World::~World() {
    plugin.StopPlaying();
    editor.HidePluginPanel();
    delete plugin.scenarioDlg;
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    plugin.OnEditorClosing();
    editor.level.Close();
    plugin.OnEvent(EventCode::HostGoesAway, nullptr);
    std::filesystem::current_path(startFolder);
}

void World::OpenWindow() {
    opening = true; // the panel makes the window before a film can be open: nothing goes on behind a box
    window = new CScenarioDlg(plugin);
    opening = false;
    window->Show();
    window->SetWindowPos(nullptr, 0, 0, kWindowWidth, kWindowHeight, SWP_NOZORDER);
}

/// A step may leave no window and no film; the next one finds both. What the user is asked meanwhile may take
/// the window away again.
void World::Restore() {
    if (FilmOf(0) == nullptr && luck.OneIn(4)) {
        Load(firstLevel);
        plugin.SelectFilmByIndex(0);
    }
    while (plugin.scenarioDlg == nullptr) {
        OpenWindow();
        Control()->ShowFilm(plugin.GetCurrentFilm(), /*flag*/ true);
    }
}

void World::Execute(const Step& step) {
    const auto& operation = Operations()[static_cast<std::size_t>(step.operation)];
    const Luck outer = luck;
    luck = Luck(step.luck);
    if (depth == 0) {
        draggedInAxis = false;
        clockReadings = 0;
        editor.lines.clear(); // what it writes down would fill the memory of a long run
        editor.hideCalls.clear();
    }
    ++depth;
    tally.mostAdded += operation.mostAdded;
    tally.mostRemoved += operation.mostRemoved;
    try {
        (this->*operation.run)(step);
    } catch (const fs::file_exception&) {
        ++fileErrors; // as the program's event loop tells them
    }
    if (depth == 1) {
        Restore();
    }
    NoteHiddenKeys();
    --depth;
    luck = outer;
}

CFilmsMainCtrl* World::Control() const {
    return plugin.scenarioDlg != nullptr ? window->mainCtrl : nullptr;
}

const engine::FilmManager* World::Films() const {
    return editor.level.Data() != nullptr ? &editor.level.Data()->Films() : nullptr;
}

std::vector<CFilmTrack*> World::Tracks() const {
    std::vector<CFilmTrack*> tracks;
    for (const IFilm* film : Films() != nullptr ? std::span(Films()->films) : std::span<IFilm* const>()) {
        if (film != nullptr) {
            tracks.insert(tracks.end(), film->tracks.begin(), film->tracks.end());
        }
    }
    return tracks;
}

void World::NoteHiddenKeys() {
    const CFilmsMainCtrl* control = Control();
    const IFilm* film = plugin.GetCurrentFilm();
    std::unordered_set<const IFilmKey*> shown;
    std::unordered_map<const IFilmKey*, HWND> now;
    for (const CTrackCtrl* row : control != nullptr ? control->tracks : std::list<CTrackCtrl*>{}) {
        for (const CTrackKey* key : row->keys) {
            shown.insert(key->record);
        }
    }
    for (const CFilmTrack* track : film != nullptr ? film->tracks : std::list<CFilmTrack*>{}) {
        for (const IFilmKey* record : track->keys) {
            if (shown.contains(record)) {
                continue;
            }
            const bool outside = control == nullptr || !(record->time >= control->movieStart) ||
                                 !(record->time <= control->movieEnd);
            const HWND row = control != nullptr ? RowThatTakes(*control, *record) : nullptr;
            const auto before = hidden.find(record);
            const bool stays = before != hidden.end() && (before->second == nullptr || before->second == row);
            if (outside || row == nullptr || stays) {
                now.emplace(record, row);
            }
        }
    }
    hidden = std::move(now);
}

/// Rows first, so that keys of all kinds come as often, whatever there is most of.
World::PlacedKey World::KeyOf(int number) const {
    std::vector<CTrackCtrl*> rows;
    if (Control() != nullptr) {
        std::ranges::copy_if(Control()->visibleTracks, std::back_inserter(rows),
                             [](const CTrackCtrl* row) { return !row->keys.empty(); });
    }
    if (rows.empty()) {
        return {};
    }
    const auto place = static_cast<std::size_t>(number);
    CTrackCtrl* row = rows[place % rows.size()];
    return {row, row->keys[place / rows.size() % row->keys.size()]};
}

CTrackCtrl* World::RowOf(int number) const {
    if (Control() == nullptr || Control()->visibleTracks.empty()) {
        return nullptr;
    }
    const std::vector<CTrackCtrl*>& rows = Control()->visibleTracks;
    return rows[static_cast<std::size_t>(number) % rows.size()];
}

/// Every other time the first, which has the most to edit.
IFilm* World::FilmOf(int number) const {
    std::vector<IFilm*> films;
    if (Films() != nullptr) {
        std::ranges::copy_if(Films()->films, std::back_inserter(films),
                             [](const IFilm* film) { return film != nullptr; });
    }
    if (films.empty()) {
        return nullptr;
    }
    return number % 2 == 0 ? films.front() : films[static_cast<std::size_t>(number / 2) % films.size()];
}

engine::SceneObject* World::ObjectOf(int number) const {
    if (editor.level.Data() == nullptr || editor.level.Data()->Objects().empty()) {
        return nullptr;
    }
    const auto& objects = editor.level.Data()->Objects();
    return objects[static_cast<std::size_t>(number) % objects.size()].get();
}

} // namespace editing
