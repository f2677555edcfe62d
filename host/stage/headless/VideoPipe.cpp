#include "host/stage/headless/VideoPipe.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <spawn.h>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace {

std::vector<std::string> Command(const std::string& program, const HeadlessOptions& options,
                                 const std::string& soundFile) {
    const std::string size = std::to_string(options.width) + "x" + std::to_string(options.height);
    std::vector<std::string> words = {program, "-y",       "-loglevel", "error",
                                      "-f",    "rawvideo", "-pix_fmt",  "bgra",
                                      "-s",    size,       "-r",        std::to_string(options.fps),
                                      "-i",    "-"};
    if (!soundFile.empty()) {
        words.insert(words.end(), {"-i", soundFile});
    }
    words.insert(words.end(), {"-pix_fmt", "yuv420p", options.video});
    return words;
}

/// Starts a program with a pipe as its standard input; -1 on failure.
int Spawn(std::vector<std::string> words, int readEnd, int writeEnd) {
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, readEnd, STDIN_FILENO);
    posix_spawn_file_actions_addclose(&actions, readEnd);
    posix_spawn_file_actions_addclose(&actions, writeEnd);
    pid_t process = -1;
    const int error = posix_spawn(&process, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
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

VideoPipe::VideoPipe(const HeadlessOptions& options, const std::string& soundFile) : file(options.video) {
    const std::string program = FindProgram("ffmpeg");
    if (program.empty()) {
        throw OutputError(file + ": ffmpeg is not installed; install it, or write pictures with --out");
    }
    int ends[2];
    if (pipe(ends) != 0) {
        throw OutputError(file + ": no pipe to ffmpeg: " + std::strerror(errno));
    }
    // A child that ends early must come back as a failed write, not as a signal.
    std::signal(SIGPIPE, SIG_IGN);
    process = Spawn(Command(program, options, soundFile), ends[0], ends[1]);
    close(ends[0]);
    input = ends[1];
    if (process < 0) {
        close(input);
        input = -1;
        throw OutputError(file + ": ffmpeg can't be started");
    }
}

VideoPipe::~VideoPipe() {
    Wait();
}

int VideoPipe::Wait() {
    if (input >= 0) {
        close(input);
        input = -1;
    }
    int status = 0;
    if (process > 0) {
        while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
        }
        process = -1;
    }
    return status;
}

void VideoPipe::Write(const RenderImage& image) {
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
}
