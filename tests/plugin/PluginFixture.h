#pragma once

#include "framework/TestHooks.h"
#include "plugin/PluginImpl.h"
#include "tests/support/TestEditor.h"

#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

/// The plug-in object at a host without windows, with an empty level that has no sun.
class PluginTest : public ::testing::Test {
protected:
    static constexpr std::uint32_t kPluginNumber = 5;

    PluginTest();
    ~PluginTest() override;

    engine::LevelData& Data() { return *editor.level.Data(); }
    IFilmManager& Films() { return *editor.level.GetLevelData()->filmManager; }
    /// A new film, not opened.
    IFilm* NewFilm();
    /// A new film, opened.
    IFilm* OpenNewFilm();
    /// A film, opened, with these objects as its actors.
    IFilm* OpenFilmWith(const std::vector<EditorObject*>& actors);
    CFilmCameraTrack* AddCamera(IFilm* film, const std::string& name);
    /// A key of the kind at the time, added to the track; its end is half a second later.
    IFilmKey* AddKey(CFilmTrack* track, int kind, float time);
    CFilmCameraKey* AddCut(IFilm* film, const std::string& camera, float from, float to, int priority);
    static std::vector<IFilmKey*> KeysOf(const CFilmTrack& track, int kind);
    static const CFilmVectorKey& VectorKey(const IFilmKey* key) {
        return static_cast<const CFilmVectorKey&>(*key);
    }
    static Vector3 PositionOf(const EditorObject& object);
    static void MoveTo(EditorObject& object, float x, float y, float z);
    /// The user moves objects in a view: they are selected and event 14 comes.
    void UserMoves(EditorObject& object, float x, float y, float z);
    CPluginFilmsParams* ParamsOf(EditorObject* object) { return IPluginImpl::GetParams(object); }
    void Suspend() { plugin.OnEvent(EventCode::Suspend, nullptr); }
    void Resume() { plugin.OnEvent(EventCode::Resume, nullptr); }

    HookScope hooks;
    std::vector<std::string> boxes; ///< texts of the message boxes shown
    int boxAnswer = 1;              ///< IDOK
    TestEditor editor;
    IPluginImpl plugin;
};

/// A film without tracks that writes down what is called.
class LoggingFilm : public IFilm {
public:
    explicit LoggingFilm(std::vector<std::string>& calls) : log(calls) { name = "Logging"; }
    void SetName(const char*) override {}
    void AddTrack(CFilmTrack* track) override { tracks.push_back(track); }
    CFilmTrack* CreateLevelTrack() override { return nullptr; }
    CFilmTrack* CreateObjectTrack() override { return nullptr; }
    CFilmTrack* CreateGLLightTrack() override { return nullptr; }
    CFilmTrack* CreateDynLightTrack() override { return nullptr; }
    CFilmTrack* CreateCameraTrack() override { return nullptr; }
    void RemoveTrack(CFilmTrack*, int) override {}
    CFilmTrack* FindObjectTrack(const EditorObject*) const override { return nullptr; }
    void Activate() override { log.push_back("Activate"); }
    void Deactivate() override { log.push_back("Deactivate"); }
    void SetTime(float time, float previous) override;
    void Stop() override { log.push_back("Stop"); }
    void OnLevelLoaded() override { log.push_back("OnLevelLoaded"); }
    void NewCameraName(std::string&) const override {}
    CFilmTrack* FindCamera(const std::string&) const override { return nullptr; }
    Vector3 GetCameraPosition(CFilmTrack*, float) override { return {}; }
    Vector3 GetCameraTarget(CFilmTrack*, float) override { return {}; }
    void SampleCameraPath(TrackRenderData*, int) override {}

    std::vector<std::string>& log;
    std::vector<float> times;
    std::vector<float> previousTimes;
};

/// A scenario window that writes down what is called.
class LoggingWindow : public IScenarioWindow, public IMainCtrl, public IAttachDialog {
public:
    explicit LoggingWindow(std::vector<std::string>& calls) : log(calls) {}

    bool IsEnabled() const override { return enabled; }
    bool IsVisible() const override { return visible; }
    void Show() override { log.push_back("Show"); }
    void ShowCurrentFilm() override { log.push_back("ShowCurrentFilm"); }
    void SetTime(float time) override { times.push_back(time); }
    void PressButton(unsigned id, bool pressed) override;
    void UpdateAttachButton() override { log.push_back("UpdateAttachButton"); }
    IMainCtrl* GetMainCtrl() override { return hasControl ? this : nullptr; }

    void Invalidate() override { log.push_back("Invalidate"); }
    bool IsChangingActor() const override { return changingActor; }
    bool ChangeActor() override;
    void ClearUndo() override { log.push_back("ClearUndo"); }
    void Reset() override { log.push_back("Reset"); }
    void ShowFilm(IFilm*, bool) override { log.push_back("ShowFilm"); }
    void ForgetTrack(const CFilmTrack*) override { log.push_back("ForgetTrack"); }
    void RecordObjectKeys(EditorObject* object, float time, const float* newMatrix,
                          const float* oldMatrix) override;
    IAttachDialog* GetAttachDialog() override { return hasAttachDialog ? this : nullptr; }
    TimelineContext* GetTimeline() override { return timeline; }

    CFilmTrack* GetTrack() const override { return attachTrack; }
    void SetObject(EditorObject* object) override { attachObject = object; }
    void ForgetObject(const EditorObject* object) override {
        attachObject = attachObject == object ? nullptr : attachObject;
    }

    std::vector<std::string>& log;
    std::vector<float> times;
    bool enabled = true;
    bool visible = true;
    bool hasControl = true;
    bool changingActor = false;
    bool hasAttachDialog = false;
    TimelineContext* timeline = nullptr; ///< for key views
    CFilmTrack* attachTrack = nullptr;
    EditorObject* attachObject = nullptr;
    EditorObject* recordedObject = nullptr;
    float recordedTime = -1.0f;
    Vector3 recordedNew;
    Vector3 recordedOld;
};
