#pragma once

#include "tests/plugin/PluginFixture.h"

#include <functional>
#include <utility>
#include <vector>

/// A session without the plug-in object. It writes down how the film is posed.
class PartSession final : public FilmSession {
public:
    void SetTime(float time, bool) override {
        currentTime = time;
        times.push_back(time);
        if (onTime) {
            onTime();
        }
    }
    void SetFrame(float time, float previous) override { frames.emplace_back(time, previous); }
    EditorObject* FindObjectByTrack(CFilmTrack*) const override { return nullptr; }
    const CFilmsLightHelper* FindLightByTrack(CFilmTrack*) const override { return nullptr; }
    CFilmTrack* GetVisualizedTrack() const override { return nullptr; }
    void SetVisualizedTrack(CFilmTrack*) override {}

    std::function<void()> onTime; ///< code that runs inside a frame
    std::vector<float> times;
    std::vector<std::pair<float, float>> frames; ///< time and previous time
};

/// One part of the plug-in object, at a host without windows, with an empty level that has no sun.
class PartTest : public ::testing::Test {
protected:
    PartTest() : film(calls) {
        editor.level.New("");
        editor.level.Data()->SetSun(false);
        session.editor = &editor;
        session.view = &editor;
        session.level = &editor.level;
        film.length = 10.0f;
    }
    ~PartTest() override { editor.level.Close(); }

    static void Place(EditorObject& object, float x) {
        const float position[3] = {x, 0.0f, 0.0f};
        object.SetPosition(position, 0);
    }
    static float XOf(const EditorObject& object) { return object.GetPosition(0)[0]; }

    HookScope hooks;
    TestEditor editor;
    PartSession session;
    std::vector<std::string> calls;
    LoggingFilm film; ///< ten seconds; not opened
};
