#include "host/stage/windows/app/Inspector.h"

#include "framework/QtBridge.h"
#include "framework/Wnd.h"
#include "host/stage/windows/MainWindow.h"
#include "host/stage/windows/ToolWindows.h"
#include "host/stage/windows/ViewArea.h"
#include "host/stage/windows/ViewWidget.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QSocketNotifier>
#include <QStatusBar>
#include <unistd.h>

namespace stage {

namespace {

QJsonArray ToJson(const QRect& r) {
    return {r.x(), r.y(), r.width(), r.height()};
}

QRect ScreenRect(const QWidget& widget) {
    return {widget.mapToGlobal(QPoint()), widget.size()};
}

QJsonObject DescribeButton(const QAbstractButton& button) {
    const QString text = button.text().isEmpty() ? button.toolTip().section(" (", 0, 0) : button.text();
    return {{"text", QString(text).remove('&')},
            {"name", button.objectName()},
            {"rect", ToJson(ScreenRect(button))},
            {"enabled", button.isEnabled()},
            {"checked", button.isChecked()}};
}

/// What the status bar says the user is waited for, by plug-ins or by Stage itself; empty if nothing.
QString DescribeMode(const QStatusBar& bar, const char* name) {
    const auto* label = bar.findChild<const QLabel*>(name);
    return label != nullptr && label->isVisible() ? label->text() : QString();
}

/// The field inside a box for numbers is called as the box.
QJsonObject DescribeField(const QLineEdit& field) {
    const auto* box = qobject_cast<const QAbstractSpinBox*>(field.parentWidget());
    return {{"text", field.text()},
            {"name", box != nullptr ? box->objectName() : field.objectName()},
            {"rect", ToJson(ScreenRect(field))},
            {"focused", field.hasFocus() || (box != nullptr && box->hasFocus())}};
}

void DescribeItems(const QAbstractItemView& view, const QModelIndex& parent, QJsonArray& items) {
    for (int row = 0; row < view.model()->rowCount(parent); ++row) {
        const QModelIndex index = view.model()->index(row, 0, parent);
        const QRect rect = view.visualRect(index) & view.viewport()->rect();
        if (!rect.isEmpty()) {
            items.append(QJsonObject{
                {"text", index.data().toString()},
                {"rect", ToJson(QRect(view.viewport()->mapToGlobal(rect.topLeft()), rect.size()))},
                {"selected", view.selectionModel()->isSelected(index)}});
        }
        DescribeItems(view, index, items);
    }
}

/// The entries of an open menu.
void DescribeMenu(const QMenu& menu, QJsonArray& entries) {
    for (QAction* action : menu.actions()) {
        if (!action->isSeparator() && action->isVisible()) {
            const QRect rect = menu.actionGeometry(action);
            entries.append(QJsonObject{{"text", QString(action->text()).remove('&')},
                                       {"rect", ToJson(QRect(menu.mapToGlobal(rect.topLeft()), rect.size()))},
                                       {"enabled", action->isEnabled()},
                                       {"checked", action->isChecked()}});
        }
    }
}

/// A framework window with the windows in it.
QJsonObject DescribeWindow(const CWnd& window) {
    CRect rect;
    window.GetWindowRect(&rect);
    QJsonArray children;
    for (int i = 0; const CWnd* child = window.GetWindowChild(i); ++i) {
        if (child->IsWindowVisible()) {
            children.append(DescribeWindow(*child));
        }
    }
    return {{"id", window.GetDlgCtrlID()},
            {"text", QString::fromStdString(window.GetWindowText())},
            {"rect", QJsonArray{rect.left, rect.top, rect.Width(), rect.Height()}},
            {"children", children}};
}

QJsonObject DescribeToolWindow(const ToolWindowDock& dock) {
    QJsonObject described = DescribeWindow(*dock.Window());
    described["title"] = dock.windowTitle();
    described["shown"] = dock.isVisible();
    described["floating"] = dock.isFloating();
    described["frame"] = ToJson(ScreenRect(dock));
    const QWidget* focus = QApplication::focusWidget();
    const QWidget* native = NativeWidget(*dock.Window());
    described["focused"] = focus != nullptr && (focus == native || native->isAncestorOf(focus));
    return described;
}

void DescribeLevel(MainWindow& window, QJsonObject& described) {
    const engine::LevelData* level = window.host.level.Data();
    if (level == nullptr) {
        return;
    }
    const IFilm* film = level->filmManager != nullptr ? level->filmManager->currentFilm : nullptr;
    described["film"] = film != nullptr ? QString(film->name) : QString();
    QJsonObject places;
    for (const auto& object : level->Objects()) {
        const Vector3 place = object->World().Translation();
        places[QString::fromStdString(object->name)] = QJsonArray{place.x, place.y, place.z};
    }
    described["objects"] = places;
    QJsonArray selected;
    for (const EditorObject* object : window.host.level.selection) {
        selected.append(QString::fromStdString(object->name));
    }
    described["selected"] = selected;
}

/// Where the handles for moving along the world's axes stand on the screen while they can be gripped, about
/// two thirds out: [x, y, z], each a place. Empty without a selection.
QJsonArray DescribeHandles(const MainWindow& window, const StageView& view, const QPoint& corner) {
    constexpr float kShareOfSize = 0.17f; // of the view's half height at that distance
    const ObjectList& selected = window.host.level.selection;
    QJsonArray handles;
    if (selected.empty()) {
        return handles;
    }
    const float* place = selected.front()->GetPosition(0);
    const glm::vec3 origin(place[0], place[1], place[2]);
    const float depth = std::abs((view.ViewMatrix() * glm::vec4(origin, 1.0f)).z);
    const float reach = depth * std::tan(view.FieldOfView() / 2.0f) * kShareOfSize;
    for (int axis = 0; axis < 3; ++axis) {
        glm::vec3 end = origin;
        end[axis] += reach;
        glm::vec2 pixel(0.0f);
        view.Project(end, pixel);
        handles.append(QJsonArray{corner.x() + pixel.x, corner.y() + pixel.y});
    }
    return handles;
}

/// The objects in front of a view's camera, by name: their places on the screen.
QJsonObject DescribePlaces(const engine::LevelData& level, const StageView& view, const QPoint& corner) {
    QJsonObject places;
    for (const auto& object : level.Objects()) {
        const Vector3 place = object->World().Translation();
        glm::vec2 pixel(0.0f);
        if (view.Project({place.x, place.y, place.z}, pixel)) {
            places[QString::fromStdString(object->name)] =
                QJsonArray{corner.x() + pixel.x, corner.y() + pixel.y};
        }
    }
    return places;
}

QJsonObject DescribeView(MainWindow& window, const ViewWidget& widget) {
    QJsonObject described{{"rect", ToJson(ScreenRect(widget))},
                          {"attached", window.host.FollowsPlugin(widget.number)}};
    const StageView* view = window.host.views.At(widget.number);
    const engine::LevelData* level = window.host.level.Data();
    if (view != nullptr && level != nullptr) {
        const QPoint corner = widget.mapToGlobal(QPoint());
        described["onScreen"] = DescribePlaces(*level, *view, corner);
        described["handles"] = DescribeHandles(window, *view, corner);
    }
    return described;
}

} // namespace

QJsonObject DescribeStage(MainWindow& window) {
    QJsonArray buttons;
    QJsonArray items;
    QJsonArray menus;
    QJsonArray fields;
    QJsonArray windows;
    for (const QWidget* widget : QApplication::allWidgets()) {
        // Docks behind others of a place lie outside the window, and are visible to the toolkit.
        if (!widget->isVisible() || widget->visibleRegion().isEmpty()) {
            continue;
        }
        if (widget->isWindow()) {
            windows.append(
                QJsonObject{{"title", widget->windowTitle()}, {"rect", ToJson(ScreenRect(*widget))}});
        }
        if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) {
            buttons.append(DescribeButton(*button));
        }
        if (const auto* field = qobject_cast<const QLineEdit*>(widget)) {
            fields.append(DescribeField(*field));
        }
        if (const auto* menu = qobject_cast<const QMenu*>(widget)) {
            DescribeMenu(*menu, menus);
        }
        if (const auto* view = qobject_cast<const QAbstractItemView*>(widget); view && view->model()) {
            DescribeItems(*view, view->rootIndex(), items);
        }
    }
    QJsonArray tools;
    for (const ToolWindowDock* dock : window.toolWindows->Docks()) {
        tools.append(DescribeToolWindow(*dock));
    }
    QJsonArray views;
    for (int number = 0; const ViewWidget* view = window.views->Widget(number); ++number) {
        views.append(DescribeView(window, *view));
    }
    QJsonObject described{{"windows", windows},
                          {"buttons", buttons},
                          {"fields", fields},
                          {"items", items},
                          {"menus", menus},
                          {"views", views},
                          {"toolWindows", tools},
                          {"status", window.statusBar()->currentMessage()},
                          {"mode", DescribeMode(*window.statusBar(), "PickMode")},
                          {"ownMode", DescribeMode(*window.statusBar(), "OwnMode")}};
    DescribeLevel(window, described);
    return described;
}

Inspector::Inspector(MainWindow& mainWindow)
    : window(mainWindow), notifier(new QSocketNotifier(STDIN_FILENO, QSocketNotifier::Read, this)) {
    connect(notifier, &QSocketNotifier::activated, this, &Inspector::Read);
}

void Inspector::Read() {
    std::array<char, 256> bytes;
    const ssize_t count = ::read(STDIN_FILENO, bytes.data(), bytes.size());
    if (count <= 0) {
        notifier->setEnabled(false);
        return;
    }
    for (ssize_t i = 0; i < count; ++i) {
        if (bytes[static_cast<std::size_t>(i)] == '\n') {
            const QByteArray line = QJsonDocument(DescribeStage(window)).toJson(QJsonDocument::Compact);
            std::printf("%s\n", line.constData());
            std::fflush(stdout);
        }
    }
}

} // namespace stage
