"""The list of objects, at the left edge."""

import time

from desktop import Failure, find
from level import expect_selected

RIGHT = 400  # in pixels of the screen: lists further right are others
LEAST_HEIGHT = 15  # in pixels, of a row that is whole


def row(state, name):
    return find(shown(state), name)


def shown(state):
    """The rows on show, from the top."""
    return [item for item in state["items"] if item["rect"][0] < RIGHT]


def indent(state, name):
    found = row(state, name)
    return found["rect"][0] if found else None


def rect_of(desktop, name):
    return desktop.until(f"row of {name}", lambda s: row(s, name))["rect"]


def handle_of(rect):
    """Where a row is dragged: on its text, which may be much shorter than the row."""
    return rect[0] + min(rect[2], 80) / 2, rect[1] + rect[3] / 2


def select_in_list(desktop, name):
    desktop.click(rect_of(desktop, name))
    expect_selected(desktop, name)


def select_both(desktop, first, second):
    select_in_list(desktop, first)
    with desktop.held("ctrl"):
        desktop.click(rect_of(desktop, second))
    expect_selected(desktop, first, second)


def search(desktop, text):
    """Lists only objects with that text in their names; all for an empty one."""
    field = next(f for f in desktop.look()["fields"] if 0 < f["rect"][0] < RIGHT and f["rect"][1] > 0)
    desktop.click(field["rect"])
    desktop.key("ctrl+a")
    if text:
        desktop.type(text)
    else:
        desktop.key("BackSpace")


def select_by_search(desktop, name):
    """Once it stands at the top, with its parents at most above it."""
    search(desktop, name)
    entry = desktop.until(f"{name} alone in the list", lambda s: find_at_top(s, name))
    desktop.click(entry["rect"])
    expect_selected(desktop, name)


def find_at_top(state, name):
    whole = [row for row in shown(state) if row["rect"][3] > LEAST_HEIGHT]
    return find(whole[:2], name)


def select_by_wheel(desktop, name):
    """Turns the wheel over the list until the row is whole in it."""
    for _ in range(20):
        rows = shown(desktop.look())
        found = find(rows, name)
        if found and found["rect"][3] > LEAST_HEIGHT:
            desktop.click(found["rect"])
            expect_selected(desktop, name)
            return
        left, top, width, _ = rows[0]["rect"]
        desktop.wheel((left + width / 2, top + 30), -2)
        time.sleep(0.1)
    raise Failure(f"the list has no {name}")


def pull_row(desktop, name, end):
    """Drags a row to a place without letting go."""
    desktop.pull(handle_of(rect_of(desktop, name)), end, steps=8, pause=0.03)


def drag_row(desktop, name, end):
    pull_row(desktop, name, end)
    desktop.release()


def stands_below(state, name, indentation):
    """Whether the row is listed and stands further in than that."""
    return (indent(state, name) or 0) > indentation
