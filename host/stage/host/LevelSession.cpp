#include "host/stage/host/LevelSession.h"

#include "host/engine/FileReplace.h"
#include "host/engine/LevelFile.h"
#include "host/engine/References.h"
#include "host/stage/host/Advice.h"
#include "host/stage/host/DryWrite.h"
#include "host/stage/host/EditorHost.h"
#include "host/stage/host/ReferenceMove.h"
#include "plugin/contract/EventCodes.h"

#include <filesystem>
#include <optional>

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
} // namespace

LevelSession::LevelSession(EditorHost& editorHost)
    : host(editorHost), history(editorHost), changes(editorHost, history) {
    // What is put back is shown too, but it is the user who wanted it back.
    host.level.SetShowHook([this] {
        if (!history.IsBusy()) {
            changes.BeginLook();
        }
    });
    host.level.SetEditHook([this] { changes.BreakLook(); });
}

LevelSession::~LevelSession() {
    host.level.SetShowHook(nullptr);
    host.level.SetEditHook(nullptr);
}

void LevelSession::New() {
    Leave();
    host.LeaveLevel();
    host.level.New("");
    host.meshes.SetFolder("");
    Forget();
    Arrive("");
}

void LevelSession::Leave() {
    changes.Forget();
    history.Forget();
}

bool LevelSession::Open(const std::string& newPath) {
    std::vector<std::string> messages;
    try {
        messages = Load(newPath);
    } catch (const std::exception& failure) {
        host.windows.ReportError(std::string("The level can't be opened.\n") + failure.what() + "\n\n" +
                                 AdviceForOpening(newPath));
        return false;
    }
    if (!messages.empty()) {
        host.windows.ReportError("The level was opened, but not all of it:\n" + Joined(messages));
    }
    return true;
}

std::vector<std::string> LevelSession::Load(const std::string& newPath) {
    engine::PendingLevel pending = engine::ReadLevel(host.level, newPath);
    const std::string absolute = pending.path;
    const engine::FileStamp opened = pending.stamp;
    return Install(std::move(pending), absolute, opened);
}

std::vector<std::string> LevelSession::Install(engine::PendingLevel pending, const std::string& newPath,
                                               const engine::FileStamp& opened) {
    std::string bytes = pending.bytes;
    Leave();
    host.LeaveLevel();
    host.level.Close(); // before its meshes go
    host.meshes.SetFolder(pending.folder);
    try {
        std::vector<std::string> messages = engine::InstallLevel(host.level, std::move(pending));
        stamp = opened;
        original = messages.empty() ? std::string() : std::move(bytes);
        Arrive(newPath);
        return messages;
    } catch (...) {
        host.meshes.SetFolder("");
        host.level.New("");
        Forget();
        Arrive("");
        throw;
    }
}

void LevelSession::Forget() {
    stamp = {};
    original.clear();
}

void LevelSession::Arrive(const std::string& newPath) {
    path = newPath;
    host.plugins.SendEvent(EventCode::LevelLoaded, nullptr);
    changes.CountAsSaved(history.Start());
    host.windows.LevelChanged();
    host.windows.ObjectsChanged();
    host.windows.SelectionChanged();
    host.RedrawViews();
}

void LevelSession::Close() {
    Leave();
    host.LeaveLevel();
    host.level.Close();
    path.clear();
    Forget();
}

KeptWork LevelSession::TakeWork() {
    return {path, stamp, !original.empty(), DryWrite(host)};
}

bool LevelSession::Recover(const KeptWork& work) {
    try {
        engine::PendingLevel pending = engine::ParseLevel(host.level, work.path, work.bytes);
        pending.folder = work.path.empty() ? std::string() : engine::LevelFolder(work.path);
        Install(std::move(pending), work.path, work.stamp);
    } catch (const std::exception& failure) {
        host.windows.ReportError(std::string("The kept work can't be opened.\n") + failure.what());
        return false;
    }
    original.clear();
    std::string error;
    if (work.openedInPart) {
        engine::ReadWholeFile(work.path, original, error); // one that is gone can't be kept either
    }
    changes.CountAsUnsaved();
    host.windows.LevelChanged();
    return true;
}

bool LevelSession::Save(const std::string& newPath) {
    if (host.level.Data() == nullptr) {
        return false;
    }
    std::string wanted = engine::AbsolutePath(newPath);
    // Asked before the plug-ins leave their film: a box of the host's is no place to be in the middle of a
    // save.
    while (IsOwnFile(wanted) && engine::HasChanged(wanted, stamp)) {
        const std::optional<std::string> answer = host.windows.PathForChangedFile(wanted);
        if (!answer) {
            return false;
        }
        const std::string chosen = engine::AbsolutePath(*answer);
        if (IsOwnFile(chosen)) {
            break;
        }
        wanted = chosen;
    }
    return SaveUnder(wanted);
}

bool LevelSession::IsOwnFile(const std::string& newPath) const {
    std::error_code error;
    return !path.empty() && (newPath == path || std::filesystem::equivalent(newPath, path, error));
}

bool LevelSession::SaveUnder(const std::string& newPath) {
    host.plugins.SendEvent(EventCode::Suspend, nullptr);
    bool saved = false;
    try {
        const std::vector<std::string> messages = Write(newPath);
        path = newPath;
        saved = true;
        if (!messages.empty()) {
            host.windows.ReportError("The level was saved, but:\n" + Joined(messages));
        }
    } catch (const std::exception& failure) {
        host.windows.ReportError(std::string("The level can't be saved.\n") + failure.what() + "\n\n" +
                                 AdviceForSaving());
    }
    host.windows.LevelChanged();
    // Last of all: a film that was playing goes on in here.
    host.plugins.SendEvent(EventCode::Resume, nullptr);
    return saved;
}

std::vector<std::string> LevelSession::Write(const std::string& newPath) {
    const std::string oldFolder = host.level.Folder();
    const std::string newFolder = engine::LevelFolder(newPath);
    ReferenceMove names(*host.level.Data(), oldFolder, newFolder);
    SetFolder(newFolder, names.HasMovedMeshes());
    try {
        KeepOriginal(newPath);
        const OwnCameras cameras(host);
        engine::FileStamp written;
        std::vector<std::string> messages = engine::SaveLevel(host.level, newPath, &written);
        stamp = written;
        if (names.HasMoved()) {
            history.Start(); // what names files from the old folder can't come back
        }
        changes.CountAsSaved();
        original.clear();
        return messages;
    } catch (...) {
        const bool meshesMoved = names.HasMovedMeshes();
        names.Undo();
        SetFolder(oldFolder, meshesMoved);
        throw;
    }
}

void LevelSession::SetFolder(const std::string& newFolder, bool meshesMoved) {
    const bool isSame = engine::IsSameFolder(host.level.Folder(), newFolder);
    host.level.SetFolder(newFolder);
    if (isSame && !meshesMoved) {
        return; // another spelling at most: the meshes that objects hold stay good
    }
    host.meshes.SetFolder(newFolder);
    for (const auto& object : host.level.Data()->Objects()) {
        // Also where the name stays: the mesh behind it was dropped with the folder.
        object->SetMeshName(std::string(object->meshName));
    }
    host.plugins.SendEvent(EventCode::ObjectSetChanged, nullptr);
}

/// A save writes what could be read of the level; what could not is in the file that was opened.
void LevelSession::KeepOriginal(const std::string& newPath) {
    std::string error;
    if (!original.empty() && IsOwnFile(newPath) &&
        !engine::ReplaceFile(engine::FollowLinks(newPath) + ".bak", original, error)) {
        throw engine::LevelFileError(
            newPath, -1, "not all of it could be read, and what was opened can't be kept: " + error);
    }
}

std::string LevelSession::Title() const {
    return path.empty() ? "Untitled" : std::filesystem::path(path).stem().string();
}

} // namespace stage
