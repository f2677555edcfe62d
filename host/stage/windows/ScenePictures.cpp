#include "host/stage/windows/ScenePictures.h"

#include "host/stage/host/EditorHost.h"
#include "host/stage/render/Renderer.h"
#include "host/stage/windows/ViewArea.h"

namespace stage {

ScenePictures::ScenePictures(ViewArea& viewArea) : area(viewArea) {
}

ScenePictures::~ScenePictures() = default;

QString ScenePictures::Hint() const {
    if (!failure.isEmpty()) {
        return QObject::tr("The 3D picture can't be drawn on this machine.\n%1").arg(failure);
    }
    const engine::LevelData* data = area.host.level.Data();
    if (data == nullptr || data->Objects().empty()) {
        return QObject::tr("An empty level.\nOpen one with Ctrl+O, or add objects with the Create menu.");
    }
    return {};
}

const QImage& ScenePictures::Draw(int, const QSize&) {
    return picture;
}

} // namespace stage
