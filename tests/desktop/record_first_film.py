#!/usr/bin/env python3
"""Follows "Your first film in ten minutes" of the user guide, step by step, with real mouse and keys."""

from pathlib import Path

from desktop import check, middle
from dialogs import opens_with
from level import place_of
from menus import choose
from object_list import search, select_in_list
from opening import film_is_made
from runner import run
from timeline import (CAMERA_ROW, MAIN_CONTROL, animate_on, camera_frame, press_name, ruler, scenario, stands_still,
                      tracks)
from views import attach_to_film, drag_handle, orbit, places, view

GUIDE = Path(__file__).resolve().parents[2] / "docs" / "USER_GUIDE.md"
FILM, BOAT = "My first film", "Fishing boat"


def guide_steps():
    """The numbered steps, each as one line."""
    section = GUIDE.read_text().split("## Your first film in ten minutes")[1].split("\n## ")[0]
    steps = []
    for line in section.splitlines():
        if line.split(".")[0].isdigit():
            steps.append(line.split(". ", 1)[1])
        elif steps and line.startswith("   "):
            steps[-1] += " " + line.strip()
    return steps


def turn_view(desktop, by):
    before = places(desktop.look())
    orbit(desktop, by, 0)
    desktop.until("the view has turned", lambda s: places(s) != before)


def open_level(desktop):
    desktop.key("ctrl+o")
    opens_with(desktop, "Open")
    desktop.type(str(desktop.level))
    desktop.key("Return")
    desktop.until("the level is open", lambda s: BOAT in s.get("objects", {}))


def look_for_begin(desktop):
    turn_view(desktop, 90)
    desktop.wheel(middle(view(desktop)), 3)


def new_film(desktop):
    film_is_made(desktop, FILM)


def click_camera(desktop):
    press_name(desktop, tracks(desktop.look())[CAMERA_ROW])


def press_ruler(desktop):
    desktop.click(ruler(desktop))


def second_place(desktop):
    turn_view(desktop, -160)
    camera_frame(desktop)


def move_boat(desktop):
    before = place_of(desktop, BOAT)
    search(desktop, "Fishing")
    select_in_list(desktop, BOAT)
    desktop.click_button("Move")
    handles = desktop.until("the arrows are there", lambda s: s["views"][0]["handles"])
    x, y, width, height = view(desktop)
    seen = [axis for axis in (0, 2) if x < handles[axis][0] < x + width and y < handles[axis][1] < y + height]
    check(seen, "an arrow of the boat can be seen")
    drag_handle(desktop, seen[0], 40)
    desktop.until("the boat has moved", lambda s: s["objects"][BOAT] != before)


def play(desktop):
    window = scenario(desktop.look())
    bar = next(c for c in window["children"] if c["id"] != MAIN_CONTROL)["rect"]
    buttons = sorted((b for b in desktop.look()["buttons"] if bar[1] <= b["rect"][1] < bar[1] + bar[3]
                      and b["rect"][2] < 40 and b["rect"][0] >= window["rect"][0]), key=lambda b: b["rect"][0])
    before = place_of(desktop, BOAT)
    desktop.click(buttons[2]["rect"])  # the first behind undo and redo
    desktop.until("the boat is back", lambda s: s["objects"][BOAT] != before)
    start = place_of(desktop, BOAT)
    desktop.key("ctrl+Return")
    desktop.until("the boat moves", lambda s: s["objects"][BOAT] != start)
    desktop.picture("playing")
    stands_still(desktop)


def save_as(desktop):
    choose(desktop, "f", "Save as...")
    opens_with(desktop, "Save")
    path = desktop.level.parent / "mine.level"
    desktop.type_over(str(path))
    desktop.key("Return")
    desktop.until("the level is saved", lambda _: path.exists())
    check(FILM.encode() in path.read_bytes(), "the film is in the saved level")


DOINGS = [open_level, look_for_begin, new_film, click_camera, press_ruler, second_place, animate_on, move_boat,
          attach_to_film, play, save_as]


def told(number, text, do):
    """The guide's step, its words before it is done and a picture behind."""
    def step(desktop):
        print(f"{number}. {text}", flush=True)
        do(desktop)
        desktop.picture(do.__name__)
    step.__name__ = do.__name__
    return step


def as_many(_):
    check(len(guide_steps()) == len(DOINGS), f"the guide has {len(guide_steps())} steps, the script {len(DOINGS)}")


STEPS = [as_many, *(told(number, *both) for number, both in enumerate(zip(guide_steps(), DOINGS), 1))]


if __name__ == "__main__":
    run(__doc__, "out/first_film", STEPS)
