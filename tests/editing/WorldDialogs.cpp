// The user's hand in any dialog, and what goes on behind it. Nothing here knows one dialog from another:
// controls are found through the windows.
#include "framework/ComboBox.h"
#include "framework/Edit.h"
#include "framework/ListBox.h"
#include "framework/QtBridge.h"
#include "keys/views/TrackKey.h"
#include "tests/editing/Texts.h"
#include "tests/editing/World.h"
#include "timeline/FilmsView.h"

#include <algorithm>
#include <iterator>
#include <QApplication>

namespace editing {

namespace {

constexpr int kMostActions = 8; ///< in a dialog before the user wants it to end
constexpr int kMostFilms = 7;   ///< the button for a new one is left alone from there on

CRect ClientOf(const CWnd& window) {
    CRect client;
    window.GetClientRect(&client);
    return client;
}

} // namespace

void World::CheckInside() {
    if (wrongInside || Control() == nullptr || Control()->grid == nullptr) {
        return;
    }
    if (Control()->IsRebuilding()) { // the dialog is behind a box of a film that is being shown
        return;
    }
    NoteHiddenKeys();
    wrongInside = CheckWhileOpen(*this);
}

void World::Disturb() {
    static const char* const steps[] = {"delete-objects", "delete-film",
                                        "show-film",      "show-again",
                                        "load-level",     "remove-row",
                                        "stop",           "change-element",
                                        "open-close",     "attributes-close",
                                        "key-menu",       "attributes-next",
                                        "host-event",     "set-time",
                                        "save-level",     "attributes-link",
                                        "select-objects", "play",
                                        "object-menu",    "leave-level",
                                        "modeless",       "close-window"};
    Interrupt();
    if (opening || depth == 0 || depth >= kDeepest || !luck.OneIn(3)) {
        return;
    }
    Step step;
    step.operation = FindOperation(steps[luck.Below(static_cast<int>(std::size(steps)))]);
    for (int& number : step.numbers) {
        number = luck.Below(100000);
    }
    step.luck = luck.Next();
    Execute(step);
}

int World::AnswerDialog(CDialog& dialog) {
    DialogHand hand(dialog);
    ++dialogs[dialog.GetWindowText()];
    openDialogs.push_back(dialog.GetSafeHwnd());
    for (int left = luck.Below(kMostActions); left > 0 && hand.IsOpen(); --left) {
        if (luck.OneIn(4)) {
            Disturb();
        }
        Touch(hand);
        CheckInside();
    }
    Leave(hand);
    openDialogs.pop_back();
    return IDCANCEL;
}

/// A dialog may refuse to end once, but not for ever.
void World::Leave(DialogHand& hand) {
    for (int tries = luck.Below(3); tries >= 0 && hand.IsOpen(); --tries) {
        hand.End(static_cast<DialogHand::Ending>(luck.Below(DialogHand::kEndings)));
    }
    for (const auto ending : {DialogHand::Ending::Cancel, DialogHand::Ending::CloseBox}) {
        if (hand.IsOpen()) {
            hand.End(ending);
        }
    }
    if (hand.IsOpen() && !wrongInside) {
        wrongInside = Failure{"dialog-stuck", "\"" + hand.Window()->GetWindowText() + "\" can't be closed"};
    }
}

/// One action on a control, or a key.
void World::Touch(DialogHand& hand) {
    const std::vector<CWnd*> controls = hand.Controls();
    if (controls.empty() || luck.OneIn(6)) {
        PressKey(hand);
        return;
    }
    const CWnd& control = *controls[static_cast<std::size_t>(luck.Below(static_cast<int>(controls.size())))];
    const CRect client = ClientOf(control);
    const CPoint place{luck.Below(client.right), luck.Below(client.bottom)};
    if (luck.OneIn(12)) {
        static constexpr int deltas[] = {120, -120, 360, -1200, 30};
        hand.Wheel(control, deltas[luck.Below(5)]);
    } else if (dynamic_cast<const CEdit*>(&control) != nullptr) {
        hand.Type(control, TypedText(static_cast<int>(luck.Next() % 100000)));
    } else if (const auto* list = dynamic_cast<const CListBox*>(&control)) {
        TouchList(hand, *list);
    } else if (dynamic_cast<const CComboBox*>(&control) != nullptr) {
        hand.Wheel(control, luck.OneIn(2) ? 120 : -120); // its drop-down list would wait for the user
    } else if (luck.OneIn(8)) {
        hand.Drag(control, place, {place.x - luck.Below(100), place.y - luck.Below(100)});
    } else {
        hand.Click(control, place);
    }
}

/// Lines of some lists are divided into columns from the right.
void World::TouchList(DialogHand& hand, const CListBox& list) {
    const CRect client = ClientOf(list);
    CRect line;
    const int lines = list.GetCount();
    int y = luck.Below(client.bottom);
    if (lines > 0 && list.GetItemRect(luck.Below(lines), &line) != LB_ERR && line.bottom <= client.bottom &&
        line.top >= 0) {
        y = (line.top + line.bottom) / 2;
    }
    const CPoint place{luck.OneIn(2) ? luck.Below(client.right) : client.right - 1 - luck.Below(125), y};
    static constexpr Qt::KeyboardModifiers held[] = {Qt::NoModifier, Qt::NoModifier, Qt::ControlModifier,
                                                     Qt::ShiftModifier};
    if (luck.OneIn(3)) {
        hand.DoubleClick(list, place);
    } else {
        hand.Click(list, place, held[luck.Below(4)]);
    }
}

void World::PressKey(DialogHand& hand) {
    static constexpr int keys[] = {Qt::Key_Tab,  Qt::Key_Tab,    Qt::Key_Space, Qt::Key_Up,
                                   Qt::Key_Down, Qt::Key_Return, Qt::Key_Home,  Qt::Key_End,
                                   Qt::Key_Left, Qt::Key_Delete, Qt::Key_Escape};
    const int key = keys[luck.Below(static_cast<int>(std::size(keys)))];
    hand.Key(key, key == Qt::Key_Space ? " " : "");
}

/// The plug-in's panel in the host. Opened first where it isn't.
void World::Panel(const Step& /*step*/) {
    if (editor.panel == nullptr) {
        plugin.OnActivate(true);
        return;
    }
    const CFilmsView* view = CFilmsView::GetPanel();
    if (view == nullptr) {
        return;
    }
    int films = 0;
    for (const IFilm* film : Films() != nullptr ? std::span(Films()->films) : std::span<IFilm* const>()) {
        films += film != nullptr ? 1 : 0;
    }
    CWnd* add = view->moviesPage.GetDlgItem(1745);
    if (add != nullptr) {
        add->EnableWindow(films < kMostFilms);
    }
    DialogHand hand(view->moviesPage);
    Touch(hand);
}

/// Any window of the framework that stands beside the scenario window.
void World::Modeless(const Step& step) {
    std::vector<QWidget*> tops;
    for (QWidget* top : QApplication::topLevelWidgets()) {
        const bool isOpenDialog = std::ranges::any_of(openDialogs, [top](HWND open) {
            return IsWindow(open) && NativeWidget(*CWnd::FromHandle(open)) == top;
        });
        const bool isScenario = Control() != nullptr && top == NativeWidget(*window);
        if (top->isVisible() && !top->windowTitle().isEmpty() && !isOpenDialog && !isScenario) {
            tops.push_back(top);
        }
    }
    if (tops.empty()) {
        return;
    }
    std::ranges::sort(tops, {}, [](const QWidget* top) { return top->windowTitle(); });
    QApplication::setActiveWindow(tops[static_cast<std::size_t>(step.numbers[0]) % tops.size()]);
    auto* dialog = dynamic_cast<CDialog*>(CWnd::GetActiveWindow());
    if (dialog == nullptr) {
        return;
    }
    DialogHand hand(*dialog);
    ++dialogs[dialog->GetWindowText()];
    for (int left = step.numbers[1] % 3; left >= 0 && hand.IsOpen(); --left) {
        Touch(hand);
    }
    if (step.numbers[2] % 4 == 0) {
        hand.End(static_cast<DialogHand::Ending>(luck.Below(DialogHand::kEndings)));
    }
}

} // namespace editing
