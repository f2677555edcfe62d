#include "host/stage/windows/DeleteNotice.h"

#include "host/stage/windows/MainWindow.h"
#include "host/stage/windows/Notice.h"
#include "host/stage/windows/UndoCommands.h"

#include <algorithm>

namespace stage {

namespace {

/// What plug-ins have added by being shown does not count.
std::size_t DoneSteps(const EditHistory& edits) {
    const auto end = edits.Steps().begin() + static_cast<std::ptrdiff_t>(edits.Done());
    return static_cast<std::size_t>(
        std::count_if(edits.Steps().begin(), end, [](const HistoryStep& step) { return !step.isLook; }));
}

} // namespace

DeleteNotice::DeleteNotice(MainWindow& mainWindow, Notice& statusNotice)
    : QObject(&mainWindow), window(mainWindow), notice(statusNotice) {
    window.commands.deletedInUse = [this](const std::string& uses) { Show(QString::fromStdString(uses)); };
    connect(window.undo, &UndoCommands::StepsChanged, this, &DeleteNotice::OnSteps);
}

void DeleteNotice::Show(const QString& uses) {
    before = DoneSteps(window.session.History().Edits());
    isNoted = false;
    isShown = true;
    notice.Show(tr("Deleted. %1.").arg(uses), tr("Undo"), [this] {
        isShown = false;
        window.undo->Undo();
    });
}

void DeleteNotice::OnSteps() {
    const std::size_t done = DoneSteps(window.session.History().Edits());
    const bool isLast = done == before + 1;
    if (isShown && !isLast && (isNoted || done != before)) {
        isShown = false;
        notice.Withdraw();
    }
    isNoted = isNoted || isLast;
}

} // namespace stage
