#include "host/stage/windows/films/FilmCommands.h"

#include "framework/ColorDialog.h"
#include "framework/Dialog.h"
#include "framework/FileDialog.h"
#include "host/engine/ClassDatabase.h"
#include "host/engine/Film.h"
#include "host/engine/FilmManager.h"
#include "host/stage/host/SelectedIds.h"
#include "host/stage/windows/films/FilmCopy.h"
#include "host/stage/windows/films/FilmListMenu.h"
#include "host/stage/windows/films/FilmNameDialog.h"
#include "host/stage/windows/films/FilmsIds.h"
#include "host/stage/windows/films/ScenarioKeys.h"
#include "host/stage/windows/films/TimelineAxis.h"
#include "host/stage/windows/MainWindow.h"
#include "host/stage/windows/QuietMoments.h"
#include "host/stage/windows/ToolWindows.h"
#include "plugin/contract/ClassIds.h"
#include "plugin/contract/KeyKindTable.h"
#include "plugin/contract/TrackObjects.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>

namespace stage {

namespace {

constexpr float kNewDuration = 5.0f; ///< seconds, of a key whose content has no length; as the timeline's own
constexpr const char* kSounds = "Sounds (*.wav;*.ogg;*.flac)|*.wav;*.ogg;*.flac|All files (*)|*||";

QStringList NamesBut(const IFilmManager& manager, const IFilm* left) {
    QStringList names;
    for (const IFilm* film : manager.films) {
        if (film != nullptr && film != left && film->name != nullptr) {
            names << QString::fromUtf8(film->name);
        }
    }
    return names;
}

bool Has(const IFilmManager& manager, const IFilm* film) {
    return film != nullptr && std::ranges::find(manager.films, film) != std::end(manager.films);
}

bool HasCameraKeys(const IFilm& film) {
    return film.mainTrack != nullptr && std::ranges::any_of(film.mainTrack->keys, [](const IFilmKey* key) {
               return key->kind == KeyKind::Camera;
           });
}

/// From the level's folder for what lies in it, so that the level can move.
std::string NameFrom(const std::string& folder, const std::string& path) {
    return !folder.empty() && path.starts_with(folder) ? path.substr(folder.size()) : path;
}

/// Also where it has none of them yet.
bool MayHold(const CFilmTrack& track, const KeyKindInfo& info) {
    constexpr int kClasses[] = {ClassId::ObjectTrack, ClassId::GLLightTrack, ClassId::DynLightTrack};
    return std::ranges::any_of(kClasses, [&](int classId) {
        return track.IsA(classId) && (info.tracks & TrackBitOf(classId)) != 0;
    });
}

Vector3 ToVector(COLORREF color) {
    constexpr float kFull = 255.0f;
    return {static_cast<float>(color & 0xFF) / kFull, static_cast<float>((color >> 8) & 0xFF) / kFull,
            static_cast<float>((color >> 16) & 0xFF) / kFull};
}

void Fill(IFilmKey& key, const std::string& name, Vector3 color) {
    switch (key.kind) {
    case KeyKind::Animation:
        key.SetInHandle(&name);
        break;
    case KeyKind::Speech:
    case KeyKind::Sound:
        key.SetValue(&name);
        break;
    case KeyKind::Color:
        key.SetValue(color.Data());
        key.SetInHandle(color.Data());
        key.SetOutHandle(color.Data());
        break;
    default:
        static_cast<CFilmFxKey&>(key).fxName = name;
        break;
    }
}

/// The object's place without its size. Row 2 of a camera points back; of any other object it points ahead,
/// and the camera looks along it.
engine::Matrix4 CameraAt(const engine::SceneObject& object) {
    engine::Matrix4 world = object.World();
    const float way = object.Info().className == engine::kCameraClass ? 1.0f : -1.0f;
    for (std::size_t row = 0; row < 3; ++row) {
        float* axis = &world.m[4 * row];
        const float length = std::hypot(axis[0], axis[1], axis[2]);
        const float factor = (row == 1 ? 1.0f : way) / (length > 0.0f ? length : 1.0f);
        std::for_each_n(axis, 3, [factor](float& number) { number *= factor; });
    }
    return world;
}

/// Another camera in a view of the level for as long as it lives. Nothing is drawn meanwhile.
class AimedView {
public:
    AimedView(engine::Level& openLevel, int viewNumber, const engine::Matrix4& camera, float fieldOfView)
        : level(openLevel), number(viewNumber) {
        engine::View& view = *level.Views().At(number);
        std::copy_n(view.CameraMatrix(), std::size(former.m), former.m);
        formerAngle = view.GetFieldOfView();
        Aim(view, camera, fieldOfView);
    }
    ~AimedView() {
        if (engine::View* view = level.Views().At(number)) {
            Aim(*view, former, formerAngle);
        }
    }
    AimedView(const AimedView&) = delete;
    AimedView& operator=(const AimedView&) = delete;

private:
    static void Aim(engine::View& view, const engine::Matrix4& camera, float fieldOfView) {
        const CameraData& data = view.camera->data;
        view.SetProjection(fieldOfView, data.recordNear, data.recordFar, 0);
        view.SetCamera(camera.m);
    }

    engine::Level& level;
    int number;
    engine::Matrix4 former;
    float formerAngle = 0.0f;
};

/// Gives the selection back, which the plug-in drops with each choice of a film.
class KeptSelection {
public:
    explicit KeptSelection(EditorHost& editor) : host(editor), ids(SelectedIds(editor.level)) {}
    ~KeptSelection() { host.Select(ObjectsOf(host.level, ids)); }
    KeptSelection(const KeptSelection&) = delete;
    KeptSelection& operator=(const KeptSelection&) = delete;

private:
    EditorHost& host;
    std::vector<int> ids;
};

} // namespace

std::optional<float> RoomForKey(const CFilmTrack& track, int kind, float time) {
    float room = std::numeric_limits<float>::infinity();
    for (const IFilmKey* key : track.keys) {
        const bool isOfRow =
            key->kind == kind &&
            (kind != KeyKind::Animation || static_cast<const CFilmAnimationKey*>(key)->meshElement.empty());
        if (!isOfRow || (key->flags & KeyFlag::MayOverlap) != 0) {
            continue;
        }
        if (key->time == time || (key->time < time && key->endTime >= time)) {
            return std::nullopt;
        }
        if (key->time > time) {
            room = std::min(room, key->time);
        }
    }
    return room;
}

CFilmTrack* TrackOfObject(const IFilm& film, const EditorObject* object) {
    const auto plays = [object](CFilmTrack* track) {
        return object != nullptr && PlayedObject(track) == object;
    };
    const auto found = std::ranges::find_if(film.tracks, plays);
    return found != film.tracks.end() ? *found : nullptr;
}

FilmCommands::FilmCommands(MainWindow& mainWindow)
    : window(mainWindow), timeline(*mainWindow.toolWindows),
      panel([&mainWindow] { return mainWindow.OpenFilmsPanel(); }) {
}

engine::FilmManager* FilmCommands::Manager() const {
    const engine::LevelData* data = window.host.level.Data();
    return data != nullptr ? static_cast<engine::FilmManager*>(data->filmManager) : nullptr;
}

engine::Film* FilmCommands::Shown() const {
    const engine::FilmManager* manager = Manager();
    return manager != nullptr ? static_cast<engine::Film*>(manager->currentFilm) : nullptr;
}

void FilmCommands::Report(const std::string& text) const {
    window.Report(text);
}

void FilmCommands::New() {
    const engine::FilmManager* manager = Manager();
    if (manager == nullptr || window.OpenFilmsPanel() == nullptr) {
        return;
    }
    const std::unique_ptr<char[]> proposal(manager->NewFilmName());
    FilmNameDialog dialog(MainWindow::tr("New film"), QString::fromUtf8(proposal.get()),
                          NamesBut(*manager, nullptr), /*isNew*/ true, &window);
    if (dialog.exec() != QDialog::Accepted || (manager = Manager()) == nullptr) {
        return;
    }
    IFilm* film = panel.Add(*manager);
    if (film == nullptr) {
        Report("No film was added: a level holds " + std::to_string(IFilmManager::kFilms) + " at most.");
        return;
    }
    film->SetName(dialog.Name().toUtf8().constData());
    panel.Refresh();
    panel.ShowTimeline();
    if (dialog.Seconds() != FilmNameDialog::kNewLength) {
        const auto seconds = static_cast<float>(dialog.Seconds());
        TimelineAxis(timeline, seconds, manager->FramesPerSecond()).Show(seconds);
    }
    if (dialog.WantsCamera()) {
        AddCamera();
    } else {
        Report("The film is open. Move the cursor in the ruler, press \"Animate object\" and move things.");
    }
}

void FilmCommands::Rename() {
    IFilm* film = Shown();
    if (film == nullptr) {
        Report("Open the film first: choose it in the list.");
        return;
    }
    FilmNameDialog dialog(MainWindow::tr("Rename film"), QString::fromUtf8(film->name),
                          NamesBut(*Manager(), film), /*isNew*/ false, &window);
    const bool isTaken = dialog.exec() == QDialog::Accepted;
    if (isTaken && Manager() != nullptr && Has(*Manager(), film)) {
        film->SetName(dialog.Name().toUtf8().constData());
        panel.Refresh();
        window.quiet->Request();
        Report("The film is called " + std::string(film->name) + " now");
    }
}

void FilmCommands::Duplicate() {
    engine::Film* film = Shown();
    if (film == nullptr || film->IsPlaying()) {
        Report(film == nullptr ? "Open the film first: choose it in the list." : "Stop the film first.");
        return;
    }
    FilmNameDialog dialog(MainWindow::tr("Duplicate film"),
                          MainWindow::tr("%1 copy").arg(QString::fromUtf8(film->name)),
                          NamesBut(*Manager(), nullptr), /*isNew*/ false, &window);
    if (dialog.exec() != QDialog::Accepted || Shown() != film || film->IsPlaying()) {
        return;
    }
    engine::FilmManager* manager = Manager();
    auto* copy = static_cast<engine::Film*>(panel.Add(*manager));
    if (copy == nullptr) {
        Report("No film was added: a level holds " + std::to_string(IFilmManager::kFilms) + " at most.");
        return;
    }
    copy->SetName(dialog.Name().toUtf8().constData());
    if (!panel.Choose(*manager, nullptr) || Manager() != manager || !Has(*manager, film) ||
        !Has(*manager, copy)) {
        return;
    }
    const int lights = CopyFilm(*film, *copy);
    Reopen(*copy, 0.0f);
    panel.ShowTimeline();
    window.scenarioKeys->Run(ScenarioAction::ShowAll); // a new film's axis is ten seconds long
    const std::string left =
        lights == 0 ? "" : "; its lights stay with the first one: " + std::to_string(lights);
    Report(std::string(copy->name) + " is a copy of " + film->name + left);
}

void FilmCommands::Delete() {
    const engine::Film* film = Shown();
    if (film == nullptr || film->IsPlaying()) {
        Report(film == nullptr ? "Open the film first: choose it in the list." : "Stop the film first.");
        return;
    }
    const std::string name = film->name;
    if (panel.Delete(*Manager(), film)) {
        window.quiet->Request();
        Report(name + " is deleted; Ctrl+Z brings it back");
    }
}

void FilmCommands::AttachMenu(const QList<QAction*>& actions) {
    if (QAbstractItemView* list = panel.List()) {
        new FilmListMenu(
            *list, [this](int line) { OpenLine(line); }, actions); // the list's own
    }
}

void FilmCommands::OpenLine(int line) {
    const engine::FilmManager* manager = Manager();
    if (manager == nullptr) {
        return;
    }
    int present = 0; // the first line is "<none>"
    for (const IFilm* film : manager->films) {
        present += film != nullptr ? 1 : 0;
        if (film != nullptr && present == line && film != manager->currentFilm) {
            panel.Choose(*manager, film);
            return;
        }
    }
}

void FilmCommands::AddCamera() {
    MakeCamera(std::nullopt);
}

void FilmCommands::AddCameraFromObject() {
    if (const std::optional<Shot> shot = ShotOfSelected()) {
        MakeCamera(shot);
    } else {
        Report("Select the camera of the level, or the object, that the film's camera shall stand at.");
    }
}

std::optional<FilmCommands::Shot> FilmCommands::ShotOfSelected() const {
    const std::vector<engine::SceneObject*> selected = window.commands.Selected();
    if (selected.size() != 1 || !engine::IsFinite(selected.front()->World())) {
        return std::nullopt;
    }
    return Shot{CameraAt(*selected.front()), selected.front()->notes.Angle()};
}

void FilmCommands::MakeCamera(const std::optional<Shot>& shot) {
    engine::Film* film = Shown();
    const StageView* view = window.host.views.At(window.ActiveView());
    if (film == nullptr || view == nullptr) {
        Report("Open a film first: choose it in the list, or make one with Films > New film.");
        return;
    }
    if (timeline.Timeline() == nullptr) {
        panel.ShowTimeline();
    }
    const std::list<CFilmTrack*> before = film->tracks;
    {
        std::optional<AimedView> aimed;
        if (shot) {
            aimed.emplace(window.host.level, window.ActiveView(), shot->camera, shot->fieldOfView);
        }
        timeline.AnswerDialog(films_id::kAddCamera,
                              [](CDialog&) { return true; }); // with the name it proposes
    }
    if (Shown() != film) {
        return;
    }
    const auto made = std::ranges::find_if(film->tracks, [&](CFilmTrack* track) {
        return AsCameraTrack(track) != nullptr && std::ranges::find(before, track) == before.end();
    });
    if (made == film->tracks.end()) {
        Report("No camera was added");
        return;
    }
    const std::string name = AsCameraTrack(*made)->cameraName;
    const std::string stands = name + (shot ? " stands at the object" : " stands where the view looks from");
    if (!HasCameraKeys(*film) && !film->IsPlaying()) {
        ShowFromStart(*film, name);
        Report(stands + ", and the film shows it from its start to its end");
    } else {
        Report(stands + "; a camera key shows it");
    }
}

/// The first camera of a film is shown all the time: without a key nobody would see through it.
void FilmCommands::ShowFromStart(engine::Film& film, const std::string& camera) {
    const float time = film.PosedTime();
    const KeptSelection selection(window.host);
    engine::FilmManager* manager = Manager();
    if (!panel.Choose(*manager, nullptr) || Manager() != manager || !Has(*manager, &film) ||
        film.mainTrack == nullptr) {
        return;
    }
    IFilmKey* key = manager->keyFactory->CreateKey(KeyKind::Camera);
    key->SetValue(&camera);
    key->SetTime(0.0f);
    key->SetEndTime(film.length);
    if (film.mainTrack->AddKey(key)) {
        film.mainTrack->Finish();
    } else {
        manager->keyFactory->DestroyKey(key);
    }
    Reopen(film, time);
}

bool FilmCommands::Reopen(const IFilm& film, float seconds) {
    const engine::FilmManager* manager = Manager();
    if (manager == nullptr || !panel.Choose(*manager, &film)) {
        return false;
    }
    const auto frame = std::lround(static_cast<double>(seconds) * manager->FramesPerSecond());
    timeline.AnswerDialog(films_id::kSetMovieFrame, [frame](CDialog& dialog) {
        dialog.SetDlgItemText(films_id::kFrameNumber, std::to_string(frame));
        return true;
    });
    return true;
}

std::optional<FilmCommands::Content> FilmCommands::Choose(int kind, EditorObject* object) const {
    const auto named = [](std::optional<std::string> name) -> std::optional<Content> {
        return name && !name->empty() ? std::optional<Content>({std::move(*name), {}}) : std::nullopt;
    };
    switch (kind) {
    case KeyKind::Animation:
        return named(window.BrowseMeshAnimation(object, {}));
    case KeyKind::Speech:
    case KeyKind::Sound: {
        const std::string& folder = window.host.level.Folder();
        CFileDialog dialog(TRUE, nullptr, nullptr, OFN_FILEMUSTEXIST, kSounds);
        dialog.ofn.lpstrInitialDir = folder;
        return dialog.DoModal() == IDOK ? named(NameFrom(folder, dialog.GetPathName())) : std::nullopt;
    }
    case KeyKind::Color: {
        CColorDialog dialog(0xFFFFFF);
        return dialog.DoModal() == IDOK ? std::optional<Content>({{}, ToVector(dialog.GetColor())})
                                        : std::nullopt;
    }
    default:
        return named(window.BrowseFx(kind, {}));
    }
}

void FilmCommands::AddKey(int kind) {
    engine::Film* film = Shown();
    if (film == nullptr || film->IsPlaying()) {
        Report(film == nullptr ? "Open a film first: choose it in the list." : "Stop the film first.");
        return;
    }
    const ObjectList& selected = window.host.level.selection;
    EditorObject* object = selected.size() == 1 ? selected.front() : nullptr;
    CFilmTrack* track = TrackOfObject(*film, object);
    const KeyKindInfo* info = FindKeyKind(kind);
    if (object == nullptr || track == nullptr || info == nullptr || !MayHold(*track, *info)) {
        Report(kind == KeyKind::Color
                   ? "Select one light of the film first: click its name in the timeline."
                   : "Select one actor of the film first: click its name in the timeline.");
        return;
    }
    const float time = film->PosedTime();
    if (!RoomForKey(*track, kind, time)) {
        Report("Another key of this kind is in the way: move the cursor first.");
        return;
    }
    const int id = object->id;
    const std::optional<Content> content = Choose(kind, object);
    // The user was asked meanwhile: film, track and room are looked for again.
    engine::FilmManager* manager = Manager();
    if (!content || manager == nullptr || Shown() != film || film->IsPlaying() ||
        TrackOfObject(*film, window.host.level.FindObject(id)) != track) {
        return;
    }
    const KeptSelection selection(window.host);
    const std::optional<float> room = RoomForKey(*track, kind, time);
    if (!room || !panel.Choose(*manager, nullptr) || Manager() != manager || !Has(*manager, film) ||
        TrackOfObject(*film, window.host.level.FindObject(id)) != track) {
        return;
    }
    IFilmKey* key = manager->keyFactory->CreateKey(kind);
    Fill(*key, content->name, content->color);
    key->SetTime(time);
    key->SetEndTime(time);
    if (!track->AddKey(key)) {
        manager->keyFactory->DestroyKey(key);
    } else if (info->duration != KeyDuration::None) {
        const float natural = key->GetNaturalDuration();
        key->SetEndTime(std::min(time + (natural > 0.0f ? natural : kNewDuration), *room));
    }
    track->Finish();
    Reopen(*film, time);
    Report(std::string(info->title) + " added at the cursor");
}

} // namespace stage
