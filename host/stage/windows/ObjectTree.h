#pragma once

#include "plugin/contract/Types.h"

#include <QTreeWidget>
#include <unordered_map>
#include <vector>

class QLineEdit;

namespace engine {
class SceneObject;
struct Group;
} // namespace engine

namespace stage {

class EditorHost;
class ObjectCommands;

/// The level's objects as a tree of parents and children. What is dragged onto an object hangs on it, what is
/// dropped beside all objects hangs on none; the
/// eye beside a name shows and hides the object, the lock lets the views pass over it. On a selected object
/// both count for the whole selection. A group has a row of its own above those of its objects that hang on
/// nothing: it stands for all of them, takes what is dropped onto it, and gives up what is dragged elsewhere.
class ObjectTreeWidget : public QTreeWidget {
    Q_OBJECT
public:
    ObjectTreeWidget(EditorHost& editorHost, ObjectCommands& objectCommands, QWidget* parent);

    void Rebuild();
    void ShowSelection();
    void SetFilter(const QString& text);
    /// Null for an item whose object has gone.
    engine::SceneObject* ObjectOf(const QTreeWidgetItem* item) const;
    QTreeWidgetItem* ItemOf(const EditorObject* object) const;
    /// Whether helpers of plug-ins have rows too, as the points of a film's camera.
    void ShowHelpers(bool shown);
    /// Opens the field for the name of an object or a group in its row. False if the row can't be seen.
    bool EditName(const EditorObject& object);
    bool EditName(const engine::Group& group);
    QTreeWidgetItem* ItemOf(const engine::Group& group) const;
    /// Null for an item that is none of a group, or whose group has gone.
    engine::Group* GroupOf(const QTreeWidgetItem* item) const;

    static constexpr int kNameColumn = 0;
    static constexpr int kEyeColumn = 1;
    static constexpr int kLockColumn = 2;
    static constexpr int kIdRole = Qt::UserRole; ///< the key of a row; see `items`

signals:
    void FocusRequested();
    /// What a drop would do while something is dragged, or why it can't; empty when the drag is over.
    void Dragged(const QString& mode);

protected:
    void startDrag(Qt::DropActions actions) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void TakeSelection();
    void TakeName(QTreeWidgetItem* item);
    bool EditName(QTreeWidgetItem* item);
    QTreeWidgetItem* AddGroup(const engine::Group& group);
    /// Eye and lock, of one object or of all of a group.
    static void ShowSigns(QTreeWidgetItem& item, const std::vector<engine::SceneObject*>& objects);
    /// What the chosen rows stand for; a row of a group for all of it.
    ObjectList Chosen() const;
    /// The row in which the object is chosen: its group's, if all of that is.
    QTreeWidgetItem* ChosenRow(const EditorObject* object) const;
    /// The objects that the row stands for and the user may change.
    std::vector<engine::SceneObject*> ObjectsUnder(const QTreeWidgetItem* item) const;
    /// The group whose row or whose objects' rows a drop at the place goes to.
    engine::Group* GroupAt(const QPoint& place) const;
    void DropInto(engine::Group& group);
    QTreeWidgetItem* AddItem(engine::SceneObject& object, QTreeWidgetItem* above);
    QTreeWidgetItem* TargetAt(const QPoint& place) const;
    /// The object that a drop at the place hangs things on, null for none.
    engine::SceneObject* ParentAt(const QPoint& place) const;
    void TellDrag(const std::string& reason);
    bool IsInTree(const engine::SceneObject& object) const;
    void ApplyFilter();
    /// Turns the eye or the lock of the object, and of all selected ones if it is one of them. False if the
    /// place is on neither.
    bool PressSign(const QPoint& place);

    EditorHost& host;
    ObjectCommands& commands;
    std::unordered_map<int, QTreeWidgetItem*>
        items; ///< by object id, groups by that of their first object, negative
    QString filter;
    std::string refusal; ///< why what is dragged can't be dropped where it is
    bool showsHelpers = false;
    bool updating = false;
    bool taking = false; ///< the selection is what the list has it, and is told
};

/// The tree with its search field.
class ObjectTree : public QWidget {
    Q_OBJECT
public:
    ObjectTree(EditorHost& host, ObjectCommands& commands, QWidget* parent);

    ObjectTreeWidget* tree;
    QLineEdit* search;
};

} // namespace stage
