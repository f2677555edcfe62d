#!/usr/bin/env python3
"""Makes the pictures of the scenario window, the kinds of views, the assets, parents, the menu of films and the panel
History for the user guide.

    python3 tests/desktop/guide_pictures.py --stage build/release/bin/stage --level examples/harbour/harbour.level
"""

import shutil
import tempfile
import time
from pathlib import Path

from check_desktop import at, film_opens, panel_opens, rows, ruler, scenario, scenario_opens_docked
from check_scene import PARENT, a_drag_onto_an_object_makes_it_the_parent, rect_of
from check_undo import choose, select_in_list
from desktop import Desktop, arguments_of, find
from record_session import drag_handle

DRAW_SECONDS = 1.5  # four views drawn without a graphics card
ASSETS_SECONDS = 6  # the pictures of a screenful of models
HOVER_SECONDS = 0.9  # the popup comes after half a second
CAMERA_ROW = 2  # behind the level and the sun


def row(desktop, order):
    """The row at that place from the top."""
    return rows(desktop.look())[order]["rect"]


def unfold(desktop, order):
    desktop.click(rows(desktop.look())[order]["children"][0]["rect"])
    time.sleep(0.3)


def frame(desktop):
    return scenario(desktop.look())["frame"]


def show_timeline(desktop, images):
    panel_opens(desktop)
    film_opens(desktop)
    scenario_opens_docked(desktop)
    x, y, width, _ = frame(desktop)
    desktop.drag((x + width / 2, y - 3), (x + width / 2, y - 190))
    time.sleep(0.5)
    desktop.picture("folded")
    unfold(desktop, CAMERA_ROW)
    unfold(desktop, 0)
    desktop.drag(at(ruler(desktop), 0.1), at(ruler(desktop), 0.62))
    desktop.move(x + width / 2, y + 12)
    shutil.copy(desktop.picture("unfolded", frame(desktop)), images / "scenario.png")
    key = row(desktop, 1)
    desktop.move(at(ruler(desktop), 0.37)[0], key[1] + key[3] / 2)
    time.sleep(HOVER_SECONDS)
    shutil.copy(desktop.picture("hover", frame(desktop)), images / "scenario_key.png")
    desktop.move(key[0] + 80, key[1] + key[3] / 2)
    desktop.x("click", 3)
    time.sleep(0.5)
    desktop.picture("row_menu")
    desktop.key("Escape")
    desktop.click(ruler(desktop))
    desktop.key("space")
    time.sleep(1.5)
    desktop.picture("playing")
    desktop.key("space")


def show_views(desktop, images):
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
    shutil.copy(desktop.picture("views", (left, top, right - left, bottom - top)), images / "views.png")


def assets_open(desktop):
    choose(desktop, "v", "Assets")  # it is behind the list of objects: away, and to the front
    choose(desktop, "v", "Assets")
    desktop.until("the panel of assets", lambda s: find(s["items"], "barrel"))


def show_assets(desktop, images):
    assets_open(desktop)
    time.sleep(ASSETS_SECONDS)
    state = desktop.look()
    right = state["views"][0]["rect"][0]
    window = next(w["rect"] for w in state["windows"] if w["title"].endswith("Stage"))
    shutil.copy(desktop.picture("assets", (window[0], window[1] + 60, right - window[0], window[3] - 90)),
                images / "assets.png")
    for name in ("models/barrel.glb", "models/crate.glb", "sounds/bell.wav"):
        (Path(desktop.level).parent / name).unlink()
    choose(desktop, "f", "Missing files...")
    dialog = desktop.until("the list", lambda s: next(
        (w["rect"] for w in s["windows"] if w["title"] == "Missing files"), None))
    shutil.copy(desktop.picture("missing", dialog), images / "missing.png")
    desktop.key("Escape")


def show_parents(desktop, images):
    time.sleep(DRAW_SECONDS)
    a_drag_onto_an_object_makes_it_the_parent(desktop)
    x, y, _, height = rect_of(desktop, PARENT)
    shutil.copy(desktop.picture("parents", (x - 16, y - 3 * height, 214, 9 * height)), images / "parents.png")
    panel_opens(desktop)
    film = desktop.item("Intro")["rect"]
    desktop.click(film, button=3)
    desktop.until("the menu", lambda s: find(s["menus"], "Rename film..."))
    shutil.copy(desktop.picture("films_menu", (film[0] - 20, film[1] - 60, 290, 220)), images / "films_menu.png")
    desktop.key("Escape")


def show_history(desktop, images):
    """Steps over objects and a film, some of them taken back."""
    choose(desktop, "v", "History")
    select_in_list(desktop, "Fishing boat")
    desktop.click(desktop.button("Focus")["rect"])
    desktop.click(desktop.button("Move")["rect"])
    time.sleep(DRAW_SECONDS)
    drag_handle(desktop, 0, 60)
    desktop.key("ctrl+d")
    time.sleep(0.5)
    drag_handle(desktop, 2, 40)
    panel_opens(desktop)
    film_opens(desktop)
    select_in_list(desktop, "House far left")
    desktop.key("Delete")
    desktop.click(desktop.button("Animate object")["rect"])
    select_in_list(desktop, "Dock")
    desktop.click(desktop.button("Focus")["rect"])
    time.sleep(DRAW_SECONDS)
    drag_handle(desktop, 1, 30)
    for _ in range(2):
        desktop.key("ctrl+z")
        time.sleep(0.5)
    lines = [item["rect"] for item in desktop.look()["items"] if item["text"] == "Start"]
    x, y, width, _ = lines[0]
    shutil.copy(desktop.picture("history", (x - 4, y - 26, width + 8, 160)), images / "history.png")


def main():
    parser = arguments_of(__doc__, "out/guide")
    parser.add_argument("--images", default="docs/images", help="where the pictures of the guide go")
    arguments = parser.parse_args()
    for show in (show_timeline, show_views, show_assets, show_parents, show_history):
        with tempfile.TemporaryDirectory(prefix="films_guide_") as work:
            copy = Path(work) / "level"
            shutil.copytree(Path(arguments.level).parent, copy)
            with Desktop(Path(arguments.stage).resolve(), copy / Path(arguments.level).name, work,
                         arguments.screenshots) as desktop:
                show(desktop, Path(arguments.images))


if __name__ == "__main__":
    main()
