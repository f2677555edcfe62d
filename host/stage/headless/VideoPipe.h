#pragma once

#include "host/stage/headless/HeadlessOptions.h"
#include "host/stage/headless/OutputError.h"
#include "host/stage/headless/UnfinishedFile.h"
#include "host/stage/render/RenderScene.h"

namespace headless {

/// Full path of a program on the PATH, empty if there is none.
std::string FindProgram(const std::string& name);

/// ffmpeg at work on one video, fed with raw frames. All operations throw OutputError.
class VideoPipe {
public:
    static constexpr int kSilent = -1;

    /// Starts ffmpeg, which writes the video beside its name. `sound` is the descriptor of a file with the
    /// sound, or kSilent.
    VideoPipe(const HeadlessOptions& options, int sound);
    /// Ends ffmpeg and removes what it has written, unless Close came before.
    ~VideoPipe();
    VideoPipe(const VideoPipe&) = delete;
    VideoPipe& operator=(const VideoPipe&) = delete;

    void Write(const render::RenderImage& image);
    /// Waits until the video is whole and gives it its name.
    void Close();

private:
    void CloseInput();
    int Wait();

    std::string file;
    UnfinishedFile unfinished;
    int input = -1;
    int process = -1;
};

} // namespace headless
