#include "host/stage/windows/app/HeadlessStage.h"

#include "framework/ToolBar.h"
#include "plugin/contract/EventCodes.h"
#include "plugin/contract/ObjectFlags.h"
#include "plugin/contract/TrackObjects.h"

#include <utility>

namespace stage {

namespace {

/// The lights of a film shine while it is open.
void ShowLights(IFilm& film, bool shown) {
    for (CFilmTrack* track : film.tracks) {
        if (EditorObject* light = LightOf(track)) {
            light->visible = shown ? 1 : 0;
            light->SetFlags(shown ? light->GetFlags() & ~ObjectFlag::LeftOut
                                  : light->GetFlags() | ObjectFlag::LeftOut);
        }
    }
}

} // namespace

bool QuietWindows::AddToolbar(CToolBar* toolbar, unsigned resourceId) {
    return toolbar->LoadToolBar(resourceId) != 0;
}

void QuietWindows::Report(const std::string& text) {
    reports.push_back(text);
}

HeadlessStage::HeadlessStage(HostFolders folders, const std::vector<std::string>& plugins)
    : host(windows, std::move(folders)), session(host) {
    if (plugins.empty()) {
        windows.Report(
            "no plug-in was found beside the program, so films' lights and parameters are missing");
    }
    for (const std::string& plugin : plugins) {
        host.LoadPlugin(plugin);
    }
    host.StartPlugins();
    session.New();
}

HeadlessStage::~HeadlessStage() {
    host.Shutdown();
}

engine::LevelMessages HeadlessStage::Open(const std::string& path) {
    return session.Load(path);
}

std::vector<std::string> HeadlessStage::TakeTroubles() {
    return std::exchange(windows.reports, {});
}

void HeadlessStage::Begin(IFilm& film) {
    host.level.Data()->filmManager->currentFilm = &film;
    ShowLights(film, true);
    film.Activate();
}

void HeadlessStage::End(IFilm& film) {
    HeadlessHost::End(film);
    ShowLights(film, false);
    host.level.Data()->filmManager->currentFilm = nullptr;
}

} // namespace stage
