#pragma once

#include "host/stage/host/ScenePicker.h"

#include <memory>
#include <QElapsedTimer>
#include <QWidget>
#include <vector>

class QDropEvent;
class QGridLayout;

namespace stage {

class EditorHost;
class ObjectCommands;
class ScenePictures;
class ViewTool;
class ViewWidget;

/// The one to four 3D views of the main window, with the tool that their left button works with.
class ViewArea : public QWidget {
    Q_OBJECT
public:
    ViewArea(EditorHost& editorHost, ObjectCommands& objectCommands, QWidget* parent);
    ~ViewArea() override;

    void SetViewCount(int count);
    int ActiveView() const { return activeView; }
    void Activate(int number);
    /// Queues a repaint; a negative number is all views.
    void Redraw(int number);
    ViewWidget* Widget(int number) const;
    /// True while the gizmo is dragged.
    bool IsDragging() const;
    /// Tells by a signal what the active view waits for, if that is something else than before.
    void TellMode();
    /// What a drop would do, while something is dragged over the views; empty when that is over.
    void TellDrop(const QString& text);
    /// Lets a drag that can't be dropped here go on over the views.
    static void Refuse(QDropEvent& drag);
    /// Another kind of view; a plug-in that holds the view gives it back first.
    void SetKind(int number, ViewKind kind, int cameraId = 0);
    void SetShading(int number, ViewShading shading);
    /// How many views there are, what kinds they are and how they show bodies, per user. Cameras belong to
    /// their level: such a view is one in perspective the next time.
    void SaveLooks() const;
    void RestoreLooks();
    /// Shows the selected objects whole in the active view; the whole level without a selection.
    void FocusSelection();
    /// Shows the whole level in the active view, from where that looks.
    void FocusAll();
    /// Keeps where the active view stands under a number from 1 to kBookmarks, in the level.
    void SetBookmark(int number);
    /// The active view stands there again, in perspective. False if nothing was kept.
    bool GoToBookmark(int number);
    static constexpr int kBookmarks = 9;
    /// Points all views at the whole level, each from another side.
    void ShowAll();
    /// A place for a new object with that mesh, or without a body: on what the middle of the active view
    /// looks at, or before its side.
    Vector3 PlaceForNew(const std::string& meshName = {}) const;
    /// What stands at a place of the screen in a view: the nearest mesh, else the ground.
    Vector3 PlaceAt(int number, const QPoint& screen) const;
    /// The same in the view under the place, which becomes the active one: for what is dropped.
    Vector3 PlaceUnder(const QPoint& screen);

    EditorHost& host;
    ObjectCommands& commands;
    ScenePicker picker;
    std::unique_ptr<ScenePictures> pictures;
    std::unique_ptr<ViewTool> tool;
    bool orbitsSelection = true; ///< else what the view looks at

signals:
    /// Asked for with the right button; the object under the mouse, null for none, in screen coordinates.
    void MenuRequested(int view, EditorObject* object, const QPoint& screen);
    void StatusText(const QString& text);
    /// What the active view waits for now, in a drag, of whatever, or for longer; empty if it is a view as
    /// any.
    void ModeChanged(const QString& text, bool isDrag);
    /// Frames a second, while pictures follow each other quickly.
    void FrameRate(double rate);

protected:
    void dragLeaveEvent(QDragLeaveEvent*) override { TellDrop({}); }

private:
    friend class ViewWidget;
    void Layout();
    void FocusOn(const ObjectList& objects);
    /// The active view, null with a word to the user while a plug-in holds it.
    StageView* FreeView();
    void CountFrame();

    std::vector<ViewWidget*> widgets;
    QGridLayout* grid;
    int activeView = 0;
    QString toldMode;
    QString drop; ///< what is told of a drag over the views
    QElapsedTimer rateClock;
    int frames = 0;
};

} // namespace stage
