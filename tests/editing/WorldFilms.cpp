// The films that every run starts with, and how films come and go.
#include "tests/editing/World.h"

namespace editing {

namespace {

constexpr int kMostFilms = 7;
constexpr float kThirtieth = 1.0f / 30.0f;

void FillKey(IFilmKey& key, int number) {
    static const std::string elements[] = {"", "arm", "hand", "tail"}; // the mesh has no tail
    static const std::string clips[] = {"Lift", "Turn", ""};
    static const std::string cameras[] = {"Cam0", "Cam1", ""};
    static const std::string path = "sounds/none.wav";
    static const std::string method = "OnFrame";
    const auto place = static_cast<float>(number);
    const Vector3 vector{place, 0.5f * place, 1.0f};
    switch (key.kind) {
    case KeyKind::Camera:
        key.SetValue(&cameras[number % 3]);
        static_cast<CFilmCameraKey&>(key).priority = number % 3;
        break;
    case KeyKind::Animation:
        key.SetValue(&elements[number % 4]);
        key.SetInHandle(&clips[number % 3]);
        break;
    case KeyKind::Speech:
    case KeyKind::Sound:
        key.SetValue(&path);
        break;
    case KeyKind::JavaMethod:
        key.SetValue(&method);
        break;
    case KeyKind::Flags:
        break;
    case KeyKind::Roll:
    case KeyKind::FieldOfView:
        key.SetValue(&place);
        break;
    default:
        if (key.kind < KeyKind::Position) {
            key.SetValue(&elements[number % 3]);
        } else {
            key.SetValue(vector.Data());
            key.SetInHandle(vector.Data());
            key.SetOutHandle(vector.Data());
            key.SetInMethod(number % 6);
            key.SetOutMethod((number + 2) % 6);
        }
    }
}

} // namespace

/// So many keys of each kind that the track takes. Every fourth one may overlap others.
void World::MakeKeys(CFilmTrack* track, int perKind) {
    IKeyFactory& factory = editor.level.Data()->Films().Keys();
    for (int kind = 0; kind < KeyKind::FilterCount; ++kind) {
        for (int i = 0; i < perKind; ++i) {
            IFilmKey* key = factory.CreateKey(kind);
            FillKey(*key, i);
            const float time = 0.6f * static_cast<float>(i) + 0.05f * static_cast<float>(kind);
            const bool timed = (key->flags & KeyFlag::NoDuration) == 0;
            key->SetTime(time);
            key->SetEndTime(timed ? time + 0.4f : time);
            key->flags |= i % 4 == 3 ? KeyFlag::MayOverlap : 0u;
            if (!track->AddKey(key)) { // not a kind of this track
                factory.DestroyKey(key);
            }
        }
    }
    track->Finish();
}

IFilm* World::MakeFilm(float ticDistance) {
    IFilm* film = plugin.GetFilmByIndex(plugin.CreateFilm());
    if (film != nullptr) {
        FilmViewSettings settings;
        settings.mask = FilmViewSettings::kTicsDistance;
        settings.ticsDistance = ticDistance;
        plugin.SetFilmViewSettings(film->index, settings);
        plugin.SetCurrentFilm(film);
    }
    return film;
}

/// One with actors and keys of all kinds, one with cameras and lights, one nearly empty, one with tics of a
/// frame.
void World::MakeFilms() {
    EditorObject* actors[] = {editor.Make("MeshObject", "Anna", {}),
                              editor.Make("MeshObject", "Bert", {3, 0, 0}),
                              editor.Make("MeshObject", "Box", {0, 0, 5})};
    IFilm* film = MakeFilm(1.0f);
    plugin.AddActors({actors[0], actors[1]});
    for (CFilmTrack* track : film->tracks) {
        MakeKeys(track, 6);
    }

    film = MakeFilm(0.5f);
    editor.Make(ClassName::GLLight, "Lamp", {1, 4, 0});
    editor.Make(ClassName::DynLight, "Torch", {-1, 2, 0});
    for (const char* name : {"Cam0", "Cam1"}) {
        CFilmTrack* camera = film->CreateCameraTrack();
        film->AddTrack(camera);
        AsCameraTrack(camera)->cameraName = name;
    }
    for (CFilmTrack* track : film->tracks) {
        MakeKeys(track, 4);
    }

    MakeFilm(2.0f);
    plugin.AddActors({actors[2]});

    film = MakeFilm(kThirtieth);
    plugin.AddActors({actors[0]});
    MakeKeys(film->FindObjectTrack(actors[0]), 12);

    for (int i = 0; i < 4; ++i) {
        plugin.SelectFilmByIndex(i);
        UnfoldAll();
    }
}

void World::UnfoldAll() {
    std::vector<CTrackCtrl*> folded;
    std::ranges::copy_if(Control()->tracks, std::back_inserter(folded),
                         [](const CTrackCtrl* row) { return row->IsRoot() && !row->expanded; });
    for (CTrackCtrl* row : folded) {
        row->ToggleExpanded();
    }
}

void World::ShowFilm(const Step& step) {
    plugin.SetCurrentFilm(step.numbers[1] % 8 == 0 ? nullptr : FilmOf(step.numbers[0]));
}

void World::ShowAgain(const Step& step) {
    if (CFilmsMainCtrl* control = Control()) {
        control->ShowFilm(plugin.GetCurrentFilm(), step.numbers[0] % 2 == 0);
    }
}

void World::NewFilm(const Step& step) {
    int films = 0;
    for (const IFilm* film : Films() != nullptr ? std::span(Films()->films) : std::span<IFilm* const>()) {
        films += film != nullptr ? 1 : 0;
    }
    if (films < kMostFilms) {
        MakeFilm(0.25f * static_cast<float>(1 + step.numbers[0] % 8));
    }
}

void World::DeleteFilm(const Step& step) {
    plugin.DeleteFilm(FilmOf(step.numbers[0] | 1));
}

void World::SetTime(const Step& step) {
    plugin.SetTime(static_cast<float>(step.numbers[0] % 1200) / 100.0f - 1.0f, step.numbers[1] % 2 == 0);
}

void World::Play(const Step& step) {
    insidePlay.clear();
    for (int count = step.numbers[0] % 4; count > 0; --count) {
        insidePlay.push_back(RandomStep(luck));
    }
    clockStep = 50 + static_cast<std::uint32_t>(step.numbers[1] % 900);
    clockReadings = 0;
    if (step.numbers[2] % 2 == 0 && !insidePlay.empty()) {
        const Step inner = insidePlay.front();
        insidePlay.pop_front();
        QMetaObject::invokeMethod(
            &pump, [this, inner] { depth < 3 ? Execute(inner) : void(); }, Qt::QueuedConnection);
    }
    plugin.Play(0.0f);
    insidePlay.clear();
}

void World::Stop(const Step& /*step*/) {
    plugin.StopPlaying();
}

} // namespace editing
