#!/usr/bin/env python3
"""Drags a model from the panel of assets into a view with the real mouse, and takes it back."""

import shutil
import sys
import tempfile
import time
from pathlib import Path

from desktop import Desktop, Failure, arguments_of, check, find
from guide_pictures import assets_open

NEAR_PIXELS = 12  # from where the mouse let go to where the model's place is seen
STEP_SECONDS = 0.04  # a drag is told from window to window, which takes its time


def places(state):
    return state["views"][0]["onScreen"]


def search_for(desktop, text):
    """Types into the panel's field, the upmost that is on the screen."""
    shown = [f["rect"] for f in desktop.look()["fields"] if min(f["rect"][:2]) >= 0]
    desktop.click(min(shown, key=lambda rect: rect[1]), times=3)
    desktop.x("type", text)


def drag_into_view(desktop, start, end, words, steps=15):
    desktop.move(*start)
    desktop.x("mousedown", 1)
    for i in range(1, steps + 1):
        desktop.move(*(a + (b - a) * i / steps for a, b in zip(start, end)))
        time.sleep(STEP_SECONDS)
    desktop.until(f"it says: {words}", lambda s: s["ownMode"].startswith(words))
    desktop.picture("dragged")
    desktop.x("mouseup", 1)
    desktop.until("what was said is gone", lambda s: s["ownMode"] == "")


def model_is_dropped(desktop):
    assets_open(desktop)
    search_for(desktop, "suitcase")
    desktop.until("one model is found", lambda s: not find(s["items"], "barrel") and find(s["items"], "suitcase"))
    time.sleep(1)
    x, y, width, height = desktop.item("suitcase")["rect"]
    before = set(desktop.look()["objects"])
    left, top, wide, high = desktop.look()["views"][0]["rect"]
    target = (left + wide * 0.5, top + high * 0.7)
    drag_into_view(desktop, (x + width / 2, y + height / 2), target, "Drop to place suitcase here")
    name = desktop.until("a new object", lambda s: next(iter(set(s["objects"]) - before), None))
    check(name.startswith("suitcase"), f"the new object is called {name}")
    place = places(desktop.look())[name]
    off = max(abs(place[0] - target[0]), abs(place[1] - target[1]))
    check(off <= NEAR_PIXELS, f"it stands {off:.0f} pixels from where it was dropped")
    check(desktop.look()["selected"] == [name], "it is selected")
    desktop.picture("dropped")
    return before


def drop_is_undone(desktop, before):
    desktop.key("ctrl+z")
    desktop.until("the model is gone again", lambda s: set(s["objects"]) == before)
    desktop.picture("undone")


def sound_is_not_taken(desktop):
    search_for(desktop, "bell")
    desktop.until("the sound is found", lambda s: find(s["items"], "bell"))
    x, y, width, height = desktop.item("bell")["rect"]
    before = set(desktop.look()["objects"])
    left, top, wide, high = desktop.look()["views"][0]["rect"]
    drag_into_view(desktop, (x + width / 2, y + height / 2), (left + wide / 2, top + high * 0.7),
                   "Sounds can't stand in a view")
    time.sleep(1)
    check(set(desktop.look()["objects"]) == before, "a sound is no object")


def main():
    arguments = arguments_of(__doc__, "out/assets").parse_args()
    with tempfile.TemporaryDirectory(prefix="films_assets_") as work:
        copy = Path(work) / "level"
        shutil.copytree(Path(arguments.level).parent, copy)
        with Desktop(Path(arguments.stage).resolve(), copy / Path(arguments.level).name, work,
                     arguments.screenshots) as desktop:
            try:
                desktop.until("the level is open", lambda s: s.get("objects"))
                before = model_is_dropped(desktop)
                drop_is_undone(desktop, before)
                sound_is_not_taken(desktop)
            except Failure as failure:
                desktop.picture("failure")
                print(f"FAILED: {failure}", file=sys.stderr)
                return 1
    print("ok")
    return 0


if __name__ == "__main__":
    sys.exit(main())
