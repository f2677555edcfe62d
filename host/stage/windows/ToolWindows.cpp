#include "host/stage/windows/ToolWindows.h"

#include "framework/Dialog.h"

#include <algorithm>
#include <QGuiApplication>
#include <QLayout>
#include <QMainWindow>
#include <QMenu>
#include <QScreen>
#include <QSettings>

namespace stage {

namespace {

/// The main window whose windows the framework's sink docks.
ToolWindows* present = nullptr;

constexpr int kFirstExtent = 340; ///< pixels: a toolbar, the ruler and about ten rows
/// Of the height that views and docked window share, so that the views keep more than half.
constexpr double kFirstShare = 0.42;
constexpr double kLargestShare = 0.5;

constexpr Qt::DockWidgetArea kAreas[] = {Qt::LeftDockWidgetArea, Qt::RightDockWidgetArea,
                                         Qt::TopDockWidgetArea, Qt::BottomDockWidgetArea};

QString KeyOf(const ToolWindowDock& dock, const char* what) {
    return QString("toolWindows/%1/%2").arg(dock.objectName(), what);
}

/// Moved onto a screen that is there now, so that the title can be reached.
QRect OnScreen(const QRect& wanted) {
    if (!wanted.isValid()) {
        return {};
    }
    const QScreen* screen = QGuiApplication::screenAt(wanted.center());
    screen = screen != nullptr ? screen : QGuiApplication::primaryScreen();
    const QRect area = screen->availableGeometry();
    QRect moved(wanted.topLeft(), wanted.size().boundedTo(area.size()));
    moved.moveLeft(std::clamp(moved.left(), area.left(), area.right() - moved.width() + 1));
    moved.moveTop(std::clamp(moved.top(), area.top(), area.bottom() - moved.height() + 1));
    return moved;
}

/// What a damaged or foreign settings file says is not trusted.
ToolWindowPlace ReadPlace(const ToolWindowDock& dock) {
    const QSettings settings;
    ToolWindowPlace place;
    const int area = settings.value(KeyOf(dock, "area")).toInt();
    place.area = std::find(std::begin(kAreas), std::end(kAreas), area) != std::end(kAreas)
                     ? static_cast<Qt::DockWidgetArea>(area)
                     : Qt::BottomDockWidgetArea;
    place.floating = OnScreen(settings.value(KeyOf(dock, "place")).toRect());
    place.isFloating = settings.value(KeyOf(dock, "floating")).toBool() && place.floating.isValid();
    place.extent = std::clamp(settings.value(KeyOf(dock, "extent")).toInt(), 0, QWIDGETSIZE_MAX);
    return place;
}

} // namespace

ToolWindows::ToolWindows(QMainWindow& mainWindow) : QObject(&mainWindow), main(mainWindow) {
}

ToolWindows::~ToolWindows() {
    Detach();
}

void ToolWindows::Detach() {
    if (present == this) {
        present = nullptr;
        SetToolWindowSink({});
    }
}

void ToolWindows::Attach() {
    present = this;
    SetToolWindowSink([this](CDialog& dialog) { Adopt(dialog); });
}

QList<ToolWindowDock*> ToolWindows::Docks() const {
    QList<ToolWindowDock*> alive;
    for (ToolWindowDock* dock : main.findChildren<ToolWindowDock*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (dock->Window() != nullptr) {
            alive << dock;
        }
    }
    return alive;
}

QString ToolWindows::NameFor(const QString& title) const {
    const QString stem = "ToolWindow " + QString(title).replace('/', ' ').replace('\\', ' ');
    QString name = stem;
    const QList<ToolWindowDock*> docks = Docks();
    const auto isTaken = [&] {
        return std::any_of(docks.begin(), docks.end(),
                           [&](const ToolWindowDock* dock) { return dock->objectName() == name; });
    };
    for (int number = 2; isTaken(); ++number) {
        name = QString("%1 %2").arg(stem).arg(number);
    }
    return name;
}

void ToolWindows::Adopt(CDialog& dialog) {
    auto* dock = new ToolWindowDock(dialog, NameFor(NativeWidget(dialog)->windowTitle()), &main);
    Restore(*dock);
    connect(dock, &ToolWindowDock::Shown, this, [this, dock] { FitExtent(*dock); });
    connect(dock, &ToolWindowDock::PlaceChanged, this, [this, dock] { Save(*dock); });
    if (list != nullptr) {
        list->addAction(dock->toggleViewAction());
    }
}

// The main window's own state knows the neighbours too; it has the dock only if it was there at the last
// end of the program.
void ToolWindows::Restore(ToolWindowDock& dock) {
    dock.place = ReadPlace(dock);
    if (!main.restoreDockWidget(&dock)) {
        main.addDockWidget(dock.place.area, &dock);
    }
    dock.setFloating(dock.place.isFloating);
    dock.hide();
    dock.isPlaced = true;
}

// A docked window that comes up gets the size that the user gave it, else a moderate one; at its first time
// not so much that less than half is left to the views. The main window itself remembers only a dock's title
// of one whose content was hidden.
void ToolWindows::FitExtent(ToolWindowDock& dock) {
    const QWidget* views = main.centralWidget();
    if (dock.isFloating() || views == nullptr) {
        return;
    }
    const Qt::DockWidgetArea area = main.dockWidgetArea(&dock);
    const bool isSide = area == Qt::LeftDockWidgetArea || area == Qt::RightDockWidgetArea;
    const int extent = dock.place.extent;
    main.layout()->activate(); // the dock takes what it needs least
    dock.place.extent = extent;
    const int shared = isSide ? views->width() + dock.width() : views->height() + dock.height();
    const double share = dock.place.extent > 0 ? kLargestShare : kFirstShare;
    const int most = dock.isFitted ? QWIDGETSIZE_MAX : static_cast<int>(shared * share);
    const int wanted = std::min(dock.place.extent > 0 ? dock.place.extent : kFirstExtent, most);
    dock.isFitted = true;
    main.resizeDocks({&dock}, {wanted}, isSide ? Qt::Horizontal : Qt::Vertical);
}

void ToolWindows::SavePlaces() {
    for (const ToolWindowDock* dock : Docks()) {
        Save(*dock);
    }
}

void ToolWindows::Save(const ToolWindowDock& dock) {
    QSettings settings;
    settings.setValue(KeyOf(dock, "area"), static_cast<int>(dock.place.area));
    settings.setValue(KeyOf(dock, "floating"), dock.place.isFloating);
    settings.setValue(KeyOf(dock, "place"), dock.place.floating);
    settings.setValue(KeyOf(dock, "extent"), dock.place.extent);
}

void ToolWindows::DestroyAll() {
    for (ToolWindowDock* dock : Docks()) {
        if (CWnd* window = dock->Window()) {
            window->DestroyWindow();
        }
    }
}

} // namespace stage
