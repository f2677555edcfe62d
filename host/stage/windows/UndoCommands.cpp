#include "host/stage/windows/UndoCommands.h"

#include "framework/PickMode.h"
#include "host/stage/windows/EditMoments.h"
#include "host/stage/windows/films/PanelHand.h"
#include "host/stage/windows/MainWindow.h"
#include "host/stage/windows/PressedButtons.h"
#include "host/stage/windows/QuietMoments.h"

#include <algorithm>
#include <QAbstractSpinBox>
#include <QAction>
#include <QApplication>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QSettings>

namespace stage {

namespace {

constexpr const char* kLimitKey = "history/megabytes";
constexpr int kDefaultLimit = 200;
constexpr int kLeastLimit = 1;
constexpr int kMostLimit = 16'000;
constexpr std::size_t kBytesOfMegabyte = 1'000'000;

QString Titled(const QString& verb, const std::string& step) {
    // An ampersand in a name is no mark of a key.
    return step.empty() ? verb : verb + ' ' + QString::fromStdString(step).replace('&', "&&");
}

const QLineEdit* FieldOf(QObject* watched) {
    if (const auto* field = qobject_cast<QLineEdit*>(watched)) {
        return field;
    }
    const auto* box = qobject_cast<QAbstractSpinBox*>(watched);
    return box != nullptr ? box->findChild<QLineEdit*>() : nullptr;
}

} // namespace

UndoCommands::UndoCommands(MainWindow& mainWindow, const QuietMoments& quietMoments)
    : QObject(&mainWindow), window(mainWindow), quiet(quietMoments),
      moments(new EditMoments(mainWindow.session.History(), quietMoments, this)) {
    window.session.History().changed = [this] { Refresh(); };
    window.session.History().SetLimit(static_cast<std::size_t>(LimitMegabytes()) * kBytesOfMegabyte);
    QCoreApplication::instance()->installEventFilter(this);
}

QAction* UndoCommands::AddAction(QMenu& menu, const char* name, const QList<QKeySequence>& keys,
                                 const std::function<void()>& run) {
    QAction* action = menu.addAction(QString());
    action->setObjectName(name);
    action->setShortcuts(keys);
    action->setShortcutContext(Qt::ApplicationShortcut);
    connect(action, &QAction::triggered, this, [run] { run(); });
    return action;
}

int UndoCommands::LimitMegabytes() {
    bool isNumber = false;
    const int megabytes = QSettings().value(kLimitKey, kDefaultLimit).toInt(&isNumber);
    return isNumber ? std::clamp(megabytes, kLeastLimit, kMostLimit) : kDefaultLimit;
}

void UndoCommands::SetLimitMegabytes(int megabytes) {
    QSettings().setValue(kLimitKey, std::clamp(megabytes, kLeastLimit, kMostLimit));
    window.session.History().SetLimit(static_cast<std::size_t>(LimitMegabytes()) * kBytesOfMegabyte);
}

void UndoCommands::AskLimit() {
    bool accepted = false;
    const int megabytes = QInputDialog::getInt(&window, tr("History"),
                                               tr("Megabytes that steps may take; the oldest are forgotten"),
                                               LimitMegabytes(), kLeastLimit, kMostLimit, 50, &accepted);
    if (accepted) {
        SetLimitMegabytes(megabytes);
    }
}

void UndoCommands::AddTo(QMenu& menu) {
    const QKeySequence redoKeys(Qt::CTRL | Qt::SHIFT | Qt::Key_Z);
    undoAction = AddAction(menu, "EditUndo", {QKeySequence(Qt::CTRL | Qt::Key_Z)}, [this] { Undo(); });
    redoAction =
        AddAction(menu, "EditRedo", {redoKeys, QKeySequence(Qt::CTRL | Qt::Key_Y)}, [this] { Redo(); });
    AddAction(menu, "EditHistoryLimit", {}, [this] { AskLimit(); })->setText(tr("&History limit..."));
    connect(&menu, &QMenu::aboutToShow, this, [this] {
        moments->Flush();
        Refresh();
    });
    Refresh();
}

void UndoCommands::Refresh() {
    const EditHistory& edits = window.session.History().Edits();
    if (undoAction != nullptr) {
        // Always enabled: what was done last may not have been looked at yet.
        undoAction->setText(Titled(tr("&Undo"), edits.UndoName()));
        redoAction->setText(Titled(tr("&Redo"), edits.RedoName()));
    }
    emit StepsChanged();
}

bool UndoCommands::MayRun() const {
    if (PickMode::Present() != nullptr) {
        window.Report(tr("Choose first, or give up with Escape").toStdString());
        return false;
    }
    if (!quiet.IsQuiet() || window.session.History().IsBusy()) {
        window.Report(tr("Stop what is under way first: nothing is undone meanwhile").toStdString());
        return false;
    }
    return true;
}

void UndoCommands::Run(const QString& what, const std::function<bool(LevelHistory&)>& run) {
    if (!MayRun()) {
        return;
    }
    LevelHistory& history = window.session.History();
    moments->Flush();
    history.NoteAll();
    const EditHistory& edits = history.Edits();
    const std::size_t before = edits.Done();
    const std::string undone = edits.UndoName();
    const std::string redone = edits.RedoName();
    const int film = edits.CanUndo() ? edits.Steps()[edits.BeforeUndo()].film : -1;
    const int nextFilm = edits.CanRedo() ? edits.Steps()[edits.AfterRedo() - 1].film : -1;
    const PressedButtons pressed(window);
    if (!run(history)) {
        window.Report(tr("Nothing to %1").arg(what).toStdString());
        return;
    }
    const bool isBack = edits.Done() < before;
    ShowFilmOf(isBack ? film : nextFilm);
    pressed.PressAgain();
    window.session.IsChanged();
    window.Report((isBack ? tr("Undone: %1").arg(QString::fromStdString(undone))
                          : tr("Redone: %1").arg(QString::fromStdString(redone)))
                      .toStdString());
}

void UndoCommands::Undo() {
    Run(tr("undo"), [](LevelHistory& history) { return history.Undo(); });
}

void UndoCommands::Redo() {
    Run(tr("redo"), [](LevelHistory& history) { return history.Redo(); });
}

void UndoCommands::GoTo(std::size_t done) {
    Run(tr("do"), [done](LevelHistory& history) {
        const std::size_t dropped = history.Edits().Dropped();
        return history.GoTo(done - std::min(done, dropped));
    });
}

/// The film that was open when the step was done, as a user chooses it in the plug-in's panel.
void UndoCommands::ShowFilmOf(int slot) {
    const engine::LevelData* data = window.host.level.Data();
    const IFilm* film = data != nullptr && slot >= 0 ? data->filmManager->GetFilm(slot) : nullptr;
    const PanelHand panel([this] { return window.PanelForm(); });
    if (film != nullptr && data->filmManager->currentFilm != film) {
        panel.Choose(*data->filmManager, film);
    } else {
        panel.Refresh(); // its list was written anew while the film was left
    }
}

bool UndoCommands::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride) {
        const auto* key = static_cast<QKeyEvent*>(event);
        const QLineEdit* field = FieldOf(watched);
        const bool isUndo = key->matches(QKeySequence::Undo);
        const bool isRedo = key->matches(QKeySequence::Redo) ||
                            (key->key() == Qt::Key_Y && key->modifiers() == Qt::ControlModifier);
        const bool isOwn =
            field != nullptr && (isUndo ? field->isUndoAvailable() : isRedo && field->isRedoAvailable());
        if ((isUndo || isRedo) && field != nullptr && !isOwn) {
            event->ignore();
            return true; // a field that has nothing to undo would take the key all the same
        }
    }
    return QObject::eventFilter(watched, event);
}

} // namespace stage
