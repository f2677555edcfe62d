#include "framework/MessageBox.h"

#include "framework/private/Capture.h"
#include "framework/private/NativeWindow.h"
#include "framework/private/OwnedDialog.h"
#include "framework/QtBridge.h"
#include "framework/Resource.h"
#include "framework/TestHooks.h"

#include <QApplication>
#include <QMessageBox>

#include <cstdio>

namespace {

struct ButtonSet {
    UINT type;
    QMessageBox::StandardButtons buttons;
    int escape;
};

const ButtonSet kSets[] = {
    {MB_OK, QMessageBox::Ok, IDOK},
    {MB_OKCANCEL, QMessageBox::Ok | QMessageBox::Cancel, IDCANCEL},
    {MB_YESNOCANCEL, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, IDCANCEL},
    {MB_YESNO, QMessageBox::Yes | QMessageBox::No, IDNO},
    {MB_RETRYCANCEL, QMessageBox::Retry | QMessageBox::Cancel, IDCANCEL},
};

const ButtonSet& SetOf(UINT type) {
    for (const ButtonSet& set : kSets) {
        if (set.type == (type & MB_TYPEMASK)) {
            return set;
        }
    }
    return kSets[0];
}

int ResultOf(int button, int escape) {
    switch (button) {
    case QMessageBox::Ok:
        return IDOK;
    case QMessageBox::Cancel:
        return IDCANCEL;
    case QMessageBox::Yes:
        return IDYES;
    case QMessageBox::No:
        return IDNO;
    case QMessageBox::Retry:
        return IDRETRY;
    default:
        return escape;
    }
}

QMessageBox::Icon IconOf(UINT type) {
    switch (type & MB_ICONMASK) {
    case MB_ICONERROR:
        return QMessageBox::Critical;
    case MB_ICONQUESTION:
        return QMessageBox::Question;
    case MB_ICONINFORMATION:
        return QMessageBox::Information;
    default:
        return QMessageBox::Warning;
    }
}

// What the box belongs to: it stays in front of that and goes with it. A window that was destroyed may count
// as active until the toolkit has deleted it, and would take the box along.
QWidget* BoxParent() {
    const CWnd* main = AfxGetMainWnd();
    QWidget* const candidates[] = {QApplication::activeWindow(), QApplication::activeModalWidget(),
                                   main ? NativeWidget(*main) : nullptr};
    for (QWidget* candidate : candidates) {
        if (candidate && candidate->isVisible()) {
            return candidate;
        }
    }
    return nullptr;
}

} // namespace

int AfxMessageBox(const std::string& text, UINT type, UINT /*help*/) {
    capture::Cancel();
    if (Hooks().messageBox) {
        return Hooks().messageBox(text, type);
    }
    const ButtonSet& set = SetOf(type);
    if (!QtAlive()) {
        std::fprintf(stderr, "%s\n", text.c_str());
        return set.escape;
    }
    const OwnedDialog<QMessageBox> box(IconOf(type), QApplication::applicationDisplayName(),
                                       QString::fromStdString(text), set.buttons, BoxParent());
    box->setTextFormat(Qt::PlainText);
    const int pressed = box->exec();
    return box.Lives() ? ResultOf(pressed, set.escape) : set.escape;
}

int AfxMessageBox(const char* text, UINT type, UINT help) {
    return AfxMessageBox(std::string(text ? text : ""), type, help);
}

int AfxMessageBox(UINT textId, UINT type, UINT help) {
    return AfxMessageBox(LoadString(textId), type, help);
}
