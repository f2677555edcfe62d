#pragma once

#include "host/stage/host/KeptWork.h"

#include <memory>
#include <string>
#include <vector>

namespace stage {

/// A file that this process alone has, until the object goes. Others find it locked.
class WorkLock {
public:
    /// Takes the lock of this name, which is made if it is missing; not if another process has it.
    explicit WorkLock(const std::string& name);
    ~WorkLock();
    WorkLock(const WorkLock&) = delete;
    WorkLock& operator=(const WorkLock&) = delete;

    bool IsHeld() const { return descriptor >= 0; }
    /// Takes the file away with the lock.
    void Remove();

private:
    std::string path;
    int descriptor = -1;
};

/// Work that somebody left, as found. Nobody else is offered it while this lives.
struct FoundWork {
    std::string file;
    KeptWork work;     ///< good unless there is an error
    std::string error; ///< why the file can't be used, empty for a good one
    std::shared_ptr<WorkLock> lock;
};

/// The user's folder of unsaved work. Every Stage that runs has one place of its own in it, which a lock
/// guards; the places of those that ended without leave hold what they had kept. Beside them stands what was
/// last discarded by any of them.
class WorkFolder {
public:
    /// `stateFolder` is UserStateFolder; empty, nothing is ever kept. Nothing is made before it is needed.
    explicit WorkFolder(const std::string& stateFolder);
    ~WorkFolder();
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;

    bool IsUsable() const { return !folder.empty(); }
    /// Replaces what this Stage has kept. False, with the reason, if it can't be written: the former is whole
    /// then.
    bool Keep(KeptWork work, std::string& error);
    bool HasKept() const { return hasKept; }
    /// Everything is saved: nothing of this Stage is kept any more.
    void Drop();
    /// In place of whatever was discarded before.
    bool KeepDiscarded(KeptWork work, std::string& error);

    /// What ended Stages left, the latest first, then what was discarded. Not what this or another running
    /// Stage has.
    std::vector<FoundWork> Find() const;
    /// Only of those that ended without leave.
    static bool IsLeftover(const FoundWork& found) { return found.lock != nullptr; }
    /// Removes it from the folder.
    static void Remove(FoundWork& found);

private:
    bool TakePlace(std::string& error);
    std::string OwnFile() const;

    std::string folder;
    std::string place; ///< name of this Stage's place, empty until it has one
    std::unique_ptr<WorkLock> lock;
    bool hasKept = false;
};

} // namespace stage
