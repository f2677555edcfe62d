#!/usr/bin/env python3
"""Takes steps back and does them again, with real mouse and keys, in the views, panels and the window Scenario.

    python3 tests/desktop/check_undo.py --stage build/debug/bin/stage --level examples/harbour/harbour.level
"""

import time

from desktop import check, different_pixels, find, middle
from level import OTHER_REDO, REDO, UNDO, expect_status, is_moving, place_of, poses, saved
from menus import choose, texts_of
from object_list import select_in_list
from opening import FILM, film_opens, panel_opens, program_ends, scenario_opens_docked
from runner import run
from timeline import (LEVEL_ROW, at, drag_time, main_control, plays, row, row_middle, ruler, scenario, stands_still,
                      unfold)
from views import drag_handle, focus, pull_handle

PROP = "Fishing boat"
LISTED = "House ochre"  # above what the Scenario window leaves of the list
START = "Start"  # the first line of the panel History
EFFECT_KEYS = 5  # the row, with the level's unfolded
EFFECT = 10.0 / 24.0  # where the first effect of the sample film stands in the ruler, which shows the whole film


def place(desktop):
    return place_of(desktop, PROP)


def expect_place(desktop, what, where):
    desktop.until(f"{PROP} is {what}", lambda s: s["objects"][PROP] == where)


def title(desktop):
    return desktop.x("getwindowname", desktop.window).strip()


def expect_star(desktop, is_shown):
    def same(_):
        return title(desktop).startswith("harbour*") == is_shown
    desktop.until("the title has " + ("a" if is_shown else "no") + " star", same)


def a_drag_is_a_step(desktop):
    desktop.until("the level", lambda s: PROP in s.get("objects", {}))
    select_in_list(desktop, PROP)
    focus(desktop)
    desktop.click_button("Move")
    start = place(desktop)
    drag_handle(desktop, 0, 90)
    moved = place(desktop)
    check(moved != start, "the drag has moved it")
    desktop.picture("dragged")
    expect_star(desktop, True)
    check(f"Undo Move {PROP}" in texts_of(desktop, "e"), "the menu says what would be undone")
    desktop.key(UNDO)
    expect_place(desktop, "where it stood", start)
    expect_status(desktop, f"Undone: Move {PROP}")
    expect_star(desktop, False)
    desktop.picture("undone")
    desktop.key(REDO)
    expect_place(desktop, "moved again", moved)
    expect_status(desktop, f"Redone: Move {PROP}")
    desktop.key(UNDO)
    expect_place(desktop, "where it stood", start)
    desktop.key(OTHER_REDO)
    expect_place(desktop, "moved again", moved)
    expect_star(desktop, True)
    desktop.key(UNDO)
    expect_place(desktop, "where it stood", start)
    desktop.key(UNDO)
    expect_status(desktop, "Nothing to undo")


def nothing_is_undone_in_a_drag(desktop):
    drag_handle(desktop, 0, 60)
    first = place(desktop)
    pull_handle(desktop, 0, 80)
    held = desktop.until("it follows", lambda s: s["objects"][PROP] if s["objects"][PROP] != first else None)
    desktop.key(UNDO)
    expect_status(desktop, "Stop what is under way first")
    check(place(desktop) == held, "the drag goes on")
    desktop.release()
    time.sleep(0.3)
    second = place(desktop)
    desktop.key(UNDO)
    expect_place(desktop, "at the end of the first drag", first)
    desktop.key(REDO)
    expect_place(desktop, "at the end of the second", second)
    desktop.key(UNDO)
    desktop.key(UNDO)
    expect_star(desktop, False)


def field_of(desktop, text):
    return desktop.until(f"a field that shows '{text}'", lambda s: next(
        (f for f in s["fields"] if f["text"] == text and f["rect"][2] > 0), None))


def expect_text(desktop, text):
    desktop.until(f"the field shows '{text}'", lambda s: any(f["focused"] and f["text"] == text for f in s["fields"]))


def a_field_has_its_own_undo_first(desktop):
    """Written into the field for the x of the position."""
    start = place(desktop)
    shown = f"{start[0]:.2f}"
    desktop.click(field_of(desktop, shown)["rect"])
    desktop.type_over("1234.00", delay=40)
    check(place(desktop) == start, "nothing is moved while one types")
    desktop.key(UNDO)
    desktop.until("the field has taken back some of it", lambda s: any(
        f["focused"] and f["text"] != "1234.00" for f in s["fields"]))
    check(place(desktop) == start, "the level is as it was")
    desktop.type_over("1234.00", delay=40)
    desktop.key("Return")
    desktop.until("it is there", lambda s: s["objects"][PROP][0] == 1234)
    desktop.picture("typed")
    desktop.key(UNDO)  # with the keyboard still in the field, which has nothing of its own any more
    expect_place(desktop, "where it stood", start)
    expect_text(desktop, shown)
    desktop.key(REDO)
    desktop.until("it is there again", lambda s: s["objects"][PROP][0] == 1234)
    desktop.key(UNDO)
    expect_place(desktop, "where it stood", start)


def turns_of_a_wheel_are_one_step(desktop):
    start = place(desktop)
    field = next(f for f in desktop.look()["fields"] if f["focused"])
    desktop.wheel(middle(field["rect"]), 6)
    desktop.until("it has moved by six steps of ten", lambda s: abs(s["objects"][PROP][0] - start[0] - 60) < 0.01)
    desktop.key(UNDO)
    expect_place(desktop, "where it stood", start)
    desktop.key(UNDO)
    expect_status(desktop, "Nothing to undo")


def the_panel_lists_steps_and_goes_to_them(desktop):
    desktop.click_item(PROP)
    start = place(desktop)
    drag_handle(desktop, 0, 50)
    one = place(desktop)
    desktop.key("ctrl+d")
    copy = desktop.until("a copy", lambda s: next((n for n in s["selected"] if n != PROP), None))
    desktop.key("Delete")
    desktop.until("the copy is deleted", lambda s: copy not in s["objects"])
    choose(desktop, "v", "History")
    lines = ["Start", f"Move {PROP}", f"Duplicate {copy}", f"Delete {copy}"]
    desktop.until("the list", lambda s: all(find(s["items"], text) for text in lines))
    desktop.picture("history")
    desktop.click_item(lines[2])
    desktop.until("the copy is back", lambda s: copy in s["objects"])
    desktop.picture("history_one_back")
    desktop.click_item(START)
    desktop.until("all is back", lambda s: copy not in s["objects"] and s["objects"][PROP] == start)
    expect_star(desktop, False)
    desktop.picture("history_start")
    desktop.click_item(lines[3])
    desktop.until("all is done again", lambda s: copy not in s["objects"] and s["objects"][PROP] == one)
    desktop.click_item(lines[1])
    desktop.key(UNDO)  # the list has the keyboard
    expect_place(desktop, "where it stood", start)
    choose(desktop, "v", "History")


def a_save_is_in_the_middle_of_the_steps(desktop):
    desktop.click_item(PROP)
    empty = saved(desktop)
    drag_handle(desktop, 0, 50)
    full = saved(desktop)
    check(full != empty, "the move is in the file")
    expect_star(desktop, False)
    desktop.key(UNDO)
    expect_star(desktop, True)
    check(saved(desktop) == empty, "a save after the undo holds what it held before the move")
    desktop.key(REDO)
    expect_star(desktop, True)
    check(saved(desktop) == full, "a save after the redo holds what it held after the move")
    desktop.key(UNDO)
    check(saved(desktop) == empty, "and back")


def timeline_area(desktop):
    return main_control(desktop.look())["rect"]


def away(desktop):
    """The mouse over nothing that looks otherwise under it."""
    area = timeline_area(desktop)
    desktop.move(area[0] + area[2] / 2, area[1] + area[3] - 4)


def effect_key(desktop):
    """The first of the row, which stands alone there."""
    return at(ruler(desktop), EFFECT)[0], row_middle(desktop, EFFECT_KEYS)


def a_key_is_dragged_and_comes_back(desktop):
    panel_opens(desktop)
    film_opens(desktop)
    scenario_opens_docked(desktop)
    unfold(desktop, LEVEL_ROW)
    before_file = saved(desktop)
    drag_time(desktop, 0.3, 0.5)
    key = effect_key(desktop)
    desktop.press(key)
    before_poses = poses(desktop)
    away(desktop)
    before = desktop.picture("key_pressed", timeline_area(desktop))
    desktop.drag(key, (key[0] - 170, key[1]), steps=30)
    away(desktop)
    dragged = desktop.picture("key_dragged", timeline_area(desktop))
    check(different_pixels(before, dragged) > 1000, "the key is elsewhere")
    check(scenario(desktop.look())["focused"], "the window has the keyboard")
    desktop.key(UNDO)
    expect_status(desktop, "Undone: Edit Intro: 1 key")
    after = desktop.picture("key_undone", timeline_area(desktop))
    check(desktop.look()["film"] == FILM, "the film stays open")
    check(poses(desktop) == before_poses, "at its time")
    check(different_pixels(before, after) < 1000, "keys, rows and scroll are as before")
    desktop.key(OTHER_REDO)
    expect_status(desktop, "Redone: Edit Intro: 1 key")
    again = desktop.picture("key_redone", timeline_area(desktop))
    check(different_pixels(dragged, again) < different_pixels(after, again), "and once more as after the drag")
    check(saved(desktop) != before_file, "so it is in the file")
    desktop.key(UNDO)
    expect_status(desktop, "Undone: Edit Intro: 1 key")
    check(saved(desktop) == before_file, "a save holds what it held before the drag")


def a_key_that_is_deleted_comes_back(desktop):
    file = saved(desktop)
    key = effect_key(desktop)
    desktop.press(key)
    desktop.key("Delete")
    expect_status(desktop, "1 key removed")
    desktop.picture("key_removed")
    check(saved(desktop) != file, "the key is gone")
    desktop.key(UNDO)
    expect_status(desktop, "Undone: ")
    check(saved(desktop) == file, "and back")


def nothing_is_undone_while_a_film_plays(desktop):
    desktop.click(row(desktop, LEVEL_ROW))
    key = effect_key(desktop)
    desktop.drag(key, (key[0] - 170, key[1]), steps=30)
    file = saved(desktop)
    drag_time(desktop, 0.5, 0.0)
    desktop.key("space")
    plays(desktop)
    desktop.key(UNDO)
    expect_status(desktop, "Stop what is under way first")
    check(is_moving(desktop), "the film goes on")
    desktop.picture("undo_while_playing")
    desktop.key("space")
    stands_still(desktop)
    check(saved(desktop) == file, "nothing is undone")
    desktop.key(UNDO)
    expect_status(desktop, "Undone: Edit Intro: ")
    check(saved(desktop) != file, "now it is")


def an_object_comes_back_and_the_film_stays(desktop):
    before = poses(desktop)
    file = saved(desktop)
    select_in_list(desktop, LISTED)
    desktop.key("Delete")
    desktop.until("it is gone", lambda s: LISTED not in s["objects"])
    desktop.picture("deleted")
    desktop.key(UNDO)
    desktop.until("it is back", lambda s: s["objects"] == before)
    check(desktop.look()["film"] == FILM, "the film is open, at its time")
    check(desktop.look()["selected"] == [LISTED], "and it is selected")
    desktop.picture("deletion_undone")
    check(saved(desktop) == file, "a save holds what it held before")


STEPS = [
    a_drag_is_a_step,
    nothing_is_undone_in_a_drag,
    a_field_has_its_own_undo_first,
    turns_of_a_wheel_are_one_step,
    the_panel_lists_steps_and_goes_to_them,
    a_save_is_in_the_middle_of_the_steps,
    a_key_is_dragged_and_comes_back,
    a_key_that_is_deleted_comes_back,
    nothing_is_undone_while_a_film_plays,
    an_object_comes_back_and_the_film_stays,
    program_ends,
]


if __name__ == "__main__":
    run(__doc__, "out/undo", STEPS)
