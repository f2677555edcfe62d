#pragma once

#include <QPointer>

#include <utility>

/// A dialog of the toolkit that may be deleted with its parent while it runs; what is left goes with this.
/// Ask `Lives` after running it.
template <class Dialog> class OwnedDialog {
public:
    template <class... Arguments>
    explicit OwnedDialog(Arguments&&... arguments)
        : dialog(new Dialog(std::forward<Arguments>(arguments)...)) {}
    ~OwnedDialog() { delete dialog.data(); }
    OwnedDialog(const OwnedDialog&) = delete;
    OwnedDialog& operator=(const OwnedDialog&) = delete;

    Dialog* operator->() const { return dialog.data(); }
    Dialog& operator*() const { return *dialog; }
    bool Lives() const { return !dialog.isNull(); }

private:
    QPointer<Dialog> dialog;
};
