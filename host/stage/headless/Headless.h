#pragma once

#include "host/engine/LevelFile.h"
#include "host/stage/headless/HeadlessOptions.h"

#include <cstdio>
#include <memory>

class IFilm;
namespace mesh {
class GltfMeshLibrary;
} // namespace mesh
namespace engine {
class Level;
}

namespace headless {

namespace HeadlessExit {
constexpr int kDone = 0;
constexpr int kUsage = 1;
constexpr int kLevel = 2;
constexpr int kFilm = 3;
constexpr int kOutput = 4;
constexpr int kStopped = 128; ///< and the signal's number
} // namespace HeadlessExit

/// The part of a host that the headless renderer leaves to its caller. As it stands it works with the engine
/// alone, on a level of its own; a host with plug-ins gives its own level and sends its events here.
class HeadlessHost {
public:
    HeadlessHost();
    virtual ~HeadlessHost();
    HeadlessHost(const HeadlessHost&) = delete;
    HeadlessHost& operator=(const HeadlessHost&) = delete;

    /// The level that the film is in, with its mesh library installed. Both must live until the end.
    virtual engine::Level& Level();
    virtual mesh::GltfMeshLibrary& Meshes();
    /// Opens the level file; throws engine::LevelFileError.
    virtual engine::LevelMessages Open(const std::string& path);
    /// What the host lacked or could not do so far, one sentence each; each is given out once.
    virtual std::vector<std::string> TakeTroubles() { return {}; }
    /// The film becomes the one shown.
    virtual void Begin(IFilm& film);
    /// Poses the film; a previous time of -1 fires no keys.
    virtual void Pose(IFilm& film, float time, float previous);
    /// The playing ends and the level stands as before.
    virtual void End(IFilm& film);

private:
    struct Own;
    Own& Mine();

    std::unique_ptr<Own> own; ///< made at first use, if nothing is overridden
};

/// Number of frames of a film at a rate: one at each whole frame before its end, at least one.
int FrameCount(float filmSeconds, int fps);

/// Plays the film and writes its frames; progress and errors go to `messages`. Returns a HeadlessExit.
int RunHeadless(const HeadlessOptions& options, HeadlessHost& host, std::FILE* messages);

/// The options from the arguments behind the program's name. Null if there is nothing to render: `status` is
/// then the exit status, after the text of `--help` on standard output or an error in `messages`.
std::optional<HeadlessOptions> ReadArguments(const std::vector<std::string>& arguments, std::FILE* messages,
                                             int& status);
/// Both.
int RunHeadless(const std::vector<std::string>& arguments, HeadlessHost& host, std::FILE* messages);

} // namespace headless
