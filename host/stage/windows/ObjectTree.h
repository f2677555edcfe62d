#pragma once

#include "plugin/contract/Types.h"

#include <QTreeWidget>
#include <unordered_map>

class QLineEdit;

namespace engine {
class SceneObject;
}

namespace stage {

class EditorHost;
class ObjectCommands;

/// The level's objects as a tree of parents and children. Dragging an item onto another re-parents it; the
/// eye beside a name shows and hides the object, the lock lets the views pass over it. On a selected object
/// both count for the whole selection.
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
    /// Opens the field for the object's name in its row. False if the row can't be seen.
    bool EditName(const EditorObject& object);

    static constexpr int kNameColumn = 0;
    static constexpr int kEyeColumn = 1;
    static constexpr int kLockColumn = 2;

signals:
    void FocusRequested();

protected:
    void dropEvent(QDropEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void TakeSelection();
    void TakeName(QTreeWidgetItem* item);
    QTreeWidgetItem* AddItem(engine::SceneObject& object, QTreeWidgetItem* above);
    void ApplyFilter();
    /// Turns the eye or the lock of the object, and of all selected ones if it is one of them. False if the
    /// place is on neither.
    bool PressSign(const QPoint& place);

    EditorHost& host;
    ObjectCommands& commands;
    std::unordered_map<int, QTreeWidgetItem*> items; ///< by object id
    QString filter;
    bool updating = false;
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
