#include "host/stage/windows/ViewHeader.h"

#include "host/engine/ClassDatabase.h"
#include "host/stage/host/EditorHost.h"
#include "host/stage/windows/ObjectLook.h"
#include "host/stage/windows/ViewArea.h"
#include "host/stage/windows/ViewWidget.h"

#include <QActionGroup>
#include <QMenu>

namespace stage {

namespace {

struct KindEntry {
    ViewKind kind;
    const char* text;
};

constexpr KindEntry kKinds[] = {
    {ViewKind::Perspective, QT_TR_NOOP("Perspective")},
    {ViewKind::Top, QT_TR_NOOP("Top")},
    {ViewKind::Front, QT_TR_NOOP("Front")},
    {ViewKind::Side, QT_TR_NOOP("Side")},
};

struct ShadingEntry {
    ViewShading shading;
    const char* text;
};

constexpr ShadingEntry kShadings[] = {
    {ViewShading::Lit, QT_TR_NOOP("Lit")},
    {ViewShading::Flat, QT_TR_NOOP("Flat colours")},
    {ViewShading::Wireframe, QT_TR_NOOP("Wireframe")},
};

/// Choices of which one holds. They go with the menu's actions, whose first owns the group.
class Choices {
public:
    explicit Choices(QMenu& target) : menu(target) {}
    QAction* Add(const QString& text, bool chosen) {
        QAction* action = menu.addAction(text);
        group = group != nullptr ? group : new QActionGroup(action);
        group->addAction(action);
        action->setCheckable(true);
        action->setChecked(chosen);
        return action;
    }

private:
    QMenu& menu;
    QActionGroup* group = nullptr;
};

} // namespace

ViewHeader::ViewHeader(ViewArea& viewArea, ViewWidget& view)
    : QToolButton(&view), area(viewArea), number(view.number) {
    setObjectName(QString("ViewHeader%1").arg(number));
    setFocusPolicy(Qt::NoFocus);
    setCursor(Qt::ArrowCursor);
    setPopupMode(InstantPopup);
    setAutoRaise(true);
    setStyleSheet(
        "QToolButton { color: white; background: rgba(20, 26, 32, 110); border: none; border-radius: 4px;"
        " padding: 2px 6px; }"
        "QToolButton:hover { background: rgba(20, 26, 32, 190); }"
        "QToolButton::menu-indicator { image: none; }");
    setToolTip(tr("From where this view looks, and how it shows bodies"));
    auto* menu = new QMenu(this);
    setMenu(menu);
    connect(menu, &QMenu::aboutToShow, this, [this, menu] {
        menu->clear();
        area.Activate(number);
        Fill(*menu, area, number);
    });
    move(8, 8);
    Follow();
}

QString ViewHeader::Text() const {
    const StageView* view = area.host.views.At(number);
    if (view == nullptr) {
        return {};
    }
    QString text;
    for (const KindEntry& entry : kKinds) {
        text = entry.kind == view->Kind() ? tr(entry.text) : text;
    }
    if (const engine::SceneObject* camera = area.host.level.FindObject(view->CameraId())) {
        text = MenuText(QString::fromStdString(camera->name));
    }
    for (const ShadingEntry& entry : kShadings) {
        if (entry.shading == view->shading && view->shading != ViewShading::Lit) {
            text += QString(" \u00b7 ") + tr(entry.text);
        }
    }
    return text + QString(" \u25be");
}

void ViewHeader::Follow() {
    const StageView* view = area.host.views.At(number);
    const bool shown = view != nullptr && view->attachedTo == 0;
    if (isVisibleTo(parentWidget()) != shown) {
        setVisible(shown);
    }
    if (const QString now = Text(); now != text()) {
        setText(now);
        adjustSize();
    }
}

void ViewHeader::Fill(QMenu& menu, ViewArea& area, int view) {
    const StageView* present = area.host.views.At(view);
    if (present == nullptr) {
        return;
    }
    Choices kinds(menu);
    for (const KindEntry& entry : kKinds) {
        connect(kinds.Add(tr(entry.text), present->Kind() == entry.kind), &QAction::triggered, &area,
                [&area, view, kind = entry.kind] { area.SetKind(view, kind); });
    }
    menu.addSeparator();
    if (const engine::LevelData* level = area.host.level.Data()) {
        for (const auto& object : level->Objects()) {
            if (object->Info().className == engine::kCameraClass) {
                connect(kinds.Add(tr("Through %1").arg(MenuText(QString::fromStdString(object->name))),
                                  present->CameraId() == object->id),
                        &QAction::triggered, &area,
                        [&area, view, id = object->id] { area.SetKind(view, ViewKind::Camera, id); });
            }
        }
    }
    menu.addSeparator();
    Choices shadings(menu);
    for (const ShadingEntry& entry : kShadings) {
        connect(shadings.Add(tr(entry.text), present->shading == entry.shading), &QAction::triggered, &area,
                [&area, view, shading = entry.shading] { area.SetShading(view, shading); });
    }
}

} // namespace stage
