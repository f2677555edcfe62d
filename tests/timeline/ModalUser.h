#pragma once

#include <functional>
#include <QString>
#include <string>

class QAbstractButton;
class QLineEdit;
class QWidget;

/// A user with mouse and keyboard at the modal dialog that a command opens.
class ModalUser {
public:
    /// Runs the command, which opens the dialog, and lets the user work once it is active. A dialog that the
    /// user leaves open fails the test and is closed. False if none opened.
    static bool Work(const std::function<void()>& command, const std::function<void()>& user);

    /// The dialog; null when none is open.
    static QWidget* Window();
    static void Key(Qt::Key key);
    static void Click(const QString& button);
    /// Field by field in the order in which they were made.
    static QLineEdit* Field(int index);
    static QAbstractButton* Button(const QString& text);
    /// A click into the field, and the text in place of what it says.
    static void Type(int field, const std::string& text);
    static std::string TextOf(int field);
    /// Whether a label, text or not, says this.
    static bool Says(const std::string& text);
    /// Every control inside the window, no two over each other but for boxes around them, no text cut.
    static void ExpectNeat();

private:
    static void ClickAt(const QWidget& widget);
};
