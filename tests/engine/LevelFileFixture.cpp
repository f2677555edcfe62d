#include "tests/engine/LevelFileFixture.h"

#include "plugin/contract/Chunks.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>

namespace engine_test {

using engine::SceneObject;

namespace {

std::string NameOf(IHostObject* object) {
    if (object->IsA(ClassId::LevelRoot)) {
        return "root";
    }
    return object->IsA(ClassId::FilmManager) ? "films" : static_cast<EditorObject*>(object)->name;
}

void WriteChunk(fs::file& file, std::uint16_t id, const std::string& text) {
    if (!text.empty()) {
        ChunkSaveStart(file, id);
        file.Write(text.data(), static_cast<int>(text.size()));
        ChunkSaveEnd(file, id);
    }
}

} // namespace

void RecordingClient::CollectHiddenObjects(IObjectCollection& collection) {
    calls.emplace_back("collect");
    if (hidden != nullptr) {
        collection.Add(hidden);
    }
}

void RecordingClient::SaveChunks(fs::file& file, IHostObject* object) {
    if (throwOnSave) {
        throw fs::file_exception(fs::file_exception::kWrite);
    }
    calls.push_back("save " + NameOf(object));
    if (object->IsA(ClassId::LevelRoot)) {
        WriteChunk(file, 5780, rootText);
        for (EditorObject* ghost : kept) {
            ChunkSaveStart(file, 5752);
            ghost->Save(file);
            ChunkSaveEnd(file, 5752);
        }
    } else {
        const bool films = object->IsA(ClassId::FilmManager);
        WriteChunk(file, films ? 5754 : 5784, films ? filmsText : objectText);
    }
}

void RecordingClient::LoadChunk(IHostObject* object, fs::file& file, std::uint16_t id, std::uint32_t size) {
    if (throwOnLoad) {
        throw fs::file_exception(fs::file_exception::kRead);
    }
    if (id == 5752) {
        kept = {static_cast<EditorObject*>(object)->LoadObject(file, size, ClassId::EditorObject,
                                                               static_cast<EditorObject*>(object))};
        return;
    }
    std::string text(static_cast<std::size_t>(std::max(static_cast<int>(size) + readExtra, 0)), '\0');
    text.resize(static_cast<std::size_t>(file.Read(text.data(), static_cast<int>(text.size()))));
    calls.push_back("load " + NameOf(object) + " " + std::to_string(id) + " " + text.substr(0, size));
}

bool RecordingClient::IsOwnChunk(std::uint16_t id) {
    return id == 5754 || id == 5780 || id == 5784 || id == 5752;
}

LevelFileBase::LevelFileBase() {
    char name[] = "/tmp/films-level-XXXXXX";
    folder = mkdtemp(name);
    level.SetChunkClient(&client);
}

LevelFileBase::~LevelFileBase() {
    std::filesystem::remove_all(folder);
}

std::string LevelFileBase::Saved() {
    engine::LevelMessages messages;
    return engine::SerializeLevel(level, "test.level", messages);
}

engine::LevelMessages LevelFileBase::Load(const std::string& bytes) {
    engine::PendingLevel pending = engine::ParseLevel(level, "test.level", bytes);
    film = nullptr;
    return engine::InstallLevel(level, std::move(pending));
}

engine::LevelMessages LevelFileBase::Reload() {
    const std::string bytes = Saved();
    level.New("");
    return Load(bytes);
}

void LevelFileBase::MakeSample() {
    SceneObject& cart = MakeObject("Cart", {1.0f, 0.0f, 0.0f});
    SceneObject& robot = MakeObject("Robot", {0.0f, 2.0f, 0.0f}, &cart, "SkinnedMeshObject", "robot.glb");
    level.Data()->MakeGroup("Pair", {&cart, &MakeObject("Box")});
    film->length = 24.5f;
    film->validated = 1;
    CFilmTrack& main = *film->mainTrack;
    auto& actor = static_cast<engine::ObjectTrack&>(AddActor(robot));
    actor.SetActor(&robot, true);
    actor.SetParent(&cart, false, "wheel");
    CFilmCameraTrack& camera = AddCamera("Main");
    camera.loopMode[2] = LoopMode::PingPong;
    camera.subTrackLength[3] = 3.25f;
    camera.fieldOfView = 42.0f;
    camera.nearPlane = 0.5f;
    camera.farPlane = 77.0f;
    CFilmGLLightTrack& sun = *AsGLLightTrack(&AddTrack(film->CreateGLLightTrack()));
    sun.isSun = 1;
    sun.isFixedLight = 1;
    CFilmTrack& lamp = AddTrack(film->CreateDynLightTrack());

    auto& cut = Add<CFilmCameraKey>(main, KeyKind::Camera, 1.0f, 6.0f);
    cut.cameraName = "Main";
    cut.priority = 2;
    cut.delayTime = 0.5f;
    auto& clip = Add<CFilmAnimationKey>(actor, KeyKind::Animation, 1.5f, 6.5f);
    clip.meshElement = "arm";
    clip.animationName = "Lift";
    clip.frequency = 1.5f;
    clip.repeats = 3;
    clip.startFrame = 4.0f;
    for (int kind = KeyKind::FxSequence; kind <= KeyKind::FxFlare; ++kind) {
        auto& fx = Add<CFilmFxKey>(main, kind, static_cast<float>(kind), static_cast<float>(kind) + 5.0f);
        fx.fxName = "smoke";
        fx.deleteFlag = 1;
        fx.objectId = cart.id;
        fx.linkElement = "seat";
        fx.position = {1.0f, 2.0f, 3.0f};
        fx.normal = {0.0f, 0.0f, 1.0f};
        fx.forward = {1.0f, 0.0f, 0.0f};
    }
    auto& speech = Add<CFilmSpeechKey>(actor, KeyKind::Speech, 2.0f, 7.0f);
    speech.speechPath = "sounds\\hello.wav";
    speech.speechText = "Hello \xC3\xA4";
    auto& sound = Add<CFilmSoundKey>(actor, KeyKind::Sound, 2.5f, 3.5f);
    sound.wavPath = "horn.wav";
    sound.soundPosition = {4.0f, 5.0f, 6.0f};
    sound.followObject = 1;
    sound.looped = 1;
    for (const int kind : {KeyKind::Position, KeyKind::Rotation, KeyKind::Scale}) {
        auto& key = AddVector(actor, kind, 0.0f, {1.0f, 2.0f, 3.0f}, BezierMethod::User);
        key.inHandle = {0.5f, 0.5f, 0.5f};
        key.outMethod = BezierMethod::Inverse;
    }
    auto& java = Add<CFilmJavaKey>(main, KeyKind::JavaMethod, 9.0f);
    java.methodName = "openGate";
    java.callAfterStop = 1;
    AddVector(lamp, KeyKind::Color, 0.0f, {0.25f, 0.5f, 0.75f});
    Add<CFilmFlagsKey>(sun, KeyKind::Flags, 0.0f).keyFlags = 1;
    auto& eye =
        static_cast<CFilmLinkedKey&>(AddVector(camera, KeyKind::CameraPosition, 0.0f, {7.0f, 8.0f, 9.0f}));
    eye.linkObject = &cart;
    eye.linkObjectId = cart.id;
    eye.linkElement = "seat";
    AddVector(camera, KeyKind::CameraTarget, 0.0f, {1.0f, 1.0f, 1.0f});
    AddScalar(camera, KeyKind::Roll, 0.0f, 15.0f);
    AddScalar(camera, KeyKind::FieldOfView, 0.0f, 50.0f, BezierMethod::Speedup);
}

std::string LevelFileBase::Content(const std::string& name) const {
    std::ifstream file(folder / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void LevelFileBase::WriteFile(const std::string& name, const std::string& bytes) const {
    std::ofstream(folder / name, std::ios::binary) << bytes;
}

std::size_t LevelFileBase::FilesInFolder() const {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder), {}));
}

} // namespace engine_test
