// Files that the user chooses in file dialogs: sound ones that were saved before, damaged ones, none at all.
#include "framework/FileDialog.h"
#include "tests/editing/World.h"
#include "tests/support/Paths.h"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace editing {

namespace {

constexpr const char* kTrack = "track";
constexpr const char* kKeysParams = "fkd";

std::string ReadAll(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void Write(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

/// Of the dialog's filter: "Movie tracks (*.track)|*.track||".
std::string ExtensionOf(const CFileDialog& dialog) {
    for (const char* known : {kTrack, kKeysParams}) {
        if (dialog.ofn.lpstrFilter.find(std::string("*.") + known) != std::string::npos) {
            return known;
        }
    }
    return {};
}

} // namespace

void World::MakeFiles() {
    Write(folder.File("empty.track"), "");
    Write(folder.File("short.track"), std::string("\x0A\x00", 2));
    Write(folder.File("bare.track"), std::string("\x0A\x00\x00\x00", 4));
    Write(folder.File("noise.track"), std::string("\x0B\x00\x00\x00", 4) + std::string(400, '\xFE'));
    Write(folder.File("zeros.track"), std::string("\x0A\x00\x00\x00", 4) + std::string(400, '\0'));
    const std::string sound = ReadAll(SourceFolder() + "/host/stage/data/DefaultKeysParams.fkd");
    Write(folder.File("sound.fkd"), sound);
    Write(folder.File("empty.fkd"), "");
    Write(folder.File("cut.fkd"), sound.substr(0, sound.size() / 2));
    Write(folder.File("words.fkd"), "QuorlEd film key params file\n***\n** Name : x\nVisible : yes\n");
    std::filesystem::create_directory(folder.File("folder.track"));
    std::filesystem::create_directory(folder.File("folder.fkd"));
}

std::string World::FileToSave(const std::string& extension) {
    static const char* const names[] = {"a.",      "a.",        "b.", "b.", "with blanks and %s.",
                                        "folder.", "nowhere/a."};
    return folder.File(names[luck.Below(static_cast<int>(std::size(names)))] + extension);
}

/// Half of a file, or the file with a byte that is another.
void World::Damage(const std::string& from, const std::string& to) {
    std::string bytes = ReadAll(from);
    if (bytes.empty()) {
        return;
    }
    const auto place = static_cast<std::size_t>(luck.Below(static_cast<int>(bytes.size())));
    if (luck.OneIn(2)) {
        bytes.resize(place);
    } else {
        bytes[place] = static_cast<char>(luck.Below(256));
    }
    Write(to, bytes);
}

std::string World::FileToOpen(const std::string& extension) {
    static const char* const tracks[] = {"empty.", "short.", "bare.", "noise.", "zeros."};
    static const char* const params[] = {"sound.", "sound.", "empty.", "cut.", "words."};
    std::string saved = folder.File((luck.OneIn(2) ? "a." : "b.") + extension);
    switch (luck.Below(8)) {
    case 0: {
        const auto place = static_cast<std::size_t>(luck.Below(5));
        return folder.File((extension == kTrack ? tracks[place] : params[place]) + extension);
    }
    case 1:
        Damage(saved, folder.File("damaged." + extension));
        return folder.File("damaged." + extension);
    case 2:
        return folder.File("folder." + extension);
    case 3:
        return folder.File("nowhere/a." + extension);
    default:
        return saved;
    }
}

int World::AnswerFile(CFileDialog& dialog) {
    Disturb();
    static const char* const sounds[] = {"one.wav", "sounds/two.ogg", "/elsewhere/three.wav",
                                         "a name with blanks"};
    const std::string extension = ExtensionOf(dialog);
    if (luck.OneIn(8)) {
        dialog.SetPathName(std::string(300, 'p') + ".wav");
    } else if (extension.empty()) {
        dialog.SetPathName(sounds[luck.Below(4)]);
    } else {
        dialog.SetPathName(dialog.IsOpenDialog() ? FileToOpen(extension) : FileToSave(extension));
    }
    ++dialogs[(dialog.IsOpenDialog() ? "Open " : "Save ") + extension];
    return luck.OneIn(4) ? IDCANCEL : IDOK;
}

} // namespace editing
