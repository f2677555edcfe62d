#!/usr/bin/env python3
"""Makes pictures of the user guide: Stage's window, the scenario window, kinds of views, assets, parents, the menu of
films and the panel History.

    python3 tests/desktop/guide_pictures.py --stage build/release/bin/stage --level examples/harbour/harbour.level
"""

import time
from pathlib import Path

from dialogs import opens
from level import UNDO
from menus import choose, entry
from object_list import drag_row, handle_of, indent, rect_of, select_in_list, stands_below
from opening import (FILM, STATUS_BAR, assets_open, film_opens, level_opens, panel_opens, scenario_opens_docked,
                     window_rect)
from runner import arguments_of, do_all, sample_opened
from timeline import (CAMERA_ROW, HOVER_SECONDS, LEVEL_ROW, animate_on, at, drag_time, frame, row, row_middle, ruler,
                      unfold)
from views import drag_handle, focus, view

CHILD, PARENT = "Crane", "Lighthouse"
DRAW_SECONDS = 1.5  # four views drawn without a graphics card
ASSETS_SECONDS = 6  # the pictures of a screenful of models


def show_stage(desktop):
    panel_opens(desktop)
    film_opens(desktop)
    x, y, width, height = window_rect(desktop)
    desktop.move(x + width / 2, y + height - 5)
    time.sleep(DRAW_SECONDS)
    desktop.guide_picture("stage", (x, y, width, height - STATUS_BAR))  # which tells where the copy of the level is


def show_timeline(desktop):
    panel_opens(desktop)
    film_opens(desktop)
    scenario_opens_docked(desktop)
    x, y, width, _ = frame(desktop)
    desktop.drag((x + width / 2, y - 3), (x + width / 2, y - 190))
    time.sleep(0.5)
    desktop.picture("folded")
    unfold(desktop, CAMERA_ROW)
    unfold(desktop, LEVEL_ROW)
    drag_time(desktop, 0.1, 0.62)
    desktop.move(x + width / 2, y + 12)
    desktop.guide_picture("scenario", frame(desktop))
    keys = row_middle(desktop, LEVEL_ROW + 1)
    desktop.move(at(ruler(desktop), 0.37)[0], keys)
    time.sleep(HOVER_SECONDS)
    desktop.guide_picture("scenario_key", frame(desktop))
    desktop.press((row(desktop, LEVEL_ROW + 1)[0] + 80, keys), button=3)
    time.sleep(0.5)
    desktop.picture("row_menu")
    desktop.key("Escape")
    desktop.click(ruler(desktop))
    desktop.key("space")
    time.sleep(1.5)
    desktop.picture("playing")
    desktop.key("space")


def show_views(desktop):
    time.sleep(DRAW_SECONDS)
    desktop.key("ctrl+4")
    time.sleep(DRAW_SECONDS)
    for number, key in enumerate(("F6", "F7", "F8"), start=1):
        desktop.click(desktop.look()["views"][number]["rect"])
        desktop.key(key)
        time.sleep(DRAW_SECONDS)
    views = [view["rect"] for view in desktop.look()["views"]]
    left, top = views[0][:2]
    right, bottom = views[3][0] + views[3][2], views[3][1] + views[3][3]
    desktop.guide_picture("views", (left, top, right - left, bottom - top))


def show_assets(desktop):
    assets_open(desktop)
    time.sleep(ASSETS_SECONDS)
    right = view(desktop)[0]
    window = window_rect(desktop)
    desktop.guide_picture("assets", (window[0], window[1] + 66, right - window[0], window[3] - 88))
    for name in ("models/barrel.glb", "models/crate.glb", "sounds/bell.wav"):
        (Path(desktop.level).parent / name).unlink()
    choose(desktop, "f", "Missing files...")
    desktop.guide_picture("missing", opens(desktop, "Missing files"))
    desktop.key("Escape")


def show_parents(desktop):
    time.sleep(DRAW_SECONDS)
    left = indent(desktop.look(), CHILD)
    drag_row(desktop, CHILD, handle_of(rect_of(desktop, PARENT)))
    desktop.until("it stands below its parent", lambda s: stands_below(s, CHILD, left))
    x, y, _, height = rect_of(desktop, PARENT)
    desktop.guide_picture("parents", (x - 16, y - 3 * height, 214, 9 * height))
    panel_opens(desktop)
    film = desktop.item(FILM)["rect"]
    desktop.click(film, button=3)
    entry(desktop, "Rename film...")
    desktop.guide_picture("films_menu", (film[0] - 20, film[1] - 60, 290, 220))
    desktop.key("Escape")


def show_history(desktop):
    """Steps over objects and a film, some of them taken back."""
    choose(desktop, "v", "History")
    select_in_list(desktop, "Fishing boat")
    focus(desktop)
    desktop.click_button("Move")
    time.sleep(DRAW_SECONDS)
    drag_handle(desktop, 0, 60)
    desktop.key("ctrl+d")
    time.sleep(0.5)
    drag_handle(desktop, 2, 40)
    panel_opens(desktop)
    film_opens(desktop)
    select_in_list(desktop, "House far left")
    desktop.key("Delete")
    animate_on(desktop)
    select_in_list(desktop, "Dock")
    focus(desktop)
    time.sleep(DRAW_SECONDS)
    drag_handle(desktop, 1, 30)
    for _ in range(2):
        desktop.key(UNDO)
        time.sleep(0.5)
    x, y, width, _ = desktop.item("Start")["rect"]
    desktop.guide_picture("history", (x - 4, y - 26, width + 8, 160))


SHOWN = [show_stage, show_timeline, show_views, show_assets, show_parents, show_history]
SIZES = {show_stage: "1500x900"}  # of Stage's window, in pixels; the others show parts of a smaller one


def main():
    parser = arguments_of(__doc__, "out/guide")
    parser.set_defaults(images=Path("docs/images"))
    arguments = parser.parse_args()
    for show in SHOWN:
        with sample_opened(arguments, window=SIZES.get(show, "1280x800")) as desktop:
            do_all(desktop, [level_opens, show])


if __name__ == "__main__":
    main()
