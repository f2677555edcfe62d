#!/usr/bin/env python3
"""Animates a prop and a camera from nothing to a film that plays, with the mouse alone, and records it in pictures.

    python3 tests/desktop/record_session.py --stage build/debug/bin/stage --level examples/harbour/harbour.level
"""

import time

from desktop import check
from level import place_of
from menus import choose_at
from opening import level_opens, new_film, window_rect
from runner import run
from timeline import (CAMERA_ROW, animate_on, camera_frame, empty_place, frame, go_to, key_place, plays_in_pictures,
                      press_name, rows, stands_still, unfold)
from views import drag_handle, focus, orbit, select, step_back

PROP = "Fishing boat"
PROP_ROW = 2  # where a camera stands once there is one; below either are the rows of its keys


def move_the_prop(desktop):
    select(desktop, PROP)
    focus(desktop)
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
    desktop.click_button("Scale")
    drag_handle(desktop, 1, 40, "prop_scaled")
    desktop.click_button("Move")


def edit_keys(desktop):
    unfold(desktop, PROP_ROW)
    desktop.picture("prop_unfolded")
    position = PROP_ROW + 1
    start, end = key_place(desktop, position, 2.0), key_place(desktop, position, 3.0)
    desktop.drag(start, end, steps=30)
    desktop.move(*empty_place(desktop))
    desktop.picture("key_dragged")
    with desktop.held("shift"):
        desktop.pull(key_place(desktop, position, 5.0), key_place(desktop, position, 6.4), steps=20)
        desktop.guide_picture("clone", frame(desktop))
        desktop.release()
    desktop.picture("cloned")
    choose_at(desktop, key_place(desktop, position, 8.0), "In method", "Linear")


def move_a_group(desktop):
    """The keys that stand at eight seconds, of two rows, go on together."""
    for order in (3, 5):
        with desktop.held("ctrl"):
            desktop.press(key_place(desktop, order, 8.0))
    desktop.picture("marked")
    desktop.drag(key_place(desktop, 3, 8.0), key_place(desktop, 3, 9.0), steps=30)
    desktop.move(*empty_place(desktop))
    desktop.picture("group_moved")


def snaps_back(desktop):
    desktop.click_button("Animate object")
    go_to(desktop, 5.0)
    before = place_of(desktop, PROP)
    drag_handle(desktop, 0, 80)
    check(place_of(desktop, PROP) == before, "an actor snaps back while nothing is animated")
    desktop.picture("snapped_back")


def add_camera(desktop):
    unfold(desktop, PROP_ROW)
    go_to(desktop, 0.0)
    choose_at(desktop, empty_place(desktop), "Add camera")
    desktop.picture("add_camera")
    desktop.click_button("OK")
    desktop.until("the camera's rows", lambda s: len(rows(s)) == 8)
    press_name(desktop, CAMERA_ROW)
    time.sleep(0.4)
    desktop.picture("camera_in_view")


def camera_frames(desktop):
    for seconds, turn in ((4.0, (120, 0)), (8.0, (120, 40))):
        orbit(desktop, *turn)
        go_to(desktop, seconds)
        camera_frame(desktop)
    orbit(desktop, -200, 40)
    step_back(desktop, 8)
    desktop.picture("camera_path")


def drag_the_eye(desktop):
    go_to(desktop, 6.0)
    select(desktop, "CameraPositionEditorObject")
    focus(desktop)
    drag_handle(desktop, 1, 80, "eye_dragged")
    desktop.guide_picture("camera", window_rect(desktop))


def pull_a_handle(desktop):
    """The eye's key of four seconds gets a handle of its own."""
    eye = CAMERA_ROW + 1
    choose_at(desktop, key_place(desktop, eye, 4.0), "Out method", "User")
    go_to(desktop, 4.0)
    select(desktop, "PosOutControlPoint")
    focus(desktop)
    drag_handle(desktop, 0, 100)
    step_back(desktop, 13)
    desktop.picture("handle_pulled")


def play(desktop):
    go_to(desktop, 0.0)
    desktop.click_item(PROP)
    desktop.click_button("Focus")
    plays_in_pictures(desktop, 2.0)
    stands_still(desktop)
    desktop.picture("played")


STEPS = [level_opens, new_film, animate_on, move_the_prop, turn_and_scale_the_prop, edit_keys, move_a_group, snaps_back,
         add_camera, camera_frames, drag_the_eye, pull_a_handle, play]


if __name__ == "__main__":
    run(__doc__, "out/session", STEPS)
