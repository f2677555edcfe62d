"""The window Scenario: where its rows, keys and times are on the screen, and hands on them."""

import time

from desktop import Failure, middle
from level import is_moving

# Control numbers of the window's parts.
MAIN_CONTROL, RULER, ROW = 1234, 20, 55
HOVER_SECONDS = 0.9  # the description of a key comes after half a second
LEVEL_ROW, CAMERA_ROW = 0, 2  # with all rows folded; the sun is between them


def scenario(state):
    return next((t for t in state["toolWindows"] if t["title"] == "Scenario"), None)


def shown_scenario(state):
    window = scenario(state)
    return window if window and window["shown"] else None


def child(parent, number):
    return next(c for c in parent["children"] if c["id"] == number)


def frame(desktop):
    return scenario(desktop.look())["frame"]


def main_control(state):
    return child(scenario(state), MAIN_CONTROL)


# Rows


def rows(state):
    """The rows that are shown, from the top."""
    return sorted((c for c in main_control(state)["children"] if c["id"] == ROW), key=lambda c: c["rect"][1])


def row(desktop, order):
    """The row at that place from the top."""
    return rows(desktop.look())[order]["rect"]


def row_middle(desktop, order):
    return middle(row(desktop, order))[1]


def count_rows(desktop, what, number):
    desktop.until(f"{what}: {number} rows", lambda s: len(rows(s)) == number)


def on_row(desktop, order):
    """A place on a row that is free of keys: close to its right end."""
    x, _, width, _ = row(desktop, order)
    return x + width - 12, row_middle(desktop, order)


def press_name(desktop, order):
    """Selects the row's object, or shows its camera."""
    desktop.press((row(desktop, order)[0] + 60, row_middle(desktop, order)))


def empty_place(desktop):
    x, y, width, height = main_control(desktop.look())["rect"]
    return x + width / 2, y + height - 30


def tracks(state):
    """The rows of tracks, from the top: which of all rows they are."""
    return [i for i, r in enumerate(rows(state)) if r["children"]]


def unfold(desktop, order):
    """Presses the button of a row's track, which folds it if it is unfolded."""
    desktop.click(rows(desktop.look())[order]["children"][0]["rect"])
    time.sleep(0.3)


def unfolded_row(desktop):
    """The row of the track that is unfolded."""
    return next(i for i, r in enumerate(rows(desktop.look())) if r["children"] and r["children"][0]["text"] == "-")


def to_top(desktop):
    """Turns the wheel until the level's row is at the top."""
    left, _, width, _ = row(desktop, 0)
    desktop.wheel((left + width - 60, row_middle(desktop, 0)), 20, delay=20)
    time.sleep(0.3)


def fold_all(desktop):
    to_top(desktop)
    while any(not r["children"] for r in rows(desktop.look())):
        unfold(desktop, unfolded_row(desktop))
        to_top(desktop)


def scroll_until_room(desktop, most):
    """Turns the wheel until the unfolded track is no further down than row `most`."""
    for _ in range(20):
        if unfolded_row(desktop) <= most:
            return
        desktop.wheel(key_place(desktop, unfolded_row(desktop), 9.0), -1)
        time.sleep(0.2)
    raise Failure("the rows can't be scrolled")


def taller_window(desktop):
    """Pulls up the window's upper edge."""
    left, top, width, _ = frame(desktop)
    desktop.drag((left + width / 2, top - 3), (left + width / 2, 330))
    desktop.until("the scenario window is taller", lambda s: scenario(s)["frame"][1] < 365)


# Times


def ruler(desktop):
    return child(main_control(desktop.look()), RULER)["rect"]


def at(rect, fraction):
    """A place in the ruler; 0 is the first pixel, 1 the last."""
    return rect[0] + 1 + min(fraction * (rect[2] - 2), rect[2] - 3), rect[1] + rect[3] / 2


def drag_time(desktop, start, end):
    """From one fraction of the ruler to another."""
    rect = ruler(desktop)
    desktop.drag(at(rect, start), at(rect, end))


def time_place(desktop, seconds):
    """In the ruler."""
    return at(ruler(desktop), seconds / desktop.shown_seconds)


def go_to(desktop, seconds):
    """Drags to a time, over thirty pixels from the side where there is room."""
    place = time_place(desktop, seconds)
    from_right = seconds < desktop.shown_seconds / 2
    desktop.drag((place[0] + (30 if from_right else -30), place[1]), place)
    time.sleep(0.2)


def key_place(desktop, order, seconds):
    """A time in a row."""
    return time_place(desktop, seconds)[0], row_middle(desktop, order)


def camera_frame(desktop):
    """A key of the camera, from the view."""
    desktop.click_button("Create camera frame")
    time.sleep(0.3)


def animate_on(desktop):
    """Presses "Animate object" if it isn't pressed."""
    if not desktop.button("Animate object")["checked"]:
        desktop.click_button("Animate object")
        desktop.until("it is pressed", lambda _: desktop.button("Animate object")["checked"])


def plays(desktop):
    desktop.until("the film plays", lambda _: is_moving(desktop))


def plays_in_pictures(desktop, pause):
    """Presses "Play movie" and takes three pictures, so many seconds apart."""
    desktop.click_button("Play movie")
    plays(desktop)
    for name in ("playing_early", "playing_middle", "playing_late"):
        desktop.picture(name)
        time.sleep(pause)


def stands_still(desktop):
    desktop.until("the film stands still", lambda _: not is_moving(desktop))
