#pragma once

#include <QListWidget>

namespace stage {

class LevelHistory;
class UndoCommands;

/// The steps of the open level, the first at the top: those that are undone are grey. A click goes to the
/// state behind a step.
class HistoryPanel : public QListWidget {
    Q_OBJECT
public:
    HistoryPanel(UndoCommands& undoCommands, LevelHistory& levelHistory, QWidget* parent);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void Refresh();

    UndoCommands& commands;
    LevelHistory& history;
};

} // namespace stage
