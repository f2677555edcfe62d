#pragma once

#include <functional>

class QWidget;

/// Calls `answer` with the next modal dialog or menu, which must come up while `run` runs.
void Answering(const std::function<void(QWidget&)>& answer, const std::function<void()>& run);
/// Presses a QMessageBox::StandardButton of a message box.
void PressButton(QWidget& box, int standardButton);
/// Chooses an enabled entry of a menu by its text; closes the menu when there is none.
void ChooseEntry(QWidget& menu, const char* text);
