#include "host/stage/windows/app/Inspector.h"

#include "framework/QtBridge.h"
#include "framework/Wnd.h"
#include "host/stage/windows/MainWindow.h"
#include "host/stage/windows/ToolWindows.h"
#include "host/stage/windows/ViewArea.h"
#include "host/stage/windows/ViewWidget.h"

#include <array>
#include <cstdio>
#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QJsonArray>
#include <QJsonDocument>
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
    const QString text = button.text().isEmpty() ? button.toolTip() : button.text();
    return {{"text", QString(text).remove('&')},
            {"rect", ToJson(ScreenRect(button))},
            {"enabled", button.isEnabled()},
            {"checked", button.isChecked()}};
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

} // namespace

QJsonObject DescribeStage(MainWindow& window) {
    QJsonArray buttons;
    QJsonArray items;
    QJsonArray windows;
    for (const QWidget* widget : QApplication::allWidgets()) {
        if (!widget->isVisible()) {
            continue;
        }
        if (widget->isWindow()) {
            windows.append(
                QJsonObject{{"title", widget->windowTitle()}, {"rect", ToJson(ScreenRect(*widget))}});
        }
        if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) {
            buttons.append(DescribeButton(*button));
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
        views.append(QJsonObject{{"rect", ToJson(ScreenRect(*view))},
                                 {"attached", window.host.FollowsPlugin(number)}});
    }
    QJsonObject described{{"windows", windows},   {"buttons", buttons},
                          {"items", items},       {"views", views},
                          {"toolWindows", tools}, {"status", window.statusBar()->currentMessage()}};
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
