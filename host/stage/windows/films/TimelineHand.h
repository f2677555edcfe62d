#pragma once

#include "framework/Types.h"

#include <functional>
#include <QPoint>
#include <vector>

class CDialog;
class CWnd;
class IFilmKey;
class QObject;
class QWidget;

namespace stage {

class ToolWindows;

/// Works the window "Scenario" from outside: by the numbers of its commands and controls and by the messages
/// of mouse and menus. It keeps nothing of that window, which may go in any call.
class TimelineHand {
public:
    /// The windows must outlive this object.
    explicit TimelineHand(const ToolWindows& toolWindows) : windows(toolWindows) {}

    /// Null while there is none.
    CWnd* Window() const;
    CWnd* Timeline() const;
    /// Whether it is the window's own widget or inside it.
    bool Holds(const QObject* widget) const;
    /// The rows that are shown, from the top.
    std::vector<CWnd*> Rows() const;
    /// The row below a point of the screen, or null.
    CWnd* RowAt(const QPoint& screen) const;
    /// The ruler or the scroll bar of the time; null without the window.
    CWnd* Ruler() const;
    CWnd* TimeBar() const;

    /// As a press of the toolbar's button.
    void PressButton(unsigned id) const;
    /// As a choice from the menu that a right click there opens. False if the menu doesn't offer it.
    bool ChooseAt(CWnd& row, CPoint place, unsigned id) const;
    /// Runs a command of the timeline that asks with a dialog, which `fill` answers unseen: OK if it says
    /// true, Cancel else. The command must not play a film.
    void AnswerDialog(unsigned id, const std::function<bool(CDialog&)>& fill) const;
    /// The key there, by its record; null for none. Moves the mouse's place of the timeline. Pixels of the
    /// row.
    const IFilmKey* KeyAt(CWnd& row, CPoint place) const;
    /// The left button pressed and let go.
    static void Click(CWnd& target, CPoint place);

private:
    const ToolWindows& windows;
};

} // namespace stage
