#!/usr/bin/env python3
"""Drives Stage on a plain X desktop as a user does. See run.sh."""

import shutil
import sys
import tempfile
import time
from pathlib import Path

from desktop import Desktop, Failure, arguments_of, check, different_pixels

FILM = "Intro"
MOTION_SECONDS = 0.4  # the sample's actors move in any stretch of this length while it plays


def poses(desktop):
    return desktop.look()["objects"]


def is_moving(desktop):
    before = poses(desktop)
    time.sleep(MOTION_SECONDS)
    return poses(desktop) != before


def level_opens(desktop):
    state = desktop.until("the sample level", lambda s: s if "objects" in s and len(s["objects"]) > 5 else None)
    check(state["film"] == "", "no film is open at the start")
    desktop.picture("level")


def panel_opens(desktop):
    desktop.click(desktop.button("Movies")["rect"])
    desktop.item(FILM)
    desktop.picture("panel")


def film_opens(desktop):
    desktop.click(desktop.item(FILM)["rect"])
    desktop.until("the film is open", lambda s: s["film"] == FILM)


def film_plays_and_space_stops_it(desktop):
    desktop.key("ctrl+Return")
    start = poses(desktop)
    desktop.until("actors move", lambda s: s["objects"] != start)
    check(is_moving(desktop), "the film goes on playing")
    desktop.picture("playing")
    desktop.key("space")
    desktop.until("the film stands still", lambda s: not is_moving(desktop))
    check(desktop.look()["film"] == FILM, "the film stays open")



# The scenario window: control numbers of its parts.
MAIN_CONTROL, RULER, ROW = 1234, 20, 55


def scenario(state):
    return next((t for t in state["toolWindows"] if t["title"] == "Scenario"), None)


def child(parent, number):
    return next(c for c in parent["children"] if c["id"] == number)


def ruler(desktop):
    return child(child(scenario(desktop.look()), MAIN_CONTROL), RULER)["rect"]


def rows(state):
    """The rows that are shown, from the top."""
    children = child(scenario(state), MAIN_CONTROL)["children"]
    return sorted((c for c in children if c["id"] == ROW), key=lambda c: c["rect"][1])


def at(rect, fraction):
    """A place in the ruler; 0 is the first pixel, 1 the last."""
    return rect[0] + 1 + fraction * (rect[2] - 3), rect[1] + rect[3] / 2


def drag_time(desktop, start, end):
    rect = ruler(desktop)
    desktop.drag(at(rect, start), at(rect, end))


def scenario_opens_docked(desktop):
    desktop.click(desktop.item(FILM)["rect"], times=2)
    window = desktop.until("the scenario window", lambda s: (scenario(s) or {}).get("shown") and scenario(s))
    check(not window["floating"], "the scenario window is docked at first")
    view = desktop.look()["views"][0]["rect"]
    check(view[3] >= window["frame"][3], "the view keeps half of the height")
    desktop.picture("scenario")


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
    desktop.click(desktop.button("Frame forward")["rect"])
    desktop.until("a frame later", lambda s: s["objects"] != middle)
    desktop.click(desktop.button("Frame back")["rect"])
    desktop.until("and back", lambda s: s["objects"] == middle)
    desktop.click(desktop.button("Move to end of the movie")["rect"])
    end = desktop.until("the end", lambda s: s["objects"] if s["objects"] != middle else None)
    desktop.click(desktop.button("Move to begin of the movie")["rect"])
    desktop.until("the begin", lambda s: s["objects"] not in (middle, end))


def wheel_scrolls_rows(desktop):
    state = desktop.look()
    area = rows(state)[0]["rect"]
    control = child(scenario(state), MAIN_CONTROL)["rect"]
    area = [area[0], area[1], area[2], control[1] + control[3] - area[1]]
    desktop.move(area[0] + area[2] / 2, area[1] + 10)
    top = desktop.picture("rows_top", area)
    desktop.x("click", "--repeat", 2, 5)  # towards the user
    scrolled = desktop.picture("rows_scrolled", area)
    check(different_pixels(top, scrolled) > 200, "the rows have moved")
    desktop.x("click", "--repeat", 2, 4)
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
    state = desktop.look()
    start = state["objects"]
    row, time_axis = rows(state)[1]["rect"], ruler(desktop)
    desktop.move(at(time_axis, 0.37)[0], row[1] + row[3] / 2)
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
    desktop.until("actors move", lambda _: is_moving(desktop))
    desktop.picture("scenario_playing")
    desktop.key("space")
    desktop.until("the film stands still", lambda _: not is_moving(desktop))


def title_of(desktop):
    """A place in the dock's title."""
    frame = scenario(desktop.look())["frame"]
    return frame[0] + 150, frame[1] + 12


def window_floats_and_keeps_its_least_size(desktop):
    desktop.move(*title_of(desktop))
    desktop.x("click", "--repeat", 2, "--delay", 60, 1)
    window = desktop.until("it floats", lambda s: scenario(s) if scenario(s)["floating"] else None)
    check(window["rect"][2] >= 500 and window["rect"][3] >= 100, "a floating window is 500 by 100 at least")
    time.sleep(0.5)  # a second double click must not become a fourth
    frame = scenario(desktop.look())["frame"]
    corner = frame[0] + frame[2] - 1, frame[1] + frame[3] - 1
    desktop.drag(corner, (frame[0] + 200, frame[1] + 40))
    small = desktop.until("it is small", lambda s: scenario(s) if scenario(s)["rect"][2] < 520 else None)
    check(small["rect"][2:] == [500, 100], f"the least size is 500 by 100, not {small['rect'][2:]}")
    desktop.picture("floating")
    desktop.move(*title_of(desktop))
    desktop.x("click", "--repeat", 2, "--delay", 60, 1)
    desktop.until("it is docked again", lambda s: not scenario(s)["floating"])


def escape_leaves_it_and_the_menu_hides_and_shows_it(desktop):
    frame = scenario(desktop.look())["frame"]
    desktop.click(rows(desktop.look())[0]["rect"])
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
    desktop.until("it is shown as high as before", lambda s: scenario(s)["shown"] and scenario(s)["frame"] == frame)
    desktop.picture("shown_again")


def program_ends(desktop):
    desktop.x("windowactivate", "--sync", desktop.window)
    desktop.key("alt+F4")
    desktop.ends()


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


def run(stage, level, screenshots):
    with tempfile.TemporaryDirectory(prefix="films_desktop_") as work:
        copy = Path(work) / "level"
        shutil.copytree(Path(level).parent, copy)
        with Desktop(stage, copy / Path(level).name, work, screenshots) as desktop:
            for step in STEPS:
                name = step.__name__.replace("_", " ")
                begin = time.monotonic()
                try:
                    step(desktop)
                except Exception as error:
                    print(f"FAILED  {name}: {error}", flush=True)
                    try:
                        desktop.picture("failed")
                    except Failure as second:
                        print(f"        {second}")
                    print((Path(work) / "stage.log").read_text()[-2000:])
                    return 1
                print(f"ok      {name} ({time.monotonic() - begin:.1f} s)", flush=True)
    print(f"{len(STEPS)} steps; pictures in {screenshots}")
    return 0


def main():
    arguments = arguments_of(__doc__, "out/desktop").parse_args()
    return run(arguments.stage, arguments.level, arguments.screenshots)


if __name__ == "__main__":
    sys.exit(main())
