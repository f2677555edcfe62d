#include "framework/private/NativeControls.h"
#include "framework/private/NativeOf.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QMouseEvent>
#include <QPushButton>
#include <QRadioButton>

namespace {

bool IsRadio(const NativeWindow& native) {
    const DWORD type = native.windowStyle & BS_TYPEMASK;
    return type == BS_RADIOBUTTON || type == BS_AUTORADIOBUTTON;
}

// The radio buttons between two WS_GROUP controls exclude each other.
void UncheckOthersInGroup(NativeWindow& clicked) {
    NativeWindow* parent = clicked.Parent();
    const auto all = parent ? parent->Children() : std::vector<NativeWindow*>();
    std::vector<NativeWindow*> group;
    for (NativeWindow* child : all) {
        if (child->windowStyle & WS_GROUP) {
            if (std::find(group.begin(), group.end(), &clicked) != group.end()) {
                break;
            }
            group.clear();
        }
        group.push_back(child);
    }
    for (NativeWindow* child : group) {
        auto* radio = dynamic_cast<QRadioButton*>(child);
        if (child != &clicked && radio && IsRadio(*child)) {
            radio->setChecked(false);
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
