#!/usr/bin/env python3
"""Animates a prop and a camera from nothing to a film that plays, with the mouse alone, and records it in pictures.

    python3 tests/desktop/record_session.py --stage build/debug/bin/stage --level examples/harbour/harbour.level
"""

import shutil
import sys
import tempfile
import time
from pathlib import Path

from check_desktop import MAIN_CONTROL, at, child, is_moving, panel_opens, poses, rows, ruler, scenario
from desktop import Desktop, Failure, arguments_of, check, find

PROP = "Fishing boat"
FILM_SECONDS = 10.0
LEVEL_ROW, SUN_ROW = 0, 1


def pointer_at(desktop, seconds):
    """The column of a time; the new film shows all of its ten seconds."""
    rect = ruler(desktop)
    return rect[0] + 1 + seconds / FILM_SECONDS * (rect[2] - 2)


def go_to(desktop, seconds):
    rect = ruler(desktop)
    place = pointer_at(desktop, seconds), rect[1] + rect[3] / 2
    from_right = seconds < FILM_SECONDS / 2
    desktop.drag((place[0] + (30 if from_right else -30), place[1]), place)
    time.sleep(0.2)


def row(desktop, order):
    return rows(desktop.look())[order]["rect"]


def key_place(desktop, order, seconds):
    x, y, _, height = row(desktop, order)
    return pointer_at(desktop, seconds), y + height / 2


def unfold(desktop, order):
    desktop.click(rows(desktop.look())[order]["children"][0]["rect"])
    time.sleep(0.3)


def menu_at(desktop, place, *texts):
    """Opens the context menu at a place and follows the entries."""
    desktop.move(*place)
    desktop.x("click", 3)
    for text in texts:
        entry = desktop.until(f"menu entry '{text}'", lambda s: find(s["menus"], text))
        check(entry["enabled"], f"'{text}' can be chosen")
        if text is texts[-1]:
            desktop.picture("menu_" + text.lower().replace(" ", "_"))
        desktop.click(entry["rect"])
    time.sleep(0.3)


def empty_place(desktop):
    control = child(scenario(desktop.look()), MAIN_CONTROL)["rect"]
    return control[0] + control[2] / 2, control[1] + control[3] - 30


def drag_handle(desktop, axis, pixels, shot=None):
    """Pulls the selection's handle of an axis outwards."""
    view = desktop.look()["views"][0]
    start = view["handles"][axis]
    selected = desktop.look()["selected"][0]
    origin = view["onScreen"][selected]
    length = max(1.0, ((start[0] - origin[0]) ** 2 + (start[1] - origin[1]) ** 2) ** 0.5)
    end = [s + (s - o) / length * pixels for s, o in zip(start, origin)]
    desktop.move(*start)
    desktop.x("mousedown", 1)
    for i in range(1, 13):
        desktop.move(*(a + (b - a) * i / 12 for a, b in zip(start, end)))
    if shot:
        desktop.picture(shot)
    desktop.x("mouseup", 1)
    time.sleep(0.3)


def select(desktop, name):
    x, y = desktop.look()["views"][0]["onScreen"][name]
    desktop.move(x, y - 2)
    desktop.x("click", 1)
    desktop.until(f"{name} is selected", lambda s: s["selected"] == [name])


def new_film(desktop):
    desktop.until("the level", lambda s: len(s.get("objects", {})) > 5)
    panel_opens(desktop)
    before = {item["text"] for item in desktop.look()["items"]}
    desktop.click(desktop.button("Add")["rect"])
    name = desktop.until("a new film", lambda s: s["film"] if s["film"] and s["film"] not in before else None)
    desktop.click(desktop.item(name)["rect"], times=2)
    desktop.until("the scenario window", lambda s: (scenario(s) or {}).get("shown"))
    desktop.picture("new_film")


def animate_on(desktop):
    desktop.click(desktop.button("Animate object")["rect"])
    desktop.until("it is pressed", lambda s: find(s["buttons"], "Animate object")["checked"])


def move_the_prop(desktop):
    select(desktop, PROP)
    desktop.click(desktop.button("Focus")["rect"])
    time.sleep(0.4)
    go_to(desktop, 2.0)
    drag_handle(desktop, 0, 90, "prop_dragged")
    state = desktop.until("the prop is an actor", lambda s: s if len(rows(s)) > 2 else None)
    check(len(rows(state)) == 3, "level, sun and the prop")
    go_to(desktop, 5.0)
    drag_handle(desktop, 2, 70)
    go_to(desktop, 8.0)
    drag_handle(desktop, 1, 60)
    desktop.picture("prop_has_keys")


def turn_and_scale_the_prop(desktop):
    desktop.click(desktop.button("Scale")["rect"])
    drag_handle(desktop, 1, 40, "prop_scaled")
    desktop.click(desktop.button("Move")["rect"])


def edit_keys(desktop):
    unfold(desktop, 2)
    desktop.picture("prop_unfolded")
    position = 3
    start, end = key_place(desktop, position, 2.0), key_place(desktop, position, 3.0)
    desktop.drag(start, end, steps=30)
    desktop.move(*empty_place(desktop))
    desktop.picture("key_dragged")
    desktop.move(*key_place(desktop, position, 5.0))
    desktop.x("keydown", "shift", "mousedown", 1)
    for i in range(1, 21):
        desktop.move(pointer_at(desktop, 5.0 + 1.4 * i / 20), key_place(desktop, position, 5.0)[1])
    desktop.picture("clone_in_flight")
    desktop.x("mouseup", 1, "keyup", "shift")
    desktop.picture("cloned")
    menu_at(desktop, key_place(desktop, position, 8.0), "In method", "Linear")


def move_a_group(desktop):
    """The keys that stand at eight seconds, of two rows, go on together."""
    for order in (3, 5):
        desktop.x("keydown", "ctrl")
        desktop.move(*key_place(desktop, order, 8.0))
        desktop.x("click", 1, "keyup", "ctrl")
    desktop.picture("marked")
    desktop.drag(key_place(desktop, 3, 8.0), key_place(desktop, 3, 9.0), steps=30)
    desktop.move(*empty_place(desktop))
    desktop.picture("group_moved")


def snaps_back(desktop):
    desktop.click(desktop.button("Animate object")["rect"])
    go_to(desktop, 5.0)
    before = poses(desktop)[PROP]
    drag_handle(desktop, 0, 80)
    check(poses(desktop)[PROP] == before, "an actor snaps back while nothing is animated")
    desktop.picture("snapped_back")


def add_camera(desktop):
    unfold(desktop, 2)
    go_to(desktop, 0.0)
    menu_at(desktop, empty_place(desktop), "Add camera")
    desktop.picture("add_camera")
    desktop.click(desktop.button("OK")["rect"])
    desktop.until("the camera's rows", lambda s: len(rows(s)) == 8)
    x, y, _, height = row(desktop, 2)
    desktop.move(x + 60, y + height / 2)
    desktop.x("click", 1)
    time.sleep(0.4)
    desktop.picture("camera_in_view")


def orbit(desktop, x, y):
    view = desktop.look()["views"][0]["rect"]
    middle = view[0] + view[2] / 2, view[1] + view[3] / 2
    desktop.move(*middle)
    desktop.x("mousedown", 2)
    for i in range(1, 11):
        desktop.move(middle[0] + x * i / 10, middle[1] + y * i / 10)
    desktop.x("mouseup", 2)
    time.sleep(0.3)


def step_back(desktop, clicks):
    view = desktop.look()["views"][0]["rect"]
    desktop.move(view[0] + view[2] / 2, view[1] + view[3] / 2)
    for _ in range(clicks):
        desktop.x("click", 5)
        time.sleep(0.05)
    time.sleep(0.3)


def camera_frames(desktop):
    for seconds, turn in ((4.0, (120, 0)), (8.0, (120, 40))):
        orbit(desktop, *turn)
        go_to(desktop, seconds)
        desktop.click(desktop.button("Create camera frame")["rect"])
        time.sleep(0.3)
    orbit(desktop, -200, 40)
    step_back(desktop, 8)
    desktop.picture("camera_path")


def drag_the_eye(desktop):
    go_to(desktop, 6.0)
    select(desktop, "CameraPositionEditorObject")
    desktop.click(desktop.button("Focus")["rect"])
    time.sleep(0.4)
    drag_handle(desktop, 1, 80, "eye_dragged")
    desktop.picture("eye_key")


def pull_a_handle(desktop):
    """The eye's key of four seconds gets a handle of its own."""
    eye = 3
    menu_at(desktop, key_place(desktop, eye, 4.0), "Out method", "User")
    go_to(desktop, 4.0)
    select(desktop, "PosOutControlPoint")
    desktop.click(desktop.button("Focus")["rect"])
    time.sleep(0.4)
    drag_handle(desktop, 0, 100)
    step_back(desktop, 13)
    desktop.picture("handle_pulled")


def play(desktop):
    go_to(desktop, 0.0)
    desktop.click(desktop.item(PROP)["rect"])
    desktop.click(desktop.button("Focus")["rect"])
    desktop.click(desktop.button("Play movie")["rect"])
    desktop.until("the film plays", lambda _: is_moving(desktop))
    for name in ("playing_early", "playing_middle", "playing_late"):
        desktop.picture(name)
        time.sleep(2.0)
    desktop.until("the film ends", lambda _: not is_moving(desktop))
    desktop.picture("played")


STEPS = [new_film, animate_on, move_the_prop, turn_and_scale_the_prop, edit_keys, move_a_group, snaps_back, add_camera,
         camera_frames, drag_the_eye, pull_a_handle, play]


def main():
    arguments = arguments_of(__doc__, "out/session").parse_args()
    with tempfile.TemporaryDirectory(prefix="films_session_") as work:
        copy = Path(work) / "level"
        shutil.copytree(Path(arguments.level).parent, copy)
        with Desktop(Path(arguments.stage).resolve(), copy / Path(arguments.level).name, work,
                     arguments.screenshots) as desktop:
            for step in STEPS:
                try:
                    step(desktop)
                except Failure as error:
                    desktop.picture("failed")
                    print(f"FAILED  {step.__name__}: {error}")
                    print((Path(work) / "stage.log").read_text()[-2000:])
                    return 1
                print(f"ok      {step.__name__}", flush=True)
    return 0


if __name__ == "__main__":
    sys.exit(main())
