"""What the level holds, what Stage says of it, and what a save writes."""

import time
from pathlib import Path

from desktop import Failure

UNDO, REDO, OTHER_REDO = "ctrl+z", "ctrl+shift+z", "ctrl+y"
MOTION_SECONDS = 0.4  # the sample's actors move in any stretch of this length while it plays
NEAR = 0.01  # centimetres, for places that went through files and dialogs


def poses(desktop):
    return desktop.look()["objects"]


def place_of(desktop, name):
    return poses(desktop)[name]


def near(first, second, tolerance=NEAR):
    """Whether two places are less than `tolerance` centimetres apart on each axis."""
    return all(abs(a - b) <= tolerance for a, b in zip(first, second, strict=True))


def is_moving(desktop):
    before = poses(desktop)
    time.sleep(MOTION_SECONDS)
    return poses(desktop) != before


def expect_selected(desktop, *names):
    desktop.until(" and ".join(names) + " selected", lambda s: sorted(s["selected"]) == sorted(names))


def expect_status(desktop, text):
    try:
        desktop.until(f"the status bar says '{text}'", lambda s: text in s["status"])
    except Failure as failure:
        raise Failure(f"{failure}; it says '{desktop.look()['status']}'") from failure


def by_key(desktop):
    desktop.key("ctrl+s")


def by_button(desktop):
    desktop.click_button("Save")


def saved(desktop, save=by_key):
    """What a save writes, as bytes."""
    path = Path(desktop.level)
    before = path.stat().st_mtime_ns
    save(desktop)
    desktop.until("the level is saved", lambda _: path.stat().st_mtime_ns != before)
    return path.read_bytes()
