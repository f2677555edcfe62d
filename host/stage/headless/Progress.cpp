#include "host/stage/headless/Progress.h"

#include <algorithm>
#include <cmath>
#include <unistd.h>

namespace headless {

namespace {

constexpr int kBarCells = 24;

std::string Clock(double seconds) {
    const int whole = static_cast<int>(std::min(std::ceil(seconds), 359999.0));
    char text[32];
    if (whole >= 3600) {
        std::snprintf(text, sizeof(text), "%d:%02d:%02d", whole / 3600, whole / 60 % 60, whole % 60);
    } else {
        std::snprintf(text, sizeof(text), "%d:%02d", whole / 60, whole % 60);
    }
    return text;
}

} // namespace

std::string FormatProgress(int done, int total, double elapsedSeconds) {
    const int all = std::max(total, 1);
    const int part = std::clamp(done, 0, all);
    const auto cells = static_cast<std::size_t>(static_cast<long>(part) * kBarCells / all);
    std::string line(1, '[');
    line.append(cells, '#').append(kBarCells - cells, '.').push_back(']');
    char text[96];
    std::snprintf(text, sizeof(text), " %3ld%%  %d/%d frames", static_cast<long>(part) * 100 / all, part,
                  all);
    line += text;
    if (part == 0 || elapsedSeconds <= 0.0) {
        return line + "  -- frames/s  -- left";
    }
    const double rate = part / elapsedSeconds;
    std::snprintf(text, sizeof(text), "  %.1f frames/s  %s left", rate, Clock((all - part) / rate).c_str());
    return line + text;
}

Progress::Progress(std::FILE* output, int frameCount)
    : stream(output), total(frameCount), overwrites(isatty(fileno(output)) != 0),
      start(std::chrono::steady_clock::now()) {
}

void Progress::Show(int done) {
    const int tenth = done * 10 / std::max(total, 1);
    if (!overwrites && tenth == lastTenth) {
        return;
    }
    lastTenth = tenth;
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
    const std::string line = FormatProgress(done, total, elapsed.count());
    std::fprintf(stream, overwrites ? "\r%s\033[K" : "%s\n", line.c_str());
    std::fflush(stream);
}

void Progress::Finish() {
    if (overwrites) {
        std::fputc('\n', stream);
    }
}

} // namespace headless
