#pragma once

#include <cstddef>
#include <functional>
#include <QObject>

class QAction;
class QMenu;

namespace stage {

class EditMoments;
class LevelHistory;
class MainWindow;
class QuietMoments;

/// Undo and redo as the user meets them: in the menu, by keys in every window, in the list of steps. In a
/// text field the keys are the field's own as long as it has something to undo.
class UndoCommands : public QObject {
    Q_OBJECT
public:
    UndoCommands(MainWindow& mainWindow, const QuietMoments& quietMoments);

    void AddTo(QMenu& menu);
    void Undo();
    void Redo();
    /// Until so many steps are done, counted with those that have fallen away (EditHistory::Dropped).
    void GoTo(std::size_t done);
    /// Megabytes that steps may take, the user's setting.
    static int LimitMegabytes();
    void SetLimitMegabytes(int megabytes);

signals:
    /// There are other steps, or others of them are done.
    void StepsChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QAction* AddAction(QMenu& menu, const char* name, const QList<QKeySequence>& keys,
                       const std::function<void()>& run);
    /// False, and a word in the status bar, while something is under way.
    bool MayRun() const;
    void Run(const QString& what, const std::function<bool(LevelHistory&)>& run);
    void ShowFilmOf(int slot);
    void Refresh();
    void AskLimit();

    MainWindow& window;
    const QuietMoments& quiet;
    EditMoments* moments;
    QAction* undoAction = nullptr;
    QAction* redoAction = nullptr;
};

} // namespace stage
