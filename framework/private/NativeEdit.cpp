#include "framework/private/NativeControls.h"
#include "framework/private/NativeOf.h"
#include "framework/private/TypingLimit.h"

#include <QLineEdit>

namespace {

class NativeEdit : public NativeOf<QLineEdit>, public NativeEditControl {
public:
    NativeEdit(DWORD editStyle, QWidget* parent)
        : NativeOf<QLineEdit>(parent), limit(new TypingLimit(*this)) {
        QLineEdit::setReadOnly((editStyle & ES_READONLY) != 0);
        setEchoMode(editStyle & ES_PASSWORD ? QLineEdit::Password : QLineEdit::Normal);
        setAlignment(editStyle & ES_RIGHT    ? Qt::AlignRight
                     : editStyle & ES_CENTER ? Qt::AlignHCenter
                                             : Qt::AlignLeft);
        connect(this, &QLineEdit::textEdited, this, [this] { NotifyParent(EN_CHANGE); });
    }

    bool BaseEvent(QEvent* event) override {
        const bool isFocus = IsFocusChange(*event); // the event may also be this object's end
        const bool result = QLineEdit::event(event);
        if (isFocus) {
            NotifyFocus(*event, EN_SETFOCUS, EN_KILLFOCUS);
        }
        return result;
    }

    void SetText(const QString& newText) override { limit->SetText(newText); }
    QString Text() const override { return QLineEdit::text(); }

    void SetSelection(int start, int end) override {
        const int length = static_cast<int>(QLineEdit::text().size());
        if (start < 0) {
            deselect();
            return;
        }
        const int last = end < 0 ? length : std::min(end, length);
        const int first = std::min(start, length);
        setCursorPosition(last);
        setSelection(first, last - first);
    }
    void GetSelection(int& start, int& end) const override {
        start = hasSelectedText() ? selectionStart() : cursorPosition();
        end = hasSelectedText() ? selectionEnd() : cursorPosition();
    }
    void SetLimit(int characters) override { limit->SetLimit(characters); }
    void SetReadOnly(bool on) override { QLineEdit::setReadOnly(on); }

    std::optional<LRESULT> ControlMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        switch (message) {
        case EM_SETSEL:
            SetSelection(static_cast<int>(wParam), static_cast<int>(lParam));
            return 0;
        case EM_LIMITTEXT:
            SetLimit(static_cast<int>(wParam));
            return 0;
        default:
            return NativeWindow::ControlMessage(message, wParam, lParam);
        }
    }

private:
    TypingLimit* limit; // a child of this
};

} // namespace

NativeWindow* MakeEdit(DWORD style, QWidget* parent) {
    return new NativeEdit(style, parent);
}
