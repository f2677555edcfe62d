#include "framework/private/NativeControls.h"
#include "framework/private/NativeOf.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>

#include <limits>
#include <utility>

namespace {

class NativeComboBox : public NativeOf<QComboBox>, public NativeListControl {
public:
    NativeComboBox(DWORD comboStyle, QWidget* parent) : NativeOf<QComboBox>(parent) {
        setEditable((comboStyle & CBS_TYPEMASK) != CBS_DROPDOWNLIST);
        setInsertPolicy(QComboBox::NoInsert);
        connect(this, &QComboBox::activated, this, [this](int index) {
            picked = index;
            NotifyParent(CBN_SELCHANGE);
        });
        if (lineEdit()) {
            setCompleter(nullptr);
            lineEdit()->installEventFilter(this);
            lineEdit()->setMaxLength(std::numeric_limits<int>::max()); // it cuts what the program sets
            // Left alone, the toolkit would choose the item that the text equals when the edit is left.
            disconnect(lineEdit(), &QLineEdit::editingFinished, this, nullptr);
            disconnect(lineEdit(), &QLineEdit::returnPressed, this, nullptr);
            connect(lineEdit(), &QLineEdit::textEdited, this, [this] {
                // Typing is no choice from the list, whatever the text may match.
                picked = -1;
                NotifyParent(CBN_EDITCHANGE);
            });
        }
    }

    bool BaseEvent(QEvent* event) override {
        const QEvent::Type type = event->type();
        if (type == QEvent::FocusIn || type == QEvent::FocusOut) {
            lent = LendsKeyboard(*event) && QApplication::focusWidget() != this;
        }
        if (type == QEvent::Wheel && !hasFocus()) {
            // A wheel that only passes over must not change the choice.
            event->ignore();
            return false;
        }
        if (type == QEvent::FocusOut && !LendsKeyboard(*event)) {
            hidePopup(); // the program has taken the keyboard from the open list
        }
        const bool isFocus = IsFocusChange(*event); // the event may also be this object's end
        const bool result = QComboBox::event(event);
        if (isFocus) {
            NotifyFocus(*event, CBN_SETFOCUS, CBN_KILLFOCUS);
        }
        return result;
    }

    void showPopup() override {
        QComboBox::showPopup();
        view()->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Wheel && watched == lineEdit()) {
            return HandleEvent(event); // the edit part keeps it from the control
        }
        // From the open list the keyboard may go elsewhere without coming back. Asking for the view makes it.
        if (event->type() == QEvent::FocusOut && lent && watched == view()) {
            NativeWindow* next = InWindowOf(QApplication::focusWidget());
            if (next && next != this) {
                LoseLentFocus();
            }
        }
        return QComboBox::eventFilter(watched, event);
    }

    // The rect given holds the open list too; the closed control takes a line of text.
    CRect Fit(const CRect& rect) override {
        given = rect;
        constexpr int kFrame = 6;
        const int closed = std::min(rect.Height(), fontMetrics().height() + kFrame);
        const int rowHeight = std::max(1, fontMetrics().height() + 2);
        setMaxVisibleItems(std::max(4, (rect.Height() - closed) / rowHeight));
        return {rect.left, rect.top, rect.right, rect.top + closed};
    }

    void FontChanged() override { SetGeometry(given, /*sendSize*/ true); }

    void SetText(const QString& newText) override {
        if (isEditable()) {
            setEditText(newText);
        } else {
            SetCurrent(findText(newText));
        }
    }
    QString Text() const override { return currentText(); }

    int InsertItem(int index, const QString& label) override {
        const QString kept = currentText();
        const int at = index < 0 || index > count() ? count() : index;
        insertItem(at, label);
        if (picked < 0) {
            // The first item must not select itself.
            setCurrentIndex(-1);
            if (isEditable()) {
                setEditText(kept);
            }
        }
        return at;
    }
    bool RemoveItem(int index) override {
        if (index < 0 || index >= count()) {
            return false;
        }
        removeItem(index);
        SetCurrent(-1);
        return true;
    }
    void Clear() override {
        clear();
        picked = -1;
    }
    int Count() const override { return count(); }
    QString ItemText(int index) const override { return itemText(index); }
    UINT_PTR ItemData(int index) const override {
        return static_cast<UINT_PTR>(itemData(index).toULongLong());
    }
    bool SetItemData(int index, UINT_PTR number) override {
        setItemData(index, QVariant::fromValue<qulonglong>(number));
        return index >= 0 && index < count();
    }
    int Current() const override { return picked < count() ? picked : -1; }
    bool SetCurrent(int index) override {
        picked = index >= 0 && index < count() ? index : -1;
        setCurrentIndex(picked);
        return picked == index;
    }

protected:
    void hideEvent(QHideEvent* event) override {
        QComboBox::hideEvent(event);
        LoseLentFocus();
    }

private:
    void LoseLentFocus() {
        if (std::exchange(lent, false)) {
            QFocusEvent lost(QEvent::FocusOut, Qt::OtherFocusReason);
            Send(WM_KILLFOCUS, reinterpret_cast<WPARAM>(InWindowOf(QApplication::focusWidget())), 0, &lost);
        }
    }

    bool lent = false; // the keyboard, to the open list
    // What was chosen from the list, by the user or by the program.
    int picked = -1;
    CRect given; // with the open list
};

} // namespace

NativeWindow* MakeComboBox(DWORD style, QWidget* parent) {
    return new NativeComboBox(style, parent);
}
