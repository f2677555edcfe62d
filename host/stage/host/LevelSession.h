#pragma once

#include "host/engine/FileStamp.h"
#include "host/stage/host/history/LevelHistory.h"
#include "host/stage/host/KeptWork.h"
#include "host/stage/host/LevelChanges.h"

#include <string>
#include <vector>

namespace stage {

class EditorHost;
} // namespace stage

namespace engine {
struct PendingLevel;
}

namespace stage {

/// Which level is open and whether it is saved: new, open, save and close, each with the events that
/// plug-ins rely on, in their order.
class LevelSession {
public:
    explicit LevelSession(EditorHost& editorHost);
    ~LevelSession();
    LevelSession(const LevelSession&) = delete;
    LevelSession& operator=(const LevelSession&) = delete;

    void New();
    /// False, and a report, if the file can't be read; then the open level stays as it is.
    bool Open(const std::string& path);
    /// The same without a report: throws engine::LevelFileError, and returns what was left out.
    std::vector<std::string> Load(const std::string& path);
    /// False, and a report, if the file can't be written; an old file is whole then. Where a film plays,
    /// this returns only when it has ended: it goes on after the save.
    ///
    /// If another program has changed the level's file meanwhile, the windows are asked first, and it may be
    /// saved under another path, which `Path` tells then, or not at all. The first save over a level that was
    /// not opened whole keeps what was opened beside it, with ".bak" behind its name.
    bool Save(const std::string& path);
    /// No level at all.
    void Close();

    /// The level as it is now, to be kept outside its file. Throws engine::LevelFileError.
    KeptWork TakeWork();
    /// Opens what was kept: the level of that path, changed, with what was known of its file then. False, and
    /// a report, if it holds no level; then the open level stays as it is.
    bool Recover(const KeptWork& work);

    /// A save would write something else than what was last saved or opened. Works it out; the title follows.
    bool IsChanged() const { return changes.Compare(); }
    /// As it was last found, at no cost: for the title.
    bool IsMarkedChanged() const { return changes.IsMarked(); }
    void MarkChanged() { changes.Mark(); }
    LevelChanges& Changes() { return changes; }
    /// What was done with the open level, to be undone and redone.
    LevelHistory& History() { return history; }
    /// Absolute path of the open level's file, empty before the first save.
    const std::string& Path() const { return path; }
    /// File name without folder and ending, "Untitled" before the first save.
    std::string Title() const;

private:
    void Arrive(const std::string& newPath);
    /// The open level is about to go.
    void Leave();
    /// No file is known of the level.
    void Forget();
    /// Leaves the open level and puts another in its place, the start of which is known to be good.
    std::vector<std::string> Install(engine::PendingLevel pending, const std::string& newPath,
                                     const engine::FileStamp& opened);
    bool IsOwnFile(const std::string& newPath) const;
    bool SaveUnder(const std::string& newPath);
    /// Names of other files are relative to the level's folder: in another folder the same files get other
    /// names.
    std::vector<std::string> Write(const std::string& newPath);
    void SetFolder(const std::string& newFolder, bool meshesMoved);
    void KeepOriginal(const std::string& newPath);

    EditorHost& host;
    std::string path;
    engine::FileStamp stamp; ///< of the level's file as this session knows it
    std::string original;    ///< the file that was opened, if not all of it could be read, until it is kept
    LevelHistory history;
    mutable LevelChanges changes; ///< answers, and remembers the answer
};

} // namespace stage
