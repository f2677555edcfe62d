#include "host/stage/headless/VideoPipe.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace headless {

namespace {

/// Where the started program finds the file with the sound.
constexpr int kSoundDescriptor = 3;

std::vector<std::string> Command(const std::string& program, const HeadlessOptions& options,
                                 const std::string& output, bool withSound) {
    const std::string size = std::to_string(options.width) + "x" + std::to_string(options.height);
    std::vector<std::string> words = {program, "-y", "-nostdin", "-loglevel", "error"};
    words.insert(words.end(), {"-f", "rawvideo", "-pix_fmt", "bgra", "-s", size});
    words.insert(words.end(), {"-r", std::to_string(options.fps), "-i", "pipe:0"});
    if (withSound) {
        words.insert(words.end(), {"-i", "/dev/fd/" + std::to_string(kSoundDescriptor)});
    }
    words.insert(words.end(), {"-pix_fmt", "yuv420p", output});
    return words;
}

/// How a program is started: away from the terminal's Ctrl+C, which is this program's to answer, and with a
/// closed pipe ending it.
class SpawnRules {
public:
    SpawnRules(int input, int sound) {
        posix_spawn_file_actions_init(&files);
        posix_spawn_file_actions_adddup2(&files, input, STDIN_FILENO);
        if (sound >= 0) {
            posix_spawn_file_actions_adddup2(&files, sound, kSoundDescriptor);
        }
        posix_spawnattr_init(&attributes);
        sigset_t usual;
        sigemptyset(&usual);
        sigaddset(&usual, SIGPIPE);
        posix_spawnattr_setsigdefault(&attributes, &usual);
        posix_spawnattr_setpgroup(&attributes, 0);
        posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGDEF);
    }
    ~SpawnRules() {
        posix_spawnattr_destroy(&attributes);
        posix_spawn_file_actions_destroy(&files);
    }
    SpawnRules(const SpawnRules&) = delete;
    SpawnRules& operator=(const SpawnRules&) = delete;

    posix_spawn_file_actions_t files;
    posix_spawnattr_t attributes;
};

/// Starts a program with a pipe as its standard input; -1 on failure.
int Spawn(std::vector<std::string> words, int input, int sound) {
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    const SpawnRules rules(input, sound);
    pid_t process = -1;
    const int error =
        posix_spawn(&process, arguments[0], &rules.files, &rules.attributes, arguments.data(), environ);
    return error == 0 ? process : -1;
}

} // namespace

std::string FindProgram(const std::string& name) {
    const char* paths = std::getenv("PATH");
    std::istringstream folders(paths != nullptr ? paths : "");
    for (std::string folder; std::getline(folders, folder, ':');) {
        std::string path = (folder.empty() ? "." : folder) + "/" + name;
        if (access(path.c_str(), X_OK) == 0) {
            return path;
        }
    }
    return "";
}

VideoPipe::VideoPipe(const HeadlessOptions& options, int sound)
    : file(options.video), unfinished(options.video) {
    const std::string program = FindProgram("ffmpeg");
    if (program.empty()) {
        throw OutputError(file + ": ffmpeg is not installed; install it, or write pictures with --out");
    }
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) {
        throw OutputError(file + ": no pipe to ffmpeg: " + std::strerror(errno));
    }
    // A child that ends early must come back as a failed write, not as a signal.
    std::signal(SIGPIPE, SIG_IGN);
    process = Spawn(Command(program, options, unfinished.Path(), sound != kSilent), ends[0], sound);
    close(ends[0]);
    input = ends[1];
    if (process < 0) {
        CloseInput();
        throw OutputError(file + ": ffmpeg can't be started");
    }
}

VideoPipe::~VideoPipe() {
    if (process > 0) {
        kill(process, SIGKILL);
        Wait();
    }
}

void VideoPipe::CloseInput() {
    if (input >= 0) {
        close(input);
        input = -1;
    }
}

int VideoPipe::Wait() {
    CloseInput();
    int status = 0;
    while (process > 0 && waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    process = -1;
    return status;
}

void VideoPipe::Write(const render::RenderImage& image) {
    const char* bytes = reinterpret_cast<const char*>(image.pixels.data());
    std::size_t left = image.pixels.size() * sizeof(std::uint32_t);
    while (left > 0) {
        const ssize_t written = write(input, bytes, left);
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            throw OutputError(file + ": ffmpeg stopped before the film's end");
        }
        bytes += written;
        left -= static_cast<std::size_t>(written);
    }
}

void VideoPipe::Close() {
    const int status = Wait();
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        throw OutputError(file + ": ffmpeg failed with status " +
                          std::to_string(WIFEXITED(status) ? WEXITSTATUS(status) : -1));
    }
    unfinished.Publish();
}

} // namespace headless
