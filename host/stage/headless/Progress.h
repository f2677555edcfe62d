#pragma once

#include <chrono>
#include <cstdio>
#include <string>

namespace headless {

/// One line of progress: bar, share, count, rate and time left. "--" stands where nothing is known yet.
std::string FormatProgress(int done, int total, double elapsedSeconds);

/// Shows progress on a stream: one line that is written over on a terminal, a line every tenth elsewhere.
class Progress {
public:
    Progress(std::FILE* output, int frameCount);
    void Show(int done);
    /// Ends the line; nothing more is shown.
    void Finish();

private:
    std::FILE* stream;
    int total;
    int lastTenth = -1;
    bool overwrites;
    std::chrono::steady_clock::time_point start;
};

} // namespace headless
