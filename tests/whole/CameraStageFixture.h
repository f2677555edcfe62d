#pragma once

#include "tests/whole/StageFixture.h"

/// The first camera of the film "Intro", "Establishing", is visualized with a press on its name in the
/// scenario window.
class CameraInStageTest : public StageTest {
protected:
    void SetUp() override;
    /// Presses the name cell of the camera's row.
    void PressName();
    /// The camera's row, null without the scenario window.
    CWnd* CameraRow() const;
    engine::SceneObject* Find(const char* className) const;
    /// How many points of cameras the level has, shown or not.
    int Points() const;
    std::size_t Lines() const { return window->host.RenderPlugins(0).size(); }
    CFilmVectorKey& FirstKey(int kind) const;
    std::size_t Keys(int kind) const;

    CFilmCameraTrack* camera = nullptr;
    engine::SceneObject* eye = nullptr;
    engine::SceneObject* target = nullptr;
};
