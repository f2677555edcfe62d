// Kills Stage in the middle of edits, again and again, and starts another that takes up what was kept.
//
//   films_edit_kills [ROUNDS [SEED]]
//
// Three rounds of four end by SIGKILL, the others by SIGTERM, SIGHUP and SIGINT in turn. After SIGKILL no
// more may be missing than was edited since the work was last kept, after the others nothing that was told
// before the signal. Exit code 1, with a line for each, if work was lost, offered twice or damaged, or the
// level's file was touched.

#include "framework/FilmsApplication.h"
#include "host/stage/host/WorkFolder.h"
#include "host/stage/windows/app/EndSignals.h"
#include "host/stage/windows/MainWindow.h"
#include "host/stage/windows/RecoverDialog.h"
#include "host/stage/windows/WorkKeeper.h"
#include "tests/support/TempFolder.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <QTimer>
#include <random>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

constexpr int kObjects = 300;
constexpr int kEditsOfKeep = 5;
constexpr int kShortestMs = 30; ///< from the first edit to the end
constexpr int kLongestMs = 250;
constexpr const char* kMarker = "Version ";
constexpr const char* kEditOption = "--edit";
constexpr const char* kRecoverOption = "--recover";

struct Paths {
    std::string folder; ///< with a separator at its end
    std::string Level() const { return folder + "a.level"; }
};

stage::HostFolders FoldersOf(const Paths& paths) {
    return {paths.folder, paths.folder, "", paths.folder + "state"};
}

engine::SceneObject& Marker(stage::MainWindow& window) {
    return *window.host.level.Data()->Objects().front();
}

int VersionOf(stage::MainWindow& window) {
    return std::atoi(Marker(window).name.c_str() + std::strlen(kMarker));
}

/// Presses Recover in the dialog that offers the work; tells how many were offered.
int Recover(stage::MainWindow& window) {
    int offered = 0;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&] {
        if (auto* dialog = qobject_cast<stage::RecoverDialog*>(QApplication::activeModalWidget())) {
            offered = dialog->list->count();
            dialog->accept();
        }
    });
    poll.start(1);
    return window.OfferKeptWork(/*onlyAfterCrash*/ true) ? offered : 0;
}

void Tell(char what, int version) {
    std::printf("%c%d\n", what, version);
    std::fflush(stdout);
}

/// Edits until the end comes from outside. Tells "e" for each edit, "b" and "k" around each time it is kept.
int Edit(const Paths& paths) {
    stage::MainWindow window(FoldersOf(paths));
    const stage::EndSignals endSignals([&window] { window.keeper->Keep(); });
    if (Recover(window) == 0 && !window.OpenLevel(QString::fromStdString(paths.Level()))) {
        return 1;
    }
    int version = VersionOf(window);
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        window.commands.Rename(Marker(window), kMarker + std::to_string(++version));
        Tell('e', version);
        if (version % kEditsOfKeep == 0) {
            Tell('b', version);
            Tell(window.keeper->Keep() ? 'k' : 'x', version);
        }
    });
    timer.start(1);
    return QApplication::exec();
}

/// Starts as after a crash and tells what there is.
int Look(const Paths& paths) {
    stage::MainWindow window(FoldersOf(paths));
    Tell('o', Recover(window));
    const bool isWhole = window.host.level.Data()->Objects().size() == kObjects;
    Tell('v', isWhole ? VersionOf(window) : -1);
    Tell('c', window.isWindowModified() && window.session.Path() == paths.Level() ? 1 : 0);
    return 0; // as if it crashed: what was taken over stays for the next
}

bool MakeLevel(const Paths& paths) {
    stage::MainWindow window(FoldersOf(paths));
    for (int i = 0; i < kObjects; ++i) {
        engine::ObjectSpec spec;
        spec.className = ClassName::Mesh;
        spec.meshName = "models/crate.glb";
        window.host.level.Data()->Create(spec);
    }
    Marker(window).name = std::string(kMarker) + "0";
    return window.session.Save(paths.Level());
}

/// A process of this program and what it tells.
class Child {
public:
    Child(const Paths& paths, const char* option) {
        int ends[2];
        if (pipe(ends) != 0) {
            std::exit(1);
        }
        process = fork();
        if (process == 0) {
            dup2(ends[1], STDOUT_FILENO);
            close(ends[0]);
            close(ends[1]);
            execl("/proc/self/exe", "films_edit_kills", option, paths.folder.c_str(), nullptr);
            _exit(127);
        }
        close(ends[1]);
        output = fdopen(ends[0], "r");
    }
    ~Child() { std::fclose(output); }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    bool Line(char& what, int& number) { return std::fscanf(output, " %c%d", &what, &number) == 2; }
    void End(int signal) const { kill(process, signal); }
    int Wait() const {
        int status = 0;
        waitpid(process, &status, 0);
        return status;
    }

private:
    pid_t process = -1;
    std::FILE* output = nullptr;
};

class Kills {
public:
    Kills(const Paths& somePaths, unsigned seed) : paths(somePaths), random(seed) {}

    bool Round(int number) {
        constexpr int kSignals[] = {SIGTERM, SIGHUP, SIGINT};
        const bool isKill = number % 4 != 3;
        const int signal = isKill ? SIGKILL : kSignals[number / 4 % 3];
        int kept = 0;
        int edited = 0;
        int began = 0;
        if (!EndInTheMiddle(signal, kept, began, edited)) {
            return false;
        }
        if (edited == 0) {
            std::printf("nothing was edited\n");
            return false;
        }
        inside += isKill && began != kept ? 1 : 0;
        (isKill ? kills : others) += 1;
        int found = 0;
        if (!Found(found)) {
            return false;
        }
        // Killed before the first keeping of a round, the work of the round before is what there is.
        const int least = isKill ? std::max(kept, version) : edited;
        lost += std::max(0, edited - found);
        most = std::max(most, edited - found);
        if (found < least || found > edited + 1) {
            std::printf("signal %d: %d edited, %d kept, but %d found\n", signal, edited, kept, found);
            return false;
        }
        version = found;
        return true;
    }

    int version = 0; ///< that the last Stage found
    int kills = 0;
    int others = 0;
    int inside = 0; ///< kills while the work was being kept
    int lost = 0;   ///< edits in all that were not kept yet
    int most = 0;   ///< the same in one round

private:
    bool EndInTheMiddle(int signal, int& kept, int& began, int& edited) {
        Child child(paths, kEditOption);
        char what = 0;
        int number = 0;
        std::thread end;
        bool good = true;
        while (child.Line(what, number)) {
            if (!end.joinable()) {
                const int ms = kShortestMs + static_cast<int>(random() % (kLongestMs - kShortestMs));
                end = std::thread([&child, signal, ms] {
                    std::this_thread::sleep_for(std::chrono::milliseconds(ms));
                    child.End(signal);
                });
            }
            edited = what == 'e' ? number : edited;
            began = what == 'b' ? number : began;
            kept = what == 'k' ? number : kept;
            good = good && what != 'x';
        }
        if (end.joinable()) {
            end.join();
        }
        const int status = child.Wait();
        if (!WIFSIGNALED(status) || WTERMSIG(status) != signal) {
            std::printf("the Stage ended by itself, status %d\n", status);
            return false;
        }
        return good;
    }

    bool Found(int& found) {
        Child child(paths, kRecoverOption);
        char what = 0;
        int number = 0;
        bool good = true;
        found = -1;
        while (child.Line(what, number)) {
            const bool expected = what != 'o' || number == 1;
            good = good && expected && (what != 'c' || number == 1);
            found = what == 'v' ? number : found;
            if (!good) {
                std::printf("after the end: %c%d\n", what, number);
            }
        }
        return child.Wait() == 0 && good && found >= 0;
    }

    const Paths paths;
    std::mt19937 random;
};

int RunKills(int rounds, unsigned seed) {
    const TempFolder folder;
    const Paths paths{folder.Path()};
    if (!MakeLevel(paths)) {
        return 1;
    }
    const std::string level = ReadWholeFile(paths.Level());
    Kills kills(paths, seed);
    int failed = 0;
    for (int round = 0; round < rounds; ++round) {
        failed += kills.Round(round) ? 0 : 1;
    }
    const bool isTouched = ReadWholeFile(paths.Level()) != level;
    std::printf(
        "%d kills (%d of them while the work was being kept), %d other signals, %d edits in all; "
        "recovered: %d of %d; edits since the last keeping: %d in all, %d at the most; the level's file "
        "was %s\n",
        kills.kills, kills.inside, kills.others, kills.version, rounds - failed, rounds, kills.lost,
        kills.most, isTouched ? "TOUCHED" : "left alone");
    return failed == 0 && !isTouched ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const bool isChild = argc == 3 && argv[1][0] == '-';
    if (isChild) {
        const Paths paths{argv[2]};
        qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(paths.folder + "settings"));
        FilmsApplication application(argc, argv);
        QCoreApplication::setApplicationName("StageKills");
        return std::strcmp(argv[1], kEditOption) == 0 ? Edit(paths) : Look(paths);
    }
    FilmsApplication application(argc, argv);
    return RunKills(argc > 1 ? std::atoi(argv[1]) : 100,
                    argc > 2 ? static_cast<unsigned>(std::atoi(argv[2])) : 1);
}
