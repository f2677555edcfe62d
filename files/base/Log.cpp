#include "files/base/Log.h"

#include "plugin/contract/FileSystem.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr std::size_t kMessageBytes = 2048; ///< of text, without the terminator
constexpr std::size_t kLineBytes = 2048;
/// Leaves room for a CR LF pair begun at the limit, and for the terminator.
constexpr std::size_t kLineLimit = 2046;
constexpr const char* kPlainName = "crash.log";

struct LogState {
    bool opened = false;
    int file = -1;
    int console = -1;
    LogListener listener = nullptr;
    char message[kMessageBytes + 1] = {};
    char line[kLineBytes] = {};
};

LogState& State() {
    static LogState state;
    return state;
}

void Format(const char* format, std::va_list arguments) {
    std::vsnprintf(State().message, sizeof State().message, format, arguments);
}

void WriteAll(int descriptor, const char* text, std::size_t size) {
    while (descriptor >= 0 && size > 0) {
        const ssize_t count = write(descriptor, text, size);
        if (count <= 0) {
            return;
        }
        text += count;
        size -= static_cast<std::size_t>(count);
    }
}

/// Copies the message to the line buffer with CR LF line ends and returns its length.
std::size_t MakeLine() {
    LogState& state = State();
    std::size_t count = 0;
    for (std::size_t i = 0; state.message[i] != '\0' && count < kLineLimit; ++i) {
        if (state.message[i] == '\n' && i > 0 && state.message[i - 1] != '\r') {
            state.line[count++] = '\r';
        }
        state.line[count++] = state.message[i];
    }
    state.line[count] = '\0';
    return count;
}

int CreateLog(const char* name) {
    return open(name, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, S_IRUSR | S_IWUSR | S_IRGRP | S_IROTH);
}

} // namespace

void SetLogListener(LogListener listener) {
    State().listener = listener;
}

std::string DatedLogName(const std::tm& local) {
    char text[64];
    const std::size_t length = std::strftime(text, sizeof text, "logs/crash_%Y-%m-%d_%I%M.log", &local);
    return std::string(text, length);
}

void DebugPrint(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    Format(format, arguments);
    va_end(arguments);
    const LogState& state = State();
    if (state.listener != nullptr) {
        state.listener(state.message);
    }
    WriteAll(state.console, state.message, std::strlen(state.message));
}

void OpenCrashLog(bool useConsole) {
    std::string name = kPlainName;
    if (FS_exists("debug.fnt")) {
        mkdir("logs", 0777);
        const std::time_t now = std::time(nullptr);
        std::tm local = {};
        localtime_r(&now, &local);
        name = DatedLogName(local);
    }
    LogState& state = State();
    if (state.file >= 0) {
        close(state.file);
    }
    state.file = CreateLog(name.c_str());
    if (state.file < 0) {
        state.file = CreateLog(kPlainName);
    }
    state.opened = true;
    state.console = useConsole ? STDOUT_FILENO : -1;
}

void CrashLog(const char* format, ...) {
    LogState& state = State();
    if (!state.opened) {
        OpenCrashLog(false);
    }
    std::va_list arguments;
    va_start(arguments, format);
    Format(format, arguments);
    va_end(arguments);
    const std::size_t count = MakeLine();
    WriteAll(state.file, state.line, count);
    WriteAll(STDERR_FILENO, state.line, count);
    if (state.listener != nullptr) {
        state.listener(state.line);
    }
    // Required: the console gets the terminator too.
    WriteAll(state.console, state.line, count + 1);
}
