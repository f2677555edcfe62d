#include "host/stage/windows/ViewArea.h"

#include "host/engine/mesh/GlmConvert.h"
#include "host/stage/host/EditorHost.h"
#include "host/stage/host/ObjectCommands.h"
#include "host/stage/host/StandingPlace.h"
#include "host/stage/windows/ScenePictures.h"
#include "host/stage/windows/ViewTool.h"
#include "host/stage/windows/ViewWidget.h"

#include <algorithm>
#include <QDropEvent>
#include <QGridLayout>
#include <QSettings>

namespace stage {

namespace {
constexpr float kYaw[StageViews::kMaxViews] = {0.6f, -0.9f, 0.0f, 2.4f};
constexpr float kPitch[StageViews::kMaxViews] = {-0.42f, -0.3f, -1.3f, -0.42f};
constexpr qint64 kRateIntervalMs = 500;
constexpr int kFramesForARate = 5; ///< fewer in an interval are single repaints, not a film
} // namespace

ViewArea::ViewArea(EditorHost& editorHost, ObjectCommands& objectCommands, QWidget* parent)
    : QWidget(parent), host(editorHost), commands(objectCommands), picker(editorHost.level),
      pictures(std::make_unique<ScenePictures>(*this)), tool(std::make_unique<ViewTool>(*this)),
      grid(new QGridLayout(this)) {
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(3);
    SetViewCount(1);
    rateClock.start();
}

ViewArea::~ViewArea() = default;

void ViewArea::SetViewCount(int count) {
    host.SetViewCount(count);
    const auto wanted = static_cast<std::size_t>(host.views.Count());
    while (widgets.size() > wanted) {
        delete widgets.back();
        widgets.pop_back();
    }
    while (widgets.size() < wanted) {
        widgets.push_back(new ViewWidget(*this, static_cast<int>(widgets.size())));
        widgets.back()->show();
    }
    Layout();
    if (activeView >= host.views.Count()) {
        Activate(0);
    }
    Redraw(-1);
}

void ViewArea::Layout() {
    for (ViewWidget* widget : widgets) {
        grid->removeWidget(widget);
    }
    const int count = static_cast<int>(widgets.size());
    for (int i = 0; i < count; ++i) {
        // Three views: one over the whole left side, two above each other beside it.
        const bool tall = count == 3 && i == 0;
        const int row = count == 3 ? std::max(0, i - 1) : i / 2;
        const int column = count == 3 ? std::min(1, i) : i % 2;
        grid->addWidget(widgets[static_cast<std::size_t>(i)], row, column, tall ? 2 : 1, 1);
    }
    for (int line = 0; line < 2; ++line) {
        grid->setRowStretch(line, line == 0 || count > 2 ? 1 : 0);
        grid->setColumnStretch(line, line == 0 || count > 1 ? 1 : 0);
    }
}

ViewWidget* ViewArea::Widget(int number) const {
    return number >= 0 && number < static_cast<int>(widgets.size())
               ? widgets[static_cast<std::size_t>(number)]
               : nullptr;
}

bool ViewArea::IsDragging() const {
    return std::ranges::any_of(widgets, [](const ViewWidget* widget) { return widget->IsDragging(); });
}

void ViewArea::Activate(int number) {
    if (number != activeView && host.views.At(number) != nullptr) {
        activeView = number;
        Redraw(-1);
    }
}

void ViewArea::TellMode() {
    const ViewWidget* active = Widget(activeView);
    const QString own = active != nullptr ? active->ModeText() : QString();
    const QString& mode = drop.isEmpty() ? own : drop;
    if (mode != toldMode) {
        toldMode = mode;
        emit ModeChanged(mode, !drop.isEmpty() || (active != nullptr && active->IsBusy()));
    }
}

void ViewArea::TellDrop(const QString& text) {
    drop = text;
    TellMode();
}

void ViewArea::Redraw(int number) {
    for (ViewWidget* widget : widgets) {
        if (number < 0 || widget->number == number) {
            widget->update();
        }
    }
}

void ViewArea::SetKind(int number, ViewKind kind, int cameraId) {
    host.TakeView(number);
    if (StageView* view = host.views.At(number)) {
        view->SetKind(kind, cameraId);
        host.FollowCamera(number);
        Redraw(number);
    }
}

void ViewArea::SetShading(int number, ViewShading shading) {
    if (StageView* view = host.views.At(number)) {
        view->shading = shading;
        Redraw(number);
    }
}

void ViewArea::SaveLooks() const {
    QSettings settings;
    settings.setValue("views/count", host.views.Count());
    for (int number = 0; number < host.views.Count(); ++number) {
        const StageView& view = *host.views.At(number);
        const ViewKind kind = view.Kind() == ViewKind::Camera ? ViewKind::Perspective : view.Kind();
        settings.setValue(QString("views/kind%1").arg(number), static_cast<int>(kind));
        settings.setValue(QString("views/shading%1").arg(number), static_cast<int>(view.shading));
    }
}

void ViewArea::RestoreLooks() {
    const QSettings settings;
    const auto read = [&](const QString& key, int most) {
        return std::clamp(settings.value(key, 0).toInt(), 0, most);
    };
    SetViewCount(std::clamp(settings.value("views/count", 1).toInt(), 1, StageViews::kMaxViews));
    for (int number = 0; number < host.views.Count(); ++number) {
        SetKind(number, static_cast<ViewKind>(
                            read(QString("views/kind%1").arg(number), static_cast<int>(ViewKind::Side))));
        SetShading(number, static_cast<ViewShading>(read(QString("views/shading%1").arg(number),
                                                         static_cast<int>(ViewShading::Wireframe))));
    }
}

void ViewArea::FocusSelection() {
    FocusOn(host.level.selection);
}

void ViewArea::FocusAll() {
    FocusOn({});
}

StageView* ViewArea::FreeView() {
    StageView* view = host.views.At(activeView);
    if (view != nullptr && view->attachedTo != 0) {
        emit StatusText(tr("This view shows the film's camera. Click its badge to take it back."));
        return nullptr;
    }
    return view;
}

void ViewArea::FocusOn(const ObjectList& objects) {
    StageView* view = FreeView();
    if (view == nullptr) {
        return;
    }
    if (view->IsCameraNow()) {
        emit StatusText(tr("This view looks through a camera. F5 goes back to your own view."));
        return;
    }
    const Sphere ball = picker.BoundsOf(objects);
    view->navigation.Focus(ball.center, ball.radius);
    view->ApplyNavigation();
    Redraw(activeView);
}

void ViewArea::SetBookmark(int number) {
    const StageView* view = FreeView();
    engine::LevelData* level = host.level.Data();
    if (view == nullptr || level == nullptr) {
        return;
    }
    const ViewNavigation& navigation = view->navigation;
    level->bookmarks[number] = {mesh::FromGlm(navigation.pivot), navigation.yaw, navigation.pitch,
                                navigation.distance, navigation.fieldOfView};
    emit StatusText(tr("View kept as bookmark %1; the next save keeps it in the level").arg(number));
}

bool ViewArea::GoToBookmark(int number) {
    const engine::LevelData* level = host.level.Data();
    const auto kept = level != nullptr ? level->bookmarks.find(number) : decltype(level->bookmarks.end())();
    if (level == nullptr || kept == level->bookmarks.end()) {
        emit StatusText(tr("There is no bookmark %1 yet: Ctrl+Alt+%1 makes one").arg(number));
        return false;
    }
    StageView* view = FreeView();
    if (view == nullptr) {
        return false;
    }
    const engine::ViewBookmark mark = kept->second;
    view->SetKind(ViewKind::Perspective);
    view->navigation.pivot = mesh::ToGlm(mark.pivot);
    view->navigation.yaw = mark.yaw;
    view->navigation.pitch = mark.pitch;
    view->navigation.distance = mark.distance;
    view->navigation.fieldOfView = mark.fieldOfView;
    view->ApplyNavigation();
    Redraw(activeView);
    return true;
}

void ViewArea::ShowAll() {
    const Sphere ball = picker.BoundsOf(ObjectList());
    for (int number = 0; number < host.views.Count(); ++number) {
        StageView& view = *host.views.At(number);
        ViewNavigation& navigation = view.navigation;
        if (view.Kind() == ViewKind::Camera) {
            view.SetKind(ViewKind::Perspective);
        }
        if (!IsFlat(view.Kind())) {
            navigation.yaw = kYaw[number];
            navigation.pitch = kPitch[number];
        }
        // Levels are flat: a whole ball around them would leave most of the picture empty.
        navigation.Focus(ball.center, ball.radius * 0.6f);
        host.views.At(number)->ApplyNavigation();
    }
    Redraw(-1);
}

/// Whoever does not take a drag where it comes in is not told that it leaves again.
void ViewArea::Refuse(QDropEvent& drag) {
    drag.setDropAction(Qt::IgnoreAction);
    drag.setAccepted(drag.type() == QEvent::DragEnter);
}

Vector3 ViewArea::PlaceForNew(const std::string& meshName) const {
    const StageView* view = host.views.At(activeView);
    if (view == nullptr) {
        return {};
    }
    const render::ViewRay ray =
        view->RayAt(static_cast<float>(view->width) * 0.5f, static_cast<float>(view->height) * 0.5f);
    Vector3 low;
    Vector3 high;
    if (const engine::IMesh* mesh = meshName.empty() ? nullptr : host.meshes.FindMesh(meshName)) {
        mesh->Bounds(low, high);
    }
    const glm::vec3 place =
        StandingPlace(picker, ray, view->DepthOfPivot(), {mesh::ToGlm(low), mesh::ToGlm(high)});
    return {place.x, place.y, place.z};
}

Vector3 ViewArea::PlaceAt(int number, const QPoint& screen) const {
    const StageView* view = host.views.At(number);
    const ViewWidget* widget = Widget(number);
    if (view == nullptr || widget == nullptr) {
        return {};
    }
    const QPoint pixel = widget->mapFromGlobal(screen);
    const render::ViewRay ray = view->RayAt(static_cast<float>(pixel.x()), static_cast<float>(pixel.y()));
    const glm::vec3 place = picker.PlaceAt(ray, view->DepthOfPivot());
    return {place.x, place.y, place.z};
}

Vector3 ViewArea::PlaceUnder(const QPoint& screen) {
    for (const ViewWidget* widget : widgets) {
        if (widget->rect().contains(widget->mapFromGlobal(screen))) {
            Activate(widget->number);
        }
    }
    return PlaceAt(activeView, screen);
}

void ViewArea::CountFrame() {
    ++frames;
    const qint64 elapsed = rateClock.elapsed();
    if (elapsed >= kRateIntervalMs) {
        emit FrameRate(frames >= kFramesForARate ? 1000.0 * frames / static_cast<double>(elapsed) : 0.0);
        frames = 0;
        rateClock.restart();
    }
}

} // namespace stage
