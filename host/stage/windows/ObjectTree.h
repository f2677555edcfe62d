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

/// The level's objects as a tree of parents and children. Dragging an item onto another re-parents it.
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

signals:
    void FocusRequested();

protected:
    void dropEvent(QDropEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void TakeSelection();
    void TakeName(QTreeWidgetItem* item);
    QTreeWidgetItem* AddItem(engine::SceneObject& object, QTreeWidgetItem* above);
    void ApplyFilter();

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
