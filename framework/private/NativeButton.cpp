#include "framework/private/NativeControls.h"
#include "framework/private/NativeOf.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>

#include <algorithm>
#include <vector>

namespace {

bool IsRadio(const NativeWindow& native) {
    const DWORD type = native.windowStyle & BS_TYPEMASK;
    return type == BS_RADIOBUTTON || type == BS_AUTORADIOBUTTON;
}

// The radio buttons that stand with this one between two WS_GROUP controls, in the order of the template.
std::vector<QRadioButton*> RadioGroupOf(NativeWindow& radio) {
    const auto all = radio.Parent() ? radio.Parent()->Children() : std::vector<NativeWindow*>();
    std::vector<QRadioButton*> group;
    bool found = false;
    for (NativeWindow* child : all) {
        if (child->windowStyle & WS_GROUP) {
            if (found) {
                break;
            }
            group.clear();
        }
        found = found || child == &radio;
        auto* button = dynamic_cast<QRadioButton*>(child);
        if (button && IsRadio(*child)) {
            group.push_back(button);
        }
    }
    return group;
}

void UncheckOthersInGroup(NativeWindow& clicked) {
    for (QRadioButton* radio : RadioGroupOf(clicked)) {
        if (radio != clicked.widget) {
            radio->setChecked(false);
        }
    }
}

// 1 forwards, -1 backwards, 0 for another key.
int ArrowStep(int key) {
    const bool forwards = key == Qt::Key_Down || key == Qt::Key_Right;
    return forwards ? 1 : key == Qt::Key_Up || key == Qt::Key_Left ? -1 : 0;
}

// The next radio button round the group that can be pressed gets the keyboard and is pressed.
void PressNextInGroup(NativeWindow& radio, int step) {
    const std::vector<QRadioButton*> group = RadioGroupOf(radio);
    const auto count = static_cast<int>(group.size());
    const auto own = static_cast<int>(std::find(group.begin(), group.end(), radio.widget) - group.begin());
    for (int i = 1; i < count; ++i) {
        const QPointer<QRadioButton> next =
            group[static_cast<std::size_t>((own + i * step + i * count) % count)];
        if (next->isVisible() && next->isEnabled()) {
            next->setFocus(Qt::OtherFocusReason);
            if (next) {
                next->click();
            }
            return;
        }
    }
}

template <class QBase> class NativeButton : public NativeOf<QBase> {
public:
    NativeButton(DWORD buttonStyle, QWidget* parent) : NativeOf<QBase>(parent) {
        this->windowStyle = buttonStyle;
        QBase::setAutoExclusive(false);
        QObject::connect(this, &QAbstractButton::clicked, this, [this] { this->NotifyParent(BN_CLICKED); });
    }

    void SetText(const QString& newText) override { QBase::setText(newText); }
    QString Text() const override { return QBase::text(); }

    std::optional<LRESULT> ControlMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        switch (message) {
        case BM_CLICK:
            if (this->widget->isEnabled()) {
                QBase::click();
            }
            return 0;
        case BM_GETCHECK:
            return QBase::isChecked() ? BST_CHECKED : BST_UNCHECKED;
        case BM_SETCHECK:
            QBase::setChecked(wParam == static_cast<WPARAM>(BST_CHECKED));
            return 0;
        default:
            return NativeWindow::ControlMessage(message, wParam, lParam);
        }
    }

protected:
    // The whole control can be pressed, not its box and text alone.
    bool hitButton(const QPoint& point) const override { return this->rect().contains(point); }

    void keyPressEvent(QKeyEvent* event) override {
        const int step = IsRadio(*this) ? ArrowStep(event->key()) : 0;
        if (step == 0) {
            QBase::keyPressEvent(event);
        } else {
            PressNextInGroup(*this, step);
        }
    }
    void hideEvent(QHideEvent* event) override {
        QBase::hideEvent(event);
        EndPress();
    }
    // A press that takes the focus from another window may hide the button before it arrives.
    void showEvent(QShowEvent* event) override {
        EndPress();
        QBase::showEvent(event);
    }

    // Only "auto" buttons change by themselves; the program sets the others.
    void nextCheckState() override {
        const DWORD type = this->windowStyle & BS_TYPEMASK;
        if (type == BS_AUTOCHECKBOX || type == BS_AUTO3STATE) {
            QBase::nextCheckState();
        } else if (type == BS_AUTORADIOBUTTON) {
            QBase::setChecked(true);
            UncheckOthersInGroup(*this);
        }
    }

private:
    // The release of a button that is hidden meanwhile comes late or never, and is no click. A button that is
    // up clicks at no release, but forgets the press by it.
    void EndPress() {
        QBase::setDown(false);
        QMouseEvent release(QEvent::MouseButtonRelease, QPointF(-1, -1), this->mapToGlobal(QPointF(-1, -1)),
                            Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
        QBase::mouseReleaseEvent(&release);
    }
};

class NativeGroup : public NativeOf<QGroupBox> {
public:
    explicit NativeGroup(QWidget* parent) : NativeOf<QGroupBox>(parent) {
        // It only frames what stands in it, whichever was made first.
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setFocusPolicy(Qt::NoFocus);
    }

    void SetText(const QString& newText) override { setTitle(newText); }
    QString Text() const override { return title(); }
};

} // namespace

NativeWindow* MakeButton(DWORD style, QWidget* parent) {
    switch (style & BS_TYPEMASK) {
    case BS_CHECKBOX:
    case BS_AUTOCHECKBOX:
    case BS_3STATE:
    case BS_AUTO3STATE:
        return new NativeButton<QCheckBox>(style, parent);
    case BS_RADIOBUTTON:
    case BS_AUTORADIOBUTTON:
        return new NativeButton<QRadioButton>(style, parent);
    case BS_GROUPBOX:
        return new NativeGroup(parent);
    default: {
        auto* button = new NativeButton<QPushButton>(style, parent);
        button->setAutoDefault(false);
        button->setDefault((style & BS_TYPEMASK) == BS_DEFPUSHBUTTON);
        return button;
    }
    }
}
