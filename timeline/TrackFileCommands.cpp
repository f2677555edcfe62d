#include "timeline/TrackFileCommands.h"

#include "files/base/Log.h"
#include "files/QuorlEdFileDialog.h"
#include "framework/MessageBox.h"
#include "framework/UserNote.h"
#include "plugin/contract/File.h"
#include "plugin/PluginImpl.h"
#include "timeline/FilmsMainCtrl.h"

#include <cstdint>
#include <string>

namespace {

constexpr const char* kExtension = "track";
constexpr const char* kFilter = "Movie tracks (*.track)|*.track||";
constexpr int kRead = 0;
constexpr int kWrite = 1;
/// In files: before the body that the host writes.
constexpr int kKindBytes = 4;

/// A file that is closed on every way out.
class OpenFile {
public:
    OpenFile() = default;
    ~OpenFile() { file.Close(); }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    /// False after the user was told; `words` stand between the path and the reason.
    bool Open(const std::string& path, int mode, const char* words) {
        try {
            file.Open(path.c_str(), mode);
        } catch (const fs::file_exception& error) {
            AfxMessageBox("Failed to open file " + path + words + error.what());
            return false;
        }
        return true;
    }

    fs::file file;
};

void WriteKind(fs::file& file, int kind) {
    const auto number = static_cast<std::uint32_t>(kind);
    unsigned char bytes[kKindBytes];
    for (int i = 0; i < kKindBytes; ++i) {
        bytes[i] = static_cast<unsigned char>(number >> (8 * i));
    }
    file.Write(bytes, kKindBytes);
}

/// -1, which no row has, in a file that is shorter.
int ReadKind(fs::file& file) {
    unsigned char bytes[kKindBytes] = {};
    if (file.Read(bytes, kKindBytes) != kKindBytes) {
        return -1;
    }
    std::uint32_t number = 0;
    for (int i = 0; i < kKindBytes; ++i) {
        number |= static_cast<std::uint32_t>(bytes[i]) << (8 * i);
    }
    return static_cast<int>(number);
}

void WriteBody(fs::file& file, CFilmTrack& track, int kind) {
    MKTrack* keys = track.subTracks[kind];
    if (keys == nullptr) {
        DebugPrint("[CFilmsMainCtrl::OnMenuExportTrack] no proper MKTrack\n");
    } else if (kind == KeyKind::Position || kind == KeyKind::Rotation) {
        keys->Export(file, 0);
    } else {
        DebugPrint("[CFilmsMainCtrl::OnMenuExportTrack] only position and rotation tracks can be exported\n");
    }
}

/// The path as seen from the program's directory. Empty on cancel and where the row of the menu, or its
/// track, went while the user chose.
std::string AskForTrackFile(CFilmsMainCtrl& control, bool open) {
    const CTrackCtrl* row = control.menuRow;
    const CFilmTrack* track = row != nullptr ? row->track : nullptr;
    if (track == nullptr) {
        return {};
    }
    CQuorlEdFileDialog dialog(open ? TRUE : FALSE, kExtension, nullptr,
                              OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT, kFilter, &control);
    const Watch<CFilmsMainCtrl> window(&control);
    const bool chosen = dialog.DoModal() == IDOK && !dialog.GetPathName().empty();
    return chosen && window.IsAlive() && control.menuRow == row && row->track == track
               ? dialog.GetRelativePathName()
               : std::string();
}

/// The keys of the row's kind become those of the file. Their views go first, since everything that points at
/// one reaches its record through it; so until the film is shown anew the row has none.
void ReplaceKeys(CTrackCtrl& row, fs::file& file) {
    CFilmTrack& track = *row.track;
    row.DropViews();
    track.ClearKind(row.kind);
    track.subTracks[row.kind]->Import(file, 0, row.kind);
    track.subTracks[row.kind]->CollectKeys(track.keys);
    track.Finish();
}

} // namespace

void ExportTrack(CFilmsMainCtrl& control) {
    const std::string path = AskForTrackFile(control, /*open*/ false);
    OpenFile target;
    if (path.empty() || !target.Open(path, kWrite, " for writing : ")) {
        return;
    }
    WriteKind(target.file, control.menuRow->kind); // Required: also where no body follows.
    WriteBody(target.file, *control.menuRow->track, control.menuRow->kind);
    if (target.file.Close() != 0) { // what was kept back in memory
        throw fs::file_exception(fs::file_exception::kWrite);
    }
    NoteForUser("The keys of the row are written to " + path + ".");
}

void ImportTrack(CFilmsMainCtrl& control) {
    const std::string path = AskForTrackFile(control, /*open*/ true);
    OpenFile source;
    if (path.empty() || !source.Open(path, kRead, " for reading:\n")) {
        return;
    }
    if (ReadKind(source.file) != control.menuRow->kind) {
        AfxMessageBox("Track class doesn't match file");
        return;
    }
    if (control.menuRow->track->subTracks[control.menuRow->kind] == nullptr) {
        DebugPrint("[CFilmsMainCtrl::OnMenuImportTrack] no proper MKTrack\n");
        return;
    }
    IFilm* film = control.plugin.GetCurrentFilm();
    try {
        ReplaceKeys(*control.menuRow, source.file);
    } catch (...) {
        source.file.Close();
        control.ShowFilm(film,
                         /*flag*/ true); // Required: the keys are gone, and the film is shown without them.
        throw;
    }
    source.file.Close();
    control.ShowFilm(film, /*flag*/ true);
}
