"""The window "Key attributes": what a key holds, line by line."""

import time

from dialogs import window_of
from timeline import key_place

TITLE = "Key attributes"
ROW_HEIGHT = 20  # of a line of the window, in pixels
LIST_EDGE = 9  # from the window's edge to its first line


def attributes(desktop):
    return desktop.until("the attributes window", lambda s: window_of(s, TITLE))


def window_picture(desktop, name):
    """What the window says, without the mouse over it."""
    left, top, width, height = attributes(desktop)
    desktop.move(left + width / 2, top + height - 20)
    return desktop.picture(name, (left, top, width, height))


def open_key(desktop, order, seconds):
    desktop.press(key_place(desktop, order, seconds), times=2)
    attributes(desktop)
    time.sleep(0.3)


def line_place(desktop, line, x):
    """So many pixels from the window's left edge."""
    left, top, _, _ = attributes(desktop)
    return left + x, top + LIST_EDGE + ROW_HEIGHT * (line + 0.5)


def press_line(desktop, line):
    desktop.press(line_place(desktop, line, 70))
    time.sleep(0.2)


def enter(desktop):
    """From a line of the window: writes the key and closes."""
    desktop.key("Return")
    window_is_closed(desktop)


def window_is_closed(desktop):
    desktop.until("the window closes", lambda s: not window_of(s, TITLE))


def browse(desktop, line):
    """Presses the "..." of a line; the title of what it opens."""
    press_line(desktop, line)
    before = {w["title"] for w in desktop.look()["windows"]}
    desktop.click_button("...")
    title = desktop.until("a browser", lambda s: next(
        (w["title"] for w in s["windows"] if w["title"] and w["title"] not in before), None))
    time.sleep(0.5)
    return title
