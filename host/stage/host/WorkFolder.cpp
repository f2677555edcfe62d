#include "host/stage/host/WorkFolder.h"

#include "host/engine/FileReplace.h"
#include "host/engine/LowLevelFiles.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

namespace stage {

namespace {

namespace stdfs = std::filesystem;

constexpr const char* kWorkEnding = ".work";
constexpr const char* kLockEnding = ".lock";
constexpr const char* kDiscarded = "discarded";
constexpr int kMostPlaces = 1000;

bool Write(const std::string& file, KeptWork& work, std::string& error) {
    work.when = static_cast<std::int64_t>(std::time(nullptr));
    return engine::ReplaceFile(file, EncodeWork(work), error);
}

/// Locks of Stages that were killed before they kept anything.
void RemoveEmptyPlaces(const std::string& folder) {
    std::error_code failed;
    for (stdfs::directory_iterator entry(folder, failed); !failed && entry != stdfs::directory_iterator();
         entry.increment(failed)) {
        stdfs::path work = entry->path();
        if (work.extension() == kLockEnding && !stdfs::exists(work.replace_extension(kWorkEnding), failed)) {
            WorkLock(entry->path().string()).Remove();
        }
    }
}

FoundWork Read(const std::string& file) {
    FoundWork found;
    found.file = file;
    std::string bytes;
    if (engine::ReadWholeFile(file, bytes, found.error)) {
        DecodeWork(bytes, found.work, found.error);
    }
    return found;
}

} // namespace

WorkLock::WorkLock(const std::string& name) : path(name) {
    const int file = engine::RetryInterrupted([&] {
        return engine::LowLevel().open(path.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC,
                                       S_IRUSR | S_IWUSR);
    });
    struct stat status = {};
    const bool isMine = file >= 0 &&
                        engine::RetryInterrupted([&] { return engine::LowLevel().lock(file); }) == 0 &&
                        engine::LowLevel().status(file, &status) == 0 && status.st_nlink > 0;
    if (isMine) {
        descriptor = file;
    } else if (file >= 0) {
        engine::LowLevel().close(file);
    }
}

WorkLock::~WorkLock() {
    if (descriptor >= 0) {
        engine::LowLevel().close(descriptor);
    }
}

void WorkLock::Remove() {
    if (descriptor >= 0) {
        engine::LowLevel().unlink(path.c_str());
        engine::LowLevel().close(descriptor);
        descriptor = -1;
    }
}

WorkFolder::WorkFolder(const std::string& stateFolder)
    : folder(stateFolder.empty() ? std::string() : (stdfs::path(stateFolder) / "work" / "").string()) {
}

WorkFolder::~WorkFolder() {
    // What is kept stays, and is found by the next Stage.
    if (lock != nullptr && !hasKept) {
        lock->Remove();
    }
}

std::string WorkFolder::OwnFile() const {
    return folder + place + kWorkEnding;
}

bool WorkFolder::TakePlace(std::string& error) {
    if (folder.empty()) {
        error = "there is no folder for the user's state";
        return false;
    }
    if (!place.empty()) {
        return true;
    }
    std::error_code failed;
    stdfs::create_directories(folder, failed);
    if (failed) {
        error = "can't make " + folder + ": " + failed.message();
        return false;
    }
    RemoveEmptyPlaces(folder);
    for (int i = 0; i < kMostPlaces && place.empty(); ++i) {
        const std::string name = std::to_string(getpid()) + "-" + std::to_string(i);
        if (stdfs::exists(folder + name + kWorkEnding, failed)) {
            continue; // left by an earlier process of the same number
        }
        auto taken = std::make_unique<WorkLock>(folder + name + kLockEnding);
        if (taken->IsHeld()) {
            lock = std::move(taken);
            place = name;
        }
    }
    if (place.empty()) {
        error = "can't lock a file in " + folder;
    }
    return !place.empty();
}

bool WorkFolder::Keep(KeptWork work, std::string& error) {
    work.discarded = false;
    if (!TakePlace(error) || !Write(OwnFile(), work, error)) {
        return false;
    }
    hasKept = true;
    return true;
}

void WorkFolder::Drop() {
    if (hasKept) {
        engine::LowLevel().unlink(OwnFile().c_str());
        hasKept = false;
    }
}

bool WorkFolder::KeepDiscarded(KeptWork work, std::string& error) {
    work.discarded = true;
    return TakePlace(error) && Write(folder + kDiscarded + kWorkEnding, work, error);
}

std::vector<FoundWork> WorkFolder::Find() const {
    std::vector<FoundWork> leftovers;
    std::vector<FoundWork> discarded;
    std::error_code failed;
    if (folder.empty()) {
        return leftovers;
    }
    for (stdfs::directory_iterator entry(folder, failed); !failed && entry != stdfs::directory_iterator();
         entry.increment(failed)) {
        const std::string name = entry->path().stem().string();
        if (entry->path().extension() != kWorkEnding || name.front() == '.' || name == place) {
            continue;
        }
        if (name == kDiscarded) {
            discarded.push_back(Read(entry->path().string()));
            continue;
        }
        auto taken = std::make_shared<WorkLock>(folder + name + kLockEnding);
        if (taken->IsHeld()) {
            leftovers.push_back(Read(entry->path().string()));
            leftovers.back().lock = std::move(taken);
        }
    }
    std::ranges::sort(leftovers, std::ranges::greater{},
                      [](const FoundWork& found) { return found.work.when; });
    std::ranges::move(discarded, std::back_inserter(leftovers));
    return leftovers;
}

void WorkFolder::Remove(FoundWork& found) {
    engine::LowLevel().unlink(found.file.c_str());
    if (found.lock != nullptr) {
        found.lock->Remove();
        found.lock.reset();
    }
}

} // namespace stage
