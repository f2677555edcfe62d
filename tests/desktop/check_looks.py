#!/usr/bin/env python3
"""Pictures of Stage's windows on small and large screens, at several scales, light and dark, to be looked at; and that
nothing of them lies outside the screen."""

import time

from desktop import Desktop, check
from menus import choose
from opening import film_opens, level_opens, panel_opens, scenario_opens_docked
from runner import arguments_of, do_all, sample_opened
from views import view

DRAW_SECONDS = 1.5
WAIT_SECONDS = 60  # the largest views take a while without a graphics card
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


def shows(desktop, name, show):
    """A picture of what a call puts on the screen, until Escape."""
    before = len(desktop.look()["windows"])
    show()
    desktop.until(f"{name} is shown", lambda s: len(s["windows"]) > before)
    time.sleep(0.3)
    desktop.picture(name)
    inside(desktop)
    desktop.key("Escape")
    desktop.until(f"{name} is gone", lambda s: len(s["windows"]) == before)


def level_fits(desktop):
    time.sleep(DRAW_SECONDS)
    inside(desktop)


def scenario_fits(desktop):
    time.sleep(DRAW_SECONDS)
    inside(desktop)
    desktop.picture("scenario")


def boxes_and_menus_fit(desktop):
    shows(desktop, "keys", lambda: desktop.key("F1"))
    shows(desktop, "about", lambda: choose(desktop, "h", "About Stage"))
    shows(desktop, "new_film", lambda: choose(desktop, "i", "New film..."))
    shows(desktop, "view_menu", lambda: desktop.key("alt+v"))


def sun_is_selected(desktop):
    x, y, _, _ = view(desktop)
    desktop.press((x + 301, y + 41))
    desktop.picture("sun")


STEPS = [level_opens, level_fits, panel_opens, film_opens, scenario_opens_docked, scenario_fits, boxes_and_menus_fit,
         sun_is_selected]


def main():
    parser = arguments_of(__doc__, "out/looks")
    parser.add_argument("--only", type=int, help="one of the looks, by its number from 0")
    arguments = parser.parse_args()
    looks = LOOKS if arguments.only is None else [LOOKS[arguments.only]]
    for size, scale, theme in looks:
        print(f"{size} at {scale}, {theme}", flush=True)
        window = "x".join(str(int(int(part) / float(scale))) for part in size.split("x"))
        with sample_opened(arguments, arguments.screenshots / f"{size}_{scale}", Scaled, size=size, scale=scale,
                           settings=f"[looks]\ntheme={theme}\n", window=window, wait=WAIT_SECONDS) as desktop:
            do_all(desktop, STEPS)


if __name__ == "__main__":
    main()
