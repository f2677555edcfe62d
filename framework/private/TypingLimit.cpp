#include "framework/private/TypingLimit.h"

#include <QLineEdit>

#include <algorithm>
#include <limits>

namespace {

constexpr int kNoLimit = std::numeric_limits<int>::max();

// What stands in a text instead of what stood there: between its first `head` and its last `tail` characters.
struct Change {
    qsizetype head = 0;
    qsizetype tail = 0;
};

Change ChangeBetween(const QString& before, const QString& text, qsizetype cursor) {
    Change change;
    const qsizetype behindCursor = std::min(text.size() - cursor, before.size());
    while (change.tail < behindCursor &&
           before[before.size() - 1 - change.tail] == text[text.size() - 1 - change.tail]) {
        ++change.tail;
    }
    const qsizetype rest = std::min(before.size(), text.size()) - change.tail;
    while (change.head < rest && before[change.head] == text[change.head]) {
        ++change.head;
    }
    return change;
}

} // namespace

TypingLimit::TypingLimit(QLineEdit& owner) : QValidator(&owner), edit(owner), limit(kNoLimit) {
    // The edit's own limit would cut what the program sets, and is 32767 unless told otherwise.
    edit.setMaxLength(kNoLimit);
    edit.setValidator(this);
    const auto note = [this](const QString& text) { before = text; };
    connect(&edit, &QLineEdit::textEdited, this, note);
    connect(&edit, &QLineEdit::textChanged, this, note);
}

void TypingLimit::SetLimit(int characters) {
    limit = characters > 0 ? characters : kNoLimit;
    if (edit.isUndoAvailable() || edit.isRedoAvailable()) {
        // A text typed under another limit must not come back and be taken for typed now.
        const int cursor = edit.cursorPosition();
        const int start = edit.selectionStart();
        const int length = edit.selectionLength();
        SetText(edit.text());
        edit.setCursorPosition(cursor);
        if (start >= 0) {
            edit.setSelection(start == cursor ? start + length : start, start == cursor ? -length : length);
        }
    }
}

void TypingLimit::SetText(const QString& text) {
    programSets = true;
    edit.setText(text);
    programSets = false;
}

QValidator::State TypingLimit::validate(QString& text, int& cursor) const {
    // Only undo leaves something to redo; any other change forgets it.
    if (programSets || text.size() <= limit || edit.isRedoAvailable()) {
        return Acceptable;
    }
    const Change change = ChangeBetween(before, text, cursor);
    const qsizetype added = text.size() - change.head - change.tail;
    const qsizetype kept = change.head + change.tail;
    qsizetype room = std::clamp<qsizetype>(limit - kept, 0, added);
    if (room > 0 && room < added && text[change.head + room - 1].isHighSurrogate()) {
        --room;
    }
    if (room == added) {
        return Acceptable;
    }
    if (room == 0 && kept == before.size()) {
        return Invalid; // taken back by the edit, as if it had not been typed
    }
    text.remove(change.head + room, added - room);
    cursor = static_cast<int>(change.head + room);
    return Acceptable;
}
