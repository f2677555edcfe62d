#!/usr/bin/env python3
"""Drags a model from the panel of assets into a view with the real mouse, and takes it back."""

import time

from desktop import check, find, middle
from level import UNDO
from opening import assets_open, level_opens
from runner import run
from views import places, view

NEAR_PIXELS = 12  # from where the mouse let go to where the model's place is seen
STEP_SECONDS = 0.04  # a drag is told from window to window, which takes its time


def search_for(desktop, text):
    """Types into the panel's field, the upmost that is on the screen."""
    shown = [f["rect"] for f in desktop.look()["fields"] if min(f["rect"][:2]) >= 0]
    desktop.click(min(shown, key=lambda rect: rect[1]), times=3)
    desktop.type(text)
    desktop.item(text)


def drag_into_view(desktop, name, target, words):
    desktop.pull(middle(desktop.item(name)["rect"]), target, steps=15, pause=STEP_SECONDS)
    desktop.until(f"it says: {words}", lambda s: s["ownMode"].startswith(words))
    desktop.picture("dragged")
    desktop.release()
    desktop.until("what was said is gone", lambda s: s["ownMode"] == "")


def target_in(desktop):
    """A place on the ground."""
    left, top, width, height = view(desktop)
    return left + width * 0.5, top + height * 0.7


def model_is_dropped(desktop):
    assets_open(desktop)
    search_for(desktop, "suitcase")
    desktop.until("one model is found", lambda s: not find(s["items"], "barrel") and find(s["items"], "suitcase"))
    time.sleep(1)
    before = set(desktop.look()["objects"])
    target = target_in(desktop)
    drag_into_view(desktop, "suitcase", target, "Drop to place suitcase here")
    new = desktop.until("a new object", lambda s: set(s["objects"]) - before)
    check(len(new) == 1, f"one object is new, not {new}")
    name = new.pop()
    check(name.startswith("suitcase"), f"the new object is called {name}")
    place = places(desktop.look())[name]
    off = max(abs(place[0] - target[0]), abs(place[1] - target[1]))
    check(off <= NEAR_PIXELS, f"it stands {off:.0f} pixels from where it was dropped")
    check(desktop.look()["selected"] == [name], "it is selected")
    desktop.picture("dropped")


def drop_is_undone(desktop):
    model = desktop.look()["selected"][0]
    others = set(desktop.look()["objects"]) - {model}
    desktop.key(UNDO)
    desktop.until("the model is gone again", lambda s: set(s["objects"]) == others)
    desktop.picture("undone")


def sound_is_not_taken(desktop):
    search_for(desktop, "bell")
    before = set(desktop.look()["objects"])
    drag_into_view(desktop, "bell", target_in(desktop), "Sounds can't stand in a view")
    time.sleep(1)
    check(set(desktop.look()["objects"]) == before, "a sound is no object")


STEPS = [level_opens, model_is_dropped, drop_is_undone, sound_is_not_taken]


if __name__ == "__main__":
    run(__doc__, "out/assets", STEPS)
