#include "host/stage/host/LevelSession.h"

#include "host/engine/LevelFile.h"
#include "host/stage/host/EditorHost.h"
#include "host/stage/host/FilmFingerprint.h"
#include "plugin/contract/EventCodes.h"

#include <filesystem>

namespace stage {

namespace {
std::string Joined(const std::vector<std::string>& messages) {
    constexpr std::size_t kShown = 12;
    std::string text;
    for (std::size_t i = 0; i < messages.size() && i < kShown; ++i) {
        text += (i == 0 ? "" : "\n") + messages[i];
    }
    if (messages.size() > kShown) {
        text += "\n... and " + std::to_string(messages.size() - kShown) + " more";
    }
    return text;
}

std::string FolderOf(const std::string& path) {
    return std::filesystem::absolute(path).lexically_normal().parent_path().string();
}
} // namespace

LevelSession::LevelSession(EditorHost& editorHost) : host(editorHost) {
}

void LevelSession::New() {
    host.LeaveLevel();
    host.level.New("");
    host.meshes.SetFolder("");
    Arrive("");
}

bool LevelSession::Open(const std::string& newPath) {
    std::vector<std::string> messages;
    try {
        messages = Load(newPath);
    } catch (const std::exception& failure) {
        host.windows.ReportError(std::string("The level can't be opened.\n") + failure.what());
        return false;
    }
    if (!messages.empty()) {
        host.windows.ReportError("The level was opened, but not all of it:\n" + Joined(messages));
    }
    return true;
}

std::vector<std::string> LevelSession::Load(const std::string& newPath) {
    engine::PendingLevel pending = engine::ReadLevel(host.level, newPath);
    host.LeaveLevel();
    host.level.Close(); // before its meshes go
    host.meshes.SetFolder(FolderOf(newPath));
    try {
        std::vector<std::string> messages = engine::InstallLevel(host.level, std::move(pending));
        Arrive(newPath);
        return messages;
    } catch (...) {
        host.level.New("");
        Arrive("");
        throw;
    }
}

void LevelSession::Arrive(const std::string& newPath) {
    path = newPath;
    host.plugins.SendEvent(EventCode::LevelLoaded, nullptr);
    objectsChanged = false;
    savedFilms = Fingerprint();
    host.windows.LevelChanged();
    host.windows.ObjectsChanged();
    host.windows.SelectionChanged();
    host.RedrawViews();
}

void LevelSession::Close() {
    host.LeaveLevel();
    host.level.Close();
    path.clear();
    objectsChanged = false;
    savedFilms = Fingerprint();
}

bool LevelSession::Save(const std::string& newPath) {
    if (host.level.Data() == nullptr) {
        return false;
    }
    host.plugins.SendEvent(EventCode::Suspend, nullptr);
    const std::string oldFolder = host.level.Folder();
    bool saved = false;
    try {
        const std::string folder = FolderOf(newPath);
        MoveTo(folder);
        const std::vector<std::string> messages = engine::SaveLevel(host.level, newPath);
        path = newPath;
        objectsChanged = false;
        savedFilms = Fingerprint();
        saved = true;
        if (!messages.empty()) {
            host.windows.ReportError("The level was saved, but not all of it:\n" + Joined(messages));
        }
    } catch (const std::exception& failure) {
        MoveTo(oldFolder);
        host.windows.ReportError(std::string("The level can't be saved.\n") + failure.what());
    }
    host.windows.LevelChanged();
    // Last of all: a film that was playing goes on in here.
    host.plugins.SendEvent(EventCode::Resume, nullptr);
    return saved;
}

void LevelSession::MoveTo(const std::string& newFolder) {
    namespace fs = std::filesystem;
    const fs::path oldFolder = fs::path(host.level.Folder()).lexically_normal();
    host.level.SetFolder(newFolder);
    if (oldFolder == fs::path(host.level.Folder()).lexically_normal()) {
        return;
    }
    host.meshes.SetFolder(newFolder);
    for (const auto& object : host.level.Data()->Objects()) {
        const fs::path mesh = object->meshName;
        const bool moves = !mesh.empty() && mesh.is_relative() && !oldFolder.empty() && !newFolder.empty();
        // Set also where the name stays: the mesh behind it was dropped with the folder.
        object->SetMeshName(
            moves ? (oldFolder / mesh).lexically_normal().lexically_relative(newFolder).generic_string()
                  : object->meshName);
    }
    host.plugins.SendEvent(EventCode::ObjectSetChanged, nullptr);
}

bool LevelSession::IsChanged() const {
    return objectsChanged || Fingerprint() != savedFilms;
}

void LevelSession::MarkChanged() {
    if (!objectsChanged) {
        objectsChanged = true;
        host.windows.LevelChanged();
    }
}

std::string LevelSession::Title() const {
    return path.empty() ? "Untitled" : std::filesystem::path(path).stem().string();
}

std::uint64_t LevelSession::Fingerprint() const {
    const engine::LevelData* data = host.level.Data();
    return FilmFingerprint(data != nullptr ? data->filmManager : nullptr);
}

} // namespace stage
