#include "tests/plugin/PluginFixture.h"

#include <algorithm>

PluginTest::PluginTest() {
    Hooks().messageBox = [this](const std::string& text, UINT) {
        boxes.push_back(text);
        return boxAnswer;
    };
    editor.level.New("");
    Data().SetSun(false);
    plugin.Initialize(&editor, kPluginNumber, &editor);
    editor.plugin = &plugin;
    plugin.OnEditorReady();
    plugin.OnNew();
    plugin.OnEvent(EventCode::LevelLoaded, nullptr);
    editor.calls.clear();
    editor.broadcasts.clear();
}

PluginTest::~PluginTest() {
    plugin.OnEditorClosing();
    editor.level.Close();
    plugin.OnEvent(EventCode::HostGoesAway, nullptr);
}

IFilm* PluginTest::NewFilm() {
    return plugin.GetFilmByIndex(plugin.CreateFilm());
}

IFilm* PluginTest::OpenNewFilm() {
    IFilm* film = NewFilm();
    plugin.SetCurrentFilm(film);
    editor.calls.clear();
    editor.broadcasts.clear();
    return film;
}

IFilm* PluginTest::OpenFilmWith(const std::vector<EditorObject*>& actors) {
    IFilm* film = OpenNewFilm();
    plugin.AddActors(ObjectList(actors.begin(), actors.end()));
    return film;
}

CFilmCameraTrack* PluginTest::AddCamera(IFilm* film, const std::string& name) {
    CFilmTrack* track = film->CreateCameraTrack();
    film->AddTrack(track);
    CFilmCameraTrack* camera = AsCameraTrack(track);
    camera->cameraName = name;
    return camera;
}

IFilmKey* PluginTest::AddKey(CFilmTrack* track, int kind, float time) {
    IFilmKey* key = Films().keyFactory->CreateKey(kind);
    key->SetTime(time);
    key->SetEndTime(time + 0.5f);
    EXPECT_TRUE(track->AddKey(key));
    return key;
}

CFilmCameraKey* PluginTest::AddCut(IFilm* film, const std::string& camera, float from, float to,
                                   int priority) {
    auto* key = static_cast<CFilmCameraKey*>(AddKey(film->mainTrack, KeyKind::Camera, from));
    key->SetEndTime(to);
    key->SetValue(&camera);
    key->priority = priority;
    film->mainTrack->NotifyKeysChanged(KeyKind::Camera);
    return key;
}

std::vector<IFilmKey*> PluginTest::KeysOf(const CFilmTrack& track, int kind) {
    std::vector<IFilmKey*> found;
    std::ranges::copy_if(track.keys, std::back_inserter(found),
                         [kind](const IFilmKey* key) { return key->kind == kind; });
    return found;
}

Vector3 PluginTest::PositionOf(const EditorObject& object) {
    const float* matrix = object.GetMatrix(0);
    return {matrix[12], matrix[13], matrix[14]};
}

void PluginTest::MoveTo(EditorObject& object, float x, float y, float z) {
    std::array<float, 16> matrix{};
    std::copy_n(object.GetMatrix(0), matrix.size(), matrix.begin());
    matrix[12] = x;
    matrix[13] = y;
    matrix[14] = z;
    object.SetMatrix(matrix.data(), 0);
}

void PluginTest::UserMoves(EditorObject& object, float x, float y, float z) {
    editor.Select({&object});
    MoveTo(object, x, y, z);
    plugin.OnEvent(EventCode::ObjectsMoved, nullptr);
}

void LoggingFilm::SetTime(float time, float previous) {
    log.push_back("SetTime");
    times.push_back(time);
    previousTimes.push_back(previous);
}

void LoggingWindow::PressButton(unsigned id, bool pressed) {
    log.push_back("PressButton " + std::to_string(id) + (pressed ? " down" : " up"));
}

bool LoggingWindow::ChangeActor() {
    log.push_back("ChangeActor");
    return true;
}

void LoggingWindow::RecordObjectKeys(EditorObject* object, float time, const float* newMatrix,
                                     const float* oldMatrix) {
    recordedObject = object;
    recordedTime = time;
    recordedNew = {newMatrix[12], newMatrix[13], newMatrix[14]};
    recordedOld = {oldMatrix[12], oldMatrix[13], oldMatrix[14]};
}
