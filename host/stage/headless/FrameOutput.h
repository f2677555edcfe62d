#pragma once

#include "host/stage/headless/VideoPipe.h"

#include <memory>

namespace headless {

/// Where the frames go: numbered PNG files, a video, or both. All operations throw OutputError.
class FrameOutput {
public:
    explicit FrameOutput(const HeadlessOptions& asked) : options(asked) {}

    /// Makes the folder and starts the video. `sound` is the descriptor of a file, or VideoPipe::kSilent.
    void Start(int sound);
    /// A picture has its name only when it is whole.
    void Write(int frame, const render::RenderImage& image);
    void Finish();

private:
    const HeadlessOptions& options;
    std::unique_ptr<VideoPipe> video;
};

/// Name of a frame's file: frame_0000.png.
std::string FrameFileName(int frame);

} // namespace headless
