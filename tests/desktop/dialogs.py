"""Boxes: what stands in them, and their keys and buttons. A box is told by its title."""

import time

from desktop import Failure, different_pixels

MESSAGE = "Stage"  # the title of message boxes
TITLE_HEIGHT = 24  # of the window manager's, in pixels


def window_of(state, title):
    return next((w["rect"] for w in state["windows"] if w["title"] == title), None)


def lies_in(entry, window):
    (x, y), (left, top, width, height) = entry["rect"][:2], window
    return left <= x < left + width and top <= y < top + height


def inside(desktop, title, text):
    """The last entry or button of that text in the window of that title: lists above it in a popup come first."""
    def look(state):
        window = window_of(state, title)
        found = [e for e in state["items"] + state["buttons"] if e["text"] == text and window and lies_in(e, window)]
        return found[-1] if found else None
    return desktop.until(f"'{text}' in '{title}'", look)


def opens(desktop, title, name=None):
    """Waits for a dialog and takes its picture where a name is given."""
    rect = desktop.until(f"'{title}'", lambda s: window_of(s, title))
    if name:
        portrait(desktop, title, name)
    return rect


def opens_with(desktop, part):
    """Waits for a dialog with these letters in its title; the title."""
    return desktop.until(f"a box called ..{part}..", lambda s: next(
        (w["title"] for w in s["windows"] if part in w["title"]), None))


def closes(desktop, title):
    desktop.until(f"'{title}' closes", lambda s: not window_of(s, title))
    time.sleep(0.3)


def portrait(desktop, title, name):
    """A picture of a dialog, with its title bar."""
    x, y, width, height = opens(desktop, title)
    return desktop.picture(name, (x - 2, y - TITLE_HEIGHT, width + 4, height + TITLE_HEIGHT + 2))


# Buttons


def press(desktop, title, text):
    desktop.click(inside(desktop, title, text)["rect"])


def press_and_close(desktop, title, text):
    press(desktop, title, text)
    closes(desktop, title)


def press_box(desktop, title, text):
    """A check box or radio button, which becomes checked."""
    x, y, _, height = inside(desktop, title, text)["rect"]
    desktop.press((x + 8, y + height / 2))
    desktop.until(f"'{text}' is checked", lambda _: inside(desktop, title, text)["checked"])


def accept(desktop, title):
    desktop.key("Return")
    closes(desktop, title)


def leave(desktop, title):
    desktop.key("Escape")
    closes(desktop, title)


def refused(desktop, words, name):
    """A message that Enter takes away."""
    desktop.until(f"a message that {words}", lambda s: window_of(s, MESSAGE))
    portrait(desktop, MESSAGE, name)
    accept(desktop, MESSAGE)


# Fields


def fields_in(state, title):
    """The fields for typing in the window of that title, from the top and the left."""
    window = window_of(state, title)
    return sorted((f for f in state["fields"] if lies_in(f, window)), key=lambda f: (f["rect"][1], f["rect"][0]))


def type_text(desktop, text):
    desktop.type(text)
    time.sleep(0.2)


def fill(desktop, title, texts):
    """Types over the fields of these numbers. The first has the focus and its text selected, as it must."""
    desktop.until(f"the focus in the first field of '{title}'", lambda s: fields_in(s, title)[0]["focused"])
    for number, text in texts.items():
        if number > 0:
            desktop.click(fields_in(desktop.look(), title)[number]["rect"])
            desktop.key("ctrl+a")
        type_text(desktop, text)
    desktop.until(f"'{title}' shows what was typed", lambda s: all(
        fields_in(s, title)[number]["text"] == text for number, text in texts.items()))


def type_over(desktop, title, number, text):
    """Types over a field that may have been used before, once more if the box was not ready for it yet."""
    for _ in range(3):
        desktop.click(fields_in(desktop.look(), title)[number]["rect"])
        desktop.key("ctrl+a")
        type_text(desktop, text)
        time.sleep(0.3)
        if fields_in(desktop.look(), title)[number]["text"] == text:
            return
    raise Failure(f"'{title}' does not take '{text}'")


def enter_colour(desktop, title, code):
    """By its code, in a box for colours, which stays open."""
    opens(desktop, title)
    desktop.key("alt+h")
    desktop.key("ctrl+a")
    type_text(desktop, code)


# Files


def choose_file(desktop, title, path, button):
    """Types the path of a file. A first press on the button may only put a list of completions away."""
    opens(desktop, title)
    type_text(desktop, str(path))
    found = inside(desktop, title, button)["rect"]
    desktop.click(found)
    end = time.monotonic() + 1
    while window_of(desktop.look(), title) and time.monotonic() < end:
        time.sleep(0.05)
    if window_of(desktop.look(), title):
        desktop.click(found)
    closes(desktop, title)


def answer_file(desktop, title, text):
    """Types a path, or several in quotes, and Enter into a box for files once that listens."""
    desktop.until(f"'{title}' listens", lambda s: window_of(s, title) and any(
        f["focused"] for f in fields_in(s, title)))
    for _ in range(3):
        desktop.key("ctrl+a")
        type_text(desktop, text)
        if any(f["focused"] and f["text"] == text for f in fields_in(desktop.look(), title)):
            break
    desktop.key("Return")
    time.sleep(0.3)
    if window_of(desktop.look(), title):  # the first press may only put a list of completions away
        desktop.key("Return")
    closes(desktop, title)


# Pictures


def changes(desktop, before, name, rect, pixels):
    """Waits until that part of the display differs from an earlier picture by more than so many pixels."""
    desktop.until(f"{name} differs from {before.name} by {pixels} pixels",
                  lambda _: different_pixels(before, desktop.picture(name, rect)) > pixels)
