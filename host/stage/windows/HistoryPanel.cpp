#include "host/stage/windows/HistoryPanel.h"

#include "host/stage/host/history/LevelHistory.h"
#include "host/stage/windows/UndoCommands.h"

#include <QSignalBlocker>

namespace stage {

namespace {
/// Number of steps that are done behind a line's step, with those that have fallen away.
constexpr int kDoneRole = Qt::UserRole;
} // namespace

HistoryPanel::HistoryPanel(UndoCommands& undoCommands, LevelHistory& levelHistory, QWidget* parent)
    : QListWidget(parent), commands(undoCommands), history(levelHistory) {
    setObjectName("HistoryList");
    setUniformItemSizes(true);
    connect(&commands, &UndoCommands::StepsChanged, this, [this] {
        if (isVisible()) {
            Refresh();
        }
    });
    connect(this, &QListWidget::itemClicked, this, [this](const QListWidgetItem* item) {
        commands.GoTo(static_cast<std::size_t>(item->data(kDoneRole).toULongLong()));
    });
    Refresh();
}

void HistoryPanel::showEvent(QShowEvent* event) {
    Refresh();
    QListWidget::showEvent(event);
}

void HistoryPanel::Refresh() {
    const EditHistory& edits = history.Edits();
    const QSignalBlocker quiet(this);
    clear();
    // What plug-ins write down by themselves in front of the first step stays.
    std::size_t first = 0;
    while (first < edits.Steps().size() && edits.Steps()[first].isLook) {
        ++first;
    }
    const std::size_t forgotten = edits.Forgotten();
    auto* start = new QListWidgetItem(forgotten == 0   ? tr("Start")
                                      : forgotten == 1 ? tr("1 older step is forgotten")
                                                       : tr("%1 older steps are forgotten").arg(forgotten),
                                      this);
    start->setData(kDoneRole, static_cast<qulonglong>(edits.Dropped() + first));
    int current = 0;
    for (std::size_t i = first; i < edits.Steps().size(); ++i) {
        const HistoryStep& step = edits.Steps()[i];
        if (step.isLook) {
            continue;
        }
        auto* item = new QListWidgetItem(QString::fromStdString(step.name), this);
        item->setData(kDoneRole, static_cast<qulonglong>(edits.Dropped() + i + 1));
        if (i < edits.Done()) {
            current = count() - 1;
        } else {
            item->setForeground(palette().brush(QPalette::Disabled, QPalette::Text));
        }
    }
    setCurrentRow(current);
    scrollToItem(item(current));
}

} // namespace stage
