#pragma once

#include "host/engine/FilmManager.h"
#include "host/engine/Level.h"
#include "host/stage/headless/Headless.h"
#include "tests/support/Paths.h"
#include "tests/support/TempFolder.h"
#include "tools/LightChunks.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <set>
#include <sys/stat.h>

/// The level of the sample.
inline const std::string kLevel = SampleFolder() + "/harbour.level";

/// The engine's host with the film lights of the level's chunk, and a record of what was asked of it.
class SampleHost : public headless::HeadlessHost {
public:
    SampleHost() { Level().SetChunkClient(&lights); }

    engine::LevelMessages Open(const std::string& path) override {
        engine::LevelMessages messages = HeadlessHost::Open(path);
        lights.PairWithTracks(Level().Data()->Films());
        return messages;
    }
    void Begin(IFilm& film) override {
        ++begun;
        HeadlessHost::Begin(film);
    }
    void Pose(IFilm& film, float time, float previous) override {
        times.push_back(time);
        previousTimes.push_back(previous);
        HeadlessHost::Pose(film, time, previous);
    }
    void End(IFilm& film) override {
        ++ended;
        HeadlessHost::End(film);
    }

    std::vector<float> times;
    std::vector<float> previousTimes;
    int begun = 0;
    int ended = 0;

private:
    LightChunks lights;
};

class HeadlessTest : public testing::Test {
protected:
    /// Runs small drafts of the sample level; what is told goes to `told`.
    int Run(const std::vector<std::string>& arguments, headless::HeadlessHost& host) {
        std::FILE* stream = std::tmpfile();
        const int status = headless::RunHeadless(arguments, host, stream);
        std::rewind(stream);
        told.clear();
        for (int c = std::fgetc(stream); c != EOF; c = std::fgetc(stream)) {
            told.push_back(static_cast<char>(c));
        }
        std::fclose(stream);
        return status;
    }

    std::vector<std::string> Arguments(const std::string& out, const std::string& frames) const {
        return {"--render", kLevel,   "--film",  "Intro",    "--out", (folder / out).string(),
                "--size",   "128x72", "--draft", "--frames", frames};
    }

    std::string Bytes(const std::string& file) const {
        std::ifstream stream(folder / file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }

    /// Names of all that is in a folder below the test's own.
    std::set<std::string> Names(const std::string& below) const {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder / below)) {
            names.insert(entry.path().filename().string());
        }
        return names;
    }

    const TempFolder own;
    const std::filesystem::path folder = own.Path();
    std::string told;
};

/// Where programs are looked for.
inline std::string SearchPath() {
    const char* path = std::getenv("PATH");
    return path != nullptr ? path : "";
}

/// Puts a program of this name first on the PATH for the life of the scope.
class FakeProgram {
public:
    FakeProgram(const std::filesystem::path& folder, const char* name, const std::string& script)
        : before(SearchPath()) {
        const std::filesystem::path bin = folder / "bin";
        std::filesystem::create_directories(bin);
        std::ofstream(bin / name) << "#!/bin/sh\n" << script;
        chmod((bin / name).c_str(), 0755);
        setenv("PATH", (bin.string() + ":" + before).c_str(), 1);
    }
    ~FakeProgram() { setenv("PATH", before.c_str(), 1); }

private:
    std::string before;
};
