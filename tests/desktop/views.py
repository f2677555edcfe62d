"""Hands in the first view: selecting, the handles of the selection, turning and going away."""

import time

from desktop import middle
from level import expect_selected
from menus import choose_at


def view(desktop):
    return desktop.look()["views"][0]["rect"]


def view_picture(desktop, name):
    return desktop.picture(name, view(desktop))


def places(state):
    """Where the objects before the camera are on the screen."""
    return state["views"][0]["onScreen"]


def select(desktop, name):
    x, y = places(desktop.look())[name]
    desktop.press((x, y - 2))
    expect_selected(desktop, name)


def focus(desktop):
    """Brings the selection into the middle."""
    desktop.click_button("Focus")
    time.sleep(0.4)


def outwards(origin, handle, pixels):
    """The place so many pixels beyond a handle, seen from where the object stands."""
    length = max(1.0, ((handle[0] - origin[0]) ** 2 + (handle[1] - origin[1]) ** 2) ** 0.5)
    return tuple(h + (h - o) / length * pixels for h, o in zip(handle, origin))


def pull_handle(desktop, axis, pixels):
    """Pulls the selection's handle of an axis outwards without letting go."""
    state = desktop.look()
    handle = state["views"][0]["handles"][axis]
    origin = places(state)[state["selected"][0]]
    desktop.pull(handle, outwards(origin, handle, pixels))


def drag_handle(desktop, axis, pixels, shot=None):
    """Pulls the selection's handle of an axis outwards, with a picture of that name before the mouse lets go."""
    pull_handle(desktop, axis, pixels)
    if shot:
        desktop.picture(shot)
    desktop.release()
    time.sleep(0.3)


def orbit(desktop, x, y):
    """Turns the view by a drag of so many pixels."""
    start = middle(view(desktop))
    desktop.drag(start, (start[0] + x, start[1] + y), steps=10, button=2)
    time.sleep(0.3)


def step_back(desktop, notches):
    place = middle(view(desktop))
    for _ in range(notches):
        desktop.wheel(place, -1)
        time.sleep(0.05)
    time.sleep(0.3)


def sky(desktop):
    """A place where no object is."""
    x, y, width, _ = view(desktop)
    return x + width - 40, y + 40


def attach_to_film(desktop):
    """The view shows what the film's cameras see."""
    choose_at(desktop, sky(desktop), "Attach movie")
    desktop.until("the view is attached", lambda s: s["views"][0]["attached"])
