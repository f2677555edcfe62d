#pragma once

#include <QString>
#include <QValidator>

class QLineEdit;

/// Holds the user of a line edit to a number of characters: of what is typed, pasted or dropped only as much
/// is added as there is room for, and nothing to a text that is too long already. What the program sets, and
/// what undo brings back, is of any length. Lives as a child of the edit.
class TypingLimit : public QValidator {
public:
    explicit TypingLimit(QLineEdit& owner);

    /// In UTF-16 units; 0 and less is no limit.
    void SetLimit(int characters);
    /// The program's text, whole.
    void SetText(const QString& text);

    State validate(QString& text, int& cursor) const override;

private:
    QLineEdit& edit;
    QString before; // the text as the last change left it
    qsizetype limit;
    bool programSets = false;
};
