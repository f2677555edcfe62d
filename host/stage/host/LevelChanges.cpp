#include "host/stage/host/LevelChanges.h"

#include "host/stage/host/EditorHost.h"
#include "host/stage/host/history/LevelHistory.h"

namespace stage {

LevelChanges::LevelChanges(EditorHost& editorHost, const LevelHistory& levelHistory)
    : host(editorHost), history(levelHistory) {
}

void LevelChanges::Forget() {
    tracking = changed = looking = false;
    saved.reset();
}

void LevelChanges::CountAsSaved() {
    CountAsSaved(Content());
}

void LevelChanges::CountAsSaved(std::optional<std::uint64_t> content) {
    tracking = true;
    changed = looking = false;
    saved = content;
}

void LevelChanges::CountAsUnsaved() {
    tracking = changed = true;
    looking = false;
    saved.reset();
}

std::optional<std::uint64_t> LevelChanges::Content() {
    if (host.level.Data() == nullptr) {
        return std::nullopt;
    }
    writing = true;
    std::optional<std::uint64_t> content;
    try {
        content = history.ContentNow();
    } catch (const std::exception&) {
        content.reset(); // a save tells why
    }
    writing = false;
    return content;
}

void LevelChanges::Set(bool isChanged) {
    if (changed != isChanged) {
        changed = isChanged;
        host.windows.LevelChanged();
    }
}

void LevelChanges::Mark() {
    looking = false;
    Set(true);
}

bool LevelChanges::Compare() {
    if (tracking && !writing) {
        EndLook();
        const std::optional<std::uint64_t> content = Content();
        Set(!saved || content != saved);
    }
    return changed;
}

void LevelChanges::BeginLook() {
    if (!tracking || changed || looking || writing) {
        return;
    }
    if (!Compare()) {
        looking = true;
        if (lookBegan) {
            lookBegan();
        }
    }
}

void LevelChanges::BreakLook() {
    if (looking) {
        Mark();
    }
}

void LevelChanges::EndLook() {
    if (looking) {
        looking = false;
        const std::optional<std::uint64_t> content = Content();
        saved = content ? content : saved;
    }
}

} // namespace stage
