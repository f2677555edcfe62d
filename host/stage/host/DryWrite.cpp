#include "host/stage/host/DryWrite.h"

#include "host/engine/FilmAtRest.h"
#include "host/engine/FilmManager.h"
#include "host/engine/LevelFile.h"
#include "host/engine/LevelRoot.h"
#include "host/stage/host/EditorHost.h"

#include <utility>
#include <vector>

namespace stage {

namespace {

/// Stands before the names of files that plug-ins write beside the level. Nothing can be made in it.
constexpr const char* kNowhere = "/dev/null/";

} // namespace

UnsavedState::UnsavedState(engine::LevelData& levelData)
    : data(levelData), rootName(std::exchange(levelData.Root().name, kNowhere)) {
    for (const auto& object : data.Objects()) {
        saved.emplace_back(object.get(), object->savedAsObject);
    }
    for (IFilm* film : data.filmManager->films) {
        if (film != nullptr) {
            validated.emplace_back(film, film->validated);
        }
    }
}

UnsavedState::~UnsavedState() {
    data.Root().name = rootName;
    for (const auto& [object, flag] : saved) {
        object->savedAsObject = flag;
    }
    for (const auto& [film, flag] : validated) {
        film->validated = flag;
    }
}

struct OwnCameras::Held {
    StageView* view;
    CameraData camera;
    float fieldOfView; ///< radians
};

OwnCameras::OwnCameras(EditorHost& editorHost) : host(editorHost) {
    for (int number = 0; number < host.views.Count(); ++number) {
        StageView& view = *host.views.At(number);
        if (view.attachedTo != 0) {
            held.push_back({&view, view.Engine().camera->data, view.Engine().GetFieldOfView()});
            const unsigned owner = std::exchange(view.attachedTo, 0);
            view.ApplyNavigation();
            view.attachedTo = owner;
        }
    }
}

OwnCameras::~OwnCameras() {
    for (const Held& former : held) {
        engine::View& view = former.view->Engine();
        view.SetProjection(former.fieldOfView, former.camera.recordNear, former.camera.recordFar, 0);
        view.camera->data = former.camera;
    }
}

std::string DryWrite(EditorHost& host, DryWriteFor purpose) {
    const std::string name = "the level";
    if (host.level.Data() == nullptr) {
        throw engine::LevelFileError(name, -1, "there is no level");
    }
    const UnsavedState unsaved(*host.level.Data());
    const OwnCameras cameras(host);
    using Rest = engine::FilmAtRest;
    const Rest film(host.level, purpose == DryWriteFor::Comparison ? Rest::ClosedFilms::AllDark
                                                                   : Rest::ClosedFilms::AsTheyAre);
    std::vector<std::string> messages;
    return engine::SerializeLevel(host.level, name, messages);
}

} // namespace stage
