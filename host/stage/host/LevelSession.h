#pragma once

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
    bool Save(const std::string& path);
    /// No level at all.
    void Close();

    /// Objects or films differ from what was last saved or loaded.
    bool IsChanged() const;
    void MarkChanged();
    /// Path of the open level's file, empty before the first save.
    const std::string& Path() const { return path; }
    /// File name without folder and ending, "Untitled" before the first save.
    std::string Title() const;

private:
    void Arrive(const std::string& newPath);
    /// Mesh names are relative to the level's folder: in another folder the same files get other names.
    void MoveTo(const std::string& newFolder);
    std::uint64_t Fingerprint() const;

    EditorHost& host;
    std::string path;
    bool objectsChanged = false;
    std::uint64_t savedFilms = 0;
};

} // namespace stage
