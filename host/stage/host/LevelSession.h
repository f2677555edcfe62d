#pragma once

#include "host/engine/FileStamp.h"

#include <cstdint>
#include <string>
#include <vector>

namespace stage {

class EditorHost;

/// Which level is open and whether it is saved: new, open, save and close, each with the events that
/// plug-ins rely on, in their order.
class LevelSession {
public:
    explicit LevelSession(EditorHost& editorHost);

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

    /// Objects or films differ from what was last saved or loaded.
    bool IsChanged() const;
    void MarkChanged();
    /// Absolute path of the open level's file, empty before the first save.
    const std::string& Path() const { return path; }
    /// File name without folder and ending, "Untitled" before the first save.
    std::string Title() const;

private:
    void Arrive(const std::string& newPath);
    /// No file is known of the level.
    void Forget();
    bool IsOwnFile(const std::string& newPath) const;
    bool SaveUnder(const std::string& newPath);
    /// Names of other files are relative to the level's folder: in another folder the same files get other
    /// names.
    std::vector<std::string> Write(const std::string& newPath);
    void SetFolder(const std::string& newFolder, bool meshesMoved);
    void KeepOriginal(const std::string& newPath);
    std::uint64_t Fingerprint() const;

    EditorHost& host;
    std::string path;
    engine::FileStamp stamp; ///< of the level's file as this session knows it
    std::string original;    ///< the file that was opened, if not all of it could be read, until it is kept
    bool objectsChanged = false;
    std::uint64_t savedFilms = 0;
};

} // namespace stage
