#!/usr/bin/env python3
"""Pictures of Stage's windows on small and large screens, at several scales, light and dark, to be looked at; and that
nothing of them lies outside the screen."""

import shutil
import sys
import tempfile
import time
from pathlib import Path

import desktop as desktop_module
from check_desktop import film_opens, level_opens, panel_opens, scenario_opens_docked
from desktop import Desktop, arguments_of, check, find

DRAW_SECONDS = 1.5
desktop_module.WAIT_SECONDS = 60  # the largest views take a while without a graphics card
# Size of the screen, the toolkit's scale, the theme.
LOOKS = [
    ("1280x720", "1", "light"),
    ("1920x1080", "1.5", "dark"),
    ("2560x1440", "2", "light"),
    ("3840x2160", "3", "dark"),
    ("3840x2160", "1", "light"),
]


def inside(desktop):
    """Every window that can be seen lies in the screen."""
    width, height = (float(part) / float(desktop.scale) for part in desktop.size.split("x"))
    for window in desktop.look()["windows"]:
        x, y, w, h = window["rect"]
        check(x >= 0 and y >= 0 and x + w <= width + 1 and y + h <= height + 1,
              f"'{window['title']}' at {window['rect']} goes out of the screen of {width:.0f} x {height:.0f}")


class Scaled(Desktop):
    """Tells places in pixels of the screen."""

    def move(self, x, y):
        super().move(x * float(self.scale), y * float(self.scale))


def dialog(desktop, name, keys=None, menu=None):
    before = len(desktop.look()["windows"])
    if keys:
        desktop.key(keys)
    else:
        letter, text = menu
        desktop.key("alt+" + letter)
        desktop.click(desktop.until(f"menu entry '{text}'", lambda s: find(s["menus"], text))["rect"])
    desktop.until(f"{name} is shown", lambda s: len(s["windows"]) > before)
    time.sleep(0.3)
    desktop.picture(name)
    inside(desktop)
    desktop.key("Escape")
    desktop.until(f"{name} is gone", lambda s: len(s["windows"]) == before)


def show(desktop):
    level_opens(desktop)
    time.sleep(DRAW_SECONDS)
    inside(desktop)
    panel_opens(desktop)
    film_opens(desktop)
    scenario_opens_docked(desktop)
    time.sleep(DRAW_SECONDS)
    inside(desktop)
    desktop.picture("scenario")
    dialog(desktop, "keys", keys="F1")
    dialog(desktop, "about", menu=("h", "About Stage"))
    dialog(desktop, "new_film", menu=("i", "New film..."))
    dialog(desktop, "view_menu", keys="alt+v")
    x, y, _, _ = desktop.look()["views"][0]["rect"]
    desktop.click([x + 300, y + 40, 2, 2], button=1)
    desktop.picture("sun")


def main():
    parser = arguments_of(__doc__, "out/looks")
    parser.add_argument("--only", type=int, help="one of the looks, by its number from 0")
    arguments = parser.parse_args()
    looks = LOOKS if arguments.only is None else [LOOKS[arguments.only]]
    for size, scale, theme in looks:
        name = f"{size} at {scale}, {theme}"
        window = "x".join(str(int(int(part) / float(scale))) for part in size.split("x"))
        with tempfile.TemporaryDirectory(prefix="films_looks_") as work:
            copy = Path(work) / "level"
            shutil.copytree(Path(arguments.level).parent, copy)
            pictures = Path(arguments.screenshots) / f"{size}_{scale}"
            with Scaled(Path(arguments.stage).resolve(), copy / Path(arguments.level).name, work, pictures, size=size,
                        scale=scale, settings=f"[looks]\ntheme={theme}\n", window=window) as desktop:
                try:
                    show(desktop)
                except Exception as error:
                    print(f"FAILED  {name}: {error}", flush=True)
                    desktop.picture("failed")
                    return 1
        print(f"ok      {name}", flush=True)
    return 0


if __name__ == "__main__":
    sys.exit(main())
