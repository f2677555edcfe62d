#!/usr/bin/env python3
"""Drags in the list of objects, the menu of the list of films, cameras of films: with real mouse and keys."""

import shutil
import sys
import tempfile
import time
from pathlib import Path

from check_desktop import film_opens, level_opens, panel_opens, program_ends
from desktop import Desktop, Failure, arguments_of, check, find

LIST_RIGHT = 400  # pixels; the list of objects is at the left edge
CHILD, PARENT, OTHER = "Crane", "Lighthouse", "Fishing boat"


def row(state, name):
    return next((i for i in state["items"] if i["text"] == name and i["rect"][0] < LIST_RIGHT), None)


def middle(rect):
    return rect[0] + min(rect[2], 80) / 2, rect[1] + rect[3] / 2


def rect_of(desktop, name):
    return desktop.until(f"row of {name}", lambda s: row(s, name))["rect"]


def indent(state, name):
    found = row(state, name)
    return found["rect"][0] if found else None


def menu(desktop, letter, text):
    desktop.key("alt+" + letter)
    desktop.click(desktop.until(f"menu entry '{text}'", lambda s: find(s["menus"], text))["rect"])


def press_and_drag(desktop, name, end, picture=None):
    desktop.move(*middle(rect_of(desktop, name)))
    desktop.x("mousedown", 1)
    x, y = middle(rect_of(desktop, name))
    for i in range(1, 9):
        desktop.move(x + (end[0] - x) * i / 8, y + (end[1] - y) * i / 8)
        time.sleep(0.03)
    if picture:
        desktop.until("it says what a drop does", lambda s: s["ownMode"].startswith("Drop onto an object"))
        desktop.picture(picture)
    desktop.x("mouseup", 1)


def a_drag_onto_an_object_makes_it_the_parent(desktop):
    before = desktop.look()
    left = indent(before, CHILD)
    press_and_drag(desktop, CHILD, middle(rect_of(desktop, PARENT)), "dragging")
    desktop.until("it stands below its parent", lambda s: indent(s, CHILD) is not None and indent(s, CHILD) > left)
    after = desktop.look()
    check(after["objects"] == before["objects"], "everything stands where it stood")
    check(after["status"] == f"{CHILD} on {PARENT}", f"the status bar says: {after['status']}")
    desktop.picture("child")


def a_drag_onto_its_own_child_is_refused(desktop):
    press_and_drag(desktop, PARENT, middle(rect_of(desktop, CHILD)))
    desktop.until("a word", lambda s: s["status"] == f"{CHILD} hangs on {PARENT}: it can't be its parent too")
    desktop.picture("refused")


def undo_takes_the_drag_back(desktop):
    left = indent(desktop.look(), PARENT)
    desktop.key("ctrl+z")
    desktop.until("it is free again", lambda s: indent(s, CHILD) == left)
    desktop.key("ctrl+y")
    desktop.until("it hangs again", lambda s: indent(s, CHILD) is not None and indent(s, CHILD) > left)


def several_are_dragged_between_rows_and_hang_on_none(desktop):
    left = indent(desktop.look(), PARENT)
    press_and_drag(desktop, OTHER, middle(rect_of(desktop, PARENT)))
    desktop.until("the second hangs too", lambda s: (indent(s, OTHER) or 0) > left)
    desktop.click(rect_of(desktop, CHILD))
    desktop.x("keydown", "ctrl")
    desktop.click(rect_of(desktop, OTHER))
    desktop.x("keyup", "ctrl")
    desktop.until("both are selected", lambda s: sorted(s["selected"]) == sorted([CHILD, OTHER]))
    top = rect_of(desktop, PARENT)
    press_and_drag(desktop, CHILD, (top[0] + 30, top[1] + 1))
    desktop.until("both are free", lambda s: indent(s, CHILD) == left and indent(s, OTHER) == left)
    desktop.picture("free")


def helpers_are_listed_when_asked_for(desktop):
    search = next(f for f in desktop.look()["fields"] if 0 < f["rect"][0] < LIST_RIGHT and f["rect"][1] > 0)
    desktop.click(search["rect"])
    desktop.x("type", "Sun")
    desktop.until("the list is searched", lambda s: row(s, CHILD) is None)
    check(row(desktop.look(), "SunHelper") is None, "helpers are not listed")
    menu(desktop, "v", "Helper objects in the list")
    desktop.until("the sun's helper", lambda s: row(s, "SunHelper"))
    desktop.picture("helpers")
    menu(desktop, "v", "Helper objects in the list")
    desktop.until("it is not listed", lambda s: row(s, "SunHelper") is None)
    desktop.click(search["rect"])
    desktop.key("ctrl+a")
    desktop.key("BackSpace")


def a_camera_is_made_at_an_object(desktop):
    desktop.click(rect_of(desktop, CHILD))
    desktop.until("it is selected", lambda s: s["selected"] == [CHILD])
    menu(desktop, "i", "Add camera at the selected object")
    desktop.until("it says so", lambda s: "stands at the object" in s["status"])
    desktop.picture("camera")


def the_list_of_films_has_a_menu(desktop):
    desktop.click(desktop.item("Intro")["rect"], button=3)
    desktop.until("the menu", lambda s: find(s["menus"], "Rename film..."))
    desktop.picture("films_menu")
    desktop.click(find(desktop.look()["menus"], "Rename film...")["rect"])
    desktop.until("the box", lambda s: any(w["title"] == "Rename film" for w in s["windows"]))
    desktop.x("type", "Opening")
    desktop.picture("rename")
    desktop.key("Return")
    desktop.item("Opening")
    desktop.click(desktop.item("Opening")["rect"], button=3)
    desktop.click(desktop.until("the menu", lambda s: find(s["menus"], "Delete film"))["rect"])
    desktop.until("it is gone", lambda s: not find(s["items"], "Opening"))
    desktop.key("ctrl+z")
    desktop.item("Opening")


STEPS = [
    level_opens,
    a_drag_onto_an_object_makes_it_the_parent,
    a_drag_onto_its_own_child_is_refused,
    undo_takes_the_drag_back,
    several_are_dragged_between_rows_and_hang_on_none,
    panel_opens,
    film_opens,
    helpers_are_listed_when_asked_for,
    a_camera_is_made_at_an_object,
    the_list_of_films_has_a_menu,
    program_ends,
]


def main():
    arguments = arguments_of(__doc__, "out/scene").parse_args()
    with tempfile.TemporaryDirectory(prefix="films_scene_") as work:
        copy = Path(work) / "level"
        shutil.copytree(Path(arguments.level).parent, copy)
        with Desktop(Path(arguments.stage).resolve(), copy / Path(arguments.level).name, work,
                     arguments.screenshots) as desktop:
            for step in STEPS:
                name = step.__name__.replace("_", " ")
                try:
                    step(desktop)
                except Exception as error:
                    print(f"FAILED  {name}: {error}", flush=True)
                    print(desktop.look()["status"], desktop.look()["selected"], flush=True)
                    desktop.picture("failed")
                    print((Path(work) / "stage.log").read_text()[-2000:])
                    return 1
                print(f"ok      {name}", flush=True)
    return 0


if __name__ == "__main__":
    sys.exit(main())
