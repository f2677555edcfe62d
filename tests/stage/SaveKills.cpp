// Kills a process in the middle of its saves, again and again, and opens what is there: the level must always
// be whole, as it was before that save or as it is behind it.
//
//   films_save_kills [ROUNDS [SEED]]
//
// Exit code 1, with a line for each, if a level was broken, lost a save that had ended, or if temporaries
// stay.

#include "host/engine/LevelFile.h"
#include "host/stage/host/EditorHost.h"
#include "host/stage/host/LevelSession.h"
#include "tests/stage/FakeWindows.h"
#include "tests/support/TempFolder.h"

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int kObjects = 300; ///< enough that a save writes for some time, few enough to open the level often
constexpr int kSavesOfSleep = 3;
constexpr const char* kMarker = "Version ";

/// What the saving process tells: a save began, or ended.
struct Note {
    int version;
    int ended;
};

struct Stage {
    FakeWindows windows;
    stage::EditorHost host{windows, {"data", "data/helpers"}};
    stage::LevelSession session{host};

    engine::SceneObject& Marker() { return *host.level.Data()->Objects().front(); }
    int Version() { return std::atoi(Marker().name.c_str() + std::string(kMarker).size()); }
    void SetVersion(int version) { Marker().name = kMarker + std::to_string(version); }
};

/// Makes the level and gives the microseconds that a save of it takes, 0 on failure.
unsigned MakeLevel(const std::string& path) {
    Stage stage;
    stage.session.New();
    for (int i = 0; i < kObjects; ++i) {
        engine::ObjectSpec spec;
        spec.className = ClassName::Mesh;
        spec.meshName = "models/crate.glb";
        stage.host.level.Data()->Create(spec);
    }
    stage.SetVersion(0);
    if (!stage.session.Save(path)) {
        return 0;
    }
    const auto start = std::chrono::steady_clock::now();
    constexpr int kMeasured = 10;
    for (int i = 0; i < kMeasured; ++i) {
        stage.session.Save(path);
    }
    const auto taken = std::chrono::steady_clock::now() - start;
    return 1 + static_cast<unsigned>(std::chrono::duration_cast<std::chrono::microseconds>(taken).count() /
                                     kMeasured);
}

[[noreturn]] void SaveForEver(const std::string& path, int notes) {
    Stage stage;
    if (!stage.session.Open(path)) {
        _exit(1);
    }
    for (int version = stage.Version() + 1;; ++version) {
        stage.SetVersion(version);
        const Note began{version, 0};
        const Note ended{version, 1};
        if (write(notes, &began, sizeof began) != sizeof began || !stage.session.Save(path) ||
            write(notes, &ended, sizeof ended) != sizeof ended) {
            _exit(1);
        }
    }
}

/// One run of the program.
class Kills {
public:
    Kills(unsigned seed, unsigned saveMicroseconds)
        : random(seed), longest(kSavesOfSleep * saveMicroseconds) {}

    bool Round(const std::string& path) {
        int notes[2];
        if (pipe(notes) != 0) {
            return false;
        }
        const pid_t saver = fork();
        if (saver == 0) {
            close(notes[0]);
            SaveForEver(path, notes[1]);
        }
        close(notes[1]);
        int ended = version;
        int began = version;
        Note note{};
        // The first save has begun; now any moment of the saves that follow.
        bool running = read(notes[0], &note, sizeof note) == sizeof note;
        began = note.version;
        usleep(static_cast<useconds_t>(random() % longest));
        kill(saver, SIGKILL);
        waitpid(saver, nullptr, 0);
        while (read(notes[0], &note, sizeof note) == sizeof note) {
            (note.ended != 0 ? ended : began) = note.version;
        }
        close(notes[0]);
        inside += began != ended ? 1 : 0;
        return running && Check(path, ended, began);
    }

    int version = 0; ///< of the level as it was last found
    int inside = 0;  ///< kills between the beginning and the end of a save
    int fresh = 0;   ///< of these, how often the new level was there already

private:
    bool Check(const std::string& path, int ended, int began) {
        Stage stage;
        try {
            const std::vector<std::string> messages = stage.session.Load(path);
            version = stage.Version();
            fresh += began != ended && version == began ? 1 : 0;
            if (messages.empty() && (version == ended || version == began) &&
                stage.host.level.Data()->Objects().size() == kObjects) {
                return true;
            }
            std::printf("save %d had ended and %d begun, but the level is %d with %zu messages\n", ended,
                        began, version, messages.size());
        } catch (const engine::LevelFileError& error) {
            std::printf("%s\n", error.what());
        }
        return false;
    }

    std::mt19937 random;
    unsigned longest; ///< microseconds from the first save to the kill
};

std::size_t FilesIn(const std::string& folder) {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder), {}));
}

} // namespace

int main(int argc, char** argv) {
    const int rounds = argc > 1 ? std::atoi(argv[1]) : 1000;
    const unsigned seed = argc > 2 ? static_cast<unsigned>(std::atoi(argv[2])) : 1;
    const TempFolder folder;
    const std::string path = folder.File("a.level");
    const unsigned saveMicroseconds = MakeLevel(path);
    if (saveMicroseconds == 0) {
        return 1;
    }
    Kills kills(seed, saveMicroseconds);
    int broken = 0;
    std::size_t most = 0;
    for (int round = 0; round < rounds; ++round) {
        broken += kills.Round(path) ? 0 : 1;
        most = std::max(most, FilesIn(folder.Path()));
    }
    Stage stage;
    const bool saved = stage.session.Open(path) && stage.session.Save(path);
    const std::size_t left = FilesIn(folder.Path()) - 1;
    std::printf("%d kills, %d of them inside a save (%d found the new level, %d the old one), %d saves in "
                "all; broken: %d; "
                "files at the most: %zu; temporaries left behind a last save: %zu\n",
                rounds, kills.inside, kills.fresh, kills.inside - kills.fresh, kills.version, broken, most,
                left);
    return broken == 0 && saved && left == 0 ? 0 : 1;
}
