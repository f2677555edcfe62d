#!/usr/bin/env python3
"""Drives Stage on a plain X desktop as a user does. See run.sh."""

import time

from desktop import check, different_pixels
from level import is_moving, poses
from opening import FILM, film_opens, level_opens, panel_opens, program_ends, scenario_opens_docked
from runner import run
from timeline import at, drag_time, frame, main_control, plays, row, row_middle, rows, ruler, scenario, stands_still


def film_plays_and_space_stops_it(desktop):
    desktop.key("ctrl+Return")
    start = poses(desktop)
    desktop.until("actors move", lambda s: s["objects"] != start)
    check(is_moving(desktop), "the film goes on playing")
    desktop.picture("playing")
    desktop.key("space")
    stands_still(desktop)
    check(desktop.look()["film"] == FILM, "the film stays open")


def ruler_moves_time(desktop):
    drag_time(desktop, 0.3, 0.0)
    start = poses(desktop)
    before = desktop.picture("ruler_at_start", ruler(desktop))
    drag_time(desktop, 0.0, 0.5)
    desktop.until("actors are elsewhere", lambda s: s["objects"] != start)
    after = desktop.picture("ruler_in_the_middle", ruler(desktop))
    check(different_pixels(before, after) > 20, "the cursor of the ruler is elsewhere")
    middle = poses(desktop)
    drag_time(desktop, 0.5, 0.0)
    desktop.until("actors are back", lambda s: s["objects"] == start)
    drag_time(desktop, 0.0, 0.5)
    desktop.until("and in the middle again", lambda s: s["objects"] == middle)


def buttons_step_through_time(desktop):
    middle = poses(desktop)
    desktop.click_button("Frame forward")
    desktop.until("a frame later", lambda s: s["objects"] != middle)
    desktop.click_button("Frame back")
    desktop.until("and back", lambda s: s["objects"] == middle)
    desktop.click_button("Move to end of the movie")
    end = desktop.until("the end", lambda s: s["objects"] if s["objects"] != middle else None)
    desktop.click_button("Move to begin of the movie")
    desktop.until("the begin", lambda s: s["objects"] not in (middle, end))


def wheel_scrolls_rows(desktop):
    x, y, width, _ = row(desktop, 0)
    control = main_control(desktop.look())["rect"]
    area = [x, y, width, control[1] + control[3] - y]
    mouse = x + width / 2, y + 10
    desktop.move(*mouse)
    top = desktop.picture("rows_top", area)
    desktop.wheel(mouse, -2)
    scrolled = desktop.picture("rows_scrolled", area)
    check(different_pixels(top, scrolled) > 200, "the rows have moved")
    desktop.wheel(mouse, 2)
    again = desktop.picture("rows_back", area)
    check(different_pixels(top, again) == 0, "the rows are back at the top")


def fold_button(state):
    return rows(state)[0]["children"][0]


def row_folds(desktop):
    state = desktop.look()
    x, y, width, height = rows(state)[0]["rect"]
    area = [x + 30, y, width - 30, 4 * height]  # without the buttons, which look otherwise under the mouse
    before = desktop.picture("row_folded", area)
    for sign, name in (("-", "row_unfolded"), ("+", "row_folded_again"), ("-", "row_unfolded_again")):
        desktop.click(fold_button(state)["rect"])
        state = desktop.until(f"the button shows {sign}", lambda s: s if fold_button(s)["text"] == sign else None)
        changed = different_pixels(before, desktop.picture(name, area))
        check((changed > 200) == (sign == "-"), f"{name}: {changed} pixels differ from the folded row")


def home_and_end_go_to_the_ends_of_the_key_under_the_mouse(desktop):
    """The row below "Level" holds the cameras, one after the other; the second stands at 0.37."""
    start = poses(desktop)
    desktop.move(at(ruler(desktop), 0.37)[0], row_middle(desktop, 1))
    desktop.key("Home")
    home = desktop.until("the begin of the key", lambda s: s["objects"] if s["objects"] != start else None)
    desktop.key("End")
    end = desktop.until("the end of the key", lambda s: s["objects"] if s["objects"] != home else None)
    check(end != start, "the end of the key is not the begin of the film")
    desktop.key("Home")
    desktop.until("the begin of the key again", lambda s: s["objects"] == home)
    desktop.picture("home")


def space_plays_in_the_scenario_window(desktop):
    check(scenario(desktop.look())["focused"], "a click has given it the keyboard")
    desktop.key("space")
    plays(desktop)
    desktop.picture("scenario_playing")
    desktop.key("space")
    stands_still(desktop)


def press_title_twice(desktop):
    left, top, _, _ = frame(desktop)
    desktop.press((left + 150, top + 12), times=2)


def window_floats_and_keeps_its_least_size(desktop):
    press_title_twice(desktop)
    window = desktop.until("it floats", lambda s: scenario(s) if scenario(s)["floating"] else None)
    check(window["rect"][2] >= 500 and window["rect"][3] >= 100, "a floating window is 500 by 100 at least")
    time.sleep(0.5)  # a second double click must not become a fourth
    left, top, width, height = frame(desktop)
    desktop.drag((left + width - 1, top + height - 1), (left + 200, top + 40))
    small = desktop.until("it is small", lambda s: scenario(s) if scenario(s)["rect"][2] < 520 else None)
    check(small["rect"][2:] == [500, 100], f"the least size is 500 by 100, not {small['rect'][2:]}")
    desktop.picture("floating")
    press_title_twice(desktop)
    desktop.until("it is docked again", lambda s: not scenario(s)["floating"])


def escape_leaves_it_and_the_menu_hides_and_shows_it(desktop):
    before = frame(desktop)
    desktop.click(row(desktop, 0))
    desktop.until("it has the keyboard", lambda s: scenario(s)["focused"])
    desktop.key("Escape")
    desktop.key("alt+v")
    check(scenario(desktop.look())["shown"], "Escape leaves a docked window open")
    desktop.key("Up")  # the last entry
    desktop.key("Return")
    desktop.until("it is hidden", lambda s: not scenario(s)["shown"])
    desktop.key("alt+v")
    desktop.key("Up")  # the last entry
    desktop.picture("view_menu")
    desktop.key("Return")
    desktop.until("it is shown as high as before", lambda s: scenario(s)["shown"] and scenario(s)["frame"] == before)
    desktop.picture("shown_again")


STEPS = [
    level_opens,
    panel_opens,
    film_opens,
    film_plays_and_space_stops_it,
    scenario_opens_docked,
    ruler_moves_time,
    buttons_step_through_time,
    wheel_scrolls_rows,
    row_folds,
    home_and_end_go_to_the_ends_of_the_key_under_the_mouse,
    space_plays_in_the_scenario_window,
    window_floats_and_keeps_its_least_size,
    escape_leaves_it_and_the_menu_hides_and_shows_it,
    program_ends,
]


if __name__ == "__main__":
    run(__doc__, "out/desktop", STEPS)
