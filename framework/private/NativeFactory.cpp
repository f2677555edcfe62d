#include "framework/private/NativeFactory.h"

#include "framework/Button.h"
#include "framework/ComboBox.h"
#include "framework/Edit.h"
#include "framework/ListBox.h"
#include "framework/private/Face.h"
#include "framework/private/NativeControls.h"
#include "framework/private/NativeOf.h"
#include "framework/Static.h"
#include "framework/TabCtrl.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace {

// A window of the program's own: it paints all of itself.
class PlainWindow : public NativeOf<QWidget> {
public:
    PlainWindow(QWidget* parent, Qt::WindowFlags flags) : NativeOf<QWidget>(parent, flags) {
        setAttribute(Qt::WA_OpaquePaintEvent);
        setAttribute(Qt::WA_NoSystemBackground);
        setMouseTracking(true);
        setFocusPolicy(Qt::NoFocus);
    }

    bool IsControl() const override { return false; }
};

struct ControlClass {
    const char* name;
    NativeWindow* (*make)(DWORD style, QWidget* parent);
    CWnd* (*makeObject)();
};

template <class C> CWnd* NewObject() {
    return new C;
}

constexpr std::array<ControlClass, 6> kControls{{
    {"BUTTON", &MakeButton, &NewObject<CButton>},
    {"EDIT", &MakeEdit, &NewObject<CEdit>},
    {"LISTBOX", &MakeListBox, &NewObject<CListBox>},
    {"COMBOBOX", &MakeComboBox, &NewObject<CComboBox>},
    {"SYSTABCONTROL32", &MakeTab, &NewObject<CTabCtrl>},
    {"TOOLBARWINDOW32", &MakeToolBar, &NewObject<CWnd>},
}};

std::string Upper(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::toupper(c); });
    return text;
}

const ControlClass* Find(const std::string& className) {
    const std::string wanted = Upper(className);
    const auto* found = std::find_if(kControls.begin(), kControls.end(),
                                     [&wanted](const ControlClass& c) { return wanted == c.name; });
    return found == kControls.end() ? nullptr : found;
}

void ApplyFocusPolicy(NativeWindow& native) {
    QWidget* widget = native.widget;
    if (widget->focusPolicy() != Qt::NoFocus) {
        // A wheel turn must not steal the focus, and only marked windows are reached by Tab.
        widget->setFocusPolicy(native.windowStyle & WS_TABSTOP ? Qt::StrongFocus : Qt::ClickFocus);
    }
}

} // namespace

NativeWindow* MakeNative(const std::string& className, DWORD style, QWidget* parent, Qt::WindowFlags flags) {
    NativeWindow* made = nullptr;
    if (Upper(className) == "STATIC") {
        made = MakeStatic(style, parent, flags);
    } else if (const ControlClass* control = Find(className); control && parent && (style & WS_CHILD)) {
        made = control->make(style, parent);
    } else {
        return new PlainWindow(parent, flags);
    }
    made->windowStyle = style;
    made->widget->setFont(surface::DefaultFace().Font());
    made->widget->setMouseTracking(true);
    ApplyFocusPolicy(*made);
    return made;
}

CWnd* MakeControlObject(const std::string& className, DWORD /*style*/) {
    if (Upper(className) == "STATIC") {
        return new CStatic;
    }
    const ControlClass* control = Find(className);
    return control ? control->makeObject() : new CWnd;
}
