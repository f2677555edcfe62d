#pragma once

#include "host/stage/host/WorkFolder.h"

#include <QDialog>
#include <QListWidget>
#include <vector>

class QPushButton;

namespace stage {

/// Lists unsaved work that was kept, for the user to choose what to go on with.
class RecoverDialog : public QDialog {
    Q_OBJECT
public:
    RecoverDialog(std::vector<FoundWork> foundWork, QWidget* parent);

    /// The work that was chosen; null without one. Good after the dialog was accepted.
    FoundWork* Chosen();

    QListWidget* list;
    QPushButton* recover;
    QPushButton* remove;

private:
    void RemoveChosen();
    void UpdateButtons();

    std::vector<FoundWork> found;
};

} // namespace stage
