#pragma once

#include "host/stage/headless/HeadlessOptions.h"
#include "host/stage/render/RenderScene.h"

#include <stdexcept>

/// The output could not be made; `what` is one sentence with the file's name.
class OutputError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Full path of a program on the PATH, empty if there is none.
std::string FindProgram(const std::string& name);

/// ffmpeg at work on one video, fed with raw frames.
class VideoPipe {
public:
    /// Starts ffmpeg; `soundFile` may be empty. Throws OutputError without ffmpeg.
    VideoPipe(const HeadlessOptions& options, const std::string& soundFile);
    /// Ends ffmpeg without waiting for a good file, unless Close came before.
    ~VideoPipe();
    VideoPipe(const VideoPipe&) = delete;
    VideoPipe& operator=(const VideoPipe&) = delete;

    void Write(const RenderImage& image);
    /// Waits until the file is written. Throws OutputError if ffmpeg was not content.
    void Close();

private:
    int Wait();

    std::string file;
    int input = -1;
    int process = -1;
};
