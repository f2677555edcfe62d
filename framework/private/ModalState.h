#pragma once

#include <QEventLoop>

// Lives on while the loop runs, even if the dialog does not.
struct ModalState {
    QEventLoop loop;
    int result = -1;
    bool ended = false;
    bool objectGone = false;
};
