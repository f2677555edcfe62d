#include "host/stage/windows/SnapMenu.h"

#include "host/stage/windows/Icons.h"
#include "host/stage/windows/ViewArea.h"
#include "host/stage/windows/ViewTool.h"

#include <QActionGroup>
#include <QMenu>
#include <QSettings>

namespace stage {

namespace {

struct SwitchEntry {
    const char* name; ///< of the action and of the setting
    const char* text;
    const char* tip;
    IconId icon;
    bool SnapSettings::*setting;
};

constexpr SwitchEntry kSwitches[] = {
    {"SnapGrid", QT_TR_NOOP("Snap to &grid"), QT_TR_NOOP("Snap to grid; Ctrl in a drag does the opposite"),
     IconId::SnapGrid, &SnapSettings::grid},
    {"SnapAngle", QT_TR_NOOP("Snap &angles"), QT_TR_NOOP("Snap angles; Ctrl in a drag does the opposite"),
     IconId::SnapAngle, &SnapSettings::angle},
    {"SnapSurface", QT_TR_NOOP("Snap to &surfaces"),
     QT_TR_NOOP("Put what is moved onto what is under the mouse; Shift in a drag does so once"),
     IconId::SnapSurface, &SnapSettings::surface},
    {"SnapVertex", QT_TR_NOOP("Snap to &vertices"),
     QT_TR_NOOP("Put what is moved onto the corner next to the mouse; V in a drag does so once"),
     IconId::SnapVertex, &SnapSettings::vertex},
    {"LocalAxes", QT_TR_NOOP("&Local axes"),
     QT_TR_NOOP("Handles along the object's own axes, not the world's"), IconId::LocalAxes,
     &SnapSettings::localAxes},
    {"PivotOfLast", QT_TR_NOOP("&Pivot at the last object"),
     QT_TR_NOOP("Handles at the object that was selected last, not in the middle of all"), IconId::Pivot,
     &SnapSettings::pivotOfLast},
};

} // namespace

SnapMenu::SnapMenu(ViewArea& viewArea) : QObject(&viewArea), area(viewArea) {
    Load();
    for (const SwitchEntry& entry : kSwitches) {
        auto* action = new QAction(MakeIcon(entry.icon), tr(entry.text), this);
        action->setObjectName(entry.name);
        action->setToolTip(tr(entry.tip));
        action->setCheckable(true);
        action->setChecked(area.tool->snap.*entry.setting);
        connect(action, &QAction::toggled, this, [this, setting = entry.setting](bool on) {
            area.tool->snap.*setting = on;
            Save();
            area.Redraw(-1);
        });
        switches.append(action);
    }
}

void SnapMenu::Fill(QMenu& menu) {
    menu.addActions(switches);
    menu.addSeparator();
    AddSteps(menu, tr("Grid &step"), {1, 5, 10, 25, 50, 100, 500}, tr("%1 cm"), &SnapSettings::step,
             "SnapStep");
    AddSteps(menu, tr("Angle s&tep"), {1, 5, 10, 15, 22.5, 30, 45, 90}, tr("%1\u00b0"),
             &SnapSettings::degrees, "SnapDegrees");
}

void SnapMenu::AddSteps(QMenu& menu, const QString& title, const QList<double>& steps, const QString& unit,
                        float SnapSettings::*step, const char* name) {
    QMenu* choices = menu.addMenu(title);
    auto* group = new QActionGroup(this);
    for (const double size : steps) {
        QAction* action = group->addAction(choices->addAction(unit.arg(size)));
        action->setObjectName(QString("%1%2").arg(name).arg(size));
        action->setCheckable(true);
        action->setChecked(static_cast<float>(size) == area.tool->snap.*step);
        connect(action, &QAction::triggered, this, [this, size, step] {
            area.tool->snap.*step = static_cast<float>(size);
            Save();
        });
    }
}

void SnapMenu::Save() const {
    QSettings settings;
    for (const SwitchEntry& entry : kSwitches) {
        settings.setValue(QString("snap/%1").arg(entry.name), area.tool->snap.*entry.setting);
    }
    settings.setValue("snap/step", area.tool->snap.step);
    settings.setValue("snap/degrees", area.tool->snap.degrees);
}

void SnapMenu::Load() {
    const QSettings settings;
    SnapSettings& snap = area.tool->snap;
    for (const SwitchEntry& entry : kSwitches) {
        snap.*entry.setting = settings.value(QString("snap/%1").arg(entry.name), false).toBool();
    }
    const float step = settings.value("snap/step", snap.step).toFloat();
    const float degrees = settings.value("snap/degrees", snap.degrees).toFloat();
    snap.step = step > 0.0f ? step : snap.step;
    snap.degrees = degrees > 0.0f ? degrees : snap.degrees;
}

} // namespace stage
