#include "host/stage/windows/HistoryPanel.h"
#include "host/stage/windows/MainWindow.h"
#include "host/stage/windows/QuietMoments.h"
#include "host/stage/windows/RecoverDialog.h"
#include "host/stage/windows/UndoCommands.h"
#include "host/stage/windows/ViewArea.h"
#include "host/stage/windows/WorkKeeper.h"

#include <algorithm>
#include <QDockWidget>
#include <QInputDialog>
#include <QMessageBox>

namespace stage {

void MainWindow::MakeKeeper() {
    keeper = new WorkKeeper(host, session, *quiet, this);
    connect(quiet, &QuietMoments::Quiet, this, [this] {
        session.History().NoteAll();
        session.IsChanged();
    });
    connect(keeper, &WorkKeeper::Failed, this, [this](const QString& reason) {
        Report(tr("Unsaved work can't be kept: %1").arg(reason).toStdString());
    });
    lookTimer.setSingleShot(true);
    lookTimer.setInterval(0);
    connect(&lookTimer, &QTimer::timeout, this, [this] { session.Changes().EndLook(); });
    session.Changes().lookBegan = [this] { lookTimer.start(); };
}

void MainWindow::MakeHistory() {
    quiet = new QuietMoments(host, this);
    undo = new UndoCommands(*this, *quiet);
    historyDock = new QDockWidget(tr("History"), this);
    historyDock->setObjectName("HistoryDock");
    historyDock->setWidget(new HistoryPanel(*undo, session.History(), this));
}

bool MainWindow::MayDiscard() {
    std::string error;
    if (!keeper->folder.IsUsable() || keeper->KeepDiscarded(error)) {
        return true;
    }
    QMessageBox box(QMessageBox::Warning, tr("Stage"), tr("The changes can't be kept aside."),
                    QMessageBox::Discard | QMessageBox::Cancel, this);
    box.setObjectName("CantKeep");
    box.setInformativeText(QString::fromStdString(error));
    return box.exec() == QMessageBox::Discard;
}

bool MainWindow::OfferKeptWork(bool onlyAfterCrash) {
    std::vector<FoundWork> found = keeper->folder.Find();
    if (onlyAfterCrash && std::ranges::none_of(found, WorkFolder::IsLeftover)) {
        return false;
    }
    RecoverDialog dialog(std::move(found), this);
    if (dialog.exec() != QDialog::Accepted || dialog.Chosen() == nullptr) {
        return false;
    }
    return Recover(*dialog.Chosen());
}

bool MainWindow::Recover(FoundWork& found) {
    if (!found.error.empty()) {
        ReportError("The kept work can't be used.\n" + found.file + ": " + found.error);
        return false;
    }
    if (!MayLoseChanges() || !session.Recover(found.work)) {
        return false;
    }
    views->ShowAll();
    // In this Stage's own place before the other one goes: at no time is it nowhere.
    if (WorkFolder::IsLeftover(found) && keeper->Keep() && keeper->folder.HasKept()) {
        WorkFolder::Remove(found);
    }
    Report(tr("Recovered %1").arg(QString::fromStdString(session.Title())).toStdString());
    return true;
}

void MainWindow::AskAutosaveMinutes() {
    bool accepted = false;
    const int minutes =
        QInputDialog::getInt(this, tr("Autosave"), tr("Minutes between autosaves (0: never)"),
                             WorkKeeper::Minutes(), 0, WorkKeeper::kMostMinutes, 1, &accepted);
    if (accepted) {
        keeper->SetMinutes(minutes);
    }
}

} // namespace stage
